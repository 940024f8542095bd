#include "viewer/SheetTiles.h"

#include <QPainter>

namespace lumivane {

namespace {

constexpr qint64 mostTilePixels = 4 << 20;

quint64 tileKey(const SheetTiles::Place& place)
{
    return quint64(quint32(place.rowBlock)) << 32 | quint32(place.columnBlock);
}

QSize tileSize(const OpenSheet& sheet, const SheetTiles::Place& place)
{
    const CellArea cells = SheetTiles::cells(sheet, place);
    const SheetAxis& rows = sheet.rowAxis();
    const SheetAxis& columns = sheet.columnAxis();
    return {static_cast<int>(columns.start(cells.lastColumn + 1) - columns.start(cells.firstColumn)),
            static_cast<int>(rows.start(cells.lastRow + 1) - rows.start(cells.firstRow))};
}

} // namespace

SheetTiles::SheetTiles(qint64 maxBytes) : m_pixmaps(static_cast<qsizetype>(maxBytes / 1024)) {}

CellArea SheetTiles::cells(const OpenSheet& sheet, const Place& place)
{
    return {sheet.rowAxis().firstOf(place.rowBlock), sheet.columnAxis().firstOf(place.columnBlock),
            sheet.rowAxis().lastOf(place.rowBlock), sheet.columnAxis().lastOf(place.columnBlock)};
}

bool SheetTiles::tooLarge(const OpenSheet& sheet, const Place& place)
{
    const QSize size = tileSize(sheet, place);
    return qint64(size.width()) * size.height() > mostTilePixels;
}

const QPixmap* SheetTiles::find(const Place& place)
{
    return m_pixmaps.object(tileKey(place));
}

const QPixmap* SheetTiles::draw(const OpenSheet& sheet, const Place& place)
{
    const QSize size = tileSize(sheet, place);
    if (size.isEmpty() || tooLarge(sheet, place))
        return nullptr;
    auto pixmap = std::make_unique<QPixmap>(size);
    pixmap->fill(Qt::white);
    QPainter painter(pixmap.get());
    drawDirectly(painter, sheet, place);
    painter.end();
    const qsizetype kilobytes = std::max<qsizetype>(1, qsizetype(size.width()) * size.height() * 4 / 1024);
    m_pixmaps.insert(tileKey(place), pixmap.release(), kilobytes);
    return find(place);
}

void SheetTiles::drawDirectly(QPainter& painter, const OpenSheet& sheet, const Place& place)
{
    sheet.sheet().painter().paint(painter, cells(sheet, place), sheet.scale());
}

} // namespace lumivane
