#!/usr/bin/env bash
# Fails, listing them, when clang-format would change any tracked .cpp or .hpp file.
# Fix with: clang-format -i FILE... (the style is .clang-format at the root).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/bootstrap.sh

# Other versions break lines differently; the style is kept with the one Debian 12 ships.
version="$(clang-format --version)"
if [[ "$version" != *"version 14."* ]]; then
  echo "check-format: needs clang-format 14, found: $version" >&2
  exit 2
fi

# One clang-format process for all the files: a process per file took most of a minute.
if ! report="$(git ls-files -z -- '*.cpp' '*.hpp' |
               xargs -0 clang-format --style=file --dry-run --Werror 2>&1)"; then
  echo "check-format: clang-format would change these files:" >&2
  grep -o '^[^:]*:[0-9]*:[0-9]*: error' <<<"$report" | cut -d: -f1 | sort -u | sed 's/^/  /' >&2
  exit 1
fi
echo "check-format: every tracked .cpp and .hpp file is formatted"
