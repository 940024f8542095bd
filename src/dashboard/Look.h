#pragma once

#include <QIcon>

class QApplication;

namespace lumivane {

/// The program's style, colours and icon, the same on every desktop.
void applyLook(QApplication& application);
/// One of the program's own icons, by its file name without suffix.
QIcon dashboardIcon(const QString& name);

} // namespace lumivane
