#pragma once

#include "dashboard/frmWorkspace.h"
#include "panel/ProjectFixture.h"
#include "panel/ShownDialog.h"

#include <QComboBox>

namespace lumivane::test {

/// A main window on a project with stored dashboards.
class DashboardFixture : public ProjectFixture
{
protected:
    /// Stores a dashboard with one panel for each caption, all of workbook `<name>.xlsx`, as the newest one.
    void storeDashboard(const QString& name, const QStringList& captions);
    /// Starts the main window on what was stored, as a run of the program does.
    frmWorkspace& start();
    frmWorkspace& window() { return *m_window; }
    QComboBox& list() { return *m_window->menus().cmbWorkspaces; }
    QStringList listed() const;
    QStringList panelCaptions() const; ///< of the windows, in the order they were made
    /// Ends dialogs of names and choices.
    void answerName(const QString& name);
    void makeDirty();
    frmPanel& panel(const QString& caption); ///< whatever marks its window's title has
    frmPanel& activate(const QString& caption);
    /// The spreadsheet that shows workbooks to the user, in place of the windows that the program has for it.
    std::shared_ptr<PlainApplication> showWorkbooks();
    /// A file in the program folder. Answers its path.
    QString writeFile(const QString& name, const QByteArray& content);
    QStringList rows(const QString& sql) const;
    qsizetype workersStarted() const { return m_library.events.count(QStringLiteral("start")); }
    int rowCount(const QString& table, const QString& where = QStringLiteral("1 = 1")) const;

    std::unique_ptr<frmWorkspace> m_window;
    QString m_tip; ///< shown by the last start
    int m_stored = 0;
};

} // namespace lumivane::test
