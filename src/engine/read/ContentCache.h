#pragma once

#include "engine/content/WorkbookContent.h"

namespace lumivane::engine {

/// Workbooks read before, found again by path, inode, size and time, so that forty panels of one file read it once.
/// Bounded by bytes; the one used least recently goes first.
class ContentCache
{
public:
    explicit ContentCache(qint64 maxBytes = 256ll << 20);
    ~ContentCache();
    /// The content of the file as it is now. Throws as readWorkbook does; a file that fails is not kept.
    std::shared_ptr<WorkbookContent> open(const QString& path);
    void clear();

private:
    struct Entry;
    void dropLeastUsed();

    std::vector<Entry> m_entries;
    qint64 m_maxBytes;
};

} // namespace lumivane::engine
