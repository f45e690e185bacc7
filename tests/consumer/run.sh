#!/usr/bin/env bash
# Builds and runs the consumer project against QMCore used as MODE ("package": installed from
# BUILD_DIR into a fresh prefix; "subdirectory": added from SOURCE_DIR), in WORK_DIR.
# Usage: run.sh MODE SOURCE_DIR BUILD_DIR WORK_DIR
set -euo pipefail
mode="$1" source_dir="$2" build_dir="$3" work="$4"
rm -rf "$work"
mkdir -p "$work"
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)

if [ "$mode" = package ]; then
  cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
  # Test support is not part of the package.
  if [ -e "$work/prefix/include/qmcore/testing" ]; then
    echo "the package installs test support"
    exit 1
  fi
  PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig" pkg-config --cflags --libs qmcore >/dev/null
  cmake -S "$source_dir/tests/consumer" -B "$work/build" "${generator[@]}" \
    -DQM_CONSUME=package -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
else
  # A batch of files at a time, as CI's other builds.
  cmake -S "$source_dir/tests/consumer" -B "$work/build" "${generator[@]}" \
    -DQM_CONSUME=subdirectory -DQMCORE_SOURCE_DIR="$source_dir" -DCMAKE_UNITY_BUILD=ON >/dev/null
fi
cmake --build "$work/build" -j2 >/dev/null
text="$("$work/build/distance")"
if [ "$text" != "1.23km" ]; then
  echo "the consumer printed '$text', not 1.23km"
  exit 1
fi
echo "consumer ($mode): 1 passed, 0 failed"
