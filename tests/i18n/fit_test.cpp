// Translations measured in the shipped fonts against the room the screens
// give them. Buttons of a fixed size shrink a long label to fit; a label that
// would have to shrink below three quarters of its size is too long.
#include <gtest/gtest.h>

#include "i18n/data/catalogs.h"
#include "tests/i18n/shipped_fonts.h"

namespace {

using i18ntest::filled;
using i18ntest::Layout;
using i18ntest::ShippedFonts;

constexpr double kSmallestReadableScale = 0.75;

struct Room {
  const char* key;
  const char* prefix;  // drawn before the text in the same line
  double size;
  bool bold;
  double width;
};

// Label sizes and widths of the widgets that show these texts.
constexpr Room kFixedRooms[] = {
    {"common.ok", "", 15, true, 134},  // confirmation dialog, 360 wide: (360 - 60) / 2 - 16
    {"common.cancel", "", 15, true, 134},
    {"common.back", "‹ ", 16, false, 130},  // the back button's rect
    {"common.continue", "", 18, true, 216},  // solved screen, a 240 wide menu button
    {"settings.colorDefault", "", 15, true, 74},  // 90 x 34, drawn primary while no colour is chosen
    {"settings.colorCustom", "", 15, false, 114},  // 130 x 30
    {"playing.confirmRestartTitle", "", 20, true, 312},  // dialog title: box width - 48
    {"playing.confirmShuffleTitle", "", 20, true, 312},
    {"levels.lockedTitle", "", 20, true, 312},
    {"settings.resetProgress", "", 20, true, 312},
    {"menu.continue", "", 18, true, 296},  // menu buttons are 320 wide
    {"menu.levelSelect", "", 18, true, 296},
    {"menu.newPuzzle", "", 18, true, 296},
    {"menu.gallery", "", 18, true, 296},
    {"menu.settings", "", 18, true, 296},
    {"menu.about", "", 18, true, 296},
    {"menu.quit", "", 18, true, 296},
};

TEST_F(ShippedFonts, FixedSizeButtonsAndTitlesHoldTheirLabels) {
  Layout scratch(15, false);
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const Room& room : kFixedRooms) {
      ui::TextStyle style;
      style.size = room.size;
      style.bold = room.bold;
      double w = 0, h = 0;
      ui::measureText(scratch.cr(), room.prefix + i18n::tr(room.key), style, &w, &h);
      EXPECT_LE(w * kSmallestReadableScale, room.width)
          << c.code << " " << room.key << " is " << w << " wide for " << room.width << ": " << i18n::tr(room.key);
    }
  }
}

// The dialog's message has the box width less 48 and, between title and
// buttons, room for three lines.
TEST_F(ShippedFonts, DialogMessagesWrapIntoThreeLines) {
  Layout layout(15, false);
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const char* key : {"playing.confirmRestartMessage", "playing.confirmShuffleMessage", "levels.lockedMessage",
                            "settings.resetProgressMessage"}) {
      PangoLayout* l = layout.set(filled(key));
      pango_layout_set_width(l, 312 * PANGO_SCALE);
      pango_layout_set_wrap(l, PANGO_WRAP_WORD_CHAR);
      EXPECT_LE(pango_layout_get_line_count(l), 3) << c.code << " " << key << ": " << filled(key);
      pango_layout_set_width(l, -1);
    }
  }
}

}  // namespace
