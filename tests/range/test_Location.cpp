#include "Engines.h"

#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

template <class Row>
std::string rowName(const testing::TestParamInfo<std::tuple<Engine, Row>>& info)
{
    return std::string(std::get<1>(info.param).name) + "_" + std::get<0>(info.param).name;
}

/// Rows of a table are named after their case.
template <class Row>
requires requires(const Row& row)
{
    row.contentMatch;
}
void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

struct MatchRow
{
    const char* name;
    QString text;
    QString bottom, anchor, content; ///< "kept" stands for what the caller passed
};

class ContentMatchText : public testing::TestWithParam<MatchRow>
{
};

TEST_P(ContentMatchText, IsReadClauseByClause)
{
    clsWorkspacePanel panel;
    panel.ContentMatch = GetParam().text;
    QString bottom = u"kept"_s, anchor = u"kept"_s, content = u"kept"_s;
    panel.parseContentMatch(bottom, anchor, content);
    EXPECT_EQ(bottom, GetParam().bottom);
    EXPECT_EQ(anchor, GetParam().anchor);
    EXPECT_EQ(content, GetParam().content);
}

const MatchRow matchRows[] = {
    {"all_three", u"bottom=$H$40`anchor=$C5`content=Total sales"_s, u"$H$40"_s, u"$C5"_s, u"Total sales"_s},
    {"empty_clauses", u"bottom=`anchor=`content="_s, u""_s, u""_s, u""_s},
    {"bottom_alone", u"bottom=$H$40"_s, u"$H$40"_s, u"kept"_s, u"kept"_s},
    {"nothing", u""_s, u""_s, u"kept"_s, u"kept"_s},
    {"keywords_in_capitals", u"BOTTOM=$A$1`Anchor=$C5`CONTENT=x"_s, u"$A$1"_s, u"$C5"_s, u"x"_s},
    {"anchor_without_an_end", u"bottom=$A$1`anchor=$C5"_s, u"$A$1"_s, u"kept"_s, u"kept"_s},
    {"no_content_clause", u"bottom=$A$1`anchor=$C5`"_s, u"$A$1"_s, u""_s, u""_s},
    {"back_quote_in_the_value", u"bottom=`anchor=$C5`content=a`b"_s, u""_s, u"$C5"_s, u"a`b"_s},
    {"keyword_in_the_value", u"bottom=`anchor=$C5`content=a content=b"_s, u""_s, u"$C5"_s, u"a content=b"_s},
    {"no_bottom_clause", u"anchor=C$5`content=x"_s, u""_s, u"C$5"_s, u"x"_s},
};

INSTANTIATE_TEST_SUITE_P(Texts, ContentMatchText, testing::ValuesIn(matchRows),
                         [](const auto& row) { return row.param.name; });

struct LocateRow
{
    const char* name;
    QString picRange, relativeTo, contentMatch;
    QString cells; ///< as in a Grid, separated by "|"
    QString found; ///< a number alone: that failure
    int rowOffset = 0, columnOffset = 0;
    QString newCell = {};
};

class Locating : public testing::TestWithParam<std::tuple<Engine, LocateRow>>
{
};

TEST_P(Locating, FindsTheRangeOfThisVersion)
{
    const auto& [engine, row] = GetParam();
    const auto sheet = engine.open({row.cells.split(u'|', Qt::SkipEmptyParts), {}, {}});
    clsWorkspacePanel panel;
    panel.PicRange = row.picRange;
    panel.RelativeTo = row.relativeTo;
    panel.ContentMatch = row.contentMatch;
    QString found;
    try {
        panel.GetAdjRange(*sheet);
        found = panel.adjMovRange();
    } catch (const RuntimeError& failure) {
        found = QString::number(failure.number());
    }
    EXPECT_EQ(found, row.found);
    EXPECT_EQ(panel.rowOffset(), row.rowOffset);
    EXPECT_EQ(panel.columnOffset(), row.columnOffset);
    EXPECT_EQ(panel.NewCell, row.newCell);
    EXPECT_EQ(panel.PicRange, row.picRange) << "locating leaves the stored definition alone";
}

QString contents(const QString& anchor, const QString& value)
{
    return u"bottom=`anchor=%1`content=%2"_s.arg(anchor, value);
}

