// Photographs made into puzzle pictures: turned upright, their centre kept
// within the aspect limits, reduced, and refused when they cannot serve.
#include <gtest/gtest.h>

#include <memory>

#include "platform/photo.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::quarterColour;
using testsupport::quarteredJpeg;

struct Prepared {
  platform::PhotoStatus status;
  std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> pic{nullptr, cairo_surface_destroy};
  int w() const { return cairo_image_surface_get_width(pic.get()); }
  int h() const { return cairo_image_surface_get_height(pic.get()); }
  std::string at(int x, int y) const {
    const unsigned char* row = cairo_image_surface_get_data(pic.get()) + y * cairo_image_surface_get_stride(pic.get());
    return quarterColour(reinterpret_cast<const uint32_t*>(row)[x]);
  }
  // The colours of the four corners, clockwise from the top left.
  std::string corners() const { return at(2, 2) + at(w() - 3, 2) + at(w() - 3, h() - 3) + at(2, h() - 3); }
};

Prepared prepare(const std::string& bytes) {
  Prepared p;
  cairo_surface_t* out = nullptr;
  p.status = platform::preparePhoto(bytes, &out);
  p.pic.reset(out);
  return p;
}

// A 600 x 400 picture stored as red green / blue white, and what the EXIF
// orientations say it shows: mirrored, turned, transposed.
TEST(Photos, EveryExifOrientationComesOutUpright) {
  const char* const kUpright[] = {"RGWB", "GRBW", "WBRG", "BWGR", "RBWG", "BRGW", "WGRB", "GWBR"};
  for (int o = 1; o <= 8; ++o) {
    const std::string jpeg = quarteredJpeg(600, 400, o);
    EXPECT_EQ(platform::exifOrientation(jpeg), o);
    const Prepared p = prepare(jpeg);
    ASSERT_EQ(p.status, platform::PhotoStatus::Ok) << o;
    EXPECT_EQ(p.corners(), kUpright[o - 1]) << o;
    EXPECT_EQ(p.w(), o <= 4 ? 600 : 400) << o;
  }
}

// Beyond 2.4:1 or 1:2 the centre is kept (the quarters still meet in the
// middle); within them nothing is cut; a long side over 2560 is reduced.
TEST(Photos, TheCentreIsKeptWithinTheAspectLimitsAndTheSizeReduced) {
  struct Case { int w, h, outW, outH; };
  const Case kCases[] = {{2000, 400, 960, 400}, {400, 1000, 400, 800}, {960, 400, 960, 400},
                         {400, 800, 400, 800},  {3000, 1500, 2560, 1280}};
  for (const Case& c : kCases) {
    const Prepared p = prepare(quarteredJpeg(c.w, c.h));
    ASSERT_EQ(p.status, platform::PhotoStatus::Ok) << c.w;
    EXPECT_EQ(std::to_string(p.w()) + "x" + std::to_string(p.h()),
              std::to_string(c.outW) + "x" + std::to_string(c.outH));
    EXPECT_EQ(p.at(p.w() / 2 - 4, p.h() / 2 - 4) + p.at(p.w() / 2 + 4, p.h() / 2 + 4), "RW") << c.w << "x" << c.h;
  }
}

}  // namespace
