#include "platform/FileStamp.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace lumivane {

FileStamp FileStamp::of(const QString& path)
{
#ifdef Q_OS_UNIX
    struct stat status;
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return {status.st_dev, status.st_ino, status.st_size,
            qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec};
#else
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    return {0, 0, file.size(), file.lastModified().toMSecsSinceEpoch() * 1'000'000};
#endif
}

} // namespace lumivane
