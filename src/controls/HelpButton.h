#pragma once

#include <QString>

class QPushButton;

namespace lumivane {

/// The Help button of a dialog: it, and F1 anywhere in its dialog, shows this help topic.
void connectHelp(QPushButton& cmdHelp, const QString& topic);

} // namespace lumivane
