#!/usr/bin/python3
"""Writes assets/CREDITS.tsv: one line for every shipped asset file with
where it comes from, who made it and under which licence. The licences and
About screens read it, so every credit the game shows is true.

Usage: tools/assets/make_credits.py

Columns (tab-separated, first line is the header):
  file              path from the asset root ("assets/levels/level1.jpg")
  kind              photograph, illustration, font, sound effect or music
  title             the work's name
  author            its maker, as the source states it
  source_package    the Debian package it was taken from ("" when made here)
  source_file       the file inside that package, or the script that made it
  license           the licence honoured for the shipped file
  package_license   the licence the package's copyright file gives
  upstream_license  what the work's own metadata says, when that differs
  license_file      the licence text shipped in the asset tree
  notes             what was changed, or what the sound is like

Files of the tree that are themselves licence texts (assets/licenses/,
assets/fonts/OFL.txt) and this file carry no line."""

import os

import check_assets
from common import ASSETS, die
from make_audio import MUSIC_TITLE
from pictures import LICENSE_TEXTS, PICTURES

COLUMNS = ["file", "kind", "title", "author", "source_package", "source_file", "license", "package_license",
           "upstream_license", "license_file", "notes"]

DEJAVU = dict(kind="font", author="DejaVu fonts team (Stepan Roh and contributors), after Bitstream Vera by Bitstream, Inc.",
              source_package="fonts-dejavu-core", license="Bitstream-Vera", package_license="bitstream-vera",
              upstream_license="", license_file="assets/licenses/DejaVu-Bitstream-Vera.txt",
              notes="unmodified")

FONTS = [
    dict(DEJAVU, file="assets/fonts/DejaVuSans.ttf", title="DejaVu Sans",
         source_file="/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"),
    dict(DEJAVU, file="assets/fonts/DejaVuSans-Bold.ttf", title="DejaVu Sans Bold",
         source_file="/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"),
    dict(file="assets/fonts/QuillmossPuzzleCJK.ttf", kind="font", title="Quillmoss Puzzle CJK (from Noto Sans CJK)",
         author="Adobe and Google (Noto Sans CJK)", source_package="fonts-noto-cjk",
         source_file="/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc", license="OFL-1.1",
         package_license="SIL-1.1", upstream_license="", license_file="assets/fonts/OFL.txt",
         notes="subset of the Noto Sans CJK SC face (the catalogues' characters, GB2312 level 1, JIS level 1, "
               "KS X 1001 Hangul, kana, CJK punctuation, full-width forms); outlines converted to TrueType; "
               "family renamed by tools/assets/make_fonts.py"),
]

# The game's makers, as its About screen names them.
OURS = "Quillmoss Software"
SOUNDS = [
    ("sfx_click", "sound effect", "Click", "a soft wooden tick of 45 ms: a damped 1.6 kHz tone over a lower knock"),
    ("sfx_pickup", "sound effect", "Pickup", "a gentle upward glide of 160 ms, 480 to 860 Hz"),
    ("sfx_drop", "sound effect", "Drop", "a falling glide of 200 ms over a soft low thump"),
    ("sfx_snap", "sound effect", "Snap", "a crisp tick followed by a plucked E5 string, half a second, light room"),
    ("sfx_success", "sound effect", "Success",
     "a rising arpeggio of bell tones C E G C E over a low C, 2.5 s, fading in a small room"),
    ("bgm_calm", "music", MUSIC_TITLE,
     "2:30 loop at 64 beats a minute: twenty chords in C major (I vi IV V and relatives) on a slow detuned pad, "
     "a soft sine bass on each bar and a sparse pentatonic electric-piano melody; the reverb tail of the end "
     "is carried into the beginning, so it loops without a seam"),
]


def picture_rows():
    rows = []
    for pic in PICTURES:
        base = dict(kind=pic["kind"], title=pic["title"], author=pic["author"], source_package=pic["package"],
                    source_file=pic["path"], license=pic["license"], package_license=pic["package_license"],
                    upstream_license=pic["upstream_license"],
                    license_file="assets/licenses/" + LICENSE_TEXTS[pic["license"]][0])
        rows.append(dict(base, file=f"assets/levels/{pic['id']}.jpg",
                         notes="cropped to the level's aspect ratio and scaled to its size"))
        rows.append(dict(base, file=f"assets/levels/{pic['id']}_blur.jpg",
                         notes=f"strongly blurred, reduced copy of {pic['id']}.jpg"))
    return rows


def sound_rows():
    rows = []
    for name, kind, title, notes in SOUNDS:
        # The music is released under CC BY 4.0, the effects under CC0 1.0.
        lic = "CC-BY-4.0" if kind == "music" else "CC0-1.0"
        rows.append(dict(file=f"assets/audio/{name}.ogg", kind=kind, title=title, author=OURS, source_package="",
                         source_file="tools/assets/make_audio.py", license=lic, package_license="",
                         upstream_license="", license_file=f"assets/licenses/{lic}.txt",
                         notes="synthesised: " + notes))
    return rows


def main():
    rows = picture_rows() + FONTS + sound_rows()
    lines = ["\t".join(COLUMNS)]
    for r in rows:
        fields = [r[c] for c in COLUMNS]
        if any("\t" in f or "\n" in f for f in fields):
            die(f"tab or newline in the credits of {r['file']}")
        for path in (r["file"], r["license_file"]):
            if not os.path.isfile(os.path.join(os.path.dirname(ASSETS), path)):
                die(f"{path} does not exist; run the other make_*.py scripts first")
        lines.append("\t".join(fields))
    with open(os.path.join(ASSETS, "CREDITS.tsv"), "w", encoding="utf-8") as f:
        f.write("\n".join(lines) + "\n")
    print(f"{len(rows)} credits")
    check_assets.main(["credits"])


if __name__ == "__main__":
    main()
