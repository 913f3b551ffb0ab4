#include "core/outline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

struct Point {
  double x, y;
};

struct Op {
  cairo_path_data_type_t type;
  std::vector<Point> points;
};

using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;
using Path = std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)>;

Context context() {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 4, 4);
  Context cr(cairo_create(surface), &cairo_destroy);
  cairo_surface_destroy(surface);  // the context keeps its own reference
  return cr;
}

// The path as cairo holds it, curves kept or flattened into lines.
std::vector<Op> pathOf(double w, double h, double m, const core::PieceEdges& e, bool flat) {
  Context cr = context();
  core::buildPiecePath(cr.get(), w, h, m, e);
  Path path(flat ? cairo_copy_path_flat(cr.get()) : cairo_copy_path(cr.get()), &cairo_path_destroy);
  EXPECT_EQ(path->status, CAIRO_STATUS_SUCCESS);
  std::vector<Op> ops;
  for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
    const cairo_path_data_t* d = &path->data[i];
    Op op{d->header.type, {}};
    for (int k = 1; k < d->header.length; ++k) op.points.push_back({d[k].point.x, d[k].point.y});
    ops.push_back(op);
  }
  return ops;
}

// The flattened outline as one closed ring of points, start point last again.
std::vector<Point> ring(double w, double h, double m, const core::PieceEdges& e) {
  std::vector<Point> out;
  for (const Op& op : pathOf(w, h, m, e, true)) {
    if (op.type == CAIRO_PATH_CLOSE_PATH) break;
    out.insert(out.end(), op.points.begin(), op.points.end());
  }
  const Point first = out.front();
  if (out.back().x != first.x || out.back().y != first.y) out.push_back(first);
  return out;
}

bool near(const Point& a, double x, double y) { return std::abs(a.x - x) < 1e-9 && std::abs(a.y - y) < 1e-9; }

// The run of the ring from the point `from` to the point `to`, both included.
std::vector<Point> run(const std::vector<Point>& r, Point from, Point to) {
  std::vector<Point> out;
  bool inside = false;
  for (const Point& p : r) {
    if (!inside && near(p, from.x, from.y)) inside = true;
    if (inside) out.push_back(p);
    if (inside && near(p, to.x, to.y)) return out;
  }
  ADD_FAILURE() << "no run from (" << from.x << "," << from.y << ") to (" << to.x << "," << to.y << ")";
  return {};
}

void expectSameSeam(std::vector<Point> a, std::vector<Point> b, double dx, double dy) {
  std::reverse(b.begin(), b.end());
  ASSERT_EQ(a.size(), b.size());
  ASSERT_GT(a.size(), 4u) << "the knob is flattened into many points";
  for (size_t i = 0; i < a.size(); ++i) {
    EXPECT_TRUE(near(a[i], b[i].x + dx, b[i].y + dy))
        << i << ": (" << a[i].x << "," << a[i].y << ") vs (" << b[i].x + dx << "," << b[i].y + dy << ")";
  }
}

TEST(Outline, AnAllStraightPieceIsARectangle) {
  const std::vector<Op> ops = pathOf(100, 80, 20, core::PieceEdges{}, false);
  ASSERT_GE(ops.size(), 5u);
  EXPECT_EQ(ops[0].type, CAIRO_PATH_MOVE_TO);
  EXPECT_TRUE(near(ops[0].points[0], 20, 20));
  const Point corners[] = {{120, 20}, {120, 100}, {20, 100}};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(ops[1 + i].type, CAIRO_PATH_LINE_TO);
    EXPECT_TRUE(near(ops[1 + i].points[0], corners[i].x, corners[i].y)) << i;
  }
  EXPECT_EQ(ops[4].type, CAIRO_PATH_CLOSE_PATH);
  // cairo folds the fourth line, which ends on the start point, into the
  // close; only the move cairo appends after a close may follow.
  ASSERT_LE(ops.size(), 6u);
  if (ops.size() == 6) {
    EXPECT_EQ(ops[5].type, CAIRO_PATH_MOVE_TO);
  }
}

