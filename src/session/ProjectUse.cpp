#include "session/ProjectUse.h"

#include "platform/Clock.h"
#include "services/modUtilsLog.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <memory>
#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTries = 10;

QString signOf(const QString& projectFile)
{
    const QFileInfo file(projectFile);
    return file.absolutePath() + u"/."_s + file.fileName() + u".open"_s;
}

} // namespace

ProjectUse::ProjectUse(const QString& projectFile) : m_sign(signOf(projectFile))
{
    // The file may be taken away by the one who had it, between its opening and its lock.
    for (int tries = 0; tries < mostTries && !take(); ++tries) {
    }
}

#ifdef Q_OS_LINUX

namespace {

/// Far behind the text: on some shared folders a locked byte cannot be read.
constexpr off_t lockedByte = 1 << 20;

bool lockSign(int descriptor)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockedByte;
    lock.l_len = 1;
    return fcntl(descriptor, F_OFD_SETLK, &lock) == 0;
}

bool isStillThere(int descriptor, const QByteArray& path)
{
    struct stat held, named;
    return fstat(descriptor, &held) == 0 && stat(path.constData(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

} // namespace

ProjectUse::~ProjectUse()
{
    if (m_descriptor < 0)
        return;
    QFile::remove(m_sign);
    close(m_descriptor);
}

bool ProjectUse::take()
{
    const QByteArray path = QFile::encodeName(m_sign);
    m_descriptor = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (m_descriptor < 0)
        return true;
    if (!lockSign(m_descriptor)) {
        const bool isTaken = errno == EAGAIN || errno == EACCES;
        char text[400] = {};
        if (isTaken && read(m_descriptor, text, sizeof text - 1) > 0)
            m_other = QString::fromUtf8(text).section(u'\n', 0, 0);
        if (isTaken && m_other.isEmpty())
            m_other = u"another program"_s;
        close(m_descriptor);
        m_descriptor = -1;
        return true;
    }
    if (!isStillThere(m_descriptor, path)) {
        close(m_descriptor);
        m_descriptor = -1;
        return false;
    }
    const QByteArray who = (qEnvironmentVariable("USER", u"somebody"_s) + u" on the computer "_s +
                            QSysInfo::machineHostName() + u" since "_s + dateText(Clock::now()) + u'\n')
                               .toUtf8();
    if (ftruncate(m_descriptor, 0) != 0 || write(m_descriptor, who.constData(), size_t(who.size())) < 0)
        WriteEventLine(u"Main"_s, u"ProjectUse"_s, u"["_s + m_sign + u"] cannot be written."_s);
    return true;
}

#else

ProjectUse::~ProjectUse() = default;

bool ProjectUse::take()
{
    return true;
}

#endif

void announceProject(const QString& projectFile)
{
    static std::unique_ptr<ProjectUse> present;
    present.reset();
    present = std::make_unique<ProjectUse>(projectFile);
    if (!present->other().isEmpty())
        LogEvent(u"Main"_s, u"ProjectUse"_s,
                 u"The project ["_s + projectFile + u"] is open already, by "_s + present->other() +
                     u".\r\nWhat is saved in both places can overwrite each other. Close one of the two before you "
                     "change something."_s,
                 true);
}

} // namespace lumivane
