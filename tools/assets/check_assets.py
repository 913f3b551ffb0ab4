#!/usr/bin/python3
"""Checks the asset tree as the game will read it: pictures at the
catalogue's sizes with blurred copies that give nothing away, the fonts under
the families the text layer asks for, sounds that decode at their lengths
with music that loops without a click, and a true credits line for every
file.

Usage: tools/assets/check_assets.py [levels|fonts|audio|credits ...]

With no argument every part is checked. Each make_*.py runs the part for what
it made; run this by hand after changing assets/ any other way. Prints every
fault and exits with 1 when there is one. Needs ImageMagick, sox,
fontconfig, python3-numpy and python3-fonttools."""

import os
import subprocess
import sys

import numpy as np

from common import ASSETS, REPO, catalogue_sizes

faults = []


def fault(message):
    faults.append(message)
    print(f"error: {message}", file=sys.stderr)


def output(cmd):
    return subprocess.run(cmd, check=True, capture_output=True).stdout


def grey(path):
    """The picture's pixels as 8-bit grey, rows by columns."""
    w, h = (int(v) for v in output(["identify", "-format", "%w %h", path]).split())
    return np.frombuffer(output(["convert", path, "-colorspace", "Gray", "-depth", "8", "gray:-"]),
                         np.uint8).reshape(h, w).astype(int)


def edges(pixels):
    """Mean step between horizontal neighbours: a sharp photograph has edges
    everywhere, a strongly blurred one almost none."""
    return float(np.abs(np.diff(pixels, axis=1)).mean())


def check_levels():
    for lid, (w, h) in sorted(catalogue_sizes().items()):
        full = os.path.join(ASSETS, "levels", lid + ".jpg")
        blur = os.path.join(ASSETS, "levels", lid + "_blur.jpg")
        if not (os.path.isfile(full) and os.path.isfile(blur)):
            fault(f"{lid}: picture or blurred copy missing")
            continue
        info = output(["identify", "-format", "%m %w %h %[colorspace]", full]).decode()
        if info != f"JPEG {w} {h} sRGB":
            fault(f"{full}: {info}, the catalogue wants a colour JPEG of {w}x{h}")
        # Thumbnails crop the sharp and the blurred copy alike.
        pixels = grey(blur)
        bh, bw = pixels.shape
        if abs(bw / bh - w / h) > 0.01 * w / h:
            fault(f"{blur}: {bw}x{bh} is not the shape of {w}x{h}")
        if edges(pixels) >= 1.0:
            fault(f"{blur} is not blurred enough ({edges(pixels):.2f})")
    # The measure itself tells a sharp photograph apart.
    if edges(grey(os.path.join(ASSETS, "levels", "level2.jpg"))) <= 2.0:
        fault("level2.jpg looks blurred: the blur measure no longer works")


def check_fonts():
    from fontTools.ttLib import TTFont
    fonts = [("DejaVuSans.ttf", "DejaVu Sans", "80"), ("DejaVuSans-Bold.ttf", "DejaVu Sans", "200"),
             ("QuillmossPuzzleCJK.ttf", "Quillmoss Puzzle CJK", "80")]
    for name, family, weight in fonts:
        path = os.path.join(ASSETS, "fonts", name)
        # What fontconfig makes of the file is what the game's text layer finds.
        got = output(["fc-query", "-f", "%{family}|%{weight}|%{fontformat}\n", path]).decode().split("\n")[0]
        if got != f"{family}|{weight}|TrueType":
            fault(f"{path}: fontconfig sees '{got}', the game asks for {family}, weight {weight}, TrueType")
    cjk = os.path.join(ASSETS, "fonts", "QuillmossPuzzleCJK.ttf")
    cmap = TTFont(cjk).getBestCmap()
    # A few of each required set: GB2312 and JIS level 1, Hangul, kana,
    # CJK punctuation, full-width forms.
    missing = [c for c in "拼图游楽語퍼즐じパ。「！" if ord(c) not in cmap]
    if missing:
        fault(f"{cjk} lacks {''.join(missing)}")
    if os.path.getsize(cjk) >= 2_600_000:
        fault(f"{cjk} is {os.path.getsize(cjk)} bytes: a subset should stay near two megabytes")


