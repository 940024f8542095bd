#include "engine/read/xlsx/ConditionReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/StyleReader.h"

#include <algorithm>
#include <numeric>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

using Kind = ConditionalRule::Kind;
using Operator = ConditionalRule::Operator;
using Period = ConditionalRule::Period;

constexpr size_t maxRules = 100000;
constexpr size_t maxAreas = 1000000;   // of all formats
constexpr qint64 maxLetters = 2000000; // of all texts and formulas
constexpr size_t maxLimits = 10;       // of one scale
constexpr qsizetype maxFormula = 8192; // characters

template <class Value>
std::optional<Value> valueNamed(std::initializer_list<std::pair<std::string_view, Value>> names, std::string_view name)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const auto& entry) { return entry.first == name; });
    return found != names.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<Kind> kindFrom(std::string_view name)
{
    return valueNamed<Kind>({{"cellIs", Kind::CellIs},
                             {"expression", Kind::Expression},
                             {"containsText", Kind::Contains},
                             {"notContainsText", Kind::ContainsNot},
                             {"beginsWith", Kind::BeginsWith},
                             {"endsWith", Kind::EndsWith},
                             {"containsBlanks", Kind::Blanks},
                             {"notContainsBlanks", Kind::NoBlanks},
                             {"containsErrors", Kind::Errors},
                             {"notContainsErrors", Kind::NoErrors},
                             {"top10", Kind::Top},
                             {"aboveAverage", Kind::Average},
                             {"duplicateValues", Kind::Duplicates},
                             {"uniqueValues", Kind::Uniques},
                             {"timePeriod", Kind::TimePeriod},
                             {"colorScale", Kind::ColorScale},
                             {"dataBar", Kind::DataBar},
                             {"iconSet", Kind::Icons}},
                            name);
}

Operator operatorFrom(std::string_view name)
{
    return valueNamed<Operator>({{"lessThan", Operator::Less},
                                 {"lessThanOrEqual", Operator::LessOrEqual},
                                 {"notEqual", Operator::NotEqual},
                                 {"greaterThanOrEqual", Operator::GreaterOrEqual},
                                 {"greaterThan", Operator::Greater},
                                 {"between", Operator::Between},
                                 {"notBetween", Operator::NotBetween}},
                                name)
        .value_or(Operator::Equal);
}

Period periodFrom(std::string_view name)
{
    return valueNamed<Period>({{"yesterday", Period::Yesterday},
                               {"tomorrow", Period::Tomorrow},
                               {"last7Days", Period::Last7Days},
                               {"thisWeek", Period::ThisWeek},
                               {"lastWeek", Period::LastWeek},
                               {"nextWeek", Period::NextWeek},
                               {"thisMonth", Period::ThisMonth},
                               {"lastMonth", Period::LastMonth},
                               {"nextMonth", Period::NextMonth}},
                              name)
        .value_or(Period::Today);
}

struct NamedSet
{
    std::string_view name;
    IconSet set;
    int icons;
};

constexpr NamedSet iconSets[] = {
    {"3TrafficLights1", IconSet::TrafficLights3, 3},
    {"3TrafficLights2", IconSet::RimmedTrafficLights3, 3},
    {"3Arrows", IconSet::Arrows3, 3},
    {"3ArrowsGray", IconSet::ArrowsGray3, 3},
    {"3Flags", IconSet::Flags3, 3},
    {"3Signs", IconSet::Signs3, 3},
    {"3Symbols", IconSet::Symbols3, 3},
    {"3Symbols2", IconSet::BareSymbols3, 3},
    {"3Stars", IconSet::Stars3, 3},
    {"3Triangles", IconSet::Triangles3, 3},
    {"4Arrows", IconSet::Arrows4, 4},
    {"4ArrowsGray", IconSet::ArrowsGray4, 4},
    {"4RedToBlack", IconSet::RedToBlack4, 4},
    {"4Rating", IconSet::Rating4, 4},
    {"4TrafficLights", IconSet::TrafficLights4, 4},
    {"5Arrows", IconSet::Arrows5, 5},
    {"5ArrowsGray", IconSet::ArrowsGray5, 5},
    {"5Rating", IconSet::Rating5, 5},
    {"5Quarters", IconSet::Quarters5, 5},
    {"5Boxes", IconSet::Boxes5, 5},
    {"NoIcons", IconSet::NoIcons, 1},
};

