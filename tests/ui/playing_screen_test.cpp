// The playing screen driven frame by frame with synthetic mouse and keys on
// a real software renderer, as a player would play it.
#include "ui/screens/playing_screen.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

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
  void start(BoardLayout layout, store::RotationMode rotation = store::RotationMode::Off, int rows = 5,
             int cols = 6) {
    store::Settings& s = store::settings();
    s.boardLayout = layout;
    s.rotationMode = rotation;
    s.boardZoomMode = store::BoardZoomMode::Pinch;
    ui::GameState st;
    st.screen = ui::ScreenKind::Playing;
    st.levelId = "level1";
    st.rows = rows;
    st.cols = cols;
    ui::Game::instance().resetTo(st);
    driver.idle(FrameDriver::kStep);
    ASSERT_NE(screen(), nullptr);
  }

  ui::PlayingScreen* screen() { return dynamic_cast<ui::PlayingScreen*>(ui::Game::instance().current()); }
  const core::Puzzle& puzzle() { return screen()->puzzle(); }

  Point onScreen(double bx, double by) {
    const ui::BoardView& v = screen()->view();
    return Point{v.toScreenX(bx), v.toScreenY(by)};
  }
  double boxW() { return puzzle().cellW + 2 * puzzle().pad; }
  double boxH() { return puzzle().cellH + 2 * puzzle().pad; }
  Point centreOf(const core::Piece& p) { return onScreen(p.x + boxW() / 2, p.y + boxH() / 2); }
  Point homeOf(const core::Piece& p) {
    double tx, ty;
    puzzle().targetOf(p, &tx, &ty);
    return onScreen(tx + boxW() / 2, ty + boxH() / 2);
  }

  // Where the pointer must let go of a piece grabbed at `at` for it to land
  // home: a loose piece keeps its grab point, one from the tray comes out
  // centred under the pointer.
  Point dropPointFor(const core::Piece& p, Point at) {
    if (p.inTray) return homeOf(p);
    double tx, ty;
    puzzle().targetOf(p, &tx, &ty);
    const Point corner = onScreen(p.x, p.y), home = onScreen(tx, ty);
    return Point{at.x + home.x - corner.x, at.y + home.y - corner.y};
  }

  // Where the player grabs the next piece to place: the first thumbnail of a
  // tray strip, or the centre of a loose piece (the piece that is really on
  // top there, which is the one that will come up).
  bool nextGrab(Point* at, const core::Piece** piece) {
    const ui::TrayStrips& tray = screen()->tray();
    if (puzzle().layoutMode == BoardLayout::ScrollTray) {
      for (int i = 0; i < 2; ++i) {
        if (tray.items(i).empty()) continue;
        const ui::Rect slot = tray.slot(i, 0);
        *at = Point{slot.x + slot.w / 2, slot.y + slot.h / 2};
        *piece = tray.items(i)[0];
        return true;
      }
    }
    for (const core::Piece& p : puzzle().pieces) {
      if (p.placed || p.inTray) continue;
      *at = centreOf(p);
      const ui::BoardView& v = screen()->view();
      *piece = const_cast<core::Puzzle&>(puzzle()).hitTest(v.toBoardX(at->x), v.toBoardY(at->y));
      return *piece != nullptr;
    }
    return false;
  }

  // Drags the next piece home; false if none was left or it did not land.
  bool placeOne() {
    Point at{};
    const core::Piece* piece = nullptr;
    if (!nextGrab(&at, &piece)) return false;
    const std::string id = piece->id;
    const Point home = dropPointFor(*piece, at);
    driver.drag(at.x, at.y, home.x, home.y);
    for (const core::Piece& p : puzzle().pieces) {
      if (p.id == id) return p.placed;
    }
    return false;
  }

  // Drags pieces home one by one until none is left; false if a drag failed
  // to place its piece.
  bool solveByDragging() {
    const size_t n = puzzle().pieces.size();
    for (size_t i = 0; i < n; ++i) {
      if (!placeOne()) return false;
    }
    return puzzle().placedCount() == static_cast<int>(n);
  }

  const store::SavedPiece* savedPiece(const std::string& id) {
    for (const store::SavedPiece& p : store::currentPuzzle().pieces) {
      if (p.id == id) return &p;
    }
    return nullptr;
  }

  // A loose piece and a short drag that takes it away from its home.
  const core::Piece& looseFarFromHome() {
    for (const core::Piece& p : puzzle().pieces) {
      if (p.placed || p.inTray) continue;
      const Point c = centreOf(p);
      const ui::BoardView& v = screen()->view();
      if (const_cast<core::Puzzle&>(puzzle()).hitTest(v.toBoardX(c.x), v.toBoardY(c.y)) == &p) return p;
    }
    return puzzle().pieces.front();
  }

  FrameDriver driver{1280, 800};
};

