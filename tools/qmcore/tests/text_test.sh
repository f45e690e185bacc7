#!/usr/bin/env bash
# qmcore time and filesize.
source "$(dirname "$0")/lib.sh" "$@"

# Every text of one span, truncated and never rounded.
expect_line "hmsTextForTicks: 01:01:01" -- time 3661.9
expect_line "hmTextForTicks: 01:01" -- time 3661.9
expect_line "timeTitleTextForTicks: 01h01m01s" -- time 3661.9
expect_line "textPerTicks: 01:01:01" -- time 3661.9
expect_line "textForTicksSkipHours: 61:01" -- time 3661.9
expect_line "timeAnnouncementTextForTicks2: 1 hour, 1 minute, 1 second" -- time 3661.9

# Signs, long spans, days after the clock.
expect_line "hmsTextForTicks: -00:01:01" -- time -61
expect_line "timeAnnouncementTextForTicks2: -1 minute, 1 second" -- time -61
expect_line "hmsTextForTicks: 00:00:59" -- time 59.9
expect_line "hmsTextForTicks: 100:00:00" -- time 360000
expect_line "textPerTicks: 05:03:02, 2 days" -- time 190982
expect_line "textPerTicks: 00:00:00, 1 day" -- time 86400
expect_line "timeAnnouncementTextForTicks2: 0 seconds" -- time 0

# The current locale's words and abbreviations.
expect_line "timeTitleTextForTicks: 01h02min03s" -- --locale de_DE time 3723
expect_line "textPerTicks: 00:00:00, 3 Tage" -- --locale de_DE time 259200
expect_line "timeAnnouncementTextForTicks2: 1 Stunde, 2 Minuten und 3 Sekunden" -- --locale de_DE time 3723

expect_fail 2 "TICKS is not a number: 'abc'" -- time abc
expect_fail 2 "TICKS is not a number: '1,5'" -- time 1,5
expect_fail 2 "TICKS is not a finite number" -- time inf
expect_fail 2 "TICKS is required" -- time

# File sizes at the boundaries of the binary multiples.
expect_line "1023 bytes" -- filesize 1023
expect_line "1 KB" -- filesize 1024
expect_line "2 KB" -- filesize 1536
expect_line "1024 KB" -- filesize 1048575
expect_line "1.0 MB" -- filesize 1048576
expect_line "1.00 GB" -- filesize 1073741824
expect_line "0 bytes" -- filesize 0

expect_fail 2 "BYTES is not a whole number of bytes: '1.5'" -- filesize 1.5
expect_fail 2 "BYTES is not a whole number of bytes: '1e19'" -- filesize 1e19
expect_fail 2 "BYTES is not a number: 'ten'" -- filesize ten

finish
