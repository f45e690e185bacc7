#!/usr/bin/env bash
# qmcore --json: one JSON object per result and line, with the fields the text shows.
source "$(dirname "$0")/lib.sh" "$@"

# One case a line: the arguments after --json (none holding a space) | fields one object has.
# In order: the settings changes persist into the later rows.
while IFS='|' read -r args expected; do
  read -ra argv <<<"$args"
  expect_json "$expected" -- --json "${argv[@]}"
done <<'EOF_CASES'
units length | {"kind": "length", "identifier": ".length-foot", "name": "Foot", "abbreviation": "ft", "factor": 0.30479999, "description": "1 ft = 0.304800 m"}
units length | {"identifier": ".length-shaku", "name": "Shaku (尺)", "abbreviation": "尺", "factor": 0.303}
units | {"kind": "vspeed", "identifier": ".vspeed-m/s", "factor": 1}
--locale de_DE units speed | {"identifier": ".speed-knot", "name": "KNOTEN", "abbreviation": "kn"}
convert 1 .length-foot .length-meter | {"value": 1, "from": ".length-foot", "to": ".length-meter", "result": 0.30479999}
convert 36.6 °C °F | {"value": 36.6, "from": ".temperature-c", "to": ".temperature-f", "result": 98}
convert 98 °F °C | {"result": 36.666666666666664}
convert 1 km² m² | {"from": ".area-squarekilometer", "result": 1000000}
settings | {"system": "Imperial", "distance": {"identifier": ".distance-foot", "name": "Feet", "abbreviation": "ft"}, "verticalSpeed": {"identifier": ".vspeed-ft/min", "name": "feet/minute", "abbreviation": "ft/min"}}
settings system metric | {"system": "Metric", "speed": {"identifier": ".speed-kmh", "name": "KM/H", "abbreviation": "km/h"}, "description": "Metric. Distance: Meters. Altitude: Meters. Speed: KM/H"}
settings rules .length-foot | {"identifier": ".length-foot", "text": "Always keep as Foot"}
format distance 1000 | {"text": "1.00km", "value": "1.00", "unit": "km", "spoken": "1.00 kilometers to go"}
format average-speed 10 | {"text": "36.0 km/h", "twoDecimals": "36.00", "fourDecimals": "36.0000"}
format pace 2.5 | {"text": "06:40 min/km", "seconds": 400}
format vspeed 2.54 | {"text": "2.5 m/s", "scale": "/10"}
heading 300 --orientation landscape-left | {"orientationCorrectedHeading": 30, "textForCompassHeading": "NE30", "shortCompassBearingText": "NE", "compassTitle": "COMPASS (T)"}
heading 47.5 --orientation unknown | {"orientationCorrectedHeading": 47.5}
bearing 225.5 | {"azimuth": 225.5, "text": "S45°30'W"}
--locale de_DE bearing 100.25 | {"azimuth": 100.25, "text": "S79°45'O"}
date parse 2000-01-01T00:00:00+01:00 | {"text": "2000-01-01T00:00:00+01:00", "seconds": 946681200}
date format xml --at 1588327200.123 | {"name": "xml", "at": 1588327200.123, "text": "2020-05-01T10:00:00.123Z"}
--locale de_DE date format short --at 1588327200 | {"name": "short", "at": 1588327200, "text": "01-Mai-20 10:00:00"}
time 3661.9 | {"hmsTextForTicks": "01:01:01", "hmTextForTicks": "01:01", "timeTitleTextForTicks": "01h01m01s", "textPerTicks": "01:01:01", "textForTicksSkipHours": "61:01", "timeAnnouncementTextForTicks2": "1 hour, 1 minute, 1 second"}
--locale de_DE time 3723 | {"timeAnnouncementTextForTicks2": "1 Stunde, 2 Minuten und 3 Sekunden"}
filesize 1536 | {"bytes": 1536, "text": "2 KB"}
filesize 1073741824 | {"bytes": 1073741824, "text": "1.00 GB"}
EOF_CASES

# A result per line and nothing else: no "# kind" headings between the units.
run_tool --json units
checks=$((checks + 1))
[ "$(wc -l <"$work/out")" = 37 ] || report --json units
run_tool --json settings
checks=$((checks + 1))
[ "$(wc -l <"$work/out")" = 1 ] || report --json settings
# One object per timestamp, in the order given.
run_tool --json date parse 1970-01-01 2000-01-01T00:00:00.5Z 1969-12-31T23:59:59Z
checks=$((checks + 1))
[ "$(cat "$work/out")" = '{"text":"1970-01-01","seconds":0}
{"text":"2000-01-01T00:00:00.5Z","seconds":946684800.5}
{"text":"1969-12-31T23:59:59Z","seconds":-1}' ] || report --json date parse

# The flag may follow the command; errors stay one line on stderr, with nothing on stdout.
expect_json '{"result": 1.609344}' -- convert 1 mi km --json
expect_fail 2 "value is not a number: 'x'" -- --json convert x m km
checks=$((checks + 1))
[ -s "$work/out" ] && report --json convert x m km && echo "--- expected no stdout"
expect_fail 2 "'2000-01-01x'" -- --json date parse 1970-01-01 2000-01-01x
checks=$((checks + 1))
[ -s "$work/out" ] && report --json date parse 1970-01-01 2000-01-01x && echo "--- expected no stdout"

finish
