#include "Pictures.h"
#include "support/TextTable.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

QImage drawTexts(SheetBuilder& made, int rows = 1, int columns = 3, double scale = 1)
{
    return draw(made, rows, columns, scale);
}

/// "#.#": which columns hold ink.
std::string inkedColumns(const QImage& image)
{
    std::string columns;
    for (int x = 0; x < image.width(); x += cellWidth)
        columns += ink(image, QRect(x, 0, cellWidth, image.height())).isNull() ? '.' : '#';
    return columns;
}

/// Rows of letters: stretches of pixel rows with ink between ones without.
int textLines(const QImage& image)
{
    int lines = 0;
    bool before = false;
    for (int y = 0; y < image.height(); ++y) {
        const bool now = !ink(image, QRect(0, y, image.width(), 1)).isNull();
        lines += now && !before ? 1 : 0;
        before = now;
    }
    return lines;
}

int alignedStyle(SheetBuilder& made, Horizontal horizontal, Vertical vertical = Vertical::Bottom)
{
    return made.style([&](CellStyle& style) {
        style.horizontal = horizontal;
        style.vertical = vertical;
    });
}

/// The ink of a text in A1, whose row is 60 points high and whose neighbours are empty.
template <class Change>
QRect inkOf(const QString& text, Change change)
{
    SheetBuilder made;
    made.text(1, 1, text, made.style(change));
    made.row(1).height = 60;
    return ink(drawTexts(made));
}

const QString longText = u"mmmmmmmmmmmm"_s; // wider than one cell, narrower than three

TEST(SheetTexts, RunOverEmptyNeighboursByAlignment)
{
    const std::tuple<Horizontal, const char*> rows[] = {
        {Horizontal::General, ".##"}, {Horizontal::Left, ".##"}, {Horizontal::Right, "##."},
        {Horizontal::Center, "###"},  {Horizontal::Fill, ".#."}, {Horizontal::Justify, ".#."},
    };
    for (const auto& [horizontal, columns] : rows) {
        SheetBuilder made;
        made.text(1, 2, longText, alignedStyle(made, horizontal));
        EXPECT_EQ(inkedColumns(drawTexts(made)), columns) << int(horizontal);
    }
}

TEST(SheetTexts, StopAtWhateverIsInTheNextCell)
{
    SheetBuilder emptyText, blankText, merged, styled;
    emptyText.text(1, 1, longText).text(1, 2, QString());
    blankText.text(1, 1, longText).text(1, 2, u" "_s);
    merged.text(1, 1, longText).merge({1, 2, 2, 2});
    styled.text(1, 1, longText).blank(1, 2, alignedStyle(styled, Horizontal::Right));
    for (SheetBuilder* const made : {&emptyText, &blankText, &merged})
        EXPECT_EQ(inkedColumns(drawTexts(*made)), "#..");
    EXPECT_EQ(inkedColumns(drawTexts(styled)), "###") << "a style alone is no content";
}

TEST(SheetTexts, NumbersAreNeverCut)
{
    SheetBuilder made, hashes;
    made.number(1, 2, 123456789012.0, made.formatStyle(u"#,##0.00"_s));
    const QImage image = drawTexts(made);
    EXPECT_EQ(inkedColumns(image), ".#.");
    bool same = false; // as many signs as fit
    for (int count = 3; count < 12 && !same; ++count) {
        SheetBuilder text;
        text.text(1, 2, QString(count, u'#'), alignedStyle(text, Horizontal::Right));
        same = drawTexts(text) == image;
    }
    EXPECT_TRUE(same);
    hashes.number(1, 2, -5, hashes.formatStyle(u"yyyy-mm-dd"_s));
    EXPECT_EQ(drawTexts(hashes), image) << "a date that does not exist";
}

TEST(SheetTexts, GeneralTakesFewerDigitsInANarrowCell)
{
    SheetBuilder made;
    made.number(1, 1, 1.0 / 3).column(1, 1, 6);
    const QImage image = drawTexts(made, 1, 1);
    int decimals = 0;
    for (int count = 1; count < 9; ++count) {
        SheetBuilder fixed;
        fixed.number(1, 1, 1.0 / 3, fixed.formatStyle(u"0."_s + QString(count, u'0'))).column(1, 1, 6);
        if (drawTexts(fixed, 1, 1) == image)
            decimals = count;
    }
    EXPECT_GE(decimals, 2);
    EXPECT_LE(decimals, 4);
}

