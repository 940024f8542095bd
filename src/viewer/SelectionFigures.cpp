#include "viewer/SelectionFigures.h"

#include <QStringList>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {

constexpr qsizetype longestCopy = 64 << 20; // characters

void countCell(const Cell& cell, SelectionFigures& figures)
{
    if (cell.kind == CellKind::Blank)
        return;
    ++figures.count;
    if (cell.kind != CellKind::Number)
        return;
    if (figures.numbers++ == 0) {
        figures.style = static_cast<int>(cell.style);
        figures.smallest = figures.largest = cell.number;
    }
    figures.sum += cell.number;
    figures.smallest = std::min(figures.smallest, cell.number);
    figures.largest = std::max(figures.largest, cell.number);
}

std::vector<bool> hiddenColumns(const ViewedSheet& sheet)
{
    std::vector<bool> hidden(static_cast<size_t>(sheet.used().lastColumn) + 1);
    for (size_t column = 1; column < hidden.size(); ++column)
        hidden[column] = sheet.geometry().columnHidden(static_cast<int>(column));
    return hidden;
}

QString copiedCell(const QString& text)
{
    if (!text.contains(u'\t') && !text.contains(u'\n') && !text.contains(u'"'))
        return text;
    return u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

SelectionFigures figuresOf(const ViewedSheet& sheet, const std::vector<CellArea>& areas)
{
    SelectionFigures figures;
    const std::vector<bool> hidden = hiddenColumns(sheet);
    const auto& rows = sheet.content().rows;
    for (const CellArea& area : areas) {
        const auto [begin, end] = sheet.content().rowIndices(area);
        for (size_t i = begin; i < end; ++i) {
            if (sheet.geometry().rowHidden(rows[i].row))
                continue;
            for (const Cell& cell : sheet.content().cellsIn(i, area.firstColumn, area.lastColumn)) {
                if (!hidden[cell.column])
                    countCell(cell, figures);
            }
        }
    }
    return figures;
}

QString figuresText(const ViewedSheet& sheet, const SelectionFigures& figures)
{
    if (figures.count < 2)
        return {};
    QStringList parts;
    const auto shown = [&](double number) { return sheet.shown().shownNumber(number, figures.style); };
    if (figures.numbers > 0)
        parts << u"Average: "_s + shown(figures.sum / static_cast<double>(figures.numbers));
    parts << u"Count: %L1"_s.arg(figures.count);
    if (figures.numbers > 0)
        parts << u"Sum: "_s + shown(figures.sum);
    return parts.join(u"     "_s);
}

QString selectionText(const ViewedSheet& sheet, const std::vector<CellArea>& areas)
{
    QString text;
    const std::vector<bool> hidden = hiddenColumns(sheet);
    for (const CellArea& area : areas) {
        const auto part = intersect(area, sheet.used());
        if (!part)
            continue;
        for (int row = part->firstRow; row <= part->lastRow && text.size() < longestCopy; ++row) {
            if (sheet.geometry().rowHidden(row))
                continue;
            QStringList cells;
            for (int column = part->firstColumn; column <= part->lastColumn; ++column) {
                if (!hidden[static_cast<size_t>(column)])
                    cells << copiedCell(sheet.shownText(row, column));
            }
            text += cells.join(u'\t') + u'\n';
        }
    }
    return text;
}

} // namespace lumivane
