#include "core/outline.h"

namespace core {

namespace {

// A side runs from its start corner `o` along the unit direction `a`; `n` is
// the unit normal pointing out of the piece. Points are given as a fraction
// of the side's length along it and a multiple of the margin across it.
struct Side {
  double ox, oy;
  double ax, ay;
  double nx, ny;
  double length;
  int value;     // the side's edge value: + bulges out, - bites in
  double depth;  // value * margin

  void point(double along, double across, double* x, double* y) const {
    *x = ox + ax * along * length + nx * across * depth;
    *y = oy + ay * along * length + ny * across * depth;
  }
  void lineTo(cairo_t* cr, double along) const {
    double x, y;
    point(along, 0, &x, &y);
    cairo_line_to(cr, x, y);
  }
  void curveTo(cairo_t* cr, const double (&c)[6]) const {
    double x1, y1, x2, y2, x3, y3;
    point(c[0], c[1], &x1, &y1);
    point(c[2], c[3], &x2, &y2);
    point(c[4], c[5], &x3, &y3);
    cairo_curve_to(cr, x1, y1, x2, y2, x3, y3);
  }
};

// The knob as two cubic Beziers: (along, across) pairs of control, control,
// end. The first controls swing back towards the corner (0.3, 0.2) before the
// crown at 0.5, which rounds the bulb wider than its neck at 0.35 / 0.65; the
// crown at 0.9 keeps the knob inside the margin. Mirror-symmetric about 0.5.
constexpr double kKnobRise[6] = {0.3, 0.15, 0.2, 0.9, 0.5, 0.9};
constexpr double kKnobFall[6] = {0.8, 0.9, 0.7, 0.15, 0.65, 0};

void traceSide(cairo_t* cr, const Side& side) {
  if (side.value != 0) {
    side.lineTo(cr, 0.35);
    side.curveTo(cr, kKnobRise);
    side.curveTo(cr, kKnobFall);
  }
  side.lineTo(cr, 1.0);
}

}  // namespace

void buildPiecePath(cairo_t* cr, double w, double h, double m, const PieceEdges& e) {
  const double right = m + w;
  const double bottom = m + h;
  // Clockwise in screen coordinates: top, right, bottom, left.
  const Side sides[4] = {
      {m, m, 1, 0, 0, -1, w, e.top, e.top * m},
      {right, m, 0, 1, 1, 0, h, e.right, e.right * m},
      {right, bottom, -1, 0, 0, 1, w, e.bottom, e.bottom * m},
      {m, bottom, 0, -1, -1, 0, h, e.left, e.left * m},
  };
  cairo_new_path(cr);
  cairo_move_to(cr, m, m);
  for (const Side& side : sides) traceSide(cr, side);
  cairo_close_path(cr);
}

}  // namespace core
