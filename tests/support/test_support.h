// Helpers shared by the test programs: temporary folders, scoped environment
// changes, a software renderer with pixel read-back, child processes and a
// private X server.
#pragma once

#include <SDL.h>
#include <sys/types.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

// A fresh folder under the system's temporary directory, removed with
// everything in it when the object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::string& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  std::string write(const std::string& name, const std::string& content) const;

 private:
  std::string path_;
};

std::string readFile(const std::string& path);

// A JPEG file's bytes, w x h pixels in four quarters: red, green (top left,
// top right), blue, white (bottom left, bottom right); tagged with an EXIF
// orientation when given one.
std::string quarteredJpeg(int w, int h, int orientation = 0);
// Which of those four colours the pixel 0x00RRGGBB is nearest: "R", "G", "B" or "W".
std::string quarterColour(uint32_t rgb);
void removeTree(const std::string& path);

// Sets (or, with nullopt, unsets) an environment variable for the scope.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, std::optional<std::string> value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  std::optional<std::string> old_;
};

// SDL's software renderer drawing into a memory surface whose pixels a test
// can read directly.
class SoftwareTarget {
 public:
  SoftwareTarget(int w, int h);
  ~SoftwareTarget();
  SoftwareTarget(const SoftwareTarget&) = delete;
  SoftwareTarget& operator=(const SoftwareTarget&) = delete;
  SDL_Renderer* renderer() const { return renderer_; }
  // 0xAARRGGBB of the pixel at (x, y).
  uint32_t pixel(int x, int y) const;

 private:
  SDL_Surface* surface_ = nullptr;
  SDL_Renderer* renderer_ = nullptr;
};

struct ExitStatus {
  bool exited = false;  // false: killed by a signal, or still running at the deadline
  int code = -1;        // exit code when exited
  int signal = 0;       // terminating signal when killed
};

// A child process whose standard output and error go to files.
class Process {
 public:
  Process(const std::vector<std::string>& argv, const std::map<std::string, std::optional<std::string>>& env,
          const std::string& outDir);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  pid_t pid() const { return pid_; }
  void signal(int sig) const;
  // Waits until the process ends or `seconds` pass.
  ExitStatus wait(double seconds);
  std::string out() const { return readFile(outPath_); }
  std::string err() const { return readFile(errPath_); }
  // Waits until standard output contains `text`; false at the deadline or
  // when the process ended first.
  bool waitForOutput(const std::string& text, double seconds);

 private:
  pid_t pid_ = -1;
  bool reaped_ = false;
  std::string outPath_, errPath_;
};

// A private Xvfb display, started on a free display number and stopped with
// the object. Skips nothing: a test that needs it fails if it cannot start.
class XServer {
 public:
  XServer(int w, int h);
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;
  bool ok() const { return !display_.empty(); }
  const std::string& display() const { return display_; }

 private:
  pid_t pid_ = -1;
  std::string display_;
};

// 0xRRGGBB of every pixel down column x of the first window whose name
// holds `name` on that display, as it shows now; empty when there is none.
std::vector<uint32_t> windowColumn(const std::string& display, const std::string& name, int x);

// The game executable built beside the tests.
std::string gameBinary();

}  // namespace testsupport
