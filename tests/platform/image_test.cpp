#include "platform/image.h"

#include <gtest/gtest.h>
#include <stb_image_write.h>

#include <memory>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using testsupport::TempDir;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

std::vector<unsigned char> solid(int w, int h, unsigned char r, unsigned char g, unsigned char b) {
  std::vector<unsigned char> px(static_cast<size_t>(w) * h * 3);
  for (size_t i = 0; i < px.size(); i += 3) {
    px[i] = r;
    px[i + 1] = g;
    px[i + 2] = b;
  }
  return px;
}

std::string writePng(const TempDir& dir, const std::string& name, int w, int h, const std::vector<unsigned char>& px) {
  const std::string path = dir.file(name);
  EXPECT_NE(stbi_write_png(path.c_str(), w, h, 3, px.data(), w * 3), 0);
  return path;
}

std::string writeJpg(const TempDir& dir, const std::string& name, int w, int h) {
  const std::string path = dir.file(name);
  EXPECT_NE(stbi_write_jpg(path.c_str(), w, h, 3, solid(w, h, 90, 140, 200).data(), 80), 0);
  return path;
}

uint32_t pixel(cairo_surface_t* s, int x, int y) {
  const unsigned char* data = cairo_image_surface_get_data(s);
  return reinterpret_cast<const uint32_t*>(data + y * cairo_image_surface_get_stride(s))[x] & 0xffffff;
}

void expectSize(const std::string& path, int maxW, int maxH, int w, int h) {
  Surface s(platform::loadImage(path, maxW, maxH));
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(cairo_image_surface_get_format(s.get()), CAIRO_FORMAT_RGB24);
  EXPECT_EQ(cairo_image_surface_get_width(s.get()), w) << maxW << "x" << maxH;
  EXPECT_EQ(cairo_image_surface_get_height(s.get()), h) << maxW << "x" << maxH;
}

TEST(ImageLoading, ReducedToFitTheBoundKeepingTheAspect) {
  TempDir dir;
  const std::string big = writeJpg(dir, "big.jpg", 4000, 3000);
  expectSize(big, 1000, 1000, 1000, 750);
  expectSize(big, 300, 1000, 300, 225);
}

TEST(ImageLoading, NeverEnlargedAndFullSizeWithoutABound) {
  TempDir dir;
  const std::string small = writePng(dir, "small.png", 100, 80, solid(100, 80, 1, 2, 3));
  expectSize(small, 1000, 1000, 100, 80);
  expectSize(small, 0, 0, 100, 80);
  expectSize(small, 50, 0, 100, 80);  // either side of 0 or less means no bound
  expectSize(small, -5, 40, 100, 80);
}

TEST(ImageLoading, AThinPictureKeepsAtLeastOneRow) {
  TempDir dir;
  expectSize(writePng(dir, "thin.png", 10000, 1, solid(10000, 1, 9, 9, 9)), 100, 100, 100, 1);
}

TEST(ImageLoading, FullSizePixelsArePackedAsRgb) {
  TempDir dir;
  std::vector<unsigned char> px = {255, 0, 0, 0, 255, 0, 0, 0, 255, 10, 20, 30};
  Surface s(platform::loadImage(writePng(dir, "four.png", 2, 2, px), 0, 0));
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(pixel(s.get(), 0, 0), 0xff0000u);
  EXPECT_EQ(pixel(s.get(), 1, 0), 0x00ff00u);
  EXPECT_EQ(pixel(s.get(), 0, 1), 0x0000ffu);
  EXPECT_EQ(pixel(s.get(), 1, 1), 0x0a141eu);
}

// A 3 x 2 picture reduced to 2 x 1: the first box is column 0 (3 x 0 / 2 = 0
// up to 3 x 1 / 2 = 1), the second columns 1 and 2; both rows in each. Means
// are truncated: (10 + 13) / 2 = 11.
TEST(ImageLoading, TheBoxFilterTakesPlainTruncatedMeans) {
  TempDir dir;
  const std::vector<unsigned char> px = {
      10, 0, 255,  100, 1, 0,  200, 2, 0,   //
      13, 0, 254,  101, 2, 0,  204, 1, 0,   //
  };
  Surface s(platform::loadImage(writePng(dir, "box.png", 3, 2, px), 2, 100));
  ASSERT_NE(s, nullptr);
  ASSERT_EQ(cairo_image_surface_get_width(s.get()), 2);
  ASSERT_EQ(cairo_image_surface_get_height(s.get()), 1);
  EXPECT_EQ(pixel(s.get(), 0, 0), (11u << 16) | (0u << 8) | 254u);
  // (100 + 200 + 101 + 204) / 4 = 151, (1 + 2 + 2 + 1) / 4 = 1, 0.
  EXPECT_EQ(pixel(s.get(), 1, 0), (151u << 16) | (1u << 8) | 0u);
}

TEST(ImageLoading, BoxReduceHonoursTheOutputStride) {
  const std::vector<unsigned char> px = solid(4, 4, 7, 8, 9);
  std::vector<uint32_t> out(2 * 4, 0xdeadbeef);
  platform::boxReduce(px.data(), 4, 4, reinterpret_cast<unsigned char*>(out.data()), 2, 2, 4 * sizeof(uint32_t));
  EXPECT_EQ(out[0], 0x070809u);
  EXPECT_EQ(out[1], 0x070809u);
  EXPECT_EQ(out[2], 0xdeadbeefu) << "beyond the target width";
  EXPECT_EQ(out[4], 0x070809u);
}

TEST(ImageLoading, AMissingFileSaysSoAndGivesNull) {
  TempDir dir;
  const std::string path = dir.file("none.jpg");
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(platform::loadImage(path, 10, 10), nullptr);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "[image] " + path + " nicht lesbar: can't fopen\n");
  int w = 0, h = 0;
  EXPECT_FALSE(platform::imageSize(path, &w, &h));
}

TEST(ImageLoading, CorruptAndTruncatedFilesGiveNullWithoutCrashing) {
  TempDir dir;
  const std::string jpg = testsupport::readFile(writeJpg(dir, "ok.jpg", 64, 48));
  const std::string png = testsupport::readFile(writePng(dir, "ok.png", 64, 48, solid(64, 48, 5, 6, 7)));
  const auto corrupt = [](std::string bytes) {
    for (size_t i = 20; i + 20 < bytes.size(); ++i) bytes[i] = static_cast<char>(0x5a);
    return bytes;
  };
  const std::string bad[] = {
      dir.write("half.jpg", jpg.substr(0, jpg.size() / 2)), dir.write("bad.jpg", corrupt(jpg)),
      dir.write("half.png", png.substr(0, png.size() / 2)), dir.write("bad.png", corrupt(png)),
      dir.write("empty.jpg", ""), dir.write("text.png", "not a picture at all"),
  };
  for (const std::string& path : bad) {
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(platform::loadImage(path, 0, 0), nullptr) << path;
    const std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(err.rfind("[image] " + path + " nicht lesbar: ", 0), 0u) << err;
  }
}

TEST(ImageLoading, SizeIsReadWithoutDecoding) {
  TempDir dir;
  int w = 0, h = 0;
  EXPECT_TRUE(platform::imageSize(writeJpg(dir, "s.jpg", 321, 123), &w, &h));
  EXPECT_EQ(w, 321);
  EXPECT_EQ(h, 123);
  EXPECT_FALSE(platform::imageSize(dir.write("t.jpg", "garbage"), &w, &h));
}

}  // namespace
