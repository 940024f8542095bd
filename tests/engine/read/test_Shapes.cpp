#include "engine/content/ColorChange.h"
#include "engine/read/ContentText.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

QString hex(QRgb color)
{
    return QString::number(color, 16).rightJustified(8, u'0');
}

WorkbookParts bookWithObjects(const std::string& objects)
{
    WorkbookParts parts({{"Data", "<sheetData/><drawing r:id='d'/>", ""}});
    parts.drawings(drawingAnchor(0, 0, 4, 9, objects));
    parts.set("xl/media/image1.png", "bytes");
    return parts;
}

/// The first drawing, a shape with these properties and what may follow them.
ShapeContent shapeWith(const std::string& properties, const std::string& behind = "")
{
    return readSheet(bookWithObjects("<xdr:sp><xdr:spPr>" + properties + "</xdr:spPr>" + behind + "</xdr:sp>"))
        ->drawings.at(0)
        .shape;
}

} // namespace

TEST(ColorChange, GivesTheColorsThatOfficeShows)
{
    using enum ColorChange::Kind;
    const std::map<QString, ColorChange::Kind> kinds = {{u"shade"_s, Shade},
                                                        {u"tint"_s, Tint},
                                                        {u"satMod"_s, SaturationFactor},
                                                        {u"lumMod"_s, LightnessFactor},
                                                        {u"lumOff"_s, LightnessOffset},
                                                        {u"alpha"_s, Alpha},
                                                        {u"comp"_s, Complement}};
    for (const auto& [from, changes, expected] : textTable<3>(R"(
        4f81bd | shade 50              | ff385d8a
        5b9bd5 | shade 50              | ff41719c
        000000 | tint 75               | ff898989
        000000 | tint 75 shade 95 satMod 105 | ff868686
        4f81bd | shade 95 satMod 105   | ff4a7ebb
        f79646 | shade 95 satMod 105   | fff69240
        000000 | lumMod 15 lumOff 85   | ffd9d9d9
        4f81bd | lumMod 60 lumOff 40   | ff95b3d7
        4f81bd | lumMod 75             | ff376092
        ff0000 | alpha 40              | 66ff0000
        ff0000 | comp 0                | ff00ffff
    )")) {
        const QStringList words = changes.split(u' ');
        std::vector<ColorChange> row;
        for (qsizetype i = 0; i + 1 < words.size(); i += 2)
            row.push_back({kinds.at(words[i]), words[i + 1].toDouble() / 100});
        EXPECT_EQ(hex(changedColor(from.toUInt(nullptr, 16) | 0xff000000, row)), expected) << from << changes;
    }
    EXPECT_EQ(hex(tinted(0xff4f81bd, 0.39998)), u"ff95b3d7"_s);
}

