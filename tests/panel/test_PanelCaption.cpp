#include "panel/PanelCaption.h"

#include "platform/Clock.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>
#include <map>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

TEST(CaptionText, TellsMarkAndAgeOfTheFile)
{
    const std::map<QString, PanelMark> marks{
        {u""_s, PanelMark::None}, {u"*"_s, PanelMark::Base}, {u"**"_s, PanelMark::Marked}};
    for (const auto& [name, mark, stamp, now, text] : test::textTable<5>(R"(
        no stamp                        |    |                     | 2026-11-24 10:00:00 | Sales
        base                            | *  |                     | 2026-11-24 10:00:00 | *Sales
        marked with stamp               | ** | 2026-11-24 09:05:00 | 2026-11-24 10:00:00 | **Sales   (09:05 AM)
        afternoon                       |    | 2026-11-24 13:45:59 | 2026-11-24 14:00:00 | Sales   (01:45 PM)
        just after midnight             |    | 2026-11-24 00:07:00 | 2026-11-24 23:59:59 | Sales   (12:07 AM)
        two minutes ago but yesterday   |    | 2026-11-23 23:59:00 | 2026-11-24 00:01:00 | Sales   (Nov 23)
        tomorrow                        |    | 2026-11-25 08:00:00 | 2026-11-24 08:00:00 | Sales   (Nov 25)
        same day a year ago             |    | 2025-11-24 08:00:00 | 2026-11-24 08:00:00 | Sales   (Nov 24)
        source without newest file      |    | 1900-01-01 00:00:00 | 2026-11-24 08:00:00 | Sales   (Jan 1))")) {
        std::optional<QDateTime> shown;
        if (!stamp.isEmpty())
            shown = dateFromText(stamp);
        EXPECT_EQ(panelCaptionText(u"Sales"_s, marks.at(mark), shown, dateFromText(now)), text) << name;
    }
}

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
