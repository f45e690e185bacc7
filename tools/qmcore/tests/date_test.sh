#!/usr/bin/env bash
# qmcore date parse and date format.
source "$(dirname "$0")/lib.sh" "$@"

# parse: Unix seconds in the shortest fixed-point text, one line per argument.
expect_line "946681200" -- date parse 2000-01-01T00:00:00+01:00
expect_line "946728000" -- date parse "2000-01-01 12:00"
run_tool date parse 1970-01-01 2000-01-01T00:00:00.5Z 1969-12-31T23:59:59Z
checks=$((checks + 1))
if [ "$(cat "$work/out")" != "$(printf '0\n946684800.5\n-1')" ]; then
  report date parse 1970-01-01 2000-01-01T00:00:00.5Z 1969-12-31T23:59:59Z
fi
# A text that does not parse: one error line, exit 2, and no partial output.
expect_fail 2 "not an ISO 8601 timestamp: '2000-13-01'" -- date parse 2000-13-01
expect_fail 2 "'2000-01-01x'" -- date parse 1970-01-01 2000-01-01x
checks=$((checks + 1))
[ -s "$work/out" ] && report date parse 1970-01-01 2000-01-01x && echo "--- expected no stdout"
expect_fail 2 "TEXT is required" -- date parse

# format: the fixed formats at a given moment (2020-05-01T10:00:00.123Z).
at=1588327200.123
expect_line "2020-05-01T10:00:00.123Z" -- date format xml --at $at
expect_line "2020-05-01T10-00-00-123+0000" -- date format filename --at $at
expect_line "01-May-20 10:00:00" -- date format short --at $at
expect_line "GMT" -- date format gmt --at $at
expect_line "01-Mai-20 10:00:00" -- --locale de_DE date format short --at $at
TZ=Europe/Berlin expect_line "2020-05-01T12:00:00.123+02:00" -- date format xml --at $at
TZ=Europe/Berlin expect_line "MESZ" -- --locale de_DE date format zone --at $at
# Without --at: the current moment.
expect "$(date -u +%Y%m%d)_" -- date format backup
expect "shortdate" -- date format --help
expect_fail 2 "unknown date format 'nope'" -- date format nope --at 0
expect_fail 2 "--at is not a number: 'soon'" -- date format xml --at soon
expect_fail 2 "no xml text" -- date format xml --at 1e300

finish
