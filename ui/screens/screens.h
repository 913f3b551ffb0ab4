// Factories of every screen; each returns a new screen owned by the caller.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ui/game.h"

namespace ui {

std::unique_ptr<Screen> makeSplashScreen();
std::unique_ptr<Screen> makeMenuScreen();
std::unique_ptr<Screen> makeLevelSelectScreen();
std::unique_ptr<Screen> makePlayingScreen(std::string levelId, int rows, int cols);
std::unique_ptr<Screen> makeSolvedScreen(std::string levelId, int rows, int cols, int64_t elapsedMs);
std::unique_ptr<Screen> makeGalleryScreen();
std::unique_ptr<Screen> makeSettingsScreen();
std::unique_ptr<Screen> makeAboutScreen();
std::unique_ptr<Screen> makeLicensesScreen();

}  // namespace ui
