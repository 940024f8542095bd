#pragma once

#include "engine/formula/FormulaValue.h"

#include <QHash>
#include <list>
#include <optional>
#include <span>
#include <vector>

namespace lumivane::engine {

class Evaluation;

/// Where each value lies in an area, so that a rule which looks every cell up in the same area need not walk over it
/// each time. Places count from 0, row by row.
class AreaIndex
{
public:
    // Places that ascend, those before `behind` alone.
    /// Of numbers alike in 15 digits, of texts without case, of booleans; not of errors or blank cells.
    std::span<const qint64> places(const FormulaValue& value, qint64 behind) const;
    std::span<const qint64> textsOfNumber(double number, qint64 behind) const;    ///< texts that show a number
    const std::vector<double>& sortedNumbers() const { return m_numbers.values; } ///< to their significant digits

private:
    friend class AreaIndexes;
    struct Numbers
    {
        std::vector<double> values; ///< ascending
        std::vector<qint64> places; ///< of each
        std::span<const qint64> equal(double number) const;
    };
    static Numbers sorted(std::vector<std::pair<double, qint64>> found);

    Numbers m_numbers;
    Numbers m_numberTexts;
    QHash<QString, std::vector<qint64>> m_texts; ///< by the text in small letters
    std::vector<qint64> m_booleans[2];
};

/// The indexes of an evaluation: few, and only of areas that are looked into again and again.
class AreaIndexes
{
public:
    explicit AreaIndexes(Evaluation& evaluation) : m_evaluation(evaluation) {}
    /// Null where it does not pay yet, and where the area holds too much.
    const AreaIndex* of(const SheetArea& area) { return among(m_areas, area); }
    /// Of the area, or of all rows from its first one on: areas that grow with the cell of the formula, as $A$2:$A2
    /// does, have one in common. Places behind the area's own count are none of it.
    const AreaIndex* beginningWith(const SheetArea& area);

private:
    struct Entry
    {
        SheetArea area;
        int asked = 0;
        bool built = false;
        std::unique_ptr<AreaIndex> index;
    };
    const AreaIndex* among(std::list<Entry>& entries, const SheetArea& area) const;
    std::unique_ptr<AreaIndex> build(const SheetArea& area) const;

    Evaluation& m_evaluation;
    std::list<Entry> m_areas;     ///< asked for last first
    std::list<Entry> m_openEnded; ///< of all rows from one on; the same
};

} // namespace lumivane::engine
