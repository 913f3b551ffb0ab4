// The settings page's rows, top to bottom: the option rows, the on/off rows,
// the five colour rows and the preview of the colours they make, the volume
// sliders and the sound switch, the language and reset buttons, and the rows
// of motion, interface size and piece outlines.
#include <algorithm>
#include <cmath>
#include <vector>

#include "audio/audio.h"
#include "core/catalog.h"
#include "i18n/i18n.h"
#include "ui/draw.h"
#include "ui/screens/settings_screen.h"
#include "ui/text.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

// The first entry of each table is not a colour: it stands for "default",
// which unsets the setting so the game's own colour is used.
constexpr uint32_t kDefaultEntry = 0xFFFFFFFF;
constexpr uint32_t kBgPresets[] = {kDefaultEntry, 0x0a0a14, 0x1a1a2e, 0x1b2838, 0x0e1a0e, 0x1a0e0e, 0x18140e};
constexpr uint32_t kBoardPresets[] = {kDefaultEntry, 0x4a9eff, 0x4aff6a, 0xff4a6a, 0xffffff, 0x8b5cf6, 0x000000};
constexpr uint32_t kTrayBgPresets[] = {kDefaultEntry, 0x000000, 0x1a1a2e, 0x182033, 0x1f2937, 0x2a3350, 0xffffff};
constexpr uint32_t kTrayBorderPresets[] = {kDefaultEntry, 0x000000, 0x2a3350, 0x4a5470, 0x8892a6, 0xf5a623, 0xffffff};
constexpr uint32_t kGridPresets[] = {kDefaultEntry, 0x000000, 0x2a3350, 0x4a5470, 0x8892a6, 0xf5a623, 0xffffff};
constexpr int kPresetCount = 7;

// In the order of the page; a row's index is its picker target.
struct ColorRowDef {
  const char* labelKey;
  store::OptColor store::Settings::*field;
  const uint32_t* presets;
};
constexpr ColorRowDef kColorRows[] = {
    {"settings.bgColor", &store::Settings::bgColor, kBgPresets},
    {"settings.boardColor", &store::Settings::boardColor, kBoardPresets},
    {"settings.trayBgColor", &store::Settings::trayBgColor, kTrayBgPresets},
    {"settings.trayBorderColor", &store::Settings::trayBorderColor, kTrayBorderPresets},
    {"settings.gridColor", &store::Settings::gridColor, kGridPresets},
};

const ColorRowDef& colorRowDef(int target) {
  return kColorRows[std::clamp(target, 0, static_cast<int>(std::size(kColorRows)) - 1)];
}

const char* const kLayoutKeys[] = {"settings.boardLayout_scatter", "settings.boardLayout_tray",
                                   "settings.boardLayout_scrollTray"};
const char* const kZoomKeys[] = {"settings.boardZoom_off", "settings.boardZoom_autoOnPickup",
                                 "settings.boardZoom_wheel"};
const char* const kRotationKeys[] = {"settings.rotation_off", "settings.rotation_180", "settings.rotation_90"};

constexpr double kControlsBelow = 24;  // from a row's label to its controls
constexpr double kOptionH = 40, kOptionGap = 8;
constexpr double kRowGap = 20;
constexpr double kToggleH = 44;
constexpr double kSliderH = 24;
constexpr double kButtonW = 220, kButtonH = 40;
constexpr double kSampleInterval = 0.15;  // seconds between the effects slider's samples
constexpr double kSlotStep = 52, kSwatchAt = 50, kSwatchW = 44, kSwatchH = 34, kDefaultW = 90;
constexpr double kCustomW = 130, kCustomH = 30;
constexpr double kPreviewMaxW = 360, kPreviewH = 150;

uint32_t orDefault(const store::OptColor& c, uint32_t fallback) { return c.set ? c.rgb : fallback; }

