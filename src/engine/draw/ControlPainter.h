#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/draw/Fonts.h"
#include "engine/show/ShownSheet.h"

#include <QRectF>

class QPainter;

namespace lumivane::engine {

/// Draws a form control as it looks on a sheet, its text included; a list takes its entries from the sheet.
void paintControl(QPainter& painter, const ShapeContent& shape, const QRectF& place, const Fonts& fonts,
                  const ShownSheet& sheet);

} // namespace lumivane::engine
