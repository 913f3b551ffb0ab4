// The whole life of the process: start-up, the frame loop, shutdown.
#pragma once

namespace app {

enum class Frames {
  OnDemand,   // only when the picture changes, paced to the display (app/pacing.h)
  EveryPass,  // on every pass, as fast as the renderer presents: the frame benchmarks' way to measure a frame
};

// Returns the process exit status.
int run(int argc, char** argv, Frames frames = Frames::OnDemand);

}  // namespace app
