#!/usr/bin/env python3
"""Makes C++ string literals of Hershey fonts in James Hurt's format: a line a glyph, from the blank on.

usage: make_table.py NAME=FONT.jhf... > table

Of a line "12345  9I[RFJ[ RRFZ[ ..." everything from the sixth column but the count of points stays: two letters with
the left and the right border, then pairs of letters with coordinates, " R" between polylines.
"""
import json
import pathlib
import sys

for argument in sys.argv[1:]:
    name, file = argument.split("=", 1)
    glyphs = [line[8:].rstrip("\n") for line in pathlib.Path(file).read_text(encoding="ascii").splitlines()]
    if len(glyphs) < 95 or any(len(glyph) < 2 or len(glyph) % 2 for glyph in glyphs):
        sys.exit(f"{file}: not a font of 95 glyphs in the format .jhf")
    print(f"constexpr const char* {name}[95] = {{")
    for glyph in glyphs[:95]:
        print(f"    {json.dumps(glyph)},")
    print("};")
