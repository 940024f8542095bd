#include "viewer/frmWorkbook.h"

#include "controls/FileDrop.h"
#include "engine/draw/DrawingLayer.h"
#include "platform/Prompts.h"
#include "services/RecentWorkbooks.h"
#include "viewer/CellPlace.h"
#include "viewer/FindBar.h"
#include "viewer/NameBox.h"
#include "viewer/SelectionFigures.h"
#include "viewer/SheetFinder.h"
#include "viewer/SheetView.h"
#include "viewer/StartPage.h"
#include "viewer/WorkbookWindows.h"
#include "viewer/ZoomControl.h"

#include <QAction>
#include <QActionGroup>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusBar>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {

constexpr int shortRemark = 4000; // milliseconds

QStringList droppedFiles(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isFile())
            files.append(url.toLocalFile());
    }
    return files;
}

/// What a cell holds: numbers in full, dates as they are shown.
QString cellContents(const ViewedSheet& sheet, const CellSpot& spot)
{
    const Cell* cell = sheet.content().find(spot.row, spot.column);
    if (!cell)
        return {};
    const bool plain = cell->kind == CellKind::Number &&
                       !sheet.shown().format(sheet.shown().styleIndex(spot.row, spot.column)).isDate();
    return plain ? sheet.shown().plain(*cell) : sheet.shown().shown(spot.row, *cell);
}

QString sizeText(const CellArea& area)
{
    return u"%L1 \u00d7 %L2"_s.arg(area.rows()).arg(area.columns());
}

} // namespace

void frmWorkbook::askForFile()
{
    Prompts::FileQuestion question;
    question.title = u"Open Workbook"_s;
    question.filter = u"Workbooks (*.xlsx *.xlsm *.csv *.tsv *.txt);;All files (*)"_s;
    if (m_workbook)
        question.startFolder = QFileInfo(m_workbook->path()).absolutePath();
    const QString path = prompts().openFile(question);
    if (!path.isEmpty())
        openFromUser(path);
}

/// In this window while it is empty, else in one of its own.
void frmWorkbook::openFromUser(const QString& path)
{
    QString reason;
    if (m_workbook) {
        openWorkbookWindow(path, &reason);
    } else if (const Result<bool> opened = openWorkbook(path); !opened) {
        reason = opened.reason();
    }
    if (reason.isEmpty())
        return;
    if (!QFileInfo::exists(path))
        forgetWorkbook(path);
    m_startPage->setRecent(recentWorkbooks());
    prompts().message(reason, Prompts::Icon::Exclamation);
}

void frmWorkbook::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedFiles(*event->mimeData()).isEmpty())
        acceptCopy(*event);
}

void frmWorkbook::dropEvent(QDropEvent* event)
{
    acceptCopy(*event);
    for (const QString& file : droppedFiles(*event->mimeData()))
        openFromUser(file);
}

void frmWorkbook::showSelection()
{
    const OpenSheet& sheet = *m_view->sheet();
    const SheetSelection& selection = sheet.selection();
    noteUse();
    describeCopy(sheet);
    if (sheet.selectedDrawing() >= 0) {
        m_nameBox->setPlace(sheet.drawing(sheet.selectedDrawing()).name);
        m_cellText->clear();
    } else {
        const CellSpot active = selection.activeCell();
        const QString name = nameOf({m_currentSheet, selection.areas()}, *m_workbook->content());
        m_nameBox->setPlace(name.isEmpty() ? QString(selection.address()).remove(u'$') : name);
        m_cellText->setText(cellContents(sheet.sheet(), active).replace(u'\n', u' '));
        m_cellText->setCursorPosition(0);
    }
    m_figuresSoon.start();
}

