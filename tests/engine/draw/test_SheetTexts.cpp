#include "Pictures.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

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

/// The ink of a text in A1, whose row is 60 points high and whose neighbours are empty.
QRect inkOf(const QString& text, const CellStyle& style)
{
    SheetBuilder made;
    made.text(1, 1, text, made.style(style));
    made.row(1).height = 60;
    return ink(draw(made));
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
        made.text(1, 2, longText, made.style({.horizontal = horizontal}));
        EXPECT_EQ(inkedColumns(draw(made)), columns) << int(horizontal);
    }
}

TEST(SheetTexts, StopAtWhateverIsInTheNextCell)
{
    SheetBuilder emptyText, blankText, merged, styled;
    emptyText.text(1, 1, longText).text(1, 2, QString());
    blankText.text(1, 1, longText).text(1, 2, u" "_s);
    merged.text(1, 1, longText).merge({1, 2, 2, 2});
    styled.text(1, 1, longText).blank(1, 2, styled.style({.horizontal = Horizontal::Right}));
    for (SheetBuilder* const made : {&emptyText, &blankText, &merged})
        EXPECT_EQ(inkedColumns(draw(*made)), "#..");
    EXPECT_EQ(inkedColumns(draw(styled)), "###") << "a style alone is no content";
}

TEST(SheetTexts, NumbersShowWhatFitsAndAreNeverCut)
{
    // 8.43 characters of whole-pixel digits: eight fit, nine do not.
    const std::tuple<QString, double, double, QString> rows[] = {
        {u"0"_s, 12345678, 9.140625, u"12345678"_s},
        {u"0"_s, 123456789, 9.140625, u"########"_s},
        {u"yyyy-mm-dd"_s, -5, 9.140625, u"########"_s},
        {u"General"_s, 1.0 / 3, 6, u"0.3333"_s},
    };
    for (const auto& [format, value, width, expected] : rows) {
        SheetBuilder made, text;
        made.column({1, 1, width}).number(1, 1, value, made.formatStyle(format));
        text.column({1, 1, width}).text(1, 1, expected, text.style({.horizontal = Horizontal::Right}));
        EXPECT_EQ(draw(made), draw(text)) << expected.toStdString();
    }
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
    const QImage image = draw(made, 6, 1);
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
        EXPECT_NEAR(inkOf(u"x"_s, {.vertical = vertical}).center().y(), middle, 5);
}

TEST(SheetTexts, WrapIntoLines)
{
    SheetBuilder made;
    const int wrapped = made.style({.wrap = true});
    made.text(1, 1, u"mmmm mmmm mmmm"_s, wrapped).text(1, 3, u"m\nm"_s, wrapped);
    made.row(1).height = 60;
    const QImage image = draw(made);
    EXPECT_EQ(textLines(image.copy(0, 0, cellWidth, 80)), 3);
    EXPECT_EQ(inkedColumns(image), "#.#") << "a wrapped text stays in its cell";
    EXPECT_EQ(textLines(image.copy(2 * cellWidth, 0, cellWidth, 80)), 2);
    SheetBuilder plain;
    plain.text(1, 1, u"m\nm"_s);
    plain.row(1).height = 60;
    EXPECT_EQ(textLines(draw(plain)), 1) << "line feeds count only where the cell wraps";
}

TEST(SheetTexts, AreIndentedFromTheirSide)
{
    const auto left = [](Horizontal horizontal, quint8 indent) {
        return inkOf(u"x"_s, {.horizontal = horizontal, .indent = indent}).left();
    };
    const int step = left(Horizontal::Left, 1) - left(Horizontal::Left, 0);
    EXPECT_NEAR(step, 9, 2);
    EXPECT_EQ(left(Horizontal::Left, 3), left(Horizontal::Left, 0) + 3 * step);
    EXPECT_EQ(left(Horizontal::Right, 2), left(Horizontal::Right, 0) - 2 * step);
    EXPECT_EQ(left(Horizontal::Center, 2), left(Horizontal::Center, 0));
}

TEST(SheetTexts, ShrinkUntilTheyFit)
{
    const QRect found = inkOf(longText, {.shrinkToFit = true});
    EXPECT_LT(found.right(), cellWidth);
    EXPECT_GT(found.right(), cellWidth - 12) << "no smaller than it must be";
    for (const QString& text : {longText.repeated(2), longText.repeated(4), u"Shrinks to fit its small cell"_s})
        EXPECT_NEAR(inkOf(text, {.shrinkToFit = true}).right(), cellWidth - 4, 2) << text.toStdString();
}

