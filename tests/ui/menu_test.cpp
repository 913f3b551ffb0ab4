// The way into the game: the splash, the menu's buttons and what they start,
// every screen's controls from the keyboard, and the pieces drifting behind
// the menu, driven through the frame function.
#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <functional>

#include "i18n/i18n.h"
#include "store/store.h"
#include "tests/support/font_support.h"
#include "tests/support/frame_driver.h"
#include "tests/support/test_support.h"
#include "ui/focus.h"
#include "ui/gpu.h"
#include "ui/screens/background_pieces.h"
#include "ui/screens/license_table.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::FrameDriver;
using ui::ScreenKind;

class Menu : public ::testing::Test {
 public:
  static void SetUpTestSuite() { testsupport::useShippedAssets(); }
  void SetUp() override { i18n::setLanguage("en"), ui::setWidgetTracing(true); }
  void open(ScreenKind kind, int w = 1000, int h = 700) {
    driver.reset();  // the old renderer goes before the new one comes
    driver = std::make_unique<FrameDriver>(w, h);
    ui::Game::instance().resetTo(ui::GameState{kind, "", 0, 0, 0});
    ui::widgetTrace().clear();
    driver->idle(FrameDriver::kStep);
  }
  void press(const char* key) {
    const ui::Rect r = ui::findTracedWidget(i18n::tr(key))->rect;
    driver->click(r.x + r.w / 2, r.y + r.h / 2);
  }
  // Primary buttons are filled with the accent colour.
  bool primary(size_t i) {
    const ui::Rect r = ui::widgetTrace().at(i).rect;
    return driver->pixel(int(r.x) + 10, int(r.y) + 20) == 0xfff5a623;
  }
  static ui::GameState top() { return ui::Game::instance().top(); }

  std::unique_ptr<FrameDriver> driver;
};

void saveGameOf(const char* levelId) {
  store::SavedPuzzle p;
  p.imageId = levelId, p.rows = 7, p.cols = 8;
  store::savePuzzle(p);
}

// Continue leads the column only for a saved game of a level still in the
// catalogue, and goes on with that game; otherwise Choose Level leads.
TEST_F(Menu, TheFirstButtonContinuesAKnownSavedGameOrElseChoosesALevel) {
  struct Case { const char *saved, *first; size_t buttons; ScreenKind opens; };
  const Case kCases[] = {{nullptr, "menu.levelSelect", 6, ScreenKind::LevelSelect},
                         {"level9", "menu.continue", 7, ScreenKind::Playing},
                         {"level99", "menu.levelSelect", 6, ScreenKind::LevelSelect}};
  for (const Case& c : kCases) {
    if (c.saved) saveGameOf(c.saved);
    open(ScreenKind::Menu);
    ASSERT_EQ(ui::widgetTrace().size(), c.buttons) << c.first;
    EXPECT_EQ(ui::widgetTrace()[0].label, i18n::tr(c.first));
    EXPECT_TRUE(primary(0) && !primary(1)) << c.first;
    press(c.first);
    EXPECT_EQ(top().screen, c.opens) << c.first;
    EXPECT_TRUE(c.opens != ScreenKind::Playing || top().levelId == "level9");
  }
}

// New puzzle: the first level without a solve (the first of all once every
// one is solved), cut at the settings' difficulty; the saved game goes.
TEST_F(Menu, NewPuzzleTakesTheFirstUnsolvedLevelAndDropsTheSavedGame) {
  struct Case { size_t solvedLevels; int difficulty; const char* level; };
  const Case kCases[] = {{0, 0, "level1"}, {2, 5, "level3"}, {core::levels().size(), 2, "level1"}};
  for (const Case& c : kCases) {
    for (size_t i = 0; i < c.solvedLevels; ++i) store::recordSolve(core::levels()[i].id, 5, 6, 1000);
    store::settings().difficulty = c.difficulty;
    saveGameOf("level2");
    open(ScreenKind::Menu);
    press("menu.newPuzzle");
    const core::DifficultyDef& d = core::difficulties()[c.difficulty];
    EXPECT_EQ(top().screen, ScreenKind::Playing);
    EXPECT_EQ(top().levelId + " " + std::to_string(top().rows) + "x" + std::to_string(top().cols),
              c.level + (" " + std::to_string(d.rows) + "x" + std::to_string(d.cols)));
    EXPECT_FALSE(store::currentPuzzle().valid);
  }
}

// The column starts below the title, but never lower than leaves 60 under
// its counted height: a short window pulls it up over the title.
TEST_F(Menu, AShortWindowPullsTheButtonsUpOverTheTitle) {
  struct Case { int w, h; double firstTop; };
  const Case kCases[] = {{1280, 800, 276}, {1000, 400, 400 - (5 * 44 + 48) - 60}};
  for (const Case& c : kCases) {
    open(ScreenKind::Menu, c.w, c.h);
    EXPECT_DOUBLE_EQ(ui::widgetTrace().at(0).rect.y, c.firstTop) << c.h;
  }
}

