#include "engine/show/Conditions.h"

#include "engine/content/DateSerial.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

using Kind = ConditionalRule::Kind;

constexpr int stretch = 64;                   ///< rows that the rules are looked up by
constexpr size_t maxPartsKept = 4'000'000;    ///< in all stretches
constexpr qint64 maxCellsWalked = 20'000'000; ///< over all rules, to learn of the cells of their areas
constexpr qint64 countedCell = 16;            ///< what one costs whose value is counted; others cost 1
// What conditions may cost is limited for the sheet, and grows with the cells that are shown.
constexpr qint64 maxApplied = 2'000'000, appliedPerCell = 100; ///< rules
constexpr qint64 maxSteps = 30'000'000, stepsPerCell = 200;    ///< of formulas
constexpr size_t maxKnown = 1'000'000;                         ///< answers that are kept

quint64 keyOf(int row, int column)
{
    return quint64(row) << 16 | quint64(column);
}

/// The day of a week in which Sunday comes first, from 0.
int dayOfWeek(const QDate& day)
{
    return day.dayOfWeek() % 7;
}

/// The top left one of all areas.
FormulaPlace cornerOf(const std::vector<CellArea>& areas)
{
    FormulaPlace corner{maxRow, maxColumn};
    for (const CellArea& area : areas)
        corner = {std::min(corner.row, area.firstRow), std::min(corner.column, area.firstColumn)};
    return corner;
}

const QString tooLong = u"a formula that takes too long"_s;
const QString tooMany = u"more cells than can be looked at"_s;

} // namespace

/// What is asked of all cells of a rule.
struct Conditions::Numbers
{
    std::vector<double> sorted;
    double mean = 0, deviation = 0;
    QHash<QString, int> texts;               ///< in small letters; how often
    std::unordered_map<double, int> numbers; ///< of the rules for duplicates; how often
};

struct Conditions::Rule
{
    const ConditionalRule& stored;
    FormulaPlace written; ///< the cell that its formulas are written for
    std::vector<std::unique_ptr<FormulaRun>> formulas;
    bool prepared = false;
    std::unique_ptr<Numbers> cells;
    std::optional<std::vector<std::optional<double>>> limits;
    QString fault; ///< why it is left out
};

Conditions::Conditions(WorkbookCells& cells, std::shared_ptr<const SheetContent> sheet)
    : m_sheet(std::move(sheet)), m_cells(cells), m_cellsLeft(maxCellsWalked), m_appliedLeft(maxApplied)
{
    m_budget.steps = maxSteps;
    std::unordered_map<const void*, size_t> formats;
    for (const ConditionalRule& rule : m_sheet->conditions) {
        const auto [format, isNew] = formats.try_emplace(rule.areas.get(), m_formats.size());
        if (isNew)
            m_formats.emplace_back();
        std::vector<quint32>& rules = m_formats[format->second];
        const FormulaPlace corner = isNew ? cornerOf(*rule.areas) : m_rules[rules.front()]->written;
        rules.push_back(static_cast<quint32>(m_rules.size()));
        m_rules.push_back(std::make_unique<Rule>(Rule{rule, corner, {}, false, {}, {}, {}}));
        m_changesTexts = m_changesTexts || (rule.look && !rule.look->numberFormat.isEmpty());
    }
}

Conditions::~Conditions() = default;

/// The parts of formats that have cells in the row's stretch of rows.
const std::vector<Conditions::Part>& Conditions::partsNear(int row)
{
    const int number = row / stretch;
    if (const auto known = m_byRows.find(number); known != m_byRows.end())
        return known->second;
    std::vector<Part> parts;
    const CellArea near{number * stretch, 1, number * stretch + stretch - 1, maxColumn};
    for (size_t format = 0; format < m_formats.size(); ++format) {
        for (const CellArea& area : *m_rules[m_formats[format].front()]->stored.areas) {
            if (intersect(area, near))
                parts.push_back({area, static_cast<quint32>(format)});
        }
    }
    if (m_partsKept + parts.size() > maxPartsKept) {
        m_byRows.clear();
        m_partsKept = 0;
    }
    m_partsKept += parts.size();
    return m_byRows.emplace(number, std::move(parts)).first->second;
}

