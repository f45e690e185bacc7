#!/usr/bin/env bash
# qmcore units, convert and strings, and what every command shares: the --json and --locale flags.
source "$(dirname "$0")/lib.sh" "$@"

expect_fail 2 "A subcommand is required" -- no-such-command

# One unit a line, its fields tab-separated; the whole list has a heading per kind, which JSON
# leaves out. --locale applies to the run wherever it is given.
expect_line $'.speed-knot\tKNOTEN\tkn\t1.852\tNautisch. 1.00 kn = 1.85 km/h oder 1.15 mph' -- \
  units speed --locale de_DE
expect_line "# vspeed" -- units
units=$(grep -vc '^#' "$work/out")
expect_json '{"kind": "length", "identifier": ".length-foot", "name": "Foot", "abbreviation": "ft",
  "factor": 0.30479999, "description": "1 ft = 0.304800 m"}' -- --json units
check "--json units prints other lines than the $units units" test "$(wc -l <"$work/out")" = "$units"

# By identifier or abbreviation; results without exponents.
expect_line "0.30479999" -- convert 1 ft .length-meter
expect_line "1000000" -- convert 1 km² m²
expect_json '{"value": 36.6, "from": ".temperature-c", "to": ".temperature-f", "result": 98}' -- \
  convert 36.6 °C °F --json

expect_fail 2 "value is not a number: 'x'" -- --json convert x m km
expect_fail 2 "not units of one kind" -- convert 1 .length-foot .distance-meter
expect_fail 2 "unknown kind 'volume' (one of length," -- units volume

# strings: a complete table lacks no key, whichever region names the language.
run_tool strings --missing --locale fr_CA
check "fr_CA lacks keys" test "$status" = 0 -a ! -s "$work/out"
# A language without a table shows the English texts.
expect_line $'Feet\tFeet' -- strings --locale it_IT

expect_json '{"key": "Feet", "text": "Fuß"}' -- --json strings --locale de_AT
expect_fail 2 "--missing" -- strings --missing=maybe

finish
