#include "ui/text.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "platform/paths.h"
#include "ui/draw.h"
#include "ui/frame_layer.h"

namespace ui {

namespace {

constexpr const char* kBundledFonts[] = {
    "assets/fonts/DejaVuSans.ttf",
    "assets/fonts/DejaVuSans-Bold.ttf",
    "assets/fonts/QuillmossPuzzleCJK.ttf",
};

struct LayoutDeleter {
  void operator()(PangoLayout* l) const { g_object_unref(l); }
};
struct FontDeleter {
  void operator()(PangoFontDescription* d) const { pango_font_description_free(d); }
};

// Every string is laid out in one reused layout; the font description is
// rebuilt only when the family, effective size or weight/style changes, so a
// run of strings in one style costs a text replacement each.
struct State {
  cairo_t* owner = nullptr;  // the context the layout was made for
  std::unique_ptr<PangoLayout, LayoutDeleter> layout;
  std::unique_ptr<PangoFontDescription, FontDeleter> font;
  std::string family;
  double size = 0;
  bool bold = false;
  bool italic = false;
};

State& state() {
  static State s;
  return s;
}

// A context freed and another allocated at the same address must not inherit
// the layout, so the owning context tells us when it goes.
cairo_user_data_key_t g_ownerKey;

void forgetOwner(void* cr) {
  if (state().owner == cr) state().owner = nullptr;
}

PangoLayout* layoutFor(cairo_t* cr) {
  State& s = state();
  if (s.owner != cr || !s.layout) {
    if (s.owner) cairo_set_user_data(s.owner, &g_ownerKey, nullptr, nullptr);
    s.layout.reset(pango_cairo_create_layout(cr));
    s.owner = cr;
    cairo_set_user_data(cr, &g_ownerKey, cr, forgetOwner);
    if (s.font) pango_layout_set_font_description(s.layout.get(), s.font.get());
  } else {
    // The same context may have been scaled or rotated since (a waving title).
    pango_cairo_update_layout(cr, s.layout.get());
  }
  return s.layout.get();
}

PangoLayout* layOut(cairo_t* cr, const std::string& text, const TextStyle& style, double factor) {
  State& s = state();
  PangoLayout* layout = layoutFor(cr);
  const double size = style.size * factor;
  const char* family = style.family ? style.family : kUiFontFamily;
  if (!s.font || s.size != size || s.bold != style.bold || s.italic != style.italic || s.family != family) {
    s.font.reset(pango_font_description_new());
    pango_font_description_set_family(s.font.get(), family);
    pango_font_description_set_absolute_size(s.font.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(s.font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(s.font.get(), style.italic ? PANGO_STYLE_OBLIQUE : PANGO_STYLE_NORMAL);
    s.family = family;
    s.size = size;
    s.bold = style.bold;
    s.italic = style.italic;
    pango_layout_set_font_description(layout, s.font.get());
  }
  pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
  return layout;
}

void layoutSize(PangoLayout* layout, double* w, double* h) {
  int pw = 0, ph = 0;
  pango_layout_get_size(layout, &pw, &ph);
  if (w) *w = static_cast<double>(pw) / PANGO_SCALE;
  if (h) *h = static_cast<double>(ph) / PANGO_SCALE;
}

// Lays the text out at full size, and again shrunk when it is wider than the
// style allows.
PangoLayout* layOutFitted(cairo_t* cr, const std::string& text, const TextStyle& style) {
  PangoLayout* layout = layOut(cr, text, style, 1.0);
  if (style.maxWidth <= 0) return layout;
  double w = 0;
  layoutSize(layout, &w, nullptr);
  if (w < 1 || w <= style.maxWidth) return layout;
  return layOut(cr, text, style, std::max(style.maxWidth / w, style.minScale));
}

// Paragraph settings on the shared layout. They are taken off again by
// endParagraph before anyone else lays text out on it.
void wrapTo(PangoLayout* layout, double width, int maxLines, bool cut) {
  pango_layout_set_width(layout, static_cast<int>(width * PANGO_SCALE));
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  pango_layout_set_alignment(layout, PANGO_ALIGN_CENTER);
  pango_layout_set_height(layout, cut ? -maxLines : -1);
  pango_layout_set_ellipsize(layout, cut ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
}

void endParagraph(PangoLayout* layout) {
  pango_layout_set_width(layout, -1);
  pango_layout_set_height(layout, -1);
  pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_NONE);
  pango_layout_set_alignment(layout, PANGO_ALIGN_LEFT);
}

struct Paragraph {
  PangoLayout* layout;
  double width;
  double scale;
};

// Wrapping comes before shrinking: a long message reads better on three lines
// at full size than on two in small print. The font then steps down by 5 %
// until the lines fit, and at the smallest size the last line is cut.
Paragraph layOutParagraph(cairo_t* cr, const std::string& text, const TextStyle& style, double width, int maxLines) {
  constexpr double kStep = 0.05;
  width = std::max(width, 1.0);
  for (double scale = 1.0;; scale -= kStep) {
    PangoLayout* layout = layOut(cr, text, style, scale);
    wrapTo(layout, width, maxLines, false);
    if (maxLines <= 0 || pango_layout_get_line_count(layout) <= maxLines) return Paragraph{layout, width, scale};
    if (scale - kStep < style.minScale) {
      wrapTo(layout, width, maxLines, true);
      return Paragraph{layout, width, scale};
    }
  }
}

void show(cairo_t* cr, PangoLayout* layout, double x, double y, const TextStyle& style) {
  setColor(cr, style.color, style.alpha);
  cairo_move_to(cr, x, y);
  PangoRectangle ink;
  pango_layout_get_pixel_extents(layout, &ink, nullptr);
  layerDamage(cr, x + ink.x, y + ink.y, ink.width, ink.height);
  pango_cairo_show_layout(cr, layout);
}

}  // namespace

bool registerBundledFonts() {
  FcConfig* config = FcConfigGetCurrent();
  if (!config) return false;
  bool all = true;
  for (const char* rel : kBundledFonts) {
    const std::string path = paths::asset(rel);
    if (!FcConfigAppFontAddFile(config, reinterpret_cast<const FcChar8*>(path.c_str()))) {
      std::fprintf(stderr, "[fonts] konnte %s nicht anmelden\n", path.c_str());
      all = false;
    }
  }
  return all;
}

void drawText(cairo_t* cr, double x, double y, const std::string& text, const TextStyle& style) {
  if (text.empty()) return;
  PangoLayout* layout = layOutFitted(cr, text, style);
  double w = 0;
  layoutSize(layout, &w, nullptr);
  if (style.align == kAlignCenter) x -= w * 0.5;
  if (style.align == kAlignRight) x -= w;
  show(cr, layout, x, y, style);
}

double drawTextCentered(cairo_t* cr, double cx, double cy, const std::string& text, const TextStyle& style) {
  if (text.empty()) return 0;
  PangoLayout* layout = layOutFitted(cr, text, style);
  double w = 0, h = 0;
  layoutSize(layout, &w, &h);
  show(cr, layout, cx - w * 0.5, cy - h * 0.5, style);
  return w;
}

void measureText(cairo_t* cr, const std::string& text, const TextStyle& style, double* w, double* h) {
  layoutSize(layOutFitted(cr, text, style), w, h);
}

ParagraphFit fitParagraph(cairo_t* cr, const std::string& text, const TextStyle& style, double width,
                          int maxLines) {
  ParagraphFit fit;
  if (text.empty()) return fit;
  Paragraph p = layOutParagraph(cr, text, style, width, maxLines);
  fit.lines = pango_layout_get_line_count(p.layout);
  fit.scale = p.scale;
  fit.cut = pango_layout_is_ellipsized(p.layout);
  layoutSize(p.layout, nullptr, &fit.height);
  endParagraph(p.layout);
  return fit;
}

double drawTextWrapped(cairo_t* cr, double cx, double cy, const std::string& text, const TextStyle& style,
                       double width, int maxLines) {
  if (text.empty()) return 0;
  Paragraph p = layOutParagraph(cr, text, style, width, maxLines);
  double h = 0;
  layoutSize(p.layout, nullptr, &h);
  show(cr, p.layout, cx - p.width * 0.5, cy - h * 0.5, style);
  endParagraph(p.layout);
  return h;
}

}  // namespace ui
