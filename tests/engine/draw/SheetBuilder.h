#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/show/ShownSheet.h"

#include <map>
#include <memory>

namespace lumivane::engine {

/// A workbook of one sheet made in memory: cells in any order, styles as they are asked for.
class SheetBuilder
{
public:
    SheetBuilder()
    {
        m_workbook->sheets.push_back({QStringLiteral("Sheet1"), true, false});
        m_sheet->defaultRowHeight = 15;
    }

    StyleTable& styles() { return m_workbook->styles; }
    SheetContent& sheet() { return *m_sheet; }
    void setDate1904() { m_workbook->date1904 = true; }

    // Indexes of styles that are the default one but for this.
    int style(const CellStyle& style) { return append(styles().cells, style); }
    int formatStyle(const QString& code) { return style({.numberFormat = append(styles().numberFormats, code)}); }
    int fontStyle(const FontStyle& font) { return style({.font = append(styles().fonts, font)}); }
    int fillStyle(const FillStyle& fill) { return style({.fill = append(styles().fills, fill)}); }
    int gradientStyle(const CellGradient& gradient)
    {
        return fillStyle({.pattern = Pattern::Gradient, .gradient = std::make_shared<CellGradient>(gradient)});
    }
    int solidStyle(QRgb color) { return fillStyle({Pattern::Solid, color, 0xffffffff}); }
    int borderStyle(const BorderStyle& border) { return style({.border = append(styles().borders, border)}); }

    SheetBuilder& blank(int row, int column, int style)
    {
        return cell(row, column, CellKind::Blank, style, [](Cell&) {});
    }
    SheetBuilder& number(int row, int column, double value, int style = 0)
    {
        return cell(row, column, CellKind::Number, style, [&](Cell& made) { made.number = value; });
    }
    SheetBuilder& text(int row, int column, const QString& value, int style = 0, std::vector<TextRun> runs = {})
    {
        const int index = m_workbook->texts.append(value.toStdString());
        if (!runs.empty())
            m_workbook->texts.setRuns(index, std::move(runs));
        return cell(row, column, CellKind::Text, style, [&](Cell& made) { made.text = quint64(index); });
    }
    SheetBuilder& boolean(int row, int column, bool value)
    {
        return cell(row, column, CellKind::Boolean, 0, [&](Cell& made) { made.number = value ? 1 : 0; });
    }
    SheetBuilder& error(int row, int column, ErrorCode code)
    {
        return cell(row, column, CellKind::Error, 0, [&](Cell& made) { made.text = quint64(code); });
    }
    RowContent& row(int row)
    {
        m_rows[row].content.row = row;
        return m_rows[row].content;
    }
    SheetBuilder& column(const ColumnContent& content)
    {
        m_sheet->columns.push_back(content);
        return *this;
    }
    SheetBuilder& merge(const CellArea& area)
    {
        std::vector<CellArea> areas = m_sheet->merged.areas();
        areas.push_back(area);
        m_sheet->merged = MergedCells(std::move(areas));
        return *this;
    }

    /// What the sheet shows as it is now.
    std::shared_ptr<const ShownSheet> shown(const SheetOverlay* overlay = nullptr)
    {
        return std::make_shared<ShownSheet>(m_workbook, content(), overlay);
    }
    std::shared_ptr<const SheetContent> content()
    {
        m_sheet->rows.clear();
        m_sheet->cells.clear();
        for (auto& [number, row] : m_rows) {
            row.content.firstCell = static_cast<quint32>(m_sheet->cells.size());
            m_sheet->rows.push_back(row.content);
            for (const auto& [column, cell] : row.cells)
                m_sheet->cells.push_back(cell);
        }
        return m_sheet;
    }

private:
    struct Row
    {
        RowContent content;
        std::map<int, Cell> cells;
    };

    template <class Entry>
    static int append(std::vector<Entry>& list, const Entry& entry)
    {
        list.push_back(entry);
        return static_cast<int>(list.size()) - 1;
    }
    SheetBuilder& cell(int row, int column, CellKind kind, int style, auto change)
    {
        this->row(row);
        Cell& made = m_rows[row].cells[column];
        made.column = static_cast<quint16>(column);
        made.kind = kind;
        made.style = static_cast<quint32>(style);
        change(made);
        return *this;
    }

    std::shared_ptr<WorkbookContent> m_workbook = std::make_shared<WorkbookContent>();
    std::shared_ptr<SheetContent> m_sheet = std::make_shared<SheetContent>();
    std::map<int, Row> m_rows;
};

} // namespace lumivane::engine
