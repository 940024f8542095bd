#include "repository/Database.h"
#include "sharing/SourceTransfer.h"
#include "sharing/TwoProjects.h"

#include <QThread>
#include <atomic>
#include <thread>

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class Export : public TwoProjects
{
protected:
    Export()
    {
        gDB = theirs;
        sales = addDashboard(*theirs, u"Sales"_s);
        costs = addDashboard(*theirs, u"Costs"_s);
        both = addSource(*theirs, {u"/a/both.xlsx"_s});
        onlyCosts = addSource(*theirs, {u"/a/costs.xlsx"_s});
        salesPanel = addPanel(*theirs, sales, both, u"first"_s);
        addPanel(*theirs, sales, 0, u"empty"_s);
        addPanel(*theirs, costs, both, u"second"_s);
        addPanel(*theirs, costs, onlyCosts, u"third"_s);
        theirs->Execute(u"INSERT INTO LvnSystem(PropertyKey, PropertyValue) VALUES ('Title', 'private')"_s);
        theirs->Execute(u"INSERT INTO LvnAltPaths(BasePath, AltPath) VALUES ('/a/', '/b/')"_s);
        theirs->Execute(u"INSERT INTO LvnpanelThresholds(PanelID, rowOffset, colOffset, highExp, ifHigh) VALUES "
                        "(%1, 3, 3, '>1', 'color')"_s.arg(salesPanel));
        theirs->Execute(u"INSERT INTO LvnSourceDoc(Mask) VALUES ('*.xls')"_s);
    }

    std::shared_ptr<Database> exported() { return Database::open(sharedFile, databaseConnect()); }

    int sales, costs, both, onlyCosts, salesPanel;
};

TEST_F(Export, KeepsTheChosenDashboardWithItsIdsAndNoByteOfTheRest)
{
    ASSERT_TRUE(makeTempSources(theirs, theirs, QString::number(costs))); // left by an import
    const QStringList before = wholeContent(*theirs);
    ASSERT_TRUE(ExportDashboard(sharedFile, {sales}));
    EXPECT_EQ(wholeContent(*theirs), before) << "an export only reads the project";

    const QByteArray bytes = read(sharedFile);
    for (const char* dropped : {"Costs", "costs.xlsx", "third", "private"})
        EXPECT_FALSE(bytes.contains(dropped)) << dropped;
    const auto shared = exported();
    EXPECT_FALSE(shared->TableNames().contains(u"TempSources"_s));
    EXPECT_EQ(rowsOf(*shared, u"SELECT ID, Name FROM LvnSavedWorkspace"_s), QStringList{u"%1|Sales"_s.arg(sales)});
    EXPECT_EQ(rowsOf(*shared, u"SELECT Caption, SourceID FROM LvnSavedPanel ORDER BY ID"_s),
              (QStringList{u"first|%1"_s.arg(both), u"empty|0"_s}));
    EXPECT_EQ(rowsOf(*shared, u"SELECT FullPath FROM LvnPanelSource"_s), QStringList{u"/a/both.xlsx"_s});
    EXPECT_EQ(rowsOf(*shared, u"SELECT * FROM LvnSystem"_s), QStringList{});
    EXPECT_EQ(rowsOf(*shared, u"SELECT * FROM LvnAltPaths"_s), QStringList{u"/a/|/b/"_s});
    EXPECT_EQ(rowsOf(*shared, u"SELECT PanelID FROM LvnpanelThresholds"_s), QStringList{QString::number(salesPanel)});
    EXPECT_EQ(rowsOf(*shared, u"SELECT Mask FROM LvnSourceDoc"_s), QStringList{u"*.xls"_s});
    EXPECT_EQ(user.shown, QStringList{});
}

TEST_F(Export, ListsDashboardsByNameAndOneWithoutANameByItsId)
{
    theirs->Execute(u"INSERT INTO LvnSavedWorkspace(Description) VALUES ('nameless')"_s);
    std::vector<DashboardEntry> listed;
    ASSERT_TRUE(exportableDashboards(listed));
    EXPECT_EQ(texts(listed), (QStringList{QString::number(listed.front().ID), u"Costs"_s, u"Sales"_s}));
}

