#!/usr/bin/env bash
# qmcore strings, and the texts of the other commands in every language that has a table.
source "$(dirname "$0")/lib.sh" "$@"

# The command succeeds and prints nothing: every key has a translation.
expect_nothing() {
  shift 1
  checks=$((checks + 1)); run_tool "$@"
  if [ "$(cat "$work/status")" != 0 ] || [ -s "$work/out" ] || [ -s "$work/err" ]; then
    report "$@"; echo "--- expected no output"
  fi
}

# The same number of lines from two commands.
expect_same_count() {
  checks=$((checks + 1))
  local a b; a="$("$tool" $1 | wc -l)"; b="$("$tool" $2 | wc -l)"
  if [ "$a" != "$b" ] || [ "$a" = 0 ]; then
    failures=$((failures + 1)); echo "FAIL: '$1' gives $a lines, '$2' gives $b"
  fi
}

# Every table is complete, whichever region names the language.
for locale in en_US de_DE fr_FR es_ES ja_JP fr_CA es_MX de_AT en_GB; do
  expect_nothing -- strings --missing --locale "$locale"
  expect_nothing -- --locale "$locale" strings --missing
done

# A language without a table lacks every key, and shows the English texts meanwhile.
expect_same_count "strings" "strings --missing --locale it_IT"
expect_line "Feet" -- strings --missing --locale it_IT
expect_line $'Feet\tFeet' -- strings --locale it_IT
expect_same_count "strings --locale it_IT" "strings --locale ja_JP"

# Each key with the text of the locale's language, regional locales included.
expect_line $'Feet\tFeet' -- strings
expect_line $'Feet\tFuß' -- strings --locale de_AT
expect_line $'Feet\tPieds' -- strings --locale fr_CA
expect_line $'Feet\tpies' -- strings --locale es_MX
expect_line $'Feet\tフィート' -- strings --locale ja_JP
expect_line $'km/h\tkm/h' -- strings --locale ja_JP
expect_line $'Switch to %1$@ from %2$@\t%2$@から%1$@に切り替え' -- strings --locale ja_JP
expect_json '{"key": "Feet", "text": "Pieds"}' -- --json strings --locale fr_FR
expect_json '{"key": "Feet"}' -- --json strings --missing --locale it_IT
expect_fail 2 "--missing" -- strings --missing=maybe

# Unit names, rules and descriptions in each language.
expect_line $'.speed-knot\tNŒUDS\tnd\t1.852\tNautique. 1.00 nd = 1.85 km/h ou 1.15 mph' -- --locale fr_FR units speed
expect_line $'.speed-kmh\tKM/H\tkm/h\t1\tMétrico. 1.00 km/h = 0.62 mph o 0.54 kn' -- --locale es_ES units speed
expect_line $'.speed-knot\tノット\tkt\t1.852\t航海. 1.00 kt = 1.85 km/h または 1.15 mph' -- --locale ja_JP units speed
expect_line $'.distance-foot\tPieds\tft\t0.30479999\t1 ft = 0.304800 m' -- --locale fr_FR units distance
expect_line "Passer en miles à partir de 2000 ft" -- --locale fr_FR settings rules .distance-foot
expect_line "Cambiar a millas a partir de 2000 ft" -- --locale es_ES settings rules .distance-foot
expect_line "2000 ftからマイルに切り替え" -- --locale ja_JP settings rules .distance-foot

# Texts built from the tables and by ICU follow the locale together.
expect_line "spoken: 1.50 キロメートル先" -- --locale ja_JP format distance 1500
expect_line "shortCompassBearingText: SO" -- --locale fr_CA heading 200
expect_line "compassTitle: COMPAS (G)" -- --locale fr_CA heading 200
expect_line "textForCompassHeading: 南西200" -- --locale ja_JP heading 200
expect_line "南45°30'西" -- --locale ja_JP bearing 225.5
expect_line "S45°30'O" -- --locale es_MX bearing 225.5
expect_line "timeTitleTextForTicks: 01時間02分03秒" -- --locale ja_JP time 3723
expect_line "textPerTicks: 05:03:02, 2 jours" -- --locale fr_FR time 190982
expect_line "timeAnnouncementTextForTicks2: 1 heure, 2 minutes et 3 secondes" -- --locale fr_CA time 3723
expect_line "timeAnnouncementTextForTicks2: 1 hora, 2 minutos y 3 segundos" -- --locale es_MX time 3723

finish
