// The palette every screen and widget shares, and the layout class rule.
#pragma once

#include <cstdint>

#include "ui/input.h"

namespace ui {

inline constexpr uint32_t kColorBackground = 0x0e1320;
inline constexpr uint32_t kColorPanel = 0x182033;
inline constexpr uint32_t kColorBorder = 0x2a3350;
inline constexpr uint32_t kColorAccent = 0xf5a623;
inline constexpr uint32_t kColorText = 0xf2f2f2;
inline constexpr uint32_t kColorMuted = 0x8892a6;
inline constexpr uint32_t kColorDarkOnAccent = 0x1a1a1a;
inline constexpr uint32_t kColorGreen = 0x4caf50;
inline constexpr uint32_t kColorLightGreen = 0xa5d6a7;

// Widgets and screens with two sizes use the large one from 900 x 620 up.
inline bool largeLayout(const Ctx& ctx) { return ctx.width >= 900 && ctx.height >= 620; }

}  // namespace ui
