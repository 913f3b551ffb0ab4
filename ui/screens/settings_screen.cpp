#include "ui/screens/settings_screen.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <memory>

#include "audio/audio.h"
#include "i18n/i18n.h"
#include "store/store.h"
#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/gpu.h"
#include "ui/screens/screens.h"
#include "ui/text.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/scroll.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kMargin = 40;      // on each side of the column in a narrow window
constexpr double kMaxColumn = 760;  // the column's width in a wide one
constexpr double kTopPad = 24, kBottomPad = 40;
constexpr double kSliderGrabX = 12, kSliderGrabY = 10;  // the slider's own grab margins

// The language list.
constexpr double kListMaxW = 420, kItemH = 40, kItemStep = 48;
constexpr double kListTitleH = 64, kListFootH = 76;

TextStyle titleStyle(double maxWidth) {
  TextStyle s;
  s.size = 20;
  s.bold = true;
  s.color = kColorAccent;
  s.maxWidth = maxWidth;
  return s;
}

}  // namespace

std::unique_ptr<Screen> makeSettingsScreen() { return std::make_unique<SettingsScreen>(); }

void SettingsScreen::update(Ctx& ctx) {
  store::Settings& s = store::settings();
  // The page keeps the theme's ground whatever background is chosen, so a
  // very light one cannot make the page unreadable; the preview shows it.
  gpuFillRect(0, 0, ctx.width, ctx.height, kColorBackground, 1.0);
  {
    InputShield beneath(ctx, modal_ != Modal::None);
    bool back = false;
    const double headerH = screenHeader(ctx, i18n::tr("settings.title"), &back);
    drawPage(ctx, s, Rect{0, headerH, ctx.width, ctx.height - headerH});
    if (back) Game::instance().back();
  }
  switch (modal_) {
    case Modal::Picker:
      drawPicker(ctx, s);
      break;
    case Modal::Language:
      languageList(ctx, s);
      break;
    case Modal::Reset:
      resetDialog(ctx);
      break;
    case Modal::None:
      break;
  }
  persist(ctx);
}

void SettingsScreen::saveNow() {
  if (dirty_) store::saveSettings();
  dirty_ = false;
}

// Written once the pointer is let go: a slider being dragged changes its
// setting every frame, and the file needs only where it ends.
void SettingsScreen::persist(const Ctx& ctx) {
  if (!ctx.in.mouseDown) saveNow();
}

void SettingsScreen::drawPage(Ctx& ctx, store::Settings& s, const Rect& view) {
  scrollPage(ctx, view);
  const double w = std::min(ctx.width - 2 * kMargin, kMaxColumn);
  const SettingsColumn c{(ctx.width - w) * 0.5, w, i18n::currentIsRtl()};
  cairo_save(ctx.cr);
  cairo_rectangle(ctx.cr, view.x, view.y, view.w, view.h);
  cairo_clip(ctx.cr);
  {
    // Rows scrolled up under the header must not take its clicks.
    InputShield outside(ctx, !ctx.hover(view), Shield::PointerOnly);
    FocusList list(&offset_);
    const double top = view.y + kTopPad - offset_;
    contentH_ = drawRows(ctx, s, c, top) - (view.y - offset_) + kBottomPad;
  }
  cairo_restore(ctx.cr);
  scrollbar(ctx, view, contentH_, offset_);
}

// A press on a slider moves the slider, not the page, however the hand
// wanders up or down while it slides.
void SettingsScreen::scrollPage(Ctx& ctx, const Rect& view) {
  const bool pressed = ctx.in.mousePressed;
  for (const Rect& r : sliders_) {
    const Rect grab{r.x - kSliderGrabX, r.y - kSliderGrabY, r.w + 2 * kSliderGrabX, r.h + 2 * kSliderGrabY};
    if (ctx.hover(grab)) ctx.in.mousePressed = false;
  }
  revealFocus(view, &offset_);
  applyScroll(ctx, view, contentH_, &offset_);
  ctx.in.mousePressed = pressed;
}

