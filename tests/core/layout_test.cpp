#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/catalog.h"
#include "core/puzzle.h"
#include "tests/core/puzzle_support.h"
#include "tests/core/reference_random.h"

namespace {

using store::BoardLayout;
using testsupport::dropHome;

constexpr double kTop = 60;
constexpr double kTray = 120;

// level1 (2500 x 1667) at 5 x 6 in a 1280 x 800 window below a 60-unit
// header, worked out by hand:
//   availW = 1280, availH = 800 - 60 - 8 = 732, aspect = 2500 / 1667
//   boardW = 0.6 * 1280 = 768, boardH = 768 / aspect = 512.1024 (under 0.85 * 732 = 622.2)
//   cellW = 768 / 6 = 128, cellH = 512.1024 / 5 = 102.42048, pad = 0.22 * 102.42048 = 22.5325056
//   boardX = (1280 - 768) / 2 = 256, boardY = (732 - 512.1024) / 2 + 60 = 169.9488
//   a piece image is 173.0650112 x 147.4854912; gap = 8 + pad = 30.5325056
//   loose x in [4, 1280 - 173.0650112 - 4 = 1102.9349888], y in [60, 792 - 147.4854912 = 644.5145088]
//   zones: left (30.5325056, 82.5325056, 256 - 2 * gap = 194.9349888, 792 - pad - 82.5325056 = 686.9349888),
//          right (256 + 768 + gap = 1054.5325056, same y, 1280 - gap - 1054.5325056 = 194.9349888, same h)
constexpr double kPad = 22.5325056;
constexpr double kZoneY = 82.5325056;
constexpr double kZoneW = 194.9349888;
constexpr double kZoneH = 686.9349888;
constexpr double kZoneX[2] = {30.5325056, 1054.5325056};
constexpr double kPieceW = 173.0650112;
constexpr double kPieceH = 147.4854912;

core::Puzzle level1Easy(BoardLayout mode) {
  core::Puzzle p("level1", 5, 6);
  p.layout(1280, 800, kTop, mode, kTray);
  return p;
}

TEST(Layout, BoardAndZonesMatchTheGeometryWorkedOutByHand) {
  const core::Puzzle p = level1Easy(BoardLayout::Scatter);
  EXPECT_NEAR(p.boardW, 768, 1e-9);
  EXPECT_NEAR(p.boardH, 512.1024, 1e-9);
  EXPECT_NEAR(p.cellW, 128, 1e-9);
  EXPECT_NEAR(p.cellH, 102.42048, 1e-9);
  EXPECT_NEAR(p.pad, kPad, 1e-9);
  EXPECT_NEAR(p.boardX, 256, 1e-9);
  EXPECT_NEAR(p.boardY, 169.9488, 1e-9);
  EXPECT_EQ(p.looseMinX, 4);
  EXPECT_NEAR(p.looseMaxX, 1102.9349888, 1e-9);
  EXPECT_EQ(p.looseMinY, 60);
  EXPECT_NEAR(p.looseMaxY, 644.5145088, 1e-9);
  ASSERT_EQ(p.zones.size(), 2u);
  for (int i = 0; i < 2; ++i) {
    EXPECT_NEAR(p.zones[i].x, kZoneX[i], 1e-9);
    EXPECT_NEAR(p.zones[i].y, kZoneY, 1e-9);
    EXPECT_NEAR(p.zones[i].w, kZoneW, 1e-9);
    EXPECT_NEAR(p.zones[i].h, kZoneH, 1e-9);
  }
  EXPECT_EQ(p.viewW, 1280);
  EXPECT_EQ(p.viewH, 800);
}

TEST(Layout, APortraitWindowPutsZonesAboveAndBelowTheBoard) {
  // level1 at 5 x 6 in 720 x 1280 below a 60-unit header, by hand:
  //   availW = 720, availH = 1212; boardW = 0.92 * 720 = 662.4, boardH = 662.4 / aspect = 441.68832
  //   (under 0.55 * 1212 = 666.6); cells 110.4 x 88.337664, pad = 0.22 * 88.337664 = 19.43428608
  //   boardX = (720 - 662.4) / 2 = 28.8, boardY = (1212 - 441.68832) / 2 + 60 = 445.15584
  //   gap = 27.43428608; both zones x = gap, w = 720 - 2 * gap = 665.13142784;
  //   above: y = 60 + pad, h = boardY - (60 + pad) - gap = 338.28726784
  //   below: y = boardY + boardH + gap = 914.27844608, h = 1272 - pad - (boardY + boardH) - gap, the same
  core::Puzzle p("level1", 5, 6);
  p.layout(720, 1280, kTop, BoardLayout::Scatter, kTray);
  EXPECT_NEAR(p.boardW, 662.4, 1e-9);
  EXPECT_NEAR(p.boardH, 441.68832, 1e-9);
  EXPECT_NEAR(p.pad, 19.43428608, 1e-9);
  EXPECT_NEAR(p.boardX, 28.8, 1e-9);
  EXPECT_NEAR(p.boardY, 445.15584, 1e-9);
  EXPECT_NEAR(p.looseMaxX, 566.73142784, 1e-9);
  EXPECT_NEAR(p.looseMaxY, 1144.79376384, 1e-9);
  ASSERT_EQ(p.zones.size(), 2u);
  const double zoneY[2] = {79.43428608, 914.27844608};
  for (int i = 0; i < 2; ++i) {
    EXPECT_NEAR(p.zones[i].x, 27.43428608, 1e-9);
    EXPECT_NEAR(p.zones[i].y, zoneY[i], 1e-9);
    EXPECT_NEAR(p.zones[i].w, 665.13142784, 1e-9);
    EXPECT_NEAR(p.zones[i].h, 338.28726784, 1e-9);
  }
  // The portrait photo would be 828 high at that width: held to 0.55 of the height.
  core::Puzzle flower("level25", 5, 6);
  flower.layout(720, 1280, kTop, BoardLayout::Tray, kTray);
  EXPECT_NEAR(flower.boardH, 666.6, 1e-9);
  EXPECT_NEAR(flower.boardW, 533.28, 1e-9);
}

TEST(Layout, TheFirstDealIsDrawnPieceByPieceFromTheSeed) {
  const core::Puzzle p = level1Easy(BoardLayout::Scatter);
  // Both zones are usable and equal, so a first draw up to one half picks
  // the left one; then one draw for x and one for y.
  reference::Generator g(reference::hash("level1_5_6") * 31 + 0 * 97 + 11);
  for (const core::Piece& piece : p.pieces) {
    const int zone = g.next() * 2 * kZoneW * kZoneH - kZoneW * kZoneH <= 0 ? 0 : 1;
    const double x = kZoneX[zone] + g.next() * (kZoneW - kPieceW);
    const double y = kZoneY + g.next() * (kZoneH - kPieceH);
    EXPECT_NEAR(piece.x, x, 1e-9) << piece.id;
    EXPECT_NEAR(piece.y, y, 1e-9) << piece.id;
    EXPECT_EQ(piece.restX, piece.x);
    EXPECT_EQ(piece.restY, piece.y);
    EXPECT_FALSE(piece.inTray);
  }
  EXPECT_EQ(p.layoutMode, BoardLayout::Scatter);
  EXPECT_EQ(p.scatterCount, 0);
}

TEST(Layout, TheTrayGridFillsTheEmptiestZoneSlotBySlot) {
  const core::Puzzle p = level1Easy(BoardLayout::Tray);
  // slot = 173.0650112 + 6; each zone is 1 slot wide and floor(686.93 / 179.07) = 3 high.
  const double slot = kPieceW + 6;
  reference::Generator g(reference::hash("level1_5_6") * 31 + 11);
  const std::vector<int> perm = reference::shuffled(30, g);
  for (int k = 0; k < 30; ++k) {
    const core::Piece& piece = p.pieces[perm[k]];
    const int zone = k % 2;  // equal fill ratios go to the earlier zone
    const int fill = k / 2;
    const double offset = 5 * (fill / 3);
    EXPECT_NEAR(piece.x, kZoneX[zone] + offset, 1e-9) << k;
    EXPECT_NEAR(piece.y, kZoneY + (fill % 3) * slot + offset, 1e-9) << k;
  }
}

TEST(Layout, FullTrayZonesStackLayersAtMost24UnitsOff) {
  core::Puzzle p("level1", 5, 6);
  p.layoutMode = BoardLayout::Tray;
  p.cellW = p.cellH = 50;
  p.pad = 10;
  p.looseMinX = p.looseMinY = 0;
  p.looseMaxX = p.looseMaxY = 10000;
  p.zones = {core::Zone{100, 200, 150, 150}};  // room for one 76-unit slot
  p.scatter(3);
  reference::Generator g(reference::hash("level1_5_6") * 31 + 3 * 97 + 11);
  const std::vector<int> perm = reference::shuffled(30, g);
  for (int k = 0; k < 30; ++k) {
    const double offset = std::min(24, 5 * k);
    EXPECT_EQ(p.pieces[perm[k]].x, 100 + offset) << k;
    EXPECT_EQ(p.pieces[perm[k]].y, 200 + offset) << k;
  }
}

TEST(Layout, ThePortraitLevelIsLimitedByHeight) {
  for (const BoardLayout mode : {BoardLayout::Scatter, BoardLayout::Tray}) {
    core::Puzzle p("level25", 7, 8);
    p.layout(1280, 800, kTop, mode, kTray);
    EXPECT_NEAR(p.boardH, 0.85 * (800 - kTop - 8), 1e-9);
    EXPECT_NEAR(p.boardW, 0.8 * p.boardH, 1e-9);
    EXPECT_LT(p.boardW, 0.6 * 1280);
  }
}

TEST(Layout, WithoutARoomyZoneLoosePiecesGoToTheTopLeftCorner) {
  struct Case {
    BoardLayout mode;
    double w, h;
  };
  // A window below the minimum size, and the scroll tray whose strips leave
  // no room beside the board.
  for (const Case c : {Case{BoardLayout::Scatter, 100, 100}, Case{BoardLayout::Tray, 100, 100},
                       Case{BoardLayout::ScrollTray, 1280, 800}}) {
    core::Puzzle p("level1", 5, 6);
    p.layout(c.w, c.h, kTop, c.mode, kTray);
    for (const core::Zone& z : p.zones) {
      EXPECT_GE(z.w, 0);
      EXPECT_GE(z.h, 0);
      EXPECT_FALSE(z.w > p.cellW + 2 * p.pad && z.h > p.cellH + 2 * p.pad);
    }
    for (const core::Piece& piece : p.pieces) {
      EXPECT_EQ(piece.x, p.looseMinX);
      EXPECT_EQ(piece.y, p.looseMinY);
    }
  }
  core::Puzzle tiny("level1", 5, 6);
  tiny.layout(100, 100, kTop, BoardLayout::Scatter, kTray);
  EXPECT_EQ(tiny.boardW, 0.6 * 100) << "the available width never drops below 100";
  EXPECT_EQ(tiny.boardH, 0.6 * 100 * 1667 / 2500);
}

TEST(Layout, ScrollTrayStripsAreReservedOnBothSides) {
  core::Puzzle wide("level1", 5, 6);
  wide.layout(1280, 800, kTop, BoardLayout::ScrollTray, kTray);
  EXPECT_NEAR(wide.boardW, 0.94 * (1280 - 2 * (kTray + 16)), 1e-9);
  EXPECT_NEAR(wide.boardX + wide.boardW / 2, 640, 1e-9);
  EXPECT_EQ(wide.looseMinX, 4 + kTray + 16);
  EXPECT_EQ(wide.looseMinY, kTop);
  core::Puzzle tall("level1", 5, 6);
  tall.layout(800, 1280, kTop, BoardLayout::ScrollTray, kTray);
  EXPECT_EQ(tall.looseMinY, kTop + kTray);
  EXPECT_EQ(tall.looseMinX, 4);
  EXPECT_NEAR(tall.boardY + tall.boardH / 2, (kTop + kTray + 1280 - 8 - kTray) / 2, 1e-9);
  EXPECT_NEAR(tall.boardW, 0.94 * 800, 1e-9);
  for (const core::Piece& piece : tall.pieces) EXPECT_TRUE(piece.inTray);
}

TEST(Layout, AResizeKeepsLoosePiecesOnTheBoardAndPlacedOnesInTheirCells) {
  core::Puzzle p = level1Easy(BoardLayout::Scatter);
  ASSERT_TRUE(dropHome(p, p.pieces[4]));
  core::Piece& loose = p.pieces[0];
  loose.x = p.boardX + 0.25 * p.boardW;
  loose.y = p.boardY + 0.5 * p.boardH;
  loose.restX = p.boardX;
  loose.restY = p.boardY + p.boardH;
  p.layout(1920, 1080, kTop, BoardLayout::Scatter, kTray);
  EXPECT_NEAR(loose.x, p.boardX + 0.25 * p.boardW, 1e-9);
  EXPECT_NEAR(loose.y, p.boardY + 0.5 * p.boardH, 1e-9);
  EXPECT_NEAR(loose.restX, p.boardX, 1e-9);
  EXPECT_NEAR(loose.restY, p.boardY + p.boardH, 1e-9);
  double tx, ty;
  p.targetOf(p.pieces[4], &tx, &ty);
  EXPECT_EQ(p.pieces[4].x, tx);
  EXPECT_EQ(p.pieces[4].y, ty);
  EXPECT_EQ(p.scatterCount, 0) << "a resize does not deal";
}

TEST(Layout, TheSameLayoutAgainChangesNothing) {
  core::Puzzle p = level1Easy(BoardLayout::Scatter);
  p.pieces[0].x = 5;  // moved by the player
  p.layout(1280, 800, kTop, BoardLayout::Scatter, kTray);
  p.layout(1280, 800.4, kTop, BoardLayout::Scatter, kTray);  // the board moves by less than half a unit
  EXPECT_EQ(p.pieces[0].x, 5);
}

TEST(Layout, SwitchingBetweenTableLayoutsDealsInTheOldStyle) {
  const core::Puzzle scattered = level1Easy(BoardLayout::Scatter);
  const core::Puzzle gridded = level1Easy(BoardLayout::Tray);

  // The switch deals before it takes the new mode, so leaving the scattered
  // table deals at random once more, and leaving the grid deals a grid.
  core::Puzzle p = level1Easy(BoardLayout::Scatter);
  p.pieces[0].x += 40;
  p.layout(1280, 800, kTop, BoardLayout::Tray, kTray);
  EXPECT_EQ(p.layoutMode, BoardLayout::Tray);
  for (size_t i = 0; i < p.pieces.size(); ++i) EXPECT_EQ(p.pieces[i].x, scattered.pieces[i].x) << i;
  p.layout(1280, 800, kTop, BoardLayout::Scatter, kTray);
  EXPECT_EQ(p.layoutMode, BoardLayout::Scatter);
  for (size_t i = 0; i < p.pieces.size(); ++i) EXPECT_EQ(p.pieces[i].x, gridded.pieces[i].x) << i;
  // The next deal in the new mode follows it.
  p.restart();
  EXPECT_EQ(p.scatterCount, 7);
  EXPECT_NE(p.pieces[0].x, gridded.pieces[0].x);
}

TEST(Layout, TheScrollTrayTakesBackEveryUnplacedPieceAndLeavingItEmptiesIt) {
  core::Puzzle p = level1Easy(BoardLayout::Scatter);
  ASSERT_TRUE(dropHome(p, p.pieces[2]));
  p.layout(1280, 800, kTop, BoardLayout::ScrollTray, kTray);
  EXPECT_EQ(p.layoutMode, BoardLayout::ScrollTray);
  for (const core::Piece& piece : p.pieces) EXPECT_EQ(piece.inTray, !piece.placed) << piece.id;
  double tx, ty;
  p.targetOf(p.pieces[2], &tx, &ty);
  EXPECT_EQ(p.pieces[2].x, tx) << "the board changed size; the placed piece followed";

  p.pieces[7].inTray = false;  // taken out onto the table
  p.layout(1280, 800, kTop, BoardLayout::Tray, kTray);
  EXPECT_EQ(p.layoutMode, BoardLayout::Tray);
  EXPECT_TRUE(p.trayPieces().empty());
  for (const core::Piece& piece : p.pieces) {
    EXPECT_FALSE(piece.inTray);
    if (piece.placed) continue;
    EXPECT_GE(piece.x, p.looseMinX);
    EXPECT_LE(piece.x, p.looseMaxX);
    EXPECT_GE(piece.y, p.looseMinY);
    EXPECT_LE(piece.y, p.looseMaxY);
  }
}

TEST(Layout, TrayPiecesComeInTrayOrder) {
  core::Puzzle p = level1Easy(BoardLayout::ScrollTray);
  ASSERT_TRUE(dropHome(p, p.pieces[p.order[3]]));
  p.pieces[p.order[5]].inTray = false;
  const std::vector<core::Piece*> tray = p.trayPieces();
  ASSERT_EQ(tray.size(), 28u);
  size_t k = 0;
  for (size_t i = 0; i < p.order.size(); ++i) {
    if (i == 3 || i == 5) continue;
    EXPECT_EQ(tray[k++], &p.pieces[p.order[i]]);
  }
  p.pieces[0].placed = true;
  p.pieces[0].inTray = true;
  p.clearTray();
  EXPECT_TRUE(p.trayPieces().empty());
  p.fillTray();
  EXPECT_FALSE(p.pieces[0].inTray) << "placed pieces stay out of the tray";
  EXPECT_EQ(p.trayPieces().size(), 28u);
}

TEST(Layout, ClampLooseLeavesPlacedAndTrayPiecesAlone) {
  core::Puzzle p = level1Easy(BoardLayout::Scatter);
  p.pieces[0].x = -500;
  p.pieces[0].y = 5000;
  p.pieces[1].x = -500;
  p.pieces[1].inTray = true;
  p.pieces[2].x = -500;
  p.pieces[2].placed = true;
  p.clampLoose();
  EXPECT_EQ(p.pieces[0].x, p.looseMinX);
  EXPECT_EQ(p.pieces[0].y, p.looseMaxY);
  EXPECT_EQ(p.pieces[1].x, -500);
  EXPECT_EQ(p.pieces[2].x, -500);
}

// Every level at every difficulty in every layout, in windows from the
// smallest allowed to 4K and two portrait ones, each resized to the next
// window and switched to the next layout.
struct Window {
  double w, h;
};
constexpr Window kWindows[] = {{800, 560},   {1024, 768},  {1280, 800}, {1366, 768}, {1920, 1080},
                               {2560, 1440}, {3840, 2160}, {720, 1280}, {1080, 1920}};
constexpr size_t kWindowCount = sizeof(kWindows) / sizeof(kWindows[0]);

void expectSound(const core::Puzzle& p, const std::string& where) {
  const double pieceW = p.cellW + 2 * p.pad;
  const double pieceH = p.cellH + 2 * p.pad;
  ASSERT_LE(p.looseMinX, p.looseMaxX) << where;
  ASSERT_LE(p.looseMinY, p.looseMaxY) << where;
  EXPECT_LE(p.looseMaxX + pieceW, p.viewW) << where;
  EXPECT_LE(p.looseMaxY + pieceH, p.viewH) << where;
  EXPECT_GE(p.boardX, 0) << where;
  EXPECT_LE(p.boardX + p.boardW, p.viewW + 1e-9) << where;
  EXPECT_GE(p.boardY, kTop) << where;
  EXPECT_LE(p.boardY + p.boardH, p.viewH + 1e-9) << where;
  EXPECT_NEAR(p.boardX + p.boardW / 2, p.viewW / 2, 1e-6) << where << ": centred";
  const core::Level* level = core::levelById(p.levelId);
  EXPECT_NEAR(p.boardW / p.boardH, static_cast<double>(level->width) / level->height, 1e-9) << where;
  ASSERT_EQ(p.zones.size(), 2u);
  for (const core::Zone& z : p.zones) {
    EXPECT_GE(z.w, 0) << where;
    EXPECT_GE(z.h, 0) << where;
    const bool clear = z.x + z.w <= p.boardX || z.x >= p.boardX + p.boardW || z.y + z.h <= p.boardY ||
                       z.y >= p.boardY + p.boardH || z.w == 0 || z.h == 0;
    EXPECT_TRUE(clear) << where << ": a zone overlaps the board";
  }
  for (const core::Piece& piece : p.pieces) {
    if (piece.placed || piece.inTray) continue;
    ASSERT_GE(piece.x, p.looseMinX) << where << " " << piece.id;
    ASSERT_LE(piece.x, p.looseMaxX) << where << " " << piece.id;
    ASSERT_GE(piece.y, p.looseMinY) << where << " " << piece.id;
    ASSERT_LE(piece.y, p.looseMaxY) << where << " " << piece.id;
  }
  // In the scroll tray every unplaced piece but the one taken out waits there.
  size_t unplaced = 0, inTray = 0;
  for (const core::Piece& piece : p.pieces) {
    unplaced += !piece.placed;
    inTray += piece.inTray && !piece.placed;
  }
  EXPECT_EQ(inTray, p.layoutMode == BoardLayout::ScrollTray ? unplaced - 1 : 0) << where;
}

void resizeAndCheck(core::Puzzle& p, const Window& to, BoardLayout mode, const std::string& where) {
  const core::Puzzle before = p;
  p.layout(to.w, to.h, kTop, mode, kTray);
  const double sx = p.boardW / before.boardW;
  const double sy = p.boardH / before.boardH;
  for (size_t i = 0; i < p.pieces.size(); ++i) {
    const core::Piece& was = before.pieces[i];
    const core::Piece& is = p.pieces[i];
    if (is.placed) {
      double tx, ty;
      p.targetOf(is, &tx, &ty);
      ASSERT_EQ(is.x, tx) << where;
      ASSERT_EQ(is.y, ty) << where;
    } else if (is.inTray) {
      ASSERT_EQ(is.x, was.x) << where;
    } else {
      const double x = (was.x - before.boardX) * sx + p.boardX;
      const double y = (was.y - before.boardY) * sy + p.boardY;
      ASSERT_NEAR(is.x, core::clampInto(x, p.looseMinX, p.looseMaxX), 1e-9) << where;
      ASSERT_NEAR(is.y, core::clampInto(y, p.looseMinY, p.looseMaxY), 1e-9) << where;
    }
  }
}

TEST(Layout, EveryLevelDifficultyLayoutAndWindowIsSound) {
  const BoardLayout modes[] = {BoardLayout::Scatter, BoardLayout::Tray, BoardLayout::ScrollTray};
  int heightLimitedPortraits = 0;
  for (const core::Level& level : core::levels()) {
    for (const core::DifficultyDef& d : core::difficulties()) {
      for (int m = 0; m < 3; ++m) {
        for (size_t w = 0; w < kWindowCount; ++w) {
          const Window& win = kWindows[w];
          const std::string where = level.id + " " + d.id + " mode " + std::to_string(m) + " " +
                                    std::to_string(static_cast<int>(win.w)) + "x" +
                                    std::to_string(static_cast<int>(win.h));
          core::Puzzle p(level.id, d.rows, d.cols);
          p.layout(win.w, win.h, kTop, modes[m], kTray);
          // One piece played home, one taken out of the tray onto the table.
          ASSERT_TRUE(dropHome(p, p.pieces[d.cols + 1])) << where;
          p.pieces.back().inTray = false;
          expectSound(p, where);
          if (level.id == "level25" && modes[m] != BoardLayout::ScrollTray && win.w > win.h) {
            EXPECT_NEAR(p.boardH, 0.85 * (win.h - kTop - 8), 1e-9) << where;
            ++heightLimitedPortraits;
          }
          resizeAndCheck(p, kWindows[(w + 1) % kWindowCount], modes[m], where + " resized");
          expectSound(p, where + " resized");
          p.layout(p.viewW, p.viewH, kTop, modes[(m + 1) % 3], kTray);
          if (p.layoutMode == BoardLayout::ScrollTray) {
            p.pieces.back().inTray = false;  // dragged out and dropped on the table, as before
            p.clampLoose();
          }
          expectSound(p, where + " switched");
        }
      }
    }
  }
  EXPECT_EQ(heightLimitedPortraits, 6 * 2 * 7);
}

}  // namespace
