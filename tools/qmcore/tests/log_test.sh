#!/usr/bin/env bash
# qmcore log: the file logger's commands, in a temporary directory of the script's own.
source "$(dirname "$0")/lib.sh" "$@"
export TMPDIR="$work/tmp"
mkdir -p "$TMPDIR"
log="$TMPDIR/debuglog.log"
archive="$TMPDIR/logs-archive"

# write: a line in debug builds; in builds without the debug log a plain note, status 0.
run_tool log write debuglog.log hello "two words"
check "write exits $status" test "$status" = 0
debug_log=on
grep -q "debug log compiled out" "$work/err" && debug_log=off
[ $debug_log = on ] && check "write appends no line" \
  grep -qxE '[0-9]{2}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8} - hello two words' "$log"

# reset: an empty log, also where none was.
rm -f "$log"
run_tool log reset debuglog.log
check "reset exits $status or leaves no empty log" test "$status" = 0 -a -f "$log" -a ! -s "$log"

# rotate: a young, small log only with --force, which prints the archive's path (the library's
# tests read the archive back).
printf 'line one\nline two\n' >>"$log"
run_tool log rotate debuglog.log
check "rotate without --force does not say it did nothing" grep -q "debuglog.log was not archived" "$work/err"
check "rotate without --force archived" test ! -e "$archive"
expect "-NICK-bob-CLIENT-ABCFGH.zip" -- log rotate debuglog.log --force --nick bob --client ABCDEFGH
zips=("$archive"/*.zip)

# archive lists the archived logs; trim deletes those more than three days old, printing how many.
expect_line "${zips[0]}" -- log archive
touch -d '4 days ago' "$archive/old.zip"
expect_line "1" -- log trim
# (Debug builds also print the facade's lines on stdout.)
[ $debug_log = off ] && expect_json '{"deleted": 0}' -- --json log trim

expect_fail 2 "NAME is required" -- log rotate
finish