/// The first set where the name is unknown or missing.
const NamedSet& setNamed(std::string_view name)
{
    const auto found =
        std::find_if(std::begin(iconSets), std::end(iconSets), [&](const NamedSet& set) { return set.name == name; });
    return found != std::end(iconSets) ? *found : iconSets[0];
}

/// Formulas stand in <formula>, those of the later form in <f>.
QString formulaFrom(pugi::xml_node node)
{
    const QString formula = textFrom(node.child_value());
    return formula.size() <= maxFormula ? formula : QString();
}

Threshold readThreshold(pugi::xml_node node)
{
    Threshold threshold;
    threshold.kind = valueNamed<Threshold::Kind>({{"min", Threshold::Kind::Least},
                                                  {"max", Threshold::Kind::Most},
                                                  {"percent", Threshold::Kind::Percent},
                                                  {"percentile", Threshold::Kind::Percentile},
                                                  {"formula", Threshold::Kind::Formula},
                                                  {"autoMin", Threshold::Kind::AutomaticLeast},
                                                  {"autoMax", Threshold::Kind::AutomaticMost}},
                                                 attributeOf(node, "type"))
                         .value_or(Threshold::Kind::Number);
    threshold.value = textFrom(attributeOf(node, "val"));
    if (const pugi::xml_node formula = childNamed(node, "f"))
        threshold.value = formulaFrom(formula);
    threshold.inclusive = flagFrom(attributeOf(node, "gte"), true);
    return threshold;
}

std::vector<Threshold> readThresholds(pugi::xml_node node)
{
    std::vector<Threshold> thresholds;
    for (const pugi::xml_node child : childrenNamed(node, "cfvo")) {
        if (thresholds.size() < maxLimits)
            thresholds.push_back(readThreshold(child));
    }
    return thresholds;
}

qint64 lettersOf(const std::vector<Threshold>& limits)
{
    return std::accumulate(limits.begin(), limits.end(), qint64(0),
                           [](qint64 sum, const Threshold& limit) { return sum + limit.value.size(); });
}

qint64 lettersOf(const ConditionalRule& rule)
{
    qint64 letters = rule.text.size();
    for (const QString& formula : rule.formulas)
        letters += formula.size();
    if (rule.scale)
        letters += lettersOf(rule.scale->limits);
    if (rule.bar)
        letters += lettersOf({rule.bar->least, rule.bar->most});
    return letters + (rule.icons ? lettersOf(rule.icons->limits) : 0);
}

/// The id that joins a rule to the later form of itself.
std::string_view idOf(pugi::xml_node rule)
{
    for (const pugi::xml_node extension : childrenNamed(childNamed(rule, "extLst"), "ext")) {
        if (const pugi::xml_node id = childNamed(extension, "id"))
            return id.child_value();
    }
    return {};
}

} // namespace

void ConditionReader::read(pugi::xml_node format)
{
    std::string_view place = attributeOf(format, "sqref");
    if (place.empty())
        place = childNamed(format, "sqref").child_value();
    const Areas areas = readAreas(place);
    if (areas->empty())
        return;
    for (const pugi::xml_node rule : childrenNamed(format, "cfRule"))
        readRule(rule, areas);
}

