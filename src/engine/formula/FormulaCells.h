#pragma once

#include "engine/content/WorkbookContent.h"
#include "engine/formula/FormulaValue.h"

#include <QDateTime>
#include <functional>
#include <optional>

namespace lumivane::engine {

/// What formulas may ask of the workbook that they stand in. Sheets go by their index, rows and columns from 1.
class FormulaCells
{
public:
    enum class Texts : quint8 {
        Needed,
        Unneeded, ///< each is given as an empty one, which saves making it
    };
    /// Gets a cell; false ends the walk.
    using Visitor = std::function<bool(int row, int column, const FormulaValue& value)>;

    virtual ~FormulaCells() = default;

    /// The index of a sheet, without regard to case; -1 if there is none.
    virtual int sheetNamed(const QString& name) = 0;
    virtual int sheetCount() = 0;
    /// The defined name that a formula on a sheet means, the sheet's own before the workbook's; null if there is none.
    virtual const DefinedName* name(const QString& name, int sheet) = 0;
    /// Whether the cells of a sheet can be had at all.
    virtual bool hasSheet(int sheet) = 0;
    /// The cells beyond which a sheet has nothing; none of an empty sheet.
    virtual std::optional<CellArea> used(int sheet) = 0;
    /// Blank, a number, a text, a boolean or an error; #N/A of a formula without a stored result.
    virtual FormulaValue value(int sheet, int row, int column) = 0;
    /// Every cell of an area that is not blank, row by row. Rows that are not stored cost nothing.
    virtual void eachCell(const SheetArea& area, Texts texts, const Visitor& visit) = 0;
    virtual bool isFormula(int sheet, int row, int column) = 0;
    virtual bool isRowHidden(int sheet, int row) = 0;
    virtual QDateTime now() = 0; ///< local time
    virtual bool date1904() = 0;
};

} // namespace lumivane::engine
