#include "app/frame_stats.h"

#include <algorithm>
#include <cstdio>

namespace app {

void FrameStats::count(double cpuSeconds, double gpuSeconds) {
  ++frames_;
  cpu_ += cpuSeconds;
  gpu_ += gpuSeconds;
}

std::string FrameStats::report(double now, int drawCalls, int pixelW, int pixelH) {
  if (now < due()) return {};
  const int divisor = std::max(frames_, 1);
  char line[160];
  std::snprintf(line, sizeof line, "[stats] %3d fps   CPU %5.1f ms   GPU %5.1f ms   %d Kopien  %dx%d\n", frames_,
                1000.0 * cpu_ / divisor, 1000.0 * gpu_ / divisor, drawCalls, pixelW, pixelH);
  frames_ = 0;
  cpu_ = gpu_ = 0;
  windowStart_ = now;
  return line;
}

}  // namespace app
