#include "range/AnchorChoices.h"

#include "support/LargeSheets.h"
#include "support/PlainSheet.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

/// "value@place" of each choice, joined by blanks.
QString choicesIn(PlainSheet& sheet, const QString& range)
{
    std::vector<AnchorChoice> choices;
    collectAnchorChoices(sheet.Range(range), choices);
    QStringList texts;
    for (const AnchorChoice& choice : choices)
        texts.append(choice.value + u'@' + QString::number(choice.place));
    return texts.join(u' ');
}

TEST(AnchorChoices, LeaveOutNumbersWithDecimalsAndBlanks)
{
    for (const auto& [name, value, offered] : textTable<3>(R"(
        whole number                 | 2008        | 2008@1001
        decimals                     | 2008.5      |
        negative decimals            | -.5         |
        grouped digits               | 1,250       |
        small number without a point | 1E-05       | 1E-05@1001
        text with a point            | No.5        | No.5@1001
        text with a comma            | Sales,total | Sales,total@1001
        blank                        |             |)")) {
        PlainSheet sheet(u"Data"_s);
        sheet.put(u"A1"_s, value);
        EXPECT_EQ(choicesIn(sheet, u"A1:B2"_s), offered) << name;
    }
}

TEST(AnchorChoices, GoDownTheFirstColumnFirstAndKeepEqualValuesApart)
{
    PlainSheet sheet(u"Data"_s);
    sheet.put(u"C5"_s, u"North"_s).put(u"D5"_s, u"Plan"_s).put(u"C7"_s, u"Plan"_s).put(u"D6"_s, u"x"_s);
    sheet.put(u"B5"_s, u"before"_s).put(u"C8"_s, u"below"_s);
    EXPECT_EQ(choicesIn(sheet, u"$C$5:$D$7"_s), u"North@1001 Plan@1003 Plan@2001 x@2002"_s);
}

TEST(AnchorChoices, HiddenRowsAndColumnsOfferNothing)
{
    PlainSheet sheet(u"Data"_s);
    for (const char* cell : {"A1", "B1", "C1", "A2", "B2", "C2"})
        sheet.put(QString::fromLatin1(cell), QString::fromLatin1(cell));
    sheet.setRowHeight(1, 1, 0);
    sheet.setColumnWidth(2, 2, 0);
    EXPECT_EQ(choicesIn(sheet, u"A1:C2"_s), u"A2@1002 C2@3002"_s);
}

TEST(AnchorChoices, WholeColumnsEndWithTheCellsInUse)
{
    PlainSheet sheet(u"Data"_s);
    sheet.put(u"B2"_s, u"first"_s).put(u"B40"_s, u"last"_s);
    EXPECT_EQ(choicesIn(sheet, u"B:C"_s), u"first@1002 last@1040"_s);
    EXPECT_EQ(choicesIn(sheet, u"D50:F60"_s), u""_s);
}

TEST(AnchorChoices, PlacesEndWithThe32ndColumn)
{
    PlainSheet sheet(u"Data"_s);
    sheet.put(u"A1"_s, u"a"_s).put(u"AF767"_s, u"last"_s);
    EXPECT_EQ(choicesIn(sheet, u"A1:AH800"_s), u"a@1001 last@32767"_s) << "columns without values need no place";
}

TEST(AnchorChoices, AreCellsOfTheSheet)
{
    // Rows beyond 999 count as rows of later columns.
    const std::tuple<int, int, int, QString, QString> rows[] = {{1001, 1, 1, u"$A1"_s, u"A$1"_s},
                                                                {3012, 5, 25, u"$AA16"_s, u"AA$16"_s},
                                                                {32767, 1, 225, u"$IV767"_s, u"IV$767"_s}};
    for (const auto& [place, firstRow, firstColumn, inColumn, inRow] : rows) {
        const AnchorCell cell(place, firstRow, firstColumn);
        EXPECT_EQ(cell.anchor(true), inColumn);
        EXPECT_EQ(cell.anchor(false), inRow);
    }
    const LargeSheets unlimited;
    PlainSheet sheet(u"Data"_s);
    sheet.put(u"XFD1048576"_s, u"last"_s);
    std::vector<AnchorChoice> choices;
    collectAnchorChoices(sheet.Range(u"XEA1048000:XFD1048576"_s), choices);
    ASSERT_EQ(choices.size(), 1u);
    EXPECT_EQ(AnchorCell(choices[0].place, 1048000, sheet.Range(u"XEA1"_s).Column()).anchor(true), u"$XFD1048576"_s);
}

} // namespace
