#include "ExpectedPicture.h"
#include "PictureBook.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

std::string line(const std::string& side, const std::string& style, const std::string& color = "FF000000")
{
    return "<" + side + " style='" + style + "'><color rgb='" + color + "'/></" + side + ">";
}

std::string align(const std::string& attributes)
{
    return "<alignment " + attributes + "/>";
}

TEST(CellPictures, Fills)
{
    PictureBook book;
    int column = 0;
    for (const char* degrees : {"0", "30", "90", "135", "180"})
        book.put(1, ++column, "",
                 book.look("<gradientFill degree='" + std::string(degrees) +
                           "'><stop position='0'><color rgb='FFFFFF00'/></stop><stop position='1'><color "
                           "rgb='FF0000C0'/></stop></gradientFill>"));
    book.put(1, ++column, "", book.solid("9BBB59"));
    int place = 0;
    for (const char* pattern : {"gray125", "gray0625", "darkGray", "mediumGray", "lightGray", "darkHorizontal",
                                "darkVertical", "darkDown", "darkUp", "darkGrid", "darkTrellis", "lightHorizontal",
                                "lightVertical", "lightDown", "lightUp", "lightGrid", "lightTrellis", "none"}) {
        book.put(2 + place / 6, 1 + place % 6, "",
                 book.look("<patternFill patternType='" + std::string(pattern) +
                           "'><fgColor rgb='FFC00000'/><bgColor rgb='FFDCE6F1'/></patternFill>"));
        ++place;
    }
    expectPicture(book.image(u"A1:G5"_s), u"fills"_s);
    expectPicture(book.image(u"A1:G5"_s, 1.5), u"fills-larger"_s);
}

TEST(CellPictures, Borders)
{
    PictureBook book(4);
    int place = 0;
    for (const std::string style : {"thin", "medium", "dashed", "dotted", "thick", "double", "hair", "mediumDashed",
                                    "dashDot", "mediumDashDot", "dashDotDot", "mediumDashDotDot", "slantDashDot"}) {
        book.put(2 + place / 5 * 2, 2 + place % 5 * 2, "",
                 book.look("", "<border>" + line("left", style) + line("right", style, "FFC00000") +
                                   line("top", style, "FF0000C0") + line("bottom", style) + "</border>"));
        ++place;
    }
    const std::string diagonal = line("diagonal", "thin", "FFC00000"), thick = line("diagonal", "thick");
    book.put(8, 2, "", book.look("", "<border diagonalDown='1'>" + diagonal + "</border>"))
        .put(8, 4, "", book.look("", "<border diagonalUp='1'>" + diagonal + "</border>"))
        .put(8, 6, "",
             book.look("", "<border diagonalUp='1' diagonalDown='1'>" + line("diagonal", "dashed") + "</border>"))
        .put(8, 8, "", book.look("", "<border diagonalUp='1'>" + thick + "</border>"));
    // Of two lines at one edge the stronger shows; inside merged cells there are none.
    book.put(10, 2, "", book.look("", "<border>" + line("right", "thick", "FFC00000") + "</border>"))
        .put(10, 3, "", book.look("", "<border>" + line("left", "thin") + line("bottom", "medium") + "</border>"))
        .put(11, 3, "", book.look("", "<border>" + line("top", "dotted") + "</border>"));
    const int boxed = book.look("<patternFill patternType='solid'><fgColor rgb='FFEBF1DE'/></patternFill>",
                                "<border>" + line("left", "thin") + line("right", "thin") + line("top", "thin") +
                                    line("bottom", "thin") + "</border>");
    for (const int row : {10, 11})
        for (const int column : {6, 7, 8})
            book.put(row, column, "", boxed);
    book.behind("<mergeCells><mergeCell ref='F10:H11'/></mergeCells>");
    expectPicture(book.image(u"A1:K12"_s), u"borders"_s);
}

TEST(CellPictures, Alignment)
{
    PictureBook book(7);
    for (const int row : {1, 2, 3})
        book.height(row, 48);
    const auto aligned = [&](const std::string& attributes, bool filled = false) {
        return book.look(filled ? "<patternFill patternType='solid'><fgColor rgb='FFFDE9D9'/></patternFill>" : "", "",
                         align(attributes));
    };
    book.put(1, 1, "H", aligned("vertical='top'"))
        .put(1, 2, "H", aligned("horizontal='center' vertical='center'"))
        .put(1, 3, "H", aligned("horizontal='right'"))
        .put(1, 4, "H", aligned("indent='2' horizontal='left'"))
        .put(1, 5, "HHH HHH HHH", aligned("wrapText='1' horizontal='center'"))
        .put(1, 6, "I", aligned("horizontal='fill' vertical='center'"))
        .put(2, 1, "HII", aligned("textRotation='45'"))
        .put(2, 2, "HII", aligned("textRotation='90' horizontal='center'"))
        .put(2, 3, "HII", aligned("textRotation='120' vertical='top'"))
        .put(2, 4, "HII", aligned("textRotation='180' vertical='center' horizontal='right'"))
        .put(2, 5, "HIH", aligned("textRotation='255' horizontal='center'"))
        .put(2, 6, "8", aligned("textRotation='45'"))
        // Turned texts are cut off at their cell.
        .put(3, 1, "HHHHHHHHHHHHH", aligned("textRotation='60'", true))
        .put(3, 3, "HHHHHHHHHHHHH", aligned("textRotation='255' vertical='top' horizontal='center'", true))
        .put(3, 5, "HHHHHHHHHHHHH", aligned("horizontal='center' vertical='top'", true))
        .put(4, 1, "");
    expectPicture(book.image(u"A1:F4"_s), u"alignment"_s);
}

