#include "platform/fs.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
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

struct FileCloser {
  void operator()(FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

std::string folderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

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

int64_t modifiedNs(const std::string& path) {
  struct stat st;
  if (path.empty() || ::stat(path.c_str(), &st) != 0) return -1;
  return static_cast<int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
}

bool touch(const std::string& path) { return !path.empty() && ::utimensat(AT_FDCWD, path.c_str(), nullptr, 0) == 0; }

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

bool readFile(const std::string& path, std::string* out) {
  FilePtr f(path.empty() ? nullptr : std::fopen(path.c_str(), "rb"));
  if (!f) return false;
  std::string data;
  char buf[16384];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, f.get())) > 0) data.append(buf, n);
  // A folder opens fine on Linux and fails only here.
  if (std::ferror(f.get())) return false;
  *out = std::move(data);
  return true;
}

bool writeFile(const std::string& path, const std::string& data) {
  FilePtr f(path.empty() ? nullptr : std::fopen(path.c_str(), "wb"));
  if (!f) return false;
  const bool written = std::fwrite(data.data(), 1, data.size(), f.get()) == data.size();
  // Closing flushes the buffer, so its result counts as much as the write's.
  return std::fclose(f.release()) == 0 && written;
}

bool writeDurably(const std::string& path, const std::string& data, const std::string& suffix) {
  const std::string tmp = path + suffix;
  // The rename replaces the target in one step (no delete before it); the
  // file is synced first so the rename can never publish unwritten blocks,
  // and the folder after, so the rename itself survives a power cut.
  if (!writeFile(tmp, data) || !syncFile(tmp) || !replaceAtomic(tmp, path)) {
    remove(tmp);
    return false;
  }
  syncFile(folderOf(path));
  return true;
}

Lock lockForLife(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return Lock::Unavailable;
  if (::flock(fd, LOCK_EX | LOCK_NB) == 0) return Lock::Held;  // fd stays open on purpose
  const bool busy = errno == EWOULDBLOCK;
  ::close(fd);
  return busy ? Lock::Busy : Lock::Unavailable;
}

}  // namespace platform::fs
