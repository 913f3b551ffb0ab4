// The closed outline of one jigsaw piece as a cairo path. Textures, shadows
// and the animated background all fill, clip or stroke this one shape.
#pragma once

#include <cairo.h>

#include "core/edges.h"

namespace core {

// Replaces the current path of cr with the outline of a w x h cell whose
// top-left corner is at (m, m). m is both the margin around the cell and the
// knob depth scale, so a (w + 2m) x (h + 2m) surface holds the whole piece.
void buildPiecePath(cairo_t* cr, double w, double h, double m, const PieceEdges& e);

}  // namespace core
