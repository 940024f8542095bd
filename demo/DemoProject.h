#pragma once

#include <QDir>

namespace lumivane::demo {

/// Makes the demo in a folder: the first version of the reports, the project file with its sources and dashboards and
/// the settings of the program. Throws RuntimeError naming what could not be made.
void makeDemo(const QDir& folder);

} // namespace lumivane::demo
