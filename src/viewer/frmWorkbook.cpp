#include "viewer/frmWorkbook.h"

#include "platform/ApplicationInfo.h"
#include "services/modUtilsINI.h"
#include "viewer/FindBar.h"
#include "viewer/NameBox.h"
#include "viewer/NoticeBar.h"
#include "viewer/SheetView.h"
#include "viewer/StartPage.h"
#include "viewer/ViewerColors.h"
#include "viewer/ZoomControl.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QVBoxLayout>

// Building the window. What it does with workbooks and sheets stands in frmWorkbookSheets.cpp, the commands in
// frmWorkbookCommands.cpp.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString workbookWindowKey = u"Workbook Window"_s;
constexpr int millisecondsUntilFigures = 60;

int nextWindowNumber()
{
    static int number = 0;
    return ++number;
}

} // namespace

frmWorkbook::frmWorkbook(QWidget* parent) : QMainWindow(parent), m_actions(*this), m_number(nextWindowNumber())
{
    setObjectName(u"frmWorkbook"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    setWindowTitle(u"Workbook - "_s + applicationTitle());
    setWindowIcon(viewerIcon(u"workbook"_s, QPalette(Qt::white)));
    setContextMenuPolicy(Qt::NoContextMenu);
    buildTopBar();
    buildCenter();
    buildStatusBar();
    connectActions();
    connectParts();
    applyLooks();
    restoreSize();
    updateActions();
    m_startPage->setFocus();
}

frmWorkbook::~frmWorkbook() = default;

void frmWorkbook::buildTopBar()
{
    m_nameBox = new NameBox;
    m_cellText = new QLineEdit;
    m_cellText->setObjectName(u"cellTextLineEdit"_s);
    m_cellText->setAccessibleName(u"Contents of the active cell"_s);
    m_cellText->setToolTip(u"Contents of the active cell"_s);
    m_cellText->setReadOnly(true);
    m_cellText->setFocusPolicy(Qt::ClickFocus);
    m_actions.bar->addWidget(m_nameBox);
    auto* gap = new QWidget;
    gap->setFixedWidth(6);
    m_actions.bar->addWidget(gap);
    m_actions.bar->addWidget(m_cellText);
}

void frmWorkbook::buildCenter()
{
    m_changedBar = new NoticeBar;
    m_problemBar = new NoticeBar;
    m_problemBar->setObjectName(u"problemBar"_s);
    m_startPage = new StartPage;
    m_view = new SheetView;
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    m_problemPage = new QLabel;
    m_problemPage->setObjectName(u"problemLabel"_s);
    m_problemPage->setTextFormat(Qt::PlainText);
    m_problemPage->setAlignment(Qt::AlignCenter);
    m_problemPage->setWordWrap(true);
    m_problemPage->setMargin(40);
    m_pages = new QStackedWidget;
    m_pages->addWidget(m_startPage);
    m_pages->addWidget(m_view);
    m_pages->addWidget(m_problemPage);
    m_findBar = new FindBar;
    m_tabs = new QTabBar;
    m_tabs->setObjectName(u"sheetTabs"_s);
    m_tabs->setAccessibleName(u"Sheets"_s);
    m_tabs->setShape(QTabBar::RoundedSouth);
    m_tabs->setDocumentMode(true);
    m_tabs->setExpanding(false);
    m_tabs->setUsesScrollButtons(true);
    m_tabs->setElideMode(Qt::ElideNone);
    m_tabs->setDrawBase(false);

    auto* center = new QWidget;
    auto* column = new QVBoxLayout(center);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_changedBar);
    column->addWidget(m_problemBar);
    column->addWidget(m_pages, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_tabs);
    setCentralWidget(center);
}

void frmWorkbook::buildStatusBar()
{
    m_figures = new QLabel;
    m_figures->setObjectName(u"figuresLabel"_s);
    m_figures->setAccessibleName(u"Figures of the selected cells"_s);
    m_figures->setTextFormat(Qt::PlainText);
    m_figures->setMargin(2);
    m_zoom = new ZoomControl;
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addPermanentWidget(m_figures);
    statusBar()->addPermanentWidget(m_zoom);
}

