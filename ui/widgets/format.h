// Times as the screens show them.
#pragma once

#include <string>

namespace ui {

// "mm:ss" below an hour, "h:mm:ss" from there on.
std::string formatTime(long long ms);
// "dd.mm.yyyy hh:mm" in local time.
std::string formatDateTime(long long msSinceEpoch);

}  // namespace ui
