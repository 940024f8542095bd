#pragma once

#include <QString>

namespace lumivane {

class clsWorkspacePanel;
class Worksheet;

/// Why the place that GetAdjRange has found for a panel may be a wrong one: formulas without stored results had a say
/// in it, and what they would show is not known. A sentence for the user; empty where there is no doubt.
QString placeDoubt(const clsWorkspacePanel& panel, Worksheet& sheet);

} // namespace lumivane
