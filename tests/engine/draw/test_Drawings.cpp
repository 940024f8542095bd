#include "Pictures.h"
#include "engine/draw/DrawingLayer.h"
#include "engine/draw/GuideValues.h"
#include "engine/draw/PictureCache.h"
#include "engine/draw/PictureFormat.h"
#include "support/TextTable.h"

#include <QBuffer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace lumivane::engine {
namespace {

/// A red shape from one cell's corner to another's.
DrawingContent shapeOn(const CellArea& anchor, const std::string& preset = "rect")
{
    DrawingContent drawing;
    drawing.anchor = anchor;
    drawing.shape.kind = ShapeContent::Kind::Shape;
    drawing.shape.geometry.preset = preset;
    drawing.shape.fill.kind = FillKind::Solid;
    drawing.shape.fill.color = red;
    return drawing;
}

QImage drawn(const DrawingContent& drawing, double scale = 1)
{
    SheetBuilder made;
    made.sheet().drawings = {drawing};
    return draw(made, 12, 6, scale);
}

QByteArray encoded(const QImage& image, const char* format = "png")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

/// Its left half red, its right half blue.
PictureFill redAndBlue()
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(red);
    for (int y = 0; y < 10; ++y)
        for (int x = 10; x < 20; ++x)
            image.setPixel(x, y, blue);
    PictureFill fill;
    fill.data = std::make_shared<const PictureData>(PictureData{u"image1.png"_s, encoded(image)});
    return fill;
}

DrawingContent pictureOn(const CellArea& anchor, const PictureFill& fill)
{
    DrawingContent drawing = shapeOn(anchor);
    drawing.kind = DrawingKind::Picture;
    drawing.shape.kind = ShapeContent::Kind::Picture;
    drawing.shape.fill.kind = FillKind::Picture;
    drawing.shape.fill.picture = fill;
    return drawing;
}

TEST(Drawings, FollowTheRowsOrKeepTheirSize)
{
    SheetBuilder made;
    made.row(3).hidden = true;
    DrawingContent fixed = shapeOn({2, 5, 2, 5});
    fixed.anchorKind = AnchorKind::OneCell;
    fixed.width = 20 * 9525;
    fixed.height = 60 * 9525;
    DrawingContent inset = shapeOn({2, 2, 6, 3});
    inset.startY = 100 * 9525; // beyond its cell
    made.sheet().drawings = {inset, fixed};
    const QImage image = draw(made, 12, 6, 2);
    EXPECT_EQ(ink(image, QRect(0, 0, 256, 440)), QRect(128, 80, 128, 80));
    EXPECT_EQ(ink(image, QRect(400, 0, 300, 440)), QRect(512, 40, 40, 120));
}

TEST(Drawings, AreTurnedAboutTheirCenter)
{
    DrawingContent shape = shapeOn({2, 2, 6, 5}); // 192 x 80 pixels
    shape.shape.rotation = 90;
    EXPECT_EQ(ink(drawn(shape)), QRect(64, 20, 192, 80)) << "the anchor encloses it as it lies";
    shape.anchorKind = AnchorKind::OneCell;
    shape.width = 100 * 9525;
    shape.height = 40 * 9525;
    EXPECT_EQ(ink(drawn(shape)), QRect(94, -10, 40, 100).intersected(QRect(0, 0, 384, 240)));
}

/// A row: name, place, turn, width of the line in pixels, size of its own picture.
TEST(Drawings, HavePicturesOfTheirOwnThatHoldAllOfThem)
{
    const std::tuple<const char*, std::string, double, int, QSize> rows[] = {
        {"plain", "rect", 0, 0, {64, 40}},
        {"with a line", "rect", 0, 4, {68, 44}},
        {"with a thin line", "rect", 0, 1, {65, 41}},
        {"turned", "rect", 90, 0, {40, 64}},
        {"pointing out of its frame", "wedgeRectCallout", 0, 0, {64, 45}},
    };
    for (const auto& [name, preset, turn, line, size] : rows) {
        DrawingContent shape = shapeOn({2, 2, 2, 2}, preset);
        shape.anchorKind = AnchorKind::OneCell;
        shape.width = 64 * 9525;
        shape.height = 40 * 9525;
        shape.shape.rotation = turn;
        shape.shape.line.drawn = line > 0;
        shape.shape.line.width = line * 9525;
        shape.shape.line.color = red;
        SheetBuilder made;
        const QImage picture = SheetPainter(made.shown()).drawingImage(shape, 1);
        EXPECT_EQ(picture.size(), size) << name;
        EXPECT_EQ(ink(picture), picture.rect()) << name;
    }
}

