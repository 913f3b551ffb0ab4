// The focus is an index into the frame's order of controls, one per layer:
// the screen's own (0) and a modal layer's (1). An index rather than a label
// or a rect: labels change with the language and rects with scrolling, while
// the order of a page stays put. Keys that move it are applied at the end of
// the frame, when the whole order is known, so the ring drawn then is
// already where the key sent it.
#include "ui/focus.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ui/draw.h"

namespace ui {

namespace {

constexpr uint32_t kRingDark = 0x0e1320, kRingLight = 0xffffff;
constexpr double kRingGap = 3;

struct Entry {
  Rect rect;
  bool slider;
  const double* list;  // the offset of the list it belongs to, or null
};

struct State {
  std::vector<Entry> order;  // this frame's controls
  int focus[2] = {-1, -1};   // per layer
  int layer = 0;             // this frame's: 1 once a modal shield has been seen
  int lastLayer = 0;
  int shields = 0;  // modal shields open now
  bool ringShown = false;
  bool yielded = false;
  bool moved = false;  // the focus moved at the end of the last frame
  Entry movedTo{};
  const double* list = nullptr;  // the list registering now
};

State& state() {
  static State s;
  return s;
}

bool isActivation(int32_t key) { return key == SDLK_RETURN || key == SDLK_KP_ENTER || key == SDLK_SPACE; }

// Registers the control; its index when it holds the focus with the ring
// shown, -1 otherwise.
int enter(const Rect& r, bool slider) {
  State& s = state();
  if (s.shields > 0) return -1;
  const int index = static_cast<int>(s.order.size());
  s.order.push_back(Entry{r, slider, s.list});
  return !s.yielded && s.ringShown && s.focus[s.layer] == index ? index : -1;
}

Rect centreOf(const Rect& r) { return Rect{r.x + r.w * 0.5, r.y + r.h * 0.5, 0, 0}; }

// The distance between [a0, a1] and [b0, b1]; 0 when they overlap.
double gap(double a0, double a1, double b0, double b1) { return std::max({0.0, b0 - a1, a0 - b1}); }

// The nearest control in the arrow's direction: along the arrow by centres,
// with a sideways step (beyond any overlap) weighing twice as much; -1 when
// nothing lies that way.
int nearestToward(const std::vector<Entry>& order, int from, int32_t key) {
  const Rect& f = order[from].rect;
  const Rect fc = centreOf(f);
  const bool vertical = key == SDLK_UP || key == SDLK_DOWN;
  const double sign = (key == SDLK_DOWN || key == SDLK_RIGHT) ? 1 : -1;
  int best = -1;
  double bestScore = 0;
  for (int i = 0; i < static_cast<int>(order.size()); ++i) {
    const Rect& r = order[i].rect;
    const Rect c = centreOf(r);
    const double along = sign * (vertical ? c.y - fc.y : c.x - fc.x);
    if (i == from || along < 1) continue;
    const double side = vertical ? gap(f.x, f.x + f.w, r.x, r.x + r.w) : gap(f.y, f.y + f.h, r.y, r.y + r.h);
    const double drift = std::fabs(vertical ? c.x - fc.x : c.y - fc.y);
    const double score = along + 2 * side + 0.01 * drift;
    if (best < 0 || score < bestScore) best = i, bestScore = score;
  }
  return best;
}

// One key's move from `at` in an order of n > 0 controls; the ring shows
// first without moving.
int moveFor(const State& s, int at, int32_t key, bool shift) {
  const int n = static_cast<int>(s.order.size());
  if (at < 0 || at >= n) return key == SDLK_TAB && shift ? n - 1 : 0;
  if (key == SDLK_TAB) return (at + (shift ? n - 1 : 1)) % n;
  if (s.order[at].slider && (key == SDLK_LEFT || key == SDLK_RIGHT)) return at;
  const int next = nearestToward(s.order, at, key);
  return next < 0 ? at : next;
}

bool isNavigation(int32_t key) {
  return key == SDLK_TAB || key == SDLK_UP || key == SDLK_DOWN || key == SDLK_LEFT || key == SDLK_RIGHT;
}

void applyKeys(State& s, const Input& in) {
  int& at = s.focus[s.layer];
  const int before = at;
  for (const int32_t key : in.keys) {
    if (!isNavigation(key) || s.order.empty()) continue;
    if (!s.ringShown || at < 0 || at >= static_cast<int>(s.order.size())) {
      s.ringShown = true;
      if (at < 0 || at >= static_cast<int>(s.order.size())) at = moveFor(s, -1, key, in.shift);
      continue;
    }
    at = moveFor(s, at, key, in.shift);
  }
  if (at != before && at >= 0) {
    s.moved = true;
    s.movedTo = s.order[at];
  }
}

void drawRing(cairo_t* cr, const Rect& r) {
  const Rect ring{r.x - kRingGap, r.y - kRingGap, r.w + 2 * kRingGap, r.h + 2 * kRingGap};
  strokeRoundedRect(cr, ring, 10, 5, kRingDark, 0.9);
  strokeRoundedRect(cr, ring, 10, 2.5, kRingLight, 1.0);
}

}  // namespace

bool focusPressed(Ctx& ctx, const Rect& r) {
  if (enter(r, false) < 0) return false;
  std::vector<int32_t>& keys = ctx.in.keys;
  const auto first = std::find_if(keys.begin(), keys.end(), isActivation);
  if (first == keys.end()) return false;
  keys.erase(std::remove_if(keys.begin(), keys.end(), isActivation), keys.end());
  return true;
}

int focusSlide(Ctx& ctx, const Rect& r) {
  if (enter(r, true) < 0) return 0;
  int steps = 0;
  for (const int32_t key : ctx.in.keys) steps += key == SDLK_RIGHT ? 1 : key == SDLK_LEFT ? -1 : 0;
  return steps;
}

void focusPlaceholder(const Rect& r) { enter(r, false); }

void focusYieldKeys() { state().yielded = true; }

FocusList::FocusList(const double* offset) : outer_(state().list) { state().list = offset; }

FocusList::~FocusList() { state().list = outer_; }

bool focusMovedTo(const double* offset, Rect* r) {
  const State& s = state();
  if (!s.moved || s.movedTo.list != offset) return false;
  *r = s.movedTo.rect;
  return true;
}

bool focusRing(Rect* r) {
  const State& s = state();
  const int at = s.focus[s.layer];
  if (!s.ringShown || s.yielded || at < 0 || at >= static_cast<int>(s.order.size())) return false;
  *r = s.order[at].rect;
  return true;
}

void focusBeginFrame(bool newScreen) {
  State& s = state();
  s.order.clear();
  s.lastLayer = s.layer;
  s.layer = 0;
  s.shields = 0;
  s.yielded = false;
  s.list = nullptr;
  if (newScreen) s.focus[0] = s.focus[1] = -1;
}

void focusEndFrame(Ctx& ctx) {
  State& s = state();
  if (s.layer == 0) s.focus[1] = -1;
  if (ctx.in.dx != 0 || ctx.in.dy != 0) s.ringShown = false;
  s.moved = false;
  if (!s.yielded) applyKeys(s, ctx.in);
  Rect r;
  if (ctx.cr && focusRing(&r)) drawRing(ctx.cr, r);
}

void focusShield(bool on) {
  State& s = state();
  s.shields += on ? 1 : -1;
  if (!on || s.layer == 1) return;
  s.layer = 1;
  // A dialog that has just opened has, for a player on the keys, its first
  // control focused; for one on the mouse nothing yet.
  if (s.lastLayer == 0) s.focus[1] = s.ringShown ? 0 : -1;
}

}  // namespace ui
