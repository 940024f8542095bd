#include "engine/draw/CommentLayer.h"

#include <QPainter>
#include <algorithm>

namespace lumivane::engine {

void CommentLayer::paint(QPainter& painter) const
{
    if (!m_scene.measures.commentMarks)
        return;
    constexpr QColor note(0xff, 0, 0), conversation(0x7f, 0x3f, 0xbf);
    constexpr double side = 6; // pixels at scale 1
    const SheetContent& sheet = m_scene.sheet.sheet();
    const VisibleGrid& grid = m_scene.grid;
    painter.save();
    painter.setPen(Qt::NoPen);
    for (const CommentMark& mark : sheet.comments) {
        if (!grid.area().contains(mark.row, mark.column))
            continue;
        const CellArea* merged = sheet.merged.at(mark.row, mark.column);
        const QRectF cell = grid.rect(merged ? *merged : CellArea::cell(mark.row, mark.column));
        if (cell.isEmpty())
            continue;
        const double legs = std::min({side * grid.scale(), cell.width(), cell.height()});
        const QPointF corner = grid.rightToLeft() ? cell.topLeft() : cell.topRight();
        const QPointF inward(grid.rightToLeft() ? legs : -legs, 0);
        painter.setBrush(mark.threaded ? conversation : note);
        painter.drawPolygon(QPolygonF(QList<QPointF>{corner, corner + inward, corner + QPointF(0, legs)}));
    }
    painter.restore();
}

} // namespace lumivane::engine
