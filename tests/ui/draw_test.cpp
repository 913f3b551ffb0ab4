#include "ui/draw.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

// A transparent ARGB32 canvas and a context on it.
class Canvas {
 public:
  Canvas(int w, int h)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h)), cr_(cairo_create(surface_)) {}
  ~Canvas() {
    cairo_destroy(cr_);
    cairo_surface_destroy(surface_);
  }
  cairo_t* cr() const { return cr_; }
  uint32_t pixel(int x, int y) const {
    cairo_surface_flush(surface_);
    const unsigned char* data = cairo_image_surface_get_data(surface_);
    return reinterpret_cast<const uint32_t*>(data + y * cairo_image_surface_get_stride(surface_))[x];
  }
  int alpha(int x, int y) const { return pixel(x, y) >> 24; }

 private:
  cairo_surface_t* surface_;
  cairo_t* cr_;
};

struct PathDeleter {
  void operator()(cairo_path_t* p) const { cairo_path_destroy(p); }
};

std::vector<cairo_path_data_type_t> operations(cairo_t* cr) {
  std::unique_ptr<cairo_path_t, PathDeleter> path(cairo_copy_path(cr));
  std::vector<cairo_path_data_type_t> ops;
  for (int i = 0; i < path->num_data; i += path->data[i].header.length) ops.push_back(path->data[i].header.type);
  return ops;
}

TEST(DrawingPrimitives, ColoursAreSplitFromRgbWithTheirOwnAlpha) {
  Canvas c(4, 4);
  ui::fillRect(c.cr(), ui::Rect{0, 0, 4, 4}, 0x336699, 1.0);
  EXPECT_EQ(c.pixel(1, 1), 0xFF336699u);
  ui::setColor(c.cr(), 0xffffff, 0.0);
  double r, g, b, a;
  cairo_pattern_get_rgba(cairo_get_source(c.cr()), &r, &g, &b, &a);
  EXPECT_DOUBLE_EQ(r, 1.0);
  EXPECT_DOUBLE_EQ(a, 0.0);
}

TEST(DrawingPrimitives, AHugeRadiusMakesACapsule) {
  Canvas c(60, 40);
  ui::fillRoundedRect(c.cr(), ui::Rect{10, 10, 40, 20}, 1000, 0xffffff, 1.0);
  // Semicircular ends of radius 10 centred at (20, 20) and (40, 20).
  EXPECT_EQ(c.alpha(20, 11), 255) << "top of the left end's arc";
  EXPECT_EQ(c.alpha(10, 10), 0) << "the corner is cut away";
  EXPECT_EQ(c.alpha(11, 11), 0);
  EXPECT_EQ(c.alpha(11, 20), 255) << "the left end reaches x = 10 on the centre line";
  EXPECT_EQ(c.alpha(30, 10), 255) << "the straight top edge";
}

TEST(DrawingPrimitives, RadiusZeroGivesASharpRectangleOfFourArcs) {
  Canvas c(40, 40);
  ui::roundedRectPath(c.cr(), ui::Rect{10, 10, 20, 20}, 0);
  double x1, y1, x2, y2;
  cairo_path_extents(c.cr(), &x1, &y1, &x2, &y2);
  EXPECT_EQ(x1, 10);
  EXPECT_EQ(y2, 30);
  ui::setColor(c.cr(), 0xffffff, 1.0);
  cairo_fill(c.cr());
  EXPECT_EQ(c.alpha(10, 10), 255);
  EXPECT_EQ(c.alpha(29, 29), 255);
  EXPECT_EQ(c.alpha(30, 30), 0);
}

