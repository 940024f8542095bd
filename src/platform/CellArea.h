#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace lumivane {

/// The grid of today's workbooks: rows 1 to 1048576, columns 1 to 16384 ("XFD").
inline constexpr int maxRow = 1048576;
inline constexpr int maxColumn = 16384;

/// A rectangle of cells, both corners inside, counted from 1. A whole column runs from row 1 to maxRow, a whole row
/// from column 1 to maxColumn.
struct CellArea
{
    int firstRow = 0;
    int firstColumn = 0;
    int lastRow = 0;
    int lastColumn = 0;

    int rows() const { return lastRow - firstRow + 1; }
    int columns() const { return lastColumn - firstColumn + 1; }
    bool contains(int row, int column) const
    {
        return row >= firstRow && row <= lastRow && column >= firstColumn && column <= lastColumn;
    }
    bool operator==(const CellArea&) const = default;

    static CellArea cell(int row, int column) { return {row, column, row, column}; }
    static CellArea wholeSheet() { return {1, 1, maxRow, maxColumn}; }

    /// Reads A1 notation: "C5", "$C$5", "C5:H20", "5:12", "A:C", corners in any order, letters in any case. None for
    /// anything else, an empty text included.
    static std::optional<CellArea> parse(QStringView address);
    /// "$C$5", "$C$5:$H$20"; whole rows "$5:$12", whole columns "$A:$C".
    QString absolute() const;
    /// "C5", "C5:H20", "5:12", "A:C".
    QString relative() const;
};

std::optional<CellArea> intersect(const CellArea& a, const CellArea& b);

/// Letters of any column of the grid, "A" to "XFD"; empty outside it. (ColLetter ends at columnLimit().)
QString columnLetters(int column);

} // namespace lumivane
