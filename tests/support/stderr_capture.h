// Collects what is written to standard error, through the C stream or the
// file descriptor, while the object lives.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <string>

namespace testsupport {

class StderrCapture {
 public:
  StderrCapture() : file_(std::tmpfile()), saved_(::dup(2)) {
    std::fflush(stderr);
    ::dup2(::fileno(file_), 2);
  }
  ~StderrCapture() {
    restore();
    std::fclose(file_);
  }
  StderrCapture(const StderrCapture&) = delete;
  StderrCapture& operator=(const StderrCapture&) = delete;

  // Everything so far; capturing ends here.
  std::string text() {
    restore();
    std::string all;
    std::rewind(file_);
    for (int c; (c = std::fgetc(file_)) != EOF;) all += static_cast<char>(c);
    return all;
  }

 private:
  void restore() {
    if (saved_ < 0) return;
    std::fflush(stderr);
    ::dup2(saved_, 2);
    ::close(saved_);
    saved_ = -1;
  }

  std::FILE* file_;
  int saved_;
};

}  // namespace testsupport
