// The playing screen played as a player would: synthetic mouse and keys fed
// through the game's own frame function on the software renderer.
#include "ui/screens/playing_screen.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <tuple>

#include "i18n/i18n.h"
#include "store/store.h"
#include "tests/support/frame_driver.h"
#include "ui/widgets/trace.h"

namespace {

using store::BoardLayout;
using testsupport::FrameDriver;

struct Point {
  double x, y;
};

class Playing : public ::testing::Test {
 protected:
  void start(BoardLayout layout, store::RotationMode rotation = store::RotationMode::Off) {
    store::Settings& s = store::settings();
    s.boardLayout = layout;
    s.rotationMode = rotation;
    s.boardZoomMode = store::BoardZoomMode::Pinch;
    ui::GameState st;
    st.screen = ui::ScreenKind::Playing;
    st.levelId = "level1";
    st.rows = 5;
    st.cols = 6;
    ui::Game::instance().resetTo(st);
    driver->idle(FrameDriver::kStep);
    ASSERT_NE(screen(), nullptr);
  }
  ui::PlayingScreen* screen() { return dynamic_cast<ui::PlayingScreen*>(ui::Game::instance().current()); }
  core::Puzzle& puzzle() { return screen()->puzzle(); }
  ui::ScreenKind top() { return ui::Game::instance().top().screen; }

  Point onScreen(double bx, double by) { return Point{screen()->view().toScreenX(bx), screen()->view().toScreenY(by)}; }
  Point centreOf(const core::Piece& p) {
    return onScreen(p.x + puzzle().cellW / 2 + puzzle().pad, p.y + puzzle().cellH / 2 + puzzle().pad);
  }
  // Where the pointer lets go of a piece grabbed at `at` for it to land home:
  // a loose piece keeps its grab point, one from the tray comes out centred.
  Point dropPointFor(const core::Piece& p, Point at) {
    double tx, ty;
    puzzle().targetOf(p, &tx, &ty);
    const Point home = onScreen(tx, ty), corner = onScreen(p.x, p.y);
    if (p.inTray) return onScreen(tx + puzzle().cellW / 2 + puzzle().pad, ty + puzzle().cellH / 2 + puzzle().pad);
    return Point{at.x + home.x - corner.x, at.y + home.y - corner.y};
  }
  // The next piece a player would grab: the first thumbnail of a strip, or a
  // loose piece that is really on top at its centre.
  core::Piece* nextGrab(Point* at) {
    const ui::TrayStrips& tray = screen()->tray();
    for (int i = 0; puzzle().layoutMode == BoardLayout::ScrollTray && i < 2; ++i) {
      if (tray.items(i).empty()) continue;
      const ui::Rect slot = tray.slot(i, 0);
      *at = Point{slot.x + slot.w / 2, slot.y + slot.h / 2};
      return const_cast<core::Piece*>(tray.items(i)[0]);
    }
    for (core::Piece& p : puzzle().pieces) {
      if (p.placed || p.inTray) continue;
      *at = centreOf(p);
      if (puzzle().hitTest(screen()->view().toBoardX(at->x), screen()->view().toBoardY(at->y)) == &p) return &p;
    }
    return nullptr;
  }
  static ui::Input pointer(Point at, bool down, bool pressed) {
    ui::Input in;
    in.mouseX = at.x, in.mouseY = at.y, in.mouseDown = down, in.mousePressed = pressed;
    return in;
  }
  bool placeOne() {
    Point at{};
    core::Piece* piece = nextGrab(&at);
    if (!piece) return false;
    const Point home = dropPointFor(*piece, at);
    driver->drag(at.x, at.y, home.x, home.y);
    return piece->placed;
  }

