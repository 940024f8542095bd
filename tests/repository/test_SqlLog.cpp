#include "repository/ProjectFile.h"
#include "repository/modUtilsSQL.h"

namespace lumivane::test {

using namespace Qt::StringLiterals;

using SqlLog = ProjectFile;

TEST_F(SqlLog, AFailedStatementIsLoggedWithCallerAndText)
{
    EXPECT_FALSE(SQL_Execute(db, u"DELETE FROM t WHERE"_s, false, u"Mod"_s, u"Proc"_s));
    EXPECT_TRUE(logged().startsWith("2026-11-24 10:30:05 Error on [UtilsSQL.SQL_Execute]\r\nError: ("));
    EXPECT_TRUE(logged().contains(") \r\nCaller: Mod.Proc\r\n")) << logged().constData();
    EXPECT_TRUE(logged().endsWith("\r\nSQL: DELETE FROM t WHERE\r\n"));
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(SqlLog, TheCallerMayBeLeftOut)
{
    std::shared_ptr<Recordset> rs = db->OpenRecordset(u"SELECT * FROM LvnSystem"_s);
    const auto before = rs;
    EXPECT_FALSE(SQL_OpenRecordset(db, rs, u"nonsense"_s, true, u"Mod"_s, QString()));
    EXPECT_TRUE(logged().contains("(3075) \r\nCaller: Mod\r\nThe statement"));
    EXPECT_EQ(rs, before) << "left as it was";
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_TRUE(user.shown[0].startsWith(u"Error Source:  UtilsSQL.SQL_OpenRecordset\r\nNumber:  3075\r\n"_s));
    InitFileLog(GetLogFile(), true);
    EXPECT_FALSE(SQL_Execute(nullptr, u"DELETE FROM LvnSystem"_s, false, QString(), u"Proc"_s));
    EXPECT_TRUE(logged().contains("Error: (91) No project file is open.\r\nSQL: DELETE FROM LvnSystem\r\n"))
        << logged().constData();
}

TEST_F(SqlLog, OpeningNamesTheFile)
{
    std::shared_ptr<Database> other = db;
    const QString none = path(u"none.lvdu"_s);
    EXPECT_FALSE(SQL_OpenDatabase(other, none, databaseConnect(), false, u"Utils"_s, u"InitRepository"_s));
    EXPECT_EQ(other, db);
    EXPECT_TRUE(logged().contains(
        u"Error on [UtilsSQL.SQL_OpenDatabase]\r\nError: (3024) \r\nCaller: Utils.InitRepository\r\n[%1] [%1] does not exist."_s
            .arg(none)
            .toUtf8()))
        << logged().constData();
    EXPECT_TRUE(user.shown.isEmpty());
}

} // namespace lumivane::test
