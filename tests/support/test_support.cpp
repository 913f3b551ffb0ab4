#include "tests/support/test_support.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "platform/fs.h"
#include "platform/image.h"

namespace testsupport {

namespace {

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

ExitStatus decode(int status) {
  ExitStatus s;
  if (WIFEXITED(status)) {
    s.exited = true;
    s.code = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    s.signal = WTERMSIG(status);
  }
  return s;
}

}  // namespace

TempDir::TempDir() {
  const char* base = std::getenv("TMPDIR");
  std::string templ = std::string(base && *base ? base : "/tmp") + "/tessellatrix-test-XXXXXX";
  if (!mkdtemp(templ.data())) throw std::runtime_error("mkdtemp failed");
  path_ = templ;
}

TempDir::~TempDir() { removeTree(path_); }

std::string TempDir::write(const std::string& name, const std::string& content) const {
  const std::string p = file(name);
  std::ofstream(p, std::ios::binary) << content;
  return p;
}

std::string quarteredJpeg(int w, int h, int orientation) {
  cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_RGB24, w, h);
  cairo_t* cr = cairo_create(s);
  const double quarters[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}};
  for (int q = 0; q < 4; ++q) {
    cairo_set_source_rgb(cr, quarters[q][0], quarters[q][1], quarters[q][2]);
    cairo_rectangle(cr, q % 2 * w / 2, q / 2 * h / 2, w / 2, h / 2);
    cairo_fill(cr);
  }
  cairo_destroy(cr);
  std::string jpeg;
  platform::encodeJpeg(s, 90, &jpeg);
  cairo_surface_destroy(s);
  if (orientation == 0) return jpeg;
  // APP1 right after the start marker: "Exif", a big-endian TIFF header and
  // one directory holding the one SHORT entry 0x0112.
  const char app1[] = "\xFF\xE1\x00\x22" "Exif\0\0" "MM\x00\x2A\x00\x00\x00\x08" "\x00\x01"
                      "\x01\x12\x00\x03\x00\x00\x00\x01\x00";
  return jpeg.substr(0, 2) + std::string(app1, sizeof app1 - 1) + char(orientation) + std::string(6, '\0') +
         jpeg.substr(2);
}

std::string quarterColour(uint32_t rgb) {
  const bool r = (rgb >> 16 & 255) > 128, g = (rgb >> 8 & 255) > 128, b = (rgb & 255) > 128;
  return r && g && b ? "W" : r ? "R" : g ? "G" : b ? "B" : "?";
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void removeTree(const std::string& path) {
  if (path.empty()) return;
  if (platform::fs::isDir(path)) {
    for (const std::string& name : platform::fs::listDir(path)) removeTree(path + "/" + name);
    ::rmdir(path.c_str());
  } else {
    ::unlink(path.c_str());
  }
}

ScopedEnv::ScopedEnv(const char* name, std::optional<std::string> value) : name_(name) {
  if (const char* old = std::getenv(name)) old_ = old;
  if (value) {
    ::setenv(name, value->c_str(), 1);
  } else {
    ::unsetenv(name);
  }
}

ScopedEnv::~ScopedEnv() {
  if (old_) {
    ::setenv(name_.c_str(), old_->c_str(), 1);
  } else {
    ::unsetenv(name_.c_str());
  }
}

SoftwareTarget::SoftwareTarget(int w, int h) {
  surface_ = SDL_CreateRGBSurfaceWithFormat(0, w, h, 32, SDL_PIXELFORMAT_ARGB8888);
  if (surface_) renderer_ = SDL_CreateSoftwareRenderer(surface_);
}

SoftwareTarget::~SoftwareTarget() {
  if (renderer_) SDL_DestroyRenderer(renderer_);
  if (surface_) SDL_FreeSurface(surface_);
}

uint32_t SoftwareTarget::pixel(int x, int y) const {
  const auto* row = static_cast<const uint8_t*>(surface_->pixels) + static_cast<ptrdiff_t>(y) * surface_->pitch;
  return reinterpret_cast<const uint32_t*>(row)[x];
}

Process::Process(const std::vector<std::string>& argv, const std::map<std::string, std::optional<std::string>>& env,
                 const std::string& outDir)
    : outPath_(outDir + "/stdout.txt"), errPath_(outDir + "/stderr.txt") {
  pid_ = ::fork();
  if (pid_ != 0) return;
  for (const auto& [name, value] : env) {
    if (value) {
      ::setenv(name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name.c_str());
    }
  }
  const int out = ::open(outPath_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  const int err = ::open(errPath_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  ::dup2(out, 1);
  ::dup2(err, 2);
  std::vector<char*> args;
  for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);
  ::execv(args[0], args.data());
  _exit(127);
}

Process::~Process() {
  if (pid_ > 0 && !reaped_) {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
}

void Process::signal(int sig) const { ::kill(pid_, sig); }

ExitStatus Process::wait(double seconds) {
  const auto start = std::chrono::steady_clock::now();
  while (true) {
    int status = 0;
    const pid_t r = ::waitpid(pid_, &status, WNOHANG);
    if (r == pid_) {
      reaped_ = true;
      return decode(status);
    }
    if (secondsSince(start) > seconds) return ExitStatus{};
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

bool Process::waitForOutput(const std::string& text, double seconds) {
  const auto start = std::chrono::steady_clock::now();
  while (secondsSince(start) < seconds) {
    if (out().find(text) != std::string::npos) return true;
    if (::waitpid(pid_, nullptr, WNOHANG | WNOWAIT) == pid_) return out().find(text) != std::string::npos;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return false;
}

XServer::XServer(int w, int h) {
  int fds[2];
  if (::pipe(fds) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) {
    ::close(fds[0]);
    const int devnull = ::open("/dev/null", O_WRONLY);
    ::dup2(devnull, 1);
    ::dup2(devnull, 2);
    const std::string screen = std::to_string(w) + "x" + std::to_string(h) + "x24";
    const std::string fd = std::to_string(fds[1]);
    ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", screen.c_str(), "-nolisten", "tcp",
             static_cast<char*>(nullptr));
    _exit(127);
  }
  ::close(fds[1]);
  // Xvfb writes the display number it chose once it accepts connections.
  std::string number;
  pollfd p{fds[0], POLLIN, 0};
  while (::poll(&p, 1, 10000) > 0) {
    char c;
    if (::read(fds[0], &c, 1) != 1 || c == '\n') break;
    number += c;
  }
  ::close(fds[0]);
  if (!number.empty()) display_ = ":" + number;
}

XServer::~XServer() {
  if (pid_ > 0) {
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
  }
}

std::string gameBinary() { return TESSELLATRIX_BINARY; }

}  // namespace testsupport
