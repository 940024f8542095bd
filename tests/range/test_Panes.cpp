#include "Engines.h"

#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"
#include "session/modMain.h"
#include "support/LogCapture.h"
#include "support/PlainSheet.h"
#include "support/ScriptedPrompts.h"

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

struct PaneRow
{
    const char* name;
    QString rangeDefs;
    QString picRange; ///< empty: refused
    QString fixed;
    QString message = {};
};

class SplittingPanes : public testing::TestWithParam<PaneRow>
{
protected:
    SplittingPanes() { setPrompts(&prompts); }
    ~SplittingPanes() override { setPrompts(nullptr); }
    ScriptedPrompts prompts;
};

TEST_P(SplittingPanes, GivesMovingAndFixedParts)
{
    PlainSheet sheet(u"Data"_s);
    clsWorkspacePanel panel;
    EXPECT_EQ(panel.PasteRange(sheet, GetParam().rangeDefs), !GetParam().picRange.isEmpty());
    EXPECT_EQ(panel.PicRange, GetParam().picRange);
    EXPECT_EQ(PanelProbe::fixed(panel), GetParam().fixed);
    EXPECT_EQ(prompts.shown.join(u'|'), GetParam().message);
    EXPECT_EQ(panel.RowHeights.isEmpty(), GetParam().picRange.isEmpty());
}

const QString nothingSelected =
    u"No range of cells selected in the spreadsheet.  Please select a range and paste again."_s;

const PaneRow paneRows[] = {
    {"no_panes", u"$B$5:$F$20`$A$1:$Z$40"_s, u"$B$5:$F$20``"_s, u"0:0 :"_s},
    {"scrolled_partly_out", u"$B$5:$F$60`$A$10:$D$40"_s, u"$B$10:$D$40``"_s, u"0:0 :"_s},
    {"whole_columns", u"$B:$C`$A$10:$Z$40"_s, u"$B$10:$C$40``"_s, u"0:0 :"_s},
    {"frozen_rows", u"$B$10:$F$20`$A$1:$Z$3`$A$8:$Z$40"_s, u"$B$10:$F$20`1:3`"_s, u"1:3 :"_s},
    {"frozen_columns", u"$D$5:$F$9`$A$1:$B$40`$C$1:$Z$40"_s, u"$D$5:$F$9``A:B"_s, u"0:0 A:B"_s},
    {"frozen_both_ways", u"$D$5:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s, u"$D$5:$F$9`1:3`A:B"_s,
     u"1:3 A:B"_s},
    {"three_panes_fix_nothing", u"$D$5:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$Z$40"_s, u"$D$5:$F$9``"_s, u"0:0 :"_s},
    {"inside_the_frozen_pane",
     u"$A$1:$B$2`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s,
     {},
     u"0:0 :"_s,
     nothingSelected},
    {"columns_in_the_wrong_order",
     u"$A$5:$B$9`$C$1:$Z$40`$A$1:$B$40"_s,
     {},
     u"0:0 :"_s,
     u"The fixed columns must be on the left of the columns in the right pane of the spreadsheet.Please scroll the "
     "sheet so that the left side shows columns on the left of the right pane."_s},
    {"rows_in_the_wrong_order",
     u"$A$5:$B$9`$A$20:$Z$30`$A$1:$Z$19"_s,
     {},
     u"0:0 :"_s,
     u"The fixed rows must be above the rows in the bottom pane of the spreadsheet.Please scroll the sheet so that the "
     "top pane shows rows that are above the lower pane's."_s},
    {"fixed_rows_below_the_selection",
     u"$D$5:$F$9`$A$6:$B$8`$C$6:$Z$8`$A$4:$B$40`$C$4:$Z$40"_s,
     {},
     u"0:0 :"_s,
     u"The fixed rows and columns must be above and to the left of the contents of the bottom pane of the "
     "spreadsheet.Please scroll the sheet to correct the problem."_s},
    {"fixed_rows_begin_below_the_selection_only",
     u"$A$1:$F$9`$A$2:$B$3`$C$2:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s,
     {},
     u"0:0 :"_s,
     u"The fixed rows and columns must be above and to the left of the contents of the bottom pane of the "
     "spreadsheet.Please scroll the sheet to correct the problem."_s},
    // The selection itself is compared, not what of it the free pane shows.
    {"selection_reaches_under_the_fixed_rows", u"$A$1:$F$9`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s,
     u"$C$4:$F$9`1:3`A:B"_s, u"1:3 A:B"_s},
};

INSTANTIATE_TEST_SUITE_P(Windows, SplittingPanes, testing::ValuesIn(paneRows),
                         [](const auto& row) { return row.param.name; });

