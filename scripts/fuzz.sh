#!/usr/bin/env bash
# Builds the libFuzzer targets (the fuzz preset: clang, AddressSanitizer, UndefinedBehavior-
# Sanitizer) and runs each for SECONDS (default 60), one after another, starting from a copy
# of its seed corpus in fuzz/corpus/<target>/. Fails when a target crashes, leaks, times out
# or breaks one of its checks; the input that did it is kept in build/fuzz/crashes/.
#
#   scripts/fuzz.sh [SECONDS]
#   QM_FUZZ_RUNS=N scripts/fuzz.sh   # N inputs each from the fixed seed 1: the same run every time
#
# The committed corpus is never changed: what a run adds goes to a temporary copy that is
# dropped at the end. To replay one input: build/fuzz/fuzz/<target> FILE
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
scripts/bootstrap.sh

# File by file: this is CI's one build that compiles each library file on its own, which shows
# that every file includes what it uses (the others compile a batch of files at a time).
cmake --preset fuzz -DCMAKE_UNITY_BUILD=OFF >/dev/null
cmake --build --preset fuzz

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
crashes="build/fuzz/crashes"
mkdir -p "$crashes"

failed=()
for source in fuzz/*_fuzzer.cpp; do
  target="$(basename "$source" .cpp)"
  mkdir -p "$work/$target"
  cp fuzz/corpus/"$target"/* "$work/$target/"
  if [ -n "${QM_FUZZ_RUNS:-}" ]; then
    limit=(-runs="$QM_FUZZ_RUNS" -seed=1)
    echo "== fuzz $target: $QM_FUZZ_RUNS inputs =="
  else
    limit=(-max_total_time="$seconds")
    echo "== fuzz $target: ${seconds}s =="
  fi
  log="$work/$target.log"
  if "build/fuzz/fuzz/$target" "${limit[@]}" -timeout=10 -print_final_stats=1 \
      -artifact_prefix="$crashes/$target-" "$work/$target" >"$log" 2>&1; then
    grep -E '^(Done|stat::number_of_executed_units|stat::new_units_added)' "$log" || true
  else
    tail -n 60 "$log"
    failed+=("$target")
  fi
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: failed: ${failed[*]} (inputs in $crashes/)" >&2
  exit 1
fi
echo "fuzz: every target ran without a failure"
