#include "range/AnchorChoices.h"

#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/Checked.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <limits>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

qint64 placesInAColumn()
{
    return largeSheets() ? maxRow + 1 : 1000;
}

qint64 placeOf(int row, int column)
{
    const qint64 place = column * placesInAColumn() + row;
    if (!largeSheets() && place > std::numeric_limits<qint16>::max())
        throw RuntimeError(RuntimeError::Overflow,
                           u"Values beyond the first 32 columns of the range cannot be offered."_s % largeSheetsHint());
    return place;
}

bool hasDecimals(const QString& value)
{
    return (value.contains(u'.') || value.contains(u',')) && typedNumber(value);
}

QString shownInstead(Worksheet& sheet, int row, int column, const QString& value)
{
    if (!typedNumber(value))
        return {};
    const QString shown = sheet.shownText(row, column).trimmed();
    return shown == value || typedNumber(shown) ? QString() : shown;
}

} // namespace

void collectAnchorChoices(const SheetRange& range, std::vector<AnchorChoice>& choices)
{
    // Nothing outside the cells in use holds a value; whole rows and columns end there.
    const CellArea used = range.sheet().usedArea();
    const int rows = std::min(range.RowsCount(), used.lastRow - range.Row() + 1);
    const int columns = std::min(range.ColumnsCount(), used.lastColumn - range.Column() + 1);
    if (rows < 1 || columns < 1)
        return;
    Worksheet& sheet = range.sheet();
    const int lastRow = range.Row() + rows - 1, lastColumn = range.Column() + columns - 1;
    const std::vector<double> widths = sheet.columnWidths(range.Column(), lastColumn);
    const std::vector<double> heights = sheet.rowHeights(range.Row(), lastRow);
    for (int c = 1; c <= columns; ++c) {
        if (widths[static_cast<size_t>(c - 1)] <= 0)
            continue;
        const int column = range.Column() + c - 1;
        const QStringList values = sheet.valueTexts({range.Row(), column, lastRow, column});
        for (int i = 1; i <= rows; ++i) {
            const QString& value = values[i - 1];
            if (heights[static_cast<size_t>(i - 1)] > 0 && !value.isEmpty() && !hasDecimals(value))
                choices.push_back({value, placeOf(i, c), shownInstead(sheet, range.Row() + i - 1, column, value)});
        }
    }
}

AnchorCell::AnchorCell(qint64 place, int firstRow, int firstColumn)
    : column(ColLetter(int(place / placesInAColumn()) + firstColumn - 1)),
      row(int(place % placesInAColumn()) + firstRow - 1)
{
}

QString AnchorCell::anchor(bool columnFixed) const
{
    return (columnFixed ? u"$%1%2"_s : u"%1$%2"_s).arg(column).arg(row);
}

} // namespace lumivane
