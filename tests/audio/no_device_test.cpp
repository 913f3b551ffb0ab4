// Without a usable sound device the game's own "[audio]" line is the only
// thing the player sees on standard error.
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "tests/support/stderr_capture.h"
#include "tests/support/test_support.h"

TEST(NoSoundDevice, OnlyTheGamesOwnLineIsPrinted) {
  // A device name no machine has makes the sound library fail everywhere.
  testsupport::ScopedEnv driver("SDL_AUDIODRIVER", "alsa"), device("AUDIODEV", "tessellatrix-no-such-device");
  const std::string err = testsupport::stderrOf([] {
    audio::init();
    EXPECT_FALSE(audio::ready());
  });
  EXPECT_EQ(err.find("[audio] Mix_OpenAudio: "), 0u) << err;
  EXPECT_EQ(err.find('\n'), err.size() - 1) << err;
}
