// The compiled-in catalogues as data: every language complete, in order, and
// carrying the team's facts unchanged.
#include "i18n/data/catalogs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "i18n/i18n.h"
#include "platform/app_info.h"

namespace {

using i18n_data::Catalog;
using i18n_data::kCatalogs;

const Catalog& catalog(const std::string& code) {
  for (const Catalog& c : kCatalogs) {
    if (code == c.code) return c;
  }
  throw std::out_of_range(code);
}

std::map<std::string, std::string> texts(const Catalog& c) {
  std::map<std::string, std::string> m;
  for (size_t i = 0; i < c.count; ++i) {
    if (c.entries[i].key && c.entries[i].text) m[c.entries[i].key] = c.entries[i].text;
  }
  return m;
}

std::vector<std::string> placeholders(const std::string& text) {
  static const std::regex pattern(R"(\{\{[^}]*\}\})");
  std::vector<std::string> found;
  for (auto it = std::sregex_iterator(text.begin(), text.end(), pattern); it != std::sregex_iterator(); ++it) {
    found.push_back(it->str());
  }
  std::sort(found.begin(), found.end());
  return found;
}

// Code points of a well-formed UTF-8 string; -1 when it is not well-formed.
int codePoints(const std::string& s) {
  int n = 0;
  for (size_t i = 0; i < s.size(); ++n) {
    const unsigned char c = s[i];
    const size_t len = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
    if (len == 0 || i + len > s.size()) return -1;
    for (size_t k = 1; k < len; ++k) {
      if ((static_cast<unsigned char>(s[i + k]) >> 6) != 2) return -1;
    }
    i += len;
  }
  return n;
}

TEST(Catalogues, TwentyTwoLanguagesInTheirOrderWithNamesAndDirection) {
  const std::vector<std::string> codes = {"de", "en", "fr", "es", "it", "pt", "nl", "pl", "cs", "hu", "ro",
                                          "sv", "da", "fi", "el", "tr", "ru", "ja", "zh", "ko", "ar", "he"};
  const auto& langs = i18n::languages();
  ASSERT_EQ(langs.size(), codes.size());
  for (size_t i = 0; i < codes.size(); ++i) {
    EXPECT_EQ(langs[i].code, codes[i]);
    EXPECT_EQ(langs[i].rtl, codes[i] == "ar" || codes[i] == "he") << codes[i];
    EXPECT_FALSE(langs[i].nativeName.empty());
  }
  EXPECT_EQ(langs[8].nativeName, "Čeština");
  EXPECT_EQ(langs[18].englishName, "Chinese (Simplified)");
  EXPECT_EQ(langs[20].nativeName, "العربية");
  EXPECT_EQ(langs[21].nativeName, "עברית");
}

TEST(Catalogues, EveryCatalogueHoldsTheSameKeysOnceEach) {
  const Catalog& en = catalog("en");
  std::set<std::string> keys;
  for (size_t i = 0; i < en.count; ++i) EXPECT_TRUE(keys.insert(en.entries[i].key).second) << en.entries[i].key;
  for (const Catalog& c : kCatalogs) {
    ASSERT_EQ(c.count, 100u) << c.code;
    for (size_t i = 0; i < c.count; ++i) {
      ASSERT_TRUE(c.entries[i].key && c.entries[i].text) << c.code << " entry " << i << " is missing";
      EXPECT_STREQ(c.entries[i].key, en.entries[i].key) << c.code;
    }
  }
}

TEST(Catalogues, EveryTranslationKeepsThePlaceholdersOfTheEnglishText) {
  const auto english = texts(catalog("en"));
  EXPECT_EQ(placeholders(english.at("levels.lockedMessage")), (std::vector<std::string>{"{{level}}", "{{prev}}"}));
  for (const Catalog& c : kCatalogs) {
    for (const auto& [key, text] : texts(c)) {
      EXPECT_EQ(placeholders(text), placeholders(english.at(key))) << c.code << " " << key << ": " << text;
    }
  }
}

TEST(Catalogues, EveryTextIsWellFormedAndTrimmed) {
  for (const Catalog& c : kCatalogs) {
    for (const auto& [key, text] : texts(c)) {
      EXPECT_GT(codePoints(text), 0) << c.code << " " << key;
      EXPECT_EQ(text.find_first_of("\t\n"), std::string::npos) << c.code << " " << key;
      EXPECT_NE(text.front(), ' ') << c.code << " " << key;
      EXPECT_NE(text.back(), ' ') << c.code << " " << key;
      EXPECT_EQ(text.find("  "), std::string::npos) << c.code << " " << key;
    }
  }
}

TEST(Catalogues, LetterButtonsAreSingleDistinctCharacters) {
  for (const Catalog& c : kCatalogs) {
    const auto t = texts(c);
    const std::vector<std::string> letters = {t.at("playing.letterRestart"), t.at("playing.letterShuffle"),
                                              t.at("playing.letterUndo")};
    for (const std::string& l : letters) EXPECT_EQ(codePoints(l), 1) << c.code << " '" << l << "'";
    EXPECT_NE(letters[0], letters[1]) << c.code;
    EXPECT_NE(letters[0], letters[2]) << c.code;
    EXPECT_NE(letters[1], letters[2]) << c.code;
  }
}

TEST(Catalogues, TheTeamsNamesAndAddressesAreTheSameInEveryLanguage) {
  for (const Catalog& c : kCatalogs) {
    const auto t = texts(c);
    EXPECT_EQ(t.at("app.title"), platform::kAppTitle) << c.code;
    EXPECT_EQ(t.at("about.email"), platform::kSupportEmail) << c.code;
    EXPECT_EQ(t.at("about.website"), "https://quillmoss.software") << c.code;
    EXPECT_EQ(t.at("about.musicSite"), "https://quillmoss.software") << c.code;
    EXPECT_EQ(t.at("about.company"), "Quillmoss Software") << c.code;
    EXPECT_EQ(t.at("about.developer"), "Ada & Lune Harrow") << c.code;
    EXPECT_EQ(t.at("about.year"), "© 2026") << c.code;
    // Music and sounds are the team's own work; the photographs are not.
    EXPECT_NE(t.at("about.musicBy").find("Quillmoss Software"), std::string::npos) << c.code;
    EXPECT_EQ(t.at("about.photosBy").find("Harrow"), std::string::npos) << c.code;
  }
}

TEST(Catalogues, EnglishTextsAreThePublishedOnes) {
  const auto en = texts(catalog("en"));
  const std::map<std::string, std::string> published = {
      {"app.tagline", "Puzzling in various difficulty levels"},
      {"difficulty.pieces", "{{count}} pieces"},
      {"difficulty.grandmaster", "Grandmaster"},
      {"gallery.title", "Achievements"},
      {"gallery.empty", "No solved puzzles yet"},
      {"levels.lockedMessage", "Solve at least one difficulty of level {{prev}} first to unlock level {{level}}."},
      {"levels.lockedTitle", "Level locked"},
      {"licenses.intro", "This app uses open source software under the following licenses."},
      {"menu.customPhoto", "Own Photo"},
      {"photoPick.builtin", "Templates"},
      {"playing.confirmRestartMessage", "The whole puzzle will be reset. Progress and time are lost."},
      {"playing.confirmShuffleMessage", "All unplaced pieces will be re-scattered. Your progress is preserved."},
      {"playing.rotateHint", "Better in landscape — rotate device for more room"},
      {"settings.boardLayout_scrollTray", "Scroll tray"},
      {"settings.boardZoom_wheel", "Mouse wheel"},
      {"settings.rotation_90", "4 directions"},
      {"settings.resetProgressMessage", "All solved puzzles and the current game will be deleted."},
      {"settings.hideConnectedBorder", "Hide border on connected pieces"},
      {"solved.time", "Time: {{time}}"},
      {"solved.title", "Solved!"},
  };
  for (const auto& [key, text] : published) EXPECT_EQ(en.at(key), text) << key;
}

// A catalogue that is mostly English text left untranslated would pass every
// structural check; words that really are the same (OK, Expert) are few.
TEST(Catalogues, NoCatalogueIsEnglishInDisguise) {
  const auto english = texts(catalog("en"));
  for (const Catalog& c : kCatalogs) {
    if (std::string(c.code) == "en") continue;
    int same = 0;
    std::string which;
    for (const auto& [key, text] : texts(c)) {
      if (text == english.at(key) && key.rfind("about.", 0) != 0 && key != "app.title" && key != "settings.rotation_180") {
        ++same;
        which += " " + key;
      }
    }
    EXPECT_LE(same, 6) << c.code << ":" << which;
  }
}

}  // namespace
