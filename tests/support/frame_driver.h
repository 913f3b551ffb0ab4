// Runs the game's screens frame by frame in-process, the way the frame loop
// does: a cairo layer for the overlay, SDL's software renderer for the GPU
// layer, and synthetic input. Time advances by a fixed step per frame, so
// everything a screen does over time is reproducible.
#pragma once

#include <cairo.h>

#include <cstdint>

#include "tests/support/test_support.h"
#include "ui/game.h"
#include "ui/input.h"

namespace testsupport {

class FrameDriver {
 public:
  static constexpr double kStep = 1.0 / 60;

  FrameDriver(int w, int h);
  ~FrameDriver();
  FrameDriver(const FrameDriver&) = delete;
  FrameDriver& operator=(const FrameDriver&) = delete;

  // One frame with this input (mouse position and buttons as given; motion
  // is worked out from the previous frame). Keys, wheel and edges apply to
  // this frame only.
  void frame(const ui::Input& in);
  // Frames with the pointer resting where it is, for `seconds`.
  void idle(double seconds);
  void key(int32_t key, bool ctrl = false);
  void wheel(double x, double y, double amount);
  void rightClick(double x, double y);
  void click(double x, double y);
  // Press at one point, move there in `steps` frames, release.
  void drag(double x0, double y0, double x1, double y1, int steps = 6);

  ui::Ctx& ctx() { return ctx_; }
  ui::Game& game() { return ui::Game::instance(); }
  double time() const { return ctx_.time; }
  cairo_surface_t* overlay() const { return surface_; }
  SoftwareTarget& target() { return target_; }

 private:
  ui::Input at(double x, double y, bool down) const;

  SoftwareTarget target_;
  cairo_surface_t* surface_;
  ui::Ctx ctx_;
  double mouseX_ = 0, mouseY_ = 0;
  bool down_ = false;
};

}  // namespace testsupport