TEST(Drawings, AreHitWhereTheyAreSeen)
{
    DrawingContent frame = shapeOn({1, 1, 6, 3});
    const QRectF place(0, 0, 100, 60);
    const auto hit = [&](double x, double y) { return isHit(frame, place, 1, {x, y}, 4); };
    EXPECT_TRUE(hit(50, 30));
    frame.shape.fill.kind = FillKind::None;
    EXPECT_FALSE(hit(50, 30)) << "cells are seen through it";
    EXPECT_TRUE(hit(2, 30) && hit(-2, 30));
    frame.shape.geometry.preset = "line";
    EXPECT_TRUE(hit(50, 32)) << "on its way from corner to corner";
    EXPECT_FALSE(hit(2, 30));
    frame.hidden = true;
    EXPECT_FALSE(hit(50, 30));
}

TEST(Drawings, AreMarkedWhereTheyTakeTooLong)
{
    DrawingContent tangle = shapeOn({1, 1, 6, 3}); // 128 x 100 pixels
    tangle.shape.geometry.preset.clear();
    std::vector<PathStep> steps{{PathStep::Kind::Move, {"l", "t"}}};
    for (int count = 0; count < 80000; ++count)
        steps.push_back({PathStep::Kind::Line, count % 2 ? std::vector{"l"s, "t"s} : std::vector{"r"s, "b"s}});
    tangle.shape.geometry.paths = {{0, 0, true, true, steps}};
    SheetBuilder made;
    made.sheet().drawings = {tangle, shapeOn({8, 1, 9, 2})};
    const QImage image = draw(made, 12, 6);
    EXPECT_EQ(image.pixel(64, 10), white) << "within its frame";
    EXPECT_NE(image.pixel(0, 60), white) << "the frame";
    EXPECT_EQ(image.pixel(30, 150), red) << "another is drawn";
}

TEST(Drawings, ComputeGuides)
{
    for (const auto& [formula, expected] : test::textTable<2>(R"(
        val 7          | 7
        */ w 1 4       | 50
        +- h 5 1       | 104
        +/ 4 6 5       | 2
        ?: 0 1 2       | 2
        pin 0 w 100    | 100
        mod 3 4 0      | 5
        at2 1 1        | 2700000
        cos 10 cd2     | -10
        */ 1 1 0       | 0
        sqrt -1        | 0
        before         | 0
        +- before 1 0  | 8
    )")) {
        const GuideValues values({200, 100}, {{"before", "val 7"}}, {{"x", formula.toStdString()}});
        EXPECT_NEAR(values.value("x"), expected.toDouble(), 1e-6) << formula;
    }
}

TEST(Pictures, LieUnderTheCellsOfASheet)
{
    SheetBuilder made;
    made.sheet().background = redAndBlue(); // 20 x 10 pixels
    made.blank(1, 1, made.solidStyle(green));
    const QImage image = draw(made, 2, 2, 2);
    EXPECT_EQ(image.pixel(10, 10), green) << "a fill hides it";
    EXPECT_EQ(image.pixel(162, 10), red);
    EXPECT_EQ(image.pixel(198, 70), blue);
    EXPECT_EQ(SheetPainter(made.shown()).image({1, 2, 1, 2}).pixel(1, 1), red)
        << "it counts from A1, not from the range";
    EXPECT_EQ(SheetPainter(made.shown(), Metrics::Calc).image({1, 2, 1, 2}).pixel(1, 1), white);
}

TEST(Pictures, AreRefusedWithAReason)
{
    QByteArray bomb = encoded(QImage(1, 1, QImage::Format_RGB32), "bmp");
    for (const int at : {18, 22}) // its sides
        bomb.replace(at, 4, QByteArray("\x10\x27\0\0", 4));
    const std::tuple<const char*, QByteArray, QString> rows[] = {
        {"cut off", redAndBlue().data->bytes.left(30), u"it is damaged"_s},
        {"10000 by 10000 pixels", bomb, u"it is too large"_s},
        {"of another format", "II\xbc\1", u"its format is not known"_s},
        {"leading elsewhere", "<svg xmlns='http://www.w3.org/2000/svg'><style>@import url(x)</style></svg>",
         u"it draws on other files"_s},
    };
    for (const auto& [name, bytes, expected] : rows) {
        PictureFill fill;
        fill.data = std::make_shared<const PictureData>(PictureData{u"x"_s, bytes});
        EXPECT_TRUE(drawingGap(pictureOn({1, 1, 6, 3}, fill)).startsWith(expected)) << name;
        EXPECT_EQ(drawn(pictureOn({1, 1, 6, 3}, fill)).pixel(60, 0), qRgb(0x80, 0x80, 0x80)) << name;
    }
    EXPECT_EQ(drawingGap(pictureOn({1, 1, 6, 3}, {})), u"it is not in the file"_s);
    EXPECT_EQ(drawingGap(shapeOn({1, 1, 2, 2})), QString());
    EXPECT_EQ(drawingGap(shapeOn({1, 1, 2, 2}, "somethingNew")), u"its outline is drawn as a rectangle"_s);
}

