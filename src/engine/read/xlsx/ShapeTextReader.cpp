#include "engine/read/xlsx/ShapeTextReader.h"

#include "engine/read/package/AttributeValues.h"

#include <algorithm>
#include <array>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr double largestFont = 400; // points

class TextReader
{
public:
    TextReader(const DrawingTheme& theme, DrawingBudget& budget, FontStyle base)
        : m_theme(theme), m_budget(budget), m_base(std::move(base))
    {
    }

    void readBody(pugi::xml_node properties);
    void readParagraphs(pugi::xml_node body);

    ShapeText text;

private:
    static constexpr int levels = 9;
    void readParagraph(pugi::xml_node node, const std::array<pugi::xml_node, levels>& styles);
    void addProperties(pugi::xml_node node, ShapeParagraph& paragraph);
    QString bullet(pugi::xml_node properties);
    void addFont(pugi::xml_node node, FontStyle& font) const;
    void addRun(pugi::xml_node node, const FontStyle& base, ShapeParagraph& paragraph);

    const DrawingTheme& m_theme;
    DrawingBudget& m_budget;
    const FontStyle m_base;
    int m_number = 0; ///< of the numbered paragraph that came last
};

TextSpacing readSpacing(pugi::xml_node node, TextSpacing otherwise)
{
    constexpr double most = 1584;
    if (const pugi::xml_node share = childNamed(node, "spcPct"))
        return {std::clamp(drawingShare(share, "val", 1), 0.0, 100.0), 0};
    if (const pugi::xml_node points = childNamed(node, "spcPts"))
        return {0, std::clamp(drawingNumber(points, "val") / 100, 0.0, most)};
    return otherwise;
}

/// The turn of <bodyPr vert>; letters one below the other are laid out as turned ones.
TextTurn readTurn(std::string_view name)
{
    if (name.empty() || name == "horz")
        return TextTurn::None;
    return name == "vert270" ? TextTurn::CounterClockwise : TextTurn::Clockwise;
}

void TextReader::readBody(pugi::xml_node properties)
{
    constexpr double largestInset = 1e9;
    for (const auto& [inset, name] :
         {std::pair{&text.left, "lIns"}, {&text.top, "tIns"}, {&text.right, "rIns"}, {&text.bottom, "bIns"}})
        *inset = std::clamp(drawingNumber(properties, name, *inset), -largestInset, largestInset);
    const std::string_view anchor = attributeOf(properties, "anchor");
    text.anchor = anchor == "ctr" ? TextAnchor::Middle : anchor == "b" ? TextAnchor::Bottom : TextAnchor::Top;
    text.centered = flagFrom(attributeOf(properties, "anchorCtr"), false);
    text.turn = readTurn(attributeOf(properties, "vert"));
    text.wrapped = attributeOf(properties, "wrap") != "none";
    text.clipped = attributeOf(properties, "vertOverflow") == "clip";
    text.ownRotation = drawingAngle(properties, "rot");
    if (const pugi::xml_node fit = childNamed(properties, "normAutofit")) {
        text.fontScale = std::clamp(drawingShare(fit, "fontScale", 1), 0.01, 1.0);
        text.lineShrink = std::clamp(drawingShare(fit, "lnSpcReduction"), 0.0, 0.9);
    }
}

void TextReader::readParagraphs(pugi::xml_node body)
{
    const pugi::xml_node styles = childNamed(body, "lstStyle");
    std::array<pugi::xml_node, levels> byLevel;
    for (int level = 0; level < levels; ++level)
        byLevel[static_cast<size_t>(level)] = childNamed(styles, "lvl" + std::to_string(level + 1) + "pPr");
    for (const pugi::xml_node node : childrenNamed(body, "p")) {
        if (m_budget.paragraphs.takeOne())
            readParagraph(node, byLevel);
    }
}