std::string rule(const std::string& area, const std::string& attributes, const std::string& inside)
{
    return "<conditionalFormatting sqref='" + area + "'><cfRule priority='1' " + attributes + ">" + inside +
           "</cfRule></conditionalFormatting>";
}

std::string scale(const std::string& kind, const std::string& attributes, const std::string& limits,
                  const std::vector<std::string>& colors)
{
    std::string inside;
    for (const std::string& color : colors)
        inside += "<color rgb='FF" + color + "'/>";
    return "<" + kind + " " + attributes + ">" + limits + inside + "</" + kind + ">";
}

std::string limits(const std::vector<std::string>& kinds)
{
    std::string all;
    for (const std::string& kind : kinds)
        all += "<cfvo type='" + kind + "'/>";
    return all;
}

std::string laterBar(const std::string& area, const std::string& attributes)
{
    return "<x14:conditionalFormatting><x14:cfRule type='dataBar' id='{" + area +
           "}' priority='1'><x14:dataBar minLength='0' maxLength='100' " + attributes + ">" +
           limits({"autoMin", "autoMax"}) +
           "<x14:fillColor rgb='FF63C384'/><x14:borderColor rgb='FF006000'/><x14:negativeFillColor rgb='FFFF5050'/>"
           "<x14:negativeBorderColor rgb='FF800000'/><x14:axisColor rgb='FF000000'/></x14:dataBar></x14:cfRule>"
           "<xm:sqref>" +
           area + "</xm:sqref></x14:conditionalFormatting>";
}

TEST(CellPictures, ScalesAndBars)
{
    PictureBook book(8);
    const std::vector<double> rising{1, 3, 5, 7, 9}, mixed{-4, -1, 0, 3, 8};
    for (const int column : {1, 2, 3})
        book.putAll(1, column, rising);
    for (const int column : {4, 5, 6, 7})
        book.putAll(1, column, mixed);
    book.conditionLooks("<dxf><font><b/><color rgb='FFC00000'/></font><fill><patternFill><bgColor rgb='FFFFFF00'/>"
                        "</patternFill></fill><border>" +
                        line("bottom", "thin") + "</border></dxf>");
    book.behind(
        rule("A1:A5", "type='colorScale'", scale("colorScale", "", limits({"min", "max"}), {"FF7128", "FFEF9C"})) +
        rule("B1:B5", "type='colorScale'",
             scale("colorScale", "", limits({"min", "percentile' val='50", "max"}), {"F8696B", "FFEB84", "63BE7B"})) +
        rule("C1:C5", "type='dataBar'", scale("dataBar", "showValue='0'", limits({"min", "max"}), {"638EC6"})) +
        rule("A2:A4", "type='cellIs' operator='equal' dxfId='0'", "<formula>5</formula>"));
    book.behind("<extLst><ext><x14:conditionalFormattings>" + laterBar("D1:D5", "border='1'") +
                laterBar("E1:E5", "gradient='0' direction='rightToLeft'") +
                laterBar("F1:F5", "gradient='0' axisPosition='middle' border='1' showValue='0'") +
                laterBar("G1:G5", "axisPosition='none'") + "</x14:conditionalFormattings></ext></extLst>");
    expectPicture(book.image(u"A1:G5"_s), u"scales-and-bars"_s);
    expectPicture(book.image(u"C1:F5"_s, 2), u"bars-larger"_s);
}

TEST(CellPictures, Icons)
{
    PictureBook book(3);
    std::string rules;
    int column = 0;
    for (const std::string name : {"3Arrows", "3ArrowsGray", "3Flags",      "3TrafficLights1", "3TrafficLights2",
                                   "3Signs",  "3Symbols",    "3Symbols2",   "3Stars",          "3Triangles",
                                   "4Arrows", "4ArrowsGray", "4RedToBlack", "4Rating",         "4TrafficLights",
                                   "5Arrows", "5ArrowsGray", "5Rating",     "5Quarters",       "5Boxes"}) {
        const int count = name[0] - '0';
        ++column;
        book.putAll(1, column, {1, 2, 3, 4, 5});
        std::string limits;
        for (int i = 0; i < count; ++i)
            limits += "<cfvo type='num' val='" + std::to_string(i ? i + 6 - count : 0) + "'/>";
        rules += rule(CellArea{1, column, 5, column}.relative().toStdString(), "type='iconSet'",
                      "<iconSet showValue='0' iconSet='" + name + "'>" + limits + "</iconSet>");
    }
    book.behind(rules);
    expectPicture(book.image(u"A1:T5"_s), u"icons"_s);
}

