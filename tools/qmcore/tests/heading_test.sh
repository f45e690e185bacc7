#!/usr/bin/env bash
# qmcore heading and bearing.
source "$(dirname "$0")/lib.sh" "$@"

# Every text of one heading on a display turned to the left.
expect_line "orientationCorrectedHeading: 30" -- heading 300 --orientation landscape-left
expect_line "textForCompassHeading: NE30" -- heading 300 --orientation landscape-left
expect_line "shortCompassBearingText: NE" -- heading 300 --orientation landscape-left
expect_line "compassTitle: COMPASS (T)" -- heading 300 --orientation landscape-left

# The other orientations, wrap-around and the 360 that stays.
expect_line "orientationCorrectedHeading: 280" -- heading 10 --orientation landscape-right
expect_line "orientationCorrectedHeading: 20" -- heading 200 --orientation upside-down
expect_line "orientationCorrectedHeading: 360" -- heading 360
expect_line "orientationCorrectedHeading: 47.5" -- heading 47.5 --orientation unknown
expect_line "orientationCorrectedHeading: 330" -- heading -30
expect_line "textForCompassHeading: N360" -- heading 360
expect_line "shortCompassBearingText: NW" -- heading 344.9

# Mils, magnetic north, the locale's letters.
expect_line "textForCompassHeading: 1600" -- heading 90 --mils
expect_line "shortCompassBearingText: E" -- heading 90 --mils
expect_line "compassTitle: COMPASS (M)" -- heading 90 --magnetic
expect_line "textForCompassHeading: NO47" -- --locale de_DE heading 47
expect_line "compassTitle: KOMPASS (G)" -- --locale de_DE heading 47

expect_fail 2 "DEGREES is not a number: 'north'" -- heading north
expect_fail 2 "DEGREES is not a finite number: 'inf'" -- heading inf
expect_fail 2 "unknown orientation 'sideways'" -- heading 10 --orientation sideways
expect_fail 2 "DEGREES is required" -- heading

# Quadrant bearings.
expect_line "S45°30'W" -- bearing 225.5
expect_line "S90°0'E" -- bearing 90
expect_line "N45°0'E" -- bearing -45
expect_line "N0°0'W" -- bearing 359.99
expect_line "S79°45'O" -- --locale de_DE bearing 100.25

expect_fail 2 "AZIMUTH is not a number: '1,5'" -- bearing 1,5
expect_fail 2 "AZIMUTH is not a finite number: 'inf'" -- bearing inf
expect_fail 2 "AZIMUTH is required" -- bearing

finish