  std::unique_ptr<FrameDriver> driver = std::make_unique<FrameDriver>(1280, 800);
};

struct SolveCase {
  BoardLayout layout;
  double scale;
};

class SolvingByMouse : public Playing, public ::testing::WithParamInterface<SolveCase> {};

TEST_P(SolvingByMouse, IsRecordedAndLeadsToTheSolvedScreen) {
  driver = std::make_unique<FrameDriver>(1280, 800, GetParam().scale);
  store::clearPuzzle();
  const size_t solvesBefore = store::solves().size();
  start(GetParam().layout);
  driver->idle(0.5);
  for (int i = 0; i < 30; ++i) ASSERT_TRUE(placeOne()) << "placed " << puzzle().placedCount();
  EXPECT_TRUE(screen()->solved());
  const int64_t time = puzzle().elapsedMs;
  ASSERT_EQ(store::solves().size(), solvesBefore + 1);
  const store::SolveEntry& solve = store::solves().front();
  EXPECT_EQ(solve.imageId + std::to_string(solve.rows) + "x" + std::to_string(solve.cols), "level15x6");
  EXPECT_EQ(solve.elapsedMs, time);
  EXPECT_FALSE(store::currentPuzzle().valid) << "the finished game is no longer saved";
  driver->idle(2.4);
  EXPECT_EQ(top(), ui::ScreenKind::Playing) << "the finished picture shows a while";
  driver->idle(0.2);
  EXPECT_EQ(top(), ui::ScreenKind::Solved);
  EXPECT_EQ(ui::Game::instance().top().elapsedMs, time) << "the clock stopped at the solve";
}

INSTANTIATE_TEST_SUITE_P(Layouts, SolvingByMouse,
                         ::testing::Values(SolveCase{BoardLayout::Scatter, 1}, SolveCase{BoardLayout::Tray, 2},
                                           SolveCase{BoardLayout::ScrollTray, 1}),
                         [](const auto& info) { return "Layout" + std::to_string(info.index); });

TEST_F(Playing, MovesAreSavedWithinFourTenthsOfASecondAndLeavingOrQuittingKeepsEverything) {
  store::clearPuzzle();
  start(BoardLayout::ScrollTray, store::RotationMode::Rot90);
  ASSERT_TRUE(store::currentPuzzle().valid) << "a fresh deal is saved at once";
  driver->idle(0.5);
  Point at{};
  core::Piece* piece = nullptr;
  const std::vector<core::Piece*> second = screen()->tray().items(1);
  for (int i = 0; i < 3; ++i) {
    piece = nextGrab(&at);
    ASSERT_NE(piece, nullptr);
    driver->drag(at.x, at.y, 580 + 60 * i, 450, 3);
    ASSERT_FALSE(piece->inTray);
  }
  EXPECT_EQ(screen()->tray().items(1), second) << "taking from one strip leaves the other as it was";
  const auto saved = [&] {
    for (const store::SavedPiece& p : store::currentPuzzle().pieces) {
      if (p.id == piece->id) return !p.inTray && p.x == piece->x;
    }
    return false;
  };
  const double lastDrop = driver->time();
  double savedAt = -1;
  for (int i = 0; i < 60 && savedAt < 0; ++i) {
    if (saved()) savedAt = driver->time();
    driver->idle(FrameDriver::kStep);
  }
  ASSERT_GT(savedAt, 0);
  EXPECT_LE(savedAt - lastDrop, 0.4 + 2 * FrameDriver::kStep) << "a burst of moves waits at most 0.4 s";
  const Point c = centreOf(*piece);
  const ui::Rect strip = screen()->tray().strip(1);
  driver->drag(c.x, c.y, strip.x + strip.w / 2, strip.y + 50);
  driver->idle(FrameDriver::kStep);
  const std::vector<core::Piece*>& back = screen()->tray().items(1);
  EXPECT_NE(std::find(back.begin(), back.end(), piece), back.end()) << "let go over a strip, it goes back there";
  core::Piece* turned = nextGrab(&at);
  driver->rightClick(at.x, at.y);
  driver->idle(2.0);
  const std::vector<core::Piece> before = puzzle().pieces;
  const int64_t clock = puzzle().elapsedMs;
  ASSERT_NE(turned, nullptr);
  ui::Game::instance().saveNow();
  EXPECT_EQ(store::currentPuzzle().elapsedMs, clock) << "quitting saves the clock not saved yet";
  // Escape with a piece in hand over a strip lets it go there first.
  const std::string held = nextGrab(&at)->id;
  driver->frame(pointer(at, true, true));
  driver->frame(pointer(Point{strip.x + strip.w / 2, strip.y + 80}, true, false));
  driver->key(SDLK_ESCAPE);
  driver->idle(FrameDriver::kStep);
  EXPECT_EQ(top(), ui::ScreenKind::Menu) << "started on its own, it leaves to the menu";
  for (const store::SavedPiece& p : store::currentPuzzle().pieces) EXPECT_TRUE(p.inTray || p.id != held) << p.id;
  const int64_t left = store::currentPuzzle().elapsedMs;

  // Resumed with the scroll tray, every loose piece waits in the strips.
  start(BoardLayout::ScrollTray, store::RotationMode::Rot90);
  ASSERT_EQ(puzzle().pieces.size(), before.size());
  for (size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(puzzle().pieces[i].inTray) << i;
    EXPECT_EQ(puzzle().pieces[i].rotation, before[i].rotation) << i;
  }
  EXPECT_EQ(puzzle().elapsedMs, left);
}

// Every way a dialog is answered, and that nothing beneath hears its keys.
TEST_F(Playing, DialogsStopTheClockAndOnlyTheirAnswerActs) {
  struct Case {
    SDL_Keycode open, answer;
    bool dealtAfresh, shuffled;
  };
  const Case kCases[] = {{SDLK_n, SDLK_ESCAPE, false, false},
                         {SDLK_n, SDLK_RETURN, true, false},
                         {SDLK_r, SDLK_KP_ENTER, false, true},
                         {SDLK_r, SDLK_ESCAPE, false, false}};
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.answer);
    store::clearPuzzle();
    start(BoardLayout::Scatter);
    ASSERT_TRUE(placeOne());
    driver->idle(0.5);
    const std::vector<core::Piece> before = puzzle().pieces;
    driver->key(c.open, true);
    ASSERT_TRUE(screen()->dialogOpen());
    const int64_t frozen = puzzle().elapsedMs;
    driver->idle(1.0);
    EXPECT_EQ(puzzle().elapsedMs, frozen);
    driver->key(c.answer);
    EXPECT_FALSE(screen()->dialogOpen());
    EXPECT_EQ(top(), ui::ScreenKind::Playing) << "the dialog's Escape does not leave the game";
    EXPECT_EQ(puzzle().placedCount(), c.dealtAfresh ? 0 : 1);
    int moved = 0;
    for (size_t i = 0; i < before.size(); ++i) moved += puzzle().pieces[i].x != before[i].x;
    EXPECT_EQ(moved > 20, c.dealtAfresh || c.shuffled) << moved;
  }
}

