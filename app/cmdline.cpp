#include "app/cmdline.h"

#include <cstdio>
#include <cstring>

#include "core/catalog.h"
#include "platform/app_info.h"

namespace app {

InfoRequest findInfoRequest(int argc, const char* const* argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--version") == 0) return InfoRequest::Version;
    if (std::strcmp(argv[i], "--help") == 0) return InfoRequest::Help;
  }
  return InfoRequest::None;
}

std::string versionText() {
  char buf[128];
  std::snprintf(buf, sizeof buf, "%s %s (Build %d)\n", platform::kAppTitle, platform::kAppVersion,
                platform::kAppBuild);
  return buf;
}

std::string helpText() {
  char buf[512];
  std::snprintf(buf, sizeof buf,
                "%s %s\n  --version    Version ausgeben\n  --fullscreen im Vollbild starten\n"
                "  --windowed   im Fenster starten\n  --size BxH   mit dieser Fenstergroesse starten\n"
                "  BILD...      diese Bilder als Puzzle oeffnen\n",
                platform::kAppTitle, platform::kAppVersion);
  return buf;
}

bool applyWindowOptions(int argc, const char* const* argv, store::Settings& settings) {
  bool sized = false;
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    if (std::strcmp(arg, "--fullscreen") == 0) {
      settings.fullscreen = true;
    } else if (std::strcmp(arg, "--windowed") == 0) {
      settings.fullscreen = false;
    } else if (std::strcmp(arg, "--size") == 0 && i + 1 < argc) {
      // The value is consumed whether or not it reads as a size.
      int w = 0, h = 0;
      if (std::sscanf(argv[++i], "%dx%d", &w, &h) == 2 && w >= 640 && h >= 480) {
        settings.windowW = w;
        settings.windowH = h;
        sized = true;
      }
    }
  }
  return sized;
}

std::vector<std::string> pictureArguments(int argc, const char* const* argv) {
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--size") == 0) {
      ++i;
    } else if (argv[i][0] != '\0' && std::strncmp(argv[i], "--", 2) != 0) {
      files.push_back(argv[i]);
    }
  }
  return files;
}

bool startStateFor(const std::string& name, const store::Settings& settings, ui::GameState* out) {
  struct Entry {
    const char* name;
    ui::ScreenKind kind;
  };
  static constexpr Entry kScreens[] = {
      {"menu", ui::ScreenKind::Menu},         {"levels", ui::ScreenKind::LevelSelect},
      {"playing", ui::ScreenKind::Playing},   {"gallery", ui::ScreenKind::Gallery},
      {"settings", ui::ScreenKind::Settings}, {"about", ui::ScreenKind::About},
      {"licenses", ui::ScreenKind::Licenses},
  };
  for (const Entry& e : kScreens) {
    if (name != e.name) continue;
    ui::GameState state;
    state.screen = e.kind;
    if (e.kind == ui::ScreenKind::Playing) {
      const auto& diffs = core::difficulties();
      const bool known = settings.difficulty >= 0 && settings.difficulty < static_cast<int>(diffs.size());
      const core::DifficultyDef& d = diffs[known ? settings.difficulty : 1];
      state.levelId = "level1";
      state.rows = d.rows;
      state.cols = d.cols;
    }
    *out = state;
    return true;
  }
  return false;
}

}  // namespace app
