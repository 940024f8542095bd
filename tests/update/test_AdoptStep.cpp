#include "Project.h"

#include "host/embedded/EmbeddedHost.h"
#include "support/XlsxWriter.h"

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

struct AdoptRow
{
    const char* name;
    const char* candidate;   ///< time of New.xlsx
    const char* current;     ///< time of Old.xlsx; empty: gone
    const char* lastChecked; ///< empty: never
    bool adopted;
};

class AdoptStep : public ProjectWithSource, public testing::WithParamInterface<AdoptRow>
{
protected:
    AdoptStep()
    {
        source.UpdateType = u"default"_s;
        source.Mask = u"New*.xlsx"_s;
        source.NewestFile = u"Old.xlsx"_s;
    }
};

TEST_P(AdoptStep, TakesAFileThatIsNewerThanTheCurrentOneOrTheLastAdopted)
{
    const AdoptRow& row = GetParam();
    put(to + u"New.xlsx"_s, at(row.candidate));
    if (*row.current)
        put(to + u"Old.xlsx"_s, at(row.current));
    source.LastChecked = *row.lastChecked ? at(row.lastChecked) : QDateTime();
    store();
    EXPECT_EQ(source.GetLatest(DB, true), row.adopted);
    EXPECT_TRUE(source.IsChecked);
    EXPECT_EQ(source.NewestFile, row.adopted ? u"New.xlsx"_s : u"Old.xlsx"_s);
    if (row.adopted) {
        EXPECT_EQ(stored().LastChecked, at(row.candidate));
        EXPECT_EQ(stored().NewestFile, u"New.xlsx"_s);
    }
    EXPECT_TRUE(source.GetLatest(DB, true)) << "settled for the rest of the pass";
}

const AdoptRow adoptRows[] = {
    {"newer_than_both", "10:00:01", "10:00:00", "10:00:00", true},
    {"newer_than_the_last_adopted_only", "10:00:00", "10:00:00", "09:59:59", true},
    {"equal_is_not_new", "10:00:00", "10:00:00", "10:00:00", false},
    {"current_gone", "08:00:00", "", "10:00:00", true},
    {"never_adopted", "08:00:00", "08:00:00", "", true},
};

INSTANTIATE_TEST_SUITE_P(Times, AdoptStep, testing::ValuesIn(adoptRows),
                         [](const auto& row) { return row.param.name; });

class Adopting : public ProjectWithSource
{
};

