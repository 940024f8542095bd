#include "sharing/DashboardExport.h"
#include "sharing/DashboardImport.h"
#include "sharing/TwoProjects.h"

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

/// How an import of a crafted file must end.
enum class Outcome {
    NotOpened, ///< refused when opened, with a sentence
    NotListed, ///< its dashboards cannot be read
    Refused,   ///< refused before anything is written, with a sentence
    Imported,  ///< harmless: only its own rows arrive
};

struct HostileRow
{
    const char* name;
    QByteArray sql; ///< run on the shared file with other tools
    Outcome outcome;
    QString sentence; ///< a piece of what the user is told
};

QByteArray manyRows(const char* insert, int count)
{
    return QByteArray("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ") +
           QByteArray::number(count) + ") " + insert + " FROM n;";
}

/// A file with one dashboard (1), one panel (1) and one source (1), made hostile row by row.
class HostileFiles : public TwoProjects
{
protected:
    HostileFiles()
    {
        addDashboard(*mine, u"Mine"_s);
        addPanel(*mine, 1, addSource(*mine, {u"/mine/m.xlsx"_s, u"m*.xlsx"_s}), u"mine"_s);
        mine->Execute(u"INSERT INTO LvnSystem(PropertyKey, PropertyValue) VALUES ('key', 'secret')"_s);
        gDB = theirs;
        addDashboard(*theirs, u"Sales"_s);
        addPanel(*theirs, 1, addSource(*theirs, {u"/gone/s.xlsx"_s, u"s*.xlsx"_s, u"/gone/d/"_s}), u"p"_s);
        EXPECT_TRUE(ExportDashboard(sharedFile, {1}));
        gDB = mine;
        untouched = ownRows();
    }

    /// What no import may change, TempSources and the ids beyond the project's own apart.
    QStringList ownRows()
    {
        QStringList all;
        for (const QString& table : {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s})
            all += rows(*mine, u"SELECT * FROM "_s + table + u" WHERE ID = 1"_s);
        for (const QString& table : {u"LvnSystem"_s, u"LvnAltPaths"_s, u"LvnpanelThresholds"_s, u"LvnDrillback"_s})
            all += rows(*mine, u"SELECT * FROM "_s + table);
        return all;
    }

    Outcome importFile()
    {
        DashboardImport import(sharedFile);
        if (!import.Open())
            return Outcome::NotOpened;
        std::vector<DashboardEntry> entries;
        if (!import.importableDashboards(entries))
            return Outcome::NotListed;
        std::vector<qint32> ids;
        for (const DashboardEntry& entry : entries)
            ids.push_back(entry.ID);
        if (const auto preview = import.preview(ids); !preview) {
            user.shown.append(preview.reason());
            return Outcome::Refused;
        }
        EXPECT_TRUE(import.ImportDashboard(ids));
        return Outcome::Imported;
    }

    QStringList untouched;
};

