#include "engine/draw/TextLines.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace lumivane::engine {
namespace {

using Advance = std::function<double(int start, int length)>;

constexpr qsizetype mostMarks = 30; // no writing puts more on one letter

int withoutTrailingBlanks(const QString& text, int start, int end)
{
    while (end > start && text[end - 1].isSpace())
        --end;
    return end;
}

/// Most letters from `start` that fit; 0 where not even the first does.
int fittingLetters(int start, int end, double width, const Advance& advance)
{
    int high = 1; // doubled first, as the line is short and the rest of the text may be long
    while (high < end - start && advance(start, high) <= width)
        high *= 2;
    if (high >= end - start && advance(start, end - start) <= width)
        return end - start;
    int low = high / 2;
    high = std::min(high, end - start - 1);
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (advance(start, middle) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}

/// Where lines may end, ascending. Found once for the whole text: a finder that is asked again for each line walks to
/// the end of a text without any.
std::vector<int> lineEnds(const QString& text)
{
    std::vector<int> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary())
        ends.push_back(static_cast<int>(next));
    return ends;
}

/// The lines of one paragraph, [start, end) of the text.
void breakParagraph(const QString& text, const std::vector<int>& ends, int start, int end, double width,
                    const Advance& advance, std::vector<TextLine>& lines)
{
    int lineStart = start;
    do {
        const int fitting = fittingLetters(lineStart, end, width, advance);
        int lineEnd = lineStart + fitting;
        while (lineEnd < end && text[lineEnd].isSpace()) // blanks may hang over
            ++lineEnd;
        if (lineEnd < end) {
            const auto behind = std::upper_bound(ends.begin(), ends.end(), lineEnd);
            if (behind != ends.begin() && behind[-1] > lineStart)
                lineEnd = behind[-1];
            else
                lineEnd = lineStart + fitting;
        }
        lineEnd = std::clamp(lineEnd, std::min(lineStart + 1, end), end); // every line takes something
        const bool last = lineEnd >= end;
        lines.push_back({lineStart, (last ? end : withoutTrailingBlanks(text, lineStart, lineEnd)) - lineStart, last});
        lineStart = lineEnd;
    } while (lineStart < end);
}

template <class TakeParagraph>
void eachParagraph(const QString& text, TakeParagraph take)
{
    int start = 0;
    const int size = static_cast<int>(text.size());
    while (start <= size) {
        int end = static_cast<int>(text.indexOf(u'\n', start));
        if (end < 0)
            end = size;
        const bool carriageReturn = end > start && text[end - 1] == u'\r';
        take(start, carriageReturn ? end - 1 : end);
        start = end + 1;
    }
}

} // namespace

QString withFewMarks(const QString& text)
{
    qsizetype row = 0; // marks behind the last letter
    const auto isOneTooMany = [&row](QChar c) {
        row = c.unicode() >= 0x300 && c.isMark() ? row + 1 : 0;
        return row > mostMarks;
    };
    if (std::none_of(text.begin(), text.end(), isOneTooMany))
        return text;
    row = 0;
    QString result = text;
    result.removeIf(isOneTooMany);
    return result;
}

std::vector<TextLine> breakLines(const QString& text, double width, const Advance& advance)
{
    std::vector<TextLine> lines;
    const std::vector<int> ends = lineEnds(text);
    eachParagraph(text, [&](int start, int end) { breakParagraph(text, ends, start, end, width, advance, lines); });
    return lines;
}

std::vector<TextLine> splitLines(const QString& text)
{
    std::vector<TextLine> lines;
    eachParagraph(text, [&](int start, int end) { lines.push_back({start, end - start, true}); });
    return lines;
}

} // namespace lumivane::engine
