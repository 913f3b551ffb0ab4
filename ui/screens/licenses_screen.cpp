// The licences page: a scrolling list, opened by a short introduction, of
// every component and asset the game ships or links, each with its licence,
// its authors and its web address, parted by thin lines.
#include <algorithm>

#include "i18n/i18n.h"
#include "ui/draw.h"
#include "ui/screens/license_table.h"
#include "ui/screens/page_text.h"
#include "ui/screens/screens.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/scroll.h"

namespace ui {

namespace {

constexpr double kEntryH = 104;
constexpr double kIntroGap = 20;
constexpr double kMargin = 24;
constexpr PageLook kIntroLook{15, false, kColorText};

// One entry at y: its four lines, then the parting line under it.
void drawEntry(cairo_t* cr, const LicenseRow& row, double x, double y, double width) {
  TextStyle style = pageStyle(kPageStrong, width);
  const bool rtl = i18n::currentIsRtl();
  style.align = rtl ? kAlignRight : kAlignLeft;
  const double tx = rtl ? x + width : x;
  drawText(cr, tx, y + 12, row.name, style);
  const PageLook looks[] = {kPageLink, kPageMuted, kPageMuted};
  const char* texts[] = {row.license, row.authors, row.url};
  for (int i = 0; i < 3; ++i) {
    TextStyle s = pageStyle(looks[i], width);
    s.align = style.align;
    drawText(cr, tx, y + 38 + 19 * i, texts[i], s);
  }
  drawLine(cr, x, y + kEntryH - 0.5, x + width, y + kEntryH - 0.5, 1, kColorBorder, 1.0);
}

class LicensesScreen : public Screen {
 public:
  void update(Ctx& ctx) override {
    bool back = false;
    const double header = screenHeader(ctx, i18n::tr("licenses.title"), &back);
    const Rect view{0, header, ctx.width, std::max(ctx.height - header, 0.0)};
    const double width = std::min(ctx.width - 2 * kMargin, 760.0), x = (ctx.width - width) / 2;
    const std::string intro = i18n::tr("licenses.intro");
    const double introH = fitParagraph(ctx.cr, intro, pageStyle(kIntroLook, width), width, 0).height;
    const double content = kIntroGap + introH + kIntroGap + std::size(kLicenses) * kEntryH + kMargin;
    applyScroll(ctx, view, content, &offset_);

    cairo_save(ctx.cr);
    cairo_rectangle(ctx.cr, view.x, view.y, view.w, view.h);
    cairo_clip(ctx.cr);
    const double top = view.y - offset_;
    drawTextWrapped(ctx.cr, ctx.width / 2, top + kIntroGap + introH / 2, intro, pageStyle(kIntroLook, width), width);
    double y = top + kIntroGap + introH + kIntroGap;
    for (const LicenseRow& row : kLicenses) {
      if (y + kEntryH > view.y && y < view.y + view.h) drawEntry(ctx.cr, row, x, y, width);
      y += kEntryH;
    }
    cairo_restore(ctx.cr);
    scrollbar(ctx, view, content, offset_);
    if (back) Game::instance().back();
  }

 private:
  double offset_ = 0;
};

}  // namespace

std::unique_ptr<Screen> makeLicensesScreen() { return std::make_unique<LicensesScreen>(); }

}  // namespace ui