ConditionReader::Areas ConditionReader::readAreas(std::string_view text)
{
    auto areas = std::make_shared<std::vector<CellArea>>();
    while (!text.empty()) {
        const size_t end = std::min(text.find_first_of(" \t\r\n"), text.size());
        if (const std::optional<CellArea> area = areaFrom(text.substr(0, end)))
            areas->push_back(*area);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    // Of a part of them formulas might be taken for another corner.
    if (m_areasRead + areas->size() > maxAreas) {
        m_isComplete = false;
        areas->clear();
    }
    areas->shrink_to_fit();
    m_areasRead += areas->size();
    return areas;
}

bool ConditionReader::hasRoomFor(const ConditionalRule& rule)
{
    const qint64 letters = lettersOf(rule);
    const bool fits = m_lettersRead + letters <= maxLetters;
    if (fits)
        m_lettersRead += letters;
    m_isComplete = m_isComplete && fits;
    return fits;
}

void ConditionReader::readRule(pugi::xml_node node, const Areas& areas)
{
    const std::optional<Kind> kind = kindFrom(attributeOf(node, "type"));
    if (!kind)
        return;
    const std::string_view ownId = attributeOf(node, "id");
    const bool later = !ownId.empty();
    if (const auto known = m_byId.find(ownId); later && known != m_byId.end()) {
        ConditionalRule completed = m_rules[known->second];
        if (*kind == Kind::DataBar && completed.kind == Kind::DataBar)
            readBar(childNamed(node, "dataBar"), true, completed);
        else if (*kind == Kind::Icons && completed.kind == Kind::Icons)
            readIcons(childNamed(node, "iconSet"), completed);
        if (hasRoomFor(completed))
            m_rules[known->second] = std::move(completed);
        return;
    }
    if (m_rules.size() >= maxRules) {
        m_isComplete = false;
        return;
    }

    ConditionalRule rule;
    rule.kind = *kind;
    rule.areas = areas;
    rule.priority = integerFrom(attributeOf(node, "priority")).value_or(0);
    rule.stopsOthers = flagFrom(attributeOf(node, "stopIfTrue"), false);
    rule.comparison = operatorFrom(attributeOf(node, "operator"));
    rule.text = textFrom(attributeOf(node, "text"));
    rule.period = periodFrom(attributeOf(node, "timePeriod"));
    rule.rank = std::clamp(integerFrom(attributeOf(node, "rank")).value_or(10), 1, maxRow);
    rule.percent = flagFrom(attributeOf(node, "percent"), false);
    rule.bottom = flagFrom(attributeOf(node, "bottom"), false);
    rule.above = flagFrom(attributeOf(node, "aboveAverage"), true);
    rule.orEqual = flagFrom(attributeOf(node, "equalAverage"), false);
    rule.deviations = std::clamp(integerFrom(attributeOf(node, "stdDev")).value_or(0), 0, 100);
    for (const pugi::xml_node child : node.children()) {
        if ((localName(child) == "formula" || localName(child) == "f") && rule.formulas.size() < 3)
            rule.formulas.append(formulaFrom(child));
    }
    readLook(node, rule);
    if (rule.kind == Kind::ColorScale)
        readScale(childNamed(node, "colorScale"), rule);
    else if (rule.kind == Kind::DataBar)
        readBar(childNamed(node, "dataBar"), later, rule);
    else if (rule.kind == Kind::Icons)
        readIcons(childNamed(node, "iconSet"), rule);
    if (!hasRoomFor(rule))
        return;
    if (const std::string_view id = idOf(node); !id.empty())
        m_byId.emplace(id, m_rules.size());
    m_rules.push_back(std::move(rule));
}

void ConditionReader::readLook(pugi::xml_node node, ConditionalRule& rule) const
{
    if (const pugi::xml_node own = childNamed(node, "dxf")) {
        rule.look = std::make_shared<const DifferentialStyle>(readDifferential(own, m_palette));
    } else if (const std::optional<int> number = integerFrom(attributeOf(node, "dxfId"))) {
        if (*number >= 0 && static_cast<size_t>(*number) < m_looks.size())
            rule.look = m_looks[static_cast<size_t>(*number)];
    }
}

void ConditionReader::readScale(pugi::xml_node node, ConditionalRule& rule) const
{
    ColorScale scale;
    scale.limits = readThresholds(node);
    for (const pugi::xml_node color : childrenNamed(node, "color")) {
        if (scale.colors.size() < maxLimits)
            scale.colors.push_back(m_palette.color(color).value_or(0xffffffff));
    }
    if (scale.limits.size() >= 2 && scale.limits.size() == scale.colors.size())
        rule.scale = std::move(scale);
}

void ConditionReader::readBar(pugi::xml_node node, bool later, ConditionalRule& rule) const
{
    DataBar bar = rule.bar.value_or(DataBar());
    if (const std::vector<Threshold> limits = readThresholds(node); limits.size() >= 2) {
        bar.least = limits[0];
        bar.most = limits[1];
    }
    bar.shortest = std::clamp(integerFrom(attributeOf(node, "minLength")).value_or(10), 0, 100);
    bar.longest = std::clamp(integerFrom(attributeOf(node, "maxLength")).value_or(90), bar.shortest, 100);
    bar.showValue = flagFrom(attributeOf(node, "showValue"), true);
    bar.color = m_palette.color(childNamed(node, "color")).value_or(bar.color);
    if (later) {
        bar.hasAxis = true;
        bar.gradient = flagFrom(attributeOf(node, "gradient"), true);
        bar.color = m_palette.color(childNamed(node, "fillColor")).value_or(bar.color);
        bar.negativeColor = m_palette.color(childNamed(node, "negativeFillColor")).value_or(bar.negativeColor);
        if (flagFrom(attributeOf(node, "negativeBarColorSameAsPositive"), false))
            bar.negativeColor = bar.color;
        bar.axisColor = m_palette.color(childNamed(node, "axisColor")).value_or(bar.axisColor);
        if (flagFrom(attributeOf(node, "border"), false)) {
            bar.borderColor = m_palette.color(childNamed(node, "borderColor")).value_or(bar.color);
            bar.negativeBorderColor = m_palette.color(childNamed(node, "negativeBorderColor"));
            if (!bar.negativeBorderColor || flagFrom(attributeOf(node, "negativeBarBorderColorSameAsPositive"), true))
                bar.negativeBorderColor = bar.borderColor;
        }
        bar.axis = valueNamed<DataBar::Axis>({{"middle", DataBar::Axis::Middle}, {"none", DataBar::Axis::None}},
                                             attributeOf(node, "axisPosition"))
                       .value_or(DataBar::Axis::Automatic);
        bar.direction = valueNamed<DataBar::Direction>({{"leftToRight", DataBar::Direction::LeftToRight},
                                                        {"rightToLeft", DataBar::Direction::RightToLeft}},
                                                       attributeOf(node, "direction"))
                            .value_or(DataBar::Direction::ByContext);
    }
    rule.bar = bar;
}

void ConditionReader::readIcons(pugi::xml_node node, ConditionalRule& rule) const
{
    IconScale scale;
    scale.limits = readThresholds(node);
    scale.showValue = flagFrom(attributeOf(node, "showValue"), true);
    const NamedSet& set = setNamed(attributeOf(node, "iconSet"));
    for (int index = 0; index < set.icons; ++index)
        scale.icons.push_back({set.set, index});
    if (flagFrom(attributeOf(node, "custom"), false)) {
        scale.icons.clear();
        for (const pugi::xml_node icon : childrenNamed(node, "cfIcon")) {
            const NamedSet& from = setNamed(attributeOf(icon, "iconSet"));
            const int index = integerFrom(attributeOf(icon, "iconId")).value_or(0);
            if (scale.icons.size() < maxLimits)
                scale.icons.push_back({from.set, std::clamp(index, 0, from.icons - 1)});
        }
    }
    if (flagFrom(attributeOf(node, "reverse"), false))
        std::reverse(scale.icons.begin(), scale.icons.end());
    if (!scale.limits.empty() && scale.limits.size() == scale.icons.size())
        rule.icons = std::move(scale);
}

std::vector<ConditionalRule> ConditionReader::finish()
{
    std::stable_sort(m_rules.begin(), m_rules.end(),
                     [](const ConditionalRule& a, const ConditionalRule& b) { return a.priority < b.priority; });
    m_byId.clear();
    return std::move(m_rules);
}

} // namespace lumivane::engine
