#pragma once

#include <QString>

namespace lumivane {

class Worksheet;
class clsWorkspacePanel;

/// Locates the panel's range as GetAdjRange does and answers what is wrong with the place, as a sentence; empty when it
/// is good. A rule may find none (an empty sheet): the range then lies where it is stored. Or the range had to be
/// stopped at the edge of the sheet. Stored, neither could be moved back by a later version.
QString locateRange(clsWorkspacePanel& panel, Worksheet& ws);

} // namespace lumivane