void SettingsScreen::drawPicker(Ctx& ctx, store::Settings& settings) {
  if (modal_ != Modal::Picker || pickerTarget_ < 0) return;
  const PickerResult result = colorPicker(ctx, colorTitle(pickerTarget_), picker_);
  if (result == PickerResult::Chosen) {
    colorSetting(settings, pickerTarget_) = store::OptColor{true, pickerColor(picker_.hue, picker_.lightness)};
    dirty_ = true;
  }
  if (result != PickerResult::Open) {
    modal_ = Modal::None;
    pickerTarget_ = -1;
  }
}

// The languages in their own names under the system entry, the one in use
// drawn primary; a choice is applied at once, so the next frame speaks it.
void SettingsScreen::languageList(Ctx& ctx, store::Settings& s) {
  const std::vector<i18n::Language>& langs = i18n::languages();
  const double listH = static_cast<double>(langs.size() + 1) * kItemStep - (kItemStep - kItemH);
  const double w = std::min(ctx.width - 64, kListMaxW);
  const double viewH = std::max(std::min(listH, ctx.height - 64 - kListTitleH - kListFootH), kItemH);
  const double h = kListTitleH + viewH + kListFootH;
  const Rect box{(ctx.width - w) * 0.5, (ctx.height - h) * 0.5, w, h};
  const Rect view{box.x + 20, box.y + kListTitleH, w - 40, viewH};
  revealFocus(view, &languageOffset_);
  applyScroll(ctx, view, listH, &languageOffset_);

  modalBox(ctx, box);
  drawTextCentered(ctx.cr, box.x + w * 0.5, box.y + kListTitleH * 0.5, i18n::tr("settings.language"),
                   titleStyle(w - 48));
  const std::string* chosen = nullptr;
  const std::string systemCode;  // the empty code: follow the system
  cairo_save(ctx.cr);
  cairo_rectangle(ctx.cr, view.x, view.y, view.w, view.h);
  cairo_clip(ctx.cr);
  {
    InputShield outside(ctx, !ctx.hover(view), Shield::PointerOnly);
    FocusList list(&languageOffset_);
    const double itemW = view.w - (listH > viewH ? 14 : 0);  // room for the scrollbar
    for (size_t i = 0; i <= langs.size(); ++i) {
      const Rect r{view.x, view.y + static_cast<double>(i) * kItemStep - languageOffset_, itemW, kItemH};
      if (r.y + r.h < view.y || r.y > view.y + view.h) {
        focusPlaceholder(r);  // still in the keyboard's order
        continue;
      }
      const std::string& code = i == 0 ? systemCode : langs[i - 1].code;
      const std::string label = i == 0 ? i18n::tr("settings.languageSystem") : langs[i - 1].nativeName;
      if (plainButton(ctx, r, label, code == s.language)) chosen = &code;
    }
  }
  cairo_restore(ctx.cr);
  scrollbar(ctx, view, listH, languageOffset_);
  const bool cancel = plainButton(ctx, Rect{box.x + 20, box.y + h - 60, w - 40, 44}, i18n::tr("common.cancel"), false);
  const bool outside = ctx.in.mouseReleased && !ctx.clickTaken && !ctx.hover(box);
  ctx.clickTaken = true;

  if (chosen) {
    s.language = *chosen;
    i18n::setLanguage(s.language);
    dirty_ = true;
  }
  if (chosen || cancel || outside || ctx.in.hasKey(SDLK_ESCAPE)) modal_ = Modal::None;
}

void SettingsScreen::resetDialog(Ctx& ctx) {
  const int answer = confirmDialog(ctx, i18n::tr("settings.resetProgress"), i18n::tr("settings.resetProgressMessage"),
                                   i18n::tr("common.ok"), i18n::tr("common.cancel"));
  if (answer == 1) {
    store::clearSolves();
    store::clearPuzzle();
  }
  if (answer != 0) modal_ = Modal::None;
}

}  // namespace ui
