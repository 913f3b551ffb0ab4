// Which texture shows each piece this frame. Piece textures are painted once
// per look (size, resolution tier, outline) and kept in the GPU cache; when
// the look changes for every piece at once (a window resize, zooming past a
// resolution tier), repainting 110 pieces in one frame would stall it. So each
// frame paints only up to a budget of pixels and pieces not yet repainted
// keep showing their previous texture, stretched to the new size. A piece
// that has never been shown is painted at once whatever the budget.
#pragma once

#include <SDL.h>
#include <cairo.h>

#include <string>
#include <vector>

#include "core/puzzle.h"
#include "ui/textures/piece_textures.h"

namespace ui {

class PieceSprites {
 public:
  // Pixels a frame may spend on repainting: about 5 ms of painting.
  static constexpr long kFrameBudget = 300000;

  // `tier` multiplies the texture resolution (1, or 2 while zoomed in);
  // `picture` is fetched only when something is painted.
  void beginFrame(const core::Puzzle& puzzle, int tier);
  SDL_Texture* texture(const core::Puzzle& puzzle, const core::Piece& piece, PieceLook look,
                       cairo_surface_t* (*picture)(void*), void* pictureUser);
  // The piece's square tray thumbnail; thumbnails are few and small, so they
  // are painted as soon as they are shown.
  SDL_Texture* thumbTexture(const core::Puzzle& puzzle, const core::Piece& piece,
                            cairo_surface_t* (*picture)(void*), void* pictureUser);
  int tier() const { return tier_; }
  // True when some piece showed its previous texture this frame, so the
  // frame does not yet look as it will once everything is repainted.
  bool showedStale() const { return stale_; }

 private:
  struct Shown {
    std::string key;  // what was shown last, empty if nothing yet
    int w = 0, h = 0;
  };
  struct Wanted {
    std::string key[3];  // by PieceLook
    std::string thumb;
  };

  void refreshKeys(const core::Puzzle& puzzle);

  std::vector<Shown> shown_;
  std::vector<Wanted> wanted_;
  std::string prefix_;
  int tier_ = 1;
  int pixelW_ = 0, pixelH_ = 0;
  double keyedW_ = -1, keyedH_ = -1;
  std::string keyedPrefix_;
  long budget_ = kFrameBudget;
  bool stale_ = false;
};

}  // namespace ui
