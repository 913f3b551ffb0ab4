#!/usr/bin/python3
"""Makes assets/fonts/: DejaVuSans.ttf and DejaVuSans-Bold.ttf copied unchanged
from fonts-dejavu-core, and QuillmossPuzzleCJK.ttf, a subset of Noto Sans
CJK SC (fonts-noto-cjk) with TrueType outlines and its family renamed, plus
OFL.txt beside it and the DejaVu licence under assets/licenses/.

Usage: tools/assets/make_fonts.py

The subset holds every character of the translation catalogues
(i18n/data/*.cpp and *.h, every string literal) that Noto Sans CJK has, and
a common set: GB2312 level 1, JIS X 0208 level 1, the KS X 1001 Hangul
syllables, kana, CJK punctuation and the full-width forms. The script fails
when a catalogue character has a glyph in neither DejaVu Sans nor the
subset, so a translation cannot bring in a character the game cannot draw.
Run it again whenever a catalogue changes; it needs python3-fonttools,
fonts-dejavu-core and fonts-noto-cjk."""

import glob
import os
import re
import shutil
import sys

from fontTools import subset
from fontTools.pens.cu2quPen import Cu2QuPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTCollection, TTFont, newTable

import check_assets
from common import ASSETS, REPO, die, license_from_copyright

DEJAVU_DIR = "/usr/share/fonts/truetype/dejavu"
DEJAVU_FILES = ["DejaVuSans.ttf", "DejaVuSans-Bold.ttf"]
NOTO_TTC = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc"
NOTO_FACE = "Noto Sans CJK SC"
FAMILY = "Quillmoss Puzzle CJK"
OUT_NAME = "QuillmossPuzzleCJK.ttf"
# Largest distance, in font units (1000 per em), between a cubic outline and
# its quadratic replacement: well below a pixel at any text size the game uses.
MAX_CURVE_ERROR = 1.0


# --- characters the catalogues use -------------------------------------------------

def string_literals(src):
    """Yields the decoded text of every string literal of a C++ source:
    ordinary ones with their escapes (prefixes u8, u, U, L) and raw ones.
    Comments and character literals are skipped."""
    i, n = 0, len(src)
    while i < n:
        c = src[i]
        if src.startswith("//", i):
            i = src.find("\n", i)
            i = n if i < 0 else i
        elif src.startswith("/*", i):
            end = src.find("*/", i + 2)
            i = n if end < 0 else end + 2
        elif c == "'":
            i = skip_quoted(src, i, "'")
        elif c == '"':
            raw = RAW_PREFIX.search(src, 0, i + 1) is not None
            if raw:
                open_paren = src.index("(", i)
                delim = ")" + src[i + 1:open_paren] + '"'
                end = src.index(delim, open_paren)
                yield src[open_paren + 1:end]
                i = end + len(delim)
            else:
                end = skip_quoted(src, i, '"')
                yield unescape(src[i + 1:end - 1])
                i = end
        else:
            i += 1


# R"delim(...)delim", with an optional encoding prefix, not part of a longer name.
RAW_PREFIX = re.compile(r'(?<![A-Za-z0-9_])(?:u8|u|U|L)?R"$')


def skip_quoted(src, i, quote):
    j = i + 1
    while j < len(src) and src[j] != quote:
        j += 2 if src[j] == "\\" else 1
    return j + 1


SIMPLE_ESCAPES = {"n": b"\n", "t": b"\t", "r": b"\r", "0": b"\0", "\\": b"\\", '"': b'"', "'": b"'", "?": b"?",
                  "a": b"\a", "b": b"\b", "f": b"\f", "v": b"\v"}


def unescape(body):
    """The bytes a narrow or u8 literal holds, decoded as UTF-8: hexadecimal
    and octal escapes are bytes, universal names are code points."""
    out = bytearray()
    i = 0
    while i < len(body):
        c = body[i]
        if c != "\\":
            out += c.encode("utf-8")
            i += 1
            continue
        e = body[i + 1]
        if e == "x":
            j = i + 2
            while j < len(body) and body[j] in "0123456789abcdefABCDEF":
                j += 1
            out.append(int(body[i + 2:j], 16) & 0xFF)
            i = j
        elif e in "uU":
            width = 4 if e == "u" else 8
            out += chr(int(body[i + 2:i + 2 + width], 16)).encode("utf-8")
            i += 2 + width
        elif e in "01234567":
            j = i + 1
            while j < len(body) and j < i + 4 and body[j] in "01234567":
                j += 1
            out.append(int(body[i + 1:j], 8) & 0xFF)
            i = j
        else:
            out += SIMPLE_ESCAPES.get(e, e.encode("utf-8"))
            i += 2
    return out.decode("utf-8")


