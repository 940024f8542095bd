#pragma once

#include <QString>

namespace lumivane {

// Folders beside the program, and the Yes/No question of every command.

/// With a delimiter at the end, made when missing; empty when that fails.
QString GetPanelsFolder();
QString GetTemplatesFolder();
/// Cached picture of a stored panel; empty for one not stored yet.
QString panelPictureFile(int panelID);

/// A Yes/No question titled "Confirm Action" with No as its default.
bool ConfirmAction(const QString& Text);

} // namespace lumivane
