#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/modUtilsSQL.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "update/MailIntake.h"

// How a source finds out that its workbook has a new version: one step fetches it into the destination folder, another
// adopts what lies there. The two are kept apart, so that a file that somebody drops into the folder is adopted too.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString sourceModule = u"clsPanelSource"_s;

/// Runs a procedure under the trap of its name: a failure is logged and shown, and the procedure gives nothing.
template <class Procedure>
auto trapped(const QString& module, const QString& name, Procedure procedure) -> decltype(procedure())
{
    try {
        return procedure();
    } catch (const RuntimeError& failure) {
        LogError(module, name, failure.number(), failure.description(), true);
        return {};
    }
}

/// A time that was never set lies before all others.
bool isLater(const QDateTime& time, const QDateTime& than)
{
    return !than.isValid() || time > than;
}

/// No file, by the words in which that is told.
bool isNoFile(const QString& path)
{
    return path.isEmpty() || path == "none"_L1;
}

/// The name of a file without its folder. It keeps its point where there is no extension: that is the form in which
/// names are stored.
QString fileNameOf(const QString& path)
{
    QString name, extension;
    SplitPath(path, nullptr, &name, &extension);
    return name % u'.' % extension;
}

/// A wild card at the very beginning, as in "*.xls", names any file; one behind it names a series of files.
bool namesASeries(const QString& mask)
{
    return mask.indexOf(u'?', 1) >= 0 || mask.indexOf(u'*', 1) >= 0;
}

/// Asks for a folder if it is missing. True if one was chosen.
bool askForMissingFolder(QString& folder, const QString& title, const QString& startFolder)
{
    if (FolderExists(folder))
        return false;
    const QString chosen = prompts().browseForFolder(title, startFolder);
    if (chosen.isEmpty())
        return false;
    folder = withDelimiter(chosen);
    return true;
}

} // namespace

QDateTime clsPanelSource::NewestFileTime() const
{
    if (NewestFile.isEmpty())
        return longAgo();
    const QString path = DestFolder % NewestFile;
    return FileExists(path) ? FileDateTime(path) : Clock::now();
}

bool clsPanelSource::GetLatest(const std::shared_ptr<Database>& DB, bool IsTimer)
{
    return trapped(sourceModule, u"GetLatest"_s, [&] {
        // Counted from the last update, not from the last look: once overdue, a source is looked at in every pass.
        const bool due = isLater(Clock::now(), LastUpdated.addSecs(qint64(CheckEvery) * 60));
        if ((due || !IsTimer) && !IsUpdated)
            chkUpdates(DB);
        return IsChecked || chkNewestFile(DB);
    });
}

bool clsPanelSource::chkUpdates(const std::shared_ptr<Database>& DB)
{
    QDateTime time;
    QString fetched;
    const auto keepChosenFolder = [&] {
        SaveToDB(DB);
        prompts().doEvents();
    };
    if (UpdateType == "folder"_L1) {
        const bool missing = !FolderExists(DestFolder);
        bool chosen = askForMissingFolder(
            SourceFolder, u"Select source folder to retrieve files named ["_s % Mask % u"] from", SourceFolder);
        // Of two questions the last one decides whether the record is written.
        if (missing)
            chosen = askForMissingFolder(
                DestFolder, u"Select destination folder to place file named ["_s % Mask % u"] to", SourceFolder);
        if (chosen)
            keepChosenFolder();
        if (FolderExists(SourceFolder) && FolderExists(DestFolder))
            fetched = chkSrcFolder(time);
    } else if (UpdateType == "inbox"_L1) {
        if (askForMissingFolder(DestFolder, u"Select destination folder to save attachment to"_s, SourceFolder))
            keepChosenFolder();
        if (FolderExists(DestFolder))
            fetched = chkOutlook(time);
    } else if (UpdateType == "refresh"_L1) {
        if (askForMissingFolder(DestFolder, u"Select folder to check for files named ["_s % Mask % u"]", SourceFolder))
            keepChosenFolder();
        if (FolderExists(DestFolder))
            fetched = chkRefresh(time);
    }
    if (!fetched.isEmpty()) {
        LastUpdated = time;
        UpdateLastUpdated(DB, time);
    }
    IsUpdated = true;
    return true;
}

