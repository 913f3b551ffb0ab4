// The first screen: the waving title and the tagline, until the player
// clicks or presses a key, or three seconds have passed.
#include <algorithm>

#include "platform/app_info.h"
#include "ui/screens/background_pieces.h"
#include "ui/screens/screens.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kSplashSeconds = 3;
constexpr double kPrepareBudget = 0.006;  // seconds a splash frame lends the menu's background

class SplashScreen : public Screen {
 public:
  void update(Ctx& ctx) override {
    if (start_ < 0) start_ = ctx.time;
    const bool large = largeLayout(ctx);
    const double w = ctx.width, h = ctx.height;
    const double fs = std::min((w - 48) / 12.24, large ? 48.0 : 34.0);
    wavyTitle(ctx, w / 2, h / 2 - 20, platform::kAppTitle, fs);
    tagline(ctx, h / 2 + 0.9 * fs);
    footer(ctx, h);
    // The first frame is shown as soon as it can be; the later ones cut and
    // paint the menu's pieces a few at a time.
    if (ctx.time > start_) backgroundPiecesPrepare(ctx, kPrepareBudget);

    ctx.requestFrameAt(start_ + kSplashSeconds);
    if (ctx.in.mouseReleased || !ctx.in.keys.empty() || ctx.time - start_ > kSplashSeconds) {
      GameState menu;
      menu.screen = ScreenKind::Menu;
      Game::instance().replace(menu);
    }
  }

 private:
  double start_ = -1;  // the time of the first frame
};

}  // namespace

std::unique_ptr<Screen> makeSplashScreen() { return std::make_unique<SplashScreen>(); }

}  // namespace ui
