// A puzzle: its cut and piece outlines, the board fitted to the window, the
// player's hand (grabbing, snapping home, undo, the solve) and a saved game.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <tuple>

#include "core/catalog.h"
#include "core/outline.h"
#include "core/puzzle.h"

namespace {

using store::BoardLayout;
constexpr BoardLayout kScatter = BoardLayout::Scatter, kTray = BoardLayout::Tray, kScroll = BoardLayout::ScrollTray;

// The right and bottom edge of every piece, row by row, as '-', '0' or '+'.
std::string cutOf(const core::Puzzle& p) {
  std::string out;
  for (const core::Piece& piece : p.pieces) out += {"-0+"[piece.edges.right + 1], "-0+"[piece.edges.bottom + 1]};
  return out;
}

// Every piece of a cut drawn on its home cell, the board sampled on a fine
// grid: each point of the board lies in exactly one piece and none outside
// it, knobs reach into the neighbours, and each outline is closed and stays
// inside the image box a texture is made of.
TEST(Pieces, NeighboursFitWithoutGapOrOverlapAtEveryDifficulty) {
  const double w = 30, h = 24, m = 0.22 * 24, step = 1.3, first = 0.37 - m;
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1), &cairo_surface_destroy);
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr(cairo_create(surface.get()), &cairo_destroy);
  for (const core::DifficultyDef& d : core::difficulties()) {
    SCOPED_TRACE(d.id);
    const core::Puzzle p("level" + std::to_string(d.index + 1), d.rows, d.cols);
    const int nx = static_cast<int>((d.cols * w + 2 * m) / step), ny = static_cast<int>((d.rows * h + 2 * m) / step);
    std::vector<int> count(nx * ny, 0), owner(nx * ny, -1);
    for (size_t k = 0; k < p.pieces.size(); ++k) {
      const core::Piece& piece = p.pieces[k];
      core::buildPiecePath(cr.get(), w, h, m, piece.edges);
      double x1, y1, x2, y2;
      cairo_path_extents(cr.get(), &x1, &y1, &x2, &y2);
      EXPECT_TRUE(x1 >= 0 && y1 >= 0 && x2 <= w + 2 * m && y2 <= h + 2 * m) << piece.id;
      // Closed, a stroked outline's start corner is mitred; open, it shows a notch.
      EXPECT_TRUE(cairo_in_stroke(cr.get(), m - 0.9, m - 0.9)) << piece.id;
      for (int i = 0; i < nx * ny; ++i) {
        const double x = first + (i % nx) * step - (piece.col * w - m), y = first + (i / nx) * step - (piece.row * h - m);
        if (x < 0 || y < 0 || x > w + 2 * m || y > h + 2 * m || !cairo_in_fill(cr.get(), x, y)) continue;
        ++count[i];
        owner[i] = static_cast<int>(k);
      }
    }
    int wrong = 0, reaching = 0;
    for (int i = 0; i < nx * ny; ++i) {
      const double x = first + (i % nx) * step, y = first + (i / nx) * step;
      const bool onBoard = x > 0 && y > 0 && x < d.cols * w && y < d.rows * h;
      wrong += count[i] != (onBoard ? 1 : 0);
      reaching += onBoard && owner[i] != static_cast<int>(y / h) * d.cols + static_cast<int>(x / w);
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(reaching, 10 * ((d.rows - 1) * d.cols + d.rows * (d.cols - 1))) << "every seam has a knob";
  }
}

// A 5 x 6 board at (100, 50), 480 x 300 with 80 x 60 cells (or 60 x 80) and
// a 10-unit margin, set by hand so distances come out exact.
core::Puzzle handBoard(double cellW = 80, double cellH = 60) {
  core::Puzzle p("level1", 5, 6);
  std::tie(p.boardX, p.boardY, p.boardW, p.boardH, p.cellW, p.cellH, p.pad) =
      std::tuple(100, 50, 480, 300, cellW, cellH, 10);
  return p;
}

