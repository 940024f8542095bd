#include "range/ThresholdsFormula.h"
#include "repository/clsWorkspacePanel.h"
#include "sharing/TwoProjects.h"
#include "support/PlainSheet.h"

#include <QColor>

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

struct ComparisonRow
{
    const char* formula;
    const char* expected; ///< "yes", "no", or a piece of the refusal
};
const ComparisonRow comparisons[] = {
    {"= 1250>1000", "yes"},
    {"= 100>100", "no"},
    {"= 100>=100", "yes"},
    {"= 5<>5", "no"},
    {"= 5=5", "yes"},
    {"5<=4.99", "no"},
    {"= -5>-10", "yes"},
    {"= 0.1+0.2=0.30000000000000004", "yes"},
    {"= 110>100*1.1", "no"},
    {"= -2^2=4", "yes"},   // a sign binds closer than a power
    {"= 2^3^2=64", "yes"}, // powers from left to right
    {"= 50%=0.5", "yes"},
    {"= 2+3*4=14", "yes"},
    {"= (2+3)*4=20", "yes"},
    {"= 1e3=1000", "yes"},
    {"= 1-1", "no"},
    {"= 5-1", "yes"},
    {"= .5<1.", "yes"},
    {"= 1>", "at its end: a number is expected"},
    {"", "at its end: a number is expected"},
    {"= 1>2>3", "at [>3]: only numbers and one comparison"},
    {"= 1>A1", "at [A1]: a number is expected"},
    {"= 1>1,000", "at [,000]"},
    {"= 1/0>1", "divides by zero"},
    {"= (1>2", "a closing parenthesis is missing"},
    {"= 10^400>1", "gives no number"},
    {"= 1e999>1", "too large"},
    {"= 1e>1", "at [e>1]"},
    {"= 1>\"text\"", "a number is expected"},
};

TEST(ThresholdComparison, FollowsTheRulesOfFormulas)
{
    for (const ComparisonRow& row : comparisons) {
        const auto held = evaluateComparison(QString::fromLatin1(row.formula));
        const QString outcome = !held ? held.reason() : held.value() ? u"yes"_s : u"no"_s;
        EXPECT_TRUE(held ? outcome == QLatin1String(row.expected) : outcome.contains(QLatin1String(row.expected)))
            << row.formula << " gave: " << outcome.toStdString();
    }
}

