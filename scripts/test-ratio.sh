#!/usr/bin/env bash
# Prints the lines of the library and tool code, the lines of the tests and their ratio, and
# fails when the tests outgrow the limit (default 0.35): tests are to catch faults, not to
# restate the code. Counts the tracked C++ and shell sources (not string tables or CMake files):
#   code:  qmcore/ and tools/qmcore/, less the tests and qmcore/testing/
#   tests: *_test.cpp, qmcore/testing/, tests/ and tools/qmcore/tests/
#
#   scripts/test-ratio.sh [LIMIT]
set -euo pipefail
cd "$(dirname "$0")/.."
limit="${1:-0.35}"
tests_pattern='(_test\.cpp$|^qmcore/testing/|^tests/|^tools/qmcore/tests/)'

count_lines() {
  # Reads NUL-separated paths; prints their total line count.
  xargs -0 -r cat -- | wc -l
}

sources='\.(cpp|hpp|sh)$'
code=$(git ls-files -z qmcore tools/qmcore | grep -zE "$sources" | grep -zvE "$tests_pattern" |
  count_lines)
tests=$(git ls-files -z | grep -zE "$sources" | grep -zE "$tests_pattern" | count_lines)
ratio=$(awk -v t="$tests" -v c="$code" 'BEGIN { printf "%.3f", t / c }')
echo "code: $code lines"
echo "tests: $tests lines"
echo "ratio: $ratio (limit $limit)"
awk -v t="$tests" -v c="$code" -v l="$limit" 'BEGIN { exit !(t / c <= l) }' || {
  echo "the tests are more than $limit of the code" >&2
  exit 1
}
