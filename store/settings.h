// The player's preferences: one record for the whole process, edited in place
// by the screens and written to the settings file.
#pragma once

#include <cstdint>
#include <string>

namespace store {

enum class BoardLayout : int32_t { Scatter = 0, Tray = 1, ScrollTray = 2 };
enum class BoardZoomMode : int32_t { Off = 0, AutoOnPickup = 1, Pinch = 2 };
enum class RotationMode : int32_t { Off = 0, Rot180 = 1, Rot90 = 2 };

// An optional colour; unset means the theme's built-in colour is used.
struct OptColor {
  bool set = false;
  uint32_t rgb = 0;  // 0xRRGGBB
};

// The interface sizes offered, in percent: the logical pixel grows by them.
inline constexpr int kInterfaceScales[] = {100, 125, 150, 200};

struct Settings {
  std::string language;  // empty: follow the system language
  bool soundOn = true;
  int difficulty = 1;
  double musicVolume = 0.35;
  double sfxVolume = 0.75;
  BoardLayout boardLayout = BoardLayout::ScrollTray;
  BoardZoomMode boardZoomMode = BoardZoomMode::AutoOnPickup;
  RotationMode rotationMode = RotationMode::Off;
  bool showSecondRow = true;
  OptColor bgColor;
  OptColor boardColor;
  OptColor trayBgColor;
  OptColor trayBorderColor;
  OptColor gridColor;
  bool hideConnectedBorder = false;
  int windowW = 1280;
  int windowH = 800;
  int windowX = -1;  // -1: let the system place the window
  int windowY = -1;
  bool maximized = false;
  bool fullscreen = false;
  bool reducedMotion = false;
  int interfaceScale = 100;  // percent: 100, 125, 150 or 200
  bool strongOutlines = false;
};

}  // namespace store