TEST_F(Playing, ZoomStaysInRangeKeepsThePointUnderThePointerAndCanBeOff) {
  start(BoardLayout::Scatter);
  const ui::BoardView& v = screen()->view();
  const double bx = v.toBoardX(500), by = v.toBoardY(300);
  driver->wheel(500, 300, 2);
  EXPECT_NEAR(v.toScreenX(bx), 500, 1e-9);
  EXPECT_NEAR(v.toScreenY(by), 300, 1e-9);
  for (int i = 0; i < 30; ++i) driver->wheel(640, 400, 3);
  EXPECT_DOUBLE_EQ(v.zoom, 4.0);
  for (int i = 0; i < 40; ++i) driver->wheel(100, 700, -2.5);
  EXPECT_DOUBLE_EQ(v.zoom, 1.0);
  driver->key(SDLK_PLUS);
  EXPECT_NEAR(v.toScreenX(puzzle().boardX + puzzle().boardW / 2), 640, 1e-9) << "keys zoom about the board";
  driver->key(SDLK_0);
  EXPECT_DOUBLE_EQ(v.zoom, 1.0);
  store::settings().boardZoomMode = store::BoardZoomMode::Off;
  driver->wheel(640, 400, 3);
  driver->key(SDLK_PLUS);
  EXPECT_DOUBLE_EQ(v.zoom, 1.0);
}

TEST_F(Playing, ZoomedInTheTableKeepsOutOfTheStrips) {
  testsupport::ScopedEnv demo("TESSELLATRIX_DEMO", std::string("50"));  // the top rows placed
  store::clearPuzzle();
  start(BoardLayout::ScrollTray);
  const ui::Rect strip = screen()->tray().strip(0);
  const int x = static_cast<int>(strip.x + 2), y = static_cast<int>(puzzle().boardY + puzzle().cellH);
  const uint32_t before = driver->pixel(x, y);
  for (int i = 0; i < 20; ++i) driver->wheel(puzzle().boardX + 1.5 * puzzle().cellW, y, 3);
  EXPECT_EQ(driver->pixel(x, y), before);
}

