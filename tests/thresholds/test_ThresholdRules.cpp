#include "range/SheetFile.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"
#include "thresholds/ThresholdFormula.h"

#include <QColor>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

QString outcomeOf(const QString& formula)
{
    const auto held = evaluateComparison(formula);
    return !held ? held.reason() : held.value() ? u"yes"_s : u"no"_s;
}

TEST(ThresholdComparison, FollowsTheRulesOfFormulas)
{
    // A sign binds closer than a power, and powers go from left to right.
    for (const QString& holds : textList(R"(
        = 1250>1000 | = 100>=100 | = 5=5 | = -5>-10 | = 0.1+0.2=0.30000000000000004 | = -2^2=4 | = 2^3^2=64
        = 50%=0.5 | = 2+3*4=14 | = (2+3)*4=20 | = 1e3=1000 | = 5-1 | = .5<1.)"))
        EXPECT_EQ(outcomeOf(holds), u"yes"_s) << holds;
    for (const QString& fails : textList("= 100>100 | = 5<>5 | 5<=4.99 | = 110>100*1.1 | = 1-1"))
        EXPECT_EQ(outcomeOf(fails), u"no"_s) << fails;
    for (const auto& [refused, reason] : textTable<2>(R"(
        = 1>       | at its end: a number is expected
        = 1>2>3    | at [>3]: only numbers and one comparison
        = 1>A1     | at [A1]: a number is expected
        = 1>1,000  | at [,000]
        = 1/0>1    | divides by zero
        = (1>2     | a closing parenthesis is missing
        = 10^400>1 | gives no number
        = 1e999>1  | too large
        = 1e>1     | at [e>1])"))
        EXPECT_TRUE(outcomeOf(refused).contains(reason)) << outcomeOf(refused);
    EXPECT_EQ(outcomeOf(u"= "_s + QString(200'000, u'-') + u"1>0"_s), u"yes"_s);
    EXPECT_TRUE(outcomeOf(u"= "_s + QString(200'000, u'(') + u"1"_s).contains(u"too many parentheses"_s));
}

TEST(ThresholdComparison, MustBeginWithASignToBeStored)
{
    for (const QString& good : textList(">1000 | · <= -5 | *2>7 | =3"))
        EXPECT_EQ(comparisonFault(good), QString()) << good;
    for (const QString& bad : textList("| 000 | .5>1 | e5>1 | > | >x"))
        EXPECT_NE(comparisonFault(bad), QString()) << bad;
}

const QColor high(128, 180, 180);
const QColor low(180, 128, 180);

/// A panel whose range B10:C20 is found again by its last cell, with two fixed rows and a fixed column.
class Thresholds : public testing::Test
{
protected:
    Thresholds()
    {
        Database::create(folder.filePath(u"p.lvdu"_s));
        project = Database::open(folder.filePath(u"p.lvdu"_s), databaseConnect());
        define(u"$B$10:$C$20`1:2`A:A"_s, u"bottom=$C$20"_s);
    }

    void define(const QString& PicRange, const QString& ContentMatch)
    {
        panel = {};
        panel.ID = 7;
        panel.PicRange = PicRange;
        panel.RelativeTo = u"bottom"_s;
        panel.ContentMatch = ContentMatch;
    }
    void rule(int row, int column, const QString& highExp, const QString& ifHigh, const QString& lowExp = QString(),
              const QString& ifLow = QString())
    {
        project->Execute(
            u"INSERT INTO LvnpanelThresholds VALUES (7, %1, %2, '%3', '%4', '%5', '%6')"_s.arg(row).arg(column).arg(
                highExp, ifHigh, lowExp, ifLow));
    }
    void open(const QString& cells)
    {
        sheet = openSheet(cells);
        panel.GetAdjRange(*sheet);
    }
    QColor color(const QString& address) const
    {
        return sheet->CopyPicture(*CellArea::parse(address)).pixelColor(2, 2);
    }

    QTemporaryDir folder;
    std::shared_ptr<Database> project;
    std::shared_ptr<Worksheet> sheet;
    clsWorkspacePanel panel;
};

TEST_F(Thresholds, LeaveTheFixedCornerInItsPlaceOnly)
{
    open(u"C24=1"_s);
    EXPECT_EQ(panel.MapCell(2, 2, *sheet), u"B6"_s) << "fixed rows alone move";
    EXPECT_EQ(panel.MapCell(3, 1, *sheet), u"A7"_s) << "fixed columns alone move";
    EXPECT_EQ(clsWorkspacePanel().MapCell(1, 1, *sheet), u"A1"_s);
}

TEST_F(Thresholds, ApplyTheirLimits)
{
    open(u"B10=100|B11=100|B12=100|B13=100|B14=100|B15=TRUE|B18=1e20|C20=1"_s);
    const QColor unmarked = color(u"B10"_s);
    rule(10, 2, u">100"_s, u"color"_s);
    rule(11, 2, u">=100"_s, u"colorRed"_s, u"<=100"_s, u"color"_s);
    rule(12, 2, u">=100"_s, u"Color"_s);
    rule(13, 2, u""_s, u"color"_s, u"<>100"_s, u"color"_s);
    rule(14, 2, u">0"_s, u""_s);
    rule(15, 2, u"=-1"_s, u"color"_s);
    rule(16, 2, u"=0"_s, u"color"_s); // an empty cell
    rule(18, 2, u">1e19"_s, u"color"_s);
    project->Execute(u"INSERT INTO LvnpanelThresholds VALUES (8, 17, 2, '=0', 'color', '', '')"_s);
    panel.lightCells(*sheet, project);
    EXPECT_EQ(color(u"B10"_s), unmarked) << "the limit itself does not pass";
    EXPECT_EQ(color(u"B11"_s), low) << "the low mark comes second";
    EXPECT_EQ(color(u"B12"_s), unmarked) << "the word is compared exactly";
    EXPECT_EQ(color(u"B13"_s), unmarked) << "an empty comparison is none";
    EXPECT_EQ(color(u"B14"_s), unmarked) << "without an action";
    EXPECT_EQ(color(u"B15"_s), high);
    EXPECT_EQ(color(u"B16"_s), high);
    EXPECT_EQ(color(u"B18"_s), high);
    EXPECT_NE(color(u"B17"_s), high) << "the rule of another panel";
}

TEST_F(Thresholds, TellWhatTheyCannotCompare)
{
    const std::tuple<int, int, QString, QString> faults[] = {
        {10, 2, u">1"_s, u"The cell B10 of sheet [Data] is watched for a limit and holds [n/a], which is no number."_s},
        {11, 2, u">x"_s,
         u"The limit of cell B11 cannot be compared: the formula [= 5>x] is not understood at [x]: a number is "
         "expected."_s},
        {0, 5, u">1"_s, u"The watched cell in row 0 and column 5 is beyond the sheet."_s},
        {2147483647, 2147483647, u">1"_s,
         u"The watched cell in row 2147483647 and column 2147483647 is beyond the sheet."_s},
    };
    open(u"B10=n/a|B11=5|C20=1"_s);
    for (const auto& [row, column, comparison, told] : faults) {
        project->Execute(u"DELETE FROM LvnpanelThresholds"_s);
        rule(row, column, comparison, u"color"_s);
        EXPECT_EQ(failureOf([&] { panel.lightCells(*sheet, project); }).text, told);
    }
}

TEST_F(Thresholds, WatchTheSameFigureWhateverBecameOfTheDefinition)
{
    rule(15, 2, u">1"_s, u"color@B10"_s);
    rule(2, 1, u">1"_s, u"color@B10"_s);
    for (const auto& [definition, bottom] : std::initializer_list<std::pair<QString, QString>>{
             {u"$B$10:$C$20`1:2`A:A"_s, u"bottom=$C$20"_s}, // as it was
             {u"B14:C24`1:2`A:A"_s, u"bottom=$C$24"_s},     // moved on by an adopted version
             {u"B16:C26`1:2`A:A"_s, u"bottom=$C$26"_s}}) {  // moved on twice and found back
        define(definition, bottom);
        open(u"C24=1|B19=50|A2=50"_s);
        panel.lightCells(*sheet, project);
        for (const QString& address : {u"B19"_s, u"A2"_s})
            EXPECT_EQ(color(address), high) << definition << ' ' << address;
    }
}

} // namespace
} // namespace lumivane::test