TEST(DrawingPrimitives, RoundedRectPathOnlyBuildsAClosedPath) {
  Canvas c(40, 40);
  cairo_move_to(c.cr(), 0, 0);
  ui::roundedRectPath(c.cr(), ui::Rect{5, 5, 30, 20}, 6);
  const auto ops = operations(c.cr());
  ASSERT_GE(ops.size(), 3u);
  EXPECT_EQ(ops.back(), CAIRO_PATH_MOVE_TO) << "close_path leaves a move to the start";
  EXPECT_EQ(ops[ops.size() - 2], CAIRO_PATH_CLOSE_PATH);
  EXPECT_EQ(c.alpha(20, 15), 0) << "nothing is drawn";
}

TEST(DrawingPrimitives, CirclesAndLines) {
  Canvas c(40, 40);
  ui::fillCircle(c.cr(), 20, 20, 5, 0xffffff, 1.0);
  EXPECT_EQ(c.alpha(20, 20), 255);
  EXPECT_EQ(c.alpha(20, 27), 0);
  ui::strokeCircle(c.cr(), 20, 20, 15, 2, 0xffffff, 1.0);
  EXPECT_GT(c.alpha(34, 20), 200);
  EXPECT_EQ(c.alpha(20, 10), 0) << "a stroke leaves the inside empty";
  ui::drawLine(c.cr(), 0, 38.5, 40, 38.5, 1, 0xff0000, 1.0);
  EXPECT_EQ(c.pixel(10, 38), 0xFFFF0000u);
  EXPECT_EQ(c.alpha(10, 37), 0);
}

// With blur 0.5 two passes are made (widths 1.0 and 0.5, each at half the
// alpha): inside the shape both fills pile up to 1 - 0.5 x 0.5 = 0.75; the
// pixel just outside an edge is covered half by the first band and a quarter
// by the second: 1 - (1 - 0.25)(1 - 0.125) = 0.34375.
TEST(DrawingPrimitives, SoftShadowOfBlurBelowTwoMakesTwoPasses) {
  Canvas c(40, 40);
  cairo_rectangle(c.cr(), 10, 10, 20, 20);
  ui::softShadowFromPath(c.cr(), 0, 0, 0.5, 0x000000, 1.0);
  EXPECT_NEAR(c.alpha(20, 20), 0.75 * 255, 1.5);
  EXPECT_NEAR(c.alpha(9, 20), 0.34375 * 255, 1.5);
  EXPECT_EQ(c.alpha(8, 20), 0);
}

TEST(DrawingPrimitives, SoftShadowIsOffsetAndLeavesThePathIntact) {
  Canvas c(60, 60);
  cairo_rectangle(c.cr(), 10, 10, 20, 20);
  ui::softShadowFromPath(c.cr(), 15, 15, 6, 0x000000, 0.5);
  EXPECT_GT(c.alpha(40, 40), 0) << "the shadow moved with the offset";
  EXPECT_EQ(c.alpha(5, 5), 0);
  double x1, y1, x2, y2;
  cairo_path_extents(c.cr(), &x1, &y1, &x2, &y2);
  EXPECT_EQ(x1, 10);
  EXPECT_EQ(y1, 10);
  EXPECT_EQ(x2, 30);
  EXPECT_EQ(y2, 30);
  ui::setColor(c.cr(), 0xffffff, 1.0);
  cairo_fill(c.cr());
  EXPECT_EQ(c.pixel(15, 15), 0xFFFFFFFFu);
  EXPECT_EQ(c.pixel(29, 29), 0xFFFFFFFFu);
}

TEST(DrawingPrimitives, SoftShadowFadesOutwards) {
  Canvas c(80, 80);
  cairo_rectangle(c.cr(), 20, 20, 40, 40);
  ui::softShadowFromPath(c.cr(), 0, 0, 8, 0x000000, 0.8);
  const int atEdge = c.alpha(19, 40), mid = c.alpha(15, 40), far = c.alpha(13, 40);
  EXPECT_GT(atEdge, mid);
  EXPECT_GT(mid, far);
  EXPECT_EQ(c.alpha(10, 40), 0) << "nothing beyond the blur distance";
}

}  // namespace
