#pragma once

#include <QString>
#include <vector>

namespace lumivane {

class SheetRange;

/// A value by which a panel's range can be found again in other versions of its workbook.
struct AnchorChoice
{
    QString value;
    /// Column and row, both counted inside the range from 1, in one number. Without Large Sheets it is column x 1000 +
    /// row in 16 bits: there is room for 32 columns, and rows beyond 999 count as rows of later columns.
    qint64 place = 0;
    /// What the sheet shows of a number that its own digits do not tell, as of a date; empty for all other values.
    QString shown = {};
    bool operator==(const AnchorChoice&) const = default;
};

/// Appends the values of the range's visible cells, downwards from its first column on. Numbers with decimals are left
/// out: figures of that kind are what changes between versions. Throws RuntimeError 6 at the first value whose place
/// has no room, when those before it have been appended.
void collectAnchorChoices(const SheetRange& range, std::vector<AnchorChoice>& choices);

/// The cell of a choice on the sheet.
struct AnchorCell
{
    QString column; ///< letters
    int row = 0;

    /// `firstRow` and `firstColumn` are those of the range on the sheet.
    AnchorCell(qint64 place, int firstRow, int firstColumn);
    /// As a stored rule names it: "$C5" where its column is searched, "C$5" where its row is.
    QString anchor(bool columnFixed) const;
};

} // namespace lumivane
