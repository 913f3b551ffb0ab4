#include "store/pictures.h"

#include <sodium.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "core/catalog.h"
#include "js/json.h"
#include "platform/fs.h"
#include "platform/image.h"
#include "platform/paths.h"
#include "platform/photo.h"

namespace store {

namespace {

// Larger than any picture within the pixel limit, even uncompressed.
constexpr int64_t kMaxFileBytes = int64_t{512} << 20;
// As the built-in levels are kept: the board decodes no more than for them.
constexpr int kQuality = 88, kBlurQuality = 82;
// The blurred copy, like those of the built-in levels, is only ever shown soft.
constexpr int kBlurSide = 800;
constexpr const char* kIdPrefix = "photo-";
constexpr size_t kIdHexDigits = 16;

struct Picture {
  std::string id, name;
};

// A file of the pictures folder as it was when it was looked at.
struct SeenFile {
  std::string name;
  int64_t size = -1, modifiedMs = -1;
  bool operator==(const SeenFile& o) const { return name == o.name && size == o.size && modifiedMs == o.modifiedMs; }
};

struct State {
  bool loaded = false;
  std::vector<Picture> pictures;  // in the order they came, files there or not
  std::vector<SeenFile> seen;
};

State& state() {
  static State s;
  return s;
}

State& loaded() {
  loadPictures();
  return state();
}

struct SurfaceFree {
  void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceFree>;

std::string indexPath() { return core::pictureLevelDir() + "/index.json"; }

core::Level ownLevel(const std::string& id, const std::string& name) { return core::Level{id, name, 0, 0, 0, true}; }

// A hand-edited index must not name files outside the folder.
bool validId(const std::string& id) {
  return id.size() == std::char_traits<char>::length(kIdPrefix) + kIdHexDigits && id.rfind(kIdPrefix, 0) == 0 &&
         id.find_first_not_of("0123456789abcdef", std::char_traits<char>::length(kIdPrefix)) == std::string::npos;
}

std::vector<Picture>::iterator findPicture(State& s, const std::string& id) {
  return std::find_if(s.pictures.begin(), s.pictures.end(), [&](const Picture& p) { return p.id == id; });
}

// The file's name without folder and extension, its bytes that are not
// UTF-8 replaced, as the cards and titles show it.
std::string displayName(const std::string& path) {
  std::string name = path.substr(path.rfind('/') + 1);
  if (const size_t dot = name.rfind('.'); dot != std::string::npos && dot > 0) name.resize(dot);
  std::string out;
  for (size_t i = 0; i < name.size();) {
    const unsigned char c = static_cast<unsigned char>(name[i]);
    const size_t len = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
    bool ok = len > 0 && i + len <= name.size();
    for (size_t k = 1; ok && k < len; ++k) ok = (static_cast<unsigned char>(name[i + k]) >> 6) == 2;
    out += ok ? name.substr(i, len) : "?";
    i += ok ? len : 1;
  }
  return out;
}

// The catalogue gets every picture whose two files are there.
void publish() {
  std::vector<core::Level> list;
  for (const Picture& p : state().pictures) {
    core::Level level = ownLevel(p.id, p.name);
    if (platform::imageSize(core::levelImagePath(level), &level.width, &level.height) && level.width > 0 &&
        level.height > 0 && platform::fs::isFile(core::levelBlurPath(level))) {
      list.push_back(std::move(level));
    }
  }
  core::setPictureLevels(std::move(list));
}

bool writeIndex() {
  const State& s = state();
  js::Value doc = js::Value::makeObject();
  js::Value& pictures = doc.member("pictures") = js::Value::makeArray();
  for (const Picture& p : s.pictures) {
    js::Value& entry = pictures.push(js::Value::makeObject());
    entry.set("id", p.id);
    entry.set("name", p.name);
  }
  js::Value& seen = doc.member("seen") = js::Value::makeArray();
  for (const SeenFile& f : s.seen) {
    js::Value& entry = seen.push(js::Value::makeObject());
    entry.set("name", f.name);
    entry.set("size", static_cast<long long>(f.size));
    entry.set("modified", static_cast<long long>(f.modifiedMs));
  }
  return platform::fs::ensureDir(core::pictureLevelDir()) &&
         platform::fs::writeDurably(indexPath(), doc.dump(), ".tmp");
}

void removeFiles(const core::Level& level) {
  platform::fs::remove(core::levelImagePath(level));
  platform::fs::remove(core::levelBlurPath(level));
}

bool storeFiles(const core::Level& level, cairo_surface_t* picture) {
  const SurfacePtr blurred(platform::blurredCopy(picture, kBlurSide));
  std::string sharp, soft;
  if (!platform::fs::ensureDir(core::pictureLevelDir()) || !platform::encodeJpeg(picture, kQuality, &sharp) ||
      !platform::encodeJpeg(blurred.get(), kBlurQuality, &soft)) {
    return false;
  }
  if (platform::fs::writeDurably(core::levelImagePath(level), sharp, ".tmp") &&
      platform::fs::writeDurably(core::levelBlurPath(level), soft, ".tmp")) {
    return true;
  }
  removeFiles(level);
  return false;
}

ImportStatus statusOf(platform::PhotoStatus s) {
  switch (s) {
    case platform::PhotoStatus::Ok: return ImportStatus::Added;
    case platform::PhotoStatus::NotPicture: return ImportStatus::NotPicture;
    case platform::PhotoStatus::Damaged: return ImportStatus::Damaged;
    case platform::PhotoStatus::TooSmall: return ImportStatus::TooSmall;
    case platform::PhotoStatus::TooLarge: return ImportStatus::TooLarge;
  }
  return ImportStatus::NotPicture;
}

}  // namespace

void loadPictures() {
  State& s = state();
  if (s.loaded) return;
  s.loaded = true;
  js::Value index;
  if (js::parseFile(indexPath(), &index)) {
    const js::Value& pictures = index["pictures"];
    for (size_t i = 0; i < pictures.size(); ++i) {
      const std::string& id = pictures[i]["id"].string;
      if (validId(id) && findPicture(s, id) == s.pictures.end()) s.pictures.push_back({id, pictures[i]["name"].string});
    }
    const js::Value& seen = index["seen"];
    for (size_t i = 0; i < seen.size(); ++i) {
      s.seen.push_back({seen[i]["name"].string, seen[i]["size"].asInt64(-1), seen[i]["modified"].asInt64(-1)});
    }
  }
  publish();
}

std::string pictureId(const std::string& bytes) {
  // BLAKE2b works either way; initialising only picks the fastest code.
  [[maybe_unused]] static const bool ready = sodium_init() >= 0;
  unsigned char hash[kIdHexDigits / 2];
  crypto_generichash(hash, sizeof hash, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), nullptr, 0);
  char hex[kIdHexDigits + 1];
  sodium_bin2hex(hex, sizeof hex, hash, sizeof hash);
  return kIdPrefix + std::string(hex);
}

ImportResult importPicture(const std::string& path) {
  State& s = loaded();
  const int64_t size = platform::fs::fileSize(path);
  if (size > kMaxFileBytes) return {ImportStatus::TooLarge, ""};
  std::string bytes;
  if (size < 0 || !platform::fs::readFile(path, &bytes)) return {ImportStatus::Unreadable, ""};
  const std::string id = pictureId(bytes);
  const bool listed = findPicture(s, id) != s.pictures.end();
  if (listed && core::levelById(id)) return {ImportStatus::Known, id};
  cairo_surface_t* prepared = nullptr;
  const platform::PhotoStatus status = platform::preparePhoto(bytes, &prepared);
  const SurfacePtr picture(prepared);
  if (status != platform::PhotoStatus::Ok) return {statusOf(status), ""};
  const core::Level level = ownLevel(id, displayName(path));
  if (!storeFiles(level, picture.get())) return {ImportStatus::NotStored, ""};
  if (!listed) {
    s.pictures.push_back({id, level.source});
    if (!writeIndex()) {
      s.pictures.pop_back();
      removeFiles(level);
      return {ImportStatus::NotStored, ""};
    }
  }
  publish();
  return {ImportStatus::Added, id};
}

bool removePicture(const std::string& id) {
  State& s = loaded();
  const auto it = findPicture(s, id);
  if (it == s.pictures.end()) return false;
  const core::Level level = ownLevel(it->id, it->name);
  s.pictures.erase(it);
  writeIndex();
  removeFiles(level);
  publish();
  return true;
}

const std::string& picturesFolder() {
  static const std::string dir = paths::dataDir() + "/pictures";
  platform::fs::ensureDir(dir);
  return dir;
}

std::vector<std::pair<std::string, ImportResult>> importPicturesFolder() {
  State& s = loaded();
  const std::string& dir = picturesFolder();
  std::vector<SeenFile> now;
  std::vector<std::pair<std::string, ImportResult>> results;
  for (const std::string& name : platform::fs::listDir(dir)) {
    const std::string path = dir + "/" + name;
    SeenFile file{name, platform::fs::fileSize(path), platform::fs::modifiedNs(path) / 1000000};
    if (name[0] == '.' || file.size < 0) continue;
    if (std::find(s.seen.begin(), s.seen.end(), file) == s.seen.end()) {
      const ImportResult result = importPicture(path);
      results.emplace_back(name, result);
      // A file that could not be read or stored now is tried again next time.
      if (result.status == ImportStatus::Unreadable || result.status == ImportStatus::NotStored) continue;
    }
    now.push_back(std::move(file));
  }
  if (!(now == s.seen)) {
    s.seen = std::move(now);
    writeIndex();
  }
  return results;
}

}  // namespace store
