#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/draw/Fonts.h"

#include <QRectF>

class QPainter;

namespace lumivane::engine {

/// Draws a form control as it looks on a sheet, its text included; nothing of what a list holds.
void paintControl(QPainter& painter, const ShapeContent& shape, const QRectF& place, const Fonts& fonts);

} // namespace lumivane::engine
