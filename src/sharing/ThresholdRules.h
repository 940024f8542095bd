#pragma once

#include "host/CellArea.h"
#include "platform/Result.h"

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

namespace lumivane {

class clsWorkspacePanel;

/// The cells of a range panel's picture, by their places in the stored definition.
class PanelCells
{
public:
    /// None for a text that is no range of cells.
    static std::optional<PanelCells> of(const QString& PicRange);

    /// Only cells that surely move, or surely stay, with what the user sees: those of the moving range and of the
    /// corner between fixed rows and columns.
    bool canWatch(int row, int column) const;
    bool isInCorner(int row, int column) const { return m_fixed.contains(row, column); }
    const CellArea& moving() const { return m_moving; }
    bool isFixedRow(int row) const { return row >= m_fixed.firstRow && row <= m_fixed.lastRow; }
    bool isFixedColumn(int column) const { return column >= m_fixed.firstColumn && column <= m_fixed.lastColumn; }

    // Fixed ones first, each once, not more than can be looked through.
    std::vector<int> rows() const;
    std::vector<int> columns() const;

private:
    CellArea m_moving;
    CellArea m_fixed{0, 0, -1, -1}; ///< fixed rows and columns; ends before it begins where there are none
};

/// What the cells show in the present version of the workbook, and how far the moving ones have moved to get there.
struct PanelTexts
{
    QHash<std::pair<int, int>, QString> texts; ///< by row and column of the stored definition
    int rowOffset = 0;
    int columnOffset = 0;
};
/// Opens the panel's workbook in a worker.
Result<PanelTexts> readPanelTexts(const clsWorkspacePanel& panel, const PanelCells& cells);

/// One limit of one cell. A row of the table holds a high and a low one; here each is a rule of its own.
struct ThresholdRule
{
    int row = 0; ///< sheet row of the stored definition
    int column = 0;
    bool isHigh = true;
    QString comparison;                       ///< ">1000"
    QString action = QStringLiteral("color"); ///< anything that begins otherwise marks nothing
};

/// With the cells where they are in the present definition of the panel.
Result<std::vector<ThresholdRule>> loadThresholds(int PanelID, const PanelCells& cells);
/// Why a rule cannot be stored; empty when it can.
QString thresholdFault(const ThresholdRule& rule, const PanelCells& cells);
/// In place of all rules of the panel. Answers what went wrong, or nothing.
QString saveThresholds(int PanelID, const PanelCells& cells, const std::vector<ThresholdRule>& rules);

} // namespace lumivane
