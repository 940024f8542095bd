#include "engine/show/Sparklines.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {

namespace {

constexpr qint64 maxPoints = 10000;        // of one chart
constexpr qint64 maxAllPoints = 1'000'000; // of all charts of a sheet

void widen(SparklineShown& shown, const std::vector<SparklineShown::Point>& points, bool& any)
{
    for (const SparklineShown::Point& point : points) {
        if (!point.value)
            continue;
        shown.least = any ? std::min(shown.least, *point.value) : *point.value;
        shown.most = any ? std::max(shown.most, *point.value) : *point.value;
        any = true;
    }
}

} // namespace

Sparklines::Sparklines(WorkbookCells& cells, std::shared_ptr<const SheetContent> sheet)
    : m_sheet(std::move(sheet)), m_cells(cells), m_pointsLeft(maxAllPoints)
{
    for (const SparklineGroup& group : m_sheet->sparklines)
        for (const SparklineGroup::Member& member : group.members)
            m_entries.insert_or_assign({member.row, member.column}, Entry{&group, &member, {}});
}

const SparklineShown* Sparklines::at(int row, int column)
{
    const auto entry = m_entries.find({row, column});
    if (entry == m_entries.end())
        return nullptr;
    if (!entry->second.shown)
        measure(*entry->second.group);
    const SparklineShown& shown = *entry->second.shown;
    return shown.points.empty() ? nullptr : &shown;
}

/// All charts of a group, whose scales may depend on one another.
void Sparklines::measure(const SparklineGroup& group)
{
    SparklineShown all;
    bool any = false;
    std::vector<Entry*> entries;
    for (const SparklineGroup::Member& member : group.members) {
        Entry& entry = m_entries.at({member.row, member.column});
        if (entry.member != &member)
            continue; // another chart lies in the same cell
        entry.shown = SparklineShown{&group, pointsOf(group, member), 0, 0};
        widen(all, entry.shown->points, any);
        entries.push_back(&entry);
    }
    for (Entry* entry : entries) {
        SparklineShown& shown = *entry->shown;
        bool own = false;
        widen(shown, shown.points, own);
        if (!own)
            shown.points.clear();
        const auto end = [&](SparklineGroup::Scale scale, double ofGroup, double given, double& side) {
            if (scale == SparklineGroup::Scale::Group)
                side = ofGroup;
            else if (scale == SparklineGroup::Scale::Given)
                side = given;
        };
        end(group.least, all.least, group.givenLeast, shown.least);
        end(group.most, all.most, group.givenMost, shown.most);
    }
}

std::vector<SparklineShown::Point> Sparklines::pointsOf(const SparklineGroup& group,
                                                        const SparklineGroup::Member& member)
{
    const std::vector<std::optional<double>> values = valuesOf(member.values, group.showsHidden);
    const std::vector<std::optional<double>> days =
        group.dates.isEmpty() ? std::vector<std::optional<double>>() : valuesOf(group.dates, group.showsHidden);
    std::vector<SparklineShown::Point> points;
    for (size_t i = 0; i < values.size(); ++i) {
        if (days.empty())
            points.push_back({static_cast<double>(i), values[i]});
        else if (i < days.size() && days[i])
            points.push_back({*days[i], values[i]});
    }
    std::stable_sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.place < b.place; });
    if (points.empty())
        return points;
    const double first = points.front().place, length = points.back().place - first;
    for (SparklineShown::Point& point : points) {
        point.place = length > 0 ? (point.place - first) / length : 0.5;
        if (group.rightToLeft)
            point.place = 1 - point.place;
        if (!point.value && group.empty == SparklineGroup::Empty::Zero)
            point.value = 0;
    }
    return points;
}

std::vector<std::optional<double>> Sparklines::valuesOf(const QString& reference, bool hiddenToo)
{
    std::vector<std::optional<double>> values;
    const std::optional<SheetArea> area = areaReferredTo(reference, m_cells, m_sheet->sheetIndex, &m_budget);
    const SheetContent* sheet = area ? m_cells.sheet(area->sheet) : nullptr;
    if (!sheet)
        return values;
    const CellArea& cells = area->cells;
    const qint64 count = qint64(cells.rows()) * cells.columns();
    if (count > maxPoints || (m_pointsLeft -= count) < 0)
        return values;
    for (int row = cells.firstRow; row <= cells.lastRow; ++row) {
        const RowContent* stored = sheet->findRow(row);
        if (!hiddenToo && stored && stored->hidden)
            continue;
        for (int column = cells.firstColumn; column <= cells.lastColumn; ++column) {
            const ColumnContent* content = sheet->findColumn(column);
            if (!hiddenToo && content && content->hidden)
                continue;
            const FormulaValue value = m_cells.value(area->sheet, row, column);
            // A text counts as nothing, an error is left out.
            values.push_back(value.isNumber() ? std::optional(value.number())
                             : value.isText() ? std::optional(0.0)
                                              : std::nullopt);
        }
    }
    return values;
}

} // namespace lumivane::engine
