# Helpers for the tool's test scripts. Usage in a script:
#   source "$(dirname "$0")/lib.sh" "$@"
#   expect "1.00 km/h" -- units speed          # exit status 0, stdout contains the text
#   expect_line $'98\n...' -- convert ...      # exit status 0, each line a whole line of stdout
#   expect_status 1 "error 204" -- get URL     # that exit status, stdout contains the text
#   expect_fail 2 "not a number" -- convert x m km   # that exit status, no stdout, one stderr line
#   expect_json '{"result": 98}' -- --json convert 36.6 °C °F   # JSON Lines, one has the fields
#   run_tool ARGS...; check "what is wrong otherwise" COMMAND...  # any other condition
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
run_tool() { "$tool" "$@" >"$work/out" 2>"$work/err"; status=$?; }

# Counts a check that passes when COMMAND does; a failure shows the last run's output.
check() {
  local what="$1"; shift
  checks=$((checks + 1))
  "$@" && return
  failures=$((failures + 1))
  echo "FAIL: $what"
  echo "--- exit status $status; stdout:"; cat "$work/out"; echo "--- stderr:"; cat "$work/err"
}

# The exit status is $1 and each line of $3 is in stdout, as grep -F $2 finds it.
has_lines() {
  local line
  [ "$status" = "$1" ] || return 1
  while IFS= read -r line; do grep -q "$2" -- "$line" "$work/out" || return 1; done <<<"$3"
}
expect_status() {
  run_tool "${@:4}"
  check "qmcore ${*:4}: expected exit $1 and stdout containing: $2" has_lines "$1" -F "$2"
}
expect() { expect_status 0 "$@"; }
expect_line() { run_tool "${@:3}"; check "qmcore ${*:3}: expected the lines: $1" has_lines 0 -xF "$1"; }

# The exit status is $1, stdout is empty and stderr is one line containing $2.
failed_with() {
  [ "$status" = "$1" ] && [ ! -s "$work/out" ] && [ "$(wc -l <"$work/err")" = 1 ] \
    && grep -qF -- "$2" "$work/err"
}
expect_fail() {
  run_tool "${@:4}"
  check "qmcore ${*:4}: expected exit $1, no stdout, one stderr line with: $2" failed_with "$1" "$2"
}

# Every stdout line is a JSON object, and one of them has each field of the expected object with
# an equal value of the same JSON type (so 98 is neither "98" nor 98.0).
json_holds() {
  [ "$status" = 0 ] && python3 -c '
import json, sys
objects = [json.loads(line) for line in sys.stdin]
want = json.loads(sys.argv[1])
holds = lambda o: all(k in o and type(o[k]) is type(v) and o[k] == v for k, v in want.items())
sys.exit(not objects or not all(isinstance(o, dict) for o in objects)
         or not any(holds(o) for o in objects))' "$1" <"$work/out"
}
expect_json() { run_tool "${@:3}"; check "qmcore ${*:3}: expected JSON Lines holding: $1" json_holds "$1"; }
finish() {
  echo "$((checks - failures)) passed, $failures failed"
  [ "$failures" = 0 ]
}