def catalogue_characters():
    """{character: [files using it]} of every printable character in the
    catalogues' string literals."""
    files = sorted(glob.glob(os.path.join(REPO, "i18n/data/*.cpp")) + glob.glob(os.path.join(REPO, "i18n/data/*.h")))
    used = {}
    for path in files:
        src = open(path, encoding="utf-8").read()
        for text in string_literals(src):
            for ch in text:
                if ch.isprintable() and not ch.isspace():
                    used.setdefault(ch, set()).add(os.path.relpath(path, REPO))
    return files, used


# --- the common set ------------------------------------------------------------------

def decode_rows(codec, leads, trails):
    chars = set()
    for lead in leads:
        for trail in trails:
            try:
                chars.add(bytes([lead, trail]).decode(codec))
            except UnicodeDecodeError:
                pass
    return chars


def common_set():
    chars = set()
    # GB2312 level 1: rows 16-55 (lead bytes 0xB0-0xD7 in EUC-CN).
    chars |= decode_rows("gb2312", range(0xB0, 0xD8), range(0xA1, 0xFF))
    # JIS X 0208 level 1: rows 16-47 (lead bytes 0xB0-0xCF in EUC-JP).
    chars |= decode_rows("euc_jp", range(0xB0, 0xD0), range(0xA1, 0xFF))
    # KS X 1001 Hangul syllables: rows 16-40 (lead bytes 0xB0-0xC8 in EUC-KR).
    chars |= decode_rows("euc_kr", range(0xB0, 0xC9), range(0xA1, 0xFF))
    for lo, hi in ((0x3000, 0x303F),   # CJK symbols and punctuation
                   (0x3040, 0x309F),   # hiragana
                   (0x30A0, 0x30FF),   # katakana
                   (0x31F0, 0x31FF),   # katakana phonetic extensions
                   (0xFF00, 0xFFEF),   # half-width and full-width forms
                   (0x0020, 0x007E)):  # ASCII, so the font stands on its own
        chars |= {chr(cp) for cp in range(lo, hi + 1)}
    return chars


# --- building the subset -----------------------------------------------------------------

def noto_face():
    collection = TTCollection(NOTO_TTC)
    for font in collection.fonts:
        if font["name"].getDebugName(1) == NOTO_FACE:
            return font
    die(f"{NOTO_TTC} has no face '{NOTO_FACE}'")


def to_truetype_outlines(font):
    """Replaces the CFF table by glyf/loca, converting every cubic outline to
    quadratic curves. PostScript contours run the other way round from
    TrueType ones, hence the reversal."""
    glyph_set = font.getGlyphSet()
    glyphs = {}
    for name in font.getGlyphOrder():
        pen = TTGlyphPen(glyph_set)
        glyph_set[name].draw(Cu2QuPen(pen, MAX_CURVE_ERROR, reverse_direction=True))
        glyphs[name] = pen.glyph()
    glyf = newTable("glyf")
    glyf.glyphOrder = font.getGlyphOrder()
    glyf.glyphs = glyphs
    font["glyf"] = glyf
    font["loca"] = newTable("loca")
    for tag in ("CFF ", "VORG"):
        if tag in font:
            del font[tag]
    font.sfntVersion = "\x00\x01\x00\x00"
    font["head"].glyphDataFormat = 0
    maxp = font["maxp"]
    maxp.tableVersion = 0x00010000
    for field in ("maxZones", "maxTwilightPoints", "maxStorage", "maxFunctionDefs", "maxInstructionDefs",
                  "maxStackElements", "maxSizeOfInstructions", "maxComponentElements", "maxComponentDepth",
                  "maxPoints", "maxContours", "maxCompositePoints", "maxCompositeContours"):
        setattr(maxp, field, 1 if field == "maxZones" else 0)
    post = font["post"]
    post.formatType = 3.0
    post.extraNames, post.mapping = [], {}