TEST_F(Playing, APieceInHandCastsAShadow) {
  start(BoardLayout::Scatter);
  Point at{};
  nextGrab(&at);
  const Point to{puzzle().boardX + puzzle().boardW / 2, puzzle().boardY + puzzle().boardH / 2};
  // Just off the bottom right corner of the piece's body, where no knob is.
  const int x = static_cast<int>(to.x + puzzle().cellW * 0.52 + 3), y = static_cast<int>(to.y + puzzle().cellH * 0.52 + 3);
  const auto light = [&] { return (driver->pixel(x, y) >> 8 & 255) + (driver->pixel(x, y) >> 16 & 255); };
  const uint32_t table = light();
  driver->frame(pointer(at, true, true));
  driver->frame(pointer(to, true, false));
  EXPECT_LT(light() + 20, table);
}

// The turning hint hides no strip and no piece, in a wide or a tall window.
TEST_F(Playing, TheTurningHintHidesNothing) {
  for (const auto& [w, h, layout] : {std::tuple{1280, 800, BoardLayout::Scatter}, {800, 1100, BoardLayout::ScrollTray}}) {
    driver = std::make_unique<FrameDriver>(w, h);
    store::clearPuzzle();
    start(layout, store::RotationMode::Rot90);
    const ui::Rect hint = screen()->hintRect();
    ASSERT_GT(hint.w, 0) << w << "x" << h;
    std::vector<ui::Rect> taken = {screen()->tray().strip(0), screen()->tray().strip(1)};
    if (layout != BoardLayout::ScrollTray) taken.clear();
    for (const core::Piece& p : puzzle().pieces) {
      const Point at = onScreen(p.restX, p.restY);
      if (!p.inTray) taken.push_back({at.x, at.y, puzzle().cellW + 2 * puzzle().pad, puzzle().cellH + 2 * puzzle().pad});
    }
    for (const ui::Rect& r : taken) {
      EXPECT_FALSE(hint.x < r.x + r.w && r.x < hint.x + hint.w && hint.y < r.y + r.h && r.y < hint.y + hint.h);
    }
  }
}

TEST_F(Playing, ATurnedPieceSnapsOnlyOnceUpright) {
  store::clearPuzzle();
  start(BoardLayout::Scatter, store::RotationMode::Rot180);
  for (core::Piece& piece : puzzle().pieces) piece.rotation = 0;
  Point at{};
  core::Piece* piece = nextGrab(&at);
  driver->rightClick(at.x, at.y);
  EXPECT_EQ(piece->rotation, 180);
  const Point home = dropPointFor(*piece, at);
  driver->drag(at.x, at.y, home.x, home.y);
  EXPECT_FALSE(piece->placed);
  at = centreOf(*piece);
  driver->rightClick(at.x, at.y);
  const Point upright = dropPointFor(*piece, at);
  driver->drag(at.x, at.y, upright.x, upright.y);
  EXPECT_TRUE(piece->placed);
}

TEST_F(Playing, PauseAndLostFocusStopTheClockUntilThePlayerReturns) {
  start(BoardLayout::Scatter);
  for (const bool byFocus : {false, true}) {
    ui::Input away;
    away.windowActive = false;
    byFocus ? driver->frame(away) : driver->key(SDLK_p);
    ASSERT_TRUE(screen()->paused());
    const int64_t frozen = puzzle().elapsedMs;
    driver->idle(1.0);
    EXPECT_EQ(puzzle().elapsedMs, frozen);
    if (byFocus) {
      driver->key(SDLK_RETURN);
    } else {
      // Paused, the header's pause control reads as the way back.
      ui::setWidgetTracing(true);
      driver->idle(FrameDriver::kStep);
      const ui::TracedWidget* header = ui::findTracedWidget(i18n::tr("common.continue"));
      ASSERT_TRUE(header && header->rect.y < 60);
      driver->click(header->rect.x + 5, header->rect.y + 5);
      ui::setWidgetTracing(false);
    }
    EXPECT_FALSE(screen()->paused());
    driver->idle(0.5);
    EXPECT_GT(puzzle().elapsedMs, frozen + 400);
  }
}

TEST_F(Playing, DemoPlacesThatShareOfPiecesOnTheFirstFrame) {
  for (const auto& [value, placed] : {std::pair{"250", 30}, {"50", 15}, {"0", 0}, {"lots", 0}}) {
    store::clearPuzzle();
    testsupport::ScopedEnv demo("TESSELLATRIX_DEMO", std::string(value));
    start(BoardLayout::Scatter);
    EXPECT_EQ(puzzle().placedCount(), placed) << value;
  }
}

}  // namespace

