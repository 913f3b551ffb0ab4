// The texture cache and the pieces painted into it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <set>

#include "core/outline.h"
#include "platform/fs.h"
#include "tests/support/test_support.h"
#include "ui/textures/board_image.h"
#include "ui/gpu.h"
#include "ui/textures/level_thumb.h"
#include "ui/textures/piece_textures.h"
#include "ui/textures/thumb_cache.h"
#include "platform/paths.h"

namespace {

class Textures : public ::testing::Test {
 protected:
  void SetUp() override { ui::gpuInit(target.renderer()), ui::gpuSetScale(1.0); }
  void TearDown() override { ui::gpuShutdown(); }
  testsupport::SoftwareTarget target{200, 200};
};

// 900 textures fit; a new one beyond that first drops the least recently used third.
TEST_F(Textures, AFullCacheDropsTheLeastRecentlyUsedThird) {
  auto key = [](int i) { return "k" + std::to_string(1000 + i); };
  for (int i = 0; i < 901; ++i) ui::gpuTexture(key(i), 1, 1, nullptr, nullptr);
  ui::gpuBeginFrame();
  for (int i = 0; i < 50; ++i) ui::gpuTexture(key(i), 1, 1, nullptr, nullptr);
  for (int i = 50; i < 100; ++i) ui::gpuCachedTexture(key(i), 1, 1);
  ui::gpuTexture("new", 1, 1, nullptr, nullptr);
  EXPECT_EQ(ui::gpuCacheSize(), 602u);
  for (auto [i, kept] : {std::pair{0, true}, {99, true}, {100, false}, {399, false}, {400, true}, {900, true}}) {
    EXPECT_EQ(ui::gpuCached(key(i)), kept) << key(i);
  }
  EXPECT_TRUE(ui::gpuCached("new"));
}

// Everything a picture depends on is in its key, so no two pictures share an entry.
TEST(TextureKeys, NoTwoPicturesShareOne) {
  const core::Puzzle p("level1", 5, 6), grid("level1", 4, 6);
  core::Puzzle wide = p;
  wide.cellW = 120;
  const core::Piece& first = p.pieces[0];
  constexpr ui::PieceLook kRim = ui::PieceLook::Outlined;
  const std::vector<std::string> keys = {
      ui::pieceTextureKey("level1", p, first, kRim),          ui::pieceTextureKey("level1", p, first, ui::PieceLook::Plain),
      ui::pieceTextureKey("level1", p, first, ui::PieceLook::Strong),
      ui::pieceTextureKey("level2", p, first, kRim),          ui::pieceTextureKey("level1", p, p.pieces[1], kRim),
      ui::pieceTextureKey("level1", grid, grid.pieces[0], kRim), ui::pieceTextureKey("level1", wide, first, kRim),
      ui::pieceThumbKey("level1", p, first, 96, true),         ui::pieceThumbKey("level1", p, first, 96, false),
      ui::pieceThumbKey("level1", p, first, 48, true),         ui::pieceThumbKey("level1", wide, first, 96, true),
      ui::boardTextureKey(p, 1, 23, true, 100, 80),           ui::boardTextureKey(p, 12, 3, true, 100, 80),
      ui::boardTextureKey(p, 1, 23, false, 100, 80),          ui::boardTextureKey(grid, 1, 23, true, 100, 80),
      ui::levelThumbKey("level1", false, 60, 40),              ui::levelThumbKey("level1", true, 60, 40)};
  EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), keys.size()) << testing::PrintToString(keys);
}

