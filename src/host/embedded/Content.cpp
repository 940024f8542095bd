#include "host/embedded/Content.h"

#include <algorithm>

namespace lumivane::embedded {

QString errorText(ErrorCode code)
{
    static const char* const texts[] = {"#NULL!", "#DIV/0!", "#VALUE!",       "#REF!",   "#NAME?",
                                        "#NUM!",  "#N/A",    "#GETTING_DATA", "#SPILL!", "#CALC!"};
    return QString::fromLatin1(texts[static_cast<size_t>(code)]);
}

std::string_view TextTable::utf8(quint64 index) const
{
    if (index >= m_ends.size())
        return {};
    const quint32 start = index == 0 ? 0 : m_ends[index - 1];
    return {m_bytes.data() + start, m_ends[index] - start};
}

QString TextTable::text(quint64 index) const
{
    const std::string_view bytes = utf8(index);
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

const std::vector<TextRun>* TextTable::runs(quint64 index) const
{
    const auto place = std::lower_bound(m_runs.begin(), m_runs.end(), index,
                                        [](const auto& entry, quint64 i) { return quint64(entry.first) < i; });
    return place != m_runs.end() && quint64(place->first) == index ? &place->second : nullptr;
}

int TextTable::append(std::string_view utf8)
{
    m_bytes.insert(m_bytes.end(), utf8.begin(), utf8.end());
    m_ends.push_back(static_cast<quint32>(m_bytes.size()));
    return size() - 1;
}

void TextTable::setRuns(int index, std::vector<TextRun> runs)
{
    m_runCount += runs.size();
    m_runs.emplace_back(index, std::move(runs));
}

qint64 TextTable::bytes() const
{
    qint64 sum = qint64(m_bytes.capacity() + m_ends.capacity() * sizeof(quint32));
    for (const auto& entry : m_runs)
        sum += qint64(sizeof(entry) + entry.second.size() * sizeof(TextRun));
    return sum;
}

std::pair<const Cell*, const Cell*> SheetContent::rowCells(size_t rowIndex) const
{
    const size_t end = rowIndex + 1 < rows.size() ? rows[rowIndex + 1].firstCell : cells.size();
    return {cells.data() + rows[rowIndex].firstCell, cells.data() + end};
}

const RowContent* SheetContent::findRow(int row) const
{
    const auto place =
        std::lower_bound(rows.begin(), rows.end(), row, [](const RowContent& r, int wanted) { return r.row < wanted; });
    return place != rows.end() && place->row == row ? &*place : nullptr;
}

const Cell* SheetContent::find(int row, int column) const
{
    const RowContent* found = findRow(row);
    if (!found)
        return nullptr;
    const auto [first, last] = rowCells(static_cast<size_t>(found - rows.data()));
    const Cell* place =
        std::lower_bound(first, last, column, [](const Cell& cell, int wanted) { return cell.column < wanted; });
    return place != last && place->column == column ? place : nullptr;
}

const ColumnContent* SheetContent::findColumn(int column) const
{
    const auto place = std::lower_bound(columns.begin(), columns.end(), column,
                                        [](const ColumnContent& c, int wanted) { return c.last < wanted; });
    return place != columns.end() && place->first <= column ? &*place : nullptr;
}

void SheetContent::setMerged(std::vector<CellArea> areas)
{
    merged = std::move(areas);
    std::stable_sort(merged.begin(), merged.end(),
                     [](const CellArea& a, const CellArea& b) { return a.firstRow < b.firstRow; });
    mergedReach.clear();
    for (const CellArea& area : merged)
        mergedReach.push_back(std::max(area.lastRow, mergedReach.empty() ? 0 : mergedReach.back()));
}

const CellArea* SheetContent::mergedAt(int row, int column) const
{
    if (mergedReach.size() != merged.size()) {
        const auto place = std::find_if(merged.begin(), merged.end(),
                                        [&](const CellArea& area) { return area.contains(row, column); });
        return place != merged.end() ? &*place : nullptr;
    }
    // From the last that begins at or above the row, back to where none reaches down to it any more.
    auto place = std::upper_bound(merged.begin(), merged.end(), row,
                                  [](int wanted, const CellArea& area) { return wanted < area.firstRow; });
    while (place != merged.begin() && mergedReach[static_cast<size_t>(place - merged.begin()) - 1] >= row) {
        --place;
        if (place->contains(row, column))
            return &*place;
    }
    return nullptr;
}

qint64 SheetContent::bytes() const
{
    return qint64(cells.capacity() * sizeof(Cell) + rows.capacity() * sizeof(RowContent) +
                  columns.capacity() * sizeof(ColumnContent) + merged.capacity() * sizeof(CellArea)) +
           texts.bytes() + qint64(sizeof(*this));
}

} // namespace lumivane::embedded