class PlayingInEachLayout : public Playing, public ::testing::WithParamInterface<BoardLayout> {};

TEST_P(PlayingInEachLayout, AFiveBySixPuzzleIsSolvedByMouseAndRecorded) {
  store::clearPuzzle();
  const size_t solvesBefore = store::solves().size();
  start(GetParam());
  ASSERT_EQ(puzzle().placedCount(), 0);
  driver.idle(0.5);
  ASSERT_TRUE(solveByDragging()) << "placed " << puzzle().placedCount();
  EXPECT_TRUE(screen()->solved());
  const int64_t time = puzzle().elapsedMs;
  EXPECT_GT(time, 400);
  ASSERT_EQ(store::solves().size(), solvesBefore + 1);
  EXPECT_EQ(store::solves().front().imageId, "level1");
  EXPECT_EQ(store::solves().front().rows, 5);
  EXPECT_EQ(store::solves().front().cols, 6);
  EXPECT_EQ(store::solves().front().elapsedMs, time);
  EXPECT_FALSE(store::currentPuzzle().valid) << "the finished game is no longer saved";

  driver.idle(2.4);
  EXPECT_EQ(ui::Game::instance().top().screen, ui::ScreenKind::Playing) << "the finished picture shows a while";
  driver.idle(0.2);
  const ui::GameState& top = ui::Game::instance().top();
  EXPECT_EQ(top.screen, ui::ScreenKind::Solved);
  EXPECT_EQ(top.levelId, "level1");
  EXPECT_EQ(top.rows, 5);
  EXPECT_EQ(top.elapsedMs, time) << "the clock stopped at the solve";
}

INSTANTIATE_TEST_SUITE_P(Layouts, PlayingInEachLayout,
                         ::testing::Values(BoardLayout::Scatter, BoardLayout::Tray, BoardLayout::ScrollTray));

TEST_F(Playing, AFreshDealIsSavedAtOnce) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  ASSERT_TRUE(store::currentPuzzle().valid);
  EXPECT_EQ(store::currentPuzzle().imageId, "level1");
  EXPECT_EQ(store::currentPuzzle().pieces.size(), 30u);
}

TEST_F(Playing, ABurstOfMovesIsSavedAtMostEveryFourTenthsOfASecond) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  driver.idle(1.0);
  const core::Piece& a = looseFarFromHome();
  const std::string idA = a.id;
  Point c = centreOf(a);
  driver.drag(c.x, c.y, c.x, c.y + 40, 2);
  const double firstDrop = driver.time();
  ASSERT_NE(savedPiece(idA), nullptr);
  EXPECT_DOUBLE_EQ(savedPiece(idA)->y, puzzle().pieces[a.row * 6 + a.col].y) << "saved in the frame of the drop";

  const core::Piece& b = looseFarFromHome();
  const std::string idB = b.id;
  c = centreOf(b);
  driver.drag(c.x, c.y, c.x, c.y - 40, 2);
  const double yB = puzzle().pieces[b.row * 6 + b.col].y;
  ASSERT_NE(savedPiece(idB)->y, yB) << "a second drop right after waits";
  double savedAt = -1;
  for (int i = 0; i < 60 && savedAt < 0; ++i) {
    driver.idle(FrameDriver::kStep);
    if (savedPiece(idB)->y == yB) savedAt = driver.time();
  }
  ASSERT_GT(savedAt, 0);
  EXPECT_GT(savedAt - firstDrop, 0.4);
  EXPECT_LE(savedAt - firstDrop, 0.4 + 2 * FrameDriver::kStep);
}

