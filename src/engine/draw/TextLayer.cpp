#include "engine/draw/TextLayer.h"

#include "engine/draw/ConditionLayer.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr int stackedLetters = 255;
constexpr int customaryDigits = 11; // of a number that is turned
constexpr double fitTolerance = 1;  // pixels at scale 1: signs and points are less exact than digits

bool isTextKind(CellKind kind)
{
    return kind == CellKind::Text || kind == CellKind::SheetText;
}

Horizontal shownAlignment(const CellStyle& style, CellKind kind, const NumberFormat& format, const Measures& measures)
{
    if (style.horizontal != Horizontal::General)
        return style.horizontal;
    if (isTextKind(kind) || (kind == CellKind::Number && format.isText()))
        return Horizontal::Left;
    return kind == CellKind::Number ? Horizontal::Right : measures.logicalValues;
}

/// By its own setting, else by its first letter.
bool runsFromRight(const CellStyle& style, const QString& text)
{
    return style.readingOrder == 0 ? text.isRightToLeft() : style.readingOrder == 2;
}

} // namespace

TextLayer::TextLayer(const Scene& scene)
    : m_scene(scene), m_padding(2 * scene.grid.scale()),
      m_blank(scene.fonts.face(scene.geometry.font(scene.sheet.workbook().styles.cell(0))).advance(u" "))
{
    for (int index = 0; index < m_scene.grid.rowCount(); ++index)
        placeRow(m_scene.grid.row(index));
    placeMerged();
}

void TextLayer::placeRow(int row)
{
    const CellArea& area = m_scene.grid.area();
    for (int index = 0; index < m_scene.grid.columnCount(); ++index) {
        const int column = m_scene.grid.column(index);
        if (m_scene.sheet.kind(row, column) != CellKind::Blank && !m_scene.sheet.mergedAt(row, column))
            placeCell(row, column, CellArea::cell(row, column));
    }
    // Texts outside the area may run into it.
    if (isFree(row, area.firstColumn))
        placeNeighbour(row, area.firstColumn, -1);
    if (isFree(row, area.lastColumn))
        placeNeighbour(row, area.lastColumn, 1);
}

void TextLayer::placeNeighbour(int row, int column, int step)
{
    const int neighbour = m_scene.sheet.nextFilled(row, column, step);
    if (neighbour == 0 || m_scene.grid.area().contains(row, neighbour))
        return;
    const Horizontal alignment = m_scene.sheet.style(row, neighbour).horizontal;
    const bool goesOn = alignment == Horizontal::CenterAcross || alignment == Horizontal::Fill;
    if (!goesOn && !isTextKind(m_scene.sheet.kind(row, neighbour)))
        return;
    if (!m_scene.geometry.columnHidden(neighbour) && !m_scene.sheet.mergedAt(row, neighbour))
        placeCell(row, neighbour, CellArea::cell(row, neighbour));
}

void TextLayer::placeMerged()
{
    for (const CellArea& merged : m_scene.sheet.sheet().merged)
        if (intersect(merged, m_scene.grid.area()) &&
            m_scene.sheet.kind(merged.firstRow, merged.firstColumn) != CellKind::Blank)
            placeCell(merged.firstRow, merged.firstColumn, merged);
}

bool TextLayer::isFree(int row, int column) const
{
    return column >= 1 && column <= maxColumn && m_scene.sheet.kind(row, column) == CellKind::Blank &&
           !m_scene.sheet.mergedAt(row, column);
}

