#include "repository/Connection.h"
#include "repository/ProjectFile.h"
#include "support/TextTable.h"

#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumivane {

struct DatabaseProbe
{
    static void setStatementLimit(Database& database, std::chrono::milliseconds limit)
    {
        database.m_connection->statementLimit = limit;
    }
};

namespace test {

using namespace Qt::StringLiterals;

class DatabaseFiles : public ProjectFile
{
protected:
    QString openFailure(const QString& fileName, const QString& connect = databaseConnect(),
                        Database::Trust trust = Database::Trust::Own)
    {
        return failure([&] { Database::open(fileName, connect, trust); });
    }

    QStringList filesHere() const { return QDir(home.path()).entryList(QDir::Files | QDir::Hidden); }

    /// Runs work in a child process and gives its exit status; -1 when it was killed.
    template <class Work>
    static int inChild(Work work)
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(work() ? 0 : 1);
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(DatabaseFiles, WhatIsNoProjectIsRefused)
{
    write(path(u"empty.lvdu"_s), "");
    write(path(u"zip.lvdu"_s), "PK\x03\x04" + QByteArray(4000, 'x'));
    runRaw(path(u"foreign.lvdu"_s), "CREATE TABLE LvnSavedWorkspace (ID INTEGER)");
    Database::create(path(u"cut.lvdu"_s));
    QFile(path(u"cut.lvdu"_s)).resize(5000);
    for (const auto& [name, sentence] : textPairs(R"(
        none.lvdu → none.lvdu] does not exist.
        empty.lvdu → empty.lvdu] is not a project file.
        zip.lvdu → zip.lvdu] is not a project file.
        foreign.lvdu → foreign.lvdu] is not a project file.
        cut.lvdu → cut.lvdu] is damaged and cannot be used further. Go back to a copy of it.)")) {
        const QString told = openFailure(path(name));
        EXPECT_TRUE(told.endsWith(sentence)) << told;
    }
    EXPECT_TRUE(openFailure(home.path()).endsWith(u"does not exist."_s)) << "a folder";
    EXPECT_TRUE(openFailure(file, u"MS Access;pwd=other"_s).endsWith(u"cannot be opened with this password."_s));
    EXPECT_EQ(openFailure(file), QString());
    EXPECT_FALSE(QFileInfo::exists(path(u"none.lvdu"_s))) << "opening makes no file";
}

TEST_F(DatabaseFiles, DamageInsideIsFoundWhenTheFileIsOpened)
{
    for (int i = 0; i < 200; ++i)
        db->Execute(u"INSERT INTO LvnSavedWorkspace (Name, Description) VALUES ('n','%1')"_s.arg(QString(200, u'x')));
    db->Close();
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
    damaged.seek(damaged.size() - 6 * 4096);
    damaged.write(QByteArray(4096, '\xAA'));
    damaged.close();
    for (const auto trust : {Database::Trust::Own, Database::Trust::Stranger})
        EXPECT_TRUE(openFailure(file, databaseConnect(), trust).contains(u"is damaged"_s));
}

TEST_F(DatabaseFiles, CreateMakesTheWholeFileOrNone)
{
    EXPECT_TRUE(failure([&] { Database::create(file); }).contains(u"exists already"_s));
    EXPECT_THROW(Database::create(path(u"none/x.lvdu"_s)), RuntimeError);
    EXPECT_EQ(filesHere(), QStringList({u"lumivane.log"_s, u"lumivane.lvdu"_s}));
    Database::create(path(u"errors.mdb"_s), Database::Content::ErrorLog);
    const auto errors = Database::open(path(u"errors.mdb"_s), databaseConnect());
    EXPECT_EQ(errors->OpenRecordset(u"SELECT COUNT(*) AS n FROM TlyS_ErrorLogs"_s)->number(u"n"), 0);
}

