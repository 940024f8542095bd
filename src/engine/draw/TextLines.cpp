#include "engine/draw/TextLines.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace lumivane::engine {
namespace {

using Advance = std::function<double(int start, int length)>;

int withoutTrailingBlanks(const QString& text, int start, int end)
{
    while (end > start && text[end - 1].isSpace())
        --end;
    return end;
}

/// Most letters from `start` that fit; at least one, so that every line takes something.
int fittingLetters(int start, int end, double width, const Advance& advance)
{
    int high = 1; // doubled first, as the line is short and the rest of the text may be long
    while (high < end - start && advance(start, high) <= width)
        high *= 2;
    int low = 1;
    high = std::min(high, end - start);
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (advance(start, middle) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}

/// The lines of one paragraph, [start, end) of the text.
void breakParagraph(const QString& text, QTextBoundaryFinder& finder, int start, int end, double width,
                    const Advance& advance, std::vector<TextLine>& lines)
{
    if (advance(start, end - start) <= width) {
        lines.push_back({start, end - start, true});
        return;
    }
    int lineStart = start;
    while (lineStart < end) {
        int lineEnd = lineStart; // the last break that fits
        finder.setPosition(lineStart);
        for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
            const int stop = std::min(static_cast<int>(next), end);
            if (advance(lineStart, withoutTrailingBlanks(text, lineStart, stop) - lineStart) > width)
                break;
            lineEnd = stop;
            if (stop == end)
                break;
        }
        if (lineEnd == lineStart)
            lineEnd = lineStart + fittingLetters(lineStart, end, width, advance);
        const bool last = lineEnd >= end;
        lines.push_back({lineStart, (last ? end : withoutTrailingBlanks(text, lineStart, lineEnd)) - lineStart, last});
        lineStart = lineEnd;
    }
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

std::vector<TextLine> breakLines(const QString& text, double width, const Advance& advance)
{
    std::vector<TextLine> lines;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    eachParagraph(text, [&](int start, int end) { breakParagraph(text, finder, start, end, width, advance, lines); });
    return lines;
}

std::vector<TextLine> splitLines(const QString& text)
{
    std::vector<TextLine> lines;
    eachParagraph(text, [&](int start, int end) { lines.push_back({start, end - start, true}); });
    return lines;
}

} // namespace lumivane::engine
