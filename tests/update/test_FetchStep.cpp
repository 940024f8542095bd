#include "Project.h"

#include "update/MailIntake.h"

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

struct DueRow
{
    const char* name;
    const char* lastUpdated;
    int checkEvery;
    bool isTimer, isUpdated;
    bool fetched;
};

class Due : public ProjectWithSource, public testing::WithParamInterface<DueRow>
{
};

TEST_P(Due, DecidesWhetherAPassFetches)
{
    put(from + u"Sales.xlsx"_s, at("10:29:59"));
    source.LastUpdated = at(GetParam().lastUpdated);
    source.CheckEvery = GetParam().checkEvery;
    source.IsUpdated = GetParam().isUpdated;
    store();
    source.GetLatest(DB, GetParam().isTimer);
    EXPECT_EQ(namesIn(to), GetParam().fetched ? QStringList(u"Sales.xlsx"_s) : QStringList());
    EXPECT_EQ(source.IsUpdated, GetParam().fetched || GetParam().isUpdated);
}

const DueRow dueRows[] = {
    {"at_the_very_minute_not_yet", "09:30:00", 60, true, false, false},
    {"a_second_later", "09:29:59", 60, true, false, true},
    {"not_yet_but_asked_by_the_user", "10:00:00", 60, false, false, true},
    {"every_tick", "10:29:58", 0, true, false, true},
    {"once_a_pass", "08:00:00", 60, false, true, false},
    {"frequency_beyond_32_bits_of_seconds", "08:00:00", 2147483647, true, false, false},
};

INSTANTIATE_TEST_SUITE_P(Times, Due, testing::ValuesIn(dueRows), [](const auto& row) { return row.param.name; });

struct FetchRow
{
    const char* name;
    QString mask;
    // Lists are separated by "|".
    QString inSource;      ///< "name time"
    QString inDestination; ///< names; older than all
    QString after;
    QString newest;
};

class FetchFromFolder : public ProjectWithSource, public testing::WithParamInterface<FetchRow>
{
};

TEST_P(FetchFromFolder, BringsTheNewestFileUnderItsName)
{
    for (const QString& item : GetParam().inSource.split(u'|', Qt::SkipEmptyParts))
        put(from + item.section(u' ', 0, 0), at(item.section(u' ', 1).toLatin1()), "new");
    for (const QString& name : GetParam().inDestination.split(u'|', Qt::SkipEmptyParts))
        put(to + name, at("07:00:00"), "old");
    source.Mask = GetParam().mask;
    store();
    source.GetLatest(DB, true);
    EXPECT_EQ(namesIn(to).join(u'|'), GetParam().after);
    EXPECT_EQ(source.NewestFile, GetParam().newest);
}

const FetchRow fetchRows[] = {
    {"plain_name_is_overwritten", u"Sales.xlsx"_s, u"Sales.xlsx 10:00:00"_s, u"Sales.xlsx"_s, u"Sales.xlsx"_s,
     u"Sales.xlsx"_s},
    {"newest_of_several", u"*.xlsx"_s, u"a.xlsx 10:00:00|b.xlsx 10:00:01|c.xlsx 09:59:59"_s, u""_s, u"b.xlsx"_s,
     u"b.xlsx"_s},
    {"wild_card_in_front_overwrites", u"*.xlsx"_s, u"Sales.xlsx 10:00:00"_s, u"Sales.xlsx"_s, u"Sales.xlsx"_s,
     u"Sales.xlsx"_s},
    {"question_mark_in_front_overwrites", u"?ales.xlsx"_s, u"Sales.xlsx 10:00:00"_s, u"Sales.xlsx"_s, u"Sales.xlsx"_s,
     u"Sales.xlsx"_s},
    {"series_keeps_both", u"Sales*.xlsx"_s, u"Sales1.xlsx 10:00:00"_s, u"Sales1.xlsx"_s,
     u"Sales1.xlsx|Sales1_261124103000.xlsx"_s, u"Sales1_261124103000.xlsx"_s},
    {"series_with_a_new_name", u"Sales*.xlsx"_s, u"Sales2.xlsx 10:00:00"_s, u"Sales1.xlsx"_s,
     u"Sales1.xlsx|Sales2.xlsx"_s, u"Sales2.xlsx"_s},
    {"no_extension_keeps_the_point", u"Sales"_s, u"Sales 10:00:00"_s, u""_s, u"Sales."_s, u""_s},
    {"not_newer_than_the_last", u"Sales.xlsx"_s, u"Sales.xlsx 08:00:00"_s, u""_s, u""_s, u""_s},
    {"lock_files_do_not_count", u"*.xlsx"_s, u"Sales.xlsx 10:00:00|~$Sales.xlsx 10:10:00"_s, u""_s, u"Sales.xlsx"_s,
     u"Sales.xlsx"_s},
    {"nothing_fits", u"Costs*.xlsx"_s, u"Sales.xlsx 10:00:00"_s, u""_s, u""_s, u""_s},
};

