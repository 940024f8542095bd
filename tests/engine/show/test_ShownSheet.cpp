#include "engine/draw/SheetBuilder.h"
#include "engine/show/ShownSheet.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

TEST(ShownSheet, TellsShownAndPlainTextOfEveryKind)
{
    SheetBuilder made;
    made.number(1, 1, 1234.5, made.formatStyle(u"#,##0.00"_s))
        .number(1, 2, 1.0 / 3)
        .text(1, 3, u"abc"_s, made.formatStyle(u"\"<\"@\">\""_s))
        .boolean(1, 4, true)
        .error(1, 5, ErrorCode::NA)
        .blank(1, 6, 0)
        .number(1, 7, 45296, made.formatStyle(u"yyyy-mm-dd"_s))
        .number(1, 8, -1, made.formatStyle(u"yyyy-mm-dd"_s));
    const auto texts = made.shown();
    int column = 0;
    for (const auto& [shown, plain] : test::textPairs(R"(
        1,234.50 → 1234.5 | 0.333333333333333 → 0.333333333333333 | <abc> → abc | TRUE → TRUE | #N/A → #N/A | →
        2024-01-05 → 45296 | ######## → -1)")) {
        const Cell* cell = made.content()->find(1, ++column);
        EXPECT_EQ(texts->shown(1, *cell), shown) << "column " << column;
        EXPECT_EQ(texts->plain(*cell), plain) << "column " << column;
    }
}

TEST(ShownSheet, ReadsTextsOfTheSheetItself)
{
    SheetBuilder made;
    made.sheet().texts.append("of the sheet");
    Cell own;
    own.kind = CellKind::SheetText;
    EXPECT_EQ(made.text(1, 1, u"of the workbook"_s).shown()->shown(1, own), u"of the sheet"_s);
}

TEST(ShownSheet, SurvivesIndexesOutsideTheTables)
{
    SheetBuilder made;
    made.number(1, 1, 5, made.style({.numberFormat = 99})).number(1, 2, 6, 77);
    Cell lost;
    lost.kind = CellKind::Text;
    lost.text = 1000000;
    const auto texts = made.shown();
    EXPECT_EQ(texts->shown(1, *made.content()->find(1, 1)), u"5"_s);
    EXPECT_EQ(texts->shown(1, *made.content()->find(1, 2)), u"6"_s);
    EXPECT_EQ(texts->shown(1, lost), QString());
}

TEST(ShownSheet, CountsDatesFromTheWorkbooksDay)
{
    SheetBuilder made;
    made.setDate1904();
    made.number(1, 1, 43834, made.formatStyle(u"yyyy-mm-dd"_s));
    EXPECT_EQ(made.shown()->shown(1, *made.content()->find(1, 1)), u"2024-01-05"_s);
}

} // namespace
} // namespace lumivane::engine
