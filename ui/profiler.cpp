#include "ui/profiler.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace ui {

namespace {

struct Section {
  double total = 0;
  double start = 0;
  int calls = 0;
};

struct State {
  bool on = std::getenv("TESSELLATRIX_STATS") != nullptr;
  std::map<std::string, Section> sections;
};

State& state() {
  static State s;
  return s;
}

double nowSeconds() {
  const auto ns = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(ns).count() / 1e9;
}

}  // namespace

void profBegin(const char* name) {
  State& s = state();
  if (s.on) s.sections[name].start = nowSeconds();
}

void profEnd(const char* name) {
  State& s = state();
  if (!s.on) return;
  Section& sec = s.sections[name];
  sec.total += nowSeconds() - sec.start;
  ++sec.calls;
}

std::string profReport() {
  std::string out;
  for (auto& [name, sec] : state().sections) {
    if (sec.calls <= 0) continue;
    char piece[128];
    std::snprintf(piece, sizeof piece, " %s %.1f", name.c_str(), 1000.0 * sec.total / sec.calls);
    out += piece;
    sec.total = 0;
    sec.calls = 0;
  }
  return out;
}

}  // namespace ui
