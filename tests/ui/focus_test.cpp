// Every screen played from the keyboard alone: Tab visits each control once,
// Return and Space press the focused one, and a dialog keeps the focus.
#include "ui/focus.h"

#include <SDL_keycode.h>
#include <gtest/gtest.h>

#include "i18n/i18n.h"
#include "store/store.h"
#include "tests/support/font_support.h"
#include "tests/support/frame_driver.h"
#include "ui/widgets/trace.h"

namespace {

using testsupport::FrameDriver;
using ui::ScreenKind;

bool same(const ui::Rect& a, const ui::Rect& b) { return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h; }

class Focus : public ::testing::Test {
 protected:
  void SetUp() override { testsupport::useShippedAssets(), i18n::setLanguage("en"), ui::setWidgetTracing(true); }
  void open(ScreenKind kind, int h = 700) {
    driver.reset();
    driver = std::make_unique<FrameDriver>(1280, h);
    driver->game().resetTo(ui::GameState{kind, "level1", 5, 6, 61000});
    ui::widgetTrace().clear();
    driver->idle(FrameDriver::kStep);
  }
  // Presses the key and tells where the ring is a frame later, when a list
  // has scrolled the focused control in.
  ui::Rect press(int32_t key = SDLK_TAB, bool shift = false) {
    ui::widgetTrace().clear();
    ui::Input in;
    in.keys = {key}, in.shift = shift;
    driver->frame(in);
    driver->idle(FrameDriver::kStep);
    ui::Rect r{-1, -1, 0, 0};
    EXPECT_TRUE(ui::focusRing(&r));
    return r;
  }
  bool tabTo(const std::string& label) {
    const ui::Rect target = ui::findTracedWidget(label)->rect;
    for (int i = 0; i < 100; ++i) {
      if (same(press(), target)) return true;
    }
    return false;
  }

  std::unique_ptr<FrameDriver> driver;
};

// Tab comes round to the first control after as many presses as the screen
// has controls (those scrolled out of view too), each shown in the window
// when focused; Shift+Tab goes back.
TEST_F(Focus, TabVisitsEveryControlOfEachScreenOnceInTheWindow) {
  struct Case { ScreenKind kind; int h, controls; };
  store::recordSolve("level2", 5, 6, 1000);
  const Case kCases[] = {{ScreenKind::Menu, 700, 6},    {ScreenKind::LevelSelect, 700, 1 + 40 * 6},
                         {ScreenKind::Gallery, 700, 2}, {ScreenKind::About, 700, 2},
                         {ScreenKind::Solved, 700, 2},  {ScreenKind::Licenses, 700, 1},
                         {ScreenKind::Settings, 2600, -1}};  // -1: as many as it draws
  for (const Case& c : kCases) {
    open(c.kind, c.h);
    const int controls = c.controls > 0 ? c.controls : static_cast<int>(ui::widgetTrace().size());
    const ui::Rect first = press();
    int steps = 1;
    for (ui::Rect r = press(); !same(r, first) && steps <= controls; r = press(), ++steps) {
      EXPECT_TRUE(r.y >= 0 && r.y + r.h <= c.h) << int(c.kind) << " control " << steps << " at " << r.y;
    }
    EXPECT_EQ(steps, controls) << int(c.kind);
    press();
    EXPECT_TRUE(same(press(SDLK_TAB, true), first)) << int(c.kind) << ": Shift+Tab goes back";
  }
}

// Return, keypad Enter and Space press what has the focus; Right moves a
// focused slider; the pointer moving hides the ring.
TEST_F(Focus, ReturnAndSpacePressTheFocusedControl) {
  struct Case { ScreenKind kind; int tabs; int32_t key; ScreenKind opens; };
  const Case kCases[] = {{ScreenKind::Menu, 4, SDLK_RETURN, ScreenKind::Settings},
                         {ScreenKind::Menu, 1, SDLK_SPACE, ScreenKind::LevelSelect},
                         {ScreenKind::About, 2, SDLK_KP_ENTER, ScreenKind::Licenses}};
  for (const Case& c : kCases) {
    open(c.kind);
    for (int i = 0; i < c.tabs; ++i) press();
    driver->key(c.key);
    driver->idle(FrameDriver::kStep);
    EXPECT_EQ(driver->game().top().screen, c.opens) << int(c.kind) << " " << c.tabs;
  }
  open(ScreenKind::Settings, 2600);
  const double music = store::settings().musicVolume;
  ASSERT_TRUE(tabTo("slider"));
  press(SDLK_RIGHT);
  EXPECT_NEAR(store::settings().musicVolume, music + 0.05, 1e-9);
  ui::Input moved;
  moved.mouseX = 40;
  driver->frame(moved);
  ui::Rect r;
  EXPECT_FALSE(ui::focusRing(&r)) << "the pointer hides the ring";
}

// The reset question, opened by Return, is not answered by that Return; Tab
// cycles its two buttons only; Return on the focused Cancel keeps the solve
// and gives the focus back to the button that opened it.
TEST_F(Focus, ADialogKeepsTheFocusUntilItCloses) {
  store::recordSolve("level1", 5, 6, 1000);
  open(ScreenKind::Settings, 2600);
  const ui::Rect reset = ui::findTracedWidget(i18n::tr("settings.resetProgress"))->rect;
  ASSERT_TRUE(tabTo(i18n::tr("settings.resetProgress")));
  const ui::Rect cancel = press(SDLK_RETURN);
  EXPECT_TRUE(same(cancel, ui::findTracedWidget(i18n::tr("common.cancel"))->rect)) << "the dialog's first button";
  EXPECT_FALSE(same(press(), cancel));
  EXPECT_TRUE(same(press(), cancel)) << "two buttons, nothing beneath";
  EXPECT_TRUE(same(press(SDLK_RETURN), reset));
  EXPECT_EQ(store::solves().size(), 1u);
}

}  // namespace
