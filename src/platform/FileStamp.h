#pragma once

#include <QString>
#include <QtGlobal>

namespace lumivane {

/// By what a file is known to be still the same one. Two writings within one tick of the clock differ by inode or size.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = -1;    ///< below 0: there is no such file
    qint64 modified = 0; ///< nanoseconds

    bool operator==(const FileStamp&) const = default;
    static FileStamp of(const QString& path);
};

} // namespace lumivane
