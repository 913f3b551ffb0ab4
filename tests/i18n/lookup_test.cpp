// Choosing the language and looking texts up: what a player with a given
// locale or setting sees.
#include "i18n/i18n.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/test_support.h"

namespace {

using testsupport::ScopedEnv;

using Opt = std::optional<std::string>;

// The four locale variables for one case; unset unless given.
struct Locale {
  Locale(Opt language, Opt lcAll, Opt lcMessages, Opt lang)
      : a("LANGUAGE", language), b("LC_ALL", lcAll), c("LC_MESSAGES", lcMessages), d("LANG", lang) {}
  ScopedEnv a, b, c, d;
};

TEST(SystemLanguage, TheFirstSupportedItemOfLanguageWinsOverLang) {
  Locale env("xx:pt_BR", std::nullopt, std::nullopt, "de_DE.UTF-8");
  EXPECT_EQ(i18n::detectSystemLanguage(), "pt");
}

TEST(SystemLanguage, TheRegionIsIgnored) {
  Locale env(std::nullopt, std::nullopt, std::nullopt, "zh_TW.UTF-8");
  EXPECT_EQ(i18n::detectSystemLanguage(), "zh") << "the Simplified catalogue";
}

TEST(SystemLanguage, TheCLocaleGivesEnglish) {
  Locale env(std::nullopt, "C", std::nullopt, std::nullopt);
  EXPECT_EQ(i18n::detectSystemLanguage(), "en");
  Locale posix(std::nullopt, "POSIX", std::nullopt, std::nullopt);
  EXPECT_EQ(i18n::detectSystemLanguage(), "en");
}

TEST(SystemLanguage, NothingSetGivesEnglish) {
  Locale env(std::nullopt, std::nullopt, std::nullopt, std::nullopt);
  EXPECT_EQ(i18n::detectSystemLanguage(), "en");
}

TEST(SystemLanguage, VariablesAreTriedInOrderAndEmptyOnesSkipped) {
  {
    Locale env("", "fr_FR.UTF-8", "it_IT.UTF-8", "de_DE.UTF-8");
    EXPECT_EQ(i18n::detectSystemLanguage(), "fr");
  }
  {
    Locale env(std::nullopt, "", "it_IT.UTF-8", "de_DE.UTF-8");
    EXPECT_EQ(i18n::detectSystemLanguage(), "it");
  }
  {
    Locale env("C", "C", "C", "sv_SE");
    EXPECT_EQ(i18n::detectSystemLanguage(), "sv") << "an unsupported value falls through to the next variable";
  }
}

TEST(SystemLanguage, EncodingModifierAndCaseDoNotMatter) {
  {
    Locale env(std::nullopt, std::nullopt, std::nullopt, "HE_IL.utf8");
    EXPECT_EQ(i18n::detectSystemLanguage(), "he");
  }
  {
    Locale env(std::nullopt, std::nullopt, std::nullopt, "ca_ES@valencia:el@euro");
    EXPECT_EQ(i18n::detectSystemLanguage(), "el");
  }
  {
    Locale env("pt-BR", std::nullopt, std::nullopt, std::nullopt);
    EXPECT_EQ(i18n::detectSystemLanguage(), "pt");
  }
  {
    Locale env("english:ptx", std::nullopt, std::nullopt, std::nullopt);
    EXPECT_EQ(i18n::detectSystemLanguage(), "en") << "no prefix matching";
  }
}

TEST(Language, AnExplicitSettingIsMatchedExactly) {
  Locale env(std::nullopt, std::nullopt, std::nullopt, "de_DE.UTF-8");
  i18n::setLanguage("de-AT");
  EXPECT_EQ(i18n::currentLanguage(), "en");
  EXPECT_EQ(i18n::tr("common.back"), "Back");
  i18n::setLanguage("de");
  EXPECT_EQ(i18n::currentLanguage(), "de");
  EXPECT_EQ(i18n::tr("common.back"), "Zurück");
}

TEST(Language, AnEmptySettingFollowsTheSystem) {
  Locale env(std::nullopt, std::nullopt, std::nullopt, "fi_FI.UTF-8");
  i18n::setLanguage("");
  EXPECT_EQ(i18n::currentLanguage(), "fi");
  EXPECT_EQ(i18n::tr("menu.quit"), "Lopeta");
}

TEST(Language, EnglishUntilALanguageIsSet) {
  EXPECT_EQ(i18n::currentLanguage(), "en");
  EXPECT_FALSE(i18n::currentIsRtl());
  EXPECT_EQ(i18n::tr("solved.title"), "Solved!");
}

TEST(Language, HebrewAndArabicAreRightToLeft) {
  i18n::setLanguage("he");
  EXPECT_TRUE(i18n::currentIsRtl());
  i18n::setLanguage("ar");
  EXPECT_TRUE(i18n::currentIsRtl());
  i18n::setLanguage("ja");
  EXPECT_FALSE(i18n::currentIsRtl());
}

TEST(Language, SwitchingTakesEffectForTheNextLookup) {
  i18n::setLanguage("ru");
  EXPECT_EQ(i18n::tr("settings.title"), "Настройки");
  i18n::setLanguage("ko");
  EXPECT_EQ(i18n::tr("settings.title"), "설정");
}

TEST(Lookup, AnUnknownKeyShowsTheKey) {
  i18n::setLanguage("de");
  EXPECT_EQ(i18n::tr("no.such.key"), "no.such.key");
  EXPECT_EQ(i18n::tr(""), "");
}

TEST(Lookup, PlaceholdersAreFilled) {
  i18n::setLanguage("en");
  EXPECT_EQ(i18n::tr("levels.lockedMessage", {{"prev", "3"}, {"level", "4"}}),
            "Solve at least one difficulty of level 3 first to unlock level 4.");
  EXPECT_EQ(i18n::tr("difficulty.pieces", {{"count", "110"}}), "110 pieces");
  i18n::setLanguage("tr");
  EXPECT_EQ(i18n::tr("solved.time", {{"time", "1:02:03"}}), "Süre: 1:02:03");
}

TEST(Lookup, UnmatchedPlaceholdersStayAndValuesAreNotExpandedAgain) {
  i18n::setLanguage("en");
  EXPECT_EQ(i18n::tr("levels.lockedMessage", {{"prev", "{{level}}"}}),
            "Solve at least one difficulty of level {{level}} first to unlock level {{level}}.");
  EXPECT_EQ(i18n::tr("levels.lockedMessage", {{"prev", "{{level}}"}, {"level", "9"}}),
            "Solve at least one difficulty of level 9 first to unlock level 9.")
      << "pairs apply in order: the second fills what the first inserted";
  EXPECT_EQ(i18n::tr("solved.time", {{"time", "{{time}}{{time}}"}}), "Time: {{time}}{{time}}");
  EXPECT_EQ(i18n::tr("solved.time", {{"count", "5"}}), "Time: {{time}}");
}

TEST(Lookup, EveryOccurrenceOfAPlaceholderIsFilled) {
  i18n::setLanguage("en");
  EXPECT_EQ(i18n::tr("no {{x}} and {{x}}", {{"x", "ab"}}), "no ab and ab") << "an unknown key is its own text";
}

}  // namespace
