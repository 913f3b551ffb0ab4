// Sound must never take the game down: with no usable driver nothing plays
// and the game's one "[audio]" line is all that is printed (not the sound
// library's own complaints), and on SDL's dummy device an effect whose file
// is missing stays silent.
#include "audio/audio.h"

#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

TEST(Sound, MissingDevicesAndFilesStaySilent) {
  testsupport::TempDir root;  // an asset tree whose only sound is the click
  for (const char* dir : {"assets/fonts", "assets/levels", "assets/audio"}) platform::fs::ensureDir(root.file(dir));
  // Two silent samples of 8 kHz mono WAV; the format is told by content, not by name.
  root.write("assets/audio/sfx_click.ogg", std::string("RIFF\x28\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0"
                                                       "\x80\x3e\0\0\x02\0\x10\0" "data\x04\0\0\0\0\0\0\0", 48));
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  // A device name no machine has makes ALSA fail on every machine.
  testsupport::ScopedEnv device("AUDIODEV", "tessellatrix-no-such-device");
  for (const auto& [driver, opens] : {std::pair("no-such-driver", false), {"alsa", false}, {"dummy", true}}) {
    SCOPED_TRACE(driver);
    testsupport::ScopedEnv env("SDL_AUDIODRIVER", driver);
    testing::internal::CaptureStderr();
    audio::init();
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(audio::ready(), opens);
    EXPECT_TRUE(opens || (err.rfind("[audio] ", 0) == 0 && err.find('\n') == err.size() - 1)) << err;
    audio::setEnabled(false);
    audio::startMusic();
    for (audio::Sfx s : audio::kAllSfx) audio::play(s);
    EXPECT_EQ(Mix_Playing(-1), 0) << "sound switched off";
    audio::setEnabled(true);
    for (audio::Sfx s : audio::kAllSfx) audio::play(s);
    EXPECT_EQ(Mix_Playing(-1), opens ? 1 : 0) << "the click, and only on a device";
    EXPECT_EQ(Mix_PlayingMusic(), 0);
    audio::shutdown();
  }
}

}  // namespace