// A line of equally wide buttons, the selected one drawn primary; the index
// clicked, or -1.
int optionButtons(Ctx& ctx, const SettingsColumn& c, double y, const std::vector<std::string>& labels, int selected) {
  const double n = static_cast<double>(labels.size());
  const double w = (c.w - kOptionGap * (n - 1)) / n;
  int clicked = -1;
  for (size_t i = 0; i < labels.size(); ++i) {
    const Rect r = c.place(static_cast<double>(i) * (w + kOptionGap), y, w, kOptionH);
    if (plainButton(ctx, r, labels[i], static_cast<int>(i) == selected)) clicked = static_cast<int>(i);
  }
  return clicked;
}

std::vector<std::string> translated(const char* const* keys, size_t n) {
  std::vector<std::string> out;
  for (size_t i = 0; i < n; ++i) out.push_back(i18n::tr(keys[i]));
  return out;
}

// A labelled line of option buttons at *y, which moves on to the next row;
// the index newly chosen, or -1 (also for the one already chosen).
int choiceRow(Ctx& ctx, const SettingsColumn& c, double* y, const char* labelKey,
              const std::vector<std::string>& labels, int selected) {
  rowLabel(ctx, c, *y, i18n::tr(labelKey));
  const int pick = optionButtons(ctx, c, *y + kControlsBelow, labels, selected);
  *y += kControlsBelow + kOptionH + kRowGap;
  return pick != selected ? pick : -1;
}

// An option row over an enumeration stored as 0, 1, 2.
template <typename Enum, size_t N>
double enumRow(Ctx& ctx, const SettingsColumn& c, double y, const char* labelKey, const char* const (&keys)[N],
               Enum* value, bool* changed) {
  const int pick = choiceRow(ctx, c, &y, labelKey, translated(keys, N), static_cast<int>(*value));
  if (pick >= 0) {
    *value = static_cast<Enum>(pick);
    *changed = true;
  }
  return y;
}

double difficultyRow(Ctx& ctx, const SettingsColumn& c, double y, int* difficulty, bool* changed) {
  std::vector<std::string> names;
  int selected = -1;
  for (const core::DifficultyDef& d : core::difficulties()) {
    if (d.index == *difficulty) selected = static_cast<int>(names.size());
    names.push_back(i18n::tr(d.nameKey));
  }
  const int pick = choiceRow(ctx, c, &y, "settings.difficulty", names, selected);
  if (pick >= 0) {
    *difficulty = core::difficulties()[static_cast<size_t>(pick)].index;
    *changed = true;
  }
  return y;
}

// 100 %, 125 %, 150 %, 200 %: the size of the logical pixel, from the next frame.
double interfaceSizeRow(Ctx& ctx, const SettingsColumn& c, double y, int* scale, bool* changed) {
  std::vector<std::string> labels;
  int selected = -1;
  for (const int size : store::kInterfaceScales) {
    if (size == *scale) selected = static_cast<int>(labels.size());
    labels.push_back(std::to_string(size) + " %");
  }
  const int pick = choiceRow(ctx, c, &y, "settings.interfaceSize", labels, selected);
  if (pick >= 0) {
    *scale = store::kInterfaceScales[pick];
    *changed = true;
  }
  return y;
}

double toggle(Ctx& ctx, const SettingsColumn& c, double y, const char* labelKey, bool* value, bool* changed) {
  const bool now = toggleRow(ctx, c.place(0, y, c.w, kToggleH), i18n::tr(labelKey), *value);
  if (now != *value) {
    *value = now;
    *changed = true;
  }
  return y + kToggleH + kRowGap;
}