TEST_F(Menu, EscapeAndQuitEndTheGame) {
  const std::function<void(Menu&)> kWays[] = {[](Menu& m) { m.driver->key(SDLK_ESCAPE); },
                                              [](Menu& m) { m.press("menu.quit"); }};
  for (const auto& leave : kWays) {
    open(ScreenKind::Menu);
    leave(*this);
    EXPECT_TRUE(driver->ctx().quit);
  }
}

TEST_F(Menu, TheSplashGivesWayToAClickAKeyOrThreeSeconds) {
  const std::function<void(FrameDriver&)> kWays[] = {[](FrameDriver& d) { d.click(500, 350); },
                                                     [](FrameDriver& d) { d.key(SDLK_a); },
                                                     [](FrameDriver& d) { d.idle(0.2); }};
  for (const auto& leave : kWays) {
    open(ScreenKind::Splash);
    driver->idle(2.9);
    EXPECT_EQ(top().screen, ScreenKind::Splash);
    EXPECT_FALSE(ui::backgroundPieces().empty());
    for (const ui::BgPiece& p : ui::backgroundPieces()) {
      EXPECT_TRUE(ui::gpuCached(p.key)) << "the menu's pieces are painted while the splash shows";
    }
    leave(*driver);
    EXPECT_EQ(top().screen, ScreenKind::Menu);
    EXPECT_EQ(ui::Game::instance().stack().size(), 1u) << "the menu replaces the splash";
  }
}

bool same(const ui::Rect& a, const ui::Rect& b) { return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h; }

// The same screens played from the keyboard alone.
class Focus : public Menu {
 protected:
  // Presses the key and tells where the ring is a frame later, when a list
  // has scrolled the focused control in; (-1, -1) when it shows nowhere.
  ui::Rect press(int32_t key = SDLK_TAB, bool shift = false) {
    ui::widgetTrace().clear();
    ui::Input in;
    in.keys = {key}, in.shift = shift;
    driver->frame(in);
    driver->idle(FrameDriver::kStep);
    ui::Rect r{-1, -1, 0, 0};
    ui::focusRing(&r);
    return r;
  }
  bool tabTo(const std::string& label) {
    const ui::Rect target = ui::findTracedWidget(label)->rect;
    for (int i = 0; i < 100; ++i) {
      if (same(press(), target)) return true;
    }
    return false;
  }
};

// Tab comes round to the first control after as many presses as the screen
// has controls (those scrolled out of view too), each shown in the window
// when focused; Shift+Tab goes back.
TEST_F(Focus, TabVisitsEveryControlOfEachScreenOnceInTheWindow) {
  struct Case { ScreenKind kind; int h, controls; };
  store::recordSolve("level2", 5, 6, 1000);
  const Case kCases[] = {{ScreenKind::Menu, 700, 6},    {ScreenKind::LevelSelect, 700, 1 + 40 * 6},
                         {ScreenKind::Gallery, 700, 2}, {ScreenKind::About, 700, 2},
                         {ScreenKind::Solved, 700, 2},  {ScreenKind::Licenses, 700, 1},
                         {ScreenKind::Settings, 2600, -1}};  // -1: as many as it draws
  for (const Case& c : kCases) {
    open(c.kind, 1280, c.h);
    const int controls = c.controls > 0 ? c.controls : static_cast<int>(ui::widgetTrace().size());
    const ui::Rect first = press();
    int steps = 1;
    for (ui::Rect r = press(); !same(r, first) && steps <= controls; r = press(), ++steps) {
      EXPECT_TRUE(r.y >= 0 && r.y + r.h <= c.h) << int(c.kind) << " control " << steps << " at " << r.y;
    }
    EXPECT_EQ(steps, controls) << int(c.kind);
    press();
    EXPECT_TRUE(same(press(SDLK_TAB, true), first)) << int(c.kind) << ": Shift+Tab goes back";
  }
}

