// Without a usable sound device the game's own "[audio]" line is the only
// thing the player sees on standard error.
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/test_support.h"

namespace {

TEST(NoSoundDevice, OnlyTheGamesOwnLineIsPrinted) {
  // A device name no machine has makes the sound library fail everywhere.
  testsupport::ScopedEnv driver("SDL_AUDIODRIVER", "alsa");
  testsupport::ScopedEnv device("AUDIODEV", "tessellatrix-no-such-device");
  testsupport::StderrCapture err;
  audio::init();
  EXPECT_FALSE(audio::ready());
  audio::shutdown();
  EXPECT_EQ(err.text().rfind("[audio] Mix_OpenAudio: ", 0), 0u) << err.text();
  EXPECT_EQ(err.text().find('\n'), err.text().size() - 1) << err.text();
}

}  // namespace
