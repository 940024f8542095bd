#include "engine/draw/Measures.h"

#include "engine/format/NumberFormat.h"

namespace lumivane::engine {

const Measures& Measures::of(Metrics metrics)
{
    static const Measures file{
        .customaryFonts = false,
        .hintedLetters = false,
        .generalCharacters = 11,
        .signsForNumber = 0,
        .logicalValues = Horizontal::Center,
        .leading = 1,
        .belowText = 0,
        .gridLines = true,
        .background = true,
        .commentMarks = true,
        .evenPatterns = false,
        .wholeDigits = true,
        .wholeRows = true,
        .growsRows = true,
        .rowPoints = 0,
        .ownFont = false,
        .fittedTextsScale = 1,
        .fittedShare = 1,
        .fittedPadding = -1,
        .wholeLines = true,
        .edgesFallShort = false,
    };
    static const Measures calc{
        .customaryFonts = true,
        .hintedLetters = true,
        .generalCharacters = NumberFormat::unlimited,
        .signsForNumber = 3,
        .logicalValues = Horizontal::Right,
        .leading = 0,
        .belowText = 1,
        .gridLines = false,
        .background = false,
        .commentMarks = false,
        .evenPatterns = true,
        .wholeDigits = false,
        .wholeRows = false,
        .growsRows = false,
        .rowPoints = 12.8,
        .ownFont = true,
        .fittedTextsScale = outlineScale,
        // Found by trying, within a pixel for most texts.
        .fittedShare = 1.0207,
        .fittedPadding = 10.2,
        .wholeLines = false,
        .edgesFallShort = true,
    };
    return metrics == Metrics::Calc ? calc : file;
}

} // namespace lumivane::engine
