#include "core/edges.h"

#include <gtest/gtest.h>

#include "core/catalog.h"
#include "tests/core/reference_random.h"

namespace {

constexpr uint32_t kLevel3Easy = 165783452u;  // hash of "level3_5_6", worked out in random_test

int seamSign(reference::Generator& g) { return g.next() < 0.5 ? 1 : -1; }

bool sameEdges(const core::PieceEdges& a, const core::PieceEdges& b) {
  return a.top == b.top && a.right == b.right && a.bottom == b.bottom && a.left == b.left;
}

TEST(Edges, HorizontalSeamsAreDrawnFirstThenVerticalOnesRowByRow) {
  const core::EdgeGrid grid = core::generateEdges(5, 6, kLevel3Easy);
  reference::Generator g(kLevel3Easy);
  // Seams seen from the upper piece: its bottom, then the lower piece's top.
  for (int r = 1; r < 5; ++r) {
    for (int c = 0; c < 6; ++c) {
      const int sign = seamSign(g);
      EXPECT_EQ(grid[r - 1][c].bottom, sign) << r << "," << c;
      EXPECT_EQ(grid[r][c].top, -sign) << r << "," << c;
    }
  }
  // Seams seen from the left piece: its right, then the right piece's left.
  for (int r = 0; r < 5; ++r) {
    for (int c = 1; c < 6; ++c) {
      const int sign = seamSign(g);
      EXPECT_EQ(grid[r][c - 1].right, sign) << r << "," << c;
      EXPECT_EQ(grid[r][c].left, -sign) << r << "," << c;
    }
  }
}

TEST(Edges, FiveBySixConsumesExactly49Draws) {
  core::Random cut(kLevel3Easy);
  core::generateEdges(5, 6, cut);
  core::Random counted(kLevel3Easy);
  for (int i = 0; i < 49; ++i) counted.next();
  EXPECT_EQ(cut.state(), counted.state());
  counted.next();
  EXPECT_NE(cut.state(), counted.state()) << "not 50";
  // 4 * 6 horizontal + 5 * 5 vertical seams; every draw adds 0x6D2B79F5.
  EXPECT_EQ(cut.state(), static_cast<uint32_t>((kLevel3Easy + 49ull * 0x6D2B79F5ull) & reference::kMask));
}

TEST(Edges, EveryDifficultyIsAValidCut) {
  for (const core::DifficultyDef& d : core::difficulties()) {
    const core::EdgeGrid grid = core::generateEdges(d.rows, d.cols, 12345u + d.index);
    ASSERT_EQ(grid.size(), static_cast<size_t>(d.rows));
    int knobs = 0;
    for (int r = 0; r < d.rows; ++r) {
      ASSERT_EQ(grid[r].size(), static_cast<size_t>(d.cols));
      for (int c = 0; c < d.cols; ++c) {
        const core::PieceEdges& e = grid[r][c];
        EXPECT_EQ(e.top == 0, r == 0);
        EXPECT_EQ(e.bottom == 0, r == d.rows - 1);
        EXPECT_EQ(e.left == 0, c == 0);
        EXPECT_EQ(e.right == 0, c == d.cols - 1);
        for (int v : {e.top, e.right, e.bottom, e.left}) EXPECT_TRUE(v == 0 || v == 1 || v == -1);
        if (r > 0) {
          EXPECT_EQ(e.top, -grid[r - 1][c].bottom);
        }
        if (c > 0) {
          EXPECT_EQ(e.left, -grid[r][c - 1].right);
        }
        knobs += (e.right == 1) + (e.bottom == 1);
      }
    }
    const int seams = (d.rows - 1) * d.cols + d.rows * (d.cols - 1);
    EXPECT_GT(knobs, seams / 4) << "both signs occur";
    EXPECT_LT(knobs, seams * 3 / 4) << "both signs occur";
  }
}

TEST(Edges, ASingleRowDrawsOnlyVerticalSeams) {
  core::Random random(99);
  const core::EdgeGrid grid = core::generateEdges(1, 7, random);
  ASSERT_EQ(grid.size(), 1u);
  reference::Generator g(99);
  for (int c = 0; c < 7; ++c) {
    EXPECT_EQ(grid[0][c].top, 0);
    EXPECT_EQ(grid[0][c].bottom, 0);
    if (c > 0) {
      EXPECT_EQ(grid[0][c].left, -seamSign(g));
    }
  }
  EXPECT_EQ(random.state(), g.s) << "cols - 1 draws";
}

TEST(Edges, ASingleColumnHasStraightSides) {
  core::Random random(99);
  const core::EdgeGrid grid = core::generateEdges(4, 1, random);
  ASSERT_EQ(grid.size(), 4u);
  for (const auto& line : grid) {
    ASSERT_EQ(line.size(), 1u);
    EXPECT_EQ(line[0].left, 0);
    EXPECT_EQ(line[0].right, 0);
  }
  reference::Generator g(99);
  for (int i = 0; i < 3; ++i) g.next();
  EXPECT_EQ(random.state(), g.s) << "rows - 1 draws";
}

TEST(Edges, TheSameSeedCutsAlikeAndTheNextSeedOtherwise) {
  const core::EdgeGrid a = core::generateEdges(10, 11, kLevel3Easy);
  const core::EdgeGrid b = core::generateEdges(10, 11, kLevel3Easy);
  const core::EdgeGrid c = core::generateEdges(10, 11, kLevel3Easy + 1);
  int differing = 0;
  for (int r = 0; r < 10; ++r) {
    for (int col = 0; col < 11; ++col) {
      EXPECT_TRUE(sameEdges(a[r][col], b[r][col]));
      differing += !sameEdges(a[r][col], c[r][col]);
    }
  }
  EXPECT_GT(differing, 0);
}

TEST(Edges, NoRowsGiveAnEmptyGrid) {
  EXPECT_TRUE(core::generateEdges(0, 6, 1u).empty());
  core::Random random(5);
  EXPECT_TRUE(core::generateEdges(0, 6, random).empty());
  EXPECT_EQ(random.state(), 5u) << "no draws";
}

}  // namespace