void TextReader::readParagraph(pugi::xml_node node, const std::array<pugi::xml_node, levels>& styles)
{
    ShapeParagraph paragraph;
    const pugi::xml_node own = childNamed(node, "pPr");
    const int level = std::clamp(integerFrom(attributeOf(own, "lvl")).value_or(0), 0, levels - 1);
    const pugi::xml_node shared = styles[static_cast<size_t>(level)];
    FontStyle base = m_base;
    for (const pugi::xml_node properties : {shared, own}) {
        addProperties(properties, paragraph);
        addFont(childNamed(properties, "defRPr"), base);
    }
    for (const pugi::xml_node child : node.children())
        addRun(child, base, paragraph);
    FontStyle end = base;
    addFont(childNamed(node, "endParaRPr"), end);
    paragraph.endPoints = end.points;
    text.paragraphs.push_back(std::move(paragraph));
}

void TextReader::addProperties(pugi::xml_node node, ShapeParagraph& paragraph)
{
    if (!node)
        return;
    if (const std::string_view align = attributeOf(node, "algn"); !align.empty())
        paragraph.align = align == "ctr" ? TextAlign::Center
                          : align == "r" ? TextAlign::Right
                          : align == "l" ? TextAlign::Left
                                         : TextAlign::Justify;
    paragraph.line = readSpacing(childNamed(node, "lnSpc"), paragraph.line);
    paragraph.before = readSpacing(childNamed(node, "spcBef"), paragraph.before);
    paragraph.after = readSpacing(childNamed(node, "spcAft"), paragraph.after);
    constexpr double widest = 51206400;
    paragraph.margin = std::clamp(drawingNumber(node, "marL", paragraph.margin), 0.0, widest);
    paragraph.indent = std::clamp(drawingNumber(node, "indent", paragraph.indent), -widest, widest);
    paragraph.bullet = bullet(node);
}

QString TextReader::bullet(pugi::xml_node properties)
{
    if (const pugi::xml_node number = childNamed(properties, "buAutoNum")) {
        m_number =
            m_number ? m_number + 1 : std::clamp(integerFrom(attributeOf(number, "startAt")).value_or(1), 1, 32767);
        return QString::number(m_number) + u'.';
    }
    m_number = 0;
    return textFrom(attributeOf(childNamed(properties, "buChar"), "char").substr(0, 8));
}

void TextReader::addFont(pugi::xml_node node, FontStyle& font) const
{
    if (!node)
        return;
    font.points = std::clamp(drawingNumber(node, "sz", font.points * 100) / 100, 1.0, largestFont);
    font.bold = flagFrom(attributeOf(node, "b"), font.bold);
    font.italic = flagFrom(attributeOf(node, "i"), font.italic);
    if (const std::string_view under = attributeOf(node, "u"); !under.empty())
        font.underline = under == "none" ? Underline::None : under == "dbl" ? Underline::Double : Underline::Single;
    if (const std::string_view strike = attributeOf(node, "strike"); !strike.empty())
        font.strikeOut = strike != "noStrike";
    if (const double raised = drawingShare(node, "baseline"); raised != 0)
        font.script = raised > 0 ? Script::Superscript : Script::Subscript;
    if (const pugi::xml_node latin = childNamed(node, "latin"))
        font.family = m_theme.family(attributeOf(latin, "typeface"));
    font.color = m_theme.color(childNamed(node, "solidFill"), std::nullopt).value_or(font.color);
    if (childNamed(node, "noFill"))
        font.color = 0;
}

void TextReader::addRun(pugi::xml_node node, const FontStyle& base, ShapeParagraph& paragraph)
{
    const std::string_view kind = localName(node);
    if ((kind != "r" && kind != "fld" && kind != "br") || !m_budget.runs.takeOne())
        return;
    ShapeTextRun run{kind == "br" ? u"\n"_s : textFrom(childNamed(node, "t").child_value()), base};
    run.text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\t', u"    "_s);
    run.text.truncate(static_cast<qsizetype>(m_budget.letters.take(static_cast<size_t>(run.text.size()))));
    addFont(childNamed(node, "rPr"), run.font);
    paragraph.runs.push_back(std::move(run));
}

} // namespace

ShapeText readShapeText(pugi::xml_node body, const DrawingTheme& theme, QRgb color, const QString& family,
                        DrawingBudget& budget)
{
    if (!body)
        return {};
    FontStyle base;
    base.points = 18;
    base.color = color;
    base.family = family;
    TextReader reader(theme, budget, base);
    reader.readBody(childNamed(body, "bodyPr"));
    reader.readParagraphs(body);
    return std::move(reader.text);
}

} // namespace lumivane::engine
