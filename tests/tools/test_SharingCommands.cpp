#include "ToolsFixture.h"

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class SharingCommands : public ToolsFixture
{
protected:
    SharingCommands()
    {
        for (const QString& project : {theirs, mine})
            call({u"new-project"_s, project});
        for (const QString& name : {u"Sales"_s, u"Costs"_s})
            sql(theirs, u"INSERT INTO LvnSavedWorkspace(Name) VALUES ('"_s + name + u"')"_s);
        sql(theirs, u"INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, UpdateType, SourceFolder) VALUES "
                    "('/gone/a.xlsx', 'a*.xlsx', '/gone/', 'folder', '/tmp/')"_s);
        sql(theirs, u"INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, [Top], [Left], Height, Width) VALUES "
                    "(1, 1, 0, 0, 3000, 3000)"_s);
    }
    QJsonArray sql(const QString& project, const QString& statement)
    {
        return call({u"sql"_s, project, statement}).array();
    }
    /// The command with its options, run in a program folder of its own.
    Outcome share(const QString& command, const QStringList& words)
    {
        return call(QStringList{command, u"--home"_s, path(u""_s)} + words);
    }

    const QString theirs = path(u"theirs.lvdu"_s), mine = path(u"mine.lvdu"_s), shared = path(u"x.lvds"_s);
};

TEST_F(SharingCommands, CarryADashboardToAnotherProject)
{
    EXPECT_EQ(share(u"export"_s, {theirs, shared, u"sales"_s}).object()[u"dashboards"], QJsonArray{u"Sales"_s});
    const Outcome listed = share(u"import"_s, {u"--list"_s, mine, shared});
    EXPECT_EQ(listed.status, 0) << listed.errors.toStdString();
    EXPECT_EQ(QString::fromUtf8(QJsonDocument(listed.object()).toJson(QJsonDocument::Compact)),
              uR"({"dashboards":["Sales"],"folders":[{"exists":false,"path":"/gone/","read":true,"written":true},)"
              uR"({"exists":true,"path":"/tmp/","read":true,"written":false}],"imported":false,)"
              uR"("missing":["/gone/a.xlsx"],"panels":1,"sources":1})"_s);
    EXPECT_EQ(sql(mine, u"SELECT * FROM LvnSavedWorkspace"_s), QJsonArray());

    EXPECT_TRUE(share(u"import"_s, {mine, shared, u"Sales"_s}).object()[u"imported"].toBool());
    EXPECT_EQ(sql(mine, u"SELECT Name FROM LvnSavedWorkspace"_s), QJsonArray{QJsonObject({{u"Name"_s, u"Sales"_s}})});
    const Outcome again = share(u"import"_s, {mine, shared});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.errors.contains(u"There are no dashboards to import from."_s)) << again.errors.toStdString();
}

TEST_F(SharingCommands, TellWhatIsNotThere)
{
    const Outcome unknown = share(u"export"_s, {theirs, shared, u"Profit"_s});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.errors.contains(u"There is no dashboard \"Profit\" to choose."_s));
    EXPECT_FALSE(QFile::exists(shared));
    const Outcome missing = share(u"import"_s, {mine, shared});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.errors.contains(u"Import file ["_s + shared + u"] does not exist."_s));
    EXPECT_EQ(share(u"export"_s, {theirs}).status, 2);
}

} // namespace
} // namespace lumivane::test
