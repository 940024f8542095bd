#pragma once

#include "host/modUtilsExcel.h"
#include "support/PlainSheet.h"
#include "support/ScriptedPrompts.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane {
class clsPanelSource;
class clsWorkspacePanel;
} // namespace lumivane

namespace lumivane::test {

/// A project of its own for each test: a program folder with an empty project file, workbooks that are files on disk
/// with their cells in memory, and a scripted user.
class ProjectFixture : public testing::Test
{
protected:
    ProjectFixture();
    ~ProjectFixture() override;

    QString programFile(const QString& name) const { return m_folder.filePath(name); }
    QString bookPath(const QString& name) const { return m_folder.filePath(QStringLiteral("books/") + name); }

    /// A workbook with the sheet "Data", filled in B2:C4, and the chart "Trend". Answers its path.
    QString addBook(const QString& name);
    /// The file's time is set to now plus so many seconds: a version that the source has not seen yet.
    void touch(const QString& path, int secondsFromNow);
    /// A panel of the dashboard in memory that shows B2:C4 of sheet "Data".
    std::shared_ptr<clsWorkspacePanel> addPanel(const QString& path, const QString& caption);
    void saveDashboard(const QString& name);

    XLInstance worker();
    bool cached(const clsWorkspacePanel& panel) const;
    /// How often the host opened this workbook.
    qsizetype openings(const QString& path) const;
    /// One value of the project file, as text.
    QString stored(const QString& sql, const QString& column) const;

    QTemporaryDir m_folder;
    PlainLibrary m_library;
    ScriptedPrompts m_user;
};

} // namespace lumivane::test