TEST(Shapes, TakeTheirColorsFromEveryKindOfElement)
{
    for (const auto& [color, expected] : textTable<2>(R"(
        <a:srgbClr val='112233'/>                                   | ff112233
        <a:sysClr val='window' lastClr='FEFEFE'/>                   | fffefefe
        <a:prstClr val='dkBlue'/>                                   | ff00008b
        <a:schemeClr val='tx2'/>                                    | ff1f497d
        <a:schemeClr val='accent1'><a:alpha val='50000'/></a:schemeClr> | 804f81bd
        <a:hslClr hue='7200000' sat='100000' lum='50000'/>          | ff00ff00
        <a:scrgbClr r='100%' g='0' b='0'/>                          | ffff0000
    )"))
        EXPECT_EQ(hex(shapeWith("<a:solidFill>" + color.toStdString() + "</a:solidFill>").fill.color), expected)
            << color;
}

TEST(Shapes, TakeFromTheThemeWhatTheyDoNotState)
{
    WorkbookParts parts = bookWithObjects(
        "<xdr:sp><xdr:spPr><a:ln w='38100'/></xdr:spPr><xdr:style><a:lnRef idx='1'><a:srgbClr val='00FF00'/></a:lnRef>"
        "<a:fillRef idx='2'><a:srgbClr val='0000FF'/></a:fillRef><a:fontRef idx='minor'><a:schemeClr val='lt1'/>"
        "</a:fontRef></xdr:style><xdr:txBody><a:p><a:r><a:rPr sz='1200'/><a:t>Text</a:t></a:r></a:p></xdr:txBody>"
        "</xdr:sp>");
    parts.set("xl/_rels/workbook.xml.rels",
              "<R><Relationship Id='rId1' Type='x/worksheet' Target='worksheets/sheet1.xml'/>"
              "<Relationship Id='t' Type='x/theme' Target='theme.xml'/></R>");
    parts.set("xl/theme.xml", "<theme><themeElements><fontScheme><minorFont><latin typeface='Cambria'/></minorFont>"
                              "</fontScheme><fmtScheme><fillStyleLst><noFill/><solidFill><schemeClr val='phClr'>"
                              "<shade val='50000'/></schemeClr></solidFill></fillStyleLst><lnStyleLst><ln w='9525'>"
                              "<solidFill><schemeClr val='phClr'/></solidFill><prstDash val='sysDot'/></ln>"
                              "</lnStyleLst></fmtScheme></themeElements></theme>");
    const ShapeContent shape = readSheet(parts)->drawings.at(0).shape;
    EXPECT_EQ(hex(shape.fill.color), u"ff0000bc"_s);
    EXPECT_EQ(hex(shape.line.color), u"ff00ff00"_s);
    EXPECT_EQ(shape.line.width, 38100);
    EXPECT_EQ(shape.line.dash, Dash::SystemDot);
    const ShapeTextRun& run = shape.text.paragraphs.at(0).runs.at(0);
    EXPECT_EQ(run.font.family, u"Cambria"_s);
    EXPECT_EQ(run.font.points, 12);
    EXPECT_EQ(hex(run.font.color), u"ffffffff"_s);
}

TEST(Pictures, AreKeptOnceAndNeverFetched)
{
    const std::string picture = "<xdr:pic><xdr:nvPicPr><xdr:cNvPr/></xdr:nvPicPr><xdr:blipFill><a:blip r:embed='%'/>"
                                "<a:srcRect l='25000' b='-10000'/></xdr:blipFill><xdr:spPr/></xdr:pic>";
    const auto pictureOf = [&](const std::string& id) {
        return std::string(picture).replace(picture.find('%'), 1, id);
    };
    WorkbookParts parts = bookWithObjects("<xdr:grpSp><xdr:grpSpPr/>" + pictureOf("p") + pictureOf("p") +
                                          pictureOf("e") + pictureOf("missing") + "</xdr:grpSp>");
    parts.set("xl/drawings/_rels/drawing1.xml.rels",
              "<R><Relationship Id='p' Type='x/image' Target='../media/image1.png'/>"
              "<Relationship Id='e' Type='x/image' Target='file:///etc/passwd' TargetMode='External'/></R>");
    const auto sheet = readSheet(parts);
    const auto& children = sheet->drawings.at(0).shape.children;
    ASSERT_EQ(children.size(), 4u);
    EXPECT_EQ(children[0].fill.picture.data->bytes, QByteArray("bytes"));
    EXPECT_EQ(children[0].fill.picture.data, children[1].fill.picture.data);
    EXPECT_EQ(children[0].fill.picture.left, 0.25);
    EXPECT_EQ(children[0].fill.picture.bottom, -0.1);
    EXPECT_EQ(children[2].fill.picture.data, nullptr);
    EXPECT_EQ(children[3].fill.picture.data, nullptr);
    EXPECT_EQ(sheet->pictureBytes, 5);
}

TEST(Controls, TakeTheirLooksFromTheOlderPart)
{
    const std::string twin = "</xdr:cNvPr></xdr:nvSpPr></xdr:sp>";
    WorkbookParts parts({{"Data", "<sheetData/><drawing r:id='d'/><legacyDrawing r:id='v'/>", ""}});
    parts.drawings("<mc:AlternateContent><mc:Choice Requires='a14'>" +
                   drawingAnchor(0, 0, 2, 2, "<xdr:sp><xdr:nvSpPr><xdr:cNvPr id='1028' hidden='1'>" + twin) +
                   drawingAnchor(0, 0, 2, 2, "<xdr:sp><xdr:nvSpPr><xdr:cNvPr id='1029' hidden='1'>" + twin) +
                   "</mc:Choice></mc:AlternateContent>");
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<R><Relationship Id='d' Type='x/drawing' Target='../drawings/drawing1.xml'/>"
              "<Relationship Id='v' Type='x/vmlDrawing' Target='../v.vml'/>"
              "<Relationship Id='c' Type='x/comments' Target='../c.xml'/></R>");
    parts.set("xl/v.vml",
              "<xml><v:shape id='Box' o:spid='_x0000_s1028'><v:textbox><div><font size='220'>A\n b</font></div>"
              "</v:textbox><x:ClientData ObjectType='Checkbox'><x:Checked>1</x:Checked></x:ClientData>"
              "</v:shape></xml>");
    const auto sheet = readSheet(parts);
    ASSERT_EQ(sheet->drawings.size(), 2u);
    const ShapeContent& box = sheet->drawings[0].shape;
    EXPECT_EQ(box.control.kind, ControlKind::CheckBox);
    EXPECT_EQ(box.control.state, 1);
    EXPECT_EQ(box.text.paragraphs.at(0).runs.at(0).text, u"A b"_s);
    EXPECT_EQ(box.text.paragraphs.at(0).runs.at(0).font.points, 11);
    EXPECT_EQ(sheet->drawings[1].shape.kind, ShapeContent::Kind::Undrawn);
}

