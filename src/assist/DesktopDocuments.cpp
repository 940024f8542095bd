#include "assist/DesktopDocuments.h"

#include "platform/RuntimeError.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void openOnDesktop(const QUrl& document)
{
    if (QDesktopServices::openUrl(document))
        return;
    const QString name =
        document.isLocalFile() ? QDir::toNativeSeparators(document.toLocalFile()) : document.toString();
    throw RuntimeError(RuntimeError::FileNotFound, u"This desktop has no program that opens ["_s + name + u"]."_s);
}

} // namespace

DocumentViewer desktopDocuments()
{
    DocumentViewer viewer;
    // The desktop's readers of help files take no page to begin at.
    viewer.showHelpPage = [](const QString& helpFile, qint32) { openOnDesktop(QUrl::fromLocalFile(helpFile)); };
    viewer.open = openOnDesktop;
    return viewer;
}

} // namespace lumivane