TEST(ThresholdComparison, RefusesDepthWithoutExhaustingTheStack)
{
    const auto held = evaluateComparison(u"= "_s + QString(200'000, u'(') + u"1"_s);
    ASSERT_FALSE(held);
    EXPECT_TRUE(held.reason().contains(u"too many parentheses"_s));
    EXPECT_TRUE(evaluateComparison(u"= "_s + QString(200'000, u'-') + u"1>0"_s).value());
}

TEST(ThresholdComparison, MustBeginWithASignToBeStored)
{
    for (const QString& good : {u">1000"_s, u" <= -5"_s, u"*2>7"_s, u"=3"_s})
        EXPECT_EQ(comparisonFault(good), QString()) << good.toStdString();
    for (const QString& bad : {u""_s, u"000"_s, u".5>1"_s, u"e5>1"_s, u">"_s, u">x"_s})
        EXPECT_NE(comparisonFault(bad), QString()) << bad.toStdString();
}

const QColor high(128, 180, 180);
const QColor low(180, 128, 180);

class Thresholds : public TwoProjects
{
protected:
    Thresholds()
    {
        panel.ID = 7;
        panel.PicRange = u"$B$10:$C$20`1:2`A:A"_s;
        panel.RelativeTo = u"bottom"_s;
        panel.ContentMatch = u"bottom=$C$20"_s;
        for (int row = 1; row <= 30; ++row)
            sheet.height(QString::number(row) + u':' + QString::number(row), 15);
    }

    void rule(int row, int column, const QString& highExp, const QString& ifHigh, const QString& lowExp = QString(),
              const QString& ifLow = QString())
    {
        mine->Execute(
            u"INSERT INTO LvnpanelThresholds VALUES (7, %1, %2, '%3', '%4', '%5', '%6')"_s.arg(row).arg(column).arg(
                highExp, ifHigh, lowExp, ifLow));
    }
    /// Locates the panel with its last cell in a given row, then marks.
    void light(int lastRow)
    {
        sheet.put(u"C%1"_s.arg(lastRow), u"1"_s);
        panel.GetAdjRange(sheet);
        panel.lightCells(sheet, mine);
    }
    QColor color(const QString& address)
    {
        const QImage cell = sheet.CopyPicture(*CellArea::parse(address));
        return cell.pixelColor(cell.width() / 2, cell.height() / 2);
    }

    PlainSheet sheet{u"Sheet1"_s};
    clsWorkspacePanel panel;
};

TEST_F(Thresholds, MarkACellWhereItHasMovedTo)
{
    rule(15, 2, u">100"_s, u"color"_s);
    sheet.put(u"B15"_s, u"500"_s).put(u"B19"_s, u"101"_s);
    light(24);
    EXPECT_EQ(color(u"B19"_s), high);
    EXPECT_NE(color(u"B15"_s), high);
}

TEST_F(Thresholds, LeaveTheFixedCornerInItsPlaceOnly)
{
    sheet.put(u"C24"_s, u"1"_s);
    panel.GetAdjRange(sheet);
    EXPECT_EQ(panel.MapCell(2, 1, sheet), u"A2"_s);
    EXPECT_EQ(panel.MapCell(2, 2, sheet), u"B6"_s) << "fixed rows alone move";
    EXPECT_EQ(panel.MapCell(3, 1, sheet), u"A7"_s) << "fixed columns alone move";
    clsWorkspacePanel plain;
    EXPECT_EQ(plain.MapCell(1, 1, sheet), u"A1"_s);
}

TEST_F(Thresholds, ApplyTheirLimits)
{
    sheet.put(u"B10"_s, u"100"_s).put(u"B11"_s, u"100"_s).put(u"B12"_s, u"100"_s).put(u"B13"_s, u"100"_s);
    sheet.put(u"B14"_s, u"100"_s).put(u"B15"_s, u"TRUE"_s);
    const QColor unmarked = color(u"B10"_s);
    rule(10, 2, u">100"_s, u"color"_s);
    rule(11, 2, u">=100"_s, u"colorRed"_s, u"<=100"_s, u"color"_s);
    rule(12, 2, u">=100"_s, u"Color"_s);
    rule(13, 2, u""_s, u"color"_s, u"<>100"_s, u"color"_s);
    rule(14, 2, u">0"_s, u""_s);
    rule(15, 2, u"=-1"_s, u"color"_s);
    rule(16, 2, u"=0"_s, u"color"_s); // an empty cell
    light(20);
    EXPECT_EQ(color(u"B10"_s), unmarked) << "the limit itself does not pass";
    EXPECT_EQ(color(u"B11"_s), low) << "the low mark comes second";
    EXPECT_EQ(color(u"B12"_s), unmarked) << "the word is compared exactly";
    EXPECT_EQ(color(u"B13"_s), unmarked) << "an empty comparison is none";
    EXPECT_EQ(color(u"B14"_s), unmarked) << "without an action";
    EXPECT_EQ(color(u"B15"_s), high);
    EXPECT_EQ(color(u"B16"_s), high);
}

struct FaultRow
{
    const char* name;
    int row, column;
    QString comparison, expected;
};

TEST_F(Thresholds, TellWhatTheyCannotCompare)
{
    const FaultRow faults[] = {
        {"text", 10, 2, u">1"_s,
         u"The cell B10 of sheet [Sheet1] is watched for a limit and holds [n/a], which is no "
         "number."_s},
        {"no comparison", 11, 2, u">x"_s,
         u"The limit of cell B11 cannot be compared: the formula [= 5>x] is not "
         "understood at [x]: a number is expected."_s},
        {"row 0", 0, 5, u">1"_s, u"The watched cell in row 0 and column 5 is beyond the sheet."_s},
        {"far beyond", 2147483647, 2147483647, u">1"_s,
         u"The watched cell in row 2147483647 and column 2147483647 is beyond the sheet."_s},
    };
    sheet.put(u"B10"_s, u"n/a"_s).put(u"B11"_s, u"5"_s);
    for (const FaultRow& fault : faults) {
        mine->Execute(u"DELETE FROM LvnpanelThresholds"_s);
        rule(fault.row, fault.column, fault.comparison, u"color"_s);
        try {
            light(20);
            ADD_FAILURE() << fault.name;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.description(), fault.expected) << fault.name;
        }
    }
}

TEST_F(Thresholds, OfOtherPanelsMarkNothing)
{
    panel.ID = 8;
    rule(10, 2, u">1"_s, u"color"_s);
    sheet.put(u"B10"_s, u"5"_s);
    const QColor unmarked = color(u"B10"_s);
    light(20);
    EXPECT_EQ(color(u"B10"_s), unmarked);
}

struct DefinitionRow
{
    const char* name;
    QString picRange, bottom;
};

TEST_F(Thresholds, WatchTheSameFigureWhateverBecameOfTheDefinition)
{
    rule(15, 2, u">1"_s, u"color@B10"_s);
    rule(2, 1, u">1"_s, u"color@B10"_s);
    sheet.put(u"C24"_s, u"1"_s).put(u"B19"_s, u"50"_s).put(u"A2"_s, u"50"_s);
    for (const DefinitionRow& definition :
         {DefinitionRow{"as it was", u"$B$10:$C$20`1:2`A:A"_s, u"bottom=$C$20"_s},
          DefinitionRow{"moved on by an adopted version", u"B14:C24`1:2`A:A"_s, u"bottom=$C$24"_s},
          DefinitionRow{"moved on twice and found back", u"B16:C26`1:2`A:A"_s, u"bottom=$C$26"_s}}) {
        PlainSheet opened = sheet;
        clsWorkspacePanel loaded;
        loaded.ID = 7;
        loaded.PicRange = definition.picRange;
        loaded.RelativeTo = u"bottom"_s;
        loaded.ContentMatch = definition.bottom;
        loaded.GetAdjRange(opened);
        loaded.lightCells(opened, mine);
        for (const QString& address : {u"B19"_s, u"A2"_s}) {
            const QImage cell = opened.CopyPicture(*CellArea::parse(address));
            EXPECT_EQ(cell.pixelColor(3, 3), high) << definition.name << ' ' << address.toStdString();
        }
    }
}

} // namespace
} // namespace lumivane::test