void frmWorkbook::showFigures()
{
    const OpenSheet* sheet = m_view->sheet();
    if (!sheet || sheet->selectedDrawing() >= 0) {
        m_figures->clear();
        return;
    }
    const auto& areas = sheet->selection().areas();
    QStringList parts{figuresText(sheet->sheet(), figuresOf(sheet->sheet(), areas))};
    const CellArea& last = areas.back();
    if (areas.size() == 1 && last != sheet->sheet().mergedAround(sheet->selection().activeCell()))
        parts.prepend(sizeText(last));
    parts.removeAll(QString());
    m_figures->setText(parts.join(u"     "_s));
}

void frmWorkbook::updateActions()
{
    const OpenSheet* sheet = m_view->sheet();
    for (QAction* const action :
         {m_actions.copy, m_actions.selectAll, m_actions.find, m_actions.findNext, m_actions.findPrevious,
          m_actions.goTo, m_actions.freeze, m_actions.freezeTopRow, m_actions.freezeFirstColumn, m_actions.zoomIn,
          m_actions.zoomOut, m_actions.zoomReset, m_actions.zoom->menuAction()})
        action->setEnabled(sheet);
    m_actions.readAgain->setEnabled(m_workbook != nullptr);
    m_nameBox->setEnabled(sheet || m_workbook);
    m_cellText->setEnabled(sheet);
    m_zoom->setEnabled(sheet);
    const bool frozen = sheet && sheet->isFrozen();
    m_actions.freeze->setChecked(frozen);
    m_actions.freeze->setText(frozen ? u"Un&freeze Panes"_s : u"&Freeze Panes"_s);
    m_actions.freeze->setToolTip(frozen ? u"Unfreeze Panes"_s : u"Freeze Panes"_s);
    m_actions.freeze->setStatusTip(frozen ? u"Let all rows and columns scroll again"_s
                                          : u"Keep the rows above and the columns before the active cell in place"_s);
    if (!m_workbook)
        m_startPage->setRecent(recentWorkbooks());
}

void frmWorkbook::copySelection()
{
    const OpenSheet* sheet = m_view->sheet();
    if (!sheet)
        return;
    if (sheet->selectedDrawing() >= 0) {
        copyDrawing(*sheet);
        return;
    }
    QGuiApplication::clipboard()->setText(selectionText(sheet->sheet(), sheet->selection().areas()));
    statusBar()->showMessage(u"Copied as text"_s, shortRemark);
}

void frmWorkbook::copyDrawing(const OpenSheet& sheet)
{
    const DrawingContent& drawing = sheet.drawing(sheet.selectedDrawing());
    const QImage picture = isUndrawn(drawing) ? QImage() : sheet.sheet().painter().drawingImage(drawing, sheet.scale());
    if (picture.isNull()) {
        prompts().message(u"Unable to copy %1: it cannot be drawn here."_s.arg(sheet.selectedDrawingText()),
                          Prompts::Icon::Exclamation);
        return;
    }
    QGuiApplication::clipboard()->setImage(picture);
    const QString gap = drawingGap(drawing);
    statusBar()->showMessage(u"Copied %1 as a picture"_s.arg(sheet.selectedDrawingText()) +
                                 (gap.isEmpty() ? QString() : u" that lacks something: %1"_s.arg(gap)),
                             gap.isEmpty() ? shortRemark : 2 * shortRemark);
}

/// The command says what it would copy now.
void frmWorkbook::describeCopy(const OpenSheet& sheet)
{
    constexpr qsizetype longest = 60;
    QString what = sheet.selectedDrawingText();
    m_actions.copy->setStatusTip(what.isEmpty() ? u"Copy the selected cells as text"_s
                                                : u"Copy %1 as a picture"_s.arg(what));
    if (what.size() > longest)
        what = what.left(longest) + u"\u2026"_s;
    m_actions.copy->setText(what.isEmpty() ? u"&Copy"_s : u"&Copy %1"_s.arg(what.replace(u'&', u"&&"_s)));
}

