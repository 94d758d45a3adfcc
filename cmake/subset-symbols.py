#!/usr/bin/env python3
"""Builds the program's own symbol font from the few glyphs that its table names.

The glyphs come from icon fonts with different units and boxes. They are redrawn into one font with an em of 1024
units whose line is exactly one em high, so that a symbol is centred in a square of its pixel size on every side. The
font has a family name of its own: an icon font that a desktop has installed under the same name can't take its place.

    subset-symbols.py TABLE --source NAME=FONT,CHARMAP ... --font OUT.ttf --code OUT.inc

An entry of the table is "source/glyph", or a list of parts {"glyph", "scale", "x", "y", "rotate"} that are drawn over
each other: scale (one number, or [across, down]) and then rotate (degrees, clockwise) about the centre of the box, and
then x and y in ems, y downwards.
"""

import argparse
import json
import logging
import math
import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.misc.transform import Transform
from fontTools.pens.recordingPen import DecomposingRecordingPen
from fontTools.pens.transformPen import TransformPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont

FAMILY = "Velto Symbols"
EM = 1024
FIRST = 0xE000  # the private use area


class Source:
    """An icon font and its map from glyph name to code point."""

    def __init__(self, font_path, charmap_path):
        font = TTFont(font_path)
        with open(charmap_path, encoding="utf-8") as file:
            self.codes = {name: int(code, 16) for name, code in json.load(file).items()}
        self.cmap = font.getBestCmap()
        self.glyphs = font.getGlyphSet()
        box = font["hhea"].ascent - font["hhea"].descent
        self.to_em = Transform().scale(EM / box, EM / box).translate(0, -font["hhea"].descent)

    def draw(self, name, pen):
        glyph = self.cmap[self.codes[name]]
        recording = DecomposingRecordingPen(self.glyphs)
        self.glyphs[glyph].draw(recording)
        recording.replay(TransformPen(pen, self.to_em))


def parts_of(entry):
    return [{"glyph": entry}] if isinstance(entry, str) else entry


def placed(part):
    middle = EM / 2
    scale = part.get("scale", 1)
    across, down = scale if isinstance(scale, list) else (scale, scale)
    return (Transform()
            .translate(middle + part.get("x", 0) * EM, middle - part.get("y", 0) * EM)
            .rotate(-math.radians(part.get("rotate", 0)))
            .scale(across, down)
            .translate(-middle, -middle))


def draw_symbol(entry, sources):
    pen = TTGlyphPen(None)
    for part in parts_of(entry):
        source, _, name = part["glyph"].partition("/")
        sources[source].draw(name, TransformPen(pen, placed(part)))
    return pen.glyph()


def build_font(table, sources, path):
    names = [".notdef"] + list(table)
    glyphs = {".notdef": TTGlyphPen(None).glyph()}
    for symbol, entry in table.items():
        try:
            glyphs[symbol] = draw_symbol(entry, sources)
        except KeyError as missing:
            sys.exit(f"{symbol}: the icon fonts found here have no {missing}")
    builder = FontBuilder(EM, isTTF=True)
    builder.setupHead(unitsPerEm=EM, created=0, modified=0)
    builder.font.recalcTimestamp = False
    builder.setupGlyphOrder(names)
    builder.setupCharacterMap({FIRST + index: symbol for index, symbol in enumerate(table)})
    builder.setupGlyf(glyphs)
    builder.setupHorizontalMetrics({name: (EM, getattr(glyphs[name], "xMin", 0)) for name in names})
    builder.setupHorizontalHeader(ascent=EM, descent=0)
    builder.setupNameTable({"familyName": FAMILY, "styleName": "Regular", "uniqueFontIdentifier": FAMILY,
                            "fullName": FAMILY, "psName": FAMILY.replace(" ", ""), "version": "Version 1.0"})
    builder.setupOS2(sTypoAscender=EM, sTypoDescender=0, sTypoLineGap=0, usWinAscent=EM, usWinDescent=0)
    builder.setupPost(keepGlyphNames=False)
    builder.save(path)


def write_code(table, path):
    with open(path, "w", encoding="utf-8") as file:
        for index, symbol in enumerate(table):
            file.write(f'VELTO_SYMBOL("{symbol}", 0x{FIRST + index:X})\n')


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("table")
    parser.add_argument("--source", action="append", required=True, metavar="NAME=FONT,CHARMAP")
    parser.add_argument("--font", required=True)
    parser.add_argument("--code", required=True)
    arguments = parser.parse_args()
    logging.disable(logging.WARNING)  # about old dates and padding in the icon fonts

    sources = {}
    for source in arguments.source:
        name, _, files = source.partition("=")
        sources[name] = Source(*files.split(","))
    with open(arguments.table, encoding="utf-8") as file:
        table = dict(sorted(json.load(file).items()))
    build_font(table, sources, arguments.font)
    write_code(table, arguments.code)


if __name__ == "__main__":
    main()
