// Five short effects and one looping music track through SDL_mixer. Every
// function is safe to call when no audio device could be opened: it then
// does nothing.
#pragma once

namespace audio {

enum class Sfx : int { Click = 0, Pickup = 1, Drop = 2, Snap = 3, Success = 4 };

inline constexpr Sfx kAllSfx[] = {Sfx::Click, Sfx::Pickup, Sfx::Drop, Sfx::Snap, Sfx::Success};

// Opens the device and loads every sound; a missing file is reported once
// and stays silent.
void init();
void shutdown();
// Off also forgets that music was asked for, so switching back on stays
// silent until the caller starts the music again.
void setEnabled(bool on);
// Both clamp to 0..1.
void setMusicVolume(double v);
void setSfxVolume(double v);
void play(Sfx s);
void startMusic();
void stopMusic();

// What the module holds, for the settings screen and tests.
bool ready();
double musicVolume();
double sfxVolume();

}  // namespace audio
