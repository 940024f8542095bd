#pragma once

#include "platform/CellArea.h"
#include "platform/Result.h"

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
    std::vector<int> columns() const;
    std::vector<int> rows() const;
    bool areAllListed() const; ///< false where rows or columns were left out

private:
    CellArea m_moving;
    CellArea m_fixed{0, 0, -1, -1}; ///< fixed rows and columns; ends before it begins where there are none
};

/// The cells to pick from, as the picture of the present version shows them.
struct PanelView
{
    std::vector<int> rows, columns; ///< of the stored definition, without those that the panel hides
    std::vector<QString> texts;     ///< row by row; none where the workbook is not at hand
    int rowOffset = 0;              ///< how far the moving cells have moved
    int columnOffset = 0;

    QString text(size_t i, size_t j) const { return texts.empty() ? QString() : texts[i * columns.size() + j]; }
};
/// Opens the panel's workbook in a worker.
Result<PanelView> readPanelView(const clsWorkspacePanel& panel, const PanelCells& cells);
/// All cells of the definition, by their places alone.
PanelView viewWithoutWorkbook(const PanelCells& cells);

/// One limit of one cell. A row of the table holds a high and a low one; here each is a rule of its own.
struct ThresholdRule
{
    int row = 0; ///< sheet row of the stored definition
    int column = 0;
    bool isHigh = true;
    QString comparison;                       ///< ">1000"
    QString action = QStringLiteral("color"); ///< anything that begins otherwise marks nothing

    bool operator==(const ThresholdRule&) const = default;
};

/// With the cells where they are in the present definition of the panel.
Result<std::vector<ThresholdRule>> loadThresholds(int PanelID, const PanelCells& cells);
/// The stored rows of the panel as they are, a line for each: what tells whether rules have changed. None where they
/// cannot be read.
QStringList thresholdLines(int PanelID);
/// Why a rule cannot be stored; empty when it can. `cell` is how the user knows its cell.
QString thresholdFault(const ThresholdRule& rule, const PanelCells& cells, const QString& cell);
/// In place of all rules of the panel. Answers what went wrong, or nothing.
QString saveThresholds(int PanelID, const PanelCells& cells, const std::vector<ThresholdRule>& rules);

} // namespace lumivane
