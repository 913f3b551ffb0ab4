// Every test process gets its own home, data, cache and runtime folders, and
// SDL's headless drivers, so no test touches the player's files or needs a
// display or sound card.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/fs.h"
#include "tests/support/test_support.h"

int main(int argc, char** argv) {
  testsupport::TempDir home;
  ::setenv("HOME", home.path().c_str(), 1);
  for (const char* var : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    const std::string dir = home.path() + "/" + var;
    platform::fs::ensureDir(dir);
    ::setenv(var, dir.c_str(), 1);
  }
  ::setenv("SDL_VIDEODRIVER", "dummy", 1);
  ::setenv("SDL_AUDIODRIVER", "dummy", 1);
  ::unsetenv("TESSELLATRIX_STATS");
  ::unsetenv("TESSELLATRIX_SCREEN");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
