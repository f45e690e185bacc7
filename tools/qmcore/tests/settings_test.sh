#!/usr/bin/env bash
# qmcore settings: every change persists, so each run below is a new process over the same store.
source "$(dirname "$0")/lib.sh" "$@"

# First launch follows the locale.
expect_line "system: Metrisch" -- --locale de_AT settings
rm -f "$QM_SETTINGS_PATH"*
expect_line "distance: .distance-foot (Feet, ft)" -- --locale en_GB settings

# Chosen in a metric locale, so that only the stored choice can make the next runs imperial.
expect_line "system: Imperial" -- --locale en_DE settings system imperial
for line in "distance: .distance-foot (Feet, ft)" "speed: .speed-mph (MPH, mph)" \
    "vertical speed: .vspeed-ft/min (feet/minute, ft/min)" "pressure: .pressure-inHg (inHg, inHg)" \
    "temperature: .temperature-f (°F, °F)" \
    "description: Imperial. Distance: Feet. Altitude: Feet. Speed: MPH"; do
  expect_line "$line" -- --locale en_DE settings
done
# The same system again changes nothing and stores nothing new.
expect_line "system: Imperial" -- settings system imperial

expect_line "speed: .speed-knot (KNOTS, kts)" -- settings system nautical
expect_line "distance: .distance-meter (Meters, m)" -- settings nautical-distance metres
expect_line "altitude: .altitude-meter (Meters, m)" -- settings altitude metres
expect_line "distance: .distance-meter (Meters, m)" -- settings

expect_line "length: .length-yard (Yard, yd)" -- settings unit length .length-yard
expect_line "area: .area-hectare (Hectare, ha)" -- settings unit area .area-hectare
expect_line "pressure: .pressure-hpa (hPa, hPa)" -- settings unit pressure .pressure-hpa
expect_line "temperature: .temperature-c (°C, °C)" -- settings unit temperature .temperature-c
expect_line "vertical speed: .vspeed-m/min (meters/minute, m/min)" -- settings unit vspeed .vspeed-m/min
expect_line "length: .length-foot (Foot, ft)" -- settings unit length default

expect_line "Always keep as Foot" -- settings rules .length-foot
expect_line "system: Nautical" -- settings switch .length-foot 1000
expect_line "Switch to Nautical mile from 1000 ft" -- settings rules .length-foot
expect_line "system: Nautical" -- settings switch .distance-meter never
expect_line "Always keep as Meters" -- settings rules .distance-meter

expect_fail 2 "unknown unit system 'metrc'" -- settings system metrc
expect_fail 2 "unknown kind 'speed'" -- settings unit speed .speed-kmh
expect_fail 2 "unknown length unit '.area-acre'" -- settings unit length .area-acre
expect_fail 2 "only length and area units" -- settings unit pressure default
expect_fail 2 "unknown unit '.length-parsec'" -- settings rules .length-parsec
expect_fail 2 "not a whole number" -- settings switch .length-foot 2.5
expect_fail 2 "not a number" -- settings switch .length-foot lots

# Another store file leaves the standard one alone.
expect_line "system: Metrisch" -- --locale de_DE --settings "$work/other.sqlite" settings
expect_line "speed: .speed-knot (KNOTS, kts)" -- settings

# A damaged value in the store file (an array whose head declares 2^63 elements and more)
# reads as absent: the other settings still show, with a note on stderr.
damaged="$work/damaged.sqlite"
expect_line "system: Nautical" -- --locale en_DE --settings "$damaged" settings system nautical
checks=$((checks + 1))
if ! sqlite3 "$damaged" "INSERT INTO settings VALUES('damaged', 6, x'9b9b2f0000002f2f2f2f')"; then
  failures=$((failures + 1)) && echo "FAIL: could not write the damaged row"
fi
expect_line "system: Nautical" -- --locale en_DE --settings "$damaged" settings
expect_line "speed: .speed-knot (KNOTS, kts)" -- --locale en_DE --settings "$damaged" settings
checks=$((checks + 1))
if ! grep -qF "1 settings in $damaged cannot be read" "$work/err"; then
  report --settings "$damaged" settings && echo "--- expected a note on stderr"
fi

finish
