// The way into the game: the splash, the menu's buttons and what they start,
// and the pieces drifting behind the menu, driven through the frame function.
#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "tests/support/font_support.h"
#include "tests/support/frame_driver.h"
#include "ui/gpu.h"
#include "ui/screens/background_pieces.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::FrameDriver;
using ui::ScreenKind;

constexpr uint32_t kAccent = 0xfff5a623;

class Menu : public ::testing::Test {
 public:
  static void SetUpTestSuite() { testsupport::useShippedAssets(); }
  void SetUp() override {
    i18n::setLanguage("en");
    ui::setWidgetTracing(true);
    store::clearPuzzle();
    store::clearSolves();
  }
  void TearDown() override { ui::setWidgetTracing(false); }

  void open(ScreenKind kind, int w = 1000, int h = 700) {
    driver = std::make_unique<FrameDriver>(w, h);
    ui::GameState s;
    s.screen = kind;
    ui::Game::instance().resetTo(s);
    frame();
  }
  void frame() {
    ui::widgetTrace().clear();
    driver->idle(FrameDriver::kStep);
  }
  void press(const char* key) {
    const ui::TracedWidget* w = ui::findTracedWidget(i18n::tr(key));
    ASSERT_NE(w, nullptr) << key;
    driver->click(w->rect.x + w->rect.w / 2, w->rect.y + w->rect.h / 2);
  }
  bool primary(const ui::TracedWidget& w) { return driver->pixel(int(w.rect.x) + 10, int(w.rect.y + w.rect.h / 2)) == kAccent; }
  static ui::GameState top() { return ui::Game::instance().top(); }

  std::unique_ptr<FrameDriver> driver;
};

void saveGameOf(const char* levelId) {
  store::SavedPuzzle p;
  p.imageId = levelId;
  p.rows = 7;
  p.cols = 8;
  store::savePuzzle(p);
}

// Continue leads the column only for a saved game of a level still in the
// catalogue, and goes on with that game; otherwise Choose Level leads.
TEST_F(Menu, TheFirstButtonContinuesAKnownSavedGameOrElseChoosesALevel) {
  struct Case {
    const char* saved;  // null: none
    const char* first;
    ScreenKind opens;
  };
  const Case kCases[] = {{nullptr, "menu.levelSelect", ScreenKind::LevelSelect},
                         {"level9", "menu.continue", ScreenKind::Playing},
                         {"level99", "menu.levelSelect", ScreenKind::LevelSelect}};
  for (const Case& c : kCases) {
    store::clearPuzzle();
    if (c.saved) saveGameOf(c.saved);
    open(ScreenKind::Menu);
    const std::vector<ui::TracedWidget> drawn = ui::widgetTrace();
    ASSERT_EQ(drawn.size(), c.saved && c.opens == ScreenKind::Playing ? 7u : 6u) << c.first;
    EXPECT_EQ(drawn[0].label, i18n::tr(c.first));
    EXPECT_TRUE(primary(drawn[0])) << c.first;
    EXPECT_FALSE(primary(drawn[1])) << c.first;
    press(c.first);
    EXPECT_EQ(top().screen, c.opens) << c.first;
    if (c.opens == ScreenKind::Playing) {
      EXPECT_EQ(top().levelId + " " + std::to_string(top().rows), "level9 7");
    }
  }
}

// New puzzle: the first level without a solve (the first of all once every
// one is solved), cut at the settings' difficulty; the saved game goes.
TEST_F(Menu, NewPuzzleTakesTheFirstUnsolvedLevelAndDropsTheSavedGame) {
  struct Case {
    int solvedLevels;
    int difficulty;
    const char* level;
  };
  const int all = static_cast<int>(core::levels().size());
  const Case kCases[] = {{0, 0, "level1"}, {2, 5, "level3"}, {all, 2, "level1"}};
  for (const Case& c : kCases) {
    store::clearSolves();
    for (int i = 0; i < c.solvedLevels; ++i) store::recordSolve(core::levels()[i].id, 5, 6, 1000);
    store::settings().difficulty = c.difficulty;
    saveGameOf("level2");
    open(ScreenKind::Menu);
    press("menu.newPuzzle");
    const core::DifficultyDef& d = core::difficulties()[c.difficulty];
    EXPECT_EQ(top().screen, ScreenKind::Playing);
    EXPECT_EQ(top().levelId + " " + std::to_string(top().rows) + "x" + std::to_string(top().cols),
              std::string(c.level) + " " + std::to_string(d.rows) + "x" + std::to_string(d.cols));
    EXPECT_FALSE(store::currentPuzzle().valid);
  }
}

