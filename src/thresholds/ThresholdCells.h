#pragma once

#include "thresholds/ThresholdRules.h"

#include <QAbstractTableModel>

namespace lumivane {

/// A panel's cells as a table to pick from, under the letters and numbers of the present version. Those that cannot be
/// watched are shown and cannot be picked.
class ThresholdCells : public QAbstractTableModel
{
    Q_OBJECT

public:
    ThresholdCells(const PanelCells& cells, PanelView view, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Row and column of the stored definition.
    std::pair<int, int> place(const QModelIndex& index) const;
    /// Invalid for a place that is not in the table.
    QModelIndex indexOf(std::pair<int, int> place) const;
    /// Where a cell of the stored definition is in the present version, as "C5".
    QString shownAddress(std::pair<int, int> place) const;

private:
    const PanelCells m_cells;
    const PanelView m_view;
};

} // namespace lumivane
