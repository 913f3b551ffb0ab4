// Sound must never take the game down: with no usable driver, or with SDL's
// dummy device and no sound files at all, every call is harmless and silent.
#include "audio/audio.h"

#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

TEST(Sound, WithoutADeviceOrSoundFilesEveryCallStaysSilent) {
  testsupport::TempDir root;  // an asset tree without its audio folder
  platform::fs::ensureDir(root.file("assets/fonts"));
  platform::fs::ensureDir(root.file("assets/levels"));
  testsupport::ScopedEnv assets("TESSELLATRIX_ASSET_DIR", root.path());
  for (const auto& [driver, opens] : {std::pair("no-such-driver", false), std::pair("dummy", true)}) {
    SCOPED_TRACE(driver);
    testsupport::ScopedEnv env("SDL_AUDIODRIVER", driver);
    audio::init();
    EXPECT_EQ(audio::ready(), opens);
    audio::setSfxVolume(1);
    audio::setEnabled(false);
    audio::setEnabled(true);
    audio::startMusic();
    for (audio::Sfx s : audio::kAllSfx) audio::play(s);
    EXPECT_EQ(Mix_Playing(-1) + Mix_PlayingMusic(), 0);
    audio::shutdown();
  }
}

}  // namespace
