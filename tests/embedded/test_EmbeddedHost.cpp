#include "Workbooks.h"

#include "host/modUtilsExcel.h"
#include "support/LogCapture.h"

#include <QDateTime>
#include <QFile>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::embedded;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

const std::string oneCell = "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData>";

QString nameOf(const std::shared_ptr<Worksheet>& sheet)
{
    return sheet ? sheet->Name() : u"(none)"_s;
}

TEST(EmbeddedApplication, KeepsItsWorkbooksInTheOrderOfOpening)
{
    OwnApplication own;
    EXPECT_EQ(own.application.ActiveSheet(), nullptr);
    const auto first = own.open(WorkbookParts({{"One", oneCell, ""}}), u"First.xlsx"_s);
    const auto second = own.open(WorkbookParts({{"Two", oneCell, ""}}), u"Second.xlsx"_s);
    EXPECT_EQ(own.application.WorkbooksCount(), 2);
    EXPECT_EQ(own.application.WorkbookItem(1), first);
    EXPECT_EQ(nameOf(own.application.ActiveSheet()), u"Two"_s);
    first->Activate();
    EXPECT_EQ(nameOf(own.application.ActiveSheet()), u"One"_s);
    first->Close();
    first->Close();
    EXPECT_EQ(nameOf(own.application.ActiveSheet()), u"Two"_s);
    EXPECT_EQ(own.application.WorkbooksCount(), 1);
    EXPECT_THROW(own.application.WorkbookItem(2), RuntimeError);
    own.application.Quit();
    EXPECT_EQ(own.application.ActiveWorkbook(), nullptr);
    EXPECT_EQ(second->WorksheetByName(u"two"_s)->valueText(1, 1), u"1"_s) << "whoever holds it can go on";
}

TEST(EmbeddedWorkbook, StartsOnItsActiveSheetAndNamesTheOthers)
{
    OwnApplication own;
    WorkbookParts parts({{"Data", oneCell, ""}, {"Notes", oneCell, "hidden"}, {"Sum", oneCell, ""}});
    parts.inWorkbook("<bookViews><workbookView activeTab=\"2\"/></bookViews>", "");
    const auto workbook = own.open(parts);
    EXPECT_EQ(workbook->Name(), u"Report.xlsx"_s);
    EXPECT_EQ(workbook->WorksheetNames(), QStringList({u"Data"_s, u"Notes"_s, u"Sum"_s}));
    EXPECT_EQ(nameOf(workbook->ActiveSheet()), u"Sum"_s);
    const auto notes = workbook->WorksheetByName(u"NOTES"_s);
    ASSERT_TRUE(notes);
    EXPECT_FALSE(notes->Visible());
    EXPECT_EQ(workbook->WorksheetByName(u"notes"_s), notes) << "one opening has one sheet of a name";
    notes->Activate();
    EXPECT_EQ(nameOf(workbook->ActiveSheet()), u"Notes"_s);
    EXPECT_EQ(workbook->WorksheetByName(u"Absent"_s), nullptr);
}

TEST(EmbeddedWorkbook, TellsADamagedSheetWhenItIsNeededAndNotBefore)
{
    OwnApplication own;
    LogCapture log;
    const auto workbook = own.open(WorkbookParts({{"Data", oneCell, ""}, {"Bad", "<sheetData><row", ""}}));
    EXPECT_EQ(workbook->WorksheetByName(u"Data"_s)->valueText(1, 1), u"1"_s);
    EXPECT_TRUE(Excel_HasSheet(workbook, u"Bad"_s));
    const auto bad = workbook->WorksheetByName(u"Bad"_s);
    const QString failure = failureOf([&] { bad->CopyPicture(CellArea::cell(1, 1)); });
    EXPECT_TRUE(failure.contains(u"Bad"_s) && failure.contains(u"Report.xlsx"_s)) << failure.toStdString();
    EXPECT_EQ(failureOf([&] { bad->contentArea(); }), failure);

    EXPECT_TRUE(log.entries.isEmpty());
    EXPECT_FALSE(Excel_HasShape(bad, u"Chart 1"_s));
    EXPECT_TRUE(log.entries.value(0).endsWith(failure)) << "damaged, not missing";
}

TEST(EmbeddedWorkbook, AMissingFileIsToldByName)
{
    OwnApplication own;
    const QString failure = failureOf([&] { own.application.Open(u"/nowhere/Gone.xlsx"_s); });
    EXPECT_TRUE(failure.contains(u"Gone.xlsx"_s)) << failure.toStdString();
    EXPECT_EQ(own.application.WorkbooksCount(), 0);
}

