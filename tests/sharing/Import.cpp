#include "sharing/DashboardExport.h"
#include "sharing/DashboardImport.h"
#include "sharing/TwoProjects.h"

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class Import : public TwoProjects
{
protected:
    /// All of their dashboards come into the open project through a shared file.
    bool importAll()
    {
        exportAll();
        DashboardImport import(sharedFile);
        return import.Open() && import.ImportDashboard(offered(import));
    }
    void exportAll()
    {
        gDB = theirs;
        std::vector<DashboardEntry> all;
        ASSERT_TRUE(exportableDashboards(all));
        ASSERT_TRUE(ExportDashboard(sharedFile, idsOf(all)));
        gDB = mine;
    }
    static std::vector<qint32> offered(DashboardImport& import)
    {
        std::vector<DashboardEntry> entries;
        EXPECT_TRUE(import.importableDashboards(entries));
        return idsOf(entries);
    }
    static std::vector<qint32> idsOf(const std::vector<DashboardEntry>& entries)
    {
        std::vector<qint32> ids;
        for (const DashboardEntry& entry : entries)
            ids.push_back(entry.ID);
        return ids;
    }
    QStringList offeredNames()
    {
        exportAll();
        DashboardImport import(sharedFile);
        EXPECT_TRUE(import.Open());
        std::vector<DashboardEntry> entries;
        EXPECT_TRUE(import.importableDashboards(entries));
        QStringList names;
        for (const DashboardEntry& entry : entries)
            names.append(entry.text);
        return names;
    }
    void alternate(const QString& base, const QString& path)
    {
        theirs->Execute(u"INSERT INTO LvnAltPaths(BasePath, AltPath) VALUES ('%1', '%2')"_s.arg(base, path));
    }
    QStringList paths() { return rows(*mine, u"SELECT FullPath, DestFolder, SourceFolder FROM TempSources"_s); }
};

TEST_F(Import, BringsRowsWithNewIdsAndSourcesAsNeverChecked)
{
    const int unused = addDashboard(*mine, u"Mine"_s);
    addPanel(*mine, unused, addSource(*mine, {u"/mine.xlsx"_s}), u"mine"_s);
    const int theirDashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, theirDashboard, addSource(*theirs, {u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s, u"/s/"_s}), u"p"_s);

    ASSERT_TRUE(importAll());
    EXPECT_EQ(rows(*mine, u"SELECT * FROM LvnSavedWorkspace WHERE ID > 1"_s),
              QStringList{u"2|Sales|About Sales|2026-11-20 08:00:00|-|-|-|kept|-"_s});
    EXPECT_EQ(rows(*mine, u"SELECT * FROM LvnSavedPanel WHERE ID > 1"_s),
              QStringList{u"2|2|2|note|S|Sheet1|C|p|$B$2:$C$9`1:1`A:A|1:9=15|A:C=8.43|bottom|bottom=$C$9|N|"
                          "1900-01-01 00:00:00|15|30|3000|4500|2"_s});
    EXPECT_EQ(rows(*mine, u"SELECT * FROM LvnPanelSource WHERE ID > 1"_s),
              QStringList{u"2|/a/s.xlsx|s*.xlsx|/d/||1900-01-01 00:00:00|1900-01-01 00:00:00|15|folder|/s/|-|Subject|-"
                          "|-|Macro|-|-"_s});
    EXPECT_EQ(rows(*mine, u"SELECT NewID, ID, FullPath FROM TempSources"_s), QStringList{u"2|1|/a/s.xlsx"_s});
    EXPECT_EQ(user.shown, QStringList{});
}

TEST_F(Import, LeavesThresholdsAndAlternatePathsBehind)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, 0, u"p"_s);
    theirs->Execute(u"INSERT INTO LvnpanelThresholds(PanelID, rowOffset) VALUES (1, 1)"_s);
    theirs->Execute(u"INSERT INTO LvnDrillback(PanelSourceID, Sheet) VALUES (1, 'S')"_s);
    theirs->Execute(u"INSERT INTO LvnSourceDoc(Mask) VALUES ('m')"_s);
    alternate(u"/a/"_s, u"/b/"_s);
    ASSERT_TRUE(importAll());
    for (const QString& table :
         {u"LvnpanelThresholds"_s, u"LvnDrillback"_s, u"LvnSourceDoc"_s, u"LvnAltPaths"_s, u"LvnSystem"_s})
        EXPECT_EQ(rows(*mine, u"SELECT * FROM "_s + table), QStringList{}) << table.toStdString();
}

