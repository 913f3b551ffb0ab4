// A real frame context for widget tests: a cairo image surface the widgets
// draw on, input fed frame by frame, and ways to look at what was drawn.
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
  double centreX() const { return (left + right) * 0.5; }
  double centreY() const { return (top + bottom) * 0.5; }
};

class WidgetFrame : public ::testing::Test {
 protected:
  static constexpr double kDt = 1.0 / 60;

  // Pointer input for one frame.
  static ui::Input hoverAt(double x, double y) {
    ui::Input in;
    in.mouseX = x;
    in.mouseY = y;
    return in;
  }
  static ui::Input pressAt(double x, double y) {
    ui::Input in = hoverAt(x, y);
    in.mouseDown = in.mousePressed = true;
    return in;
  }
  // The button held, the pointer having moved by dy since the last frame.
  static ui::Input heldAt(double x, double y, double dy = 0) {
    ui::Input in = hoverAt(x, y);
    in.mouseDown = true;
    in.dy = dy;
    return in;
  }
  // The click: the release of the left button.
  static ui::Input releaseAt(double x, double y) {
    ui::Input in = hoverAt(x, y);
    in.mouseReleased = true;
    return in;
  }

  // The shipped fonts where the tree has them, the machine's otherwise; the
  // tests look only at geometry the widgets fix, not at glyph metrics.
  static void SetUpTestSuite() {
    testsupport::useShippedAssets();
    ::testing::internal::CaptureStderr();
    ui::registerBundledFonts();
    ::testing::internal::GetCapturedStderr();
  }

  void SetUp() override { resize(1000, 700); }
  void TearDown() override {
    ui::setWidgetTracing(false);
    ui::widgetTrace().clear();
  }

  void resize(int w, int h) {
    ctx.cr = nullptr;
    cr_.reset();
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h));
    cr_.reset(cairo_create(surface_.get()));
    ctx.cr = cr_.get();
    ctx.width = w;
    ctx.height = h;
  }

  // Starts the next frame: a blank canvas, this input, the click not taken.
  ui::Ctx& frame(const ui::Input& in, double dt = kDt) {
    cairo_save(cr_.get());
    cairo_set_operator(cr_.get(), CAIRO_OPERATOR_CLEAR);
    cairo_paint(cr_.get());
    cairo_restore(cr_.get());
    ui::widgetTrace().clear();
    ctx.in = in;
    ctx.clickTaken = false;
    ctx.dt = dt;
    ctx.time += dt;
    return ctx;
  }

  // 0xAARRGGBB, premultiplied, of the pixel at (x, y).
  uint32_t pixel(int x, int y) const {
    cairo_surface_flush(surface_.get());
    const unsigned char* row =
        cairo_image_surface_get_data(surface_.get()) + y * cairo_image_surface_get_stride(surface_.get());
    return reinterpret_cast<const uint32_t*>(row)[x];
  }
  uint32_t rgb(int x, int y) const { return pixel(x, y) & 0xffffff; }
  int alpha(int x, int y) const { return static_cast<int>(pixel(x, y) >> 24); }

  // The box around every pixel of the region for which `match` holds.
  template <typename Match>
  Bounds find(int x0, int y0, int x1, int y1, Match match) const {
    Bounds b;
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        if (!match(pixel(x, y))) continue;
        if (b.empty()) b = Bounds{x, y, x, y};
        b.left = std::min(b.left, x);
        b.right = std::max(b.right, x);
        b.top = std::min(b.top, y);
        b.bottom = std::max(b.bottom, y);
      }
    }
    return b;
  }
  // Everything drawn at all in the region.
  Bounds ink(int x0, int y0, int x1, int y1) const {
    return find(x0, y0, x1, y1, [](uint32_t p) { return (p >> 24) != 0; });
  }
  int width() const { return cairo_image_surface_get_width(surface_.get()); }
  int height() const { return cairo_image_surface_get_height(surface_.get()); }

  ui::Ctx ctx;

 private:
  struct SurfaceDeleter {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
  };
  struct ContextDeleter {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
  };
  std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface_;
  std::unique_ptr<cairo_t, ContextDeleter> cr_;
};

}  // namespace widgettest
