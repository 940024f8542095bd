#pragma once

#include "engine/content/SheetContent.h"

#include <string_view>

namespace lumivane::engine {

/// What a workbook may take in memory: the cells, rows and texts of all sheets that are read of it, and the texts that
/// they share.
constexpr qint64 maxWorkbookBytes = 512ll << 20;
/// Throws Fault for what passes it.
[[noreturn]] void failTooLarge();

/// Puts the rows and cells of one sheet together in the order in which a file brings them, and keeps the bounds that
/// hold whatever the format. Throws Fault where one is passed.
class RowBuilder
{
public:
    /// `maxBytes` is what rows, cells and texts of this sheet may take.
    RowBuilder(SheetContent& content, qint64 maxBytes);

    /// Sets memory aside. The numbers must not be more than the file can hold; what is beyond the bound is left out.
    void reserve(quint64 rows, quint64 cells);
    /// Begins a row, which ends where the next one begins. Its number lies within the sheet; `firstCell` is set here.
    void startRow(RowContent row);
    /// Ends the row begun last, and forgets it where it says nothing.
    void endRow();
    /// Appends a cell to the row begun last.
    void append(const Cell& cell)
    {
        if (m_content.cells.size() >= m_cellLimit)
            failTooLarge();
        m_ordered = m_ordered && cell.column > m_lastColumn;
        m_lastColumn = cell.column;
        m_content.cells.push_back(cell);
    }
    /// Appends a text of the sheet itself; its index.
    quint64 appendText(std::string_view utf8);
    /// To be called when texts were appended to the content's table by others.
    void checkBytes();
    /// Behind the last row: puts rows and cells that came in no order into theirs, and measures the used area. Of
    /// several cells in one place the last one holds, of several entries of a row, too.
    void finish();

private:
    qint64 used() const;
    void sort();
    void measure();

    SheetContent& m_content;
    const qint64 m_maxBytes;
    size_t m_cellLimit = 0;
    int m_lastColumn = 0; ///< of the row begun last; 0: no cell yet
    bool m_ordered = true;
};

} // namespace lumivane::engine
