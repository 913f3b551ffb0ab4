// Times and level names as the screens show them.
#pragma once

#include <string>

#include "core/catalog.h"

namespace ui {

// "mm:ss" below an hour, "h:mm:ss" from there on.
std::string formatTime(long long ms);
// "dd.mm.yyyy hh:mm" in local time.
std::string formatDateTime(long long msSinceEpoch);
// "LVL 7" on a built-in level's card, a word for "photo" on the player's own.
std::string levelBadge(const core::Level& level);
// "Level 7", or the name the player's picture came with.
std::string levelTitle(const core::Level& level);

}  // namespace ui
