// Each piece is one cell of a 5 x 6 cut of a photograph. The cells are
// square while the photographs are not, so a photograph is scaled to cover
// the cut: on a wide picture each column shows the middle of its share, on a
// tall one each row does. A set paints all its textures when it is built,
// from pictures decoded at the size the pieces show them and let go at the
// end of that frame: one decode per photograph and set, never one per piece.
// A texture the cache has dropped since is painted again on its next draw,
// with the same single decode for that frame.
//
// Pieces draw from the game's generator through a stand-in for the C
// library's rand() (0 to 2^31 - 1), seeded from the clock so every start
// looks different; nothing here has to be reproducible.
#include "ui/screens/background_pieces.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include "core/outline.h"
#include "core/random.h"
#include "platform/image.h"
#include "ui/gpu.h"

namespace ui {

namespace {

constexpr int kCols = 5, kRows = 6;
constexpr size_t kMaxSources = 4;
constexpr double kHalf = kBgPieceSize / 2;
// The margin around a cell for its knobs, in the same share as the puzzles'.
constexpr double kMargin = kBgPieceSize * 0.22 / 1.44;
constexpr double kCell = kBgPieceSize - 2 * kMargin;
constexpr double kTouch = 0.84 * 2 * kHalf;  // centres nearer than this collide
constexpr double kOutside = 390;             // farther out than this a piece comes in anew
constexpr double kMaxSpeed = 120;
constexpr double kAlpha = 0.85;
constexpr double kRandMax = 2147483647.0;

using SurfacePtr = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

struct Source {
  core::Level level;
  SurfacePtr picture{nullptr, cairo_surface_destroy};
  bool tried = false;  // this frame: a failed decode is not retried for every piece
};

struct State {
  std::vector<BgPiece> pieces;
  std::vector<Source> sources;  // the photographs the set was cut from
  double width = 0, height = 0;  // the window the set was built for
  bool built = false;
  core::Random random{static_cast<uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count())};
};

State& state() {
  static State s;
  return s;
}

int rnd(State& s) { return static_cast<int>(s.random.next() * (kRandMax + 1)); }
double unit(State& s) { return rnd(s) / kRandMax; }

// The photograph's size in logical units once scaled to cover the cut.
void coverSize(const core::Level& level, double* w, double* h) {
  const double k = kCell / std::min(static_cast<double>(level.width) / kCols, static_cast<double>(level.height) / kRows);
  *w = level.width * k;
  *h = level.height * k;
}

cairo_surface_t* picture(Source& src) {
  if (!src.tried) {
    src.tried = true;
    double w, h;
    coverSize(src.level, &w, &h);
    const double scale = gpuScale();
    src.picture.reset(platform::loadImage(core::levelImagePath(src.level), static_cast<int>(std::ceil(w * scale)),
                                          static_cast<int>(std::ceil(h * scale))));
  }
  return src.picture.get();
}

void paintPicture(cairo_t* cr, Source& src, const BgPiece& piece) {
  cairo_surface_t* pic = picture(src);
  const int pw = pic ? cairo_image_surface_get_width(pic) : 0, ph = pic ? cairo_image_surface_get_height(pic) : 0;
  if (pw < 1 || ph < 1) {
    cairo_set_source_rgb(cr, 0x2a / 255.0, 0x33 / 255.0, 0x50 / 255.0);
    cairo_fill_preserve(cr);
    return;
  }
  double w, h;
  coverSize(src.level, &w, &h);
  const double cellX = piece.col * w / kCols + (w / kCols - kCell) / 2;
  const double cellY = piece.row * h / kRows + (h / kRows - kCell) / 2;
  cairo_save(cr);
  cairo_clip_preserve(cr);
  cairo_translate(cr, kMargin - cellX, kMargin - cellY);
  cairo_scale(cr, w / pw, h / ph);
  cairo_set_source_surface(cr, pic, 0, 0);
  // Knobs of the outer cells reach past the picture's edge: they take its edge colours.
  cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
  cairo_paint(cr);
  cairo_restore(cr);
}

struct PaintRequest {
  Source* source;
  const BgPiece* piece;
};

void paintBgPiece(cairo_t* cr, void* user) {
  const auto& req = *static_cast<const PaintRequest*>(user);
  core::buildPiecePath(cr, kCell, kCell, kMargin, req.piece->edges);
  paintPicture(cr, *req.source, *req.piece);
  cairo_set_source_rgba(cr, 1, 1, 1, 0.35);
  cairo_set_line_width(cr, 1.5);
  cairo_stroke(cr);
}

int texturePixels() { return static_cast<int>(std::lround(gpuScale() * kBgPieceSize)); }

SDL_Texture* pieceTexture(State& s, const BgPiece& p) {
  PaintRequest req{&s.sources[p.image], &p};
  return gpuTexture(p.key, texturePixels(), texturePixels(), paintBgPiece, &req);
}

std::string textureKey(const core::Level& level, const BgPiece& p) {
  std::string key = "bgpiece_" + level.id + "_" + std::to_string(p.col) + "_" + std::to_string(p.row) + "_";
  for (const int side : {p.edges.top, p.edges.right, p.edges.bottom, p.edges.left}) key += side > 0 ? '+' : '-';
  return key;
}

void spawnFromEdge(State& s, BgPiece& p, double width, double height) {
  const int edge = rnd(s) % 4;
  const double d = unit(s) * 100 + 20 + 195;
  const double speed = unit(s) * 60 + 30;
  if (edge < 2) {
    p.x = edge == 0 ? -d : width + d;
    p.y = unit(s) * (height + 260) - 130;
    p.vx = edge == 0 ? speed : -speed;
    p.vy = unit(s) * 60 - 30;
  } else {
    p.x = unit(s) * (width + 260) - 130;
    p.y = edge == 2 ? -d : height + d;
    p.vx = unit(s) * 60 - 30;
    p.vy = edge == 2 ? speed : -speed;
  }
  p.spin = unit(s) * 24 + 6;
  if ((rnd(s) & 1) == 0) p.spin = -p.spin;
}

int edgeSign(State& s) { return (rnd(s) & 1) ? 1 : -1; }

void build(State& s, double width, double height, const std::vector<core::Level>& catalogue) {
  s.pieces.clear();
  s.sources.clear();
  s.width = width;
  s.height = height;
  s.built = true;
  const size_t sources = std::min(kMaxSources, catalogue.size());
  for (size_t i = 0; i < sources; ++i) s.sources.push_back(Source{catalogue[i]});
  if (sources == 0) return;
  const int n = backgroundPieceCount(width, height);
  s.pieces.resize(n);
  for (BgPiece& p : s.pieces) {
    p.image = rnd(s) % static_cast<int>(sources);
    p.col = rnd(s) % kCols;
    p.row = rnd(s) % kRows;
    p.edges = core::PieceEdges{edgeSign(s), edgeSign(s), edgeSign(s), edgeSign(s)};
    p.angle = unit(s) * 360;
    p.key = textureKey(s.sources[p.image].level, p);
    spawnFromEdge(s, p, width, height);
  }
}

void nudge(State& s, BgPiece& p) {
  p.vx = std::clamp(p.vx + (unit(s) * 80 - 40), -kMaxSpeed, kMaxSpeed);
  p.vy = std::clamp(p.vy + (unit(s) * 80 - 40), -kMaxSpeed, kMaxSpeed);
}

// Corners and centres differ by the same offset, so the corners give the
// line between the centres.
void pushApart(State& s, BgPiece& a, BgPiece& b) {
  double dx = b.x - a.x, dy = b.y - a.y;
  const double d2 = dx * dx + dy * dy;
  if (d2 >= kTouch * kTouch) return;
  const double d = std::sqrt(d2);
  // Two pieces on the very same spot part sideways.
  if (d > 0) {
    dx /= d, dy /= d;
  } else {
    dx = 1, dy = 0;
  }
  const double push = (kTouch - d) / 2 + 0.5;
  a.x -= dx * push, a.y -= dy * push;
  b.x += dx * push, b.y += dy * push;
  nudge(s, a);
  nudge(s, b);
}

void step(State& s, double dt, double width, double height) {
  for (BgPiece& p : s.pieces) {
    p.x += p.vx * dt;
    p.y += p.vy * dt;
    p.angle += p.spin * dt;
  }
  for (size_t i = 0; i < s.pieces.size(); ++i) {
    for (size_t j = i + 1; j < s.pieces.size(); ++j) pushApart(s, s.pieces[i], s.pieces[j]);
  }
  for (BgPiece& p : s.pieces) {
    if (p.x < -kOutside || p.x > width + kOutside || p.y < -kOutside || p.y > height + kOutside) {
      spawnFromEdge(s, p, width, height);
    }
  }
}

void releasePictures(State& s) {
  for (Source& src : s.sources) {
    src.picture.reset();
    src.tried = false;
  }
}

void ensureSet(State& s, const Ctx& ctx, const std::vector<core::Level>& catalogue) {
  if (!s.built || std::fabs(ctx.width - s.width) >= 1 || std::fabs(ctx.height - s.height) >= 1) {
    build(s, ctx.width, ctx.height, catalogue);
  }
}

}  // namespace