const LocateRow locateRows[] = {
    {"top_stays", u"$B$5:$F$20``"_s, u"top"_s, u"bottom=$H$40"_s, u"H52=x"_s, u"$B$5:$F$20"_s},
    {"unknown_rule_stays", u"$B$5:$F$20``"_s, u"Bottom"_s, u"bottom=$H$40"_s, u"H52=x"_s, u"$B$5:$F$20"_s},

    {"bottom_follows_growth", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s, u"H52=x"_s, u"B17:F32"_s, 12},
    {"bottom_follows_crossing", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s, u"A41=x|J1=y"_s, u"D6:H21"_s, 1, 2},
    {"bottom_clamps_at_the_top", u"C3:D4"_s, u"bottom"_s, u"bottom=$H$40"_s, u"H35=x"_s, u"C1:D2"_s, -2},
    {"bottom_single_cell", u"$B$5``"_s, u"bottom"_s, u"bottom=$B$5"_s, u"B6=x"_s, u"B6:B6"_s, 1},
    {"bottom_unknown_stays", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom="_s, u"H52=x"_s, u"B5:F20"_s},
    {"bottom_of_one_character_stays", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=H"_s, u"H52=x"_s, u"B5:F20"_s},
    {"bottom_of_an_empty_sheet", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s, u""_s, u"1004"_s},

    {"column_search", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s), u"C9=Total"_s, u"C9:H24"_s, 4, 0,
     u"$C9"_s},
    {"column_search_without_case", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"TOTAL"_s), u"C9=Total"_s,
     u"C9:H24"_s, 4, 0, u"$C9"_s},
    {"column_search_wraps_to_its_first_cell", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s),
     u"C1=Total|C30=x"_s, u"C1:H16"_s, -4, 0, u"$C1"_s},
    {"column_search_takes_the_first_cell_last", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s),
     u"C1=Total|C9=Total"_s, u"C9:H24"_s, 4, 0, u"$C9"_s},
    {"column_search_ignores_other_columns", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s),
     u"D9=Total"_s, u"$C$5:$H$20"_s, 0, 0, u"$C5"_s},
    {"whole_text_only", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s), u"C9=Total sales"_s,
     u"$C$5:$H$20"_s, 0, 0, u"$C5"_s},
    {"no_wild_cards", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u"T*"_s), u"C9=Total"_s, u"$C$5:$H$20"_s, 0,
     0, u"$C5"_s},
    {"number", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"2026"_s), u"C8=20260|C9=2026"_s, u"C9:H24"_s, 4, 0,
     u"$C9"_s},
    {"number_with_decimals", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"0.1"_s), u"C9=0.1"_s, u"C9:H24"_s, 4, 0,
     u"$C9"_s},
    {"value_of_another_script", u"C5:H20``"_s, u"contents"_s, contents(u"$C5"_s, u"\u00dcBERSCHUSS"_s),
     u"C9=\u00dcberschuss"_s, u"C9:H24"_s, 4, 0, u"$C9"_s},
    {"beyond_16_bits", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s), u"C32768=Total"_s,
     u"$C$5:$H$20"_s, 0, 0, u"$C5"_s},

    {"row_search", u"C5:D6``"_s, u"contents"_s, contents(u"C$5"_s, u"Total"_s), u"C9=Total|F5=Total"_s, u"F5:G6"_s, 0,
     3, u"F$5"_s},
    {"row_search_takes_column_A_last", u"C5:D6``"_s, u"contents"_s, contents(u"C$5"_s, u"Total"_s),
     u"A5=Total|F5=Total"_s, u"F5:G6"_s, 0, 3, u"F$5"_s},
    {"row_search_beyond_the_letters", u"$C$5:$D$6``"_s, u"contents"_s, contents(u"C$5"_s, u"Total"_s), u"IW5=Total"_s,
     u"$C$5:$D$6"_s, 0, 0, u"C$5"_s},

    {"free_search_fixes_the_row", u"C5:D6``"_s, u"contents"_s, contents(u"C5"_s, u"Total"_s), u"F7=Total"_s, u"F7:G8"_s,
     2, 3, u"F$7"_s},
    {"free_search_crosses_two_hits", u"C5:D6``"_s, u"contents"_s, contents(u"C5"_s, u"Total"_s), u"F7=Total|B9=Total"_s,
     u"B7:C8"_s, 2, -1, u"B$7"_s},
    {"free_search_takes_A1_last", u"C5:D6``"_s, u"contents"_s, contents(u"C5"_s, u"Total"_s), u"A1=Total|F7=Total"_s,
     u"F7:G8"_s, 2, 3, u"F$7"_s},

    {"both_fixed_searches_nothing", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C$5"_s, u"Total"_s), u"C9=Total"_s,
     u"$C$5:$H$20"_s},
    {"anchor_too_short", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"C"_s, u"Total"_s), u"C9=Total"_s, u"$C$5:$H$20"_s,
     0, 0, u"C"_s},
    {"anchor_that_is_no_cell", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"?5"_s, u"Total"_s), u"C9=Total"_s,
     u"$C$5:$H$20"_s, 0, 0, u"?5"_s},
    {"no_value", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u""_s), u"C9=Total"_s, u"$C$5:$H$20"_s, 0, 0,
     u"$C5"_s},
    {"no_anchor_clause", u"$C$5:$H$20``"_s, u"contents"_s, u"bottom=$A$1"_s, u"C9=Total"_s, u"$C$5:$H$20"_s},
    {"empty_sheet", u"$C$5:$H$20``"_s, u"contents"_s, contents(u"$C5"_s, u"Total"_s), u""_s, u"$C$5:$H$20"_s, 0, 0,
     u"$C5"_s},
};

