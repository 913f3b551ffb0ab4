#include "ui/textures/thumb_cache.h"

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
  std::string data;
  if (platform::fs::fileSize(sourcePath) < 0 || !platform::encodeJpeg(picture, kJpegQuality, &data)) return false;
  const int w = cairo_image_surface_get_width(picture), h = cairo_image_surface_get_height(picture);
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
