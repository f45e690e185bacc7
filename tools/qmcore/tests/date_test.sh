#!/usr/bin/env bash
# qmcore date parse, date format, time and filesize.
source "$(dirname "$0")/lib.sh" "$@"

# parse: Unix seconds, one line per argument in their order; nothing when one does not parse.
run_tool date parse 1970-01-01 2000-01-01T00:00:00.5Z 1969-12-31T23:59:59Z
check "not one line per argument" test "$(cat "$work/out")" = "$(printf '0\n946684800.5\n-1')"
expect_json '{"text": "2000-01-01T00:00:00+01:00", "seconds": 946681200}' -- \
  --json date parse 2000-01-01T00:00:00+01:00
expect_fail 2 "not an ISO 8601 timestamp: '2000-01-01x'" -- date parse 1970-01-01 2000-01-01x

# format: each name that --help lists, at a given moment or now, in --locale and TZ.
at=1588327200.123
expect "  shortdate  compact date" -- date format --help
for name in xml iso filename short shortdate backup time gmt zone; do
  expect_json "{\"name\": \"$name\", \"at\": $at}" -- --json date format "$name" --at $at
done
TZ=Europe/Berlin expect_line "MESZ" -- --locale de_DE date format zone --at $at
expect "$(date -u +%Y%m%d)_" -- date format backup
expect_fail 2 "unknown date format 'nope'" -- date format nope --at 0
expect_fail 2 "--at is not a number: 'soon'" -- date format xml --at soon
expect_fail 2 "no xml text" -- date format xml --at 1e300

# time: each text of a time span; filesize: whole numbers of bytes below 2^63.
expect_json '{"hmsTextForTicks": "01:01:01", "hmTextForTicks": "01:01", "timeTitleTextForTicks":
  "01h01m01s", "textPerTicks": "01:01:01", "textForTicksSkipHours": "61:01",
  "timeAnnouncementTextForTicks2": "1 hour, 1 minute, 1 second"}' -- --json time 3661.9
expect_fail 2 "TICKS is not a number: '1,5'" -- time 1,5
expect_fail 2 "TICKS is not a finite number" -- time inf
expect_json '{"bytes": 1536, "text": "2 KB"}' -- --json filesize 1536
expect_fail 2 "BYTES is not a whole number of bytes: '1.5'" -- filesize 1.5
expect_fail 2 "BYTES is not a whole number of bytes: '1e19'" -- filesize 1e19

finish
