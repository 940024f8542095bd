#include "engine/formula/AreaIndex.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/Function.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// The values of an area or an array by row and column, from 0.
class Table
{
public:
    Table(FunctionCall& call, int place);

    int rows() const { return m_rows; }
    int columns() const { return m_columns; }
    bool isLine() const { return m_rows == 1 || m_columns == 1; }
    FormulaValue at(int row, int column) const;
    /// A part, which starts at a cell: a reference where the table is one.
    FormulaValue part(int row, int column, int rows, int columns) const;
    Table row(int row) const { return Table(m_call, part(row, 0, 1, m_columns)); }
    Table column(int column) const { return Table(m_call, part(0, column, m_rows, 1)); }

    // Of a single row or column, by the place in it.
    int length() const { return m_rows * m_columns; }
    FormulaValue at(int place) const { return m_rows == 1 ? at(0, place) : at(place, 0); }
    /// Visits what is not blank, until the visitor says false.
    void each(const std::function<bool(int place, const FormulaValue&)>& visit) const;
    const AreaIndex* index() const;
    int filledLength() const; ///< up to the last place that may hold anything

    FunctionCall& call() const { return m_call; }

private:
    Table(FunctionCall& call, FormulaValue value);

    FunctionCall& m_call;
    FormulaValue m_value; ///< an area or an array
    int m_rows = 1, m_columns = 1;
};

Table::Table(FunctionCall& call, int place)
    : Table(call, call.value(place).isReference() ? FormulaValue(call.area(place)) : call.value(place))
{
    if (call.value(place).isError())
        call.fail(call.value(place).error());
}

Table::Table(FunctionCall& call, FormulaValue value) : m_call(call), m_value(std::move(value))
{
    if (m_value.isReference()) {
        m_rows = m_value.areas()[0].cells.rows();
        m_columns = m_value.areas()[0].cells.columns();
        return;
    }
    if (!m_value.isArray())
        m_value = FormulaArray{1, 1, {m_value}};
    m_rows = m_value.array().rows;
    m_columns = m_value.array().columns;
}

FormulaValue Table::at(int row, int column) const
{
    if (row < 0 || column < 0 || row >= m_rows || column >= m_columns)
        return ErrorCode::Ref;
    if (m_value.isArray())
        return m_value.array().at(row, column);
    const SheetArea& area = m_value.areas()[0];
    return m_call.evaluation().cell(area.sheet, area.cells.firstRow + row, area.cells.firstColumn + column);
}

FormulaValue Table::part(int row, int column, int rows, int columns) const
{
    if (row < 0 || column < 0 || row + rows > m_rows || column + columns > m_columns)
        return ErrorCode::Ref;
    if (m_value.isReference()) {
        const SheetArea& area = m_value.areas()[0];
        const int firstRow = area.cells.firstRow + row, firstColumn = area.cells.firstColumn + column;
        return SheetArea{area.sheet, {firstRow, firstColumn, firstRow + rows - 1, firstColumn + columns - 1}};
    }
    FormulaArray part{rows, columns, {}};
    m_call.evaluation().spend(qint64(rows) * columns);
    for (int r = row; r < row + rows; ++r) {
        for (int c = column; c < column + columns; ++c)
            part.values.push_back(m_value.array().at(r, c));
    }
    return part.values.size() == 1 ? part.values.front() : FormulaValue(std::move(part));
}

void Table::each(const std::function<bool(int, const FormulaValue&)>& visit) const
{
    if (m_value.isArray()) {
        for (int place = 0; place < length() && m_call.evaluation().spend(1); ++place) {
            if (!visit(place, at(place)))
                return;
        }
        return;
    }
    const SheetArea& area = m_value.areas()[0];
    m_call.evaluation().eachCell(
        area, FormulaCells::Texts::Needed, [&](int row, int column, const FormulaValue& value) {
            return visit(m_rows == 1 ? column - area.cells.firstColumn : row - area.cells.firstRow, value);
        });
}

const AreaIndex* Table::index() const
{
    return m_value.isReference() ? m_call.evaluation().indexes().beginningWith(m_value.areas()[0]) : nullptr;
}

int Table::filledLength() const
{
    if (!m_value.isReference())
        return length();
    const SheetArea& area = m_value.areas()[0];
    const auto filled = m_call.evaluation().filled(area);
    if (!filled)
        return 0;
    return m_rows == 1 ? filled->cells.lastColumn - area.cells.firstColumn + 1
                       : filled->cells.lastRow - area.cells.firstRow + 1;
}

/// How a lookup takes a value.
enum class Matching : quint8 {
    Exact,
    Wildcards,  ///< exact, and "*" and "?" in a text that is sought
    LessOrSame, ///< the last that is not greater, in ascending values
    MoreOrSame, ///< the last that is not less, in descending values
};

