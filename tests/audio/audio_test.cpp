// Sound under SDL's dummy audio driver (a device that plays into nothing, so
// channels and music really run) and with no usable driver at all.
#include "audio/audio.h"

#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/fs.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::ScopedEnv;
using testsupport::TempDir;

const char* const kSfxNames[] = {"sfx_click", "sfx_pickup", "sfx_drop", "sfx_snap", "sfx_success"};

void putLe(std::string& out, uint32_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 255));
}

// One second of a quiet 440 Hz tone as 16-bit stereo WAV. SDL_mixer tells the
// format by content, so the file may be named .ogg like the real ones.
std::string toneWav() {
  constexpr uint32_t kRate = 44100, kFrames = kRate;
  std::string pcm;
  for (uint32_t i = 0; i < kFrames; ++i) {
    const auto sample = static_cast<int16_t>(3000 * std::sin(2 * M_PI * 440 * i / kRate));
    putLe(pcm, static_cast<uint16_t>(sample), 2);
    putLe(pcm, static_cast<uint16_t>(sample), 2);
  }
  std::string wav = "RIFF";
  putLe(wav, 36 + static_cast<uint32_t>(pcm.size()), 4);
  wav += "WAVEfmt ";
  putLe(wav, 16, 4);
  putLe(wav, 1, 2);  // PCM
  putLe(wav, 2, 2);  // channels
  putLe(wav, kRate, 4);
  putLe(wav, kRate * 4, 4);
  putLe(wav, 4, 2);
  putLe(wav, 16, 2);
  wav += "data";
  putLe(wav, static_cast<uint32_t>(pcm.size()), 4);
  return wav + pcm;
}

// An asset tree holding every sound but the ones named in `missing`.
class Sound : public ::testing::Test {
 protected:
  void makeAssets(const std::vector<std::string>& missing = {}) {
    for (const char* dir : {"assets/fonts", "assets/levels", "assets/audio"}) platform::fs::ensureDir(root.file(dir));
    const std::string tone = toneWav();
    std::vector<std::string> names(std::begin(kSfxNames), std::end(kSfxNames));
    names.push_back("bgm_calm");
    for (const std::string& name : names) {
      if (std::find(missing.begin(), missing.end(), name) == missing.end()) {
        root.write("assets/audio/" + name + ".ogg", tone);
      }
    }
  }

  // init() with the tree made, returning what it printed.
  std::string start(const std::vector<std::string>& missing = {}) {
    makeAssets(missing);
    ::testing::internal::CaptureStderr();
    audio::init();
    return ::testing::internal::GetCapturedStderr();
  }

  void TearDown() override { audio::shutdown(); }

  TempDir root;
  ScopedEnv assets{"TESSELLATRIX_ASSET_DIR", root.path()};
};

int playingChannels() { return Mix_Playing(-1); }

TEST_F(Sound, WithoutAnAudioDriverEveryCallIsHarmless) {
  ScopedEnv driver("SDL_AUDIODRIVER", "no-such-driver");
  const std::string err = start();
  EXPECT_EQ(err.rfind("[audio] kein Klang-Subsystem: ", 0), 0u) << err;
  EXPECT_EQ(err.find('\n'), err.size() - 1) << "one line";
  EXPECT_FALSE(audio::ready());
  audio::setEnabled(false);
  audio::setEnabled(true);
  audio::setMusicVolume(1.7);
  audio::setSfxVolume(-3);
  for (audio::Sfx s : audio::kAllSfx) audio::play(s);
  audio::startMusic();
  audio::stopMusic();
  audio::shutdown();
  EXPECT_DOUBLE_EQ(audio::musicVolume(), 1.0) << "volumes are still kept";
  EXPECT_DOUBLE_EQ(audio::sfxVolume(), 0.0);
  EXPECT_EQ(Mix_QuerySpec(nullptr, nullptr, nullptr), 0) << "no mixer was opened";
}

TEST_F(Sound, StartsQuietlyWithEverySoundLoaded) {
  EXPECT_EQ(start(), "");
  ASSERT_TRUE(audio::ready());
  EXPECT_EQ(Mix_AllocateChannels(-1), 16);
  EXPECT_EQ(Mix_VolumeMusic(-1), 44) << "the default 0.35 of full volume";
  EXPECT_EQ(Mix_PlayingMusic(), 0) << "music waits for startMusic";
  EXPECT_EQ(playingChannels(), 0);
}

TEST_F(Sound, MusicVolumeIsClampedAndApplied) {
  audio::setMusicVolume(0.5);
  start();
  EXPECT_EQ(Mix_VolumeMusic(-1), 64) << "a volume set before start is applied at start";
  audio::setMusicVolume(1.7);
  EXPECT_DOUBLE_EQ(audio::musicVolume(), 1.0);
  EXPECT_EQ(Mix_VolumeMusic(-1), 128);
  audio::setMusicVolume(-0.2);
  EXPECT_DOUBLE_EQ(audio::musicVolume(), 0.0);
  EXPECT_EQ(Mix_VolumeMusic(-1), 0);
  audio::setMusicVolume(std::nan(""));
  EXPECT_DOUBLE_EQ(audio::musicVolume(), 0.0);
}

