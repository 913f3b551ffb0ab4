// The once-a-second statistics line (TESSELLATRIX_STATS): frames drawn in the
// last window and the mean CPU and GPU milliseconds per frame. A screen at
// rest draws nothing, and its line says so.
#pragma once

#include <string>

namespace app {

class FrameStats {
 public:
  explicit FrameStats(double now) : windowStart_(now) {}
  void count(double cpuSeconds, double gpuSeconds);
  // When the next line is due.
  double due() const { return windowStart_ + 1.0; }
  // Once at least a second has passed since the window began, returns the
  // "[stats]" line and starts a new window; else "". The draw calls and
  // size are the last frame's.
  std::string report(double now, int drawCalls, int pixelW, int pixelH);

 private:
  int frames_ = 0;
  double cpu_ = 0, gpu_ = 0;
  double windowStart_;
};

}  // namespace app