// The column starts below the title, but never lower than leaves 60 under
// its counted height: a short window pulls it up over the title.
TEST_F(Menu, AShortWindowPullsTheButtonsUpOverTheTitle) {
  struct Case {
    int w, h;
    double firstTop;
  };
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
    EXPECT_FALSE(driver->quitRequested());
    leave(*this);
    EXPECT_TRUE(driver->quitRequested());
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
    leave(*driver);
    EXPECT_EQ(top().screen, ScreenKind::Menu);
    EXPECT_EQ(ui::Game::instance().stack().size(), 1u) << "the menu replaces the splash";
  }
}

class Background : public ::testing::Test {
 protected:
  void SetUp() override { ui::backgroundPiecesReset(); }
  void update(double w, double h, double dt = 0, const std::vector<core::Level>& levels = core::levels()) {
    ctx.width = w;
    ctx.height = h;
    ctx.dt = dt;
    ui::backgroundPiecesUpdate(ctx, levels);
  }
  ui::Ctx ctx;
};

TEST_F(Background, TheWindowsAreaGivesTheCount) {
  struct Case {
    double w, h;
    int count;
  };
  // Raised to 18; by area; a narrow portrait window counts half as many.
  const Case kCases[] = {{1000, 700, 18}, {2560, 1440, 46}, {400, 800, 18}, {599, 5000, 19}, {4000, 3000, 80}};
  for (const Case& c : kCases) {
    update(c.w, c.h);
    EXPECT_EQ(ui::backgroundPieces().size(), static_cast<size_t>(c.count)) << c.w << "x" << c.h;
  }
}

TEST_F(Background, AResizeOfAWholeUnitBuildsANewSet) {
  struct Case {
    double w, h;
    bool rebuilt;
  };
  const Case kCases[] = {{1000.5, 700, false}, {1000, 700.99, false}, {1001, 700, true}, {1000, 699, true}};
  for (const Case& c : kCases) {
    ui::backgroundPiecesReset();
    update(1000, 700);
    // Still frames: only a new set turns a piece (collisions may move it).
    const double angle = ui::backgroundPieces()[0].angle;
    update(c.w, c.h);
    EXPECT_EQ(angle != ui::backgroundPieces()[0].angle, c.rebuilt) << c.w << "x" << c.h;
  }
}

// Pieces painted for real: each has its texture from the one photograph.
TEST_F(Background, ACatalogueOfOneLevelStillGivesPiecesAllFromIt) {
  testsupport::useShippedAssets();
  FrameDriver driver(1000, 700);
  update(1000, 700, 0, {core::levels()[2]});
  ASSERT_EQ(ui::backgroundPieces().size(), 18u);
  for (const ui::BgPiece& p : ui::backgroundPieces()) {
    EXPECT_EQ(p.image, 0);
    EXPECT_EQ(p.key.rfind("bgpiece_level3_", 0), 0u) << p.key;
    EXPECT_TRUE(ui::gpuCached(p.key));
  }
}

// Two pieces that meet are pushed apart past touching; one that drifted
// too far out comes in again from an edge, 215 to 315 outside.
TEST_F(Background, PiecesThatMeetPartAndOnesFarOutComeBack) {
  update(1000, 700);
  std::vector<ui::BgPiece>& pieces = ui::backgroundPieces();
  for (size_t i = 0; i < pieces.size(); ++i) {  // well apart, none far out
    pieces[i].x = -300.0 + 150 * (i % 10);
    pieces[i].y = -300.0 + 150 * (i / 10);
  }
  pieces[0].x = pieces[1].x = 500, pieces[0].y = 300, pieces[1].y = 340;
  pieces[2].x = 1000 + 391;
  update(1000, 700);
  EXPECT_GE(std::hypot(pieces[0].x - pieces[1].x, pieces[0].y - pieces[1].y), 109.2 + 1);
  const ui::BgPiece& back = pieces[2];
  const double out = std::max({-back.x, back.x - 1000, -back.y, back.y - 700});
  EXPECT_TRUE(out >= 215 && out <= 315) << back.x << "," << back.y;
}

}  // namespace
