#include "SheetBuilder.h"

namespace lumivane::engine {

SheetBuilder::SheetBuilder()
    : m_workbook(std::make_shared<WorkbookContent>()), m_sheet(std::make_shared<SheetContent>())
{
    m_workbook->sheets.push_back({QStringLiteral("Sheet1"), true, false});
    m_sheet->defaultRowHeight = 15;
}

int SheetBuilder::formatStyle(const QString& code)
{
    styles().numberFormats.push_back(code);
    return style([&](CellStyle& made) { made.numberFormat = static_cast<int>(styles().numberFormats.size()) - 1; });
}

int SheetBuilder::fontStyle(const FontStyle& font)
{
    styles().fonts.push_back(font);
    return style([&](CellStyle& made) { made.font = static_cast<int>(styles().fonts.size()) - 1; });
}

int SheetBuilder::fillStyle(const FillStyle& fill)
{
    styles().fills.push_back(fill);
    return style([&](CellStyle& made) { made.fill = static_cast<int>(styles().fills.size()) - 1; });
}

int SheetBuilder::borderStyle(const BorderStyle& border)
{
    styles().borders.push_back(border);
    return style([&](CellStyle& made) { made.border = static_cast<int>(styles().borders.size()) - 1; });
}

Cell& SheetBuilder::cell(int row, int column, CellKind kind, int style)
{
    this->row(row);
    Cell& made = m_rows[row].cells[column];
    made.column = static_cast<quint16>(column);
    made.kind = kind;
    made.style = static_cast<quint32>(style);
    return made;
}

SheetBuilder& SheetBuilder::blank(int row, int column, int style)
{
    cell(row, column, CellKind::Blank, style);
    return *this;
}

SheetBuilder& SheetBuilder::number(int row, int column, double value, int style)
{
    cell(row, column, CellKind::Number, style).number = value;
    return *this;
}

SheetBuilder& SheetBuilder::text(int row, int column, const QString& value, int style)
{
    cell(row, column, CellKind::Text, style).text = static_cast<quint64>(texts().append(value.toStdString()));
    return *this;
}

SheetBuilder& SheetBuilder::richText(int row, int column, const QString& value, std::vector<TextRun> runs, int style)
{
    text(row, column, value, style);
    texts().setRuns(texts().size() - 1, std::move(runs));
    return *this;
}

SheetBuilder& SheetBuilder::boolean(int row, int column, bool value)
{
    cell(row, column, CellKind::Boolean, 0).number = value ? 1 : 0;
    return *this;
}

SheetBuilder& SheetBuilder::error(int row, int column, ErrorCode code)
{
    cell(row, column, CellKind::Error, 0).text = static_cast<quint64>(code);
    return *this;
}

RowContent& SheetBuilder::row(int row)
{
    RowContent& content = m_rows[row].content;
    content.row = row;
    return content;
}

SheetBuilder& SheetBuilder::column(int first, int last, double width, bool hidden)
{
    ColumnContent made;
    made.first = first;
    made.last = last;
    made.width = width;
    made.hidden = hidden;
    m_sheet->columns.push_back(made);
    return *this;
}

SheetBuilder& SheetBuilder::merge(const CellArea& area)
{
    std::vector<CellArea> areas = m_sheet->merged.areas();
    areas.push_back(area);
    m_sheet->merged = MergedCells(std::move(areas));
    return *this;
}

std::shared_ptr<const ShownSheet> SheetBuilder::shown(const SheetOverlay* overlay)
{
    return std::make_shared<ShownSheet>(workbook(), content(), overlay);
}

void SheetBuilder::settle()
{
    m_sheet->rows.clear();
    m_sheet->cells.clear();
    for (auto& [number, row] : m_rows) {
        row.content.firstCell = static_cast<quint32>(m_sheet->cells.size());
        m_sheet->rows.push_back(row.content);
        for (const auto& [column, cell] : row.cells)
            m_sheet->cells.push_back(cell);
    }
}

std::shared_ptr<const WorkbookContent> SheetBuilder::workbook()
{
    settle();
    return m_workbook;
}

std::shared_ptr<const SheetContent> SheetBuilder::content()
{
    settle();
    return m_sheet;
}

} // namespace lumivane::engine