// Return, keypad Enter and Space press what has the focus (Right moves a
// slider); the pointer moving hides the ring. A question opened by Return
// is not answered by it; Tab cycles its two buttons only; Return on Cancel
// keeps the solves and gives the focus back to the button that opened it.
TEST_F(Focus, ReturnAndSpacePressTheFocusedControlAndADialogKeepsTheFocus) {
  struct Case { ScreenKind kind; int tabs; int32_t key; ScreenKind opens; };
  const Case kCases[] = {{ScreenKind::Menu, 4, SDLK_RETURN, ScreenKind::Settings},
                         {ScreenKind::Menu, 1, SDLK_SPACE, ScreenKind::LevelSelect},
                         {ScreenKind::About, 2, SDLK_KP_ENTER, ScreenKind::Licenses}};
  for (const Case& c : kCases) {
    open(c.kind);
    for (int i = 0; i < c.tabs; ++i) press();
    press(c.key);
    EXPECT_EQ(driver->game().top().screen, c.opens) << int(c.kind) << " " << c.tabs;
  }
  store::recordSolve("level1", 5, 6, 1000);
  open(ScreenKind::Settings, 1280, 2600);
  const double music = store::settings().musicVolume;
  ASSERT_TRUE(tabTo("slider"));
  press(SDLK_RIGHT);
  EXPECT_NEAR(store::settings().musicVolume, music + 0.05, 1e-9);
  const ui::Rect reset = ui::findTracedWidget(i18n::tr("settings.resetProgress"))->rect;
  ASSERT_TRUE(tabTo(i18n::tr("settings.resetProgress")));
  const ui::Rect cancel = press(SDLK_RETURN);
  EXPECT_TRUE(same(cancel, ui::findTracedWidget(i18n::tr("common.cancel"))->rect)) << "the dialog's first button";
  EXPECT_FALSE(same(press(), cancel));
  EXPECT_TRUE(same(press(), cancel)) << "two buttons, nothing beneath";
  EXPECT_TRUE(same(press(SDLK_RETURN), reset));
  EXPECT_EQ(store::solves().size(), 1u);
  ui::Input moved;
  moved.mouseX = 40;
  driver->frame(moved);
  ui::Rect r;
  EXPECT_FALSE(ui::focusRing(&r)) << "the pointer hides the ring";
}


void updateBackground(double w, double h, const std::vector<core::Level>& levels = core::levels()) {
  ui::Ctx ctx;
  ctx.width = w, ctx.height = h;
  ui::backgroundPiecesUpdate(ctx, levels);
}

TEST(Background, TheWindowsAreaGivesTheCount) {
  struct Case { double w, h; size_t count; };
  // Raised to 18; by area; a narrow portrait window counts half as many.
  const Case kCases[] = {{1000, 700, 18}, {2560, 1440, 46}, {400, 800, 18}, {599, 5000, 19}, {4000, 3000, 80}};
  for (const Case& c : kCases) {
    updateBackground(c.w, c.h);
    EXPECT_EQ(ui::backgroundPieces().size(), c.count) << c.w << "x" << c.h;
  }
}

TEST(Background, AResizeOfAWholeUnitBuildsANewSet) {
  struct Case { double w, h; bool rebuilt; };
  const Case kCases[] = {{1000.5, 700, false}, {1000, 700.99, false}, {1001, 700, true}, {1000, 699, true}};
  for (const Case& c : kCases) {
    ui::backgroundPiecesReset();
    updateBackground(1000, 700);
    // Still frames: only a new set turns a piece (collisions may move it).
    const double angle = ui::backgroundPieces()[0].angle;
    updateBackground(c.w, c.h);
    EXPECT_EQ(angle != ui::backgroundPieces()[0].angle, c.rebuilt) << c.w << "x" << c.h;
  }
}

// Pieces painted for real: each has its texture from the one photograph.
TEST(Background, ACatalogueOfOneLevelStillGivesPiecesAllFromIt) {
  testsupport::useShippedAssets();
  FrameDriver driver(1000, 700);
  ui::backgroundPiecesReset();
  updateBackground(1000, 700, {core::levels()[2]});
  ASSERT_EQ(ui::backgroundPieces().size(), 18u);
  for (const ui::BgPiece& p : ui::backgroundPieces()) {
    EXPECT_EQ(p.key.rfind("bgpiece_level3_", 0), 0u) << p.key;
    EXPECT_TRUE(p.image == 0 && ui::gpuCached(p.key));
  }
}

// The licences page, the package's copyright file and the credits of the
// assets name the same things under the same licences.
TEST(Licenses, ThePageTheCopyrightFileAndTheCreditsAgree) {
  std::string copyright = testsupport::readFile(testsupport::shippedAssetRoot() + "/packaging/copyright");
  for (char& c : copyright) c = c == '\n' ? ' ' : c;
  for (size_t at; (at = copyright.find("  ")) != std::string::npos;) copyright.erase(at, 1);
  const std::string credits = testsupport::readFile(testsupport::shippedAssetRoot() + "/assets/CREDITS.tsv");
  const auto dashed = [](std::string s) { return s.replace(s.rfind(' '), 1, "-"); };
  for (const ui::LicenseRow& row : ui::kLicenses) {
    const std::string name = row.name;
    if (name.rfind("Musik: ", 0) == 0) {
      EXPECT_NE(credits.find("bgm_calm.ogg\tmusic\t" + name.substr(7)), std::string::npos) << name;
      EXPECT_NE(copyright.find("Music: " + name.substr(7) + ", " + row.license), std::string::npos) << name;
    } else if (name == "Klangeffekte") {
      EXPECT_NE(copyright.find("(Klangeffekte), " + std::string(row.license)), std::string::npos);
      EXPECT_NE(credits.find("sound effect\tClick\tQuillmoss Software\t\ttools/assets/make_audio.py\t" +
                             dashed(row.license)), std::string::npos);
    } else if (name.find("DejaVu") == std::string::npos && name.find("CJK") == std::string::npos) {
      EXPECT_NE(copyright.find(name + " (" + row.license + ")"), std::string::npos) << name;
    }
  }
}

}  // namespace
