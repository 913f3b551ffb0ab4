// The settings page used as a player would, through the game's own frame
// function; and the picker's colour formula against values worked out by hand.
#include "ui/screens/settings_screen.h"

#include <SDL_keycode.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "tests/support/font_support.h"
#include "tests/support/frame_driver.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::FrameDriver;

TEST(PickerColour, FollowsTheHslFormulaWithHueAndLightnessHeldInRange) {
  const struct {
    double hue, lightness;
    uint32_t rgb;
  } kCases[] = {
      {0, 0.5, 0xd22d2d}, {120, 0.5, 0x2dd22d}, {210, 0.5, 0x2d80d2}, {60, 0.25, 0x696916},
      {0, 1.0, 0xfbeaea},    // lightness held at 0.95
      {240, 0.0, 0x040415},  // and at 0.05
      {360, 0.5, 0xd22d2d},  // the hue comes round to red
  };
  for (const auto& c : kCases) EXPECT_EQ(ui::pickerColor(c.hue, c.lightness), c.rgb) << c.hue << " " << c.lightness;
  EXPECT_EQ(ui::hslColor(180, 0.5, 1.0), 0x00ffffu) << "the bar's pure hues";
  const ui::Rect bar{100, 0, 360, 34};
  for (const auto& [px, hue] : {std::pair{40.0, 0.0}, {190.0, 90.0}, {460.0, 360.0}, {900.0, 360.0}}) {
    EXPECT_EQ(ui::hueAt(bar, px), hue) << px;
  }
}

// The whole page fits this window, so every row can be pressed unscrolled.
class SettingsPage : public ::testing::Test {
 protected:
  void SetUp() override {
    testsupport::useShippedAssets();
    i18n::setLanguage("en");
    ui::setWidgetTracing(true);
    ui::GameState settings;
    settings.screen = ui::ScreenKind::Settings;
    driver.game().resetTo(settings);
  }
  void TearDown() override { ui::setWidgetTracing(false); }

  // The n-th widget so labelled in a fresh frame, or null.
  const ui::TracedWidget* traced(const std::string& label, int n = 0) {
    ui::widgetTrace().clear();
    driver.idle(FrameDriver::kStep);
    for (const ui::TracedWidget& w : ui::widgetTrace()) {
      if (w.label == label && n-- == 0) return &w;
    }
    return nullptr;
  }
  ui::Rect find(const std::string& label, int n = 0) {
    const ui::TracedWidget* w = traced(label, n);
    EXPECT_TRUE(w) << "no " << label;
    return w ? w->rect : ui::Rect{};
  }
  // A click quicker than a frame: pressed and let go in the same one.
  void press(const std::string& label, int n = 0, double along = 0.5) {
    const ui::Rect r = find(label, n);
    ui::Input in;
    in.mouseX = r.x + r.w * along, in.mouseY = r.y + r.h * 0.5;
    in.mousePressed = in.mouseReleased = true;
    driver.frame(in);
  }
  // An amber edge: a swatch ringed as chosen, or a button drawn primary.
  bool amberEdge(const std::string& label) {
    const ui::Rect r = find(label);
    const uint32_t p = driver.pixel(static_cast<int>(r.x), static_cast<int>(r.y + r.h * 0.5));
    return (p >> 16 & 255) > 0xe0 && (p & 255) < 0x50;
  }

  FrameDriver driver{1280, 1600};
  store::OptColor& bg = store::settings().bgColor;
};

TEST_F(SettingsPage, ASwatchIsChosenOnlyByItsExactColourAndDefaultUnsets) {
  const struct {
    store::OptColor color;
    bool swatch, byDefault;
  } kCases[] = {{{true, 0x1a1a2e}, true, false}, {{true, 0x1a1a2f}, false, false}, {{false, 0x1a1a2e}, false, true}};
  for (const auto& c : kCases) {
    bg = c.color;
    EXPECT_EQ(amberEdge("swatch #1a1a2e"), c.swatch) << std::hex << c.color.rgb;
    EXPECT_EQ(amberEdge("Default"), c.byDefault) << std::hex << c.color.rgb;
  }
  bg = store::OptColor{true, 0x123456};
  press("Default");
  EXPECT_FALSE(bg.set);
  bg = store::OptColor{true, 0xabcdef};
  store::loadSettings();
  EXPECT_FALSE(bg.set) << "written as no colour, not as one";
}

TEST_F(SettingsPage, OnlyOkOfThePickerStoresItsColour) {
  for (const std::string close : {"Cancel", "Escape", "OK"}) {
    bg = store::OptColor{};
    press("Custom…");
    press("hue", 0, 120.0 / 360);
    press("slider", 2, 0.25);
    close == "Escape" ? driver.key(SDLK_ESCAPE) : press(close);
    EXPECT_EQ(bg.set, close == "OK") << close;
    EXPECT_FALSE(traced("hue")) << close << " closes the picker";
  }
  EXPECT_EQ(bg.rgb, ui::pickerColor(120, 0.25));
}

TEST_F(SettingsPage, SwitchingSoundOnStartsTheMusicAgain) {
  audio::init();
  audio::startMusic();
  ASSERT_EQ(Mix_PlayingMusic(), 1);
  press("Sound");
  EXPECT_TRUE(!store::settings().soundOn && Mix_PlayingMusic() == 0);
  press("Sound");
  EXPECT_TRUE(store::settings().soundOn && Mix_PlayingMusic() == 1);
  audio::shutdown();
}

TEST_F(SettingsPage, ResetProgressClearsSolvesAndTheSavedPuzzleOnlyWhenConfirmed) {
  for (const auto& [answer, kept] : {std::pair{"Cancel", true}, {"OK", false}}) {
    store::recordSolve("level1", 6, 7, 1000);
    store::SavedPuzzle puzzle;
    puzzle.imageId = "level1", puzzle.rows = 6, puzzle.cols = 7;
    store::savePuzzle(puzzle);
    press("Reset progress");
    press(answer);
    EXPECT_EQ(!store::solves().empty(), kept) << answer;
    EXPECT_EQ(store::currentPuzzle().valid, kept) << answer;
  }
}

}  // namespace
