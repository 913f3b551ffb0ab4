#include "platform/image.h"

#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "platform/jpeg.h"

namespace platform {

namespace {

struct FileCloser {
  void operator()(FILE* f) const { std::fclose(f); }
};

struct PixelsFree {
  void operator()(unsigned char* p) const { stbi_image_free(p); }
};

// Start of box i of n over a source length of `len`; box i ends where box
// i + 1 starts, but covers at least one source pixel.
inline int boxStart(int i, int len, int n) { return static_cast<int>(static_cast<int64_t>(i) * len / n); }

void packRows(const unsigned char* rgb, int w, int h, unsigned char* out, int outStride) {
  for (int y = 0; y < h; ++y) {
    const unsigned char* src = rgb + static_cast<size_t>(y) * w * 3;
    uint32_t* dst = reinterpret_cast<uint32_t*>(out + static_cast<ptrdiff_t>(y) * outStride);
    for (int x = 0; x < w; ++x, src += 3) dst[x] = (uint32_t(src[0]) << 16) | (uint32_t(src[1]) << 8) | src[2];
  }
}

}  // namespace

bool imageSize(const std::string& path, int* w, int* h) {
  std::unique_ptr<FILE, FileCloser> f(std::fopen(path.c_str(), "rb"));
  int comp = 0;
  return f && stbi_info_from_file(f.get(), w, h, &comp) == 1;
}

// Sums run row by row into one accumulator per target column, so the whole
// source is read once whatever the reduction factor.
void boxReduce(const unsigned char* rgb, int w, int h, unsigned char* out, int tw, int th, int outStride) {
  std::vector<int> x0(tw), x1(tw);
  for (int tx = 0; tx < tw; ++tx) {
    x0[tx] = boxStart(tx, w, tw);
    x1[tx] = std::max(boxStart(tx + 1, w, tw), x0[tx] + 1);
  }
  std::vector<uint32_t> sums(static_cast<size_t>(tw) * 3);
  for (int ty = 0; ty < th; ++ty) {
    const int y0 = boxStart(ty, h, th);
    const int y1 = std::max(boxStart(ty + 1, h, th), y0 + 1);
    std::fill(sums.begin(), sums.end(), 0u);
    for (int y = y0; y < y1; ++y) {
      const unsigned char* row = rgb + static_cast<size_t>(y) * w * 3;
      for (int tx = 0; tx < tw; ++tx) {
        uint32_t r = 0, g = 0, b = 0;
        for (const unsigned char* p = row + x0[tx] * 3; p < row + x1[tx] * 3; p += 3) {
          r += p[0];
          g += p[1];
          b += p[2];
        }
        sums[tx * 3] += r;
        sums[tx * 3 + 1] += g;
        sums[tx * 3 + 2] += b;
      }
    }
    uint32_t* dst = reinterpret_cast<uint32_t*>(out + static_cast<ptrdiff_t>(ty) * outStride);
    for (int tx = 0; tx < tw; ++tx) {
      const uint32_t n = static_cast<uint32_t>((x1[tx] - x0[tx]) * (y1 - y0));
      dst[tx] = ((sums[tx * 3] / n) << 16) | ((sums[tx * 3 + 1] / n) << 8) | (sums[tx * 3 + 2] / n);
    }
  }
}

namespace {

// The size a w x h picture is shown at to fit maxW x maxH (never enlarged).
void fitInto(int w, int h, void* bound, int* tw, int* th) {
  const int* max = static_cast<const int*>(bound);
  *tw = w;
  *th = h;
  if (max[0] <= 0 || max[1] <= 0) return;
  const double s = std::min({static_cast<double>(max[0]) / w, static_cast<double>(max[1]) / h, 1.0});
  *tw = std::max(1, static_cast<int>(std::lround(w * s)));
  *th = std::max(1, static_cast<int>(std::lround(h * s)));
}

// JPEGs through libjpeg-turbo, reduced while decoding; everything else, and
// a JPEG it refuses, through stb_image.
bool decodeRgb(const std::string& path, int* bound, DecodedRgb* out) {
  if (decodeJpeg(path, fitInto, bound, out)) return true;
  int comp = 0;
  std::unique_ptr<unsigned char, PixelsFree> rgb(stbi_load(path.c_str(), &out->w, &out->h, &comp, 3));
  if (!rgb) {
    std::fprintf(stderr, "[image] %s nicht lesbar: %s\n", path.c_str(), stbi_failure_reason());
    return false;
  }
  out->rgb.assign(rgb.get(), rgb.get() + static_cast<size_t>(out->w) * out->h * 3);
  out->fullW = out->w;
  out->fullH = out->h;
  return true;
}

}  // namespace

cairo_surface_t* surfaceFromRgb(const unsigned char* rgb, int w, int h, int tw, int th) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, tw, th);
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(surface);
    return nullptr;
  }
  cairo_surface_flush(surface);
  unsigned char* out = cairo_image_surface_get_data(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  if (tw == w && th == h) {
    packRows(rgb, w, h, out, stride);
  } else {
    boxReduce(rgb, w, h, out, tw, th, stride);
  }
  cairo_surface_mark_dirty(surface);
  return surface;
}

cairo_surface_t* loadImage(const std::string& path, int maxW, int maxH) {
  int bound[2] = {maxW, maxH};
  DecodedRgb pic;
  if (!decodeRgb(path, bound, &pic)) return nullptr;
  int tw = 0, th = 0;
  fitInto(pic.fullW, pic.fullH, bound, &tw, &th);
  return surfaceFromRgb(pic.rgb.data(), pic.w, pic.h, std::min(tw, pic.w), std::min(th, pic.h));
}

bool encodeJpeg(cairo_surface_t* picture, int quality, std::string* out) {
  cairo_surface_flush(picture);
  const int w = cairo_image_surface_get_width(picture), h = cairo_image_surface_get_height(picture);
  const int stride = cairo_image_surface_get_stride(picture);
  const unsigned char* px = cairo_image_surface_get_data(picture);
  if (!px || w < 1 || h < 1) return false;
  std::vector<unsigned char> rgb(static_cast<size_t>(w) * h * 3);
  for (int y = 0; y < h; ++y) {
    const uint32_t* row = reinterpret_cast<const uint32_t*>(px + static_cast<ptrdiff_t>(y) * stride);
    for (int x = 0; x < w; ++x) {
      unsigned char* dst = &rgb[(static_cast<size_t>(y) * w + x) * 3];
      dst[0] = row[x] >> 16 & 255, dst[1] = row[x] >> 8 & 255, dst[2] = row[x] & 255;
    }
  }
  const auto append = [](void* to, void* data, int size) {
    static_cast<std::string*>(to)->append(static_cast<const char*>(data), static_cast<size_t>(size));
  };
  out->clear();
  return stbi_write_jpg_to_func(append, out, w, h, 3, rgb.data(), quality) != 0;
}

}  // namespace platform
