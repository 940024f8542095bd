#include "engine/draw/CellText.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

// Shares of a font's ascent.
constexpr double superscriptRaise = 0.55;
constexpr double subscriptDrop = 0.15;

/// Letters of scripts that write without blanks between words.
bool isEastAsian(QChar letter)
{
    const char16_t code = letter.unicode();
    return (code >= 0x2e80 && code < 0xa000) || (code >= 0xac00 && code < 0xd7b0) || letter.isLowSurrogate() ||
           letter.isHighSurrogate() || (code >= 0xf900 && code < 0xfb00) || (code >= 0xff01 && code < 0xff61);
}

/// A spread line is wider behind this letter, which is not the last one.
bool gapBehind(const QString& text, int at)
{
    const QChar letter = text[at], next = text[at + 1];
    return letter == u' ' || (!next.isLowSurrogate() && next != u' ' && (isEastAsian(letter) || isEastAsian(next)));
}

} // namespace

bool takesSeveralLines(const CellStyle& style)
{
    return style.wrap || style.horizontal == Horizontal::Justify || style.horizontal == Horizontal::Distributed ||
           style.vertical == Vertical::Justify || style.vertical == Vertical::Distributed;
}

CellText::CellText(const Fonts& fonts, QString text, std::vector<Span> spans, double shrink)
    : m_fonts(&fonts), m_text(std::move(text)), m_spans(std::move(spans)), m_shrink(shrink)
{
}

std::vector<CellText::Piece> CellText::pieces(int start, int length) const
{
    std::vector<Piece> result;
    const int end = start + length;
    // There may be as many spans as letters, and as many lines.
    auto span = std::upper_bound(m_spans.begin(), m_spans.end(), start,
                                 [](int wanted, const Span& entry) { return wanted < entry.start + entry.length; });
    for (; span != m_spans.end() && span->start < end; ++span) {
        const int first = std::max(start, span->start);
        const int last = std::min(end, span->start + span->length);
        if (first < last)
            result.push_back({first, last - first, &*span, &m_fonts->face(span->font)});
    }
    return result;
}

double CellText::advance(int start, int length) const
{
    double sum = 0;
    for (const Piece& piece : pieces(start, length))
        sum += piece.face->advance(QStringView(m_text).mid(piece.start, piece.length));
    return sum;
}

void CellText::take(const std::vector<TextLine>& lines)
{
    m_lines.clear();
    for (const TextLine& place : lines) {
        Line line{place, 0, 0, 0};
        auto parts = pieces(place.start, place.length);
        if (parts.empty() && !m_spans.empty()) // an empty line is as high as its font
            parts.push_back({place.start, 0, &m_spans.front(), &m_fonts->face(m_spans.front().font)});
        for (const Piece& piece : parts) {
            FontStyle whole = piece.span->font; // raised letters stand in a line of full size
            whole.script = Script::Normal;
            const Fonts::Face& face = m_fonts->face(whole);
            line.ascent = std::max(line.ascent, face.ascent());
            line.descent = std::max(line.descent, face.descent());
            line.width += piece.face->advance(QStringView(m_text).mid(piece.start, piece.length));
        }
        m_lines.push_back(line);
    }
}

void CellText::layOutInOne()
{
    if (m_text.contains(u'\n') || m_text.contains(u'\r'))
        for (QChar& c : m_text)
            if (c == u'\n' || c == u'\r')
                c = u' ';
    take({{0, static_cast<int>(m_text.size()), true}});
}

void CellText::layOut(double width)
{
    const auto measure = [this](int start, int length) { return advance(start, length) * m_shrink; };
    take(width > 0 ? breakLines(m_text, width, measure) : splitLines(m_text));
}

double CellText::width() const
{
    double widest = 0;
    for (const Line& line : m_lines)
        widest = std::max(widest, line.width);
    return widest * m_shrink;
}

double CellText::lineHeight(int line) const
{
    const Line& entry = m_lines[static_cast<size_t>(line)];
    return std::round((entry.ascent + entry.descent) * m_shrink) + 2 * m_leading;
}

double CellText::height() const
{
    double sum = 0;
    for (int line = 0; line < lineCount(); ++line)
        sum += lineHeight(line);
    return sum;
}

