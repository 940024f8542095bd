#include "FormulaSheet.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

FormulaSheet shop()
{
    return FormulaSheet(R"(
        name  | amount | day   | mark  | sold
        apple | 10     | 45292 | TRUE  | 3
        Pear  | 2.5    | 45323 | -     | 4
        fig   | -3     | 45351 | #N/A  | 5
        apple | 10     | 60    | ''    | 6
        '12   | 7      | -     | FALSE | 7
        a*b   | 12     | 45657 | x     | 8)");
}

TEST(FormulaFunctions, decide)
{
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        IF(TRUE,1,1/0) → 1 | IF(0,1) → FALSE | IF(1,) → 0 | IF("x",1) → #VALUE! | IF(D4,1,2) → #N/A | AND(TRUE,1) → TRUE
        AND(D1:D2) → TRUE | AND(A2:A3) → #VALUE! | OR(D2,D6) → TRUE | OR("TRUE",0) → TRUE | OR(D2:D4) → #N/A
        XOR(TRUE,TRUE,TRUE) → TRUE | NOT(3) → FALSE | IFERROR(D4,"no") → no | IFNA(1/0,2) → #DIV/0! | IFNA(D4,2) → 2
        IFS(FALSE,1,TRUE,2) → 2 | IFS(FALSE,1) → #N/A | SWITCH(2,1,"a",2,"b","c") → b | SWITCH(9,1,"a","c") → c
        CHOOSE(2,1/0,"b") → b | CHOOSE(3,1,2) → #VALUE! | ISERROR(D4) → TRUE | ISERR(D4) → FALSE | ISNA(D4) → TRUE
        ISBLANK(D3) → TRUE | ISBLANK(D5) → FALSE | ISTEXT(A6) → TRUE | ISNUMBER(A6) → FALSE | ISNONTEXT(D3) → TRUE
        ISLOGICAL(D2) → TRUE | ISREF(A1) → TRUE | ISREF(1) → FALSE | ISEVEN(-2.9) → TRUE | ISODD(3) → TRUE
        ERROR.TYPE(1/0) → 2 | N(A1) → 0 | N(TRUE) → 1 | T(B2) → | TYPE("") → 2 | TYPE({1}) → 64 | SHEET() → 1 | SHEET("It's") → 2)");
}

TEST(FormulaFunctions, calculate)
{
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        MOD(-3,2) → 1 | MOD(3,-2) → -1 | MOD(1,0.1) → 0 | MOD(5,0) → #DIV/0! | INT(-2.5) → -3 | TRUNC(-2.57,1) → -2.5
        ROUND(2.675,2) → 2.68 | ROUND(-2.5,0) → -3 | ROUND(1250,-2) → 1300 | ROUND(4,-1) → 0 | ROUNDUP(-2.11,1) → -2.2
        ROUNDDOWN(1.15*100,0) → 115 | ROUNDDOWN(-7,-1) → 0 | MROUND(7,3) → 6 | FLOOR(7.5,2) → 6 | FLOOR(-7,2) → -8
        FLOOR(7,-2) → #NUM! | CEILING(7,2) → 8 | CEILING(-7,-2) → -8 | FLOOR.MATH(-7,2,1) → -6 | CEILING.MATH(-7,2) → -6
        EVEN(3) → 4 | EVEN(-1) → -2 | ODD(2) → 3 | ODD(0) → 1 | SIGN(-2) → -1 | SQRT(-1) → #NUM! | POWER(2,3) → 8
        LN(0) → #NUM! | LOG(8,2) → 3 | LOG10(1000) → 3 | LOG(5,1) → #DIV/0! | QUOTIENT(-7,2) → -3 | EXP(0) → 1
        SUM(B2:B7,"1",TRUE) → 40.5 | SUM(A2:A7) → 0 | SUM(D2:D4) → #N/A | PRODUCT(B3:B4) → -7.5 | PRODUCT(D3) → 0
        SUMPRODUCT(B2:B3,E2:E3) → 40 | SUMPRODUCT((A2:A7="APPLE")*E2:E7) → 9 | SUMPRODUCT(B2:B3,E2:E4) → #VALUE!
        SUMPRODUCT(--(LEN(A2:A7)>3)) → 3 | SUM(IF(B2:B7>5,E2:E7)) → 24 | SUM({1,2;3,4}*{1;10}) → 73
        MAX(IFERROR(1/{0,4},0)) → 0.25)");
}

