#include "engine/read/WorkbookFile.h"
#include "engine/show/CellSearch.h"
#include "engine/show/ShownSheet.h"
#include "platform/Clock.h"
#include "platform/FindQuestion.h"
#include "support/TextTable.h"
#include "support/XlsxWriter.h"

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

using namespace test;

const std::string looks = R"(<dxfs count='4'>
    <dxf><font><b/></font></dxf>
    <dxf><font><i/></font><fill><patternFill><bgColor rgb='FF112233'/></patternFill></fill></dxf>
    <dxf><fill><patternFill patternType='solid'><fgColor rgb='FF00FF00'/><bgColor rgb='FF445566'/></patternFill></fill>
         <border><left style='thin'/></border></dxf>
    <dxf><numFmt numFmtId='164' formatCode='"about "0'/></dxf></dxfs>)";

/// Column A holds 1, 2, 2, 3, 10, -4, "Apple pie", nothing, #N/A and " "; column B 24 to 28 November 2026, "apple",
/// "APPLE", TRUE, and 5 twice; the second sheet 2.
std::shared_ptr<ShownSheet> sheetWith(const std::string& formats, const std::string& later = {})
{
    const std::string cells =
        R"(<sheetData><row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>46350</v></c></row>
        <row r='2'><c r='A2'><v>2</v></c><c r='B2'><v>46351</v></c></row>
        <row r='3'><c r='A3'><v>2</v></c><c r='B3'><v>46352</v></c></row>
        <row r='4'><c r='A4'><v>3</v></c><c r='B4'><v>46353.5</v></c></row>
        <row r='5'><c r='A5'><v>10</v></c><c r='B5'><v>46354</v></c></row>
        <row r='6'><c r='A6'><v>-4</v></c><c r='B6' t='str'><v>apple</v></c></row>
        <row r='7'><c r='A7' t='str'><v>Apple pie</v></c><c r='B7' t='str'><v>APPLE</v></c></row>
        <row r='8'><c r='B8' t='b'><v>1</v></c></row>
        <row r='9'><c r='A9' t='e'><v>#N/A</v></c><c r='B9'><v>5</v></c></row>
        <row r='10'><c r='A10' t='str'><v xml:space='preserve'> </v></c><c r='B10'><v>5</v></c></row></sheetData>)";
    WorkbookParts parts({{"Data",
                          cells + formats + "<extLst><ext><x14:conditionalFormattings>" + later +
                              "</x14:conditionalFormattings></ext></extLst>",
                          ""},
                         {"Limits", "<sheetData><row r='1'><c r='A1'><v>2</v></c></row></sheetData>", ""}});
    parts.styles(looks);
    const auto file = WorkbookFile::open(writeTemporary(u"Conditions.xlsx"_s, parts.package()));
    return std::make_shared<ShownSheet>(file->content(), file->sheet(0), nullptr, WorkbookFile::sheetsOf(file));
}

std::string format(const std::string& areas, const std::string& rules)
{
    return "<conditionalFormatting sqref='" + areas + "'>" + rules + "</conditionalFormatting>";
}

/// The cells of the two columns of which something holds.
QString cellsOf(const ShownSheet& sheet, const std::function<bool(int row, int column)>& holds)
{
    QStringList cells;
    for (const int column : {1, 2})
        for (int row = 1; row <= 10; ++row)
            if (holds(row, column))
                cells << CellArea::cell(row, column).relative();
    return cells.join(u' ');
}

QString bold(const ShownSheet& sheet)
{
    return cellsOf(sheet, [&](int row, int column) { return sheet.font(sheet.style(row, column)).bold; });
}

class Conditions : public testing::Test
{
protected:
    Conditions() { Clock::setFixed({QDate(2026, 11, 25), QTime(8, 0)}); }
    ~Conditions() override { Clock::setFixed({}); }
};

/// A row: name, areas, the rule, the cells that are bold.
class EachRule : public OfEachRow<Conditions, 4>
{
};

TEST_P(EachRule, MarksItsCells)
{
    const auto& [name, areas, rule, marked] = GetParam();
    const auto sheet = sheetWith(format(areas.toStdString(), "<cfRule dxfId='0' priority='1' " + rule.toStdString()));
    EXPECT_EQ(bold(*sheet), marked);
    EXPECT_EQ(sheet->conditionsLeftOut({1, 1, 10, 2}).join(u','),
              name.startsWith(u"unknown") ? u"the function NOSUCH"_s : QString());
}

