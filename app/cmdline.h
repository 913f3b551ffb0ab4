// The command line and the start-screen override.
#pragma once

#include <string>
#include <vector>

#include "store/settings.h"
#include "ui/game.h"

namespace app {

enum class InfoRequest { None, Version, Help };

// First pass, before anything is initialised: the first argument that is
// --version or --help decides.
InfoRequest findInfoRequest(int argc, const char* const* argv);
std::string versionText();
std::string helpText();

// Second pass, after the settings are loaded: --fullscreen, --windowed and
// --size WxH change the settings record itself, left to right. Returns true
// when a valid --size was given (the window is then centred at that size).
bool applyWindowOptions(int argc, const char* const* argv, store::Settings& settings);
// Every argument that is neither an option nor the value of --size: the
// pictures to open as puzzles (the desktop entry passes the files a file
// manager opens with the game).
std::vector<std::string> pictureArguments(int argc, const char* const* argv);

// TESSELLATRIX_SCREEN: the start state for a screen name, or false for a name
// that is not one of them. "playing" starts level1 at the selected difficulty.
bool startStateFor(const std::string& name, const store::Settings& settings, ui::GameState* out);
inline constexpr const char* kScreenUsage = "TESSELLATRIX_SCREEN: menu levels playing gallery settings about licenses\n";

}  // namespace app
