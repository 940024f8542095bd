#pragma once

#include "engine/formula/Formula.h"
#include "engine/formula/WorkbookCells.h"

namespace lumivane::engine {

/// A workbook for formulas: the sheets Data and It's, made from drawn tables, and Lost, which cannot be had. A drawn
/// cell is a number, TRUE, FALSE, an error, "?" (a formula without a result), "-" (blank) or else a text; '' is an
/// empty one.
class FormulaSheet
{
public:
    explicit FormulaSheet(const char* drawn, const char* second = "");

    void define(const QString& name, const QString& formula, int sheet = -1);
    /// What a formula in a cell of Data gives, written for A1: "{1,2;3,4}" of an array, "Data!$A$1" of a reference.
    QString value(const QString& formula, FormulaPlace at = {1, 1});
    WorkbookCells cells() const;
    SheetContent& sheet() { return *m_sheets[0]; }

private:
    std::shared_ptr<SheetContent> drawnSheet(const char* drawn);
    QString textOf(const FormulaValue& value) const;

    std::shared_ptr<WorkbookContent> m_workbook;
    std::vector<std::shared_ptr<SheetContent>> m_sheets;
};

/// Expects of every drawn cell "formula → value" that the formula has the value.
void expectValues(FormulaSheet& sheet, const char* drawn, FormulaPlace at = {1, 1});

} // namespace lumivane::engine
