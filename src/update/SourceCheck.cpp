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
#include "update/PassReport.h"
#include "update/Stillness.h"

#include <QFileInfo>
#include <QScopeGuard>

// How a source finds out that its workbook has a new version: one step fetches it into the destination folder, another
// adopts what lies there. The two are kept apart, so that a file that somebody drops into the folder is adopted too.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString sourceModule = u"clsPanelSource"_s;

/// Runs a procedure of a source under the trap of its name: a failure is logged, shown and kept as the source's
/// problem, and the procedure gives nothing.
template <class Procedure>
auto trapped(clsPanelSource& source, const QString& module, const QString& name, Procedure procedure)
    -> decltype(procedure())
{
    try {
        return procedure();
    } catch (const RuntimeError& failure) {
        source.Problem = failure.description();
        LogError(module, name, failure.number(), failure.description(), true);
        return {};
    }
}

/// A time that was never set lies before all others.
bool isLater(const QDateTime& time, const QDateTime& than)
{
    return !than.isValid() || time > than;
}

/// No file, by the words in which that is answered.
bool isNoFile(const QString& path)
{
    return path.isEmpty() || path == "none"_L1;
}

QString withExtension(const QString& name, const QString& extension)
{
    return extension.isEmpty() ? name : QString(name % u'.' % extension);
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

/// The files that this pass may still take over, of all sources.
QStringList filesToJudge()
{
    QStringList files;
    for (int i = 1; gSources && i <= gSources->Count(); ++i) {
        const auto source = gSources->SourceByIndex(i);
        if (source->UpdateType == "folder"_L1 && !source->IsUpdated)
            files << FindNewestFile(source->SourceFolder % source->Mask);
        if (!source->IsChecked)
            files << FindNewestFile(source->DestFolder % source->Mask);
    }
    return files;
}

/// A folder that cannot be listed must not pass for an empty one.
void requireListable(const QString& folder)
{
    const QFileInfo info(folder);
    if (!info.isReadable() || !info.isExecutable())
        throw RuntimeError(RuntimeError::PathAccess,
                           u"The folder [%1] cannot be listed. Please check your rights to read it."_s.arg(folder));
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
    return trapped(*this, sourceModule, u"GetLatest"_s, [&] {
        if (!IsUpdated && !IsChecked) {
            Problem.clear();
            IsWaiting = false;
        }
        m_byTimer = IsTimer;
        if (const QString current = DestFolder % NewestFile; m_current.path != current)
            m_current = {current, FileStamp::of(current)};
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
        m_brought = {DestFolder % fetched, FileStamp::of(DestFolder % fetched)};
        if (!UpdateLastUpdated(DB, time))
            Problem = u"The project could not be changed, and [%1] will be fetched again."_s.arg(fetched);
    }
    IsUpdated = true;
    return true;
}

QString clsPanelSource::chkSrcFolder(QDateTime& Dt)
{
    return trapped(*this, sourceModule, u"chkSrcFolder"_s, [&]() -> QString {
        requireListable(SourceFolder);
        const QString newest = FindNewestFile(SourceFolder % Mask);
        if (isNoFile(newest))
            return {};
        const FileStamp stamp = FileStamp::of(newest);
        Dt = FileDateTime(newest);
        const bool completed = completesTheFetched(newest);
        if (!isLater(Dt, LastUpdated) && !completed)
            return {};
        if (!standsStill(newest, stamp)) {
            waitFor(newest);
            return {};
        }
        QString name, extension;
        SplitPath(newest, nullptr, &name, &extension);
        if (namesASeries(Mask) && !completed && FileExists(DestFolder % withExtension(name, extension)))
            name += u'_' % Clock::now().toString(u"yyMMddhhmmss"_s);
        const QString fileName = withExtension(name, extension);
        const QString target = DestFolder % fileName;
        if (File_Copy(newest, target))
            return fileName;
        if (FileStamp::of(newest) != stamp) {
            waitFor(newest);
            return {};
        }

        const QString unable = u"Unable to copy "_s % newest % u" to " % DestFolder % u'.';
        const bool retry = ConfirmAction(unable % u"\r\nIf you have the file open in Excel, please close it."
                                                  "\r\nThen click Yes to retry copying the file.");
        Problem = unable;
        // Without another try the version counts as fetched, or it would be asked about in every pass.
        if (retry && File_Copy(newest, target))
            Problem.clear();
        if (!retry || Problem.isEmpty())
            return fileName;
        prompts().message(unable, Prompts::Icon::Exclamation);
        LogEvent(sourceModule, u"chkSrcFolder"_s, u"Error copying "_s % newest % u" to " % DestFolder, false);
        return {};
    });
}

QString clsPanelSource::chkOutlook(QDateTime& Dt)
{
    // Logged under the name of the folder check, where readers of logs look for it.
    return trapped(*this, sourceModule, u"chkSrcFolder"_s, [&]() -> QString {
        if (!mailIntake())
            return {};
        const QString saved = mailIntake()({OLSubject, OLAttach, OLFolder, LastUpdated, DestFolder}, Dt);
        return saved.isEmpty() ? QString() : FilePart(saved);
    });
}

QString clsPanelSource::chkRefresh(QDateTime& Dt)
{
    return trapped(*this, sourceModule, u"chkRefresh"_s, [&]() -> QString {
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
    bool foundNone = false;
    const bool adopted = trapped(*this, u"modPanelSources"_s, u"chkNewestFile"_s, [&] {
        const QString title = u"Select folder to check for files named ["_s % Mask % u']';
        if (askForMissingFolder(DestFolder, title, SourceFolder)) {
            SaveToDB(DB);
            prompts().doEvents();
        } else if (!FolderExists(DestFolder)) {
            foundNone = true;
            return findsNothing(u"The folder [%1] was not found."_s.arg(DestFolder));
        }
        requireListable(DestFolder);
        const QString candidate = FindNewestFile(DestFolder % Mask);
        if (isNoFile(candidate)) {
            foundNone = true;
            return findsNothing(u"No file named [%1] was found in [%2]."_s.arg(Mask, DestFolder));
        }
        const FileStamp stamp = FileStamp::of(candidate);
        bool taken = false;
        if (isNewVersion(candidate, stamp)) {
            if (standsStill(candidate, stamp))
                taken = adopt(DB, candidate, stamp);
            else
                waitFor(candidate);
        }
        return taken;
    });
    // Looked at once a pass, also where that failed: the next panel of the source would only meet the failure again.
    if (!foundNone)
        IsChecked = true;
    return adopted;
}

bool clsPanelSource::isNewVersion(const QString& candidate, const FileStamp& stamp) const
{
    const QString current = DestFolder % NewestFile;
    if (!FileExists(current) || isLater(FileDateTime(candidate), LastChecked))
        return true;
    // A file that was completed or put back may bear an older time than before.
    if (candidate == current)
        return m_current.path == current && m_current.stamp != stamp;
    return stamp.modified > FileStamp::of(current).modified;
}

bool clsPanelSource::completesTheFetched(const QString& newest) const
{
    // Only a copy that nobody has changed since it was fetched may be replaced without a newer time.
    const QString copy = DestFolder % FilePart(newest);
    if (!FileExists(copy) || FileDateTime(copy) != LastUpdated)
        return false;
    return FileStamp::of(copy).size != FileStamp::of(newest).size || FileDateTime(newest) != LastUpdated;
}

bool clsPanelSource::standsStill(const QString& path, const FileStamp& stamp) const
{
    if (m_brought.path == path && m_brought.stamp == stamp)
        return true;
    if (const int rest = untilGrown(stamp); rest > 0) {
        // The user has asked for it and waits; the timer comes again.
        if (m_byTimer)
            return false;
        pauseFor(rest);
    }
    if (!isLookedAt(path, stamp))
        lookAt(filesToJudge());
    return staysAsItWas(path, stamp);
}

void clsPanelSource::waitFor(const QString& path)
{
    Problem = u"[%1] is still being written. It is taken over as soon as it stays unchanged for a moment."_s.arg(path);
    IsWaiting = true;
}

bool clsPanelSource::findsNothing(const QString& reason)
{
    if (!NewestFile.isEmpty())
        m_lost = DestFolder % NewestFile;
    NewestFile.clear();
    if (!m_lost.isEmpty())
        Problem = u"The workbook [%1] was not found."_s.arg(m_lost);
    else if (!FileExists(FullPath))
        Problem = reason;
    return false;
}

bool clsPanelSource::adopt(const std::shared_ptr<Database>& DB, const QString& candidate, const FileStamp& stamp)
{
    const HeldMessages held; // the project is locked until all is written
    // A version that is stored as taken over is not looked at again: it must not be on the disk without its ranges when
    // the program is ended in between.
    Database::Bulk together(*DB);
    auto undo = qScopeGuard([&, formerFile = NewestFile, formerTime = LastChecked] {
        together.takeBack();
        NewestFile = formerFile;
        LastChecked = formerTime;
    });
    NewestFile = FilePart(candidate);
    if (!UpdateLastChecked(DB, FileDateTime(candidate)))
        throw RuntimeError(
            RuntimeError::PathAccess,
            u"The project could not be changed, and the new version [%1] is not taken over."_s.arg(candidate));
    AdjustRanges(DB, DestFolder % NewestFile);
    if (FileStamp::of(candidate) != stamp) {
        waitFor(candidate);
        return false;
    }
    ClearBMPs(DB);
    together.finish();
    undo.dismiss();
    m_current = {candidate, stamp};
    m_lost.clear();
    return true;
}

void clsPanelSource::TakeChosenFile(const std::shared_ptr<Database>& DB, const QString& path)
{
    FullPath = path;
    DestFolder = withDelimiter(FileFolder(path));
    SaveToDB(DB);
    if (!ownsFullPath()) {
        NewestFile = FilePart(path);
        UpdateLastChecked(DB, LastChecked);
    }
    Problem.clear();
}

bool clsPanelSource::UpdateLastChecked(const std::shared_ptr<Database>& DB, const QDateTime& Dt)
{
    return trapped(*this, sourceModule, u"UpdateLastChecked"_s, [&] {
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
    return trapped(*this, sourceModule, u"UpdateLastUpdated"_s, [&] {
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
