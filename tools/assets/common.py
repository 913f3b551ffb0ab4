"""Helpers shared by the asset scripts: the repository's folders, fetching
Debian packages without installing them, and licence texts from copyright
files."""

import os
import re
import subprocess
import sys

TOOLS = os.path.dirname(os.path.abspath(__file__))
REPO = os.path.dirname(os.path.dirname(TOOLS))
ASSETS = os.path.join(REPO, "assets")


def die(message):
    print(f"error: {message}", file=sys.stderr)
    sys.exit(1)


def run(cmd, **kw):
    return subprocess.run(cmd, check=True, **kw)


def need_tools(*names):
    from shutil import which
    missing = [n for n in names if which(n) is None]
    if missing:
        die("missing tools: " + " ".join(missing) + " (see tools/assets/README.md for the packages)")


def unpack_packages(packages, cache):
    """Downloads each package with apt-get and unpacks it with dpkg -x under
    cache/<package>; nothing is installed. Packages already unpacked there
    are reused. Returns {package: root folder}."""
    os.makedirs(cache, exist_ok=True)
    roots = {}
    for pkg in packages:
        root = os.path.join(cache, pkg)
        if not os.path.isdir(root):
            debs = os.path.join(cache, "debs")
            os.makedirs(debs, exist_ok=True)
            run(["apt-get", "download", pkg], cwd=debs)
            deb = [f for f in os.listdir(debs) if f.startswith(pkg + "_") and f.endswith(".deb")]
            if not deb:
                die(f"apt-get download {pkg} left no .deb")
            os.makedirs(root + ".part", exist_ok=True)
            run(["dpkg", "-x", os.path.join(debs, sorted(deb)[-1]), root + ".part"])
            os.rename(root + ".part", root)
        roots[pkg] = root
    return roots


def copyright_path(root, package):
    return os.path.join(root, "usr/share/doc", package, "copyright")


def license_from_copyright(path, name):
    """The text of the 'License: <name>' paragraph of a machine-readable
    debian/copyright file, with its continuation lines unfolded (' .' is an
    empty line). A stand-alone licence paragraph is preferred; otherwise the
    text given inside a Files paragraph is taken."""
    lines = open(path, encoding="utf-8").read().split("\n")
    found = {}
    for i, line in enumerate(lines):
        if line.strip() != f"License: {name}":
            continue
        body = []
        for cont in lines[i + 1:]:
            if not cont.startswith(" "):
                break
            body.append("" if cont.strip() == "." else cont[1:])
        standalone = i == 0 or not lines[i - 1].strip()
        if body:
            found.setdefault(standalone, "\n".join(body).rstrip() + "\n")
    if not found:
        die(f"no licence text '{name}' in {path}")
    return found.get(True, found.get(False))


def common_license(name):
    return open(os.path.join("/usr/share/common-licenses", name), encoding="utf-8").read()


def catalogue_sizes():
    """{level id: (width, height)} from the game's level table, so the
    pictures are cut to exactly what the game expects."""
    src = open(os.path.join(REPO, "core/catalog.cpp"), encoding="utf-8").read()
    rows = re.findall(r'\{"(level\d+)", "[^"]*", (\d+), (\d+)\}', src)
    if len(rows) != 40:
        die(f"expected 40 level rows in core/catalog.cpp, found {len(rows)}")
    return {lid: (int(w), int(h)) for lid, w, h in rows}