TEST(FormulaFunctions, countAndRank)
{
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        COUNT(A1:E7,"5","x",) → 19 | COUNTA(A1:E7) → 33 | COUNTBLANK(C1:D7) → 3 | AVERAGE(B2:B7) → 6.41666666666667
        AVERAGE(A1) → #DIV/0! | AVERAGEA(D6:D7,1) → 0.333333333333333 | MIN(B:B) → -3 | MAX(A1:A3) → 0 | MAXA(D2:D3) → 1
        LARGE(B2:B7,2) → 10 | SMALL(B2:B7,2) → 2.5 | SMALL(B2:B7,7) → #NUM! | MEDIAN(B2:B7) → 8.5 | MODE(B2:B7) → 10
        PERCENTILE(B2:B7,0.3) → 4.75 | QUARTILE(B2:B7,1) → 3.625 | RANK(10,B2:B7) → 2 | RANK(7,B2:B7,1) → 3
        RANK.AVG(10,B2:B7) → 2.5 | RANK(11,B2:B7) → #N/A | STDEV(1,3) → 1.4142135623731 | STDEV.P(1,3) → 1 | VAR(1,3) → 2
        VAR.S(1) → #DIV/0! | SUBTOTAL(9,B2:B7) → 38.5 | SUBTOTAL(3,A1:A7) → 7
        COUNTIF(A1:A7,"apple") → 2 | COUNTIF(A2:A7,"*p*") → 3 | COUNTIF(A1:A7,"a~*b") → 1 | COUNTIF(A1:A7,"???") → 2
        COUNTIF(A1:A7,12) → 1 | COUNTIF(B1:B7,">=10") → 3 | COUNTIF(B2:B7,"<>10") → 4 | COUNTIF(D1:D7,"") → 2
        COUNTIF(D1:D7,"=") → 1 | COUNTIF(D1:D7,"<>") → 6 | COUNTIF(D1:D7,TRUE) → 1 | COUNTIF(D1:D7,"#N/A") → 1
        COUNTIF(A1:A7,">b") → 3 | COUNTIF(D:D,"") → 1048571 | COUNTIF(D1:D7,D3) → 0 | SUM(COUNTIF(A:A,{"fig","pear"})) → 2
        COUNTIFS(A2:A7,"apple",E2:E7,">3") → 1 | COUNTIFS(A2:A7,"a*",E2:E6,1) → #VALUE! | SUMIF(A2:A7,"apple",E2) → 9
        SUMIF(B2:B7,">5") → 39 | SUMIFS(E2:E7,B2:B7,10,A2:A7,"apple") → 9 | SUMIF(D1:D9,"",E1:E9) → 10
        AVERAGEIF(B2:B7,"<0") → -3 | AVERAGEIFS(E2:E7,A2:A7,"kiwi") → #DIV/0! | MAXIFS(E2:E7,A2:A7,"apple") → 6)");
}

TEST(FormulaFunctions, workOnTexts)
{
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        LEFT("abc") → a | LEFT("abc",9) → abc | LEFT("abc",-1) → #VALUE! | RIGHT("abc",2) → bc | MID("abc",2,1) → b
        MID("abc",5,1) → | LEN(1.5) → 3 | TRIM("··a···b·") → a b | UPPER("aß") → ASS | PROPER("it's o-k") → It'S O-K
        EXACT("a","A") → FALSE | FIND("b","abcb",3) → 4 | FIND("B","abc") → #VALUE! | SEARCH("B","abc") → 2
        SEARCH("c*e?","abcdefg") → 3 | SEARCH("~?","a?") → 2 | SEARCH("x*","abc") → #VALUE! | SEARCH("","abc",4) → 4
        SUBSTITUTE("a-b-c","-","+") → a+b+c | SUBSTITUTE("a-b-c","-","",2) → a-bc | REPLACE("abcd",2,2,"X") → aXd
        REPT("ab",2) → abab | LEN(REPT("a",32767)) → 32767 | REPT("ab",16384) → #VALUE! | CONCAT(A2:B3,1) → apple10Pear2.51
        TEXTJOIN("-",TRUE,D2:D3,1) → TRUE-1 | TEXTJOIN("-",FALSE,D2:D3,1) → TRUE--1 | TEXT(0.256,"0.0%") → 25.6%
        TEXT("2024-01-05","d mmm") → 5 Jan | TEXT("a","0;0;0;<@>") → <a> | TEXT(TRUE,"0") → TRUE | TEXT(10,"[<10]0.0") → 10 | TEXT(-1,"yyyy") → #VALUE! | VALUE("x") → #VALUE!
        CHAR(128) → € | CODE("€") → 128 | CODE("A") → 65 | UNICHAR(8364) → € | UNICODE("😀") → 128512
        LEN(REPT("a",20000)&REPT("b",20000)) → #VALUE!)");
}