// A piece at (200, 300) with a 100 x 80 or 80 x 100 image. The whole box is
// grabbable; a quarter turn swaps its sides and shifts it along one axis
// only: a wide box up by 10, a tall one left by 10.
TEST(Play, APieceIsGrabbedAnywhereInItsImageBoxAsTurned) {
  struct Case { double cellW, cellH; int rotation; double px, py; bool hit, inTray = false; };
  const Case kCases[] = {
      {80, 60, 0, 200, 300, true},      {80, 60, 180, 300, 380, true},   {80, 60, 0, 300.01, 380, false},
      {80, 60, 0, 200, 299.99, false},  {80, 60, 90, 200, 290, true},    {80, 60, -90, 280, 390, true},
      {80, 60, 270, 285, 300, false},   {80, 60, 90, 240, 289.99, false}, {60, 80, 90, 190, 300, true},
      {60, 80, 90, 290, 380, true},     {60, 80, 90, 240, 385, false},   {60, 80, 90, 189.99, 340, false},
      {80, 60, 0, 250, 340, false, true},  // the tray's pieces are picked in the tray, not on the table
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.cellW << "x" << c.cellH << " @" << c.rotation << " " << c.px << "," << c.py);
    core::Puzzle p = handBoard(c.cellW, c.cellH);
    core::Piece& piece = p.pieces[0];
    std::tie(piece.x, piece.y, piece.rotation, piece.inTray) = std::tuple(200, 300, c.rotation, c.inTray);
    EXPECT_EQ(p.hitTest(c.px, c.py) == &piece, c.hit);
  }
}

// Piece 7's home is (170, 100); it snaps strictly within half the smaller
// cell side, 30, and only upright. In the scroll tray a piece let go wholly
// off the board (judged by the cell at its corner) goes back to the tray.
TEST(Play, APieceSnapsHomeOnlyCloseEnoughAndUpright) {
  struct Case { BoardLayout mode; double dx, dy; int rotation; bool snaps, backToTray; };
  const Case kCases[] = {
      {kScatter, 29.9, 0, 0, true, false}, {kScatter, 30, 0, 0, false, false}, {kScatter, -17.9, 23.9, 0, true, false},
      {kScatter, -18, 24, 0, false, false}, {kScatter, 35, 0, 0, false, false}, {kScatter, 0, 0, 180, false, false},
      {kScatter, 0, 0, 90, false, false}, {kScatter, 0, 0, -360, true, false}, {kScroll, -150.5, 0, 0, false, true},
      {kScroll, -149, 0, 0, false, false}, {kScroll, 0, 250.5, 0, false, true}, {kTray, -150.5, 0, 0, false, false},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << "layout " << int(c.mode) << " " << c.dx << "," << c.dy << " @" << c.rotation);
    core::Puzzle p = handBoard();
    core::Piece& piece = p.pieces[7];
    std::tie(piece.x, piece.y, piece.rotation) = std::tuple(170 + c.dx, 100 + c.dy, c.rotation);
    EXPECT_EQ(p.drop(piece, c.mode), c.snaps);
    EXPECT_TRUE(piece.placed == c.snaps && piece.inTray == c.backToTray);
    EXPECT_TRUE(!c.snaps || (piece.x == 170 && piece.y == 100 && piece.rotation == 0));
  }
}

