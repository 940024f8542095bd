#pragma once

#include "platform/FileStamp.h"

#include <QDateTime>
#include <QString>
#include <map>
#include <memory>
#include <vector>

namespace lumivane {

class Database;
class Recordset;

/// One spreadsheet file behind panels, with the rule by which its new versions are found. The record's members are
/// defined in repository/, those that look for new versions in update/.
class clsPanelSource
{
public:
    qint16 ID = 0;         ///< below 1: not stored yet
    QString FullPath;      ///< as first pasted from
    QString Mask;          ///< file name or wildcard
    QString DestFolder;    ///< working folder, with its delimiter
    QString NewestFile;    ///< name of the current version in DestFolder
    QDateTime LastUpdated; ///< time of the newest version fetched; the frequency counts from it
    QDateTime LastChecked; ///< time stamp of the file adopted last
    qint32 CheckEvery = 0; ///< minutes
    QString UpdateType;    ///< "folder", "inbox", "refresh", "default", "NA"
    QString SourceFolder;  ///< folder to fetch from, with its delimiter
    QString OLFolder;      ///< mail folder: id ` display name
    QString OLSubject;
    QString OLSender;
    QString OLAttach;
    QString Macro;
    QString CmdLine;
    QString AddedParams;
    bool HasCustom = false; ///< some panel of this source is custom
    QDateTime CustomDate;   ///< reserved
    bool IsUpdated = false; ///< the fetch step has run in this pass
    bool IsChecked = false; ///< the adopt step has settled in this pass
    /// Why the last look for a new version came to nothing, as a sentence; empty when it did not. Pictures of an older
    /// version stand meanwhile, marked as such.
    QString Problem;
    bool IsWaiting = false; ///< the problem is only that a file is still being written

    // The record (repository/).
    bool LoadFromDB(int SourceID, const std::shared_ptr<Database>& DB);
    bool chkHasCustom(int SourceID, const std::shared_ptr<Database>& DB);
    bool LoadFromRecSet(const std::shared_ptr<Recordset>& rs);
    bool SaveToDB(const std::shared_ptr<Database>& DB);
    bool UpdateDB(const std::shared_ptr<Database>& DB);
    bool DelFromDB(const std::shared_ptr<Database>& DB, int SourceID);
    void ClearSource();
    void ClearFlags();
    /// DestFolder + NewestFile, or FullPath when there is no newest file. Empty when the source has no file yet.
    QString currentPath() const;
    /// False for a FullPath that is another source's: an import writes one path to all sources under a base folder.
    bool ownsFullPath() const;

    // Looking for new versions (update/).
    QDateTime NewestFileTime() const;
    /// Runs the fetch step if due and the adopt step if not settled. True if settled before or a new version adopted.
    bool GetLatest(const std::shared_ptr<Database>& DB, bool IsTimer);
    QString chkRefresh(QDateTime& Dt);
    QString chkSrcFolder(QDateTime& Dt);
    QString chkOutlook(QDateTime& Dt);
    QString chkExtern(QDateTime& Dt);
    QString Prepped() const;
    /// Makes a file that the user has chosen the current one. A name that the mask does not fit is stored as the newest
    /// file's, or the source would have no file when it is loaded the next time.
    void TakeChosenFile(const std::shared_ptr<Database>& DB, const QString& path);

private:
    bool InsertDB(const std::shared_ptr<Database>& DB);
    qint32 GetID(const std::shared_ptr<Database>& DB, const QString& path);
    /// Throws at its end, naming the first picture that could not be removed.
    void ClearBMPs(const std::shared_ptr<Database>& DB);
    void AdjustRanges(const std::shared_ptr<Database>& DB, const QString& Path);
    bool chkUpdates(const std::shared_ptr<Database>& DB);
    bool chkNewestFile(const std::shared_ptr<Database>& DB);
    bool UpdateLastChecked(const std::shared_ptr<Database>& DB, const QDateTime& Dt);
    bool UpdateLastUpdated(const std::shared_ptr<Database>& DB, const QDateTime& Dt);
    bool isNewVersion(const QString& candidate, const FileStamp& stamp) const;
    bool completesTheFetched(const QString& newest) const;
    bool standsStill(const QString& path, const FileStamp& stamp) const;
    bool adopt(const std::shared_ptr<Database>& DB, const QString& candidate, const FileStamp& stamp);
    void waitFor(const QString& path);
    bool findsNothing(const QString& reason);

    struct SeenFile
    {
        QString path;
        FileStamp stamp;
    };
    SeenFile m_current; ///< the current file as it was taken over, or first seen
    SeenFile m_brought; ///< what the fetch step has just written itself
    QString m_lost;     ///< the current file that is not there any more
    bool m_byTimer = false;

    friend struct SourceProbe; // tests
};

/// Every source of the project, loaded once when it is opened. Panels of one file share one object.
class clsSources
{
public:
    void ClearFlags();
    std::shared_ptr<clsPanelSource> Source(int ID) const;         ///< null if unknown
    std::shared_ptr<clsPanelSource> SourceByIndex(int Ndx) const; ///< from 1
    int Count() const;
    /// The id of the source of this file, found by its current or first path without regard to case, or made: then
    /// throws when the file is not there. One that could not be stored has id 0.
    qint16 AddSource(const QString& FullPath);
    bool LoadAll(const std::shared_ptr<Database>& DB);
    void Cleanup();

private:
    void add(const std::shared_ptr<clsPanelSource>& source); ///< throws RuntimeError 457 for an id that is there

    std::vector<std::shared_ptr<clsPanelSource>> m_sources;
    std::map<int, std::shared_ptr<clsPanelSource>> m_byId;
};

/// Every source of the project; written by frmWorkspace, and by OpenProject for scripts.
extern std::shared_ptr<clsSources> gSources;

} // namespace lumivane
