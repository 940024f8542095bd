#include "repository/ProjectFile.h"
#include "repository/clsPanelSource.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"

#include <QFileInfo>

namespace lumivane {

struct SourceProbe
{
    static void clearPictures(clsPanelSource& source, const std::shared_ptr<Database>& db) { source.ClearBMPs(db); }
};

namespace test {

using namespace Qt::StringLiterals;

class SourceRecord : public ProjectFile
{
protected:
    QString workbook(const QString& name)
    {
        write(path(name), "x");
        AdjustFileTime(path(name), QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
        return path(name);
    }
};

TEST_F(SourceRecord, APastedFileBecomesASource)
{
    const QString book = workbook(u"Book.v2.xlsx"_s);
    EXPECT_EQ(gSources->AddSource(book), 1);
    const auto source = gSources->Source(1);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->currentPath(), book);
    EXPECT_EQ(dateText(source->LastUpdated), u"2026-01-02 03:04:05"_s) << "the file's time, in memory";
    EXPECT_EQ(
        rows(u"SELECT * FROM LvnPanelSource"_s),
        QStringList(
            u"1|%1|Book.v2.xlsx|%2/|Book.v2.xlsx|2026-11-24 10:30:05+00:00|2026-11-24 10:30:05+00:00|1000|default||||||||"_s
                .arg(book, home.path())));
}

TEST_F(SourceRecord, AKnownFileIsFoundByEitherNameInAnyCase)
{
    const QString book = workbook(u"Book.xlsx"_s);
    gSources->AddSource(book);
    gSources->AddSource(workbook(u"Other.xlsx"_s));
    EXPECT_EQ(gSources->AddSource(book.toUpper()), 1);
    gSources->Source(1)->NewestFile = u"Book 2026.xlsx"_s;
    EXPECT_EQ(gSources->AddSource(path(u"BOOK 2026.xlsx"_s)), 1);
    EXPECT_EQ(gSources->AddSource(book), 1);
    EXPECT_EQ(gSources->Count(), 2);
    EXPECT_EQ(gSources->AddSource(workbook(u"BOOK.xlsx"_s)), 3) << "where case counts, these are two files";
    EXPECT_EQ(failure([&] { gSources->AddSource(path(u"none.xlsx"_s)); }),
              u"File not found: [%1]"_s.arg(path(u"none.xlsx"_s)));
}

TEST_F(SourceRecord, IsWrittenAsItWasReadAndItsVersionsAreLeft)
{
    const QString all = u"SELECT * FROM LvnPanelSource"_s;
    db->Execute(u"INSERT INTO LvnPanelSource VALUES (1, 'C:\\a.xls', 'a*.xls', 'D/', 'a.xls', '2026-11-24', "
                "'2026-11-23', -5, 'inbox', 'S/', 'folder', 'subject', 'ann', '*.xls', 'm', 'c', 'p')"_s);
    const QStringList before = rows(all);
    clsPanelSource source;
    ASSERT_TRUE(source.LoadFromDB(1, db));
    source.NewestFile = u"changed"_s;
    source.LastUpdated = source.LastChecked = QDateTime(QDate(2000, 1, 1), QTime(0, 0));
    ASSERT_TRUE(source.SaveToDB(db));
    EXPECT_EQ(rows(all), before);
    EXPECT_FALSE(source.LoadFromDB(2, db));
}

TEST_F(SourceRecord, EmptyFoldersBecomeTheDelimiterAndNullKeepsTheField)
{
    db->Execute(u"INSERT INTO LvnPanelSource (FullPath) VALUES ('C:\\a.xls')"_s);
    clsPanelSource source;
    source.Mask = u"A*.xls"_s;
    ASSERT_TRUE(source.LoadFromDB(1, db));
    EXPECT_EQ(source.SourceFolder + source.DestFolder, u"//"_s);
    EXPECT_EQ(source.currentPath(), u"C:\\a.xls"_s);
    source.Mask = u"b*.xls"_s;
    EXPECT_EQ(source.currentPath(), QString()) << "the path of another source, left by an import";
}

TEST_F(SourceRecord, LoadAllSharesObjectsAndStopsAtTheFirstBadRow)
{
    for (const QString& id : {u"1"_s, u"4"_s, u"40000"_s, u"40001"_s})
        db->Execute(u"INSERT INTO LvnPanelSource (ID, FullPath) VALUES (%1, 'x')"_s.arg(id));
    db->Execute(u"INSERT INTO LvnSavedPanel (SourceID, IsCustom) VALUES (4, 'y')"_s);
    EXPECT_FALSE(gSources->LoadAll(db));
    EXPECT_EQ(gSources->Count(), 2);
    EXPECT_TRUE(gSources->Source(4)->HasCustom);
    EXPECT_FALSE(gSources->Source(1)->HasCustom);
    EXPECT_EQ(gSources->SourceByIndex(2), gSources->Source(4));
    for (const auto& none : {gSources->Source(2), gSources->SourceByIndex(0), gSources->SourceByIndex(3)})
        EXPECT_EQ(none, nullptr);
    gSources->Source(1)->IsChecked = gSources->Source(4)->IsUpdated = true;
    gSources->ClearFlags();
    EXPECT_FALSE(gSources->Source(1)->IsChecked || gSources->Source(4)->IsUpdated);
}

TEST_F(SourceRecord, AnIdBeyondSixteenBitsEndsInOverflow)
{
    db->Execute(u"INSERT INTO LvnPanelSource (ID, FullPath) VALUES (32767, 'x')"_s);
    clsPanelSource source;
    source.FullPath = u"y"_s;
    EXPECT_TRUE(failure([&] { source.SaveToDB(db); }).contains(u"all 32,767 numbers for a source"_s));
    EXPECT_EQ(rows(u"SELECT ID FROM LvnPanelSource"_s), QStringList(u"32767"_s)) << "the new row is taken back";
}

TEST_F(SourceRecord, PicturesOfItsPanelsAreDropped)
{
    for (const int panel : {1, 2, 3}) {
        db->Execute(u"INSERT INTO LvnSavedPanel (ID, SourceID) VALUES (%1, %2)"_s.arg(panel).arg(panel == 2 ? 6 : 5));
        write(panelPictureFile(panel), "x");
    }
    QFile::remove(panelPictureFile(1));
    clsPanelSource source;
    source.ID = 5;
    SourceProbe::clearPictures(source, db);
    EXPECT_TRUE(QFileInfo::exists(panelPictureFile(2)));
    EXPECT_FALSE(QFileInfo::exists(panelPictureFile(3)));
}

} // namespace test
} // namespace lumivane
