// Languages as a player meets them: the system language taken from the locale,
// texts looked up and filled, every text of every language in the shipped
// fonts, and each fitting the room its widget gives it.
#include <gtest/gtest.h>
#include <pango/pangocairo.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "i18n/data/catalogs.h"
#include "i18n/i18n.h"
#include "tests/support/font_support.h"
#include "tests/support/test_support.h"
#include "ui/text.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::ScopedEnv;

TEST(SystemLanguage, IsTheFirstSupportedOneOfLanguageLcAllLcMessagesAndLang) {
  const struct { std::optional<std::string> language, lcAll, lcMessages, lang; const char* want; } kCases[] = {
      {"xx:pt-BR", "fr_FR.UTF-8", "it_IT", "de_DE", "pt"},  // LANGUAGE is a list
      {"", "FR_fr.utf8", "it_IT", "de_DE", "fr"},           // empty counts as unset
      {"C", "POSIX", "it_IT@euro", "de_DE", "it"},          // unsupported falls through
      {{}, {}, "", "zh_TW.UTF-8", "zh"},                    // the region does not matter
      {"english:ptx", {}, {}, "C", "en"},                   // no prefix matching
  };
  for (const auto& c : kCases) {
    ScopedEnv a("LANGUAGE", c.language), b("LC_ALL", c.lcAll), m("LC_MESSAGES", c.lcMessages), l("LANG", c.lang);
    EXPECT_EQ(i18n::detectSystemLanguage(), c.want);
  }
}

TEST(Lookup, GivesTheChosenLanguagesTextWithEachPlaceholderFilledOnce) {
  ScopedEnv a("LANGUAGE", std::nullopt), b("LC_ALL", std::nullopt), m("LC_MESSAGES", "fi_FI.UTF-8");
  const struct { const char *setting, *key, *want, *name = "", *value = ""; } kCases[] = {
      {nullptr, "solved.title", "Solved!"},  // English before anything is chosen
      {"de-AT", "common.back", "Back"},      // a setting must name a language exactly
      {"", "menu.quit", "Lopeta"},           // an empty one follows the system
      {"de", "no.such.key", "no.such.key"},  // a missing text shows its key
      {"tr", "solved.time", "Süre: 1:02:03", "time", "1:02:03"},
      {"en", "solved.time", "Time: {{time}}", "count", "5"},
      {"en", "solved.time", "Time: {{time}}{{time}}", "time", "{{time}}{{time}}"},
      {"en", "{{x}} or {{x}}", "ab or ab", "x", "ab"},
  };
  for (const auto& c : kCases) {
    if (c.setting) i18n::setLanguage(c.setting);
    EXPECT_EQ(i18n::tr(c.key, {{c.name, c.value}}), c.want);
  }
}

// Texts laid out in the shipped fonts alone: fontconfig knows the bundled
// files and nothing else, so a glyph they lack cannot hide behind a font that
// happens to be installed on the machine.
struct ShippedFonts : ::testing::Test {
  void SetUp() override {
    testsupport::useShippedAssets();
    testsupport::isolateFonts();
    ASSERT_TRUE(ui::registerBundledFonts()) << "a font is missing below " << testsupport::shippedAssetRoot();
  }
};

// A pango layout in the interface's font family, on a context to measure in.
struct Layout {
  Layout(double size, bool bold) {
    PangoFontDescription* font = pango_font_description_from_string(ui::kUiFontFamily);
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_font_description_set_weight(font, bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
  }
  PangoLayout* set(const std::string& text) {
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout.get();
  }
  std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface{
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8), cairo_surface_destroy};
  std::unique_ptr<cairo_t, void (*)(cairo_t*)> cr{cairo_create(surface.get()), cairo_destroy};
  std::unique_ptr<PangoLayout, void (*)(gpointer)> layout{pango_cairo_create_layout(cr.get()), g_object_unref};
};

