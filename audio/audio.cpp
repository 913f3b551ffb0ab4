#include "audio/audio.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <alsa/asoundlib.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "platform/paths.h"

namespace audio {

namespace {

constexpr const char* kSfxFiles[] = {
    "assets/audio/sfx_click.ogg", "assets/audio/sfx_pickup.ogg", "assets/audio/sfx_drop.ogg",
    "assets/audio/sfx_snap.ogg",  "assets/audio/sfx_success.ogg",
};
constexpr const char* kMusicFile = "assets/audio/bgm_calm.ogg";
constexpr int kChannels = 16;

struct ChunkDeleter {
  void operator()(Mix_Chunk* c) const { Mix_FreeChunk(c); }
};
struct MusicDeleter {
  void operator()(Mix_Music* m) const { Mix_FreeMusic(m); }
};
using ChunkPtr = std::unique_ptr<Mix_Chunk, ChunkDeleter>;
using MusicPtr = std::unique_ptr<Mix_Music, MusicDeleter>;

struct State {
  bool ready = false;  // the mixer is open
  bool enabled = true;
  double musicVolume = 0.35;
  double sfxVolume = 0.75;
  bool musicWanted = false;  // startMusic was called and not undone since
  MusicPtr music;
  std::map<Sfx, ChunkPtr> chunks;  // an effect whose file failed has no entry
};

State& state() {
  static State s;
  return s;
}

// NaN counts as silence rather than slipping through a clamp.
double clampUnit(double v) { return v > 1.0 ? 1.0 : (v > 0.0 ? v : 0.0); }

int mixerVolume(double v) { return static_cast<int>(v * MIX_MAX_VOLUME); }

void startMusicIfWanted() {
  State& s = state();
  if (s.ready && s.enabled && s.musicWanted && s.music && !Mix_PlayingMusic()) Mix_PlayMusic(s.music.get(), -1);
}

// Files are opened here rather than by the mixer so that a missing one is
// reported as such, and the format is told by content, not by file name.
SDL_RWops* openAsset(const std::string& path) { return SDL_RWFromFile(path.c_str(), "rb"); }

void loadEffects(State& s) {
  for (Sfx sfx : kAllSfx) {
    const std::string path = paths::asset(kSfxFiles[static_cast<int>(sfx)]);
    SDL_RWops* rw = openAsset(path);
    ChunkPtr chunk(rw ? Mix_LoadWAV_RW(rw, 1) : nullptr);
    if (chunk) {
      s.chunks[sfx] = std::move(chunk);
    } else {
      std::fprintf(stderr, "[audio] Effekt fehlt: %s (%s)\n", path.c_str(), SDL_GetError());
    }
  }
}

void loadMusic(State& s) {
  const std::string path = paths::asset(kMusicFile);
  SDL_RWops* rw = openAsset(path);
  s.music.reset(rw ? Mix_LoadMUS_RW(rw, 1) : nullptr);
  if (!s.music) std::fprintf(stderr, "[audio] Musik fehlt: %s (%s)\n", path.c_str(), SDL_GetError());
}

// ALSA's library prints its own lines for every configuration step that
// fails when there is no sound card; SDL's error text, printed once in the
// game's own words, says all a player needs.
void ignoreAlsaMessage(const char*, int, const char*, int, const char*, ...) {}

}  // namespace

void init() {
  State& s = state();
  if (s.ready) return;
  snd_lib_error_set_handler(ignoreAlsaMessage);
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
    std::fprintf(stderr, "[audio] kein Klang-Subsystem: %s\n", SDL_GetError());
    return;
  }
  if (Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 1024) != 0) {
    std::fprintf(stderr, "[audio] Mix_OpenAudio: %s\n", SDL_GetError());
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return;
  }
  Mix_AllocateChannels(kChannels);
  loadEffects(s);
  loadMusic(s);
  s.ready = true;
  Mix_VolumeMusic(mixerVolume(s.musicVolume));
}

void shutdown() {
  State& s = state();
  if (!s.ready) return;
  Mix_HaltMusic();
  Mix_HaltChannel(-1);
  s.music.reset();
  s.chunks.clear();
  Mix_CloseAudio();
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
  s.ready = false;
}

void setEnabled(bool on) {
  State& s = state();
  s.enabled = on;
  if (!on) {
    s.musicWanted = false;
    if (s.ready) Mix_HaltMusic();
    return;
  }
  startMusicIfWanted();
}

void setMusicVolume(double v) {
  State& s = state();
  s.musicVolume = clampUnit(v);
  if (s.ready) Mix_VolumeMusic(mixerVolume(s.musicVolume));
}

void setSfxVolume(double v) { state().sfxVolume = clampUnit(v); }

void play(Sfx sfx) {
  State& s = state();
  if (!s.ready || !s.enabled || s.sfxVolume <= 0) return;
  const auto it = s.chunks.find(sfx);
  if (it == s.chunks.end()) return;
  Mix_VolumeChunk(it->second.get(), mixerVolume(s.sfxVolume));
  Mix_PlayChannel(-1, it->second.get(), 0);
}

void startMusic() {
  state().musicWanted = true;
  startMusicIfWanted();
}

void stopMusic() {
  State& s = state();
  s.musicWanted = false;
  if (s.ready) Mix_HaltMusic();
}

bool ready() { return state().ready; }
double musicVolume() { return state().musicVolume; }
double sfxVolume() { return state().sfxVolume; }

}  // namespace audio
