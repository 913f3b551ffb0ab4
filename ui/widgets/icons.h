// Small vector icons; `size` is the icon's nominal width.
#pragma once

#include <cairo.h>

#include <cstdint>

namespace ui {

void drawShuffleIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha);
// direction: 0 up, 1 right, 2 down, anything else left.
void drawTriangleIcon(cairo_t* cr, double cx, double cy, double size, int direction, uint32_t rgb, double alpha);
void drawLockIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha);
void drawClockIcon(cairo_t* cr, double cx, double cy, double size, uint32_t rgb, double alpha);

}  // namespace ui