INSTANTIATE_TEST_SUITE_P(Rules, Locating,
                         testing::Combine(testing::ValuesIn(engines, engines + engineCount),
                                          testing::ValuesIn(locateRows)),
                         rowName<LocateRow>);

struct AdjustRow
{
    const char* name;
    QString picRange, relativeTo, contentMatch, heights, widths;
    QString cells; ///< as in a Grid, separated by "|"
    QString newPicRange, newContentMatch, newHeights, newWidths;
};

class Adjusting : public testing::TestWithParam<std::tuple<Engine, AdjustRow>>
{
};

TEST_P(Adjusting, MakesThePlaceFoundTheStoredOne)
{
    const auto& [engine, row] = GetParam();
    const auto sheet = engine.open({row.cells.split(u'|', Qt::SkipEmptyParts), {}, {}});
    clsWorkspacePanel panel;
    panel.PicRange = row.picRange;
    panel.RelativeTo = row.relativeTo;
    panel.ContentMatch = row.contentMatch;
    panel.RowHeights = row.heights;
    panel.ColWidths = row.widths;
    panel.AdjustAll(*sheet);
    EXPECT_EQ(panel.PicRange, row.newPicRange);
    EXPECT_EQ(panel.ContentMatch, row.newContentMatch);
    EXPECT_EQ(panel.RowHeights, row.newHeights);
    EXPECT_EQ(panel.ColWidths, row.newWidths);
}

const AdjustRow adjustRows[] = {
    {"top_keeps_the_range_and_drops_the_rest", u"$B$5:$F$20``"_s, u"top"_s, u"bottom=$H$40`anchor=$C5`content=x"_s,
     u"5:20=15"_s, u"B:F=8.43"_s, u"H52=y"_s, u"$B$5:$F$20``"_s, u"bottom=`anchor=`content="_s, u"5:20=15"_s,
     u"B:F=8.43"_s},
    {"bottom_without_fixed_rows_keeps_row_keys", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s,
     u"5:12=15`13:20=0"_s, u"B:F=8.43"_s, u"J52=y"_s, u"D17:H32``"_s, u"bottom=$J$52`anchor=`content="_s,
     u"5:12=15`13:20=0"_s, u"D:H=8.43"_s},
    {"fixed_parts_stay_and_moving_runs_follow", u"$C$5:$F$20`1:3`A:A"_s, u"bottom"_s, u"bottom=$H$40"_s,
     u"5:12=15`13:20=0`1:3=20"_s, u"C:F=8.43`A:A=10"_s, u"I44=y"_s, u"D9:G24`1:3`A:A"_s,
     u"bottom=$I$44`anchor=`content="_s, u"9:16=15`17:24=0`1:3=20"_s, u"D:G=8.43`A:A=10"_s},
    {"run_from_the_fixed_rows_outwards_is_fixed", u"$C$5:$F$20`1:3`"_s, u"bottom"_s, u"bottom=$H$40"_s, u"3:6=15"_s,
     u""_s, u"H44=y"_s, u"C9:F24`1:3`"_s, u"bottom=$H$44`anchor=`content="_s, u"3:6=15"_s, u""_s},
    {"unmoved_row_keys_are_written_anew", u"$C$5:$F$20``"_s, u"top"_s, u""_s, u"20:5=15"_s, u"F:C=9"_s, u""_s,
     u"$C$5:$F$20``"_s, u"bottom=`anchor=`content="_s, u"5:20=15"_s, u"F:C=9"_s},
    {"anchor_moves_on", u"C5:H20``"_s, u"contents"_s, u"bottom=$H$40`anchor=$C5`content=To`tal"_s, u""_s, u""_s,
     u"C9=To`tal"_s, u"C9:H24``"_s, u"bottom=`anchor=$C9`content=To`tal"_s, u""_s, u""_s},
    {"anchor_not_found_is_remembered", u"$C$5:$H$20`1:2`"_s, u"contents"_s, u"bottom=`anchor=$C5`content=Total"_s,
     u"5:20=15"_s, u""_s, u"D9=Total"_s, u"$C$5:$H$20`1:2`"_s, u"bottom=`anchor=$C5`content=Total"_s, u"5:20=15"_s,
     u""_s},
    {"anchor_fixed_both_ways_is_lost", u"$C$5:$H$20``"_s, u"contents"_s, u"bottom=`anchor=$C$5`content=Total"_s, u""_s,
     u""_s, u"C9=Total"_s, u"$C$5:$H$20``"_s, u"bottom=`anchor=`content=Total"_s, u""_s, u""_s},
    {"sheet_without_contents_loses_the_range", u"$B$5:$F$20`1:2`A:B"_s, u"bottom"_s, u"bottom=$H$40"_s, u"5:20=15"_s,
     u"B:F=9"_s, u""_s, u"`1:2`A:B"_s, u"bottom=`anchor=`content="_s, u"5:20=15"_s, u"B:F=9"_s},
    {"broken_run_leaves_heights_and_widths", u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s, u"5:12=15`13"_s,
     u"B:F=9"_s, u"J52=y"_s, u"D17:H32``"_s, u"bottom=$J$52`anchor=`content="_s, u"5:12=15`13"_s, u"B:F=9"_s},
};