TEST_F(Export, ReplacesAnOldFileAndWhatAKilledProgramLeftBesideIt)
{
    for (const QString& name :
         {u"shared.lvds"_s, u"shared.lvds-journal"_s, u".shared.lvds.new"_s, u".shared.lvds.new-journal"_s})
        write(path(name), "old");
    ASSERT_TRUE(ExportDashboard(sharedFile, {costs}));
    EXPECT_EQ(rowsOf(*exported(), u"SELECT Name FROM LvnSavedWorkspace"_s), QStringList{u"Costs"_s});
    EXPECT_EQ(QDir(home.path()).entryList({u"*shared*"_s}, QDir::Files | QDir::Hidden), QStringList{u"shared.lvds"_s});
}

TEST_F(Export, TellsAndLogsWhyAFileIsNotWritten)
{
    QDir(home.path()).mkdir(u"folder"_s);
    const QString unable = u"Unable to delete %1"_s,
                  inPreparing = u" in preparing for exporting. Will not be able to continue processing."_s;
    const struct
    {
        QString file, told, logged;
    } table[] = {
        {theirFile, unable + inPreparing, unable + u'.'}, // the open project
        {path(u"folder"_s), unable + inPreparing, unable + u'.'},
        {path(u"none/x.lvds"_s), u"Unable to export to %1.  The file could not be created."_s,
         u"File_Copy "_s + theirFile + u",%1 error."_s},
    };
    for (const auto& row : table) {
        user.shown.clear();
        EXPECT_FALSE(ExportDashboard(row.file, {sales}));
        EXPECT_EQ(user.shown, QStringList{row.told.arg(row.file)});
        EXPECT_TRUE(logged().contains(row.logged.arg(row.file).toUtf8())) << row.file.toStdString();
    }
    EXPECT_FALSE(ExportDashboard(sharedFile, {})) << "without a dashboard";
    EXPECT_FALSE(QFile::exists(sharedFile));
    EXPECT_EQ(rowsOf(*theirs, u"SELECT Name FROM LvnSavedWorkspace ORDER BY ID"_s),
              (QStringList{u"Sales"_s, u"Costs"_s}));
}

TEST_F(Export, GivenUpAtAnyStepLeavesTheFormerFile)
{
    for (int step = 0; step < 5; ++step) {
        write(sharedFile, "old");
        QList<qint64> told;
        EXPECT_FALSE(ExportDashboard(sharedFile, {sales}, [&](qint64 done, qint64 total) {
            EXPECT_EQ(total, 5);
            EXPECT_EQ(read(sharedFile), "old") << "for whoever ends the program here";
            told.append(done);
            return done < step;
        }));
        EXPECT_EQ(told.size(), step + 1);
        EXPECT_EQ(told.last(), step);
        const QStringList left = QDir(home.path()).entryList({u"*shared*"_s}, QDir::Files | QDir::Hidden);
        EXPECT_EQ(left, QStringList{u"shared.lvds"_s}) << step;
        EXPECT_EQ(read(sharedFile), "old") << step;
    }
    EXPECT_EQ(user.shown, QStringList{});
}

TEST_F(Export, CopiesAConsistentStateWhileTheProjectIsWritten)
{
    // Each statement keeps the sum of both columns; a torn copy would not.
    theirs->Execute(u"UPDATE LvnSavedPanel SET [Top] = 500, [Left] = 500"_s);
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        const auto other = Database::open(theirFile, databaseConnect());
        for (int i = 0; !stop; ++i) {
            other->Execute(u"UPDATE LvnSavedPanel SET [Top] = %1, [Left] = %2"_s.arg(i % 1000).arg(1000 - i % 1000));
            QThread::msleep(1);
        }
    });
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(ExportDashboard(sharedFile, {sales, costs}));
        const auto shared = Database::open(sharedFile, databaseConnect(), Database::Trust::Stranger);
        EXPECT_EQ(rowsOf(*shared, u"SELECT DISTINCT [Top] + [Left] AS Total FROM LvnSavedPanel"_s),
                  QStringList{u"1000"_s});
    }
    stop = true;
    writer.join();
}

} // namespace
} // namespace lumivane::test