TEST_F(DatabaseFiles, TextsCompareWithoutCase)
{
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name, Description) VALUES ('Sales','a')"_s);
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name, Description) VALUES ('costs','b')"_s);
    EXPECT_EQ(rows(u"SELECT DESCRIPTION FROM lvnSavedWorkspace WHERE NAME = 'SALES'"_s), QStringList(u"a"_s));
    EXPECT_EQ(rows(u"SELECT Name FROM LvnSavedWorkspace WHERE NOT Name IN ('SALES')"_s), QStringList(u"costs"_s));
    EXPECT_EQ(rows(u"SELECT Name FROM LvnSavedWorkspace ORDER BY Name"_s), QStringList({u"costs"_s, u"Sales"_s}));
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('Übersicht')"_s);
    EXPECT_EQ(rows(u"SELECT Name FROM LvnSavedWorkspace WHERE Name = 'ÜBERSICHT'"_s), QStringList(u"Übersicht"_s));
}

TEST_F(DatabaseFiles, FunctionsOfTheDialect)
{
    db->Execute(u"INSERT INTO LvnAltPaths (BasePath, AltPath) VALUES ('C:\\Größe', NULL)"_s);
    for (const auto& [expression, value] : textPairs(R"(
        Len(BasePath) → 8 | Len(AltPath) → - | Left(BasePath, 2) → C: | Left(BasePath, 99) → C:\Größe
        Right(BasePath, 2) → ße | Mid(BasePath, 4) → Größe | Mid(BasePath, 4, 2) → Gr | UCase(BasePath) → C:\GRÖSSE
        LCase('ÄB') → äb | Nz(AltPath) → | Nz(AltPath, 'x') → x | Nz(BasePath, 'x') → C:\Größe
        IIf(Len(BasePath) > 3, 'long', 'short') → long | Now() → 2026-11-24 10:30:05
        BasePath LIKE 'c:*' → 1 | AltPath LIKE 'c:*' → -)"))
        EXPECT_EQ(rows(u"SELECT %1 AS x FROM LvnAltPaths"_s.arg(expression)), QStringList(value)) << expression;
    for (const QString& wrong : textList("Left(BasePath, -1) | Mid(BasePath, 0) | BasePath LIKE '[a'"))
        EXPECT_THROW(rows(u"SELECT %1 FROM LvnAltPaths"_s.arg(wrong)), RuntimeError) << wrong;
}

TEST_F(DatabaseFiles, HostileStatementsAreRefused)
{
    const QStringList before = rows(u"SELECT * FROM LvnSystem"_s);
    for (const QString& statement : textList(R"(
        SELECT * FROM sqlite_master | UPDATE sqlite_schema SET sql = '' | SELECT * FROM pragma_database_list
        SELECT load_extension('/x.so') FROM LvnSystem | SELECT writefile('/tmp/x', 'y') FROM LvnSystem
        SELECT randomblob(1000000000) FROM LvnSystem | INSERT INTO other (a) VALUES (1) | DROP TABLE LvnSystem
        SELECT * FROM (WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT x FROM c)
        DROP TABLE sqlite_sequence | DELETE FROM sqlite_sequence | SELECT * INTO LvnSystem IN '/x' FROM LvnSystem
        SELECT 1)"))
        EXPECT_THROW(db->Execute(statement), RuntimeError) << statement;
    EXPECT_THROW(db->OpenRecordset(u"DELETE FROM LvnSystem"_s), RuntimeError);
    EXPECT_THROW(db->OpenRecordset(u"SELECT x FROM LvnSystem"_s), RuntimeError);
    EXPECT_EQ(rows(u"SELECT * FROM LvnSystem"_s), before);
}

TEST_F(DatabaseFiles, AStatementWithoutEndIsGivenUp)
{
    for (int i = 0; i < 100; ++i)
        db->Execute(u"INSERT INTO LvnSourceDoc (Mask) VALUES ('x')"_s);
    const QString endless = u"UPDATE LvnSourceDoc SET Mask = 'y' WHERE 0 < (SELECT COUNT(*) FROM LvnSourceDoc AS a, "
                            "LvnSourceDoc AS b, LvnSourceDoc AS c, LvnSourceDoc AS d, LvnSourceDoc AS e, "
                            "LvnSourceDoc AS f)"_s;
    DatabaseProbe::setStatementLimit(*db, std::chrono::milliseconds(50));
    EXPECT_TRUE(failure([&] { db->Execute(endless); }).startsWith(u"The statement takes too long"_s));
    EXPECT_EQ(rows(u"SELECT DISTINCT Mask FROM LvnSourceDoc"_s), QStringList(u"x"_s));
}

TEST_F(DatabaseFiles, AFailureInsideAStatementNamesItsPlace)
{
    EXPECT_EQ(failure([&] { db->Execute(u"UPDATE LvnSystem SET PropertyKey = #1/1/1900# WHERE Wrong =  2"_s); }),
              u"The statement is not understood at character 53, [Wrong =  2]: no such column: Wrong."_s);
    EXPECT_TRUE(
        failure([&] { db->Execute(u"UPDATE LvnSystem SET PropertyKey == 'x'"_s); }).contains(u"character 35"_s));
}

TEST_F(DatabaseFiles, AFileRunsNothingOfItsOwn)
{
    const QString shared = path(u"shared.lvds"_s);
    Database::create(shared);
    runRaw(shared, "CREATE TRIGGER t AFTER INSERT ON LvnSystem BEGIN DELETE FROM LvnSourceDoc; END;"
                   "INSERT INTO LvnSourceDoc (Mask) VALUES ('kept');"
                   "DROP TABLE LvnAltPaths; CREATE VIEW LvnAltPaths AS SELECT UCase('x') AS BasePath, 1 AS AltPath;");
    const auto own = Database::open(shared, databaseConnect());
    own->Execute(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('x')"_s);
    EXPECT_EQ(own->OpenRecordset(u"SELECT COUNT(*) AS n FROM LvnSourceDoc"_s)->number(u"n"), 1);
    EXPECT_THROW(own->OpenRecordset(u"SELECT * FROM LvnAltPaths"_s), RuntimeError);
    EXPECT_TRUE(openFailure(shared, databaseConnect(), Database::Trust::Stranger).contains(u"holds a trigger (t)"_s));
}

TEST_F(DatabaseFiles, AStrangersTextsAreBounded)
{
    const QString shared = path(u"shared.lvds"_s);
    Database::create(shared);
    const auto stranger = Database::open(shared, databaseConnect(), Database::Trust::Stranger);
    EXPECT_THROW(
        stranger->Execute(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('%1')"_s.arg(QString(2'000'000, u'x'))),
        RuntimeError);
}

TEST_F(DatabaseFiles, ABulkKeepsWhatWasDoneBeforeAFailure)
{
    {
        const Database::Bulk bulk(*db);
        db->Execute(u"INSERT INTO LvnSourceDoc (Mask) VALUES ('a')"_s);
        EXPECT_THROW(db->Execute(u"INSERT INTO LvnSourceDoc (Nothing) VALUES ('b')"_s), RuntimeError);
        const Database::Bulk inner(*db);
        db->Execute(u"INSERT INTO LvnSourceDoc (Mask) VALUES ('c')"_s);
    }
    EXPECT_EQ(rows(u"SELECT Mask FROM LvnSourceDoc"_s), (QStringList{u"a"_s, u"c"_s}));
    const auto other = Database::open(file, databaseConnect());
    EXPECT_EQ(other->Execute(u"UPDATE LvnSourceDoc SET Mask = 'd'"_s), 2) << "nothing is left locked";
}

TEST_F(DatabaseFiles, CopyIntoAnotherFileKeepsRowsAndCaseRule)
{
    const QString shared = path(u"sh'ared.lvds"_s);
    Database::create(shared);
    const auto from = Database::open(shared, databaseConnect(), Database::Trust::Stranger);
    for (const QString& mask : {u"A.xls"_s, u"b.xls"_s, u"c.xls"_s})
        from->Execute(u"INSERT INTO LvnPanelSource (FullPath, Mask) VALUES ('C:\\Data\\', '"_s + mask + u"')"_s);
    const QString copy = u"SELECT 0 AS NewID, * INTO TempSources IN '"_s + db->Name() +
                         u"' FROM LvnPanelSource WHERE ID IN ( SELECT 1 UNION SELECT 3 )"_s;
    EXPECT_EQ(from->Execute(copy), 2);
    EXPECT_EQ(rows(u"SELECT NewID, ID, Mask, LastUpdated FROM TempSources"_s),
              QStringList({u"0|1|A.xls|-"_s, u"0|3|c.xls|-"_s}));
    EXPECT_EQ(rows(u"SELECT Mask FROM TempSources WHERE Mask = 'a.XLS' AND FullPath LIKE 'c:\\data*'"_s),
              QStringList(u"A.xls"_s));

    EXPECT_TRUE(failure([&] { from->Execute(copy); }).contains(u"[TempSources] is there already"_s));
    EXPECT_EQ(rows(u"SELECT COUNT(*) AS n FROM TempSources"_s), QStringList(u"2"_s)) << "nothing was added";
    db->Execute(u"DROP TABLE TempSources"_s);
    EXPECT_EQ(from->Execute(copy), 2);

    QString missing = copy;
    missing.replace(db->Name(), path(u"none.lvdu"_s));
    EXPECT_TRUE(failure([&] { from->Execute(missing); }).contains(u"none.lvdu] does not exist"_s));
    EXPECT_FALSE(QFileInfo::exists(path(u"none.lvdu"_s)));
}

TEST_F(DatabaseFiles, CopyOfAnOpenFileIsWholeAndMarked)
{
    db->Execute(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('x')"_s);
    db->copyTo(path(u"copy.lvds"_s));
    const auto copy = Database::open(path(u"copy.lvds"_s), databaseConnect(), Database::Trust::Stranger);
    EXPECT_EQ(copy->OpenRecordset(u"SELECT * FROM LvnSystem"_s)->text(u"PropertyKey"), u"x"_s);
    EXPECT_TRUE(failure([&] { db->copyTo(path(u"copy.lvds"_s)); }).contains(u"exists already"_s));
    EXPECT_EQ(filesHere(), QStringList({u"copy.lvds"_s, u"lumivane.log"_s, u"lumivane.lvdu"_s}));
}

TEST_F(DatabaseFiles, AClosedFileSaysSo)
{
    const auto rs = db->OpenRecordset(u"SELECT * FROM LvnSystem"_s);
    db->Close();
    EXPECT_FALSE(db->isOpen());
    EXPECT_EQ(failure([&] { db->Execute(u"DELETE FROM LvnSystem"_s); }), u"The project file has been closed."_s);
    EXPECT_THROW(rs->AddNew(), RuntimeError);
}

TEST_F(DatabaseFiles, AFileLockedByOthersSaysSo)
{
    {
        OtherProgram other(file);
        other.run("BEGIN EXCLUSIVE");
        EXPECT_TRUE(
            failure([&] { db->Execute(u"DELETE FROM LvnSystem"_s); }).contains(u"is in use by another program"_s));
    }
    EXPECT_EQ(db->Execute(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('x')"_s), 1);
}

TEST_F(DatabaseFiles, AWriteThatFailsHalfWayLeavesTheFileAsItWas)
{
    db->Close();
    const QByteArray before = read(file);
    // The disk has no room for a longer file.
    const int status = inChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{rlim_t(before.size()), rlim_t(before.size())};
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto own = Database::open(file, databaseConnect());
        const QString sentence = failure([&] {
            own->Execute(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('"_s + QString(100'000, u'x') + u"')"_s);
        });
        return sentence.contains(u"lumivane.lvdu] c"_s) && own->OpenRecordset(u"SELECT * FROM LvnSystem"_s)->EOF_();
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(read(file), before);
}

TEST_F(DatabaseFiles, AProtectedProjectIsRefusedAndAProtectedSharedFileIsRead)
{
    db->Close();
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    ASSERT_TRUE(QFile::setPermissions(home.path(), QFile::Permissions(0x7055)));
    const int status = inChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0)
            return false;
        return openFailure(file).contains(u"is write-protected"_s) &&
               openFailure(file, databaseConnect(), Database::Trust::Stranger) == QString();
    });
    EXPECT_EQ(status, 0);
}

} // namespace test
} // namespace lumivane
