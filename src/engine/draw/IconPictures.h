#pragma once

#include "engine/content/ConditionalFormats.h"

#include <QRectF>

class QPainter;

namespace lumivane::engine {

/// Draws one icon of the sets for conditional formats into a square, sharp at any size.
void paintIcon(QPainter& painter, const QRectF& square, const Icon& icon);

} // namespace lumivane::engine