// Each texel well inside the piece's outline shows the picture at the piece's
// place on the board, each one well outside is empty: in the piece's texture
// and in both kinds of thumbnail, each kept in a cache entry of its own.
TEST_F(Textures, APieceIsPaintedExactlyInsideItsOutline) {
  core::Puzzle p("level1", 5, 6);  // cells of 100 x 60 with a pad of 10: a box of 120 x 80
  p.cellW = 100, p.cellH = 60, p.pad = 10, p.boardW = 600, p.boardH = 300;
  const core::Piece& piece = p.pieces[2 * 6 + 3];
  // The picture's red grows with x, its green with y; the piece's cell starts at (300, 120).
  cairo_surface_t* picture = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 600, 300);
  uint32_t* px = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(picture));
  for (int i = 0; i < 600 * 300; ++i) px[i] = (i % 600 * 255 / 599) << 16 | (i / 600 * 255 / 299) << 8;
  cairo_surface_mark_dirty(picture);
  cairo_t* cr = cairo_create(picture);
  core::buildPiecePath(cr, 100, 60, 10, piece.edges);
  cairo_set_line_width(cr, 5);
  struct Case { int size; bool square; double scale, offsetY; int w, h; };
  const Case kCases[] = {{0, false, 1, 0, 120, 80}, {96, true, 0.8, 16, 96, 96}, {96, false, 0.8, 0, 96, 64}};
  for (const Case& c : kCases) {
    SDL_Texture* tex = c.size ? ui::pieceThumbTexture("level1", p, piece, picture, c.size, c.square, nullptr, nullptr)
                              : ui::pieceTexture("level1", p, piece, picture, ui::PieceLook::Outlined);
    SDL_SetRenderDrawColor(target.renderer(), 0, 0, 0, 0);
    SDL_RenderClear(target.renderer());
    ui::gpuBlit(tex, 0, 0, c.w, c.h, 1.0);
    int wrong = 0;
    for (int y = 0; y < c.h; y += 2) {
      for (int x = 0; x < c.w; x += 2) {
        const double bx = (x + 0.5) / c.scale, by = (y + 0.5 - c.offsetY) / c.scale;
        if (cairo_in_stroke(cr, bx, by)) continue;  // too near the outline to tell
        const bool in = cairo_in_fill(cr, bx, by);
        const uint32_t t = target.pixel(x, y);
        const double dRed = (t >> 16 & 255) - (bx + 290) * 255 / 599, dGreen = (t >> 8 & 255) - (by + 110) * 255 / 299;
        wrong += in ? t >> 24 != 255 || std::abs(dRed) > 2.5 || std::abs(dGreen) > 2.5 : t >> 24 != 0;
      }
    }
    EXPECT_EQ(wrong, 0) << "thumbnail of " << c.size << (c.square ? " square" : "");
  }
  ui::pieceTexture("level1", p, piece, picture, ui::PieceLook::Plain);  // the plain look beside the rimmed one
  EXPECT_EQ(ui::gpuCacheSize(), 4u) << "every picture in an entry of its own";
  cairo_destroy(cr);
  cairo_surface_destroy(picture);
}

TEST(MissingPicture, IsReportedOnceAndNotReadAgain) {
  testsupport::TempDir root;  // an asset tree without pictures
  for (const char* dir : {"/assets/fonts", "/assets/levels"}) platform::fs::ensureDir(root.path() + dir);
  testsupport::ScopedEnv snap("SNAP", std::nullopt), appDir("APPDIR", std::nullopt);
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  testing::internal::CaptureStderr();
  for (int size : {800, 800, 800, 1200}) EXPECT_EQ(ui::boardImage("level1", size, size), nullptr);
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.find("[image] " + root.path() + "/assets/levels/level1.jpg nicht lesbar"), 0u) << err;
  EXPECT_EQ(err.find('\n'), err.size() - 1) << err;
}

// A thumbnail kept on disk comes back only while it is whole and its
// source file unchanged; a folder that cannot be written keeps nothing.
TEST_F(Textures, TheDiskCacheGivesBackOnlyWholeEntriesOfUnchangedSources) {
  enum Harm { kNone, kSourceChanged, kEntryCut, kUnwritable };
  for (Harm harm : {kNone, kSourceChanged, kEntryCut, kUnwritable}) {
    testsupport::TempDir t;
    const std::string source = t.write("level.jpg", "a picture"), key = "thumb_level1_s_60x40";
    const std::string dir = harm == kUnwritable ? source + "/thumbs" : t.path();
    cairo_surface_t* pic = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 60, 40);
    std::fill_n(reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(pic)), 60 * 40, 0x336699u);
    EXPECT_EQ(ui::storeCachedThumb(dir, key, source, pic), harm != kUnwritable);
    cairo_surface_destroy(pic);
    if (harm == kSourceChanged) t.write("level.jpg", "a picture, edited");
    const std::string entry = testsupport::readFile(t.file(key + ".jpg"));  // whole but for its last line's end
    if (harm == kEntryCut) t.write(key + ".jpg", entry.substr(0, entry.size() - 3));
    cairo_surface_t* back = ui::loadCachedThumb(dir, key, source, 60, 40);
    ASSERT_EQ(back != nullptr, harm == kNone) << harm;
    if (!back) continue;
    const uint32_t px = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(back))[30 * 40 + 20];
    EXPECT_NEAR(px >> 16 & 255, 51, 3);
    EXPECT_NEAR(px & 255, 153, 3);
    cairo_surface_destroy(back);
  }
  // The game's own thumbnails go to its cache folder.
  ASSERT_NE(ui::levelThumb("level1", true, 60, 40), nullptr);
  EXPECT_TRUE(platform::fs::isFile(paths::cacheDir() + "/thumbs/thumb_level1_b_60x40.jpg"));
}

// The entries used last stay; the others go.
TEST(ThumbCache, PruningKeepsTheEntriesUsedLast) {
  testsupport::TempDir t;
  for (int i = 0; i < 5; ++i) {
    const timespec when[2] = {{0, 0}, {1000 + "31402"[i], 0}};
    utimensat(AT_FDCWD, t.write("e" + std::to_string(i) + ".jpg", "x").c_str(), when, 0);
  }
  ui::pruneCachedThumbs(t.path(), 3);
  EXPECT_EQ(platform::fs::listDir(t.path()), (std::vector<std::string>{"e0.jpg", "e2.jpg", "e4.jpg"}));
}

}  // namespace