QString clsPanelSource::chkSrcFolder(QDateTime& Dt)
{
    return trapped(sourceModule, u"chkSrcFolder"_s, [&]() -> QString {
        const QString newest = FindNewestFile(SourceFolder % Mask);
        if (isNoFile(newest))
            return {};
        Dt = FileDateTime(newest);
        if (!isLater(Dt, LastUpdated))
            return {};
        QString name, extension;
        SplitPath(newest, nullptr, &name, &extension);
        if (namesASeries(Mask) && FileExists(DestFolder % name % u'.' % extension))
            name += u'_' % Clock::now().toString(u"yyMMddhhmmss"_s);
        const QString target = DestFolder % name % u'.' % extension;
        if (File_Copy(newest, target))
            return name % u'.' % extension;

        const QString unable = u"Unable to copy "_s % newest % u" to " % DestFolder % u'.';
        const bool retry = ConfirmAction(unable % u"\r\nIf you have the file open in Excel, please close it."
                                                  "\r\nThen click Yes to retry copying the file.");
        // Without another try the version counts as fetched, or it would be asked about in every pass.
        if (!retry || File_Copy(newest, target))
            return name % u'.' % extension;
        prompts().message(unable, Prompts::Icon::Exclamation);
        LogEvent(sourceModule, u"chkSrcFolder"_s, u"Error copying "_s % newest % u" to " % DestFolder, false);
        return {};
    });
}

QString clsPanelSource::chkOutlook(QDateTime& Dt)
{
    // Logged under the name of the folder check, where readers of logs look for it.
    return trapped(sourceModule, u"chkSrcFolder"_s, [&]() -> QString {
        if (!mailIntake())
            return {};
        const QString saved = mailIntake()({OLSubject, OLAttach, OLFolder, LastUpdated, DestFolder}, Dt);
        return saved.isEmpty() ? QString() : fileNameOf(saved);
    });
}

QString clsPanelSource::chkRefresh(QDateTime& Dt)
{
    return trapped(sourceModule, u"chkRefresh"_s, [&]() -> QString {
        const JobWorker worker;
        if (!worker)
            return {};
        const auto workbook = worker->Open(DestFolder % NewestFile);
        workbook->RefreshAll();
        workbook->Save();
        Dt = NewestFileTime();
        return NewestFile;
    });
}

QString clsPanelSource::chkExtern(QDateTime&)
{
    return {};
}

bool clsPanelSource::chkNewestFile(const std::shared_ptr<Database>& DB)
{
    return trapped(u"modPanelSources"_s, u"chkNewestFile"_s, [&] {
        const QString title = u"Select folder to check for files named ["_s % Mask % u']';
        if (askForMissingFolder(DestFolder, title, SourceFolder)) {
            SaveToDB(DB);
            prompts().doEvents();
        } else if (!FolderExists(DestFolder)) {
            NewestFile.clear();
            return false;
        }
        const QString candidate = FindNewestFile(DestFolder % Mask);
        if (isNoFile(candidate)) {
            NewestFile.clear();
            return false;
        }
        const QDateTime time = FileDateTime(candidate);
        const bool newer = isLater(time, NewestFileTime()) || isLater(time, LastChecked);
        if (FileExists(DestFolder % NewestFile) && !newer) {
            IsChecked = true;
            return false;
        }
        NewestFile = fileNameOf(candidate);
        {
            // A version that is stored as taken over is not looked at again: it must not be on the disk without its
            // ranges when the program is ended in between.
            Database::Bulk together(*DB);
            UpdateLastChecked(DB, time);
            AdjustRanges(DB, DestFolder % NewestFile);
            ClearBMPs(DB);
            together.finish();
        }
        IsChecked = true;
        return true;
    });
}

bool clsPanelSource::UpdateLastChecked(const std::shared_ptr<Database>& DB, const QDateTime& Dt)
{
    return trapped(sourceModule, u"UpdateLastChecked"_s, [&] {
        const QString sql = u"UPDATE LvnPanelSource SET  LastChecked = "_s % instantLiteral(Dt) % u", NewestFile = " %
                            textLiteral(NewestFile) % u" WHERE ID = " % QString::number(ID);
        if (!SQL_ExecuteOnRow(DB, sql, u"source [%1]"_s.arg(FullPath), sourceModule, u"UpdateLastChecked"_s))
            return false;
        LastChecked = Dt;
        return true;
    });
}

bool clsPanelSource::UpdateLastUpdated(const std::shared_ptr<Database>& DB, const QDateTime& Dt)
{
    return trapped(sourceModule, u"UpdateLastUpdated"_s, [&] {
        const QString sql =
            u"UPDATE LvnPanelSource SET LastUpdated = "_s % instantLiteral(Dt) % u" WHERE ID = " % QString::number(ID);
        // Written twice, of which the second time counts: a file that was busy for a moment is free by then.
        SQL_Execute(DB, sql, true, {}, {});
        if (!SQL_ExecuteOnRow(DB, sql, u"source [%1]"_s.arg(FullPath), sourceModule, u"UpdateLastUpdated"_s))
            return false;
        LastUpdated = Dt;
        return true;
    });
}

QString clsPanelSource::Prepped() const
{
    return GetTemplatesFolder() % u"LVCopy" % QString::number(ID) % u".xls";
}

} // namespace lumivane
