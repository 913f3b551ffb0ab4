// Photographs: decoded to opaque RGB24 cairo surfaces at the size they will
// be shown, never larger than the file.
#pragma once

#include <cairo.h>

#include <string>

namespace platform {

// The picture's size without decoding it.
bool imageSize(const std::string& path, int* w, int* h);
// A new surface the caller owns, reduced to fit maxW x maxH (a bound of 0 or
// less on either side loads the full size), or null after an "[image]" line.
cairo_surface_t* loadImage(const std::string& path, int maxW, int maxH);

// The reduction behind loadImage: each target pixel is the plain mean of its
// box of source pixels, in integers. `rgb` holds w x h pixels of three bytes;
// the result is packed 0x00RRGGBB into `out` rows `outStride` bytes apart.
void boxReduce(const unsigned char* rgb, int w, int h, unsigned char* out, int tw, int th, int outStride);
// A new tw x th surface from w x h pixels of three bytes, reduced by
// boxReduce (or copied when the sizes agree); null if cairo cannot make it.
cairo_surface_t* surfaceFromRgb(const unsigned char* rgb, int w, int h, int tw, int th);
// The surface as a JPEG file's bytes; false when the encoder failed.
bool encodeJpeg(cairo_surface_t* picture, int quality, std::string* out);

}  // namespace platform