TEST_F(Import, OffersOnlyNamesThatTheProjectLacks)
{
    for (const QString& name : {u"Zinc"_s, u"Sales"_s, u"Alpha"_s})
        addDashboard(*theirs, name);
    EXPECT_EQ(offeredNames(), (QStringList{u"Alpha"_s, u"Sales"_s, u"Zinc"_s}));
    addDashboard(*mine, u"SALES"_s);
    EXPECT_EQ(offeredNames(), (QStringList{u"Alpha"_s, u"Zinc"_s}));
    mine->Execute(u"INSERT INTO LvnSavedWorkspace(Name) VALUES ('it''s')"_s);
    exportAll();
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open());
    std::vector<DashboardEntry> entries;
    EXPECT_FALSE(import.importableDashboards(entries)) << "an apostrophe in the project breaks the question";
}

TEST_F(Import, FindsASourceByTypeMaskAndFolderAlone)
{
    addSource(*mine, {u"/other.xlsx"_s, u"NOT.xlsx"_s});
    const int known = addSource(*mine, {u"/elsewhere/s.xlsx"_s, u"S*.XLSX"_s, u"/D/"_s, u"/another/"_s});
    addSource(*mine, {u"/second.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s});
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    const auto panelOf = [&](const SourceRow& row) { addPanel(*theirs, dashboard, addSource(*theirs, row), u"p"_s); };
    panelOf({u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s});
    panelOf({u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s, u"/src/"_s, u"inbox"_s}); // another type
    panelOf({u"/a/t.xlsx"_s, u"new.xlsx"_s, u"/d/"_s});
    panelOf({u"/b/t.xlsx"_s, u"new.xlsx"_s, u"/D/"_s}); // the one before in other letters
    ASSERT_TRUE(importAll());
    EXPECT_EQ(rows(*mine, u"SELECT SourceID FROM LvnSavedPanel ORDER BY ID"_s),
              (QStringList{QString::number(known), u"4"_s, u"5"_s, u"5"_s}));
    EXPECT_EQ(rows(*mine, u"SELECT FullPath FROM LvnPanelSource WHERE ID = 5"_s), QStringList{u"/a/t.xlsx"_s});
}

TEST_F(Import, TakesOnlySourcesOfChosenDashboards)
{
    const int sales = addDashboard(*theirs, u"Sales"_s), costs = addDashboard(*theirs, u"Costs"_s);
    addPanel(*theirs, sales, addSource(*theirs, {u"/s.xlsx"_s, u"s"_s}), u"p"_s);
    addPanel(*theirs, costs, addSource(*theirs, {u"/c.xlsx"_s, u"c"_s}), u"q"_s);
    exportAll();
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open() && import.ImportDashboard({costs}));
    EXPECT_EQ(rows(*mine, u"SELECT FullPath FROM LvnPanelSource"_s), QStringList{u"/c.xlsx"_s});
    EXPECT_EQ(rows(*mine, u"SELECT Name FROM LvnSavedWorkspace"_s), QStringList{u"Costs"_s});
    EXPECT_EQ(rows(*mine, u"SELECT Caption FROM LvnSavedPanel"_s), QStringList{u"q"_s});

    // What the last import left is replaced.
    ASSERT_TRUE(import.ImportDashboard({sales}));
    EXPECT_EQ(rows(*mine, u"SELECT FullPath FROM TempSources"_s), QStringList{u"/s.xlsx"_s});
}

TEST_F(Import, WritesAPanelWithoutAKnownSourceWithNone)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, 77, u"p"_s);
    ASSERT_TRUE(importAll());
    EXPECT_EQ(rows(*mine, u"SELECT SourceID FROM LvnSavedPanel"_s), QStringList{u"0"_s});
}

TEST_F(Import, GoesOnBehindADashboardWhosePanelsFail)
{
    const int first = addDashboard(*theirs, u"First"_s), second = addDashboard(*theirs, u"Second"_s);
    addPanel(*theirs, first, 0, u"good"_s);
    theirs->Execute(u"INSERT INTO LvnSavedPanel(WorkspaceID, Caption) VALUES (%1, 'no source at all')"_s.arg(first));
    addPanel(*theirs, second, 0, u"other"_s);
    ASSERT_TRUE(importAll());
    EXPECT_EQ(rows(*mine, u"SELECT WorkspaceID, Caption FROM LvnSavedPanel ORDER BY ID"_s),
              (QStringList{u"1|good"_s, u"2|other"_s}));
    EXPECT_TRUE(logged().contains("ImportPanels"));
}

TEST_F(Import, EndsWithoutAWordAtASourceWithoutAMask)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/s.xlsx"_s}), u"p"_s);
    theirs->Execute(u"UPDATE LvnPanelSource SET Mask = NULL"_s);
    EXPECT_FALSE(importAll());
    EXPECT_EQ(user.shown, QStringList{});
    EXPECT_TRUE(logged().contains("frmImport.ImportSources"));
    EXPECT_EQ(rows(*mine, u"SELECT * FROM LvnSavedWorkspace"_s), QStringList{});
}

