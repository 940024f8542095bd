#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace lumivane {

// Files and paths. Each procedure traps its own failure, logs it under "modUtilsFile" without a box, and answers false
// or empty.

/// Wild cards work; a hidden file counts as missing.
bool FileExists(const QString& File);
bool FolderExists(const QString& Folder);
bool FolderCreate(const QString& Folder); ///< one level; an existing folder is a failure
/// With overwrite; keeps the time of the file. A source that is written to meanwhile is a failure.
bool File_Copy(const QString& Source, const QString& Dest);
bool FileRename(const QString& OldName, const QString& NewName); ///< copy, then delete; works across drives

/// Whether two paths mean one file. They are compared without regard to case, but where both are there under different
/// names, the disk decides.
bool isSameFile(const QString& path, const QString& other);
/// Whether two paths lead to the same file or folder, links followed. False where either leads nowhere.
bool isSamePlace(const QString& path, const QString& other);

QString PathDelimiter(const QString& Path);
QString FileFolder(const QString& Path); ///< without the delimiter
QString FilePart(const QString& Path);   ///< the name behind it
/// Outputs may be null. `Extension` is set only where the file part has a dot beyond its first character.
void SplitPath(const QString& Path, QString* Folder, QString* Name, QString* Extension);

/// Whether a file name, or the name at the end of a path, fits a wild-card name as `Dir` reads it.
bool FitsMask(const QString& Path, const QString& Mask);
/// Full path of the file matching a folder and a wild-card name with the latest modification time, to the fraction of a
/// second; of equal times the first listed. A plain name means that very file where it is there. Empty when there is
/// none.
QString FindNewestFile(const QString& Mask);
/// Local, whole seconds. Throws RuntimeError 53 when the file is not there.
QDateTime FileDateTime(const QString& File);
/// Sets the times of the file. -1 done, 1 the file system refused, 0 the time cannot be converted.
int AdjustFileTime(const QString& FileName, const QDateTime& Time);
/// Names matching `*` and `?` without regard to case, files only, hidden ones left out (names beginning with "." and
/// the lock files of spreadsheet programs), in the order of the directory.
QStringList Dir(const QString& mask);

} // namespace lumivane
