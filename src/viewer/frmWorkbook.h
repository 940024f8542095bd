#pragma once

#include "host/embedded/EmbeddedSheet.h"
#include "platform/Result.h"
#include "viewer/OpenSheet.h"
#include "viewer/ViewedWorkbook.h"
#include "viewer/WorkbookActions.h"
#include "viewer/WorkbookWatch.h"

#include <QMainWindow>
#include <QTimer>
#include <map>
#include <memory>

class QLabel;
class QLineEdit;
class QStackedWidget;
class QTabBar;

namespace lumivane {

class FindBar;
class NameBox;
class NoticeBar;
class SheetView;
class StartPage;
class ZoomControl;

/// A window that shows a workbook and in which the user selects what to paste: the user's spreadsheet where no other
/// one is used. It only shows; the workbook's file is never changed. When somebody else changes the file, the window
/// says so and offers to read it again.
class frmWorkbook : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmWorkbook(QWidget* parent = nullptr);
    ~frmWorkbook() override;

    /// Shows the workbook in this window in place of what it shows now; on failure that stays, and the reason names the
    /// file.
    Result<bool> openWorkbook(const QString& path);
    /// Reads the file as it is now, and keeps sheet, selection, panes and zoom as far as they are still there. On
    /// failure the window keeps what it shows and says why.
    void readAgain();
    void showSheet(int index);
    void bringToFront();

    ViewedWorkbook* workbook() const { return m_workbook.get(); } ///< null while none is open
    int currentSheet() const { return m_currentSheet; }           ///< index into the workbook's sheets; -1 without one
    SheetView& view() const { return *m_view; }
    WorkbookWatch& watch() { return m_watch; }
    /// The sheet as the host's clients see it: the content that the window shows.
    std::shared_ptr<Worksheet> hostSheet(int index);

    int number() const { return m_number; }        ///< windows opened later have a larger one
    qint64 lastUse() const { return m_lastUse; }   ///< larger is later
    bool isClosing() const { return m_isClosing; } ///< closed and about to be deleted

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildTopBar();
    void buildCenter();
    void buildStatusBar();
    void connectActions();
    void connectParts();
    void applyLooks();
    void restoreSize();

    void openFromUser(const QString& path);
    void askForFile();
    void fillRecentMenu();
    void fillZoomMenu();
    void takeWorkbook(std::shared_ptr<ViewedWorkbook> workbook);
    void fillTabs();
    void stepSheet(int step);
    std::shared_ptr<OpenSheet> openSheet(int index);
    void showProblem(const QString& sentence);
    QImage drawingPicture(int drawing);
    void tellFileChanged();

    void noteUse();
    void showSelection();
    void showFigures();
    void updateActions();
    void copySelection();
    void copyDrawing(const OpenSheet& sheet);
    void describeCopy(const OpenSheet& sheet);
    void goTo(const QString& text);
    void find(bool forward);
    void findWhileTyping();
    void toggleFreeze();
    void freezeLines(bool rows);
    void showViewMenu(const QPoint& place);

    WorkbookActions m_actions;
    NameBox* m_nameBox = nullptr;
    QLineEdit* m_cellText = nullptr;
    NoticeBar* m_changedBar = nullptr;
    NoticeBar* m_problemBar = nullptr;
    QStackedWidget* m_pages = nullptr;
    StartPage* m_startPage = nullptr;
    SheetView* m_view = nullptr;
    QLabel* m_problemPage = nullptr;
    FindBar* m_findBar = nullptr;
    QTabBar* m_tabs = nullptr;
    QLabel* m_figures = nullptr;
    ZoomControl* m_zoom = nullptr;
    QTimer m_figuresSoon;

    std::shared_ptr<ViewedWorkbook> m_workbook;
    int m_currentSheet = -1;
    std::map<int, std::shared_ptr<OpenSheet>> m_openSheets;
    std::map<int, std::shared_ptr<EmbeddedSheet>> m_hostSheets;
    std::map<int, QImage> m_drawings; ///< of the current sheet at m_drawingsScale
    double m_drawingsScale = 0;
    CellSpot m_findStart; ///< where the search began that goes on while the user types
    WorkbookWatch m_watch;

    const int m_number;
    qint64 m_lastUse = 0;
    bool m_isClosing = false;
};

} // namespace lumivane
