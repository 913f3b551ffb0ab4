#include "ui/textures/piece_textures.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/test_support.h"
#include "ui/gpu.h"

namespace {

using testsupport::SoftwareTarget;

// A puzzle with hand-set geometry: cells of cellW x cellH and a pad of 10.
core::Puzzle puzzleWith(const char* level, int rows, int cols, double cellW, double cellH, double pad) {
  core::Puzzle p(level, rows, cols);
  p.cellW = cellW;
  p.cellH = cellH;
  p.pad = pad;
  p.boardW = cellW * cols;
  p.boardH = cellH * rows;
  return p;
}

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};

// An opaque picture the size of the board: each cell a flat colour whose red
// is 40 + 10 x column and green 40 + 10 x row, so a piece shows its own cell.
std::unique_ptr<cairo_surface_t, SurfaceDeleter> cellPicture(const core::Puzzle& p) {
  cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(p.boardW),
                                                  static_cast<int>(p.boardH));
  cairo_t* cr = cairo_create(s);
  for (int r = 0; r < p.rows; ++r) {
    for (int c = 0; c < p.cols; ++c) {
      cairo_set_source_rgb(cr, (40 + 10 * c) / 255.0, (40 + 10 * r) / 255.0, 0.5);
      cairo_rectangle(cr, c * p.cellW, r * p.cellH, p.cellW, p.cellH);
      cairo_fill(cr);
    }
  }
  cairo_destroy(cr);
  return std::unique_ptr<cairo_surface_t, SurfaceDeleter>(s);
}

class PieceTextures : public ::testing::Test {
 protected:
  void SetUp() override {
    ui::gpuInit(target.renderer());
    ui::gpuSetScale(1.0);
  }
  void TearDown() override { ui::gpuShutdown(); }

  // Blits the texture at the origin onto transparent black: the alpha read
  // back is the texture's coverage, the colour its premultiplied colour.
  uint32_t texel(SDL_Texture* tex, int w, int h, int x, int y) {
    SDL_SetRenderDrawColor(target.renderer(), 0, 0, 0, 0);
    SDL_RenderClear(target.renderer());
    ui::gpuBlit(tex, 0, 0, w, h, 1.0);
    return target.pixel(x, y);
  }

  SoftwareTarget target{200, 200};
};

int alphaOf(uint32_t p) { return p >> 24; }
int redOf(uint32_t p) { return (p >> 16) & 255; }
int greenOf(uint32_t p) { return (p >> 8) & 255; }

TEST_F(PieceTextures, KeysCarryPictureGridSizeAndLook) {
  const core::Puzzle p = puzzleWith("level7", 6, 8, 64, 60, 10);
  const core::Piece& piece = p.pieces[2 * 8 + 5];
  EXPECT_EQ(ui::pieceTextureKey("level7", p, piece, false), "pc_level7_2_5_6x8_84x80_b");
  EXPECT_EQ(ui::pieceTextureKey("level7", p, piece, true), "pc_level7_2_5_6x8_84x80_n");
  EXPECT_EQ(ui::pieceThumbKey("level7", p, piece, 96, true), "th_level7_2_5_6x8_96_84x80_q");
  EXPECT_EQ(ui::pieceThumbKey("level7", p, piece, 96, false), "th_level7_2_5_6x8_96_84x80_f");
  EXPECT_EQ(ui::boardTextureKey(p, 0xF5A623u, 16777215u, true, 1004, 844), "board_1004x844_6x8_16098851_16777215g");
  EXPECT_EQ(ui::boardTextureKey(p, 1, 2, false, 10, 20), "board_10x20_6x8_1_2n");
  EXPECT_EQ(ui::sizeKey(83.6, 80.2), "84x80");
}

TEST_F(PieceTextures, APieceShowsItsOwnCellInsideItsOutlineOnly) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 60, 50, 10);
  const auto picture = cellPicture(p);
  const core::Piece& piece = p.pieces[1 * 6 + 2];
  SDL_Texture* tex = ui::pieceTexture("level1", p, piece, picture.get(), false);
  ASSERT_NE(tex, nullptr);
  int w = 0, h = 0;
  SDL_QueryTexture(tex, nullptr, nullptr, &w, &h);
  EXPECT_EQ(w, 80);
  EXPECT_EQ(h, 70);
  const uint32_t centre = texel(tex, w, h, 40, 35);
  EXPECT_EQ(alphaOf(centre), 255);
  EXPECT_NEAR(redOf(centre), 40 + 10 * 2, 1);
  EXPECT_NEAR(greenOf(centre), 40 + 10 * 1, 1);
  EXPECT_EQ(alphaOf(texel(tex, w, h, 2, 2)), 0) << "the corner of the box lies outside every outline";
  EXPECT_EQ(alphaOf(texel(tex, w, h, 77, 67)), 0);
}