// A miniature of the play area in the chosen colours: the board with its
// grid and a few pieces in place, and a tray strip with empty slots. The
// grid follows the playing screen's rules: fainter when it takes the board's
// colour, hidden on a very light background.
double preview(Ctx& ctx, const SettingsColumn& c, double y, const store::Settings& s) {
  rowLabel(ctx, c, y, i18n::tr("settings.preview"));
  cairo_t* cr = ctx.cr;
  const double w = std::min(c.w, kPreviewMaxW);
  const Rect panel = c.place(0, y + kControlsBelow, w, kPreviewH);
  const uint32_t bg = orDefault(s.bgColor, kColorBackground);
  fillRoundedRect(cr, panel, 10, bg, 1.0);
  strokeRoundedRect(cr, panel, 10, 1.0, kColorBorder, 1.0);

  const uint32_t board = orDefault(s.boardColor, kColorAccent);
  const Rect b{panel.x + 16, panel.y + 12, panel.w - 32, panel.h - 12 - 28 - 20};
  fillRoundedRect(cr, b, 6, board, 0.04);
  strokeRoundedRect(cr, b, 6, 1.0, board, 0.35);
  constexpr int kCols = 8, kRows = 4;
  const double cw = b.w / kCols, ch = b.h / kRows;
  const int lum = static_cast<int>(((bg >> 16) * 299 + ((bg >> 8) & 255) * 587 + (bg & 255) * 114) / 1000);
  if (lum <= 220) {
    const uint32_t grid = orDefault(s.gridColor, board);
    const double alpha = s.gridColor.set ? 0.38 : 0.09;
    for (int i = 1; i < kCols; ++i) drawLine(cr, b.x + i * cw, b.y, b.x + i * cw, b.y + b.h, 1, grid, alpha);
    for (int i = 1; i < kRows; ++i) drawLine(cr, b.x, b.y + i * ch, b.x + b.w, b.y + i * ch, 1, grid, alpha);
  }
  for (const auto& cell : {std::pair{0, 0}, {1, 0}, {0, 1}, {2, 0}, {1, 1}}) {
    const Rect r{b.x + cell.first * cw + 2, b.y + cell.second * ch + 2, cw - 4, ch - 4};
    strokeRoundedRect(cr, r, 2, 1.5, 0xffffff, 0.35);
  }

  const Rect tray{panel.x + 16, panel.y + panel.h - 28 - 10, panel.w - 32, 28};
  fillRect(cr, tray, orDefault(s.trayBgColor, kColorPanel), 1.0);
  strokeRoundedRect(cr, tray, 0, 1.0, orDefault(s.trayBorderColor, kColorBorder), 1.0);
  for (double x = tray.x + 6; x + 20 <= tray.x + tray.w - 6; x += 26) {
    fillRoundedRect(cr, Rect{x, tray.y + 4, 20, 20}, 3, 0xffffff, 0.18);
  }
  return y + kControlsBelow + kPreviewH + 26;
}

}  // namespace

void rowLabel(Ctx& ctx, const SettingsColumn& c, double y, const std::string& text) {
  TextStyle style;
  style.size = 13;
  style.bold = true;
  style.color = kColorMuted;
  style.maxWidth = c.w;
  style.align = c.rtl ? kAlignRight : kAlignLeft;
  drawText(ctx.cr, c.rtl ? c.x + c.w : c.x, y, text, style);
}

store::OptColor& colorSetting(store::Settings& s, int target) { return s.*colorRowDef(target).field; }

std::string colorTitle(int target) { return i18n::tr(colorRowDef(target).labelKey); }

double SettingsScreen::colorRow(Ctx& ctx, const SettingsColumn& c, double y, int target, const std::string& label,
                                store::OptColor& color, const uint32_t* presets, int count) {
  rowLabel(ctx, c.part(0, c.w - kCustomW - 8), y, label);
  if (plainButton(ctx, c.place(c.w - kCustomW, y - 6, kCustomW, kCustomH), i18n::tr("settings.colorCustom"), false)) {
    modal_ = Modal::Picker;
    pickerTarget_ = target;
    picker_ = ColorPickerState{};
  }
  const double top = y + 26;
  for (int i = 0; i < count; ++i) {
    const double slot = kSlotStep * i;
    if (presets[i] == kDefaultEntry) {
      if (plainButton(ctx, c.place(slot, top, kDefaultW, kSwatchH), i18n::tr("settings.colorDefault"), !color.set)) {
        color = store::OptColor{};
        dirty_ = true;
      }
    } else if (colorSwatch(ctx, c.place(slot + kSwatchAt, top, kSwatchW, kSwatchH), presets[i],
                           color.set && color.rgb == presets[i])) {
      color = store::OptColor{true, presets[i]};
      dirty_ = true;
    }
  }
  return top + kSwatchH + kRowGap;
}

