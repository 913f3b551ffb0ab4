"""The forty level pictures: where each comes from, who made it, under which
licence, and how it is cut to its slot in the level catalogue.

Every row names a Debian package and a file inside it. The sizes are the ones
the game's catalogue gives (read from core/catalog.cpp); the board takes its aspect
ratio from the catalogue, so each picture is cropped to that ratio first and
only then scaled, never stretched.

Licence columns:
  package_license  what the package's debian/copyright says for the file
  upstream_license what the picture's own metadata says, where it differs
  license          the one we honour: the stricter of the two
"""

# Order matters only for reading: the first ten are sharp, colourful pictures
# with distinct regions; later levels bring bokeh, repeating textures and
# near-monotone skies, so that difficulty rises gently with the number.

LOMIRI16 = "lomiri-wallpapers-16.04"
LOMIRI20 = "lomiri-wallpapers-20.04"
MATE = "mate-backgrounds"
PLASMA = "plasma-workspace-wallpapers"
LXQT = "lxqt-themes"
UKUI = "ukui-wallpapers"
PALAPELI = "palapeli-data"
JIGSAW = "puzzle-jigsaw"
JXL = "libjxl-testdata"

PACKAGES = [LOMIRI16, LOMIRI20, MATE, PLASMA, LXQT, UKUI, PALAPELI, JIGSAW, JXL]

# Licence name -> (file shipped under assets/licenses/, where its text comes
# from: a common-licenses file, or a package whose copyright file holds it).
LICENSE_TEXTS = {
    "CC-BY-4.0": ("CC-BY-4.0.txt", ("copyright", LOMIRI16, "CC-BY-4.0")),
    "CC-BY-SA-4.0": ("CC-BY-SA-4.0.txt", ("copyright", LOMIRI16, "CC-BY-SA-4.0")),
    "CC-BY-SA-3.0": ("CC-BY-SA-3.0.txt", ("copyright", LOMIRI16, "CC-BY-SA-3.0")),
    "CC0-1.0": ("CC0-1.0.txt", ("common", "CC0-1.0")),
    "GPL-2+": ("GPL-2.txt", ("common", "GPL-2")),
    "BSD-3-clause-Google": ("BSD-3-clause-Google.txt", ("copyright", JXL, "BSD-3-clause-Google")),
}


def plasma(name, image="2560x1600.jpg"):
    return f"/usr/share/wallpapers/{name}/contents/images/{image}"


def lomiri(name):
    return f"/usr/share/backgrounds/{name}"


def mate(name):
    return f"/usr/share/backgrounds/mate/nature/{name}"


def lxqt(name):
    return f"/usr/share/lxqt/wallpapers/{name}"


def palapeli(name):
    return f"/usr/share/palapeli/collection/{name}"


# The lxqt photographs carry only a copyright notice of their own; the
# wallpapers' License file upstream puts them under CC BY-SA 3.0 while the
# package says LGPL-2.1+ for everything. The attribution and share-alike
# terms are the stricter, so they are the ones we honour. (Two other photos
# of that set, "fog" and "beam", say BY-NC-SA in their metadata and are left
# out: non-commercial terms are not free.)
LXQT_LICENSE = dict(license="CC-BY-SA-3.0", package_license="LGPL-2.1+", upstream_license="CC-BY-SA-3.0")
# Plasma's wallpapers declare LGPL-3 in their own metadata; the package says
# GPL-2+. The GPL is the stricter of the two.
PLASMA_LICENSE = dict(license="GPL-2+", package_license="GPL-2+", upstream_license="LGPL-3.0")
# Palapeli's pictures are public domain by their own metadata; the package
# puts everything under GPL-2+, which we honour.
PALAPELI_LICENSE = dict(license="GPL-2+", package_license="GPL-2+", upstream_license="public domain")