TEST_F(PieceTextures, TheOutlineLeavesALightRimUnlessAskedNotTo) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 60, 50, 10);
  const auto picture = cellPicture(p);
  const core::Piece& corner = p.pieces[0];  // straight top and left sides
  SDL_Texture* rimmed = ui::pieceTexture("level1", p, corner, picture.get(), false);
  SDL_Texture* plain = ui::pieceTexture("level1", p, corner, picture.get(), true);
  ASSERT_NE(rimmed, plain);
  // (14, 10) sits on the straight top edge at y = pad.
  const uint32_t onRim = texel(rimmed, 80, 70, 14, 10);
  const uint32_t noRim = texel(plain, 80, 70, 14, 10);
  EXPECT_GT(greenOf(onRim), greenOf(noRim) + 20) << "white at 0.35 over the picture";
  EXPECT_GT(alphaOf(texel(rimmed, 80, 70, 14, 9)), 0) << "the rim is stroked across the edge";
  EXPECT_EQ(alphaOf(texel(plain, 80, 70, 14, 8)), 0);
}

TEST_F(PieceTextures, WithoutAPictureAPieceIsTranslucentOrange) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 60, 50, 10);
  SDL_Texture* tex = ui::pieceTexture("none", p, p.pieces[7], nullptr, false);
  const uint32_t c = texel(tex, 80, 70, 40, 35);
  EXPECT_NEAR(alphaOf(c), 102, 2);               // 0.4
  EXPECT_NEAR(redOf(c), 0xF5 * 0.4, 2);          // premultiplied orange
  EXPECT_NEAR(greenOf(c), 0xA6 * 0.4, 2);
}

// A piece box of 120 x 80 in a 96 square is drawn at 0.8: 96 x 64, centred
// 16 units from the top; its cell (pad 10 -> 8) spans y 24 to 72.
TEST_F(PieceTextures, ASquareThumbnailCentresThePiece) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 100, 60, 10);
  double w = 0, h = 0;
  SDL_Texture* tex = ui::pieceThumbTexture("x", p, p.pieces[0], nullptr, 96, true, &w, &h);
  ASSERT_NE(tex, nullptr);
  EXPECT_EQ(w, 96);
  EXPECT_EQ(h, 96);
  EXPECT_EQ(alphaOf(texel(tex, 96, 96, 48, 22)), 0) << "above the straight top edge";
  EXPECT_GT(alphaOf(texel(tex, 96, 96, 48, 26)), 0);
  EXPECT_GT(alphaOf(texel(tex, 96, 96, 20, 70)), 0) << "clear of the bottom knob or socket";
  EXPECT_EQ(alphaOf(texel(tex, 96, 96, 48, 80)), 0) << "the lower 16 units stay empty";
}

TEST_F(PieceTextures, AFittedThumbnailTakesThePiecesShape) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 100, 60, 10);
  double w = 0, h = 0;
  SDL_Texture* tex = ui::pieceThumbTexture("x", p, p.pieces[0], nullptr, 96, false, &w, &h);
  ASSERT_NE(tex, nullptr);
  EXPECT_DOUBLE_EQ(w, 96);
  EXPECT_DOUBLE_EQ(h, 64);
  int tw = 0, th = 0;
  SDL_QueryTexture(tex, nullptr, nullptr, &tw, &th);
  EXPECT_EQ(th, 64);
}

TEST_F(PieceTextures, ASizeOfZeroGivesNothing) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 100, 60, 10);
  double w = -1, h = -1;
  EXPECT_EQ(ui::pieceThumbTexture("x", p, p.pieces[0], nullptr, 0, true, &w, &h), nullptr);
  EXPECT_EQ(w, -1);
  EXPECT_EQ(h, -1);
}

TEST_F(PieceTextures, HiDpiPaintsMorePixelsUnderTheSameKey) {
  const core::Puzzle p = puzzleWith("level1", 5, 6, 60, 50, 10);
  SDL_Texture* normal = ui::pieceTexture("l", p, p.pieces[3], nullptr, false);
  int w = 0;
  SDL_QueryTexture(normal, nullptr, nullptr, &w, nullptr);
  EXPECT_EQ(w, 80);
  ui::gpuSetScale(2.0);
  SDL_Texture* sharp = ui::pieceTexture("l", p, p.pieces[3], nullptr, false);
  SDL_QueryTexture(sharp, nullptr, nullptr, &w, nullptr);
  EXPECT_EQ(w, 160);
  EXPECT_EQ(ui::gpuCacheSize(), 1u) << "repainted in place";
}

}  // namespace
