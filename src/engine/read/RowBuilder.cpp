#include "engine/read/RowBuilder.h"

#include "engine/read/package/ReadError.h"

#include <algorithm>
#include <numeric>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

bool saysNothing(const RowContent& row)
{
    return row.height < 0 && row.style < 0 && !row.hidden && !row.customHeight && !row.collapsed &&
           row.outlineLevel == 0;
}

} // namespace

RowBuilder::RowBuilder(SheetContent& content, qint64 maxBytes) : m_content(content), m_maxBytes(maxBytes) {}

qint64 RowBuilder::used() const
{
    return qint64(m_content.cells.size() * sizeof(Cell) + m_content.rows.size() * sizeof(RowContent)) +
           m_content.texts.bytes();
}

/// Sets how far the cells may grow, so that the bound costs one comparison a cell.
void RowBuilder::checkBytes()
{
    const qint64 left = m_maxBytes - used();
    if (left < 0)
        failTooLarge();
    m_cellLimit = m_content.cells.size() + static_cast<size_t>(left) / sizeof(Cell);
}

void failTooLarge()
{
    throw Fault{u"the cells and texts of its sheets take more than %1 MB"_s.arg(maxWorkbookBytes >> 20),
                ReadCause::TooLarge};
}

void RowBuilder::reserve(quint64 rows, quint64 cells)
{
    const quint64 most = static_cast<quint64>(std::max<qint64>(m_maxBytes, 0));
    m_content.rows.reserve(std::min(rows, most / sizeof(RowContent)));
    m_content.cells.reserve(std::min(cells, most / sizeof(Cell)));
}

void RowBuilder::startRow(RowContent row)
{
    m_ordered = m_ordered && (m_content.rows.empty() || m_content.rows.back().row < row.row);
    row.firstCell = static_cast<quint32>(m_content.cells.size());
    m_content.rows.push_back(row);
    m_lastColumn = 0;
    checkBytes();
}

void RowBuilder::endRow()
{
    const RowContent& row = m_content.rows.back();
    if (row.firstCell == m_content.cells.size() && saysNothing(row))
        m_content.rows.pop_back();
}

quint64 RowBuilder::appendText(std::string_view utf8)
{
    const int index = m_content.texts.append(utf8);
    checkBytes();
    return static_cast<quint64>(index);
}

void RowBuilder::finish()
{
    if (!m_ordered)
        sort();
    measure();
}

void RowBuilder::sort()
{
    if (used() > m_maxBytes / 2) // as the cells are held twice now
        failTooLarge();
    std::vector<size_t> order(m_content.rows.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [this](size_t a, size_t b) { return m_content.rows[a].row < m_content.rows[b].row; });
    std::vector<Cell> cells;
    cells.reserve(m_content.cells.size());
    std::vector<RowContent> rows;
    std::vector<Cell> line;
    for (size_t i = 0; i < order.size();) {
        RowContent row = m_content.rows[order[i]];
        row.firstCell = static_cast<quint32>(cells.size());
        line.clear();
        for (const int number = row.row; i < order.size() && m_content.rows[order[i]].row == number; ++i) {
            const auto [first, last] = m_content.rowCells(order[i]);
            line.insert(line.end(), first, last);
            // An entry made only because a cell named this row says nothing about it.
            if (const RowContent& entry = m_content.rows[order[i]]; !saysNothing(entry)) {
                row = entry;
                row.firstCell = static_cast<quint32>(cells.size());
            }
        }
        std::stable_sort(line.begin(), line.end(), [](const Cell& a, const Cell& b) { return a.column < b.column; });
        for (size_t j = 0; j < line.size(); ++j) {
            if (j + 1 == line.size() || line[j + 1].column != line[j].column)
                cells.push_back(line[j]);
        }
        rows.push_back(row);
    }
    m_content.cells = std::move(cells);
    m_content.rows = std::move(rows);
}

void RowBuilder::measure()
{
    std::optional<CellArea>& used = m_content.used;
    for (size_t i = 0; i < m_content.rows.size(); ++i) {
        const auto [first, last] = m_content.rowCells(i);
        if (first == last)
            continue;
        const int row = m_content.rows[i].row, left = first->column, right = (last - 1)->column;
        if (!used)
            used = CellArea{row, left, row, right};
        used->lastRow = row;
        used->firstColumn = std::min(used->firstColumn, left);
        used->lastColumn = std::max(used->lastColumn, right);
    }
}

} // namespace lumivane::engine
