#include "repository/Database.h"
#include "sharing/SourceTransfer.h"
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
        return import.Open() && import.ImportDashboard(ids(offered(import)));
    }
    static std::vector<DashboardEntry> offered(DashboardImport& import)
    {
        std::vector<DashboardEntry> entries;
        EXPECT_TRUE(import.importableDashboards(entries));
        return entries;
    }
    QStringList offeredNames()
    {
        exportAll();
        DashboardImport import(sharedFile);
        EXPECT_TRUE(import.Open());
        return texts(offered(import));
    }
    void alternate(const QString& base, const QString& path)
    {
        theirs->Execute(u"INSERT INTO LvnAltPaths(BasePath, AltPath) VALUES ('%1', '%2')"_s.arg(base, path));
    }
};

TEST_F(Import, BringsRowsWithNewIdsAndSourcesAsNeverChecked)
{
    addPanel(*mine, addDashboard(*mine, u"Mine"_s), addSource(*mine, {u"/mine.xlsx"_s}), u"mine"_s);
    const int theirDashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, theirDashboard, addSource(*theirs, {u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s, u"/s/"_s}));
    for (const QString& panel : {u"1"_s, u"9"_s})
        theirs->Execute(u"INSERT INTO LvnpanelThresholds VALUES (%1, 3, 2, '>1', 'color@B2', '', '')"_s.arg(panel));
    theirs->Execute(u"INSERT INTO LvnDrillback(PanelSourceID, Sheet) VALUES (1, 'S')"_s);
    theirs->Execute(u"INSERT INTO LvnSourceDoc(Mask) VALUES ('m')"_s);
    alternate(u"/a/"_s, u"/nowhere/"_s);

    ASSERT_TRUE(importAll());
    EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnSavedWorkspace WHERE ID > 1"_s),
              QStringList{u"2|Sales|About Sales|2026-11-20 08:00:00|-|-|-|kept|-"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnSavedPanel WHERE ID > 1"_s),
              QStringList{u"2|2|2|note|S|Sheet1|C|p|$B$2:$C$9`1:1`A:A|1:9=15|A:C=8.43|bottom|bottom=$C$9|N|"
                          "1900-01-01 00:00:00|15|30|3000|4500|2"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnPanelSource WHERE ID > 1"_s),
              QStringList{u"2|/a/s.xlsx|s*.xlsx|/d/||1900-01-01 00:00:00|1900-01-01 00:00:00|15|folder|/s/|-|Subject|-"
                          "|-|Macro|-|-"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT NewID, ID, FullPath FROM TempSources"_s), QStringList{u"2|1|/a/s.xlsx"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnpanelThresholds"_s), QStringList{u"2|3|2|>1|color@B2||"_s});
    for (const QString& table : {u"LvnDrillback"_s, u"LvnSourceDoc"_s, u"LvnAltPaths"_s, u"LvnSystem"_s})
        EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM "_s + table), QStringList{}) << table.toStdString() << " stays behind";
    EXPECT_EQ(user.shown, QStringList{});
}

TEST_F(Import, OffersOnlyNamesThatTheProjectLacks)
{
    for (const QString& name : {u"Zinc"_s, u"Sales"_s, u"Alpha"_s})
        addDashboard(*theirs, name);
    EXPECT_EQ(offeredNames(), (QStringList{u"Alpha"_s, u"Sales"_s, u"Zinc"_s}));
    addDashboard(*mine, u"SALES"_s);
    EXPECT_EQ(offeredNames(), (QStringList{u"Alpha"_s, u"Zinc"_s}));
    addDashboard(*mine, u"it''s"_s);
    DashboardImport import(sharedFile);
    std::vector<DashboardEntry> entries;
    EXPECT_FALSE(import.Open() && import.importableDashboards(entries))
        << "an apostrophe in the project breaks the question";
}

