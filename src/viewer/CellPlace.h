#pragma once

#include "engine/content/WorkbookContent.h"
#include "platform/CellArea.h"
#include "platform/Result.h"

namespace lumivane {

/// Cells of one sheet of a workbook.
struct CellPlace
{
    int sheet = 0; ///< index into WorkbookContent::sheets
    std::vector<CellArea> areas;
    bool operator==(const CellPlace&) const = default;
};

/// Reads what a user types into the name box: "B3:D8", "A:C", "B3,D5:E9", "Sheet2!A1", "'My sheet'!A1", or a name
/// defined in the workbook, those of the sheet at hand first. Letters count in any case.
Result<CellPlace> readCellPlace(const QString& text, const engine::WorkbookContent& workbook, int currentSheet);

/// The defined names that stand for cells of visible sheets and can be reached from a sheet, sorted.
QStringList reachableNames(const engine::WorkbookContent& workbook, int currentSheet);

/// The defined name of just these cells; empty if there is none.
QString nameOf(const CellPlace& place, const engine::WorkbookContent& workbook);

} // namespace lumivane
