#pragma once

#include <QRect>
#include <QVector>

namespace lumivane {

// Places for windows side by side in an area, first window first.

/// Rows over the full width where there are few windows; several columns once rows would become too flat.
QVector<QRect> tileHorizontally(const QRect& area, int count);
/// Columns over the full height where there are few windows; several rows once columns would become too narrow.
QVector<QRect> tileVertically(const QRect& area, int count);
/// Corners of windows that each show their title, in columns that begin anew at the top where the area ends.
QVector<QPoint> cascade(const QRect& area, int step, int count);
/// Minimized windows along the bottom edge, from the left, rows upwards.
QVector<QRect> arrangeIcons(const QRect& area, const QSize& icon, int count);

} // namespace lumivane