std::string table(const std::string& area, const std::string& style, const std::string& flags,
                  const std::string& attributes = "")
{
    return "<table ref='" + area + "' " + attributes + "><tableStyleInfo name='" + style + "' " + flags + "/></table>";
}

TEST(CellPictures, Tables)
{
    PictureBook book(4);
    for (int row = 1; row <= 6; ++row)
        for (const int first : {2, 6, 10})
            book.put(row + 1, first, "H").put(row + 1, first + 2, "1");
    book.part("table", table("B2:D7", "TableStyleLight9", "showRowStripes='1' showFirstColumn='1'"))
        .part("table",
              table("F2:H7", "TableStyleMedium2", "showRowStripes='1' showLastColumn='1'", "totalsRowCount='1'"))
        .part("table", table("J2:L7", "TableStyleDark3", "showColumnStripes='1' showFirstColumn='1'"))
        .part("pivotTable",
              "<pivotTableDefinition><location ref='B12:G19' firstHeaderRow='1' firstDataRow='2' firstDataCol='1' "
              "rowPageCount='1'/><rowFields><field/><field/></rowFields><rowItems><i><x/></i><i r='1'><x/></i>"
              "<i r='1'><x/></i><i t='default'><x/></i><i><x/></i><i t='grand'><x/></i></rowItems><colFields><field/>"
              "<field/></colFields><colItems><i><x/></i><i r='1'><x/></i><i t='default'><x/></i><i><x/></i>"
              "<i t='grand'><x/></i></colItems><pageFields><pageField/></pageFields><pivotTableStyleInfo "
              "name='PivotStyleMedium9' showRowHeaders='1' showColHeaders='1' showLastColumn='1'/>"
              "</pivotTableDefinition>")
        .part("pivotTable",
              "<pivotTableDefinition><location ref='I12:M19' firstDataRow='2' firstDataCol='1'/><rowFields><field/>"
              "</rowFields><rowItems><i><x/></i><i><x/></i><i><x/></i><i><x/></i><i><x/></i><i t='grand'><x/></i>"
              "</rowItems><colFields><field/></colFields><colItems><i><x/></i><i><x/></i><i><x/></i>"
              "<i t='grand'><x/></i></colItems><pivotTableStyleInfo name='PivotStyleLight16' showRowHeaders='1' "
              "showColHeaders='1' showRowStripes='1' showLastColumn='1'/></pivotTableDefinition>");
    for (int row = 12; row <= 19; ++row)
        for (const int column : {2, 4, 9, 11})
            book.put(row, column, "H");
    book.put(10, 2, "H").put(10, 3, "H");
    book.behind("<tableParts><tablePart r:id='r1'/><tablePart r:id='r2'/><tablePart r:id='r3'/></tableParts>");
    expectPicture(book.image(u"A1:N20"_s), u"tables"_s);
}

TEST(CellPictures, Sparklines)
{
    PictureBook book(12);
    int column = 0;
    for (const double value : {2.0, -3.0, 0.0, 5.0, 1.0, -1.0, 4.0})
        book.put(20, ++column, QString::number(value).toStdString());
    std::string groups;
    int place = 0;
    for (const std::string attributes :
         {"markers='1' lineWeight='1.5'", "high='1' low='1' first='1' last='1' displayXAxis='1'",
          "negative='1' rightToLeft='1'", "type='column' negative='1' displayXAxis='1'",
          "type='column' high='1' last='1'", "type='stacked' negative='1'",
          "type='stacked' displayXAxis='1' first='1' low='1'", "lineWeight='3'",
          "type='column' minAxisType='custom' manualMin='-10' high='1'"}) {
        const std::string cell =
            place < 8 ? CellArea::cell(1 + place / 2, 1 + place % 2).relative().toStdString() : "A5";
        ++place;
        groups += "<x14:sparklineGroup " + attributes +
                  "><x14:colorSeries rgb='FF376092'/><x14:colorNegative rgb='FFFF0000'/><x14:colorAxis "
                  "rgb='FF808080'/><x14:colorMarkers rgb='FF00B050'/><x14:colorFirst rgb='FFFFC000'/><x14:colorLast "
                  "rgb='FF7030A0'/><x14:colorHigh rgb='FF00B0F0'/><x14:colorLow rgb='FFC00000'/><x14:sparklines>"
                  "<x14:sparkline><xm:f>Data!A20:G20</xm:f><xm:sqref>" +
                  cell + "</xm:sqref></x14:sparkline></x14:sparklines></x14:sparklineGroup>";
    }
    for (int row = 1; row <= 5; ++row)
        book.put(row, 1, "", row == 2 ? book.solid("FFF2CC") : 0).height(row, 24);
    book.behind("<mergeCells><mergeCell ref='A5:B5'/></mergeCells><extLst><ext><x14:sparklineGroups>" + groups +
                "</x14:sparklineGroups></ext></extLst>");
    expectPicture(book.image(u"A1:B5"_s, 2), u"sparklines"_s);
}

} // namespace
} // namespace lumivane::test
