#include "viewer/frmWorkbook.h"

#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "services/RecentWorkbooks.h"
#include "viewer/CellPlace.h"
#include "viewer/NameBox.h"
#include "viewer/NoticeBar.h"
#include "viewer/SheetView.h"
#include "viewer/StartPage.h"
#include "viewer/ZoomControl.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {

/// The hourglass for as long as a command reads.
class ReadingPointer
{
public:
    ReadingPointer() { prompts().setPointer(Prompts::Pointer::Hourglass); }
    ~ReadingPointer() { prompts().setPointer(Prompts::Pointer::Default); }
    ReadingPointer(const ReadingPointer&) = delete;
};

/// A worksheet of the content that a window shows. What clients would change in it the user would never see.
class ViewerSheet : public EmbeddedSheet
{
public:
    using EmbeddedSheet::EmbeddedSheet;

    void setRowHeight(int, int, double) override { refuse(); }
    void setColumnWidth(int, int, double) override { refuse(); }
    void setInteriorColor(int, int, QRgb) override { refuse(); }

private:
    [[noreturn]] void refuse() const
    {
        throw RuntimeError(
            RuntimeError::ApplicationDefined,
            u"The workbook window only shows sheet \"%1\" of workbook \"%2\"; it cannot change it."_s.arg(
                Name(), WorkbookName()));
    }
};

} // namespace

Result<bool> frmWorkbook::openWorkbook(const QString& path)
{
    try {
        const ReadingPointer pointer;
        takeWorkbook(std::make_shared<ViewedWorkbook>(path));
        rememberWorkbook(m_workbook->path());
        return true;
    } catch (const RuntimeError& failure) {
        return Failure{failure.description()};
    }
}

void frmWorkbook::takeWorkbook(std::shared_ptr<ViewedWorkbook> workbook)
{
    m_workbook = std::move(workbook);
    m_openSheets.clear();
    m_hostSheets.clear();
    m_currentSheet = -1;
    m_changedBar->hide();
    setWindowTitle(m_workbook->name() + u" - "_s + applicationTitle());
    setWindowFilePath(m_workbook->path());
    m_watch.watch(m_workbook->path(), m_workbook->stamp());
    fillTabs();
    const int first = m_workbook->firstSheetToShow();
    if (first >= 0)
        showSheet(first);
    else
        showProblem(u"The workbook \"%1\" has no sheet with cells that could be shown."_s.arg(m_workbook->name()));
}

void frmWorkbook::fillTabs()
{
    const QSignalBlocker quiet(m_tabs);
    while (m_tabs->count() > 0)
        m_tabs->removeTab(0);
    for (const int index : m_workbook->visibleSheets()) {
        // A lone & would become a mnemonic.
        const int tab = m_tabs->addTab(QString(m_workbook->entry(index).name).replace(u'&', u"&&"_s));
        m_tabs->setTabData(tab, index);
    }
}

void frmWorkbook::showSheet(int index)
{
    if (!m_workbook || index < 0 || index >= static_cast<int>(m_workbook->content()->sheets.size()))
        return;
    const bool readFirst = !m_openSheets.contains(index);
    m_currentSheet = index;
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        const QSignalBlocker quiet(m_tabs);
        if (m_tabs->tabData(tab).toInt() == index)
            m_tabs->setCurrentIndex(tab);
    }
    m_drawings.clear();
    m_nameBox->setNames(reachableNames(*m_workbook->content(), index));
    try {
        std::optional<ReadingPointer> pointer;
        if (readFirst)
            pointer.emplace();
        const auto sheet = openSheet(index);
        m_pages->setCurrentWidget(m_view);
        m_view->setSheet(sheet, [this](int drawing) { return drawingPicture(drawing); });
        m_view->setAccessibleName(u"Cells of "_s + m_workbook->entry(index).name);
        m_zoom->setZoom(sheet->zoom());
        m_view->setFocus();
        const QString& problem = sheet->sheet().content().problem;
        m_problemBar->hide();
        if (!problem.isEmpty())
            m_problemBar->tell(problem);
    } catch (const RuntimeError& failure) {
        showProblem(failure.description());
    }
    noteUse();
    updateActions();
}