void TextLayer::placeCell(int row, int column, const CellArea& area)
{
    const CellStyle& style = m_scene.sheet.style(row, column);
    const CellKind kind = m_scene.sheet.kind(row, column);
    const ConditionResult* condition = m_scene.sheet.condition(row, column);
    if (condition && condition->hidesValue)
        return;
    const bool single = area.rows() == 1 && area.columns() == 1;
    const Place place{
        row,
        column,
        area,
        style,
        kind,
        m_scene.grid.rect(area),
        shownAlignment(style, kind, m_scene.sheet.format(m_scene.sheet.styleIndex(row, column)), m_scene.measures),
        single && isTextKind(kind),
        condition && condition->icon.has_value()};
    if (place.rect.isEmpty())
        return;
    if (isTextKind(kind))
        placeText(place);
    else if (kind != CellKind::Number || m_scene.sheet.sheet().view.showZeros || m_scene.sheet.number(row, column) != 0)
        placeNumber(place);
}

double TextLayer::indent(const Place& place) const
{
    const bool indented = place.horizontal == Horizontal::Left || place.horizontal == Horizontal::Right ||
                          place.horizontal == Horizontal::Distributed;
    const double scale = m_scene.grid.scale();
    const double icon = place.besideIcon && place.horizontal == Horizontal::Left
                            ? ConditionLayer::iconSide(m_scene.sheet.font(place.style)) * scale
                            : 0;
    // Three blanks, in whole pixels of scale 1.
    return icon + (indented ? std::floor(3 * m_blank / scale) * scale * place.style.indent : 0);
}

double TextLayer::innerWidth(const Place& place) const
{
    const int sides = place.horizontal == Horizontal::Distributed ? 2 : 1;
    return place.rect.width() - 2 * m_padding - sides * indent(place);
}

CellText TextLayer::make(const Place& place, const FormattedText& formatted, double shrink) const
{
    const FontStyle& cellFont = m_scene.geometry.font(place.style);
    FontStyle font = cellFont;
    const auto colored = [&](FontStyle style) {
        if (formatted.color)
            style.color = *formatted.color;
        return style;
    };
    std::vector<CellText::Span> spans;
    const QString shown = withFewMarks(formatted.text);
    const int size = static_cast<int>(shown.size());
    int start = 0;
    if (const std::vector<TextRun>* runs = m_scene.sheet.runs(place.row, place.column))
        for (const TextRun& run : *runs) {
            const int next = std::clamp(run.start, start, size);
            if (next > start)
                spans.push_back({start, next - start, colored(font)});
            start = next;
            font = run.cellFont ? cellFont : run.font;
        }
    if (start < size || spans.empty())
        spans.push_back({start, size - start, colored(font)});
    CellText text(m_scene.fonts, shown, std::move(spans), shrink);
    text.setLeading(m_scene.measures.leading * m_scene.grid.scale());
    return text;
}

void TextLayer::placeNumber(const Place& cell)
{
    if (cell.style.rotation != 0)
        return placeText(cell);
    const Place place = across(cell);
    const double width = innerWidth(place);
    std::optional<CellText> text = fittedNumber(place, width);
    if (!text) {
        const double hash = m_scene.fonts.face(m_scene.geometry.font(place.style)).advance(u"#");
        const int fixed = m_scene.measures.signsForNumber;
        const int count = fixed > 0 ? fixed : std::max(1, static_cast<int>(width / hash));
        FormattedText hashes;
        hashes.text = QString(count, u'#');
        text = make(place, hashes);
        text->layOutInOne();
    } else if (place.horizontal == Horizontal::Fill) {
        const FormattedText formatted =
            m_scene.sheet.formatted(place.row, place.column, static_cast<int>(text->text().size()));
        return placeFilling(place, formatted, *text);
    }
    add(place, std::move(*text), place.rect);
}

/// The number as its format gives it, General with fewer digits where it must be; none if it does not fit.
std::optional<CellText> TextLayer::fittedNumber(const Place& place, double width) const
{
    const int most = m_scene.measures.generalCharacters;
    FormattedText formatted = m_scene.sheet.formatted(place.row, place.column, most);
    if (formatted.isError)
        return {};
    CellText text = make(place, formatted);
    text.layOutInOne();
    if (formatted.fillPosition >= 0)
        text = filledText(place, formatted, width);
    if (text.width() <= width + fitTolerance * m_scene.grid.scale())
        return text;
    if (place.style.shrinkToFit)
        return shrunk(place, formatted, text, width);
    if (!formatted.isGeneral)
        return {};
    for (int chars = std::min<int>(most, static_cast<int>(formatted.text.size())) - 1; chars > 0; --chars) {
        formatted = m_scene.sheet.formatted(place.row, place.column, chars);
        text = make(place, formatted);
        text.layOutInOne();
        if (text.width() <= width + fitTolerance * m_scene.grid.scale())
            return text;
    }
    return {};
}

