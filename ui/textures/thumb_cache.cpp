#include "ui/textures/thumb_cache.h"

#include <stb_image_write.h>

#include <algorithm>
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "platform/fs.h"
#include "platform/image.h"

namespace ui {

namespace {

// Good enough that a card shows no artefacts; an entry is then a few dozen KB.
constexpr int kJpegQuality = 90;
constexpr const char* kTrailerTag = "\nthumb1 ";

std::string entryPath(const std::string& dir, const std::string& key) { return dir + "/" + key + ".jpg"; }

std::string trailer(const std::string& sourcePath, int w, int h, size_t jpegBytes) {
  char line[128];
  std::snprintf(line, sizeof line, "%s%" PRId64 " %" PRId64 " %d %d %zu\n", kTrailerTag,
                platform::fs::fileSize(sourcePath), platform::fs::modifiedNs(sourcePath), w, h, jpegBytes);
  return line;
}

// The trailer the entry should end with, for a picture of the length the
// entry itself claims, compared with the one it does end with.
bool entryMatches(const std::string& data, const std::string& sourcePath, int w, int h) {
  const size_t at = data.rfind(kTrailerTag);
  if (at == std::string::npos) return false;
  return data.compare(at, std::string::npos, trailer(sourcePath, w, h, at)) == 0;
}

void appendBytes(void* out, void* data, int size) {
  static_cast<std::string*>(out)->append(static_cast<const char*>(data), static_cast<size_t>(size));
}

}  // namespace

cairo_surface_t* loadCachedThumb(const std::string& dir, const std::string& key, const std::string& sourcePath,
                                 int w, int h) {
  const std::string path = entryPath(dir, key);
  std::string data;
  if (platform::fs::fileSize(sourcePath) < 0 || !platform::fs::readFile(path, &data) ||
      !entryMatches(data, sourcePath, w, h)) {
    return nullptr;
  }
  cairo_surface_t* pic = platform::loadImage(path, w, h);
  if (pic && (cairo_image_surface_get_width(pic) != w || cairo_image_surface_get_height(pic) != h)) {
    cairo_surface_destroy(pic);
    return nullptr;
  }
  if (pic) platform::fs::touch(path);
  return pic;
}

bool storeCachedThumb(const std::string& dir, const std::string& key, const std::string& sourcePath,
                      cairo_surface_t* picture) {
  cairo_surface_flush(picture);
  const int w = cairo_image_surface_get_width(picture), h = cairo_image_surface_get_height(picture);
  const int stride = cairo_image_surface_get_stride(picture);
  const unsigned char* px = cairo_image_surface_get_data(picture);
  if (!px || w < 1 || h < 1 || platform::fs::fileSize(sourcePath) < 0) return false;
  std::vector<unsigned char> rgb(static_cast<size_t>(w) * h * 3);
  for (int y = 0; y < h; ++y) {
    const uint32_t* row = reinterpret_cast<const uint32_t*>(px + static_cast<ptrdiff_t>(y) * stride);
    for (int x = 0; x < w; ++x) {
      unsigned char* out = &rgb[(static_cast<size_t>(y) * w + x) * 3];
      out[0] = row[x] >> 16 & 255, out[1] = row[x] >> 8 & 255, out[2] = row[x] & 255;
    }
  }
  std::string data;
  if (!stbi_write_jpg_to_func(appendBytes, &data, w, h, 3, rgb.data(), kJpegQuality)) return false;
  data += trailer(sourcePath, w, h, data.size());
  const std::string path = entryPath(dir, key), temp = path + ".tmp";
  if (platform::fs::writeFile(temp, data) && platform::fs::replaceAtomic(temp, path)) return true;
  platform::fs::remove(temp);
  return false;
}

void pruneCachedThumbs(const std::string& dir, size_t keep) {
  std::vector<std::pair<int64_t, std::string>> entries;  // newest first after sorting
  for (const std::string& name : platform::fs::listDir(dir)) entries.emplace_back(0, dir + "/" + name);
  if (entries.size() <= keep) return;
  for (auto& [stamp, path] : entries) stamp = platform::fs::modifiedNs(path);
  std::sort(entries.rbegin(), entries.rend());
  for (size_t i = keep; i < entries.size(); ++i) platform::fs::remove(entries[i].second);
}

}  // namespace ui
