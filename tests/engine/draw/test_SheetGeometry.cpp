#include "SheetBuilder.h"
#include "engine/draw/SheetGeometry.h"
#include "engine/draw/TextLines.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

TEST(SheetGeometry, TurnsStoredWidthsIntoPixelsAndCharacters)
{
    const std::tuple<const char*, double, int, double> rows[] = {
        {"the customary one", 9.140625, 64, 8.43},
        {"narrower than a character", 1, 7, 0.58},
        {"one character", 1.7109375, 12, 1},
        {"wider than allowed", 5000, 1792, 255.29},
    };
    for (const auto& [name, stored, pixels, characters] : rows) {
        SheetBuilder made;
        made.column({1, 1, stored});
        const SheetGeometry geometry(made.shown());
        EXPECT_EQ(geometry.columnPixels(1), pixels) << name;
        EXPECT_DOUBLE_EQ(geometry.columnWidthCharacters(1), characters) << name;
    }
}

TEST(SheetGeometry, GivesColumnsTheirDefaultWidth)
{
    const std::tuple<double, int, int> rows[] = {{-1, 10, 80}, {12.7109375, 10, 89}, {-1, 1000000, 1792}};
    for (const auto& [stored, base, pixels] : rows) {
        SheetBuilder made;
        made.sheet().defaultColumnWidth = stored;
        made.sheet().baseColumnWidth = base;
        EXPECT_EQ(SheetGeometry(made.shown()).columnPixels(500), pixels) << stored << ' ' << base;
    }
}

TEST(SheetGeometry, SizesColumnsForFontsThatAreNotHere)
{
    for (const auto& [family, points, pixels] : test::textTable<3>(R"(
        Aptos Narrow   | 11 | 64
        Century Gothic | 9  | 64
        ＭＳ Ｐゴシック | 11 | 72
        SimSun         | 9  | 56
        新細明體        | 12 | 72
        맑은 고딕       | 11 | 72)")) {
        SheetBuilder made;
        made.styles().fonts[0].family = family;
        made.styles().fonts[0].points = points.toDouble();
        EXPECT_EQ(SheetGeometry(made.shown()).columnPixels(1), pixels.toInt()) << family.toStdString();
    }
}

TEST(SheetGeometry, ReadsBackTheCharactersThatAJobSets)
{
    SheetBuilder made;
    for (const double width : {0.5, 1.0, 8.43, 12.71, 30.14, 100.0}) {
        SheetOverlay overlay;
        overlay.columnWidths[1] = width;
        EXPECT_NEAR(SheetGeometry(made.shown(&overlay)).columnWidthCharacters(1), width, 0.005);
    }
}

TEST(SheetGeometry, HidesRowsAndColumns)
{
    SheetBuilder made;
    made.column({1, 1, 10, -1, 0, true}).column({2, 2, 0}).column({3, 3, 10});
    made.row(1).hidden = true;
    made.row(1).height = 30;
    made.row(2).height = 0;
    made.row(3).height = 22.5F;
    SheetOverlay overlay;
    overlay.rowHeights[4] = 0;
    overlay.rowHeights[1] = 12;
    overlay.columnWidths[3] = 0;
    const SheetGeometry stored(made.shown());
    EXPECT_EQ(stored.rowHeightPoints(1), 0);
    EXPECT_EQ(stored.shownRowHeightPoints(1), 30);
    EXPECT_EQ(stored.rowPixels(1), 0);
    EXPECT_TRUE(stored.rowHidden(2));
    EXPECT_EQ(stored.rowPixels(3), 30);
    EXPECT_TRUE(stored.columnHidden(1));
    EXPECT_EQ(stored.shownColumnPixels(1), 70);
    EXPECT_TRUE(stored.columnHidden(2));
    EXPECT_EQ(stored.columnWidthCharacters(2), 0);
    const SheetGeometry changed(made.shown(&overlay));
    EXPECT_EQ(changed.rowHeightPoints(1), 12) << "a height shows a hidden row again";
    EXPECT_TRUE(changed.rowHidden(4));
    EXPECT_TRUE(changed.columnHidden(3));
    EXPECT_EQ(changed.shownColumnPixels(3), 70) << "what it would have if shown";
}