/// The text with its fill repeated as often as the width has room for.
CellText TextLayer::filledText(const Place& place, FormattedText formatted, double width) const
{
    CellText text = make(place, formatted);
    text.layOutInOne();
    const double one = m_scene.fonts.face(m_scene.geometry.font(place.style)).advance(QString(formatted.fill));
    const double room = width - text.width();
    if (room > 0 && one > 0) {
        const int count = std::min(static_cast<int>(room / one), 2000);
        formatted.text.insert(formatted.fillPosition, QString(count, formatted.fill));
        text = make(place, formatted);
        text.layOutInOne();
    }
    return text;
}

/// The text as small as it must be to fit.
CellText TextLayer::shrunk(const Place& place, const FormattedText& formatted, const CellText& text, double width) const
{
    constexpr double smallest = 0.05;
    CellText smaller = make(place, formatted, std::clamp(width / std::max(text.width(), 1.0), smallest, 1.0));
    smaller.layOutInOne();
    return smaller;
}

/// The text as many whole times as it fits.
void TextLayer::placeFilling(const Place& place, const FormattedText& formatted, const CellText& text)
{
    const int most = static_cast<int>(maxCellText) / std::max(static_cast<int>(text.text().size()), 1);
    const int count =
        std::clamp(static_cast<int>(innerWidth(place) / std::max(text.width(), 1.0)), 1, std::max(most, 1));
    FormattedText many = formatted;
    many.text = text.text().repeated(count);
    CellText filling = make(place, many);
    filling.layOutInOne();
    add(place, std::move(filling), place.rect);
}

void TextLayer::placeText(Place cell)
{
    const FormattedText formatted = m_scene.sheet.formatted(cell.row, cell.column, customaryDigits);
    if (formatted.text.isEmpty())
        return;
    if (cell.style.horizontal == Horizontal::General && isTextKind(cell.kind) &&
        runsFromRight(cell.style, formatted.text))
        cell.horizontal = Horizontal::Right;
    CellText text = make(cell, formatted);
    if (cell.style.rotation == stackedLetters)
        return placeStacked(cell, text);
    if (cell.style.rotation != 0)
        return placeRotated(cell, std::move(text));
    if (takesSeveralLines(cell.style))
        return placeLines(cell, std::move(text));
    text.layOutInOne();
    const Place place = across(cell);
    const double width = innerWidth(place);
    if (formatted.fillPosition >= 0)
        text = filledText(place, formatted, width);
    if (place.horizontal == Horizontal::Fill)
        placeFilling(place, formatted, text);
    else if (place.style.shrinkToFit && text.width() > width)
        add(place, shrunk(place, formatted, text, width), place.rect);
    else
        add(place, std::move(text), place.rect);
}

void TextLayer::placeLines(const Place& place, CellText text)
{
    text.layOut(std::max(innerWidth(place), 1.0));
    add(place, std::move(text), place.rect);
}

void TextLayer::placeStacked(const Place& place, const CellText& text)
{
    FormattedText letters;
    for (const QChar c : text.text()) {
        if (!letters.text.isEmpty() && !c.isLowSurrogate())
            letters.text += u'\n';
        letters.text += c;
    }
    CellText stacked(m_scene.fonts, letters.text,
                     {{0, static_cast<int>(letters.text.size()), text.spans().front().font}});
    stacked.layOut(0);
    add(place, std::move(stacked), place.rect);
    if (place.style.horizontal == Horizontal::General)
        m_placed.back().horizontal = Horizontal::Center;
}