int CellText::gaps(int line) const
{
    const TextLine& place = m_lines[static_cast<size_t>(line)].place;
    int count = 0;
    for (int i = place.start; i + 1 < place.start + place.length; ++i)
        count += gapBehind(m_text, i) ? 1 : 0;
    return count;
}

/// The pieces of a line, each up to a gap.
std::vector<CellText::Piece> CellText::words(const TextLine& line) const
{
    std::vector<Piece> result;
    const int lineEnd = line.start + line.length;
    for (Piece piece : pieces(line.start, line.length)) {
        const int end = piece.start + piece.length;
        for (int i = piece.start; i < end; ++i) {
            if (i + 1 < end && !gapBehind(m_text, i))
                continue;
            piece.length = i + 1 - piece.start;
            piece.beforeGap = i + 1 < lineEnd && gapBehind(m_text, i);
            result.push_back(piece);
            piece.start = i + 1;
        }
    }
    return result;
}

void CellText::draw(QPainter& painter, int line, const QPointF& leftTop, const Stroke& stroke) const
{
    const Line& entry = m_lines[static_cast<size_t>(line)];
    const QPointF base(leftTop.x(), std::round(leftTop.y() + m_leading + entry.ascent * m_shrink));
    if (m_shrink == 1)
        return drawLine(painter, entry.place, base, stroke);
    // Small fonts are not as much narrower as they are smaller.
    painter.save();
    painter.translate(base);
    painter.scale(m_shrink, m_shrink);
    drawLine(painter, entry.place, {0, 0},
             {stroke.extraGap / m_shrink, stroke.accountingFrom / m_shrink, stroke.accountingTo / m_shrink});
    painter.restore();
}

/// From a place on the base line on, in full size.
void CellText::drawLine(QPainter& painter, const TextLine& line, QPointF base, Stroke stroke) const
{
    for (const Piece& piece : stroke.extraGap != 0 ? words(line) : pieces(line.start, line.length)) {
        const QStringView part = QStringView(m_text).mid(piece.start, piece.length);
        const double width = piece.face->advance(part) + (piece.beforeGap ? stroke.extraGap : 0);
        drawPiece(painter, piece, base, width, stroke);
        base.rx() += width;
        stroke.accountingFrom -= width;
        stroke.accountingTo -= width;
    }
}

void CellText::drawPiece(QPainter& painter, const Piece& piece, QPointF base, double width, const Stroke& stroke) const
{
    const FontStyle& font = piece.span->font;
    const QColor color = QColor::fromRgb(font.color);
    if (font.script != Script::Normal) {
        FontStyle whole = font;
        whole.script = Script::Normal;
        const double ascent = m_fonts->face(whole).ascent();
        base.ry() += font.script == Script::Superscript ? -ascent * superscriptRaise * 0.6 : ascent * subscriptDrop;
    }
    painter.setFont(piece.face->font());
    painter.setPen(color);
    painter.drawText(base, m_text.mid(piece.start, piece.length));

    const double thickness = std::max(1.0, std::round(piece.face->ascent() / 14));
    const auto rule = [&](double from, double to, double y) {
        painter.fillRect(QRectF(std::round(from), std::round(y), std::round(to) - std::round(from), thickness), color);
    };
    const bool accounting =
        font.underline == Underline::SingleAccounting || font.underline == Underline::DoubleAccounting;
    const double from = base.x() + (accounting ? stroke.accountingFrom : 0);
    const double to = base.x() + (accounting ? stroke.accountingTo : width);
    const double strokes = font.underline == Underline::DoubleAccounting ? 3 : 1; // and the gap between them
    const double below = accounting ? piece.face->descent() - strokes * thickness : piece.face->underline();
    if (font.underline != Underline::None)
        rule(from, to, base.y() + below);
    if (font.underline == Underline::Double || font.underline == Underline::DoubleAccounting)
        rule(from, to, base.y() + below + 2 * thickness);
    if (font.strikeOut)
        rule(base.x(), base.x() + width, base.y() - piece.face->strikeOut());
}

} // namespace lumivane::engine
