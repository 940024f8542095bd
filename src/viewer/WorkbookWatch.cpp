#include "viewer/WorkbookWatch.h"

#include <QFileInfo>

namespace lumivane {

namespace {
constexpr int millisecondsBetweenLooks = 2000;
}

WorkbookWatch::WorkbookWatch(QObject* parent) : QObject(parent)
{
    m_looks.setInterval(millisecondsBetweenLooks);
    connect(&m_looks, &QTimer::timeout, this, &WorkbookWatch::look);
    connect(&m_notices, &QFileSystemWatcher::fileChanged, this, &WorkbookWatch::look);
    connect(&m_notices, &QFileSystemWatcher::directoryChanged, this, &WorkbookWatch::look);
}

void WorkbookWatch::setPauses(int lookMilliseconds, int settleMilliseconds)
{
    m_looks.setInterval(lookMilliseconds);
    m_settle = settleMilliseconds;
}

void WorkbookWatch::watch(const QString& path, const FileStamp& known)
{
    m_path = path;
    m_told = m_seen = known;
    if (!m_notices.files().isEmpty())
        m_notices.removePaths(m_notices.files());
    if (!m_notices.directories().isEmpty())
        m_notices.removePaths(m_notices.directories());
    watchAgain();
    m_looks.start();
    look();
}

/// A file renamed over the watched one takes its place in the folder, but not in the watcher.
void WorkbookWatch::watchAgain()
{
    const QString folder = QFileInfo(m_path).absolutePath();
    if (!m_notices.files().contains(m_path) && QFileInfo::exists(m_path))
        m_notices.addPath(m_path);
    if (!m_notices.directories().contains(folder))
        m_notices.addPath(folder);
}

void WorkbookWatch::look()
{
    watchAgain();
    const FileStamp now = FileStamp::of(m_path);
    const bool settled = now == m_seen;
    m_seen = now;
    if (now == m_told)
        return;
    if (!settled) {
        QTimer::singleShot(m_settle, this, &WorkbookWatch::look);
        return;
    }
    m_told = now;
    Q_EMIT changed();
}

} // namespace lumivane
