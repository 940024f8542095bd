#pragma once

#include "viewer/OpenSheet.h"

#include <QCache>
#include <QPixmap>

namespace lumivane {

/// Pictures of blocks of cells, drawn once and shown many times while a sheet scrolls. Bounded by bytes; those not
/// shown for the longest time go first.
class SheetTiles
{
public:
    /// A block of cells as the axes of a sheet divide it.
    struct Place
    {
        int rowBlock = 0;
        int columnBlock = 0;
    };

    explicit SheetTiles(qint64 maxBytes = 160ll << 20);

    /// The picture of a block; null when it was not drawn yet, or is too large to be kept.
    const QPixmap* find(const Place& place);
    const QPixmap* draw(const OpenSheet& sheet, const Place& place);
    /// Draws a block of any size without keeping it, its top left corner at the painter's origin.
    static void drawDirectly(QPainter& painter, const OpenSheet& sheet, const Place& place);
    static bool tooLarge(const OpenSheet& sheet, const Place& place);
    static CellArea cells(const OpenSheet& sheet, const Place& place);
    void clear() { m_pixmaps.clear(); }

private:
    QCache<quint64, QPixmap> m_pixmaps; ///< cost in kilobytes
};

} // namespace lumivane
