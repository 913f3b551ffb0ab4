// Kinetic scrolling. One drag at a time lives in the context (ui::Ctx::drag)
// and names the offset it moves, so a list keeps gliding after the finger
// lets go while every other list on the screen stays put.
//
//   frame                         effect
//   press inside (content long)   drag starts on this offset, speed 0; the
//                                 motion of the press frame is not counted
//   held, pointer moves by dy     offset -= dy; speed follows -dy/dt, smoothed
//   held, moved 5 in all          the frame's click is taken (a drag, not a tap)
//   release after more than 5     the click is taken: the button under the
//                                 pointer is not pressed by the end of a drag
//   release after 5 or less       the click is left to the widgets: a tap
//   not held                      the offset glides on, slowing by e^-6 per
//                                 second, and stops below 20 units/s or at an end
//   wheel inside                  offset -= 60 per unit
//   reduced motion                nothing glides: a list let go stops
//
// A held drag and a glide ask for every next frame: the speed must fall
// while the finger rests, or a list let go after a pause would fly off.
#include "ui/widgets/scroll.h"

#include <algorithm>
#include <cmath>

#include "ui/draw.h"
#include "ui/focus.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kWheelStep = 60;
constexpr double kTapDistance = 5;
constexpr double kSmoothing = 0.3;     // share of this frame's speed in the smoothed speed
constexpr double kFriction = 6;        // per second, exponential
constexpr double kStopSpeed = 20;      // units per second
constexpr double kGlideThreshold = 1;  // below this nothing moves
constexpr double kRevealMargin = 12;   // between a control scrolled in and the view's edge

void followDrag(Ctx& ctx, double* offset) {
  DragState& drag = ctx.drag;
  const double dy = ctx.in.dy;
  *offset -= dy;
  drag.distance += std::fabs(dy);
  if (ctx.dt > 0) drag.velocity = kSmoothing * (-dy / ctx.dt) + (1 - kSmoothing) * drag.velocity;
  drag.target = offset;
  if (drag.distance > kTapDistance) ctx.clickTaken = true;
}

void glide(Ctx& ctx, double* offset, double max) {
  DragState& drag = ctx.drag;
  if (ctx.reducedMotion) drag.velocity = 0;
  if (std::fabs(drag.velocity) <= kGlideThreshold) return;
  *offset += drag.velocity * ctx.dt;
  drag.velocity *= std::exp(-kFriction * ctx.dt);
  if (std::fabs(drag.velocity) < kStopSpeed) drag.velocity = 0;
  if (*offset <= 0 || *offset >= max) drag.velocity = 0;
  if (drag.velocity != 0) ctx.requestFrame();
}

}  // namespace

void applyScroll(Ctx& ctx, const Rect& viewport, double contentHeight, double* offset) {
  DragState& drag = ctx.drag;
  const double max = std::max(contentHeight - viewport.h, 0.0);
  if (ctx.hover(viewport)) {
    *offset -= kWheelStep * ctx.in.wheel;
    if (max > 0 && ctx.in.mousePressed) {
      drag.active = true;
      drag.distance = 0;
      drag.velocity = 0;
      drag.target = offset;
    }
  }

  if (drag.active && drag.target == offset) {
    if (ctx.in.mouseDown) {
      ctx.requestFrame();
      // The pointer's motion in the frame of the press mostly came before
      // it: a click made on the move is still a click.
      if (!ctx.in.mousePressed) followDrag(ctx, offset);
    } else {
      drag.active = false;
      if (drag.distance > kTapDistance) ctx.clickTaken = true;
    }
  } else if (!drag.active && drag.target == offset) {
    glide(ctx, offset, max);
  }
  *offset = std::clamp(*offset, 0.0, max);
}

void revealFocus(const Rect& viewport, double* offset) {
  Rect r;
  if (!focusMovedTo(offset, &r)) return;
  if (r.y < viewport.y) {
    *offset -= viewport.y - r.y + kRevealMargin;
  } else if (r.y + r.h > viewport.y + viewport.h) {
    *offset += r.y + r.h - (viewport.y + viewport.h) + kRevealMargin;
  }
}

void scrollbar(Ctx& ctx, const Rect& viewport, double contentHeight, double offset) {
  const double h = viewport.h;
  if (contentHeight <= h) return;
  const double thumb = std::max(h * (h - 8) / contentHeight, 30.0);
  const double at = std::clamp(offset, 0.0, contentHeight - h);
  const double top = viewport.y + 4 + (h - 8 - thumb) * at / (contentHeight - h);
  fillRoundedRect(ctx.cr, Rect{viewport.x + viewport.w - 8, top, 4, thumb}, 2, kColorMuted, 0.5);
}

}  // namespace ui
