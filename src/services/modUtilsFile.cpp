#include "services/modUtilsFile.h"

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "platform/FileStamp.h"
#include "platform/RuntimeError.h"
#include "platform/Wildcards.h"
#include "services/modUtilsLog.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <filesystem>
#ifdef Q_OS_UNIX
#include <sys/file.h>
#include <unistd.h>
#endif

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void logFileEvent(const QString& procedure, const QString& text)
{
    LogEvent(u"modUtilsFile"_s, procedure, text, false);
}

bool hasWildCard(const QString& name)
{
    return name.contains(u'*') || name.contains(u'?');
}

bool isHidden(const QString& name)
{
    return name.startsWith(u'.') || name.startsWith(u"~$"_s);
}

/// `*` and `?` without regard to case.
bool matchesMask(QStringView name, QStringView mask)
{
    return fitsPattern(name, mask, [](QStringView pattern, qsizetype& at, QChar c) {
        const QChar p = pattern[at++];
        return p == u'?' || p.toCaseFolded() == c.toCaseFolded();
    });
}

[[noreturn]] void refuseCopy(const QString& source, const QString& dest, const QString& reason)
{
    throw RuntimeError(RuntimeError::PathAccess, u"Cannot copy ["_s + source + u"] to ["_s + dest + u"]: "_s + reason);
}

void copyBytes(QFile& from, QFile& to, const QString& dest)
{
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    for (;;) {
        const qint64 got = from.read(buffer.data(), buffer.size());
        if (got < 0)
            refuseCopy(from.fileName(), dest, from.errorString());
        if (got == 0)
            return;
        if (to.write(buffer.constData(), got) != got)
            refuseCopy(from.fileName(), dest, to.errorString());
    }
}

void bringToDisk(QFile& file)
{
    file.flush();
#ifdef Q_OS_UNIX
    ::fsync(file.handle());
#endif
}

/// The mark of a copy that is being made, before six letters by chance.
const QString copyMark = u".lumivane-copy-"_s;
constexpr qsizetype chanceLetters = 6;

/// Keeps other runs of the program from taking the file for a leftover. False where somebody else holds it, or where
/// the file system knows no such locks.
bool holdsAlone(QFile& file)
{
#ifdef Q_OS_UNIX
    return ::flock(file.handle(), LOCK_EX | LOCK_NB) == 0;
#else
    return false;
#endif
}

/// Removes what killed runs have left of their copies. Such a file bears the mark and nobody holds it; all others in
/// the folder are the user's.
void removeLeftCopies(const QString& folder)
{
    QDirIterator entries(folder, {copyMark + u'*'}, QDir::Files | QDir::Hidden);
    while (entries.hasNext()) {
        QFile left(entries.next());
        if (entries.fileName().size() == copyMark.size() + chanceLetters &&
            left.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && holdsAlone(left))
            left.remove();
    }
}

/// Copies under a hidden name and renames: whoever looks into the folder sees the old file or the new one, and what a
/// crash leaves behind is never taken for a new version. A source that changes meanwhile would give half of each
/// version, and is not copied.
void copyThroughTemporary(const QString& source, const QString& dest)
{
    QFile from(source);
    const FileStamp before = FileStamp::of(source);
    if (!QFileInfo(source).isFile())
        throw RuntimeError(RuntimeError::FileNotFound, u"File not found: ["_s + source + u"]"_s);
    if (!from.open(QIODevice::ReadOnly))
        refuseCopy(source, dest, from.errorString());
    const QFileInfo target(dest);
    if (dest.isEmpty() || target.isDir())
        refuseCopy(source, dest, u"a folder has this name"_s);
    if (target.exists() && !target.isWritable())
        refuseCopy(source, dest, u"the file is write-protected"_s);
    if (isSamePlace(dest, source))
        refuseCopy(source, dest, u"they are the same file"_s);

    // A link stays one: the file that it names is replaced.
    const QFileInfo place(target.exists() ? target.canonicalFilePath() : target.absoluteFilePath());
    removeLeftCopies(place.absolutePath());
    QTemporaryFile to(place.absolutePath() + u'/' + copyMark + QString(chanceLetters, u'X'));
    if (!to.open())
        refuseCopy(source, dest, to.errorString());
    holdsAlone(to);
    const QString temporaryName = to.fileName();
    copyBytes(from, to, dest);
    if (!to.flush())
        refuseCopy(source, dest, to.errorString());
    if (FileStamp::of(source) != before)
        refuseCopy(source, dest, u"it was written to while it was copied"_s);
    // Writable even if the source is not, so that the next version can take its place.
    to.setPermissions(from.permissions() | QFile::WriteOwner);
    to.setFileTime(from.fileTime(QFile::FileModificationTime), QFile::FileModificationTime);
    bringToDisk(to);
    to.close();

    std::error_code failed;
    std::filesystem::rename(QFileInfo(temporaryName).filesystemFilePath(), place.filesystemFilePath(), failed);
    if (failed)
        refuseCopy(source, dest, QString::fromStdString(failed.message()));
    to.setAutoRemove(false);
}

} // namespace

