// A record of what the widgets drew this frame (label and rect), kept only
// when a test switches it on, so screen tests can press "menu.settings" by
// what it says rather than by coordinates. Off, it costs one test per widget.
#pragma once

#include <string>
#include <vector>

#include "ui/input.h"

namespace ui {

struct TracedWidget {
  std::string label;  // the text drawn (or, for unlabelled widgets, a kind name)
  Rect rect;
};

void setWidgetTracing(bool on);
// Appends when tracing is on.
void traceWidget(const std::string& label, const Rect& r);
// What was traced since the last clear; tests clear it before each frame.
std::vector<TracedWidget>& widgetTrace();
// The first traced widget with this label, or null.
const TracedWidget* findTracedWidget(const std::string& label);

}  // namespace ui
