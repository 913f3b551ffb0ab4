// The custom colour picker: a hue bar, a brightness slider and a preview of
// the colour they make, in a modal box over the screen.
#pragma once

#include <cstdint>
#include <string>

#include "ui/input.h"

namespace ui {

// Hue in degrees (0..360, 360 being red again), lightness and saturation in
// 0..1; each channel is rounded to the nearest of 0..255.
uint32_t hslColor(double hue, double lightness, double saturation);
// The picker's colour: a muted saturation, and a lightness kept off pure
// black and white so every choice still reads as a colour.
uint32_t pickerColor(double hue, double lightness);
// The hue under the pointer at `px` on a bar, clamped to the bar's ends.
double hueAt(const Rect& bar, double px);

// What the picker keeps between frames while it is open.
struct ColorPickerState {
  double hue = 210;
  double lightness = 0.5;
  bool draggingHue = false;  // a press on the bar follows the pointer until release
};

enum class PickerResult { Open, Cancelled, Chosen };

// Draws the picker, headed by `title`, over everything and takes the frame's input. Chosen
// (OK or Return) leaves the colour in pickerColor(state.hue, state.lightness);
// Cancel and Escape give Cancelled. Clicks beside the box do nothing, so the
// end of a drag that strays out of it loses nothing.
PickerResult colorPicker(Ctx& ctx, const std::string& title, ColorPickerState& state);

}  // namespace ui