TEST_F(ShippedFonts, EveryLanguageHasEveryTextWithItsPlaceholdersGlyphsAndDirection) {
  Layout regular(20, false), bold(20, true);
  // The widgets' own signs (back, check mark, zoom, undo, restart, grid) and the languages' names.
  std::string signs = "\u2039 \u2713 \u2212 \u21B6 \u21BB 3\u00D74 \u00B7";
  for (const i18n::Language& l : i18n::languages()) signs += l.nativeName;
  for (Layout* l : {&regular, &bold}) EXPECT_EQ(pango_layout_get_unknown_glyphs_count(l->set(signs)), 0);
  const i18n_data::Catalog& en = i18n_data::kCatalogs[1];
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    size_t rtl = 0;
    for (size_t i = 0; i < en.count; ++i) {
      const std::string key = en.entries[i].key, english = en.entries[i].text;
      // Every placeholder filled the way the screens fill it.
      const std::string text = i18n::tr(key, {{"count", "110"}, {"prev", "3"}, {"level", "4"}, {"time", "1:02:03"}});
      SCOPED_TRACE(std::string(c.code) + " " + key + ": " + text);
      EXPECT_NE(text, key) << "no translation";
      for (const char* p : {"{{count}}", "{{prev}}", "{{level}}", "{{time}}"})
        EXPECT_EQ(i18n::tr(key).find(p) == text.npos, english.find(p) == text.npos) << p;
      for (Layout* l : {&regular, &bold}) EXPECT_EQ(pango_layout_get_unknown_glyphs_count(l->set(text)), 0);
      // Hebrew and Arabic letters (U+0590..U+06FF) have UTF-8 lead bytes 0xD6..0xDB; names,
      // addresses and "180°" stay left to right in every language.
      const bool rtlText = text.find_first_of("\xD6\xD7\xD8\xD9\xDA\xDB") != text.npos;
      rtl += rtlText;
      EXPECT_EQ(pango_layout_get_line_readonly(regular.set(text), 0)->resolved_dir,
                rtlText ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
    }
    EXPECT_EQ(c.rtl, rtl > en.count * 3 / 4) << c.code << ": the screens mirror by this flag";
  }
}

// Every language against the room the widgets give it in the smallest window
// (800 x 560): a label squeezed below 0.8 of its size is too long for its
// button, and a dialog's text must stay in its box.
constexpr double kSmallestScale = 0.8;
constexpr double kSettingsRow = 720;  // the settings column: 800 less 40 on each side
constexpr double kSixOptions = (kSettingsRow - 40) / 6 - 16, kThreeOptions = (kSettingsRow - 16) / 3 - 16;

TEST_F(ShippedFonts, EveryButtonLabelFitsItsButton) {
  const struct Room {
    std::vector<const char*> keys;
    double size;
    bool bold;     // primary buttons draw their label bold
    double width;  // the widget's width less its label margin
    double minScale = kSmallestScale;
  } kRooms[] = {
      {{"common.ok", "common.cancel"}, 15, true, 134},  // dialog buttons, (360 - 60) / 2 - 16
      {{"common.back"}, 16, false, 130 - 14},           // after "‹ "
      {{"common.continue"}, 18, true, 216},             // solved screen, 240 wide
      {{"playing.pause"}, 15, false, 80},               // 96 wide in the compact header
      {{"playing.letterRestart", "playing.letterShuffle", "playing.letterUndo"}, 18, true, 40, 1},  // never shrunk
      {{"menu.continue", "menu.levelSelect", "menu.newPuzzle", "menu.customPhoto", "menu.gallery", "menu.settings",
        "menu.about", "menu.quit"}, 18, true, 296},
      {{"difficulty.easy", "difficulty.medium", "difficulty.hard", "difficulty.expert", "difficulty.master",
        "difficulty.grandmaster"}, 15, true, kSixOptions},
      {{"settings.boardLayout_scatter", "settings.boardLayout_tray", "settings.boardLayout_scrollTray",
        "settings.boardZoom_off", "settings.boardZoom_autoOnPickup", "settings.boardZoom_wheel",
        "settings.rotation_off", "settings.rotation_180", "settings.rotation_90"}, 15, true, kThreeOptions},
      {{"settings.showSecondRow", "settings.hideConnectedBorder", "settings.sound"}, 15, false, kSettingsRow - 110},
      {{"settings.colorDefault"}, 15, true, 90 - 16},  // primary while no colour is chosen
      {{"settings.colorCustom"}, 15, false, 130 - 16},
      {{"settings.languageSystem", "settings.resetProgress"}, 15, false, 160 - 16},  // one-button rows
  };
  const Layout scratch(15, false);
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const Room& room : kRooms) {
      for (const char* key : room.keys) {
        double w = 0;
        ui::measureText(scratch.cr.get(), i18n::tr(key), {ui::kUiFontFamily, room.size, room.bold}, &w, nullptr);
        EXPECT_LE(w * room.minScale, room.width) << c.code << " " << key << ": " << i18n::tr(key);
      }
    }
  }
}

