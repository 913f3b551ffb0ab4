#include "platform/jpeg.h"

// clang-format off
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

namespace platform {

namespace {

// Beyond this a file's header is more likely lying than a photograph.
constexpr double kMaxPixels = 1 << 28;

struct ErrorManager {
  jpeg_error_mgr base;
  std::jmp_buf jump;
  bool cutShort = false;
};

[[noreturn]] void onError(j_common_ptr cinfo) {
  std::longjmp(reinterpret_cast<ErrorManager*>(cinfo->err)->jump, 1);
}

// Warnings of a picture that still decodes are not the player's concern,
// except the one that says the file ended early: what follows is made up.
void onWarning(j_common_ptr cinfo, int level) {
  if (level < 0 && cinfo->err->msg_code == JWRN_JPEG_EOF) reinterpret_cast<ErrorManager*>(cinfo->err)->cutShort = true;
}

bool hasJpegMagic(const unsigned char* magic) { return magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF; }

bool isJpeg(FILE* f) {
  unsigned char magic[3] = {0, 0, 0};
  const bool yes = std::fread(magic, 1, 3, f) == 3 && hasJpegMagic(magic);
  std::rewind(f);
  return yes;
}

// Where the compressed bytes come from: an open file or a block of memory.
struct Source {
  FILE* file = nullptr;
  const std::string* data = nullptr;
};

// Everything between setjmp and a longjmp is plain data, so jumping out
// skips no destructor; `out` is filled only through its pointer.
bool decode(const Source& src, FitFunction fit, void* user, DecodedRgb* out) {
  jpeg_decompress_struct cinfo;
  ErrorManager err;
  cinfo.err = jpeg_std_error(&err.base);
  err.base.error_exit = onError;
  err.base.emit_message = onWarning;
  if (setjmp(err.jump)) {
    jpeg_destroy_decompress(&cinfo);
    return false;
  }
  jpeg_create_decompress(&cinfo);
  if (src.file) {
    jpeg_stdio_src(&cinfo, src.file);
  } else {
    jpeg_mem_src(&cinfo, reinterpret_cast<const unsigned char*>(src.data->data()),
                 static_cast<unsigned long>(src.data->size()));
  }
  jpeg_read_header(&cinfo, TRUE);
  int tw = 0, th = 0;
  fit(static_cast<int>(cinfo.image_width), static_cast<int>(cinfo.image_height), user, &tw, &th);
  cinfo.scale_num = 1;
  cinfo.scale_denom =
      jpegScaleDenominator(static_cast<int>(cinfo.image_width), static_cast<int>(cinfo.image_height), tw, th);
  cinfo.out_color_space = JCS_RGB;
  if (cinfo.scale_denom > 1) {
    // The picture is reduced further after decoding, which hides what the
    // exact transform and smooth chroma upsampling would add.
    cinfo.dct_method = JDCT_IFAST;
    cinfo.do_fancy_upsampling = FALSE;
  }
  jpeg_start_decompress(&cinfo);
  if (static_cast<double>(cinfo.output_width) * cinfo.output_height > kMaxPixels) {
    jpeg_destroy_decompress(&cinfo);
    return false;
  }
  out->fullW = static_cast<int>(cinfo.image_width);
  out->fullH = static_cast<int>(cinfo.image_height);
  out->w = static_cast<int>(cinfo.output_width);
  out->h = static_cast<int>(cinfo.output_height);
  out->rgb.resize(static_cast<size_t>(out->w) * out->h * 3);
  while (cinfo.output_scanline < cinfo.output_height) {
    JSAMPROW row = out->rgb.data() + static_cast<size_t>(cinfo.output_scanline) * out->w * 3;
    jpeg_read_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_decompress(&cinfo);
  jpeg_destroy_decompress(&cinfo);
  out->cutShort = err.cutShort;
  return true;
}

}  // namespace

int jpegScaleDenominator(int fullW, int fullH, int wantW, int wantH) {
  for (int d : {8, 4, 2}) {
    if ((fullW + d - 1) / d >= wantW && (fullH + d - 1) / d >= wantH) return d;
  }
  return 1;
}

bool decodeJpeg(const std::string& path, FitFunction fit, void* user, DecodedRgb* out) {
  FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return false;
  Source src;
  src.file = f;
  const bool ok = isJpeg(f) && decode(src, fit, user, out);
  std::fclose(f);
  return ok;
}

bool isJpegData(const std::string& data) {
  return data.size() >= 3 && hasJpegMagic(reinterpret_cast<const unsigned char*>(data.data()));
}

bool decodeJpegData(const std::string& data, FitFunction fit, void* user, DecodedRgb* out) {
  Source src;
  src.data = &data;
  return isJpegData(data) && decode(src, fit, user, out);
}

}  // namespace platform
