#include "FormulaSheet.h"
#include "engine/formula/FormulaLimits.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// A column of numbers that repeat after 97, texts in between.
FormulaSheet longColumn(int rows)
{
    QString drawn;
    for (int row = 0; row < rows; ++row)
        drawn += row % 10 == 3 ? u"text %1\n"_s.arg(row % 7) : u"%1\n"_s.arg(row % 97);
    return FormulaSheet(drawn.toUtf8().constData());
}

/// Counts the cells that are looked at.
class CountedCells : public WorkbookCells
{
public:
    using WorkbookCells::WorkbookCells;
    CountedCells(WorkbookCells cells) : WorkbookCells(std::move(cells)) {}
    void eachCell(const SheetArea& area, Texts texts, const Visitor& visit) override
    {
        WorkbookCells::eachCell(area, texts, [&](int row, int column, const FormulaValue& value) {
            ++visited;
            return visit(row, column, value);
        });
    }
    int visited = 0;
};

TEST(FormulaRun, looksAtAnAreaOnceForAllCells)
{
    FormulaSheet sheet = longColumn(1000);
    sheet.define(u"whole"_s, u"Data!$A$1:$A$1000"_s);
    for (const QString& formula : test::textList(R"(
        $A1>AVERAGE($A$1:$A$1000) | COUNTIF($A$1:$A$1000,$A1)>1 | MATCH($A1,$A:$A,0)<ROW() | A1=LARGE(whole,3)
        VLOOKUP(A1,$A:$B,1,FALSE)=A1 | RANK(A3,$A$1:$A$1000)<10 | COUNTIF($A:$A,">"&ROW())<10 | SUM((whole>3)*1)>A1
        COUNTIFS($A:$A,A1,$A:$A,"<50")>0 | SUMIF($A:$A,A1)=0 | XLOOKUP(A1,$A:$A,$A:$A)=A1
        COUNTIF($A$1:$A1,A1)=1)")) {
        CountedCells cells(sheet.cells());
        const Formula parsed = *Formula::parse(formula);
        FormulaRun run(parsed, cells, 0, {1, 1});
        for (int row = 1; row <= 1000; ++row) {
            const bool found = run.isTrue({row, 1});
            if (row % 50 != 3 && row > 9)
                continue;
            WorkbookCells others = sheet.cells();
            FormulaRun alone(parsed, others, 0, {1, 1});
            EXPECT_EQ(found, alone.isTrue({row, 1})) << formula << " in row " << row;
        }
        EXPECT_LE(cells.visited, 6000) << formula;
    }
}

TEST(FormulaRun, keepsNothingThatDependsOnTheCell)
{
    FormulaSheet sheet = longColumn(20);
    sheet.define(u"left"_s, u"Data!XFD1"_s);
    WorkbookCells cells = sheet.cells();
    for (const auto& [formula, values] : test::textPairs(R"(
        MOD(ROW(),2)=0 → 0101 | $A$1:$A$4>1 → 0011 | left=2 → 0010 | INDIRECT("A"&ROW())=1 → 0100 | IF(A1>0,A1=1,TRUE) → 1100
        SUM(OFFSET($A$1,0,0,ROW()))>1 → 0011 | COUNTIF($A$1:$A1,">0")>1 → 0011)")) {
        FormulaRun run(*Formula::parse(formula), cells, 0, {1, 1});
        QString found;
        for (int row = 1; row <= 4; ++row)
            found += run.isTrue({row, formula == u"left=2" ? 2 : 1}) ? u'1' : u'0';
        EXPECT_EQ(found, values) << formula;
    }
}

TEST(FormulaRun, endsWhatCostsTooMuch)
{
    FormulaSheet sheet = longColumn(3000);
    sheet.define(u"a"_s, u"b&b&b&b"_s);
    sheet.define(u"b"_s, u"a&a&a&a"_s);
    expectValues(sheet, R"(
        a → #VALUE! | SUMPRODUCT((A1:A3000=TRANSPOSED)*1) → #NAME? | SUM(A1:XFD1048576*1) → #VALUE!
        SUM(ROW(1:1048576)) → #VALUE! | SUMPRODUCT(COUNTIF(A1:A3000,ROW(A1:A3000)&"*")) → #VALUE!
        LEN(CONCAT(REPT("ab",{16000,16000,16000}))) → #VALUE! | SUM(LEN(REPT("a",ROW(A1:A9000)*0+32000))) → #VALUE!)");
}

TEST(FormulaRun, isExhaustedInTheEnd)
{
    FormulaSheet sheet = longColumn(3000);
    WorkbookCells cells = sheet.cells();
    const Formula parsed = *Formula::parse(u"SUM(A1:A3000)>0"_s);
    FormulaRun run(parsed, cells, 0, {1, 1});
    EXPECT_TRUE(run.isTrue({1, 1}));
    EXPECT_FALSE(run.isExhausted());
    for (qint64 steps = 0; steps < FormulaLimits::runSteps; steps += 3000)
        run.isTrue({1, 1});
    EXPECT_TRUE(run.isExhausted());
    EXPECT_FALSE(run.isTrue({1, 1}));
}

} // namespace
} // namespace lumivane::engine
