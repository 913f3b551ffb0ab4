// The settings page: one scrolled column of rows that edit the live settings
// record in place, with three modal layers over it (the custom colour picker,
// the language list and the reset confirmation). While one is open the page
// beneath runs behind an InputShield, so it is drawn but cannot be touched.
//
// Changes take effect in the frame they are made (sound and language at
// once, the board's looks in the next puzzle) and are written to the
// settings file when the pointer is let go, so a slider dragged across the
// page is written once, not once a frame.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/settings.h"
#include "ui/game.h"
#include "ui/widgets/color_picker.h"

namespace ui {

// The page's column; in a right-to-left language every row is mirrored in it.
struct SettingsColumn {
  double x = 0, w = 0;
  bool rtl = false;
  // A rect `offset` from the column's start edge (left, or right when mirrored).
  Rect place(double offset, double y, double width, double height) const {
    return Rect{rtl ? x + w - offset - width : x + offset, y, width, height};
  }
  // The part of the column `offset` from its start edge, `width` wide.
  SettingsColumn part(double offset, double width) const {
    return SettingsColumn{place(offset, 0, width, 0).x, width, rtl};
  }
};

// A row's label: small, bold and muted, at the column's start edge.
void rowLabel(Ctx& ctx, const SettingsColumn& c, double y, const std::string& text);
// The colour setting a picker target edits: 0 background, 1 board, 2 tray
// background, 3 tray border, 4 grid lines.
store::OptColor& colorSetting(store::Settings& s, int target);
// The name of a target's row, which heads its picker.
std::string colorTitle(int target);

class SettingsScreen : public Screen {
 public:
  void update(Ctx& ctx) override;
  void saveNow() override;

  // One colour row: its label, "default", the preset swatches and the button
  // that opens the picker for `target`. Returns the y of the next row.
  double colorRow(Ctx& ctx, const SettingsColumn& c, double y, int target, const std::string& label,
                  store::OptColor& color, const uint32_t* presets, int count);
  // The custom colour picker over the page, while one is open; OK writes the
  // colour into the target's setting.
  void drawPicker(Ctx& ctx, store::Settings& settings);

 private:
  enum class Modal { None, Picker, Language, Reset };

  void drawPage(Ctx& ctx, store::Settings& s, const Rect& view);
  void scrollPage(Ctx& ctx, const Rect& view);
  // Draws the rows from `y` on; returns where the last one ends.
  double drawRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y);
  double choiceRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y);
  double soundRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y);
  bool volumeRow(Ctx& ctx, const SettingsColumn& c, double* y, const char* labelKey, double* value);
  double buttonRows(Ctx& ctx, const store::Settings& s, const SettingsColumn& c, double y);
  double accessRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y);
  void languageList(Ctx& ctx, store::Settings& s);
  void resetDialog(Ctx& ctx);
  void persist(const Ctx& ctx);

  Modal modal_ = Modal::None;
  int pickerTarget_ = -1;  // the colour row whose picker is open
  ColorPickerState picker_;
  double offset_ = 0, contentH_ = 0;  // the page's scroll and height (last frame's)
  double languageOffset_ = 0;
  std::vector<Rect> sliders_;  // where the sliders were, so a press on one does not scroll
  double lastSample_ = -1;     // when the effects slider last played its sample
  bool dirty_ = false;         // changed since the settings file was written
};

}  // namespace ui
