#include "platform/Prompts.h"
#include "services/ProgramFiles.h"
#include "services/ProgramFolder.h"
#include "services/modUtilsFile.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <atomic>
#include <sys/file.h>
#include <thread>

namespace lumivane::test {

using namespace Qt::StringLiterals;

class FileUtilities : public ProgramFolder
{
protected:
    void writeAt(const QString& name, const QByteArray& bytes, const QDateTime& time)
    {
        write(path(name), bytes);
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(time, QFile::FileModificationTime));
    }
    const QDateTime noon = QDateTime(QDate(2026, 3, 1), QTime(12, 0, 0));
};

TEST_F(FileUtilities, SplitPaths)
{
    for (const auto& [whole, expectedFolder, expectedName, expectedExtension] : textTable<4>(R"(
        /a/b.c/file.xlsx     | /a/b.c    | file    | xlsx
        /a/b.c/file          | /a/b.c    | file    | kept
        file.xlsx            |           | file    | xlsx
        C:\data\book.v2.xls  | C:\data   | book.v2 | xls
        C:\data/x\y.xls      | C:\data   | x\y     | xls
        /a/.hidden           | /a        | .hidden | kept
        /a/.hidden.txt       | /a        | .hidden | txt
        /a/ends.             | /a        | ends    |
        /file                |           | file    | kept
        /a/                  | /a        |         | kept)")) {
        QString folder, name, extension = u"kept"_s;
        SplitPath(whole, &folder, &name, &extension);
        EXPECT_EQ(QStringList({folder, name, extension}),
                  QStringList({expectedFolder, expectedName, expectedExtension}));
        EXPECT_EQ(FileFolder(whole), expectedFolder);
    }
    SplitPath(u"/a/b.c"_s, nullptr, nullptr, nullptr);
    EXPECT_EQ(PathDelimiter(QString()), u"\\"_s);
}

TEST_F(FileUtilities, DirMatchesMasks)
{
    for (const QString& name : {u"Book1.xlsx"_s, u"book22.XLSX"_s, u"note.txt"_s, u"~$Book1.xlsx"_s,
                                u".~lock.Book1.xlsx#"_s, u".Book3.xlsx"_s, u"Größe.xlsx"_s})
        write(path(name), "x");
    QDir(home.path()).mkdir(u"Book.xlsx"_s);
    for (const auto& [mask, expected] : textPairs(R"(
        *.xlsx → Book1.xlsx Größe.xlsx book22.XLSX | BOOK?.xlsx → Book1.xlsx | b*2* → book22.XLSX | note.txt → note.txt
        gr?SSe.xlsx → | GRÖ?E.* → Größe.xlsx | Book → | → | *t*t*t*t*t*t*t →)")) {
        QStringList found = Dir(path({}) + u'/' + mask);
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found.join(u' '), expected) << mask;
    }
    EXPECT_TRUE(Dir(path(u"none/*"_s)).isEmpty());
}

TEST_F(FileUtilities, ExistenceOfFilesAndFolders)
{
    write(path(u"a.txt"_s), "x");
    write(path(u".a.txt"_s), "x");
    QDir(home.path()).mkdir(u"sub"_s);
    EXPECT_TRUE(FileExists(path(u"a.txt"_s)));
    EXPECT_TRUE(FileExists(path(u"?.TXT"_s)));
    for (const QString& missing : {QString(), path(u"A.TXT"_s), path(u".a.txt"_s), path(u"sub"_s), path(u"*.doc"_s)})
        EXPECT_FALSE(FileExists(missing)) << missing;
    EXPECT_TRUE(FolderExists(path(u"sub"_s)) && FolderExists(path(u"sub/"_s)));
    EXPECT_FALSE(FolderExists(path(u"a.txt"_s)) || FolderExists(QString()) || FolderExists(u"C:\\data"_s));
}

