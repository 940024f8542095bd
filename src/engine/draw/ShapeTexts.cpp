#include "engine/draw/ShapeTexts.h"

#include "engine/draw/ShapePainter.h"

#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <memory>

namespace lumivane::engine {
namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;

struct LaidParagraph
{
    std::unique_ptr<QTextLayout> layout;
    std::unique_ptr<QTextLayout> bullet; ///< null without one
    QPointF bulletPlace;
    double top = 0;
};

/// The lines of a text of a width, one below the other from 0 on.
class TextBlock
{
public:
    TextBlock(const ShapeText& text, const Fonts& fonts, double width);

    double height() const { return m_height; }
    double naturalWidth() const { return m_naturalWidth; }
    void paint(QPainter& painter, const QPointF& corner) const;

private:
    void add(const ShapeParagraph& paragraph);
    double addLines(const ShapeParagraph& paragraph, QTextLayout& layout);
    double spacing(const TextSpacing& space, double line) const;
    double emu(double length) const { return length / emuPerPixel * m_fonts.scale(); }
    QTextCharFormat format(const FontStyle& font) const;

    const ShapeText& m_text;
    const Fonts& m_fonts;
    const double m_width;
    double m_height = 0, m_naturalWidth = 0;
    std::vector<LaidParagraph> m_paragraphs;
};

TextBlock::TextBlock(const ShapeText& text, const Fonts& fonts, double width)
    : m_text(text), m_fonts(fonts), m_width(width)
{
    for (const ShapeParagraph& paragraph : text.paragraphs)
        add(paragraph);
}

QTextCharFormat TextBlock::format(const FontStyle& style) const
{
    FontStyle plain = style;
    plain.script = Script::Normal;
    QFont font = m_fonts.face(plain, m_text.fontScale).font();
    font.setHintingPreference(QFont::PreferNoHinting); // lines end where they do at every size
    font.setUnderline(style.underline != Underline::None);
    font.setStrikeOut(style.strikeOut);
    QTextCharFormat made;
    made.setFont(font);
    made.setForeground(QColor::fromRgba(style.color));
    if (style.script != Script::Normal)
        made.setVerticalAlignment(style.script == Script::Superscript ? QTextCharFormat::AlignSuperScript
                                                                      : QTextCharFormat::AlignSubScript);
    return made;
}

double TextBlock::spacing(const TextSpacing& space, double line) const
{
    return space.points > 0 ? space.points * pixelsPerPoint * m_fonts.scale() : space.share * line;
}

void TextBlock::add(const ShapeParagraph& paragraph)
{
    QString whole;
    QList<QTextLayout::FormatRange> formats;
    for (const ShapeTextRun& run : paragraph.runs) {
        formats.append({static_cast<int>(whole.size()), static_cast<int>(run.text.size()), format(run.font)});
        whole += run.text;
    }
    whole.replace(u'\n', QChar::LineSeparator);
    FontStyle base = paragraph.runs.empty() ? FontStyle() : paragraph.runs.front().font;
    if (paragraph.runs.empty())
        base.points = paragraph.endPoints;
    const Fonts::Face& face = m_fonts.face(base, m_text.fontScale);

    LaidParagraph laid;
    laid.layout = std::make_unique<QTextLayout>(whole, face.font(), Fonts::device());
    laid.layout->setFormats(formats);
    if (!m_paragraphs.empty())
        m_height += spacing(paragraph.before, face.lineHeight());
    laid.top = m_height;
    m_height += addLines(paragraph, *laid.layout) + spacing(paragraph.after, face.lineHeight());
    if (!paragraph.bullet.isEmpty() && !whole.isEmpty()) {
        laid.bullet = std::make_unique<QTextLayout>(paragraph.bullet, face.font(), Fonts::device());
        laid.bullet->setFormats({{0, static_cast<int>(paragraph.bullet.size()), format(base)}});
        laid.bullet->beginLayout();
        laid.bullet->createLine();
        laid.bullet->endLayout();
        laid.bulletPlace = {emu(paragraph.margin + paragraph.indent), laid.top};
    }
    m_paragraphs.push_back(std::move(laid));
}

/// Their height.
double TextBlock::addLines(const ShapeParagraph& paragraph, QTextLayout& layout)
{
    static constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignJustify};
    QTextOption option(alignments[static_cast<size_t>(paragraph.align)]);
    option.setWrapMode(m_text.wrapped ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
    layout.setTextOption(option);
    // Fonts that stand for others are a little wider in places; a line that ends just beyond its room is not broken.
    const double slack = paragraph.align == TextAlign::Justify ? 0 : 2 * m_fonts.scale();
    const double aside = paragraph.align == TextAlign::Right    ? slack
                         : paragraph.align == TextAlign::Center ? slack / 2
                                                                : 0;
    const double margin = emu(paragraph.margin);
    double height = 0;
    bool first = true;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        const bool hanging = first && paragraph.bullet.isEmpty();
        const double left = std::max(margin + (hanging ? emu(paragraph.indent) : 0), 0.0);
        line.setLineWidth(std::max(m_width - left, 1.0) + slack);
        const double own = line.ascent() + line.descent();
        const double step = spacing({paragraph.line.share * (1 - m_text.lineShrink), paragraph.line.points}, own);
        line.setPosition({left - aside, height + std::min(step - own, 0.0)});
        m_naturalWidth = std::max(m_naturalWidth, left + line.naturalTextWidth());
        height += step;
        first = false;
    }
    layout.endLayout();
    return height;
}

