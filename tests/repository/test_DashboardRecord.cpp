#include "repository/ProjectFile.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "support/TextTable.h"

namespace lumivane {

struct PanelProbe
{
    static QString fixedParts(const clsWorkspacePanel& panel)
    {
        return QStringLiteral("%1-%2 %3-%4")
            .arg(panel.pFixRowFirst)
            .arg(panel.pFixRowLast)
            .arg(panel.pFixColFirst, panel.pFixColLast);
    }
};

namespace test {

using namespace Qt::StringLiterals;

class DashboardRecord : public ProjectFile
{
protected:
    /// A dashboard with a panel for each of the sources, stored.
    qint32 stored(const QString& name, std::initializer_list<qint32> sources)
    {
        clsWorkspace dashboard;
        dashboard.Name = name;
        for (const qint32 source : sources) {
            const auto panel = dashboard.Panels(dashboard.AddPanel());
            panel->SourceID = source;
            panel->Caption = u"source %1"_s.arg(source);
        }
        EXPECT_TRUE(dashboard.SaveToDB(db));
        return dashboard.ID;
    }
    QStringList captions(qint32 id)
    {
        clsWorkspace dashboard;
        dashboard.LoadFromDB(id, db);
        QStringList found;
        for (int i = 1; i <= dashboard.NumPanels(); ++i)
            found.append(dashboard.Panels(i)->Caption);
        return found;
    }
    QStringList names() const { return rows(u"SELECT Name FROM LvnSavedWorkspace"_s); }
};

TEST_F(DashboardRecord, PanelsComeInTheOrderOfTheirSources)
{
    EXPECT_EQ(captions(stored(u"d"_s, {3, 1, 2})), QStringList({u"source 1"_s, u"source 2"_s, u"source 3"_s}));
}

TEST_F(DashboardRecord, ASavedNameGrowsByABlankEachTime)
{
    const qint32 id = stored(u"Sales"_s, {1});
    for (const QString& expected : {u"Sales "_s, u"Sales  "_s}) {
        clsWorkspace dashboard;
        EXPECT_TRUE(dashboard.LoadFromDB(id, db));
        EXPECT_TRUE(dashboard.SaveToDB(db));
        EXPECT_EQ(names(), QStringList(expected));
    }
}

TEST_F(DashboardRecord, ASaveThatFailsInPartIsNoSaveAndStopsWhereTheFileFails)
{
    clsWorkspace dashboard;
    ASSERT_TRUE(dashboard.LoadFromDB(stored(u"d"_s, {1, 2, 3}), db));
    dashboard.Panels(1)->SheetName = u"Bob's"_s;
    dashboard.Panels(2)->Comments = u"kept"_s;
    EXPECT_FALSE(dashboard.SaveToDB(db));
    EXPECT_EQ(rows(u"SELECT Comments FROM LvnSavedPanel"_s), QStringList({{}, u"kept"_s, {}}));
    db->Close();
    user.shown.clear();
    EXPECT_FALSE(dashboard.SaveToDB(db));
    EXPECT_EQ(user.shown.size(), 1) << "one box, not one for each statement";
}

TEST_F(DashboardRecord, LoadingMarksItAsTheNewest)
{
    const qint32 first = stored(u"first"_s, {1});
    stored(u"second"_s, {1});
    Clock::setFixed(Clock::now().addSecs(60));
    clsWorkspace dashboard;
    EXPECT_TRUE(dashboard.LoadFromDB(first, db));
    EXPECT_EQ(rows(u"SELECT Name FROM LvnSavedWorkspace ORDER BY LastUpdated DESC"_s),
              QStringList({u"first"_s, u"second"_s}));
    EXPECT_FALSE(dashboard.LoadFromDB(99, db));
    EXPECT_EQ(dashboard.Name, u"first"_s);
    EXPECT_FALSE(clsWorkspace().LoadFromDB(stored(u"no panels"_s, {}), db));
}

TEST_F(DashboardRecord, PlacesOfPanels)
{
    clsWorkspace dashboard;
    for (const int id : {6, 7})
        dashboard.Panels(dashboard.AddPanel())->ID = id;
    EXPECT_EQ(dashboard.Panels(0), nullptr);
    EXPECT_EQ(dashboard.Panels(3), nullptr);
    EXPECT_EQ(dashboard.PanelsByID(7), dashboard.Panels(2));
    dashboard.DelPanel(2, false);
    dashboard.DelPanel(5, false);
    EXPECT_EQ(dashboard.Panels(1)->ID, 6);
    EXPECT_EQ(dashboard.PanelsByID(7), nullptr);
}

TEST_F(DashboardRecord, SavingDropsRowsOfPanelsThatAreGoneButNotTheLastOnes)
{
    const qint32 id = stored(u"d"_s, {1, 2});
    const QString ids = u"SELECT ID FROM LvnSavedPanel"_s;
    clsWorkspace dashboard;
    ASSERT_TRUE(dashboard.LoadFromDB(id, db));
    dashboard.DelPanel(1, false);
    EXPECT_TRUE(dashboard.SaveToDB(db));
    EXPECT_EQ(rows(ids), QStringList(u"2"_s));
    dashboard.DelPanel(1, false);
    EXPECT_TRUE(dashboard.SaveToDB(db));
    EXPECT_EQ(rows(ids), QStringList(u"2"_s)) << "an empty list deletes nothing";
}

TEST_F(DashboardRecord, WhatALoadThatBrokeOffDidNotReadStays)
{
    for (const QString& damage : {u"Height = 40000"_s, u"Width = NULL"_s, u"LastViewed = 'never'"_s}) {
        user.shown.clear();
        const qint32 id = stored(u"d"_s, {1, 2, 3});
        const QString panels = u"SELECT * FROM LvnSavedPanel WHERE WorkspaceID = %1"_s.arg(id);
        const QString damaged = rows(panels)[1].section(u'|', 0, 0);
        db->Execute(u"UPDATE LvnSavedPanel SET "_s + damage + u" WHERE ID = "_s + damaged);
        const QStringList before = rows(panels);
        clsWorkspace dashboard;
        EXPECT_FALSE(dashboard.LoadFromDB(id, db));
        ASSERT_EQ(user.shown.size(), 1);
        EXPECT_TRUE(user.shown[0].contains(u"  The panel with the ID %1 cannot be read."_s.arg(damaged)))
            << user.shown[0];
        EXPECT_EQ(dashboard.NumPanels(), 1);
        EXPECT_TRUE(dashboard.SaveToDB(db));
        EXPECT_EQ(rows(panels), before);
        dashboard.Delete(db);
    }
}

TEST_F(DashboardRecord, WhatAnotherProgramDidIsNeitherUndoneNorPassedOver)
{
    const qint32 id = stored(u"d"_s, {1, 2});
    clsWorkspace here, there;
    ASSERT_TRUE(here.LoadFromDB(id, db));
    ASSERT_TRUE(there.LoadFromDB(id, db));
    there.AddPanel();
    there.DelPanel(1, false);
    ASSERT_TRUE(there.SaveToDB(db));
    const QString ids = u"SELECT ID FROM LvnSavedPanel ORDER BY ID"_s;
    EXPECT_EQ(rows(ids), QStringList({u"2"_s, u"3"_s}));

    here.SaveToDB(db);
    EXPECT_EQ(rows(ids), QStringList({u"2"_s, u"3"_s})) << "what the other added stays";
    ASSERT_EQ(user.shown.size(), 1) << "what the other deleted is reported";
    EXPECT_TRUE(user.shown[0].contains(u"The panel [source 1] is no longer in the project"_s)) << user.shown[0];
    there.Delete(db);
    here.SaveToDB(db);
    EXPECT_TRUE(user.shown.value(1).contains(u"The dashboard [d] is no longer in the project"_s));
}

using PanelRecord = ProjectFile;

TEST_F(PanelRecord, IsWrittenAsItWasRead)
{
    const QString row =
        u"5|70000|it's|S|Größe \"1\"|C|Ann's|$B$10:$F$20`1:3`A:A|5:12=12.75|A:C=8.43|contents|content=#1; --|Y|"
        "2026-01-02 03:04:05|30|-15|-32768|32767|-"_s;
    db->Execute(u"INSERT INTO LvnSavedPanel VALUES (1, 5, 70000, 'it''s', 'S', 'Größe \"1\"', 'C', 'Ann''s', "
                "'$B$10:$F$20`1:3`A:A', '5:12=12.75', 'A:C=8.43', 'contents', 'content=#1; --', 'Y', "
                "#2026-01-02 03:04:05#, 30, -15, -32768, 32767, NULL)"_s);
    clsWorkspacePanel panel;
    panel.Content = u"left over"_s;
    ASSERT_TRUE(panel.LoadFromDB(1, db));
    EXPECT_TRUE(panel.Content.isEmpty());
    ASSERT_TRUE(panel.SaveToDB(db, 5));
    panel.ID = 0;
    ASSERT_TRUE(panel.SaveToDB(db, 5));
    EXPECT_EQ(panel.ID, 2);
    EXPECT_EQ(rows(u"SELECT * FROM LvnSavedPanel"_s), QStringList({u"1|"_s + row, u"2|"_s + row}));
}

TEST_F(PanelRecord, NoIdBeyondSixteenBitsIsGivenOut)
{
    db->Execute(u"INSERT INTO LvnSavedPanel (ID, WorkspaceID) VALUES (32767, 5)"_s);
    clsWorkspacePanel panel;
    EXPECT_TRUE(failure([&] { panel.SaveToDB(db, 5); }).contains(u"all 32,767 numbers for a panel"_s));
    EXPECT_EQ(rows(u"SELECT ID FROM LvnSavedPanel"_s), QStringList(u"32767"_s)) << "the new row is taken back";
}

TEST_F(PanelRecord, LongRunsAreCutBetweenRuns)
{
    clsWorkspacePanel panel;
    const QString run = u"100:200=12.75"_s; // 13 and a back-quote
    QStringList runs(18, run);              // 251 long
    panel.RowHeights = runs.join(u'`') + u"`1=2"_s;
    panel.ColWidths = runs.join(u'`') + u"`1=22"_s;
    ASSERT_TRUE(panel.SaveToDB(db, 5));
    EXPECT_EQ(rows(u"SELECT RowHeights FROM LvnSavedPanel"_s), QStringList(panel.RowHeights)) << "255 fit";
    EXPECT_EQ(rows(u"SELECT ColWidths FROM LvnSavedPanel"_s), QStringList(runs.join(u'`')));
}

TEST_F(PanelRecord, NullKeepsTextsAndFailsForNumbers)
{
    db->Execute(u"INSERT INTO LvnSavedPanel (ID, SourceID, [Top], [Left], Height, Width) VALUES (1, 2, 3, 4, 5, 6)"_s);
    clsWorkspacePanel panel;
    panel.RelativeTo = u"contents"_s;
    ASSERT_TRUE(panel.LoadFromDB(1, db));
    EXPECT_EQ(panel.RelativeTo, u"contents"_s);
    EXPECT_EQ(panel.pTop, 3);
    EXPECT_FALSE(panel.LoadFromDB(9, db));
    EXPECT_EQ(panel.ID, 1);
    db->Execute(u"UPDATE LvnSavedPanel SET [Top] = 9, SourceID = NULL"_s);
    EXPECT_EQ(failure([&] { panel.LoadFromDB(1, db); }), u"Invalid use of Null in column [SourceID]"_s);
    EXPECT_EQ(panel.pTop, 3) << "a row that is half read changes nothing";
}

TEST_F(PanelRecord, RangesAreTakenApartAndPutTogether)
{
    for (const auto& [picRange, movRange, fixed, rebuilt] : textTable<4>(R"(
        $B$10:$F$20`1:3`A:A | $B$10:$F$20 | 1-3 A-A | X1`1:3`A:A
        A1:B2`1:2           | A1:B2       | 1-2 -   | X1`1:2`
        A1:B2``B:C          | A1:B2       | 0-0 B-C | X1``B:C
        A1:B2``             | A1:B2       | 0-0 -   | X1``)")) {
        clsWorkspacePanel panel;
        panel.PicRange = picRange;
        panel.ParsePicRange();
        EXPECT_EQ(panel.movRange, movRange);
        EXPECT_EQ(PanelProbe::fixedParts(panel), fixed) << picRange;
        panel.PicRange = u"X1`"_s;
        panel.BuildPicRange();
        EXPECT_EQ(panel.PicRange, rebuilt);
    }
    clsWorkspacePanel kept;
    kept.movRange = u"C1"_s;
    kept.PicRange = u"A1`1:2`"_s;
    kept.ParsePicRange();
    EXPECT_EQ(kept.movRange, u"C1"_s);
}

} // namespace test
} // namespace lumivane