TEST(SheetTexts, TheCustomaryDigitsFitTheirColumn)
{
    // 8.43 characters of whole-pixel digits: eight digits fit, nine do not.
    SheetBuilder eight, nine, text;
    eight.number(1, 1, 12345678, eight.formatStyle(u"0"_s));
    nine.number(1, 1, 123456789, nine.formatStyle(u"0"_s));
    text.text(1, 1, u"12345678"_s, alignedStyle(text, Horizontal::Right));
    EXPECT_EQ(drawTexts(eight, 1, 1), drawTexts(text, 1, 1));
    text.text(1, 1, u"123456789"_s, alignedStyle(text, Horizontal::Right));
    EXPECT_NE(drawTexts(nine, 1, 1), drawTexts(text, 1, 1));
}

TEST(SheetTexts, GeneralAlignsByKind)
{
    SheetBuilder made;
    made.number(1, 1, 1)
        .text(2, 1, u"1"_s)
        .boolean(3, 1, true)
        .error(4, 1, ErrorCode::NA)
        .text(5, 1, u"\u05e9\u05dc"_s);
    made.number(6, 1, 1, made.formatStyle(u"@"_s));
    const QImage image = drawTexts(made, 6, 1);
    const auto row = [&](int number) { return ink(image, QRect(0, (number - 1) * cellHeight, cellWidth, cellHeight)); };
    EXPECT_GT(row(1).left(), 48);
    EXPECT_LT(row(2).right(), 16);
    EXPECT_NEAR(row(3).center().x(), 32, 2);
    EXPECT_NEAR(row(4).center().x(), 32, 2);
    EXPECT_GT(row(5).left(), 36) << "letters written from the right";
    EXPECT_LT(row(6).right(), 16) << "a number formatted as text";
}

TEST(SheetTexts, StandAtTheirVerticalPlace)
{
    for (const auto& [vertical, middle] :
         {std::pair(Vertical::Top, 10), {Vertical::Center, 40}, {Vertical::Bottom, 70}})
        EXPECT_NEAR(inkOf(u"x"_s, [&](CellStyle& style) { style.vertical = vertical; }).center().y(), middle, 5);
}

TEST(SheetTexts, WrapIntoLines)
{
    SheetBuilder made;
    const int wrapped = made.style([](CellStyle& style) { style.wrap = true; });
    made.text(1, 1, u"mmmm mmmm mmmm"_s, wrapped).text(1, 3, u"m\nm"_s, wrapped);
    made.row(1).height = 60;
    const QImage image = drawTexts(made);
    EXPECT_EQ(textLines(image.copy(0, 0, cellWidth, 80)), 3);
    EXPECT_EQ(inkedColumns(image), "#.#") << "a wrapped text stays in its cell";
    EXPECT_EQ(textLines(image.copy(2 * cellWidth, 0, cellWidth, 80)), 2);
    SheetBuilder plain;
    plain.text(1, 1, u"m\nm"_s);
    plain.row(1).height = 60;
    EXPECT_EQ(textLines(drawTexts(plain)), 1) << "line feeds count only where the cell wraps";
}

TEST(SheetTexts, AreIndentedFromTheirSide)
{
    const auto left = [](Horizontal horizontal, quint8 indent) {
        return inkOf(u"x"_s,
                     [&](CellStyle& style) {
                         style.horizontal = horizontal;
                         style.indent = indent;
                     })
            .left();
    };
    const int step = left(Horizontal::Left, 1) - left(Horizontal::Left, 0);
    EXPECT_NEAR(step, 9, 2);
    EXPECT_EQ(left(Horizontal::Left, 3), left(Horizontal::Left, 0) + 3 * step);
    EXPECT_EQ(left(Horizontal::Right, 2), left(Horizontal::Right, 0) - 2 * step);
    EXPECT_EQ(left(Horizontal::Center, 2), left(Horizontal::Center, 0));
}

TEST(SheetTexts, ShrinkUntilTheyFit)
{
    const QRect found = inkOf(longText, [](CellStyle& style) { style.shrinkToFit = true; });
    EXPECT_LT(found.right(), cellWidth);
    EXPECT_GT(found.right(), cellWidth - 12) << "no smaller than it must be";
}

TEST(SheetTexts, Turn)
{
    const auto turned = [](qint16 angle) {
        return inkOf(u"mmmmm"_s, [&](CellStyle& style) { style.rotation = angle; });
    };
    EXPECT_GT(turned(0).width(), 3 * turned(0).height());
    for (const qint16 angle : {qint16(90), qint16(-90), qint16(255)}) // 255: letters stacked
        EXPECT_GT(turned(angle).height(), 3 * turned(angle).width()) << angle;
    EXPECT_NEAR(turned(45).height(), turned(45).width(), 4);
}

