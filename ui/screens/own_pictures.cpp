#include "ui/screens/own_pictures.h"

#include <SDL.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#include "core/catalog.h"
#include "i18n/i18n.h"
#include "store/pictures.h"
#include "store/store.h"
#include "ui/draw.h"
#include "ui/text.h"
#include "ui/widgets/buttons.h"
#include "ui/widgets/dialog.h"
#include "ui/widgets/look.h"
#include "ui/widgets/notice.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kRemoveSize = 30;  // the remove button, inset from the thumbnail's corner by
constexpr double kRemoveInset = 8;
constexpr double kFolderButtonW = 190, kFolderButtonH = 40;

// What the player reads about a file that was not added; null when it was.
const char* problemKey(store::ImportStatus status) {
  switch (status) {
    case store::ImportStatus::Added:
    case store::ImportStatus::Known: return nullptr;
    case store::ImportStatus::Unreadable: return "pictures.unreadable";
    case store::ImportStatus::NotPicture: return "pictures.notPicture";
    case store::ImportStatus::Damaged: return "pictures.damaged";
    case store::ImportStatus::TooSmall: return "pictures.tooSmall";
    case store::ImportStatus::TooLarge: return "pictures.tooLarge";
    case store::ImportStatus::NotStored: return "pictures.notStored";
  }
  return nullptr;
}

// True when the picture was added; a notice says why not otherwise.
bool report(const std::string& path, const store::ImportResult& result) {
  const char* key = problemKey(result.status);
  if (!key) return true;
  const std::string name = path.substr(path.rfind('/') + 1);
  std::fprintf(stderr, "[image] %s nicht als Bild aufgenommen (%s)\n", path.c_str(), key);
  postNotice(i18n::tr("pictures.notAdded"), i18n::tr(key, {{"name", name}}));
  return false;
}

// The folder as a file URL, every byte a URL may not hold as it is escaped.
std::string fileUrl(const std::string& path) {
  std::string url = "file://";
  for (const unsigned char c : path) {
    if (std::isalnum(c) || std::strchr("/-._~", c)) {
      url += static_cast<char>(c);
    } else {
      char hex[4];
      std::snprintf(hex, sizeof hex, "%%%02X", c);
      url += hex;
    }
  }
  return url;
}

}  // namespace

std::vector<std::string> addPictures(const std::vector<std::string>& files) {
  std::vector<std::string> ids;
  for (const std::string& file : files) {
    const store::ImportResult result = store::importPicture(file);
    if (report(file, result)) ids.push_back(result.id);
  }
  return ids;
}

void addPicturesFolder() {
  for (const auto& [name, result] : store::importPicturesFolder()) report(name, result);
}

GameState pictureGame(const std::string& id) {
  GameState game;
  game.screen = ScreenKind::Playing;
  game.levelId = id;
  const store::SavedPuzzle& saved = store::currentPuzzle();
  if (saved.valid && saved.imageId == id) {
    game.rows = saved.rows;
    game.cols = saved.cols;
    return game;
  }
  if (saved.valid) store::clearPuzzle();
  const std::vector<core::DifficultyDef>& difficulties = core::difficulties();
  const core::DifficultyDef& d =
      difficulties[std::clamp(store::settings().difficulty, 0, static_cast<int>(difficulties.size()) - 1)];
  game.rows = d.rows;
  game.cols = d.cols;
  return game;
}

// Mirrored in a right-to-left language: the texts at the right, the button at the left.
void pictureSection(Ctx& ctx, const Rect& r) {
  const bool rtl = i18n::currentIsRtl();
  const Rect button{rtl ? r.x : r.x + r.w - kFolderButtonW, r.y + (r.h - kFolderButtonH) * 0.5, kFolderButtonW,
                    kFolderButtonH};
  const double textW = std::max(0.0, r.w - kFolderButtonW - 16), textX = rtl ? r.x + r.w : r.x;
  const auto line = [&](const char* key, double y, TextStyle style) {
    style.align = rtl ? kAlignRight : kAlignLeft;
    drawText(ctx.cr, textX, r.y + y, i18n::tr(key), style);
  };
  line("levels.yourPictures", 8, labelStyle(20, true, kColorAccent, textW));
  line("levels.picturesHint", 38, labelStyle(13, false, kColorMuted, textW));
  if (plainButton(ctx, button, i18n::tr("levels.openFolder"), false)) {
    const std::string url = fileUrl(store::picturesFolder());
    if (SDL_OpenURL(url.c_str()) != 0) {
      std::fprintf(stderr, "[image] %s nicht geöffnet: %s\n", url.c_str(), SDL_GetError());
    }
  }
}

bool removePictureButton(Ctx& ctx, const Rect& thumb) {
  const Rect r{thumb.x + thumb.w - kRemoveSize - kRemoveInset, thumb.y + kRemoveInset, kRemoveSize, kRemoveSize};
  const bool hovered = ctx.hover(r);
  const bool clicked = pressWidget(ctx, r, i18n::tr("pictures.remove"));
  const double cx = r.x + r.w * 0.5, cy = r.y + r.h * 0.5, arm = r.w * 0.2;
  fillCircle(ctx.cr, cx, cy, r.w * 0.5, hovered ? kColorAccent : 0x000000, hovered ? 1.0 : 0.65);
  const uint32_t cross = hovered ? kColorDarkOnAccent : kColorText;
  drawLine(ctx.cr, cx - arm, cy - arm, cx + arm, cy + arm, 2.5, cross, 1.0);
  drawLine(ctx.cr, cx - arm, cy + arm, cx + arm, cy - arm, 2.5, cross, 1.0);
  return clicked;
}

int askRemovePicture(Ctx& ctx, const std::string& id) {
  const int answer = confirmDialog(ctx, i18n::tr("pictures.removeTitle"), i18n::tr("pictures.removeMessage"),
                                   i18n::tr("pictures.remove"), i18n::tr("common.cancel"));
  if (answer > 0) {
    if (store::currentPuzzle().valid && store::currentPuzzle().imageId == id) store::clearPuzzle();
    store::removePicture(id);
  }
  return answer;
}

}  // namespace ui