INSTANTIATE_TEST_SUITE_P(Masks, FetchFromFolder, testing::ValuesIn(fetchRows),
                         [](const auto& row) { return row.param.name; });

class Fetch : public ProjectWithSource
{
protected:
    /// A folder in the place of the copy's target: no copy succeeds.
    void blockTheTarget()
    {
        put(from + u"Sales.xlsx"_s, at("10:00:00"));
        QDir(to).mkdir(u"Sales.xlsx"_s);
        store();
        log.entries.clear();
    }
    const QString unable = u"Unable to copy %1Sales.xlsx to %2."_s.arg(from, to);
};

TEST_F(Fetch, ALockedFileIsAskedAboutAndNoCountsAsFetched)
{
    blockTheTarget();
    source.GetLatest(DB, true);
    EXPECT_EQ(prompts.asked, QStringList(unable % u"\r\nIf you have the file open in Excel, please close it."
                                                  "\r\nThen click Yes to retry copying the file."));
    EXPECT_TRUE(prompts.shown.isEmpty());
    EXPECT_EQ(source.LastUpdated, at("10:00:00"));
    EXPECT_EQ(source.NewestFile, QString());
    EXPECT_EQ(stored().LastUpdated, at("10:00:00"));
}

TEST_F(Fetch, AnotherTryThatFailsIsToldAndMadeAgainInTheNextPass)
{
    blockTheTarget();
    prompts.confirmations = {true};
    source.GetLatest(DB, true);
    EXPECT_EQ(prompts.shown, QStringList(unable));
    EXPECT_EQ(source.LastUpdated, at("08:00:00"));
    EXPECT_EQ(log.entries.last(),
              u"Event clsPanelSource.chkSrcFolder: Error copying %1Sales.xlsx to %2"_s.arg(from, to));
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
    EXPECT_TRUE(source.GetLatest(DB, true));
    EXPECT_EQ(source.NewestFile, u"Sales.xlsx"_s);
    EXPECT_TRUE(unblocking.shown.isEmpty());
}

struct FolderRow
{
    const char* name;
    QString updateType;
    bool sourceMissing, destinationMissing;
    std::deque<QString> chosen; ///< "from", "to" or empty
    QStringList titles;
    bool sourceStored, destinationStored; ///< the project has the folders that exist
};

class FolderQuestions : public ProjectWithSource, public testing::WithParamInterface<FolderRow>
{
};

TEST_P(FolderQuestions, AreAskedOnceForEachMissingFolder)
{
    put(from + u"Sales.xlsx"_s, at("10:00:00"));
    source.UpdateType = GetParam().updateType;
    if (GetParam().sourceMissing)
        source.SourceFolder = u"/gone/from/"_s;
    if (GetParam().destinationMissing)
        source.DestFolder = u"/gone/to/"_s;
    store();
    for (const QString& choice : GetParam().chosen)
        prompts.folders.push_back(choice.isEmpty() ? choice : folder.filePath(choice));
    source.GetLatest(DB, true);
    EXPECT_EQ(prompts.asked, GetParam().titles);
    const clsPanelSource again = stored();
    EXPECT_EQ(again.SourceFolder == from, GetParam().sourceStored);
    EXPECT_EQ(again.DestFolder == to, GetParam().destinationStored);
}