// Each dialog drawn in the smallest window: the message (light grey, off the
// cancel button) and the title (amber, above the buttons) keep the box's side
// margins, the message shows all its lines (three at most) below the title,
// and its gap to the buttons stays that of a one-line message however many
// lines it takes.
TEST_F(ShippedFonts, EveryDialogOfEveryLanguageKeepsItsTextInsideTheBox) {
  constexpr int kW = 800, kH = 560, kBoxX = (kW - 360) / 2;
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface{
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, kW, kH), cairo_surface_destroy};
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr{cairo_create(surface.get()), cairo_destroy};
  const auto* px = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(surface.get()));
  auto look = [&](const std::string& title, const std::string& message) {
    ui::Ctx ctx;
    ctx.cr = cr.get(), ctx.width = kW, ctx.height = kH;
    cairo_set_source_rgb(cr.get(), 0, 0, 0);
    cairo_paint(cr.get());
    ui::setWidgetTracing(true);
    ui::widgetTrace().clear();
    ui::confirmDialog(ctx, title, message, i18n::tr("common.ok"), i18n::tr("common.cancel"));
    cairo_surface_flush(surface.get());
    const ui::Rect cancel = ui::findTracedWidget(i18n::tr("common.cancel"))->rect;
    int titleBottom = -1, top = kH, bottom = -1, left = kW, right = -1;
    for (int y = 0; y < kH; ++y) {
      for (int x = 0; x < kW; ++x) {
        const uint32_t p = px[y * kW + x];  // light grey text has green and blue high, amber only red
        const bool text = (p & 0x8080) == 0x8080 && !cancel.contains(x, y);
        const bool heading = (p & 0x800080) == 0x800000 && y < cancel.y;
        if (heading) titleBottom = std::max(titleBottom, y);
        if (text) top = std::min(top, y), bottom = std::max(bottom, y);
        if (text || heading) left = std::min(left, x), right = std::max(right, x);
      }
    }
    const ui::ParagraphFit fit = ui::fitParagraph(ctx.cr, message, ui::TextStyle{}, 312, 3);
    EXPECT_TRUE(left > kBoxX + 23 && right < kBoxX + 360 - 23) << message << " spans " << left << ".." << right;
    EXPECT_GT(top, titleBottom) << message;
    const double line = fit.height / fit.lines;  // every line of the message shown, and not one more
    EXPECT_TRUE(bottom - top > fit.height - line && bottom - top < fit.height + line / 2)
        << message << " takes " << bottom - top << " of " << fit.height << " (" << fit.lines << " lines)";
    EXPECT_NEAR(cancel.y - bottom, 47, 6) << message;
    return fit;
  };
  const char* kDialogs[][2] = {
      {"levels.lockedTitle", "levels.lockedMessage"}, {"settings.resetProgress", "settings.resetProgressMessage"},
      {"playing.confirmRestartTitle", "playing.confirmRestartMessage"},
      {"playing.confirmShuffleTitle", "playing.confirmShuffleMessage"}};
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const auto& keys : kDialogs) {
      const ui::ParagraphFit fit = look(i18n::tr(keys[0]), i18n::tr(keys[1], {{"prev", "39"}, {"level", "40"}}));
      EXPECT_TRUE(!fit.cut && fit.scale >= kSmallestScale) << c.code << " " << keys[1] << " is cut or shrunk";
    }
  }
  i18n::setLanguage("en");
  std::string flood;  // more than three lines hold even at the smallest size, and a title of more than two
  for (int i = 0; i < 6; ++i) flood += i18n::tr("levels.lockedMessage") + " ";
  const ui::ParagraphFit fit = look(flood.substr(0, 120), flood);
  EXPECT_TRUE(fit.lines == 3 && fit.cut && fit.scale < 1) << fit.lines << " lines at " << fit.scale;
}

}  // namespace