TEST(Pictures, OfLinesLeadNowhere)
{
    for (const auto& [name, inside, allowed] : test::textTable<3>(R"(
        own element       | <path fill='url(#a)'/>                                   | yes
        own pixels        | <image href='data:image/png;base64,iVBOR'/>              | yes
        a file            | <image href='/etc/passwd'/>                              | no
        another SVG in it | <image href='data:image/png;base64,PHN2Zz4='/>           | no
        a style           | <path style='fill:url( "http://x/y")'/>                  | no
        broken            | <path>                                                   | no
    )"))
        EXPECT_EQ(isSelfContained(QString(u"<svg>"_s + inside + u"</svg>"_s).toUtf8()), allowed == u"yes") << name;
    const QString repeats = u"<use href='#a'/>"_s.repeated(9);
    EXPECT_FALSE(isSelfContained(QString(u"<svg>"_s + repeats + u"</svg>"_s).toUtf8()));
    EXPECT_FALSE(isSelfContained("<!DOCTYPE svg [<!ENTITY a 'b'>]><svg>&a;</svg>"));
}

TEST(Controls, ShowTheEntriesOfTheirLists)
{
    SheetBuilder made;
    for (int row = 1; row <= 4; ++row)
        made.text(row, 9, u"MMMM"_s);
    DrawingContent list = shapeOn({2, 2, 6, 3});
    list.shape.kind = ShapeContent::Kind::Control;
    list.shape.control.kind = ControlKind::List;
    list.shape.control.entries = u"$I$1:$I$4"_s;
    list.shape.control.value = 1; // the first that shows
    list.shape.control.chosen = 3;
    made.sheet().drawings = {list};
    const QImage image = draw(made, 12, 6);
    const auto blueRows = [&] {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            count += QColor(image.pixel(120, y)).blue() > QColor(image.pixel(120, y)).red() + 50;
        return count;
    }();
    EXPECT_TRUE(blueRows > 8 && blueRows < 24) << "one entry is chosen";
    EXPECT_NE(image.pixel(120, 40), white) << "the second of those that show";
    const QRect text = ink(image, QRect(68, 22, 40, 76));
    EXPECT_TRUE(text.height() > 30 && text.height() < 60) << "three of the entries: " << text.height();
    EXPECT_EQ(drawingGap(list), QString());
    list.shape.control.entries.clear();
    EXPECT_EQ(drawingGap(list), u"the entries of its list are missing"_s);
}

TEST(Comments, AreMarkedInTheCornerOfTheirCells)
{
    SheetBuilder made;
    made.sheet().comments = {{2, 2, false}, {40, 40, false}};
    EXPECT_EQ(ink(draw(made, 4, 4, 2)), QRect(245, 40, 11, 11));
    made.sheet().view.rightToLeft = true;
    EXPECT_EQ(draw(made, 4, 4).pixel(128, 20), red);
}

TEST(Comments, ThatStandOpenLieOverAllElse)
{
    SheetBuilder made;
    OpenNote note{2, 2, shapeOn({4, 4, 6, 5})};
    made.sheet().openNotes = {note};
    made.sheet().drawings = {shapeOn({1, 4, 9, 6})};
    made.sheet().drawings[0].shape.fill.color = blue;
    const QImage image = draw(made, 9, 6);
    EXPECT_EQ(image.pixel(200, 90), red);
    EXPECT_EQ(ink(image, QRect(0, 0, 190, 180)).topLeft(), QPoint(128, 20)) << "an arrow points at the cell";
    made.row(2).hidden = true;
    EXPECT_NE(draw(made, 9, 6).pixel(200, 70), red) << "with its cell";
}

TEST(Drawings, WriteTheirTexts)
{
    DrawingContent box = shapeOn({1, 1, 6, 3});
    box.shape.fill.kind = FillKind::None;
    ShapeParagraph paragraph;
    paragraph.runs = {{u"Text"_s, FontStyle()}};
    box.shape.text.paragraphs = {paragraph};
    const QRect top = ink(drawn(box));
    EXPECT_TRUE(QRect(9, 5, 40, 20).contains(top)) << top.x() << ' ' << top.y();
    box.shape.text.anchor = TextAnchor::Bottom;
    box.shape.text.paragraphs[0].align = TextAlign::Right;
    const QRect bottom = ink(drawn(box));
    EXPECT_TRUE(QRect(78, 75, 41, 20).contains(bottom)) << bottom.x() << ' ' << bottom.y();
    box.shape.flippedDown = true;
    EXPECT_LT(ink(drawn(box)).bottom(), 30) << "on its head, not mirrored";
    box.shape.text.turn = TextTurn::Clockwise;
    const QRect turned = ink(drawn(box));
    EXPECT_GT(turned.height(), turned.width());
}

} // namespace
} // namespace lumivane::engine
