#pragma once

#include <QList>
#include <QString>

namespace lumivane {

class frmWorkbook;

// The open workbook windows. Each workbook has a window of its own; a window deletes itself when it is closed.

/// Shows a workbook, in the window that has it already if there is one. Null when it cannot be read; `reason` then
/// tells why, in a sentence that names the file. From now on the windows are the user's instance of the host.
frmWorkbook* openWorkbookWindow(const QString& path, QString* reason = nullptr);
/// A window that offers to open a workbook.
frmWorkbook* openEmptyWorkbookWindow();

/// In the order of their opening.
QList<frmWorkbook*> workbookWindows();
/// The one with a workbook that was used last; null if there is none.
frmWorkbook* activeWorkbookWindow();

/// Makes the windows the user's instance while one with a workbook is open, and the instance that shows workbooks to
/// the user. Otherwise whatever was the user's instance before keeps being it. May be called any number of times.
void offerWorkbookWindows();

} // namespace lumivane
