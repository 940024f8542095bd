#include "Project.h"

#include "host/embedded/EmbeddedHost.h"
#include "support/XlsxWriter.h"
#include "update/PassReport.h"

#include <thread>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

/// A row: name, time of New.xlsx, of Old.xlsx (none: gone) and of the last adopted one (none: never), what is current
/// then.
using AdoptStep = OfEachRow<ProjectWithSource, 5>;

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
    const auto follows = follower();
    const auto stays = panel(u"top"_s, u"$B$5:$F$20``"_s, u"bottom=$H$40"_s);
    const auto elsewhere = follower(u"Costs"_s);
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

TEST_F(Adopting, AWorkbookThatDoesNotOpenLeavesTheRangesAndDropsThePictures)
{
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    store();
    const auto follows = follower();
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(storedRange(follows.ID), u"$B$5:$F$20``"_s);
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
    EXPECT_EQ(log.entries, QStringList(u"Error clsPanelSource.AdjustRanges: (1004) The workbook \"%1Sales.xlsx\" was "
                                       "not found."_s.arg(to)));
    EXPECT_EQ(library.events.last(), u"quit"_s);
}

TEST_F(Adopting, ADamagedSheetIsReportedOnceAndCostsNoPanelItsRange)
{
    const std::string total = "<sheetData><row r=\"9\"><c r=\"C9\" t=\"inlineStr\"><is><t>Total</t></is></c></row>"
                              "</sheetData>";
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s),
        WorkbookParts({{"Bad", "<sheetData><row r=\"1\"", ""}, {"Data", total, ""}}).package());
    setHostFactory({makeEmbeddedWorker, {}});
    store();
    const QString match = u"bottom=$A$1`anchor=$C5`content=Total"_s;
    const auto bad = panel(u"contents"_s, u"$B$5:$F$20``"_s, match, u"Bad"_s);
    follower(u"Bad"_s);
    const auto sound = panel(u"contents"_s, u"$B$5:$F$20``"_s, match);
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(storedRange(bad.ID), u"$B$5:$F$20``"_s);
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

