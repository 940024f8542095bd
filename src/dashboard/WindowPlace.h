#pragma once

class QWidget;

namespace lumivane {

// Where the main window stood last, kept in section "Session" of the settings file. A place that is on no screen any
// more is not taken.

void restoreWindowPlace(QWidget& window);
void storeWindowPlace(const QWidget& window);

} // namespace lumivane
