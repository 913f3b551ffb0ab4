// Every way of answering the confirmation dialog, and that nothing under it
// hears the click.
#include "ui/widgets/dialog.h"

#include <SDL_keycode.h>

#include "tests/ui/widget_frame.h"
#include "ui/widgets/buttons.h"

namespace {

class Dialog : public widgettest::WidgetFrame {
 protected:
  void SetUp() override { resize(800, 600); }
  int ask(const ui::Input& in) {
    frame(in);
    const int answer = ui::confirmDialog(ctx, "Restart puzzle?", "All progress is lost.", "OK", "Cancel");
    EXPECT_FALSE(ui::menuButton(ctx, ui::Rect{0, 0, 800, 600}, "Beneath", false)) << "the dialog took the click";
    return answer;
  }
  // Where the dialog drew the button with this label.
  ui::Rect traced(const char* label) {
    ui::setWidgetTracing(true);
    ask(hoverAt(0, 0));
    const ui::TracedWidget* w = ui::findTracedWidget(label);
    return w ? w->rect : ui::Rect{};
  }
};

TEST_F(Dialog, AnswersByButtonKeyAndClickOutside) {
  const ui::Rect ok = traced("OK"), cancel = traced("Cancel");
  ASSERT_GT(ok.w, 0);
  struct Case {
    double x, y;
    bool release;
    std::vector<int32_t> keys;
    int answer;
  };
  const Case kCases[] = {
      {ok.x + ok.w / 2, ok.y + ok.h / 2, true, {}, 1},
      {ok.x, ok.y, true, {}, 1},  // the top-left corner is inside
      {cancel.x + 5, cancel.y + 5, true, {}, -1},
      {ok.x + ok.w / 2, ok.y + ok.h / 2, false, {}, 0},                 // hovering is not clicking
      {(ok.x + cancel.x + cancel.w) / 2, ok.y + 10, true, {}, 0},       // between the buttons
      {400, ok.y - 60, true, {}, 0},                                    // in the box, on the text
      {10, 10, true, {}, -1},                                           // outside the box
      {400, 300, false, {SDLK_RETURN}, 1},
      {400, 300, false, {0x4000009E}, 1},                               // the second Return key
      {400, 300, false, {SDLK_KP_ENTER}, 1},
      {400, 300, false, {'a'}, 0},
      {400, 300, false, {SDLK_ESCAPE}, -1},
      {400, 300, false, {SDLK_RETURN, SDLK_ESCAPE}, -1},               // a cancel wins
      {ok.x + 5, ok.y + 5, true, {SDLK_ESCAPE}, -1},
      {10, 10, true, {SDLK_RETURN}, -1},
  };
  for (const Case& c : kCases) {
    ui::Input in = c.release ? releaseAt(c.x, c.y) : hoverAt(c.x, c.y);
    in.keys = c.keys;
    EXPECT_EQ(ask(in), c.answer) << c.x << "," << c.y;
  }
}

TEST_F(Dialog, AClickTakenAboveItIsNoAnswer) {
  frame(releaseAt(10, 10));
  ctx.clickTaken = true;
  EXPECT_EQ(ui::confirmDialog(ctx, "Title", "Message", "OK", "Cancel"), 0);
}

}  // namespace
