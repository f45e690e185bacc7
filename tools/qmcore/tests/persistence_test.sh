#!/usr/bin/env bash
# qmcore color, sequence, sanitize and image.
source "$(dirname "$0")/lib.sh" "$@"

# Colour texts: four pieces separated by exactly ", ", black otherwise.
expect_line "text: {0.500, 0.250, 0.125, 1.000}" -- color '{0.5, 0.25, 0.125, 1}'
expect_line "model: RGB" -- color ' {0.5, 0.25, 0.125, 1}'
expect_line "components: 0.5 0.25 0.125 1" -- color '{0.5, 0.25, 0.125, 1}'
expect_line "model: monochrome" -- color '{0.5,0.25,0.125,1}'
expect_line "text: {0.000, 0.000, 0.000, 1.000}" -- color '{0.5,0.25,0.125,1}'
expect_line "components: 0 0.5 1 1" -- color '{abc, 0.5x, 1, 1}'
expect_json '{"model": "RGB", "components": [1, 0, 0, 1]}' -- --json color '{1, 0, 0, 1}'

# Sequences persist: every line below is a new process over the same store.
expect_line "value: 1" -- sequence show inv
expect_line "stored: no" -- sequence show inv
expect_line "stored: no" -- sequence reset inv
expect_line "value: 007" -- sequence save inv --zeroes 3 --value 7
expect_line "value: 007" -- sequence show inv
expect_line "description: Value: 007 (start: 1, step: 1)" -- sequence show inv
expect_line "description: Wert: 007 (Start: 1, Schritt: 1)" -- --locale de_DE sequence show inv
expect_line "value: 042" -- sequence save inv --start 5 --step 2 --value 42
expect_line "value: 005" -- sequence reset inv
expect_line "step: 2" -- sequence show inv
expect_line "value: 12345" -- sequence save 'a b/c' --value 12345
expect_json '{"code": "a b/c", "value": 12345, "stored": true}' -- --json sequence show 'a b/c'
# A stored record missing "leadingZeroes" reads as the default and stays as it is.
python3 -c "import sqlite3,sys; c=sqlite3.connect(sys.argv[1]); \
c.execute(\"UPDATE settings SET value='{\\\"start\\\":1,\\\"step\\\":1,\\\"code\\\":\\\"inv\\\",\\\"value\\\":9}' WHERE key='QMSequenceStorageBaseKey_inv'\"); \
c.commit()" "$QM_SETTINGS_PATH"
expect_line "value: 1" -- sequence show inv
expect_line "stored: yes" -- sequence show inv
expect_fail 2 "go with save only" -- sequence show inv --value 3
expect_fail 2 "ACTION" -- sequence grow inv
expect_fail 2 "--value" -- sequence save inv --value x

# The sanitiser: clusters, not bytes; the cut after filtering.
expect_line " a" -- sanitize 'é abc' --max 2
expect_line "cafabc" -- sanitize $'cafe\xcc\x81abc'
expect_line "ab" -- sanitize $'a\tb'
expect_json '{"text": "x y"}' -- --json sanitize 'x y'
expect_fail 2 "--max must not be negative" -- sanitize abc --max -1

# Images made by another program (python3's zlib) are detected and converted.
python3 - "$work/made.png" <<'PY'
import struct, sys, zlib
w, h = 4, 3
rows = b''.join(b'\x00' + b''.join(bytes([x * 60, y * 80, 100, 255]) for x in range(w))
               for y in range(h))
chunk = lambda k, d: struct.pack('>I', len(d)) + k + d + struct.pack('>I', zlib.crc32(k + d))
open(sys.argv[1], 'wb').write(b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', w, h, 8, 6, 0, 0, 0))
    + chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b''))
PY
printf 'GIF89a' >"$work/other.gif"
expect_line "PNG" -- image detect "$work/made.png"
expect_line "UNKNOWN" -- image detect "$work/other.gif"
expect_fail 2 "cannot read" -- image detect "$work/missing.png"
expect_line "width: 4" -- image convert "$work/made.png" "$work/out.jpg" --format jpeg --quality 0.9
expect_line "JPEG" -- image detect "$work/out.jpg"
checks=$((checks + 1))
if ! djpeg -outfile "$work/out.ppm" "$work/out.jpg" || [ "$(head -c 8 "$work/out.ppm" | tr '\n' ' ')" != "P6 4 3 2" ]; then
  failures=$((failures + 1)); echo "FAIL: djpeg does not read the converted JPEG as 4x3"
fi
expect_line "format: PNG" -- image convert "$work/out.jpg" "$work/back.png" --format png --quality 0
expect_line "PNG" -- image detect "$work/back.png"

# Damaged pictures are a clear error, not a crash.
head -c 60 "$work/made.png" >"$work/cut.png"
head -c 200 "$work/out.jpg" >"$work/cut.jpg"
expect_fail 2 "The PNG picture cannot be read" -- image convert "$work/cut.png" "$work/x.png" --format png
expect_fail 2 "The JPEG picture cannot be read" -- image convert "$work/cut.jpg" "$work/x.png" --format png
expect_fail 2 "neither a PNG nor a JPEG" -- image convert "$work/other.gif" "$work/x.png" --format png
expect_fail 2 "--format" -- image convert "$work/made.png" "$work/x.gif" --format gif

finish
