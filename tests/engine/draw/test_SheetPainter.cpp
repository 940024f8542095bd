#include "Pictures.h"
#include "engine/draw/BorderLines.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

int countColor(const QImage& image, QRgb color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color ? 1 : 0;
    return count;
}

constexpr BorderLine thin{LineStyle::Thin};
const BorderStyle box{thin, thin, thin, thin, {}};

TEST(SheetPainter, IsAsLargeAsWhatIsVisible)
{
    SheetBuilder made;
    made.row(2).hidden = true;
    made.row(3).height = 30;
    made.column({.first = 2, .last = 2, .hidden = true});
    const SheetPainter painter(made.shown());
    EXPECT_EQ(painter.size({1, 1, 3, 3}), QSize(128, 60));
    EXPECT_EQ(painter.image({1, 1, 3, 3}).size(), QSize(128, 60));
    EXPECT_EQ(painter.image({1, 1, 3, 3}, 2).size(), QSize(256, 120));
    EXPECT_TRUE(painter.image({2, 1, 2, 3}).isNull()) << "nothing is visible";
    EXPECT_TRUE(painter.image(CellArea::wholeSheet()).isNull()) << "too large";
}

TEST(SheetPainter, FillsCells)
{
    SheetBuilder made;
    made.blank(1, 1, made.solidStyle(red)).blank(2, 2, made.solidStyle(blue));
    SheetOverlay overlay;
    overlay.colors[{2, 2}] = green;
    const QImage image = draw(made, 3, 3, 1, &overlay);
    EXPECT_EQ(image.pixel(0, 0), red);
    EXPECT_EQ(image.pixel(63, 19), red);
    EXPECT_EQ(image.pixel(64, 19), white);
    EXPECT_EQ(image.pixel(70, 25), green) << "what the job laid over it";
    EXPECT_EQ(image.pixel(130, 50), white);
}

TEST(SheetPainter, FillsRowsAndColumnsByTheirOwnStyle)
{
    SheetBuilder made;
    made.row(2).style = made.solidStyle(red);
    made.column({.first = 3, .last = 3, .style = made.solidStyle(blue)});
    const QImage image = draw(made, 3, 3);
    EXPECT_EQ(image.pixel(10, 30), red);
    EXPECT_EQ(image.pixel(140, 10), blue);
    EXPECT_EQ(image.pixel(140, 30), red) << "rows before columns";
}

TEST(SheetPainter, DrawsPatternsAndGradients)
{
    SheetBuilder made;
    made.blank(1, 1, made.fillStyle({Pattern::Gray125, black, white}))
        .blank(1, 2, made.fillStyle({Pattern::MediumGray, black, white}))
        .blank(1, 3, made.fillStyle({Pattern::LightHorizontal, red, blue}))
        .blank(1, 4, made.gradientStyle({{{0, black}, {1, white}}, 0, {}}))
        .blank(1, 5, made.gradientStyle({{{0, black}, {1, white}}, 90, {}}))
        .blank(1, 6, made.gradientStyle({{{0, red}, {0.5, black}, {1, red}}, 180, {}}))
        .blank(1, 7, made.gradientStyle({{{0, black}, {1, white}}, 0, QRectF(0.5, 0.5, 0.25, 0)}))
        .blank(2, 1, made.gradientStyle({{{0, black}, {1, white}}, 0, {}}));
    made.merge({2, 1, 2, 3});
    const QImage image = draw(made, 2, 7);
    EXPECT_EQ(countColor(image.copy(cellRect(1, 1)), black), cellWidth * cellHeight / 8);
    EXPECT_EQ(countColor(image.copy(cellRect(1, 2)), black), cellWidth * cellHeight / 2);
    EXPECT_EQ(countColor(image.copy(cellRect(1, 3)), red), cellWidth * cellHeight / 4);
    EXPECT_LT(qGray(image.pixel(3 * cellWidth + 2, 10)), 16);
    EXPECT_NEAR(qGray(image.pixel(3 * cellWidth + 32, 10)), 128, 8);
    EXPECT_GT(qGray(image.pixel(4 * cellWidth - 3, 10)), 240);
    EXPECT_LT(qGray(image.pixel(5 * cellWidth - 3, 1)), 32) << "downwards, not across";
    EXPECT_GT(qGray(image.pixel(4 * cellWidth + 2, 18)), 223);
    EXPECT_LT(qRed(image.pixel(5 * cellWidth + 32, 10)), 16) << "a colour between the ends";
    const QRgb ends[] = {image.pixel(6 * cellWidth + 38, 10), image.pixel(6 * cellWidth + 1, 10),
                         image.pixel(7 * cellWidth - 2, 10), image.pixel(6 * cellWidth + 38, 1)};
    EXPECT_LT(qGray(ends[0]), 24) << "where a gradient begins that spreads to all sides";
    for (int side = 1; side < 4; ++side)
        EXPECT_GT(qGray(ends[side]), 208) << side;
    EXPECT_NEAR(qGray(image.pixel(cellWidth + 32, 30)), 128, 8) << "through the whole merged area";
    const QImage even = SheetPainter(made.shown(), Metrics::Calc).image({1, 1, 1, 3});
    EXPECT_EQ(even.pixel(10, 10), qRgb(223, 223, 223)) << "an eighth of black";
    EXPECT_EQ(even.pixel(140, 10), qRgb(63, 0, 191));
}