TEST_F(Import, TellsWhenTheFileIsMissingOrNone)
{
    EXPECT_FALSE(DashboardImport(sharedFile).Open());
    EXPECT_EQ(user.shown, QStringList{u"Import file ["_s + sharedFile + u"] does not exist."_s});
    user.shown.clear();
    write(sharedFile, QByteArray(5000, 'x'));
    EXPECT_FALSE(DashboardImport(sharedFile).Open());
    EXPECT_EQ(user.shown.size(), 2) << "the reason, and what follows from it";
    EXPECT_TRUE(user.shown.first().contains(u"is not a project file"_s));
    EXPECT_EQ(user.shown.last(), u"Error opening shared file.  Unable to continue importing dashboards."_s);
}

TEST_F(Import, FailsWhenTheWorkTableCannotBeMade)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/s.xlsx"_s}), u"p"_s);
    exportAll();
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open());
    runRaw(sharedFile, "ALTER TABLE LvnPanelSource ADD COLUMN NewID INTEGER");
    EXPECT_FALSE(import.ImportDashboard({dashboard}));
    EXPECT_EQ(user.shown, QStringList{u"Error accessing source panels.  Unable to continue importing dashboards."_s});
}

TEST_F(Import, DoesNotFindAWorkTableThatIsTheFirstOfAll)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/s.xlsx"_s}), u"p"_s);
    mine->Close();
    runRaw(myFile, "CREATE TABLE TempSources (ID); PRAGMA writable_schema = 1;"
                   "UPDATE sqlite_schema SET rowid = 0 WHERE name = 'TempSources'");
    gDB = mine = Database::open(myFile, databaseConnect());
    ASSERT_EQ(mine->TableNames().first(), u"TempSources"_s);
    EXPECT_FALSE(importAll());
    EXPECT_EQ(user.shown, QStringList{u"Error accessing source panels.  Unable to continue importing dashboards."_s});
    EXPECT_TRUE(logged().contains("[TempSources] is there already"));
}

// ---- paths ----

struct PathRow
{
    const char* name;
    QStringList fullPaths;
    QList<std::pair<QString, QString>> alternates; ///< "{x}" stands for a folder that exists here
    QStringList expected;
};

TEST_F(Import, RewritesPathsOfOneColumn)
{
    const QString here = folder(u"here"_s), sub = folder(u"sub"_s);
    const PathRow table[] = {
        {"no alternate", {u"/gone/a.xlsx"_s}, {}, {u"/gone/a.xlsx"_s}},
        {"below a missing base", {u"/gone/x/a.xlsx"_s}, {{u"/gone/"_s, here}}, {here + u"x/a.xlsx"_s}},
        {"alternate missing here", {u"/gone/a.xlsx"_s}, {{u"/gone/"_s, u"/nowhere/"_s}}, {u"/gone/a.xlsx"_s}},
        {"base exists here", {sub + u"a.xlsx"_s}, {{sub, here}}, {sub + u"a.xlsx"_s}},
        {"two sources become the first's",
         {u"/gone/a.xlsx"_s, u"/gone/b.xlsx"_s},
         {{u"/gone/"_s, here}},
         {here + u"a.xlsx"_s, here + u"a.xlsx"_s}},
        {"others stay",
         {u"/gone/a.xlsx"_s, u"/kept/b.xlsx"_s},
         {{u"/gone/"_s, here}},
         {here + u"a.xlsx"_s, u"/kept/b.xlsx"_s}},
        {"longest base first",
         {u"/gone/sub/a.xlsx"_s, u"/gone/b.xlsx"_s},
         {{u"/gone/"_s, here}, {u"/gone/sub/"_s, sub}},
         {sub + u"a.xlsx"_s, here + u"b.xlsx"_s}},
        {"letters of another case are found and not replaced",
         {u"/GONE/a.xlsx"_s, u"/gone/b.xlsx"_s},
         {{u"/gone/"_s, here}},
         {here + u"b.xlsx"_s, here + u"b.xlsx"_s}},
        {"all in another case end as the last",
         {u"/GONE/a.xlsx"_s, u"/Gone/b.xlsx"_s},
         {{u"/gone/"_s, here}},
         {u"/Gone/b.xlsx"_s, u"/Gone/b.xlsx"_s}},
        {"the other world", {u"C:\\data\\x\\a.xlsx"_s}, {{u"C:\\data\\"_s, here}}, {here + u"x/a.xlsx"_s}},
        {"the other world's delimiter behind the alternate",
         {u"C:\\data\\a.xlsx"_s},
         {{u"C:\\data\\"_s, QString(here.chopped(1) + u'\\')}},
         {here + u"a.xlsx"_s}},
        {"an apostrophe in the base", {u"/it''s/a.xlsx"_s}, {{u"/it''s/"_s, here}}, {u"/it's/a.xlsx"_s}},
        {"an apostrophe in a path is passed over",
         {u"/gone/it''s.xlsx"_s, u"/gone/b.xlsx"_s},
         {{u"/gone/"_s, here}},
         {here + u"b.xlsx"_s, here + u"b.xlsx"_s}},
        {"an empty base takes the first's", {u"/x/a"_s, u"/y/b"_s}, {{u""_s, here}}, {u"/y/b"_s, u"/y/b"_s}},
    };
    for (const PathRow& row : table) {
        for (const QString& name :
             {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s, u"LvnAltPaths"_s}) {
            theirs->Execute(u"DELETE FROM "_s + name);
            mine->Execute(u"DELETE FROM "_s + name);
        }
        const int dashboard = addDashboard(*theirs, u"Sales"_s);
        for (const QString& path : row.fullPaths)
            addPanel(*theirs, dashboard, addSource(*theirs, {path, u"m%1"_s.arg(path.size())}), u"p"_s);
        for (const auto& [base, path] : row.alternates)
            alternate(base, path);
        ASSERT_TRUE(importAll()) << row.name;
        EXPECT_EQ(rows(*mine, u"SELECT FullPath FROM TempSources"_s), row.expected) << row.name;
    }
}