double SettingsScreen::choiceRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y) {
  y = difficultyRow(ctx, c, y, &s.difficulty, &dirty_);
  y = enumRow(ctx, c, y, "settings.boardLayout", kLayoutKeys, &s.boardLayout, &dirty_);
  y = enumRow(ctx, c, y, "settings.boardZoom", kZoomKeys, &s.boardZoomMode, &dirty_);
  y = enumRow(ctx, c, y, "settings.rotation", kRotationKeys, &s.rotationMode, &dirty_);
  y = toggle(ctx, c, y, "settings.showSecondRow", &s.showSecondRow, &dirty_);
  y = toggle(ctx, c, y, "settings.hideConnectedBorder", &s.hideConnectedBorder, &dirty_);
  for (int i = 0; i < static_cast<int>(std::size(kColorRows)); ++i) {
    const ColorRowDef& row = kColorRows[i];
    y = colorRow(ctx, c, y, i, i18n::tr(row.labelKey), s.*row.field, row.presets, kPresetCount);
  }
  return preview(ctx, c, y, s);
}

double SettingsScreen::drawRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y) {
  y = choiceRows(ctx, s, c, y);
  y = soundRows(ctx, s, c, y);
  y = buttonRows(ctx, s, c, y) + kRowGap;
  return accessRows(ctx, s, c, y);
}

// For players who need the game stiller, larger or plainer to see.
double SettingsScreen::accessRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y) {
  y = toggle(ctx, c, y, "settings.reducedMotion", &s.reducedMotion, &dirty_);
  y = interfaceSizeRow(ctx, c, y, &s.interfaceScale, &dirty_);
  return toggle(ctx, c, y, "settings.strongOutlines", &s.strongOutlines, &dirty_) - kRowGap;
}

// A labelled volume slider; true when it moved the value this frame.
bool SettingsScreen::volumeRow(Ctx& ctx, const SettingsColumn& c, double* y, const char* labelKey, double* value) {
  rowLabel(ctx, c, *y, i18n::tr(labelKey));
  sliders_.push_back(Rect{c.x, *y + kControlsBelow, c.w, kSliderH});
  *y += kControlsBelow + kSliderH + kRowGap;
  const double now = slider(ctx, sliders_.back(), *value);
  if (now == *value) return false;
  *value = now;
  dirty_ = true;
  return true;
}

double SettingsScreen::soundRows(Ctx& ctx, store::Settings& s, const SettingsColumn& c, double y) {
  sliders_.clear();
  if (volumeRow(ctx, c, &y, "settings.music", &s.musicVolume)) audio::setMusicVolume(s.musicVolume);
  // The click is the sample, played while sliding but not every frame.
  if (volumeRow(ctx, c, &y, "settings.sfx", &s.sfxVolume)) {
    audio::setSfxVolume(s.sfxVolume);
    if (lastSample_ < 0 || ctx.time - lastSample_ >= kSampleInterval) {
      audio::play(audio::Sfx::Click);
      lastSample_ = ctx.time;
    }
  }

  const bool on = toggleRow(ctx, c.place(0, y, c.w, kToggleH), i18n::tr("settings.sound"), s.soundOn);
  if (on != s.soundOn) {
    s.soundOn = on;
    audio::setEnabled(on);
    if (on) audio::startMusic();
    dirty_ = true;
  }
  return y + kToggleH + kRowGap;
}

double SettingsScreen::buttonRows(Ctx& ctx, const store::Settings& s, const SettingsColumn& c, double y) {
  rowLabel(ctx, c, y, i18n::tr("settings.language"));
  std::string current = i18n::tr("settings.languageSystem");
  for (const i18n::Language& l : i18n::languages()) {
    if (!s.language.empty() && l.code == s.language) current = l.nativeName;
  }
  if (plainButton(ctx, c.place(0, y + kControlsBelow, kButtonW, kButtonH), current, false)) {
    modal_ = Modal::Language;
    languageOffset_ = 0;
  }
  y += kControlsBelow + kButtonH + kRowGap;

  // The button says what the row is: a label above it would say it twice.
  if (plainButton(ctx, c.place(0, y, kButtonW, kButtonH), i18n::tr("settings.resetProgress"), false)) {
    modal_ = Modal::Reset;
  }
  return y + kButtonH;
}

}  // namespace ui
