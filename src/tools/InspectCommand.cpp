#include "engine/draw/SheetGeometry.h"
#include "engine/read/WorkbookFile.h"
#include "tools/Commands.h"
#include "tools/Output.h"
#include "tools/WorkbookArguments.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {

// How much of a workbook is printed: a script looks at what people see first, not at all of a large file.
constexpr size_t mostSheets = 8;
constexpr int mostRows = 300, mostColumns = 60;
constexpr int sampleRows = 30, sampleColumns = 12;

CellArea cutTo(CellArea area, int rows, int columns)
{
    area.lastRow = std::min(area.lastRow, area.firstRow + rows - 1);
    area.lastColumn = std::min(area.lastColumn, area.firstColumn + columns - 1);
    return area;
}

double roundedTo(double value, double step)
{
    return std::round(value / step) * step;
}

QJsonValue positionJson(int position, bool columns)
{
    return columns ? QJsonValue(columnLetters(position)) : QJsonValue(position);
}

/// Neighbouring positions with the same value become one entry [first, last, value]; positions for which `valueOf`
/// gives an undefined value are left out. A value of true is not written.
template <class ValueOf>
QJsonArray runsJson(int first, int last, bool columns, ValueOf valueOf)
{
    QJsonArray runs;
    for (int position = first; position <= last;) {
        const QJsonValue value = valueOf(position);
        int end = position;
        while (end < last && valueOf(end + 1) == value)
            ++end;
        if (!value.isUndefined()) {
            QJsonArray run{positionJson(position, columns), positionJson(end, columns)};
            if (!value.isBool())
                run.append(value);
            runs.append(run);
        }
        position = end + 1;
    }
    return runs;
}

QJsonValue trueOrNothing(bool condition)
{
    return condition ? QJsonValue(true) : QJsonValue(QJsonValue::Undefined);
}

/// "cell" is where it begins. The anchor is the cells that it covers, or that first one with a size of its own, or a
/// place on the sheet in points.
QJsonArray objectsJson(const SheetContent& sheet)
{
    const auto points = [](qint64 emu) { return roundedTo(double(emu) / emuPerPoint, 0.01); };
    QJsonArray result;
    for (const DrawingContent& drawing : sheet.drawings) {
        const CellArea first = CellArea::cell(drawing.anchor.firstRow, drawing.anchor.firstColumn);
        QJsonObject object{
            {u"kind"_s, kindWord(drawing.kind)}, {u"name"_s, drawing.name}, {u"cell"_s, first.relative()}};
        if (drawing.anchorKind == AnchorKind::Absolute) {
            object.insert(u"x"_s, points(drawing.startX));
            object.insert(u"y"_s, points(drawing.startY));
        } else {
            object.insert(u"anchor"_s, drawing.anchor.relative());
        }
        if (drawing.width >= 0 && drawing.height >= 0) {
            object.insert(u"width"_s, points(drawing.width));
            object.insert(u"height"_s, points(drawing.height));
        }
        if (drawing.hidden)
            object.insert(u"hidden"_s, true);
        result.append(object);
    }
    return result;
}

/// Describes one sheet of a workbook as people see it.
class SheetDescription
{
public:
    SheetDescription(const std::shared_ptr<WorkbookFile>& file, std::shared_ptr<const SheetContent> sheet,
                     Metrics metrics)
        : m_sheet(std::move(sheet)),
          m_shown(std::make_shared<ShownSheet>(file->content(), m_sheet, nullptr, WorkbookFile::sheetsOf(file))),
          m_geometry(m_shown, metrics), m_used(m_sheet->used.value_or(CellArea::cell(1, 1))),
          m_covered(cutTo(m_used, mostRows, mostColumns))
    {
    }

    QJsonObject json() const;

private:
    void addLastShown(QJsonObject& json) const;
    void addSizes(QJsonObject& json) const;
    QJsonObject cells() const;
    QJsonArray merged() const;
    QJsonValue panes() const;
    CellArea sample() const;
    bool filtered(int row) const;

    std::shared_ptr<const SheetContent> m_sheet;
    std::shared_ptr<ShownSheet> m_shown;
    SheetGeometry m_geometry;
    CellArea m_used, m_covered;
};

QJsonObject SheetDescription::json() const
{
    QJsonObject json{{u"used_area"_s, m_used.relative()},
                     {u"covered"_s, m_covered.relative()},
                     {u"merged"_s, merged()},
                     {u"panes"_s, panes()},
                     {u"grid_lines"_s, m_sheet->view.gridLines},
                     {u"objects"_s, objectsJson(*m_sheet)},
                     {u"sample_range"_s, sample().relative()},
                     {u"cells"_s, cells()}};
    addLastShown(json);
    addSizes(json);
    return json;
}

