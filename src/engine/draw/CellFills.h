#pragma once

#include "engine/content/Styles.h"

#include <QBrush>
#include <QRect>

class QPainter;

namespace lumivane::engine {

/// Fills a cell's place with a colour, a pattern or a gradient. Patterns keep their dots at whole pixels and are
/// enlarged with the scale; they begin at the picture's origin, so that neighbouring cells join.
void paintFill(QPainter& painter, const QRect& place, const FillStyle& fill, double scale);

/// The brush of a pattern, enlarged with the scale.
QBrush patternBrush(const FillStyle& fill, double scale);

/// A plain fill of the colour that a pattern has from afar; other fills as they are.
FillStyle evened(const FillStyle& fill);

} // namespace lumivane::engine
