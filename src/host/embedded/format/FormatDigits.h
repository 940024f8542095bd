#pragma once

#include "host/embedded/format/FormatCode.h"
#include "host/embedded/format/NumberFormat.h"

namespace lumivane::embedded {

/// A number without its sign through the digits, fraction or exponent of a section. `allZero` tells that no digit other
/// than 0 came out, so that no sign belongs in front.
FormattedText digitsText(const FormatSection& section, double magnitude, int generalChars, bool& allZero);

} // namespace lumivane::embedded
