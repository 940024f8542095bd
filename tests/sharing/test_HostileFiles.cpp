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
using enum Outcome;

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

QByteArray manyTables(int count)
{
    QByteArray sql;
    for (int i = 0; i < count; ++i)
        sql += "CREATE TABLE more" + QByteArray::number(i) + " (a);";
    return sql;
}

const HostileRow crafted[] = {
    {"trigger", "CREATE TRIGGER t AFTER INSERT ON LvnSavedWorkspace BEGIN DELETE FROM LvnSystem; END", NotOpened,
     u"holds a trigger (t)"_s},
    {"view in place of a table",
     "ALTER TABLE LvnSavedWorkspace RENAME TO x; CREATE VIEW LvnSavedWorkspace AS SELECT * FROM x", NotOpened,
     u"holds a view"_s},
    {"virtual table", "CREATE VIRTUAL TABLE v USING fts5(a)", NotOpened, u"holds a virtual table"_s},
    {"generated column", "CREATE TABLE g (a, b GENERATED ALWAYS AS (a + 1))", NotOpened, u"with expressions"_s},
    {"generated column in short", "CREATE TABLE g (a, b AS (a + 1))", NotOpened, u"with expressions"_s},
    {"hundreds of tables", manyTables(200), NotOpened, u"holds more than 200 tables"_s},
    {"check with work to do", "CREATE TABLE g (a CHECK (a > 0))", NotOpened, u"a table with expressions"_s},
    {"index on an expression", "CREATE INDEX i ON LvnSavedPanel(upper(Caption))", NotOpened, u"an index on"_s},
    {"partial index", "CREATE INDEX i ON LvnSavedPanel(Caption) WHERE Caption > 1", NotOpened, u"an index on"_s},
    {"comment in a definition", "CREATE TABLE g (a /* CHECK */)", NotOpened, u"that is not understood"_s},
    {"another password", "PRAGMA user_version = 1", NotOpened, u"with this password"_s},
    {"another application", "PRAGMA application_id = 1", NotOpened, u"is not a project file"_s},
    {"no dashboards", "DROP TABLE LvnSavedWorkspace", NotListed, u"no such table"_s},
    {"no panels", "DROP TABLE LvnSavedPanel", Refused, u"no such table"_s},
    {"no sources", "DROP TABLE LvnPanelSource", Refused, u"no such table"_s},
    {"a column is missing", "ALTER TABLE LvnPanelSource DROP COLUMN Mask", Refused, u"[Mask]"_s},
    {"a plain index", "CREATE INDEX i ON LvnSavedPanel(Caption)", Imported, {}},
    {"a foreign table", "CREATE TABLE more (a)", Imported, {}},
    {"thousands of dashboards", manyRows("INSERT INTO LvnSavedWorkspace(Name) SELECT 'd' || i", 10'001), Refused,
     u"10002 dashboards for this import; at most 10000"_s},
    {"many other paths", manyRows("INSERT INTO LvnAltPaths SELECT i, '/'", 501), Refused, u"501 alternate paths"_s},
    {"more rows than any query gives", manyRows("INSERT INTO LvnSavedWorkspace(Name) SELECT i", 200'001), NotListed,
     u"more than 200000 rows"_s},
    {"an absurd length", "UPDATE LvnSavedPanel SET Caption = replace(hex(zeroblob(200000)), '0', 'x')", Refused,
     u"The panel 1 of the shared file cannot be imported: its column Caption holds a text of 400000"_s},
    {"a length beyond any", "UPDATE LvnSavedPanel SET Caption = hex(zeroblob(1000000))", Refused, u"too long"_s},
    {"bytes for a text", "UPDATE LvnSavedPanel SET SheetName = x'00ff'", Refused, u"holds bytes"_s},
    {"a null character", "UPDATE LvnSavedPanel SET SheetName = 'a' || char(0) || 'b'", Refused, u"cannot be shown"_s},
    {"a place beyond 16 bits", "UPDATE LvnSavedPanel SET \"Top\" = 40000", Refused,
     u"its column Top holds [40000], which is no number that fits. More is possible with Large Sheets=1"_s},
    {"a range below 16 bits", "UPDATE LvnSavedPanel SET ContentType = 'S', PicRange = 'A40000:B40009``'", Refused,
     u"holds [A40000:B40009], which lies beyond the cells that a panel may use. More is possible with Large Sheets"_s},
    {"fixed columns beyond IV", "UPDATE LvnSavedPanel SET ContentType = 'S', PicRange = 'A1:B2``A:IW'", Refused,
     u"holds [A:IW], which"_s},
    {"a place as a text", "UPDATE LvnSavedPanel SET \"Left\" = 'x'", Refused, u"column Left holds [x]"_s},
    {"an endless number", "UPDATE LvnSavedPanel SET Height = 9e999", Refused, u"column Height"_s},
    {"beyond 32 bits", "UPDATE LvnSavedPanel SET SourceID = 4294967297", Refused, u"column SourceID"_s},
    {"a place far to the left", "UPDATE LvnSavedPanel SET \"Left\" = -40000", Refused, u"holds [-40000]"_s},
    {"a place that is empty", "UPDATE LvnSavedPanel SET \"Top\" = NULL", Refused, u"its column Top is empty"_s},
    {"no source at all", "UPDATE LvnSavedPanel SET SourceID = NULL", Refused, u"its column SourceID is empty"_s},
    {"a bad date of a panel", "UPDATE LvnSavedPanel SET LastViewed = 'soon'", Refused, u"holds [soon], which is no"_s},
    {"a bad date of a dashboard", "UPDATE LvnSavedWorkspace SET LastUpdated = '2026-13-01'", Refused, u"no date"_s},
    {"a threshold nowhere", "INSERT INTO LvnpanelThresholds(PanelID, rowOffset) VALUES (1, 1)", Refused,
     u"The threshold of panel 1 of the shared file cannot be imported: its column colOffset is empty"_s},
    {"more panels than numbers", manyRows("INSERT INTO LvnSavedPanel(WorkspaceID) SELECT 1", 33'004), Refused,
     u"33005 panels for this import; at most 32767"_s},
    {"no mask", "UPDATE LvnPanelSource SET Mask = NULL", Refused, u"its column Mask is empty"_s},
    {"mask that climbs", "UPDATE LvnPanelSource SET Mask = '../../etc/*'", Refused,
     u"column Mask holds [../../etc/*], which leads into a folder"_s},
    {"the same in the other world", "UPDATE LvnPanelSource SET Mask = '..\\*.xls'", Refused, u"into a folder"_s},
    {"statement in a name", "UPDATE LvnSavedWorkspace SET Name = 'x''); DELETE FROM LvnSystem; --'", Refused,
     u"column Name holds an apostrophe"_s},
    {"statement in a mask", "UPDATE LvnPanelSource SET Mask = 'x'' OR ''a''=''a'", Refused, u"Mask holds an"_s},
    {"statement in a folder", "UPDATE LvnPanelSource SET DestFolder = '/'' OR 1=1'", Refused, u"DestFolder holds an"_s},
    {"statement in a caption", "UPDATE LvnSavedPanel SET Caption = '''); DROP TABLE LvnSystem'", Imported, {}},
    {"statement in a path",
     "INSERT INTO LvnAltPaths VALUES ('/gone/', '{here}'); UPDATE LvnPanelSource SET FullPath = '/gone/'', Mask = "
     "(SELECT PropertyValue FROM LvnSystem WHERE ''a''=''a'') WHERE ''a''=''a'",
     Imported,
     {}},
    {"statement in a base path",
     "INSERT INTO LvnAltPaths VALUES ('x'' UNION SELECT PropertyValue AS FullPath FROM LvnSystem WHERE PropertyKey "
     "LIKE ''k', '{here}')",
     Imported,
     {}},
    {"open bracket in a base path", "INSERT INTO LvnAltPaths VALUES ('/gone[/', '{here}')", Imported, {}},
    {"base path of stars", "INSERT INTO LvnAltPaths VALUES ('****************************x', '{here}')", Imported, {}},
    {"no alternate path", "INSERT INTO LvnAltPaths VALUES ('/gone/', NULL)", Imported, {}},
    {"two sources of one id",
     "ALTER TABLE LvnPanelSource RENAME TO o; CREATE TABLE LvnPanelSource AS SELECT * FROM o; INSERT INTO "
     "LvnPanelSource SELECT * FROM o; DROP TABLE o",
     Imported,
     {}},
};

/// A file with one dashboard (1), one panel (1) and one source (1), made hostile row by row.
class HostileFiles : public TwoProjects
{
protected:
    HostileFiles()
    {
        addPanel(*mine, addDashboard(*mine, u"Mine"_s), addSource(*mine, {u"/mine/m.xlsx"_s, u"m*.xlsx"_s}));
        mine->Execute(u"INSERT INTO LvnSystem(PropertyKey, PropertyValue) VALUES ('key', 'secret')"_s);
        addPanel(*theirs, addDashboard(*theirs, u"Sales"_s),
                 addSource(*theirs, {u"/gone/s.xlsx"_s, u"s*.xlsx"_s, u"/gone/d/"_s}));
        exportAll();
        original = read(sharedFile);
        untouched = ownRows();
    }

    /// What no import may change: everything but TempSources and rows with ids beyond the project's own.
    QStringList ownRows()
    {
        QStringList all;
        for (const QString& table : {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s})
            all += rowsOf(*mine, u"SELECT * FROM "_s + table + u" WHERE ID = 1"_s);
        for (const QString& table : {u"LvnSystem"_s, u"LvnAltPaths"_s, u"LvnpanelThresholds"_s, u"LvnDrillback"_s})
            all += rowsOf(*mine, u"SELECT * FROM "_s + table);
        return all;
    }

    /// Imports all that these bytes offer, into the project without what came before.
    Outcome importBytes(const QByteArray& bytes, const QByteArray& sql = {})
    {
        write(sharedFile, bytes);
        runRaw(sharedFile, sql);
        user.shown.clear();
        for (const QString& name : {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s})
            mine->Execute(u"DELETE FROM "_s + name + u" WHERE ID > 1"_s);
        DashboardImport import(sharedFile);
        if (!import.Open())
            return NotOpened;
        std::vector<DashboardEntry> entries;
        if (!import.importableDashboards(entries))
            return NotListed;
        if (const auto preview = import.preview(ids(entries)); !preview) {
            user.shown.append(preview.reason());
            return Refused;
        }
        EXPECT_TRUE(import.ImportDashboard(ids(entries)));
        return Imported;
    }

    void expectHarmless(const HostileRow& row, const QByteArray& here)
    {
        SCOPED_TRACE(row.name);
        const Outcome outcome = importBytes(original, QByteArray(row.sql).replace("{here}", here));
        EXPECT_EQ(int(outcome), int(row.outcome));
        EXPECT_TRUE(user.shown.join(u'\n').contains(row.sentence)) << user.shown.join(u'\n').toStdString();
        EXPECT_EQ(ownRows(), untouched);
        EXPECT_EQ(wholeContent(*mine).filter(u"secret"_s).size(), 1) << "a value has travelled";
    }

    QByteArray original;
    QStringList untouched;
};

TEST_F(HostileFiles, ChangeNothingButTheRowsOfTheirDashboards)
{
    const QByteArray here = folder(u"here"_s).toUtf8();
    for (const HostileRow& row : crafted)
        expectHarmless(row, here);
}

TEST_F(HostileFiles, WithDamagedPagesAreRefusedOrReadWhole)
{
    const int pageSize = 4096;
    for (int page = 0; page * pageSize < original.size(); ++page) {
        for (const char filler : {'\0', '\xff', 'A'}) {
            // The mark in the header stays, so that the pages themselves are looked at.
            QByteArray damaged = original;
            damaged.replace(page == 0 ? 100 : page * pageSize, pageSize / 2, QByteArray(pageSize / 2, filler));
            EXPECT_TRUE(importBytes(damaged) == Imported || !user.shown.isEmpty()) << "page " << page;
            EXPECT_EQ(ownRows(), untouched) << "page " << page;
        }
    }
}

TEST_F(HostileFiles, CutShortAreRefused)
{
    for (const qsizetype size : {qsizetype(0), qsizetype(1), qsizetype(99), qsizetype(100), qsizetype(4096),
                                 qsizetype(5000), original.size() - 4096}) {
        EXPECT_EQ(int(importBytes(original.first(size))), int(NotOpened)) << size;
        ASSERT_EQ(user.shown.size(), 2) << "the reason, and what follows from it";
        EXPECT_EQ(user.shown[1], u"Error opening shared file.  Unable to continue importing dashboards."_s);
    }
}

} // namespace
} // namespace lumivane::test