INSTANTIATE_TEST_SUITE_P(Rules, EachRule, testing::ValuesIn(textTable<4>(R"(
    greater, texts after numbers | A1:A10 | type='cellIs' operator='greaterThan'><formula>2</formula></cfRule> | A4 A5 A7 A10
    nothing counts as zero | A1:A8 | type='cellIs' operator='lessThan'><formula>1</formula></cfRule> | A6 A8
    between the other way round | A1:A7 | type='cellIs' operator='between'><formula>3</formula><formula>2</formula></cfRule> | A2 A3 A4
    not between | A1:A6 | type='cellIs' operator='notBetween'><formula>1</formula><formula>3</formula></cfRule> | A5 A6
    equal to a text | A1:B7 | type='cellIs' operator='equal'><formula>"Apple"</formula></cfRule> | B6 B7
    limit on another sheet | A1:A6 | type='cellIs' operator='equal'><formula>Limits!$A$1</formula></cfRule> | A2 A3
    relative to the corner | A2:B4 | type='expression'><formula>A1=2</formula></cfRule> | A3 A4
    corner of all areas | B3:B4 A4 | type='expression'><formula>A3=2</formula></cfRule> |
    banded rows | A1:A4 | type='expression'><formula>MOD(ROW(),2)=0</formula></cfRule> | A2 A4
    a text is not true | A1:A2 | type='expression'><formula>"TRUE"</formula></cfRule> |
    contains, any case | A1:B10 | type='containsText' text='APP*'><formula>FALSE</formula></cfRule> | A7 B6 B7
    contains not | A7:A9 | type='notContainsText' text='pie'/> | A8 A9
    begins | A1:B10 | type='beginsWith' text='apple '/> | A7
    ends | A1:B10 | type='endsWith' text='E'/> | A7 B6 B7 B8
    by its formula | A7 | type='containsText'><formula>NOT(ISERROR(SEARCH("pie",A7)))</formula></cfRule> | A7
    blanks | A1:A10 | type='containsBlanks'/> | A8 A10
    no blanks | A7:A10 | type='notContainsBlanks'/> | A7
    errors | A1:A10 | type='containsErrors'/> | A9
    no errors | A8:A9 | type='notContainsErrors'/> | A8
    top two and a tie | A1:A10 | type='top10' rank='3'/> | A2 A3 A4 A5
    bottom third | A1:A10 | type='top10' rank='34' percent='1' bottom='1'/> | A1 A6
    above average | A1:A10 | type='aboveAverage'/> | A4 A5
    at most average | B1:B5 | type='aboveAverage' aboveAverage='0' equalAverage='1'/> | B1 B2 B3
    one deviation above | A1:A10 | type='aboveAverage' stdDev='1'/> | A5
    duplicates | A1:B10 | type='duplicateValues'/> | A2 A3 B6 B7 B9 B10
    uniques | A1:A10 | type='uniqueValues'/> | A1 A4 A5 A6 A7 A10
    today | B1:B10 | type='timePeriod' timePeriod='today'/> | B2
    yesterday | B1:B10 | type='timePeriod' timePeriod='yesterday'/> | B1
    tomorrow | B1:B10 | type='timePeriod' timePeriod='tomorrow'/> | B3
    last seven days | B1:B10 | type='timePeriod' timePeriod='last7Days'/> | B1 B2
    this week | B1:B10 | type='timePeriod' timePeriod='thisWeek'/> | B1 B2 B3 B4 B5
    next week | B1:B10 | type='timePeriod' timePeriod='nextWeek'/> |
    this month | B1:B10 | type='timePeriod' timePeriod='thisMonth'/> | B1 B2 B3 B4 B5
    last month | B1:B10 | type='timePeriod' timePeriod='lastMonth'/> |
    unknown function | A1:A10 | type='expression'><formula>NOSUCH(A1)</formula></cfRule> |)")),
                         rowName);

/// A row: what a rule draws, its XML, values of column A or B as they come out.
TEST_F(Conditions, ScalesBarsAndIconsFollowTheirLimits)
{
    const auto drawn = [](const ShownSheet& sheet) {
        QStringList cells;
        for (int row = 1; row <= 7; ++row) {
            const ConditionResult& result = *sheet.condition(row, 1);
            QString text;
            if (result.scale)
                text = QString::number(*result.scale & 0xffffff, 16);
            if (result.bar.bar)
                text = u"%1-%2"_s.arg(qRound(result.bar.from * 100)).arg(qRound(result.bar.to * 100));
            if (result.icon)
                text = QString::number(result.icon->index);
            cells << (text.isEmpty() ? u"-"_s : text) + (result.hidesValue ? u"!" : u"");
        }
        return cells.join(u' ');
    };
    const std::string colors = "<color rgb='FF000000'/><color rgb='FFFFFFFF'/></colorScale></cfRule>";
    const std::string scale = "<cfRule type='colorScale' priority='1'><colorScale>";
    const std::string bar = "<cfRule type='dataBar' priority='1'><dataBar ";
    const std::string icons = "<cfRule type='iconSet' priority='1'><iconSet ";
    const std::string color = "<color rgb='FF0000FF'/></dataBar>";
    const std::string joined = "<extLst><ext><x14:id>{1}</x14:id></ext></extLst></cfRule>";
    const std::string laterBar = "<x14:conditionalFormatting><x14:cfRule type='dataBar' id='{1}'><x14:dataBar "
                                 "minLength='0' maxLength='100' ";
    const std::string sqref = "</x14:dataBar></x14:cfRule><xm:sqref>A1:A7</xm:sqref></x14:conditionalFormatting>";
    const std::string oldBar = bar + "><cfvo type='min'/><cfvo type='max'/>" + color;
    struct
    {
        const char* name;
        std::string rule, later;
        const char* expected;
    } const cases[] = {
        {"numbers",
         scale + "<cfvo type='num' val='0'/><cfvo type='num' val='10'/>" + colors,
         {},
         "191919 333333 333333 4c4c4c ffffff 0 -"},
        {"percents", scale + "<cfvo type='percent' val='50'/><cfvo type='max'/>" + colors, {}, "0 0 0 0 ffffff 0 -"},
        {"percentiles",
         scale + "<cfvo type='percentile' val='50'/><cfvo type='formula' val='$A$4'/>" + colors,
         {},
         "0 0 0 ffffff ffffff 0 -"},
        {"the earlier bar", oldBar + "</cfRule>", {}, "0-39 0-44 0-44 0-50 0-90 0-10 -"},
        {"without its value",
         bar + "showValue='0'><cfvo type='num' val='0'/><cfvo type='max'/>" + color + "</cfRule>",
         {},
         "0-18! 0-26! 0-26! 0-34! 0-90! 0-10! -"},
        {"an axis", oldBar + joined, laterBar + "><x14:cfvo type='autoMin'/><x14:cfvo type='autoMax'/>" + sqref,
         "29-36 29-43 29-43 29-50 29-100 29-0 -"},
        {"an axis in the middle", oldBar + joined,
         laterBar + "axisPosition='middle'><x14:cfvo type='autoMin'/><x14:cfvo type='autoMax'/>" + sqref,
         "50-55 50-60 50-60 50-65 50-100 50-0 -"},
        {"no axis", oldBar + joined,
         laterBar + "axisPosition='none'><x14:cfvo type='min'/><x14:cfvo type='num'><xm:f>6</xm:f></x14:cfvo>" + sqref,
         "0-50 0-60 0-60 0-70 0-100 0-0 -"},
        {"limits alike", oldBar + joined,
         laterBar + "><x14:cfvo type='num' val='0'/><x14:cfvo type='num' val='0'/>" + sqref,
         "0-100 0-100 0-100 0-100 0-100 0-0 -"},
        {"icons",
         icons + "iconSet='3Arrows'><cfvo type='percent' val='0'/><cfvo type='num' val='2'/>"
                 "<cfvo type='num' val='3' gte='0'/></iconSet></cfRule>",
         {},
         "0 1 1 1 2 0 -"},
        {"reversed",
         icons + "reverse='1' showValue='0'><cfvo type='min'/><cfvo type='num' val='2'/>"
                 "<cfvo type='num' val='3'/></iconSet></cfRule>",
         {},
         "2! 1! 1! 0! 0! 2! -"},
        {"one limit missing",
         icons + "><cfvo type='min'/><cfvo type='num' val='2'/></iconSet></cfRule>",
         {},
         "- - - - - - -"},
    };
    for (const auto& one : cases) {
        const auto sheet = sheetWith(format("A1:A7", one.rule), one.later);
        EXPECT_EQ(drawn(*sheet).toStdString(), one.expected) << one.name;
    }
}

TEST_F(Conditions, TheFirstRuleThatSetsAPropertyWins)
{
    const auto rule = [](int look, int priority, const std::string& rest = "") {
        return "<cfRule type='expression' dxfId='" + std::to_string(look) + "' priority='" + std::to_string(priority) +
               "' " + rest + "><formula>TRUE</formula></cfRule>";
    };
    const std::string scale = "<cfRule type='colorScale' priority='2'><colorScale><cfvo type='min'/><cfvo type='max'/>"
                              "<color rgb='FF000001'/><color rgb='FF0000FF'/></colorScale></cfRule>";
    const auto fillOf = [](const ShownSheet& sheet) { return sheet.fill(6, 1).fore & 0xffffff; };

    const auto both = sheetWith(format("A1:A6", rule(2, 3) + rule(1, 1)));
    EXPECT_EQ(fillOf(*both), 0x112233u);
    EXPECT_TRUE(both->font(both->style(6, 1)).italic);
    EXPECT_EQ(both->border(both->style(6, 1)).left.style, LineStyle::Thin) << "what the first leaves open";
    const auto stopped = sheetWith(format("A1:A6", rule(1, 1, "stopIfTrue='1'") + rule(2, 3) + scale));
    EXPECT_EQ(stopped->border(stopped->style(6, 1)).left.style, LineStyle::None);
    EXPECT_EQ(fillOf(*stopped), 0x112233u);
    EXPECT_EQ(fillOf(*sheetWith(format("A1:A6", rule(2, 3) + scale))), 0x000001u) << "a scale is a fill like others";
    EXPECT_EQ(fillOf(*sheetWith(format("A1:A6", rule(2, 1) + scale))), 0x445566u);
}

TEST_F(Conditions, ANumberFormatChangesTheTextThatIsFound)
{
    const auto sheet = sheetWith("", "<x14:conditionalFormatting><x14:cfRule type='expression' priority='1' id='{2}'>"
                                     "<xm:f>A1&gt;2</xm:f><x14:dxf><numFmt numFmtId='9' formatCode='\"about \"0'/>"
                                     "</x14:dxf></x14:cfRule><xm:sqref>A1:A6</xm:sqref></x14:conditionalFormatting>");
    EXPECT_EQ(sheet->shown(4, *sheet->sheet().find(4, 1)), u"about 3"_s);
    EXPECT_EQ(sheet->shown(3, *sheet->sheet().find(3, 1)), u"2"_s);
    const auto found =
        findCell(*sheet, {1, 1, 10, 2}, {u"about 10"_s, LookAt::Whole, SearchDirection::Next, SearchOrder::ByRows});
    EXPECT_EQ(found ? found->relative() : QString(), u"A5"_s);
}

TEST_F(Conditions, SaysWhatIsLeftOutBecauseItCostsTooMuch)
{
    const auto rule = [](const std::string& formula) {
        return "<cfRule dxfId='0' priority='1' type='expression'><formula>" + formula + "</formula></cfRule>";
    };
    const auto slow = sheetWith(format("A1:A2", rule("SUM(LEN(REPT(\"a\",ROW(A1:A9000)*0+32000)))>0")));
    EXPECT_EQ(bold(*slow), QString());
    EXPECT_EQ(slow->conditionsLeftOut({1, 1, 2, 1}).join(u','), u"a formula that takes too long"_s);

    std::string sum = "A1", rules;
    while (sum.size() < 8000)
        sum += "+1";
    for (int count = 0; count < 300; ++count)
        rules += rule(sum);
    const auto large = sheetWith(format("A1:A2", rules + rule("TRUE")));
    EXPECT_EQ(bold(*large), u"A1 A2"_s);
    EXPECT_TRUE(large->sheet().problem.contains(u"more conditional formats than can be applied"_s));
}

} // namespace
} // namespace lumivane::engine