TEST_F(Playing, EscapeSavesTheLastMoveAtOnceAndLeaves) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  driver.idle(1.0);
  for (int i = 0; i < 2; ++i) {
    const core::Piece& p = looseFarFromHome();
    const Point c = centreOf(p);
    driver.drag(c.x, c.y, c.x + 25, c.y, 2);
  }
  std::vector<double> xs;
  for (const core::Piece& p : puzzle().pieces) xs.push_back(p.x);
  driver.key(SDLK_ESCAPE);
  for (size_t i = 0; i < xs.size(); ++i) EXPECT_DOUBLE_EQ(store::currentPuzzle().pieces[i].x, xs[i]);
  driver.idle(FrameDriver::kStep);
  EXPECT_EQ(ui::Game::instance().top().screen, ui::ScreenKind::Menu) << "started on its own, it leaves to the menu";
}

class ResumeInLayout : public Playing, public ::testing::WithParamInterface<BoardLayout> {};

TEST_P(ResumeInLayout, LeavingAndComingBackResumesPiecesTurnsAndClock) {
  store::clearPuzzle();
  start(GetParam(), store::RotationMode::Rot90);
  driver.idle(0.5);
  // Take three pieces out (from the tray where there is one) and leave them
  // on the table, turning one of them.
  for (int i = 0; i < 3; ++i) {
    Point at{};
    const core::Piece* piece = nullptr;
    ASSERT_TRUE(nextGrab(&at, &piece));
    const Point home = dropPointFor(*piece, at);
    driver.drag(at.x, at.y, home.x + 9 + 0.5 * puzzle().cellW, home.y + 0.6 * puzzle().cellH, 4);
  }
  const core::Piece& turned = looseFarFromHome();
  const Point c = centreOf(turned);
  driver.rightClick(c.x, c.y);
  driver.idle(3.0);
  const std::vector<core::Piece> before = puzzle().pieces;
  const int64_t clock = puzzle().elapsedMs;
  driver.key(SDLK_ESCAPE);
  driver.idle(0.1);

  start(GetParam(), store::RotationMode::Rot90);
  const std::vector<core::Piece>& after = puzzle().pieces;
  ASSERT_EQ(after.size(), before.size());
  int loose = 0;
  for (size_t i = 0; i < after.size(); ++i) {
    EXPECT_EQ(after[i].placed, before[i].placed) << i;
    EXPECT_EQ(after[i].inTray, before[i].inTray) << i;
    EXPECT_EQ(after[i].rotation, before[i].rotation) << i;
    if (!before[i].inTray) {
      EXPECT_NEAR(after[i].x, before[i].x, 1e-9) << i;
      EXPECT_NEAR(after[i].y, before[i].y, 1e-9) << i;
      loose += before[i].placed ? 0 : 1;
    }
  }
  EXPECT_GE(loose, 3);
  EXPECT_GE(puzzle().elapsedMs, clock);
  EXPECT_LE(puzzle().elapsedMs, clock + 20);
}

INSTANTIATE_TEST_SUITE_P(Layouts, ResumeInLayout, ::testing::Values(BoardLayout::Scatter, BoardLayout::ScrollTray));

TEST_F(Playing, AnOpenDialogStopsTheClock) {
  start(BoardLayout::Scatter);
  driver.idle(1.0);
  driver.key(SDLK_n, true);
  ASSERT_TRUE(screen()->dialogOpen());
  const int64_t frozen = puzzle().elapsedMs;
  driver.idle(2.0);
  EXPECT_EQ(puzzle().elapsedMs, frozen);
  driver.key(SDLK_ESCAPE);
  EXPECT_FALSE(screen()->dialogOpen()) << "Escape cancels the dialog, it does not leave the game";
  EXPECT_EQ(ui::Game::instance().top().screen, ui::ScreenKind::Playing);
  driver.idle(1.0);
  EXPECT_NEAR(static_cast<double>(puzzle().elapsedMs - frozen), 1000, 40);
}

