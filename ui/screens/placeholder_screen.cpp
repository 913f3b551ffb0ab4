// Stand-in for the screens that are not built yet: it fills the window and
// names its kind under a header with the back button, so navigation can be
// followed on screen.
#include <string>

#include "ui/draw.h"
#include "ui/screens/screens.h"
#include "ui/widgets/chrome.h"

namespace ui {

namespace {

class PlaceholderScreen : public Screen {
 public:
  explicit PlaceholderScreen(std::string name) : name_(std::move(name)) {}

  void update(Ctx& ctx) override {
    fillRect(ctx.cr, Rect{0, 0, ctx.width, ctx.height}, 0x182033, 1.0);
    setColor(ctx.cr, 0xf2f2f2, 1.0);
    cairo_select_font_face(ctx.cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(ctx.cr, 32);
    cairo_text_extents_t ext;
    cairo_text_extents(ctx.cr, name_.c_str(), &ext);
    cairo_move_to(ctx.cr, (ctx.width - ext.width) * 0.5 - ext.x_bearing, ctx.height * 0.5);
    cairo_show_text(ctx.cr, name_.c_str());
    bool back = false;
    screenHeader(ctx, name_, &back);
    if (back) Game::instance().back();
  }

 private:
  std::string name_;
};

std::unique_ptr<Screen> placeholder(const char* kind) { return std::make_unique<PlaceholderScreen>(kind); }

}  // namespace

std::unique_ptr<Screen> makeSplashScreen() { return placeholder("Splash"); }
std::unique_ptr<Screen> makeMenuScreen() { return placeholder("Menu"); }
std::unique_ptr<Screen> makeSolvedScreen(std::string levelId, int rows, int cols, int64_t elapsedMs) {
  return placeholder(("Solved " + levelId + " " + std::to_string(rows) + "x" + std::to_string(cols) + " " +
                      std::to_string(elapsedMs) + " ms")
                         .c_str());
}
std::unique_ptr<Screen> makeGalleryScreen() { return placeholder("Gallery"); }
std::unique_ptr<Screen> makeSettingsScreen() { return placeholder("Settings"); }
std::unique_ptr<Screen> makeAboutScreen() { return placeholder("About"); }
std::unique_ptr<Screen> makeLicensesScreen() { return placeholder("Licenses"); }

}  // namespace ui
