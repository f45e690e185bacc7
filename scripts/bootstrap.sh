#!/usr/bin/env bash
# Installs what building and testing QMCore needs on a fresh Debian machine.
# Does nothing when everything is already there, so every script may call it.
set -euo pipefail

packages=(
  g++ clang cmake ninja-build pkg-config clang-format
  libicu-dev libsqlite3-dev libcurl4-openssl-dev libssl-dev libzip-dev
  libpng-dev libjpeg-dev nlohmann-json3-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev libcpp-httplib-dev
  locales
)

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

# Tests check that invariant texts ignore a host's C locale; they need one with a decimal comma.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  echo "bootstrap: generating the de_DE.UTF-8 C locale"
  as_root sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | as_root tee -a /etc/locale.gen >/dev/null
  as_root locale-gen >/dev/null
fi
