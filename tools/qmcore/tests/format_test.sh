#!/usr/bin/env bash
# qmcore format, heading and bearing: value texts in the persisted unit settings; each run is a
# new process. Each kind, label and option once: the rules of the texts are the library's tests.
source "$(dirname "$0")/lib.sh" "$@"

for kind in distance map-distance altitude speed average-speed pace length area pressure vspeed \
    ruler; do
  expect "text: " -- format "$kind" 100
done
# First launch in en_US is imperial; a system stored by one run holds in the next.
expect_line "text: 328ft" -- format distance 100
"$tool" settings system metric >/dev/null
expect_json '{"text": "1.00km", "value": "1.00", "unit": "km", "spoken": "1.00 kilometers to go"}' \
  -- --json format distance 1000
expect_json '{"text": "36.0 km/h", "twoDecimals": "36.00", "fourDecimals": "36.0000"}' -- \
  --json format average-speed 10
expect_json '{"text": "06:40 min/km", "seconds": 400}' -- --json format pace 2.5
expect_fail 2 "VALUE is not a finite number: 'inf'" -- format distance inf
expect_fail 2 "unknown kind 'volume' (one of distance, map-distance" -- format volume 3
expect_fail 2 "VALUE is too large for a ruler" -- format ruler 1e40

expect_json '{"orientationCorrectedHeading": 30, "textForCompassHeading": "NE30",
  "shortCompassBearingText": "NE", "compassTitle": "COMPASS (T)"}' -- \
  --json heading 300 --orientation landscape-left
expect_line $'orientationCorrectedHeading: 90\ntextForCompassHeading: 1600\ncompassTitle: COMPASS (M)' \
  -- heading 90 --mils --magnetic
expect_fail 2 "DEGREES is not a finite number: 'inf'" -- heading inf
expect_fail 2 "unknown orientation 'sideways' (one of portrait," -- heading 10 --orientation sideways

expect_line "S45°30'W" -- bearing 225.5
expect_json '{"azimuth": 100.25, "text": "S79°45'"'"'E"}' -- --json bearing 100.25
expect_fail 2 "AZIMUTH is not a number: '1,5'" -- bearing 1,5

finish
