#!/usr/bin/env bash
# qmcore log: the file logger's commands, in a temporary directory of the script's own.
source "$(dirname "$0")/lib.sh" "$@"
export TMPDIR="$work/tmp"
mkdir -p "$TMPDIR"
log="$TMPDIR/debuglog.log"

check() {  # check DESCRIPTION COMMAND...: a condition on the files the tool left
  local what="$1"; shift
  checks=$((checks + 1))
  if ! "$@"; then failures=$((failures + 1)); echo "FAIL: $what"; fi
}

# log write: a line in debug builds; in builds without the debug log a plain note, status 0.
run_tool log write debuglog.log hello "two words"
debug_log=on
if grep -q "debug log compiled out" "$work/err"; then
  debug_log=off
  check "write without the debug log exits 0" test "$(cat "$work/status")" = 0
  check "write without the debug log writes nothing" test ! -e "$log"
else
  check "write exits 0" test "$(cat "$work/status")" = 0
  check "write appends the line" grep -qxE '[0-9]{2}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8} - hello two words' "$log"
fi

# log reset: an empty log, also where none was.
run_tool log reset debuglog.log
check "reset exits 0" test "$(cat "$work/status")" = 0
check "reset leaves an empty file" test -f "$log" -a ! -s "$log"

# A young, small log is not rotated without --force.
printf 'line one\nline two\n' >>"$log"
run_tool log rotate debuglog.log
# (In debug builds the logger's own "[LOG]" lines follow in the same file.)
check "rotate without --force keeps a young log" test "$(head -2 "$log")" = "$(printf 'line one\nline two')"
check "rotate without --force archives nothing" test ! -e "$TMPDIR/logs-archive"
check "rotate without --force says so" grep -q "debuglog.log was not archived" "$work/err"

# --force archives it under its name and empties it.
expect "-CLIENT-ABCFGH.zip" -- log rotate debuglog.log --force --nick bob --client ABCDEFGH
zips=("$TMPDIR"/logs-archive/*.zip)
check "one archive" test "${#zips[@]}" = 1
check "archive name" bash -c '[[ "$(basename "$1")" =~ ^MD-[0-9]{8}_[0-9]{6}-CD-[0-9]{8}_[0-9]{6}-debuglog\.log-NICK-bob-CLIENT-ABCFGH\.zip$ ]]' _ "${zips[0]}"
check "archive readable by zipfile with the log in it" python3 -c '
import sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
assert z.testzip() is None
files = [z.read(i) for i in z.infolist() if not i.is_dir()]
assert len(files) == 1 and files[0].startswith(b"line one\nline two\n")' "${zips[0]}"
if [ "$debug_log" = on ]; then
  # The rotation's own report reaches the log through the log facade, after the reset.
  check "rotation reported in the log" grep -qE '^[0-9]{2}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8} - [0-9-]{10} [0-9:.]{15}[+-][0-9]{4}, debuglog\[:\] \[LOG\] Compressed and moved previous log file: '"$log"', of [0-9]+ bytes of size, to: file://'"$TMPDIR"'/logs-archive/MD-' "$log"
fi
check "rotated log was emptied" bash -c '! grep -q "line one" "$1"' _ "$log"
check "no scratch folder left" test "$(ls "$TMPDIR")" = "$(printf 'debuglog.log\nlogs-archive')"

# log archive lists it; log trim deletes only what is more than three days old.
expect_line "${zips[0]}" -- log archive
touch -d '4 days ago' "$TMPDIR/logs-archive/old.zip"
touch -d '2 days ago' "$TMPDIR/logs-archive/recent.zip"
expect_line "1" -- log trim
check "trim deleted the old archive" test ! -e "$TMPDIR/logs-archive/old.zip"
check "trim kept the others" test -e "$TMPDIR/logs-archive/recent.zip" -a -e "${zips[0]}"
# (Debug builds also print the facade's lines on stdout.)
[ "$debug_log" = off ] && expect_json '{"deleted": 0}' -- --json log trim

# An archive folder that cannot be listed gives an empty list.
rm -rf "$TMPDIR/logs-archive" && echo in-the-way >"$TMPDIR/logs-archive"
run_tool log archive
check "an unlistable archive folder lists nothing" test "$(cat "$work/status")" = 0
check "no path listed" bash -c '! grep -q "^/" "$1"' _ "$work/out"

expect_fail 2 "NAME is required" -- log rotate
finish
