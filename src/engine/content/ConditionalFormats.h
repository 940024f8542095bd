#pragma once

#include "engine/content/Styles.h"
#include "platform/CellArea.h"

#include <QStringList>
#include <vector>

// Conditional formats as a file says them. Which cells they change is found out when the sheet is shown.

namespace lumivane::engine {

/// Where a scale, a bar or a set of icons has one of its limits.
struct Threshold
{
    enum class Kind : quint8 {
        Least, ///< the least number in the rule's areas
        Most,
        Number,
        Percent,    ///< of the way from the least to the most
        Percentile, ///< of the sorted numbers
        Formula,
        AutomaticLeast, ///< zero, or the least number where that is negative
        AutomaticMost,
    };
    Kind kind = Kind::Number;
    QString value;         ///< a number or a formula
    bool inclusive = true; ///< of icons: a value equal to the limit has reached it
};

struct ColorScale
{
    std::vector<Threshold> limits; ///< as many as colors, ascending
    std::vector<QRgb> colors;
};

struct DataBar
{
    enum class Axis : quint8 { Automatic, Middle, None };
    enum class Direction : quint8 { ByContext, LeftToRight, RightToLeft };
    Threshold least{Threshold::Kind::Least, {}}, most{Threshold::Kind::Most, {}};
    QRgb color = 0xff638ec6;
    QRgb negativeColor = 0xffff0000, axisColor = 0xff000000;
    std::optional<QRgb> borderColor, negativeBorderColor; ///< none: without a border
    int shortest = 10, longest = 90;                      ///< percent of the cell's width
    bool gradient = true;
    bool showValue = true;
    bool hasAxis = false; ///< the later kind, in which negative values have bars of their own
    Axis axis = Axis::Automatic;
    Direction direction = Direction::ByContext;
};

enum class IconSet : quint8 {
    Arrows3,
    ArrowsGray3,
    Flags3,
    TrafficLights3,
    RimmedTrafficLights3,
    Signs3,
    Symbols3,
    BareSymbols3,
    Arrows4,
    ArrowsGray4,
    RedToBlack4,
    Rating4,
    TrafficLights4,
    Arrows5,
    ArrowsGray5,
    Rating5,
    Quarters5,
    Stars3,
    Triangles3,
    Boxes5,
    NoIcons,
};

/// One picture of a set, counted from that of the lowest values.
struct Icon
{
    IconSet set = IconSet::TrafficLights3;
    int index = 0;
    bool operator==(const Icon&) const = default;
};

struct IconScale
{
    std::vector<Threshold> limits; ///< as many as icons; the first one does not matter
    std::vector<Icon> icons;       ///< from the lowest values up
    bool showValue = true;
};

struct ConditionalRule
{
    enum class Kind : quint8 {
        CellIs,
        Expression,
        Contains,
        ContainsNot,
        BeginsWith,
        EndsWith,
        Blanks,
        NoBlanks,
        Errors,
        NoErrors,
        Top,
        Average,
        Duplicates,
        Uniques,
        TimePeriod,
        ColorScale,
        DataBar,
        Icons,
    };
    enum class Operator : quint8 { Less, LessOrEqual, Equal, NotEqual, GreaterOrEqual, Greater, Between, NotBetween };
    enum class Period : quint8 {
        Today,
        Yesterday,
        Tomorrow,
        Last7Days,
        ThisWeek,
        LastWeek,
        NextWeek,
        ThisMonth,
        LastMonth,
        NextMonth,
    };

    Kind kind = Kind::Expression;
    /// Those of one format share them. Formulas are written for the top left corner of all.
    std::shared_ptr<const std::vector<CellArea>> areas;
    int priority = 0; ///< of two rules that set the same, the one with the lower number wins
    bool stopsOthers = false;
    std::shared_ptr<const DifferentialStyle> look; ///< null: none
    Operator comparison = Operator::Equal;
    QStringList formulas;
    QString text; ///< of the rules for texts
    Period period = Period::Today;
    int rank = 10; ///< of Top: how many
    bool percent = false, bottom = false;
    bool above = true, orEqual = false; ///< of Average
    int deviations = 0;                 ///< of Average: standard deviations away from it
    std::optional<ColorScale> scale;
    std::optional<DataBar> bar;
    std::optional<IconScale> icons;
};

} // namespace lumivane::engine
