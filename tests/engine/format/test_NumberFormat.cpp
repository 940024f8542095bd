#include "engine/format/NumberFormat.h"

#include "support/TextTable.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// A line for each code: what it makes of values.
void expectShown(const char* table)
{
    for (QStringList row : test::drawnCells(table)) {
        const QString code = test::cellMeaning(row.takeFirst());
        for (const auto& [value, text] : test::textPairs(row))
            EXPECT_EQ(NumberFormat(code).number(value.toDouble(), false).text, text) << code << " of " << value;
    }
}

TEST(NumberFormat, ShowsGeneralNumbers)
{
    expectShown(R"(
        General | 0 → 0 | -0.0 → 0 | 1234567890 → 1234567890 | -2.5 → -2.5 | 0.30000000000000004 → 0.3
        General | 0.3333333333333333 → 0.333333333333333 | 5213501.080567375 → 5213501.08056738
        General | 1e14 → 100000000000000 | 1e15 → 1E+15 | 1.23456789012345678e200 → 1.23456789012346E+200
        General | 0.0001 → 0.0001 | 0.00000345 → 3.45E-06 | 1e-300 → 1E-300
                        | 12.5 → 12.5
        general         | 12.5 → 12.5
        General" pcs"   | 12.5 → 12.5 pcs
        [Red]General    | -3 → -3
        0;[Red          | 5 → 5
        0;0;0;@;0       | 7.25 → 7.25)");
}

TEST(NumberFormat, ShowsDigits)
{
    expectShown(R"(
        0               | 0 → 0 | 0.5 → 1 | -0.4 → 0 | 2.5 → 3 | -2.5 → -3 | 1e20 → 100000000000000000000
        0.00            | 2.675 → 2.68 | 1.005 → 1.01 | 0.995 → 1.00 | 99.999 → 100.00
        0.0             | -0.04 → 0.0 | 123456789012345678.0 → 123456789012346000.0
        0.000           | 1e-5 → 0.000
        0.000000000000000000 | 0.1 → 0.100000000000000000
        #               | 0 → | 0.4 →
        #.##            | 0 → . | 12.3 → 12.3 | 12 → 12.
        0.0##           | 12 → 12.0 | 12.3456 → 12.346
        ???             | 5 → ··5
        ?.?             | 1 → 1.·
        000-00-0000     | 123456789 → 123-45-6789
        0"."00          | 1234 → 12.34
        #,##0           | 0 → 0 | 999 → 999 | 1000 → 1,000 | 1234567.5 → 1,234,568
        0,000           | 12 → 0,012
        0,              | 1500 → 2
        #,##0.00,,      | 1234567890 → 1,234.57
        0%              | 0.125 → 13% | 0 → 0%
        %0              | 0.5 → %50
        0%%             | 0.5 → 5000%%
        0"%"            | 5 → 5%
        "abc"           | 5 → abc | -5 → -abc
        0\k\g           | 3 → 3kg
        $#,##0.00       | 1234.5 → $1,234.50 | -1234.5 → -$1,234.50
        _(0_)           | 5 → ·5·
        0_x0            | 12 → 1 2
        @               | 12.5 → 12.5
        0;              | 5 → 5)");
}

TEST(NumberFormat, ShowsPowersOfTen)
{
    expectShown(R"(
        0.00E+00   | 0 → 0.00E+00 | 12345 → 1.23E+04 | -0.00012345 → -1.23E-04 | 9.999 → 1.00E+01
        0.00E-00   | 12345 → 1.23E04 | 0.00012345 → 1.23E-04
        0.0E+0     | 1e100 → 1.0E+100 | 1.797e308 → 1.8E+308
        0.00E+000  | 5e-300 → 5.00E-300
        ##0.0E+0   | 12345 → 12.3E+3 | 1234567 → 1.2E+6 | 999999 → 1.0E+6 | 123.456 → 123.5E+0 | 0.0123 → 12.3E-3
        0.00e+00   | 12345 → 1.23e+04
        #.##E+0    | 1000 → 1.E+3)");
}

TEST(NumberFormat, ShowsFractions)
{
    expectShown(R"(
        # ?/?      | 0.5 → ·1/2 | 5 → 5···· | 0 → 0···· | -1.25 → -1 1/4 | 0.333333333333 → ·1/3 | 0.99 → 1····
        # ??/??    | 3.14159265 → 3 14/99 | 0.28125 → ··9/32
        # ???/???  | 3.14159265 → 3··16/113
        ?/?        | 1.5 → 3/2 | 0 → 0/1
        # ??/16    | 1.125 → 1  2/16
        0 0/0      | 0.5 → 0 1/2
        # #/#      | 2.75 → 2 3/4
        0/         | 5 → 5/)");
}

TEST(NumberFormat, ChoosesTheSection)
{
    expectShown(R"(
        0;(0)                             | 5 → 5 | -5 → (5) | 0 → 0
        0;-0;"zero"                       | 0 → zero | -5 → -5
        0;0                               | -5 → 5
        ;;                                | 5 →
        0;;                               | -5 →
        0;;;@                             | 0 →
        0;@                               | -5 → -5
        #,##0.00_);(#,##0.00)             | -1234.5 → (1,234.50) | 1234.5 → 1,234.50·
        [>=100]0.0;0.00                   | 100 → 100.0 | 99 → 99.00 | -1 → -1.00
        [<1]0.00;[<10]0.0;0               | 0.5 → 0.50 | 5.25 → 5.3 | 50.25 → 50 | -3 → -3.00
        [<0]"minus "0;0                   | -3 → minus 3 | 3 → 3
        [=1]"one";[=2]"two";"many"        | 1 → one | 2 → two | 3 → many
        [<>0]0.0;"nil"                    | 0 → nil
        [<=9999999]###-####;(###) ###-####        | 9999999 → 999-9999 | 5551234567 → (555) 123-4567
        [>10]0                            | 5 → ########
        [$€-407] #,##0.00                 | 1234.5 → € 1,234.50
        [$USD] 0                          | 5 → USD 5
        [$-409]0                          | 5 → 5
        [$-2000401]#,##0.0                | 1234.5 → ١,٢٣٤.٥
        [$-3000401]0                      | 4 → ٤
        [$-3000429]0                      | 4 → ۴
        [$-th-TH,D00]0.0E+0               | 20 → ๒.๐E+๑
        [$฿-D00041E]# ?/4"x4"             | 1.75 → ฿๑ ๓/๔x4
        t#,##0;t(0)                       | 1020 → ๑,๐๒๐ | -5 → (๕)
        "t"0                              | 5 → t5
        0 kg                              | 5 → 5 kg
        [DBNum1]0                         | 105 → 一〇五
        [DBNum1]General                   | 14 → 一十四 | -12.05 → -一十二.〇五 | 0 → 〇 | 1E+20 → 一E+二〇
        [$-804][DBNum1]General            | 20045 → 二万〇四十五 | 205000 → 二十万五千 | 100000005 → 一亿〇五
        [DBNum2][$-804]General            | 10500 → 壹万零伍佰
        [DBNum2][$-zh-TW]General          | 12000 → 壹萬貳仟
        [DBNum1][$-411]General            | 1005 → 千五 | 11110000 → 千百十一万
        [DBNum3][$-411]0                  | 12 → １２
        [DBNum4][$-412]General            | 1234 → 일천이백삼십사
        [NatNum1][$-411]General           | 12 → 一二
        [NatNum4][$-804]0                 | 12 → 一二
        [NatNum1][$-439]0                 | 12 → १२
        [DBNum9]0                         | 5 → 5)");
}

TEST(NumberFormat, ShowsDatesAndTimes)
{
    expectShown(R"(
        yyyy-mm-dd           | 0 → 1900-01-00 | 1 → 1900-01-01 | 59 → 1900-02-28 | 60 → 1900-02-29 | 61 → 1900-03-01
        yyyy-mm-dd           | 45351 → 2024-02-29 | 2958465 → 9999-12-31 | 2958466 → ######## | -1 → ########
        mm/dd/yy             | 45296 → 01/05/24
        d-mmm-yy             | 45296 → 5-Jan-24
        mmmm d, yyyy         | 45296 → January 5, 2024
        mmmmm                | 45296 → J
        ddd                  | 45296 → Fri
        dddd                 | 45296 → Friday | 1 → Sunday | 60 → Wednesday
        e                    | 45296 → 2024
        y                    | 45296 → 24
        bbbb                 | 45296 → 2567
        yyyy"y" m"m"         | 45296 → 2024y 1m
        h:mm                 | 0.5 → 12:00
        h:mm AM/PM           | 0 → 12:00 AM | 0.5 → 12:00 PM
        h A/P                | 0.75 → 6 P
        h a/p                | 0.25 → 6 a
        h:mm:ss              | 0.999999 → 0:00:00 | 0.0000116 → 0:00:01
        mm:ss                | 0.0007 → 01:00
        mm:ss.0              | 0.00001157407 → 00:01.0
        ss.000               | 0.0000115799 → 01.001
        m                    | 45350 → 2
        h m                  | 0.0104166667 → 0 15
        m h                  | 31.5 → 1 12
        [h]:mm               | 1.5 → 36:00 | 1000 → 24000:00 | -0.5 → ########
        [hh]:mm:ss           | 0.25 → 06:00:00
        [mm]:ss              | 0.0423611111 → 61:00
        [ss]                 | 0.5 → 43200
        yyyy-mm-dd hh:mm     | 45296.999999 → 2024-01-06 00:00
        yyyy-mm-dd\Thh:mm    | 45296.75 → 2024-01-05T18:00
        [$-407]mmmm          | 45352 → März
        [$-407]dddd          | 45296 → Freitag
        [$-C0A]mmmm          | 45352 → marzo
        [$-F800]dddd, mmmm dd, yyyy | 45296 → Friday, January 5, 2024
        [$-F400]h:mm:ss AM/PM | 0.75 → 6:00:00 PM
        [$-x-sysdate]d       | 45296 → Friday, January 5, 2024
        [$-de-AT]mmmm        | 45352 → März
        [$-D07041E]d/m/yyyy  | 45296 → ๕/๑/๒๕๖๗
        [$-107041E]yy        | 45296 → 67
        [DBNum1][$-804]yyyy"年"m"月"dd"日" | 45275 → 二〇二三年十二月十五日 | 45296 → 二〇二四年一月〇五日
        [$-411]ggge"年"m"月" | 45296 → 令和6年1月 | 43585 → 平成31年4月
        ge.m.d               | 9855 → T15.12.24 | 4595 → T1.7.30 | 1 → M33.1.1
        [$-404]e/mm          | 45296 → 113/01
        [$-409]e             | 45296 → 2024
        [Red]yyyy;0          | 45296 → 2024
        General;yyyy         | -1 → ########)");
}

TEST(NumberFormat, Counts1904DatesFromTheirOwnDay)
{
    const NumberFormat format(u"yyyy-mm-dd"_s);
    EXPECT_EQ(format.number(0, true).text, u"1904-01-01"_s);
    EXPECT_EQ(format.number(43830, true).text, u"2024-01-01"_s);
    EXPECT_TRUE(format.number(-1, true).isError);
    EXPECT_TRUE(format.number(2958465 - 1461, true).isError);
}

TEST(NumberFormat, ShowsTextsThroughTheirSection)
{
    for (const auto& [code, value, text] : test::textTable<3>(R"(
        General          | abc | abc
        0.00             | abc | abc
        "<"@">"          | abc | <abc>
        0;0;0;"text: "@  | abc | text: abc
        0;-0;0;          | abc |
        0;@_x            | abc | abc·
        0;0;0            | abc | abc)"))
        EXPECT_EQ(NumberFormat(code).text(value).text, text) << code;
}

TEST(NumberFormat, TakesTheColourOfTheSectionUsed)
{
    const NumberFormat format(u"[Blue]0;[Red]-0;[Color 10]0;[color3]@"_s);
    EXPECT_EQ(format.number(1, false).color, 0xff0000ffu);
    EXPECT_EQ(format.number(-1, false).color, 0xffff0000u);
    EXPECT_EQ(format.number(0, false).color, 0xff008000u);
    EXPECT_EQ(format.text(u"x"_s).color, 0xffff0000u);
    EXPECT_FALSE(NumberFormat(u"[Color 57]0"_s).number(1, false).color);
}

TEST(NumberFormat, TellsWhereAFillStands)
{
    const NumberFormat format(u"_($* #,##0_);_($* (#,##0);_($* \"-\"_)"_s);
    const FormattedText positive = format.number(1234, false);
    EXPECT_EQ(positive.text, u" $1,234 "_s);
    EXPECT_EQ(positive.fillPosition, 2);
    EXPECT_EQ(positive.fill, u' ');
    EXPECT_EQ(format.number(0, false).text, u" $- "_s);
    EXPECT_EQ(NumberFormat(u"*-0"_s).number(-5, false).fillPosition, 1) << "behind the sign";
    EXPECT_EQ(NumberFormat(u"0"_s).number(5, false).fillPosition, -1);
}

TEST(NumberFormat, TellsItsKind)
{
    EXPECT_TRUE(NumberFormat(u"General"_s).isGeneral());
    EXPECT_FALSE(NumberFormat(u"General;0"_s).isGeneral());
    EXPECT_TRUE(NumberFormat(u"[h]:mm"_s).isDate());
    EXPECT_FALSE(NumberFormat(u"0.00E+00"_s).isDate());
    EXPECT_FALSE(NumberFormat(u"[Red]0"_s).isDate()) << "letters in brackets are no dates";
    EXPECT_FALSE(NumberFormat(u"0\"d\""_s).isDate());
    EXPECT_TRUE(NumberFormat(u"@"_s).isText());
    EXPECT_FALSE(NumberFormat(u"0;@"_s).isText());
    EXPECT_TRUE(NumberFormat(u"General\" h\""_s).number(1, false).isGeneral);
}

TEST(GeneralNumber, FitsTheWidth)
{
    for (const auto& [value, width, text] : test::textTable<3>(R"(
        0.3333333333333333  | 11 | 0.333333333
        -0.3333333333333333 | 11 | -0.333333333
        12345678901         | 11 | 12345678901
        123456789012        | 11 | 1.23457E+11
        99999999999.5       | 11 | 1E+11
        1234.5678           | 6  | 1234.6
        1234.5678           | 4  | 1235
        123456789           | 7  | 1.2E+08
        123456789           | 5  | 1E+08
        5                   | 0  | 5E+00
        0.00001             | 7  | 0.00001
        0.000012345678      | 11 | 1.23457E-05
        0.0001234567        | 11 | 0.000123457
        1.23456789e-300     | 11 | 1.2346E-300
        9.99                | 3  | 10
        0                   | 1  | 0
        1e308               | 11 | 1E+308)"))
        EXPECT_EQ(generalNumber(value.toDouble(), width.toInt()), text) << value << " in " << width;
}

TEST(NumberFormat, SurvivesOddCodes)
{
    for (const QString& code : test::textList(R"(
        \ | _ | * | " | [ | [] | [$ | [$-] | [< | [<x]0 | ;;;;;; | 0.0.0 | E+ | 0E+0E+0 | / | 0//0 | ?/0 | #/00 | ,,,
        ,0 | 0,.0, | [h | [hhhhhhhhhhhh] | mmmmmmmmm | @@@@ | General General | [$-FFFFFFFF]0
        [Color 99999999999]0 | 0.E+ | h.0000000000000 | t | tt0 | [DBNum]0 | [NatNum99999999999]General | [$-a-b-c]0
        [$-,FFFFFFFFF]0 | [$-2]0 | [DBNum1][$-404]gggggeeeeemd | [DBNum2]0.0E+00;[DBNum4]?/? | [$-en-US,D07]y)")) {
        const NumberFormat format(code);
        const double infinite = std::numeric_limits<double>::infinity();
        for (const double value : {0.0, 1.5, -1.5, 1e308, -1e308, 5e-324, infinite, -infinite, std::nan("")})
            EXPECT_LE(format.number(value, false).text.size(), 2000) << code;
        format.text(u"x"_s);
    }
}

} // namespace
} // namespace lumivane::engine
