#include "core/puzzle.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/catalog.h"
#include "tests/core/puzzle_support.h"
#include "tests/core/reference_random.h"

namespace {

using store::BoardLayout;
using testsupport::dropHome;

core::Puzzle laidOut(const std::string& level, int rows, int cols, double w = 1280, double h = 800,
                     BoardLayout mode = BoardLayout::Scatter) {
  core::Puzzle p(level, rows, cols);
  p.layout(w, h, 64, mode, 120);
  return p;
}

// Everything a refused restore must leave alone.
std::string stateOf(const core::Puzzle& p) {
  std::string out = std::to_string(p.elapsedMs) + "|" + std::to_string(p.nextZ) + "|";
  for (const core::Piece& piece : p.pieces) {
    out += piece.id + ":" + std::to_string(piece.x) + "," + std::to_string(piece.y) + "," +
           std::to_string(piece.placed) + std::to_string(piece.inTray) + "," + std::to_string(piece.rotation) + ";";
  }
  return out;
}

TEST(Puzzle, IsCutFromTheSeedOfItsLevelAndGrid) {
  const core::Puzzle p("level3", 5, 6);
  EXPECT_EQ(p.seed, 165783452u);  // the hash of "level3_5_6", worked out in random_test
  EXPECT_EQ(p.seed, reference::hash("level3_5_6"));
  const core::EdgeGrid edges = core::generateEdges(5, 6, p.seed);
  ASSERT_EQ(p.pieces.size(), 30u);
  for (int i = 0; i < 30; ++i) {
    const core::Piece& piece = p.pieces[i];
    EXPECT_EQ(piece.row, i / 6);
    EXPECT_EQ(piece.col, i % 6);
    EXPECT_EQ(piece.id, std::to_string(i / 6) + "_" + std::to_string(i % 6));
    EXPECT_EQ(piece.edges.top, edges[i / 6][i % 6].top);
    EXPECT_EQ(piece.edges.right, edges[i / 6][i % 6].right);
    EXPECT_EQ(piece.edges.bottom, edges[i / 6][i % 6].bottom);
    EXPECT_EQ(piece.edges.left, edges[i / 6][i % 6].left);
    EXPECT_EQ(piece.x, 0.0);
    EXPECT_FALSE(piece.placed || piece.inTray);
    EXPECT_EQ(piece.rotation, 0);
    EXPECT_EQ(piece.z, 0);
  }
  EXPECT_EQ(p.nextZ, 1);
  EXPECT_EQ(p.scatterCount, 0);
  EXPECT_EQ(p.layoutMode, BoardLayout::ScrollTray);
  EXPECT_TRUE(p.undoStack.empty());
  EXPECT_EQ(core::Puzzle("level1", 10, 11).pieces[32].id, "2_10");
}

TEST(Puzzle, TrayOrderIsTheFixedShuffleOfItsSeed) {
  for (const char* level : {"level3", "level25", "level40"}) {
    for (const core::DifficultyDef& d : core::difficulties()) {
      const core::Puzzle p(level, d.rows, d.cols);
      const uint64_t seed =
          reference::hash(std::string(level) + "_" + std::to_string(d.rows) + "_" + std::to_string(d.cols));
      reference::Generator g(seed * 101 + 5);
      const std::vector<int> expected = reference::shuffled(d.rows * d.cols, g);
      ASSERT_EQ(p.order.size(), expected.size());
      for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(p.order[i], expected[i]) << level << " " << i;
    }
  }
}

TEST(Puzzle, TwoModelsOfTheSameLevelAndGridAreAlike) {
  const core::Puzzle a = laidOut("level12", 7, 8);
  const core::Puzzle b = laidOut("level12", 7, 8);
  EXPECT_EQ(a.order, b.order);
  EXPECT_EQ(stateOf(a), stateOf(b));
  for (size_t i = 0; i < a.pieces.size(); ++i) {
    EXPECT_EQ(a.pieces[i].edges.right, b.pieces[i].edges.right);
    EXPECT_EQ(a.pieces[i].edges.bottom, b.pieces[i].edges.bottom);
  }
  EXPECT_NE(a.order, core::Puzzle("level12", 7, 8 + 1).order);
}

TEST(Puzzle, SnapshotRecordsEveryPiece) {
  core::Puzzle p = laidOut("level5", 5, 6);
  p.elapsedMs = 123456;
  ASSERT_TRUE(dropHome(p, p.pieces[7]));
  p.pieces[7].rotation = 90;  // cannot happen in play; the record must still say 0
  p.pieces[7].inTray = true;
  p.pieces[3].rotation = 270;
  p.pieces[4].inTray = true;
  const store::SavedPuzzle s = p.snapshot(false);
  EXPECT_TRUE(s.valid);
  EXPECT_EQ(s.imageId, "level5");
  EXPECT_EQ(s.rows, 5);
  EXPECT_EQ(s.cols, 6);
  EXPECT_EQ(s.boardX, p.boardX);
  EXPECT_EQ(s.boardY, p.boardY);
  EXPECT_EQ(s.boardW, p.boardW);
  EXPECT_EQ(s.boardH, p.boardH);
  EXPECT_FALSE(s.landscape);
  EXPECT_EQ(s.elapsedMs, 123456);
  ASSERT_EQ(s.pieces.size(), 30u);
  for (size_t i = 0; i < 30; ++i) {
    EXPECT_EQ(s.pieces[i].id, p.pieces[i].id);
    EXPECT_EQ(s.pieces[i].x, p.pieces[i].x);
    EXPECT_EQ(s.pieces[i].y, p.pieces[i].y);
  }
  EXPECT_TRUE(s.pieces[7].placed);
  EXPECT_EQ(s.pieces[7].rotation, 0);
  EXPECT_FALSE(s.pieces[7].inTray);
  EXPECT_EQ(s.pieces[3].rotation, 270);
  EXPECT_TRUE(s.pieces[4].inTray);
  EXPECT_FALSE(s.pieces[5].inTray);
}

TEST(Puzzle, RestoreRefusesOtherLevelsAndGridsAndChangesNothing) {
  core::Puzzle source = laidOut("level2", 6, 7);
  source.elapsedMs = 999;
  const store::SavedPuzzle saved = source.snapshot(true);
  core::Puzzle p = laidOut("level3", 6, 7);
  p.pieces[0].x += 13;
  const std::string before = stateOf(p);

  store::SavedPuzzle other = saved;
  EXPECT_FALSE(p.restore(other, true));
  other.imageId = "level3";
  other.cols = 8;
  EXPECT_FALSE(p.restore(other, true));
  other.cols = 7;
  other.rows = 5;
  EXPECT_FALSE(p.restore(other, true));
  other.rows = 6;
  other.valid = false;
  EXPECT_FALSE(p.restore(other, true));
  EXPECT_EQ(stateOf(p), before);
  other.valid = true;
  EXPECT_TRUE(p.restore(other, true));
  EXPECT_EQ(p.elapsedMs, 999);
}

TEST(Puzzle, RestoreOnTheSameBoardPutsEveryPieceBack) {
  core::Puzzle a = laidOut("level9", 6, 7);
  a.elapsedMs = 4242;
  ASSERT_TRUE(dropHome(a, a.pieces[0]));
  ASSERT_TRUE(dropHome(a, a.pieces[10]));
  a.pieces[5].x += 37;
  a.pieces[5].y -= 11;
  a.pieces[5].rotation = 180;
  a.pieces[6].inTray = true;
  a.pieces[6].rotation = 90;
  a.clampLoose();
  const store::SavedPuzzle saved = a.snapshot(true);

  core::Puzzle b = laidOut("level9", 6, 7);
  ASSERT_TRUE(b.restore(saved, true));
  EXPECT_EQ(b.elapsedMs, 4242);
  EXPECT_EQ(b.placedCount(), 2);
  for (size_t i = 0; i < a.pieces.size(); ++i) {
    EXPECT_DOUBLE_EQ(b.pieces[i].x, a.pieces[i].x) << i;
    EXPECT_DOUBLE_EQ(b.pieces[i].y, a.pieces[i].y) << i;
    EXPECT_EQ(b.pieces[i].x, b.pieces[i].restX) << "a restored game opens still";
    EXPECT_EQ(b.pieces[i].placed, a.pieces[i].placed);
    EXPECT_EQ(b.pieces[i].inTray, a.pieces[i].inTray);
    EXPECT_EQ(b.pieces[i].rotation, a.pieces[i].rotation);
  }
}

TEST(Puzzle, RestoreFollowsTheBoardAndClampsIntoTheTable) {
  core::Puzzle p = laidOut("level9", 6, 7);
  store::SavedPuzzle saved = p.snapshot(true);
  // The same board, drawn 10 units further right and 5 up when saved.
  saved.boardX += 10;
  saved.boardY -= 5;
  saved.pieces[1].x = p.boardX + 100;
  saved.pieces[1].y = p.boardY + 100;
  saved.pieces[2].x = -5000;  // far off the table
  saved.pieces[2].y = 5000;
  ASSERT_TRUE(p.restore(saved, true));
  EXPECT_DOUBLE_EQ(p.pieces[1].x, p.boardX + 90);
  EXPECT_DOUBLE_EQ(p.pieces[1].y, p.boardY + 105);
  EXPECT_EQ(p.pieces[2].x, p.looseMinX);
  EXPECT_EQ(p.pieces[2].y, p.looseMaxY);
}

TEST(Puzzle, RestoreOnAnotherBoardKeepsPlacedPiecesAndRotationsButDealsLooseOnesAfresh) {
  core::Puzzle a = laidOut("level9", 6, 7, 1920, 1080);
  ASSERT_TRUE(dropHome(a, a.pieces[3]));
  a.pieces[8].rotation = 180;
  a.pieces[8].x += 50;
  const store::SavedPuzzle saved = a.snapshot(true);

  for (const bool resized : {true, false}) {
    core::Puzzle b = laidOut("level9", 6, 7, resized ? 1280 : 1920, resized ? 800 : 1080);
    const core::Puzzle dealt = b;
    // A record from a portrait window is another geometry even at equal size.
    ASSERT_TRUE(b.restore(saved, resized));
    double tx, ty;
    b.targetOf(b.pieces[3], &tx, &ty);
    EXPECT_TRUE(b.pieces[3].placed);
    EXPECT_EQ(b.pieces[3].x, tx);
    EXPECT_EQ(b.pieces[3].y, ty);
    EXPECT_EQ(b.pieces[8].rotation, 180);
    EXPECT_EQ(b.pieces[8].x, dealt.pieces[8].x);
    EXPECT_EQ(b.pieces[8].y, dealt.pieces[8].y);
  }
}

TEST(Puzzle, RestoreToleratesLessThanHalfAUnitOfBoardSize) {
  core::Puzzle a = laidOut("level9", 6, 7);
  a.pieces[8].x += 20;
  a.clampLoose();
  for (const double delta : {0.4, -0.4, 0.6, -0.6}) {
    for (const bool width : {true, false}) {
      store::SavedPuzzle saved = a.snapshot(true);
      (width ? saved.boardW : saved.boardH) += delta;
      core::Puzzle b = laidOut("level9", 6, 7);
      const double dealt = b.pieces[8].x;
      ASSERT_TRUE(b.restore(saved, true));
      EXPECT_EQ(b.pieces[8].x, std::abs(delta) < 0.5 ? a.pieces[8].x : dealt) << delta << " " << width;
    }
  }
}

TEST(Puzzle, RestoreNormalisesRotationsAndSkipsUnknownPieces) {
  core::Puzzle p = laidOut("level4", 5, 6);
  store::SavedPuzzle saved = p.snapshot(true);
  saved.pieces[0].rotation = -90;
  saved.pieces[1].rotation = 450;
  saved.pieces[2].rotation = -720;
  saved.pieces[3].placed = true;
  saved.pieces[3].inTray = true;
  saved.pieces[3].rotation = 90;
  saved.pieces[3].x = -1000;
  saved.pieces[4].inTray = true;
  saved.pieces.push_back(store::SavedPiece{"9_9", 1, 2, true, 0, false});
  saved.pieces.push_back(store::SavedPiece{"", 1, 2, true, 0, false});
  ASSERT_TRUE(p.restore(saved, true));
  EXPECT_EQ(p.pieces[0].rotation, 270);
  EXPECT_EQ(p.pieces[1].rotation, 90);
  EXPECT_EQ(p.pieces[2].rotation, 0);
  EXPECT_TRUE(p.pieces[3].placed);
  EXPECT_FALSE(p.pieces[3].inTray) << "a placed piece is never in the tray";
  EXPECT_EQ(p.pieces[3].rotation, 0);
  double tx, ty;
  p.targetOf(p.pieces[3], &tx, &ty);
  EXPECT_EQ(p.pieces[3].x, tx);
  EXPECT_TRUE(p.pieces[4].inTray);
  EXPECT_EQ(p.placedCount(), 1);
}

TEST(Puzzle, RestartUnplacesEverythingAndDealsAgain) {
  for (const BoardLayout mode : {BoardLayout::Scatter, BoardLayout::ScrollTray}) {
    core::Puzzle p = laidOut("level11", 6, 7, 1920, 1080, mode);
    const core::Puzzle first = p;
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(dropHome(p, p.pieces[i]));
    p.rotate(p.pieces[9], store::RotationMode::Rot90);
    p.bringToFront(p.pieces[9]);
    p.elapsedMs = 5000;
    p.restart();
    EXPECT_EQ(p.placedCount(), 0);
    EXPECT_EQ(p.elapsedMs, 0);
    EXPECT_EQ(p.nextZ, 1);
    EXPECT_EQ(p.scatterCount, 7);
    EXPECT_FALSE(p.undo()) << "the history went with the restart";
    EXPECT_EQ(p.order, first.order);
    int moved = 0;
    for (size_t i = 0; i < p.pieces.size(); ++i) {
      const core::Piece& piece = p.pieces[i];
      EXPECT_EQ(piece.rotation, 0);
      EXPECT_EQ(piece.z, 0);
      EXPECT_EQ(piece.inTray, mode == BoardLayout::ScrollTray);
      EXPECT_EQ(piece.edges.right, first.pieces[i].edges.right);
      moved += piece.x != first.pieces[i].x;
    }
    // (The scroll tray leaves no roomy zone in this window: its pieces all
    // wait in the table's corner, however they are dealt.)
    if (mode == BoardLayout::Scatter) {
      EXPECT_GT(moved, 21) << "salt 7 deals otherwise than salt 0";
    }
  }
}

TEST(Puzzle, UndoTakesBackAtMostFiftySnaps) {
  core::Puzzle p = laidOut("level8", 8, 9);
  for (int i = 0; i < 60; ++i) ASSERT_TRUE(dropHome(p, p.pieces[i]));
  EXPECT_EQ(p.undoStack.size(), 50u);
  EXPECT_EQ(p.undoStack.front(), p.pieces[10].id) << "the ten oldest snaps fell out";
  for (int i = 59; i >= 10; --i) {
    const int z = p.nextZ;
    ASSERT_TRUE(p.undo()) << i;
    const core::Piece& piece = p.pieces[i];
    EXPECT_FALSE(piece.placed);
    EXPECT_EQ(piece.z, z);
    double tx, ty;
    p.targetOf(piece, &tx, &ty);
    EXPECT_EQ(piece.x, tx) << "it stays on its home cell, loose";
  }
  EXPECT_FALSE(p.undo());
  EXPECT_EQ(p.placedCount(), 10);
}

TEST(Puzzle, UndoOfAPieceNoLongerPlacedIsConsumed) {
  core::Puzzle p = laidOut("level8", 5, 6);
  ASSERT_TRUE(dropHome(p, p.pieces[0]));
  ASSERT_TRUE(dropHome(p, p.pieces[1]));
  p.pieces[1].placed = false;
  EXPECT_FALSE(p.undo());
  EXPECT_EQ(p.undoStack.size(), 1u);
  EXPECT_TRUE(p.undo());
  EXPECT_FALSE(p.pieces[0].placed);
  EXPECT_EQ(p.pieces[0].rotation, 0);
}

}  // namespace
