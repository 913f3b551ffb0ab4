// Kept apart from the other helpers: Xlib's macros (None, Status, ...) would
// clash with GoogleTest's names.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdio>
#include <memory>

#include "tests/support/test_support.h"

namespace testsupport {

std::vector<uint32_t> windowColumn(const std::string& display, const std::string& name, int x) {
  std::unique_ptr<FILE, decltype(&pclose)> search(
      popen(("DISPLAY=" + display + " xdotool search --name '" + name + "' 2>/dev/null").c_str(), "r"), pclose);
  unsigned long window = 0;
  if (!search || std::fscanf(search.get(), "%lu", &window) != 1) return {};
  std::unique_ptr<Display, decltype(&XCloseDisplay)> d(XOpenDisplay(display.c_str()), XCloseDisplay);
  XWindowAttributes at;
  if (!d || !XGetWindowAttributes(d.get(), window, &at) || x < 0 || x >= at.width) return {};
  XImage* image = XGetImage(d.get(), window, x, 0, 1, at.height, AllPlanes, ZPixmap);
  if (!image) return {};
  std::vector<uint32_t> column(at.height);
  for (int y = 0; y < at.height; ++y) column[y] = XGetPixel(image, 0, y) & 0xffffff;
  XDestroyImage(image);
  return column;
}

}  // namespace testsupport
