#include "viewer/ViewerInstance.h"

#include "platform/RuntimeError.h"
#include "viewer/OpenSheet.h"
#include "viewer/SheetView.h"
#include "viewer/WorkbookWindows.h"
#include "viewer/frmWorkbook.h"

#include <QPointer>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuseViewerChange(const QString& workbook)
{
    throw RuntimeError(RuntimeError::ApplicationDefined,
                       u"The workbook window only shows \"%1\"; it cannot change it."_s.arg(workbook));
}

[[noreturn]] void tellViewerClosed(const QString& workbook)
{
    throw RuntimeError(RuntimeError::ApplicationDefined, u"The window of \"%1\" has been closed."_s.arg(workbook));
}

/// A workbook as long as its window is open. Its sheets are those that the window shows, read again with it.
class ViewerWorkbook : public Workbook
{
public:
    explicit ViewerWorkbook(frmWorkbook& window)
        : m_window(&window), m_path(window.workbook()->path()), m_name(window.workbook()->name())
    {
    }

    QString FullName() const override { return m_path; }
    QString Name() const override { return m_name; }
    QStringList WorksheetNames() const override { return window().workbook()->content()->worksheetNames(); }
    std::shared_ptr<Worksheet> WorksheetByName(const QString& name) override
    {
        const int index = window().workbook()->indexOf(name);
        return index < 0 || window().workbook()->entry(index).isChartSheet ? nullptr : window().hostSheet(index);
    }
    std::shared_ptr<Worksheet> ActiveSheet() override
    {
        const int index = window().currentSheet();
        return index < 0 || window().workbook()->entry(index).isChartSheet ? nullptr : window().hostSheet(index);
    }
    void Activate() override { window().bringToFront(); }
    void RefreshAll() override { window().readAgain(); }
    void Save() override { refuseViewerChange(m_name); }
    void Close() override { window().close(); }

private:
    frmWorkbook& window() const
    {
        if (!m_window || !m_window->workbook())
            tellViewerClosed(m_name);
        return *m_window;
    }

    QPointer<frmWorkbook> m_window;
    QString m_path, m_name;
};

class ViewerWindow : public Window
{
public:
    explicit ViewerWindow(frmWorkbook& window) : m_window(&window) {}

    WindowSelection Selection() override
    {
        const OpenSheet* sheet = shown();
        if (!sheet)
            return {};
        const int drawing = sheet->selectedDrawing();
        if (drawing < 0)
            return {WindowSelection::Kind::Range, QString()};
        const engine::DrawingContent& content = sheet->drawing(drawing);
        return {content.kind == engine::DrawingKind::Chart ? WindowSelection::Kind::Chart
                                                           : WindowSelection::Kind::Shape,
                content.name};
    }
    QString RangeSelection() override { return shown() ? shown()->selection().address() : QString(); }
    int PanesCount() override { return shown() ? shown()->panes().count() : 0; }
    QString PaneVisibleRange(int index) override
    {
        if (index < 1 || index > PanesCount())
            throw RuntimeError(RuntimeError::SubscriptOutOfRange);
        return shown()->panes().visible(index - 1).absolute();
    }

private:
    const OpenSheet* shown() const { return m_window ? m_window->view().sheet() : nullptr; }

    QPointer<frmWorkbook> m_window;
};

QList<frmWorkbook*> windowsWithWorkbook()
{
    QList<frmWorkbook*> windows = workbookWindows();
    windows.removeIf([](const frmWorkbook* window) { return !window->workbook(); });
    return windows;
}

} // namespace

ViewerInstance::ViewerInstance()
{
    ViewerInstance::setVisible(true);
}

std::shared_ptr<Workbook> ViewerInstance::Open(const QString& path, bool)
{
    QString reason;
    frmWorkbook* const window = openWorkbookWindow(path, &reason);
    if (!window)
        throw RuntimeError(RuntimeError::ApplicationDefined, reason);
    return std::make_shared<ViewerWorkbook>(*window);
}

int ViewerInstance::WorkbooksCount() const
{
    return static_cast<int>(windowsWithWorkbook().size());
}

std::shared_ptr<Workbook> ViewerInstance::WorkbookItem(int index)
{
    const QList<frmWorkbook*> windows = windowsWithWorkbook();
    if (index < 1 || index > windows.size())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return std::make_shared<ViewerWorkbook>(*windows[index - 1]);
}

std::shared_ptr<Workbook> ViewerInstance::ActiveWorkbook()
{
    frmWorkbook* const window = activeWorkbookWindow();
    return window ? std::make_shared<ViewerWorkbook>(*window) : nullptr;
}

std::shared_ptr<Worksheet> ViewerInstance::ActiveSheet()
{
    const std::shared_ptr<Workbook> workbook = ActiveWorkbook();
    return workbook ? workbook->ActiveSheet() : nullptr;
}

std::shared_ptr<Window> ViewerInstance::ActiveWindow()
{
    frmWorkbook* const window = activeWorkbookWindow();
    return window ? std::make_shared<ViewerWindow>(*window) : nullptr;
}

void ViewerInstance::BringToFront()
{
    if (frmWorkbook* const window = activeWorkbookWindow())
        window->bringToFront();
}

void ViewerInstance::Quit()
{
    for (frmWorkbook* const window : workbookWindows())
        window->close();
}

} // namespace lumivane