// Every layout in a landscape and a portrait window at every difficulty: the
// board is centred and keeps the picture's shape (level25 is 4:5), loose
// pieces are dealt beside it (above and below in portrait), the scroll tray
// keeps its 120-unit strip free. Every piece is then picked up, turned
// upright and let go near home, where it is grabbed before the placed pieces
// it lies over. Solved, the window turns with every piece staying home, and
// the latest fifty snaps are undone, newest first, each left loose on top.
TEST(Puzzle, EveryLayoutWindowAndDifficultyIsLaidOutAndPlayedToTheSolve) {
  struct Case { const char* level; BoardLayout mode; double w, h, boardW; };
  const Case kCases[] = {
      {"level1", kScatter, 1280, 800, 0.6 * 1280}, {"level1", kTray, 1280, 800, 0.6 * 1280},
      {"level1", kScroll, 1280, 800, 0.94 * (1280 - 2 * (120 + 16))},
      {"level25", kScatter, 1280, 800, 0.8 * 0.85 * (800 - 60 - 8)},
      {"level1", kScatter, 720, 1280, 0.92 * 720}, {"level1", kTray, 720, 1280, 0.92 * 720},
      {"level1", kScroll, 720, 1280, 0.94 * 720}, {"level25", kTray, 720, 1280, 0.8 * 0.55 * (1280 - 60 - 8)},
  };
  for (const Case& c : kCases) {
    for (const core::DifficultyDef& d : core::difficulties()) {
      SCOPED_TRACE(testing::Message() << c.level << " layout " << int(c.mode) << " " << c.w << "x" << c.h << " " << d.id);
      core::Puzzle p(c.level, d.rows, d.cols);
      p.layout(c.w, c.h, 60, c.mode, 120);
      const bool portrait = c.h > c.w, scroll = c.mode == kScroll;
      const double stripX = scroll && !portrait ? 136 : 0, stripY = scroll && portrait ? 120 : 0;
      EXPECT_NEAR(p.boardW, c.boardW, 1e-9);
      EXPECT_NEAR(p.boardW / p.boardH, c.level == std::string("level1") ? 2500.0 / 1667 : 0.8, 1e-9);
      EXPECT_NEAR(p.boardX + p.boardW / 2, c.w / 2, 1e-9);
      EXPECT_TRUE(p.boardY >= 60 + stripY && p.boardY + p.boardH <= c.h - stripY);
      EXPECT_TRUE(p.looseMinX == 4 + stripX && p.looseMaxX + p.cellW + 2 * p.pad <= c.w - stripX);
      EXPECT_TRUE(p.looseMinY == 60 + stripY && p.looseMaxY + p.cellH + 2 * p.pad <= c.h - stripY);
      p.applyRotationMode(store::RotationMode::Rot90);
      std::vector<core::Piece*> hand = p.trayPieces();
      for (size_t i = 0; !scroll && i < p.pieces.size(); ++i) hand.push_back(&p.pieces[i]);
      ASSERT_EQ(hand.size(), p.pieces.size());
      double tx, ty;
      int dealt[2] = {0, 0};  // before and after the board
      for (core::Piece* piece : hand) {
        const bool before = portrait ? piece->y + p.cellH + 2 * p.pad <= p.boardY
                                     : piece->x + p.cellW + 2 * p.pad <= p.boardX;
        const bool after = portrait ? piece->y >= p.boardY + p.boardH : piece->x >= p.boardX + p.boardW;
        EXPECT_TRUE(scroll ? piece->inTray : !piece->inTray && (before || after)) << piece->id;
        ++dealt[after];
        if (!scroll) p.bringToFront(*piece);
        EXPECT_TRUE(scroll || p.hitTest(piece->x + p.cellW / 2 + p.pad, piece->y + p.cellH / 2 + p.pad) == piece);
        while (piece->rotation != 0) p.rotate(*piece, store::RotationMode::Rot90);
        EXPECT_FALSE(p.solved());
        p.targetOf(*piece, &tx, &ty);
        piece->inTray = false;
        piece->x = tx + 0.3 * p.snapThreshold();
        piece->y = ty - 0.3 * p.snapThreshold();
        EXPECT_EQ(p.hitTest(piece->x + p.pad + p.cellW - 1, piece->y + p.pad + p.cellH - 1), piece) << piece->id;
        ASSERT_TRUE(p.drop(*piece, c.mode)) << piece->id;
      }
      EXPECT_TRUE(scroll || (dealt[0] > 0 && dealt[1] > 0)) << "dealt to both sides";
      EXPECT_TRUE(p.solved());
      p.layout(c.h, c.w, 60, c.mode, 120);
      for (const core::Piece& piece : p.pieces) {
        p.targetOf(piece, &tx, &ty);
        EXPECT_TRUE(piece.x == tx && piece.y == ty) << piece.id;
      }
      const size_t undoable = std::min<size_t>(50, hand.size());
      for (size_t k = 1; k <= undoable; ++k) {
        ASSERT_TRUE(p.undo());
        const core::Piece& piece = *hand[hand.size() - k];
        p.targetOf(piece, &tx, &ty);
        EXPECT_TRUE(!piece.placed && piece.x == tx && piece.z == p.nextZ - 1) << piece.id;
      }
      EXPECT_FALSE(p.undo());
      EXPECT_EQ(p.placedCount(), static_cast<int>(hand.size() - undoable));
    }
  }
}

