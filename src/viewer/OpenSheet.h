#pragma once

#include "viewer/SheetPanes.h"
#include "viewer/SheetSelection.h"

#include <QRect>

namespace lumivane {

/// A sheet as a window has it open: where its cells lie at the window's scale, what its panes show and what is
/// selected. All places are in pixels of the screen, counted from the corner of the cells (headers left out) in reading
/// direction: on a sheet written from right to left x grows to the left.
class OpenSheet
{
public:
    enum class Step {
        Cell,
        DataEdge, ///< to where data ends or begins
        Page,
        LineStart,  ///< the first column that the free pane can show
        SheetStart, ///< the first cell that the free pane can show
        SheetEnd,   ///< the crossing of the last row and the last column with contents
    };

    explicit OpenSheet(std::shared_ptr<const ViewedSheet> sheet);
    OpenSheet(const OpenSheet&) = delete;

    const ViewedSheet& sheet() const { return *m_sheet; }
    const SheetAxis& rowAxis() const { return m_rowAxis; }
    const SheetAxis& columnAxis() const { return m_columnAxis; }
    SheetPanes& panes() { return m_panes; }
    const SheetPanes& panes() const { return m_panes; }
    SheetSelection& selection() { return m_selection; }
    const SheetSelection& selection() const { return m_selection; }

    int zoom() const { return m_zoom; } ///< percent
    void setZoom(int percent);
    /// Pixels of the screen for one of the window system's.
    void setDeviceScale(double scale);
    double scale() const { return m_zoom / 100.0 * m_deviceScale; }
    void setSize(const QSize& size);

    bool isFrozen() const;
    /// The rows above the cell and the columns before it, as far as they are seen now, stay where they are. Nothing is
    /// frozen before a cell that is not in sight itself: it could fill the window.
    void freezeAt(const CellSpot& cell);
    void unfreeze();
    /// Selection, zoom, panes and place of another opening of the sheet. A selected drawing is found by its name.
    void takeOver(const OpenSheet& before);

    CellSpot cellAt(const QPoint& place) const;
    /// Of whole cells as seen in a pane; reaches beyond the pane where the area does.
    QRect rectIn(int pane, const CellArea& area) const;
    QRect paneRect(int pane) const;
    int paneAt(const QPoint& place) const;

    /// Index of the visible drawing under a place; -1 if there is none. Cells seen through a shape stay in reach.
    int drawingAt(const QPoint& place) const;
    QRect drawingRect(int pane, int drawing) const;
    const engine::DrawingContent& drawing(int index) const
    {
        return m_sheet->content().drawings[static_cast<size_t>(index)];
    }
    /// Index of the selected drawing; -1 while cells are selected.
    int selectedDrawing() const { return m_selectedDrawing; }
    void selectDrawing(int drawing) { m_selectedDrawing = drawing; }
    QString selectedDrawingText() const; ///< "the chart "Sales""; empty while cells are selected

    /// Moves the active cell, or with `extend` the corner that moves, and scrolls to it.
    void move(Direction direction, Step step, bool extend);
    void reveal(const CellSpot& cell);
    /// The block of data around the active cell; all cells where it is selected already.
    void selectRegionOrAll();

private:
    void applyScale();
    void applyStoredPanes();
    void applyStoredSelection();
    int drawingNamed(const QString& name) const;
    CellSpot target(const CellSpot& from, Direction direction, Step step) const;

    std::shared_ptr<const ViewedSheet> m_sheet;
    SheetAxis m_rowAxis;
    SheetAxis m_columnAxis;
    SheetPanes m_panes;
    SheetSelection m_selection;
    int m_zoom = 100;
    double m_deviceScale = 1;
    int m_selectedDrawing = -1;
};

inline constexpr int smallestZoom = 25;
inline constexpr int largestZoom = 400;

} // namespace lumivane
