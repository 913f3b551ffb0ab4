// A picture file as the player may hand it over: any bytes, a JPEG whose
// EXIF block or scan breaks off or lies about its size, a PNG that is cut
// short. Preparing it either refuses it or gives a picture within the
// limits, never larger than 2560 on its longer side, and the blurred copy
// of that picture is made as an import makes it.
#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/photo.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const int orientation = platform::exifOrientation(bytes);
  if (orientation < 1 || orientation > 8) std::abort();
  cairo_surface_t* picture = nullptr;
  if (platform::preparePhoto(bytes, &picture) != platform::PhotoStatus::Ok) {
    if (picture) std::abort();
    return 0;
  }
  const int w = cairo_image_surface_get_width(picture), h = cairo_image_surface_get_height(picture);
  if (std::max(w, h) > platform::kPhotoLongSide || w < 1 || h < 1) std::abort();
  cairo_surface_destroy(platform::blurredCopy(picture, 200));
  cairo_surface_destroy(picture);
  return 0;
}
