#include "assist/Drillback.h"
#include "sharing/AltPaths.h"
#include "sharing/TwoProjects.h"
#include "support/TextTable.h"
#include "thresholds/ThresholdRules.h"

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

using HostileStatements = TwoProjects;

TEST_F(HostileStatements, OfThresholdsAlternatePathsAndDataSourcesHoldTextsAlone)
{
    mine->Execute(u"INSERT INTO LvnDrillback(PanelSourceID, Sheet) VALUES (1, 'Data')"_s);
    mine->Execute(u"INSERT INTO LvnpanelThresholds VALUES (2, 2, 2, '>1', 'color', '', '')"_s);
    mine->Execute(u"INSERT INTO LvnAltPaths VALUES ('/kept/', '/kept too/')"_s);
    const QStringList before = wholeContent(*mine);
    const PanelCells cells = PanelCells::of(u"$B$2:$C$4"_s).value();
    for (const QString& text : textList(R"(
        ' | '' | x''' | x', 'hit | x', 'hit', '', '') | Data' OR 'a' = 'a | Data'' OR ''a'' = ''a | ', '') OR ('a' = 'a
        x'; DELETE * FROM LvnAltPaths | x' -- | x", "hit | '/* | #1/1/1900#' OR PanelID > 0 OR '' = ')")) {
        SCOPED_TRACE(text);
        EXPECT_EQ(saveThresholds(1, cells, {{2, 2, true, text, text}, {3, 3, false, text, text}}), QString());
        EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnpanelThresholds WHERE PanelID = 1"_s),
                  (QStringList{u"1|2|2|%1|%1||"_s.arg(text), u"1|3|3|||%1|%1"_s.arg(text)}));
        EXPECT_EQ(saveThresholds(1, cells, {}), QString());
        EXPECT_TRUE(SaveAltPaths({text, text}));
        EXPECT_EQ(rowsOf(*mine, u"SELECT * FROM LvnAltPaths"_s).last(), text + u'|' + text);
        EXPECT_TRUE(deleteAlternatePath({text, text}));
        EXPECT_FALSE(HasDrillback(1, text, mine));
        EXPECT_EQ(wholeContent(*mine), before);
    }
    EXPECT_TRUE(HasDrillback(1, u"data"_s, mine));
}

} // namespace
} // namespace lumivane::test
