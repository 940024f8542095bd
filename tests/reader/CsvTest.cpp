#include "host/embedded/reader/CsvText.h"
#include "host/embedded/reader/CsvValues.h"
#include "reader/ContentText.h"

#include "host/embedded/reader/WorkbookReader.h"
#include "platform/Clock.h"
#include "support/QtPrinting.h"
#include "support/XlsxWriter.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace embedded;
using namespace Qt::StringLiterals;

namespace {

/// "12.5 [0.00%]", "TRUE", "#N/A", "?" for a formula, "text".
std::string valueOf(const char* field)
{
    const std::optional<CsvValue> value = csvValue(field, 2026);
    if (!value)
        return "text";
    switch (value->kind) {
    case CellKind::Boolean:
        return value->number != 0 ? "TRUE" : "FALSE";
    case CellKind::Error:
        return errorText(value->error).toStdString();
    case CellKind::Uncomputed:
        return "?";
    default:
        break;
    }
    const std::string number = QByteArray::number(value->number, 'g', 12).toStdString();
    return value->format ? number + " [" + QStringView(value->format).toString().toStdString() + "]" : number;
}

} // namespace

TEST(CsvValues, TakesFieldsAsTheyWouldBeTyped)
{
    const std::pair<const char*, const char*> cases[] = {
        {"1234.5", "1234.5"},
        {"1,234.5", "1234.5"},
        {"1,234,567", "1234567"},
        {"12,34.5", "text"},
        {"1,2345", "text"},
        {"1234,567", "text"},
        {",5", "text"},
        {"5,5", "text"},
        {".5", "0.5"},
        {"5.", "5"},
        {".", "text"},
        {"-5", "-5"},
        {"+5", "5"},
        {"--5", "text"},
        {"-", "text"},
        {"(5)", "-5"},
        {"()", "text"},
        {" 12 ", "12"},
        {"007", "7"},
        {"0x10", "text"},
        {"1 234", "text"},
        {"1.2.3", "text"},
        {"1e5", "100000 [0.00E+00]"},
        {"1.5E+03", "1500 [0.00E+00]"},
        {"1,234e-2", "12.34 [0.00E+00]"},
        {"1e", "text"},
        {"1e400", "text"},
        {"inf", "text"},
        {"nan", "text"},
        {"50%", "0.5 [0.00%]"},
        {"-12.5 %", "-0.125 [0.00%]"},
        {"1e3%", "text"},
        {"%", "text"},
        {"$1,234.5", "1234.5 [\"$\"#,##0.00;[Red]-\"$\"#,##0.00]"},
        {"-$5", "-5 [\"$\"#,##0.00;[Red]-\"$\"#,##0.00]"},
        {"$", "text"},
        {"\xe2\x82\xac"
         "5",
         "text"},
        {"2026-11-24", "46350 [yyyy-mm-dd]"},
        {"2026-1-4", "46026 [yyyy-mm-dd]"},
        {"26-11-24", "46350 [yyyy-mm-dd]"},
        {"2026-13-01", "text"},
        {"2026-11", "text"},
        {"11/24/2026", "46350 [mm/dd/yy]"},
        {"11/24/26", "46350 [mm/dd/yy]"},
        {"1/2", "46024 [mm/dd/yy]"},
        {"24/11/2026", "text"},
        {"2/29/2026", "text"},
        {"11/24/026", "text"},
        {"11-24-2026", "text"},
        {"24-Nov-2026", "46350 [mm/dd/yy]"},
        {"19-dec-29", "47471 [mm/dd/yy]"},
        {"19-Dec-30", "11311 [mm/dd/yy]"},
        {"24-Nov", "46350 [d-mmm]"},
        {"Nov-2026", "46327 [mm/dd/yy]"},
        {"November 24, 2026", "46350 [mm/dd/yy]"},
        {"Nov 24", "46350 [mm/dd/yy]"},
        {"24 Nov 2026", "text"},
        {"November", "text"},
        {"2/28/1900", "59 [mm/dd/yy]"},
        {"3/1/1900", "61 [mm/dd/yy]"},
        {"10:30", "0.4375 [hh:mm:ss AM/PM]"},
        {"1:05 PM", "0.545138888889 [hh:mm:ss AM/PM]"},
        {"12:00:00 am", "0 [hh:mm:ss AM/PM]"},
        {"1 AM", "0.0416666666667 [hh:mm:ss AM/PM]"},
        {"13:00 PM", "text"},
        {"10:30:15.5", "0.437679398148 [hh:mm:ss.00]"},
        {"25:00", "1.04166666667 [[hh]:mm:ss]"},
        {"13:61", "text"},
        {"10:30:", "text"},
        {"2026-11-24 10:30", "46350.4375 [yyyy-mm-dd hh:mm:ss]"},
        {"2026-11-24T10:30:00", "46350.4375 [yyyy-mm-dd\"T\"hh:mm:ss]"},
        {"11/24/2026 1:30 PM", "46350.5625 [mm/dd/yy hh:mm AM/PM]"},
        {"11/24/2026 25:00", "text"},
        {"1 1/2", "1.5 [# ?/?]"},
        {"-2 3/16", "-2.1875 [# ?\?/?\?]"},
        {"1 1/0", "text"},
        {"true", "TRUE"},
        {"False", "FALSE"},
        {"#N/A", "#N/A"},
        {"#n/a", "text"},
        {"=A1+1", "?"},
        {"=", "text"},
        {"'5", "text"},
        {"99999999999999999999", "1e+20"},
        {"", "text"},
    };
    for (const auto& [field, expected] : cases)
        EXPECT_EQ(valueOf(field), expected) << field;
}

