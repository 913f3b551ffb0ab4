// Named-section timing for instrumenting a frame while hunting a slow spot.
// Only active when TESSELLATRIX_STATS is set (read once, on first use).
#pragma once

#include <string>

namespace ui {

void profBegin(const char* name);
void profEnd(const char* name);
// " name mean_ms" per section with calls since the last report, in name order;
// resets those sections. Empty when switched off.
std::string profReport();

}  // namespace ui
