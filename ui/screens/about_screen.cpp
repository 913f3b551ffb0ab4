// The about page: who made the game and whose work it uses, in centred
// blocks parted by thin lines, with the way on to the licences page.
#include <algorithm>

#include <string>
#include <vector>

#include "i18n/i18n.h"
#include "platform/app_info.h"
#include "ui/draw.h"
#include "ui/screens/page_text.h"
#include "ui/screens/screens.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

// A key of the catalogues, or (raw) a text shown as it is.
struct AboutLine {
  const char* text;
  bool raw;
  PageLook look;
};

// Blocks are parted by a line: an entry with no text.
constexpr AboutLine kAboutLines[] = {
    {platform::kAppTitle, true, kPageTitle},
    {nullptr, false, {}},
    {"about.developedBy", false, kPageMuted},
    {"about.developer", false, kPageStrong},
    {"about.company", false, kPagePlain},
    {"about.year", false, kPageMuted},
    {nullptr, false, {}},
    {"about.email", false, kPagePlain},
    {"about.website", false, kPageLink},
    {nullptr, false, {}},
    {"about.creditsTitle", false, kPageStrong},
    {"about.photosBy", false, kPageMuted},
    {"about.musicBy", false, kPageMuted},
    {"about.musicSite", false, kPageLink},
    {nullptr, false, {}},
    {"about.openSource", false, kPageMuted},
};

constexpr double kSeparatorStep = 22;
constexpr double kButtonW = 240, kButtonH = 44, kButtonGap = 10;

double lineStep(const PageLook& look) { return look.size * 1.65; }

double contentHeight() {
  double h = kButtonGap + kButtonH;
  for (const AboutLine& line : kAboutLines) h += line.text ? lineStep(line.look) : kSeparatorStep;
  return h;
}

class AboutScreen : public Screen {
 public:
  void update(Ctx& ctx) override {
    bool back = false;
    const double header = screenHeader(ctx, i18n::tr("about.title"), &back);
    const double cx = ctx.width / 2, width = std::min(ctx.width - 48, 560.0);
    double y = header + std::max(12.0, (ctx.height - header - contentHeight()) / 2);
    for (const AboutLine& line : kAboutLines) {
      if (!line.text) {
        drawLine(ctx.cr, cx - width / 2, y + kSeparatorStep / 2, cx + width / 2, y + kSeparatorStep / 2, 1,
                 kColorBorder, 1.0);
        y += kSeparatorStep;
        continue;
      }
      const double step = lineStep(line.look);
      drawTextCentered(ctx.cr, cx, y + step / 2, line.raw ? line.text : i18n::tr(line.text), pageStyle(line.look, width));
      y += step;
    }
    if (plainButton(ctx, Rect{cx - kButtonW / 2, y + kButtonGap, kButtonW, kButtonH}, i18n::tr("licenses.title"), true)) {
      GameState licenses;
      licenses.screen = ScreenKind::Licenses;
      Game::instance().push(licenses);
    }
    if (back) Game::instance().back();
  }
};

}  // namespace

std::unique_ptr<Screen> makeAboutScreen() { return std::make_unique<AboutScreen>(); }

}  // namespace ui
