#include "support/PlainSheet.h"
#include "support/ThrownError.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

TEST(Worksheet, RefusalsNameThePlace)
{
    PlainSheet sheet(u"Data"_s, u"Report.xlsx"_s);
    const QString noAddress = u"\"%1\" is not an address of cells on sheet \"Data\" of workbook \"Report.xlsx\"."_s;
    EXPECT_EQ(failureOf([&] { sheet.Range(u""_s); }).text, noAddress.arg(u""_s));
    EXPECT_EQ(failureOf([&] { sheet.Range(u"B17:32"_s); }).text, noAddress.arg(u"B17:32"_s));
    EXPECT_EQ(failureOf([&] { sheet.Cells(0, 1); }).text, noAddress.arg(u"row 0, column 1"_s));
    EXPECT_EQ(failureOf([&] { sheet.Rows(u"A:C"_s); }).number, 1004);
    EXPECT_EQ(failureOf([&] { sheet.Columns(u"5:12"_s); }).number, 1004);
    EXPECT_EQ(
        failureOf([&] { sheet.Rows(u"5"_s).setRowHeight(410); }).text,
        u"A row height of 410 cannot be set for $5:$5 on sheet \"Data\" of workbook \"Report.xlsx\": it has to lie "
        "between 0 and 409.5."_s);
    EXPECT_EQ(failureOf([&] { sheet.Columns(u"C"_s).setColumnWidth(std::nan("")); }).number, 1004);
}

TEST(Worksheet, RowsAndColumnsTakeOneKeyOrTwo)
{
    PlainSheet sheet(u"Data"_s);
    EXPECT_EQ(sheet.Rows(u"7"_s).Address(), u"$7:$7"_s);
    EXPECT_EQ(sheet.Rows(u"5:12"_s).RowsCount(), 8);
    EXPECT_EQ(sheet.Columns(u"IV"_s).Column(), 256);
    EXPECT_EQ(sheet.Range(sheet.Cells(9, 4), sheet.Cells(2, 6)).Address(), u"$D$2:$F$9"_s);
    EXPECT_EQ(sheet.Range(u"D4:F9"_s).Cells(2, 3).Address(), u"$F$5"_s);
}

} // namespace
