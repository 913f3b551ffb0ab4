// A photograph is decoded only as large as its prepared picture needs (a
// JPEG in the DCT, at 1/2, 1/4 or 1/8 where that still leaves enough), in
// the orientation it is stored in. One pass then reads the kept part of it
// the way the EXIF tag turns it upright, and the area-mean reduction makes
// the final size. The size checks run on the file's header, before any
// pixel is decoded, so a huge file costs nothing to refuse.
#include "platform/photo.h"

#include <libexif/exif-data.h>
#include <stb_image.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/image.h"
#include "platform/jpeg.h"

namespace platform {

namespace {

// How the stored picture is read to show it upright, for tags 1 to 8: the
// axes swapped first (a quarter turn or a transposition), then each read
// backwards or not.
struct Orientation {
  bool swap, flipX, flipY;
};
constexpr Orientation kOrientations[8] = {
    {false, false, false}, {false, true, false}, {false, true, true}, {false, false, true},
    {true, false, false},  {true, false, true},  {true, true, true},  {true, true, false},
};

// The blurred copy: a box blur three times over, about a Gaussian of this
// radius as a share of the copy's longer side.
constexpr double kBlurShare = 0.0375;
constexpr int kBlurPasses = 3;

struct ExifUnref {
  void operator()(ExifData* d) const { exif_data_unref(d); }
};

struct PixelsFree {
  void operator()(unsigned char* p) const { stbi_image_free(p); }
};

// The centred part of a w x h picture whose aspect lies within the limits.
void centreCrop(int w, int h, int* cw, int* ch) {
  *cw = w;
  *ch = h;
  if (w > kPhotoMaxAspect * h) *cw = static_cast<int>(std::lround(h * kPhotoMaxAspect));
  if (w < kPhotoMinAspect * h) *ch = static_cast<int>(std::lround(w / kPhotoMinAspect));
}

void atLeast(int, int, void* want, int* tw, int* th) {
  *tw = static_cast<const int*>(want)[0];
  *th = static_cast<const int*>(want)[1];
}

// The pixels, at least want[0] x want[1] of them where the decoder can
// reduce while decoding; false for a file that breaks off or fails.
bool decodeAtLeast(const std::string& data, bool jpeg, int* want, DecodedRgb* pic) {
  if (jpeg) return decodeJpegData(data, atLeast, want, pic) && !pic->cutShort;
  int comp = 0;
  std::unique_ptr<unsigned char, PixelsFree> rgb(stbi_load_from_memory(
      reinterpret_cast<const unsigned char*>(data.data()), static_cast<int>(data.size()), &pic->w, &pic->h, &comp, 3));
  if (!rgb) return false;
  pic->rgb.assign(rgb.get(), rgb.get() + static_cast<size_t>(pic->w) * pic->h * 3);
  return true;
}

// The upright picture's part at (x0, y0), cw x ch, read from the stored one.
std::vector<unsigned char> uprightPart(const DecodedRgb& pic, const Orientation& o, int x0, int y0, int cw, int ch) {
  std::vector<unsigned char> out(static_cast<size_t>(cw) * ch * 3);
  unsigned char* dst = out.data();
  for (int y = y0; y < y0 + ch; ++y) {
    for (int x = x0; x < x0 + cw; ++x, dst += 3) {
      const int u = o.swap ? y : x, v = o.swap ? x : y;
      const int sx = o.flipX ? pic.w - 1 - u : u, sy = o.flipY ? pic.h - 1 - v : v;
      std::memcpy(dst, &pic.rgb[(static_cast<size_t>(sy) * pic.w + sx) * 3], 3);
    }
  }
  return out;
}

// One pass of the box blur along a line of n pixels `step` words apart, its
// end pixels repeated beyond it.
void blurLine(uint32_t* line, int n, ptrdiff_t step, int r, std::vector<uint32_t>& copy) {
  copy.resize(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) copy[i] = line[i * step];
  const auto at = [&](int i) { return copy[std::clamp(i, 0, n - 1)]; };
  int sum[3] = {0, 0, 0};
  const auto add = [&](uint32_t p, int sign) {
    sum[0] += sign * static_cast<int>(p >> 16 & 255);
    sum[1] += sign * static_cast<int>(p >> 8 & 255);
    sum[2] += sign * static_cast<int>(p & 255);
  };
  for (int i = -r; i <= r; ++i) add(at(i), 1);
  const int count = 2 * r + 1;
  for (int i = 0; i < n; ++i) {
    line[i * step] = static_cast<uint32_t>((sum[0] / count) << 16 | (sum[1] / count) << 8 | sum[2] / count);
    add(at(i + r + 1), 1);
    add(at(i - r), -1);
  }
}

}  // namespace

int exifOrientation(const std::string& data) {
  if (data.size() > UINT_MAX) return 1;
  std::unique_ptr<ExifData, ExifUnref> exif(exif_data_new_from_data(
      reinterpret_cast<const unsigned char*>(data.data()), static_cast<unsigned int>(data.size())));
  ExifEntry* entry = exif ? exif_data_get_entry(exif.get(), EXIF_TAG_ORIENTATION) : nullptr;
  if (!entry || entry->format != EXIF_FORMAT_SHORT || entry->components < 1 || entry->size < 2) return 1;
  const int tag = exif_get_short(entry->data, exif_data_get_byte_order(exif.get()));
  return tag >= 1 && tag <= 8 ? tag : 1;
}

PhotoStatus preparePhoto(const std::string& data, cairo_surface_t** out) {
  *out = nullptr;
  const bool jpeg = isJpegData(data);
  int w = 0, h = 0, comp = 0;
  if (data.size() > INT_MAX || !stbi_info_from_memory(reinterpret_cast<const unsigned char*>(data.data()),
                                                      static_cast<int>(data.size()), &w, &h, &comp)) {
    return jpeg ? PhotoStatus::Damaged : PhotoStatus::NotPicture;
  }
  if (static_cast<double>(w) * h > kPhotoMaxPixels) return PhotoStatus::TooLarge;
  if (std::min(w, h) < kPhotoMinSide) return PhotoStatus::TooSmall;
  const Orientation& o = kOrientations[(jpeg ? exifOrientation(data) : 1) - 1];
  int cw = 0, ch = 0;
  centreCrop(o.swap ? h : w, o.swap ? w : h, &cw, &ch);
  const double scale = std::min(1.0, static_cast<double>(kPhotoLongSide) / std::max(cw, ch));
  int want[2] = {static_cast<int>(std::ceil(w * scale)), static_cast<int>(std::ceil(h * scale))};
  DecodedRgb pic;
  if (!decodeAtLeast(data, jpeg, want, &pic)) return PhotoStatus::Damaged;
  // The same crop on the decoded picture, which may be smaller than the file's.
  const int uw = o.swap ? pic.h : pic.w, uh = o.swap ? pic.w : pic.h;
  int pw = 0, ph = 0;
  centreCrop(uw, uh, &pw, &ph);
  const std::vector<unsigned char> part = uprightPart(pic, o, (uw - pw) / 2, (uh - ph) / 2, pw, ph);
  const int tw = std::max(1, static_cast<int>(std::lround(cw * scale)));
  const int th = std::max(1, static_cast<int>(std::lround(ch * scale)));
  *out = surfaceFromRgb(part.data(), pw, ph, std::min(tw, pw), std::min(th, ph));
  return *out ? PhotoStatus::Ok : PhotoStatus::Damaged;
}

cairo_surface_t* blurredCopy(cairo_surface_t* picture, int maxSide) {
  const int w = cairo_image_surface_get_width(picture), h = cairo_image_surface_get_height(picture);
  const double s = std::min(1.0, static_cast<double>(maxSide) / std::max({w, h, 1}));
  const int bw = std::max(1, static_cast<int>(std::lround(w * s)));
  const int bh = std::max(1, static_cast<int>(std::lround(h * s)));
  cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_RGB24, bw, bh);
  cairo_t* cr = cairo_create(out);
  cairo_scale(cr, static_cast<double>(bw) / w, static_cast<double>(bh) / h);
  cairo_set_source_surface(cr, picture, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
  cairo_paint(cr);
  cairo_destroy(cr);
  cairo_surface_flush(out);
  uint32_t* px = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(out));
  if (!px) return out;
  const ptrdiff_t stride = cairo_image_surface_get_stride(out) / 4;
  const int r = std::max(1, static_cast<int>(std::lround(kBlurShare * std::max(bw, bh))));
  std::vector<uint32_t> copy;
  for (int pass = 0; pass < kBlurPasses; ++pass) {
    for (int y = 0; y < bh; ++y) blurLine(px + y * stride, bw, 1, r, copy);
    for (int x = 0; x < bw; ++x) blurLine(px + x, bh, stride, r, copy);
  }
  cairo_surface_mark_dirty(out);
  return out;
}

}  // namespace platform
