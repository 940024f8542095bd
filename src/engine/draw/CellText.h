#pragma once

#include "engine/draw/Fonts.h"
#include "engine/draw/TextLines.h"

class QPainter;

namespace lumivane::engine {

/// A text with this alignment is broken where it is wider than its cell.
bool takesSeveralLines(const CellStyle& style);

/// The text of one cell with its fonts, broken into lines and ready to be drawn anywhere.
class CellText
{
public:
    struct Span
    {
        int start = 0, length = 0;
        FontStyle font;
    };

    /// The spans follow each other and cover the text. `shrink` reduces every size.
    CellText(const Fonts& fonts, QString text, std::vector<Span> spans, double shrink = 1);

    /// Pixels above and below each line.
    void setLeading(double pixels) { m_leading = pixels; }

    const QString& text() const { return m_text; }
    const std::vector<Span>& spans() const { return m_spans; }

    /// One line, whatever the text holds.
    void layOutInOne();
    /// A line for each line feed, and where `width` is above 0 as many more as it takes.
    void layOut(double width);

    int lineCount() const { return static_cast<int>(m_lines.size()); }
    double width() const;  ///< of the widest line
    double height() const; ///< of all lines
    double lineWidth(int line) const { return m_lines[static_cast<size_t>(line)].width * m_shrink; }
    double lineHeight(int line) const;
    bool endsParagraph(int line) const { return m_lines[static_cast<size_t>(line)].place.endsParagraph; }

    struct Stroke
    {
        double extraGap = 0;       ///< by which every gap is wider, to spread a line
        double accountingFrom = 0; ///< ends of accounting underlines, relative to the line's left end
        double accountingTo = 0;
    };
    /// Draws a line with its left top corner at a place.
    void draw(QPainter& painter, int line, const QPointF& leftTop, const Stroke& stroke) const;
    int gaps(int line) const; ///< between words, and between the letters of scripts that write without blanks

private:
    struct Line
    {
        TextLine place;
        double width = 0, ascent = 0, descent = 0;
    };
    struct Piece
    {
        int start, length;
        const Span* span;
        const Fonts::Face* face;
        bool beforeGap = false;
    };

    void take(const std::vector<TextLine>& lines);
    double advance(int start, int length) const;
    std::vector<Piece> pieces(int start, int length) const;
    std::vector<Piece> words(const TextLine& line) const;
    void drawLine(QPainter& painter, const TextLine& line, QPointF base, Stroke stroke) const;
    void drawPiece(QPainter& painter, const Piece& piece, QPointF base, double width, const Stroke& stroke) const;

    const Fonts* m_fonts;
    QString m_text;
    std::vector<Span> m_spans;
    double m_shrink;
    double m_leading = 0;
    std::vector<Line> m_lines;
};

} // namespace lumivane::engine