TEST_F(HostileFiles, ChangeNothingButTheRowsOfTheirDashboards)
{
    const QString here = folder(u"here"_s);
    const QByteArray alternate = "INSERT INTO LvnAltPaths VALUES ('%1', '" + here.toUtf8() + "');";
    const auto withBase = [&](const char* base) { return QByteArray(alternate).replace("%1", base); };
    const HostileRow table[] = {
        // Schemas.
        {"trigger on dashboards", "CREATE TRIGGER t AFTER INSERT ON LvnSavedWorkspace BEGIN DELETE FROM LvnSystem; END",
         Outcome::NotOpened, u"holds a trigger (t), which no file of this program does"_s},
        {"view in place of a table",
         "ALTER TABLE LvnSavedWorkspace RENAME TO x; CREATE VIEW LvnSavedWorkspace AS "
         "SELECT * FROM x",
         Outcome::NotOpened, u"holds a view"_s},
        {"view beside the tables", "CREATE VIEW v AS SELECT load_extension('evil')", Outcome::NotOpened,
         u"holds a view"_s},
        {"virtual table", "CREATE VIRTUAL TABLE v USING fts5(a)", Outcome::NotOpened, u"holds a virtual table"_s},
        {"generated column", "CREATE TABLE g (a, b GENERATED ALWAYS AS (hex(zeroblob(100000000))))", Outcome::NotOpened,
         u"a table with expressions"_s},
        {"check with work to do", "CREATE TABLE g (a CHECK (length(randomblob(1000000)) > 0))", Outcome::NotOpened,
         u"a table with expressions"_s},
        {"index on an expression", "CREATE INDEX i ON LvnSavedPanel(upper(Caption))", Outcome::NotOpened,
         u"an index on expressions"_s},
        {"partial index", "CREATE INDEX i ON LvnSavedPanel(Caption) WHERE Caption > 1", Outcome::NotOpened,
         u"an index on expressions"_s},
        {"comment in a definition", "CREATE TABLE g (a /* CHECK */)", Outcome::NotOpened,
         u"a definition that is not understood"_s},
        {"another password", "PRAGMA user_version = 1", Outcome::NotOpened, u"cannot be opened with this password"_s},
        {"another application", "PRAGMA application_id = 1", Outcome::NotOpened, u"is not a project file"_s},
        {"no table of dashboards", "DROP TABLE LvnSavedWorkspace", Outcome::NotListed, u"no such table"_s},
        {"no table of panels", "DROP TABLE LvnSavedPanel", Outcome::Refused, u"no such table"_s},
        {"no table of sources", "DROP TABLE LvnPanelSource", Outcome::Refused, u"no such table"_s},
        {"a column is missing", "ALTER TABLE LvnPanelSource DROP COLUMN Mask", Outcome::Refused, u"[Mask]"_s},
        {"a plain index", "CREATE INDEX i ON LvnSavedPanel(WorkspaceID)", Outcome::Imported, {}},
        {"a foreign table", "CREATE TABLE more (a)", Outcome::Imported, {}},
        // Amounts.
        {"thousands of dashboards", manyRows("INSERT INTO LvnSavedWorkspace(Name) SELECT 'd' || i", 10'001),
         Outcome::Refused, u"10002 dashboards for this import; at most 10000"_s},
        {"thousands of panels", manyRows("INSERT INTO LvnSavedPanel(WorkspaceID, SourceID) SELECT 1, 1", 100'000),
         Outcome::Refused, u"100001 panels"_s},
        {"thousands of alternate paths", manyRows("INSERT INTO LvnAltPaths SELECT '/' || i, '/'", 501),
         Outcome::Refused, u"501 alternate paths"_s},
        {"more rows than any query gives", manyRows("INSERT INTO LvnSavedWorkspace(Name) SELECT i", 200'001),
         Outcome::NotListed, u"more than 200000 rows"_s},
        {"an absurd length", "UPDATE LvnSavedPanel SET Caption = replace(hex(zeroblob(200000)), '0', 'x')",
         Outcome::Refused,
         u"The panel 1 of the shared file cannot be imported: its column Caption holds a text of "
         "400000 characters."_s},
        {"a length beyond the limit", "UPDATE LvnSavedPanel SET Caption = hex(zeroblob(1000000))", Outcome::Refused,
         u"too long"_s},
        // Values.
        {"bytes for a text", "UPDATE LvnSavedPanel SET SheetName = x'00ff'", Outcome::Refused, u"holds bytes"_s},
        {"a null character", "UPDATE LvnSavedPanel SET SheetName = 'a' || char(0) || 'b'", Outcome::Refused,
         u"cannot be shown"_s},
        {"a place beyond 16 bits", "UPDATE LvnSavedPanel SET \"Top\" = 40000", Outcome::Refused,
         u"its column Top holds [40000], which is no number that fits"_s},
        {"a place as a text", "UPDATE LvnSavedPanel SET \"Left\" = 'x'", Outcome::Refused, u"column Left holds [x]"_s},
        {"an endless number", "UPDATE LvnSavedPanel SET Height = 9e999", Outcome::Refused, u"column Height"_s},
        {"a source beyond 32 bits", "UPDATE LvnSavedPanel SET SourceID = 4294967297", Outcome::Refused,
         u"column SourceID"_s},
        {"minutes as a text", "UPDATE LvnPanelSource SET CheckEveryNMin = 'often'", Outcome::Refused,
         u"column CheckEveryNMin holds [often]"_s},
        {"no mask", "UPDATE LvnPanelSource SET Mask = NULL", Outcome::Refused, u"its column Mask is empty"_s},
        // Paths that climb.
        {"mask with a folder", "UPDATE LvnPanelSource SET Mask = '../../etc/*'", Outcome::Refused,
         u"column Mask holds [../../etc/*], which leads into a folder"_s},
        {"mask with a folder of the other world", "UPDATE LvnPanelSource SET Mask = '..\\*.xls'", Outcome::Refused,
         u"which leads into a folder"_s},
        // Statements in texts.
        {"statement in a dashboard's name", "UPDATE LvnSavedWorkspace SET Name = 'x''); DELETE FROM LvnSystem; --'",
         Outcome::Refused, u"column Name holds an apostrophe"_s},
        {"statement in a mask", "UPDATE LvnPanelSource SET Mask = 'x'' OR ''a''=''a'", Outcome::Refused,
         u"column Mask holds an apostrophe"_s},
        {"statement in a folder", "UPDATE LvnPanelSource SET DestFolder = '/'' OR 1=1'", Outcome::Refused,
         u"column DestFolder holds an apostrophe"_s},
        {"statement in a caption",
         "UPDATE LvnSavedPanel SET Caption = '''); DROP TABLE LvnSystem'",
         Outcome::Imported,
         {}},
        {"value of the project asked for in a path",
         withBase("/gone/") + "UPDATE LvnPanelSource SET FullPath = '/gone/'', Mask = (SELECT PropertyValue FROM "
                              "LvnSystem WHERE ''a''=''a'') WHERE ''a''=''a'",
         Outcome::Imported,
         {}},
        {"value of the project asked for in a base path",
         withBase("x'' UNION SELECT PropertyValue AS FullPath FROM LvnSystem WHERE PropertyKey LIKE ''k"),
         Outcome::Imported,
         {}},
        {"base path with an open bracket", withBase("/gone[/"), Outcome::Imported, {}},
        {"base path of stars",
         withBase("*****************************************************************x"),
         Outcome::Imported,
         {}},
        {"no alternate path", "INSERT INTO LvnAltPaths VALUES ('/gone/', NULL)", Outcome::Imported, {}},
        {"two sources of one id",
         "ALTER TABLE LvnPanelSource RENAME TO o; CREATE TABLE LvnPanelSource AS SELECT * FROM o; INSERT INTO "
         "LvnPanelSource SELECT * FROM o; DROP TABLE o",
         Outcome::Imported,
         {}},
    };
    const QByteArray original = read(sharedFile);
    int rowCount = 0;
    for (const HostileRow& row : table) {
        ++rowCount;
        write(sharedFile, original);
        runRaw(sharedFile, row.sql);
        user.shown.clear();
        for (const QString& name : {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s})
            mine->Execute(u"DELETE FROM "_s + name + u" WHERE ID > 1"_s);
        EXPECT_EQ(int(importFile()), int(row.outcome)) << row.name << "\n" << user.shown.join(u'\n').toStdString();
        EXPECT_TRUE(row.sentence.isEmpty() || user.shown.join(u'\n').contains(row.sentence))
            << row.name << " was told as: " << user.shown.join(u'\n').toStdString();
        EXPECT_EQ(ownRows(), untouched) << row.name;
        EXPECT_FALSE(wholeContent(*mine).filter(u"secret"_s).size() > 1) << row.name << ": a value has travelled";
    }
    EXPECT_GE(rowCount, 30);
}

TEST_F(HostileFiles, WithDamagedPagesAreRefusedOrReadWhole)
{
    const QByteArray original = read(sharedFile);
    const int pageSize = 4096;
    for (int page = 0; page * pageSize < original.size(); ++page) {
        for (const char filler : {'\0', '\xff', 'A'}) {
            QByteArray damaged = original;
            // The mark in the header stays, so that the pages themselves are looked at.
            const int start = page == 0 ? 100 : page * pageSize;
            damaged.replace(start, pageSize / 2, QByteArray(pageSize / 2, filler));
            write(sharedFile, damaged);
            user.shown.clear();
            mine->Execute(u"DELETE FROM LvnSavedWorkspace WHERE ID > 1"_s);
            EXPECT_TRUE(importFile() == Outcome::Imported || !user.shown.isEmpty()) << "page " << page;
            EXPECT_EQ(ownRows(), untouched) << "page " << page;
        }
    }
}

TEST_F(HostileFiles, CutShortAreRefused)
{
    const QByteArray original = read(sharedFile);
    for (const qsizetype size : {qsizetype(0), qsizetype(1), qsizetype(99), qsizetype(100), qsizetype(4096),
                                 qsizetype(5000), original.size() - 4096}) {
        write(sharedFile, original.first(size));
        user.shown.clear();
        EXPECT_EQ(int(importFile()), int(Outcome::NotOpened)) << size;
        EXPECT_EQ(user.shown.size(), 2) << size;
    }
}

} // namespace
} // namespace lumivane::test