// Between events the screen asks for frames only for what changes by itself:
// the clock's next second, a piece in hand or gliding home, a save falling
// due, the next screen after leaving or 2.5 s after the last piece.
TEST_F(Playing, AsksForTheNextFrameOnlyForWhatChangesByItself) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  const auto expect = [&](const char* what, bool animating, double atLeast, double atMost) {
    const double in = driver->ctx().nextFrameAt - driver->ctx().time;
    EXPECT_TRUE(driver->ctx().animating == animating && in >= atLeast && in <= atMost) << what << " " << in;
  };
  expect("at rest, the clock running", false, 0.001, 1.001);
  Point at{};
  const core::Piece* piece = nextGrab(&at);
  const Point home = dropPointFor(*piece, at);
  driver->frame(pointer(at, true, true));
  expect("a piece in hand", true, 0, 1.001);
  driver->frame(pointer({home.x + 8, home.y + 8}, false, false));
  expect("snapped, gliding home", true, 0, 1.001);
  driver->key(SDLK_p);
  expect("a key: one more frame at once", true, -1, 0);
  driver->idle(FrameDriver::kStep);
  expect("paused just after a move: the save", true, 0.01, 0.401);
  driver->idle(0.5);
  expect("paused, saved", false, INFINITY, INFINITY);
  driver->key(SDLK_ESCAPE);
  expect("left: the next screen at once", false, -1, 0);
  driver->idle(FrameDriver::kStep);
  expect("the menu's pieces drift", true, INFINITY, INFINITY);
  testsupport::ScopedEnv demo("TESSELLATRIX_DEMO", "100");
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  expect("solved: the solved screen follows", true, 2.4, 2.5);
}

namespace {

class KeyboardPlay : public Playing {
 protected:
  void keys(int32_t key, int times = 1, bool shift = false) {
    for (int i = 0; i < times; ++i) {
      ui::Input in;
      in.keys = {key}, in.shift = shift;
      driver->frame(in);
    }
  }
  const core::Piece* picked() { return screen()->picked() < 0 ? nullptr : &puzzle().pieces[screen()->picked()]; }
};

// Tab takes the strips' pieces first, Shift+Tab from nothing the last; Escape only lets go; the cursor keeps to
// the board; Return lays the piece on its cell, snapping only home and upright, else lying loose there.
TEST_F(KeyboardPlay, PiecesArePickedWithTabAndLaidOnTheCursorsCellWhereOnlyHomeAndUprightSnap) {
  start(BoardLayout::ScrollTray, store::RotationMode::Rot180);
  for (core::Piece& p : puzzle().pieces) p.rotation = 0;
  keys(SDLK_TAB);
  EXPECT_EQ(picked(), screen()->tray().items(0)[0]);
  keys(SDLK_ESCAPE);
  EXPECT_TRUE(!picked() && top() == ui::ScreenKind::Playing) << "Escape let the piece go, nothing more";
  keys(SDLK_TAB, 1, true);
  EXPECT_EQ(picked(), screen()->tray().items(1).back());
  for (const auto& [key, times, cell] : {std::tuple{SDLK_LEFT, 3, 0}, {SDLK_RIGHT, 9, 5}, {SDLK_DOWN, 2, 17},
                                         {SDLK_DOWN, 7, 29}, {SDLK_UP, 1, 23}, {SDLK_LEFT, 2, 21}}) {
    keys(key, times);
    EXPECT_EQ(screen()->cursorRow() * 6 + screen()->cursorCol(), cell) << key;  // row * 6 + column
  }
  struct Case { int piece, row, col, turns; bool placed; };
  for (const Case& c : {Case{7, 1, 1, 0, true}, Case{8, 3, 4, 0, false}, Case{9, 1, 3, 1, false}}) {
    for (int i = 0; i < 60 && screen()->picked() != c.piece; ++i) keys(SDLK_TAB);
    keys(SDLK_UP, 9), keys(SDLK_LEFT, 9), keys(SDLK_DOWN, c.row), keys(SDLK_RIGHT, c.col), keys(SDLK_r, c.turns);
    keys(SDLK_RETURN);
    const core::Piece& p = puzzle().pieces[c.piece];
    EXPECT_TRUE(p.placed == c.placed && !p.inTray && !picked()) << c.piece;
    EXPECT_DOUBLE_EQ(p.x, puzzle().boardX + c.col * puzzle().cellW - puzzle().pad) << c.piece;
    EXPECT_DOUBLE_EQ(p.y, puzzle().boardY + c.row * puzzle().cellH - puzzle().pad) << c.piece;
  }
}

}  // namespace
