#!/usr/bin/env bash
# Line coverage of the library by the whole suite: builds the `coverage` preset (g++ with gcov
# counters), runs every test, and prints gcovr's table for qmcore/ without the tests and their
# support: one row per file and a TOTAL row. Writes build/coverage/coverage.json too, for
# comparing two runs file by file.
#
#   scripts/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/bootstrap.sh
cmake --preset coverage -DCMAKE_UNITY_BUILD=ON >/dev/null
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage
gcovr -r . build/coverage --filter 'qmcore/' --exclude '.*_test\.cpp' --exclude '.*/testing/.*' \
  --json build/coverage/coverage.json --txt -
