#!/usr/bin/env bash
# qmcore format, heading and bearing: value texts in the persisted unit settings; each run is a
# new process. The rules of the texts are the library's tests.
source "$(dirname "$0")/lib.sh" "$@"

# First launch in en_US is imperial; a system stored by one run holds in the next.
expect_line "text: 328ft" -- format distance 100
"$tool" settings system metric >/dev/null
expect_json '{"text": "1.00km", "value": "1.00", "unit": "km", "spoken": "1.00 kilometers to go"}' \
  -- --json format distance 1000
expect_json '{"text": "06:40 min/km", "seconds": 400}' -- --json format pace 2.5
expect_fail 2 "VALUE is not a finite number: 'inf'" -- format distance inf
expect_fail 2 "VALUE is too large for a ruler" -- format ruler 1e40

expect_json '{"orientationCorrectedHeading": 30, "compassTitle": "COMPASS (T)"}' -- \
  --json heading 300 --orientation landscape-left
expect_line $'orientationCorrectedHeading: 90\ntextForCompassHeading: 1600\ncompassTitle: COMPASS (M)' \
  -- heading 90 --mils --magnetic
expect_fail 2 "unknown orientation 'sideways' (one of portrait," -- heading 10 --orientation sideways

expect_json '{"azimuth": 100.25, "text": "S79°45'"'"'E"}' -- --json bearing 100.25
expect_fail 2 "AZIMUTH is not a number: '1,5'" -- bearing 1,5

finish
