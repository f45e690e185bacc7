#!/usr/bin/env bash
# Builds both presets (release, and debug with sanitizers) and runs every test in each.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/bootstrap.sh
for preset in release debug; do
  echo "== $preset =="
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done
