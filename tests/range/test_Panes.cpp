#include "SheetFile.h"

#include "platform/Prompts.h"
#include "repository/clsWorkspacePanel.h"
#include "support/LargeSheets.h"
#include "support/LogCapture.h"
#include "support/ScriptedPrompts.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace lumivane {

struct PanelProbe
{
    static QString fixed(const clsWorkspacePanel& panel)
    {
        return u"%1:%2 %3:%4"_s.arg(panel.pFixRowFirst)
            .arg(panel.pFixRowLast)
            .arg(panel.pFixColFirst, panel.pFixColLast);
    }
};

} // namespace lumivane

namespace {

class PasteRange : public testing::Test
{
protected:
    PasteRange() { setPrompts(&prompts); }
    ~PasteRange() override { setPrompts(nullptr); }

    std::shared_ptr<Worksheet> sheet = openSheet(u"A1=x"_s);
    clsWorkspacePanel panel;
    ScriptedPrompts prompts;
};

TEST_F(PasteRange, GivesMovingAndFixedParts)
{
    // A selection reaching under the fixed rows is itself compared, not what of it the free pane shows.
    for (const auto& [name, selectionAndPanes, picRange, fixed] : textTable<4>(R"(
        no panes             | $B$5:$F$20`$A$1:$Z$40                       | $B$5:$F$20``       | 0:0 :
        scrolled partly out  | $B$5:$F$60`$A$10:$D$40                      | $B$10:$D$40``      | 0:0 :
        whole columns        | $B:$C`$A$10:$Z$40                           | $B$10:$C$40``      | 0:0 :
        frozen rows          | $B$10:$F$20`$A$1:$Z$3`$A$8:$Z$40            | $B$10:$F$20`1:3`   | 1:3 :
        frozen columns       | $D$5:$F$9`$A$1:$B$40`$C$1:$Z$40             | $D$5:$F$9``A:B     | 0:0 A:B
        frozen both ways     | $D$5:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40 | $D$5:$F$9`1:3`A:B  | 1:3 A:B
        three panes          | $D$5:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$Z$40    | $D$5:$F$9``        | 0:0 :
        under the fixed rows | $A$1:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40 | $C$4:$F$9`1:3`A:B  | 1:3 A:B)")) {
        clsWorkspacePanel one;
        EXPECT_TRUE(one.PasteRange(*sheet, selectionAndPanes)) << name;
        EXPECT_EQ(one.PicRange, picRange) << name;
        EXPECT_EQ(PanelProbe::fixed(one), fixed) << name;
        EXPECT_FALSE(one.RowHeights.isEmpty()) << name;
    }
    EXPECT_TRUE(prompts.shown.isEmpty());
}

TEST_F(PasteRange, RefusesWhatNoPanelCouldShow)
{
    for (const auto& [selectionAndPanes, message] : textTable<2>(R"(
        $A$1:$B$2`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40 | No range of cells selected
        $A$5:$B$9`$C$1:$Z$40`$A$1:$B$40                     | The fixed columns must be on the left
        $A$5:$B$9`$A$20:$Z$30`$A$1:$Z$19                    | The fixed rows must be above
        $D$5:$F$9`$A$6:$B$8`$C$6:$Z$8`$A$4:$B$40`$C$4:$Z$40 | The fixed rows and columns must be above
        $A$1:$F$9`$A$2:$B$3`$C$2:$Z$3`$A$4:$B$40`$C$4:$Z$40 | The fixed rows and columns must be above)")) {
        prompts.shown.clear();
        EXPECT_FALSE(panel.PasteRange(*sheet, selectionAndPanes));
        ASSERT_EQ(prompts.shown.size(), 1) << selectionAndPanes;
        EXPECT_TRUE(prompts.shown[0].startsWith(message)) << prompts.shown[0];
        EXPECT_EQ(QString(panel.PicRange + panel.RowHeights + PanelProbe::fixed(panel)), u"0:0 :"_s);
    }
}

TEST_F(PasteRange, RecordsRunsOfTheMovingPartAndThenOfTheFixedOne)
{
    sheet = openSheet(u"A1=x"_s, u"1:20=15|2=30|12:13=12.75|20=0"_s, u"A=20|B:C=8.43|D=0|E:F=8.43"_s);
    ASSERT_TRUE(panel.PasteRange(*sheet, u"$C$10:$F$20`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s));
    EXPECT_EQ(panel.RowHeights, u"10:11=15`12:13=12.75`14:19=15`20:20=0`1:1=15`2:2=30`3:3=15"_s);
    EXPECT_EQ(panel.ColWidths, u"C:C=8.43`D:D=0`E:F=8.43`A:A=20`B:B=8.43"_s);

    ASSERT_TRUE(panel.PasteRange(*sheet, u"$C$7`$A$1:$Z$40"_s));
    EXPECT_TRUE(panel.RowHeights.endsWith(u"`3:3=157:7=15"_s)) << "a paste adds to what the panel holds";
}

TEST_F(PasteRange, WarnsBeyond255Characters)
{
    // Thirty rows, no two neighbours alike: 249 characters and the last height.
    for (int row = 1; row <= 29; ++row)
        sheet->setRowHeight(row, row, row % 2 ? 10 : 20);
    for (const auto& [lastHeight, length] : {std::pair(12.125, 255), {12.0625, 256}}) {
        EXPECT_TRUE(prompts.shown.isEmpty());
        sheet->setRowHeight(30, 30, lastHeight);
        clsWorkspacePanel one;
        EXPECT_TRUE(one.PasteRange(*sheet, u"$A$1:$A$30`$A$1:$Z$99"_s));
        EXPECT_EQ(one.RowHeights.size(), length);
    }
    EXPECT_EQ(prompts.shown,
              QStringList(u"Too many different row heights. Some hidden rows may appear in the future."_s));
}

/// Heights of rows 1 to `last` as runs.
QString heights(Worksheet& sheet, int last)
{
    clsWorkspacePanel panel;
    panel.GetHeights(sheet, 1, last);
    return panel.RowHeights;
}

QString widths(Worksheet& sheet, int last)
{
    clsWorkspacePanel panel;
    panel.GetWidths(sheet, 1, last);
    return panel.ColWidths;
}

std::shared_ptr<Worksheet> evenSheet()
{
    return openSheet(u"A1=x|K40=y"_s, u"1:40=15"_s, u"A:K=8.43"_s);
}

QString join(Worksheet& sheet, const QString& picRange, const QString& heightRuns = {}, const QString& widthRuns = {},
             const QString& contentMatch = {})
{
    clsWorkspacePanel panel;
    panel.PicRange = picRange;
    panel.RelativeTo = contentMatch.isEmpty() ? u"top"_s : u"bottom"_s;
    panel.ContentMatch = contentMatch;
    panel.RowHeights = heightRuns;
    panel.ColWidths = widthRuns;
    panel.GetAdjRange(sheet);
    return panel.adjRange(sheet);
}

TEST(JoinedPanes, SqueezeWhatLiesBetweenAndLayTheStoredSizes)
{
    struct Row
    {
        const char *name, *picRange, *heights, *widths; ///< stored
        const char *shown, *heightsAfter, *widthsAfter; ///< of rows 1 to 24 and columns A to H
        const char* match = "";
    };
    const Row rows[] = {
        {"fixed rows are joined to the moving ones", "$B$10:$F$20`1:3`", "", "", "B1:F20", "1:3=15`4:9=0`10:24=15",
         "A:H=8.43"},
        {"what lies in front of the fixed ones goes too", "$F$10:$H$20`2:3`B:C", "", "", "B2:H20",
         "1:1=0`2:3=15`4:9=0`10:24=15", "A:A=0`B:C=8.43`D:E=0`F:H=8.43"},
        {"a gap of one stays", "$D$5:$F$9`1:3`A:B", "", "", "A1:F9", "1:24=15", "A:H=8.43"},
        {"stored sizes prevail", "$B$10:$F$20`1:3`", "10:12=30``6:6=18.5`13:20=0", "B:F=12", "B1:F20",
         "1:3=15`4:5=0`6:6=18.5`7:9=0`10:12=30`13:20=0`21:24=15", "A:A=8.43`B:F=12`G:H=8.43"},
        // The run that begins in the fixed rows stays.
        {"runs behind the fixed rows follow the range", "$C$10:$F$20`1:3`A:A", "13:13=0`3:5=40", "D:D=0`A:C=10",
         "A1:H24", "1:2=15`3:5=40`6:13=0`14:16=15`17:17=0`18:24=15", "A:C=10`D:D=0`E:E=8.43`F:F=0`G:H=8.43",
         "bottom=$I$36"},
        {"without fixed parts sizes stay at their place", "$C$10:$F$20``", "13:13=0", "D:D=0", "E14:H24",
         "1:12=15`13:13=0`14:24=15", "A:C=8.43`D:D=0`E:H=8.43", "bottom=$I$36"},
        {"a key that cannot be applied stops the rest", "$B$10:$F$20``", "10:10=30`A:C=5`12:12=40", "B:B=20", "B10:F20",
         "1:9=15`10:10=30`11:24=15", "A:H=8.43"},
        {"a height that no row can have", "$B$10:$F$20``", "10:10=409.6", "", "B10:F20", "1:24=15", "A:H=8.43"},
        {"a height below nothing", "$B$10:$F$20``", "10:10=-1", "", "B10:F20", "1:24=15", "A:H=8.43"},
    };
    LogCapture log;
    for (const Row& row : rows) {
        const auto sheet = evenSheet();
        EXPECT_EQ(join(*sheet, QString::fromUtf8(row.picRange), QString::fromUtf8(row.heights),
                       QString::fromUtf8(row.widths), QString::fromUtf8(row.match)),
                  QString::fromUtf8(row.shown))
            << row.name;
        EXPECT_EQ(heights(*sheet, 24), QString::fromUtf8(row.heightsAfter)) << row.name;
        EXPECT_EQ(widths(*sheet, 8), QString::fromUtf8(row.widthsAfter)) << row.name;
    }
    ASSERT_EQ(log.entries.size(), 3) << log.entries.join(u'\n');
    EXPECT_EQ(log.entries[0], u"Error clsWorkspacePanel.AdjHeightWidths: (1004) \"A:C\" is not an address of cells on "
                              "sheet \"Data\" of workbook \"Report.xlsx\"."_s);
}

TEST(JoinedPanes, BeyondIVOrSixteenBitsNameTheLimit)
{
    const auto sheet = evenSheet();
    EXPECT_EQ(join(*sheet, u"$IV$5:$IV$9``"_s), u"IV5:IV9"_s);
    EXPECT_TRUE(
        failureOf([&] { join(*sheet, u"$IV$5:$IW$9``"_s); }).text.startsWith(u"Column 257 is beyond column IV"));
    EXPECT_TRUE(
        failureOf([&] { join(*sheet, u"A32767:A32768"_s); }).text.startsWith(u"Row 32,768 is beyond row 32,767"));
    clsWorkspacePanel panel;
    EXPECT_THROW(panel.PasteRange(*sheet, u"$IV$5:$IW$9`$IA$1:$IZ$40"_s), RuntimeError);
    EXPECT_EQ(panel.ColWidths, QString());
}

TEST(JoinedPanes, ReachToTheEndOfLargeSheets)
{
    const LargeSheets unlimited;
    const auto sheet = openSheet(u"XFD40007=x"_s);
    clsWorkspacePanel panel;
    panel.RelativeTo = u"top"_s;
    ASSERT_TRUE(panel.PasteRange(*sheet, u"$XFC$40001:$XFD$40007`$A$1:$B$2`$C$1:$XFD$2`$A$39990:$B$40007`"
                                         "$C$39990:$XFD$40007"_s));
    EXPECT_EQ(panel.PicRange, u"$XFC$40001:$XFD$40007`1:2`A:B"_s);
    EXPECT_TRUE(panel.RowHeights.startsWith(u"40001:40007="_s)) << panel.RowHeights;
    EXPECT_TRUE(panel.ColWidths.startsWith(u"XFC:XFD="_s)) << panel.ColWidths;
    panel.GetAdjRange(*sheet);
    EXPECT_EQ(panel.adjRange(*sheet), u"A1:XFD40007"_s);
    EXPECT_EQ(sheet->rowHeight(3) + sheet->rowHeight(40000) + sheet->columnWidth(3) + sheet->columnWidth(16382), 0);
    EXPECT_GT(sheet->rowHeight(40001) * sheet->columnWidth(16383), 0);
}

} // namespace
