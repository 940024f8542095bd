#include "controls/FileDrop.h"
#include "dashboard/DashboardArea.h"
#include "dashboard/frmWorkspace.h"
#include "repository/clsWorkspace.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QMimeDatabase>
#include <QUrl>

// What a user can do without a menu: drop workbooks on the window, and read how a panel is made.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

bool isPictureFile(const QFileInfo& file)
{
    return QMimeDatabase().mimeTypeForFile(file).name().startsWith(u"image/");
}

/// The files to open as workbooks. None where anything else comes along, as that part would be lost without a word.
QStringList droppedWorkbooks(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        const QFileInfo file(url.toLocalFile());
        if (!url.isLocalFile() || !file.isFile() || isPictureFile(file))
            return {};
        files.append(file.absoluteFilePath());
    }
    return files;
}

QPair<QString, QString> shortcutWithEffect(const QAction& action, const QString& effect)
{
    return {action.shortcut().toString(QKeySequence::NativeText), effect};
}

} // namespace

void frmWorkspace::dragEnterEvent(QDragEnterEvent* event)
{
    if (!droppedWorkbooks(*event->mimeData()).isEmpty())
        acceptCopy(*event);
}

void frmWorkspace::dropEvent(QDropEvent* event)
{
    const QStringList files = droppedWorkbooks(*event->mimeData());
    if (files.isEmpty())
        return;
    acceptCopy(*event);
    // Later: until this returns, the program that the files come from waits, and a box might be shown.
    QMetaObject::invokeMethod(
        this,
        [this, files] {
            command(u"dropEvent"_s, [this, &files] {
                for (const QString& file : files)
                    showWorkbook(file);
            });
        },
        Qt::QueuedConnection);
}

void frmWorkspace::explainEmptyDashboard()
{
    m_area->setHint(u"Open a workbook, select a range and paste it here"_s,
                    {shortcutWithEffect(*m_actions.mnuWorkspaceWorkbook, u"Open a workbook, or drop its file here"_s),
                     shortcutWithEffect(*m_actions.mnuWorkspacePaste, u"Paste what is selected in it"_s)},
                    [] { return gWorkspace && gWorkspace->NumPanels() == 0; });
}

} // namespace lumivane
