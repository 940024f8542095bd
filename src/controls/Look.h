#pragma once

#include <QIcon>

class QApplication;

namespace lumivane {

/// The program's style and icon, and its colours for a light or a dark desktop, whichever the user has. A desktop that
/// changes while the program runs is followed.
void applyLook(QApplication& application);
/// The colours alone, whatever the desktop has.
void applyColors(QApplication& application, bool dark);

/// One of the program's own icons, by its file name without suffix, readable on light and dark windows.
QIcon dashboardIcon(const QString& name);

} // namespace lumivane
