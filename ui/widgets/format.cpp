#include "ui/widgets/format.h"

#include <cstdio>
#include <ctime>

#include "i18n/i18n.h"

namespace ui {

std::string formatTime(long long ms) {
  // A clock never shows a negative time, whatever a hand-edited save holds.
  const long long seconds = ms > 0 ? ms / 1000 : 0;
  char buf[32];
  if (ms < 3600000) {
    std::snprintf(buf, sizeof buf, "%02lld:%02lld", seconds / 60, seconds % 60);
  } else {
    std::snprintf(buf, sizeof buf, "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
  }
  return buf;
}

std::string formatDateTime(long long msSinceEpoch) {
  const std::time_t t = static_cast<std::time_t>(msSinceEpoch / 1000);
  std::tm local{};
  if (!localtime_r(&t, &local)) return std::string();
  char buf[64];
  std::snprintf(buf, sizeof buf, "%02d.%02d.%04d %02d:%02d", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900,
                local.tm_hour, local.tm_min);
  return buf;
}

std::string levelBadge(const core::Level& level) {
  return level.own ? i18n::tr("pictures.badge") : "LVL " + std::to_string(level.number);
}

std::string levelTitle(const core::Level& level) {
  return level.own ? level.source : "Level " + std::to_string(level.number);
}

}  // namespace ui
