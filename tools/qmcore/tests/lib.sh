# Helpers for the tool's test scripts. Usage in a script:
#   source "$(dirname "$0")/lib.sh" "$@"
#   expect "1.00 km/h" -- units speed          # stdout contains the text, exit status 0
#   expect_line "98" -- convert 36.6 .temperature-c .temperature-f   # a whole line of stdout
#   expect_fail 2 "not a number" -- convert x m km   # exit status and a text on stderr
#   expect_json '{"result": 98}' -- --json convert 36.6 °C °F   # JSON Lines holding these fields
# Each run gets LANG=en_US.UTF-8, TZ=UTC and a settings store in the script's own work folder.
set -u
tool="$1"
work="$2"
rm -rf "$work" && mkdir -p "$work"
export LANG=en_US.UTF-8 TZ=UTC QM_SETTINGS_PATH="$work/settings.sqlite"
unset LC_ALL LC_MESSAGES
# The system's programs first: python3 is the one the bootstrap installs, not a version
# manager's shim ahead of it on the PATH, which costs a third of a second a call.
export PATH="/usr/bin:$PATH"
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

# Every stdout line is a JSON object, and one of them has each field of the expected object with
# an equal value of the same JSON type (so 98 is neither "98" nor 98.0).
expect_json() {
  local expected="$1"; shift 2
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != 0 ] || ! python3 -c '
import json, sys
objects = [json.loads(line) for line in sys.stdin]
want = json.loads(sys.argv[1])
holds = lambda o: all(k in o and type(o[k]) is type(v) and o[k] == v for k, v in want.items())
sys.exit(not objects or not all(isinstance(o, dict) for o in objects)
         or not any(holds(o) for o in objects))' "$expected" <"$work/out"; then
    report "$@"; echo "--- expected JSON Lines, one holding: $expected"
  fi
}

finish() {
  echo "$((checks - failures)) passed, $failures failed"
  [ "$failures" = 0 ]
}