TEST_F(FileUtilities, FolderCreateMakesOneLevel)
{
    EXPECT_TRUE(FolderCreate(path(u"new"_s)));
    EXPECT_FALSE(FolderCreate(path(u"new"_s)));
    EXPECT_FALSE(FolderCreate(path(u"none/below"_s)));
    EXPECT_TRUE(logged().contains("[modUtilsFile.FolderCreate]: Path not found\r\n"));
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(FileUtilities, CopyKeepsTheTimeAndReplaces)
{
    writeAt(u"a.xlsx"_s, "new", noon);
    write(path(u"b.xlsx"_s), "an old and longer one");
    EXPECT_TRUE(File_Copy(path(u"a.xlsx"_s), path(u"b.xlsx"_s)));
    EXPECT_EQ(read(path(u"b.xlsx"_s)), "new");
    EXPECT_EQ(FileDateTime(path(u"b.xlsx"_s)), noon);
    const QStringList names = QDir(home.path()).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(names, QStringList({u"a.xlsx"_s, u"b.xlsx"_s, u"lumivane.log"_s})) << "nothing is left behind";
}

TEST_F(FileUtilities, CopyRemovesWhatAKilledOneLeftAndNothingElse)
{
    write(path(u"a.xlsx"_s), "new");
    const QString left = path(u".lumivane-copy-AbCdEf"_s), held = path(u".lumivane-copy-GhIjKl"_s);
    const QString others[] = {path(u".copy-AbCdEf"_s), path(u".lumivane-copy-of-a.xlsx"_s)};
    for (const QString& name : {left, held, others[0], others[1]})
        write(name, "x");
    QFile underWay(held);
    ASSERT_TRUE(underWay.open(QIODevice::ReadWrite));
    ASSERT_EQ(flock(underWay.handle(), LOCK_EX), 0);
    EXPECT_TRUE(File_Copy(path(u"a.xlsx"_s), path(u"b.xlsx"_s)));
    EXPECT_FALSE(QFileInfo::exists(left));
    for (const QString& name : {held, others[0], others[1]})
        EXPECT_TRUE(QFileInfo::exists(name)) << name;
}

TEST_F(FileUtilities, AFileThatIsBeingWrittenIsNotCopied)
{
    QFile source(path(u"a.csv"_s));
    ASSERT_TRUE(source.open(QIODevice::ReadWrite));
    ASSERT_TRUE(source.resize(40'000'000));
    std::atomic<bool> done = false;
    std::thread writer([&] {
        for (; !done; std::this_thread::sleep_for(std::chrono::milliseconds(1)))
            source.write("x"), source.flush();
    });
    EXPECT_FALSE(File_Copy(source.fileName(), path(u"b.csv"_s)));
    done = true;
    writer.join();
    EXPECT_EQ(Dir(path(u"*b*"_s)), QStringList());
}

TEST_F(FileUtilities, AFailedCopySaysWhyAndLeavesTheTarget)
{
    write(path(u"a.xlsx"_s), "content");
    QFile::link(path(u"a.xlsx"_s), path(u"link.xlsx"_s));
    QDir(home.path()).mkdir(u"sub"_s);
    for (const auto& [source, target, reason] : textTable<3>(R"(
        none.xlsx | a.xlsx      | File not found: [
        a.xlsx    | a.xlsx      | they are the same file
        a.xlsx    | link.xlsx   | they are the same file
        a.xlsx    | sub         | a folder has this name
        a.xlsx    | none/a.xlsx | Cannot copy [
        sub       | b.xlsx      | File not found: [)")) {
        InitFileLog(GetLogFile(), true);
        EXPECT_FALSE(File_Copy(path(source), path(target))) << target;
        EXPECT_TRUE(logged().contains(reason.toUtf8())) << logged().constData();
        EXPECT_EQ(read(path(u"a.xlsx"_s)), "content");
    }
}

TEST_F(FileUtilities, RenameReplacesAndRemoves)
{
    write(path(u"a.txt"_s), "new");
    write(path(u"b.txt"_s), "old");
    EXPECT_TRUE(FileRename(path(u"a.txt"_s), path(u"b.txt"_s)));
    EXPECT_EQ(read(path(u"b.txt"_s)), "new");
    EXPECT_FALSE(FileExists(path(u"a.txt"_s)));
    EXPECT_FALSE(FileRename(path(u"a.txt"_s), path(u"b.txt"_s)));
    EXPECT_FALSE(FileRename(path(u"b.txt"_s), path(u"b.txt"_s)));
    EXPECT_EQ(read(path(u"b.txt"_s)), "new") << "a file renamed to itself is not lost";
}

TEST_F(FileUtilities, NewestFileIsTheLatestOrTheFirstListedOfEquals)
{
    writeAt(u"old.xlsx"_s, "x", noon.addSecs(-1));
    writeAt(u"one.xlsx"_s, "x", noon);
    writeAt(u"two.xlsx"_s, "x", noon);
    writeAt(u".newer.xlsx"_s, "x", noon.addDays(1));
    writeAt(u"other.txt"_s, "x", noon.addDays(1));
    QStringList equals = Dir(path(u"*.xlsx"_s));
    equals.removeAll(u"old.xlsx"_s);
    EXPECT_EQ(FindNewestFile(path(u"*.XLSX"_s)), path(equals.front()));
    writeAt(equals.back(), "x", noon.addMSecs(1));
    EXPECT_EQ(FindNewestFile(path(u"*.XLSX"_s)), path(equals.back()));
    EXPECT_EQ(FindNewestFile(path(u"OLD.xlsx"_s)), path(u"old.xlsx"_s));
    writeAt(u"OLD.xlsx"_s, "x", noon.addSecs(-2));
    EXPECT_EQ(FindNewestFile(path(u"OLD.xlsx"_s)), path(u"OLD.xlsx"_s)) << "two files where case counts";
    EXPECT_EQ(FindNewestFile(path(u"none*"_s)), QString());
    EXPECT_EQ(FindNewestFile(QString()), QString());
    EXPECT_EQ(FindNewestFile(path(u"none/*"_s)), QString());
}

TEST_F(FileUtilities, FileTimes)
{
    writeAt(u"a.txt"_s, "x", noon.addMSecs(999));
    EXPECT_EQ(FileDateTime(path(u"a.txt"_s)), noon);
    EXPECT_EQ(AdjustFileTime(path(u"none.txt"_s), noon), 1);
    EXPECT_EQ(AdjustFileTime(path(u"a.txt"_s), QDateTime()), 0);
    EXPECT_EQ(failureOf([&] { FileDateTime(path(u"none.txt"_s)); }).number, 53);
}

TEST_F(FileUtilities, FoldersBesideTheProgramAreMadeOnDemand)
{
    EXPECT_EQ(GetPanelsFolder(), path(u"Panels/"_s));
    EXPECT_TRUE(QFileInfo(path(u"Panels"_s)).isDir());
    EXPECT_EQ(panelPictureFile(12), path(u"Panels/12.bmp"_s));
    EXPECT_EQ(panelPictureFile(0), QString());
    write(path(u"Templates"_s), "in the way");
    EXPECT_EQ(GetTemplatesFolder(), QString());
}

TEST_F(FileUtilities, QuestionsWithoutAUserAreAnsweredNo)
{
    user.confirmations = {true};
    EXPECT_TRUE(ConfirmAction(u"Really?"_s));
    setPrompts(nullptr);
    EXPECT_FALSE(ConfirmAction(u"Really?"_s));
}

} // namespace lumivane::test
