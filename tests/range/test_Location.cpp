#include "SheetFile.h"

#include "range/PlaceDoubt.h"
#include "repository/clsWorkspacePanel.h"
#include "support/LargeSheets.h"
#include "support/LogCapture.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

TEST(ContentMatchText, IsReadClauseByClause)
{
    for (const auto& [name, match, bottom, anchor, content] : textTable<5>(R"(
        all three               | bottom=$H$40`anchor=$C5`content=Total sales | $H$40 | $C5  | Total sales
        empty clauses           | bottom=`anchor=`content=                    |       |      |
        bottom alone            | bottom=$H$40                                | $H$40 | kept | kept
        nothing                 |                                             |       | kept | kept
        keywords in capitals    | BOTTOM=$A$1`Anchor=$C5`CONTENT=x            | $A$1  | $C5  | x
        anchor without an end   | bottom=$A$1`anchor=$C5                      | $A$1  | kept | kept
        no content clause       | bottom=$A$1`anchor=$C5`                     | $A$1  |      |
        back-quote in the value | bottom=`anchor=$C5`content=a`b              |       | $C5  | a`b
        keyword in the value    | bottom=`anchor=$C5`content=a content=b      |       | $C5  | a content=b
        no bottom clause        | anchor=C$5`content=x                        |       | C$5  | x)")) {
        clsWorkspacePanel panel;
        panel.ContentMatch = match;
        QString found[] = {u"kept"_s, u"kept"_s, u"kept"_s};
        panel.parseContentMatch(found[0], found[1], found[2]);
        EXPECT_EQ(QStringList({found[0], found[1], found[2]}), QStringList({bottom, anchor, content})) << name;
    }
}

clsWorkspacePanel panelOf(const QString& picRange, const QString& relativeTo, const QString& contentMatch)
{
    clsWorkspacePanel panel;
    panel.PicRange = picRange;
    panel.RelativeTo = relativeTo;
    panel.ContentMatch = contentMatch;
    return panel;
}

/// "B17:F32, 12 rows, 0 columns, anchor" or the failure's number.
QString located(clsWorkspacePanel panel, const QString& cells)
{
    const QString picRange = panel.PicRange;
    const auto sheet = openSheet(QString(cells).replace(u' ', u'|'));
    const ThrownError failure = failureOf([&] { panel.GetAdjRange(*sheet); });
    EXPECT_EQ(panel.PicRange, picRange) << "locating leaves the stored definition alone";
    return failure.number ? QString::number(failure.number)
                          : u"%1 %2 %3 %4"_s.arg(panel.adjMovRange())
                                .arg(panel.rowOffset())
                                .arg(panel.columnOffset())
                                .arg(panel.NewCell)
                                .trimmed();
}

