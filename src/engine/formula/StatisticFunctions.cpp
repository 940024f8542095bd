#include "engine/formula/AreaIndex.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

double meanOf(const std::vector<double>& numbers)
{
    double sum = 0;
    for (const double number : numbers)
        sum += number;
    return sum / static_cast<double>(numbers.size());
}

enum class Spread : quint8 { Sample, Population };

FormulaValue varianceOf(const std::vector<double>& numbers, Spread spread)
{
    const size_t divisor = numbers.size() - (spread == Spread::Sample ? 1 : 0);
    if (numbers.empty() || divisor == 0)
        return ErrorCode::Div0;
    const double mean = meanOf(numbers);
    double squares = 0;
    for (const double number : numbers)
        squares += (number - mean) * (number - mean);
    return squares / static_cast<double>(divisor);
}

FormulaValue deviationOf(const std::vector<double>& numbers, Spread spread)
{
    const FormulaValue variance = varianceOf(numbers, spread);
    return variance.isNumber() ? FormulaValue(std::sqrt(variance.number())) : variance;
}

FormulaValue average(FunctionCall& call)
{
    double sum = 0;
    qint64 count = 0;
    call.eachNumber(0, [&](double number) {
        sum += number;
        ++count;
    });
    return count ? FormulaValue(sum / static_cast<double>(count)) : ErrorCode::Div0;
}

/// AVERAGEA, MINA, MAXA: in cells, texts count as 0 and booleans as 0 or 1.
std::vector<double> allNumbers(FunctionCall& call)
{
    std::vector<double> numbers;
    call.eachValue(0, FormulaCells::Texts::Unneeded, [&](const FormulaValue& value, bool given) {
        numbers.push_back(value.isText() && !given ? 0 : call.numberOf(value));
        return !call.failure();
    });
    return numbers;
}

FormulaValue averageAll(FunctionCall& call)
{
    const std::vector<double> numbers = allNumbers(call);
    return numbers.empty() ? FormulaValue(ErrorCode::Div0) : meanOf(numbers);
}

FormulaValue minimumAll(FunctionCall& call)
{
    const std::vector<double> numbers = allNumbers(call);
    return numbers.empty() ? 0 : *std::min_element(numbers.begin(), numbers.end());
}

FormulaValue maximumAll(FunctionCall& call)
{
    const std::vector<double> numbers = allNumbers(call);
    return numbers.empty() ? 0 : *std::max_element(numbers.begin(), numbers.end());
}

FormulaValue minimum(FunctionCall& call)
{
    std::optional<double> least;
    call.eachNumber(0, [&](double number) { least = std::min(least.value_or(number), number); });
    return least.value_or(0);
}

FormulaValue maximum(FunctionCall& call)
{
    std::optional<double> most;
    call.eachNumber(0, [&](double number) { most = std::max(most.value_or(number), number); });
    return most.value_or(0);
}

FormulaValue count(FunctionCall& call)
{
    qint64 count = 0;
    call.eachValue(0, FormulaCells::Texts::Unneeded, [&](const FormulaValue& value, bool given) {
        count += value.isNumber() || (given && asNumber(value, call.evaluation().date1904()).isNumber());
        return true;
    });
    return count;
}

FormulaValue countAll(FunctionCall& call)
{
    qint64 count = 0;
    call.eachValue(0, FormulaCells::Texts::Unneeded, [&](const FormulaValue&, bool) { return ++count > 0; });
    return count;
}

/// Empty texts count as blank.
FormulaValue countBlank(FunctionCall& call)
{
    const SheetArea area = call.area(0);
    qint64 blank = area.count();
    call.eachValueOf(0, FormulaCells::Texts::Needed, [&](const FormulaValue& value, bool) {
        blank -= !(value.isText() && value.text().isEmpty());
        return true;
    });
    return blank;
}

