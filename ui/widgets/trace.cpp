#include "ui/widgets/trace.h"

namespace ui {

namespace {

struct State {
  bool on = false;
  std::vector<TracedWidget> widgets;
};

State& state() {
  static State s;
  return s;
}

}  // namespace

void setWidgetTracing(bool on) { state().on = on; }

void traceWidget(const std::string& label, const Rect& r) {
  State& s = state();
  if (s.on) s.widgets.push_back(TracedWidget{label, r});
}

std::vector<TracedWidget>& widgetTrace() { return state().widgets; }

const TracedWidget* findTracedWidget(const std::string& label) {
  for (const TracedWidget& w : state().widgets) {
    if (w.label == label) return &w;
  }
  return nullptr;
}

}  // namespace ui
