// A real frame context for widget tests: a cairo image surface the widgets
// draw on, and input fed frame by frame.
#pragma once

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "tests/support/font_support.h"
#include "ui/input.h"
#include "ui/text.h"
#include "ui/widgets/trace.h"

namespace widgettest {

struct Bounds {
  int left = -1, top = -1, right = -1, bottom = -1;  // inclusive; -1 when nothing matched
  bool empty() const { return left < 0; }
};

class WidgetFrame : public ::testing::Test {
 protected:
  // The pointer at (x, y), having moved by dy since the last frame; a release is the click.
  static ui::Input pointer(double x, double y, bool down, bool pressed, bool released, double dy = 0) {
    ui::Input in;
    in.mouseX = x, in.mouseY = y, in.dy = dy;
    in.mouseDown = down, in.mousePressed = pressed, in.mouseReleased = released;
    return in;
  }
  static ui::Input hoverAt(double x, double y) { return pointer(x, y, false, false, false); }
  static ui::Input pressAt(double x, double y) { return pointer(x, y, true, true, false); }
  static ui::Input heldAt(double x, double y, double dy = 0) { return pointer(x, y, true, false, false, dy); }
  static ui::Input releaseAt(double x, double y) { return pointer(x, y, false, false, true); }

  static void SetUpTestSuite() {
    testsupport::useShippedAssets();
    ui::registerBundledFonts();
  }
  void SetUp() override { resize(1000, 700); }
  void TearDown() override { ui::setWidgetTracing(false); }

  void resize(int w, int h) {
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h));
    cr_.reset(cairo_create(surface_.get()));
    ctx.cr = cr_.get();
    ctx.width = w;
    ctx.height = h;
  }

  // Starts the next frame: a blank canvas, this input, the click not taken.
  void frame(const ui::Input& in, double dt = 1.0 / 60) {
    resize(ctx.width, ctx.height);
    ui::widgetTrace().clear();
    ctx.in = in;
    ctx.clickTaken = ctx.animating = false;
    ctx.dt = dt;
    ctx.time += dt;
  }

  // The box around every pixel (0xAARRGGBB, premultiplied) in the region for which `match` holds.
  template <typename Match>
  Bounds find(int x0, int y0, int x1, int y1, Match match) const {
    cairo_surface_flush(surface_.get());
    const unsigned char* data = cairo_image_surface_get_data(surface_.get());
    const int stride = cairo_image_surface_get_stride(surface_.get());
    Bounds b;
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        if (!match(reinterpret_cast<const uint32_t*>(data + y * stride)[x])) continue;
        b = b.empty() ? Bounds{x, y, x, y}
                      : Bounds{std::min(b.left, x), std::min(b.top, y), std::max(b.right, x), std::max(b.bottom, y)};
      }
    }
    return b;
  }

  ui::Ctx ctx;

 private:
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_{nullptr, cairo_surface_destroy};
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr_{nullptr, cairo_destroy};
};

}  // namespace widgettest
