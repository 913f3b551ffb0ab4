#include "tests/support/frame_driver.h"

#include <cmath>

#include "ui/frame.h"
#include "ui/gpu.h"
#include "ui/text.h"

namespace testsupport {

FrameDriver::FrameDriver(int w, int h, double scale)
    : target_(static_cast<int>(std::lround(w * scale)), static_cast<int>(std::lround(h * scale))),
      w_(static_cast<int>(std::lround(w * scale))),
      h_(static_cast<int>(std::lround(h * scale))),
      scale_(scale) {
  ui::gpuInit(target_.renderer());
  ui::registerBundledFonts();
  ctx_.time = 1.0;
}

FrameDriver::~FrameDriver() {
  layer_.release();
  ui::gpuShutdown();
}

void FrameDriver::frame(const ui::Input& in) {
  ctx_.in = in;
  ctx_.in.dx = in.mouseX - mouseX_;
  ctx_.in.dy = in.mouseY - mouseY_;
  mouseX_ = in.mouseX;
  mouseY_ = in.mouseY;
  down_ = in.mouseDown;
  ctx_.time += kStep;
  ctx_.dt = kStep;
  ui::drawFrame(target_.renderer(), layer_, ctx_, w_, h_, scale_);
  SDL_RenderPresent(target_.renderer());
}

ui::Input FrameDriver::at(double x, double y, bool down) const {
  ui::Input in;
  in.mouseX = x;
  in.mouseY = y;
  in.mouseDown = down;
  return in;
}

void FrameDriver::idle(double seconds) {
  for (double t = 0; t < seconds; t += kStep) frame(at(mouseX_, mouseY_, down_));
}

void FrameDriver::key(int32_t key, bool ctrl) {
  ui::Input in = at(mouseX_, mouseY_, down_);
  in.keys.push_back(key);
  in.ctrl = ctrl;
  frame(in);
}

void FrameDriver::wheel(double x, double y, double amount) {
  ui::Input in = at(x, y, false);
  in.wheel = amount;
  frame(in);
}

void FrameDriver::rightClick(double x, double y) {
  ui::Input in = at(x, y, false);
  in.rightPressed = true;
  frame(in);
}

void FrameDriver::click(double x, double y) { drag(x, y, x, y, 0); }

void FrameDriver::drag(double x0, double y0, double x1, double y1, int steps) {
  ui::Input press = at(x0, y0, true);
  press.mousePressed = true;
  frame(press);
  for (int i = 1; i <= steps; ++i) {
    frame(at(x0 + (x1 - x0) * i / steps, y0 + (y1 - y0) * i / steps, true));
  }
  ui::Input release = at(x1, y1, false);
  release.mouseReleased = true;
  frame(release);
}

}  // namespace testsupport
