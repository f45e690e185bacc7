#!/usr/bin/env bash
# qmcore color, sequence, sanitize and image.
source "$(dirname "$0")/lib.sh" "$@"

# Colour texts: four pieces separated by exactly ", ", black otherwise.
expect_line $'model: RGB\ncomponents: 0.5 0.25 0.125 1\ntext: {0.500, 0.250, 0.125, 1.000}' -- \
  color '{0.5, 0.25, 0.125, 1}'
expect_json '{"model": "monochrome", "components": [0, 1], "text": "{0.000, 0.000, 0.000, 1.000}"}' \
  -- --json color '{0.5,0.25,0.125,1}'

# Sequences persist: every line below is a new process over the same store.
expect_line $'value: 1\nstored: no' -- sequence show inv
expect_line "value: 007" -- sequence save inv --zeroes 3 --start 5 --step 2 --value 7
expect_line $'value: 007\nstep: 2\ndescription: Value: 007 (start: 5, step: 2)' -- sequence show inv
expect_json '{"code": "inv", "value": 5, "leadingZeroes": 3, "stored": true}' -- \
  --json sequence reset inv
expect_fail 2 "go with save only" -- sequence show inv --value 3

# The sanitiser: clusters, not bytes; the cut after filtering.
expect_json '{"text": " a"}' -- --json sanitize $'e\xcc\x81 abc' --max 2
expect_fail 2 "--max must not be negative" -- sanitize abc --max -1

# A picture made by another program (python3's zlib) is converted (the library's tests have
# djpeg read its JPEGs).
python3 - "$work/made.png" <<'PY'
import struct, sys, zlib
chunk = lambda k, d: struct.pack('>I', len(d)) + k + d + struct.pack('>I', zlib.crc32(k + d))
rows = b''.join(b'\0' + bytes(c for x in range(4) for c in (x * 60, y * 80, 100, 255)) for y in range(3))
open(sys.argv[1], 'wb').write(b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', 4, 3, 8, 6, 0, 0, 0))
                              + chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b''))
PY
expect_line $'format: JPEG\nwidth: 4\nheight: 3' -- \
  image convert "$work/made.png" "$work/out.jpg" --format jpeg --quality 0.9
expect_json '{"format": "JPEG"}' -- --json image detect "$work/out.jpg"
# Damaged pictures are a clear error, not a crash.
head -c 60 "$work/made.png" >"$work/cut.png"
expect_fail 2 "The PNG picture cannot be read" -- image convert "$work/cut.png" "$work/x.png" --format png

finish
