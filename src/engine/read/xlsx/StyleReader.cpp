#include "engine/read/xlsx/StyleReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>
#include <map>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// The value that goes with a name; the first one where the name is unknown.
template <class Enum, size_t count>
Enum named(const std::pair<std::string_view, Enum> (&names)[count], std::string_view name)
{
    for (const auto& [known, value] : names) {
        if (known == name)
            return value;
    }
    return names[0].second;
}

constexpr std::pair<std::string_view, Pattern> patternNames[] = {
    {"none", Pattern::None},
    {"solid", Pattern::Solid},
    {"gray125", Pattern::Gray125},
    {"gray0625", Pattern::Gray0625},
    {"darkGray", Pattern::DarkGray},
    {"mediumGray", Pattern::MediumGray},
    {"lightGray", Pattern::LightGray},
    {"darkHorizontal", Pattern::DarkHorizontal},
    {"darkVertical", Pattern::DarkVertical},
    {"darkDown", Pattern::DarkDown},
    {"darkUp", Pattern::DarkUp},
    {"darkGrid", Pattern::DarkGrid},
    {"darkTrellis", Pattern::DarkTrellis},
    {"lightHorizontal", Pattern::LightHorizontal},
    {"lightVertical", Pattern::LightVertical},
    {"lightDown", Pattern::LightDown},
    {"lightUp", Pattern::LightUp},
    {"lightGrid", Pattern::LightGrid},
    {"lightTrellis", Pattern::LightTrellis},
};

constexpr std::pair<std::string_view, LineStyle> lineNames[] = {
    {"none", LineStyle::None},
    {"thin", LineStyle::Thin},
    {"medium", LineStyle::Medium},
    {"dashed", LineStyle::Dashed},
    {"dotted", LineStyle::Dotted},
    {"thick", LineStyle::Thick},
    {"double", LineStyle::Double},
    {"hair", LineStyle::Hair},
    {"mediumDashed", LineStyle::MediumDashed},
    {"dashDot", LineStyle::DashDot},
    {"mediumDashDot", LineStyle::MediumDashDot},
    {"dashDotDot", LineStyle::DashDotDot},
    {"mediumDashDotDot", LineStyle::MediumDashDotDot},
    {"slantDashDot", LineStyle::SlantDashDot},
};

constexpr std::pair<std::string_view, Horizontal> horizontalNames[] = {
    {"general", Horizontal::General},
    {"left", Horizontal::Left},
    {"center", Horizontal::Center},
    {"right", Horizontal::Right},
    {"fill", Horizontal::Fill},
    {"justify", Horizontal::Justify},
    {"centerContinuous", Horizontal::CenterAcross},
    {"distributed", Horizontal::Distributed},
};

constexpr std::pair<std::string_view, Vertical> verticalNames[] = {
    {"bottom", Vertical::Bottom},   {"center", Vertical::Center},           {"top", Vertical::Top},
    {"justify", Vertical::Justify}, {"distributed", Vertical::Distributed},
};

/// <b/> and <b val="1"/> switch on, <b val="0"/> does not.
bool switchedOn(pugi::xml_node node, std::string_view name)
{
    const pugi::xml_node child = childNamed(node, name);
    return child && flagFrom(attributeOf(child, "val"), true);
}

FontStyle readFont(pugi::xml_node node, const Palette& palette)
{
    FontStyle font;
    if (const std::string_view name = attributeOf(childNamed(node, "name"), "val"); !name.empty())
        font.family = textFrom(name);
    const double points = numberFrom(attributeOf(childNamed(node, "sz"), "val")).value_or(font.points);
    if (points >= 1 && points <= 409)
        font.points = points;
    font.bold = switchedOn(node, "b");
    font.italic = switchedOn(node, "i");
    font.strikeOut = switchedOn(node, "strike");
    if (const pugi::xml_node underline = childNamed(node, "u"))
        font.underline = underlineFrom(attributeOf(underline, "val"));
    font.script = scriptFrom(attributeOf(childNamed(node, "vertAlign"), "val"));
    font.color = palette.color(childNamed(node, "color")).value_or(font.color);
    return font;
}

/// Of a gradient; no program takes more.
constexpr size_t maxStops = 256;

double shareFrom(std::string_view text)
{
    return std::clamp(numberFrom(text).value_or(0), 0.0, 1.0);
}

/// The part of the cell from which the colours spread, stored as the places of its edges.
QRectF readInner(pugi::xml_node node)
{
    const QPointF leftTop(shareFrom(attributeOf(node, "left")), shareFrom(attributeOf(node, "top")));
    const QPointF rightBottom(shareFrom(attributeOf(node, "right")), shareFrom(attributeOf(node, "bottom")));
    return QRectF(leftTop, rightBottom).normalized();
}

