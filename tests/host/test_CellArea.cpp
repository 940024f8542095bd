#include "host/CellArea.h"

#include "support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

struct ReadRow
{
    const char* name;
    QString address;
    QString absolute; ///< empty: refused
    QString relative;
};

class ReadingAddresses : public testing::TestWithParam<ReadRow>
{
};

TEST_P(ReadingAddresses, GivesBothForms)
{
    const auto area = CellArea::parse(GetParam().address);
    ASSERT_EQ(area.has_value(), !GetParam().absolute.isEmpty());
    if (!area)
        return;
    EXPECT_EQ(area->absolute(), GetParam().absolute);
    EXPECT_EQ(area->relative(), GetParam().relative);
}

const ReadRow readRows[] = {
    {"cell", u"C5"_s, u"$C$5"_s, u"C5"_s},
    {"absolute_cell", u"$C$5"_s, u"$C$5"_s, u"C5"_s},
    {"column_fixed", u"$C5"_s, u"$C$5"_s, u"C5"_s},
    {"row_fixed", u"C$5"_s, u"$C$5"_s, u"C5"_s},
    {"small_letters", u"xfd1048576"_s, u"$XFD$1048576"_s, u"XFD1048576"_s},
    {"rectangle", u"C5:H20"_s, u"$C$5:$H$20"_s, u"C5:H20"_s},
    {"one_cell_named_twice", u"B6:B6"_s, u"$B$6"_s, u"B6"_s},
    {"corners_bottom_up", u"H20:C5"_s, u"$C$5:$H$20"_s, u"C5:H20"_s},
    {"corners_crosswise", u"H5:C20"_s, u"$C$5:$H$20"_s, u"C5:H20"_s},
    {"rows", u"12:5"_s, u"$5:$12"_s, u"5:12"_s},
    {"absolute_rows", u"$5:$12"_s, u"$5:$12"_s, u"5:12"_s},
    {"columns", u"A:C"_s, u"$A:$C"_s, u"A:C"_s},
    {"absolute_columns", u"$A:$C"_s, u"$A:$C"_s, u"A:C"_s},
    {"all_cells", u"A1:XFD1048576"_s, u"$1:$1048576"_s, u"1:1048576"_s},
    {"empty", u""_s, {}, {}},
    {"row_alone", u"5"_s, {}, {}},
    {"column_alone", u"C"_s, {}, {}},
    {"row_zero", u"A0"_s, {}, {}},
    {"row_beyond", u"A1048577"_s, {}, {}},
    {"row_that_would_wrap", u"A4294967297"_s, {}, {}},
    {"column_beyond", u"XFE1"_s, {}, {}},
    {"letters_without_end", u"AAAAAAAAAAAAAAAA1"_s, {}, {}},
    {"cell_to_row", u"C5:12"_s, {}, {}},
    {"cell_to_column", u"C5:H"_s, {}, {}},
    {"no_second_corner", u"C5:"_s, {}, {}},
    {"no_first_corner", u":C5"_s, {}, {}},
    {"no_letters_on_one_side", u":32"_s, {}, {}},
    {"three_corners", u"A1:B2:C3"_s, {}, {}},
    {"sign_doubled", u"$$C5"_s, {}, {}},
    {"sign_at_end", u"C$"_s, {}, {}},
    {"blank_inside", u"C 5"_s, {}, {}},
    {"row_before_column", u"5C"_s, {}, {}},
    {"sheet_in_front", u"Data!C5"_s, {}, {}},
    {"letter_of_another_script",
     u"\u0421"
     u"5"_s,
     {},
     {}},
};

INSTANTIATE_TEST_SUITE_P(Addresses, ReadingAddresses, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(CellArea, LettersEndWithTheGrid)
{
    EXPECT_EQ(columnLetters(26), u"Z"_s);
    EXPECT_EQ(columnLetters(27), u"AA"_s);
    EXPECT_EQ(columnLetters(702), u"ZZ"_s);
    EXPECT_EQ(columnLetters(703), u"AAA"_s);
    EXPECT_EQ(columnLetters(maxColumn), u"XFD"_s);
    EXPECT_EQ(columnLetters(maxColumn + 1), QString());
    EXPECT_EQ(columnLetters(0), QString());
}

TEST(CellArea, AreasThatOnlyTouchHaveNothingInCommon)
{
    const CellArea left = *CellArea::parse(u"A1:B5");
    EXPECT_EQ(intersect(left, *CellArea::parse(u"B5:D9"))->relative(), u"B5"_s);
    EXPECT_FALSE(intersect(left, *CellArea::parse(u"C1:D5")));
    EXPECT_FALSE(intersect(left, *CellArea::parse(u"A6:B9")));
    EXPECT_EQ(intersect(left, *CellArea::parse(u"2:3"))->relative(), u"A2:B3"_s);
}

} // namespace
