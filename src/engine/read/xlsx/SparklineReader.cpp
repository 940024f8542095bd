#include "engine/read/xlsx/SparklineReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>

namespace lumivane::engine {

namespace {

SparklineGroup::Scale scaleFrom(std::string_view name)
{
    return name == "group"    ? SparklineGroup::Scale::Group
           : name == "custom" ? SparklineGroup::Scale::Given
                              : SparklineGroup::Scale::Own;
}

} // namespace

SparklineGroup readSparklines(pugi::xml_node node, const Palette& palette)
{
    SparklineGroup group;
    const auto attribute = [&](std::string_view name) { return attributeOf(node, name); };
    const auto flag = [&](std::string_view name) { return flagFrom(attribute(name), false); };
    if (attribute("type") == "column")
        group.kind = SparklineGroup::Kind::Column;
    else if (attribute("type") == "stacked")
        group.kind = SparklineGroup::Kind::WinLoss;
    if (attribute("displayEmptyCellsAs") == "gap")
        group.empty = SparklineGroup::Empty::Gap;
    else if (attribute("displayEmptyCellsAs") == "span")
        group.empty = SparklineGroup::Empty::Joined;
    group.lineWidth = std::clamp(numberFrom(attribute("lineWeight")).value_or(group.lineWidth), 0.0, 100.0);
    group.showsMarkers = flag("markers");
    group.showsHigh = flag("high");
    group.showsLow = flag("low");
    group.showsFirst = flag("first");
    group.showsLast = flag("last");
    group.showsNegative = flag("negative");
    group.showsAxis = flag("displayXAxis");
    group.showsHidden = flag("displayHidden");
    group.rightToLeft = flag("rightToLeft");
    group.least = scaleFrom(attribute("minAxisType"));
    group.most = scaleFrom(attribute("maxAxisType"));
    group.givenLeast = numberFrom(attribute("manualMin")).value_or(0);
    group.givenMost = numberFrom(attribute("manualMax")).value_or(0);
    const std::pair<const char*, QRgb SparklineGroup::*> colors[] = {
        {"colorSeries", &SparklineGroup::color},     {"colorNegative", &SparklineGroup::negativeColor},
        {"colorAxis", &SparklineGroup::axisColor},   {"colorMarkers", &SparklineGroup::markerColor},
        {"colorFirst", &SparklineGroup::firstColor}, {"colorLast", &SparklineGroup::lastColor},
        {"colorHigh", &SparklineGroup::highColor},   {"colorLow", &SparklineGroup::lowColor},
    };
    for (const auto& [name, color] : colors)
        group.*color = palette.color(childNamed(node, name)).value_or(group.*color);
    constexpr qsizetype longestReference = 255; // characters
    if (flag("dateAxis"))
        group.dates = textFrom(childNamed(node, "f").child_value()).left(longestReference);
    for (const pugi::xml_node child : childrenNamed(childNamed(node, "sparklines"), "sparkline")) {
        const std::optional<CellPlace> place = placeFrom(childNamed(child, "sqref").child_value());
        const QString values = textFrom(childNamed(child, "f").child_value());
        if (place && !values.isEmpty() && values.size() <= longestReference)
            group.members.push_back({place->row, place->column, values});
    }
    return group;
}

} // namespace lumivane::engine
