// The once-a-second statistics line (TESSELLATRIX_STATS): frames in the last
// window and the mean CPU and GPU milliseconds per frame.
#pragma once

#include <string>

namespace app {

class FrameStats {
 public:
  explicit FrameStats(double now) : windowStart_(now) {}
  // Counts one frame. Once at least a second has passed since the window
  // began, returns the "[stats]" line and starts a new window; else "".
  std::string record(double cpuSeconds, double gpuSeconds, double now, int drawCalls, int pixelW, int pixelH);

 private:
  int frames_ = 0;
  double cpu_ = 0, gpu_ = 0;
  double windowStart_;
};

}  // namespace app
