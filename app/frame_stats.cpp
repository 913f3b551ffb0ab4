#include "app/frame_stats.h"

#include <cstdio>

namespace app {

std::string FrameStats::record(double cpuSeconds, double gpuSeconds, double now, int drawCalls, int pixelW,
                               int pixelH) {
  ++frames_;
  cpu_ += cpuSeconds;
  gpu_ += gpuSeconds;
  if (now - windowStart_ < 1.0) return {};
  char line[160];
  std::snprintf(line, sizeof line, "[stats] %3d fps   CPU %5.1f ms   GPU %5.1f ms   %d Kopien  %dx%d\n", frames_,
                1000.0 * cpu_ / frames_, 1000.0 * gpu_ / frames_, drawCalls, pixelW, pixelH);
  frames_ = 0;
  cpu_ = gpu_ = 0;
  windowStart_ = now;
  return line;
}

}  // namespace app