/// The strongest first.
std::vector<quint32> Conditions::rulesAt(int row, int column)
{
    std::vector<quint32> formats;
    for (const Part& part : partsNear(row)) {
        if (part.area.contains(row, column) && (formats.empty() || formats.back() != part.format))
            formats.push_back(part.format);
    }
    if (formats.size() == 1)
        return m_formats[formats.front()];
    std::vector<quint32> rules;
    for (const quint32 format : formats) {
        if (static_cast<qint64>(rules.size()) > m_appliedLeft)
            break; // more than will be applied
        rules.insert(rules.end(), m_formats[format].begin(), m_formats[format].end());
    }
    // Mostly they are in order: formats go by their strongest rule.
    if (!std::is_sorted(rules.begin(), rules.end()))
        std::sort(rules.begin(), rules.end());
    return rules;
}

const ConditionResult& Conditions::at(int row, int column)
{
    const auto known = m_known.find(keyOf(row, column));
    if (known != m_known.end())
        return known->second;
    if (m_known.size() >= maxKnown)
        m_known.clear();
    m_appliedLeft += appliedPerCell;
    m_budget.steps += stepsPerCell;
    return m_known.emplace(keyOf(row, column), evaluate(row, column)).first->second;
}

bool Conditions::changesTexts(int row, int column)
{
    if (!m_changesTexts)
        return false;
    const std::vector<quint32> rules = rulesAt(row, column);
    return std::any_of(rules.begin(), rules.end(), [&](quint32 number) {
        const ConditionalRule& rule = m_rules[number]->stored;
        return rule.look && !rule.look->numberFormat.isEmpty();
    });
}

ConditionResult Conditions::evaluate(int row, int column)
{
    ConditionResult result;
    std::vector<const DifferentialStyle*> looks;
    bool filled = false, stopped = false;
    std::optional<FormulaValue> value;
    for (const quint32 number : rulesAt(row, column)) {
        Rule& rule = *m_rules[number];
        if (stopped)
            break;
        if (m_appliedLeft <= 0) {
            m_isIncomplete = true;
            break;
        }
        --m_appliedLeft;
        if (!value)
            value = m_cells.value(m_sheet->sheetIndex, row, column);
        apply(rule, *value, {row, column}, result, looks, filled, stopped);
    }
    // A scale that comes before every fill takes their place.
    result.look = merged(looks, result.scale.has_value());
    return result;
}

void Conditions::apply(Rule& rule, const FormulaValue& value, FormulaPlace at, ConditionResult& result,
                       std::vector<const DifferentialStyle*>& looks, bool& filled, bool& stopped)
{
    const ConditionalRule& stored = rule.stored;
    switch (stored.kind) {
    case Kind::ColorScale:
        if (!filled && stored.scale && value.isNumber()) {
            result.scale = scaleColor(rule, value.number());
            filled = result.scale.has_value();
        }
        return;
    case Kind::DataBar:
        if (!result.bar.bar && stored.bar && value.isNumber()) {
            result.bar = barOf(rule, value.number());
            result.hidesValue |= result.bar.bar && !stored.bar->showValue;
        }
        return;
    case Kind::Icons:
        if (!result.icon && stored.icons && value.isNumber()) {
            result.icon = iconOf(rule, value.number());
            result.hidesValue |= result.icon && !stored.icons->showValue;
        }
        return;
    default:
        break;
    }
    if (!holds(rule, value, at))
        return;
    if (stored.look) {
        looks.push_back(stored.look.get());
        filled = filled || stored.look->fill;
    }
    stopped = stored.stopsOthers;
}

bool Conditions::holds(Rule& rule, const FormulaValue& value, FormulaPlace at)
{
    switch (rule.stored.kind) {
    case Kind::CellIs:
        return compares(rule, value, at);
    case Kind::Contains:
    case Kind::ContainsNot:
    case Kind::BeginsWith:
    case Kind::EndsWith:
        return textHolds(rule, value, at);
    case Kind::Blanks:
    case Kind::NoBlanks: {
        const bool blank = value.isBlank() || (value.isText() && value.text().trimmed().isEmpty());
        return !value.isError() && blank == (rule.stored.kind == Kind::Blanks);
    }
    case Kind::Errors:
        return value.isError();
    case Kind::NoErrors:
        return !value.isError();
    case Kind::Top:
        return value.isNumber() && isAmongTop(rule, value.number());
    case Kind::Average:
        return value.isNumber() && isBeyondAverage(rule, value.number());
    case Kind::Duplicates:
    case Kind::Uniques:
        return repeats(rule, value);
    case Kind::TimePeriod:
        return value.isNumber() && isInPeriod(rule, value.number());
    default: {
        FormulaRun* condition = formula(rule, 0);
        return condition && condition->isTrue(at);
    }
    }
}