TEST(Locating, FollowsTheLastCellWithContents)
{
    for (const auto& [name, picRange, rule, match, cells, found] : textTable<6>(R"(
        top stays                     | $B$5:$F$20`` | top    | bottom=$H$40 | H52=x      | $B$5:$F$20 0 0
        unknown rule stays            | $B$5:$F$20`` | Bottom | bottom=$H$40 | H52=x      | $B$5:$F$20 0 0
        follows growth                | $B$5:$F$20`` | bottom | bottom=$H$40 | H52=x      | B17:F32 12 0
        follows the crossing          | $B$5:$F$20`` | bottom | bottom=$H$40 | A41=x J1=y | D6:H21 1 2
        clamps at the top             | C3:D4        | bottom | bottom=$H$40 | H35=x      | C1:D2 -2 0
        single cell                   | $B$5``       | bottom | bottom=$B$5  | B6=x       | B6:B6 1 0
        unknown cell stays            | $B$5:$F$20`` | bottom | bottom=      | H52=x      | B5:F20 0 0
        cell of one character stays   | $B$5:$F$20`` | bottom | bottom=H     | H52=x      | B5:F20 0 0
        empty sheet                   | $B$5:$F$20`` | bottom | bottom=$H$40 |            | 1004)"))
        EXPECT_EQ(located(panelOf(picRange, rule, match), cells), found) << name;
}

TEST(Locating, FollowsContents)
{
    for (const auto& [name, anchor, content, cells, found] : textTable<5>(R"(
        column                                | $C5  | Total | C9=Total            | C9:H24 4 0 $C9
        column, without case                  | $C5  | TOTAL | C9=Total            | C9:H24 4 0 $C9
        column, of another script             | $C5  | ÜBERSCHUSS | C9=Überschuss  | C9:H24 4 0 $C9
        column, wraps to its first cell       | $C5  | Total | C1=Total C30=x       | C1:H16 -4 0 $C1
        column, takes its first cell last     | $C5  | Total | C1=Total C9=Total   | C9:H24 4 0 $C9
        column, ignores other columns         | $C5  | Total | D9=Total            | $C$5:$H$20 0 0 $C5
        whole text only                       | $C5  | Total | C9=Totals           | $C$5:$H$20 0 0 $C5
        no wild cards                         | $C5  | T*    | C9=Total            | $C$5:$H$20 0 0 $C5
        number                                | $C5  | 2026  | C8=20260 C9=2026    | C9:H24 4 0 $C9
        beyond 16 bits                        | $C5  | Total | C32768=Total        | $C$5:$H$20 0 0 $C5
        row                                   | C$5  | Total | C9=Total F5=Total   | F5:K20 0 3 F$5
        row, takes column A last              | C$5  | Total | A5=Total F5=Total   | F5:K20 0 3 F$5
        row, beyond the letters               | C$5  | Total | IW5=Total           | $C$5:$H$20 0 0 C$5
        free, fixes the row                   | C5   | Total | F7=Total            | F7:K22 2 3 F$7
        free, crosses two hits                | C5   | Total | F7=Total B9=Total   | B7:G22 2 -1 B$7
        free, takes A1 last                   | C5   | Total | A1=Total F7=Total   | F7:K22 2 3 F$7
        fixed both ways, searches nothing     | $C$5 | Total | C9=Total            | $C$5:$H$20 0 0
        anchor too short                      | C    | Total | C9=Total            | $C$5:$H$20 0 0 C
        anchor that is no cell                | ?5   | Total | C9=Total            | $C$5:$H$20 0 0 ?5
        no value                              | $C5  |       | C9=Total            | $C$5:$H$20 0 0 $C5
        empty sheet                           | $C5  | Total |                     | $C$5:$H$20 0 0 $C5)"))
        EXPECT_EQ(
            located(panelOf(u"$C$5:$H$20``"_s, u"contents"_s, u"bottom=`anchor=%1`content=%2"_s.arg(anchor, content)),
                    cells),
            found)
            << name;
    EXPECT_EQ(located(panelOf(u"$C$5:$H$20``"_s, u"contents"_s, u"bottom=$A$1"_s), u"C9=Total"_s), u"$C$5:$H$20 0 0"_s);
}

TEST(Locating, GoesToTheEndOfLargeSheets)
{
    const clsWorkspacePanel fixedRows = panelOf(u"A1:B2`40000:40001`"_s, u"top"_s, {});
    EXPECT_EQ(located(fixedRows, {}), u"6"_s);
    const LargeSheets unlimited;
    EXPECT_EQ(located(fixedRows, {}), u"A1:B2 0 0"_s);
    for (const auto& [name, picRange, rule, match, cells, found] : textTable<6>(R"(
        last cell        | $B$39990:$F$40000`` | bottom   | bottom=$H$40000 | KN40010=x     | KH40000:KL40010 10 292
        bottom overflows | A1:A3``             | bottom   | bottom=A1       | A1048575=x    | 6
        row              | $C$5:$D$9``         | contents | bottom=`anchor=C$5`content=x | XFC5=x | XFC5:XFD9 0 16380 XFC$5
        right overflows  | $C$5:$D$9``         | contents | bottom=`anchor=C$5`content=x | XFD5=x | $C$5:$D$9 0 0 C$5)"))
        EXPECT_EQ(located(panelOf(picRange, rule, match), cells), found) << name;
}

TEST(Locating, SaysWhereFormulasWithoutResultsHadASay)
{
    for (const auto& [name, rule, match, cells, doubt] : textTable<5>(R"(
        the last row is known          | bottom   | bottom=$B$9                 | A9=Total A8==B1       |
        only a formula is in it        | bottom   | bottom=$B$9                 | A8=x B9==SUM(B1)      | yes
        in the column that is searched | contents | bottom=`anchor=$A5`content=x | A8=x A2==B1          | yes
        in another column              | contents | bottom=`anchor=$A5`content=x | A8=x B2==B1          |
        in the row that is searched    | contents | bottom=`anchor=A$8`content=x | A8=x C8==B1          | yes
        anywhere on the sheet          | contents | bottom=`anchor=A8`content=x  | A8=x C9==B1          | yes
        nothing is searched            | contents | bottom=`anchor=$A$8`content=x | A8=x C9==B1         |
        an area is no anchor           | contents | bottom=`anchor=$A$8:$B$9`content=x | A8=x C9==B1 | yes
        the range never moves          | top      | bottom=                     | A8=x C9==B1           |)")) {
        const auto sheet = openSheet(QString(cells).replace(u' ', u'|'));
        EXPECT_EQ(placeDoubt(panelOf(u"A1:B9`"_s, rule, match), *sheet).isEmpty(), doubt.isEmpty()) << name;
    }
}

TEST(Adjusting, MakesThePlaceFoundTheStoredOne)
{
    struct Row
    {
        const char *name, *rule, *cells;
        const char *picRange, *match, *heights, *widths; ///< "stored → adjusted", or what stays
    };
    const Row rows[] = {
        {"top keeps the range and drops the rest", "top", "H52=y", "$B$5:$F$20``",
         "bottom=$H$40`anchor=$C5`content=x → bottom=`anchor=`content=", "5:20=15", "B:F=8.43"},
        {"bottom without fixed rows keeps row keys", "bottom", "J52=y", "$B$5:$F$20`` → D17:H32``",
         "bottom=$H$40 → bottom=$J$52`anchor=`content=", "5:12=15`13:20=0", "B:F=8.43 → D:H=8.43"},
        {"fixed parts stay and moving runs follow", "bottom", "I44=y", "$C$5:$F$20`1:3`A:A → D9:G24`1:3`A:A",
         "bottom=$H$40 → bottom=$I$44`anchor=`content=", "5:12=15`13:20=0`1:3=20 → 9:16=15`17:24=0`1:3=20",
         "C:F=8.43`A:A=10 → D:G=8.43`A:A=10"},
        {"run from the fixed rows outwards is fixed", "bottom", "H44=y", "$C$5:$F$20`1:3` → C9:F24`1:3`",
         "bottom=$H$40 → bottom=$H$44`anchor=`content=", "3:6=15", ""},
        {"unmoved row keys are written anew", "top", "", "$C$5:$F$20``",
         " → bottom=`anchor=`content=", "20:5=15 → 5:20=15", "F:C=9"},
        {"anchor moves on", "contents", "C9=To`tal", "C5:H20`` → C9:H24``",
         "bottom=$H$40`anchor=$C5`content=To`tal → bottom=`anchor=$C9`content=To`tal", "", ""},
        {"anchor not found is remembered", "contents", "D9=Total", "$C$5:$H$20`1:2`",
         "bottom=`anchor=$C5`content=Total", "5:20=15", ""},
        {"anchor fixed both ways is lost", "contents", "C9=Total", "$C$5:$H$20``",
         "bottom=`anchor=$C$5`content=Total → bottom=`anchor=`content=Total", "", ""},
        {"sheet without contents loses the range", "bottom", "", "$B$5:$F$20`1:2`A:B → `1:2`A:B",
         "bottom=$H$40 → bottom=`anchor=`content=", "5:20=15", "B:F=9"},
        {"broken run leaves heights and widths", "bottom", "J52=y", "$B$5:$F$20`` → D17:H32``",
         "bottom=$H$40 → bottom=$J$52`anchor=`content=", "5:12=15`13", "B:F=9"},
    };
    const auto sides = [](const char* pair) {
        const QStringList texts = QString::fromUtf8(pair).split(u" → "_s);
        return std::pair(texts.front(), texts.back());
    };
    for (const Row& row : rows) {
        const auto [picRange, newPicRange] = sides(row.picRange);
        const auto [match, newMatch] = sides(row.match);
        const auto [heights, newHeights] = sides(row.heights);
        const auto [widths, newWidths] = sides(row.widths);
        clsWorkspacePanel panel = panelOf(picRange, QString::fromUtf8(row.rule), match);
        panel.RowHeights = heights;
        panel.ColWidths = widths;
        panel.AdjustAll(*openSheet(QString::fromUtf8(row.cells)));
        EXPECT_EQ(QStringList({panel.PicRange, panel.ContentMatch, panel.RowHeights, panel.ColWidths}),
                  QStringList({newPicRange, newMatch, newHeights, newWidths}))
            << row.name;
    }
}

TEST(Location, ARangeMeasuredTwiceCountsFromTheStoredDefinition)
{
    clsWorkspacePanel panel = panelOf(u"$B$5:$F$20``"_s, u"bottom"_s, u"bottom=$H$40"_s);
    panel.GetAdjRange(*openSheet(u"H52=x"_s));
    panel.GetAdjRange(*openSheet(u"H41=x"_s));
    EXPECT_EQ(panel.adjMovRange(), u"B6:F21"_s);
    EXPECT_EQ(panel.rowOffset(), 1);

    panel.RelativeTo = u"top"_s;
    panel.GetAdjRange(*openSheet(u"H52=x"_s));
    EXPECT_EQ(panel.rowOffset(), 0) << "what an earlier version moved is forgotten";
}

TEST(Location, AnAnchorIsKeptUnderItsRuleOnly)
{
    clsWorkspacePanel panel = panelOf(u"$B$5:$F$20``"_s, u"top"_s, {});
    panel.NewCell = u"$C9"_s;
    panel.Content = u"Total"_s;
    panel.AdjustAll(*openSheet(u"C9=Total"_s));
    EXPECT_EQ(panel.ContentMatch, u"bottom=`anchor=`content=Total"_s);
}

TEST(Location, TheAnchorIsTheFirstVisibleCellWithAValue)
{
    const auto sheet =
        openSheet(u"B5=hidden row|B6=hidden column|D7=later|E6=further right|D6=Sales"_s, u"5=0"_s, u"B=0"_s);
    clsWorkspacePanel panel;
    panel.pAdjMovRange = u"B5:F20"_s;
    panel.anchorRows = true;
    panel.SetAnchorDefaults(*sheet);
    EXPECT_EQ(panel.NewCell, u"$D$6"_s);
    EXPECT_EQ(panel.Content, u"Sales"_s);
    EXPECT_TRUE(panel.anchorCols);
    EXPECT_FALSE(panel.anchorRows);
}

TEST(Location, WithoutAnyValueTheAnchorStaysAsItWas)
{
    const auto sheet = openSheet(u"A1=outside|H9=outside"_s);
    LogCapture log;
    clsWorkspacePanel panel;
    panel.NewCell = u"$C5"_s;
    panel.Content = u"Total"_s;
    panel.pAdjMovRange = u"B2:F5"_s;
    panel.SetAnchorDefaults(*sheet);
    EXPECT_TRUE(log.entries.isEmpty());
    panel.pAdjMovRange.clear();
    panel.SetAnchorDefaults(*sheet);
    EXPECT_EQ(panel.NewCell, u"$C5"_s);
    EXPECT_EQ(panel.Content, u"Total"_s);
    EXPECT_EQ(log.entries, QStringList(u"Error clsWorkspacePanel.SetAnchorDefaults: (1004) \"\" is not an address of "
                                       "cells on sheet \"Data\" of workbook \"Report.xlsx\"."_s));
}

} // namespace