void frmWorkbook::connectActions()
{
    const WorkbookActions& a = m_actions;
    connect(a.open, &QAction::triggered, this, &frmWorkbook::askForFile);
    connect(a.recent, &QMenu::aboutToShow, this, &frmWorkbook::fillRecentMenu);
    connect(a.readAgain, &QAction::triggered, this, &frmWorkbook::readAgain);
    connect(a.close, &QAction::triggered, this, &QWidget::close);
    connect(a.copy, &QAction::triggered, this, &frmWorkbook::copySelection);
    connect(a.selectAll, &QAction::triggered, m_view, &SheetView::selectRegionOrAll);
    connect(a.find, &QAction::triggered, this, [this] {
        m_findStart = m_view->sheet() ? m_view->sheet()->selection().activeCell() : CellSpot();
        m_findBar->open();
    });
    connect(a.findNext, &QAction::triggered, this, [this] { find(true); });
    connect(a.findPrevious, &QAction::triggered, this, [this] { find(false); });
    connect(a.goTo, &QAction::triggered, m_nameBox, &NameBox::edit);
    connect(a.freeze, &QAction::triggered, this, &frmWorkbook::toggleFreeze);
    connect(a.freezeTopRow, &QAction::triggered, this, [this] { freezeLines(true); });
    connect(a.freezeFirstColumn, &QAction::triggered, this, [this] { freezeLines(false); });
    connect(a.zoomIn, &QAction::triggered, this,
            [this] { m_view->setZoom(ZoomControl::nextStep(m_view->sheet()->zoom(), true)); });
    connect(a.zoomOut, &QAction::triggered, this,
            [this] { m_view->setZoom(ZoomControl::nextStep(m_view->sheet()->zoom(), false)); });
    connect(a.zoomReset, &QAction::triggered, this, [this] { m_view->setZoom(100); });
    connect(a.zoom, &QMenu::aboutToShow, this, &frmWorkbook::fillZoomMenu);
}

void frmWorkbook::connectParts()
{
    connect(m_nameBox, &NameBox::placeEntered, this, &frmWorkbook::goTo);
    connect(m_nameBox, &NameBox::left, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_startPage, &StartPage::openRequested, this, &frmWorkbook::askForFile);
    connect(m_startPage, &StartPage::recentRequested, this, &frmWorkbook::openFromUser);
    connect(m_view, &SheetView::selectionChanged, this, &frmWorkbook::showSelection);
    connect(m_view, &SheetView::zoomChanged, m_zoom, &ZoomControl::setZoom);
    connect(m_view, &SheetView::panesChanged, this, &frmWorkbook::updateActions);
    connect(m_view, &SheetView::sheetStepRequested, this, &frmWorkbook::stepSheet);
    connect(m_view, &QWidget::customContextMenuRequested, this, &frmWorkbook::showViewMenu);
    connect(m_zoom, &ZoomControl::zoomRequested, m_view, &SheetView::setZoom);
    connect(m_findBar, &FindBar::findRequested, this, &frmWorkbook::find);
    connect(m_findBar, &FindBar::textEdited, this, &frmWorkbook::findWhileTyping);
    connect(m_findBar, &FindBar::closed, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab >= 0)
            showSheet(m_tabs->tabData(tab).toInt());
    });
    connect(&m_watch, &WorkbookWatch::changed, this, &frmWorkbook::tellFileChanged);
    connect(m_changedBar, &NoticeBar::actionRequested, this, &frmWorkbook::readAgain);
    m_figuresSoon.setSingleShot(true);
    m_figuresSoon.setInterval(millisecondsUntilFigures);
    connect(&m_figuresSoon, &QTimer::timeout, this, &frmWorkbook::showFigures);
}

void frmWorkbook::applyLooks()
{
    m_actions.applyIcons(*this);
    const ViewerColors colors(palette());
    const QString line = colors.headerLine.name();
    const QString style =
        u"QTabBar { background: %1; }"
        "QTabBar::tab { padding: 5px 14px; border: 0; border-right: 1px solid %2;"
        " background: %1; color: %3; }"
        "QTabBar::tab:selected { background: %4; color: %5; border-bottom: 2px solid %6; }"
        "QTabBar::tab:hover:!selected { background: %7; }"_s.arg(
            colors.ground.name(), line, colors.headerText.name(), palette().color(QPalette::Base).name(),
            palette().color(QPalette::Text).name(), colors.accent.name(), colors.header.name());
    if (m_tabs->styleSheet() != style)
        m_tabs->setStyleSheet(style);
}

/// "width,height,maximized" of the window closed last; where it stands is left to the window system.
void frmWorkbook::restoreSize()
{
    const QStringList parts =
        GetIniString(GetIniFile(), u"Session"_s, workbookWindowKey, QString()).split(u',', Qt::SkipEmptyParts);
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    QSize size = screen.boundedTo(QSize(1240, 800)) * 0.92;
    if (parts.size() == 3 && parts[0].toInt() >= 320 && parts[1].toInt() >= 240)
        size = QSize(parts[0].toInt(), parts[1].toInt()).boundedTo(screen);
    resize(size);
    if (parts.size() == 3 && parts[2] == u"1")
        setWindowState(windowState() | Qt::WindowMaximized);
}

void frmWorkbook::closeEvent(QCloseEvent* event)
{
    const QSize size = isMaximized() ? normalGeometry().size() : this->size();
    SetIniString(GetIniFile(), u"Session"_s, workbookWindowKey,
                 u"%1,%2,%3"_s.arg(size.width()).arg(size.height()).arg(isMaximized() ? 1 : 0));
    m_isClosing = true;
    QMainWindow::closeEvent(event);
}

void frmWorkbook::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_tabs)
        applyLooks();
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        noteUse();
}

void frmWorkbook::noteUse()
{
    static qint64 uses = 0;
    m_lastUse = ++uses;
}

void frmWorkbook::bringToFront()
{
    noteUse();
    if (isMinimized())
        showNormal();
    else
        show();
    raise();
    activateWindow();
}

} // namespace lumivane
