// The frame's input and the per-frame context handed to every screen and
// widget. The interface is immediate-mode: widgets ask the context each frame
// whether the input hits them.
//
// Click arbitration, per frame:
//   left press   -> mousePressed (drags start here; never arbitrated)
//   left release -> mouseReleased: the click. The first takeClick() whose rect
//                   holds the pointer wins it; later callers get false, so
//                   screens ask for topmost elements (dialogs) first.
//   right press  -> rightPressed: takeRightClick() answers every rect that
//                   holds the pointer, without consuming anything.
//
// Modal layers (confirmation dialogs, pickers). A widget cannot know what
// will be drawn over it later in the frame, and a dialog has to be drawn
// last to lie on top. So a screen with a modal layer open runs everything
// beneath it inside an InputShield, which hides the frame's input for its
// lifetime: beneath, the pointer is nowhere, no button, wheel or key
// arrives, so widgets neither react nor light up and key handlers never see
// the Escape or Return meant for the dialog. After the shield the modal
// layer runs with the real input, drawn on top of everything:
//
//   {
//     InputShield beneath(ctx, dialogOpen);
//     handleInput(ctx);
//     drawScreen(ctx);
//   }
//   if (dialogOpen) answer = confirmDialog(ctx, ...);
//
// Frames on request. The game draws only when the picture changes: any
// event (a key, a button, pointer motion, the window resized, exposed or
// (un)focused) draws a frame by itself; whatever changes without one asks
// for its next frame, anew in every frame it is drawn (requests are
// cleared before each frame), and with nothing asked the game sleeps:
//
//   ctx.requestFrame()      something moves (a drag, a glide, a fade, a
//                           drifting background): the next frame at the
//                           display's pace; not while the window is hidden
//   ctx.requestFrameAt(t)   the picture changes at time t (ctx.time's clock):
//                           a clock's next second, a screen's timeout, a
//                           save falling due; kept while hidden too
//
// The earliest time wins. A widget that animates asks for itself, so a
// screen built from widgets asks only for what it animates of its own.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace ui {

struct Rect {
  double x = 0, y = 0, w = 0, h = 0;
  // Left and top edges are inside, right and bottom edges outside.
  bool contains(double px, double py) const { return px >= x && py >= y && px < x + w && py < y + h; }
};

struct Input {
  double mouseX = 0, mouseY = 0;
  bool mouseDown = false;
  bool mousePressed = false;
  bool mouseReleased = false;
  bool doubleClick = false;
  bool rightPressed = false;
  bool middleDown = false;
  double wheel = 0;  // positive away from the user
  double dx = 0, dy = 0;
  std::vector<int32_t> keys;  // SDL key codes in arrival order, repeats included
  bool ctrl = false, shift = false;
  bool spaceDown = false;    // held now (the pan key)
  bool windowActive = true;  // the window has focus and is not minimised
  std::vector<std::string> dropped;  // paths of the files dropped on the window

  bool hasKey(int32_t key) const;
  // Clears everything for the next frame; the key list keeps its capacity.
  void reset();
};

// The one list drag the context follows across frames (kinetic scrolling):
// which offset it moves, how far it has gone and how fast.
struct DragState {
  bool active = false;
  double distance = 0;          // accumulated |dy|; over 5 it is a drag, not a tap
  double velocity = 0;          // units per second, smoothed
  const double* target = nullptr;  // the offset last dragged
};

struct Ctx {
  static constexpr double kNoFrame = std::numeric_limits<double>::infinity();

  cairo_t* cr = nullptr;  // scaled to logical units; draws the overlay layer
  double width = 0, height = 0;
  double time = 0;  // seconds since start
  double dt = 0;    // seconds since the previous frame, at most 0.1
  Input in;
  bool quit = false;  // set by a screen to end the program; never cleared
  bool clickTaken = false;
  DragState drag;  // kept across frames
  bool reducedMotion = false;      // the player's setting: nothing glides, drifts or waves
  bool animating = false;          // requestFrame() was called this frame
  double nextFrameAt = kNoFrame;   // the earliest requestFrameAt() of this frame

  bool hover(const Rect& r) const { return r.contains(in.mouseX, in.mouseY); }
  bool takeClick(const Rect& r);
  bool takeRightClick(const Rect& r) const { return in.rightPressed && hover(r); }
  void requestFrame() { animating = true; }
  void requestFrameAt(double t) {
    if (t < nextFrameAt) nextFrameAt = t;
  }
};

// Modal (the default): everything of the input is hidden, and controls
// beneath register no keyboard focus (ui/focus.h). Pointer only: the
// pointer is hidden from controls scrolled out of a list's view, which keep
// the keys and their place in the focus order.
enum class Shield { Modal, PointerOnly };

class InputShield {
 public:
  InputShield(Ctx& ctx, bool on, Shield kind = Shield::Modal);
  ~InputShield();
  InputShield(const InputShield&) = delete;
  InputShield& operator=(const InputShield&) = delete;

 private:
  Ctx& ctx_;
  bool on_;
  Shield kind_;
  Input held_;
};

}  // namespace ui