TEST(SheetPainter, DrawsGridLinesWhereNothingCoversThem)
{
    SheetBuilder made;
    made.sheet().view.gridColor = blue;
    made.blank(2, 2, made.solidStyle(red)).text(1, 1, u"a text that runs into the next cell"_s);
    made.merge({3, 1, 3, 2});
    const QImage image = SheetPainter(made.shown()).image({1, 1, 4, 4});
    EXPECT_EQ(image.pixel(3 * cellWidth - 1, 10), blue) << "right edge of C1";
    EXPECT_EQ(image.pixel(3 * cellWidth - 2, 10), white);
    EXPECT_EQ(image.pixel(200, cellHeight - 1), blue) << "lower edge of D1";
    EXPECT_NE(image.pixel(cellWidth - 1, 2), blue) << "under the text of A1";
    EXPECT_EQ(image.pixel(cellWidth - 1, 30), white) << "beside a fill";
    EXPECT_EQ(image.pixel(2 * cellWidth - 1, 30), red);
    EXPECT_NE(image.pixel(cellWidth - 1, 50), blue) << "within a merged area";
    EXPECT_EQ(image.pixel(2 * cellWidth - 1, 50), blue) << "at its end";
    EXPECT_EQ(countColor(SheetPainter(made.shown(), Metrics::Calc).image({1, 1, 4, 4}), blue), 0);
    made.sheet().view.gridLines = false;
    EXPECT_EQ(countColor(SheetPainter(made.shown()).image({1, 1, 4, 4}), blue), 0);
}

TEST(BorderLines, TheHeavierOrDarkerLineShows)
{
    const std::pair<BorderLine, BorderLine> rows[] = {
        {{LineStyle::Hair}, {LineStyle::Dotted}},
        {{LineStyle::Dashed}, thin},
        {thin, {LineStyle::Medium, red}},
        {{LineStyle::Medium}, {LineStyle::Thick}},
        {{LineStyle::Thick}, {LineStyle::Double}},
        {{LineStyle::Thin, red}, thin},
        {{LineStyle::None}, {LineStyle::Thin, white}},
    };
    for (const auto& [weaker, stronger] : rows) {
        EXPECT_EQ(strongerLine(weaker, stronger), stronger);
        EXPECT_EQ(strongerLine(stronger, weaker), stronger);
    }
}

TEST(SheetPainter, KeepsBordersAtTheRimInsideThePicture)
{
    SheetBuilder made;
    made.blank(1, 1, made.borderStyle(box));
    const QImage image = draw(made, 1, 1);
    for (const QPoint corner : {QPoint(0, 0), QPoint(63, 0), QPoint(0, 19), QPoint(63, 19)})
        EXPECT_EQ(image.pixel(corner), black);
    EXPECT_EQ(countColor(image, black), 2 * (cellWidth + cellHeight) - 4);
    EXPECT_EQ(draw(made, 1, 1, 2).pixel(1, 20), black) << "two pixels wide at scale 2";
    EXPECT_EQ(draw(made, 1, 1, 2).pixel(2, 20), white);
}

TEST(SheetPainter, DrawsAPartLikeTheSamePartOfTheWhole)
{
    SheetBuilder made;
    made.text(1, 1, u"a long text that runs far into its neighbours"_s)
        .text(2, 5, u"one from the right that runs to the left"_s, made.style({.horizontal = Horizontal::Right}))
        .text(3, 2, u"merged over three cells"_s);
    made.merge({3, 2, 3, 4});
    made.sheet().view.gridLines = false;
    const SheetPainter painter(made.shown());
    const QImage whole = painter.image({1, 1, 3, 5});
    const QImage part = painter.image({1, 3, 3, 3});
    ASSERT_FALSE(ink(part, cellRect(1, 1)).isNull());
    ASSERT_FALSE(ink(part, cellRect(2, 1)).isNull());
    ASSERT_FALSE(ink(part, cellRect(3, 1)).isNull());
    EXPECT_EQ(part, whole.copy(2 * cellWidth, 0, cellWidth, 3 * cellHeight));
}

} // namespace
} // namespace lumivane::engine