TEST(SheetTexts, BeginWhereTheyAreTurnedTo)
{
    // The first letter is the only large one.
    const std::tuple<qint16, bool, bool> rows[] = {
        {90, false, true}, {-90, true, true}, {45, false, false}, {-45, true, false}, {255, true, true}};
    for (const auto& [angle, atTop, upright] : rows) {
        SheetBuilder made;
        made.text(1, 1, u"M............"_s, made.style({.vertical = Vertical::Top, .rotation = angle}));
        made.row(1).height = 60;
        const QImage image = draw(made, 1, 1);
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
    SheetBuilder missing, substitute;
    missing.text(1, 1, u"Hamburg 2026"_s, missing.fontStyle({.family = u"Tahoma"_s}));
    substitute.text(1, 1, u"Hamburg 2026"_s, substitute.fontStyle({.family = u"Liberation Sans"_s}));
    EXPECT_EQ(draw(missing), draw(substitute));
}

TEST(SheetTexts, AreAsNarrowAsTheirFont)
{
    SheetBuilder narrow, usual;
    narrow.text(1, 1, u"Hamburg 2026"_s, narrow.fontStyle({.family = u"Arial Narrow"_s}));
    usual.text(1, 1, u"Hamburg 2026"_s, usual.fontStyle({.family = u"Arial"_s}));
    EXPECT_NEAR(ink(draw(narrow)).width(), 0.82 * ink(draw(usual)).width(), 5);
}

TEST(SheetTexts, CentreAcrossASelection)
{
    SheetBuilder made;
    const int across = made.style({.horizontal = Horizontal::CenterAcross});
    made.text(1, 1, u"mmmmmmm"_s, across).blank(1, 2, across).blank(1, 3, across);
    EXPECT_NEAR(ink(draw(made)).center().x(), 3 * cellWidth / 2, 2);
}

TEST(SheetTexts, RepeatToFillTheCell)
{
    const QRect found = inkOf(u"-"_s, {.horizontal = Horizontal::Fill});
    EXPECT_GT(found.width(), 45);
    EXPECT_LT(found.right(), cellWidth);
}

TEST(SheetTexts, GoOnOverFreeCellsThatAreAlignedAlike)
{
    SheetBuilder filled, centred;
    const int fill = filled.style({.horizontal = Horizontal::Fill});
    filled.number(1, 1, 7, fill).blank(1, 2, fill);
    EXPECT_NEAR(ink(draw(filled)).right(), 2 * cellWidth, 10);
    const int across = centred.style({.horizontal = Horizontal::CenterAcross});
    centred.number(1, 1, 1234567890123, across).blank(1, 2, across).blank(1, 3, across);
    EXPECT_NEAR(ink(draw(centred)).center().x(), 3 * cellWidth / 2, 2);
    EXPECT_FALSE(ink(SheetPainter(centred.shown()).image({1, 2, 1, 3})).isNull()) << "from outside the picture";
}

TEST(SheetTexts, AreSpreadOverTheirLine)
{
    // Where ink begins and ends, and how many stretches of it there are.
    const std::tuple<QString, bool, int, int, int> rows[] = {
        {u"i i i"_s, false, 3, 61, 3},
        {u"\u65e5\u672c\u8a9e"_s, false, 3, 61, 3},
        {u"i i i"_s, true, 16, 47, 3},
        {u"\u65e5\u672c i"_s, false, 3, 61, 3},
        {u"\U00020000\U00020000"_s, false, 3, 61, 2},
        {u"iii"_s, false, 27, 36, 1},
    };
    for (const auto& [text, around, left, right, stretches] : rows) {
        SheetBuilder made;
        made.text(1, 1, text, made.style({.horizontal = Horizontal::Distributed, .spaceAround = around}));
        made.row(1).height = 60;
        const QImage image = draw(made, 1, 1);
        EXPECT_NEAR(ink(image).left(), left, 3) << text.toStdString();
        EXPECT_NEAR(ink(image).right(), right, 4) << text.toStdString();
        int found = 0, empty = 9;
        for (int x = 0; x < cellWidth; ++x) {
            const bool inked = !ink(image, QRect(x, 0, 1, image.height())).isNull();
            found += inked && empty > 4 ? 1 : 0;
            empty = inked ? 0 : empty + 1;
        }
        EXPECT_EQ(found, stretches) << text.toStdString();
    }
}

TEST(SheetTexts, StandInTheMiddleOfMergedAreas)
{
    SheetBuilder made;
    made.text(1, 1, u"m"_s, made.style({.horizontal = Horizontal::Center, .vertical = Vertical::Center}));
    made.merge({1, 1, 3, 3});
    const QRect found = ink(draw(made, 3, 3));
    EXPECT_NEAR(found.center().x(), 3 * cellWidth / 2, 2);
    EXPECT_NEAR(found.center().y(), 3 * cellHeight / 2, 4);
}

TEST(SheetTexts, MirrorWithTheSheet)
{
    SheetBuilder made;
    made.sheet().view.rightToLeft = true;
    made.blank(1, 1, made.solidStyle(red)).text(1, 2, longText);
    const QImage image = draw(made);
    EXPECT_EQ(image.pixel(2 * cellWidth + 10, 1), red) << "column A is at the right";
    EXPECT_NE(image.pixel(cellWidth + 10, 1), red);
    EXPECT_EQ(inkedColumns(image), ".##");
}

TEST(SheetTexts, TakeTheirColours)
{
    SheetBuilder made;
    made.text(1, 1, u"HHHH HHHH"_s, 0, {{0, {.bold = true, .color = red}}, {5, {.bold = true, .color = blue}}});
    made.number(2, 1, -88, made.formatStyle(u"0;[Red]-0"_s));
    const QImage image = draw(made, 2, 2);
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
    made.text(1, 1, u"abcdef"_s, made.fontStyle({.bold = true}), {{0, {}, true}, {3, {}, true}});
    plain.text(1, 1, u"abcdef"_s, plain.fontStyle({.bold = true}));
    EXPECT_EQ(draw(made), draw(plain));
}

/// How many rows of pixels hold a stroke, and how wide the widest is.
std::pair<int, int> strokes(const QImage& image)
{
    int found = 0, longest = 0;
    for (int y = 0; y < image.height(); ++y) {
        std::string dark;
        for (int x = 0; x < image.width(); ++x)
            dark += qGray(image.pixel(x, y)) < 60 ? '#' : ' ';
        const auto begin = dark.find("##########");
        if (begin != std::string::npos) {
            ++found;
            longest = std::max(longest, int(dark.find(' ', begin) - begin));
        }
    }
    return {found, longest};
}

TEST(SheetTexts, AreUnderlinedAndStruckOut)
{
    // As wide as three digits or letters, or as the cell.
    const std::tuple<FontStyle, int, int, int> rows[] = {
        {{}, 0, 0, 0},
        {{.underline = Underline::Single}, 1, 21, 21},
        {{.underline = Underline::Double}, 2, 21, 21},
        {{.strikeOut = true}, 1, 21, 21},
        {{.underline = Underline::SingleAccounting}, 1, 21, cellWidth - 4},
        {{.underline = Underline::DoubleAccounting}, 2, 21, cellWidth - 4},
    };
    for (const auto& [font, count, ofNumber, ofText] : rows) {
        SheetBuilder number, text;
        number.number(1, 1, 111, number.fontStyle(font));
        text.text(1, 1, u"111"_s, text.fontStyle(font));
        for (const auto& [made, width] : {std::pair(&number, ofNumber), {&text, ofText}}) {
            const auto [found, longest] = strokes(draw(*made, 1, 1));
            EXPECT_EQ(found, count) << int(font.underline);
            EXPECT_NEAR(longest, width, 2) << int(font.underline);
        }
    }
}

TEST(SheetTexts, RaisedAndLoweredLettersAreSmaller)
{
    const auto drawn = [](Script script) {
        SheetBuilder made;
        made.text(1, 1, u"H"_s, made.fontStyle({.points = 20, .script = script}));
        made.row(1).height = 30;
        return ink(draw(made, 1, 1));
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
    EXPECT_EQ(inkedColumns(draw(made)), ".##");
}

TEST(SheetTexts, AreTwiceAsLargeAtScaleTwo)
{
    SheetBuilder made;
    made.text(1, 1, u"Hamburgefonts"_s);
    const QRect once = ink(draw(made)), twice = ink(draw(made, 1, 3, 2));
    EXPECT_NEAR(twice.width(), 2 * once.width(), 3);
    EXPECT_NEAR(twice.height(), 2 * once.height(), 3);
    EXPECT_NEAR(twice.bottom(), 2 * once.bottom(), 3);
}

TEST(SheetTexts, SurviveHostileContent)
{
    SheetBuilder made;
    std::vector<TextRun> letterRuns;
    for (int start = 0; start < 32767; ++start)
        letterRuns.push_back({start, start % 2 ? FontStyle{} : FontStyle{.points = 1e-9}});
    const QString longest(32767, u'x');
    const int wrapped = made.style({.wrap = true});
    made.text(1, 1, longest, wrapped)
        .text(1, 2, longest)
        .text(2, 1, u"x"_s, made.fontStyle({.points = 1e9}))
        .text(2, 2, u"x"_s, made.fontStyle({.points = 1e-9}))
        .text(3, 1, longest, made.style({.rotation = 255}))
        .number(3, 2, std::nan(""))
        .number(3, 3, 1e308 * 10)
        .text(4, 1, u"abc"_s, 0, {{-5, {}}, {2, {}}, {1, {}}, {99, {}}})
        .number(4, 2, 1, 12345)
        .text(4, 3, u"x"_s, made.style({.font = 4711, .fill = 4711, .border = 4711}))
        .text(5, 1, u"x"_s + QString(32766, u'\u0301'), wrapped)
        .text(5, 2, longest, wrapped, letterRuns);
    EXPECT_FALSE(draw(made, 5, 3).isNull());
}

} // namespace
} // namespace lumivane::engine