/// Controls that no drawing stands for, and objects of other programs: with a preview, with that of the older part, and
/// without any.
TEST(Controls, AreFoundBesideTheDrawings)
{
    const std::string anchor =
        "<anchor><from><col>1</col><row>2</row></from><to><col>3</col><row>4</row></to></anchor>";
    const auto older = [](const char* id, const std::string& inside, const char* kind = "Pict") {
        return "<v:shape id='_x0000_s" + std::string(id) + "'>" + inside + "<x:ClientData ObjectType='" + kind +
               "'><x:Anchor>1, 0, 1, 0, 2, 0, 2, "
               "0</x:Anchor><x:Val>5</x:Val><x:Max>30</x:Max></x:ClientData></v:shape>";
    };
    WorkbookParts parts({{"Data",
                          "<sheetData/><legacyDrawing r:id='v'/><oleObjects><mc:AlternateContent><mc:Choice><oleObject "
                          "progId='A.B' shapeId='1025'><objectPr r:id='p'>" +
                              anchor +
                              "</objectPr></oleObject></mc:Choice><mc:Fallback><oleObject progId='A.B' shapeId='1025'/>"
                              "</mc:Fallback></mc:AlternateContent><oleObject progId='C.D' shapeId='1026'/><oleObject "
                              "progId='E.F' shapeId='1027'/></oleObjects><mc:AlternateContent><mc:Choice><controls>"
                              "<control shapeId='1028' r:id='c' name='Bar 1'><controlPr>" +
                              anchor + "</controlPr></control></controls></mc:Choice></mc:AlternateContent>",
                          ""}});
    parts.set("xl/worksheets/_rels/sheet1.xml.rels", "<R><Relationship Id='v' Type='x/vmlDrawing' Target='../v.vml'/>"
                                                     "<Relationship Id='p' Type='x/image' Target='../new.png'/>"
                                                     "<Relationship Id='c' Type='x/ctrlProp' Target='../c.xml'/></R>");
    parts.set("xl/_rels/v.vml.rels", "<R><Relationship Id='o' Type='x/image' Target='old.png'/></R>");
    parts.set("xl/new.png", "new").set("xl/old.png", "old");
    parts.set("xl/c.xml", "<formControlPr objectType='Scroll' val='7' horiz='1'/>");
    parts.set("xl/v.vml", "<xml>" + older("1026", "<v:imagedata o:relid='o'/>") + older("1027", "") +
                              older("1028", "", "Scroll") + older("1029", "", "Note") + "</xml>");
    const auto sheet = readSheet(parts);
    QStringList printed;
    for (const DrawingContent& one : sheet->drawings) {
        const ShapeContent& shape = one.shape;
        printed << kindWord(one.kind) + u" "_s + one.name + u" "_s + one.anchor.relative() +
                       (shape.fill.picture.data          ? u" "_s + QString::fromUtf8(shape.fill.picture.data->bytes)
                        : !shape.text.paragraphs.empty() ? u" says "_s + shape.text.paragraphs[0].runs[0].text
                                                         : u" %1 of %2, level %3"_s.arg(shape.control.value)
                                                               .arg(shape.control.most)
                                                               .arg(shape.control.level));
    }
    EXPECT_EQ(printed, QStringList({u"object Object 1 B3:D5 new"_s, u"control Bar 1 B3:D5 7 of 30, level 1"_s,
                                    u"object Object 2 B2:C3 old"_s, u"object Object 3 B2:C3 says E.F"_s}));
}