TEST_F(Playing, ConfirmedRestartDealsAfreshAndZeroesTheClock) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  ASSERT_TRUE(placeOne());
  ASSERT_EQ(puzzle().placedCount(), 1);
  driver.idle(1.0);
  driver.key(SDLK_n, true);
  driver.key(SDLK_RETURN);
  EXPECT_FALSE(screen()->dialogOpen());
  EXPECT_EQ(puzzle().placedCount(), 0);
  EXPECT_LT(puzzle().elapsedMs, 50);
}

TEST_F(Playing, ConfirmedShuffleKeepsPlacedPieces) {
  store::clearPuzzle();
  start(BoardLayout::Scatter);
  ASSERT_TRUE(placeOne());
  std::vector<double> xs;
  for (const core::Piece& p : puzzle().pieces) xs.push_back(p.x);
  driver.key(SDLK_r, true);
  driver.key(SDLK_KP_ENTER);
  EXPECT_EQ(puzzle().placedCount(), 1);
  int moved = 0;
  for (size_t i = 0; i < xs.size(); ++i) moved += puzzle().pieces[i].x != xs[i];
  EXPECT_GT(moved, 20) << "the loose pieces were dealt anew";
}

TEST_F(Playing, ZoomStaysBetweenOneAndFourWhateverTheInput) {
  start(BoardLayout::Scatter);
  const auto inRange = [this] { return screen()->view().zoom >= 1.0 && screen()->view().zoom <= 4.0; };
  for (int i = 0; i < 30; ++i) {
    driver.wheel(640, 400, 3);
    ASSERT_TRUE(inRange());
  }
  EXPECT_DOUBLE_EQ(screen()->view().zoom, 4.0);
  for (int i = 0; i < 10; ++i) {
    driver.key(SDLK_PLUS);
    ASSERT_TRUE(inRange());
  }
  for (int i = 0; i < 40; ++i) {
    driver.wheel(100, 700, -2.5);
    ASSERT_TRUE(inRange());
  }
  EXPECT_DOUBLE_EQ(screen()->view().zoom, 1.0);
  EXPECT_EQ(screen()->view().offsetX, 0);
  for (int i = 0; i < 20; ++i) {
    driver.key(i % 3 == 0 ? SDLK_MINUS : SDLK_EQUALS);
    ASSERT_TRUE(inRange());
  }
}

TEST_F(Playing, KeyboardZoomRecentresAndZeroResets) {
  start(BoardLayout::Scatter);
  driver.key(SDLK_PLUS);
  const ui::BoardView& v = screen()->view();
  EXPECT_DOUBLE_EQ(v.zoom, 1.25);
  const core::Puzzle& p = puzzle();
  EXPECT_NEAR(v.toScreenX(p.boardX + p.boardW / 2), 640, 1e-9);
  EXPECT_NEAR(v.toScreenY(p.boardY + p.boardH / 2), 400, 1e-9);
  driver.key(SDLK_0);
  EXPECT_DOUBLE_EQ(v.zoom, 1.0);
  EXPECT_EQ(v.offsetX, 0);
}

TEST_F(Playing, WheelZoomKeepsThePointUnderThePointer) {
  start(BoardLayout::Scatter);
  const double bx = screen()->view().toBoardX(500), by = screen()->view().toBoardY(300);
  driver.wheel(500, 300, 2);
  EXPECT_NEAR(screen()->view().zoom, 1.15 * 1.15, 1e-9);
  EXPECT_NEAR(screen()->view().toScreenX(bx), 500, 1e-9);
  EXPECT_NEAR(screen()->view().toScreenY(by), 300, 1e-9);
}

TEST_F(Playing, ZoomOffIgnoresWheelAndKeys) {
  start(BoardLayout::Scatter);
  store::settings().boardZoomMode = store::BoardZoomMode::Off;
  driver.wheel(640, 400, 3);
  driver.key(SDLK_PLUS);
  EXPECT_DOUBLE_EQ(screen()->view().zoom, 1.0);
}

