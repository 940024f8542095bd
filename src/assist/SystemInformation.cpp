#include "assist/SystemInformation.h"

#include "services/modUtilsINI.h"

#include <QProcess>
#include <QStandardPaths>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// Of the desktops first, each its own; then what shows the same on any of them.
constexpr const char* informationTools[] = {
    "kinfocenter",
    "gnome-control-center info-overview",
    "cinnamon-settings info",
    "mate-system-monitor --show-system-tab",
    "lxqt-about",
    "xfce4-about",
    "hardinfo",
};

QStringList installedCommand(const QString& text)
{
    QStringList command = QProcess::splitCommand(text);
    if (command.isEmpty())
        return {};
    command.first() = QStandardPaths::findExecutable(command.first());
    return command.first().isEmpty() ? QStringList() : command;
}

} // namespace

QStringList systemInformationCommand()
{
    const QString chosen = GetIniString(GetIniFile(), u"Settings"_s, u"System Info"_s, QString());
    if (QStringList command = installedCommand(chosen); !command.isEmpty())
        return command;
    for (const char* tool : informationTools) {
        if (QStringList command = installedCommand(QString::fromLatin1(tool)); !command.isEmpty())
            return command;
    }
    return {};
}

} // namespace lumivane
