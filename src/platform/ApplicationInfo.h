#pragma once

#include <QString>

namespace lumivane {

/// The program's title as it stands in windows and messages.
QString applicationTitle();
/// The base name of the program's files: project, settings, log.
QString executableName();

/// The program folder, with no delimiter at its end: the folder of the executable when a project file lies beside it
/// (portable use), otherwise "lumivane" below the user's data folder, which start-up furnishes with an empty project
/// when it does not exist yet. The one place that decides; everything else asks here.
QString programFolder();
/// For tools and tests: this folder instead; an empty text goes back to the rule.
void setProgramFolder(const QString& folder);

/// The folder text with a delimiter behind it, unless it already ends in one: its own, or the platform's where it holds
/// none. An empty text becomes the delimiter alone.
QString withDelimiter(const QString& folder);

} // namespace lumivane