def rename(font):
    """The OFL lets a modified font be shipped only under another name."""
    name = font["name"]
    name.names = [r for r in name.names if r.nameID not in (1, 2, 3, 4, 6, 16, 17, 10)]
    values = {1: FAMILY, 2: "Regular", 3: FAMILY + " Regular; subset of " + NOTO_FACE, 4: FAMILY,
              6: FAMILY.replace(" ", "") + "-Regular",
              10: "A subset of " + NOTO_FACE + " with TrueType outlines, made for Quillmoss's Puzzle."}
    for name_id, text in values.items():
        name.setName(text, name_id, 3, 1, 0x409)
        name.setName(text, name_id, 1, 0, 0)
    if "CFF " in font:
        font["CFF "].cff.fontNames = [values[6]]


def build_subset(chars):
    font = noto_face()
    options = subset.Options()
    options.name_IDs = ["*"]
    options.name_languages = ["*"]
    options.notdef_outline = True
    options.hinting = False
    options.desubroutinize = True
    # Horizontal UI text only: the locale and vertical alternates would nearly
    # double the glyph count.
    options.layout_features = ["kern"]
    options.drop_tables += ["vhea", "vmtx", "VORG"]
    subsetter = subset.Subsetter(options)
    subsetter.populate(unicodes=[ord(c) for c in chars])
    subsetter.subset(font)
    to_truetype_outlines(font)
    rename(font)
    # Keep the source's date so that running the script again gives the same file.
    font.recalcTimestamp = False
    return font


def cmap_of(path):
    return set(chr(cp) for cp in TTFont(path).getBestCmap())


def main():
    for path in [os.path.join(DEJAVU_DIR, f) for f in DEJAVU_FILES] + [NOTO_TTC]:
        if not os.path.isfile(path):
            die(f"{path} is missing (install fonts-dejavu-core and fonts-noto-cjk)")
    out_dir = os.path.join(ASSETS, "fonts")
    os.makedirs(out_dir, exist_ok=True)
    for f in DEJAVU_FILES:
        shutil.copyfile(os.path.join(DEJAVU_DIR, f), os.path.join(out_dir, f))

    files, used = catalogue_characters()
    noto_chars = set(chr(cp) for cp in noto_face().getBestCmap())
    wanted = common_set() | (set(used) & noto_chars)
    wanted &= noto_chars
    font = build_subset(wanted)
    out = os.path.join(out_dir, OUT_NAME)
    # Only a subset that passes the check replaces the shipped one.
    font.save(out + ".new")
    have = cmap_of(out + ".new")
    missing = []
    for f in DEJAVU_FILES:
        covered = have | cmap_of(os.path.join(out_dir, f))
        missing += [(ch, f) for ch in used if ch not in covered]
    if missing:
        for ch, f in sorted(missing):
            print(f"error: U+{ord(ch):04X} {ch!r} (in {', '.join(sorted(used[ch]))}) has no glyph in {f} "
                  f"or {OUT_NAME}", file=sys.stderr)
        os.remove(out + ".new")
        sys.exit(1)
    os.replace(out + ".new", out)

    with open(os.path.join(out_dir, "OFL.txt"), "w", encoding="utf-8") as fh:
        names = noto_face()["name"]
        fh.write(f"{FAMILY} is a subset of {NOTO_FACE}, renamed as the licence asks of modified fonts.\n"
                 f"{names.getDebugName(0)}\n{names.getDebugName(7)}\n\n")
        fh.write(license_from_copyright("/usr/share/doc/fonts-noto-cjk/copyright", "SIL-1.1"))
    os.makedirs(os.path.join(ASSETS, "licenses"), exist_ok=True)
    with open(os.path.join(ASSETS, "licenses", "DejaVu-Bitstream-Vera.txt"), "w", encoding="utf-8") as fh:
        fh.write("Copyright (c) 2003 by Bitstream, Inc. All Rights Reserved.\n"
                 "Bitstream Vera is a trademark of Bitstream, Inc.\nDejaVu changes are in public domain.\n\n")
        fh.write(license_from_copyright("/usr/share/doc/fonts-dejavu-core/copyright", "bitstream-vera"))

    print(f"{len(files)} catalogue files, {len(used)} distinct characters; "
          f"{OUT_NAME}: {len(have)} characters, {os.path.getsize(out) / 1e6:.2f} MB")
    check_assets.main(["fonts"])


if __name__ == "__main__":
    main()
