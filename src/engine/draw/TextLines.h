#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace lumivane::engine {

/// A line of a broken text: a stretch without the line feed or the blanks at which it was broken.
struct TextLine
{
    int start = 0;
    int length = 0;
    bool endsParagraph = false; ///< by a line feed or the end of the text: not spread out by "justify"
};

/// Breaks a text into lines: at line feeds, and behind blanks and hyphens where a line would be wider than `width`; a
/// word wider than that is broken between letters. `advance` measures a stretch of the text.
std::vector<TextLine> breakLines(const QString& text, double width,
                                 const std::function<double(int start, int length)>& advance);

/// The text without the marks that no letter can carry: a heap of them takes the square of its size to lay out.
QString withFewMarks(const QString& text);

/// At line feeds only.
std::vector<TextLine> splitLines(const QString& text);

} // namespace lumivane::engine
