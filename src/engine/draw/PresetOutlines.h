#pragma once

#include "engine/draw/GuideValues.h"
#include "engine/draw/ShapeOutline.h"

namespace lumivane::engine {

/// The outline of a preset by its name, whose adjustments are among the values; none for a name that is not known.
std::optional<ShapeOutline> presetOutline(const std::string& name, const QSizeF& size, const GuideValues& values);

} // namespace lumivane::engine
