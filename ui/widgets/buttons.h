// Clickable widgets. Each computes nothing but its looks from the rect it is
// given, asks the context for the click (ui::Ctx::takeClick, so the first
// widget under the pointer wins it) and plays the click sound when it fires.
#pragma once

#include <cstdint>
#include <string>

#include "ui/input.h"

namespace ui {

// Difficulty chip looks: 1 solved (green, with a check mark), 2 suggested
// (accent outline), 3 in progress (accent fill); anything else plain.
using ChipState = int32_t;

bool menuButton(Ctx& ctx, const Rect& r, const std::string& label, bool primary);
bool plainButton(Ctx& ctx, const Rect& r, const std::string& label, bool primary);
// Always false while disabled (the label is drawn dimmed).
bool letterButton(Ctx& ctx, const Rect& r, const std::string& label, bool disabled);
bool difficultyChip(Ctx& ctx, const Rect& r, const std::string& label, ChipState state);
bool colorSwatch(Ctx& ctx, const Rect& r, uint32_t rgb, bool selected);

}  // namespace ui