TEST(FormulaFunctions, calculateWithDays)
{
    Clock::setFixed(QDateTime(QDate(2024, 2, 29), QTime(18, 0)));
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        TODAY() → 45351 | NOW() → 45351.75 | DATE(2024,2,30) → 45352 | DATE(2024,14,1) → 45689 | DATE(24,1,1) → 8767
        DATE(1900,2,29) → 60 | DATE(10000,1,1) → #NUM! | YEAR(60) → 1900 | MONTH(60) → 2 | DAY(60) → 29 | DAY(61) → 1
        YEAR(-1) → #NUM! | DAY(2958466) → #NUM! | TIME(25,30,0) → 0.0625 | HOUR(0.75) → 18 | MINUTE("10:42") → 42
        SECOND(0.999999) → 0 | WEEKDAY(45351) → 5 | WEEKDAY(45351,2) → 4 | WEEKDAY(45351,3) → 3 | WEEKDAY(1) → 1
        WEEKDAY(45351,16) → 6 | WEEKDAY(45351,4) → #NUM! | WEEKNUM(45298) → 2 | WEEKNUM(45298,2) → 1
        ISOWEEKNUM(45658) → 1 | ISOWEEKNUM(44562) → 52 | EDATE(45322,1) → 45351 | EDATE(45351,-12) → 44985
        EOMONTH(45351,0) → 45351 | EOMONTH(31,1) → 60 | DAYS(45351,45292) → 59 | DATEDIF(44985,45349,"Y") → 0
        DATEDIF(44985,45351,"m") → 12 | DATEDIF(45322,45352,"md") → 1 | DATEDIF(45292,45351,"yd") → 59
        DATEDIF(2,1,"d") → #NUM! | NETWORKDAYS(45292,45322) → 23 | NETWORKDAYS(45298,45292,{45292}) → -4
        WORKDAY(45296,1) → 45299 | WORKDAY(45299,-1,45296) → 45295 | DATEVALUE("2/29/2024 7:00") → 45351
        DATEVALUE("2/30/2024") → #VALUE!)");
    Clock::setFixed({});
}

TEST(FormulaFunctions, lookUp)
{
    FormulaSheet sheet = shop();
    expectValues(sheet, R"(
        MATCH("FIG",A1:A7,0) → 4 | MATCH("?e*",A1:A7,0) → 3 | MATCH(5.5,E2:E7) → 3 | MATCH(2,E2:E7) → #N/A
        MATCH(5,{9,7,5,3},-1) → 3 | MATCH(12,A1:A7,0) → #N/A | MATCH(99,E:E) → 7 | MATCH(1/0,E:E,0) → #DIV/0!
        VLOOKUP("apple",A:E,5,FALSE) → 3 | VLOOKUP(6.9,E2:E7,1) → 6 | VLOOKUP("fig",A1:B7,3,0) → #REF!
        VLOOKUP("kiwi",A:B,2,0) → #N/A | HLOOKUP("sold",A1:E7,3,FALSE) → 4 | LOOKUP(5,E2:E7,A2:A7) → fig
        LOOKUP(5,{1,4,9}) → 4 | XLOOKUP("pear",A1:A7,B1:B7) → Data!$B$3 | XLOOKUP("kiwi",A1:A7,B1:B7,"none") → none
        XMATCH("a*",A2:A7) → #N/A | INDEX(A1:E7,2,2) → Data!$B$2 | INDEX(A1:E1,3) → Data!$C$1 | INDEX(A1:B2,0,2) → Data!$B$1:$B$2
        INDEX({1,2;3,4},2,1) → 3 | INDEX(A1:B2,3,1) → #REF! | OFFSET(B2,1,-1) → Data!$A$3 | OFFSET(A1:B2,1,1,1) → Data!$B$2:$C$2
        OFFSET(B5,0,0,-2,1) → Data!$B$4:$B$5 | OFFSET(A1,-1,0) → #REF! | INDIRECT("b"&2) → Data!$B$2
        INDIRECT("'It''s'!A1:B2") → It's!$A$1:$B$2 | INDIRECT("1+1") → #REF! | ROW(B5) → 5 | COLUMN(C1:D1) → 3 | ROW() → 1
        SUMPRODUCT(ROW(A1:A4)) → 10 | ROWS(A:B) → 1048576 | COLUMNS({1,2,3}) → 3 | ADDRESS(2,28) → $AB$2
        ADDRESS(2,3,4,TRUE,"It's") → 'It''s'!C2)");
}

} // namespace
} // namespace lumivane::engine
