#!/usr/bin/env bash
# qmcore zip, files, disk and memory, with TMPDIR as the temporary directory.
source "$(dirname "$0")/lib.sh" "$@"
export TMPDIR="$work/tmp"
mkdir -p "$TMPDIR" "$work/data/sub"
printf 'one\n' >"$work/data/a.txt"
printf 'two\n' >"$work/data/sub/b.txt"
printf 'log line\n' >"$work/debuglog.log"
printf 'x' >"$work/plain"
names() { python3 -c 'import sys, zipfile; print(*sorted(zipfile.ZipFile(sys.argv[1]).namelist()))' "$1"; }

# A folder is zipped as it is; a file goes into a top-level folder
# named by --scratch, which is gone afterwards.
expect_line "$work/data.zip" -- zip "$work/data"
check "the folder's archive holds $(names "$work/data.zip")" \
  test "$(names "$work/data.zip")" = "data/ data/a.txt data/sub/ data/sub/b.txt"
expect_line "$work/out.zip" -- zip "$work/debuglog.log" --to "$work/out.zip" --scratch Logs
check "the file's archive holds $(names "$work/out.zip")" \
  test "$(names "$work/out.zip")" = "Logs/ Logs/debuglog.log"
# A failure: exit status 1 with the library's error.
expect_fail 1 "Code=2" -- zip "$work/missing.log"

expect_line "a-b-c" -- files sanitize 'a:b/c'
expect_line "$work/data/report.0.x.pdf" -- files unique report.pdf --suffix x --folder "$work/data"
expect_json '{"type": "directory"}' -- --json files type "$work/data"
expect_fail 1 "Code=20" -- files type "$work/plain/inner"

expect_json '{}' -- --json disk
run_tool memory
check "memory prints no size" grep -qxE "memory: [0-9]+ MB" "$work/out"

finish