/// The formula of a rule made ready; null where it has none or one is not understood.
FormulaRun* Conditions::formula(Rule& rule, qsizetype number)
{
    if (!rule.prepared) {
        rule.prepared = true;
        for (const QString& text : rule.stored.formulas) {
            const std::optional<Formula> parsed = Formula::parse(text);
            rule.formulas.push_back(
                parsed ? std::make_unique<FormulaRun>(*parsed, m_cells, m_sheet->sheetIndex, rule.written, &m_budget)
                       : nullptr);
            if (!parsed)
                rule.fault = u"a formula that is not understood"_s;
            else if (!parsed->unknownFunction().isEmpty())
                rule.fault = u"the function "_s + parsed->unknownFunction();
        }
    }
    const size_t place = static_cast<size_t>(number);
    return rule.fault.isEmpty() && place < rule.formulas.size() ? rule.formulas[place].get() : nullptr;
}

bool Conditions::compares(Rule& rule, const FormulaValue& value, FormulaPlace at)
{
    using Comparison = ConditionalRule::Operator;
    FormulaRun* first = formula(rule, 0);
    if (!first || value.isError())
        return false;
    const FormulaValue limit = first->single(at);
    if (limit.isError())
        return false;
    const int side = compareValues(value, limit);
    const Comparison comparison = rule.stored.comparison;
    switch (comparison) {
    case Comparison::Less:
        return side < 0;
    case Comparison::LessOrEqual:
        return side <= 0;
    case Comparison::Equal:
        return side == 0;
    case Comparison::NotEqual:
        return side != 0;
    case Comparison::GreaterOrEqual:
        return side >= 0;
    case Comparison::Greater:
        return side > 0;
    case Comparison::Between:
    case Comparison::NotBetween:
        break;
    }
    FormulaRun* second = formula(rule, 1);
    if (!second)
        return false;
    const FormulaValue other = second->single(at);
    if (other.isError())
        return false;
    // The two limits may stand in either order.
    const int otherSide = compareValues(value, other);
    const bool between = (side >= 0 && otherSide <= 0) || (side <= 0 && otherSide >= 0);
    return between == (comparison == Comparison::Between);
}

bool Conditions::textHolds(Rule& rule, const FormulaValue& value, FormulaPlace at)
{
    const QString& sought = rule.stored.text;
    if (sought.isEmpty()) {
        FormulaRun* condition = formula(rule, 0);
        return condition && condition->isTrue(at);
    }
    const bool negated = rule.stored.kind == Kind::ContainsNot;
    const FormulaValue shown = asText(value);
    if (!shown.isText())
        return negated;
    const QString& text = shown.text();
    switch (rule.stored.kind) {
    case Kind::BeginsWith:
        return text.startsWith(sought, Qt::CaseInsensitive);
    case Kind::EndsWith:
        return text.endsWith(sought, Qt::CaseInsensitive);
    default:
        return (findWildcards(text, sought, 0) >= 0) != negated;
    }
}

/// Walks once over the cells of a rule.
void Conditions::collect(Rule& rule)
{
    if (rule.cells)
        return;
    rule.cells = std::make_unique<Numbers>();
    Numbers& all = *rule.cells;
    const bool counts = rule.stored.kind == Kind::Duplicates || rule.stored.kind == Kind::Uniques;
    for (const CellArea& area : *rule.stored.areas) {
        m_cells.eachCell({m_sheet->sheetIndex, area},
                         counts ? FormulaCells::Texts::Needed : FormulaCells::Texts::Unneeded,
                         [&](int, int, const FormulaValue& value) {
                             if (value.isNumber())
                                 counts ? void(++all.numbers[value.number()]) : all.sorted.push_back(value.number());
                             else if (counts && value.isText())
                                 ++all.texts[value.text().toLower()];
                             m_cellsLeft -= counts ? countedCell : 1;
                             return m_cellsLeft > 0;
                         });
    }
    if (m_cellsLeft <= 0) {
        rule.fault = tooMany;
        all = {};
    }
    if (all.sorted.empty())
        return;
    std::sort(all.sorted.begin(), all.sorted.end());
    const double count = static_cast<double>(all.sorted.size());
    all.mean = std::accumulate(all.sorted.begin(), all.sorted.end(), 0.0) / count;
    if (count > 1)
        all.deviation = std::sqrt(
            std::accumulate(all.sorted.begin(), all.sorted.end(), 0.0,
                            [&](double sum, double value) { return sum + (value - all.mean) * (value - all.mean); }) /
            (count - 1));
}