void TextLayer::placeRotated(const Place& place, CellText text)
{
    const double radians = qDegreesToRadians(double(place.style.rotation));
    const double sine = std::fabs(std::sin(radians));
    if (place.style.wrap)
        text.layOut(std::max((place.rect.height() - 2 * m_padding) / std::max(sine, 0.1), 1.0));
    else
        text.layOutInOne();
    add(place, std::move(text), place.rect);
    Placed& placed = m_placed.back();
    placed.angle = place.style.rotation;
    const bool upright = std::abs(place.style.rotation) == 90;
    if (!upright) { // slanted texts lean over their neighbours
        placed.clip.setLeft(0);
        placed.clip.setRight(m_scene.grid.size().width());
    }
}

/// For "centre across selection" and "fill" the place goes on over the free cells beside it that are aligned so too.
TextLayer::Place TextLayer::across(const Place& place)
{
    const Horizontal alignment = place.style.horizontal;
    if (alignment != Horizontal::CenterAcross && alignment != Horizontal::Fill)
        return place;
    CellArea area = place.area;
    // Of more cells no one sees the text.
    const int farthest = 2 * m_scene.grid.area().lastColumn - area.firstColumn + 64;
    while (area.lastColumn < farthest && isFree(place.row, area.lastColumn + 1) &&
           m_scene.sheet.style(place.row, area.lastColumn + 1).horizontal == alignment)
        if (area.lastColumn++ <= m_scene.grid.area().lastColumn)
            m_runOver.insert({place.row, area.lastColumn - 1});
    return {place.row,
            place.column,
            area,
            place.style,
            place.kind,
            m_scene.grid.rect(area),
            alignment == Horizontal::Fill ? Horizontal::Fill : Horizontal::Center,
            area.columns() == 1 && place.mayRunOver,
            place.besideIcon};
}

/// The cell's place and those of the free cells that its text runs over.
QRect TextLayer::reach(const Place& place, double width)
{
    const double needed = width + m_padding + indent(place);
    QRect result = place.rect;
    double left = 0, right = 0; // wanted beyond the cell
    if (place.horizontal == Horizontal::Right)
        left = needed - place.rect.width();
    else if (place.horizontal == Horizontal::Center)
        left = right = (width - place.rect.width()) / 2;
    else
        right = needed - place.rect.width();

    const int rightStep = m_scene.grid.rightToLeft() ? -1 : 1;
    const auto extend = [&](int step, double wanted, bool toRight) {
        int column = place.column;
        while (wanted > 0 && isFree(place.row, column + step)) {
            if (toRight ? result.right() > m_scene.grid.size().width() : result.left() < 0)
                break;
            const int next = m_scene.grid.rect(CellArea::cell(place.row, column + step)).width();
            m_runOver.insert({place.row, std::min(column, column + step)});
            column += step;
            wanted -= next;
            toRight ? result.setRight(result.right() + next) : result.setLeft(result.left() - next);
        }
    };
    extend(-rightStep, left, false);
    extend(rightStep, right, true);
    return result;
}

void TextLayer::add(const Place& place, CellText text, QRectF box)
{
    const double before = m_padding + (place.horizontal != Horizontal::Right ? indent(place) : 0);
    const double after =
        m_padding +
        (place.horizontal == Horizontal::Right || place.horizontal == Horizontal::Distributed ? indent(place) : 0);
    box.adjust(before, 0, -after, 0);
    const bool runsOver = place.mayRunOver && place.style.rotation == 0 && !takesSeveralLines(place.style) &&
                          place.horizontal != Horizontal::Fill;
    const QRect clip = runsOver && text.width() > box.width() ? reach(place, text.width()) : place.rect;
    const bool spread = place.horizontal == Horizontal::Justify || place.horizontal == Horizontal::Distributed;
    m_placed.push_back({std::move(text), clip, box, place.horizontal, place.style.vertical, 0, spread,
                        place.horizontal == Horizontal::Distributed, place.style.spaceAround,
                        place.kind != CellKind::Number});
}

