#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"
#include "platform/Clock.h"
#include "platform/ShownText.h"
#include "support/LargeSheets.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <cmath>
#include <ctime>
#include <gtest/gtest.h>

namespace lumivane {

using namespace Qt::StringLiterals;

TEST(CheckedNumbers, RoundHalvesToEvenAndKeepTheBorders)
{
    for (const auto& [text, expected] : test::textPairs(R"(
        0.5 → 0 | 1.5 → 2 | 2.5 → 2 | -0.5 → 0 | -1.5 → -2 | 2.51 → 3 | 32767.4 → 32767 | -32768.5 → -32768)")) {
        for (const auto convert : {toRow, toColumn, toStoredTwips})
            EXPECT_EQ(convert(text.toDouble()), expected.toInt()) << text;
        EXPECT_EQ(toInt16(text.toDouble()), expected.toInt()) << text;
    }
}

TEST(ShownTexts, HoldNothingThatActs)
{
    const QString hostile = u"a\u202Eslx.exe\u001B[2J\u009B\u2066\r\nb\tÄ\u05D0"_s;
    EXPECT_EQ(shownName(hostile), u"a?slx.exe?[2J????b?Ä\u05D0"_s);
    EXPECT_EQ(shownText(hostile), u"a?slx.exe?[2J??\r\nb\tÄ\u05D0"_s);
}

TEST(CheckedNumbers, NameTheLimitAndNeverClamp)
{
    const auto sentence = [](auto convert, double number) {
        const test::ThrownError failure = test::failureOf([&] { convert(number); });
        EXPECT_EQ(failure.number, 6) << number;
        return failure.text;
    };
    const QString hint = u" More is possible with Large Sheets=1 in section [Settings] of lumivane.INI."_s;
    const auto number = [](double value) { return toInt16(value); };
    for (const double beyond : {32767.5, 32768.0, -32769.0, 1e300, double(INFINITY), double(NAN)})
        EXPECT_TRUE(sentence(number, beyond).endsWith(u"beyond 32,767, the largest that can be kept."_s)) << beyond;
    EXPECT_EQ(sentence(toRow, 40000), u"Row 40,000 is beyond row 32,767, the last that a panel may use."_s + hint);
    EXPECT_EQ(sentence(toRow, -40000),
              u"A distance of 40,000 rows is more than 32,767, the longest that a panel may move."_s + hint);
    EXPECT_EQ(sentence(throwBeyondColumns, 300),
              u"Column 300 is beyond column IV, the last that a panel may use."_s + hint);
    EXPECT_EQ(sentence(toStoredTwips, 60000),
              u"60,000 twips is beyond 32,767, the largest place or size of a panel."_s + hint);

    const test::LargeSheets unlimited;
    EXPECT_EQ(toRow(1048576), rowLimit());
    EXPECT_EQ(toColumn(16384), columnLimit());
    EXPECT_EQ(toStoredTwips(-2147483648.0) + 1, -twipsLimit());
    EXPECT_EQ(sentence(toRow, 1048577), u"Row 1,048,577 is beyond row 1,048,576, the last that a panel may use."_s);
    EXPECT_EQ(sentence(toColumn, 16385), u"Column 16,385 is beyond column XFD, the last that a panel may use."_s);
    sentence(toStoredTwips, 2147483648.0);
    sentence(number, 32768);
}

TEST(LeadingNumber, ReadsWhatATextBeginsWith)
{
    for (const auto& [text, expected] : test::textPairs(R"(
        12.75 → 12.75 | ··8.43x → 8.43 | → 0 | A → 0 | 15:3 → 15 | -3 → -3 | 12,75 → 12 | .5 → .5 | 5. → 5 | 1e2 → 100
        1e → 1 | - → 0 | . → 0 | 1e+ → 1 | +7 → 7 | 1.2.3 → 1.2)"))
        EXPECT_DOUBLE_EQ(leadingNumber(text), expected.toDouble()) << text;
}

TEST(TypedNumber, IsTheWholeTextOrNone)
{
    for (const auto& [text, expected] : test::textPairs(R"(
        15 → 15 | ·15· → 15 | -2.5 → -2.5 | +7 → 7 | .5 → .5 | 5. → 5 | 1,250 → 1250 | 1,250.75 → 1250.75 | 1e3 → 1000
        32000.5 → 32000.5)"))
        EXPECT_EQ(typedNumber(text), expected.toDouble()) << text;
    for (const QString& text : test::textList(R"(
        | ·· | ten | 15 minutes | 1.2.3 | 1.5,0 | ,5 | 1e | 1e999 | inf | nan | 0x10 | 2026-11-24)"))
        EXPECT_FALSE(typedNumber(text)) << '"' << text << '"';
}

TEST(PlainNumber, HasNoNeedlessDigits)
{
    for (const auto& [number, text] : {std::pair(12.75, u"12.75"_s), {0.1 + 0.2, u"0.3"_s}, {1234567, u"1234567"_s}})
        EXPECT_EQ(plainNumber(number), text);
}

/// The local time zone for the time of one test.
class ZoneGuard
{
public:
    explicit ZoneGuard(const char* zone)
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ZoneGuard()
    {
        qunsetenv("TZ");
        tzset();
    }
};

TEST(Times, ReadBackExactlyEvenInTheRepeatedHour)
{
    const ZoneGuard zone("CET-1CEST,M3.5.0,M10.5.0/3");
    // 02:30 comes twice on this day.
    const QDateTime first = QDateTime::fromString(u"2026-10-25T00:30:00Z"_s, Qt::ISODate);
    EXPECT_FALSE(wholeSeconds(QDateTime()).isValid());
    for (const QDateTime& instant : {first, first.addSecs(3600)}) {
        EXPECT_EQ(dateText(instant), u"2026-10-25 02:30:00"_s);
        EXPECT_EQ(dateFromText(dateText(instant)), first) << "a local text means the earlier one";
        EXPECT_EQ(dateFromText(instantText(wholeSeconds(instant.addMSecs(999)))), instant);
    }
    const QString text = instantText(first);
    EXPECT_EQ(text, u"2026-10-25 02:30:00+02:00"_s);
    const ZoneGuard elsewhere("EST5EDT,M3.2.0,M11.1.0");
    EXPECT_EQ(dateFromText(text), first) << "the project is opened in another zone";
    EXPECT_EQ(instantText(first), u"2026-10-24 20:30:00-04:00"_s);
}

TEST(Times, LeftOutByAClockChangeMoveOn)
{
    const ZoneGuard zone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(dateText(dateFromText(u"2026-03-29 02:30:00"_s)), u"2026-03-29 03:30:00"_s);
    // The first day of the year 1900 began in these places when the clocks were put on to their standard time.
    for (const char* place : {"Europe/Kiev", "Asia/Kabul", "America/Bogota", "Indian/Cocos", "Africa/Lagos"}) {
        const ZoneGuard there(place);
        EXPECT_TRUE(longAgo().isValid()) << place;
        EXPECT_TRUE(dateFromText(dateText(longAgo())).isValid()) << place;
        EXPECT_TRUE(dateFromText(u"1900-01-01 00:00:00"_s).isValid()) << place;
    }
}

TEST(Times, AreReadInTheirFormOnly)
{
    for (const QString& text : {u"2026-11-24"_s, u"24/11/2026 10:30:00"_s, u""_s, u"2026-13-01 00:00:00"_s,
                                u"2026-11-24 10:30:00+1"_s, u"2026-11-24 10:30:00+25:00"_s})
        EXPECT_FALSE(dateFromText(text).isValid()) << text;
}

TEST(Folders, GetOneDelimiterBehindThem)
{
    for (const auto& [folder, delimited] : test::textPairs(
             R"(/a/b → /a/b/ | /a/b/ → /a/b/ | C:\data\ → C:\data\ | C:\data → C:\data\ | data → data/ | → /)"))
        EXPECT_EQ(withDelimiter(folder), delimited);
}

} // namespace lumivane
