#include <gtest/gtest.h>
#include <stb_image_write.h>

#include <memory>
#include <vector>

#include "platform/fs.h"
#include "platform/paths.h"
#include "tests/support/test_support.h"
#include "ui/gpu.h"
#include "ui/textures/board_image.h"
#include "ui/textures/level_thumb.h"

namespace {

using testsupport::SoftwareTarget;
using testsupport::TempDir;

// A 400 x 300 picture in three vertical bands: red on the left quarter,
// green in the middle half, blue on the right quarter. Stored losslessly
// (the decoder goes by content, not by the .jpg name).
void writeBands(const std::string& path) {
  const int w = 400, h = 300;
  std::vector<unsigned char> px(w * h * 3, 0);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      unsigned char* p = &px[(y * w + x) * 3];
      p[x < 100 ? 0 : x < 300 ? 1 : 2] = 255;
    }
  }
  ASSERT_NE(stbi_write_png(path.c_str(), w, h, 3, px.data(), w * 3), 0);
}

class Textures : public ::testing::Test {
 protected:
  // The asset root is fixed on first use for the whole process, so every
  // case shares one, made before anything asks for it.
  static void SetUpTestSuite() {
    root = new TempDir;
    platform::fs::ensureDir(root->file("assets/fonts"));
    platform::fs::ensureDir(root->file("assets/levels"));
    ::setenv("TESSELLATRIX_ASSET_DIR", root->path().c_str(), 1);
    writeBands(root->file("assets/levels/level1.jpg"));
    writeBands(root->file("assets/levels/level1_blur.jpg"));
    ASSERT_EQ(paths::assetDir(), root->path());
  }
  static void TearDownTestSuite() {
    ui::imagesShutdown();
    delete root;
  }
  void SetUp() override {
    ui::gpuInit(target.renderer());
    ui::gpuSetScale(1.0);
  }
  void TearDown() override { ui::gpuShutdown(); }

  // Draws the texture 1:1 at the origin and reads back one pixel.
  uint32_t shown(SDL_Texture* tex, int w, int h, int x, int y) {
    SDL_SetRenderDrawColor(target.renderer(), 40, 40, 40, 255);
    SDL_RenderClear(target.renderer());
    ui::gpuBlit(tex, 0, 0, w, h, 1.0);
    return target.pixel(x, y) & 0xffffff;
  }

  // 'r', 'g' or 'b' for a pixel that is clearly that primary, else '?'.
  char band(SDL_Texture* tex, int w, int h, int x, int y) {
    const uint32_t p = shown(tex, w, h, x, y);
    const int r = (p >> 16) & 255, g = (p >> 8) & 255, b = p & 255;
    if (r > 240 && g < 15 && b < 15) return 'r';
    if (g > 240 && r < 15 && b < 15) return 'g';
    if (b > 240 && r < 15 && g < 15) return 'b';
    return '?';
  }

  static TempDir* root;
  SoftwareTarget target{200, 200};
};

TempDir* Textures::root = nullptr;

TEST_F(Textures, BoardImageIsCachedPerLevelAndBound) {
  cairo_surface_t* a = ui::boardImage("level1", 200, 200);
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(cairo_image_surface_get_width(a), 200);
  EXPECT_EQ(cairo_image_surface_get_height(a), 150);
  EXPECT_EQ(ui::boardImage("level1", 200, 200), a);
  cairo_surface_t* b = ui::boardImage("level1", 100, 100);
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(cairo_image_surface_get_width(b), 100) << "another bound reloads and replaces";
}

TEST_F(Textures, AFailedBoardLoadKeepsTheCachedPicture) {
  cairo_surface_t* a = ui::boardImage("level1", 120, 120);
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(ui::boardImage("level99", 120, 120), nullptr) << "unknown level";
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(ui::boardImage("level2", 120, 120), nullptr) << "no picture file";
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("level2.jpg nicht lesbar: can't fopen"), std::string::npos);
  EXPECT_EQ(ui::boardImage("level1", 120, 120), a);
  ui::imagesShutdown();
  EXPECT_NE(ui::boardImage("level1", 120, 120), nullptr) << "loaded afresh after shutdown";
}

TEST_F(Textures, ThumbnailKeysNameLevelVariantAndSize) {
  EXPECT_EQ(ui::levelThumbKey("level3", false, 240, 160), "thumb_level3_s_240x160");
  EXPECT_EQ(ui::levelThumbKey("level3", true, 240, 160), "thumb_level3_b_240x160");
}

TEST_F(Textures, SharpAndBlurredThumbnailsAreTwoEntries) {
  SDL_Texture* sharp = ui::levelThumb("level1", false, 60, 40);
  SDL_Texture* blurred = ui::levelThumb("level1", true, 60, 40);
  ASSERT_NE(sharp, nullptr);
  ASSERT_NE(blurred, nullptr);
  EXPECT_NE(sharp, blurred);
  EXPECT_EQ(ui::gpuCacheSize(), 2u);
  EXPECT_EQ(ui::levelThumb("level1", false, 60, 40), sharp);
}

TEST_F(Textures, EmptySizesAndUnknownLevelsGiveNoThumbnail) {
  EXPECT_EQ(ui::levelThumb("level1", false, 0, 40), nullptr);
  EXPECT_EQ(ui::levelThumb("level1", false, 60, 0), nullptr);
  EXPECT_EQ(ui::levelThumb("nolevel", false, 60, 40), nullptr);
  EXPECT_EQ(ui::gpuCacheSize(), 0u);
}

// The 4:3 picture covers a square: scaled to 133.3 x 100 and shifted left by
// 16.7, so each side loses the same 16.7 units. The red quarter (33.3 wide
// at that scale) shows 16.7 wide on the left, the blue one as much on the right.
TEST_F(Textures, ACoverCropCutsBothSidesEqually) {
  SDL_Texture* t = ui::levelThumb("level1", false, 100, 100);
  ASSERT_NE(t, nullptr);
  int redRun = 0, blueRun = 0;
  for (int x = 0; x < 100; ++x) {
    const char c = band(t, 100, 100, x, 50);
    redRun += c == 'r';
    blueRun += c == 'b';
  }
  EXPECT_NEAR(redRun, 16, 1);
  EXPECT_EQ(redRun, blueRun);
  EXPECT_EQ(band(t, 100, 100, 0, 0), 'r');
  EXPECT_EQ(band(t, 100, 100, 99, 99), 'b');
  EXPECT_EQ(band(t, 100, 100, 50, 99), 'g');
}

TEST_F(Textures, AnUnreadablePictureLeavesABlackThumbnail) {
  ::testing::internal::CaptureStderr();
  SDL_Texture* t = ui::levelThumb("level5", false, 30, 20);
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("[image] "), std::string::npos);
  ASSERT_NE(t, nullptr);
  EXPECT_EQ(shown(t, 30, 20, 15, 10), 0x000000u);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(ui::levelThumb("level5", false, 30, 20), t);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "kept under its key, not retried";
}

}  // namespace
