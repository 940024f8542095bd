#include "engine/read/xlsx/TableStyles.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

#include <QFile>
#include <algorithm>

// Outside of the namespace, as resources of a library want it.
static void initTableStyles()
{
    Q_INIT_RESOURCE(tablestyles);
}

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t maxOwnStyles = 5000;
constexpr int widestStripe = 1000;

constexpr std::pair<std::string_view, TableElement> elementNames[] = {
    {"wholeTable", TableElement::WholeTable},
    {"pageFieldLabels", TableElement::PageLabels},
    {"pageFieldValues", TableElement::PageValues},
    {"firstColumnStripe", TableElement::FirstColumnStripe},
    {"secondColumnStripe", TableElement::SecondColumnStripe},
    {"firstRowStripe", TableElement::FirstRowStripe},
    {"secondRowStripe", TableElement::SecondRowStripe},
    {"lastColumn", TableElement::LastColumn},
    {"lastColumn", TableElement::GrandTotalColumn},
    {"firstColumn", TableElement::FirstColumn},
    {"headerRow", TableElement::HeaderRow},
    {"totalRow", TableElement::TotalRow},
    {"totalRow", TableElement::GrandTotalRow},
    {"firstHeaderCell", TableElement::FirstHeaderCell},
    {"lastHeaderCell", TableElement::LastHeaderCell},
    {"firstTotalCell", TableElement::FirstTotalCell},
    {"lastTotalCell", TableElement::LastTotalCell},
    {"firstSubtotalColumn", TableElement::FirstSubtotalColumn},
    {"secondSubtotalColumn", TableElement::SecondSubtotalColumn},
    {"thirdSubtotalColumn", TableElement::ThirdSubtotalColumn},
    {"blankRow", TableElement::BlankRow},
    {"firstSubtotalRow", TableElement::FirstSubtotalRow},
    {"secondSubtotalRow", TableElement::SecondSubtotalRow},
    {"thirdSubtotalRow", TableElement::ThirdSubtotalRow},
    {"firstColumnSubheading", TableElement::FirstColumnSubheading},
    {"secondColumnSubheading", TableElement::SecondColumnSubheading},
    {"thirdColumnSubheading", TableElement::ThirdColumnSubheading},
    {"firstRowSubheading", TableElement::FirstRowSubheading},
    {"secondRowSubheading", TableElement::SecondRowSubheading},
    {"thirdRowSubheading", TableElement::ThirdRowSubheading},
};

void setElement(TableStyle& style, std::string_view name, int size, std::shared_ptr<const DifferentialStyle> look)
{
    size = std::clamp(size, 1, widestStripe);
    for (const auto& [known, element] : elementNames) {
        if (known != name)
            continue;
        style.looks[static_cast<size_t>(element)] = look;
        if (element == TableElement::FirstRowStripe)
            style.firstRowStripe = size;
        else if (element == TableElement::SecondRowStripe)
            style.secondRowStripe = size;
        else if (element == TableElement::FirstColumnStripe)
            style.firstColumnStripe = size;
        else if (element == TableElement::SecondColumnStripe)
            style.secondColumnStripe = size;
    }
}

/// The part in front of a separator, which is taken off together with it.
std::string_view takeUpTo(std::string_view& text, char separator)
{
    const size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// "theme4+0.40": a colour of the theme, by its number, and its tint.
std::optional<QRgb> themeColor(std::string_view text, const Palette& palette)
{
    text.remove_prefix(std::min<size_t>(text.find_first_of("0123456789"), text.size()));
    const size_t sign = std::min(text.find_first_of("+-"), text.size());
    std::string_view tint = text.substr(sign);
    if (!tint.empty() && tint.front() == '+')
        tint.remove_prefix(1);
    return palette.color({}, text.substr(0, sign), {}, tint);
}

/// "bold font=theme1 fill=theme4+0.80 top=thin,theme4"
DifferentialStyle builtInLook(std::string_view text, const Palette& palette)
{
    DifferentialStyle look;
    const std::pair<std::string_view, std::optional<BorderLine>*> lines[] = {
        {"left", &look.left},     {"right", &look.right},       {"top", &look.top},
        {"bottom", &look.bottom}, {"vertical", &look.vertical}, {"horizontal", &look.horizontal}};
    while (!text.empty()) {
        std::string_view value = takeUpTo(text, ' ');
        const std::string_view name = takeUpTo(value, '=');
        if (name == "bold")
            look.bold = true;
        else if (name == "font")
            look.fontColor = themeColor(value, palette);
        else if (name == "fill")
            look.fill = FillStyle{Pattern::Solid, themeColor(value, palette).value_or(0xffffffff)};
        for (const auto& [side, line] : lines) {
            if (name != side)
                continue;
            const std::string_view style = takeUpTo(value, ',');
            *line = BorderLine{style == "double"   ? LineStyle::Double
                               : style == "thick"  ? LineStyle::Thick
                               : style == "medium" ? LineStyle::Medium
                                                   : LineStyle::Thin,
                               themeColor(value, palette).value_or(0xff000000)};
        }
    }
    return look;
}

/// The looks of all built-in styles, a line for each element: style, element, size of a stripe, look.
const std::string& builtInLooks()
{
    static const std::string all = [] {
        initTableStyles();
        QFile file(u":/engine/table-styles.tsv"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }();
    return all;
}

std::shared_ptr<const TableStyle> builtInStyle(std::string_view name, const Palette& palette)
{
    std::shared_ptr<TableStyle> style;
    std::string_view rest = builtInLooks();
    while (!rest.empty()) {
        std::string_view line = takeUpTo(rest, '\n');
        if (takeUpTo(line, '\t') != name)
            continue;
        if (!style)
            style = std::make_shared<TableStyle>();
        const std::string_view element = takeUpTo(line, '\t');
        const int size = integerFrom(takeUpTo(line, '\t')).value_or(1);
        setElement(*style, element, size, std::make_shared<DifferentialStyle>(builtInLook(line, palette)));
    }
    return style;
}

} // namespace

void TableStyles::readOwn(pugi::xml_node styleSheet, const std::vector<std::shared_ptr<const DifferentialStyle>>& looks)
{
    for (const pugi::xml_node node : childrenNamed(childNamed(styleSheet, "tableStyles"), "tableStyle")) {
        if (m_styles.size() >= maxOwnStyles)
            return;
        auto style = std::make_shared<TableStyle>();
        for (const pugi::xml_node element : childrenNamed(node, "tableStyleElement")) {
            const int look = integerFrom(attributeOf(element, "dxfId")).value_or(-1);
            if (look >= 0 && look < static_cast<int>(looks.size()))
                setElement(*style, attributeOf(element, "type"), integerFrom(attributeOf(element, "size")).value_or(1),
                           looks[static_cast<size_t>(look)]);
        }
        m_styles.try_emplace(std::string(attributeOf(node, "name")), std::move(style));
    }
}

std::shared_ptr<const TableStyle> TableStyles::find(std::string_view name, const Palette& palette)
{
    const auto known = m_styles.find(name);
    if (known != m_styles.end())
        return known->second;
    const std::shared_ptr<const TableStyle> builtIn = builtInStyle(name, palette);
    if (builtIn)
        m_styles.emplace(name, builtIn);
    return builtIn;
}

} // namespace lumivane::engine