bool Conditions::isAmongTop(Rule& rule, double value)
{
    collect(rule);
    const std::vector<double>& sorted = rule.cells->sorted;
    if (sorted.empty())
        return false;
    const qint64 count = static_cast<qint64>(sorted.size());
    const qint64 wanted = rule.stored.percent ? std::max<qint64>(1, rule.stored.rank * count / 100) : rule.stored.rank;
    const size_t taken = static_cast<size_t>(std::min(wanted, count));
    // All that equal the last one are in.
    return rule.stored.bottom ? value <= sorted[taken - 1] : value >= sorted[sorted.size() - taken];
}

bool Conditions::isBeyondAverage(Rule& rule, double value)
{
    collect(rule);
    if (rule.cells->sorted.empty())
        return false;
    const double away = rule.stored.deviations * rule.cells->deviation;
    const double limit = rule.cells->mean + (rule.stored.above ? away : -away);
    if (rule.stored.orEqual && sameNumber(value, limit))
        return true;
    return !sameNumber(value, limit) && (value > limit) == rule.stored.above;
}

bool Conditions::repeats(Rule& rule, const FormulaValue& value)
{
    collect(rule);
    int count = 0;
    if (value.isNumber()) {
        const auto found = rule.cells->numbers.find(value.number());
        count = found != rule.cells->numbers.end() ? found->second : 0;
    } else if (value.isText()) {
        count = rule.cells->texts.value(value.text().toLower());
    }
    return rule.stored.kind == Kind::Uniques ? count == 1 : count > 1;
}

bool Conditions::isInPeriod(const Rule& rule, double value)
{
    using Period = ConditionalRule::Period;
    const QDate today = m_cells.now().date();
    const auto serial = [&](const QDate& day) {
        return serialFromDay(day.year(), day.month(), day.day(), m_cells.date1904()).value_or(-1e9);
    };
    const double day = std::floor(value), now = serial(today);
    const double sunday = now - dayOfWeek(today);
    const QDate month(today.year(), today.month(), 1);
    const auto within = [&](double first, double behind) { return day >= first && day < behind; };
    switch (rule.stored.period) {
    case Period::Today:
        return day == now;
    case Period::Yesterday:
        return day == now - 1;
    case Period::Tomorrow:
        return day == now + 1;
    case Period::Last7Days:
        return within(now - 6, now + 1);
    case Period::ThisWeek:
        return within(sunday, sunday + 7);
    case Period::LastWeek:
        return within(sunday - 7, sunday);
    case Period::NextWeek:
        return within(sunday + 7, sunday + 14);
    case Period::ThisMonth:
        return within(serial(month), serial(month.addMonths(1)));
    case Period::LastMonth:
        return within(serial(month.addMonths(-1)), serial(month));
    case Period::NextMonth:
        return within(serial(month.addMonths(1)), serial(month.addMonths(2)));
    }
    return false;
}

/// The limits as numbers; none for one that gives no number.
const std::vector<std::optional<double>>& Conditions::limits(Rule& rule, const std::vector<Threshold>& thresholds)
{
    if (!rule.limits) {
        collect(rule);
        rule.limits.emplace();
        for (const Threshold& threshold : thresholds)
            rule.limits->push_back(limit(rule, threshold));
    }
    return *rule.limits;
}

std::optional<double> Conditions::limit(Rule& rule, const Threshold& threshold)
{
    const std::vector<double>& sorted = rule.cells->sorted;
    if (sorted.empty())
        return {};
    const double least = sorted.front(), most = sorted.back();
    switch (threshold.kind) {
    case Threshold::Kind::Least:
        return least;
    case Threshold::Kind::Most:
        return most;
    case Threshold::Kind::AutomaticLeast:
        return std::min(0.0, least);
    case Threshold::Kind::AutomaticMost:
        return std::max(0.0, most);
    default:
        break;
    }
    bool isNumber = false;
    double number = threshold.value.toDouble(&isNumber);
    if (!isNumber) {
        const std::optional<Formula> parsed = Formula::parse(threshold.value);
        if (!parsed) {
            rule.fault = u"a formula that is not understood"_s;
            return {};
        }
        FormulaRun run(*parsed, m_cells, m_sheet->sheetIndex, rule.written, &m_budget);
        const FormulaValue value = asNumber(run.single(rule.written), m_cells.date1904());
        if (run.isExhausted())
            rule.fault = tooLong;
        if (!value.isNumber())
            return {};
        number = value.number();
    }
    if (threshold.kind == Threshold::Kind::Percent)
        return least + (most - least) * number / 100;
    if (threshold.kind == Threshold::Kind::Percentile) {
        const double place = static_cast<double>(sorted.size() - 1) * std::clamp(number, 0.0, 100.0) / 100;
        const size_t below = static_cast<size_t>(place);
        const size_t above = std::min(below + 1, sorted.size() - 1);
        return sorted[below] + (sorted[above] - sorted[below]) * (place - std::floor(place));
    }
    return number;
}

