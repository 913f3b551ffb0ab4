#include "ui/textures/piece_textures.h"

#include <algorithm>
#include <cmath>

#include "core/outline.h"
#include "ui/draw.h"
#include "ui/gpu.h"

namespace ui {

namespace {

struct PiecePaint {
  const core::Puzzle* puzzle;
  const core::Piece* piece;
  cairo_surface_t* picture;
  PieceLook look;
  double scale;  // piece units to texture units
  double offsetX, offsetY;
};

// The piece box's home cell of the picture falls on the cell at (pad, pad);
// the picture is stretched over the whole board first.
void paintPicture(cairo_t* cr, const PiecePaint& req) {
  const core::Puzzle& p = *req.puzzle;
  cairo_save(cr);
  cairo_clip_preserve(cr);
  cairo_translate(cr, p.pad - req.piece->col * p.cellW, p.pad - req.piece->row * p.cellH);
  const int pw = cairo_image_surface_get_width(req.picture);
  const int ph = cairo_image_surface_get_height(req.picture);
  if (pw > 0 && ph > 0) cairo_scale(cr, p.boardW / pw, p.boardH / ph);
  cairo_set_source_surface(cr, req.picture, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
  cairo_paint(cr);
  cairo_restore(cr);
}

void paintPiece(cairo_t* cr, void* user) {
  const auto& req = *static_cast<const PiecePaint*>(user);
  const core::Puzzle& p = *req.puzzle;
  cairo_save(cr);
  cairo_translate(cr, req.offsetX, req.offsetY);
  cairo_scale(cr, req.scale, req.scale);
  core::buildPiecePath(cr, p.cellW, p.cellH, p.pad, req.piece->edges);
  if (req.picture) {
    paintPicture(cr, req);
  } else {
    cairo_set_source_rgba(cr, 0.9607843137254902, 0.6509803921568628, 0.13725490196078433, 0.4);
    cairo_fill_preserve(cr);
  }
  if (req.look == PieceLook::Plain) {
    cairo_new_path(cr);
  } else {
    const bool strong = req.look == PieceLook::Strong;
    cairo_set_source_rgba(cr, 1, 1, 1, strong ? 0.9 : 0.35);
    cairo_set_line_width(cr, strong ? 4.0 : 1.5);
    cairo_stroke(cr);
  }
  cairo_restore(cr);
}

void paintShadow(cairo_t* cr, void* user) {
  const auto& req = *static_cast<const PiecePaint*>(user);
  const core::Puzzle& p = *req.puzzle;
  cairo_translate(cr, kShadowBlur, kShadowBlur);
  core::buildPiecePath(cr, p.cellW, p.cellH, p.pad, req.piece->edges);
  softShadowFromPath(cr, 0, 0, kShadowBlur, 0x000000, 0.55);
  cairo_new_path(cr);
}

double boxW(const core::Puzzle& p) { return p.cellW + 2 * p.pad; }
double boxH(const core::Puzzle& p) { return p.cellH + 2 * p.pad; }

int pixels(double logical) { return static_cast<int>(std::lround(logical * gpuScale())); }

std::string pieceStem(const char* kind, const std::string& prefix, const core::Puzzle& puzzle,
                      const core::Piece& piece) {
  return kind + prefix + "_" + piece.id + "_" + std::to_string(puzzle.rows) + "x" + std::to_string(puzzle.cols) + "_";
}

}  // namespace

std::string sizeKey(double w, double h) { return std::to_string(std::lround(w)) + "x" + std::to_string(std::lround(h)); }

std::string pieceTextureKey(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                            PieceLook look) {
  static const char* const kSuffix[] = {"_b", "_n", "_s"};
  return pieceStem("pc_", prefix, puzzle, piece) + sizeKey(boxW(puzzle), boxH(puzzle)) + kSuffix[static_cast<int>(look)];
}

std::string pieceThumbKey(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece, int size,
                          bool square) {
  return pieceStem("th_", prefix, puzzle, piece) + std::to_string(size) + "_" +
         sizeKey(boxW(puzzle), boxH(puzzle)) + (square ? "_q" : "_f");
}

std::string boardTextureKey(const core::Puzzle& puzzle, unsigned first, unsigned second, bool flag, int pixelW,
                            int pixelH) {
  return "board_" + std::to_string(pixelW) + "x" + std::to_string(pixelH) + "_" + std::to_string(puzzle.rows) + "x" +
         std::to_string(puzzle.cols) + "_" + std::to_string(first) + "_" + std::to_string(second) + (flag ? "g" : "n");
}

SDL_Texture* pieceTexture(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                          cairo_surface_t* picture, PieceLook look) {
  PiecePaint req{&puzzle, &piece, picture, look, 1.0, 0, 0};
  return gpuTexture(pieceTextureKey(prefix, puzzle, piece, look), pixels(boxW(puzzle)), pixels(boxH(puzzle)),
                    paintPiece, &req);
}

SDL_Texture* pieceShadowTexture(const core::Puzzle& puzzle, const core::Piece& piece) {
  PiecePaint req{&puzzle, &piece, nullptr, PieceLook::Outlined, 1.0, 0, 0};
  const double w = boxW(puzzle) + 2 * kShadowBlur, h = boxH(puzzle) + 2 * kShadowBlur;
  return gpuTexture(pieceStem("sh_", puzzle.levelId, puzzle, piece) + sizeKey(w, h), pixels(w), pixels(h),
                    paintShadow, &req);
}

SDL_Texture* pieceThumbTexture(const std::string& prefix, const core::Puzzle& puzzle, const core::Piece& piece,
                               cairo_surface_t* picture, int size, bool square, double* outW, double* outH) {
  if (size < 1) return nullptr;
  const double pw = boxW(puzzle), ph = boxH(puzzle);
  const double m = std::max(pw, ph);
  const double s = m > 0 ? size / m : 1.0;
  double w = size, h = size;
  PiecePaint req{&puzzle, &piece, picture, PieceLook::Outlined, s, 0, 0};
  if (square) {
    req.offsetX = (size - s * pw) / 2;
    req.offsetY = (size - s * ph) / 2;
  } else {
    w = m > 0 ? s * pw : pw;
    h = m > 0 ? s * ph : ph;
  }
  if (outW) *outW = w;
  if (outH) *outH = h;
  return gpuTexture(pieceThumbKey(prefix, puzzle, piece, size, square), pixels(w), pixels(h), paintPiece, &req);
}

}  // namespace ui
