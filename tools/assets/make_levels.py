#!/usr/bin/python3
"""Makes assets/levels/<id>.jpg and <id>_blur.jpg for the forty levels, and
the licence texts the pictures need under assets/licenses/.

Usage: tools/assets/make_levels.py [--cache DIR] [--sheets DIR]

The source packages are fetched with apt-get download and unpacked with
dpkg -x into the cache folder (a temporary one by default); nothing is
installed. Needs ImageMagick (convert, identify, montage)."""

import argparse
import os
import shutil
import tempfile

import check_assets
from common import (ASSETS, catalogue_sizes, common_license, copyright_path, die, license_from_copyright,
                    need_tools, run, unpack_packages)
from pictures import LICENSE_TEXTS, PACKAGES, PICTURES

QUALITY = 88
BLUR_QUALITY = 82
# The blurred copies are only ever shown soft (locked thumbnails, backdrops),
# so they are kept small: this is their longer side.
BLUR_SIDE = 800
# Beyond this the source is stretched visibly; the table is expected to stay
# below it.
MAX_UPSCALE = 1.3


def identify(path):
    out = run(["identify", "-format", "%w %h|%[icc:description]\n", path + "[0]"], capture_output=True,
              text=True).stdout.split("\n")[0]
    size, _, icc = out.partition("|")
    w, h = (int(v) for v in size.split())
    return w, h, icc


def crop_box(sw, sh, tw, th, focus, zoom):
    """Largest rectangle of the slot's aspect ratio inside the source,
    shrunk by zoom, centred on focus and kept inside the picture."""
    aspect = tw / th
    if sw / sh > aspect:
        ch = sh
        cw = sh * aspect
    else:
        cw = sw
        ch = sw / aspect
    cw, ch = round(cw * zoom), round(ch * zoom)
    x = min(max(round(focus[0] * sw - cw / 2), 0), sw - cw)
    y = min(max(round(focus[1] * sh - ch / 2), 0), sh - ch)
    return cw, ch, x, y


def make_picture(pic, src, size, out_dir):
    sw, sh, icc = identify(src)
    # Colours are taken as they are: refuse a source in another colour space
    # rather than silently shift its colours when the profile is stripped.
    # ("c2" is a compact sRGB profile some web tools embed.)
    if icc and "srgb" not in icc.lower() and icc != "c2":
        die(f"{src}: colour profile '{icc}' is not sRGB")
    tw, th = size
    cw, ch, x, y = crop_box(sw, sh, tw, th, pic["focus"], pic["zoom"])
    scale = tw / cw
    if scale > MAX_UPSCALE:
        die(f"{pic['id']}: {src} would be enlarged {scale:.2f}x")
    full = os.path.join(out_dir, pic["id"] + ".jpg")
    run(["convert", src + "[0]", "-crop", f"{cw}x{ch}+{x}+{y}", "+repage", "-colorspace", "sRGB",
         "-filter", "Lanczos", "-resize", f"{tw}x{th}!", "-strip", "-sampling-factor", "4:2:0",
         "-quality", str(QUALITY), full])
    blur_size = f"{BLUR_SIDE}x{BLUR_SIDE}"
    run(["convert", full, "-resize", blur_size, "-blur", "0x30", "-strip", "-quality", str(BLUR_QUALITY),
         os.path.join(out_dir, pic["id"] + "_blur.jpg")])
    return dict(source=f"{sw}x{sh}", crop=f"{cw}x{ch}+{x}+{y}", scale=scale)


def write_license_texts(roots):
    for pic in PICTURES:
        if pic["license"] not in LICENSE_TEXTS:
            die(f"no licence text known for {pic['license']}")
    out_dir = os.path.join(ASSETS, "licenses")
    os.makedirs(out_dir, exist_ok=True)
    # All of them: the sounds' licences are among these too.
    for name in sorted(LICENSE_TEXTS):
        file_name, origin = LICENSE_TEXTS[name]
        if origin[0] == "common":
            text = common_license(origin[1])
        else:
            text = license_from_copyright(copyright_path(roots[origin[1]], origin[1]), origin[2])
        with open(os.path.join(out_dir, file_name), "w", encoding="utf-8") as f:
            f.write(text)


def contact_sheets(out_dir, sheet_dir):
    os.makedirs(sheet_dir, exist_ok=True)
    for suffix, name in (("", "levels.png"), ("_blur", "levels_blur.png")):
        args = []
        for pic in PICTURES:
            args += ["-label", pic["id"] + " " + pic["title"], os.path.join(out_dir, pic["id"] + suffix + ".jpg")]
        run(["montage", *args, "-tile", "8x", "-geometry", "300x220+6+6", "-background", "#1a1a1a",
             "-fill", "#f2f2f2", "-pointsize", "14", os.path.join(sheet_dir, name)])


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("--cache", help="folder for the downloaded and unpacked packages (kept)")
    ap.add_argument("--sheets", help="also write contact sheets (levels.png, levels_blur.png) here")
    args = ap.parse_args()
    need_tools("apt-get", "dpkg", "convert", "identify", "montage")

    sizes = catalogue_sizes()
    if sorted(p["id"] for p in PICTURES) != sorted(sizes):
        die("the picture table and the catalogue name different levels")
    cache = args.cache or tempfile.mkdtemp(prefix="tessellatrix-pictures-")
    try:
        roots = unpack_packages(PACKAGES, cache)
        out_dir = os.path.join(ASSETS, "levels")
        os.makedirs(out_dir, exist_ok=True)
        for pic in PICTURES:
            src = roots[pic["package"]] + pic["path"]
            info = make_picture(pic, src, sizes[pic["id"]], out_dir)
            print(f"{pic['id']:8} {info['source']:>10} crop {info['crop']:>20} x{info['scale']:.3f}  {pic['title']}")
        write_license_texts(roots)
        if args.sheets:
            contact_sheets(out_dir, args.sheets)
    finally:
        if not args.cache:
            shutil.rmtree(cache, ignore_errors=True)
    check_assets.main(["levels"])


if __name__ == "__main__":
    main()
