#!/usr/bin/env bash
# qmcore settings: every change persists, so each run below is a new process over the same store.
source "$(dirname "$0")/lib.sh" "$@"

# A system chosen in a metric locale holds in the next runs.
expect_line "system: Imperial" -- --locale en_DE settings system imperial
expect_line $'distance: .distance-foot (Feet, ft)\nspeed: .speed-mph (MPH, mph)' -- --locale en_DE settings
expect_json '{"system": "Imperial", "verticalSpeed": {"identifier": ".vspeed-ft/min",
  "name": "feet/minute", "abbreviation": "ft/min"}}' -- --json settings

expect_line "speed: .speed-knot (KNOTS, kts)" -- settings system nautical
expect_line "distance: .distance-meter (Meters, m)" -- settings nautical-distance metres
expect_line "altitude: .altitude-meter (Meters, m)" -- settings altitude metres
expect_line "length: .length-yard (Yard, yd)" -- settings unit length .length-yard
expect_line "length: .length-foot (Foot, ft)" -- settings unit length default
expect_line "system: Nautical" -- settings switch .length-foot 1000
expect_json '{"identifier": ".length-foot", "text": "Switch to Nautical mile from 1000 ft"}' -- \
  --json settings rules .length-foot

expect_fail 2 "unknown unit system 'metrc' (expected metric|imperial|nautical)" -- settings system metrc
expect_fail 2 "unknown length unit '.area-acre'" -- settings unit length .area-acre
expect_fail 2 "only length and area units" -- settings unit pressure default
expect_fail 2 "unknown unit '.length-parsec'" -- settings rules .length-parsec
expect_fail 2 "switch value is not a whole number: '2.5'" -- settings switch .length-foot 2.5

# Another store file, leaving the standard one alone. A damaged value in it (an array whose head
# declares 2^63 elements and more) reads as absent: the other settings show, with a note.
damaged="$work/damaged.sqlite"
expect_line "system: Imperial" -- --settings "$damaged" settings system imperial
check "could not write the damaged row" \
  sqlite3 "$damaged" "INSERT INTO settings VALUES('damaged', 6, x'9b9b2f0000002f2f2f2f')"
expect_line $'system: Imperial\nspeed: .speed-mph (MPH, mph)' -- --settings "$damaged" settings
check "no note of the damaged row" grep -qF "1 settings in $damaged cannot be read" "$work/err"
expect_line "system: Nautical" -- settings

finish
