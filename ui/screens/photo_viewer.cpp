#include "ui/screens/photo_viewer.h"

#include <algorithm>
#include <cmath>

namespace ui {

namespace {

constexpr double kVelocitySmoothing = 0.3;  // share of this frame's speed in the smoothed one
constexpr double kFriction = 6;             // per second, exponential
constexpr double kMovingSpeed = 1;          // below this on both axes the glide ends
constexpr double kStopSpeed = 20;           // a component below this is dropped

double clampAxis(double pan, double drawn, double area) {
  const double limit = std::max(0.0, (drawn - area) * 0.5 + 0.25 * area);
  return std::clamp(pan, -limit, limit);
}

}  // namespace

void PhotoViewer::wheel(double notches, double px, double py) {
  const double next = std::clamp(zoom * std::pow(kNotch, notches), kMinZoom, kMaxZoom);
  const double k = next / zoom;
  panX = px - (px - panX) * k;
  panY = py - (py - panY) * k;
  zoom = next;
}

void PhotoViewer::toggleZoom() {
  zoom = zoomed() ? 1 : 2;
  panX = panY = 0;
  stop();
}

void PhotoViewer::drag(double dx, double dy, double dt) {
  if (!zoomed()) return;
  panX += dx;
  panY += dy;
  if (dt <= 0) return;
  velX = kVelocitySmoothing * (dx / dt) + (1 - kVelocitySmoothing) * velX;
  velY = kVelocitySmoothing * (dy / dt) + (1 - kVelocitySmoothing) * velY;
}

void PhotoViewer::coast(double dt) {
  if (std::abs(velX) <= kMovingSpeed && std::abs(velY) <= kMovingSpeed) return;
  panX += velX * dt;
  panY += velY * dt;
  const double decay = std::exp(-kFriction * dt);
  velX = std::abs(velX * decay) < kStopSpeed ? 0 : velX * decay;
  velY = std::abs(velY * decay) < kStopSpeed ? 0 : velY * decay;
}

void PhotoViewer::clampPan(double fitW, double fitH, double areaW, double areaH) {
  if (!zoomed()) {
    panX = panY = 0;
    stop();
    return;
  }
  panX = clampAxis(panX, fitW * zoom, areaW);
  panY = clampAxis(panY, fitH * zoom, areaH);
}

}  // namespace ui
