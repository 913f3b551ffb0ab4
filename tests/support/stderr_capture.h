// What a piece of code writes to standard error, through the C stream or the
// file descriptor alike.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <string>

namespace testsupport {

inline std::string stderrOf(const std::function<void()>& run) {
  std::FILE* file = std::tmpfile();
  std::fflush(stderr);
  const int saved = ::dup(2);
  ::dup2(::fileno(file), 2);
  run();
  std::fflush(stderr);
  ::dup2(saved, 2);
  ::close(saved);
  std::string text(static_cast<size_t>(::lseek(::fileno(file), 0, SEEK_END)), '\0');
  ::pread(::fileno(file), text.data(), text.size(), 0);
  std::fclose(file);
  return text;
}

}  // namespace testsupport
