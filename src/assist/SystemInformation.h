#pragma once

#include <QStringList>

namespace lumivane {

/// The command by which the desktop shows what machine this is, with its arguments: the one named under "System Info"
/// in section "Settings" of the settings file, or else the first known one that is installed. Empty when there is none.
QStringList systemInformationCommand();

} // namespace lumivane