TEST(EmbeddedWorkbook, ChangesEndWithTheOpening)
{
    OwnApplication own;
    const QString path = writeTemporary(u"Report.xlsx"_s, WorkbookParts({{"Data", oneCell, ""}}).package());
    const auto changed = own.application.Open(path)->ActiveSheet();
    changed->setValue(1, 1, u"changed"_s);
    changed->setValue(9, 9, QDateTime(QDate(2026, 11, 24), QTime(12, 0)));
    changed->Rows(u"1"_s).setRowHeight(0);
    EXPECT_EQ(changed->shownText(1, 1), u"changed"_s);
    EXPECT_EQ(changed->valueText(9, 9), u"46350.5"_s);
    EXPECT_EQ(RealBottomRight(*changed), u"$I$9"_s);
    EXPECT_EQ(changed->usedArea(), (CellArea{1, 1, 9, 9}));
    EXPECT_EQ(changed->rowHeight(1), 0);

    const auto fresh = own.application.Open(path)->ActiveSheet();
    EXPECT_EQ(fresh->shownText(1, 1), u"1"_s);
    EXPECT_EQ(RealBottomRight(*fresh), u"$A$1"_s);
    EXPECT_GT(fresh->rowHeight(1), 0);
}

TEST(EmbeddedWorkbook, ARefreshReadsTheFileAnew)
{
    OwnApplication own;
    const QString path = writeTemporary(u"Report.xlsx"_s, WorkbookParts({{"Data", oneCell, ""}}).package());
    const auto workbook = own.application.Open(path);
    const auto before = workbook->ActiveSheet();
    EXPECT_EQ(before->valueText(1, 1), u"1"_s);

    const QByteArray next =
        WorkbookParts({{"Data", "<sheetData><row r=\"1\"><c r=\"A1\"><v>22</v></c></row></sheetData>", ""}}).package();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(next);
    file.close();
    workbook->RefreshAll();
    workbook->Save();
    EXPECT_EQ(workbook->ActiveSheet()->valueText(1, 1), u"22"_s);
    EXPECT_EQ(before->valueText(1, 1), u"1"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), next) << "the file itself stays as it is";
}

TEST(EmbeddedSheet, RefusesPicturesNobodyCouldLookAt)
{
    OwnApplication own;
    const auto sheet = own.sheet("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"2\" hidden=\"1\"/>");
    EXPECT_EQ(failureOf([&] { sheet->CopyPicture(*CellArea::parse(u"A2:C2")); }),
              u"Nothing of the range A2:C2 on sheet \"Data\" of workbook \"Report.xlsx\" is visible: all its rows or "
              "columns are hidden."_s);
    const QString tooLarge = failureOf([&] { sheet->CopyPicture(*CellArea::parse(u"A1:CZ9999")); });
    EXPECT_TRUE(tooLarge.startsWith(u"The range A1:CZ9999 on sheet \"Data\" of workbook \"Report.xlsx\" is too large "
                                    "for a picture ("_s))
        << tooLarge.toStdString();
    EXPECT_TRUE(failureOf([&] { sheet->CopyPicture(CellArea::wholeSheet()); }).contains(u"too large"_s));
    for (const double scale : {0.0, -1.0, 9.0, std::nan("")})
        EXPECT_TRUE(failureOf([&] { sheet->CopyPicture(CellArea::cell(1, 1), scale); }).contains(u"scale"_s)) << scale;
    EXPECT_EQ(sheet->CopyPicture(*CellArea::parse(u"A1:B3"), 2).size(),
              sheet->CopyPicture(*CellArea::parse(u"A1:B3")).size() * 2);
}

constexpr int emuPerPixel = 9525;

std::string corner(const std::string& tag, int column, int row)
{
    return "<xdr:" + tag + "><xdr:col>" + std::to_string(column) + "</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>" +
           std::to_string(row) + "</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:" + tag + ">";
}

/// Where a drawing lies, as <xdr:...> around it.
struct DrawingPlace
{
    std::string tag, inside;
};

const DrawingPlace b2ToD5{"twoCellAnchor", corner("from", 1, 1) + corner("to", 3, 4)}; // the corner of D5

DrawingPlace fromB2(int width, int height)
{
    return {"oneCellAnchor", corner("from", 1, 1) + "<xdr:ext cx=\"" + std::to_string(width * emuPerPixel) +
                                 "\" cy=\"" + std::to_string(height * emuPerPixel) + "\"/>"};
}

