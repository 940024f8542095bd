#pragma once

#include "viewer/SheetDrawer.h"

#include <QAbstractScrollArea>
#include <QTimer>
#include <memory>

class QHelpEvent;

namespace lumivane {

/// Shows one sheet with its headers and lets the user scroll, zoom and select by mouse and keyboard. What is open and
/// selected stands in the OpenSheet, which outlives a change of tabs; the view only shows it.
class SheetView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit SheetView(QWidget* parent = nullptr);
    ~SheetView() override;

    /// Null shows nothing.
    void setSheet(std::shared_ptr<OpenSheet> sheet, DrawingPicture picture);
    OpenSheet* sheet() const { return m_sheet.get(); }

    void setZoom(int percent);
    void selectAreas(const std::vector<CellArea>& areas);
    void selectRegionOrAll();
    void freezeAt(const CellSpot& cell);
    void unfreeze();
    /// Place of a cell in the viewport, in the pane that shows it.
    QRect cellRect(const CellSpot& cell) const;

Q_SIGNALS:
    void selectionChanged();
    void zoomChanged(int percent);
    void panesChanged();
    void sheetStepRequested(int step); ///< to the next sheet (1) or the one before (-1)

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    enum class Drag { None, Cells, Rows, Columns };

    void layOut();
    void updateScrollBars();
    void scrollFromBar(Qt::Orientation orientation, int value);
    void updateCursor(const QPoint& place);
    void showComment(const QHelpEvent& event);
    void tellSelection();
    void stopMoving();

    bool moveByKey(const QKeyEvent& event);
    bool selectByKey(const QKeyEvent& event);
    void pressCells(const QPoint& place, Qt::KeyboardModifiers modifiers);
    void pressHeader(Drag drag, const QPoint& place, Qt::KeyboardModifiers modifiers);
    void dragTo(const QPoint& place);
    void scrollWhileDragging();
    void zoomByWheel(const QWheelEvent& event);
    void scrollSmoothly(const QPointF& pixels, int rowBand, int columnBand);
    void scrollStep();
    void prepareAhead();
    int headerWidthFor(int lastRow) const;
    QPoint devicePoint(const QPointF& place) const;

    std::shared_ptr<OpenSheet> m_sheet;
    DrawingPicture m_picture;
    SheetTiles m_tiles;
    double m_tilesScale = 0;
    SheetLayout m_layout;
    std::unique_ptr<ViewerColors> m_colors;

    Drag m_drag = Drag::None;
    QPoint m_dragPlace; ///< of the cells, pixels of the screen
    QTimer m_dragScroll;

    QPointF m_scrollLeft; ///< pixels still to go
    int m_scrollRowBand = 0, m_scrollColumnBand = 0;
    QTimer m_scroll;

    QTimer m_ahead;
    int m_lastTop = 1;
    int m_direction = 1; ///< of the last vertical scroll
    bool m_settingBars = false;
};

} // namespace lumivane
