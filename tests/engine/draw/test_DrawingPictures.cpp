#include "ExpectedPicture.h"
#include "PictureBook.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

/// A shape or a picture in a place on the sheet, in pixels.
std::string object(int x, int y, int width, int height, const std::string& xml)
{
    const auto emu = [](int pixels) { return std::to_string(pixels * 9525); };
    return "<xdr:absoluteAnchor><xdr:pos x='" + emu(x) + "' y='" + emu(y) + "'/><xdr:ext cx='" + emu(width) + "' cy='" +
           emu(height) + "'/>" + xml + "<xdr:clientData/></xdr:absoluteAnchor>";
}

std::string shape(const std::string& preset, const std::string& frame, const std::string& looks,
                  const std::string& behind = "")
{
    return "<xdr:sp><xdr:nvSpPr><xdr:cNvPr id='2' name='S'/></xdr:nvSpPr><xdr:spPr><a:xfrm " + frame +
           "/><a:prstGeom prst='" + preset + "'/>" + looks + "</xdr:spPr>" + behind + "</xdr:sp>";
}

std::string color(const std::string& value, const std::string& change = "")
{
    return "<a:srgbClr val='" + value + "'>" + change + "</a:srgbClr>";
}

std::string solidFill(const std::string& value)
{
    return "<a:solidFill>" + color(value) + "</a:solidFill>";
}

std::string gradient(const std::string& how)
{
    return "<a:gradFill><a:gsLst><a:gs pos='0'>" + color("FFFF00") + "</a:gs><a:gs pos='40000'>" + color("FF0000") +
           "</a:gs><a:gs pos='100000'>" + color("0000C0") + "</a:gs></a:gsLst>" + how + "</a:gradFill>";
}

std::string outline(const std::string& value, int pixels, const std::string& more = "")
{
    return "<a:ln w='" + std::to_string(pixels * 9525) + "'>" + solidFill(value) + more + "</a:ln>";
}

PictureBook drawingsOf(const std::string& objects)
{
    PictureBook book;
    book.part("drawing", "<xdr:wsDr>" + objects + "</xdr:wsDr>").behind("<drawing r:id='r1'/>");
    return book;
}

TEST(DrawingPictures, Outlines)
{
    std::string objects;
    int place = 0;
    for (const char* preset : {"rect",
                               "roundRect",
                               "ellipse",
                               "triangle",
                               "rtTriangle",
                               "round2SameRect",
                               "diamond",
                               "parallelogram",
                               "trapezoid",
                               "hexagon",
                               "octagon",
                               "pentagon",
                               "plus",
                               "star4",
                               "star5",
                               "star8",
                               "rightArrow",
                               "leftArrow",
                               "upArrow",
                               "downArrow",
                               "leftRightArrow",
                               "chevron",
                               "homePlate",
                               "wedgeRectCallout",
                               "wedgeEllipseCallout",
                               "can",
                               "donut",
                               "bentConnector3",
                               "line",
                               "leftBrace",
                               "flowChartDecision",
                               "somethingNew"}) {
        objects += object(4 + place % 7 * 42, 4 + place / 7 * 34, 34, 26,
                          shape(preset, "", solidFill("F79646") + outline("000000", 1)));
        ++place;
    }
    expectPicture(drawingsOf(objects).image(u"A1:G9"_s), u"outlines"_s);
}

TEST(DrawingPictures, FillsOfShapes)
{
    std::string objects;
    int place = 0;
    for (const std::string& fill :
         {gradient("<a:lin ang='0'/>"), gradient("<a:lin ang='2700000' scaled='0'/>"),
          gradient("<a:lin ang='2700000' scaled='1'/>"), gradient("<a:lin ang='5400000'/>"),
          gradient("<a:path path='circle'><a:fillToRect l='50000' t='50000' r='50000' b='50000'/></a:path>"),
          gradient("<a:path path='rect'><a:fillToRect l='20000' t='50000' r='80000' b='50000'/></a:path>"),
          "<a:pattFill prst='dkDnDiag'><a:fgClr>" + color("C00000") + "</a:fgClr><a:bgClr>" + color("FFFFFF") +
              "</a:bgClr></a:pattFill>",
          "<a:solidFill>" + color("0070C0", "<a:alpha val='40000'/>") + "</a:solidFill>"}) {
        objects +=
            object(4 + place % 4 * 60, 4 + place / 4 * 36, 52, 28, shape(place < 6 ? "rect" : "ellipse", "", fill));
        ++place;
    }
    expectPicture(drawingsOf(objects).image(u"A1:F4"_s), u"fills-of-shapes"_s);
}

TEST(DrawingPictures, LinesAndTheirEnds)
{
    std::string objects;
    int y = 8;
    for (const char* dash : {"solid", "dot", "dash", "lgDash", "dashDot", "lgDashDot", "lgDashDotDot", "sysDot",
                             "sysDash", "sysDashDot", "sysDashDotDot"}) {
        objects += object(6, y, 100, 0,
                          shape("line", "", outline("000000", 2, "<a:prstDash val='" + std::string(dash) + "'/>")));
        y += 10;
    }
    y = 12;
    for (const char* end : {"triangle", "stealth", "diamond", "oval", "arrow"}) {
        const std::string kind = "type='" + std::string(end) + "'";
        objects += object(
            120, y, 60, 0,
            shape("line", "",
                  outline("C00000", 2,
                          "<a:headEnd " + kind + " w='sm' len='sm'/><a:tailEnd " + kind + " w='lg' len='lg'/>")));
        y += 22;
    }
    objects += object(196, 8, 40, 40, shape("line", "flipV='1'", outline("0070C0", 3, "<a:tailEnd type='triangle'/>")));
    objects += object(196, 60, 40, 40, shape("line", "flipH='1'", outline("0070C0", 6, "<a:headEnd type='arrow'/>")));
    expectPicture(drawingsOf(objects).image(u"A1:F6"_s, 1.5), u"lines"_s);
}

