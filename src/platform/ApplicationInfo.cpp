#include "platform/ApplicationInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString& chosenFolder()
{
    static QString folder;
    return folder;
}

QString withoutDelimiter(QString folder)
{
    while (folder.size() > 1 && folder.endsWith(u'/'))
        folder.chop(1);
    return folder;
}

} // namespace

QString applicationTitle()
{
    return u"Lumivane"_s;
}

QString executableName()
{
    return u"lumivane"_s;
}

QString programFolder()
{
    if (!chosenFolder().isEmpty())
        return chosenFolder();
    const QString beside = QCoreApplication::applicationDirPath();
    if (QFileInfo(beside + u'/' + executableName() + u".lvdu"_s).isFile())
        return withoutDelimiter(beside);
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u'/' + executableName();
}

void setProgramFolder(const QString& folder)
{
    chosenFolder() =
        folder.isEmpty() ? QString() : withoutDelimiter(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
}

QString withDelimiter(const QString& folder)
{
    if (folder.endsWith(u'/') || folder.endsWith(u'\\'))
        return folder;
    const bool isForeign = folder.contains(u'\\') && !folder.contains(u'/');
    return folder + (isForeign ? u'\\' : u'/');
}

} // namespace lumivane