std::shared_ptr<OpenSheet> frmWorkbook::openSheet(int index)
{
    auto& sheet = m_openSheets[index];
    if (!sheet) {
        try {
            sheet = std::make_shared<OpenSheet>(m_workbook->sheet(index));
        } catch (...) {
            m_openSheets.erase(index);
            throw;
        }
    }
    return sheet;
}

void frmWorkbook::showProblem(const QString& sentence)
{
    m_view->setSheet(nullptr, nullptr);
    m_problemBar->hide();
    m_problemPage->setText(sentence);
    m_pages->setCurrentWidget(m_problemPage);
    m_nameBox->setPlace(QString());
    m_cellText->clear();
    m_figures->clear();
    updateActions();
}

void frmWorkbook::stepSheet(int step)
{
    const int tab = m_tabs->currentIndex() + step;
    if (tab >= 0 && tab < m_tabs->count())
        m_tabs->setCurrentIndex(tab);
}

std::shared_ptr<Worksheet> frmWorkbook::hostSheet(int index)
{
    auto& sheet = m_hostSheets[index];
    if (!sheet) {
        // Clients may hold the sheet for longer than the window lives.
        const auto activate = [window = QPointer(this), index] {
            if (window)
                window->showSheet(index);
        };
        sheet = std::make_shared<ViewerSheet>(m_workbook->file(), index, m_workbook->name(), Metrics::File, activate);
    }
    return sheet;
}

/// Of the current sheet; null where the engine cannot draw it.
QImage frmWorkbook::drawingPicture(int drawing)
{
    const OpenSheet* sheet = m_view->sheet();
    if (!sheet || m_currentSheet < 0)
        return {};
    if (m_drawingsScale != sheet->scale())
        m_drawings.clear();
    m_drawingsScale = sheet->scale();
    const auto known = m_drawings.find(drawing);
    if (known != m_drawings.end())
        return known->second;
    QImage picture;
    try {
        const QString& name = sheet->sheet().content().drawings[static_cast<size_t>(drawing)].name;
        picture = hostSheet(m_currentSheet)->CopyShapePicture(name, sheet->scale());
    } catch (const RuntimeError&) {
        // Shown as a frame with the name: it can still be selected.
    }
    return m_drawings[drawing] = picture;
}

void frmWorkbook::tellFileChanged()
{
    if (m_watch.isGone())
        m_changedBar->tell(u"The file \"%1\" is gone. The window still shows what it held when it was read."_s.arg(
            m_workbook->name()));
    else
        m_changedBar->tell(u"The file \"%1\" has changed since it was read."_s.arg(m_workbook->name()),
                           u"&Read Again"_s);
}

void frmWorkbook::readAgain()
{
    if (!m_workbook)
        return;
    const QString shown = m_currentSheet >= 0 ? m_workbook->entry(m_currentSheet).name : QString();
    std::map<QString, std::shared_ptr<OpenSheet>> before;
    for (const auto& [index, sheet] : m_openSheets)
        before[m_workbook->entry(index).name.toCaseFolded()] = sheet;
    try {
        const ReadingPointer pointer;
        takeWorkbook(std::make_shared<ViewedWorkbook>(m_workbook->path()));
        for (const auto& [name, sheet] : before) {
            const int index = m_workbook->indexOf(name);
            if (index >= 0 && m_workbook->entry(index).visible)
                openSheet(index)->takeOver(*sheet);
        }
        const int index = m_workbook->indexOf(shown);
        showSheet(index >= 0 && m_workbook->entry(index).visible ? index : m_workbook->firstSheetToShow());
    } catch (const RuntimeError& failure) {
        m_changedBar->tell(failure.description(), u"&Try Again"_s);
    }
}

void frmWorkbook::fillRecentMenu()
{
    m_actions.recent->clear();
    int number = 0;
    for (const QString& path : recentWorkbooks()) {
        const QString name = QDir::toNativeSeparators(path).replace(u'&', u"&&"_s);
        // A tenth one is chosen by its 0.
        const QString key = ++number < 10 ? u"&%1"_s.arg(number) : u"1&0"_s;
        m_actions.recent->addAction(key + u"  "_s + name, this, [this, path] { openFromUser(path); });
    }
    if (number == 0)
        m_actions.recent->addAction(u"No workbooks yet"_s)->setEnabled(false);
}

} // namespace lumivane