TEST_F(Import, FindsASourceByTypeMaskAndFolderAlone)
{
    addSource(*mine, {u"/other.xlsx"_s, u"NOT.xlsx"_s});
    const int known = addSource(*mine, {u"/elsewhere/s.xlsx"_s, u"S*.XLSX"_s, u"/D/"_s, u"/another/"_s});
    addSource(*mine, {u"/second.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s});
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    for (const SourceRow& row : {SourceRow{u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s},
                                 {u"/a/s.xlsx"_s, u"s*.xlsx"_s, u"/d/"_s, u"/src/"_s, u"inbox"_s}, // another type
                                 {u"/a/t.xlsx"_s, u"new.xlsx"_s, u"/d/"_s},
                                 {u"/b/t.xlsx"_s, u"new.xlsx"_s, u"/D/"_s}}) // the one before in other letters
        addPanel(*theirs, dashboard, addSource(*theirs, row));
    ASSERT_TRUE(importAll());
    EXPECT_EQ(rowsOf(*mine, u"SELECT ID, SourceID FROM LvnSavedPanel ORDER BY ID"_s),
              (QStringList{u"1|%1"_s.arg(known), u"2|4"_s, u"3|5"_s, u"4|5"_s}));
    EXPECT_EQ(rowsOf(*mine, u"SELECT FullPath FROM LvnPanelSource WHERE ID = 5"_s), QStringList{u"/a/t.xlsx"_s});
}

TEST_F(Import, TakesOnlySourcesOfChosenDashboards)
{
    const int sales = addDashboard(*theirs, u"Sales"_s), costs = addDashboard(*theirs, u"Costs"_s);
    addPanel(*theirs, sales, addSource(*theirs, {u"/s.xlsx"_s, u"s"_s}));
    addPanel(*theirs, costs, addSource(*theirs, {u"/c.xlsx"_s, u"c"_s}), u"q"_s);
    exportAll();
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open() && import.ImportDashboard({costs}));
    EXPECT_EQ(rowsOf(*mine, u"SELECT FullPath FROM LvnPanelSource"_s), QStringList{u"/c.xlsx"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT Name FROM LvnSavedWorkspace"_s), QStringList{u"Costs"_s});
    EXPECT_EQ(rowsOf(*mine, u"SELECT Caption FROM LvnSavedPanel"_s), QStringList{u"q"_s});

    ASSERT_TRUE(import.ImportDashboard({sales}));
    EXPECT_EQ(rowsOf(*mine, u"SELECT FullPath FROM TempSources"_s), QStringList{u"/s.xlsx"_s}) << "made anew";
}

TEST_F(Import, GoesOnBehindPanelsThatFailOrHaveNoSource)
{
    const int first = addDashboard(*theirs, u"First"_s), second = addDashboard(*theirs, u"Second"_s);
    addPanel(*theirs, first, 77, u"source unknown"_s);
    theirs->Execute(u"INSERT INTO LvnSavedPanel(WorkspaceID, Caption) VALUES (%1, 'no source at all')"_s.arg(first));
    addPanel(*theirs, second, 0, u"other"_s);
    ASSERT_TRUE(importAll());
    EXPECT_EQ(rowsOf(*mine, u"SELECT WorkspaceID, SourceID, Caption FROM LvnSavedPanel ORDER BY ID"_s),
              (QStringList{u"1|0|source unknown"_s, u"2|0|other"_s}));
    EXPECT_TRUE(logged().contains("ImportPanels"));
}

TEST_F(Import, DoesNotFindAWorkTableThatIsTheFirstOfAll)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/s.xlsx"_s}));
    mine->Close();
    runRaw(myFile, "CREATE TABLE TempSources (ID); PRAGMA writable_schema = 1;"
                   "UPDATE sqlite_schema SET rowid = 0 WHERE name = 'TempSources'");
    gDB = mine = Database::open(myFile, databaseConnect());
    ASSERT_EQ(mine->TableNames().first(), u"TempSources"_s);
    EXPECT_FALSE(importAll());
    EXPECT_EQ(user.shown, QStringList{u"Error accessing source panels.  Unable to continue importing dashboards."_s});
    EXPECT_TRUE(logged().contains("[TempSources] is there already"));
    mine->Close();
    runRaw(myFile, "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET rowid = -1 WHERE name = 'LvnSavedPanel'");
    gDB = mine = Database::open(myFile, databaseConnect());
    ASSERT_EQ(mine->TableNames()[1], u"TempSources"_s);
    EXPECT_TRUE(importAll()) << "where it is the second, it is found";
}

// ---- paths ----

struct PathRow
{
    const char* name;
    QString paths, alternates, expected; ///< {h} and {s} are folders that exist here, {H} is the first without its end
};

TEST_F(Import, RewritesPathsOfOneColumn)
{
    const QString here = folder(u"here"_s), sub = folder(u"sub"_s);
    const PathRow table[] = {
        {"no alternate", u"/gone/a"_s, {}, u"/gone/a"_s},
        {"below a missing base", u"/gone/x/a"_s, u"/gone/>{h}"_s, u"{h}x/a"_s},
        {"alternate missing here", u"/gone/a"_s, u"/gone/>/nowhere/"_s, u"/gone/a"_s},
        {"base exists here", u"{s}a"_s, u"{s}>{h}"_s, u"{s}a"_s},
        {"two become the first's", u"/gone/a|/gone/b"_s, u"/gone/>{h}"_s, u"{h}a|{h}a"_s},
        {"others stay", u"/gone/a|/kept/b"_s, u"/gone/>{h}"_s, u"{h}a|/kept/b"_s},
        {"longest base first", u"/gone/sub/a|/gone/b"_s, u"/gone/>{h}|/gone/sub/>{s}"_s, u"{s}a|{h}b"_s},
        {"another case is found, not replaced", u"/GONE/a|/gone/b"_s, u"/gone/>{h}"_s, u"{h}b|{h}b"_s},
        {"all in another case end as the last", u"/GONE/a|/Gone/b"_s, u"/gone/>{h}"_s, u"/Gone/b|/Gone/b"_s},
        {"the other world", u"C:\\data\\x\\a"_s, u"C:\\data\\>{h}"_s, u"{h}x/a"_s},
        {"the other world's end on the alternate", u"C:\\data\\a"_s, u"C:\\data\\>{H}\\"_s, u"{h}a"_s},
        {"an apostrophe in the base", u"/it's/a"_s, u"/it's/>{h}"_s, u"/it's/a"_s},
        {"an apostrophe in a path is passed over", u"/gone/it's|/gone/b"_s, u"/gone/>{h}"_s, u"{h}b|{h}b"_s},
        {"an empty base leads nowhere", u"/x/a|/y/b"_s, u">{h}"_s, u"/y/b|/y/b"_s},
    };
    const auto filled = [&](QString text) {
        return text.replace(u"{h}"_s, here).replace(u"{s}"_s, sub).replace(u"{H}"_s, here.chopped(1));
    };
    const auto literal = [&](const QString& text) { return filled(text).replace(u'\'', u"''"_s); };
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    for (const PathRow& row : table) {
        for (const QString& name : {u"LvnSavedPanel"_s, u"LvnPanelSource"_s, u"LvnAltPaths"_s})
            theirs->Execute(u"DELETE FROM "_s + name);
        for (const QString& path : literal(row.paths).split(u'|'))
            addPanel(*theirs, dashboard, addSource(*theirs, {path}));
        for (const QString& pair : literal(row.alternates).split(u'|', Qt::SkipEmptyParts))
            alternate(pair.section(u'>', 0, 0), pair.section(u'>', 1));
        DelTempSources(mine);
        ASSERT_TRUE(makeTempSources(theirs, mine, QString::number(dashboard)));
        rewritePaths(theirs, mine);
        EXPECT_EQ(rowsOf(*mine, u"SELECT FullPath FROM TempSources"_s), filled(row.expected).split(u'|')) << row.name;
    }
}

// ---- the look ahead ----

TEST_F(Import, ShowsFoldersAsRewrittenAndTouchesNothing)
{
    const QString here = folder(u"here"_s);
    folder(u"here/in"_s);
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/gone/x/../m"_s, u"m"_s, u"/gone/work/"_s, u"/gone/in"_s}));
    addPanel(*theirs, dashboard,
             addSource(*theirs, {u"C:\\x\\a.xlsx"_s, u"m"_s, u"/tmp/../etc/"_s, QString(), u"default"_s}));
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
                                  here + u"work/ read written missing"_s}));
    EXPECT_EQ(preview.value().missingWorkbooks, (QStringList{u"/etc/m"_s, here + u"m"_s}));
    EXPECT_EQ(preview.value().panels, 2);
    EXPECT_EQ(preview.value().sources, 2);
    EXPECT_EQ(wholeContent(*mine), before);
}

