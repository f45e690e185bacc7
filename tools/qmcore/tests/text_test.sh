#!/usr/bin/env bash
# qmcore time and filesize.
source "$(dirname "$0")/lib.sh" "$@"

# The labels of the text output (the JSON test has every field; the rules of the texts are the
# library's tests), in the current locale's words.
expect_line "hmsTextForTicks: 01:01:01" -- time 3661.9
expect_line "textPerTicks: 05:03:02, 2 days" -- time 190982
expect_line "timeAnnouncementTextForTicks2: 1 Stunde, 2 Minuten und 3 Sekunden" -- --locale de_DE time 3723

expect_fail 2 "TICKS is not a number: 'abc'" -- time abc
expect_fail 2 "TICKS is not a number: '1,5'" -- time 1,5
expect_fail 2 "TICKS is not a finite number" -- time inf
expect_fail 2 "TICKS is required" -- time

expect_line "1023 bytes" -- filesize 1023
expect_line "1.0 MB" -- filesize 1048576

expect_fail 2 "BYTES is not a whole number of bytes: '1.5'" -- filesize 1.5
expect_fail 2 "BYTES is not a whole number of bytes: '1e19'" -- filesize 1e19
expect_fail 2 "BYTES is not a number: 'ten'" -- filesize ten

finish
