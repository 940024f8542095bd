#pragma once

#include "engine/content/SheetContent.h"
#include "engine/formula/FormulaCells.h"

#include <QHash>
#include <memory>

namespace lumivane::engine {

/// The cells of a workbook as its file stores them. A sheet is asked for when a formula first looks at it, and kept.
class WorkbookCells : public FormulaCells
{
public:
    /// Gives a sheet by index; null where it cannot be had, whose cells are #REF! then.
    using SheetSource = std::function<std::shared_ptr<const SheetContent>(int sheet)>;

    WorkbookCells(std::shared_ptr<const WorkbookContent> workbook, SheetSource sheets);

    /// By index; null where it cannot be had. Lives as long as the object.
    const SheetContent* sheet(int index);

    int sheetNamed(const QString& name) override;
    int sheetCount() override;
    const DefinedName* name(const QString& name, int sheet) override;
    bool hasSheet(int sheet) override;
    std::optional<CellArea> used(int sheet) override;
    FormulaValue value(int sheet, int row, int column) override;
    void eachCell(const SheetArea& area, Texts texts, const Visitor& visit) override;
    bool isFormula(int sheet, int row, int column) override;
    bool isRowHidden(int sheet, int row) override;
    QDateTime now() override;
    bool date1904() override;

private:
    struct Held
    {
        bool asked = false;
        std::shared_ptr<const SheetContent> content;
    };
    FormulaValue valueOf(const Cell& cell, const SheetContent& sheet, Texts texts) const;

    std::shared_ptr<const WorkbookContent> m_workbook;
    SheetSource m_source;
    std::vector<Held> m_sheets;
    QHash<QString, std::vector<int>> m_names; ///< places in the list of names, by the name in small letters
};

} // namespace lumivane::engine