TEST(SheetGeometry, SumsUpWithoutWalkingOverEveryRow)
{
    SheetBuilder made;
    made.row(2).height = 30;
    made.row(5).hidden = true;
    SheetOverlay overlay;
    overlay.rowHeights[7] = 60;
    const SheetGeometry geometry(made.shown(&overlay));
    EXPECT_EQ(geometry.rowsPixels(1, 10), 20 * 7 + 40 + 0 + 80);
    EXPECT_EQ(geometry.rowsPixels(1, maxRow), 20ll * (maxRow - 3) + 120);
    EXPECT_EQ(geometry.rowEdges(1, 3), (std::vector<int>{0, 20, 60, 80}));
    EXPECT_EQ(geometry.rowsPixels(5, 4), 0);
}

TEST(SheetGeometry, DoublesEdgesExactlyAtScaleTwo)
{
    SheetBuilder made;
    made.column({2, 2, 3.3}).column({3, 3, 17.77});
    made.row(1).height = 14.4F;
    made.row(2).height = 17.3F;
    const SheetGeometry geometry(made.shown());
    const auto doubled = [](std::vector<int> edges) {
        for (int& edge : edges)
            edge *= 2;
        return edges;
    };
    EXPECT_EQ(geometry.columnEdges(1, 4, 2), doubled(geometry.columnEdges(1, 4)));
    EXPECT_EQ(geometry.rowEdges(1, 4, 2), doubled(geometry.rowEdges(1, 4)));
}

TEST(SheetGeometry, GrowsRowsThatStoreNoHeight)
{
    SheetBuilder made;
    const int wrapped = made.style({.wrap = true});
    made.text(1, 1, u"x"_s)
        .text(2, 1, u"x"_s, made.fontStyle({.points = 18}))
        .text(3, 1, u"x"_s, made.fontStyle({.points = 8}))
        .text(4, 1, u"one\ntwo\nthree"_s, wrapped)
        .text(5, 1, u"one\ntwo\nthree"_s, wrapped)
        .text(6, 1, u"one\ntwo"_s)
        .text(7, 1, u"merged\nmerged"_s, wrapped)
        .text(9, 1, QString(500, u'\n'), wrapped);
    made.row(10).height = 1e9F;
    made.row(5).height = 20;
    made.merge({7, 1, 7, 2});
    const SheetGeometry geometry(made.shown());
    EXPECT_EQ(geometry.rowHeightPoints(1), 15);
    EXPECT_GE(geometry.rowHeightPoints(2), 22);
    EXPECT_LE(geometry.rowHeightPoints(2), 25);
    EXPECT_EQ(geometry.rowHeightPoints(3), 15) << "never lower than the default";
    EXPECT_EQ(geometry.rowHeightPoints(4), 45) << "three lines";
    EXPECT_EQ(geometry.rowHeightPoints(5), 20) << "stored";
    EXPECT_EQ(geometry.rowHeightPoints(6), 15) << "line feeds do not break without wrapping";
    EXPECT_EQ(geometry.rowHeightPoints(7), 15) << "merged cells do not grow";
    EXPECT_EQ(geometry.rowHeightPoints(8), 15) << "not stored";
    EXPECT_EQ(geometry.rowHeightPoints(9), 409.5) << "no row is higher";
    EXPECT_EQ(geometry.rowHeightPoints(10), 409.5);
    made.sheet().customDefaultHeight = true;
    EXPECT_EQ(SheetGeometry(made.shown()).rowHeightPoints(4), 15);
}

TEST(SheetGeometry, SizesATextFileByItsTexts)
{
    SheetBuilder made;
    const int lines = made.style({.wrap = true});
    const int date = made.formatStyle(u"yyyy-mm-dd"_s);
    made.text(1, 1, u"ii"_s).text(2, 1, u"WWWWW"_s).text(3, 1, u"iiiiiiii"_s);
    made.text(1, 2, u"a\nWWWWW\nb"_s, lines);
    made.number(2, 3, 45000, date).text(2, 4, QString(5000, u'x')).number(2, 6, 0.0001).number(3, 6, 123456789012.0);
    made.text(1, 7, u"WWWWW"_s);
    made.sheet().sizedByTexts = true;
    made.sheet().defaultRowHeight = -1;
    SheetOverlay overlay;
    overlay.columnWidths[7] = 20;
    for (const Metrics metrics : {Metrics::File, Metrics::Calc}) {
        const SheetGeometry geometry(made.shown(&overlay), metrics);
        EXPECT_GT(geometry.columnPixels(1), 60);
        EXPECT_LT(geometry.columnPixels(1), 90) << "by the widest text, not the longest nor their sum";
        EXPECT_EQ(geometry.columnPixels(2), geometry.columnPixels(1)) << "by the widest line";
        EXPECT_GT(geometry.columnPixels(3), geometry.columnPixels(1)) << "by the shown date, not its number";
        EXPECT_NEAR(geometry.columnPixels(4), 712, 15) << "no wider than a hundred characters";
        EXPECT_NEAR(geometry.columnPixels(5), 64, 1) << "no texts";
        EXPECT_GT(geometry.columnPixels(6), geometry.columnPixels(3) - 25) << "the number of most characters";
        EXPECT_EQ(geometry.columnPixels(7), 145) << "a width that a job has set";
        EXPECT_NEAR(geometry.rowHeightPoints(1), metrics == Metrics::Calc ? 35.2 : 45, 0.75) << "three lines";
        EXPECT_NEAR(geometry.rowHeightPoints(3), metrics == Metrics::Calc ? 12.8 : 15, 0.01);
    }
}

