#include "Project.h"

#include "platform/Prompts.h"
#include "update/MailIntake.h"

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

/// A row: name, when the last fetch was, minutes between fetches, who asks, whether the file is fetched.
using Due = OfEachRow<ProjectWithSource, 5>;

TEST_P(Due, DecidesWhetherAPassFetches)
{
    const auto& [name, lastUpdated, checkEvery, asked, fetched] = GetParam();
    put(from + u"Sales.xlsx"_s, at(u"10:29:58"_s));
    source.LastUpdated = at(lastUpdated);
    source.CheckEvery = checkEvery.toInt();
    source.IsUpdated = asked == u"again";
    store();
    source.GetLatest(db, asked != u"by the user");
    EXPECT_EQ(namesIn(to), fetched == u"yes" ? QStringList(u"Sales.xlsx"_s) : QStringList());
    EXPECT_EQ(source.IsUpdated, fetched == u"yes" || asked == u"again");
}

INSTANTIATE_TEST_SUITE_P(Times, Due, testing::ValuesIn(textTable<5>(R"(
    at the very minute not yet          | 09:30:00 | 60         | by the timer | no
    a second later                      | 09:29:59 | 60         | by the timer | yes
    not yet but asked by the user       | 10:00:00 | 60         | by the user  | yes
    every tick                          | 10:29:57 | 0          | by the timer | yes
    once a pass                         | 08:00:00 | 60         | again        | no
    frequency beyond 32 bits of seconds | 08:00:00 | 2147483647 | by the timer | no)")),
                         rowName);

/// A row: name, mask, files in the source with their times, older ones in the destination, those there afterwards, the
/// current one.
using FetchFromFolder = OfEachRow<ProjectWithSource, 6>;

TEST_P(FetchFromFolder, BringsTheNewestFileUnderItsName)
{
    const auto& [name, mask, inSource, inDestination, after, newest] = GetParam();
    for (const QString& item : inSource.split(u' '))
        put(from + item.section(u'@', 0, 0), at(item.section(u'@', 1)), "new");
    for (const QString& older : inDestination.split(u' ', Qt::SkipEmptyParts))
        put(to + older, at(u"07:00:00"_s), "old");
    source.Mask = mask;
    store();
    source.GetLatest(db, true);
    EXPECT_EQ(namesIn(to).join(u' '), after);
    EXPECT_EQ(source.NewestFile, newest);
}

INSTANTIATE_TEST_SUITE_P(Masks, FetchFromFolder, testing::ValuesIn(textTable<6>(R"(
    plain name is overwritten         | S.xlsx   | S.xlsx@10:00:00   | S.xlsx | S.xlsx | S.xlsx
    newest of several                 | *.xlsx   | a.xlsx@10:00:00 b.xlsx@10:00:01 c.xlsx@09:59:59 || b.xlsx | b.xlsx
    wild card in front overwrites     | *.xlsx   | S.xlsx@10:00:00   | S.xlsx | S.xlsx | S.xlsx
    question mark in front overwrites | ?.xlsx   | S.xlsx@10:00:00   | S.xlsx | S.xlsx | S.xlsx
    series keeps both | S*.xlsx | S1.xlsx@10:00:00 | S1.xlsx | S1.xlsx S1_261124103000.xlsx |S1_261124103000.xlsx
    series with a new name            | S*.xlsx  | S2.xlsx@10:00:00  | S1.xlsx | S1.xlsx S2.xlsx | S2.xlsx
    no extension keeps its name       | S        | S@10:00:00        |        | S      | S
    not newer than the last           | S.xlsx   | S.xlsx@08:00:00   |        |        |
    lock files do not count           | *.xlsx   | S.xlsx@10:00:00 ~$S.xlsx@10:10:00 || S.xlsx | S.xlsx
    nothing fits                      | C*.xlsx  | S.xlsx@10:00:00   |        |        |)")),
                         rowName);

class Fetch : public ProjectWithSource
{
protected:
    /// A folder in the place of the copy's target: no copy succeeds.
    void blockTheTarget()
    {
        put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
        QDir(to).mkdir(u"Sales.xlsx"_s);
        store();
        log.entries.clear();
    }
    const QString unable = u"Unable to copy %1Sales.xlsx to %2."_s.arg(from, to);
};

TEST_F(Fetch, ALockedFileIsAskedAboutAndNoCountsAsFetched)
{
    blockTheTarget();
    source.GetLatest(db, true);
    EXPECT_EQ(user.asked, QStringList(unable % u"\r\nIf you have the file open in Excel, please close it."
                                               "\r\nThen click Yes to retry copying the file."));
    EXPECT_TRUE(user.shown.isEmpty());
    EXPECT_EQ(source.NewestFile, QString());
    EXPECT_EQ(stored().LastUpdated, at(u"10:00:00"_s));
}

TEST_F(Fetch, AnotherTryThatFailsIsSaidAndMadeAgainInTheNextPass)
{
    blockTheTarget();
    user.confirmations = {true};
    source.GetLatest(db, true);
    EXPECT_EQ(user.shown, QStringList(unable));
    EXPECT_EQ(source.LastUpdated, at(u"08:00:00"_s));
    EXPECT_TRUE(log.entries.last().startsWith(u"Event clsPanelSource.chkSrcFolder: Error copying "_s));
}

TEST_F(Fetch, AnotherTryThatWorksIsLikeTheFirst)
{
    blockTheTarget();
    struct Unblocking : ScriptedPrompts
    {
        QString folder;
        bool confirmAction(const QString&) override { return QDir().rmdir(folder); }
    } unblocking;
    unblocking.folder = to + u"Sales.xlsx"_s;
    setPrompts(&unblocking);
    EXPECT_TRUE(source.GetLatest(db, true));
    EXPECT_EQ(source.NewestFile, u"Sales.xlsx"_s);
    EXPECT_TRUE(unblocking.shown.isEmpty());
}

/// A row: name, kind of update, folders that are gone, those that the user chooses ("-": cancelled), questions, folders
/// that the project has afterwards.
using FolderQuestions = OfEachRow<ProjectWithSource, 6>;

TEST_P(FolderQuestions, AreAskedOnceForEachMissingFolder)
{
    const auto& [name, updateType, missing, chosen, questions, folders] = GetParam();
    const std::map<QString, QString> titles = {
        {u"source"_s, u"Select source folder to retrieve files named [Sales.xlsx] from"_s},
        {u"target"_s, u"Select destination folder to place file named [Sales.xlsx] to"_s},
        {u"mail"_s, u"Select destination folder to save attachment to"_s},
        {u"check"_s, u"Select folder to check for files named [Sales.xlsx]"_s}};
    put(from + u"Sales.xlsx"_s, at(u"10:00:00"_s));
    source.UpdateType = updateType;
    if (missing.contains(u"from"_s))
        source.SourceFolder = u"/gone/from/"_s;
    if (missing.contains(u"to"_s))
        source.DestFolder = u"/gone/to/"_s;
    store();
    for (const QString& choice : chosen.split(u' ', Qt::SkipEmptyParts))
        user.folders.push_back(choice == u"-" ? QString() : path(choice));
    source.GetLatest(db, true);
    QStringList expected;
    for (const QString& question : questions.split(u' ', Qt::SkipEmptyParts))
        expected << titles.at(question);
    EXPECT_EQ(user.asked, expected);
    EXPECT_EQ(stored().SourceFolder == from, folders.contains(u"from"_s));
    EXPECT_EQ(stored().DestFolder == to, folders.contains(u"to"_s));
}

INSTANTIATE_TEST_SUITE_P(Types, FolderQuestions, testing::ValuesIn(textTable<6>(R"(
    folder both chosen                 | folder  | from to | from to | source target       | from to
    folder source chosen               | folder  | from    | from    | source              | from to
    folder last cancelled              | folder  | from to | from -  | source target check |
    folder only the last answered      | folder  | to      | to      | target              | from to
    inbox                              | inbox   | to      | to      | mail                | from to
    inbox cancelled asks for the check | inbox   | to      | - to    | mail check          | from to
    default asks for the check         | default | from to | to      | check               | to
    types are case sensitive           | Folder  | from    |         |                     | to)")),
                         rowName);

TEST_F(Fetch, ARefreshOpensTheCurrentFileInAWorkerOfItsOwn)
{
    source.UpdateType = u"refresh"_s;
    store();
    source.GetLatest(db, true);
    EXPECT_EQ(library.events, QStringList({u"start"_s, u"open "_s + to, u"quit"_s})) << "no current file";
    EXPECT_EQ(user.shown.size(), 1) << "failures are shown, in a timer pass too";
    EXPECT_EQ(source.LastUpdated, at(u"08:00:00"_s));

    source.NewestFile = u"Sales.xlsx"_s;
    const QString path = put(to + u"Sales.xlsx"_s, at(u"10:30:00"_s));
    library.books[path] = {PlainSheet(u"Data"_s)};
    library.events.clear();
    source.ClearFlags();
    EXPECT_TRUE(source.GetLatest(db, true)) << "just written, but by the program itself";
    EXPECT_EQ(library.events.mid(0, 6), QStringList({u"start"_s, u"open "_s + path, u"refresh "_s + path,
                                                     u"save "_s + path, u"close "_s + path, u"quit"_s}));
    EXPECT_EQ(source.LastUpdated, at(u"10:30:00"_s));
}

/// A row: name, time of the copy in the destination, time and content of the file in the source, whether it is fetched.
using FetchAgain = OfEachRow<ProjectWithSource, 5>;

TEST_P(FetchAgain, CompletesWhatWasFetchedByHalf)
{
    const auto& [name, copied, time, content, after] = GetParam();
    put(to + u"Sales.csv"_s, at(copied), "half");
    put(from + u"Sales.csv"_s, at(time), content.toUtf8());
    source.Mask = u"Sales.csv"_s;
    source.NewestFile = u"Sales.csv"_s;
    source.LastUpdated = source.LastChecked = at(u"10:00:00"_s);
    source.CheckEvery = 0;
    store();
    panel(u"top"_s, u"$B$5:$F$20``"_s);
    source.GetLatest(db, true);
    EXPECT_EQ(read(to + u"Sales.csv"_s), after.toUtf8());
    EXPECT_EQ(namesIn(GetPanelsFolder()).isEmpty(), after != u"half") << "its picture goes whatever the time";
}

INSTANTIATE_TEST_SUITE_P(Copies, FetchAgain, testing::ValuesIn(textTable<5>(R"(
    the same                    | 10:00:00 | 10:00:00 | half  | half
    completed in the same second| 10:00:00 | 10:00:00 | whole | whole
    completed with an older time| 10:00:00 | 09:00:00 | whole | whole
    changed by the user         | 09:59:55 | 09:00:00 | whole | half)")),
                         rowName);

TEST_F(Fetch, MailIsAskedForByMasksAndItsFileAdopted)
{
    source.UpdateType = u"inbox"_s;
    source.OLSubject = u"Report*"_s;
    source.OLAttach = u"*.xlsx"_s;
    source.OLFolder = u"id`Inbox"_s;
    store();
    QStringList asked;
    setMailIntake([&](const MailQuestion& question, QDateTime& time) {
        asked = {question.subject, question.attachment, question.folder, dateText(question.newerThan),
                 question.destFolder};
        time = at(u"10:15:00"_s);
        return put(question.destFolder + u"Sales.xlsx"_s, time);
    });
    EXPECT_TRUE(source.GetLatest(db, true));
    setMailIntake({});
    EXPECT_EQ(asked, QStringList({u"Report*"_s, u"*.xlsx"_s, u"id`Inbox"_s, u"2026-11-24 08:00:00"_s, to}));
    EXPECT_EQ(source.NewestFile, u"Sales.xlsx"_s);
    EXPECT_EQ(stored().LastUpdated, at(u"10:15:00"_s));
}

} // namespace
