#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace lumivane {

// Alternate paths of the open project. They travel in a shared file: where the folder BasePath does not exist on the
// importing machine, AltPath is used.

struct AlternatePath
{
    QString BasePath;
    QString AltPath;

    bool operator==(const AlternatePath&) const = default;
};

/// By base path; empty when they cannot be read.
std::vector<AlternatePath> alternatePaths();
/// Removes every row of this pair.
bool deleteAlternatePath(const AlternatePath& pair);
bool SaveAltPaths(const AlternatePath& pair);

/// The folders that sources of the project use, each once: what can have an alternate.
QStringList alternateBases();
/// The alternate path ending in a delimiter where the base does, so that a replacement does not join a folder's name
/// to a file's. An alternate of the other world gets that world's delimiter.
QString alternateLike(const QString& base, const QString& alternate);

/// The path with every `base` in it replaced by `alternate`, letters compared exactly. Between worlds the rest of the
/// path takes the delimiters of the alternate.
QString rewrittenPath(const QString& path, const QString& base, const QString& alternate);

} // namespace lumivane
