#include "services/RecentWorkbooks.h"

#include "services/modUtilsINI.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostRecent = 10;
constexpr qsizetype longestPath = 255; // what a value of the settings file is read up to
const QString recentSection = u"Session"_s;

QString recentKey(qsizetype number)
{
    return u"Recent Workbook %1"_s.arg(number + 1);
}

void storeRecent(const QStringList& paths)
{
    for (qsizetype i = 0; i < mostRecent; ++i) {
        const QString path = paths.value(i);
        if (path != GetIniString(GetIniFile(), recentSection, recentKey(i), QString()))
            SetIniString(GetIniFile(), recentSection, recentKey(i), path);
    }
}

} // namespace

QStringList recentWorkbooks()
{
    QStringList paths;
    for (qsizetype i = 0; i < mostRecent; ++i) {
        const QString path = GetIniString(GetIniFile(), recentSection, recentKey(i), QString());
        if (!path.isEmpty() && !paths.contains(path))
            paths.append(path);
    }
    return paths;
}

void rememberWorkbook(const QString& path)
{
    if (path.size() > longestPath)
        return;
    QStringList paths = recentWorkbooks();
    paths.removeAll(path);
    paths.prepend(path);
    storeRecent(paths.first(qMin(paths.size(), mostRecent)));
}

void forgetWorkbook(const QString& path)
{
    QStringList paths = recentWorkbooks();
    paths.removeAll(path);
    storeRecent(paths);
}

} // namespace lumivane
