// The main menu: the drifting pieces, the waving title, the tagline, a column
// of buttons and the footer. It keeps nothing between frames: whether a game
// can be continued and which level a new puzzle takes are read from the
// stores every frame.
#include <SDL_keycode.h>

#include <algorithm>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "platform/app_info.h"
#include "store/store.h"
#include "ui/frame_layer.h"
#include "ui/screens/background_pieces.h"
#include "ui/screens/own_pictures.h"
#include "ui/screens/screens.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/chrome.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

enum class MenuAction { Continue, LevelSelect, NewPuzzle, Gallery, Settings, About, Quit };

struct MenuRow {
  const char* key;
  MenuAction action;
};

constexpr MenuRow kMenuRows[] = {
    {"menu.continue", MenuAction::Continue}, {"menu.levelSelect", MenuAction::LevelSelect},
    {"menu.newPuzzle", MenuAction::NewPuzzle}, {"menu.gallery", MenuAction::Gallery},
    {"menu.settings", MenuAction::Settings}, {"menu.about", MenuAction::About},
    {"menu.quit", MenuAction::Quit},
};

constexpr double kButtonGap = 12;

// Only a saved game of a level the catalogue still has can be continued.
bool canContinue() {
  const store::SavedPuzzle& saved = store::currentPuzzle();
  return saved.valid && core::levelById(saved.imageId) != nullptr;
}

// The first level without a solve, or the first level once all are solved.
const core::Level& nextUnsolvedLevel() {
  const std::vector<store::SolveEntry>& solves = store::solves();
  for (const core::Level& level : core::levels()) {
    const auto solvedIt = [&](const store::SolveEntry& e) { return e.imageId == level.id; };
    if (std::none_of(solves.begin(), solves.end(), solvedIt)) return level;
  }
  return core::levels().front();
}

void pushPlaying(const std::string& levelId, int rows, int cols) {
  GameState playing;
  playing.screen = ScreenKind::Playing;
  playing.levelId = levelId;
  playing.rows = rows;
  playing.cols = cols;
  // The puzzle's own textures get the room the drifting pieces took.
  backgroundPiecesReset();
  Game::instance().push(playing);
}

// A puzzle in progress is replaced without asking.
void startNewPuzzle() {
  const core::Level& level = nextUnsolvedLevel();
  const std::vector<core::DifficultyDef>& difficulties = core::difficulties();
  const int index = std::clamp(store::settings().difficulty, 0, static_cast<int>(difficulties.size()) - 1);
  store::clearPuzzle();
  pushPlaying(level.id, difficulties[index].rows, difficulties[index].cols);
}

// A picture dropped on the menu starts at once, as one opened with the game
// does; false when none of the files could be added.
bool openDropped(const std::vector<std::string>& files) {
  const std::vector<std::string> ids = addPictures(files);
  if (ids.empty()) return false;
  const GameState game = pictureGame(ids.front());
  pushPlaying(game.levelId, game.rows, game.cols);
  return true;
}

void pushScreen(ScreenKind kind) {
  GameState s;
  s.screen = kind;
  Game::instance().push(s);
}

void act(Ctx& ctx, MenuAction action) {
  switch (action) {
    case MenuAction::Continue: {
      const store::SavedPuzzle& saved = store::currentPuzzle();
      pushPlaying(saved.imageId, saved.rows, saved.cols);
      break;
    }
    case MenuAction::LevelSelect: pushScreen(ScreenKind::LevelSelect); break;
    case MenuAction::NewPuzzle: startNewPuzzle(); break;
    case MenuAction::Gallery: pushScreen(ScreenKind::Gallery); break;
    case MenuAction::Settings: pushScreen(ScreenKind::Settings); break;
    case MenuAction::About: pushScreen(ScreenKind::About); break;
    case MenuAction::Quit: ctx.quit = true; break;
  }
}

class MenuScreen : public Screen {
 public:
  void update(Ctx& ctx) override {
    layerTrackDamage();  // the title, tagline, buttons and footer leave most of the layer empty
    if (!ctx.in.dropped.empty() && openDropped(ctx.in.dropped)) return;
    backgroundPiecesUpdate(ctx);
    const bool large = largeLayout(ctx);
    const double w = ctx.width, h = ctx.height;
    const double fs = std::min((w - 48) / 12.24, large ? 56.0 : 36.0);
    const double titleY = std::min(large ? 150.0 : 90.0, 0.2 * h) + fs / 2;
    wavyTitle(ctx, w / 2, titleY, platform::kAppTitle, fs);
    tagline(ctx, titleY + 0.85 * fs);

    buttons(ctx, large, titleY + fs + 40);
    footer(ctx, h);
    if (ctx.in.hasKey(SDLK_ESCAPE)) ctx.quit = true;
  }

 private:
  // The stack's height counts one button fewer than are drawn, so a short
  // window lets the last one reach into the footer rather than lifting the
  // column over the title.
  static void buttons(Ctx& ctx, bool large, double belowTitle) {
    const bool resumable = canContinue();
    const double bw = std::min(0.5 * ctx.width, 320.0), bh = large ? 52 : 44;
    const double stack = resumable ? 6 * bh + 60 : 5 * bh + 48;
    double y = std::min(ctx.height - stack - 60, std::max(0.5 * (ctx.height - stack) + 30, belowTitle));
    for (const MenuRow& row : kMenuRows) {
      if (row.action == MenuAction::Continue && !resumable) continue;
      const bool primary =
          row.action == MenuAction::Continue || (row.action == MenuAction::LevelSelect && !resumable);
      if (menuButton(ctx, Rect{(ctx.width - bw) / 2, y, bw, bh}, i18n::tr(row.key), primary)) {
        act(ctx, row.action);
        return;
      }
      y += bh + kButtonGap;
    }
  }
};

}  // namespace

std::unique_ptr<Screen> makeMenuScreen() { return std::make_unique<MenuScreen>(); }

}  // namespace ui
