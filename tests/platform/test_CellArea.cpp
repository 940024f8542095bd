#include "platform/CellArea.h"

#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

TEST(CellArea, ReadsAddressesAndGivesBothForms)
{
    for (const auto& [name, address, absolute, relative] : textTable<4>(R"(
        cell                 | C5             | $C$5          | C5
        column fixed         | $C5            | $C$5          | C5
        row fixed            | C$5            | $C$5          | C5
        small letters        | xfd1048576     | $XFD$1048576  | XFD1048576
        rectangle            | C5:H20         | $C$5:$H$20    | C5:H20
        one cell named twice | B6:B6          | $B$6          | B6
        corners crosswise    | H5:C20         | $C$5:$H$20    | C5:H20
        rows                 | $12:5          | $5:$12        | 5:12
        columns              | A:$C           | $A:$C         | A:C
        all cells            | A1:XFD1048576  | $1:$1048576   | 1:1048576)")) {
        const auto area = CellArea::parse(address);
        ASSERT_TRUE(area) << name;
        EXPECT_EQ(area->absolute(), absolute) << name;
        EXPECT_EQ(area->relative(), relative) << name;
    }
}

TEST(CellArea, RefusesWhatIsNoAddress)
{
    // The last one begins with a letter of another script.
    for (const QString& address : textList(R"(
        | 5 | C | A0 | A1048577 | A4294967297 | XFE1 | AAAAAAAAAAAAAAAA1 | C5:12 | C5:H | C5: | :C5 | :32 | C$
        A1:B2:C3 | $$C5 | C 5 | 5C | Data!C5 | С5)"))
        EXPECT_FALSE(CellArea::parse(address)) << address;
}

TEST(CellArea, LettersEndWithTheGrid)
{
    for (const auto& [number, letters] :
         textPairs("26 → Z | 27 → AA | 702 → ZZ | 703 → AAA | 16384 → XFD | 16385 → | 0 →"))
        EXPECT_EQ(columnLetters(number.toInt()), letters);
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
