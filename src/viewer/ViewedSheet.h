#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/draw/SheetPainter.h"

namespace lumivane {

enum class Direction { Left, Right, Up, Down };

/// Row and column of one cell.
struct CellSpot
{
    int row = 1;
    int column = 1;
    bool operator==(const CellSpot&) const = default;
};

/// Of a column of an auto filter, in its first cell.
struct FilterButton
{
    CellSpot cell;
    bool inUse = false; ///< the filter leaves rows out by this column
};

/// What a window knows of the sheet it shows: its cells, texts, sizes and looks, and where data begins and ends in it.
class ViewedSheet
{
public:
    /// `others` gives the other sheets of the workbook, for conditions that look at them.
    ViewedSheet(std::shared_ptr<const engine::WorkbookContent> workbook,
                std::shared_ptr<const engine::SheetContent> sheet, engine::WorkbookCells::SheetSource others = {});

    const engine::WorkbookContent& workbook() const { return *m_workbook; }
    const engine::SheetContent& content() const { return *m_sheet; }
    const engine::ShownSheet& shown() const { return *m_shown; }
    const engine::SheetPainter& painter() const { return m_painter; }
    const engine::SheetGeometry& geometry() const { return m_painter.geometry(); }

    /// A formula that shows an empty text fills its cell.
    bool filled(int row, int column) const;
    QString shownText(int row, int column) const;
    /// Of the comment of a cell, with its line ends; empty where it has none.
    QString commentText(const CellSpot& cell) const;
    /// Row by row from the left, one for each cell.
    const std::vector<FilterButton>& filterButtons() const { return m_filterButtons; }
    /// From A1 to the last cell in use; merged areas, drawings and open comments included.
    const CellArea& used() const { return m_used; }
    /// The last row and column with something in a cell.
    CellSpot lastFilled() const { return m_lastFilled; }

    /// The merged area around a cell; the cell itself if it is not merged.
    CellArea mergedAround(const CellSpot& cell) const;
    /// The area grown until it cuts no merged area.
    CellArea widened(CellArea area) const;
    /// The block of filled cells around a cell, bounded by blank rows and columns; the cell itself where there is none.
    CellArea regionAround(const CellSpot& cell) const;

    /// The next cell that is visible; the same one at the edge of the sheet.
    CellSpot neighbour(const CellSpot& from, Direction direction) const;
    /// Where data ends or begins next in a direction: the last cell of a filled stretch, the next filled cell behind a
    /// blank one, the sheet's edge where none follows.
    CellSpot dataEdge(const CellSpot& from, Direction direction) const;

private:
    CellSpot stepVisible(CellSpot from, Direction direction) const;
    CellSpot sheetEdge(const CellSpot& from, Direction direction) const;
    bool anythingBeyond(const CellSpot& from, Direction direction) const;
    bool anyFilled(const CellArea& area) const;
    CellArea findUsed() const;
    CellSpot findLastFilled() const;

    std::shared_ptr<const engine::WorkbookContent> m_workbook;
    std::shared_ptr<const engine::SheetContent> m_sheet;
    std::shared_ptr<engine::ShownSheet> m_shown;
    engine::SheetPainter m_painter;
    std::vector<FilterButton> m_filterButtons;
    CellArea m_used;
    CellSpot m_lastFilled;
};

} // namespace lumivane
