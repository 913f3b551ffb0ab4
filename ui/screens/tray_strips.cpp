#include "ui/screens/tray_strips.h"

#include <algorithm>

namespace ui {

namespace {

constexpr double kWheelStep = 60;
constexpr double kInset = 4;  // from the strip's edge to the first thumbnail

}  // namespace

void TrayStrips::layout(double viewW, double viewH, double top) {
  vertical_ = viewH <= viewW;
  const double thick = kThumb + 2 * kInset;
  if (vertical_) {
    const double h = std::max(viewH - top - 16, 0.0);
    strips_[0] = Rect{(kExtent + 16 - thick) * 0.5, top + 8, thick, h};
    strips_[1] = Rect{viewW - (kExtent + 16 + thick) * 0.5, top + 8, thick, h};
  } else {
    const double w = std::max(viewW - 16, 0.0);
    strips_[0] = Rect{8, top + (kExtent - thick) * 0.5, w, thick};
    strips_[1] = Rect{8, viewH - 8 - kExtent + (kExtent - thick) * 0.5, w, thick};
  }
  clampScroll();
}

void TrayStrips::setPieces(core::Puzzle& puzzle) {
  puzzle.trayPieces(&all_);
  const auto indexOf = [&](const core::Piece* p) { return p->row * puzzle.cols + p->col; };
  const size_t n = puzzle.pieces.size();
  if (stripOf_.size() != n) stripOf_.assign(n, -1);
  seen_.swap(stripOf_);  // the strips of the frame before
  stripOf_.assign(n, -1);
  const size_t half = (all_.size() + 1) / 2;
  items_[0].clear();
  items_[1].clear();
  for (size_t k = 0; k < all_.size(); ++k) {
    const int index = indexOf(all_[k]);
    // A piece the strips have not seen yet (a fresh tray, or one a shuffle
    // or a resume filled) takes its place by the tray order.
    const int8_t i = seen_[index] >= 0 ? seen_[index] : (k < half ? 0 : 1);
    stripOf_[index] = i;
    items_[i].push_back(all_[k]);
  }
  clampScroll();
}

void TrayStrips::putBack(int index, int i) {
  if (index >= 0 && static_cast<size_t>(index) < stripOf_.size()) stripOf_[index] = static_cast<int8_t>(i);
}

Rect TrayStrips::table(double viewW, double viewH, double top) const {
  if (vertical_) {
    const double left = strips_[0].x + strips_[0].w;
    return Rect{left, top, strips_[1].x - left, viewH - top};
  }
  const double upper = strips_[0].y + strips_[0].h;
  return Rect{0, upper, viewW, strips_[1].y - upper};
}

double TrayStrips::maxScroll(int i) const {
  const double content = kInset * 2 + items_[i].size() * kPitch - (kPitch - kThumb);
  return std::max(content - length(i), 0.0);
}

void TrayStrips::clampScroll() {
  for (int i = 0; i < 2; ++i) scroll_[i] = std::clamp(scroll_[i], 0.0, maxScroll(i));
}

Rect TrayStrips::slot(int i, size_t k) const {
  const Rect& s = strips_[i];
  const double along = kInset + k * kPitch - scroll_[i];
  return vertical_ ? Rect{s.x + kInset, s.y + along, kThumb, kThumb} : Rect{s.x + along, s.y + kInset, kThumb, kThumb};
}

int TrayStrips::stripAt(double x, double y) const {
  for (int i = 0; i < 2; ++i) {
    if (strips_[i].contains(x, y)) return i;
  }
  return -1;
}

core::Piece* TrayStrips::pieceAt(double x, double y) const {
  const int i = stripAt(x, y);
  if (i < 0) return nullptr;
  for (size_t k = 0; k < items_[i].size(); ++k) {
    if (slot(i, k).contains(x, y)) return items_[i][k];
  }
  return nullptr;
}

bool TrayStrips::find(const core::Piece* piece, int* strip, size_t* k) const {
  for (int i = 0; i < 2; ++i) {
    const auto it = std::find(items_[i].begin(), items_[i].end(), piece);
    if (it == items_[i].end()) continue;
    *strip = i;
    *k = static_cast<size_t>(it - items_[i].begin());
    return true;
  }
  return false;
}

void TrayStrips::reveal(int i, size_t k) {
  const double start = kInset + k * kPitch;  // along the strip, unscrolled
  // Its far end in view, then its near end, which wins in a strip too short for both.
  scroll_[i] = std::min(std::max(scroll_[i], start + kThumb + kInset - length(i)), start - kInset);
  clampScroll();
}

bool TrayStrips::handleScroll(const Ctx& ctx) {
  const Input& in = ctx.in;
  if (dragStrip_ >= 0) {
    scroll_[dragStrip_] -= vertical_ ? in.dy : in.dx;
    if (!in.mouseDown) dragStrip_ = -1;
    clampScroll();
    return true;
  }
  const int i = stripAt(in.mouseX, in.mouseY);
  if (i < 0) return false;
  scroll_[i] -= in.wheel * kWheelStep;
  if (in.mousePressed && !pieceAt(in.mouseX, in.mouseY)) dragStrip_ = i;
  clampScroll();
  return in.wheel != 0 || dragStrip_ >= 0;
}

}  // namespace ui
