#include "engine/formula/AreaIndex.h"

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluation.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr size_t mostIndexes = 3;     ///< of either sort
constexpr int askedBefore = 3;        ///< times before an index is made
constexpr qint64 mostSteps = 500'000; ///< of one index: cells, and 16 characters of their texts

std::span<const qint64> startOf(std::span<const qint64> places, qint64 behind)
{
    return places.first(static_cast<size_t>(std::lower_bound(places.begin(), places.end(), behind) - places.begin()));
}

} // namespace

std::span<const qint64> AreaIndex::Numbers::equal(double number) const
{
    const auto [first, last] = std::equal_range(values.begin(), values.end(), significant(number));
    return {places.data() + (first - values.begin()), static_cast<size_t>(last - first)};
}

AreaIndex::Numbers AreaIndex::sorted(std::vector<std::pair<double, qint64>> found)
{
    std::sort(found.begin(), found.end());
    Numbers numbers;
    for (const auto& [value, place] : found) {
        numbers.values.push_back(value);
        numbers.places.push_back(place);
    }
    return numbers;
}

std::span<const qint64> AreaIndex::places(const FormulaValue& value, qint64 behind) const
{
    if (value.isNumber())
        return startOf(m_numbers.equal(value.number()), behind);
    if (value.isBoolean())
        return startOf(m_booleans[value.boolean()], behind);
    if (value.isText()) {
        const auto found = m_texts.constFind(value.text().toCaseFolded());
        if (found != m_texts.constEnd())
            return startOf(*found, behind);
    }
    return {};
}

std::span<const qint64> AreaIndex::textsOfNumber(double number, qint64 behind) const
{
    return startOf(m_numberTexts.equal(number), behind);
}

const AreaIndex* AreaIndexes::beginningWith(const SheetArea& area)
{
    if (const AreaIndex* index = of(area))
        return index;
    SheetArea openEnded = area;
    openEnded.cells.lastRow = maxRow;
    return among(m_openEnded, openEnded);
}

const AreaIndex* AreaIndexes::among(std::list<Entry>& entries, const SheetArea& area) const
{
    const auto known =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.area == area; });
    if (known == entries.end()) {
        if (entries.size() == mostIndexes)
            entries.pop_back();
        entries.push_front({area, 1, false, nullptr});
        return nullptr;
    }
    entries.splice(entries.begin(), entries, known);
    Entry& entry = entries.front();
    if (!entry.built && ++entry.asked > askedBefore) {
        entry.built = true;
        entry.index = build(area);
    }
    return entry.index.get();
}

std::unique_ptr<AreaIndex> AreaIndexes::build(const SheetArea& area) const
{
    auto index = std::make_unique<AreaIndex>();
    std::vector<std::pair<double, qint64>> numbers, numberTexts;
    qint64 steps = 0;
    const qint64 most = std::min(mostSteps, m_evaluation.keptLeft());
    m_evaluation.eachCell(area, FormulaCells::Texts::Needed, [&](int row, int column, const FormulaValue& value) {
        const qint64 place = qint64(row - area.cells.firstRow) * area.cells.columns() + column - area.cells.firstColumn;
        ++steps;
        if (value.isNumber())
            numbers.emplace_back(significant(value.number()), place);
        else if (value.isBoolean())
            index->m_booleans[value.boolean()].push_back(place);
        else if (value.isText()) {
            steps += Evaluation::textSteps(value.text());
            index->m_texts[value.text().toCaseFolded()].push_back(place);
            if (const auto number = numberFromText(value.text(), m_evaluation.date1904()))
                numberTexts.emplace_back(significant(*number), place);
        }
        return steps <= most;
    });
    // Where steps ran out the area was not walked to its end.
    if (steps > most || !m_evaluation.spend(0) || !m_evaluation.takeKept(steps))
        return nullptr;
    index->m_numbers = AreaIndex::sorted(std::move(numbers));
    index->m_numberTexts = AreaIndex::sorted(std::move(numberTexts));
    return index;
}

} // namespace lumivane::engine