/// A workbook with a chart, as stored by spreadsheet programs.
WorkbookParts withChart(const std::string& sheetData, const DrawingPlace& place = b2ToD5,
                        const std::string& attributes = "")
{
    const std::string relations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    WorkbookParts parts({{"Data", "<sheetData>" + sheetData + "</sheetData><drawing r:id=\"d1\"/>", ""}});
    const std::string list = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                             "<Relationship Id=\"";
    parts.set("xl/worksheets/_rels/sheet1.xml.rels", list + "d1\" Type=\"" + relations +
                                                         "/drawing\" Target=\"../drawings/drawing1.xml\"/>"
                                                         "</Relationships>");
    parts.set("xl/drawings/_rels/drawing1.xml.rels",
              list + "c1\" Type=\"" + relations + "/chart\" Target=\"../charts/chart1.xml\"/></Relationships>");
    parts.set("xl/charts/chart1.xml",
              "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"/>");
    parts.set("xl/drawings/drawing1.xml",
              "<xdr:wsDr xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
              "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" xmlns:r=\"" +
                  relations + "\"><xdr:" + place.tag + ">" + place.inside +
                  "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"Sales\"" + attributes +
                  "/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><a:graphic><a:graphicData "
                  "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"><c:chart "
                  "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" r:id=\"c1\"/></a:graphicData>"
                  "</a:graphic></xdr:graphicFrame><xdr:clientData/></xdr:" +
                  place.tag + "></xdr:wsDr>");
    return parts;
}

TEST(EmbeddedSheet, TellsWhatAPictureLacks)
{
    OwnApplication own;
    const auto sheet =
        own.open(withChart("<row r=\"7\"><c r=\"A7\"><f>B7</f></c><c r=\"C7\"><f>B7</f></c></row>"))->ActiveSheet();
    EXPECT_EQ(sheet->ShapeNames(), QStringList(u"Sales"_s));
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"A1:C7")),
              QStringList({u"the chart \"Sales\""_s, u"the results of 2 formulas, which the file does not store"_s}));
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"B6:C9")),
              QStringList(u"the result of a formula, which the file does not store"_s));
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"E1:F9")), QStringList());
    sheet->Rows(u"2:5"_s).setRowHeight(0);
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"A1:D6")), QStringList()) << "squeezed away with its rows";
}

TEST(EmbeddedSheet, TellsOfConditionalFormatsOnlyWhereTheyHold)
{
    OwnApplication own;
    const auto sheet =
        own.open(WorkbookParts({{"Data",
                                 oneCell + "<conditionalFormatting sqref=\"B2:C4\"><cfRule type=\"cellIs\" "
                                           "priority=\"1\" operator=\"greaterThan\"><formula>1</formula>"
                                           "</cfRule></conditionalFormatting>",
                                 ""}}))
            ->ActiveSheet();
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"C4:F9")), QStringList(u"formats that depend on conditions"_s));
    EXPECT_EQ(sheet->undrawn(*CellArea::parse(u"A1:A9")), QStringList());
}

TEST(EmbeddedSheet, ADrawingIsMissedWhereverAnyOfItWouldShow)
{
    struct Row
    {
        const char* name;
        DrawingPlace place;
        const char* area;
        bool missed;
        const char* attributes = "";
    };
    // Rows of 20 and columns of 64 pixels.
    const Row rows[] = {
        {"last cell of the anchor", b2ToD5, "C4", true},
        {"the anchor only touches this row", b2ToD5, "C5", false},
        {"the anchor only touches this column", b2ToD5, "D4", false},
        {"above the anchor", b2ToD5, "B1", false},
        {"one pixel of the next row", fromB2(64, 21), "B3", true},
        {"not one pixel of it", fromB2(64, 20), "B3", false},
        {"one pixel of the next column", fromB2(65, 20), "C2", true},
        {"far beyond its cell", fromB2(6400, 20000), "CA900", true},
        {"without size", fromB2(0, 0), "A1:Z9", false},
        {"hidden by its owner", b2ToD5, "A1:Z9", false, " hidden=\"1\""},
    };
    OwnApplication own;
    for (const Row& row : rows) {
        const std::string even = "<row r=\"1\"/>";
        WorkbookParts parts = withChart(even, row.place, row.attributes);
        auto& sheetXml = std::find_if(parts.entries.begin(), parts.entries.end(), [](const PackageEntry& entry) {
                             return entry.name == "xl/worksheets/sheet1.xml";
                         })->bytes;
        sheetXml.insert(sheetXml.find("<sheetData>"),
                        "<sheetFormatPr defaultColWidth=\"9.140625\" defaultRowHeight=\"15\" customHeight=\"1\"/>");
        const auto sheet = own.open(parts)->ActiveSheet();
        EXPECT_EQ(!sheet->undrawn(*CellArea::parse(QString::fromLatin1(row.area))).isEmpty(), row.missed) << row.name;
    }
}

TEST(EmbeddedSheet, SaysWhyAChartIsNotShown)
{
    OwnApplication own;
    const auto sheet = own.open(withChart(""))->ActiveSheet();
    EXPECT_EQ(failureOf([&] { sheet->CopyShapePicture(u"SALES"_s); }),
              u"The chart \"SALES\" on sheet \"Data\" of workbook \"Report.xlsx\" cannot be drawn yet."_s);
    EXPECT_EQ(failureOf([&] { sheet->CopyShapePicture(u"Costs"_s); }),
              u"There is no chart or shape \"Costs\" on sheet \"Data\" of workbook \"Report.xlsx\"."_s);
}

TEST(EmbeddedWorker, IsAWorkerLikeAnyOther)
{
    setHostFactory({makeEmbeddedWorker, {}});
    XLInstance instance;
    ASSERT_TRUE(Excel_Init(instance));
    const QString path = writeTemporary(u"Report.xlsx"_s, WorkbookParts({{"Data", oneCell, ""}}).package());
    instance->Open(path);
    bool otherFolder = false;
    EXPECT_TRUE(Excel_HasWorkbook(instance, path, otherFolder));
    Excel_Exit(instance);
    setHostFactory({});
}

} // namespace