TEST_F(Import, RewritesEachColumnForItself)
{
    const QString here = folder(u"here"_s);
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/gone/a.xlsx"_s, u"m"_s, u"/gone/d/"_s, u"/kept/"_s}), u"p"_s);
    alternate(u"/gone/"_s, here);
    ASSERT_TRUE(importAll());
    EXPECT_EQ(paths(), QStringList{here + u"a.xlsx|"_s + here + u"d/|/kept/"_s});
    EXPECT_EQ(rows(*mine, u"SELECT DestFolder FROM LvnPanelSource"_s), QStringList{here + u"d/"_s});
}

// ---- the look ahead ----

TEST_F(Import, ShowsFoldersAsRewrittenAndTouchesNothing)
{
    const QString here = folder(u"here"_s);
    folder(u"here/in"_s);
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/gone/x/../a.xlsx"_s, u"m"_s, u"/gone/work/"_s, u"/gone/in"_s}),
             u"p"_s);
    addPanel(*theirs, dashboard,
             addSource(*theirs, {u"C:\\x\\a.xlsx"_s, u"m"_s, u"/tmp/../etc/"_s, QString(), u"default"_s}), u"q"_s);
    alternate(u"/gone/"_s, here);
    exportAll();
    const QStringList before = wholeContent(*mine);
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open());
    const auto preview = import.preview({dashboard});
    ASSERT_TRUE(preview) << preview.reason().toStdString();
    QStringList lines;
    for (const ImportFolder& f : preview.value().folders)
        lines.append(f.path + (f.isRead ? u" read"_s : QString()) + (f.isWritten ? u" written"_s : QString()) +
                     (f.exists ? QString() : u" missing"_s));
    EXPECT_EQ(lines, (QStringList{u"/etc/ read"_s, here + u" read"_s, here + u"in/ read"_s,
                                  here + u"work/ read written missing"_s, u"C:\\x\\ read missing"_s}));
    EXPECT_EQ(preview.value().panels, 2);
    EXPECT_EQ(preview.value().sources, 2);
    EXPECT_EQ(wholeContent(*mine), before);
}

TEST_F(Import, ToldOfProgressWhileManyPanelsAreWritten)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    {
        const Database::Bulk bulk(*theirs);
        for (int i = 0; i < 450; ++i)
            addPanel(*theirs, dashboard, 0, u"p"_s);
    }
    exportAll();
    QStringList told;
    DashboardImport import(sharedFile, [&](qint64 done, qint64 total) {
        told.append(u"%1/%2"_s.arg(done).arg(total));
        return false;
    });
    ASSERT_TRUE(import.Open());
    const auto preview = import.preview({dashboard});
    ASSERT_FALSE(preview);
    EXPECT_EQ(preview.reason(), u"The import was cancelled."_s);
    EXPECT_TRUE(import.ImportDashboard({dashboard})) << "half an import would stay";
    EXPECT_EQ(told, (QStringList{u"200/450"_s, u"200/450"_s, u"400/450"_s}));
}

} // namespace
} // namespace lumivane::test
