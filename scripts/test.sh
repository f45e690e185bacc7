#!/usr/bin/env bash
# Every check CI runs, one after another: the release (g++), debug (AddressSanitizer and
# UndefinedBehaviorSanitizer) and clang builds with all their tests, the ThreadSanitizer build
# of the tests that use threads with those tests, the tests' share of the code (at most 0.35),
# the format check, and a short run of each fuzzer as a regression check (the same 20000
# inputs from a fixed seed every time, so that a run does not fail by chance: long runs are
# scripts/fuzz.sh SECONDS).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/bootstrap.sh
for preset in release debug clang tsan; do
  echo "== $preset =="
  # A batch of files at a time, in a third of the time; the fuzz build below compiles the
  # library file by file, which shows that every file includes what it uses.
  cmake --preset "$preset" -DCMAKE_UNITY_BUILD=ON >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
echo "== test ratio =="
scripts/test-ratio.sh
echo "== format =="
scripts/check-format.sh
echo "== fuzz =="
QM_FUZZ_RUNS="${QM_FUZZ_RUNS:-20000}" scripts/fuzz.sh
