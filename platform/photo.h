// A photograph file made into the picture a puzzle is cut from: turned
// upright by its EXIF orientation, its centre cut to an aspect a board can
// show, reduced to the most a board ever needs. Also the strongly blurred
// copy that stands for a picture not yet solved.
#pragma once

#include <cairo.h>

#include <string>

namespace platform {

enum class PhotoStatus { Ok, NotPicture, Damaged, TooSmall, TooLarge };

inline constexpr int kPhotoMinSide = 400;          // the shorter side, at least
inline constexpr double kPhotoMaxPixels = 100e6;   // a larger file is refused before decoding
inline constexpr int kPhotoLongSide = 2560;        // the longer side, at most, once prepared
inline constexpr double kPhotoMinAspect = 0.5;     // width / height: 1:2 ...
inline constexpr double kPhotoMaxAspect = 2.4;     // ... to 2.4:1

// The EXIF orientation of a JPEG file's bytes, 1 to 8 (1: stored upright);
// 1 when it has none.
int exifOrientation(const std::string& data);
// From a picture file's bytes (JPEG through libjpeg-turbo, the other kinds
// stb_image reads); on Ok `*out` is a new RGB24 surface the caller owns.
PhotoStatus preparePhoto(const std::string& data, cairo_surface_t** out);
// A new surface: the picture reduced to fit maxSide x maxSide and blurred
// beyond recognition.
cairo_surface_t* blurredCopy(cairo_surface_t* picture, int maxSide);

}  // namespace platform