void SheetDescription::addLastShown(QJsonObject& json) const
{
    const auto last =
        m_shown->extent([this](int row, const Cell& cell) { return !m_shown->shown(row, cell).isEmpty(); });
    json.insert(u"last_row"_s, last ? QJsonValue(last->lastRow) : QJsonValue());
    json.insert(u"last_column"_s, last ? QJsonValue(columnLetters(last->lastColumn)) : QJsonValue());
}

void SheetDescription::addSizes(QJsonObject& json) const
{
    // What stands before the used area takes part where it is within the same bounds.
    const int firstRow = m_covered.firstRow <= mostRows ? 1 : m_covered.firstRow, lastRow = m_covered.lastRow;
    const int firstColumn = m_covered.firstColumn <= mostColumns ? 1 : m_covered.firstColumn;
    const int lastColumn = m_covered.lastColumn;
    json.insert(u"row_heights"_s, runsJson(firstRow, lastRow, false, [this](int row) {
                    return QJsonValue(roundedTo(m_geometry.shownRowHeightPoints(row), 0.01));
                }));
    json.insert(u"column_widths"_s, runsJson(firstColumn, lastColumn, true, [this](int column) {
                    return QJsonValue(double(m_geometry.shownColumnPixels(column)));
                }));
    json.insert(u"hidden_rows"_s, runsJson(firstRow, lastRow, false,
                                           [this](int row) { return trueOrNothing(m_geometry.rowHidden(row)); }));
    json.insert(u"filtered_rows"_s,
                runsJson(firstRow, lastRow, false, [this](int row) { return trueOrNothing(filtered(row)); }));
    json.insert(u"hidden_columns"_s, runsJson(firstColumn, lastColumn, true, [this](int column) {
                    return trueOrNothing(m_geometry.columnHidden(column));
                }));
}

/// A filter hides rows below its head.
bool SheetDescription::filtered(int row) const
{
    return m_geometry.rowHidden(row) &&
           std::any_of(m_sheet->filtered.begin(), m_sheet->filtered.end(),
                       [row](const CellArea& area) { return row > area.firstRow && row <= area.lastRow; });
}

QJsonObject SheetDescription::cells() const
{
    QJsonObject result;
    const auto [begin, end] = m_sheet->rowIndices(m_covered);
    for (size_t i = begin; i < end; ++i)
        for (const Cell& cell : m_sheet->cellsIn(i, m_covered.firstColumn, m_covered.lastColumn))
            if (const QString text = m_shown->shown(m_sheet->rows[i].row, cell); !text.isEmpty())
                result.insert(CellArea::cell(m_sheet->rows[i].row, cell.column).relative(), text);
    return result;
}

QJsonArray SheetDescription::merged() const
{
    QJsonArray result;
    for (const CellArea& area : m_sheet->merged)
        if (intersect(area, m_covered))
            result.append(area.relative());
    return result;
}

QJsonValue SheetDescription::panes() const
{
    const SheetView& view = m_sheet->view;
    constexpr double twipsToPixels = 96.0 / 1440;
    switch (view.panes) {
    case PaneKind::Frozen:
        return QJsonObject{{u"kind"_s, u"frozen"_s}, {u"columns"_s, view.xSplit}, {u"rows"_s, view.ySplit}};
    case PaneKind::Split:
        return QJsonObject{{u"kind"_s, u"split"_s},
                           {u"x"_s, std::round(view.xSplit * twipsToPixels)},
                           {u"y"_s, std::round(view.ySplit * twipsToPixels)}};
    case PaneKind::None:
        break;
    }
    return {};
}

CellArea SheetDescription::sample() const
{
    CellArea area = m_used;
    if (!m_sheet->drawings.empty()) { // they may reach beyond the cells
        area.lastRow = area.firstRow + 99;
        area.lastColumn = area.firstColumn + 99;
    }
    return cutTo(area, sampleRows, sampleColumns);
}

} // namespace

int inspectCommand(const CommandLine& line)
{
    requireEmbedded(line);
    const QString path = line.argument(0);
    const auto file = WorkbookFile::open(path);
    const auto& workbook = file->content();
    const Metrics metrics = comparesWithCalc(line) ? Metrics::Calc : Metrics::File;
    QJsonArray sheets;
    for (size_t i = 0; i < workbook->sheets.size(); ++i) {
        QJsonObject sheet{{u"name"_s, workbook->sheets[i].name}, {u"visible"_s, workbook->sheets[i].visible}};
        if (!workbook->sheets[i].isChartSheet) {
            const auto content = file->sheet(int(i));
            const QJsonObject described = i < mostSheets ? SheetDescription(file, content, metrics).json()
                                                         : QJsonObject{{u"objects"_s, objectsJson(*content)}};
            for (auto entry = described.begin(); entry != described.end(); ++entry)
                sheet.insert(entry.key(), entry.value());
        }
        sheets.append(sheet);
    }
    printJson(QJsonObject{{u"file"_s, path}, {u"sheets"_s, sheets}});
    return 0;
}

} // namespace lumivane
