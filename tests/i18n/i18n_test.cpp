// Languages as a player meets them: the system language taken from the locale,
// texts looked up and filled, and every text of every language in the shipped fonts.
#include <gtest/gtest.h>

#include <optional>

#include "i18n/data/catalogs.h"
#include "tests/i18n/shipped_fonts.h"
#include "tests/support/test_support.h"

namespace {

using i18ntest::ShippedFonts;
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

TEST_F(ShippedFonts, EveryLanguageHasEveryTextWithItsPlaceholdersGlyphsAndDirection) {
  i18ntest::Layout regular(20, false), bold(20, true);
  // The widgets' own signs (back, check mark, zoom, undo, restart, grid) and the languages' names.
  std::string signs = "\u2039 \u2713 \u2212 \u21B6 \u21BB 3\u00D74 \u00B7";
  for (const i18n::Language& l : i18n::languages()) signs += l.nativeName;
  for (i18ntest::Layout* l : {&regular, &bold}) EXPECT_EQ(pango_layout_get_unknown_glyphs_count(l->set(signs)), 0);
  const i18n_data::Catalog& en = i18n_data::kCatalogs[1];
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    size_t rtl = 0;
    for (size_t i = 0; i < en.count; ++i) {
      const std::string key = en.entries[i].key, english = en.entries[i].text, text = i18ntest::filled(key);
      SCOPED_TRACE(std::string(c.code) + " " + key + ": " + text);
      EXPECT_NE(text, key) << "no translation";
      for (const char* p : {"{{count}}", "{{prev}}", "{{level}}", "{{time}}"})
        EXPECT_EQ(i18n::tr(key).find(p) == text.npos, english.find(p) == text.npos) << p;
      for (i18ntest::Layout* l : {&regular, &bold}) EXPECT_EQ(pango_layout_get_unknown_glyphs_count(l->set(text)), 0);
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

}  // namespace
