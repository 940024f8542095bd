#include "repository/ProjectFile.h"

namespace lumivane::test {

using namespace Qt::StringLiterals;

class RecordsetRows : public ProjectFile
{
protected:
    template <class Work>
    static int number(Work work)
    {
        return failureOf(work).number;
    }
};

TEST_F(RecordsetRows, AreReadWhenOpened)
{
    for (int i = 0; i < 3; ++i)
        db->Execute(u"INSERT INTO LvnAltPaths (BasePath) VALUES ('C:\\%1')"_s.arg(i));
    const auto rs = db->OpenRecordset(u"SELECT BasePath FROM LvnAltPaths WHERE BasePath LIKE 'C:*'"_s);
    int seen = 0;
    for (; !rs->EOF_(); rs->MoveNext(), ++seen)
        db->Execute(u"UPDATE LvnAltPaths SET BasePath = BasePath + 1"_s);
    EXPECT_EQ(seen, 3);
    EXPECT_EQ(number([&] { rs->MoveNext(); }), 3021);
    EXPECT_EQ(number([&] { rs->text(u"BasePath"); }), 3021);
}

TEST_F(RecordsetRows, ValuesAreCheckedWhereTheyAreRead)
{
    db->Execute(u"INSERT INTO LvnSavedPanel (ID, WorkspaceID, SourceID, Caption, LastViewed, [Top], [Left], Height, "
                "Width) VALUES (1, NULL, 'x', 'Größe', #1/2/2026 3:04:05#, 2.5, 3.5, 99999999999, -99999999999)"_s);
    const auto rs = db->OpenRecordset(u"SELECT * FROM LvnSavedPanel"_s);
    EXPECT_EQ(rs->number(u"id"), 1);
    EXPECT_EQ(rs->text(u"CAPTION"), u"Größe"_s);
    EXPECT_EQ(rs->date(u"LastViewed"), QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
    EXPECT_EQ(rs->number(u"Top"), 2) << "halves go to the even number";
    EXPECT_EQ(rs->number(u"Left"), 4);
    EXPECT_TRUE(rs->isNull(u"WorkspaceID") && rs->text(u"WorkspaceID").isEmpty());
    EXPECT_EQ(number([&] { rs->number(u"WorkspaceID"); }), 94);
    EXPECT_EQ(number([&] { rs->number(u"SourceID"); }), 13);
    EXPECT_EQ(number([&] { rs->number32(u"Height"); }), 6);
    EXPECT_EQ(number([&] { rs->number32(u"Width"); }), 6);
    EXPECT_EQ(number([&] { rs->date(u"Caption"); }), 13);
    EXPECT_EQ(number([&] { rs->text(u"none"); }), 3265);
    EXPECT_FALSE(rs->date(u"Comments").isValid());
    db->Execute(u"UPDATE LvnSavedPanel SET LastViewed = '1/2/2026'"_s);
    EXPECT_EQ(db->OpenRecordset(u"SELECT * FROM LvnSavedPanel"_s)->date(u"LastViewed"),
              QDateTime(QDate(2026, 1, 2), QTime(0, 0)));
    rs->Close();
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(number([&] { rs->text(u"ID"); }), 3420);
}

TEST_F(RecordsetRows, ANewRowIsAddressedByLastModified)
{
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('first')"_s);
    const auto rs = db->OpenRecordset(u"SELECT TOP 1 * FROM LvnSavedWorkspace"_s);
    EXPECT_EQ(number([&] { rs->setField(u"Name", u"x"_s); }), 3021);
    EXPECT_EQ(number([&] { rs->Update(); }), 3021);
    EXPECT_EQ(number([&] { rs->LastModified(); }), 3021);
    rs->AddNew();
    rs->setField(u"name", u"it's; \"new\""_s);
    rs->setField(u"LastUpdated", QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)));
    rs->setField(u"LastViewed", QDateTime());
    rs->setField(u"Description", QString());
    rs->Update();
    EXPECT_EQ(rs->text(u"Name"), u"first"_s) << "the position stays";
    rs->setBookmark(rs->LastModified());
    EXPECT_EQ(rs->number(u"ID"), 2);
    EXPECT_EQ(rs->Bookmark(), rs->LastModified());
    EXPECT_EQ(number([&] { rs->setBookmark(7); }), 3021);
    EXPECT_EQ(rows(u"SELECT * FROM LvnSavedWorkspace WHERE ID = 2"_s),
              QStringList(u"2|it's; \"new\"||2026-01-02 03:04:05|-|-|-|-|-"_s));
}

TEST_F(RecordsetRows, OnlyRowsOfOneTableTakeNewOnes)
{
    for (const char* query : {"SELECT COUNT(*) AS n FROM LvnSystem", "SELECT PropertyKey, 1 AS x FROM LvnSystem",
                              "SELECT PropertyKey, BasePath FROM LvnSystem, LvnAltPaths"})
        EXPECT_EQ(number([&] { db->OpenRecordset(QString::fromUtf8(query))->AddNew(); }), 3033) << query;
    const auto rs = db->OpenRecordset(u"SELECT PropertyKey AS k FROM LvnSystem"_s);
    rs->AddNew();
    rs->setField(u"k", u"by its other name"_s);
    rs->Update();
    EXPECT_EQ(rows(u"SELECT * FROM LvnSystem"_s), QStringList(u"by its other name|-"_s));
}

TEST_F(RecordsetRows, IdsAreNotUsedTwice)
{
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('a')"_s);
    db->Execute(u"DELETE * FROM LvnSavedWorkspace"_s);
    db->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('b')"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM LvnSavedWorkspace"_s), QStringList(u"2"_s));
}

} // namespace lumivane::test
