#include "engine/read/ContentCache.h"

#include <algorithm>

namespace lumivane::engine {

ContentCache::ContentCache(qint64 maxBytes) : m_maxBytes(maxBytes) {}

std::shared_ptr<WorkbookFile> ContentCache::open(const QString& path)
{
    const auto place =
        std::find_if(m_files.begin(), m_files.end(), [&](const auto& file) { return file->path() == path; });
    std::shared_ptr<WorkbookFile> file;
    if (place != m_files.end()) {
        file = std::move(*place);
        m_files.erase(place);
    }
    if (!file || file->stamp() != FileStamp::of(path))
        file = WorkbookFile::open(path);
    m_files.push_back(file);
    dropLeastUsed();
    return file;
}

/// The one just opened stays, however large it is: sheets grow it after it has been opened, so it is weighed again at
/// every later opening.
void ContentCache::dropLeastUsed()
{
    qint64 sum = 0;
    for (const auto& file : m_files)
        sum += file->bytes();
    while (m_files.size() > 1 && sum > m_maxBytes) {
        sum -= m_files.front()->bytes();
        m_files.erase(m_files.begin());
    }
}

void ContentCache::clear()
{
    m_files.clear();
}

} // namespace lumivane::engine
