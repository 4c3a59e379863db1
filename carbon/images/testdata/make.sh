#!/usr/bin/env bash
# Makes the test images anew, with ImageMagick: 16 x 12 pixels whose colour at (x, y) is (16x, 20y, 8x + 4y),
# 192 different ones, in each format and in its odd variants.
set -euo pipefail
cd "$(dirname "$0")"

python3 - <<'PYTHON' >source.ppm
import sys
out = sys.stdout.buffer
out.write(b"P6 16 12 255\n")
for y in range(12):
    for x in range(16):
        out.write(bytes((16 * x, 20 * y, 8 * x + 4 * y)))
PYTHON
plain() { convert source.ppm -strip "$@"; }

plain -quality 95 -sampling-factor 1x1 plain.jpg
plain -quality 95 -sampling-factor 1x1 -interlace JPEG progressive.jpg
plain -quality 95 -sampling-factor 2x2 -define jpeg:restart-interval=1 halved.jpg
plain -colorspace Gray -quality 95 grey.jpg
plain -colorspace CMYK -quality 95 cmyk.jpg

plain PNG24:plain.png
plain -interlace PNG PNG24:interlaced.png
plain -depth 16 -colorspace Gray -define png:color-type=0 -define png:bit-depth=16 grey16.png
plain -alpha set -channel A -evaluate set 50% PNG32:alpha.png

python3 - <<'PYTHON'
import struct, zlib
chunk = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
colors = bytes(c for y in range(12) for x in range(16) for c in (16 * x, 20 * y, 8 * x + 4 * y))
rows = b"".join(b"\0" + bytes(range(16 * y, 16 * y + 16)) for y in range(12))
open("palette.png", "wb").write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 16, 12, 8, 3, 0, 0, 0)) +
    chunk(b"PLTE", colors) + chunk(b"tRNS", b"\0") + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
PYTHON

plain plain.gif
plain -interlace GIF interlaced.gif
convert source.ppm -strip -crop 8x6+0+0 +repage -transparent 'rgb(0,0,0)' -repage 16x12+4+3 offset.gif

plain -compress LZW -endian LSB lzw.tif
plain -compress none -endian MSB big.tif
plain -compress Zip -alpha set -channel A -evaluate set 50% alpha.tif
plain -monochrome -compress Group4 fax.tif

plain -type TrueColor BMP3:plain.bmp
plain -type Palette -compress RLE BMP3:rle.bmp
python3 - <<'PYTHON'
import struct
data = bytearray(open("plain.bmp", "rb").read())
start, = struct.unpack_from("<I", data, 10)
rows = [data[start + 48 * y:start + 48 * (y + 1)] for y in range(12)]
struct.pack_into("<i", data, 22, -12) # from the top down
open("down.bmp", "wb").write(data[:start] + b"".join(reversed(rows)))
PYTHON

# The tool writes rows from the top and says that they come from the bottom.
plain -compress none plain.tga
plain -flip -compress RLE rle.tga
plain -alpha set -channel A -evaluate set 50% alpha.tga
python3 - <<'PYTHON'
for name in ("plain.tga", "alpha.tga"):
    data = bytearray(open(name, "rb").read())
    data[17] |= 0x20
    open(name, "wb").write(data)
PYTHON

# 64 x 64 pixels of noise, none of them white, to be cut off half-way.
python3 - <<'PYTHON' >source.ppm
import random, sys
random.seed(1)
sys.stdout.buffer.write(b"P6 64 64 255\n" + bytes(random.randrange(200) for _ in range(64 * 64 * 3)))
PYTHON
plain PNG24:noise.png
plain -quality 60 noise.jpg
rm source.ppm