TEST(PasteRange, RecordsRunsOfTheMovingPartAndThenOfTheFixedOne)
{
    PlainSheet sheet(u"Data"_s);
    sheet.height(u"2:2"_s, 30).height(u"12:13"_s, 12.75).height(u"20:20"_s, 0).width(u"D:D"_s, 0).width(u"A:A"_s, 20);
    clsWorkspacePanel panel;
    ASSERT_TRUE(panel.PasteRange(sheet, u"$C$10:$F$20`$A$1:$B$3`$C$1:$Z$3`$A$4:$B$40`$C$4:$Z$40"_s));
    EXPECT_EQ(panel.RowHeights, u"10:11=15`12:13=12.75`14:19=15`20:20=0`1:1=15`2:2=30`3:3=15"_s);
    EXPECT_EQ(panel.ColWidths, u"C:C=8.43`D:D=0`E:F=8.43`A:A=20`B:B=8.43"_s);

    ASSERT_TRUE(panel.PasteRange(sheet, u"$C$7`$A$1:$Z$40"_s));
    EXPECT_TRUE(panel.RowHeights.endsWith(u"`3:3=157:7=15"_s)) << "a paste adds to what the panel holds";
}

/// The heights text of a paste of thirty rows, no two neighbours alike; 249 characters and the last height.
QString heightsText(ScriptedPrompts& prompts, double lastHeight)
{
    PlainSheet sheet(u"Data"_s);
    for (int row = 1; row <= 30; ++row)
        sheet.height(QString::number(row), row == 30 ? lastHeight : row % 2 ? 10 : 20);
    setPrompts(&prompts);
    clsWorkspacePanel panel;
    EXPECT_TRUE(panel.PasteRange(sheet, u"$A$1:$A$30`$A$1:$Z$99"_s));
    setPrompts(nullptr);
    return panel.RowHeights;
}

TEST(PasteRange, WarnsBeyond255Characters)
{
    ScriptedPrompts prompts;
    EXPECT_EQ(heightsText(prompts, 12.125).size(), 255);
    EXPECT_TRUE(prompts.shown.isEmpty());
    EXPECT_EQ(heightsText(prompts, 12.0625).size(), 256);
    EXPECT_EQ(prompts.shown,
              QStringList(u"Too many different row heights. Some hidden rows may appear in the future."_s));
}

class PanesOnEngine : public testing::TestWithParam<Engine>
{
};

INSTANTIATE_TEST_SUITE_P(Engines, PanesOnEngine, testing::ValuesIn(engines, engines + engineCount),
                         [](const auto& engine) { return engine.param.name; });

/// Heights of rows 1 to `last` as runs.
QString heights(Worksheet& sheet, int last)
{
    clsWorkspacePanel panel;
    panel.GetHeights(sheet, 1, static_cast<qint16>(last));
    return panel.RowHeights;
}

QString widths(Worksheet& sheet, int last)
{
    clsWorkspacePanel panel;
    panel.GetWidths(sheet, 1, static_cast<qint16>(last));
    return panel.ColWidths;
}

QString join(Worksheet& sheet, const QString& picRange, const QString& heightRuns = {}, const QString& widthRuns = {})
{
    clsWorkspacePanel panel;
    panel.PicRange = picRange;
    panel.RowHeights = heightRuns;
    panel.ColWidths = widthRuns;
    panel.GetAdjRange(sheet);
    return panel.adjRange(sheet);
}

const Grid evenGrid{{u"A1=x"_s, u"K40=y"_s}, {u"1:40=15"_s}, {u"A:K=8.43"_s}};

TEST_P(PanesOnEngine, FixedRowsAreJoinedToTheMovingOnes)
{
    const auto sheet = GetParam().open(evenGrid);
    EXPECT_EQ(join(*sheet, u"$B$10:$F$20`1:3`"_s), u"B1:F20"_s);
    EXPECT_EQ(heights(*sheet, 20), u"1:3=15`4:9=0`10:20=15"_s);
    EXPECT_EQ(widths(*sheet, 8), u"A:H=8.43"_s);
}

TEST_P(PanesOnEngine, RowsAndColumnsInFrontOfTheFixedOnesGoToo)
{
    const auto sheet = GetParam().open(evenGrid);
    EXPECT_EQ(join(*sheet, u"$F$10:$H$20`2:3`B:C"_s), u"B2:H20"_s);
    EXPECT_EQ(heights(*sheet, 20), u"1:1=0`2:3=15`4:9=0`10:20=15"_s);
    EXPECT_EQ(widths(*sheet, 8), u"A:A=0`B:C=8.43`D:E=0`F:H=8.43"_s);
}

TEST_P(PanesOnEngine, AGapOfOneStays)
{
    const auto sheet = GetParam().open(evenGrid);
    EXPECT_EQ(join(*sheet, u"$D$5:$F$9`1:3`A:B"_s), u"A1:F9"_s);
    EXPECT_EQ(heights(*sheet, 9), u"1:9=15"_s);
    EXPECT_EQ(widths(*sheet, 6), u"A:F=8.43"_s);
}