TEST_F(Adopting, ANewVersionMovesRangesAndDropsPictures)
{
    put(from + u"Sales.xlsx"_s, at("10:00:00"));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    const auto follows = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const auto stays = panel(u"top"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const auto elsewhere = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s, u"Costs"_s);
    clsWorkspacePanel chart = panel(u"bottom"_s, u"Chart 1"_s);
    chart.ContentType = u"C"_s;
    ASSERT_TRUE(chart.SaveToDB(DB, 1));

    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(storedRange(follows.ID), u"B17:F32``"_s);
    EXPECT_EQ(storedRange(stays.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedPanel(stays.ID).ContentMatch, u"bottom=$H$40"_s) << "one that stays is not written at all";
    EXPECT_EQ(storedRange(elsewhere.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(chart.ID), u"Chart 1"_s);
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
    EXPECT_EQ(stored().LastUpdated, at("10:00:00"));
    EXPECT_EQ(stored().LastChecked, at("10:00:00")) << "the file's time, not that of the look";
    EXPECT_EQ(library.events.filter(u"start"_s).size(), 1) << "one worker however many panels";
    EXPECT_EQ(library.events.last(), u"quit"_s);
    EXPECT_EQ(log.entries, QStringList({u"Event modUtilsExcel.Excel_HasSheet: Costs not found."_s,
                                        u"Event clsPanelSource.AdjustRanges: Costs not found in Sales.xlsx"_s}));
    EXPECT_TRUE(prompts.shown.isEmpty()) << "a missing sheet does not interrupt the user";

    source.ClearFlags();
    put(panelPictureFile(follows.ID), at("10:00:00"));
    EXPECT_FALSE(source.GetLatest(DB, true)) << "the same file is not new in the next pass";
    EXPECT_EQ(namesIn(GetPanelsFolder()).size(), 1);
}

TEST_F(Adopting, TwoVersionsInARowAreMeasuredEachFromTheLast)
{
    store();
    const auto follows = panel(u"contents"_s, u"C5:H20``"_s, u"bottom=`anchor=$C5`content=Total"_s);
    const QString path = to + u"Sales.xlsx"_s;
    for (const auto& [time, cell] : {std::pair{"09:00:00", u"C9"_s}, std::pair{"10:00:00", u"C15"_s}}) {
        put(from + u"Sales.xlsx"_s, at(time));
        library.books[path] = {PlainSheet(u"Data"_s).put(cell, u"Total"_s)};
        source.ClearFlags();
        EXPECT_TRUE(source.GetLatest(DB, false));
    }
    EXPECT_EQ(storedRange(follows.ID), u"C15:H30``"_s);
}

TEST_F(Adopting, AVersionReachesTheDiskTogetherWithItsRanges)
{
    put(from + u"Sales.xlsx"_s, at("10:00:00"));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const QDateTime before = stored().LastChecked;
    QDateTime onDisk;
    const HostFactory plain = library.factory();
    setHostFactory({[&] {
                        clsPanelSource asRead;
                        asRead.LoadFromDB(source.ID, Database::open(DB->Name(), databaseConnect()));
                        onDisk = asRead.LastChecked;
                        return plain.worker();
                    },
                    {}});
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(onDisk, before) << "the version counts as taken over while a kill would lose its ranges";
    EXPECT_EQ(stored().LastChecked, at("10:00:00"));
}

TEST_F(Adopting, WithoutRangesNoWorkerIsStarted)
{
    put(from + u"Sales.xlsx"_s, at("10:00:00"));
    store();
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_TRUE(library.events.isEmpty());
    panel(u"top"_s, u"$B$5:$F$20``"_s);
    put(from + u"Sales.xlsx"_s, at("10:10:00"));
    library.books[to + u"Sales.xlsx"_s] = {PlainSheet(u"Data"_s)};
    source.ClearFlags();
    EXPECT_TRUE(source.GetLatest(DB, false));
    EXPECT_EQ(library.events.filter(u"start"_s).size(), 1) << "a range that stays is seen with the workbook open";
}

TEST_F(Adopting, AWorkbookThatDoesNotOpenLeavesTheRangesAndDropsThePictures)
{
    put(from + u"Sales.xlsx"_s, at("10:00:00"));
    store();
    const auto follows = panel(u"bottom"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(storedRange(follows.ID), u"$B$5:$F$20``"_s);
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
    EXPECT_EQ(log.entries, QStringList(u"Error clsPanelSource.AdjustRanges: (1004) The workbook \"%1Sales.xlsx\" was "
                                       "not found."_s.arg(to)));
    EXPECT_EQ(prompts.shown.size(), 1);
    EXPECT_EQ(library.events.last(), u"quit"_s);
}

TEST_F(Adopting, ADamagedSheetIsToldOnceAndCostsNoPanelItsRange)
{
    const std::string total = "<sheetData><row r=\"9\"><c r=\"C9\" t=\"inlineStr\"><is><t>Total</t></is></c></row>"
                              "</sheetData>";
    put(from + u"Sales.xlsx"_s, at("10:00:00"),
        WorkbookParts({{"Bad", "<sheetData><row r=\"1\"", ""}, {"Data", total, ""}}).package());
    setHostFactory({embedded::makeEmbeddedWorker, {}});
    store();
    const QString match = u"bottom=$A$1`anchor=$C5`content=Total"_s;
    const auto first = panel(u"bottom"_s, u"$B$5:$F$20``"_s, match, u"Bad"_s);
    const auto second = panel(u"contents"_s, u"$B$5:$F$20``"_s, match, u"Bad"_s);
    const auto sound = panel(u"contents"_s, u"$B$5:$F$20``"_s, match);
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(storedRange(first.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(second.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(storedRange(sound.ID), u"B9:F24``"_s);
    EXPECT_EQ(prompts.shown.size(), 1);
}

TEST_F(Adopting, OfEqualTimesNoneFollowsTheOther)
{
    source.UpdateType = u"default"_s;
    source.Mask = u"*.xlsx"_s;
    put(to + u"A.xlsx"_s, at("10:00:00"));
    put(to + u"B.xlsx"_s, at("10:00:00"));
    store();
    EXPECT_TRUE(source.GetLatest(DB, true));
    const QString current = source.NewestFile;
    source.ClearFlags();
    EXPECT_FALSE(source.GetLatest(DB, true));
    EXPECT_EQ(source.NewestFile, current);
}

TEST_F(Adopting, AFolderWithoutAFittingFileIsLookedAtAgain)
{
    source.UpdateType = u"default"_s;
    source.NewestFile = u"Sales.xlsx"_s;
    store();
    EXPECT_FALSE(source.GetLatest(DB, true));
    EXPECT_FALSE(source.IsChecked);
    EXPECT_EQ(source.NewestFile, QString());
    put(to + u"Sales.xlsx"_s, at("10:00:00"));
    EXPECT_TRUE(source.GetLatest(DB, true));
}

TEST_F(Adopting, AnApostropheInTheNameKeepsTheOldRowAndTheRunGoesOn)
{
    source.UpdateType = u"default"_s;
    source.Mask = u"*.xlsx"_s;
    put(to + u"May's.xlsx"_s, at("10:00:00"));
    store();
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(source.NewestFile, u"May's.xlsx"_s);
    EXPECT_EQ(source.LastChecked, at("08:00:00"));
    EXPECT_EQ(stored().NewestFile, QString());
    EXPECT_TRUE(log.entries.value(0).contains(u"Caller: clsPanelSource.UpdateLastChecked"_s))
        << log.entries.join(u'\n').toStdString();
}

TEST_F(Adopting, TheTimeOfTheCurrentVersion)
{
    EXPECT_EQ(source.NewestFileTime(), QDateTime(QDate(1900, 1, 1), QTime(0, 0)));
    source.NewestFile = u"Sales.xlsx"_s;
    EXPECT_EQ(source.NewestFileTime(), at("10:30:00")) << "a missing file counts as dated now";
    put(to + u"Sales.xlsx"_s, at("09:15:00"));
    EXPECT_EQ(source.NewestFileTime(), at("09:15:00"));
}

TEST_F(Adopting, TheWorkingCopyIsNamedByTheSource)
{
    source.ID = 12;
    EXPECT_EQ(source.Prepped(), folder.filePath(u"program/Templates/LVCopy12.xls"_s));
}

} // namespace
