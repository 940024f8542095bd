#pragma once

#include "engine/content/ShapeContent.h"
#include "platform/CellArea.h"

#include <QString>

namespace lumivane::engine {

enum class DrawingKind : quint8 { Chart, Picture, Shape, Group, Diagram, Control, Object };

/// "chart", "picture": as sentences name it.
QString kindWord(DrawingKind kind);

enum class AnchorKind : quint8 {
    TwoCells, ///< its size follows rows and columns
    OneCell,  ///< it moves with its first cell and keeps its size
    Absolute, ///< it stays where it is on the sheet
};

/// A chart, picture, shape or control on a sheet: its name, kind and place, and how it looks. What a chart shows is not
/// read.
struct DrawingContent
{
    QString name;
    DrawingKind kind = DrawingKind::Shape;
    AnchorKind anchorKind = AnchorKind::TwoCells;
    CellArea anchor; ///< from the cell with its top left corner to that with its bottom right one; the former alone
                     ///< where the file stores a size instead (`width` and `height`)
    bool hidden = false;
    // In EMU: the corners' distance from those of their cells, or from the sheet's own corner for an
    // absolute place, whose anchor is A1.
    qint64 startX = 0, startY = 0;
    qint64 endX = 0, endY = 0;
    qint64 width = -1, height = -1; ///< below 0: as the anchor says
    QString part;                   ///< of the package, with the chart or the picture; empty if it has none
    ShapeContent shape;
};

/// Memory held by a drawing, the bytes of its pictures left out: several may share them.
qint64 drawingBytes(const DrawingContent& drawing);

} // namespace lumivane::engine
