#include "engine/read/ContentText.h"
#include "engine/read/WorkbookFile.h"
#include "engine/read/csv/CsvText.h"
#include "engine/read/csv/CsvValues.h"
#include "platform/Clock.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

/// "12.5 [0.00%]", "TRUE", "#N/A", "?" for a formula, "text".
QString valueOf(const QString& field)
{
    const std::optional<CsvValue> value = csvValue(field.toStdString(), 2026);
    if (!value)
        return u"text"_s;
    if (value->kind == CellKind::Boolean)
        return value->number != 0 ? u"TRUE"_s : u"FALSE"_s;
    if (value->kind == CellKind::Error)
        return errorText(value->error);
    if (value->kind == CellKind::Uncomputed)
        return u"?"_s;
    const QString number = QString::number(value->number, 'g', 12);
    return value->format ? QString(number + u" [" + QStringView(value->format) + u']') : number;
}

} // namespace

TEST(CsvValues, TakesFieldsAsTheyWouldBeTyped)
{
    for (const auto& [field, expected] : textPairs(R"(
        1,234.5 → 1234.5 | 1,234,567 → 1234567 | .5 → 0.5 | 5. → 5 | -5 → -5 | +5 → 5 | (5) → -5 | ·12· → 12 | 007 → 7
        1e5 → 100000 [0.00E+00] | 1.5E+03 → 1500 [0.00E+00] | 1,234e-2 → 12.34 [0.00E+00]
        99999999999999999999 → 1e+20 | 50% → 0.5 [0.00%] | -12.5 % → -0.125 [0.00%]
        $1,234.5 → 1234.5 ["$"#,##0.00;[Red]-"$"#,##0.00] | -$5 → -5 ["$"#,##0.00;[Red]-"$"#,##0.00]
        2026-11-24 → 46350 [yyyy-mm-dd] | 2026-1-4 → 46026 [yyyy-mm-dd] | 26-11-24 → 46350 [yyyy-mm-dd]
        11/24/2026 → 46350 [mm/dd/yy] | 11/24/26 → 46350 [mm/dd/yy] | 1/2 → 46024 [mm/dd/yy]
        2/28/1900 → 59 [mm/dd/yy] | 3/1/1900 → 61 [mm/dd/yy] | 24-Nov-2026 → 46350 [mm/dd/yy] | 24-Nov → 46350 [d-mmm]
        19-dec-29 → 47471 [mm/dd/yy] | 19-Dec-30 → 11311 [mm/dd/yy] | Nov-2026 → 46327 [mm/dd/yy]
        November 24, 2026 → 46350 [mm/dd/yy] | Nov 24 → 46350 [mm/dd/yy]
        10:30 → 0.4375 [hh:mm:ss AM/PM] | 1:05 PM → 0.545138888889 [hh:mm:ss AM/PM] | 12:00:00 am → 0 [hh:mm:ss AM/PM]
        1 AM → 0.0416666666667 [hh:mm:ss AM/PM] | 10:30:15.5 → 0.437679398148 [hh:mm:ss.00]
        25:00 → 1.04166666667 [[hh]:mm:ss] | 2026-11-24 10:30 → 46350.4375 [yyyy-mm-dd hh:mm:ss]
        2026-11-24T10:30:00 → 46350.4375 [yyyy-mm-dd"T"hh:mm:ss]
        11/24/2026 1:30 PM → 46350.5625 [mm/dd/yy hh:mm AM/PM]
        1 1/2 → 1.5 [# ?/?] | -2 3/16 → -2.1875 [# ??/??]
        true → TRUE | False → FALSE | #N/A → #N/A | =A1+1 → ?)"))
        EXPECT_EQ(valueOf(field), expected) << field;
    for (const QString& field : textList(R"(
        12,34.5 | 1,2345 | 1234,567 | ,5 | 5,5 | . | --5 | - | () | 0x10 | 1 234 | 1.2.3 | 1e | 1e400 | inf | nan | 1e3%
        % | $ | €5 | 2026-13-01 | 2026-11 | 24/11/2026 | 2/29/2026 | 11/24/026 | 11-24-2026 | 24 Nov 2026 | November
        13:00 PM | 13:61 | 10:30: | 11/24/2026 25:00 | 1 1/0 | #n/a | = | '5 |)"))
        EXPECT_EQ(valueOf(field), u"text"_s) << field;
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
    const std::tuple<const char*, QByteArray, QString> cases[] = {
        {"ends of lines", "a,b\r\nc\nd\re", u"1: A='a' B='b'\n2: A='c'\n3: A='d'\n4: A='e'"_s},
        {"end of the last line", "a,b\n", u"1: A='a' B='b'"_s},
        {"empty fields and lines", ",b,\n\n,,\nc,d", u"1: B='b'\n4: A='c' B='d'"_s},
        {"quotes, and a line break that wraps", "\"a,\"\"b\"\"\",\"\",\"c\r\nd\re\"\nf",
         u"1: A='a,\"b\"' C='c\nd\ne'/1\n2: A='f'"_s},
        {"quoted numbers are numbers", "\"5\",\"1/2/2026\"", u"1: A=5 B=46024/1"_s},
        {"quotes that are letters", "a\"b,\"a\"b,\"\n\"c", u"1: A='a\"b' B='\"a\"b' C='\"'\n2: A='\"c'"_s},
        {"one style for each format", "1%,2%,10:30,3%", u"1: A=0.01/1 B=0.02/1 C=0.4375/2 D=0.03/1"_s},
        {"UTF-8 with mark", "\xef\xbb\xbf\xc3\xa9,b", u"1: A='é' B='b'"_s},
        {"UTF-8", "\xc3\xa9,b", u"1: A='é' B='b'"_s},
        {"UTF-16", QByteArray("\xff\xfe\xe9\0,\0b\0", 8), u"1: A='é' B='b'"_s},
        {"UTF-16, big end first", QByteArray("\xfe\xff\0\xe9\0,\0b", 8), u"1: A='é' B='b'"_s},
        {"Windows-1252", "\xe9,\x80,\x93x\x94,\x81", u"1: A='é' B='€' C='“x”' D='\x81'"_s},
        {"a separator first", ";a\n;b", u"1: B='a'\n2: B='b'"_s},
    };
    for (const auto& [name, bytes, expected] : cases)
        EXPECT_EQ(readCells(bytes, u"Table.csv"_s), expected) << name;
}

TEST(CsvText, NamesTheSheetByTheFile)
{
    const auto book = WorkbookFile::open(writeTemporary(u"Sales.2026.csv"_s, "a,b\n\n,,c"));
    ASSERT_EQ(book->content()->sheets.size(), 1u);
    EXPECT_EQ(book->content()->sheets[0].name, u"Sales.2026"_s);
    EXPECT_EQ(book->sheet(0)->used, CellArea::parse(u"A1:C3"));
    EXPECT_THROW(book->sheet(1), RuntimeError);
}

TEST(CsvText, TakesTheYearFromTheClock)
{
    Clock::setFixed(QDateTime(QDate(2031, 5, 1), QTime(12, 0)));
    EXPECT_EQ(readCells("1/2", u"Table.csv"_s), u"1: A=47850/1"_s);
    Clock::setFixed({});
}

TEST(CsvText, EndsAtTheBordersOfASheet)
{
    const auto read = [](int commas, int lineEnds) {
        return readCells(QByteArray(commas, ',') + QByteArray(lineEnds, '\n') + "x", u"Table.csv"_s);
    };
    EXPECT_EQ(read(16383, 0), u"1: XFD='x'"_s);
    EXPECT_TRUE(read(16384, 0).contains(u"line 1 has more than 16384 fields"_s));
    EXPECT_TRUE(readCells(QByteArray(20000, ','), u"Table.csv"_s).contains(u"more than 16384 fields"_s))
        << "empty ones";
    EXPECT_EQ(read(0, 1048575), u"1048576: A='x'"_s);
    EXPECT_TRUE(read(0, 1048576).contains(u"it has more than 1048576 lines"_s));
}

} // namespace lumivane::test