std::vector<double> sortedNumbers(FunctionCall& call, int place)
{
    std::vector<double> numbers = call.numbersOf(place);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

/// LARGE and SMALL: the argument's second value counts from either end.
FormulaValue nth(FunctionCall& call, bool fromLargest)
{
    std::vector<double> numbers = call.numbersOf(0);
    const double position = std::ceil(call.number(1));
    if (!(position >= 1 && position <= static_cast<double>(numbers.size())))
        return ErrorCode::Num;
    const auto fromStart = static_cast<std::ptrdiff_t>(position) - 1;
    const auto place = fromLargest ? numbers.end() - 1 - fromStart : numbers.begin() + fromStart;
    std::nth_element(numbers.begin(), place, numbers.end());
    return *place;
}

FormulaValue large(FunctionCall& call)
{
    return nth(call, true);
}

FormulaValue small(FunctionCall& call)
{
    return nth(call, false);
}

/// Between the two neighbours of a place from 0 to 1 in ascending numbers.
FormulaValue interpolated(const std::vector<double>& sorted, double share)
{
    if (sorted.empty() || !(share >= 0 && share <= 1))
        return ErrorCode::Num;
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - std::floor(place));
}

FormulaValue median(FunctionCall& call)
{
    std::vector<double> numbers = call.numbers(0);
    std::sort(numbers.begin(), numbers.end());
    return interpolated(numbers, 0.5);
}

FormulaValue percentile(FunctionCall& call)
{
    return interpolated(sortedNumbers(call, 0), call.number(1));
}

FormulaValue quartile(FunctionCall& call)
{
    return interpolated(sortedNumbers(call, 0), call.integer(1, 0, 4) / 4.0);
}

/// The most frequent number, the first of those alike.
FormulaValue mode(FunctionCall& call)
{
    const std::vector<double> numbers = call.numbers(0);
    std::vector<double> sorted = numbers;
    std::sort(sorted.begin(), sorted.end());
    std::ptrdiff_t most = 1;
    for (auto run = sorted.begin(); run != sorted.end();) {
        const auto next = std::upper_bound(run, sorted.end(), *run);
        most = std::max(most, next - run);
        run = next;
    }
    if (most < 2)
        return ErrorCode::NA;
    for (const double number : numbers) {
        const auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), number);
        if (last - first == most)
            return number;
    }
    return ErrorCode::NA;
}

/// How many of the ascending numbers come before one, and how many are like it.
std::pair<double, double> rankIn(const std::vector<double>& sorted, double number, bool ascending)
{
    const auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), number);
    const auto before = ascending ? first - sorted.begin() : sorted.end() - last;
    return {static_cast<double>(before), static_cast<double>(last - first)};
}

/// The rank of a number, from 1, and how many share it; 0 of them where it is not among the numbers.
std::pair<double, double> rankOf(FunctionCall& call)
{
    const double number = significant(call.number(0));
    const SheetArea area = call.area(1);
    const bool ascending = call.number(2, 0) != 0;
    if (const AreaIndex* index = call.evaluation().indexes().of(area))
        return rankIn(index->sortedNumbers(), number, ascending);
    std::vector<double> numbers = call.numbersOf(1);
    std::transform(numbers.begin(), numbers.end(), numbers.begin(), significant);
    std::sort(numbers.begin(), numbers.end());
    return rankIn(numbers, number, ascending);
}

FormulaValue rank(FunctionCall& call)
{
    const auto [before, alike] = rankOf(call);
    return alike > 0 ? FormulaValue(before + 1) : ErrorCode::NA;
}

FormulaValue rankInMiddle(FunctionCall& call)
{
    const auto [before, alike] = rankOf(call);
    return alike > 0 ? FormulaValue(before + (alike + 1) / 2) : ErrorCode::NA;
}

FormulaValue sampleDeviation(FunctionCall& call)
{
    return deviationOf(call.numbers(0), Spread::Sample);
}

FormulaValue populationDeviation(FunctionCall& call)
{
    return deviationOf(call.numbers(0), Spread::Population);
}

FormulaValue sampleVariance(FunctionCall& call)
{
    return varianceOf(call.numbers(0), Spread::Sample);
}

FormulaValue populationVariance(FunctionCall& call)
{
    return varianceOf(call.numbers(0), Spread::Population);
}

/// The numbers of SUBTOTAL, and how many cells hold anything.
struct Visible
{
    std::vector<double> numbers;
    qint64 filled = 0;
};

