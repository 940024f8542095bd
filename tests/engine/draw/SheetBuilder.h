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
    SheetBuilder();

    StyleTable& styles() { return m_workbook->styles; }
    SheetContent& sheet() { return *m_sheet; }
    TextTable& texts() { return m_workbook->texts; }
    void setDate1904() { m_workbook->date1904 = true; }

    /// Index of a style that is the default one but for what `change` does to it.
    template <class Change>
    int style(Change change)
    {
        CellStyle made;
        change(made);
        styles().cells.push_back(made);
        return static_cast<int>(styles().cells.size()) - 1;
    }
    int formatStyle(const QString& code);
    int fontStyle(const FontStyle& font);
    int fillStyle(const FillStyle& fill);
    int solidStyle(QRgb color) { return fillStyle({Pattern::Solid, color, 0xffffffff, 0}); }
    int borderStyle(const BorderStyle& border);

    SheetBuilder& blank(int row, int column, int style);
    SheetBuilder& number(int row, int column, double value, int style = 0);
    SheetBuilder& text(int row, int column, const QString& value, int style = 0);
    SheetBuilder& richText(int row, int column, const QString& value, std::vector<TextRun> runs, int style = 0);
    SheetBuilder& boolean(int row, int column, bool value);
    SheetBuilder& error(int row, int column, ErrorCode code);
    RowContent& row(int row);
    SheetBuilder& column(int first, int last, double width, bool hidden = false);

    SheetBuilder& merge(const CellArea& area);

    /// What the sheet shows as it is now.
    std::shared_ptr<const ShownSheet> shown(const SheetOverlay* overlay = nullptr);
    std::shared_ptr<const WorkbookContent> workbook();
    std::shared_ptr<const SheetContent> content();

private:
    struct Row
    {
        RowContent content;
        std::map<int, Cell> cells;
    };
    Cell& cell(int row, int column, CellKind kind, int style);
    void settle();

    std::shared_ptr<WorkbookContent> m_workbook;
    std::shared_ptr<SheetContent> m_sheet;
    std::map<int, Row> m_rows;
};

} // namespace lumivane::engine