TEST(Comments, HaveTextsAndSomeStandOpen)
{
    const auto note = [](const char* style, const char* inside) {
        return "<v:shape fillcolor='#00ff00 [80]' style='position:absolute;" + std::string(style) +
               "'><x:ClientData ObjectType='Note'><x:Anchor>\n 2, 15, 0, 2, 4, 15, 4, 8</x:Anchor>" + inside +
               "</x:ClientData></v:shape>";
    };
    WorkbookParts parts({{"Data", "<sheetData/><legacyDrawing r:id='v'/>", ""}});
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<R><Relationship Id='v' Type='x/vmlDrawing' Target='../v.vml'/>"
              "<Relationship Id='c' Type='x/comments' Target='../c.xml'/>"
              "<Relationship Id='t' Type='x/threadedComment' Target='../t.xml'/></R>");
    parts.set("xl/v.vml", "<xml>" + note("visibility:hidden", "<x:Row>1</x:Row><x:Column>1</x:Column>") +
                              note("visibility:visible", "<x:Row>3</x:Row><x:Column>3</x:Column><x:Visible/>") +
                              note("", "<x:Row>8</x:Row><x:Column>8</x:Column>") + "</xml>");
    parts.set("xl/c.xml",
              "<comments><authors><author>Ann</author><author>tc={1}</author></authors><commentList>"
              "<comment ref='B2' authorId='0'/><comment ref='C3' authorId='1'><text><t>For old programs</t></text>"
              "</comment><comment ref='D4' authorId='0'><text><r><rPr><b/></rPr><t>Ann:\n</t></r><r><t>See\nhere</t>"
              "</r></text></comment></commentList></comments>");
    parts.set("xl/t.xml", "<ThreadedComments><threadedComment ref='C3'><text>Is it?</text></threadedComment>"
                          "<threadedComment ref='C3'><text>Yes.</text></threadedComment></ThreadedComments>");
    const auto sheet = readSheet(parts);
    ASSERT_EQ(sheet->comments.size(), 3u);
    const auto textOf = [&](size_t i) { return sheet->texts.text(quint64(sheet->comments[i].text)); };
    EXPECT_EQ(sheet->comments[0].row, 2);
    EXPECT_FALSE(sheet->comments[0].threaded);
    EXPECT_EQ(sheet->comments[0].text, -1);
    EXPECT_TRUE(sheet->comments[1].threaded);
    EXPECT_EQ(textOf(1), u"Is it?\nYes."_s);
    EXPECT_EQ(textOf(2), u"Ann:\nSee\nhere"_s);
    ASSERT_EQ(sheet->openNotes.size(), 1u) << "one is hidden, one belongs to no comment";
    const DrawingContent& box = sheet->openNotes[0].box;
    EXPECT_EQ(box.anchor, *CellArea::parse(u"C1:E5"_s));
    EXPECT_EQ(box.startX, 15 * 9525);
    EXPECT_EQ(hex(box.shape.fill.color), u"ff00ff00"_s);
    const auto& lines = box.shape.text.paragraphs;
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(lines[0].runs.at(0).font.bold);
    EXPECT_EQ(lines[1].runs.at(0).text, u"See"_s);
    EXPECT_FALSE(lines[2].runs.at(0).font.bold);
}

TEST(Shapes, AreBounded)
{
    std::string nested, many;
    for (int i = 0; i < 100; ++i)
        nested = "<xdr:grpSp><xdr:grpSpPr/>" + nested + "</xdr:grpSp>";
    for (int i = 0; i < 10001; ++i)
        many += "<xdr:sp/>";
    int depth = 0;
    const auto deep = readSheet(bookWithObjects(nested));
    for (const ShapeContent* at = &deep->drawings.at(0).shape; !at->children.empty(); at = &at->children.front())
        ++depth;
    EXPECT_EQ(depth, 16);
    const auto wide = readSheet(bookWithObjects("<xdr:grpSp>" + many + "</xdr:grpSp>"));
    EXPECT_EQ(wide->drawings.at(0).shape.children.size(), 9999u);
    EXPECT_EQ(wide->problem, u"The sheet holds more drawings than can be shown; some are missing."_s);
}

} // namespace lumivane::test
