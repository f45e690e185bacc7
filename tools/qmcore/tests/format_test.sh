#!/usr/bin/env bash
# qmcore format: value texts in the persisted unit settings; each run is a new process.
source "$(dirname "$0")/lib.sh" "$@"

# Each kind and field once, in the settings each run reads from the store: the switching rules
# themselves are the library's tests. First launch in en_US: imperial.
expect_line "text: 328ft" -- format distance 100
expect_line "spoken: 0.38 miles to go" -- format distance 610
expect_line "text: 1.00mi" -- format map-distance 1609.344
expect_line "text: 29.921inHg" -- format pressure 1013.25
expect_line "scale: x10" -- format vspeed 1
expect_line "text: 1.00 mi" -- format ruler 32.187

# Metric: the switch at 1000 m (equality switches), and the German abbreviations.
"$tool" settings system metric >/dev/null
expect_line "text: 1000m" -- format distance 999.9
expect_line "text: 1.00km" -- format distance 1000
expect_line "spoken: 1.00 kilometers to go" -- format distance 1000
expect_line "text: -20m" -- format distance -20
expect_line "spoken: 1000 Meter verbleibend" -- --locale de_DE format distance 999.9
expect_line "text: 0m" -- format altitude -0.3
expect_line "spoken: 8848 meters to go" -- format altitude 8848.4
expect_line "text: 36 km/h" -- format speed 10
expect_line "spoken: 36 Kilometer pro Stunde" -- --locale de_DE format speed 10
expect_line "4 decimals: 36.0000" -- format average-speed 10
expect_line "seconds: 400.0" -- format pace 2.5
expect_line "text: --:-- min/km" -- format pace 0.005
expect_line "text: 1500.0m" -- format length 1500
expect_line "text: 1500.0m²" -- format area 1500
expect_line "text: 1013.25hPa" -- format pressure 1013.25
expect_line "scale: /10" -- format vspeed 2.54
expect_line "text: 1.00 km" -- format ruler 20.1

# A stored switch value makes lengths switch; at sea they switch to nautical miles.
"$tool" settings switch .length-meter 1000 >/dev/null
expect_line "text: 1.500km" -- format length 1500
"$tool" settings system nautical >/dev/null
expect_line "text: 328ft" -- format distance 100
expect_line "text: 1.00nm" -- format distance 1852
expect_line "text: 1.00sm" -- --locale de_DE format distance 1852
expect_line "text: 19 kts" -- format speed 10
expect_line "text: 1.08 nm" -- format ruler 40

# The persisted settings must hold: imperial chosen in one run gives miles in the next.
"$tool" settings system imperial >/dev/null
expect_line "text: 1.00mi" -- format distance 1609.344

# Another store by --settings, the standard one untouched.
other="$work/other.sqlite"
expect_line "system: Nautical" -- --settings "$other" settings system nautical
expect_line "text: 1.00nm" -- --settings "$other" format distance 1852
expect_line "text: 1.00mi" -- format distance 1609.344

expect_fail 2 "VALUE is not a number: 'far'" -- format distance far
expect_fail 2 "VALUE is not a finite number: 'inf'" -- format distance inf
expect_fail 2 "unknown kind 'volume' (one of distance, map-distance" -- format volume 3
expect_fail 2 "VALUE is too large for a ruler" -- format ruler 1e40
expect_fail 2 "VALUE is required" -- format distance

finish
