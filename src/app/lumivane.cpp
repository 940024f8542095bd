#include "assist/DesktopDocuments.h"
#include "controls/Look.h"
#include "controls/QtPrompts.h"
#include "dashboard/ProgramWindows.h"
#include "host/Host.h"
#include "host/embedded/EmbeddedHost.h"
#include "platform/ApplicationInfo.h"
#include "platform/Failures.h"
#include "platform/Prompts.h"
#include "services/modUtilsLog.h"
#include "session/Startup.h"
#include "viewer/WorkbookWindows.h"

#include <QApplication>

namespace {

/// The last net: an error that no command trapped is logged and shown, and the program goes on.
class LumivaneApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& failure) {
            const lumivane::RuntimeError error = lumivane::describedFailure(failure);
            lumivane::LogError(QStringLiteral("Main"), QStringLiteral("notify"), error.number(), error.description(),
                               true);
        }
        return true;
    }
};

} // namespace

int main(int argc, char** argv)
{
    LumivaneApplication application(argc, argv);
    QApplication::setApplicationName(lumivane::executableName());
    QApplication::setDesktopFileName(lumivane::executableName());
    lumivane::applyLook(application);

    lumivane::QtPrompts prompts;
    lumivane::setPrompts(&prompts);
    lumivane::setDocumentViewer(lumivane::desktopDocuments());
    lumivane::setHostFactory({lumivane::makeEmbeddedWorker, [] { return std::shared_ptr<lumivane::Application>(); }});
    lumivane::offerWorkbookWindows();
    if (!lumivane::Main_Start())
        return 1;

    // The run ends with the main window: not before, when it is loaded anew for another project, and not later, when
    // workbook windows are still open.
    QApplication::setQuitOnLastWindowClosed(false);
    lumivane::ProgramWindows windows;
    QObject::connect(&windows, &lumivane::ProgramWindows::ended, &application, &QApplication::quit,
                     Qt::QueuedConnection);
    windows.showWorkspace();
    const int status = QApplication::exec();
    lumivane::setPrompts(nullptr);
    return status;
}
