// Level start: the time from a level's id to every piece texture painted, for
// a 10 x 11 puzzle on a 1920 x 1080 window, at scale 1 and at HiDPI scale 2;
// and painting the 40 thumbnails of the level-select grid. Beside the area-mean
// reduction, stb_image_resize on the same picture as the ratio to beat. And
// the player's own photos: importing a 24-megapixel JPEG (against decoding
// it with stb_image) and the level start of the imported picture (against
// the built-in level's, measured in the same run).
// Textures go to SDL's software renderer on a memory surface, so the figures
// are the painting, not a GPU upload.
//
//   textures_bench [samples]
// Uses the shipped level pictures when the asset tree is there, otherwise
// synthetic 2500 x 1667 pictures made in a temporary folder.
#include <SDL.h>
#include <stb_image.h>
#include <stb_image_resize.h>
#include <stb_image_write.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "core/catalog.h"
#include "core/puzzle.h"
#include "platform/fs.h"
#include "platform/heap.h"
#include "platform/image.h"
#include "platform/paths.h"
#include "store/pictures.h"
#include "ui/gpu.h"
#include "ui/textures/board_image.h"
#include "ui/textures/level_thumb.h"
#include "ui/textures/piece_textures.h"

namespace {

using bench::medianMicros;

volatile double g_sink = 0;

// A detailed picture (gradients and noise; JPEG cannot squeeze it to
// nothing), w x h pixels of three bytes.
std::vector<unsigned char> detailedPicture(int w, int h) {
  std::vector<unsigned char> px(static_cast<size_t>(w) * h * 3);
  unsigned seed = 12345;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      seed = seed * 1103515245u + 12345u;
      unsigned char* p = &px[(static_cast<size_t>(y) * w + x) * 3];
      p[0] = static_cast<unsigned char>((x * 255 / w + (seed >> 26)) & 255);
      p[1] = static_cast<unsigned char>((y * 255 / h + (seed >> 27)) & 255);
      p[2] = static_cast<unsigned char>(((x ^ y) & 255));
    }
  }
  return px;
}

void writeSyntheticLevels(const std::string& root) {
  const int w = 2500, h = 1667;
  const std::vector<unsigned char> px = detailedPicture(w, h);
  platform::fs::ensureDir(root + "/assets/fonts");
  platform::fs::ensureDir(root + "/assets/levels");
  const std::string first = root + "/assets/levels/level1.jpg";
  stbi_write_jpg(first.c_str(), w, h, 3, px.data(), 88);
  const std::string bytes = [&] {
    std::string s;
    FILE* f = std::fopen(first.c_str(), "rb");
    char buf[65536];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0) s.append(buf, n);
    std::fclose(f);
    return s;
  }();
  for (const core::Level& level : core::levels()) {
    for (const std::string& path : {core::levelImagePath(level), core::levelBlurPath(level)}) {
      if (path == first) continue;
      FILE* f = std::fopen(path.c_str(), "wb");
      std::fwrite(bytes.data(), 1, bytes.size(), f);
      std::fclose(f);
    }
  }
}

// The asset root: the real one when it has pictures, else a synthetic one
// in a temporary folder. Decided before the game's lookup fixes its answer.
std::string prepareAssets() {
  if (platform::fs::isFile(paths::resolveAssetDir() + "/assets/levels/level1.jpg")) return "shipped pictures";
  ::setenv("TESSELLATRIX_ASSET_DIR", "/tmp/tessellatrix-bench-assets", 1);
  return "synthetic pictures (no asset tree found)";
}

core::Puzzle laidOutPuzzle(const std::string& levelId = "level1") {
  core::Puzzle p(levelId, 10, 11);
  p.layout(1920, 1080, 60, store::BoardLayout::ScrollTray, 112);
  return p;
}

struct Renderer {
  SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, 64, 64, 32, SDL_PIXELFORMAT_ARGB8888);
  SDL_Renderer* renderer = SDL_CreateSoftwareRenderer(surface);
  ~Renderer() {
    SDL_DestroyRenderer(renderer);
    SDL_FreeSurface(surface);
  }
};

