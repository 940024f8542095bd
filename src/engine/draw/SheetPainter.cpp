#include "engine/draw/SheetPainter.h"

#include "engine/draw/BackgroundLayer.h"
#include "engine/draw/BorderLayer.h"
#include "engine/draw/CommentLayer.h"
#include "engine/draw/ConditionLayer.h"
#include "engine/draw/DrawingLayer.h"
#include "engine/draw/DrawingPlace.h"
#include "engine/draw/FillLayer.h"
#include "engine/draw/GridLineLayer.h"
#include "engine/draw/NoteLayer.h"
#include "engine/draw/SparklineLayer.h"
#include "engine/draw/TextLayer.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::engine {

SheetPainter::SheetPainter(std::shared_ptr<const ShownSheet> sheet, Metrics metrics)
    : m_sheet(std::move(sheet)), m_metrics(metrics), m_geometry(m_sheet, metrics)
{
}

QSize SheetPainter::size(const CellArea& area, double scale) const
{
    const auto side = [&](qint64 pixels) {
        return static_cast<int>(std::min(std::round(double(pixels) * scale), 1e9));
    };
    return {side(m_geometry.columnsPixels(area.firstColumn, area.lastColumn)),
            side(m_geometry.rowsPixels(area.firstRow, area.lastRow))};
}

bool SheetPainter::drawable(const QSize& whole)
{
    return !whole.isEmpty() && std::max(whole.width(), whole.height()) <= maxSide;
}

void SheetPainter::paint(QPainter& painter, const CellArea& area, double scale) const
{
    if (const QSize whole = size(area, scale); drawable(whole))
        paint(painter, area, scale, whole);
}

void SheetPainter::paint(QPainter& painter, const CellArea& area, double scale, const QSize& whole) const
{
    const VisibleGrid grid(m_geometry, area, scale, m_sheet->sheet().view.rightToLeft);
    painter.save();
    painter.setClipRect(QRect(QPoint(0, 0), whole), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.fillRect(QRect(QPoint(0, 0), whole), Qt::white);

    const Measures& measures = Measures::of(m_metrics);
    const Scene scene{*m_sheet, m_geometry, grid, Fonts::shared(scale, measures), measures};
    const TextLayer texts(scene);
    BackgroundLayer(scene).paint(painter);
    FillLayer(scene).paint(painter);
    GridLineLayer(scene, texts).paint(painter);
    ConditionLayer(scene).paint(painter);
    SparklineLayer(scene).paint(painter);
    BorderLayer(scene).paint(painter);
    texts.paint(painter);
    CommentLayer(scene).paint(painter);
    DrawingLayer(scene).paint(painter);
    NoteLayer(scene).paint(painter);
    painter.restore();
}

QImage SheetPainter::drawingImage(const DrawingContent& drawing, double scale) const
{
    constexpr double mostPixels = 64e6;
    const QSizeF exact = DrawingPlaces(m_geometry, {drawing}).rect(drawing).size() * scale;
    if (std::max(exact.width(), exact.height()) > maxSide)
        return {};
    const QRectF place(QPointF(0, 0), exact.toSize());
    const QRect covered = coveredBy(drawing, place, scale);
    if (double(covered.width()) * covered.height() > mostPixels || !drawable(covered.size()))
        return {};
    QImage image(covered.size(), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.setDotsPerMeterX(3780);
    image.setDotsPerMeterY(3780);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(-covered.topLeft());
    PaintBudget budget(image.size());
    paintDrawing(painter, drawing, place, Fonts::shared(scale, Measures::of(m_metrics)), *m_sheet, budget);
    return image;
}

QImage SheetPainter::image(const CellArea& area, double scale) const
{
    const QSize whole = size(area, scale);
    if (!drawable(whole))
        return {};
    QImage image(whole, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    image.setDotsPerMeterX(3780); // 96 dots per inch: sizes of fonts are computed for them
    image.setDotsPerMeterY(3780);
    QPainter painter(&image);
    paint(painter, area, scale, whole);
    return image;
}

} // namespace lumivane::engine
