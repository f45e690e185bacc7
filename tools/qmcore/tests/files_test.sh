#!/usr/bin/env bash
# qmcore zip, files, disk and memory, with TMPDIR as the temporary directory.
source "$(dirname "$0")/lib.sh" "$@"
export TMPDIR="$work/tmp"
mkdir -p "$TMPDIR" "$work/data/sub"
printf 'one\n' >"$work/data/a.txt"
printf 'two\n' >"$work/data/sub/b.txt"
printf 'log line\n' >"$work/debuglog.log"

# A folder: an archive of the folder that unzip accepts, structure kept.
expect_line "$work/data.zip" -- zip "$work/data"
checks=$((checks + 1))
if ! unzip -tq "$work/data.zip" >/dev/null \
   || [ "$(unzip -Z1 "$work/data.zip" | sort | tr '\n' ' ')" != "data/ data/a.txt data/sub/ data/sub/b.txt " ]; then
  failures=$((failures + 1)); echo "FAIL: the folder's archive"; unzip -l "$work/data.zip"
fi

# A file: its archive holds the scratch name as top-level folder; the scratch folder is gone.
expect_line "$work/out.zip" -- zip "$work/debuglog.log" --to "$work/out.zip" --scratch Logs
checks=$((checks + 1))
if [ "$(python3 -c 'import sys, zipfile; print(" ".join(zipfile.ZipFile(sys.argv[1]).namelist()))' "$work/out.zip")" != "Logs/ Logs/debuglog.log" ] \
   || [ -n "$(ls -A "$TMPDIR")" ]; then
  failures=$((failures + 1)); echo "FAIL: the file's archive"; ls -la "$TMPDIR"
fi

# A destination that cannot be written: the printed text, exit 1, nothing left in TMPDIR.
printf 'x' >"$work/plain"
checks=$((checks + 1)); run_tool zip "$work/debuglog.log" --to "$work/plain/out.zip"
if [ "$(cat "$work/status")" != 1 ] || ! grep -qF "zipping succeeded but copying the zip file failed" "$work/err" \
   || [ -n "$(ls -A "$TMPDIR")" ]; then
  report zip to an unwritable destination
fi
expect_fail 1 "Code=2" -- zip "$work/missing.log"

expect_line "a-b-c" -- files sanitize 'a:b/c'
expect_line "plain.txt" -- files sanitize plain.txt
expect_line "$work/data/report.0.x.pdf" -- files unique report.pdf --suffix x --folder "$work/data"
touch "$work/data/report.0.x.pdf"
expect_line "$work/data/report.1.x.pdf" -- files unique report.pdf --suffix x --folder "$work/data"
expect_line "$work/data/file.0.s.gpx" -- files unique .gpx --suffix s --folder "$work/data"
ln -s "$work/data" "$work/link"
expect_line "nofile" -- files type "$work/none"
expect_line "directory" -- files type "$work/data"
expect_line "file" -- files type "$work/debuglog.log"
expect_line "symlink" -- files type "$work/link"
expect_line "unknown" -- files type /dev/null
expect_fail 1 "Code=20" -- files type "$work/plain/inner"
expect_fail 2 "--suffix is required" -- files unique a.txt --folder "$work"

expect "total bytes: " -- disk
expect "used: " -- disk
expect_json '{}' -- --json disk
checks=$((checks + 1)); run_tool memory
if ! grep -qxE "memory: [0-9]+ MB" "$work/out"; then report memory; fi
expect_json '{}' -- --json memory

finish
