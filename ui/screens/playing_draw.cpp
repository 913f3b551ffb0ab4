// The playing screen's GPU layer: the board texture, the tray strips and the
// pieces, placed ones under loose ones and the piece in hand on top.
#include <algorithm>
#include <cmath>

#include "ui/draw.h"
#include "ui/frame.h"
#include "ui/gpu.h"
#include "ui/screens/playing_screen.h"
#include "ui/textures/board_image.h"
#include "ui/textures/piece_textures.h"
#include "ui/widgets/theme.h"

namespace ui {

namespace {

constexpr double kLift = 1.04;         // the piece in hand is drawn a little larger
constexpr double kShadowDrop = 7;      // and casts its shadow this far down and right
constexpr double kEaseRate = 18;       // how fast a displayed piece catches up, per second
constexpr double kPictureStep = 64;    // picture bounds are rounded up to this many pixels

struct BoardPaint {
  double w, h;
  int rows, cols;
  double cellW, cellH;
  uint32_t color;
  bool grid;
  uint32_t gridColor;
  double gridAlpha;
};

void paintBoard(cairo_t* cr, void* user) {
  const auto& b = *static_cast<const BoardPaint*>(user);
  const Rect r{2, 2, b.w - 4, b.h - 4};
  fillRoundedRect(cr, r, 6, b.color, 0.04);
  strokeRoundedRect(cr, r, 6, 1, b.color, 0.35);
  if (b.grid) {
    setColor(cr, b.gridColor, b.gridAlpha);
    cairo_set_line_width(cr, 1);
    for (int i = 1; i < b.cols; ++i) {
      cairo_move_to(cr, 2 + i * b.cellW, r.y);
      cairo_line_to(cr, 2 + i * b.cellW, r.y + r.h);
    }
    for (int i = 1; i < b.rows; ++i) {
      cairo_move_to(cr, r.x, 2 + i * b.cellH);
      cairo_line_to(cr, r.x + r.w, 2 + i * b.cellH);
    }
    cairo_stroke(cr);
  }
  // An L of two 22-unit arms at each corner, all stroked at once.
  setColor(cr, b.color, 1.0);
  cairo_set_line_width(cr, 3);
  const double x0 = r.x, y0 = r.y, x1 = r.x + r.w, y1 = r.y + r.h, arm = 22;
  const double corners[4][4] = {{x0, y0, 1, 1}, {x1, y0, -1, 1}, {x0, y1, 1, -1}, {x1, y1, -1, -1}};
  for (const auto& c : corners) {
    cairo_move_to(cr, c[0] + c[2] * arm, c[1]);
    cairo_line_to(cr, c[0], c[1]);
    cairo_line_to(cr, c[0], c[1] + c[3] * arm);
  }
  cairo_stroke(cr);
}

PieceLook looseLook(const store::Settings& settings) {
  return settings.strongOutlines ? PieceLook::Strong : PieceLook::Outlined;
}

int luminance(uint32_t rgb) {
  return (((rgb >> 16) & 255) * 299 + ((rgb >> 8) & 255) * 587 + (rgb & 255) * 114) / 1000;
}

struct PictureRequest {
  const core::Puzzle* puzzle;
  int tier;
};

// The board picture at the resolution the textures are painted at. Bounds
// are rounded up to whole steps, so resizing the window does not decode the
// photograph again on every frame of the drag; painting scales it to fit.
cairo_surface_t* boardPicture(void* user) {
  const auto& req = *static_cast<const PictureRequest*>(user);
  const double scale = gpuScale() * req.tier;
  const auto bound = [](double v) { return static_cast<int>(std::ceil(v / kPictureStep) * kPictureStep); };
  return boardImage(req.puzzle->levelId, bound(req.puzzle->boardW * scale), bound(req.puzzle->boardH * scale));
}

void blitPiece(SDL_Texture* tex, const core::Piece& piece, double x, double y, double boxW, double boxH,
               const BoardView& view, double grow) {
  const double w = boxW * view.zoom * grow, h = boxH * view.zoom * grow;
  const double cx = (x + boxW * 0.5) * view.zoom + view.offsetX;
  const double cy = (y + boxH * 0.5) * view.zoom + view.offsetY;
  if (piece.rotation == 0) {
    gpuBlit(tex, cx - w * 0.5, cy - h * 0.5, w, h, 1.0);
  } else {
    gpuBlitRotated(tex, cx, cy, w, h, piece.rotation, 1.0);
  }
}

// FNV-1a, over the values that decide what the cached table shows.
class Signature {
 public:
  template <typename T>
  void add(const T& value) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&value);
    for (size_t i = 0; i < sizeof(T); ++i) hash_ = (hash_ ^ bytes[i]) * 1099511628211ull;
  }
  void add(const store::OptColor& c) {
    add(c.set);
    add(c.rgb);
  }
  uint64_t value() const { return hash_; }

