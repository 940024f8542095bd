#include "engine/read/ContentCache.h"

#include "engine/read/WorkbookReader.h"
#include "platform/FileStamp.h"

#include <algorithm>

namespace lumivane::engine {

struct ContentCache::Entry
{
    QString path;
    FileStamp stamp;
    std::shared_ptr<WorkbookContent> content;
};

ContentCache::ContentCache(qint64 maxBytes) : m_maxBytes(maxBytes) {}

ContentCache::~ContentCache() = default;

std::shared_ptr<WorkbookContent> ContentCache::open(const QString& path)
{
    const FileStamp stamp = FileStamp::of(path);
    const auto place =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.path == path; });
    Entry entry;
    if (place != m_entries.end()) {
        entry = std::move(*place);
        m_entries.erase(place);
    }
    if (!entry.content || entry.stamp != stamp)
        entry = {path, stamp, readWorkbook(path)};
    const std::shared_ptr<WorkbookContent> content = entry.content;
    m_entries.push_back(std::move(entry));
    dropLeastUsed();
    return content;
}

/// The entries stand in the order of their last use. The one just opened stays, however large it is: sheets grow it
/// after it has been opened, so it is weighed again at every later opening.
void ContentCache::dropLeastUsed()
{
    qint64 sum = 0;
    for (const Entry& entry : m_entries)
        sum += entry.content->bytes();
    while (m_entries.size() > 1 && sum > m_maxBytes) {
        sum -= m_entries.front().content->bytes();
        m_entries.erase(m_entries.begin());
    }
}

void ContentCache::clear()
{
    m_entries.clear();
}

} // namespace lumivane::engine
