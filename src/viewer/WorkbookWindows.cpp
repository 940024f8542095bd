#include "viewer/WorkbookWindows.h"

#include "host/Host.h"
#include "viewer/ViewerInstance.h"
#include "viewer/frmWorkbook.h"

#include <QApplication>
#include <QFileInfo>

namespace lumivane {

namespace {

/// A named type, by which the host's factory can be asked whether the windows have been offered already.
struct VisibleViewer
{
    std::shared_ptr<Application> operator()() const { return std::make_shared<ViewerInstance>(); }
};

frmWorkbook* windowOf(const QString& path)
{
    const QString wanted = QFileInfo(path).absoluteFilePath();
    for (frmWorkbook* const window : workbookWindows()) {
        if (window->workbook() && window->workbook()->path() == wanted)
            return window;
    }
    return nullptr;
}

} // namespace

QList<frmWorkbook*> workbookWindows()
{
    QList<frmWorkbook*> windows;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<frmWorkbook*>(widget); window && !window->isClosing())
            windows.append(window);
    }
    // The application lists its widgets in no order.
    std::sort(windows.begin(), windows.end(),
              [](const frmWorkbook* a, const frmWorkbook* b) { return a->number() < b->number(); });
    return windows;
}

frmWorkbook* activeWorkbookWindow()
{
    frmWorkbook* active = nullptr;
    for (frmWorkbook* const window : workbookWindows()) {
        if (window->workbook() && (!active || window->lastUse() > active->lastUse()))
            active = window;
    }
    return active;
}

frmWorkbook* openWorkbookWindow(const QString& path, QString* reason)
{
    offerWorkbookWindows();
    if (frmWorkbook* const window = windowOf(path)) {
        window->bringToFront();
        return window;
    }
    auto window = std::make_unique<frmWorkbook>();
    const Result<bool> opened = window->openWorkbook(path);
    if (!opened) {
        if (reason)
            *reason = opened.reason();
        return nullptr;
    }
    window->bringToFront();
    return window.release();
}

frmWorkbook* openEmptyWorkbookWindow()
{
    offerWorkbookWindows();
    auto* const window = new frmWorkbook;
    window->bringToFront();
    return window;
}

void offerWorkbookWindows()
{
    HostFactory factory = hostFactory();
    if (factory.visibleInstance.target<VisibleViewer>())
        return;
    factory.visibleInstance = VisibleViewer();
    factory.userInstance = [before = factory.userInstance]() -> std::shared_ptr<Application> {
        if (activeWorkbookWindow())
            return std::make_shared<ViewerInstance>();
        return before ? before() : nullptr;
    };
    setHostFactory(std::move(factory));
}

} // namespace lumivane
