#include "Pictures.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::embedded {
namespace {

QImage drawTexts(SheetBuilder& made, int rows = 1, int columns = 3, double scale = 1)
{
    return draw(made, rows, columns, scale);
}

bool columnHasInk(const QImage& image, int column)
{
    return !ink(image, QRect((column - 1) * cellWidth, 0, cellWidth, image.height())).isNull();
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

const QString longText = u"mmmmmmmmmmmm"_s; // wider than one cell, narrower than three

struct AlignRow
{
    const char* name;
    Horizontal horizontal;
    bool left, middle, right; ///< ink in A1, B1, C1 when the text stands in B1
};

TEST(SheetTexts, runOverEmptyNeighboursByAlignment)
{
    const AlignRow rows[] = {
        {"general", Horizontal::General, false, true, true}, {"left", Horizontal::Left, false, true, true},
        {"right", Horizontal::Right, true, true, false},     {"centred", Horizontal::Center, true, true, true},
        {"fill", Horizontal::Fill, false, true, false},      {"justify", Horizontal::Justify, false, true, false},
    };
    for (const AlignRow& row : rows) {
        SheetBuilder made;
        made.text(1, 2, longText, alignedStyle(made, row.horizontal));
        const QImage image = drawTexts(made);
        EXPECT_EQ(columnHasInk(image, 1), row.left) << row.name;
        EXPECT_EQ(columnHasInk(image, 2), row.middle) << row.name;
        EXPECT_EQ(columnHasInk(image, 3), row.right) << row.name;
    }
}

TEST(SheetTexts, stopAtWhateverIsInTheNextCell)
{
    using Fill = void (*)(SheetBuilder&);
    const std::pair<const char*, Fill> rows[] = {
        {"an empty text", [](SheetBuilder& made) { made.text(1, 2, QString()); }},
        {"a formula without result", [](SheetBuilder& made) { made.text(1, 2, u" "_s); }},
        {"a merged area",
         [](SheetBuilder& made) {
             made.sheet().merged.push_back({1, 2, 2, 2});
         }},
    };
    for (const auto& [name, fill] : rows) {
        SheetBuilder made;
        made.text(1, 1, longText);
        fill(made);
        EXPECT_FALSE(columnHasInk(drawTexts(made), 2)) << name;
    }
    SheetBuilder styled;
    styled.text(1, 1, longText).blank(1, 2, alignedStyle(styled, Horizontal::Right));
    EXPECT_TRUE(columnHasInk(drawTexts(styled), 2)) << "a style alone is no content";
}

TEST(SheetTexts, numbersAreNeverCut)
{
    SheetBuilder made, hashes;
    made.number(1, 2, 123456789012.0, made.formatStyle(u"#,##0.00"_s));
    const QImage image = drawTexts(made);
    EXPECT_FALSE(columnHasInk(image, 1));
    EXPECT_FALSE(columnHasInk(image, 3));
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

TEST(SheetTexts, generalTakesFewerDigitsInANarrowCell)
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

TEST(SheetTexts, theCustomaryDigitsFitTheirColumn)
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

TEST(SheetTexts, generalAlignsByKind)
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

TEST(SheetTexts, standAtTheirVerticalPlace)
{
    const std::pair<Vertical, int> rows[] = {{Vertical::Top, 10}, {Vertical::Center, 40}, {Vertical::Bottom, 70}};
    for (const auto& [vertical, middle] : rows) {
        SheetBuilder made;
        made.text(1, 1, u"x"_s, alignedStyle(made, Horizontal::Left, vertical));
        made.row(1).height = 60;
        EXPECT_NEAR(ink(drawTexts(made)).center().y(), middle, 5);
    }
}

TEST(SheetTexts, wrapIntoLines)
{
    SheetBuilder made;
    const int wrapped = made.style([](CellStyle& style) { style.wrap = true; });
    made.text(1, 1, u"mmmm mmmm mmmm"_s, wrapped).text(1, 3, u"m\nm"_s, wrapped);
    made.row(1).height = 60;
    const QImage image = drawTexts(made);
    EXPECT_EQ(textLines(image.copy(0, 0, cellWidth, 80)), 3);
    EXPECT_FALSE(columnHasInk(image, 2)) << "a wrapped text stays in its cell";
    EXPECT_EQ(textLines(image.copy(2 * cellWidth, 0, cellWidth, 80)), 2);
    SheetBuilder plain;
    plain.text(1, 1, u"m\nm"_s);
    plain.row(1).height = 60;
    EXPECT_EQ(textLines(drawTexts(plain)), 1) << "line feeds count only where the cell wraps";
}

TEST(SheetTexts, areIndentedFromTheirSide)
{
    const auto indented = [](Horizontal horizontal, quint8 indent) {
        SheetBuilder made;
        made.text(1, 1, u"x"_s, made.style([&](CellStyle& style) {
            style.horizontal = horizontal;
            style.indent = indent;
        }));
        return ink(drawTexts(made, 1, 1));
    };
    const int step = indented(Horizontal::Left, 1).left() - indented(Horizontal::Left, 0).left();
    EXPECT_GE(step, 8);
    EXPECT_LE(step, 11);
    EXPECT_EQ(indented(Horizontal::Left, 3).left(), indented(Horizontal::Left, 0).left() + 3 * step);
    EXPECT_EQ(indented(Horizontal::Right, 2).left(), indented(Horizontal::Right, 0).left() - 2 * step);
    EXPECT_EQ(indented(Horizontal::Center, 2).left(), indented(Horizontal::Center, 0).left());
}

TEST(SheetTexts, shrinkUntilTheyFit)
{
    SheetBuilder made;
    made.text(1, 1, longText, made.style([](CellStyle& style) { style.shrinkToFit = true; }));
    const QRect found = ink(drawTexts(made));
    EXPECT_LT(found.right(), cellWidth);
    EXPECT_GT(found.right(), cellWidth - 12) << "no smaller than it must be";
}

TEST(SheetTexts, turn)
{
    const auto turned = [](qint16 angle) {
        SheetBuilder made;
        made.text(1, 1, u"mmmmm"_s, made.style([&](CellStyle& style) { style.rotation = angle; }));
        made.row(1).height = 60;
        return ink(drawTexts(made));
    };
    EXPECT_GT(turned(0).width(), 3 * turned(0).height());
    EXPECT_GT(turned(90).height(), 3 * turned(90).width());
    EXPECT_GT(turned(-90).height(), 3 * turned(-90).width());
    EXPECT_NEAR(turned(45).height(), turned(45).width(), 4);
    EXPECT_GT(turned(255).height(), 3 * turned(255).width()) << "letters stacked";
}

TEST(SheetTexts, centreAcrossASelection)
{
    SheetBuilder made;
    const int across = alignedStyle(made, Horizontal::CenterAcross);
    made.text(1, 1, u"mmmmmmm"_s, across).blank(1, 2, across).blank(1, 3, across);
    EXPECT_NEAR(ink(drawTexts(made)).center().x(), 3 * cellWidth / 2, 2);
}

TEST(SheetTexts, repeatToFillTheCell)
{
    SheetBuilder made, once;
    made.text(1, 1, u"-"_s, alignedStyle(made, Horizontal::Fill));
    once.text(1, 1, u"-"_s);
    const QRect found = ink(drawTexts(made));
    EXPECT_GT(found.width(), 45);
    EXPECT_LT(found.right(), cellWidth);
    EXPECT_LT(ink(drawTexts(once)).width(), 8);
}

TEST(SheetTexts, standInTheMiddleOfMergedAreas)
{
    SheetBuilder made;
    made.text(1, 1, u"m"_s, alignedStyle(made, Horizontal::Center, Vertical::Center));
    made.sheet().merged.push_back({1, 1, 3, 3});
    const QRect found = ink(drawTexts(made, 3, 3));
    EXPECT_NEAR(found.center().x(), 3 * cellWidth / 2, 2);
    EXPECT_NEAR(found.center().y(), 3 * cellHeight / 2, 4);
}

TEST(SheetTexts, mirrorWithTheSheet)
{
    SheetBuilder made;
    made.sheet().view.rightToLeft = true;
    made.blank(1, 1, made.solidStyle(red)).text(1, 2, longText);
    const QImage image = drawTexts(made);
    EXPECT_EQ(image.pixel(2 * cellWidth + 10, 1), red) << "column A is at the right";
    EXPECT_NE(image.pixel(cellWidth + 10, 1), red);
    EXPECT_FALSE(columnHasInk(image, 1));
}

TEST(SheetTexts, takeTheirColours)
{
    SheetBuilder made;
    FontStyle first, second;
    first.color = red;
    second.color = blue;
    first.bold = second.bold = true;
    made.richText(1, 1, u"HHHH HHHH"_s, {{0, first}, {5, second}}).number(2, 1, -88, made.formatStyle(u"0;[Red]-0"_s));
    const QImage image = drawTexts(made, 2, 2);
    const auto reddish = [&](int x, int y) { return qRed(image.pixel(x, y)) > 200 && qBlue(image.pixel(x, y)) < 80; };
    const auto bluish = [&](int x, int y) { return qBlue(image.pixel(x, y)) > 200 && qRed(image.pixel(x, y)) < 80; };
    int lastRed = -1, firstBlue = image.width(), redBelow = 0;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y) {
            if (y >= cellHeight)
                redBelow += reddish(x, y) ? 1 : 0;
            else if (reddish(x, y))
                lastRed = x;
            else if (bluish(x, y))
                firstBlue = std::min(firstBlue, x);
        }
    EXPECT_GT(lastRed, 10);
    EXPECT_GT(firstBlue, lastRed);
    EXPECT_GT(redBelow, 3) << "the number's format asks for red";
}

TEST(SheetTexts, runsWithoutAFontTakeTheCells)
{
    SheetBuilder made, plain;
    FontStyle bold;
    bold.bold = true;
    made.richText(1, 1, u"abcdef"_s, {{0, FontStyle{}, true}, {3, FontStyle{}, true}}, made.fontStyle(bold));
    plain.text(1, 1, u"abcdef"_s, plain.fontStyle(bold));
    EXPECT_EQ(drawTexts(made), drawTexts(plain));
}

TEST(SheetTexts, areUnderlinedAndStruckOut)
{
    const auto longestStroke = [](const FontStyle& font, double number) {
        SheetBuilder made;
        made.number(1, 1, number, made.fontStyle(font));
        const QImage image = drawTexts(made, 1, 1);
        int longest = 0, rows = 0;
        for (int y = 0; y < image.height(); ++y) {
            int run = 0, best = 0;
            for (int x = 0; x < image.width(); ++x) {
                run = qGray(image.pixel(x, y)) < 60 ? run + 1 : 0;
                best = std::max(best, run);
            }
            if (best > 10)
                ++rows;
            longest = std::max(longest, best);
        }
        return std::pair(longest, rows);
    };
    FontStyle plain, single, doubled, accounting, struck;
    single.underline = Underline::Single;
    doubled.underline = Underline::Double;
    accounting.underline = Underline::SingleAccounting;
    struck.strikeOut = true;
    EXPECT_EQ(longestStroke(plain, 111).second, 0);
    EXPECT_EQ(longestStroke(single, 111).second, 1);
    EXPECT_EQ(longestStroke(doubled, 111).second, 2);
    EXPECT_EQ(longestStroke(struck, 111).second, 1);
    EXPECT_NEAR(longestStroke(single, 111).first, 21, 2) << "as wide as three digits";
    EXPECT_NEAR(longestStroke(accounting, 111).first, cellWidth - 4, 2) << "as wide as the cell";
}

TEST(SheetTexts, raisedAndLoweredLettersAreSmaller)
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

TEST(SheetTexts, hideZerosWhereTheViewSaysSo)
{
    SheetBuilder made;
    made.number(1, 1, 0).number(1, 2, 1).boolean(1, 3, false);
    made.sheet().view.showZeros = false;
    const QImage image = drawTexts(made);
    EXPECT_FALSE(columnHasInk(image, 1));
    EXPECT_TRUE(columnHasInk(image, 2));
    EXPECT_TRUE(columnHasInk(image, 3));
}

TEST(SheetTexts, showWhatAJobPutIn)
{
    SheetBuilder made, expected;
    made.number(1, 1, 5).text(1, 2, u"old"_s);
    made.sheet().view.gridLines = expected.sheet().view.gridLines = false;
    SheetOverlay overlay;
    overlay.values[{1, 1}] = {CellKind::SheetText, 0, u"new"_s};
    overlay.values[{1, 2}] = {CellKind::Blank, 0, {}};
    overlay.values[{2, 1}] = {CellKind::Number, 7, {}};
    expected.text(1, 1, u"new"_s).number(2, 1, 7);
    EXPECT_EQ(SheetPainter(made.workbook(), made.content(), &overlay).image({1, 1, 2, 2}),
              SheetPainter(expected.workbook(), expected.content()).image({1, 1, 2, 2}));
}

TEST(SheetTexts, areTwiceAsLargeAtScaleTwo)
{
    SheetBuilder made;
    made.text(1, 1, u"Hamburgefonts"_s);
    const QRect once = ink(drawTexts(made)), twice = ink(drawTexts(made, 1, 3, 2));
    EXPECT_NEAR(twice.width(), 2 * once.width(), 3);
    EXPECT_NEAR(twice.height(), 2 * once.height(), 3);
    EXPECT_NEAR(twice.bottom(), 2 * once.bottom(), 3);
}

TEST(SheetTexts, surviveHostileContent)
{
    SheetBuilder made;
    FontStyle huge, tiny;
    huge.points = 1e9;
    tiny.points = 1e-9;
    made.text(1, 1, QString(32767, u'x'), made.style([](CellStyle& style) { style.wrap = true; }))
        .text(1, 2, QString(32767, u'x'))
        .text(2, 1, u"x"_s, made.fontStyle(huge))
        .text(2, 2, u"x"_s, made.fontStyle(tiny))
        .text(3, 1, QString(3000, u'\n'), made.style([](CellStyle& style) { style.rotation = 255; }))
        .number(3, 2, std::nan(""))
        .number(3, 3, 1e308 * 10)
        .richText(4, 1, u"abc"_s, {{-5, FontStyle{}}, {2, FontStyle{}}, {1, FontStyle{}}, {99, FontStyle{}}})
        .number(4, 2, 1, 12345);
    made.styles().cells.push_back({});
    made.styles().cells.back().font = made.styles().cells.back().fill = made.styles().cells.back().border = 4711;
    made.text(4, 3, u"x"_s, static_cast<int>(made.styles().cells.size()) - 1);
    EXPECT_FALSE(drawTexts(made, 4, 3).isNull());
}

} // namespace
} // namespace lumivane::embedded