TEST(SheetTexts, BeginWhereTheyAreTurnedTo)
{
    // The first letter is the only large one.
    const std::tuple<qint16, bool, bool> rows[] = {
        {90, false, true}, {-90, true, true}, {45, false, false}, {-45, true, false}, {255, true, true}};
    for (const auto& [angle, atTop, upright] : rows) {
        SheetBuilder made;
        made.text(1, 1, u"M............"_s, made.style([&](CellStyle& style) {
            style.rotation = angle;
            style.vertical = Vertical::Top;
        }));
        made.row(1).height = 60;
        const QImage image = drawTexts(made, 1, 1);
        const QRect all = ink(image);
        const auto darkness = [&](const QRect& area) {
            qint64 sum = 0;
            for (int y = area.top(); y <= area.bottom(); ++y)
                for (int x = area.left(); x <= area.right(); ++x)
                    sum += 255 - qGray(image.pixel(x, y));
            return sum;
        };
        const QRect upper(all.left(), all.top(), all.width(), all.height() / 2);
        const QRect lower = upper.translated(0, all.height() / 2);
        EXPECT_EQ(darkness(upper) > darkness(lower), atTop) << angle;
        EXPECT_EQ(all.width() < 14, upright) << angle;
    }
}

TEST(SheetTexts, AreDrawnInTheSubstituteOfAMissingFont)
{
    const auto drawn = [](const QString& family) {
        SheetBuilder made;
        FontStyle font;
        font.family = family;
        made.text(1, 1, u"Hamburg 2026"_s, made.fontStyle(font));
        return drawTexts(made);
    };
    for (const auto& [missing, substitute] : test::textPairs(R"(
        Cambria → Caladea | Courier New → Liberation Mono | Arial Narrow → Liberation Sans Narrow
        Georgia → DejaVu Serif | Garamond → Liberation Serif | Tahoma → Liberation Sans | Consolas → Liberation Mono)"))
        EXPECT_EQ(drawn(missing), drawn(substitute)) << missing;
    EXPECT_NE(drawn(u"Cambria"_s), drawn(u"Arial"_s));
}

TEST(SheetTexts, CentreAcrossASelection)
{
    SheetBuilder made;
    const int across = alignedStyle(made, Horizontal::CenterAcross);
    made.text(1, 1, u"mmmmmmm"_s, across).blank(1, 2, across).blank(1, 3, across);
    EXPECT_NEAR(ink(drawTexts(made)).center().x(), 3 * cellWidth / 2, 2);
}

TEST(SheetTexts, RepeatToFillTheCell)
{
    const QRect found = inkOf(u"-"_s, [](CellStyle& style) { style.horizontal = Horizontal::Fill; });
    EXPECT_GT(found.width(), 45);
    EXPECT_LT(found.right(), cellWidth);
}

TEST(SheetTexts, StandInTheMiddleOfMergedAreas)
{
    SheetBuilder made;
    made.text(1, 1, u"m"_s, alignedStyle(made, Horizontal::Center, Vertical::Center));
    made.merge({1, 1, 3, 3});
    const QRect found = ink(drawTexts(made, 3, 3));
    EXPECT_NEAR(found.center().x(), 3 * cellWidth / 2, 2);
    EXPECT_NEAR(found.center().y(), 3 * cellHeight / 2, 4);
}

TEST(SheetTexts, MirrorWithTheSheet)
{
    SheetBuilder made;
    made.sheet().view.rightToLeft = true;
    made.blank(1, 1, made.solidStyle(red)).text(1, 2, longText);
    const QImage image = drawTexts(made);
    EXPECT_EQ(image.pixel(2 * cellWidth + 10, 1), red) << "column A is at the right";
    EXPECT_NE(image.pixel(cellWidth + 10, 1), red);
    EXPECT_EQ(inkedColumns(image), ".##");
}

TEST(SheetTexts, TakeTheirColours)
{
    SheetBuilder made;
    FontStyle first, second;
    first.color = red;
    second.color = blue;
    first.bold = second.bold = true;
    made.richText(1, 1, u"HHHH HHHH"_s, {{0, first}, {5, second}}).number(2, 1, -88, made.formatStyle(u"0;[Red]-0"_s));
    const QImage image = drawTexts(made, 2, 2);
    QRect reddish, bluish, redBelow;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y) {
            const QRgb color = image.pixel(x, y);
            if (qRed(color) > 200 && qBlue(color) < 80)
                (y < cellHeight ? reddish : redBelow) |= QRect(x, y, 1, 1);
            else if (qBlue(color) > 200 && qRed(color) < 80)
                bluish |= QRect(x, y, 1, 1);
        }
    EXPECT_GT(reddish.right(), 10);
    EXPECT_GT(bluish.left(), reddish.right());
    EXPECT_GT(redBelow.width(), 3) << "the number's format asks for red";
}

TEST(SheetTexts, RunsWithoutAFontTakeTheCells)
{
    SheetBuilder made, plain;
    FontStyle bold;
    bold.bold = true;
    made.richText(1, 1, u"abcdef"_s, {{0, FontStyle{}, true}, {3, FontStyle{}, true}}, made.fontStyle(bold));
    plain.text(1, 1, u"abcdef"_s, plain.fontStyle(bold));
    EXPECT_EQ(drawTexts(made), drawTexts(plain));
}

