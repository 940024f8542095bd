#include "platform/CellArea.h"

#include <algorithm>
#include <tuple>

namespace lumivane {

namespace {

/// One side of an address: a cell, a row alone or a column alone.
struct AddressPart
{
    int row = 0;    ///< 0: none was given
    int column = 0; ///< 0: none was given
};

int readLetters(QStringView text, qsizetype& at)
{
    int column = 0;
    for (; at < text.size(); ++at) {
        const char16_t letter = text[at].unicode() & ~char16_t(0x20);
        if (letter < u'A' || letter > u'Z')
            break;
        column = column * 26 + (letter - u'A' + 1);
        if (column > maxColumn)
            return -1;
    }
    return column;
}

int readRow(QStringView text, qsizetype& at)
{
    int row = 0;
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        row = row * 10 + (text[at].unicode() - u'0');
        if (row > maxRow)
            return -1;
    }
    return row;
}

std::optional<AddressPart> readAddressPart(QStringView text)
{
    AddressPart part;
    qsizetype at = 0;
    if (at < text.size() && text[at] == u'$')
        ++at;
    part.column = readLetters(text, at);
    // The sign in front of a lone row was taken above; a second one belongs to the row of a cell.
    if (part.column > 0 && at < text.size() && text[at] == u'$' && at + 1 < text.size())
        ++at;
    const qsizetype digits = at;
    part.row = readRow(text, at);
    const bool digitsWithoutRow = at > digits && part.row == 0;
    if (part.column < 0 || part.row < 0 || digitsWithoutRow || at != text.size() || (!part.column && !part.row))
        return std::nullopt;
    return part;
}

} // namespace

std::optional<CellArea> CellArea::parse(QStringView address)
{
    const qsizetype colon = address.indexOf(u':');
    const auto first = readAddressPart(colon < 0 ? address : address.left(colon));
    const auto last = colon < 0 ? first : readAddressPart(address.mid(colon + 1));
    if (!first || !last)
        return std::nullopt;
    const bool rowsGiven = first->row && last->row;
    const bool columnsGiven = first->column && last->column;
    const bool mixed = bool(first->row) != bool(last->row) || bool(first->column) != bool(last->column);
    if (mixed || (colon < 0 && !(rowsGiven && columnsGiven)))
        return std::nullopt;

    CellArea area{1, 1, maxRow, maxColumn};
    if (rowsGiven)
        std::tie(area.firstRow, area.lastRow) = std::minmax(first->row, last->row);
    if (columnsGiven)
        std::tie(area.firstColumn, area.lastColumn) = std::minmax(first->column, last->column);
    return area;
}

static QString cornerText(const CellArea& area, bool first, QStringView sign)
{
    const bool wholeRows = area.firstColumn == 1 && area.lastColumn == maxColumn;
    const bool wholeColumns = !wholeRows && area.firstRow == 1 && area.lastRow == maxRow;
    QString text;
    if (!wholeRows)
        text += sign % columnLetters(first ? area.firstColumn : area.lastColumn);
    if (!wholeColumns)
        text += sign % QString::number(first ? area.firstRow : area.lastRow);
    return text;
}

static QString areaText(const CellArea& area, QStringView sign)
{
    const QString first = cornerText(area, true, sign);
    const bool oneCell = area.rows() == 1 && area.columns() == 1;
    return oneCell ? first : first % QChar(u':') % cornerText(area, false, sign);
}

QString CellArea::absolute() const
{
    return areaText(*this, u"$");
}

QString CellArea::relative() const
{
    return areaText(*this, u"");
}

std::optional<CellArea> intersect(const CellArea& a, const CellArea& b)
{
    const CellArea common{std::max(a.firstRow, b.firstRow), std::max(a.firstColumn, b.firstColumn),
                          std::min(a.lastRow, b.lastRow), std::min(a.lastColumn, b.lastColumn)};
    if (common.rows() < 1 || common.columns() < 1)
        return std::nullopt;
    return common;
}

QString columnLetters(int column)
{
    if (column < 1 || column > maxColumn)
        return {};
    QString letters;
    for (; column > 0; column = (column - 1) / 26)
        letters.prepend(QChar(char16_t(u'A' + (column - 1) % 26)));
    return letters;
}

} // namespace lumivane
