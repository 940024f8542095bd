#pragma once

#include "engine/content/ShapeContent.h"

#include <QPainterPath>

namespace lumivane::engine {

struct OutlinePath
{
    QPainterPath path;
    bool filled = true, stroked = true;
    double light = 0; ///< of its fill: the share of white in it, below 0 of black
};

/// The outline of a shape of one size, its top left corner at 0, 0.
struct ShapeOutline
{
    std::vector<OutlinePath> paths;
    QRectF textRect;   ///< in which its text is written, insets still to be taken off
    bool exact = true; ///< otherwise the preset is not known, and a rectangle stands for it
};

/// In EMU, as the size is.
ShapeOutline outlineOf(const ShapeGeometry& geometry, const QSizeF& size);
/// Whether a preset of this name has an outline here.
bool isKnownPreset(const std::string& name);

} // namespace lumivane::engine