void TextBlock::paint(QPainter& painter, const QPointF& corner) const
{
    for (const LaidParagraph& paragraph : m_paragraphs) {
        paragraph.layout->draw(&painter, corner + QPointF(0, paragraph.top));
        if (paragraph.bullet)
            paragraph.bullet->draw(&painter, corner + paragraph.bulletPlace);
    }
}

bool isBlank(const ShapeText& text)
{
    return std::all_of(text.paragraphs.begin(), text.paragraphs.end(), [](const ShapeParagraph& paragraph) {
        return std::all_of(paragraph.runs.begin(), paragraph.runs.end(),
                           [](const ShapeTextRun& run) { return run.text.isEmpty(); });
    });
}

/// A text that is not wrapped is as wide as its longest line and lies as its first paragraph says.
double alignedLeft(const ShapeText& text, const QRectF& area, double width)
{
    const TextAlign align = text.centered ? TextAlign::Center : text.paragraphs.front().align;
    return align == TextAlign::Center  ? area.center().x() - width / 2
           : align == TextAlign::Right ? area.right() - width
                                       : area.left();
}

void paintUpright(QPainter& painter, const ShapeText& text, const QRectF& area, const Fonts& fonts)
{
    constexpr double widest = 1e6;
    double width = std::clamp(area.width(), 1.0, widest);
    if (!text.wrapped || text.centered) {
        const double natural = std::max(TextBlock(text, fonts, text.wrapped ? width : widest).naturalWidth(), 1.0);
        width = text.wrapped ? std::min(width, natural + 1) : natural + 1;
    }
    const TextBlock block(text, fonts, width);
    const double free = area.height() - block.height();
    const double down = text.anchor == TextAnchor::Top ? 0 : text.anchor == TextAnchor::Middle ? free / 2 : free;
    const bool moved = !text.wrapped || text.centered;
    block.paint(painter, {moved ? alignedLeft(text, area, width) : area.left(), area.top() + down});
}

} // namespace

void paintShapeText(QPainter& painter, const ShapeText& text, const QRectF& place, const Fonts& fonts)
{
    if (isBlank(text))
        return;
    const double pixels = fonts.scale() / emuPerPixel;
    const QRectF inner =
        place.adjusted(text.left * pixels, text.top * pixels, -text.right * pixels, -text.bottom * pixels);
    painter.save();
    if (text.clipped)
        painter.setClipRect(place, Qt::IntersectClip);
    painter.translate(inner.center());
    painter.rotate(text.ownRotation);
    QSizeF size(std::max(inner.width(), 0.0), std::max(inner.height(), 0.0));
    if (liesOnItsSide(text.ownRotation))
        size.transpose();
    if (text.turn != TextTurn::None) {
        painter.rotate(text.turn == TextTurn::Clockwise ? 90 : -90);
        size.transpose();
    }
    paintUpright(painter, text, QRectF(QPointF(-size.width() / 2, -size.height() / 2), size), fonts);
    painter.restore();
}

} // namespace lumivane::engine
