#pragma once

#include "engine/content/Styles.h"

namespace lumivane::engine {

/// Which sizes texts, rows and columns get: as the program that wrote the file shows them, or as LibreOffice Calc does
/// (for comparison only).
enum class Metrics { File, Calc };

/// At this scale hinting hardly changes a measure any more.
constexpr double outlineScale = 16;

/// What the two differ in. Chosen once; whoever measures or paints asks for the one thing it needs.
struct Measures
{
    // Letters and texts
    bool customaryFonts;      ///< only the customary fonts have others in their place, whatever the widths
    bool hintedLetters;       ///< letters are fitted to whole pixels, and not narrowed to digits of whole pixels
    int generalCharacters;    ///< the most that General shows, however wide the cell
    int signsForNumber;       ///< "#" in place of a number that does not fit; 0: as many as fit
    Horizontal logicalValues; ///< booleans and errors
    int leading;              ///< pixels above and below each line: a row is as many times higher as it holds lines
    int belowText;            ///< pixels that a text at the bottom of its cell keeps free

    // Looks
    bool gridLines;
    bool background;   ///< the picture under the cells
    bool commentMarks; ///< cells with a comment are marked
    bool evenPatterns; ///< a pattern shows in its mean colour

    // Sizes
    bool wholeDigits;        ///< columns count digits of whole pixels; otherwise twips of unrounded ones
    bool wholeRows;          ///< rows are rounded to pixels; otherwise cut to them, but not those of the own height
    bool growsRows;          ///< rows without a stored height are as high as their texts
    double rowPoints;        ///< of a row for which the file says nothing; 0: from the default font
    bool ownFont;            ///< a text file is shown in the program's own font
    double fittedTextsScale; ///< at which texts are measured that decide the width of a column
    double fittedShare;      ///< by which such a column is wider than its text
    double fittedPadding;    ///< pixels added to it; below 0: the padding of stored widths, after rounding up
    bool wholeLines;         ///< the lines of a wrapped text that decide a row's height are rounded to pixels
    bool edgesFallShort;     ///< a size ends a trace before its last pixel, and is cut

    static const Measures& of(Metrics metrics);
};

} // namespace lumivane::engine