 private:
  uint64_t hash_ = 1469598103934665603ull;
};

struct TableDraw {
  PlayingScreen* screen;
  const store::Settings* settings;
  const Rect* clip;
  bool opaque;  // into the cached texture, which starts from the background
  bool drawn;
};

}  // namespace

uint64_t PlayingScreen::tableSignature(const Ctx& ctx, const store::Settings& settings, const Rect* clip) const {
  Signature sig;
  for (double v : {ctx.width, ctx.height, gpuScale(), view_.zoom, view_.offsetX, view_.offsetY, puzzle_.boardX,
                   puzzle_.boardY, puzzle_.boardW, puzzle_.boardH, puzzle_.cellW, puzzle_.cellH}) {
    sig.add(v);
  }
  if (clip) {
    for (double v : {clip->x, clip->y, clip->w, clip->h}) sig.add(v);
  }
  for (const store::OptColor& c : {settings.bgColor, settings.boardColor, settings.gridColor}) sig.add(c);
  sig.add(settings.hideConnectedBorder);
  sig.add(settings.strongOutlines);
  sig.add(held_);
  sig.add(sprites_.tier());
  for (const core::Piece& p : puzzle_.pieces) {
    if (p.inTray || (held_ >= 0 && &p == &puzzle_.pieces[held_])) continue;
    for (double v : {p.restX, p.restY}) sig.add(v);
    for (int32_t v : {p.rotation, p.z, p.row * puzzle_.cols + p.col}) sig.add(v);
    sig.add(p.placed);
  }
  return sig.value();
}

// The board and every piece not in hand, drawn into one opaque texture the
// size of the window that is copied over it without blending: while nothing
// on the table moves (the piece in hand is drawn apart), a frame costs one
// copy instead of blending the board and every piece again. The texture is
// drawn again whenever its signature changes, and while some piece still
// shows an outdated texture.
void PlayingScreen::drawTable(const Ctx& ctx, const store::Settings& settings, const Rect* clip) {
  const DrawFn draw = [](void* user) {
    auto& t = *static_cast<TableDraw*>(user);
    if (t.opaque) {
      const uint32_t bg = backgroundRgb();
      SDL_SetRenderDrawColor(gpuRenderer(), (bg >> 16) & 255, (bg >> 8) & 255, bg & 255, 255);
      SDL_RenderClear(gpuRenderer());
      t.drawn = true;
    }
    if (t.clip) gpuSetClip(t.clip->x, t.clip->y, t.clip->w, t.clip->h);
    t.screen->drawBoard(*t.settings);
    t.screen->drawPieces(*t.settings, false);
    gpuClearClip();
  };
  TableDraw job{this, &settings, clip, false, false};
  if (!gpuCaching()) return draw(&job);
  const uint64_t signature = tableSignature(ctx, settings, clip);
  const int pw = static_cast<int>(std::lround(ctx.width * gpuScale()));
  const int ph = static_cast<int>(std::lround(ctx.height * gpuScale()));
  job.opaque = true;
  SDL_Texture* tex = gpuRenderTarget("table@playing", pw, ph, draw, &job, signature != tableDrawn_);
  if (!tex) {
    job.opaque = false;
    return draw(&job);
  }
  if (job.drawn) tableDrawn_ = sprites_.showedStale() ? signature + 1 : signature;
  gpuBlitOpaque(tex, 0, 0, ctx.width, ctx.height);
}

void PlayingScreen::drawBoard(const store::Settings& settings) {
  BoardPaint b;
  b.w = puzzle_.boardW + 4;
  b.h = puzzle_.boardH + 4;
  b.rows = puzzle_.rows;
  b.cols = puzzle_.cols;
  b.cellW = puzzle_.cellW;
  b.cellH = puzzle_.cellH;
  b.color = settings.boardColor.set ? settings.boardColor.rgb : kColorAccent;
  b.grid = !(settings.bgColor.set && luminance(settings.bgColor.rgb) > 220);
  b.gridColor = settings.gridColor.set ? settings.gridColor.rgb : b.color;
  b.gridAlpha = settings.gridColor.set ? 0.38 : 0.09;
  // A grid colour left to the board colour is drawn fainter than the same
  // colour chosen outright; bit 24 keeps the two apart in the texture key.
  const unsigned gridKey = settings.gridColor.set ? b.gridColor : (b.color | 0x1000000u);
  const int pw = static_cast<int>(std::lround(b.w * gpuScale()));
  const int ph = static_cast<int>(std::lround(b.h * gpuScale()));
  SDL_Texture* tex = gpuTexture(boardTextureKey(puzzle_, b.color, gridKey, b.grid, pw, ph), pw, ph, paintBoard, &b);
  const double z = view_.zoom;
  gpuBlit(tex, puzzle_.boardX * z + view_.offsetX - 2 * z, puzzle_.boardY * z + view_.offsetY - 2 * z, b.w * z,
          b.h * z, 1.0);
}