int backgroundPieceCount(double w, double h) {
  const bool smallPortrait = std::min(w, h) < 600 && h > w;
  const long ceiling = smallPortrait ? 40 : 80;
  const long n = std::min(std::lround(w * h / (smallPortrait ? 160000 : 80000)), ceiling);
  return static_cast<int>(n < ceiling ? std::max(n, 18L) : n);
}

void backgroundPiecesPrepare(const Ctx& ctx, double budgetSeconds, const std::vector<core::Level>& catalogue) {
  State& s = state();
  ensureSet(s, ctx, catalogue);
  step(s, std::min(ctx.dt, 0.1), ctx.width, ctx.height);
  const auto start = std::chrono::steady_clock::now();
  const std::chrono::duration<double> budget(budgetSeconds);
  for (const BgPiece& p : s.pieces) {
    if (gpuCachedTexture(p.key, texturePixels(), texturePixels())) continue;
    if (std::chrono::steady_clock::now() - start > budget) return;  // the photographs stay for the next frame
    pieceTexture(s, p);
  }
  releasePictures(s);
}

void backgroundPiecesUpdate(Ctx& ctx, const std::vector<core::Level>& catalogue) {
  if (ctx.reducedMotion) return;  // a player who asked for stillness gets a plain ground
  State& s = state();
  ensureSet(s, ctx, catalogue);
  ctx.requestFrame();  // they never stop drifting
  step(s, std::min(ctx.dt, 0.1), ctx.width, ctx.height);
  for (const BgPiece& p : s.pieces) {
    if (SDL_Texture* tex = pieceTexture(s, p)) {
      gpuBlitRotated(tex, p.x + kHalf, p.y + kHalf, kBgPieceSize, kBgPieceSize, p.angle, kAlpha);
    }
  }
  releasePictures(s);
}

void backgroundPiecesReset() {
  State& s = state();
  for (const BgPiece& p : s.pieces) gpuDropTexture(p.key);
  s.pieces.clear();
  s.sources.clear();
  s.built = false;
}

std::vector<BgPiece>& backgroundPieces() { return state().pieces; }

}  // namespace ui
