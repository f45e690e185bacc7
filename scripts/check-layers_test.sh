#!/usr/bin/env bash
# The layer check passes a tree whose includes go down and fails one with an include going up.
# Usage: check-layers_test.sh PATH/TO/check-layers.sh
set -euo pipefail
check="$1"
tree="$(mktemp -d)"
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/qmcore/units" "$tree/qmcore/provider" "$tree/qmcore/testing"
printf '#include "qmcore/units/A.hpp"\n' >"$tree/qmcore/provider/B.hpp"
printf '#include "qmcore/testing/T.hpp"\n' >"$tree/qmcore/units/A_test.cpp"
printf '#include <vector>\n' >"$tree/qmcore/units/A.hpp"
bash "$check" "$tree" >/dev/null || { echo "a downward include was refused"; exit 1; }
printf '#include "qmcore/provider/B.hpp"\n' >>"$tree/qmcore/units/A.hpp"
if out="$(bash "$check" "$tree")"; then
  echo "an upward include was accepted"
  exit 1
fi
[[ "$out" == *"qmcore/units/A.hpp:2: includes qmcore/provider/B.hpp"* ]] || {
  echo "unexpected report: $out"
  exit 1
}
printf '#include "qmcore/testing/T.hpp"\n' >"$tree/qmcore/units/A.hpp"
if bash "$check" "$tree" >/dev/null; then
  echo "test support included from library code was accepted"
  exit 1
fi
echo
echo "layer check: 3 passed, 0 failed"