// Decode and reduce to the board, then paint every piece: what the playing
// screen does between a level's id and its first full frame.
double levelStart(int samples, double scale, const std::string& levelId = "level1") {
  const core::Puzzle p = laidOutPuzzle(levelId);
  const int bw = static_cast<int>(std::lround(p.boardW * scale));
  const int bh = static_cast<int>(std::lround(p.boardH * scale));
  Renderer r;
  return medianMicros(
      samples, 1,
      [&] {
        ui::imagesShutdown();
        ui::gpuInit(r.renderer);
        ui::gpuSetScale(scale);
      },
      [&] {
        cairo_surface_t* picture = ui::boardImage(levelId, bw, bh);
        for (const core::Piece& piece : p.pieces) {
          g_sink = g_sink + (ui::pieceTexture(levelId, p, piece, picture, ui::PieceLook::Outlined) != nullptr);
        }
      });
}

double paintPieces(int samples, double scale) {
  const core::Puzzle p = laidOutPuzzle();
  Renderer r;
  ui::gpuSetScale(scale);
  cairo_surface_t* picture = ui::boardImage("level1", static_cast<int>(std::lround(p.boardW * scale)),
                                            static_cast<int>(std::lround(p.boardH * scale)));
  return medianMicros(
      samples, 1,
      [&] {
        ui::gpuInit(r.renderer);
        ui::gpuSetScale(scale);
      },
      [&] {
        for (const core::Piece& piece : p.pieces) {
          g_sink = g_sink + (ui::pieceTexture("level1", p, piece, picture, ui::PieceLook::Outlined) != nullptr);
        }
      });
}

double thumbnails(int samples, int w, int h) {
  Renderer r;
  return medianMicros(
      samples, 1,
      [&] {
        ui::gpuInit(r.renderer);
        ui::gpuSetScale(1.0);
        // From cold: not from the thumbnails the sample before kept on disk.
        const std::string dir = paths::cacheDir() + "/thumbs";
        for (const std::string& name : platform::fs::listDir(dir)) platform::fs::remove(dir + "/" + name);
      },
      [&] {
        for (const core::Level& level : core::levels()) g_sink = g_sink + (ui::levelThumb(level.id, false, w, h) != nullptr);
      });
}

void reductions(int samples, int bw, int bh) {
  const std::string path = core::levelImagePath(*core::levelById("level1"));
  int w = 0, h = 0, comp = 0;
  unsigned char* rgb = stbi_load(path.c_str(), &w, &h, &comp, 3);
  const int tw = static_cast<int>(std::lround(w * std::min(1.0, std::min(double(bw) / w, double(bh) / h))));
  const int th = static_cast<int>(std::lround(h * std::min(1.0, std::min(double(bw) / w, double(bh) / h))));
  std::vector<unsigned char> packed(static_cast<size_t>(tw) * th * 4), resized(static_cast<size_t>(tw) * th * 3);
  const double decode = medianMicros(samples, 1, [] {}, [&] {
    int a, b, c;
    unsigned char* px = stbi_load(path.c_str(), &a, &b, &c, 3);
    g_sink = g_sink + px[0];
    stbi_image_free(px);
  });
  const double box = medianMicros(samples, 1, [] {}, [&] {
    platform::boxReduce(rgb, w, h, packed.data(), tw, th, tw * 4);
    g_sink = g_sink + packed[0];
  });
  const double stbir = medianMicros(samples, 1, [] {}, [&] {
    stbir_resize_uint8(rgb, w, h, 0, resized.data(), tw, th, 0, 3);
    g_sink = g_sink + resized[0];
  });
  const auto load = [&](int mw, int mh) {
    return medianMicros(samples, 1, [] {}, [&] {
      cairo_surface_t* pic = platform::loadImage(path, mw, mh);
      g_sink = g_sink + cairo_image_surface_get_width(pic);
      cairo_surface_destroy(pic);
    });
  };
  const double full = load(0, 0), thumb = load(460, 307);
  std::printf("| decode %d × %d, stb_image | %.1f | | |\n", w, h, decode / 1000);
  std::printf("| load it whole (libjpeg-turbo) | %.1f | stb_image decode %.1f | %.2f |\n", full / 1000,
              decode / 1000, full / decode);
  std::printf("| load it for a 460 × 307 thumbnail (1/4 in the DCT, then area mean) | %.1f | stb_image decode %.1f | "
              "%.2f |\n", thumb / 1000, decode / 1000, thumb / decode);
  std::printf("| reduce to %d × %d, area mean | %.1f | stb_image_resize %.1f | %.2f |\n", tw, th, box / 1000,
              stbir / 1000, box / stbir);
  stbi_image_free(rgb);
}

