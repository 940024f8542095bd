#pragma once

#include "engine/read/WorkbookFile.h"

namespace lumivane::engine {

/// Workbooks read before, found again by path, inode, size and time, so that forty panels of one file read it once.
/// Bounded by bytes; the one used least recently goes first.
class ContentCache
{
public:
    explicit ContentCache(qint64 maxBytes = 256ll << 20);
    /// The file as it is now. Throws as WorkbookFile::open does; a file that fails is not kept.
    std::shared_ptr<WorkbookFile> open(const QString& path);
    void clear();

private:
    void dropLeastUsed();

    std::vector<std::shared_ptr<WorkbookFile>> m_files; ///< in the order of their last use
    qint64 m_maxBytes;
};

} // namespace lumivane::engine
