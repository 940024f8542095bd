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

QString shownInstead(Worksheet& sheet, const SheetRange& cell, const QString& value)
{
    if (!typedNumber(value))
        return {};
    const QString shown = sheet.shownText(cell.Row(), cell.Column()).trimmed();
    return shown == value || typedNumber(shown) ? QString() : shown;
}

} // namespace

void collectAnchorChoices(const SheetRange& range, std::vector<AnchorChoice>& choices)
{
    // Nothing outside the cells in use holds a value; whole rows and columns end there.
    const CellArea used = range.sheet().usedArea();
    const int rows = std::min(range.RowsCount(), used.lastRow - range.Row() + 1);
    const int columns = std::min(range.ColumnsCount(), used.lastColumn - range.Column() + 1);
    for (int c = 1; c <= columns; ++c) {
        if (range.Cells(1, c).ColumnWidth() <= 0)
            continue;
        for (int i = 1; i <= rows; ++i) {
            const SheetRange cell = range.Cells(i, c);
            if (cell.RowHeight() <= 0)
                continue;
            const QString value = cell.ValueText();
            if (!value.isEmpty() && !hasDecimals(value))
                choices.push_back({value, placeOf(i, c), shownInstead(range.sheet(), cell, value)});
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