// A 6000 x 4000 photograph as a camera writes it: detailed, quality 90.
std::string writeCameraPhoto() {
  const std::string path = paths::dataDir() + "/camera.jpg";
  stbi_write_jpg(path.c_str(), 6000, 4000, 3, detailedPicture(6000, 4000).data(), 90);
  return path;
}

// The import from file to stored picture and blurred copy, each sample
// starting with the picture removed again; then the level start of the
// picture against the built-in level's.
void ownPhotos(int samples) {
  const std::string path = writeCameraPhoto();
  std::string id;
  const double import = medianMicros(samples, 1, [&] { store::removePicture(id); }, [&] {
    const store::ImportResult r = store::importPicture(path);
    id = r.id;
    if (r.status != store::ImportStatus::Added) std::fprintf(stderr, "import failed: %d\n", int(r.status));
  });
  const double decode = medianMicros(samples, 1, [] {}, [&] {
    int a, b, c;
    unsigned char* px = stbi_load(path.c_str(), &a, &b, &c, 3);
    g_sink = g_sink + px[0];
    stbi_image_free(px);
  });
  const core::Level* level = core::levelById(id);
  std::printf("| import a 6000 × 4000 JPEG (to %d × %d and its blurred copy, both stored) | %.1f | stb_image decode %.1f "
              "| %.2f (goal 1000 ms: %.2f) |\n", level ? level->width : 0, level ? level->height : 0, import / 1000,
              decode / 1000, import / decode, import / 1e6);
  const double builtIn = levelStart(samples, 1.0), own = levelStart(samples, 1.0, id);
  std::printf("| level start of the imported picture, scale 1 | %.1f | built-in level %.1f | %.2f "
              "(goal 150 ms: %.2f) |\n", own / 1000, builtIn / 1000, own / builtIn, own / 150000);
}

}  // namespace

int main(int argc, char** argv) {
  const int samples = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
  platform::keepFreedHeap();  // as the game's main does
  // Imported pictures and cached thumbnails go to folders of the
  // benchmark's own, never the player's.
  ::setenv("XDG_DATA_HOME", "/tmp/tessellatrix-bench-data", 1);
  ::setenv("XDG_CACHE_HOME", "/tmp/tessellatrix-bench-cache", 1);
  const std::string source = prepareAssets();
  if (source.rfind("synthetic", 0) == 0) writeSyntheticLevels(paths::assetDir());
  const core::Puzzle p = laidOutPuzzle();
  std::printf("Pictures: %s. Board of a 10 x 11 puzzle at 1920 x 1080: %.0f x %.0f. Medians of %d samples.\n\n",
              source.c_str(), p.boardW, p.boardH, samples);
  std::printf("| step | ms | baseline ms | ratio |\n|---|---|---|---|\n");
  reductions(samples, static_cast<int>(std::lround(p.boardW)), static_cast<int>(std::lround(p.boardH)));
  std::printf("| paint 110 piece textures, scale 1 | %.1f | | |\n", paintPieces(samples, 1.0) / 1000);
  std::printf("| paint 110 piece textures, scale 2 | %.1f | | |\n", paintPieces(samples, 2.0) / 1000);
  const double start = levelStart(samples, 1.0);
  std::printf("| level start (id to all pieces), scale 1 | %.1f | goal 80 | %.2f |\n", start / 1000, start / 80000);
  std::printf("| level start (id to all pieces), scale 2 | %.1f | | |\n", levelStart(samples, 2.0) / 1000);
  ownPhotos(samples);
  const double thumbs = thumbnails(samples, 460, 306);
  std::printf("| 40 level-select thumbnails 460 × 306 | %.1f | goal 400 | %.2f |\n", thumbs / 1000, thumbs / 400000);
  ui::gpuShutdown();
  ui::imagesShutdown();
  return 0;
}
