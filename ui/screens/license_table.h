// What the game ships and links, with licence, authors and web address: the
// rows of the licences page. Only libraries the Debian build really loads
// are named (ldd on the game and on its SDL_mixer), and the rows must say
// what assets/CREDITS.tsv and packaging/copyright say; a test holds the
// three together.
#pragma once

namespace ui {

struct LicenseRow {
  const char* name;
  const char* version;  // empty: whatever Debian installs
  const char* license;
  const char* authors;
  const char* url;
};

inline constexpr LicenseRow kLicenses[] = {
    {"SDL2", "", "Zlib", "Sam Lantinga und Mitwirkende", "https://www.libsdl.org/"},
    {"SDL2_mixer", "", "Zlib", "Sam Lantinga, Ryan C. Gordon und Mitwirkende", "https://github.com/libsdl-org/SDL_mixer"},
    {"cairo", "", "LGPL-2.1 / MPL-1.1", "Carl Worth, Keith Packard und Mitwirkende", "https://www.cairographics.org/"},
    {"Pixman", "", "MIT", "Keith Packard, Søren Sandmann Pedersen und Mitwirkende", "https://www.pixman.org/"},
    {"Pango", "", "LGPL-2.1", "Owen Taylor, Behdad Esfahbod und Mitwirkende", "https://gitlab.gnome.org/GNOME/pango"},
    {"GLib / GObject / GIO", "", "LGPL-2.1", "Das GNOME-Projekt und Mitwirkende", "https://gitlab.gnome.org/GNOME/glib"},
    {"HarfBuzz", "", "MIT", "Behdad Esfahbod und Mitwirkende", "https://harfbuzz.github.io/"},
    {"FreeType", "", "FTL / GPL-2", "David Turner, Robert Wilhelm, Werner Lemberg und Mitwirkende",
     "https://freetype.org/"},
    {"fontconfig", "", "MIT", "Keith Packard und Mitwirkende", "https://www.freedesktop.org/wiki/Software/fontconfig/"},
    {"FriBidi", "", "LGPL-2.1", "Dov Grobgeld, Behdad Esfahbod und Mitwirkende", "https://github.com/fribidi/fribidi"},
    {"libpng / zlib", "", "libpng / Zlib", "Glenn Randers-Pehrson, Cosmin Truta, Jean-loup Gailly, Mark Adler und Mitwirkende",
     "http://www.libpng.org/ · https://zlib.net/"},
    {"libogg / libvorbis", "", "BSD-3-Clause", "Xiph.Org Foundation und Mitwirkende", "https://xiph.org/"},
    {"Opus / opusfile / FLAC", "", "BSD-3-Clause", "Xiph.Org Foundation, Josh Coalson und Mitwirkende",
     "https://opus-codec.org/ · https://xiph.org/flac/"},
    {"mpg123 / LAME", "", "LGPL-2.1 / LGPL-2.0", "Michael Hipp, Thomas Orgis, das LAME-Projekt und Mitwirkende",
     "https://www.mpg123.de/ · https://lame.sourceforge.io/"},
    {"libsndfile / libsamplerate", "", "LGPL-2.1 / BSD-2-Clause", "Erik de Castro Lopo und Mitwirkende",
     "https://libsndfile.github.io/libsndfile/"},
    {"FluidSynth / libmodplug", "", "LGPL-2.1 / Public Domain",
     "Peter Hanappe, Tom Moebert, Olivier Lapicque, Konstanty Bialkowski und Mitwirkende",
     "https://www.fluidsynth.org/ · https://modplug-xmms.sourceforge.net/"},
    {"libsodium", "", "ISC", "Frank Denis und Mitwirkende", "https://libsodium.org/"},
    {"libjpeg-turbo", "", "IJG / BSD-3-Clause / Zlib", "Independent JPEG Group, D. R. Commander und Mitwirkende",
     "https://libjpeg-turbo.org/"},
    {"stb_image", "", "MIT / Public Domain", "Sean Barrett und Mitwirkende", "https://github.com/nothings/stb"},
    {"DejaVu Sans", "", "Bitstream Vera / Public Domain",
     "DejaVu-Team (Štěpán Roh und Mitwirkende), nach Bitstream Vera von Bitstream, Inc.",
     "https://dejavu-fonts.github.io/"},
    {"Quillmoss Puzzle CJK (aus Noto Sans CJK)", "", "SIL OFL 1.1", "Adobe und Google",
     "https://github.com/notofonts/noto-cjk"},
    {"Musik: Moss Garden", "", "CC BY 4.0", "Quillmoss Software", "https://quillmoss.software"},
    {"Klangeffekte", "", "CC0 1.0", "Quillmoss Software", "https://quillmoss.software"},
};

}  // namespace ui
