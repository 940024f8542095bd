#include "panel/PanelCaption.h"

#include "platform/Clock.h"
#include "support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

struct CaptionRow
{
    const char* name;
    PanelMark mark;
    const char* stamp; ///< null: none wanted
    const char* now;
    QString text;
};

class CaptionText : public testing::TestWithParam<CaptionRow>
{
};

TEST_P(CaptionText, TellsMarkAndAgeOfTheFile)
{
    const CaptionRow& row = GetParam();
    std::optional<QDateTime> stamp;
    if (row.stamp)
        stamp = dateFromText(QString::fromLatin1(row.stamp));
    EXPECT_EQ(panelCaptionText(u"Sales"_s, row.mark, stamp, dateFromText(QString::fromLatin1(row.now))), row.text);
}

const CaptionRow captionRows[] = {
    {"no_stamp", PanelMark::None, nullptr, "2026-11-24 10:00:00", u"Sales"_s},
    {"base", PanelMark::Base, nullptr, "2026-11-24 10:00:00", u"*Sales"_s},
    {"marked_with_stamp", PanelMark::Marked, "2026-11-24 09:05:00", "2026-11-24 10:00:00", u"**Sales   (09:05 AM)"_s},
    {"afternoon", PanelMark::None, "2026-11-24 13:45:59", "2026-11-24 14:00:00", u"Sales   (01:45 PM)"_s},
    {"just_after_midnight", PanelMark::None, "2026-11-24 00:07:00", "2026-11-24 23:59:59", u"Sales   (12:07 AM)"_s},
    {"two_minutes_ago_but_yesterday", PanelMark::None, "2026-11-23 23:59:00", "2026-11-24 00:01:00",
     u"Sales   (Nov 23)"_s},
    {"tomorrow", PanelMark::None, "2026-11-25 08:00:00", "2026-11-24 08:00:00", u"Sales   (Nov 25)"_s},
    {"same_day_a_year_ago", PanelMark::None, "2025-11-24 08:00:00", "2026-11-24 08:00:00", u"Sales   (Nov 24)"_s},
    {"source_without_newest_file", PanelMark::None, "1900-01-01 00:00:00", "2026-11-24 08:00:00", u"Sales   (Jan 1)"_s},
};
INSTANTIATE_TEST_SUITE_P(Stamps, CaptionText, testing::ValuesIn(captionRows),
                         [](const auto& row) { return row.param.name; });

TEST(CentringBlanks, CountsThoseThatFillHalfOfTheRest)
{
    EXPECT_EQ(centringBlanks(6000, 2000, 3000), 67);
    EXPECT_LT(centringBlanks(6000, 7000, 3000), 0) << "a caption wider than the panel";
    // The gap is 2000.5 and goes to the even 2000, then half a blank does the same.
    EXPECT_EQ(centringBlanks(6001, 2000, 100), 2000);
    EXPECT_EQ(centringBlanks(2010, 2000, 200), 2);
    EXPECT_EQ(centringBlanks(6000, 2000, 0), 0) << "a font without a width";
}

} // namespace
