#include "thresholds/ThresholdCells.h"

#include <algorithm>

namespace lumivane {

namespace {

bool looksLikeFigure(const QString& text)
{
    return !text.isEmpty() && (text.back().isDigit() || text.back() == u'%');
}

int placeIn(const std::vector<int>& numbers, int number)
{
    const auto found = std::find(numbers.begin(), numbers.end(), number);
    return found == numbers.end() ? -1 : int(found - numbers.begin());
}

} // namespace

ThresholdCells::ThresholdCells(const PanelCells& cells, PanelView view, QObject* parent)
    : QAbstractTableModel(parent), m_cells(cells), m_view(std::move(view))
{
}

int ThresholdCells::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_view.rows.size());
}

int ThresholdCells::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_view.columns.size());
}

QVariant ThresholdCells::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::TextAlignmentRole)
        return {};
    const QString text = m_view.text(size_t(index.row()), size_t(index.column()));
    if (role == Qt::DisplayRole)
        return text;
    // Figures stand below each other, as in the workbook.
    return int((looksLikeFigure(text) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

QVariant ThresholdCells::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical) {
        const int row = m_view.rows[size_t(section)];
        return m_cells.isFixedRow(row) ? row : row + m_view.rowOffset;
    }
    const int column = m_view.columns[size_t(section)];
    return columnLetters(m_cells.isFixedColumn(column) ? column : column + m_view.columnOffset);
}

Qt::ItemFlags ThresholdCells::flags(const QModelIndex& index) const
{
    const auto [row, column] = place(index);
    return m_cells.canWatch(row, column) ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

std::pair<int, int> ThresholdCells::place(const QModelIndex& index) const
{
    return {m_view.rows[size_t(index.row())], m_view.columns[size_t(index.column())]};
}

QModelIndex ThresholdCells::indexOf(std::pair<int, int> place) const
{
    const int row = placeIn(m_view.rows, place.first), column = placeIn(m_view.columns, place.second);
    return row < 0 || column < 0 ? QModelIndex() : index(row, column);
}

QString ThresholdCells::shownAddress(std::pair<int, int> place) const
{
    if (!m_cells.isInCorner(place.first, place.second)) {
        place.first += m_view.rowOffset;
        place.second += m_view.columnOffset;
    }
    return CellArea::cell(place.first, place.second).relative();
}

} // namespace lumivane