QStringList Dir(const QString& mask)
{
    const QString name = FilePart(mask);
    const QString folder = mask.chopped(name.size());
    QStringList names;
    if (name.isEmpty())
        return names;
    QDirIterator entries(folder.isEmpty() ? u"."_s : folder, QDir::Files);
    while (entries.hasNext()) {
        entries.next();
        const QString entry = entries.fileName();
        if (!isHidden(entry) && matchesMask(entry, name))
            names.append(entry);
    }
    return names;
}

bool FitsMask(const QString& Path, const QString& Mask)
{
    return matchesMask(FilePart(Path), Mask);
}

bool FileExists(const QString& File)
{
    if (File.isEmpty())
        return false;
    const QString name = FilePart(File);
    if (hasWildCard(name))
        return !Dir(File).isEmpty();
    // A plain name is asked for as it will be opened, with its case.
    return !isHidden(name) && QFileInfo(File).isFile();
}

bool FolderExists(const QString& Folder)
{
    return !Folder.isEmpty() && QFileInfo(Folder).isDir();
}

bool FolderCreate(const QString& Folder)
{
    QString reason = u"Path not found"_s;
    if (QFileInfo::exists(Folder))
        reason = u"The name exists already"_s;
    else if (QDir().mkdir(Folder))
        return true;
    else if (FolderExists(QFileInfo(Folder).absolutePath()))
        reason = u"The folder above it cannot be written"_s;
    logFileEvent(u"FolderCreate"_s, reason + u"\r\n"_s + Folder);
    return false;
}

bool File_Copy(const QString& Source, const QString& Dest)
{
    try {
        copyThroughTemporary(Source, Dest);
        return true;
    } catch (const RuntimeError& error) {
        logFileEvent(u"File_Copy"_s, error.description());
        return false;
    }
}

bool FileRename(const QString& OldName, const QString& NewName)
{
    if (!FileExists(OldName))
        return false;
    if (!File_Copy(OldName, NewName) || !FileExists(NewName))
        return false;
    if (QFile::remove(OldName))
        return true;
    logFileEvent(u"FileRename"_s, u"["_s + OldName + u"] cannot be removed after it was copied."_s);
    return false;
}

bool isSameFile(const QString& path, const QString& other)
{
    if (path == other || path.compare(other, Qt::CaseInsensitive) != 0)
        return path == other;
    const FileStamp one = FileStamp::of(path), two = FileStamp::of(other);
    return one.size < 0 || two.size < 0 || (one.device == two.device && one.inode == two.inode);
}

bool isSamePlace(const QString& path, const QString& other)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(other).canonicalFilePath();
}

QString PathDelimiter(const QString& Path)
{
    return Path.contains(u'/') ? u"/"_s : u"\\"_s;
}

QString FileFolder(const QString& Path)
{
    const qsizetype delimiter = Path.lastIndexOf(PathDelimiter(Path));
    return delimiter < 0 ? QString() : Path.first(delimiter);
}

QString FilePart(const QString& Path)
{
    return Path.sliced(Path.lastIndexOf(PathDelimiter(Path)) + 1);
}

void SplitPath(const QString& Path, QString* Folder, QString* Name, QString* Extension)
{
    const QString file = FilePart(Path);
    const qsizetype dot = file.lastIndexOf(u'.');
    if (Folder)
        *Folder = FileFolder(Path);
    if (Name)
        *Name = dot > 0 ? file.first(dot) : file;
    if (Extension && dot > 0)
        *Extension = file.sliced(dot + 1);
}

QString FindNewestFile(const QString& Mask)
{
    const QString folder = Mask.chopped(FilePart(Mask).size());
    qint64 newest = longAgo().toMSecsSinceEpoch() * 1'000'000;
    QString found;
    // A plain name means the file of that very name before one that differs by case.
    const QString plain = FilePart(Mask);
    const bool there = !hasWildCard(plain) && FileExists(Mask);
    for (const QString& name : there ? QStringList(plain) : Dir(Mask)) {
        const FileStamp stamp = FileStamp::of(folder + name);
        if (stamp.size >= 0 && stamp.modified > newest) {
            newest = stamp.modified;
            found = folder + name;
        }
    }
    return found;
}

QDateTime FileDateTime(const QString& File)
{
    const QFileInfo info(File);
    if (!info.isFile())
        throw RuntimeError(RuntimeError::FileNotFound, u"File not found: ["_s + File + u"]"_s);
    return wholeSeconds(info.lastModified());
}

int AdjustFileTime(const QString& FileName, const QDateTime& Time)
{
    // The range in which every file system can tell a time.
    if (!Time.isValid() || Time.date().year() < 1601 || Time.date().year() > 9999) {
        logFileEvent(u"AdjustFileTime"_s, u"The time for ["_s + FileName + u"] is not one that a file can have."_s);
        return 0;
    }
    const QDateTime time = wholeSeconds(Time);
    QFile file(FileName);
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) &&
        file.setFileTime(time, QFile::FileModificationTime) && file.setFileTime(time, QFile::FileAccessTime))
        return -1;
    logFileEvent(u"AdjustFileTime"_s, u"The time of ["_s + FileName + u"] cannot be set: "_s + file.errorString());
    return 1;
}

} // namespace lumivane
