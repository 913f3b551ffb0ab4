// The whole life of the process: start-up, the frame loop, shutdown.
#pragma once

namespace app {

// Returns the process exit status.
int run(int argc, char** argv);

}  // namespace app
