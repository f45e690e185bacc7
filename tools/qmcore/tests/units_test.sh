#!/usr/bin/env bash
# qmcore units and convert.
source "$(dirname "$0")/lib.sh" "$@"

expect_fail 2 "" -- no-such-command

# Catalogs: one unit a line, sorted as the provider lists them.
expect_line $'.length-foot\tFoot\tft\t0.30479999\t1 ft = 0.304800 m' -- units length
expect_line $'.speed-knot\tKNOTS\tkts\t1.852\tNautical. 1.00 kts = 1.85 km/h or 1.15 mph' -- units speed
expect_line $'.speed-knot\tKNOTEN\tkn\t1.852\tNautisch. 1.00 kn = 1.85 km/h oder 1.15 mph' -- --locale de_DE units speed
expect_line $'.pressure-inHg\tinHg\tinHg\t33.8638815767\t1 inHg = 33.86 hPa' -- units pressure
expect_line $'.temperature-f\t°F\t°F\t10\t0°F = -18°C' -- units temperature
expect_line $'.time-second\tsecond\ts\t1\t1 s = 1.000000 m' -- units time
expect_line "# vspeed" -- units

order() { "$tool" units "$1" | cut -f1 | tr '\n' ' '; }
check_order() {
  checks=$((checks + 1))
  local got; got="$(order "$1")"
  if [ "$got" != "$2" ]; then
    failures=$((failures + 1)); echo "FAIL: units $1 order: $got"
  fi
}
check_order length ".length-inch .length-shaku .length-foot .length-frenchfoot .length-yard .length-meter .length-kilometer .length-mile .length-nauticalmile "
check_order distance ".distance-nauticalmile .distance-mile .distance-kilometer .distance-meter .distance-foot "
check_order altitude ".altitude-meter .altitude-foot "
check_order vspeed ".vspeed-ft/min .vspeed-m/min .vspeed-m/s "
checks=$((checks + 1))
if [ "$("$tool" units | grep -vc '^#')" != 37 ]; then
  failures=$((failures + 1)); echo "FAIL: units does not list the 37 built-in units"
fi

# Conversions: by identifier or by an abbreviation that is unambiguous within a kind.
expect_line "0.30479999" -- convert 1 .length-foot .length-meter
expect_line "0.30479999" -- convert 1 ft m
expect_line "2.5" -- convert 2.5 km km
expect_line "98" -- convert 36.6 .temperature-c .temperature-f
expect_line "1.60934" -- convert 1 mph km/h
expect_line "1.852" -- --locale de_DE convert 1 sm km

# Nonsense: one line on stderr, exit status 2.
expect_fail 2 "value is not a number: 'x'" -- convert x m km
expect_fail 2 "unknown unit 'parsec'" -- convert 1 parsec m
expect_fail 2 "unknown unit '.length-parsec'" -- convert 1 m .length-parsec
expect_fail 2 "not units of one kind" -- convert 1 m kts
expect_fail 2 "not units of one kind" -- convert 1 .length-foot .distance-meter
expect_fail 2 "unknown kind 'volume'" -- units volume
expect_fail 2 "" -- convert 1 m

finish