void frmWorkbook::goTo(const QString& text)
{
    if (!m_workbook || text.trimmed().isEmpty())
        return;
    const Result<CellPlace> place = readCellPlace(text, *m_workbook->content(), m_currentSheet);
    if (!place) {
        prompts().message(place.reason(), Prompts::Icon::Exclamation);
        m_nameBox->edit();
        return;
    }
    if (place.value().sheet != m_currentSheet)
        showSheet(place.value().sheet);
    m_view->selectAreas(place.value().areas);
    m_view->setFocus();
}

void frmWorkbook::find(bool forward)
{
    const OpenSheet* sheet = m_view->sheet();
    if (!sheet)
        return;
    if (m_findBar->text().isEmpty()) {
        m_findBar->open();
        return;
    }
    const CellSpot from = sheet->selection().activeCell();
    const auto hit = findText(sheet->sheet(), m_findBar->text(), from, forward);
    if (!hit) {
        m_findBar->showOutcome(false, u"Not found in this sheet"_s);
        return;
    }
    const bool wrapped = forward ? std::pair(hit->row, hit->column) <= std::pair(from.row, from.column)
                                 : std::pair(hit->row, hit->column) >= std::pair(from.row, from.column);
    m_view->selectAreas({CellArea::cell(hit->row, hit->column)});
    m_findStart = *hit;
    m_findBar->showOutcome(true, wrapped ? u"Went on from the other end of the sheet"_s : QString());
}

/// Each letter starts the search again where it began, that cell included, so that the hit stays while it still fits.
void frmWorkbook::findWhileTyping()
{
    const OpenSheet* sheet = m_view->sheet();
    if (!sheet)
        return;
    if (m_findBar->text().isEmpty()) {
        m_findBar->showOutcome(true, QString());
        return;
    }
    const auto hit = findText(sheet->sheet(), m_findBar->text(), {m_findStart.row, m_findStart.column - 1}, true);
    if (hit)
        m_view->selectAreas({CellArea::cell(hit->row, hit->column)});
    m_findBar->showOutcome(hit.has_value(), hit ? QString() : u"Not found in this sheet"_s);
}

void frmWorkbook::toggleFreeze()
{
    OpenSheet* const sheet = m_view->sheet();
    if (!sheet)
        return;
    if (sheet->isFrozen()) {
        m_view->unfreeze();
        return;
    }
    const CellSpot active = sheet->selection().activeCell();
    m_view->freezeAt(active);
    if (!sheet->isFrozen())
        statusBar()->showMessage(
            u"Select the cell below the rows and to the right of the columns that are to stay in place."_s,
            2 * shortRemark);
    updateActions();
}

void frmWorkbook::freezeLines(bool rows)
{
    OpenSheet* const sheet = m_view->sheet();
    if (!sheet)
        return;
    sheet->unfreeze();
    const CellArea seen = sheet->panes().visible(0);
    m_view->freezeAt(rows ? CellSpot{seen.firstRow + 1, seen.firstColumn}
                          : CellSpot{seen.firstRow, seen.firstColumn + 1});
}

void frmWorkbook::fillZoomMenu()
{
    m_actions.zoom->clear();
    auto* group = new QActionGroup(m_actions.zoom);
    for (const int percent : {25, 50, 75, 100, 125, 150, 200, 300, 400}) {
        QAction* const action = m_actions.zoom->addAction(u"%1%"_s.arg(percent));
        action->setCheckable(true);
        action->setChecked(m_view->sheet() && m_view->sheet()->zoom() == percent);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, percent] { m_view->setZoom(percent); });
    }
}

void frmWorkbook::showViewMenu(const QPoint& place)
{
    if (!m_view->sheet())
        return;
    QMenu menu(this);
    menu.addActions({m_actions.copy, m_actions.selectAll});
    menu.addSeparator();
    menu.addActions({m_actions.freeze, m_actions.find, m_actions.goTo});
    menu.exec(m_view->mapToGlobal(place));
}

} // namespace lumivane
