#pragma once

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;
class QWidget;

namespace lumivane {

/// The commands of a workbook window with their menus, toolbar, shortcuts and icons; what they do is connected by the
/// window.
struct WorkbookActions
{
    explicit WorkbookActions(QMainWindow& window);

    void applyIcons(const QWidget& window);

    QAction *open, *readAgain, *close;
    QMenu* recent;
    QAction *copy, *selectAll, *find, *findNext, *findPrevious, *goTo;
    QAction *freeze, *freezeTopRow, *freezeFirstColumn;
    QAction *zoomIn, *zoomOut, *zoomReset;
    QMenu* zoom;
    QToolBar* bar;

private:
    void buildFileMenu(QMainWindow& window);
    void buildEditMenu(QMainWindow& window);
    void buildViewMenu(QMainWindow& window);
    void buildToolBar(QMainWindow& window);
};

} // namespace lumivane
