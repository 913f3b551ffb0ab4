// Every text of every language drawn in the shipped fonts alone: no missing
// glyph, and Arabic and Hebrew running right to left.
#include <gtest/gtest.h>

#include "i18n/data/catalogs.h"
#include "tests/i18n/shipped_fonts.h"

namespace {

using i18ntest::filled;
using i18ntest::Layout;
using i18ntest::ShippedFonts;

// True when the text holds a Hebrew or Arabic letter (U+0590 to U+06FF).
bool hasRtlLetter(const std::string& text) {
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    const unsigned char c = text[i];
    if (c >= 0xD6 && c <= 0xDB) return true;  // lead bytes of U+0580 to U+06FF
  }
  return false;
}

PangoDirection direction(PangoLayout* layout) {
  return static_cast<PangoDirection>(pango_layout_get_line_readonly(layout, 0)->resolved_dir);
}

TEST_F(ShippedFonts, EveryTextHasAGlyphForEveryCharacterInRegularAndBold) {
  Layout regular(20, false), bold(20, true);
  int checked = 0;
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (size_t i = 0; i < c.count; ++i) {
      const std::string text = filled(c.entries[i].key);
      EXPECT_EQ(pango_layout_get_unknown_glyphs_count(regular.set(text)), 0) << c.code << " " << c.entries[i].key;
      EXPECT_EQ(pango_layout_get_unknown_glyphs_count(bold.set(text)), 0) << c.code << " bold " << c.entries[i].key;
      ++checked;
    }
  }
  EXPECT_EQ(checked, 22 * 100);
}

TEST_F(ShippedFonts, LanguageNamesAndTheWidgetSymbolsHaveGlyphs) {
  Layout layout(20, true);
  for (const i18n::Language& l : i18n::languages()) {
    EXPECT_EQ(pango_layout_get_unknown_glyphs_count(layout.set(l.nativeName)), 0) << l.code;
  }
  // Back arrow, check mark, undo and restart, grid and separator signs.
  for (const char* symbol : {"‹ ", "✓", "↶", "↻", "10×11", " · ", "100%", "LVL 40", "v1.1.0 Build 1000"}) {
    EXPECT_EQ(pango_layout_get_unknown_glyphs_count(layout.set(symbol)), 0) << symbol;
  }
}

TEST_F(ShippedFonts, ArabicAndHebrewTextsRunRightToLeft) {
  Layout layout(20, false);
  for (const char* code : {"ar", "he"}) {
    i18n::setLanguage(code);
    const i18n_data::Catalog& c = i18n_data::kCatalogs[code == std::string("ar") ? 20 : 21];
    int rtl = 0;
    for (size_t i = 0; i < c.count; ++i) {
      const std::string text = filled(c.entries[i].key);
      if (!hasRtlLetter(text)) continue;  // names, addresses, "180°"
      PangoLayout* l = layout.set(text);
      EXPECT_EQ(direction(l), PANGO_DIRECTION_RTL) << code << " " << c.entries[i].key << ": " << text;
      // The first character read stands at the right-hand end of the line.
      PangoRectangle first;
      pango_layout_index_to_pos(l, 0, &first);
      int w = 0, h = 0;
      pango_layout_get_size(l, &w, &h);
      EXPECT_GT(first.x, w / 2) << code << " " << c.entries[i].key;
      ++rtl;
    }
    EXPECT_GT(rtl, 85) << code << ": nearly every text is in its own script";
  }
}

TEST_F(ShippedFonts, OtherLanguagesRunLeftToRight) {
  Layout layout(20, false);
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    if (c.rtl) continue;
    i18n::setLanguage(c.code);
    for (size_t i = 0; i < c.count; ++i) {
      EXPECT_EQ(direction(layout.set(filled(c.entries[i].key))), PANGO_DIRECTION_LTR) << c.code << " " << c.entries[i].key;
    }
  }
}

}  // namespace
