#include "engine/formula/WorkbookCells.h"

#include "platform/Clock.h"

namespace lumivane::engine {

WorkbookCells::WorkbookCells(std::shared_ptr<const WorkbookContent> workbook, SheetSource sheets)
    : m_workbook(std::move(workbook)), m_source(std::move(sheets)), m_sheets(m_workbook->sheets.size())
{
    for (size_t i = 0; i < m_workbook->definedNames.size(); ++i)
        m_names[m_workbook->definedNames[i].name.toLower()].push_back(static_cast<int>(i));
}

int WorkbookCells::sheetNamed(const QString& name)
{
    return m_workbook->sheetNamed(name);
}

int WorkbookCells::sheetCount()
{
    return static_cast<int>(m_workbook->sheets.size());
}

const DefinedName* WorkbookCells::name(const QString& name, int sheet)
{
    const DefinedName* ofWorkbook = nullptr;
    const auto found = m_names.constFind(name.toLower());
    if (found == m_names.constEnd())
        return nullptr;
    for (const int index : *found) {
        const DefinedName& defined = m_workbook->definedNames[static_cast<size_t>(index)];
        if (defined.sheet == sheet)
            return &defined;
        if (defined.sheet < 0)
            ofWorkbook = &defined;
    }
    return ofWorkbook;
}

const SheetContent* WorkbookCells::sheet(int index)
{
    if (index < 0 || static_cast<size_t>(index) >= m_sheets.size())
        return nullptr;
    Held& held = m_sheets[static_cast<size_t>(index)];
    if (!held.asked) {
        held.asked = true;
        held.content = m_source(index);
    }
    return held.content.get();
}

bool WorkbookCells::hasSheet(int sheet)
{
    return this->sheet(sheet) != nullptr;
}

std::optional<CellArea> WorkbookCells::used(int sheet)
{
    const SheetContent* content = this->sheet(sheet);
    return content ? content->used : std::nullopt;
}

FormulaValue WorkbookCells::valueOf(const Cell& cell, const SheetContent& sheet, Texts texts) const
{
    switch (cell.kind) {
    case CellKind::Number:
        return cell.number;
    case CellKind::Text:
    case CellKind::SheetText:
        if (texts == Texts::Unneeded)
            return QString();
        return (cell.kind == CellKind::Text ? m_workbook->texts : sheet.texts).text(cell.text);
    case CellKind::Boolean:
        return cell.number != 0;
    case CellKind::Error:
        return static_cast<ErrorCode>(cell.text);
    case CellKind::Uncomputed:
        return ErrorCode::NA;
    case CellKind::Blank:
        break;
    }
    return {};
}

FormulaValue WorkbookCells::value(int sheet, int row, int column)
{
    const SheetContent* content = this->sheet(sheet);
    if (!content)
        return ErrorCode::Ref;
    const Cell* cell = content->find(row, column);
    return cell ? valueOf(*cell, *content, Texts::Needed) : FormulaValue();
}

void WorkbookCells::eachCell(const SheetArea& area, Texts texts, const Visitor& visit)
{
    const SheetContent* content = sheet(area.sheet);
    if (!content)
        return;
    const auto [begin, end] = content->rowIndices(area.cells);
    for (size_t index = begin; index < end; ++index) {
        for (const Cell& cell : content->cellsIn(index, area.cells.firstColumn, area.cells.lastColumn)) {
            if (cell.kind != CellKind::Blank &&
                !visit(content->rows[index].row, cell.column, valueOf(cell, *content, texts)))
                return;
        }
    }
}

bool WorkbookCells::isFormula(int sheet, int row, int column)
{
    const SheetContent* content = this->sheet(sheet);
    const Cell* cell = content ? content->find(row, column) : nullptr;
    return cell && cell->formula;
}

bool WorkbookCells::isRowHidden(int sheet, int row)
{
    const SheetContent* content = this->sheet(sheet);
    const RowContent* stored = content ? content->findRow(row) : nullptr;
    return content && (stored ? stored->hidden : content->defaultRowsHidden);
}

QDateTime WorkbookCells::now()
{
    return Clock::now();
}

bool WorkbookCells::date1904()
{
    return m_workbook->date1904;
}

} // namespace lumivane::engine