TEST_P(PanesOnEngine, ARangeBeyondIVFailsInsteadOfShowingWholeRows)
{
    const auto sheet = GetParam().open(evenGrid);
    EXPECT_EQ(join(*sheet, u"$IV$5:$IV$9``"_s), u"IV5:IV9"_s);
    EXPECT_THROW(join(*sheet, u"$IW$5:$IX$9``"_s), RuntimeError);
    EXPECT_EQ(join(*sheet, u"$IV$5:$IW$9``"_s), u"IV5:9"_s) << "an address that nothing accepts";
    EXPECT_THROW(join(*sheet, u"$A$32767:$A$32768``"_s), RuntimeError);

    clsWorkspacePanel panel;
    EXPECT_THROW(panel.PasteRange(*sheet, u"$IV$5:$IW$9`$IA$1:$IZ$40"_s), RuntimeError);
    EXPECT_EQ(panel.ColWidths, QString());
}

TEST_P(PanesOnEngine, StoredSizesPrevailOverTheSqueezing)
{
    const auto sheet = GetParam().open(evenGrid);
    EXPECT_EQ(join(*sheet, u"$B$10:$F$20`1:3`"_s, u"10:12=30``6:6=18.5`13:20=0"_s, u"B:F=12"_s), u"B1:F20"_s);
    EXPECT_EQ(heights(*sheet, 20), u"1:3=15`4:5=0`6:6=18.5`7:9=0`10:12=30`13:20=0"_s);
    EXPECT_EQ(widths(*sheet, 7), u"A:A=8.43`B:F=12`G:G=8.43"_s);
}

TEST_P(PanesOnEngine, RunsBehindTheFixedRowsFollowTheRange)
{
    const auto sheet = GetParam().open(evenGrid);
    clsWorkspacePanel panel;
    panel.PicRange = u"$C$10:$F$20`1:3`A:A"_s;
    panel.RelativeTo = u"bottom"_s;
    panel.ContentMatch = u"bottom=$I$36"_s;
    panel.RowHeights = u"13:13=0`3:5=40"_s; // the second begins in the fixed rows, and stays
    panel.ColWidths = u"D:D=0`A:C=10"_s;
    panel.GetAdjRange(*sheet);
    EXPECT_EQ(panel.adjRange(*sheet), u"A1:H24"_s);
    EXPECT_EQ(heights(*sheet, 24), u"1:2=15`3:5=40`6:13=0`14:16=15`17:17=0`18:24=15"_s);
    EXPECT_EQ(widths(*sheet, 8), u"A:C=10`D:D=0`E:E=8.43`F:F=0`G:H=8.43"_s);
}

TEST_P(PanesOnEngine, WithoutFixedPartsSizesAreLaidAtTheirStoredPlace)
{
    const auto sheet = GetParam().open(evenGrid);
    clsWorkspacePanel panel;
    panel.PicRange = u"$C$10:$F$20``"_s;
    panel.RelativeTo = u"bottom"_s;
    panel.ContentMatch = u"bottom=$I$36"_s;
    panel.RowHeights = u"13:13=0"_s;
    panel.ColWidths = u"D:D=0"_s;
    panel.GetAdjRange(*sheet);
    EXPECT_EQ(panel.adjRange(*sheet), u"E14:H24"_s);
    EXPECT_EQ(heights(*sheet, 24), u"1:12=15`13:13=0`14:24=15"_s);
    EXPECT_EQ(widths(*sheet, 8), u"A:C=8.43`D:D=0`E:H=8.43"_s);
}

TEST_P(PanesOnEngine, AKeyThatCannotBeAppliedStopsTheRest)
{
    const auto sheet = GetParam().open(evenGrid);
    LogCapture log;
    EXPECT_EQ(join(*sheet, u"$B$10:$F$20``"_s, u"10:10=30`A:C=5`12:12=40"_s, u"B:B=20"_s), u"B10:F20"_s);
    EXPECT_EQ(heights(*sheet, 20), u"1:9=15`10:10=30`11:20=15"_s);
    EXPECT_EQ(widths(*sheet, 3), u"A:C=8.43"_s);
    EXPECT_EQ(log.entries, QStringList(u"Error clsWorkspacePanel.AdjHeightWidths: (1004) \"A:C\" is not an address of "
                                       "cells on sheet \"Data\" of workbook \"Report.xlsx\"."_s));
}

TEST_P(PanesOnEngine, AHostileHeightIsRefused)
{
    for (const QString& size : {u"1e308"_s, u"-1"_s, u"409.6"_s}) {
        const auto sheet = GetParam().open(evenGrid);
        LogCapture log;
        join(*sheet, u"$B$10:$F$20``"_s, u"10:10="_s + size);
        EXPECT_EQ(heights(*sheet, 20), u"1:20=15"_s) << size.toStdString();
        EXPECT_EQ(log.entries.size(), 1) << size.toStdString();
    }
}

} // namespace