/// Without the rows that are hidden where `seenOnly` is set. (Files do not tell which rows a filter hides, which are
/// left out always, from those hidden by hand.)
Visible visibleNumbers(FunctionCall& call, bool seenOnly)
{
    Visible found;
    Evaluation& evaluation = call.evaluation();
    for (int place = 1; place < call.count(); ++place) {
        const SheetArea area = call.area(place);
        evaluation.eachCell(area, FormulaCells::Texts::Unneeded, [&](int row, int, const FormulaValue& value) {
            if (seenOnly && evaluation.cells().isRowHidden(area.sheet, row))
                return true;
            ++found.filled;
            if (value.isNumber())
                found.numbers.push_back(value.number());
            else if (value.isError())
                call.fail(value.error());
            return true;
        });
    }
    return found;
}

FormulaValue subtotal(FunctionCall& call)
{
    constexpr int seenOnly = 100;
    const int kind = call.integer(0, 1, 111);
    const Visible found = visibleNumbers(call, kind > seenOnly);
    const std::vector<double>& numbers = found.numbers;
    double product = numbers.empty() ? 0 : 1, sum = 0;
    for (const double number : numbers) {
        product *= number;
        sum += number;
    }
    switch (kind % seenOnly) {
    case 1:
        return numbers.empty() ? FormulaValue(ErrorCode::Div0) : meanOf(numbers);
    case 2:
        return numbers.size();
    case 3:
        return found.filled;
    case 4:
        return numbers.empty() ? 0 : *std::max_element(numbers.begin(), numbers.end());
    case 5:
        return numbers.empty() ? 0 : *std::min_element(numbers.begin(), numbers.end());
    case 6:
        return product;
    case 7:
        return deviationOf(numbers, Spread::Sample);
    case 8:
        return deviationOf(numbers, Spread::Population);
    case 9:
        return sum;
    case 10:
        return varianceOf(numbers, Spread::Sample);
    case 11:
        return varianceOf(numbers, Spread::Population);
    default:
        return ErrorCode::Value;
    }
}

constexpr Function functions[]{
    {"AVERAGE", 1, Function::many, "m", average},
    {"AVERAGEA", 1, Function::many, "m", averageAll},
    {"MIN", 1, Function::many, "m", minimum},
    {"MINA", 1, Function::many, "m", minimumAll},
    {"MAX", 1, Function::many, "m", maximum},
    {"MAXA", 1, Function::many, "m", maximumAll},
    {"COUNT", 1, Function::many, "m", count},
    {"COUNTA", 1, Function::many, "m", countAll},
    {"COUNTBLANK", 1, 1, "m", countBlank},
    {"LARGE", 2, 2, "mv", large},
    {"SMALL", 2, 2, "mv", small},
    {"MEDIAN", 1, Function::many, "m", median},
    {"MODE", 1, Function::many, "m", mode},
    {"MODE.SNGL", 1, Function::many, "m", mode},
    {"PERCENTILE", 2, 2, "mv", percentile},
    {"PERCENTILE.INC", 2, 2, "mv", percentile},
    {"QUARTILE", 2, 2, "mv", quartile},
    {"QUARTILE.INC", 2, 2, "mv", quartile},
    {"RANK", 2, 3, "vmv", rank},
    {"RANK.EQ", 2, 3, "vmv", rank},
    {"RANK.AVG", 2, 3, "vmv", rankInMiddle},
    {"STDEV", 1, Function::many, "m", sampleDeviation},
    {"STDEV.S", 1, Function::many, "m", sampleDeviation},
    {"STDEVP", 1, Function::many, "m", populationDeviation},
    {"STDEV.P", 1, Function::many, "m", populationDeviation},
    {"VAR", 1, Function::many, "m", sampleVariance},
    {"VAR.S", 1, Function::many, "m", sampleVariance},
    {"VARP", 1, Function::many, "m", populationVariance},
    {"VAR.P", 1, Function::many, "m", populationVariance},
    {"SUBTOTAL", 2, Function::many, "vm", subtotal},
};

} // namespace

std::span<const Function> statisticFunctions()
{
    return functions;
}

} // namespace lumivane::engine