TEST(SheetTexts, AreUnderlinedAndStruckOut)
{
    FontStyle plain, single, doubled, accounting, struck;
    single.underline = Underline::Single;
    doubled.underline = Underline::Double;
    accounting.underline = Underline::SingleAccounting;
    struck.strikeOut = true;
    // As wide as three digits, or as the cell.
    const std::tuple<FontStyle, int, int> rows[] = {
        {plain, 0, 0}, {single, 1, 21}, {doubled, 2, 21}, {struck, 1, 21}, {accounting, 1, cellWidth - 4},
    };
    for (const auto& [font, strokes, width] : rows) {
        SheetBuilder made;
        made.number(1, 1, 111, made.fontStyle(font));
        const QImage image = drawTexts(made, 1, 1);
        int found = 0, longest = 0;
        for (int y = 0; y < image.height(); ++y) {
            int run = 0, best = 0;
            for (int x = 0; x < image.width(); ++x) {
                run = qGray(image.pixel(x, y)) < 60 ? run + 1 : 0;
                best = std::max(best, run);
            }
            if (best > 10) {
                ++found;
                longest = std::max(longest, best);
            }
        }
        EXPECT_EQ(found, strokes) << int(font.underline);
        EXPECT_NEAR(longest, width, 2) << int(font.underline);
    }
}

TEST(SheetTexts, RaisedAndLoweredLettersAreSmaller)
{
    const auto drawn = [](Script script) {
        SheetBuilder made;
        FontStyle font;
        font.points = 20;
        font.script = script;
        made.text(1, 1, u"H"_s, made.fontStyle(font));
        made.row(1).height = 30;
        return ink(drawTexts(made, 1, 1));
    };
    const QRect normal = drawn(Script::Normal), raised = drawn(Script::Superscript), lowered = drawn(Script::Subscript);
    EXPECT_LT(raised.height(), normal.height());
    EXPECT_LT(raised.bottom(), normal.bottom());
    EXPECT_GT(lowered.bottom(), normal.bottom());
}

TEST(SheetTexts, HideZerosWhereTheViewSaysSo)
{
    SheetBuilder made;
    made.number(1, 1, 0).number(1, 2, 1).boolean(1, 3, false);
    made.sheet().view.showZeros = false;
    EXPECT_EQ(inkedColumns(drawTexts(made)), ".##");
}

TEST(SheetTexts, AreTwiceAsLargeAtScaleTwo)
{
    SheetBuilder made;
    made.text(1, 1, u"Hamburgefonts"_s);
    const QRect once = ink(drawTexts(made)), twice = ink(drawTexts(made, 1, 3, 2));
    EXPECT_NEAR(twice.width(), 2 * once.width(), 3);
    EXPECT_NEAR(twice.height(), 2 * once.height(), 3);
    EXPECT_NEAR(twice.bottom(), 2 * once.bottom(), 3);
}

TEST(SheetTexts, SurviveHostileContent)
{
    SheetBuilder made;
    FontStyle huge, tiny;
    huge.points = 1e9;
    tiny.points = 1e-9;
    std::vector<TextRun> letterRuns;
    for (int start = 0; start < 32767; ++start)
        letterRuns.push_back({start, start % 2 ? FontStyle{} : tiny});
    made.text(1, 1, QString(32767, u'x'), made.style([](CellStyle& style) { style.wrap = true; }))
        .text(1, 2, QString(32767, u'x'))
        .text(2, 1, u"x"_s, made.fontStyle(huge))
        .text(2, 2, u"x"_s, made.fontStyle(tiny))
        .text(3, 1, QString(32767, u'x'), made.style([](CellStyle& style) { style.rotation = 255; }))
        .text(5, 1, u"x"_s + QString(32766, u'\u0301'), made.style([](CellStyle& style) { style.wrap = true; }))
        .richText(5, 2, QString(32767, u'x'), letterRuns, made.style([](CellStyle& style) { style.wrap = true; }))
        .number(3, 2, std::nan(""))
        .number(3, 3, 1e308 * 10)
        .richText(4, 1, u"abc"_s, {{-5, FontStyle{}}, {2, FontStyle{}}, {1, FontStyle{}}, {99, FontStyle{}}})
        .number(4, 2, 1, 12345);
    made.styles().cells.push_back({});
    made.styles().cells.back().font = made.styles().cells.back().fill = made.styles().cells.back().border = 4711;
    made.text(4, 3, u"x"_s, static_cast<int>(made.styles().cells.size()) - 1);
    EXPECT_FALSE(drawTexts(made, 5, 3).isNull());
}

} // namespace
} // namespace lumivane::engine
