#include "ui/screens/piece_sprites.h"

#include <cmath>

#include "ui/gpu.h"
#include "ui/screens/tray_strips.h"
#include "ui/textures/piece_textures.h"

namespace ui {

namespace {

constexpr int kThumb = static_cast<int>(TrayStrips::kThumb);

}  // namespace

void PieceSprites::beginFrame(const core::Puzzle& puzzle, int tier) {
  if (tier != tier_ || prefix_.empty()) {
    tier_ = tier;
    prefix_ = tier == 1 ? puzzle.levelId : puzzle.levelId + "@2x";
  }
  const double scale = gpuScale() * tier;
  pixelW_ = static_cast<int>(std::lround((puzzle.cellW + 2 * puzzle.pad) * scale));
  pixelH_ = static_cast<int>(std::lround((puzzle.cellH + 2 * puzzle.pad) * scale));
  budget_ = kFrameBudget;
  stale_ = false;
  if (shown_.size() != puzzle.pieces.size()) {
    shown_.assign(puzzle.pieces.size(), Shown{});
    wanted_.assign(puzzle.pieces.size(), Wanted{});
    keyedW_ = -1;
  }
  refreshKeys(puzzle);
}

// Keys change only with the piece box or the tier, not from frame to frame.
void PieceSprites::refreshKeys(const core::Puzzle& puzzle) {
  if (puzzle.cellW == keyedW_ && puzzle.cellH == keyedH_ && prefix_ == keyedPrefix_) return;
  keyedW_ = puzzle.cellW;
  keyedH_ = puzzle.cellH;
  keyedPrefix_ = prefix_;
  for (size_t i = 0; i < wanted_.size(); ++i) {
    for (PieceLook look : {PieceLook::Outlined, PieceLook::Plain, PieceLook::Strong}) {
      wanted_[i].key[static_cast<int>(look)] = pieceTextureKey(prefix_, puzzle, puzzle.pieces[i], look);
    }
    wanted_[i].thumb = pieceThumbKey(puzzle.levelId, puzzle, puzzle.pieces[i], kThumb, true);
  }
}

SDL_Texture* PieceSprites::texture(const core::Puzzle& puzzle, const core::Piece& piece, PieceLook look,
                                   cairo_surface_t* (*picture)(void*), void* pictureUser) {
  const size_t index = static_cast<size_t>(piece.row * puzzle.cols + piece.col);
  if (index >= shown_.size()) return nullptr;
  const std::string& want = wanted_[index].key[static_cast<int>(look)];
  Shown& shown = shown_[index];
  SDL_Texture* tex = gpuCachedTexture(want, pixelW_, pixelH_);
  if (!tex) {
    SDL_Texture* old = shown.key.empty() ? nullptr : gpuCachedTexture(shown.key, shown.w, shown.h);
    if (old && budget_ <= 0) {
      stale_ = true;
      return old;
    }
    // Painting at a higher tier is painting at a higher device scale.
    const double scale = gpuScale();
    gpuSetScale(scale * tier_);
    tex = pieceTexture(prefix_, puzzle, piece, picture(pictureUser), look);
    gpuSetScale(scale);
    budget_ -= static_cast<long>(pixelW_) * pixelH_;
    if (!tex) {
      stale_ = old != nullptr;
      return old;
    }
  }
  if (shown.key != want) shown.key = want;
  shown.w = pixelW_;
  shown.h = pixelH_;
  return tex;
}

SDL_Texture* PieceSprites::thumbTexture(const core::Puzzle& puzzle, const core::Piece& piece,
                                        cairo_surface_t* (*picture)(void*), void* pictureUser) {
  const size_t index = static_cast<size_t>(piece.row * puzzle.cols + piece.col);
  if (index >= wanted_.size()) return nullptr;
  const int px = static_cast<int>(std::lround(kThumb * gpuScale()));
  if (SDL_Texture* tex = gpuCachedTexture(wanted_[index].thumb, px, px)) return tex;
  return pieceThumbTexture(puzzle.levelId, puzzle, piece, picture(pictureUser), kThumb, true, nullptr, nullptr);
}

}  // namespace ui