// Displayed positions (restX, restY) catch up with the real ones, so a
// snapped piece slides home instead of jumping.
// With reduced motion they are there at once.
void PlayingScreen::easePieces(double dt, bool still) {
  const double k = still ? 1.0 : 1.0 - std::exp(-kEaseRate * std::max(dt, 0.0));
  for (size_t i = 0; i < puzzle_.pieces.size(); ++i) {
    core::Piece& p = puzzle_.pieces[i];
    if (static_cast<int>(i) == held_) continue;
    p.restX += (p.x - p.restX) * k;
    p.restY += (p.y - p.restY) * k;
    if (std::abs(p.x - p.restX) < 0.25 && std::abs(p.y - p.restY) < 0.25) {
      p.restX = p.x;
      p.restY = p.y;
    }
  }
}

void PlayingScreen::drawPieces(const store::Settings& settings, bool held) {
  PictureRequest picture{&puzzle_, sprites_.tier()};
  const double boxW = puzzle_.cellW + 2 * puzzle_.pad, boxH = puzzle_.cellH + 2 * puzzle_.pad;
  const core::Piece* heldPiece = held_ >= 0 ? &puzzle_.pieces[held_] : nullptr;
  if (held) {
    if (!heldPiece) return;
    const double m = kShadowBlur, drop = kShadowDrop / view_.zoom;
    blitPiece(pieceShadowTexture(puzzle_, *heldPiece), *heldPiece, heldPiece->x - m + drop, heldPiece->y - m + drop,
              boxW + 2 * m, boxH + 2 * m, view_, kLift);
    SDL_Texture* tex = sprites_.texture(puzzle_, *heldPiece, looseLook(settings), boardPicture, &picture);
    blitPiece(tex, *heldPiece, heldPiece->x, heldPiece->y, boxW, boxH, view_, kLift);
    return;
  }
  drawOrder_.clear();
  for (const core::Piece& p : puzzle_.pieces) {
    if (!p.inTray) drawOrder_.push_back(&p);
  }
  std::stable_sort(drawOrder_.begin(), drawOrder_.end(), [](const core::Piece* a, const core::Piece* b) {
    if (a->placed != b->placed) return a->placed;
    return a->z < b->z;
  });
  for (const core::Piece* p : drawOrder_) {
    if (p == heldPiece) continue;
    const PieceLook look = !p->placed                    ? looseLook(settings)
                           : settings.hideConnectedBorder ? PieceLook::Plain
                                                          : PieceLook::Outlined;
    SDL_Texture* tex = sprites_.texture(puzzle_, *p, look, boardPicture, &picture);
    blitPiece(tex, *p, p->restX, p->restY, boxW, boxH, view_, 1.0);
  }
}

void PlayingScreen::drawTray(const store::Settings& settings) {
  const uint32_t fill = settings.trayBgColor.set ? settings.trayBgColor.rgb : kColorPanel;
  const uint32_t border = settings.trayBorderColor.set ? settings.trayBorderColor.rgb : kColorBorder;
  // Any resolution of the picture paints a thumbnail well; asking for the
  // pieces' own keeps the one cached picture from switching back and forth.
  PictureRequest picture{&puzzle_, sprites_.tier()};
  for (int i = 0; i < 2; ++i) {
    const Rect& s = tray_.strip(i);
    gpuFillRect(s.x, s.y, s.w, s.h, fill, 0.92);
    gpuStrokeRect(s.x, s.y, s.w, s.h, border, 1.0);
    gpuSetClip(s.x + 1, s.y + 1, s.w - 2, s.h - 2);
    const auto& items = tray_.items(i);
    for (size_t k = 0; k < items.size(); ++k) {
      const Rect slot = tray_.slot(i, k);
      if (slot.x + slot.w < s.x || slot.x > s.x + s.w || slot.y + slot.h < s.y || slot.y > s.y + s.h) continue;
      SDL_Texture* tex = sprites_.thumbTexture(puzzle_, *items[k], boardPicture, &picture);
      gpuBlitRotated(tex, slot.x + slot.w * 0.5, slot.y + slot.h * 0.5, slot.w, slot.h, items[k]->rotation, 1.0);
    }
    gpuClearClip();
  }
}

}  // namespace ui
