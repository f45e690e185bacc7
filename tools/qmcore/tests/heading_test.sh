#!/usr/bin/env bash
# qmcore heading and bearing.
source "$(dirname "$0")/lib.sh" "$@"

# The labels of the text output and each option (the rules of the texts are the library's tests).
expect_line "orientationCorrectedHeading: 30" -- heading 300 --orientation landscape-left
expect_line "shortCompassBearingText: NE" -- heading 300 --orientation landscape-left
expect_line "orientationCorrectedHeading: 280" -- heading 10 --orientation landscape-right
expect_line "orientationCorrectedHeading: 20" -- heading 200 --orientation upside-down
expect_line "textForCompassHeading: 1600" -- heading 90 --mils
expect_line "compassTitle: COMPASS (M)" -- heading 90 --magnetic
expect_line "textForCompassHeading: NO47" -- --locale de_DE heading 47

expect_fail 2 "DEGREES is not a number: 'north'" -- heading north
expect_fail 2 "DEGREES is not a finite number: 'inf'" -- heading inf
expect_fail 2 "unknown orientation 'sideways'" -- heading 10 --orientation sideways
expect_fail 2 "DEGREES is required" -- heading

# Quadrant bearings.
expect_line "S45°30'W" -- bearing 225.5
expect_line "S79°45'O" -- --locale de_DE bearing 100.25

expect_fail 2 "AZIMUTH is not a number: '1,5'" -- bearing 1,5
expect_fail 2 "AZIMUTH is not a finite number: 'inf'" -- bearing inf
expect_fail 2 "AZIMUTH is required" -- bearing

finish