TEST(DrawingPictures, PlacesOfShapes)
{
    const std::string red = solidFill("FF5050"), blue = solidFill("5080FF");
    const auto shadow = [](const std::string& attributes) {
        return "<a:effectLst><a:outerShdw " + attributes + ">" + color("000000", "<a:alpha val='60000'/>") +
               "</a:outerShdw></a:effectLst>";
    };
    const auto child = [](int x, int y, int width, int height, const std::string& preset, const std::string& frame,
                          const std::string& fill) {
        std::string made = shape(preset, frame, fill);
        const std::string empty = "<a:xfrm " + frame + "/>";
        return made.replace(made.find(empty), empty.size(),
                            "<a:xfrm " + frame + "><a:off x='" + std::to_string(x) + "' y='" + std::to_string(y) +
                                "'/><a:ext cx='" + std::to_string(width) + "' cy='" + std::to_string(height) +
                                "'/></a:xfrm>");
    };
    const auto group = [&](const std::string& frame) {
        return "<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id='3' name='G'/></xdr:nvGrpSpPr><xdr:grpSpPr><a:xfrm " + frame +
               "><a:chOff x='1000' y='1000'/><a:chExt cx='300' cy='200'/></a:xfrm></xdr:grpSpPr>" +
               child(1000, 1000, 100, 100, "rtTriangle", "", red) +
               child(1150, 1050, 150, 150, "triangle", "rot='1800000'", blue) + "</xdr:grpSp>";
    };
    const std::string text = "<xdr:txBody><a:bodyPr anchor='ctr'/><a:p><a:pPr algn='ctr'/><a:r><a:rPr sz='1100'>" +
                             solidFill("FFFFFF") + "</a:rPr><a:t>HI</a:t></a:r></a:p></xdr:txBody>";
    const std::string objects =
        object(10, 14, 40, 24, shape("rtTriangle", "", red)) +
        object(70, 14, 40, 24, shape("rtTriangle", "flipH='1'", red)) +
        object(130, 14, 40, 24, shape("rtTriangle", "flipV='1' rot='1800000'", red)) +
        object(190, 14, 40, 24, shape("rtTriangle", "rot='5400000'", red)) + object(10, 60, 60, 40, group("")) +
        object(85, 60, 60, 40, group("flipH='1'")) + object(160, 60, 60, 40, group("rot='1800000'")) +
        object(10, 112, 40, 24, shape("rect", "", blue + shadow("dist='57150' dir='2700000'"))) +
        object(
            70, 112, 40, 24,
            shape("ellipse", "", blue + shadow("blurRad='76200' dist='38100' dir='8100000' sx='110000' algn='ctr'"))) +
        object(130, 112, 40, 24, shape("rect", "rot='1800000'", blue, text)) +
        object(190, 112, 40, 24, shape("rect", "flipV='1'", blue, text));
    PictureBook book = drawingsOf(objects);
    book.put(8, 6, "").part("comments",
                            "<comments><commentList><comment ref='F1'/><comment ref='A8'/></commentList></comments>");
    expectPicture(book.image(u"A1:F8"_s, 1.5), u"shapes"_s);
}

TEST(DrawingPictures, Pictures)
{
    QImage sample(40, 24, QImage::Format_RGB32);
    for (int y = 0; y < sample.height(); ++y)
        for (int x = 0; x < sample.width(); ++x)
            sample.setPixel(x, y, x < 20 ? y < 12 ? 0xffff5050 : 0xff50c050 : y < 12 ? 0xff5050ff : 0xffffe050);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    sample.save(&buffer, "png");
    const auto picture = [](const std::string& frame, const std::string& fill = "", const std::string& blip = "",
                            const std::string& preset = "rect", const std::string& looks = "") {
        return "<xdr:pic><xdr:nvPicPr><xdr:cNvPr id='2' name='P'/></xdr:nvPicPr><xdr:blipFill><a:blip r:embed='p'>" +
               blip + "</a:blip>" + (fill.empty() ? "<a:stretch/>" : fill) + "</xdr:blipFill><xdr:spPr><a:xfrm " +
               frame + "/><a:prstGeom prst='" + preset + "'/>" + looks + "</xdr:spPr></xdr:pic>";
    };
    const std::string frame = outline("000000", 2);
    const std::string objects =
        object(8, 10, 48, 30, picture("")) + object(68, 10, 48, 30, picture("flipH='1'")) +
        object(128, 10, 48, 30, picture("flipV='1' rot='1200000'")) +
        object(188, 10, 48, 30, picture("", "<a:srcRect l='25000' t='25000' b='10000'/><a:stretch/>")) +
        object(8, 60, 48, 30, picture("", "<a:srcRect l='-50000'/><a:stretch/>", "", "rect", frame)) +
        object(68, 60, 48, 30, picture("", "<a:tile sx='50000' sy='50000'/>")) +
        object(128, 60, 48, 30, picture("", "", "<a:alphaModFix amt='40000'/>")) +
        object(188, 60, 48, 30, picture("rot='1200000'", "", "", "ellipse", frame)) +
        object(8, 108, 60, 30, shape("star5", "", "<a:blipFill><a:blip r:embed='p'/><a:stretch/></a:blipFill>"));
    PictureBook book = drawingsOf(objects);
    book.picture(bytes);
    expectPicture(book.image(u"A1:F8"_s, 2), u"pictures"_s);
}

} // namespace
} // namespace lumivane::test
