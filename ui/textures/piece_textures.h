// Puzzle pieces as cached textures: the level picture clipped to the piece's
// outline with a faint light rim. The keys carry everything the picture
// depends on (picture, grid, logical piece size, look), so a changed window or
// difficulty never shows a stale piece and nothing is painted twice.
#pragma once

#include <SDL.h>
#include <cairo.h>

#include <string>

#include "core/puzzle.h"

namespace ui {

// The rim a piece is painted with: the faint light one, none (a placed
// piece whose neighbours hide it), or a wide bright one that stands out for
// eyes that need it (loose pieces, by the player's setting).
enum class PieceLook { Outlined = 0, Plain = 1, Strong = 2 };

// lround(w) "x" lround(h): 83.6 x 80.2 gives "84x80".
std::string sizeKey(double w, double h);
std::string pieceTextureKey(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                            PieceLook look);
std::string pieceThumbKey(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece, int size,
                          bool square);
std::string boardTextureKey(const core::Puzzle& puzzle, unsigned first, unsigned second, bool flag, int pixelW,
                            int pixelH);

// The piece at its image box size (cell plus pad on every side). `picture`
// may be null: the piece is then a translucent orange shape.
SDL_Texture* pieceTexture(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                          cairo_surface_t* picture, PieceLook look);
// The soft shadow a lifted piece casts: its outline faded out over
// kShadowBlur units, in a texture that margin larger than the image box on
// every side. Painted once per piece shape and size.
inline constexpr double kShadowBlur = 10;
SDL_Texture* pieceShadowTexture(const core::Puzzle& puzzle, const core::Piece& piece);
// The piece shrunk so its longer side is `size` units: fitted to its own
// shape, or centred in a size x size square. outW/outH receive the box size.
SDL_Texture* pieceThumbTexture(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                               cairo_surface_t* picture, int size, bool square, double* outW, double* outH);

}  // namespace ui