FillStyle readGradient(pugi::xml_node node, const Palette& palette)
{
    auto gradient = std::make_shared<CellGradient>();
    for (const pugi::xml_node stop : childrenNamed(node, "stop")) {
        const auto color = palette.color(childNamed(stop, "color"));
        if (color && gradient->stops.size() < maxStops)
            gradient->stops.push_back({shareFrom(attributeOf(stop, "position")), *color});
    }
    if (gradient->stops.empty())
        return {};
    std::stable_sort(gradient->stops.begin(), gradient->stops.end(),
                     [](const GradientStop& a, const GradientStop& b) { return a.position < b.position; });
    gradient->degrees = numberFrom(attributeOf(node, "degree")).value_or(0);
    if (attributeOf(node, "type") == "path")
        gradient->inner = readInner(node);
    FillStyle fill;
    fill.pattern = Pattern::Gradient;
    fill.fore = gradient->stops.front().color;
    fill.back = gradient->stops.back().color;
    fill.gradient = std::move(gradient);
    return fill;
}

FillStyle readFill(pugi::xml_node node, const Palette& palette)
{
    if (const pugi::xml_node gradient = childNamed(node, "gradientFill"))
        return readGradient(gradient, palette);
    FillStyle fill;
    const pugi::xml_node pattern = childNamed(node, "patternFill");
    fill.pattern = named(patternNames, attributeOf(pattern, "patternType"));
    fill.fore = palette.color(childNamed(pattern, "fgColor")).value_or(fill.fore);
    fill.back = palette.color(childNamed(pattern, "bgColor")).value_or(fill.back);
    return fill;
}

BorderLine readLine(pugi::xml_node border, std::string_view name, std::string_view otherName, const Palette& palette)
{
    pugi::xml_node node = childNamed(border, name);
    if (!node)
        node = childNamed(border, otherName);
    BorderLine line;
    line.style = named(lineNames, attributeOf(node, "style"));
    line.color = palette.color(childNamed(node, "color")).value_or(line.color);
    return line;
}

std::optional<BorderLine> lineOf(pugi::xml_node border, std::string_view name, std::string_view otherName,
                                 const Palette& palette)
{
    const BorderLine line = readLine(border, name, otherName, palette);
    return line.style == LineStyle::None ? std::nullopt : std::optional(line);
}

std::optional<bool> switchIn(pugi::xml_node font, std::string_view name)
{
    return childNamed(font, name) ? std::optional(switchedOn(font, name)) : std::nullopt;
}

/// Solid fills are stored the other way round than in cells, and mostly without saying so.
std::optional<FillStyle> readDifferentialFill(pugi::xml_node node, const Palette& palette)
{
    const pugi::xml_node pattern = childNamed(node, "patternFill");
    if (!pattern)
        return childNamed(node, "gradientFill") ? std::optional(readFill(node, palette)) : std::nullopt;
    FillStyle fill = readFill(node, palette);
    if (attributeOf(pattern, "patternType").empty() || fill.pattern == Pattern::Solid) {
        const auto back = palette.color(childNamed(pattern, "bgColor"));
        const auto color = back ? back : palette.color(childNamed(pattern, "fgColor"));
        if (!color)
            return std::nullopt;
        fill.pattern = Pattern::Solid;
        fill.fore = *color;
    }
    return fill.pattern == Pattern::None ? std::nullopt : std::optional(fill);
}

BorderStyle readBorder(pugi::xml_node node, const Palette& palette)
{
    BorderStyle border;
    border.left = readLine(node, "left", "start", palette);
    border.right = readLine(node, "right", "end", palette);
    border.top = readLine(node, "top", "top", palette);
    border.bottom = readLine(node, "bottom", "bottom", palette);
    border.diagonal = readLine(node, "diagonal", "diagonal", palette);
    border.diagonalUp = flagFrom(attributeOf(node, "diagonalUp"), false);
    border.diagonalDown = flagFrom(attributeOf(node, "diagonalDown"), false);
    return border;
}

/// Stored are 0 to 90 for turns to the left, 91 to 180 for 1 to 90 degrees to the right, 255 for stacked letters.
qint16 rotationFrom(std::string_view text)
{
    const int stored = integerFrom(text).value_or(0);
    if (stored == 255)
        return 255;
    if (stored < 0 || stored > 180)
        return 0;
    return static_cast<qint16>(stored <= 90 ? stored : 90 - stored);
}