// Placed pieces come back home, loose ones where they lay (on a board of the
// same size and orientation only) with their turn, tray pieces in the tray.
// A hand-edited record's odd values are made sane and unknown pieces
// skipped; a record of another level or grid, or an invalid one, is refused.
// The cut is not saved but drawn again from the level and grid, so these
// must always cut alike: this is the cut every saved level9 6 x 7 game has.
TEST(Puzzle, ASavedGameComesBackAsItWasLeft) {
  core::Puzzle a("level9", 6, 7);
  EXPECT_EQ(cutOf(a), "---++-+-+++-0-+--+--+----+0----+-+-+----0-+-+--+---+++0--+--++++---+0--0-0+0+0-0+000");
  EXPECT_NE(cutOf(a), cutOf(core::Puzzle("level8", 6, 7)));
  a.layout(1280, 800, 60, kScatter, 120);
  a.targetOf(a.pieces[3], &a.pieces[3].x, &a.pieces[3].y);
  ASSERT_TRUE(a.drop(a.pieces[3], a.layoutMode));
  a.pieces[5].x += 37;
  a.pieces[5].rotation = 180;
  a.pieces[6].inTray = true;
  a.clampLoose();
  a.elapsedMs = 999;
  store::SavedPuzzle saved = a.snapshot(true);
  saved.pieces[1].rotation = -90;
  saved.pieces[2].placed = saved.pieces[2].inTray = true;
  saved.pieces.push_back(store::SavedPiece{"9_9", 1, 2, true, 0, false});
  saved.pieces[7].x = 1e6;  // off any table: dealt again
  for (const bool sameWindow : {true, false}) {
    SCOPED_TRACE(sameWindow ? "same window" : "another window");
    core::Puzzle b("level9", 6, 7);
    b.layout(sameWindow ? 1280 : 1920, sameWindow ? 800 : 1080, 60, kScatter, 120);
    const core::Puzzle dealt = b;
    for (const auto& refused : {std::tuple("level8", 6, 7, true), std::tuple("level9", 5, 7, true),
                                std::tuple("level9", 6, 8, true), std::tuple("level9", 6, 7, false)}) {
      store::SavedPuzzle other = saved;
      std::tie(other.imageId, other.rows, other.cols, other.valid) = refused;
      EXPECT_FALSE(b.restore(other, true)) << testing::PrintToString(refused);
    }
    EXPECT_EQ(b.placedCount() + b.elapsedMs, 0) << "a refused record changes nothing";
    ASSERT_TRUE(b.restore(saved, true));
    EXPECT_EQ(b.elapsedMs, 999);
    for (size_t i = 0; i < b.pieces.size(); ++i) {
      const core::Piece& piece = b.pieces[i];
      double tx, ty;
      b.targetOf(piece, &tx, &ty);
      const core::Piece& was = sameWindow && i != 7 ? a.pieces[i] : dealt.pieces[i];
      EXPECT_TRUE(piece.placed ? piece.x == tx && piece.y == ty : piece.x == was.x && piece.y == was.y) << piece.id;
      EXPECT_EQ(piece.rotation, i == 1 ? 270 : a.pieces[i].rotation) << piece.id;
      EXPECT_EQ(piece.inTray, i == 6) << piece.id;
      EXPECT_EQ(piece.placed, i == 2 || i == 3) << piece.id;
    }
  }
}

}  // namespace
