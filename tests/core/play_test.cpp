#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/catalog.h"
#include "core/puzzle.h"
#include "tests/core/puzzle_support.h"
#include "tests/core/reference_random.h"

namespace {

using store::BoardLayout;
using store::RotationMode;
using testsupport::dropHome;
using testsupport::moveNearHome;

// A 5 x 6 board at (100, 50) with 80 x 60 cells and a 10-unit margin, set by
// hand so distances come out exact: piece images are 100 x 80, the snap
// threshold is 30, and the table runs from 0 to 2000 both ways.
core::Puzzle handBoard(double cellW = 80, double cellH = 60) {
  core::Puzzle p("level1", 5, 6);
  p.layoutMode = BoardLayout::Scatter;
  p.boardX = 100;
  p.boardY = 50;
  p.cellW = cellW;
  p.cellH = cellH;
  p.boardW = 6 * cellW;
  p.boardH = 5 * cellH;
  p.pad = 10;
  p.looseMinX = p.looseMinY = 0;
  p.looseMaxX = p.looseMaxY = 2000;
  for (core::Piece& piece : p.pieces) piece.x = piece.y = 1500;  // out of the way
  return p;
}

void put(core::Piece& piece, double x, double y, int rotation = 0) {
  piece.x = x;
  piece.y = y;
  piece.rotation = rotation;
}

TEST(Play, TheWholeImageBoxIsGrabbableEdgesIncluded) {
  core::Puzzle p = handBoard();
  core::Piece& piece = p.pieces[0];
  put(piece, 200, 300, 180);  // a half turn keeps the box
  EXPECT_EQ(p.hitTest(200, 300), &piece);
  EXPECT_EQ(p.hitTest(300, 380), &piece);
  EXPECT_EQ(p.hitTest(300.01, 380), nullptr);
  EXPECT_EQ(p.hitTest(200, 299.99), nullptr);
  piece.inTray = true;
  EXPECT_EQ(p.hitTest(250, 340), nullptr) << "tray pieces are picked by the tray, not the table";
}

TEST(Play, AQuarterTurnedWideBoxShiftsUpOnly) {
  // 100 x 80 image: d = (80 - 100) / 2 = -10, so the box moves up by 10 and
  // becomes 80 x 100; the centred box would also move right by 10.
  for (const int rotation : {90, 270, -90}) {
    core::Puzzle p = handBoard();
    core::Piece& piece = p.pieces[0];
    put(piece, 200, 300, rotation);
    EXPECT_EQ(p.hitTest(200, 290), &piece) << rotation;
    EXPECT_EQ(p.hitTest(280, 390), &piece) << rotation;
    EXPECT_EQ(p.hitTest(205, 300), &piece) << rotation << ": left of the centred box";
    EXPECT_EQ(p.hitTest(285, 300), nullptr) << rotation << ": inside the centred box only";
    EXPECT_EQ(p.hitTest(240, 289.99), nullptr) << rotation;
    EXPECT_EQ(p.hitTest(240, 390.01), nullptr) << rotation;
  }
}

TEST(Play, AQuarterTurnedTallBoxShiftsLeftOnly) {
  // 80 x 100 image: d = (100 - 80) / 2 = 10, so the box moves left by 10 and
  // becomes 100 x 80; the centred box would also move down by 10.
  core::Puzzle p = handBoard(60, 80);
  core::Piece& piece = p.pieces[0];
  put(piece, 200, 300, 90);
  EXPECT_EQ(p.hitTest(190, 300), &piece);
  EXPECT_EQ(p.hitTest(290, 380), &piece);
  EXPECT_EQ(p.hitTest(240, 302), &piece) << "above the centred box";
  EXPECT_EQ(p.hitTest(240, 385), nullptr) << "inside the centred box only";
  EXPECT_EQ(p.hitTest(189.99, 340), nullptr);
  EXPECT_EQ(p.hitTest(290.01, 340), nullptr);
}

TEST(Play, LoosePiecesLieOverPlacedOnesAndHigherZOverLower) {
  core::Puzzle p = handBoard();
  core::Piece& a = p.pieces[0];
  core::Piece& b = p.pieces[1];
  core::Piece& c = p.pieces[2];
  put(a, 200, 200);
  put(b, 220, 210);
  put(c, 240, 220);
  EXPECT_EQ(p.hitTest(250, 250), &c) << "equal z: the later piece";
  p.bringToFront(a);
  EXPECT_EQ(a.z, 1);
  EXPECT_EQ(p.nextZ, 2);
  EXPECT_EQ(p.hitTest(250, 250), &a);
  p.bringToFront(b);
  EXPECT_EQ(p.hitTest(250, 250), &b);
  EXPECT_EQ(p.hitTest(205, 205), &a) << "only a lies there";
  b.placed = true;
  b.z = 100;
  EXPECT_EQ(p.hitTest(250, 250), &a) << "an unplaced piece beats a placed one whatever its z";
  a.placed = true;
  c.placed = true;
  EXPECT_EQ(p.hitTest(250, 250), &b) << "among placed pieces z decides again";
}

TEST(Play, APieceSnapsStrictlyWithinHalfTheSmallerCellSide) {
  core::Puzzle p = handBoard();
  EXPECT_EQ(p.snapThreshold(), 30);
  core::Piece& piece = p.pieces[7];  // row 1, column 1
  double tx, ty;
  p.targetOf(piece, &tx, &ty);
  EXPECT_EQ(tx, 1 * 80 + 100 - 10);
  EXPECT_EQ(ty, 1 * 60 + 50 - 10);
  put(piece, tx + 30, ty);
  EXPECT_FALSE(p.drop(piece, BoardLayout::Scatter)) << "exactly the threshold is too far";
  put(piece, tx - 18, ty + 24);  // 30 along the diagonal
  EXPECT_FALSE(p.drop(piece, BoardLayout::Scatter));
  put(piece, tx + 35, ty);  // within half the wider side, 40
  EXPECT_FALSE(p.drop(piece, BoardLayout::Scatter));
  EXPECT_FALSE(piece.placed);
  EXPECT_TRUE(p.undoStack.empty());
  put(piece, tx - 17.9, ty + 23.9);
  piece.inTray = true;
  EXPECT_TRUE(p.drop(piece, BoardLayout::Scatter));
  EXPECT_TRUE(piece.placed);
  EXPECT_FALSE(piece.inTray);
  EXPECT_EQ(piece.x, tx);
  EXPECT_EQ(piece.y, ty);
  EXPECT_EQ(p.undoStack, std::vector<std::string>{"1_1"});
}

TEST(Play, OnlyAnUprightPieceSnaps) {
  core::Puzzle p = handBoard();
  core::Piece& piece = p.pieces[3];
  moveNearHome(p, piece);
  piece.rotation = 180;
  EXPECT_FALSE(p.drop(piece, BoardLayout::Scatter)) << "right on its home, but upside down";
  p.rotate(piece, RotationMode::Rot180);
  EXPECT_EQ(piece.rotation, 0);
  EXPECT_TRUE(p.drop(piece, BoardLayout::Scatter));
  core::Piece& turned = p.pieces[4];
  moveNearHome(p, turned);
  turned.rotation = -360;  // a whole turn back is upright
  EXPECT_TRUE(p.drop(turned, BoardLayout::Scatter));
  EXPECT_EQ(turned.rotation, 0);
}

TEST(Play, InTheScrollTrayAPieceLetGoOffTheBoardGoesBack) {
  core::Puzzle p = handBoard();
  core::Piece& piece = p.pieces[0];
  // The board spans x 100..580 and y 50..350; the test uses the cell size
  // from the piece's corner.
  put(piece, 100 - 80 - 0.5, 200);
  EXPECT_FALSE(p.drop(piece, BoardLayout::ScrollTray));
  EXPECT_TRUE(piece.inTray);
  put(piece, 580.5, 200);
  piece.inTray = false;
  p.drop(piece, BoardLayout::ScrollTray);
  EXPECT_TRUE(piece.inTray);
  put(piece, 300, 350.5);
  piece.inTray = false;
  p.drop(piece, BoardLayout::ScrollTray);
  EXPECT_TRUE(piece.inTray);

  // A sliver over the board's left edge keeps it on the table, clamped.
  p.looseMinX = 50;
  put(piece, 100 - 79, 200);
  piece.inTray = false;
  p.drop(piece, BoardLayout::ScrollTray);
  EXPECT_FALSE(piece.inTray);
  EXPECT_EQ(piece.x, 50);
  // Other layouts have no tray to go back to.
  put(piece, 1900, 1900);
  EXPECT_FALSE(p.drop(piece, BoardLayout::Tray));
  EXPECT_FALSE(piece.inTray);
}

TEST(Play, EveryDropClampsEveryLoosePiece) {
  core::Puzzle p = handBoard();
  p.looseMaxX = 1000;
  p.pieces[5].x = 1800;
  p.pieces[6].x = 1800;
  p.pieces[6].inTray = true;
  put(p.pieces[0], -40, 2500);
  p.drop(p.pieces[0], BoardLayout::Scatter);
  EXPECT_EQ(p.pieces[0].x, 0);
  EXPECT_EQ(p.pieces[0].y, 2000);
  EXPECT_EQ(p.pieces[5].x, 1000);
  EXPECT_EQ(p.pieces[6].x, 1800) << "tray pieces keep their table place";
  ASSERT_TRUE(dropHome(p, p.pieces[1]));
  EXPECT_EQ(p.pieces[1].x, 80 + 100 - 10) << "placed pieces are not clamped";
}

TEST(Play, RotationStepsFollowTheMode) {
  core::Puzzle p = handBoard();
  core::Piece& piece = p.pieces[0];
  p.rotate(piece, RotationMode::Off);
  EXPECT_EQ(piece.rotation, 0);
  p.rotate(piece, RotationMode::Rot180);
  EXPECT_EQ(piece.rotation, 180);
  p.rotate(piece, RotationMode::Rot180);
  EXPECT_EQ(piece.rotation, 0);
  const int quarter[] = {90, 180, 270, 0};
  for (const int expected : quarter) {
    p.rotate(piece, RotationMode::Rot90);
    EXPECT_EQ(piece.rotation, expected);
  }
  piece.rotation = -90;
  p.rotate(piece, RotationMode::Rot90);
  EXPECT_EQ(piece.rotation, 0);
  ASSERT_TRUE(dropHome(p, p.pieces[1]));
  p.rotate(p.pieces[1], RotationMode::Rot90);
  EXPECT_EQ(p.pieces[1].rotation, 0) << "a placed piece is fixed";
}

TEST(Play, StartingRotationsAreDrawnFromTheLevelGridAndDealCount) {
  core::Puzzle p("level3", 5, 6);
  p.layout(1280, 800, 60, BoardLayout::Scatter, 120);
  ASSERT_TRUE(dropHome(p, p.pieces[2]));
  for (const RotationMode mode : {RotationMode::Rot180, RotationMode::Rot90}) {
    p.applyRotationMode(mode);
    reference::Generator g(reference::hash("level3_5_6_rot_0"));
    for (const core::Piece& piece : p.pieces) {
      if (piece.placed) {
        EXPECT_EQ(piece.rotation, 0) << "and no draw";
        continue;
      }
      const double u = g.next();
      const int expected = mode == RotationMode::Rot180 ? (u < 0.5 ? 0 : 180) : 90 * static_cast<int>(u * 4);
      EXPECT_EQ(piece.rotation, expected) << piece.id;
    }
  }
  p.applyRotationMode(RotationMode::Off);
  for (const core::Piece& piece : p.pieces) EXPECT_EQ(piece.rotation, 0);

  p.restart();
  p.applyRotationMode(RotationMode::Rot90);
  reference::Generator g(reference::hash("level3_5_6_rot_7"));
  int turned = 0;
  for (const core::Piece& piece : p.pieces) {
    EXPECT_EQ(piece.rotation, 90 * static_cast<int>(g.next() * 4)) << piece.id;
    turned += piece.rotation != 0;
  }
  EXPECT_GT(turned, 10);
}

// A whole game as a player plays it: every piece taken from the tray in tray
// order (or picked off the table), turned upright, and let go near its home.
TEST(Play, EveryDifficultyCanBePlayedToTheSolve) {
  const BoardLayout modes[] = {BoardLayout::Scatter, BoardLayout::Tray, BoardLayout::ScrollTray};
  for (const core::DifficultyDef& d : core::difficulties()) {
    for (const BoardLayout mode : modes) {
      core::Puzzle p("level" + std::to_string(7 + d.index), d.rows, d.cols);
      p.layout(1600, 900, 60, mode, 110);
      p.applyRotationMode(RotationMode::Rot90);
      const int n = d.rows * d.cols;
      std::vector<core::Piece*> hand;
      if (mode == BoardLayout::ScrollTray) {
        hand = p.trayPieces();
      } else {
        for (core::Piece& piece : p.pieces) hand.push_back(&piece);
      }
      ASSERT_EQ(static_cast<int>(hand.size()), n);
      int placed = 0;
      for (core::Piece* piece : hand) {
        if (!piece->inTray) {
          // Picked where it lies: brought to the top, it is what the pointer hits.
          p.bringToFront(*piece);
          const double cx = piece->x + (p.cellW + 2 * p.pad) / 2;
          const double cy = piece->y + (p.cellH + 2 * p.pad) / 2;
          ASSERT_EQ(p.hitTest(cx, cy), piece) << piece->id;
        }
        while (piece->rotation != 0) p.rotate(*piece, RotationMode::Rot90);
        moveNearHome(p, *piece, 0.3 * p.snapThreshold(), -0.3 * p.snapThreshold());
        EXPECT_FALSE(p.solved());
        ASSERT_TRUE(p.drop(*piece, mode)) << piece->id;
        ASSERT_EQ(p.placedCount(), ++placed);
      }
      EXPECT_TRUE(p.solved());
      EXPECT_EQ(p.placedCount(), n);
      EXPECT_EQ(p.undoStack.size(), static_cast<size_t>(std::min(n, 50)));
      EXPECT_TRUE(p.trayPieces().empty());
      const store::SavedPuzzle saved = p.snapshot(true);
      for (const store::SavedPiece& s : saved.pieces) EXPECT_TRUE(s.placed && s.rotation == 0 && !s.inTray);
    }
  }
}

}  // namespace