TEST_F(Sound, AnEffectPlaysOnceAtTheEffectsVolume) {
  start();
  audio::setSfxVolume(0.5);
  audio::play(audio::Sfx::Snap);
  ASSERT_EQ(playingChannels(), 1);
  for (int ch = 0; ch < 16; ++ch) {
    if (Mix_Playing(ch)) {
      EXPECT_EQ(Mix_VolumeChunk(Mix_GetChunk(ch), -1), 64);
    }
  }
  audio::play(audio::Sfx::Click);
  EXPECT_EQ(playingChannels(), 2) << "each effect on the next free channel";
  audio::setSfxVolume(2.0);
  EXPECT_DOUBLE_EQ(audio::sfxVolume(), 1.0);
}

TEST_F(Sound, EffectsVolumeZeroUsesNoChannel) {
  start();
  audio::setSfxVolume(0);
  for (audio::Sfx s : audio::kAllSfx) audio::play(s);
  EXPECT_EQ(playingChannels(), 0);
}

TEST_F(Sound, SoundSwitchedOffPlaysNoEffects) {
  start();
  audio::setEnabled(false);
  audio::play(audio::Sfx::Success);
  EXPECT_EQ(playingChannels(), 0);
  audio::setEnabled(true);
  audio::play(audio::Sfx::Success);
  EXPECT_EQ(playingChannels(), 1);
}

TEST_F(Sound, OffThenOnLeavesTheMusicSilentUntilItIsStartedAgain) {
  start();
  audio::startMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 1);
  audio::setEnabled(false);
  EXPECT_EQ(Mix_PlayingMusic(), 0);
  audio::setEnabled(true);
  EXPECT_EQ(Mix_PlayingMusic(), 0) << "switching on does not by itself resume the music";
  audio::startMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 1);
  audio::startMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 1) << "asking twice does not restart it";
}

TEST_F(Sound, MusicAskedForWhileOffStartsWhenSwitchedOn) {
  start();
  audio::setEnabled(false);
  audio::startMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 0);
  audio::setEnabled(true);
  EXPECT_EQ(Mix_PlayingMusic(), 1);
}

TEST_F(Sound, StoppedMusicStaysStopped) {
  start();
  audio::startMusic();
  audio::stopMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 0);
  audio::setEnabled(true);
  EXPECT_EQ(Mix_PlayingMusic(), 0);
}

TEST_F(Sound, AMissingEffectIsReportedOnceAndThenSilent) {
  const std::string err = start({"sfx_snap"});
  const std::string path = root.file("assets/audio/sfx_snap.ogg");
  EXPECT_EQ(err.rfind("[audio] Effekt fehlt: " + path + " (", 0), 0u) << err;
  EXPECT_EQ(err.find("[audio]", 1), std::string::npos) << "one message: " << err;
  EXPECT_EQ(err.back(), '\n');
  ASSERT_TRUE(audio::ready());
  audio::play(audio::Sfx::Snap);
  EXPECT_EQ(playingChannels(), 0);
  audio::play(audio::Sfx::Drop);
  EXPECT_EQ(playingChannels(), 1) << "the other effects still play";

  ::testing::internal::CaptureStderr();
  audio::init();
  audio::play(audio::Sfx::Snap);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "not reported again";
}

TEST_F(Sound, AnEffectFileThatIsNoSoundIsReportedLikeAMissingOne) {
  makeAssets();
  const std::string path = root.write("assets/audio/sfx_drop.ogg", "this is not a sound");
  ::testing::internal::CaptureStderr();
  audio::init();
  const std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.rfind("[audio] Effekt fehlt: " + path + " (", 0), 0u) << err;
  audio::play(audio::Sfx::Drop);
  EXPECT_EQ(playingChannels(), 0);
}

TEST_F(Sound, MissingMusicIsReportedAndTheEffectsStillPlay) {
  const std::string err = start({"bgm_calm"});
  EXPECT_EQ(err.rfind("[audio] Musik fehlt: " + root.file("assets/audio/bgm_calm.ogg") + " (", 0), 0u) << err;
  audio::startMusic();
  EXPECT_EQ(Mix_PlayingMusic(), 0);
  audio::play(audio::Sfx::Click);
  EXPECT_EQ(playingChannels(), 1);
}

TEST_F(Sound, ShutdownClosesTheDeviceAndAudioCanStartAgain) {
  start();
  audio::startMusic();
  audio::shutdown();
  EXPECT_FALSE(audio::ready());
  EXPECT_EQ(Mix_QuerySpec(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(SDL_WasInit(SDL_INIT_AUDIO), 0u);
  audio::play(audio::Sfx::Click);
  audio::shutdown();

  audio::init();
  ASSERT_TRUE(audio::ready());
  audio::play(audio::Sfx::Click);
  EXPECT_EQ(playingChannels(), 1);
}

}  // namespace
