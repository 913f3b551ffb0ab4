#include "platform/fs.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace platform::fs {

namespace {

struct DirCloser {
  void operator()(DIR* d) const { closedir(d); }
};

bool statMode(const std::string& path, mode_t* mode) {
  struct stat st;
  if (path.empty() || ::stat(path.c_str(), &st) != 0) return false;
  *mode = st.st_mode;
  return true;
}

}  // namespace

int64_t fileSize(const std::string& path) {
  struct stat st;
  if (path.empty() || ::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return -1;
  return static_cast<int64_t>(st.st_size);
}

bool remove(const std::string& path) {
  return !path.empty() && std::remove(path.c_str()) == 0;
}

bool isFile(const std::string& path) {
  mode_t mode;
  return statMode(path, &mode) && S_ISREG(mode);
}

bool isDir(const std::string& path) {
  mode_t mode;
  return statMode(path, &mode) && S_ISDIR(mode);
}

bool ensureDir(const std::string& path) {
  if (path.empty()) return false;
  // Create every missing ancestor first; an existing one is fine, anything
  // else is reported by the final isDir check.
  for (size_t pos = path.find('/', 1); pos != std::string::npos; pos = path.find('/', pos + 1)) {
    const std::string parent = path.substr(0, pos);
    if (::mkdir(parent.c_str(), 0755) != 0 && errno != EEXIST) return false;
  }
  if (::mkdir(path.c_str(), 0755) != 0 && errno != EEXIST) return false;
  return isDir(path);
}

std::vector<std::string> listDir(const std::string& path) {
  std::vector<std::string> names;
  std::unique_ptr<DIR, DirCloser> dir(path.empty() ? nullptr : opendir(path.c_str()));
  if (!dir) return names;
  while (const dirent* entry = readdir(dir.get())) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  // std::string orders by unsigned bytes, which is the documented order.
  std::sort(names.begin(), names.end());
  return names;
}

bool replaceAtomic(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

bool syncFile(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  const bool ok = ::fsync(fd) == 0;
  ::close(fd);
  return ok;
}

}  // namespace platform::fs
