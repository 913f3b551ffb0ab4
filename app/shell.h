// The whole life of the process: start-up, the frame loop, shutdown.
#pragma once

namespace app {

// Returns the process exit status. Frames are drawn only when the picture
// changes, paced to the display (app/pacing.h).
int run(int argc, char** argv);

}  // namespace app
