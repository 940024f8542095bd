#pragma once

#include "engine/content/Sparklines.h"
#include "engine/read/xlsx/Palette.h"

namespace lumivane::engine {

/// A <sparklineGroup>. A chart whose cell or reference cannot be understood is left out.
SparklineGroup readSparklines(pugi::xml_node node, const Palette& palette);

} // namespace lumivane::engine
