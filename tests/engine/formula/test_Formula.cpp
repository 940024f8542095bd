#include "FormulaSheet.h"
#include "engine/formula/FormulaLimits.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

FormulaSheet sheetOfKinds()
{
    return FormulaSheet(R"(
        5   | abc | TRUE | #N/A | ?
        12  | ABD | ''   | -    | 0.1
        '7  | x y | 0    | 1e15 | -2)",
                        R"(
        100 | 200)");
}

TEST(Formula, calculatesWithOperators)
{
    FormulaSheet sheet = sheetOfKinds();
    expectValues(sheet, R"(
        1+2*3^2 → 19 | (1+2)*3 → 9 | -2^2 → 4 | 2^3^2 → 64 | 2^-1 → 0.5 | 50% → 0.5 | -50%^2 → 0.25 | 7-3-2 → 2
        10/4/5 → 0.5 | "a"&1+1&TRUE → a2TRUE | 1=1=TRUE → TRUE | 2<1 → FALSE | 2<>1 → TRUE | 2>=2 → TRUE | --"3" → 3
        1/0 → #DIV/0! | 0^0 → #NUM! | 1e308*10 → #NUM! | "a"+1 → #VALUE! | 1+#N/A → #N/A | #REF!&1/0 → #REF!
        0.1+0.2=0.3 → TRUE | 1.1-1-0.1 → 0 | "3"+"1.5e1" → 18 | "1,234"*1 → 1234 | "12%"*1 → 0.12 | TRUE+1 → 2
        "2024-01-05"+0 → 45296 | "1/5/24 6:00 PM"+0 → 45296.75 | "5-Jan-2024"*1 → 45296 | "1:30"*24 → 1.5
        "a""b" → a"b | 1E3 → 1000 | .5 → 0.5 | true → TRUE)");
}

TEST(Formula, comparesKinds)
{
    FormulaSheet sheet = sheetOfKinds();
    expectValues(sheet, R"(
        "abc"="ABC" → TRUE | "b">"A" → TRUE | 9e9<"" → TRUE | "zz"<FALSE → TRUE | TRUE>FALSE → TRUE | "1"=1 → FALSE
        D2=0 → TRUE | D2="" → TRUE | D2=FALSE → TRUE | D2=Z99 → TRUE | D2<1 → TRUE | C2="" → TRUE | C2=0 → FALSE
        D1=1 → #N/A | E1=1 → #N/A)");
}

TEST(Formula, refersToCells)
{
    FormulaSheet sheet = sheetOfKinds();
    sheet.define(u"rate"_s, u"Data!$A$2"_s);
    sheet.define(u"Rate"_s, u"3"_s, 1);
    sheet.define(u"above"_s, u"Data!A1048576"_s);
    sheet.define(u"odd"_s, u"Table[x]"_s);
    sheet.define(u"round"_s, u"round+1"_s);
    expectValues(sheet, R"(
        A1 → Data!$B$2 | $A1 → Data!$A$2 | A$1 → Data!$B$1 | $A$1:B2 → Data!$A$1:$C$3 | b:$a → Data!$A:$C
        2:$3 → Data!$3:$3 | XFD1048576 → Data!$A$1 | XFC1 → Data!$XFD$2 | Data!$B$3&"" → x y | 'It''s'!$B$1+1 → 201
        nothing!A1 → #REF! | Lost!A1+1 → #REF! | ($A$1,$B$2) → Data!$A$1,Data!$B$2 | $A$1:$C$2 $B$2:$D$9 → Data!$B$2:$C$2
        $A$1 $B$2 → #NULL! | $A$1:INDEX($A:$C,2,3) → Data!$A$1:$C$2 | $A$1:$A$3*2 → 24 | $A$1:$E$1&"" → abc
        $D$5:$D$9+1 → #VALUE! | SUM($A:$A) → 17 | SUM((A$1,$A$2,$A$2)) → 24 | rate → Data!$A$2 | RATE+1 → 13
        'It''s'!rate → 3 | above&"" → abc | odd → #NAME? | unknown → #NAME? | round → #VALUE! | {1,-2;"a",#N/A} → {1,-2;a,#N/A}
        Sheet!#REF! → #REF!)",
                 {2, 2});
}

TEST(Formula, isNotUnderstood)
{
    FormulaSheet sheet = sheetOfKinds();
    for (const QString& formula : test::textList(R"(
        =1 | 1+ | (1 | 1) | "a | Table[Col] | [1]Data!A1 | '[1]Data'!A1 | Data:Lost!A1 | 'Data:Lost'!A1 | {1,2;3} | {A1}
        SUM( | IF(1) | LEFT("a",1,2) | #OOPS! | 1 2 | A1 "x" | 2A | $ | A1$ | ~ | 'Data'A1 | @)"))
        EXPECT_EQ(sheet.value(formula), u"not understood"_s) << formula;
    EXPECT_EQ(sheet.value({}), u"not understood"_s);
    const auto nested = [&](const QString& open, int count) {
        return sheet.value(open.repeated(count) + u'1' + (open == u"(" ? u")"_s.repeated(count) : QString()));
    };
    EXPECT_EQ(nested(u"("_s, 64), u"1"_s);
    EXPECT_EQ(nested(u"("_s, 65), u"not understood"_s);
    EXPECT_EQ(nested(u"-"_s, 65), u"not understood"_s);
    EXPECT_EQ(sheet.value(u"1"_s + u"+1"_s.repeated(4000)), u"4001"_s);
    EXPECT_EQ(sheet.value(u"1"_s + u"+1"_s.repeated(4096)), u"not understood"_s);
}

TEST(Formula, namesTheFirstUnknownFunction)
{
    EXPECT_EQ(Formula::parse(u"_xlfn.CONCAT(\"a\")"_s)->unknownFunction(), QString());
    EXPECT_EQ(Formula::parse(u"IF(A1,_xlfn._xlws.sort(A:A),NEXT(1))"_s)->unknownFunction(), u"SORT"_s);
    FormulaSheet sheet = sheetOfKinds();
    sheet.define(u"sorted"_s, u"SORT(A1)"_s);
    WorkbookCells cells = sheet.cells();
    FormulaRun run(*Formula::parse(u"sorted"_s), cells, 0, {1, 1});
    EXPECT_FALSE(run.isTrue({1, 1}));
    EXPECT_EQ(run.unknownFunction(), u"SORT"_s);
}

} // namespace
} // namespace lumivane::engine