std::optional<QRgb> Conditions::scaleColor(Rule& rule, double value)
{
    const ColorScale& scale = *rule.stored.scale;
    const auto& limits = this->limits(rule, scale.limits);
    if (!std::all_of(limits.begin(), limits.end(), [](const auto& limit) { return limit.has_value(); }))
        return {};
    size_t above = 0;
    while (above < limits.size() && value >= *limits[above])
        ++above;
    if (above == 0)
        return scale.colors.front();
    if (above == limits.size())
        return scale.colors.back();
    const double from = *limits[above - 1], part = (value - from) / (*limits[above] - from);
    const auto mixed = [&](int a, int b) { return static_cast<int>(std::floor(a + (b - a) * part + 1e-9)); };
    const QRgb low = scale.colors[above - 1], high = scale.colors[above];
    return qRgb(mixed(qRed(low), qRed(high)), mixed(qGreen(low), qGreen(high)), mixed(qBlue(low), qBlue(high)));
}

BarShown Conditions::barOf(Rule& rule, double value)
{
    const DataBar& bar = *rule.stored.bar;
    const auto& limits = this->limits(rule, {bar.least, bar.most});
    if (!limits[0] || !limits[1])
        return {};
    const double least = std::min(*limits[0], *limits[1]), most = std::max(*limits[0], *limits[1]);
    const bool tooLow = value < least;
    value = std::clamp(value, least, most);
    BarShown shown{&bar, 0, 0, {}, bar.hasAxis && value < 0};
    if (bar.hasAxis && bar.axis == DataBar::Axis::Middle)
        shown.axis = 0.5;
    else if (bar.hasAxis && bar.axis == DataBar::Axis::Automatic && least < 0)
        shown.axis = most <= 0 ? 1 : -least / (most - least);
    if (shown.axis) {
        shown.from = shown.to = *shown.axis;
        if (value < 0 && least < 0)
            shown.to -= value / least * *shown.axis;
        else if (value > 0 && most > 0)
            shown.to += value / most * (1 - *shown.axis);
        return shown;
    }
    const double part = most > least ? (value - least) / (most - least) : tooLow ? 0 : 1;
    shown.to = (bar.shortest + part * (bar.longest - bar.shortest)) / 100;
    return shown;
}

std::optional<Icon> Conditions::iconOf(Rule& rule, double value)
{
    const IconScale& scale = *rule.stored.icons;
    const auto& limits = this->limits(rule, scale.limits);
    size_t reached = 0;
    for (size_t i = 1; i < limits.size(); ++i) {
        if (!limits[i])
            return {};
        if (value > *limits[i] || (scale.limits[i].inclusive && sameNumber(value, *limits[i])))
            reached = i;
    }
    return scale.icons.empty() ? std::nullopt : std::optional(scale.icons[reached]);
}

/// Several looks as one, the strongest first.
const DifferentialStyle* Conditions::merged(const std::vector<const DifferentialStyle*>& looks, bool withoutFill)
{
    if (looks.empty())
        return nullptr;
    std::vector<const DifferentialStyle*> key = looks;
    if (withoutFill)
        key.push_back(nullptr);
    const auto [place, isNew] = m_merged.try_emplace(std::move(key));
    if (isNew) {
        for (const DifferentialStyle* look : looks)
            place->second.fillFrom(*look);
        if (withoutFill)
            place->second.fill.reset();
    }
    return &place->second;
}

QStringList Conditions::leftOut(const CellArea& area)
{
    QStringList faults;
    const auto add = [&faults](const QString& fault) {
        if (!fault.isEmpty() && !faults.contains(fault))
            faults.append(fault);
    };
    for (const std::vector<quint32>& format : m_formats) {
        const auto touches = [&](const CellArea& own) { return intersect(own, area).has_value(); };
        const std::vector<CellArea>& areas = *m_rules[format.front()]->stored.areas;
        if (std::none_of(areas.begin(), areas.end(), touches))
            continue;
        for (const quint32 number : format) {
            Rule& rule = *m_rules[number];
            formula(rule, 0);
            add(rule.fault);
            if (std::any_of(rule.formulas.begin(), rule.formulas.end(),
                            [](const auto& run) { return run && run->isExhausted(); }))
                add(tooLong);
        }
    }
    if (m_isIncomplete)
        add(u"more of them than can be looked at"_s);
    return faults;
}

} // namespace lumivane::engine
