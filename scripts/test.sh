#!/usr/bin/env bash
# Every check CI runs, one after another: the release (g++), debug (AddressSanitizer and
# UndefinedBehaviorSanitizer) and clang builds with all their tests, the ThreadSanitizer build
# of the tests that use threads with those tests, the format check, and a short run of each
# fuzzer (QM_FUZZ_SECONDS each, default 20).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/bootstrap.sh
for preset in release debug clang tsan; do
  echo "== $preset =="
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
echo "== format =="
scripts/check-format.sh
echo "== fuzz =="
scripts/fuzz.sh "${QM_FUZZ_SECONDS:-20}"
