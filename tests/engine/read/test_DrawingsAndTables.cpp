#include "engine/read/ContentText.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

WorkbookParts bookWithDrawing(const std::string& anchors)
{
    WorkbookParts parts(
        {{"Data", "<sheetData/><drawing r:id='d'/><tableParts count='1'><tablePart r:id='t'/></tableParts>", ""}});
    parts.drawings(anchors);
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<Relationships><Relationship Id='d' Type='x/drawing' Target='../drawings/drawing1.xml'/>"
              "<Relationship Id='t' Type='x/table' Target='/xl/tables/table1.xml'/></Relationships>");
    parts.set(
        "xl/tables/table1.xml",
        "<table ref='A1:C9' displayName='Sales'><autoFilter ref='A1:C8'/><tableStyleInfo name='Medium 2'/></table>");
    parts.set("xl/drawings/_rels/drawing1.xml.rels",
              "<Relationships><Relationship Id='c' Type='x/chart' Target='../charts/chart7.xml'/>"
              "<Relationship Id='p' Type='x/image' Target='../media/image1.png'/>"
              "<Relationship Id='e' Type='x/image' Target='file:///x.png' TargetMode='External'/></Relationships>");
    return parts;
}

std::string anchored(const std::string& object)
{
    return "<xdr:twoCellAnchor><xdr:from><xdr:col>1</xdr:col><xdr:colOff>100</xdr:colOff><xdr:row>2</xdr:row>"
           "<xdr:rowOff>200</xdr:rowOff></xdr:from><xdr:to><xdr:col>4</xdr:col><xdr:colOff>300</xdr:colOff>"
           "<xdr:row>9</xdr:row><xdr:rowOff>400</xdr:rowOff></xdr:to>" +
           object + "</xdr:twoCellAnchor>";
}

} // namespace

TEST(Drawings, ReadNamesKindsAndPlaces)
{
    const auto sheet = readSheet(bookWithDrawing(
        anchored("<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id='2' name='Sales &amp; more'/>"
                 "</xdr:nvGraphicFramePr><a:graphic><a:graphicData><c:chart r:id='c'/></a:graphicData></a:graphic>"
                 "</xdr:graphicFrame>") +
        "<xdr:oneCellAnchor><xdr:from><xdr:col>0</xdr:col><xdr:row>99999999</xdr:row></xdr:from>"
        "<xdr:ext cx='9525' cy='-1'/><xdr:pic><xdr:nvPicPr><xdr:cNvPr name='Logo' hidden='1'/></xdr:nvPicPr>"
        "<xdr:blipFill><a:blip r:embed='p'/></xdr:blipFill></xdr:pic></xdr:oneCellAnchor>"
        "<xdr:absoluteAnchor><xdr:pos x='500' y='600'/><xdr:ext cx='700' cy='800'/><mc:AlternateContent>"
        "<mc:Choice><xdr:sp><xdr:nvSpPr><xdr:cNvPr name='Box'/></xdr:nvSpPr></xdr:sp></mc:Choice>"
        "<mc:Fallback><xdr:pic/></mc:Fallback></mc:AlternateContent></xdr:absoluteAnchor>" +
        anchored("<xdr:clientData/>") +
        anchored("<xdr:pic><xdr:nvPicPr><xdr:cNvPr name='Linked'/></xdr:nvPicPr><xdr:blipFill><a:blip r:embed='e'/>"
                 "</xdr:blipFill></xdr:pic>")));
    QStringList printed;
    for (const DrawingContent& one : sheet->drawings)
        printed << u"%1 '%2' %3, %4 %5 %6 %7, %8 %9"_s.arg(kindWord(one.kind), one.name, one.anchor.relative())
                           .arg(one.startX)
                           .arg(one.startY)
                           .arg(one.endX)
                           .arg(one.endY)
                           .arg(one.width)
                           .arg(one.height) +
                       (one.hidden ? u", hidden "_s : u" "_s) + one.part;
    EXPECT_EQ(printed, QStringList({u"chart 'Sales & more' B3:E10, 100 200 300 400, -1 -1 xl/charts/chart7.xml"_s,
                                    u"picture 'Logo' A1048576, 0 0 0 0, 9525 0, hidden xl/media/image1.png"_s,
                                    u"shape 'Box' A1, 500 600 0 0, 700 800 "_s,
                                    u"picture 'Linked' B3:E10, 100 200 300 400, -1 -1 "_s}));
    EXPECT_EQ(addresses(sheet->filtered), u"A1:C8"_s);
    EXPECT_EQ(sheet->problem, u""_s);
}

