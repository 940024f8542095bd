#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/formula/Formula.h"
#include "engine/formula/WorkbookCells.h"

#include <memory>
#include <unordered_map>

namespace lumivane::engine {

/// A bar as it lies in one cell, in parts of the cell's inner width from its beginning.
struct BarShown
{
    const DataBar* bar = nullptr; ///< null: none
    double from = 0, to = 0;      ///< `from` is the end at the axis, or at the side where bars begin
    std::optional<double> axis;
    bool negative = false;
};

/// What the conditional formats of a sheet make of one cell.
struct ConditionResult
{
    const DifferentialStyle* look = nullptr; ///< null: unchanged; the same changes have the same address
    std::optional<QRgb> scale;               ///< the fill of a color scale, over that of the cell
    BarShown bar;
    std::optional<Icon> icon;
    bool hidesValue = false;
};

/// Evaluates the conditional formats of a sheet. Rules go by priority; of each property, and of scales, bars and icons,
/// the first that sets it wins. What is asked of all cells of a rule (the least, the mean) is found out once, in one
/// pass over its areas, when a cell first needs it. All answers are kept.
class Conditions
{
public:
    /// `cells` must outlive the object.
    Conditions(WorkbookCells& cells, std::shared_ptr<const SheetContent> sheet);
    ~Conditions();

    const ConditionResult& at(int row, int column);
    /// Whether a rule could change the text of a cell there.
    bool changesTexts(int row, int column);
    /// Rules of an area that are left out, and why, for the notice of a picture.
    QStringList leftOut(const CellArea& area);

private:
    struct Rule;
    struct Numbers;

    /// An area of a format, with the rules that hold in it.
    struct Part
    {
        CellArea area;
        quint32 format; ///< in m_formats
    };

    const std::vector<Part>& partsNear(int row);
    std::vector<quint32> rulesAt(int row, int column);
    ConditionResult evaluate(int row, int column);
    void apply(Rule& rule, const FormulaValue& value, FormulaPlace at, ConditionResult& result,
               std::vector<const DifferentialStyle*>& looks, bool& filled, bool& stopped);
    bool holds(Rule& rule, const FormulaValue& value, FormulaPlace at);
    bool compares(Rule& rule, const FormulaValue& value, FormulaPlace at);
    bool textHolds(Rule& rule, const FormulaValue& value, FormulaPlace at);
    bool isAmongTop(Rule& rule, double value);
    bool isBeyondAverage(Rule& rule, double value);
    bool repeats(Rule& rule, const FormulaValue& value);
    bool isInPeriod(const Rule& rule, double value);
    void collect(Rule& rule);
    const std::vector<std::optional<double>>& limits(Rule& rule, const std::vector<Threshold>& thresholds);
    std::optional<double> limit(Rule& rule, const Threshold& threshold);
    std::optional<QRgb> scaleColor(Rule& rule, double value);
    BarShown barOf(Rule& rule, double value);
    std::optional<Icon> iconOf(Rule& rule, double value);
    const DifferentialStyle* merged(const std::vector<const DifferentialStyle*>& looks, bool withoutFill);
    FormulaRun* formula(Rule& rule, qsizetype number);

    std::shared_ptr<const SheetContent> m_sheet;
    WorkbookCells& m_cells;
    FormulaBudget m_budget;
    std::vector<std::unique_ptr<Rule>> m_rules;           ///< the strongest first
    std::vector<std::vector<quint32>> m_formats;          ///< rules with the same areas, the strongest first
    std::unordered_map<int, std::vector<Part>> m_byRows;  ///< what there is in stretches of rows, once it was asked for
    size_t m_partsKept = 0;                               ///< in them
    std::unordered_map<quint64, ConditionResult> m_known; ///< by place
    std::map<std::vector<const DifferentialStyle*>, DifferentialStyle> m_merged; ///< a null at the end: without fill
    bool m_changesTexts = false;                                                 ///< a rule has a number format
    qint64 m_cellsLeft, m_appliedLeft;
    bool m_isIncomplete = false; ///< weaker rules of some cells were not applied
};

} // namespace lumivane::engine