/// The place in a row or column from 0; -1 where nothing matches.
int exactPlace(const Table& line, const FormulaValue& sought, bool wildcards)
{
    const bool wild = wildcards && sought.isText() && hasWildcards(sought.text());
    if (!wild) {
        if (const AreaIndex* index = line.index()) {
            const auto places = index->places(sought, line.length());
            return places.empty() ? -1 : static_cast<int>(places.front());
        }
    }
    int found = -1;
    line.each([&](int place, const FormulaValue& value) {
        if (value.kind() != sought.kind())
            return true;
        if (wild ? !fitsWildcards(value.text(), sought.text()) : compareValues(value, sought) != 0)
            return true;
        found = place;
        return false;
    });
    return found;
}

/// Halves the sorted line; values of another kind than the one that is sought are passed over.
int sortedPlace(const Table& line, const FormulaValue& sought, bool ascending)
{
    int first = 0, behind = line.filledLength(), found = -1;
    while (first < behind) {
        const int middle = first + (behind - first) / 2;
        int place = middle;
        FormulaValue value = line.at(place);
        while (value.kind() != sought.kind() && ++place < behind && line.call().evaluation().spend(1))
            value = line.at(place);
        if (value.kind() != sought.kind() || place >= behind) {
            behind = middle;
            continue;
        }
        const int order = compareValues(value, sought);
        if (ascending ? order <= 0 : order >= 0) {
            found = place;
            first = place + 1;
        } else {
            behind = middle;
        }
    }
    return found;
}

/// #N/A as the failure of the call where nothing matches.
int placeIn(const Table& line, FormulaValue sought, Matching matching)
{
    if (sought.isBlank())
        sought = 0;
    if (sought.isError()) {
        line.call().fail(sought.error());
        return 0;
    }
    const int place = matching == Matching::Exact || matching == Matching::Wildcards
                          ? exactPlace(line, sought, matching == Matching::Wildcards)
                          : sortedPlace(line, sought, matching == Matching::LessOrSame);
    if (place < 0)
        line.call().fail(ErrorCode::NA);
    return std::max(place, 0);
}

FormulaValue soughtValue(FunctionCall& call)
{
    return call.evaluation().oneOf(call.value(0));
}

FormulaValue match(FunctionCall& call)
{
    const Table line(call, 1);
    const double kind = call.number(2, 1);
    if (!line.isLine())
        return ErrorCode::NA;
    const Matching matching = kind == 0 ? Matching::Wildcards : kind > 0 ? Matching::LessOrSame : Matching::MoreOrSame;
    return placeIn(line, soughtValue(call), matching) + 1;
}

/// VLOOKUP and HLOOKUP have an exact match only where the fourth argument is FALSE.
Matching tableMatching(FunctionCall& call)
{
    return call.boolean(3, true) ? Matching::LessOrSame : Matching::Wildcards;
}

FormulaValue verticalLookup(FunctionCall& call)
{
    const Table table(call, 1);
    const int column = call.integer(2, 1, maxColumn) - 1;
    const int row = placeIn(table.column(0), soughtValue(call), tableMatching(call));
    return call.failure() ? FormulaValue() : table.at(row, column);
}

FormulaValue horizontalLookup(FunctionCall& call)
{
    const Table table(call, 1);
    const int row = call.integer(2, 1, maxRow) - 1;
    const int column = placeIn(table.row(0), soughtValue(call), tableMatching(call));
    return call.failure() ? FormulaValue() : table.at(row, column);
}

/// In the longer side of a table; the result is beside it, or in a row or column of its own.
FormulaValue lookup(FunctionCall& call)
{
    const Table table(call, 1);
    const bool wide = table.columns() > table.rows();
    const int place = placeIn(wide ? table.row(0) : table.column(0), soughtValue(call), Matching::LessOrSame);
    if (call.failure())
        return {};
    const Table results = call.count() > 2 ? Table(call, 2)
                          : wide           ? table.row(table.rows() - 1)
                                           : table.column(table.columns() - 1);
    return results.isLine() ? results.at(place) : FormulaValue(ErrorCode::NA);
}

Matching newerMatching(FunctionCall& call, int place)
{
    const int kind = call.integer(place, -1, 2, 0);
    // The next smaller or larger value of an unsorted line would have to be searched for.
    if (kind == 1 || kind == -1)
        call.fail(ErrorCode::Value);
    return kind == 2 ? Matching::Wildcards : Matching::Exact;
}

FormulaValue newerMatch(FunctionCall& call)
{
    const Table line(call, 1);
    if (!line.isLine())
        return ErrorCode::Value;
    return placeIn(line, soughtValue(call), newerMatching(call, 2)) + 1;
}

FormulaValue newerLookup(FunctionCall& call)
{
    const Table line(call, 1);
    const Table results(call, 2);
    const Matching matching = newerMatching(call, 4);
    FormulaValue sought = soughtValue(call);
    if (!line.isLine() || call.failure())
        return ErrorCode::Value;
    if (sought.isError())
        return sought;
    if (sought.isBlank())
        sought = 0;
    const int place = exactPlace(line, sought, matching == Matching::Wildcards);
    if (place < 0)
        return call.count() > 3 && !call.isMissing(3) ? call.value(3) : ErrorCode::NA;
    return line.columns() == 1 ? results.part(place, 0, 1, results.columns())
                               : results.part(0, place, results.rows(), 1);
}

