#pragma once

#include "repository/OtherProgram.h"
#include "repository/ProjectRows.h"
#include "repository/clsPanelSource.h"
#include "services/ProgramFolder.h"
#include "sharing/DashboardExport.h"
#include "sharing/DashboardImport.h"

#include <QDir>

namespace lumivane::test {

/// The projects of an exporting and of an importing user, each in a folder of its own. The importing one is open.
class TwoProjects : public ProgramFolder
{
protected:
    TwoProjects()
    {
        for (const QString& name : {QStringLiteral("theirs"), QStringLiteral("mine")})
            QDir(home.path()).mkdir(name);
        Database::create(theirFile);
        Database::create(myFile);
        theirs = Database::open(theirFile, databaseConnect());
        mine = Database::open(myFile, databaseConnect());
        gDB = mine;
        gSources = std::make_shared<clsSources>();
    }
    ~TwoProjects() override
    {
        gDB.reset();
        gSources.reset();
    }

    static int addDashboard(Database& project, const QString& name)
    {
        project.Execute(QStringLiteral("INSERT INTO LvnSavedWorkspace(Name, Description, LastUpdated, Comments) VALUES "
                                       "('%1', 'About %1', #2026-11-20 08:00:00#, 'kept')")
                            .arg(name));
        return lastId(project, QStringLiteral("LvnSavedWorkspace"));
    }

    struct SourceRow
    {
        QString fullPath;
        QString mask = QStringLiteral("*.xlsx");
        QString destFolder = QStringLiteral("/dest/");
        QString sourceFolder = QStringLiteral("/src/");
        QString updateType = QStringLiteral("folder");
    };
    static int addSource(Database& project, const SourceRow& row)
    {
        project.Execute(
            QStringLiteral("INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, NewestFile, LastUpdated, "
                           "LastChecked, CheckEveryNMin, UpdateType, SourceFolder, OutlookSubject, MacroName) VALUES "
                           "('%1', '%2', '%3', 'newest.xlsx', #2026-11-01 07:00:00#, #2026-11-02 07:00:00#, 15, '%5', "
                           "'%4', 'Subject', 'Macro')")
                .arg(row.fullPath, row.mask, row.destFolder, row.sourceFolder, row.updateType));
        return lastId(project, QStringLiteral("LvnPanelSource"));
    }
    static int addPanel(Database& project, int dashboard, int source, const QString& caption = QStringLiteral("p"))
    {
        project.Execute(
            QStringLiteral("INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, Comments, ContentType, SheetName, "
                           "ViewType, Caption, PicRange, RowHeights, ColWidths, RelativeTo, ContentMatch, IsCustom, "
                           "LastViewed, [Top], [Left], Height, Width, Ndx) VALUES (%1, %2, 'note', 'S', 'Sheet1', "
                           "'C', '%3', '$B$2:$C$9`1:1`A:A', '1:9=15', 'A:C=8.43', 'bottom', 'bottom=$C$9', 'N', "
                           "#1/1/1900#, 15, 30, 3000, 4500, 2)")
                .arg(dashboard)
                .arg(source)
                .arg(caption));
        return lastId(project, QStringLiteral("LvnSavedPanel"));
    }
    static int lastId(Database& project, const QString& table)
    {
        return project.OpenRecordset(QStringLiteral("SELECT MAX(ID) AS ID FROM ") + table)->number32(u"ID");
    }

    static QStringList texts(const std::vector<DashboardEntry>& entries)
    {
        QStringList names;
        for (const DashboardEntry& entry : entries)
            names.append(entry.text);
        return names;
    }
    static std::vector<qint32> ids(const std::vector<DashboardEntry>& entries)
    {
        std::vector<qint32> numbers;
        for (const DashboardEntry& entry : entries)
            numbers.push_back(entry.ID);
        return numbers;
    }
    /// All of their dashboards, in a shared file.
    void exportAll()
    {
        gDB = theirs;
        std::vector<DashboardEntry> all;
        EXPECT_TRUE(exportableDashboards(all) && ExportDashboard(sharedFile, ids(all)));
        gDB = mine;
    }

    /// Everything that a project file holds, table by table.
    static QStringList wholeContent(Database& project)
    {
        QStringList content;
        for (const QString& table : project.TableNames())
            content +=
                QStringList(QStringLiteral("== ") + table) + rowsOf(project, QStringLiteral("SELECT * FROM ") + table);
        return content;
    }

    /// A folder that exists, with its delimiter.
    QString folder(const QString& name)
    {
        QDir(home.path()).mkpath(name);
        return path(name) + u'/';
    }

    const QString theirFile = path(QStringLiteral("theirs/lumivane.lvdu"));
    const QString myFile = path(QStringLiteral("mine/lumivane.lvdu"));
    const QString sharedFile = path(QStringLiteral("shared.lvds"));
    std::shared_ptr<Database> theirs, mine;
};

} // namespace lumivane::test