INSTANTIATE_TEST_SUITE_P(Rules, Adjusting,
                         testing::Combine(testing::ValuesIn(engines, engines + engineCount),
                                          testing::ValuesIn(adjustRows)),
                         rowName<AdjustRow>);

class LocationOnEngine : public testing::TestWithParam<Engine>
{
};

INSTANTIATE_TEST_SUITE_P(Engines, LocationOnEngine, testing::ValuesIn(engines, engines + engineCount),
                         [](const auto& engine) { return engine.param.name; });

TEST_P(LocationOnEngine, ARangeMeasuredTwiceCountsFromTheStoredDefinition)
{
    clsWorkspacePanel panel;
    panel.PicRange = u"$B$5:$F$20``"_s;
    panel.RelativeTo = u"bottom"_s;
    panel.ContentMatch = u"bottom=$H$40"_s;
    panel.GetAdjRange(*GetParam().open({{u"H52=x"_s}, {}, {}}));
    panel.GetAdjRange(*GetParam().open({{u"H41=x"_s}, {}, {}}));
    EXPECT_EQ(panel.adjMovRange(), u"B6:F21"_s);
    EXPECT_EQ(panel.rowOffset(), 1);

    panel.RelativeTo = u"top"_s;
    panel.GetAdjRange(*GetParam().open({{u"H52=x"_s}, {}, {}}));
    EXPECT_EQ(panel.rowOffset(), 0) << "what an earlier version moved is forgotten";
}

TEST_P(LocationOnEngine, AnAnchorIsKeptUnderItsRuleOnly)
{
    clsWorkspacePanel panel;
    panel.PicRange = u"$B$5:$F$20``"_s;
    panel.RelativeTo = u"top"_s;
    panel.NewCell = u"$C9"_s;
    panel.Content = u"Total"_s;
    panel.AdjustAll(*GetParam().open({{u"C9=Total"_s}, {}, {}}));
    EXPECT_EQ(panel.ContentMatch, u"bottom=`anchor=`content=Total"_s);
}

TEST_P(LocationOnEngine, TheAnchorIsTheFirstVisibleCellWithAValue)
{
    const auto sheet = GetParam().open(
        {{u"B5=hidden row"_s, u"B6=hidden column"_s, u"D7=later"_s, u"E6=further right"_s, u"D6=Sales"_s},
         {u"5=0"_s},
         {u"B=0"_s}});
    clsWorkspacePanel panel;
    panel.pAdjMovRange = u"B5:F20"_s;
    panel.anchorRows = true;
    panel.SetAnchorDefaults(*sheet);
    EXPECT_EQ(panel.NewCell, u"$D$6"_s);
    EXPECT_EQ(panel.Content, u"Sales"_s);
    EXPECT_TRUE(panel.anchorCols);
    EXPECT_FALSE(panel.anchorRows);
}

TEST_P(LocationOnEngine, WithoutAnyValueTheAnchorStaysAsItWas)
{
    const auto sheet = GetParam().open({{u"A1=outside"_s, u"H9=outside"_s}, {}, {}});
    LogCapture log;
    clsWorkspacePanel panel;
    panel.NewCell = u"$C5"_s;
    panel.Content = u"Total"_s;
    panel.pAdjMovRange = u"B2:F5"_s;
    panel.SetAnchorDefaults(*sheet);
    EXPECT_TRUE(log.entries.isEmpty());
    panel.pAdjMovRange.clear();
    panel.SetAnchorDefaults(*sheet);
    EXPECT_EQ(panel.NewCell, u"$C5"_s);
    EXPECT_EQ(panel.Content, u"Total"_s);
    EXPECT_EQ(log.entries, QStringList(u"Error clsWorkspacePanel.SetAnchorDefaults: (1004) \"\" is not an address of "
                                       "cells on sheet \"Data\" of workbook \"Report.xlsx\"."_s));
}

} // namespace