void TextLayer::paint(QPainter& painter) const
{
    const QRect picture(QPoint(0, 0), m_scene.grid.size());
    for (const Placed& placed : m_placed)
        if (placed.clip.intersects(picture))
            paintText(painter, placed);
}

void TextLayer::paintText(QPainter& painter, const Placed& placed) const
{
    painter.save();
    painter.setClipRect(placed.clip, Qt::IntersectClip);
    if (placed.angle == 0) {
        paintLines(painter, placed, placed.box);
    } else {
        // The block is turned round its middle, and the upright rectangle round it is what is aligned.
        const double radians = qDegreesToRadians(placed.angle);
        const double sine = std::fabs(std::sin(radians)), cosine = std::fabs(std::cos(radians));
        const double width = placed.text.width(), height = placed.text.height();
        const double boundsWidth = width * cosine + height * sine, boundsHeight = width * sine + height * cosine;
        const QRectF& box = placed.box;
        double x = box.left();
        if (placed.horizontal == Horizontal::Right)
            x = box.right() - boundsWidth;
        else if (placed.horizontal != Horizontal::Left)
            x = box.center().x() - boundsWidth / 2;
        double y = box.bottom() - m_scene.grid.scale() - boundsHeight;
        if (placed.vertical == Vertical::Top)
            y = box.top() + m_scene.grid.scale();
        else if (placed.vertical != Vertical::Bottom)
            y = box.center().y() - boundsHeight / 2;
        painter.translate(std::round(x + boundsWidth / 2), std::round(y + boundsHeight / 2));
        painter.rotate(-placed.angle);
        Placed flat = placed;
        flat.vertical = Vertical::Top;
        paintLines(painter, flat, QRectF(-width / 2, -height / 2, width, height));
    }
    painter.restore();
}

void TextLayer::paintLines(QPainter& painter, const Placed& placed, const QRectF& box) const
{
    const CellText& text = placed.text;
    const double room = box.height() - text.height();
    const int lines = text.lineCount();
    double y = box.top();
    double gap = 0;
    if (placed.vertical == Vertical::Bottom)
        y += room - m_scene.measures.belowText * m_scene.grid.scale();
    else if (placed.vertical == Vertical::Center || (placed.vertical == Vertical::Distributed && lines == 1))
        y += std::floor(room / 2);
    else if (placed.vertical != Vertical::Top && lines > 1)
        gap = std::max(room, 0.0) / (lines - 1);

    const QRectF shown = painter.clipBoundingRect();
    for (int line = 0; line < lines; ++line) {
        const double width = text.lineWidth(line);
        const double free = box.width() - width;
        CellText::Stroke stroke;
        double x = box.left();
        const int gaps = text.gaps(line);
        const bool spread = placed.spread && gaps > 0 && (placed.spreadLast || !text.endsParagraph(line));
        const bool around = placed.spreadLast && placed.spaceAround;
        if (spread)
            stroke.extraGap = std::max(free, 0.0) / (around ? gaps + 2 : gaps);
        if (spread)
            x += around ? stroke.extraGap : 0;
        else if (placed.horizontal == Horizontal::Right)
            x += free;
        else if (placed.horizontal == Horizontal::Center || placed.horizontal == Horizontal::Distributed)
            x += free / 2;
        stroke.accountingFrom = placed.wholeCellUnderline ? box.left() - x : 0;
        stroke.accountingTo = placed.wholeCellUnderline ? std::max(box.right() - x, width) : width;
        // Underlines and piled-up accents leave their line, but not by far.
        const double height = text.lineHeight(line);
        if (y - 4 * height < shown.bottom() && y + 5 * height > shown.top())
            text.draw(painter, line, {std::round(x), y}, stroke);
        y += height + gap;
    }
}

} // namespace lumivane::engine
