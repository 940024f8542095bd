#pragma once

#include "platform/FileStamp.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace lumivane {

/// Watches the file behind a window. Notices of the file system are only a hint to look: they fail on network drives
/// and end when a program saves by renaming another file over this one. So the file is looked at now and then anyway,
/// and a change is told only when two looks in a row saw the same: until then somebody may still be writing.
class WorkbookWatch : public QObject
{
    Q_OBJECT

public:
    explicit WorkbookWatch(QObject* parent = nullptr);

    /// From now on changes against the file as it is now, or as `known` says, are told; each once.
    void watch(const QString& path, const FileStamp& known);
    void setPauses(int lookMilliseconds, int settleMilliseconds);
    bool isGone() const { return m_told.size < 0; }

Q_SIGNALS:
    void changed(); ///< the file is another one now, or is gone

private:
    void look();
    void watchAgain();

    QString m_path;
    FileStamp m_told; ///< the state that the user knows of
    FileStamp m_seen; ///< at the last look
    QFileSystemWatcher m_notices;
    QTimer m_looks;
    int m_settle = 400;
};

} // namespace lumivane