FormulaValue index(FunctionCall& call)
{
    const Table table(call, 0);
    int row = call.integer(1, 0, maxRow);
    int column = call.integer(2, 0, maxRow, 0);
    if (call.count() == 2 && table.rows() == 1)
        std::swap(row, column);
    if (call.failure())
        return {};
    // 0 stands for all.
    return table.part(std::max(row - 1, 0), std::max(column - 1, 0), row ? 1 : table.rows(),
                      column ? 1 : table.columns());
}

FormulaValue offset(FunctionCall& call)
{
    const SheetArea area = call.area(0);
    const int row = area.cells.firstRow + call.integer(1, -maxRow, maxRow);
    const int column = area.cells.firstColumn + call.integer(2, -maxColumn, maxColumn);
    const auto size = [&](int place, int most, int otherwise) {
        return place < call.count() && !call.isMissing(place) ? call.integer(place, -most, most) : otherwise;
    };
    const int rows = size(3, maxRow, area.cells.rows());
    const int columns = size(4, maxColumn, area.cells.columns());
    // A negative size goes up or left.
    const CellArea cells{std::min(row, row + rows + 1), std::min(column, column + columns + 1),
                         std::max(row, row + rows - 1), std::max(column, column + columns - 1)};
    if (rows == 0 || columns == 0 || cells.firstRow < 1 || cells.firstColumn < 1 || cells.lastRow > maxRow ||
        cells.lastColumn > maxColumn)
        return ErrorCode::Ref;
    return SheetArea{area.sheet, cells};
}

FormulaValue indirect(FunctionCall& call)
{
    const QString text = call.text(0);
    return call.boolean(1, true) ? call.evaluation().reference(text) : ErrorCode::Ref;
}

/// The number of the first row or column; where many values are wanted, of all of them.
FormulaValue numbersFrom(FunctionCall& call, int first, int rows, int columns)
{
    const int count = rows * columns;
    if (count == 1 || call.want() == Want::One)
        return first;
    if (count > FormulaLimits::arrayValues || !call.evaluation().spend(count))
        return ErrorCode::Value;
    FormulaArray numbers{rows, columns, {}};
    for (int number = first; number < first + count; ++number)
        numbers.values.push_back(number);
    return numbers;
}

FormulaValue row(FunctionCall& call)
{
    if (call.count() == 0)
        return call.evaluation().place().row;
    const CellArea cells = call.area(0).cells;
    return numbersFrom(call, cells.firstRow, cells.rows(), 1);
}

FormulaValue column(FunctionCall& call)
{
    if (call.count() == 0)
        return call.evaluation().place().column;
    const CellArea cells = call.area(0).cells;
    return numbersFrom(call, cells.firstColumn, 1, cells.columns());
}

FormulaValue rows(FunctionCall& call)
{
    return Table(call, 0).rows();
}

FormulaValue columns(FunctionCall& call)
{
    return Table(call, 0).columns();
}

FormulaValue address(FunctionCall& call)
{
    const int row = call.integer(0, 1, maxRow), column = call.integer(1, 1, maxColumn);
    const int kind = call.integer(2, 1, 4, 1);
    if (!call.boolean(3, true))
        return ErrorCode::Value;
    const bool rowFixed = kind == 1 || kind == 2, columnFixed = kind == 1 || kind == 3;
    const QString cell = (columnFixed ? u"$"_s : QString()) + columnLetters(column) + (rowFixed ? u"$"_s : QString()) +
                         QString::number(row);
    if (call.count() < 5)
        return cell;
    QString sheet = call.text(4);
    const bool plain = std::all_of(sheet.begin(), sheet.end(),
                                   [](QChar letter) { return letter.isLetterOrNumber() || letter == u'_'; });
    if (!plain || (!sheet.isEmpty() && sheet[0].isDigit()))
        sheet = u'\'' + sheet.replace(u'\'', u"''"_s) + u'\'';
    return QString(sheet + u'!' + cell);
}

constexpr Function functions[]{
    {"MATCH", 2, 3, "vmv", match},
    {"XMATCH", 2, 4, "vmv", newerMatch},
    {"VLOOKUP", 3, 4, "vmvv", verticalLookup},
    {"HLOOKUP", 3, 4, "vmvv", horizontalLookup},
    {"LOOKUP", 2, 3, "vm", lookup},
    {"XLOOKUP", 3, 6, "vmmvvv", newerLookup},
    {"INDEX", 2, 3, "mvv", index},
    {"OFFSET", 3, 5, "mv", offset},
    {"INDIRECT", 1, 2, "v", indirect},
    {"ROW", 0, 1, "m", row},
    {"COLUMN", 0, 1, "m", column},
    {"ROWS", 1, 1, "m", rows},
    {"COLUMNS", 1, 1, "m", columns},
    {"ADDRESS", 2, 5, "v", address},
};

} // namespace

std::span<const Function> lookupFunctions()
{
    return functions;
}

} // namespace lumivane::engine