void readAlignment(pugi::xml_node node, CellStyle& style)
{
    style.horizontal = named(horizontalNames, attributeOf(node, "horizontal"));
    style.vertical = named(verticalNames, attributeOf(node, "vertical"));
    style.rotation = rotationFrom(attributeOf(node, "textRotation"));
    style.indent = static_cast<quint8>(std::clamp(integerFrom(attributeOf(node, "indent")).value_or(0), 0, 250));
    style.wrap = flagFrom(attributeOf(node, "wrapText"), false);
    style.shrinkToFit = flagFrom(attributeOf(node, "shrinkToFit"), false);
    style.spaceAround = flagFrom(attributeOf(node, "justifyLastLine"), false);
    style.readingOrder =
        static_cast<quint8>(std::clamp(integerFrom(attributeOf(node, "readingOrder")).value_or(0), 0, 2));
}

constexpr qsizetype longestFormat = 255; // that a program takes

/// Number formats by the numbers that the file uses for them, each code once.
class FormatNumbers
{
public:
    FormatNumbers(pugi::xml_node numFmts, std::vector<QString>& codes) : m_codes(codes)
    {
        for (const pugi::xml_node node : childrenNamed(numFmts, "numFmt")) {
            if (const std::optional<int> id = integerFrom(attributeOf(node, "numFmtId")))
                m_indexes[*id] = append(textFrom(attributeOf(node, "formatCode")));
        }
    }

    int index(int id)
    {
        const auto place = m_indexes.find(id);
        if (place != m_indexes.end())
            return place->second;
        const QString code = builtInNumberFormat(id);
        return m_indexes[id] = code.isEmpty() ? 0 : append(code);
    }

private:
    int append(const QString& code)
    {
        if (code.isEmpty() || code.size() > longestFormat || code.compare(m_codes.front(), Qt::CaseInsensitive) == 0)
            return 0;
        m_codes.push_back(code);
        return static_cast<int>(m_codes.size()) - 1;
    }

    std::vector<QString>& m_codes;
    std::map<int, int> m_indexes;
};

template <class T>
int indexWithin(std::string_view text, const std::vector<T>& list)
{
    const int index = integerFrom(text).value_or(0);
    return index >= 0 && index < static_cast<int>(list.size()) ? index : 0;
}

/// Far above what any program writes; what is beyond was made to waste memory.
constexpr size_t maxStyles = 200000;

template <class T, class Read>
void readList(pugi::xml_node list, const char* name, std::vector<T>& to, Read read)
{
    const std::vector<pugi::xml_node> nodes = childrenNamed(list, name);
    if (nodes.size() > maxStyles)
        throw Fault{u"it has more than %1 styles of one kind"_s.arg(maxStyles), ReadCause::TooLarge};
    std::vector<T> found;
    for (const pugi::xml_node node : nodes)
        found.push_back(read(node));
    if (!found.empty())
        to = std::move(found);
}

void readCellStyles(pugi::xml_node styleSheet, StyleTable& table)
{
    FormatNumbers formats(childNamed(styleSheet, "numFmts"), table.numberFormats);
    readList(childNamed(styleSheet, "cellXfs"), "xf", table.cells, [&](pugi::xml_node node) {
        CellStyle style;
        style.font = indexWithin(attributeOf(node, "fontId"), table.fonts);
        style.fill = indexWithin(attributeOf(node, "fillId"), table.fills);
        style.border = indexWithin(attributeOf(node, "borderId"), table.borders);
        style.numberFormat = formats.index(integerFrom(attributeOf(node, "numFmtId")).value_or(0));
        style.quotePrefix = flagFrom(attributeOf(node, "quotePrefix"), false);
        readAlignment(childNamed(node, "alignment"), style);
        return style;
    });
}

} // namespace

DifferentialStyle readDifferential(pugi::xml_node node, const Palette& palette)
{
    DifferentialStyle style;
    const pugi::xml_node font = childNamed(node, "font");
    style.fontColor = palette.color(childNamed(font, "color"));
    style.bold = switchIn(font, "b");
    style.italic = switchIn(font, "i");
    style.strikeOut = switchIn(font, "strike");
    if (const pugi::xml_node underline = childNamed(font, "u"))
        style.underline = underlineFrom(attributeOf(underline, "val"));
    style.fill = readDifferentialFill(childNamed(node, "fill"), palette);
    const pugi::xml_node border = childNamed(node, "border");
    style.left = lineOf(border, "left", "start", palette);
    style.right = lineOf(border, "right", "end", palette);
    style.top = lineOf(border, "top", "top", palette);
    style.bottom = lineOf(border, "bottom", "bottom", palette);
    style.vertical = lineOf(border, "vertical", "vertical", palette);
    style.horizontal = lineOf(border, "horizontal", "horizontal", palette);
    style.numberFormat = textFrom(attributeOf(childNamed(node, "numFmt"), "formatCode"));
    if (style.numberFormat.size() > longestFormat)
        style.numberFormat.clear();
    return style;
}

