// JPEG decoding through libjpeg-turbo, reduced in the DCT domain: a picture
// wanted at half its size or less is decoded at 1/2, 1/4 or 1/8 of it, which
// skips most of the work of decoding the full picture and shrinking it.
#pragma once

#include <string>
#include <vector>

namespace platform {

struct DecodedRgb {
  std::vector<unsigned char> rgb;  // w x h pixels of three bytes
  int w = 0, h = 0;
  int fullW = 0, fullH = 0;  // the picture's own size
  bool cutShort = false;     // the file ended before the picture did (the rest is grey)
};

using FitFunction = void (*)(int w, int h, void* user, int* tw, int* th);

// The largest of 8, 4, 2 that still leaves a picture of fullW x fullH at
// least wantW x wantH, else 1.
int jpegScaleDenominator(int fullW, int fullH, int wantW, int wantH);
// Decodes `path` when it is a JPEG libjpeg accepts; `fit` gives, from the
// picture's size, the size it will be shown at. False (and nothing said)
// otherwise: the caller falls back to another decoder.
bool decodeJpeg(const std::string& path, FitFunction fit, void* user, DecodedRgb* out);
// The bytes begin as every JPEG file does.
bool isJpegData(const std::string& data);
// The same for a JPEG file's bytes already in memory; false also when they
// are no JPEG at all.
bool decodeJpegData(const std::string& data, FitFunction fit, void* user, DecodedRgb* out);

}  // namespace platform
