#!/usr/bin/env bash
# Installs what building and testing QMCore needs on a fresh Debian machine.
# Does nothing when everything is already there, so every script may call it.
set -euo pipefail

packages=(
  g++ clang cmake ninja-build pkg-config clang-format sqlite3
  libicu-dev libsqlite3-dev libcurl4-openssl-dev libssl-dev libzip-dev
  libpng-dev libjpeg-dev nlohmann-json3-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev libcpp-httplib-dev
  locales zip unzip python3
  # Line coverage (scripts/coverage.sh).
  gcovr
  # libzip's CMake package names these programs and fails to load without them.
  zipcmp zipmerge ziptool
)
# A second JPEG reader and writer (djpeg, cjpeg), with which the image tests check ours.
packages+=(libjpeg-turbo-progs)
# Benchmark peers only, never linked into the library.
packages+=(libspdlog-dev)
# clang's sanitizer and libFuzzer runtimes, which the clang package only recommends, and
# llvm-symbolizer for readable sanitizer reports.
packages+=(libclang-rt-14-dev llvm)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "bootstrap: installing ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}"
fi

# The tool's tests run with LANG=en_US.UTF-8, and tests check that invariant texts ignore a
# host's C locale with a decimal comma (de_DE): both C locales must exist.
for wanted in en_US de_DE; do
  if ! locale -a 2>/dev/null | grep -qi "^${wanted}\.utf-\?8$"; then
    echo "bootstrap: generating the ${wanted}.UTF-8 C locale"
    if grep -q "^# *${wanted}.UTF-8 UTF-8" /etc/locale.gen; then
      as_root sed -i "s/^# *${wanted}.UTF-8 UTF-8/${wanted}.UTF-8 UTF-8/" /etc/locale.gen
    else
      echo "${wanted}.UTF-8 UTF-8" | as_root tee -a /etc/locale.gen >/dev/null
    fi
    as_root locale-gen >/dev/null
  fi
done