TEST(SheetGeometry, HidesRowsNotStoredWhereTheSheetSaysSo)
{
    SheetBuilder made;
    made.sheet().defaultRowsHidden = true;
    made.number(2, 1, 1);
    EXPECT_EQ(SheetGeometry(made.shown()).rowEdges(1, 4), (std::vector<int>{0, 0, 20, 20, 20}));
    EXPECT_EQ(SheetGeometry(made.shown()).rowsPixels(1, 1000), 20);
}

TEST(SheetGeometry, MeasuresAsCalcDoesWhenAsked)
{
    SheetBuilder made;
    made.column({1, 1, 20});
    made.row(1).height = 14.4F;
    const SheetGeometry geometry(made.shown(), Metrics::Calc);
    EXPECT_EQ(geometry.columnPixels(1), 148);
    EXPECT_EQ(geometry.columnPixels(2), 64);
    EXPECT_DOUBLE_EQ(geometry.rowHeightPoints(1), 14.25) << "cut to whole pixels";
}

TEST(Fonts, GivesMissingFamiliesOneOfEqualWidths)
{
    for (const auto& [asked, installed] : test::textPairs(R"(
        Consolas → Liberation Mono | ARIAL → Liberation Sans | Arial CE → Liberation Sans | Times New Roman → Liberation Serif
        DejaVu Sans Mono → DejaVu Sans Mono | No Such Font → Liberation Sans | Verdana → DejaVu Sans)"))
        EXPECT_EQ(installedFamily(asked), installed);
}

TEST(TextLines, BreaksWhereALineIsFull)
{
    // "/" between lines, "¶" behind the last of a paragraph.
    for (const auto& [name, text, width, expected] : test::textTable<4>(R"(
        between words                       | one two three | 70  | one two/three¶
        blank at the break is dropped       | one two       | 40  | one/two¶
        blank beyond the edge needs no room | one two       | 30  | one/two¶
        line feed                           | a⏎b           | 100 | a¶b¶
        empty lines stay                    | a⏎⏎b⏎         | 100 | a¶¶b¶¶
        long word between letters           | abcdefgh      | 30  | abc/def/gh¶
        long word behind a short one        | a bcdefgh     | 30  | a/bcd/efg/h¶
        narrower than a letter              | abc           | 5   | a/b/c¶
        hyphen                              | well-known    | 60  | well-/known¶
        empty                               |               | 10  | ¶)")) {
        QString lines;
        for (const TextLine& line : breakLines(text, width.toDouble(), [](int, int length) { return length * 10.0; }))
            lines += text.mid(line.start, line.length) + (line.endsParagraph ? u'¶' : u'/');
        EXPECT_EQ(lines, expected) << name;
    }
    EXPECT_EQ(breakLines(u"a\r\nb"_s, 100, [](int, int) { return 10.0; })[0].length, 1) << "without the line's end";
}

TEST(TextLines, MeasuresEachPartOfALongTextAFewTimes)
{
    constexpr int size = 200000;
    const std::pair<QString, int> rows[] = {{QString(size, u'x'), size / 3 + 1},
                                            {u"ab cd "_s.repeated(size / 6), size / 3},
                                            {u"x"_s + QString(size, u' '), 1}};
    for (const auto& [text, count] : rows) {
        qint64 measured = 0;
        const auto lines = breakLines(text, 30, [&](int, int length) {
            measured += length;
            return length * 10.0;
        });
        EXPECT_NEAR(double(lines.size()), count, 2);
        EXPECT_LT(measured, 40ll * size);
    }
}

TEST(TextLines, LeaveOutMarksThatNoLetterCarries)
{
    const QString accents(30, QChar(0x301));
    EXPECT_EQ(withFewMarks(u"e"_s + accents + u"\u0301\u0301a\u0301"_s), QString(u"e"_s + accents + u"a\u0301"_s));
}

} // namespace
} // namespace lumivane::engine