TEST(CsvText, DetectsTheSeparatorOutsideQuotes)
{
    const std::pair<std::string, char> cases[] = {
        {"a,b;c,d", ','},
        {"a;b\nc;d,e", ';'},
        {"a\tb", '\t'},
        {"a|b", '|'},
        {"one word", ','},
        {"", ','},
        {"\"a,b,c\";d", ';'},
        {"a,b;c", ','},
        {"\"a;;;", ';'},
        {std::string(20000, 'x') + "\n;;;;", ','},
        {"a,b" + std::string(20000, ' ') + ";;;;;", ','},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(detectSeparator(text), expected) << text.substr(0, 30);
}

TEST(CsvText, TakesLinesApart)
{
    const struct
    {
        const char* name;
        QByteArray bytes;
        const char* expected;
    } cases[] = {
        {"ends of lines", "a,b\r\nc\nd\re", "1: A='a' B='b'\n2: A='c'\n3: A='d'\n4: A='e'"},
        {"end of the last line", "a,b\n", "1: A='a' B='b'"},
        {"empty fields and lines", ",b,\n\n,,\nc,d", "1: B='b'\n4: A='c' B='d'"},
        {"quotes, and a line break that wraps", "\"a,\"\"b\"\"\",\"\",\"c\r\nd\re\"\nf",
         "1: A='a,\"b\"' C='c\nd\ne'/1\n2: A='f'"},
        {"quoted numbers are numbers", "\"5\",\"1/2/2026\"", "1: A=5 B=46024/1"},
        {"quotes that are letters", "a\"b,\"a\"b,\"\n\"c", "1: A='a\"b' B='\"a\"b' C='\"'\n2: A='\"c'"},
        {"one style for each format", "1%,2%,10:30,3%", "1: A=0.01/1 B=0.02/1 C=0.4375/2 D=0.03/1"},
        {"UTF-8 with mark", "\xef\xbb\xbf\xc3\xa9,b", "1: A='é' B='b'"},
        {"UTF-8", "\xc3\xa9,b", "1: A='é' B='b'"},
        {"UTF-16", QByteArray("\xff\xfe\xe9\0,\0b\0", 8), "1: A='é' B='b'"},
        {"UTF-16, big end first", QByteArray("\xfe\xff\0\xe9\0,\0b", 8), "1: A='é' B='b'"},
        {"Windows-1252", "\xe9,\x80,\x93x\x94,\x81", "1: A='é' B='€' C='“x”' D='�'"},
        {"a separator first", ";a\n;b", "1: B='a'\n2: B='b'"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(readCells(one.bytes, "Table.csv"), one.expected) << one.name;
}

TEST(CsvText, NamesTheSheetByTheFile)
{
    const auto book = readWorkbook(writeTemporary(u"Sales.2026.csv"_s, "a,b\n\n,,c"));
    ASSERT_EQ(book->sheets.size(), 1u);
    EXPECT_EQ(book->sheets[0].name, u"Sales.2026"_s);
    EXPECT_EQ(areaText(*book->sheet(0)->used), "A1:C3");
    EXPECT_THROW(book->sheet(1), RuntimeError);
}

TEST(CsvText, TakesTheYearFromTheClock)
{
    Clock::setFixed(QDateTime(QDate(2031, 5, 1), QTime(12, 0)));
    EXPECT_EQ(readCells("1/2", "Table.csv"), "1: A=47850/1");
    Clock::setFixed({});
}

TEST(CsvText, EndsAtTheBordersOfASheet)
{
    EXPECT_NE(readFailure(QByteArray(16384, ',') + "x", "Table.csv").find("line 1 has more than 16384 fields"),
              std::string::npos);
    EXPECT_EQ(readFailure(QByteArray(16383, ',') + "x", "Table.csv"), "");
    EXPECT_NE(readFailure(QByteArray(1048576, '\n') + "x", "Table.csv").find("it has more than 1048576 lines"),
              std::string::npos);
    EXPECT_EQ(readFailure(QByteArray(1048575, '\n') + "x", "Table.csv"), "");
}

} // namespace lumivane::test
