#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/formula/Formula.h"
#include "engine/formula/WorkbookCells.h"

#include <map>
#include <memory>

namespace lumivane::engine {

/// A small chart with its values, ready to be drawn.
struct SparklineShown
{
    struct Point
    {
        double place = 0; ///< 0 to 1 along the chart
        std::optional<double> value;
    };
    const SparklineGroup* group = nullptr;
    std::vector<Point> points;
    double least = 0, most = 0; ///< ends of the scale
};

/// Finds the values of the small charts of a sheet, each when it is first asked for.
class Sparklines
{
public:
    /// `cells` must outlive the object.
    Sparklines(WorkbookCells& cells, std::shared_ptr<const SheetContent> sheet);

    /// The chart in a cell; null if there is none, and where it has no values.
    const SparklineShown* at(int row, int column);

private:
    struct Entry
    {
        const SparklineGroup* group;
        const SparklineGroup::Member* member;
        std::optional<SparklineShown> shown;
    };

    void measure(const SparklineGroup& group);
    std::vector<std::optional<double>> valuesOf(const QString& reference, bool hiddenToo);
    std::vector<SparklineShown::Point> pointsOf(const SparklineGroup& group, const SparklineGroup::Member& member);

    std::shared_ptr<const SheetContent> m_sheet;
    WorkbookCells& m_cells;
    FormulaBudget m_budget;
    std::map<std::pair<int, int>, Entry> m_entries; ///< by row and column
    qint64 m_pointsLeft;
};

} // namespace lumivane::engine
