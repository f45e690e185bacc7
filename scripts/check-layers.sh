#!/usr/bin/env bash
# Fails when a source file includes from a layer above its own. The layers, lowest first:
#   platform < strings < units < provider < formatting < files < persistence < geo < tools
# qmcore/testing/ (test support) may include every layer and be included by tests only; the
# umbrella header qmcore/qmcore.hpp may include everything.
# Usage: check-layers.sh [REPOSITORY_ROOT]
set -euo pipefail
root="${1:-$(cd "$(dirname "$0")/.." && pwd)}"
cd "$root"

folders=(qmcore)
[ -d tools ] && folders+=(tools)
find "${folders[@]}" -type f \( -name '*.hpp' -o -name '*.cpp' -o -name '*.inc' \) -print0 |
  sort -z |
  xargs -0 grep -Hn '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' /dev/null |
  awk '
    BEGIN {
      n = split("platform strings units provider formatting files persistence geo tools testing",
                names, " ")
      for (i = 1; i <= n; i++) rank[names[i]] = i
    }
    function layer(path,    parts) {
      if (path ~ /^tools\//) return "tools"
      if (path !~ /^qmcore\/[^\/]+\//) return ""
      split(path, parts, "/")
      return parts[2]
    }
    {
      file = $0; sub(/:.*/, "", file)
      rest = substr($0, length(file) + 2)
      line = rest; sub(/:.*/, "", line)
      include = rest; sub(/^[^"]*"/, "", include); sub(/".*/, "", include)
      from = layer(file); to = layer(include)
      if (!(from in rank) || !(to in rank)) next
      if (to == "testing") {
        if (file !~ /_test\.cpp$/ && from != "testing") {
          print file ":" line ": includes " include ", test support, outside a test"
          failed = 1
        }
        next
      }
      if (rank[to] > rank[from]) {
        print file ":" line ": includes " include ", from the " to " layer above " from
        failed = 1
      }
    }
    END { exit failed }
  '
