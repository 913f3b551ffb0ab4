// Every language in the shipped fonts against the room the widgets give it in
// the smallest window (800 x 560): a label squeezed below 0.8 of its size is
// too long for its button, and a dialog's text must stay in its box.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "i18n/data/catalogs.h"
#include "tests/i18n/shipped_fonts.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/trace.h"

namespace {

using i18ntest::ShippedFonts;

constexpr double kSmallestScale = 0.8;
constexpr double kSettingsRow = 720;  // the settings column: 800 less 40 on each side
constexpr double kSixOptions = (kSettingsRow - 40) / 6 - 16, kThreeOptions = (kSettingsRow - 16) / 3 - 16;

struct Room {
  std::vector<const char*> keys;
  double size;
  bool bold;     // primary buttons draw their label bold
  double width;  // the widget's width less its label margin
  double minScale = kSmallestScale;
};

const Room kRooms[] = {
    {{"common.ok", "common.cancel"}, 15, true, 134},  // dialog buttons, (360 - 60) / 2 - 16
    {{"common.back"}, 16, false, 130 - 14},           // after "‹ "
    {{"common.continue"}, 18, true, 216},             // solved screen, 240 wide
    {{"playing.pause"}, 15, false, 80},               // 96 wide in the compact header
    {{"playing.letterRestart", "playing.letterShuffle", "playing.letterUndo"}, 18, true, 40, 1},  // never shrunk
    {{"menu.continue", "menu.levelSelect", "menu.newPuzzle", "menu.customPhoto", "menu.gallery", "menu.settings",
      "menu.about", "menu.quit"}, 18, true, 296},
    {{"difficulty.easy", "difficulty.medium", "difficulty.hard", "difficulty.expert", "difficulty.master",
      "difficulty.grandmaster"}, 15, true, kSixOptions},
    {{"settings.boardLayout_scatter", "settings.boardLayout_tray", "settings.boardLayout_scrollTray",
      "settings.boardZoom_off", "settings.boardZoom_autoOnPickup", "settings.boardZoom_wheel", "settings.rotation_off",
      "settings.rotation_180", "settings.rotation_90"}, 15, true, kThreeOptions},
    {{"settings.showSecondRow", "settings.hideConnectedBorder", "settings.sound"}, 15, false, kSettingsRow - 110},
    {{"settings.colorDefault"}, 15, true, 90 - 16},  // primary while no colour is chosen
    {{"settings.colorCustom"}, 15, false, 130 - 16},
    {{"settings.languageSystem", "settings.resetProgress"}, 15, false, 160 - 16},  // one-button rows
};

TEST_F(ShippedFonts, EveryButtonLabelFitsItsButton) {
  i18ntest::Layout scratch(15, false);
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const Room& room : kRooms) {
      for (const char* key : room.keys) {
        ui::TextStyle style;
        style.size = room.size, style.bold = room.bold;
        double w = 0;
        ui::measureText(scratch.cr(), i18n::tr(key), style, &w, nullptr);
        EXPECT_LE(w * room.minScale, room.width) << c.code << " " << key << ": " << i18n::tr(key);
      }
    }
  }
}

// Each dialog drawn in the smallest window: the message (light grey, off the
// cancel button) and the title (amber, above the buttons) keep the box's side
// margins, the message shows all its lines below the title, and its gap to the
// buttons stays that of a one-line message however many lines it takes. Set
// TESSELLATRIX_SCREENSHOT_DIR to keep each as "<code>_<message key>.png".
TEST_F(ShippedFonts, EveryDialogOfEveryLanguageKeepsItsTextInsideTheBox) {
  constexpr int kW = 800, kH = 560, kBoxX = (kW - 360) / 2;
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface{
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, kW, kH), cairo_surface_destroy};
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr{cairo_create(surface.get()), cairo_destroy};
  const auto* px = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(surface.get()));
  auto look = [&](const std::string& title, const std::string& message, const std::string& png) {
    ui::Ctx ctx;
    ctx.cr = cr.get(), ctx.width = kW, ctx.height = kH;
    cairo_set_source_rgb(cr.get(), 0, 0, 0);
    cairo_paint(cr.get());
    ui::setWidgetTracing(true);
    ui::widgetTrace().clear();
    ui::confirmDialog(ctx, title, message, i18n::tr("common.ok"), i18n::tr("common.cancel"));
    cairo_surface_flush(surface.get());
    const ui::Rect cancel = ui::findTracedWidget(i18n::tr("common.cancel"))->rect;
    int titleBottom = -1, top = kH, bottom = -1, left = kW, right = -1;
    for (int y = 0; y < kH; ++y) {
      for (int x = 0; x < kW; ++x) {
        const uint32_t p = px[y * kW + x];  // light grey text has green and blue high, amber only red
        const bool text = (p & 0x8080) == 0x8080 && !cancel.contains(x, y);
        const bool heading = (p & 0x800080) == 0x800000 && y < cancel.y;
        if (heading) titleBottom = std::max(titleBottom, y);
        if (text) top = std::min(top, y), bottom = std::max(bottom, y);
        if (text || heading) left = std::min(left, x), right = std::max(right, x);
      }
    }
    const ui::ParagraphFit fit = ui::fitParagraph(ctx.cr, message, ui::TextStyle{}, 312, 3);
    EXPECT_TRUE(left > kBoxX + 23 && right < kBoxX + 360 - 23) << message << " spans " << left << ".." << right;
    EXPECT_GT(top, titleBottom) << message;
    EXPECT_GT(bottom - top, fit.height * (fit.lines - 1) / fit.lines) << message << " is not shown in full";
    EXPECT_NEAR(cancel.y - bottom, 47, 6) << message;
    if (const char* dir = std::getenv("TESSELLATRIX_SCREENSHOT_DIR")) {
      cairo_surface_write_to_png(surface.get(), (dir + png).c_str());
    }
    return fit;
  };
  const char* kDialogs[][2] = {
      {"levels.lockedTitle", "levels.lockedMessage"}, {"settings.resetProgress", "settings.resetProgressMessage"},
      {"playing.confirmRestartTitle", "playing.confirmRestartMessage"},
      {"playing.confirmShuffleTitle", "playing.confirmShuffleMessage"}};
  for (const i18n_data::Catalog& c : i18n_data::kCatalogs) {
    i18n::setLanguage(c.code);
    for (const auto& keys : kDialogs) {
      const std::string message = i18n::tr(keys[1], {{"prev", "39"}, {"level", "40"}});
      const ui::ParagraphFit fit = look(i18n::tr(keys[0]), message, "/" + std::string(c.code) + "_" + keys[1] + ".png");
      EXPECT_TRUE(!fit.cut && fit.scale >= kSmallestScale) << c.code << " " << keys[1] << " is cut or shrunk";
    }
  }
  i18n::setLanguage("en");
  std::string flood;  // more than three lines hold even at the smallest size, and a title of more than two
  for (int i = 0; i < 6; ++i) flood += i18n::tr("levels.lockedMessage") + " ";
  const ui::ParagraphFit fit = look(flood.substr(0, 120), flood, "/flood.png");
  EXPECT_TRUE(fit.lines == 3 && fit.cut && fit.scale < 1) << fit.lines << " lines at " << fit.scale;
}

}  // namespace
