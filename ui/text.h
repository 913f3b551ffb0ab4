// One-line text drawn with pango on a cairo context, in the fonts the game
// ships. A style may give a maximum width: a longer string is drawn with its
// font scaled down to fit, but never below `minScale` of its size, so a very
// long string still overflows rather than becoming unreadable. Paragraphs
// (dialog messages) wrap instead, and shrink only past a given line count.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>

namespace ui {

// DejaVu first; the CJK font supplies only the glyphs DejaVu lacks.
inline constexpr const char* kUiFontFamily = "DejaVu Sans, Quillmoss Puzzle CJK";

enum TextAlign : int32_t { kAlignLeft = 0, kAlignCenter = 1, kAlignRight = 2 };

struct TextStyle {
  const char* family = kUiFontFamily;
  double size = 15;  // logical units
  bool bold = false;
  bool italic = false;
  uint32_t color = 0xf2f2f2;
  double alpha = 1.0;
  int32_t align = kAlignLeft;  // what x means for drawText: left edge, centre or right edge
  double maxWidth = 0;         // 0 or less: no limit
  double minScale = 0.6;
};

// Registers the bundled font files with fontconfig's current configuration.
// Must run before the first text is laid out: pango reads the font list once.
// False when any file was refused (each refusal is reported on stderr).
bool registerBundledFonts();

// The layout box's top is at y; x is its left edge, centre or right edge by
// `align`. An empty string draws nothing.
void drawText(cairo_t* cr, double x, double y, const std::string& text, const TextStyle& style);
// The layout box centred on (cx, cy); `align` is ignored. Returns the width
// drawn, so a caller placing something beside the text lays it out once.
double drawTextCentered(cairo_t* cr, double cx, double cy, const std::string& text, const TextStyle& style);
// Width and height of the layout box as drawText would draw it (after fitting).
void measureText(cairo_t* cr, const std::string& text, const TextStyle& style, double* w, double* h);
// How a paragraph fits its column: the lines it takes, the factor its font
// was shrunk by, its height, and whether its last line had to be cut short.
struct ParagraphFit {
  int lines = 0;
  double scale = 1.0;
  double height = 0;
  bool cut = false;
};

// A paragraph broken into lines of at most `width` (between words where it
// can, inside a word where it must). With `maxLines` above 0 it gets that
// many lines at full size first; only a text that needs more is shrunk, down
// to the style's `minScale`, and what still does not fit ends in an ellipsis
// on the last line, so the block never outgrows the room it was given.
ParagraphFit fitParagraph(cairo_t* cr, const std::string& text, const TextStyle& style, double width, int maxLines);
// Draws the paragraph as fitParagraph fits it, each line centred, the whole
// block centred on (cx, cy). `align` and `maxWidth` are ignored. Returns the
// block's height (0 for an empty string).
double drawTextWrapped(cairo_t* cr, double cx, double cy, const std::string& text, const TextStyle& style,
                       double width, int maxLines = 0);

}  // namespace ui