TEST_F(Playing, RightClickTurnsAndATurnedPieceDoesNotSnap) {
  store::clearPuzzle();
  start(BoardLayout::Scatter, store::RotationMode::Rot180);
  core::Puzzle& p = screen()->puzzle();
  for (core::Piece& piece : p.pieces) piece.rotation = 0;
  const core::Piece& piece = looseFarFromHome();
  const Point c = centreOf(piece);
  driver.rightClick(c.x, c.y);
  EXPECT_EQ(piece.rotation, 180);
  const Point home = homeOf(piece);
  driver.drag(c.x, c.y, home.x, home.y);
  EXPECT_FALSE(piece.placed);
  const Point there = centreOf(piece);
  driver.rightClick(there.x, there.y);
  driver.drag(there.x, there.y, home.x, home.y);
  EXPECT_TRUE(piece.placed);
}

TEST_F(Playing, PausingStopsTheClockAndHidesNothingButThePicture) {
  start(BoardLayout::Scatter);
  driver.idle(0.5);
  driver.key(SDLK_p);
  ASSERT_TRUE(screen()->paused());
  const int64_t frozen = puzzle().elapsedMs;
  driver.idle(1.0);
  EXPECT_EQ(puzzle().elapsedMs, frozen);
  driver.key(SDLK_RETURN);
  EXPECT_FALSE(screen()->paused());
  driver.idle(0.5);
  EXPECT_GT(puzzle().elapsedMs, frozen + 400);
}

TEST_F(Playing, LosingFocusPausesTheGame) {
  start(BoardLayout::Scatter);
  ui::Input away;
  away.windowActive = false;
  driver.frame(away);
  EXPECT_TRUE(screen()->paused());
  ui::Input back;
  driver.frame(back);
  EXPECT_TRUE(screen()->paused()) << "coming back waits for the player";
}

TEST_F(Playing, TheWheelOverATrayStripScrollsItInsteadOfZooming) {
  start(BoardLayout::ScrollTray, store::RotationMode::Off, 10, 11);
  const ui::Rect strip = screen()->tray().strip(0);
  const double firstY = screen()->tray().slot(0, 0).y;
  driver.wheel(strip.x + strip.w / 2, strip.y + 100, -2);
  EXPECT_DOUBLE_EQ(screen()->view().zoom, 1.0);
  EXPECT_DOUBLE_EQ(screen()->tray().slot(0, 0).y, firstY - 120);
}

// Big pieces overlap the board even when let go over a strip; the pointer
// over the strip is what counts for the player.
TEST_F(Playing, APieceCarriedBackOverTheTrayReturnsToIt) {
  store::clearPuzzle();
  start(BoardLayout::ScrollTray);
  Point at{};
  const core::Piece* piece = nullptr;
  ASSERT_TRUE(nextGrab(&at, &piece));
  const std::string id = piece->id;
  driver.drag(at.x, at.y, 640, 450);
  EXPECT_FALSE(piece->inTray) << "put down on the table";
  const Point c = centreOf(*piece);
  const ui::Rect strip = screen()->tray().strip(1);
  driver.drag(c.x, c.y, strip.x + strip.w / 2, strip.y + 50);
  EXPECT_TRUE(piece->inTray);
}

TEST_F(Playing, DemoPlacesEveryPieceOnTheFirstFrame) {
  store::clearPuzzle();
  const size_t solvesBefore = store::solves().size();
  testsupport::ScopedEnv demo("TESSELLATRIX_DEMO", std::string("250"));
  start(BoardLayout::ScrollTray);
  EXPECT_TRUE(screen()->solved());
  EXPECT_EQ(store::solves().size(), solvesBefore + 1);
}

TEST_F(Playing, DemoOfZeroOrTextDoesNothing) {
  for (const char* value : {"0", "lots"}) {
    store::clearPuzzle();
    testsupport::ScopedEnv demo("TESSELLATRIX_DEMO", std::string(value));
    start(BoardLayout::Scatter);
    EXPECT_EQ(puzzle().placedCount(), 0) << value;
  }
}

}  // namespace
