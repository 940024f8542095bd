#include "controls/Look.h"
#include "controls/QtPrompts.h"
#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "viewer/WorkbookWindows.h"

#include <QApplication>

// The workbook window alone, to try it: workbooks to open as arguments, --dark for the colours of a dark desktop.

using namespace lumivane;
using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(executableName());
    applyLook(application);
    QtPrompts answers;
    setPrompts(&answers);
    QStringList files = QApplication::arguments().sliced(1);
    if (files.removeAll(u"--dark"_s) > 0)
        applyColors(application, true);
    bool anyOpen = false;
    for (const QString& file : files) {
        QString reason;
        if (openWorkbookWindow(file, &reason))
            anyOpen = true;
        else
            answers.message(reason, Prompts::Icon::Exclamation);
    }
    if (!anyOpen)
        openEmptyWorkbookWindow();
    return QApplication::exec();
}
