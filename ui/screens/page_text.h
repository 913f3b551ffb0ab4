// The text looks of the information pages (about, licences).
#pragma once

#include <cstdint>

#include "ui/text.h"
#include "ui/widgets/theme.h"

namespace ui {

struct PageLook {
  double size = 15;
  bool bold = false;
  uint32_t color = kColorText;
};

inline constexpr PageLook kPageTitle{26, true, kColorAccent};
inline constexpr PageLook kPageStrong{17, true, kColorText};
inline constexpr PageLook kPagePlain{15, false, kColorText};
inline constexpr PageLook kPageMuted{14, false, kColorMuted};
inline constexpr PageLook kPageLink{14, false, kColorAccent};

inline TextStyle pageStyle(const PageLook& look, double maxWidth) {
  TextStyle s;
  s.size = look.size;
  s.bold = look.bold;
  s.color = look.color;
  s.maxWidth = maxWidth;
  return s;
}

}  // namespace ui
