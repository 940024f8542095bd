#include "engine/formula/AreaIndex.h"

#include "engine/formula/Coercion.h"
#include "engine/formula/Evaluation.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr size_t mostIndexes = 4;
constexpr int askedBefore = 3;        ///< times before an index is made
constexpr qint64 mostSteps = 500'000; ///< of one index: cells, and 16 characters of their texts

} // namespace

std::span<const qint64> AreaIndex::Numbers::equal(double number) const
{
    auto first = std::lower_bound(values.begin(), values.end(), number);
    auto last = std::upper_bound(first, values.end(), number);
    while (first != values.begin() && sameNumber(number, *std::prev(first)))
        --first;
    while (last != values.end() && sameNumber(number, *last))
        ++last;
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

std::span<const qint64> AreaIndex::places(const FormulaValue& value) const
{
    if (value.isNumber())
        return m_numbers.equal(value.number());
    if (value.isBoolean())
        return m_booleans[value.boolean()];
    if (value.isText()) {
        const auto found = m_texts.constFind(value.text().toCaseFolded());
        if (found != m_texts.constEnd())
            return *found;
    }
    return {};
}

std::span<const qint64> AreaIndex::textsOfNumber(double number) const
{
    return m_numberTexts.equal(number);
}

std::optional<qint64> AreaIndex::firstPlace(const FormulaValue& value) const
{
    const auto found = places(value);
    if (found.empty())
        return std::nullopt;
    // Places of one number ascend; only numbers that differ behind the 15th digit break the order.
    return found.size() < 100 ? *std::min_element(found.begin(), found.end()) : found.front();
}

const AreaIndex* AreaIndexes::of(const SheetArea& area)
{
    const auto known =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.area == area; });
    if (known == m_entries.end()) {
        if (m_entries.size() == mostIndexes)
            m_entries.pop_back();
        m_entries.push_front({area, 1, false, nullptr});
        return nullptr;
    }
    m_entries.splice(m_entries.begin(), m_entries, known);
    Entry& entry = m_entries.front();
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
    m_evaluation.eachCell(area, FormulaCells::Texts::Needed, [&](int row, int column, const FormulaValue& value) {
        const qint64 place = qint64(row - area.cells.firstRow) * area.cells.columns() + column - area.cells.firstColumn;
        ++steps;
        if (value.isNumber())
            numbers.emplace_back(value.number(), place);
        else if (value.isBoolean())
            index->m_booleans[value.boolean()].push_back(place);
        else if (value.isText()) {
            steps += Evaluation::textSteps(value.text());
            index->m_texts[value.text().toCaseFolded()].push_back(place);
            if (const auto number = numberFromText(value.text(), m_evaluation.date1904()))
                numberTexts.emplace_back(*number, place);
        }
        return steps <= mostSteps;
    });
    // Where steps ran out the area was not walked to its end.
    if (steps > mostSteps || !m_evaluation.spend(0))
        return nullptr;
    index->m_numbers = AreaIndex::sorted(std::move(numbers));
    index->m_numberTexts = AreaIndex::sorted(std::move(numberTexts));
    return index;
}

} // namespace lumivane::engine
