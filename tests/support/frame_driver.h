// Runs the game's screens frame by frame in-process through the very frame
// function the game's loop calls, on SDL's software renderer, with synthetic
// input. Time advances by a fixed step per frame, so everything a screen
// does over time is reproducible.
#pragma once

#include <cstdint>

#include "tests/support/test_support.h"
#include "ui/frame_layer.h"
#include "ui/game.h"
#include "ui/input.h"

namespace testsupport {

class FrameDriver {
 public:
  static constexpr double kStep = 1.0 / 60;

  // A window of w × h logical units, drawn at `scale` pixels per unit.
  FrameDriver(int w, int h, double scale = 1.0);
  ~FrameDriver();
  FrameDriver(const FrameDriver&) = delete;
  FrameDriver& operator=(const FrameDriver&) = delete;

  // One frame with this input (motion is worked out from the previous
  // frame). Keys, wheel and edges apply to this frame only.
  void frame(const ui::Input& in);
  // Frames with the pointer resting where it is, for `seconds`.
  void idle(double seconds);
  void key(int32_t key, bool ctrl = false);
  void wheel(double x, double y, double amount);
  void rightClick(double x, double y);
  void click(double x, double y);
  // Press at one point, move there in `steps` frames, release.
  void drag(double x0, double y0, double x1, double y1, int steps = 6);

  ui::Game& game() { return ui::Game::instance(); }
  double time() const { return ctx_.time; }
  const ui::Ctx& ctx() const { return ctx_; }
  // 0xAARRGGBB of the presented frame at pixel (x, y).
  uint32_t pixel(int x, int y) const { return target_.pixel(x, y); }

 private:
  ui::Input at(double x, double y, bool down) const;

  SoftwareTarget target_;
  ui::FrameLayer layer_;
  ui::Ctx ctx_;
  int w_, h_;
  double scale_;
  double mouseX_ = 0, mouseY_ = 0;
  bool down_ = false;
};

}  // namespace testsupport