RATE = 44100
# Seconds each sound may last.
LENGTHS = {"sfx_click": (0.01, 0.1), "sfx_pickup": (0.05, 0.5), "sfx_drop": (0.05, 0.5), "sfx_snap": (0.1, 1.0),
           "sfx_success": (2.0, 3.0), "bgm_calm": (120.0, 180.0)}


def samples(path):
    """Decoded 16-bit stereo frames at the mixer's rate, as the game plays them."""
    raw = output(["sox", path, "-t", "raw", "-e", "signed", "-b", "16", "-c", "2", "-r", str(RATE), "-"])
    return np.frombuffer(raw, "<i2").reshape(-1, 2).astype(np.int32)


def check_audio():
    for name, (lo, hi) in LENGTHS.items():
        path = os.path.join(ASSETS, "audio", name + ".ogg")
        kind = output(["soxi", "-t", path]).decode().strip() if os.path.isfile(path) else "missing"
        if kind != "vorbis":
            fault(f"{path}: {kind}, not Ogg Vorbis")
            continue
        frames = samples(path)
        if not lo <= len(frames) / RATE <= hi:
            fault(f"{path} lasts {len(frames) / RATE:.3f} s, not {lo} to {hi}")
    # The music runs into its own beginning: the jump from the last frame to
    # the first stays within the steps the music takes anyway.
    music = samples(os.path.join(ASSETS, "audio", "bgm_calm.ogg"))
    typical = np.percentile(np.abs(np.diff(music, axis=0))[::7], 99.9, axis=0)
    seam = np.abs(music[0] - music[-1])
    if (seam > typical).any():
        fault(f"bgm_calm.ogg clicks where it loops: a jump of {seam} against {typical}")


LICENCES = {"music": "CC-BY-4.0", "sound effect": "CC0-1.0", "assets/fonts/QuillmossPuzzleCJK.ttf": "OFL-1.1"}


def check_credits():
    from make_credits import COLUMNS
    with open(os.path.join(ASSETS, "CREDITS.tsv"), encoding="utf-8") as f:
        rows = [line.split("\t") for line in f.read().splitlines()]
    if rows[0] != COLUMNS:
        fault(f"CREDITS.tsv header is {rows[0]}")
    credited = set()
    for r in rows[1:]:
        if len(r) != len(COLUMNS):
            fault(f"CREDITS.tsv: {r[0]} has {len(r)} fields")
            continue
        row = dict(zip(COLUMNS, r))
        if row["file"] in credited:
            fault(f"{row['file']} is credited twice")
        credited.add(row["file"])
        for column in ("file", "license_file"):
            if not os.path.isfile(os.path.join(REPO, row[column])):
                fault(f"{row['file']}: {row[column]} does not exist")
        ours = row["kind"] in ("music", "sound effect")
        # Everything not made here comes from a Debian package.
        for column in ("title", "author", "source_file", "license") + (() if ours else ("source_package",)):
            if not row[column]:
                fault(f"{row['file']} lacks {column}")
        # What the licences screen says of the team's own sounds and the CJK font.
        want = LICENCES.get(row["kind"], LICENCES.get(row["file"], row["license"]))
        if row["license"] != want:
            fault(f"{row['file']}: {row['license']} instead of {want}")
    for folder, _, files in os.walk(ASSETS):
        for f in files:
            rel = os.path.relpath(os.path.join(folder, f), REPO)
            # Licence texts are the credits' own references.
            if rel not in credited and not rel.startswith("assets/licenses/") and rel not in (
                    "assets/CREDITS.tsv", "assets/fonts/OFL.txt"):
                fault(f"{rel} has no credits line")
    size = sum(os.path.getsize(os.path.join(d, f)) for d, _, fs in os.walk(ASSETS) for f in fs)
    if size >= 60_000_000:
        fault(f"the asset tree is {size / 1e6:.1f} MB, above the 60 MB the package may take")


CHECKS = {"levels": check_levels, "fonts": check_fonts, "audio": check_audio, "credits": check_credits}


def main(parts):
    for part in parts or CHECKS:
        CHECKS[part]()
    if faults:
        sys.exit(1)
    print(f"checked: {' '.join(parts or CHECKS)}")


if __name__ == "__main__":
    main(sys.argv[1:])
