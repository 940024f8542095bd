#include "dashboard/Look.h"
#include "dashboard/QtPrompts.h"
#include "platform/ApplicationInfo.h"
#include "session/modMain.h"
#include "viewer/WorkbookWindows.h"

#include <QApplication>
#include <QPalette>

// The workbook window alone, to try it: workbooks to open as arguments, --dark for a dark palette.

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

QPalette darkTrialPalette()
{
    QPalette palette(QColor(0x2a, 0x30, 0x37));
    palette.setColor(QPalette::Base, QColor(0x20, 0x25, 0x2b));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x7f, 0xb8));
    return palette;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(executableName());
    applyLook(application);
    QtPrompts answers;
    setPrompts(&answers);
    QStringList files = QApplication::arguments().sliced(1);
    if (files.removeAll(u"--dark"_s) > 0)
        QApplication::setPalette(darkTrialPalette());
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