Underline underlineFrom(std::string_view text)
{
    static constexpr std::pair<std::string_view, Underline> names[] = {
        {"single", Underline::Single},
        {"none", Underline::None},
        {"double", Underline::Double},
        {"singleAccounting", Underline::SingleAccounting},
        {"doubleAccounting", Underline::DoubleAccounting},
    };
    return named(names, text);
}

Script scriptFrom(std::string_view text)
{
    static constexpr std::pair<std::string_view, Script> names[] = {
        {"baseline", Script::Normal}, {"superscript", Script::Superscript}, {"subscript", Script::Subscript}};
    return named(names, text);
}

QString builtInNumberFormat(int id)
{
    switch (id) {
    case 0:
        return u"General"_s;
    case 1:
        return u"0"_s;
    case 2:
        return u"0.00"_s;
    case 3:
        return u"#,##0"_s;
    case 4:
        return u"#,##0.00"_s;
    case 5:
        return u"\"$\"#,##0_);(\"$\"#,##0)"_s;
    case 6:
        return u"\"$\"#,##0_);[Red](\"$\"#,##0)"_s;
    case 7:
        return u"\"$\"#,##0.00_);(\"$\"#,##0.00)"_s;
    case 8:
        return u"\"$\"#,##0.00_);[Red](\"$\"#,##0.00)"_s;
    case 9:
        return u"0%"_s;
    case 10:
        return u"0.00%"_s;
    case 11:
        return u"0.00E+00"_s;
    case 12:
        return u"# ?/?"_s;
    case 13:
        return u"# ?\?/?\?"_s;
    case 15:
        return u"d-mmm-yy"_s;
    case 16:
        return u"d-mmm"_s;
    case 17:
        return u"mmm-yy"_s;
    case 18:
        return u"h:mm AM/PM"_s;
    case 19:
        return u"h:mm:ss AM/PM"_s;
    case 20:
        return u"h:mm"_s;
    case 21:
        return u"h:mm:ss"_s;
    case 22:
        return u"m/d/yyyy h:mm"_s;
    case 37:
        return u"#,##0_);(#,##0)"_s;
    case 38:
        return u"#,##0_);[Red](#,##0)"_s;
    case 39:
        return u"#,##0.00_);(#,##0.00)"_s;
    case 40:
        return u"#,##0.00_);[Red](#,##0.00)"_s;
    case 41:
        return u"_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)"_s;
    case 42:
        return u"_(\"$\"* #,##0_);_(\"$\"* (#,##0);_(\"$\"* \"-\"_);_(@_)"_s;
    case 43:
        return u"_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"?\?_);_(@_)"_s;
    case 44:
        return u"_(\"$\"* #,##0.00_);_(\"$\"* (#,##0.00);_(\"$\"* \"-\"?\?_);_(@_)"_s;
    case 45:
        return u"mm:ss"_s;
    case 46:
        return u"[h]:mm:ss"_s;
    case 47:
        return u"mm:ss.0"_s;
    case 48:
        return u"##0.0E+0"_s;
    case 49:
        return u"@"_s;
    }
    // Thai digits.
    static constexpr std::pair<int, int> thai[] = {{59, 1}, {60, 2},  {61, 3},  {62, 4},
                                                   {67, 9}, {68, 10}, {69, 12}, {70, 13}};
    for (const auto& [number, common] : thai)
        if (id == number)
            return u't' + builtInNumberFormat(common);
    // Dates and times of East Asian editions, shown by others in their own short form.
    if (id == 14 || (id >= 27 && id <= 31) || id == 36 || (id >= 50 && id <= 58))
        return u"m/d/yyyy"_s;
    if (id >= 32 && id <= 35)
        return u"h:mm:ss"_s;
    return {};
}

StyleTable readStyles(pugi::xml_node styleSheet, Palette& palette)
{
    if (localName(styleSheet) != "styleSheet")
        throw Fault{u"the part with its styles holds none"_s};
    palette.readIndexed(childNamed(styleSheet, "colors"));
    StyleTable table;
    readList(childNamed(styleSheet, "fonts"), "font", table.fonts,
             [&](pugi::xml_node node) { return readFont(node, palette); });
    readList(childNamed(styleSheet, "fills"), "fill", table.fills,
             [&](pugi::xml_node node) { return readFill(node, palette); });
    readList(childNamed(styleSheet, "borders"), "border", table.borders,
             [&](pugi::xml_node node) { return readBorder(node, palette); });
    readCellStyles(styleSheet, table);
    readList(childNamed(styleSheet, "dxfs"), "dxf", table.differentials, [&](pugi::xml_node node) {
        return std::make_shared<const DifferentialStyle>(readDifferential(node, palette));
    });
    return table;
}

} // namespace lumivane::engine
