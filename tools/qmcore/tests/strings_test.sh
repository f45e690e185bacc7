#!/usr/bin/env bash
# qmcore strings: the keys with their texts in a locale, or the keys its language's table lacks.
source "$(dirname "$0")/lib.sh" "$@"

# A complete table lacks no key, whichever region names the language.
run_tool strings --missing --locale fr_CA
check "fr_CA lacks keys" test "$status" = 0 -a ! -s "$work/out"
# A language without a table lacks every key, and shows the English texts meanwhile.
expect_line $'Feet\tFeet' -- strings --locale it_IT
keys=$(wc -l <"$work/out")
expect_line "Feet" -- strings --missing --locale it_IT
check "it_IT lacks $(wc -l <"$work/out") of the $keys keys" test "$(wc -l <"$work/out")" = "$keys"

expect_line $'Feet\tFuß' -- strings --locale de_AT
expect_json '{"key": "Switch to %1$@ from %2$@", "text": "%2$@から%1$@に切り替え"}' -- \
  --json strings --locale ja_JP
expect_json '{"key": "Feet"}' -- --json strings --missing --locale it_IT
expect_fail 2 "--missing" -- strings --missing=maybe

finish
