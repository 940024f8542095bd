#include "Project.h"

#include "host/embedded/EmbeddedHost.h"
#include "support/XlsxWriter.h"

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

/// A row: name, time of New.xlsx, of Old.xlsx (none: gone) and of the last adopted one (none: never), what is current
/// then.
class AdoptStep : public ProjectWithSource, public testing::WithParamInterface<std::array<QString, 5>>
{
};

TEST_P(AdoptStep, TakesAFileThatIsNewerThanTheCurrentOneOrTheLastAdopted)
{
    const auto& [name, candidate, current, lastChecked, adopted] = GetParam();
    source.UpdateType = u"default"_s;
    source.Mask = u"New*.xlsx"_s;
    source.NewestFile = u"Old.xlsx"_s;
    put(to + u"New.xlsx"_s, at(candidate));
    if (!current.isEmpty())
        put(to + u"Old.xlsx"_s, at(current));
    source.LastChecked = lastChecked.isEmpty() ? QDateTime() : at(lastChecked);
    store();
    EXPECT_EQ(source.GetLatest(db, true), adopted == u"New.xlsx");
    EXPECT_TRUE(source.IsChecked);
    EXPECT_EQ(source.NewestFile, adopted);
    EXPECT_EQ(stored().NewestFile, adopted);
    EXPECT_EQ(stored().LastChecked, adopted == u"New.xlsx" ? at(candidate) : at(u"10:30:00"_s));
    EXPECT_TRUE(source.GetLatest(db, true)) << "settled for the rest of the pass";
}

