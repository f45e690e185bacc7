# Helpers for the tool's test scripts. Usage in a script:
#   source "$(dirname "$0")/lib.sh" "$@"
#   expect "1.00 km/h" -- units speed          # stdout contains the text, exit status 0
#   expect_line "98" -- convert 36.6 .temperature-c .temperature-f   # a whole line of stdout
#   expect_fail 2 "not a number" -- convert x m km   # exit status and a text on stderr
# Each run gets LANG=en_US.UTF-8, TZ=UTC and a settings store in the script's own work folder.
set -u
tool="$1"
work="$2"
rm -rf "$work" && mkdir -p "$work"
export LANG=en_US.UTF-8 TZ=UTC QM_SETTINGS_PATH="$work/settings.sqlite"
unset LC_ALL LC_MESSAGES
failures=0
checks=0

run_tool() { "$tool" "$@" >"$work/out" 2>"$work/err"; echo $? >"$work/status"; }

report() {
  failures=$((failures + 1))
  echo "FAIL: qmcore $*"
  echo "--- stdout:"; cat "$work/out"; echo "--- stderr:"; cat "$work/err"
}

expect() {
  local text="$1"; shift 2
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != 0 ] || ! grep -qF -- "$text" "$work/out"; then
    report "$@"; echo "--- expected stdout to contain: $text"
  fi
}

expect_line() {
  local line="$1"; shift 2
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != 0 ] || ! grep -qxF -- "$line" "$work/out"; then
    report "$@"; echo "--- expected a line: $line"
  fi
}

expect_fail() {
  local status="$1" text="$2"; shift 3
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != "$status" ] || ! grep -qF -- "$text" "$work/err" \
     || [ "$(wc -l <"$work/err")" != 1 ]; then
    report "$@"; echo "--- expected exit $status and one stderr line containing: $text"
  fi
}

finish() {
  echo "$((checks - failures)) passed, $failures failed"
  [ "$failures" = 0 ]
}