TEST_F(Import, IsRefusedWhereTheProjectHasNoNumbersLeft)
{
    const int dashboard = addDashboard(*theirs, u"Sales"_s);
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/a/s.xlsx"_s, u"s*.xlsx"_s}));
    addPanel(*theirs, dashboard, addSource(*theirs, {u"/a/t.xlsx"_s, u"t*.xlsx"_s}));
    addSource(*mine, {u"/a/s.xlsx"_s, u"s*.xlsx"_s});
    exportAll();
    DashboardImport import(sharedFile);
    ASSERT_TRUE(import.Open());
    const auto answer = [&](const QString& table, int lastId) {
        mine->Execute(u"INSERT INTO %1(ID) VALUES (%2)"_s.arg(table).arg(lastId));
        mine->Execute(u"DELETE FROM %1 WHERE ID = %2"_s.arg(table).arg(lastId)); // its number is not given again
        const auto preview = import.preview({dashboard});
        return preview ? QString() : preview.reason().section(u'.', 0, 0);
    };
    EXPECT_EQ(answer(u"LvnSavedPanel"_s, 32765), QString());
    EXPECT_EQ(answer(u"LvnPanelSource"_s, 32766), QString()) << "one is known";
    EXPECT_EQ(answer(u"LvnPanelSource"_s, 32767),
              u"The project can take 0 more sources, and these dashboards bring 1"_s);
    EXPECT_EQ(answer(u"LvnSavedPanel"_s, 32766), u"The project can take 1 more panels, and these dashboards bring 2"_s);
}

} // namespace
} // namespace lumivane::test