TEST_F(Adopting, AVersionThatTheProjectDoesNotTakeIsTakenBack)
{
    source.UpdateType = u"default"_s;
    source.Mask = u"*.xlsx"_s;
    source.NewestFile = u"April.xlsx"_s;
    put(to + u"April.xlsx"_s, at(u"09:00:00"_s));
    const QString candidate = put(to + u"May', UpdateType = 'folder.xlsx"_s, at(u"10:00:00"_s));
    library.books[candidate] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    const auto follows = follower();
    EXPECT_FALSE(source.GetLatest(db, true));
    EXPECT_EQ(source.NewestFile, u"April.xlsx"_s) << "memory does not run ahead of the store";
    EXPECT_EQ(stored().UpdateType, u"default"_s) << "a file's name is never a part of the statement";
    EXPECT_EQ(source.LastChecked, at(u"08:00:00"_s));
    EXPECT_EQ(storedRange(follows.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(namesIn(GetPanelsFolder()).size(), 1);
    EXPECT_TRUE(source.Problem.contains(candidate)) << source.Problem;
    const auto boxes = user.shown.size();
    source.GetLatest(db, true);
    EXPECT_EQ(user.shown.size(), boxes) << "said once a pass";
}

TEST_F(Adopting, OnePauseServesAllSourcesOfAPass)
{
    source.UpdateType = u"default"_s;
    store();
    clsPanelSource other = source;
    other.ID = 0;
    other.FullPath = to + u"Costs.xlsx"_s;
    other.Mask = u"Costs.xlsx"_s;
    ASSERT_TRUE(other.SaveToDB(db));
    for (const QString& path : {source.FullPath, other.FullPath})
        put(path, at(u"10:00:00"_s));
    ASSERT_TRUE(gSources->LoadAll(db));
    int pauses = 0;
    setPause([&](int milliseconds) {
        ++pauses;
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    });
    for (const int place : {1, 2})
        EXPECT_TRUE(gSources->SourceByIndex(place)->GetLatest(db, true));
    EXPECT_EQ(pauses, 1);
}

/// A row: name, time of the file, who asks, whether it changes between the looks, what becomes of it.
using Stillness = OfEachRow<ProjectWithSource, 5>;

TEST_P(Stillness, DecidesWhetherAFileIsTakenOver)
{
    const auto& [name, time, asked, changes, outcome] = GetParam();
    const QString path = adoptHere(time);
    int waited = 0;
    setPause([&](int milliseconds) {
        waited += milliseconds;
        if (changes == u"yes")
            put(path, at(time), "more of the workbook");
    });
    store();
    EXPECT_EQ(source.GetLatest(db, asked == u"timer"), outcome == u"taken");
    EXPECT_EQ(source.IsWaiting, outcome == u"waits");
    EXPECT_EQ(stored().NewestFile, outcome == u"taken" ? u"Sales.xlsx"_s : QString());
    EXPECT_LT(waited, 1500);
    EXPECT_TRUE(user.shown.isEmpty());

    Clock::setFixed(at(u"10:31:00"_s));
    setPause([](int) {});
    source.ClearFlags();
    source.GetLatest(db, true);
    EXPECT_EQ(source.NewestFile, u"Sales.xlsx"_s) << "in the next pass at the latest";
    EXPECT_TRUE(source.Problem.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Times, Stillness, testing::ValuesIn(textTable<5>(R"(
    old enough                | 10:29:58 | timer | no  | taken
    just written              | 10:29:59 | timer | no  | waits
    just written and awaited  | 10:29:59 | user  | no  | taken
    written between the looks | 10:00:00 | timer | yes | waits
    dated ahead               | 10:30:30 | timer | no  | taken)")),
                         rowName);

TEST_F(Adopting, AFileThatChangesWhileItIsReadIsTakenBack)
{
    const QString path = adoptHere(u"10:00:00"_s);
    library.books[path] = {PlainSheet(u"Data"_s).put(u"H52"_s, u"1"_s)};
    store();
    const auto follows = follower();
    const HostFactory plain = library.factory();
    setHostFactory({[&] {
                        put(path, at(u"10:00:00"_s), "the rest of the workbook");
                        return plain.worker();
                    },
                    {}});
    EXPECT_FALSE(source.GetLatest(db, true));
    EXPECT_TRUE(source.IsWaiting);
    EXPECT_EQ(storedRange(follows.ID), u"$B$5:$F$20``"_s);
    EXPECT_EQ(stored().NewestFile, QString());
    EXPECT_EQ(namesIn(GetPanelsFolder()).size(), 1);
}

TEST_F(Adopting, ACurrentFileThatChangesIsTakenOverWhateverItsTime)
{
    source.NewestFile = u"Sales.xlsx"_s;
    adoptHere(u"08:00:00"_s);
    store();
    panel(u"top"_s, u"$B$5:$F$20``"_s);
    EXPECT_FALSE(source.GetLatest(db, true));
    put(to + u"Sales.xlsx"_s, at(u"07:00:00"_s), "an older one, put back");
    source.ClearFlags();
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_TRUE(namesIn(GetPanelsFolder()).isEmpty());
}

/// A row: name, rule, stored range, its clauses, a cell of the version that does not fit, one of the next, the range in
/// that.
using MisplacedRange = OfEachRow<ProjectWithSource, 7>;

TEST_P(MisplacedRange, IsNotStoredAndTheNextVersionIsRight)
{
    const auto& [name, rule, range, match, bad, good, healed] = GetParam();
    const QString path = adoptHere(u"08:00:00"_s);
    store();
    const auto follows = panel(rule, range + u"``"_s, QString(match).replace(u'/', u'`'));
    const auto deliver = [&](const QString& time, const QString& cell) {
        put(path, at(time));
        PlainSheet sheet(u"Data"_s);
        library.books[path] = {cell.isEmpty() ? sheet : sheet.put(cell, u"Total"_s)};
        source.ClearFlags();
        EXPECT_TRUE(source.GetLatest(db, true));
        return storedRange(follows.ID);
    };
    EXPECT_EQ(deliver(u"09:00:00"_s, bad), range + u"``");
    EXPECT_EQ(deliver(u"10:00:00"_s, good), healed + u"``");
}

INSTANTIATE_TEST_SUITE_P(Rules, MisplacedRange, testing::ValuesIn(textTable<7>(R"(
    empty sheet          | bottom   | B5:F20 | bottom=$H$40                    |        | H52 | B17:F32
    beyond the last row  | bottom   | B5:F20 | bottom=$H$40                    | H32768 | H52 | B17:F32
    above the first row  | bottom   | B5:F20 | bottom=$H$40                    | H35    | H52 | B17:F32
    left of the sheet    | bottom   | B5:F20 | bottom=$H$40                    | F40    | H52 | B17:F32
    anchor above the top | contents | B5:F20 | bottom=/anchor=$C9/content=Total| C4     | C12 | B8:F23)")),
                         rowName);

TEST_F(Adopting, ReportsOfAPassComeInOneBoxAndNeverWhileTheProjectIsLocked)
{
    struct Writing : ScriptedPrompts
    {
        QString file;
        void message(const QString& text, Icon icon) override
        {
            runRaw(file, "UPDATE LvnPanelSource SET MacroName = MacroName");
            ScriptedPrompts::message(text, icon);
        }
    } writing;
    writing.file = db->Name();
    setPrompts(&writing);
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s)); // there is no such book in the host
    store();
    follower();
    {
        const PassReport pass;
        EXPECT_TRUE(source.GetLatest(db, true));
        PassReport::add(u"Another."_s);
        EXPECT_TRUE(writing.shown.isEmpty());
    }
    ASSERT_EQ(writing.shown.size(), 1);
    EXPECT_TRUE(writing.shown.first().endsWith(u"Sales.xlsx\" was not found.\r\n\r\nAnother."_s))
        << writing.shown.first();
}

} // namespace