def row(level, package, path, title, author, focus=(0.5, 0.5), zoom=1.0, kind="photograph", **lic):
    """focus: the point of the source (fractions of width and height) the
    crop is centred on, moved inwards where the crop would leave the picture.
    zoom: below 1 crops tighter than the largest rectangle of the slot's
    aspect ratio."""
    if "license" not in lic:
        lic = dict(license=lic["package_license"], **lic)
    lic.setdefault("upstream_license", "")
    return dict(id=f"level{level}", package=package, path=path, title=title,
                author=author, focus=focus, zoom=zoom, kind=kind, **lic)


PICTURES = [
    row(1, PLASMA, plasma("EveningGlow"), "Evening Glow", "Ian Hex", (0.5, 0.5), **PLASMA_LICENSE),
    row(2, LOMIRI16, lomiri("picosdeeuropa_by_Aitzol_Berasategi.jpg"), "Picos de Europa",
        "Aitzol Berasategi", (0.5, 0.45), package_license="CC-BY-4.0"),
    row(3, JXL, "/usr/share/libjxl-testdata/jxl/flower/flower.png", "Flower", "the JPEG XL Project Authors",
        package_license="BSD-3-clause-Google"),
    row(4, LOMIRI16, lomiri("aitzgorri_by_Aitzol_Berasategi.jpg"), "Aitzgorri", "Aitzol Berasategi",
        package_license="CC-BY-4.0"),
    row(5, LOMIRI16, lomiri("life_by_Aitzol_Berasategi.jpg"), "Life", "Aitzol Berasategi",
        package_license="CC-BY-4.0"),
    row(6, LOMIRI16, lomiri("Dragonfly_by_Bolly.jpg"), "Dragonfly", "Bolly", (0.5, 0.45),
        package_license="CC-BY-SA-4.0"),
    row(7, PLASMA, plasma("ColorfulCups"), "Colorful Cups", "Dmitri Popov", **PLASMA_LICENSE),
    row(8, LOMIRI16, lomiri("sunset_by_Aitzol_Berasategi.jpg"), "Sunset", "Aitzol Berasategi",
        (0.5, 0.5), package_license="CC-BY-4.0"),
    # An illustration, not a photograph: distinct coloured regions make it an
    # easy early puzzle. Its own metadata says CC BY-SA 4.0, the package GPL-2+;
    # attribution with share-alike is the stricter.
    row(9, PLASMA, plasma("SafeLanding", "5120x2880.jpg"), "Safe Landing", "Louis Durrant", (0.5, 0.5),
        kind="illustration", license="CC-BY-SA-4.0", package_license="GPL-2+", upstream_license="CC-BY-SA-4.0"),
    row(10, PLASMA, plasma("Path"), "Path", "Risto Saukonpää", **PLASMA_LICENSE),
    row(11, PALAPELI, palapeli("citrus-fruits.jpg"), "Citrus Fruits", "US Department of Agriculture",
        **PALAPELI_LICENSE),
    row(12, LXQT, lxqt("after-the-rain.jpg"), "After the Rain", "Stef Binde", (0.5, 0.5), **LXQT_LICENSE),
    row(13, LXQT, lxqt("flowers.png"), "Flowers", "Stef Binde", (0.5, 0.5), **LXQT_LICENSE),
    row(14, UKUI, "/usr/share/backgrounds/goldfish.png", "Goldfish", "Ubuntu Kylin community contributors",
        (0.5, 0.5), kind="illustration", package_license="CC-BY-SA-3.0"),
    row(15, PALAPELI, palapeli("european-honey-bee.jpg"), "European Honey Bee", "John Severns",
        (0.5, 0.45), **PALAPELI_LICENSE),
    row(16, MATE, mate("LadyBird.jpg"), "Ladybird", "Charles Barbin", package_license="GPL-2+"),
    row(17, JIGSAW, "/usr/share/puzzle-jigsaw/samples/pexels-photo-302304.jpeg", "Tiger in the Snow",
        "Pexels", package_license="CC0-1.0"),
    row(18, PALAPELI, palapeli("cincinnati-bridge.jpg"), "Roebling Suspension Bridge", "Derek Jensen",
        (0.5, 0.5), **PALAPELI_LICENSE),
    row(19, PLASMA, plasma("FallenLeaf"), "Fallen Leaf", "Martin Klapetek", **PLASMA_LICENSE),
    row(20, MATE, mate("Garden.jpg"), "Garden", "Charles Barbin", package_license="GPL-2+"),
    row(21, LOMIRI16, lomiri("seeding_by_Clements_Engelhardt.jpg"), "Seeding", "Clemens Engelhardt",
        (0.4, 0.5), package_license="CC0-1.0"),
    row(22, LOMIRI20, lomiri("Kleiber_by_Lukas_Baubkus.jpg"), "Kleiber", "Lukas Baubkus", (0.47, 0.55), 0.8,
        package_license="CC-BY-SA-3.0"),
    row(23, LXQT, lxqt("butterfly.png"), "Butterfly", "Stef Binde", (0.52, 0.5), **LXQT_LICENSE),
    row(24, PLASMA, plasma("BytheWater"), "By the Water", "Maciej Wiklo", **PLASMA_LICENSE),
    # The one portrait slot: an apple blossom twig, which stands upright.
    row(25, LXQT, lxqt("appleflower.png"), "Apple Blossom", "Stef Binde", (0.56, 0.5), **LXQT_LICENSE),
    row(26, MATE, mate("FreshFlower.jpg"), "Fresh Flower", "Jens Ansorg", package_license="GPL-2+"),
    row(27, LOMIRI16, lomiri("Picture_1A_by_freespace.jpg"), "Brushes", "Trevor \"Freespace\"",
        (0.5, 0.4), package_license="CC-BY-4.0"),
    row(28, LOMIRI16, lomiri("friends_by_Aitzol_Berasategi.jpg"), "Friends", "Aitzol Berasategi",
        (0.5, 0.32), package_license="CC-BY-4.0"),
    row(29, MATE, mate("Dune.jpg"), "Dune", "Marco Cogoni, Hylke Bons", (0.5, 0.5),
        package_license="GPL-2+"),
    row(30, JIGSAW, "/usr/share/puzzle-jigsaw/samples/cat-animal-cat-portrait-mackerel.jpg",
        "Mackerel Cat", "Pexels", package_license="CC0-1.0"),
    row(31, LOMIRI16, lomiri("greentock_by_Peter_Nerlich.jpg"), "Greentock", "Peter Nerlich",
        package_license="CC-BY-SA-4.0"),
    row(32, PLASMA, plasma("OneStandsOut"), "One Stands Out", "Risto Saukonpää", **PLASMA_LICENSE),
    row(33, LOMIRI16, lomiri("Picture_0B_by_freespace.jpg"), "Fig", "Trevor \"Freespace\"",
        package_license="CC-BY-4.0"),
    row(34, LXQT, lxqt("drop.png"), "Drop", "Stef Binde", **LXQT_LICENSE),
    row(35, LOMIRI16, lomiri("Bridge_by_Sander_Klootwijk.jpg"), "Bridge", "Sander Klootwijk",
        package_license="CC-BY-SA-4.0"),
    row(36, LOMIRI16, lomiri("free_by_Peter_Nerlich.jpg"), "Free", "Peter Nerlich", (0.5, 0.55),
        package_license="CC-BY-SA-4.0"),
    row(37, MATE, mate("Blinds.jpg"), "Blinds", "Lennart Poettering, Andrea Cimitan",
        package_license="GPL-2+"),
    row(38, MATE, mate("RainDrops.jpg"), "Rain Drops", "blackcombwhistler07", package_license="GPL-2+"),
    row(39, MATE, mate("Storm.jpg"), "Storm", "Sergey Nazarov", package_license="GPL-2+"),
    row(40, PLASMA, plasma("summer_1am"), "summer 1am", "Risto Saukonpää", **PLASMA_LICENSE),
]
