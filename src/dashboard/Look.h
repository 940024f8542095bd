#pragma once

class QApplication;

namespace lumivane {

/// The program's style, colours and icon, the same on every desktop.
void applyLook(QApplication& application);

} // namespace lumivane