const QString askSource = u"Select source folder to retrieve files named [Sales.xlsx] from"_s;
const QString askTarget = u"Select destination folder to place file named [Sales.xlsx] to"_s;
const QString askMail = u"Select destination folder to save attachment to"_s;
const QString askCheck = u"Select folder to check for files named [Sales.xlsx]"_s;

const FolderRow folderRows[] = {
    {"folder_both_there", u"folder"_s, false, false, {}, {}, true, true},
    {"folder_both_chosen", u"folder"_s, true, true, {u"from"_s, u"to"_s}, {askSource, askTarget}, true, true},
    {"folder_source_chosen", u"folder"_s, true, false, {u"from"_s}, {askSource}, true, true},
    {"folder_last_cancelled",
     u"folder"_s,
     true,
     true,
     {u"from"_s, u""_s},
     {askSource, askTarget, askCheck},
     false,
     false},
    {"folder_only_the_last_answered", u"folder"_s, false, true, {u"to"_s}, {askTarget}, true, true},
    {"inbox", u"inbox"_s, false, true, {u"to"_s}, {askMail}, true, true},
    {"inbox_cancelled_asks_for_the_check", u"inbox"_s, false, true, {u""_s, u"to"_s}, {askMail, askCheck}, true, true},
    {"default_asks_for_the_check", u"default"_s, true, true, {u"to"_s}, {askCheck}, false, true},
    {"types_are_case_sensitive", u"Folder"_s, true, false, {}, {}, false, true},
};

INSTANTIATE_TEST_SUITE_P(Types, FolderQuestions, testing::ValuesIn(folderRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(Fetch, ARefreshOpensTheCurrentFileInAWorkerOfItsOwn)
{
    source.UpdateType = u"refresh"_s;
    source.NewestFile = u"Sales.xlsx"_s;
    const QString path = put(to + u"Sales.xlsx"_s, at("09:00:00"));
    library.books[path] = {PlainSheet(u"Data"_s)};
    store();
    source.GetLatest(DB, true);
    EXPECT_EQ(library.events.mid(0, 6), QStringList({u"start"_s, u"open "_s + path, u"refresh "_s + path,
                                                     u"save "_s + path, u"close "_s + path, u"quit"_s}));
    EXPECT_EQ(source.LastUpdated, at("09:00:00"));
}

TEST_F(Fetch, ARefreshWithoutACurrentFileFailsAndEndsItsWorker)
{
    source.UpdateType = u"refresh"_s;
    store();
    source.GetLatest(DB, true);
    EXPECT_EQ(library.events, QStringList({u"start"_s, u"open "_s + to, u"quit"_s}));
    EXPECT_EQ(log.entries,
              QStringList(u"Error clsPanelSource.chkRefresh: (1004) The workbook \"%1\" was not found."_s.arg(to)));
    EXPECT_EQ(prompts.shown.size(), 1) << "failures are shown, in a timer pass too";
    EXPECT_TRUE(source.IsUpdated);
    EXPECT_EQ(source.LastUpdated, at("08:00:00"));
}

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
        time = at("10:15:00");
        return put(question.destFolder + u"Sales.xlsx"_s, time);
    });
    EXPECT_TRUE(source.GetLatest(DB, true));
    setMailIntake({});
    EXPECT_EQ(asked, QStringList({u"Report*"_s, u"*.xlsx"_s, u"id`Inbox"_s, u"2026-11-24 08:00:00"_s, to}));
    EXPECT_EQ(source.NewestFile, u"Sales.xlsx"_s);
    EXPECT_EQ(stored().LastUpdated, at("10:15:00"));
}

TEST_F(Fetch, MailThatFailsIsLoggedUnderTheFolderCheck)
{
    source.UpdateType = u"inbox"_s;
    store();
    setMailIntake([](const MailQuestion&, QDateTime&) -> QString { throw RuntimeError(7, u"No mail."_s); });
    EXPECT_FALSE(source.GetLatest(DB, true));
    setMailIntake({});
    EXPECT_EQ(log.entries, QStringList(u"Error clsPanelSource.chkSrcFolder: (7) No mail."_s));
    EXPECT_EQ(source.LastUpdated, at("08:00:00"));
}

} // namespace
