#include "app/cmdline.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using app::InfoRequest;

struct Args {
  std::vector<const char*> argv;
  Args(std::initializer_list<const char*> rest) : argv{"tessellatrix"} { argv.insert(argv.end(), rest); }
  int argc() const { return static_cast<int>(argv.size()); }
  const char* const* data() const { return argv.data(); }
};

InfoRequest info(std::initializer_list<const char*> rest) {
  const Args a(rest);
  return app::findInfoRequest(a.argc(), a.data());
}

bool apply(std::initializer_list<const char*> rest, store::Settings& s) {
  const Args a(rest);
  return app::applyWindowOptions(a.argc(), a.data(), s);
}

TEST(CommandLine, TheFirstInformationalOptionDecides) {
  EXPECT_EQ(info({"--help", "--version"}), InfoRequest::Help);
  EXPECT_EQ(info({"--version", "--help"}), InfoRequest::Version);
  EXPECT_EQ(info({"--size", "800x600", "--version"}), InfoRequest::Version);
  EXPECT_EQ(info({"--VERSION", "-h", "--help=1", "version"}), InfoRequest::None) << "whole, exact arguments only";
  EXPECT_EQ(info({}), InfoRequest::None);
}

TEST(CommandLine, VersionAndHelpTexts) {
  EXPECT_EQ(app::versionText(), "Quillmoss's Puzzle 1.1.0 (Build 1000)\n");
  EXPECT_EQ(app::helpText(),
            "Quillmoss's Puzzle 1.1.0\n"
            "  --version    Version ausgeben\n"
            "  --fullscreen im Vollbild starten\n"
            "  --windowed   im Fenster starten\n"
            "  --size BxH   mit dieser Fenstergroesse starten\n");
}

TEST(CommandLine, SizeBelowTheMinimumIsIgnored) {
  store::Settings s;
  EXPECT_FALSE(apply({"--size", "639x480"}, s));
  EXPECT_FALSE(apply({"--size", "640x479"}, s));
  EXPECT_EQ(s.windowW, 1280);
  EXPECT_EQ(s.windowH, 800);
  EXPECT_TRUE(apply({"--size", "640x480"}, s));
  EXPECT_EQ(s.windowW, 640);
  EXPECT_EQ(s.windowH, 480);
}

TEST(CommandLine, ABadSizeValueIsSwallowedAllTheSame) {
  store::Settings s;
  EXPECT_FALSE(apply({"--size", "--fullscreen"}, s));
  EXPECT_FALSE(s.fullscreen) << "the option in the value's place was taken as the value";
  EXPECT_FALSE(apply({"--size", "foo", "--fullscreen"}, s));
  EXPECT_TRUE(s.fullscreen) << "foo was the value; the option after it counts";
  EXPECT_EQ(s.windowW, 1280);
}

TEST(CommandLine, SizeAsTheLastArgumentDoesNothing) {
  store::Settings s;
  EXPECT_FALSE(apply({"--fullscreen", "--size"}, s));
  EXPECT_TRUE(s.fullscreen);
  EXPECT_EQ(s.windowW, 1280);
}

TEST(CommandLine, WindowOptionsApplyLeftToRightAndStayInTheSettings) {
  store::Settings s;
  apply({"--fullscreen", "--windowed"}, s);
  EXPECT_FALSE(s.fullscreen);
  apply({"--windowed", "--fullscreen", "stray", "--Fullscreen"}, s);
  EXPECT_TRUE(s.fullscreen);
  EXPECT_TRUE(apply({"--size", "1000x700", "--size", "100x100"}, s)) << "a later bad size keeps the earlier one";
  EXPECT_EQ(s.windowW, 1000);
}

TEST(StartScreen, NamesMapToTheirScreens) {
  const store::Settings s;
  const std::pair<const char*, ui::ScreenKind> cases[] = {
      {"menu", ui::ScreenKind::Menu},         {"levels", ui::ScreenKind::LevelSelect},
      {"gallery", ui::ScreenKind::Gallery},   {"settings", ui::ScreenKind::Settings},
      {"about", ui::ScreenKind::About},       {"licenses", ui::ScreenKind::Licenses},
  };
  for (const auto& [name, kind] : cases) {
    ui::GameState st;
    ASSERT_TRUE(app::startStateFor(name, s, &st)) << name;
    EXPECT_EQ(st.screen, kind) << name;
    EXPECT_TRUE(st.levelId.empty());
  }
}

TEST(StartScreen, PlayingStartsLevelOneAtTheSelectedDifficulty) {
  store::Settings s;
  s.difficulty = 4;
  ui::GameState st;
  ASSERT_TRUE(app::startStateFor("playing", s, &st));
  EXPECT_EQ(st.screen, ui::ScreenKind::Playing);
  EXPECT_EQ(st.levelId, "level1");
  EXPECT_EQ(st.rows, 9);
  EXPECT_EQ(st.cols, 10);
}

TEST(StartScreen, UnknownNamesAreRefused) {
  const store::Settings s;
  ui::GameState st;
  st.screen = ui::ScreenKind::About;
  for (const char* name : {"Menu", "splash", "", "menu ", "solved"}) {
    EXPECT_FALSE(app::startStateFor(name, s, &st)) << name;
  }
  EXPECT_EQ(st.screen, ui::ScreenKind::About) << "nothing written on refusal";
}

}  // namespace
