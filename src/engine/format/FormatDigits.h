#pragma once

#include "engine/format/FormatCode.h"
#include "engine/format/NumberFormat.h"

namespace lumivane::engine {

/// A number without its sign through the digits, fraction or exponent of a section. `allZero` tells that no digit other
/// than 0 came out, so that no sign belongs in front.
FormattedText digitsText(const FormatSection& section, double magnitude, int generalChars, bool& allZero);

} // namespace lumivane::engine