INSTANTIATE_TEST_SUITE_P(Times, AdoptStep, testing::ValuesIn(textTable<5>(R"(
    newer than both                  | 10:00:01 | 10:00:00 | 10:00:00 | New.xlsx
    newer than the last adopted only | 10:00:00 | 10:00:00 | 09:59:59 | New.xlsx
    equal is not new                 | 10:00:00 | 10:00:00 | 10:00:00 | Old.xlsx
    current gone                     | 08:00:00 |          | 10:00:00 | New.xlsx
    never adopted                    | 08:00:00 | 08:00:00 |          | New.xlsx)")),
                         rowName);

using Adopting = ProjectWithSource;

TEST_F(Adopting, ANewVersionMovesRangesAndDropsPictures)
{
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    const auto follows = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const auto stays = panel(u"top"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const auto elsewhere = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s, u"Costs"_s);
    clsWorkspacePanel chart = panel(u"bottom"_s, u"Chart 1"_s);
    chart.ContentType = u"C"_s;
    ASSERT_TRUE(chart.SaveToDB(db, 1));

    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(storedRange(follows.ID), u"B17:F32``"_s);
    EXPECT_EQ(storedRange(stays.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedPanel(stays.ID).ContentMatch, u"bottom=$H$40"_s) << "one that stays is not written at all";
    EXPECT_EQ(storedRange(elsewhere.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(chart.ID), u"Chart 1"_s);
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
    EXPECT_EQ(stored().LastUpdated, at(u"10:00:00"_s));
    EXPECT_EQ(stored().LastChecked, at(u"10:00:00"_s)) << "the file's time, not that of the look";
    EXPECT_EQ(library.events.filter(u"start"_s).size(), 1) << "one worker however many panels";
    EXPECT_EQ(library.events.last(), u"quit"_s);
    EXPECT_EQ(log.entries, QStringList({u"Event modUtilsExcel.Excel_HasSheet: Costs not found."_s,
                                        u"Event clsPanelSource.AdjustRanges: Costs not found in Sales.xlsx"_s}));
    EXPECT_TRUE(user.shown.isEmpty()) << "a missing sheet does not interrupt the user";

    source.ClearFlags();
    put(panelPictureFile(follows.ID), at(u"10:00:00"_s));
    EXPECT_FALSE(source.GetLatest(db, true)) << "the same file is not new in the next pass";
    EXPECT_EQ(namesIn(GetPanelsFolder()).size(), 1);
}

TEST_F(Adopting, TwoVersionsInARowAreMeasuredEachFromTheLast)
{
    store();
    const auto follows = panel(u"contents"_s, u"C5:H20``"_s, u"bottom=`anchor=$C5`content=Total"_s);
    const QString path = to + u"Sales.xlsx"_s;
    for (const auto& [time, cell] : {std::pair{u"09:00:00"_s, u"C9"_s}, std::pair{u"10:00:00"_s, u"C15"_s}}) {
        put(from + u"Sales.xlsx"_s, at(time));
        library.books[path] = {PlainSheet(u"Data"_s).put(cell, u"Total"_s)};
        source.ClearFlags();
        EXPECT_TRUE(source.GetLatest(db, false));
    }
    EXPECT_EQ(storedRange(follows.ID), u"C15:H30``"_s);
}

TEST_F(Adopting, AVersionReachesTheDiskTogetherWithItsRanges)
{
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const QDateTime before = stored().LastChecked;
    QDateTime onDisk;
    const HostFactory plain = library.factory();
    setHostFactory({[&] {
                        clsPanelSource asRead;
                        asRead.LoadFromDB(source.ID, Database::open(db->Name(), databaseConnect()));
                        onDisk = asRead.LastChecked;
                        return plain.worker();
                    },
                    {}});
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(onDisk, before) << "the version counts as taken over while a kill would lose its ranges";
    EXPECT_EQ(stored().LastChecked, at(u"10:00:00"_s));
}

TEST_F(Adopting, WithoutRangesNoWorkerIsStarted)
{
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    store();
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_TRUE(library.events.isEmpty());
    panel(u"top"_s, u"$B$5:$F$20``"_s);
    put(from + u"Sales.xlsx"_s, at(u"10:10:00"_s));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s)};
    source.ClearFlags();
    EXPECT_TRUE(source.GetLatest(db, false));
    EXPECT_EQ(library.events.filter(u"start"_s).size(), 1) << "a range that stays is seen with the workbook open";
}

TEST_F(Adopting, AWorkbookThatDoesNotOpenLeavesTheRangesAndDropsThePictures)
{
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    store();
    const auto follows = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(storedRange(follows.ID), u"$B$5:$F$20``"_s);
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
    EXPECT_EQ(log.entries, QStringList(u"Error clsPanelSource.AdjustRanges: (1004) The workbook \"%1Sales.xlsx\" was "
                                       "not found."_s.arg(to)));
    EXPECT_EQ(user.shown.size(), 1);
    EXPECT_EQ(library.events.last(), u"quit"_s);
}

TEST_F(Adopting, ADamagedSheetIsToldOnceAndCostsNoPanelItsRange)
{
    const std::string total = "<sheetData><row r=\"9\"><c r=\"C9\" t=\"inlineStr\"><is><t>Total</t></is></c></row>"
                              "</sheetData>";
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s),
        WorkbookParts({{"Bad", "<sheetData><row r=\"1\"", ""}, {"Data", total, ""}}).package());
    setHostFactory({makeEmbeddedWorker, {}});
    store();
    const QString match = u"bottom=$A$1`anchor=$C5`content=Total"_s;
    const auto first = panel(u"bottom"_s, u"$B$5:$F$20``"_s, match, u"Bad"_s);
    const auto second = panel(u"contents"_s, u"$B$5:$F$20``"_s, match, u"Bad"_s);
    const auto sound = panel(u"contents"_s, u"$B$5:$F$20``"_s, match);
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(storedRange(first.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(second.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(sound.ID), u"B9:F24``"_s);
    EXPECT_EQ(user.shown.size(), 1);
}

TEST_F(Adopting, AFolderWithoutAFittingFileIsLookedAtAgain)
{
    source.UpdateType = u"default"_s;
    source.NewestFile = u"Sales.xlsx"_s;
    store();
    EXPECT_FALSE(source.GetLatest(db, true));
    EXPECT_FALSE(source.IsChecked);
    EXPECT_EQ(source.NewestFile, QString());
    put(to + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    EXPECT_TRUE(source.GetLatest(db, true));
}

TEST_F(Adopting, AnApostropheInTheNameKeepsTheOldRowAndTheRunGoesOn)
{
    source.UpdateType = u"default"_s;
    source.Mask = u"*.xlsx"_s;
    const QString name = u"May', UpdateType = 'folder.xlsx"_s;
    put(to + name, at(u"10:00:00"_s));
    store();
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(source.NewestFile, name);
    EXPECT_EQ(stored().UpdateType, u"default"_s) << "a file's name is never a part of the statement";
    EXPECT_EQ(source.LastChecked, at(u"08:00:00"_s));
    EXPECT_EQ(stored().NewestFile, QString());
    EXPECT_TRUE(log.entries.value(0).contains(u"Caller: clsPanelSource.UpdateLastChecked"_s))
        << log.entries.join(u'\n');
}

TEST_F(Adopting, TheTimeOfTheCurrentVersion)
{
    EXPECT_EQ(source.NewestFileTime(), QDateTime(QDate(1900, 1, 1), QTime(0, 0)));
    source.NewestFile = u"Sales.xlsx"_s;
    EXPECT_EQ(source.NewestFileTime(), at(u"10:30:00"_s)) << "a missing file counts as dated now";
    put(to + u"Sales.xlsx"_s, at(u"09:15:00"_s));
    EXPECT_EQ(source.NewestFileTime(), at(u"09:15:00"_s));
}

TEST_F(Adopting, TheWorkingCopyIsNamedByTheSource)
{
    source.ID = 12;
    EXPECT_EQ(source.Prepped(), path(u"Templates/LVCopy12.xls"_s));
}

} // namespace
