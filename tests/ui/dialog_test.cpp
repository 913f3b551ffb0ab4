// The confirmation dialog: every way of answering it, and that nothing under
// it hears the click.
#include "ui/widgets/dialog.h"

#include "tests/ui/widget_frame.h"
#include "ui/widgets/buttons.h"

namespace {

constexpr int32_t kReturn = 13, kReturn2 = 0x4000009E, kKeypadEnter = 0x40000058, kEscape = 27;

// In an 800 x 600 window the box is (220, 190, 360, 220); cancel is
// (240, 344, 150, 46), confirm (410, 344, 150, 46).
class Dialog : public widgettest::WidgetFrame {
 protected:
  void SetUp() override { resize(800, 600); }

  int ask(const ui::Input& in) {
    frame(in);
    return ui::confirmDialog(ctx, "Restart puzzle?", "All progress is lost.", "OK", "Cancel");
  }
  static ui::Input keys(std::initializer_list<int32_t> codes) {
    ui::Input in = hoverAt(400, 300);
    in.keys = codes;
    return in;
  }
};

TEST_F(Dialog, TheButtonsConfirmAndCancel) {
  EXPECT_EQ(ask(releaseAt(480, 360)), 1);
  EXPECT_EQ(ask(releaseAt(300, 360)), -1);
  EXPECT_EQ(ask(releaseAt(410, 344)), 1) << "the confirm button's corner";
}

TEST_F(Dialog, TheButtonsSitWhereTheLayoutPutsThem) {
  ui::setWidgetTracing(true);
  ask(hoverAt(0, 0));
  const ui::TracedWidget* cancel = ui::findTracedWidget("Cancel");
  const ui::TracedWidget* ok = ui::findTracedWidget("OK");
  ASSERT_TRUE(cancel && ok);
  EXPECT_EQ(cancel->rect.x, 240);
  EXPECT_EQ(cancel->rect.y, 344);
  EXPECT_EQ(cancel->rect.w, 150);
  EXPECT_EQ(cancel->rect.h, 46);
  EXPECT_EQ(ok->rect.x, 410);

  resize(300, 600);  // a narrow window narrows the box to 236
  ask(hoverAt(0, 0));
  ok = ui::findTracedWidget("OK");
  ASSERT_TRUE(ok);
  EXPECT_EQ(ok->rect.w, 88);
  EXPECT_EQ(ok->rect.x, 32 + 20 + 88 + 20);
}

TEST_F(Dialog, AClickOutsideTheBoxCancels) {
  EXPECT_EQ(ask(releaseAt(100, 100)), -1);
  EXPECT_EQ(ask(releaseAt(580, 300)), -1) << "just right of the box";
  EXPECT_EQ(ask(releaseAt(400, 410)), -1) << "just below it";
}

TEST_F(Dialog, AClickInTheBoxAwayFromTheButtonsDecidesNothing) {
  EXPECT_EQ(ask(releaseAt(400, 250)), 0);
  EXPECT_EQ(ask(releaseAt(400, 360)), 0) << "the gap between the buttons";
  EXPECT_EQ(ask(hoverAt(480, 360)), 0) << "hovering is not clicking";
}

TEST_F(Dialog, EitherReturnKeyAndTheKeypadEnterConfirm) {
  EXPECT_EQ(ask(keys({kReturn})), 1);
  EXPECT_EQ(ask(keys({kReturn2})), 1);
  EXPECT_EQ(ask(keys({kKeypadEnter})), 1);
  EXPECT_EQ(ask(keys({'a'})), 0);
}

TEST_F(Dialog, EscapeCancelsAndWinsOverReturn) {
  EXPECT_EQ(ask(keys({kEscape})), -1);
  EXPECT_EQ(ask(keys({kReturn, kEscape})), -1);
  EXPECT_EQ(ask(keys({kEscape, kKeypadEnter})), -1);
  ui::Input confirmClick = releaseAt(480, 360);
  confirmClick.keys = {kEscape};
  EXPECT_EQ(ask(confirmClick), -1) << "even over a click on confirm";
}

TEST_F(Dialog, ACancellingClickWinsOverReturnInTheSameFrame) {
  ui::Input outside = releaseAt(10, 10);
  outside.keys = {kReturn};
  EXPECT_EQ(ask(outside), -1);
}

TEST_F(Dialog, TheDialogTakesTheClickSoNothingBeneathReacts) {
  const ui::Rect beneath{0, 0, 800, 600};
  for (const ui::Input& in : {releaseAt(400, 250), releaseAt(480, 360), releaseAt(10, 10), hoverAt(10, 10)}) {
    ask(in);
    EXPECT_TRUE(ctx.clickTaken);
    EXPECT_FALSE(ui::menuButton(ctx, beneath, "Beneath", false));
  }
}

TEST_F(Dialog, AClickAlreadyTakenAboveTheDialogIsNotAnAnswer) {
  frame(releaseAt(10, 10));
  ctx.clickTaken = true;
  EXPECT_EQ(ui::confirmDialog(ctx, "Title", "Message", "OK", "Cancel"), 0);
}

TEST_F(Dialog, ALongMessageWrapsInsideTheBoxCentredUnderTheTitle) {
  frame(hoverAt(0, 0));
  const std::string message =
      "All unplaced pieces will be re-scattered over the table. Your progress and your time are preserved.";
  ui::confirmDialog(ctx, "Reshuffle pieces?", message, "OK", "Cancel");
  // The message's light text, between the title (around y 230) and the buttons (from y 344).
  const widgettest::Bounds text = find(220, 256, 580, 344, [](uint32_t p) { return ((p >> 8) & 255) > 0xb0; });
  ASSERT_FALSE(text.empty());
  EXPECT_GE(text.left, 220 + 24 - 1);
  EXPECT_LE(text.right, 580 - 24);
  EXPECT_NEAR(text.centreX(), 400, 10);
  EXPECT_NEAR(text.centreY(), 290, 8) << "centred on the box top + 100";
  EXPECT_GT(text.bottom - text.top, 30) << "more than one line";
}

}  // namespace