TEST(Outline, AKnobSideIsALineTwoCurvesAndALine) {
  const core::PieceEdges e{1, 0, 0, 0};
  const std::vector<Op> ops = pathOf(100, 80, 20, e, false);
  ASSERT_GE(ops.size(), 6u);
  const cairo_path_data_type_t types[] = {CAIRO_PATH_MOVE_TO, CAIRO_PATH_LINE_TO, CAIRO_PATH_CURVE_TO,
                                          CAIRO_PATH_CURVE_TO, CAIRO_PATH_LINE_TO};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(ops[i].type, types[i]) << i;
  EXPECT_TRUE(near(ops[1].points[0], 20 + 35, 20));
  // Controls swing back to 0.3 and 0.2 of the side before the crown at 0.5,
  // mirrored about the middle on the way down.
  EXPECT_TRUE(near(ops[2].points[0], 20 + 30, 20 - 0.15 * 20));
  EXPECT_TRUE(near(ops[2].points[1], 20 + 20, 20 - 0.9 * 20));
  EXPECT_TRUE(near(ops[2].points[2], 20 + 50, 20 - 0.9 * 20));
  EXPECT_TRUE(near(ops[3].points[0], 20 + 80, 20 - 0.9 * 20));
  EXPECT_TRUE(near(ops[3].points[1], 20 + 70, 20 - 0.15 * 20));
  EXPECT_TRUE(near(ops[3].points[2], 20 + 65, 20));
  EXPECT_TRUE(near(ops[4].points[0], 120, 20));
}

TEST(Outline, KnobsReachNineTenthsOfTheMarginOutAndIn) {
  // The depth depends on the margin only, not on the cell's shape.
  for (const Point cell : {Point{100, 80}, Point{40, 160}}) {
    const double m = 20;
    const double right = m + cell.x;
    const double bottom = m + cell.y;
    const std::vector<Point> out = ring(cell.x, cell.y, m, core::PieceEdges{1, 1, 1, 1});
    double minX = 1e9, maxX = -1e9, minY = 1e9, maxY = -1e9;
    for (const Point& p : out) {
      minX = std::min(minX, p.x);
      maxX = std::max(maxX, p.x);
      minY = std::min(minY, p.y);
      maxY = std::max(maxY, p.y);
    }
    EXPECT_NEAR(minY, m - 0.9 * m, 1e-9);
    EXPECT_NEAR(maxX, right + 0.9 * m, 1e-9);
    EXPECT_NEAR(maxY, bottom + 0.9 * m, 1e-9);
    EXPECT_NEAR(minX, m - 0.9 * m, 1e-9);
    EXPECT_GE(minX, 0.0) << "the knob stays inside the margin";

    // A socket on the top only: the deepest point strictly inside the cell.
    double deepest = 0;
    for (const Point& p : ring(cell.x, cell.y, m, core::PieceEdges{-1, 0, 0, 0})) {
      if (p.x > m && p.x < right && p.y < bottom) deepest = std::max(deepest, p.y);
      EXPECT_GE(p.y, m) << "a socket never bulges out";
    }
    EXPECT_NEAR(deepest, m + 0.9 * m, 1e-9);
  }
}

TEST(Outline, NeighboursSeamsCoincide) {
  const double w = 100, h = 80, m = 20;
  for (int sign : {1, -1}) {
    // Left piece's right side against the right piece's left side.
    const std::vector<Point> left = ring(w, h, m, core::PieceEdges{0, sign, 0, 0});
    const std::vector<Point> right = ring(w, h, m, core::PieceEdges{0, 0, 0, -sign});
    expectSameSeam(run(left, {m + w, m}, {m + w, m + h}), run(right, {m, m + h}, {m, m}), w, 0);
    // Upper piece's bottom side against the lower piece's top side.
    const std::vector<Point> upper = ring(w, h, m, core::PieceEdges{0, 0, sign, 0});
    const std::vector<Point> lower = ring(w, h, m, core::PieceEdges{-sign, 0, 0, 0});
    expectSameSeam(run(upper, {m + w, m + h}, {m, m + h}), run(lower, {m, m}, {m + w, m}), 0, h);
  }
}

TEST(Outline, ThePathReplacesWhateverWasThere) {
  Context cr = context();
  cairo_rectangle(cr.get(), 0, 0, 3, 3);
  core::buildPiecePath(cr.get(), 10, 10, 2, core::PieceEdges{});
  Path path(cairo_copy_path(cr.get()), &cairo_path_destroy);
  ASSERT_GT(path->num_data, 0);
  EXPECT_EQ(path->data[0].header.type, CAIRO_PATH_MOVE_TO);
  EXPECT_EQ(path->data[1].point.x, 2.0);
  EXPECT_EQ(path->data[1].point.y, 2.0);
  double x1, y1, x2, y2;
  cairo_path_extents(cr.get(), &x1, &y1, &x2, &y2);
  EXPECT_EQ(x1, 2.0);
  EXPECT_EQ(x2, 12.0);
}

}  // namespace