TEST(Drawings, TellControlsFromShapes)
{
    const auto anchor = [](const std::string& object) {
        return "<mc:AlternateContent><mc:Choice Requires='a14'>" + anchored(object) +
               "</mc:Choice><mc:Fallback><xdr:twoCellAnchor><xdr:pic/></xdr:twoCellAnchor></mc:Fallback>"
               "</mc:AlternateContent>";
    };
    const auto sheet = readSheet(
        bookWithDrawing(anchor("<xdr:sp><xdr:nvSpPr><xdr:cNvPr name='Button 1' hidden='1'/></xdr:nvSpPr></xdr:sp>") +
                        anchor("<xdr:sp><xdr:nvSpPr><xdr:cNvPr name='Formula'/></xdr:nvSpPr></xdr:sp>")));
    ASSERT_EQ(sheet->drawings.size(), 2u);
    EXPECT_EQ(sheet->drawings[0].name, u"Button 1"_s);
    EXPECT_EQ(sheet->drawings[0].kind, DrawingKind::Control);
    EXPECT_FALSE(sheet->drawings[0].hidden);
    EXPECT_EQ(sheet->drawings[0].anchor.relative(), u"B3:E10"_s);
    EXPECT_EQ(sheet->drawings[1].kind, DrawingKind::Shape);
}

TEST(Tables, AreReadOnceEachAndNotWithoutEnd)
{
    const auto bookWithTables = [](int names, int files) {
        std::string parts, relationships;
        for (int i = 0; i < names; ++i) {
            const std::string id = std::to_string(i), file = std::to_string(i % files);
            parts += "<tablePart r:id='" + id + "'/>";
            relationships += "<Relationship Id='" + id + "' Type='x/table' Target='../t" + file + ".xml'/>";
        }
        WorkbookParts book({{"Data", "<sheetData/><tableParts>" + parts + "</tableParts>", ""}});
        book.set("xl/worksheets/_rels/sheet1.xml.rels", "<Relationships>" + relationships + "</Relationships>");
        for (int i = 0; i < files; ++i)
            book.set("xl/t" + std::to_string(i) + ".xml",
                     "<table ref='A1:C9' displayName='T'><tableStyleInfo name='Medium 2'/></table>");
        return readSheet(book);
    };
    const auto oneFile = bookWithTables(20000, 1), manyFiles = bookWithTables(1001, 1001);
    EXPECT_EQ(oneFile->tables.size(), 1u);
    EXPECT_EQ(oneFile->problem, u""_s);
    EXPECT_EQ(manyFiles->tables.size(), 1000u);
    EXPECT_EQ(manyFiles->problem, u"The looks of all but 1000 tables are missing."_s);
}

TEST(Drawings, AreToldMissingWhereTheyAreBrokenAndTheCellsStay)
{
    const WorkbookParts good = bookWithDrawing("");
    const std::tuple<const char*, WorkbookParts, QString> cases[] = {
        {"broken", bookWithDrawing("<xdr:twoCellAnchor>"),
         u"the XML of entry \"xl/drawings/drawing1.xml\" is broken"_s},
        {"missing", WorkbookParts(good).remove("xl/drawings/drawing1.xml"), u"the part with the drawings is missing"_s},
        {"of another kind", WorkbookParts(good).set("xl/drawings/drawing1.xml", "<table/>"),
         u"entry \"xl/drawings/drawing1.xml\" holds no drawings"_s},
        {"not referred to", WorkbookParts(good).remove("xl/worksheets/_rels/sheet1.xml.rels"),
         u"the part with the drawings is missing"_s},
    };
    for (const auto& [name, parts, expected] : cases) {
        const QString problem = readSheet(parts)->problem;
        EXPECT_TRUE(problem.startsWith(u"Charts and pictures are missing: "_s) && problem.contains(expected))
            << name << ": " << problem;
    }
}

TEST(Drawings, DoNotFollowChoicesForEver)
{
    const QString choices = u"<mc:AlternateContent><mc:Choice>"_s.repeated(100000) +
                            u"</mc:Choice></mc:AlternateContent>"_s.repeated(100000);
    EXPECT_TRUE(readSheet(bookWithDrawing("<xdr:oneCellAnchor>" + choices.toStdString() + "</xdr:oneCellAnchor>"))
                    ->drawings.empty());
}

TEST(ChartSheet, HasDrawingsAndNoCells)
{
    WorkbookParts parts = bookWithDrawing("<xdr:absoluteAnchor><xdr:sp/></xdr:absoluteAnchor>");
    parts.set("xl/_rels/workbook.xml.rels", "<Relationships><Relationship Id='rId1' Type='x/chartsheet' "
                                            "Target='worksheets/sheet1.xml'/></Relationships>");
    parts.set("xl/worksheets/sheet1.xml", "<chartsheet xmlns:r='x'><sheetViews><sheetView zoomScale='70'/></sheetViews>"
                                          "<drawing r:id='d'/></chartsheet>");
    const auto book = openBook(parts);
    EXPECT_TRUE(book->content()->sheets[0].isChartSheet);
    EXPECT_EQ(book->sheet(0)->drawings.size(), 1u);
    EXPECT_EQ(book->sheet(0)->view.zoom, 70);
    EXPECT_TRUE(book->sheet(0)->cells.empty());
}

} // namespace lumivane::test
