#!/usr/bin/env bash
# qmcore date parse, date format, time and filesize.
source "$(dirname "$0")/lib.sh" "$@"

# parse: Unix seconds, one line per argument in their order; nothing when one does not parse.
run_tool date parse 1970-01-01 2000-01-01T00:00:00.5Z 1969-12-31T23:59:59Z
check "not one line per argument" test "$(cat "$work/out")" = "$(printf '0\n946684800.5\n-1')"
expect_json '{"text": "2000-01-01T00:00:00+01:00", "seconds": 946681200}' -- \
  --json date parse 2000-01-01T00:00:00+01:00
expect_fail 2 "not an ISO 8601 timestamp: '2000-01-01x'" -- date parse 1970-01-01 2000-01-01x

# format: a named format at a given moment or now; a moment without a text is an error.
expect_json '{"name": "xml", "at": 1588327200.123}' -- --json date format xml --at 1588327200.123
expect "$(date -u +%Y%m%d)_" -- date format backup
expect_fail 2 "unknown date format 'nope'" -- date format nope --at 0
expect_fail 2 "no xml text" -- date format xml --at 1e300

# time: each text of a time span; filesize: whole numbers of bytes below 2^63.
expect_json '{"hmsTextForTicks": "01:01:01", "textForTicksSkipHours": "61:01"}' -- --json time 3661.9
expect_fail 2 "TICKS is not a finite number" -- time inf
expect_json '{"bytes": 1536, "text": "2 KB"}' -- --json filesize 1536
expect_fail 2 "BYTES is not a whole number of bytes: '1e19'" -- filesize 1e19

finish
