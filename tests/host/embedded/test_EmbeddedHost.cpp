#include "Workbooks.h"

#include "host/modUtilsExcel.h"
#include "support/LogCapture.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::engine;
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
    EXPECT_TRUE(failureOf([&] { own.application.Open(u"/nowhere/Gone.xlsx"_s); }).text.contains(u"Gone.xlsx"_s));
    EXPECT_EQ(own.application.WorkbooksCount(), 1);
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

TEST(EmbeddedWorkbook, GivesTheSheetOfATextFileByAnyStoredName)
{
    OwnApplication own;
    const auto workbook = own.application.Open(writeTemporary(u"sales_2.csv"_s, "7"));
    EXPECT_EQ(workbook->WorksheetNames(), QStringList(u"sales_2"_s));
    const auto sheet = workbook->WorksheetByName(u"sales_1"_s);
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->valueText(1, 1), u"7"_s);
}

TEST(EmbeddedWorkbook, TellsADamagedSheetWhenItIsNeededAndNotBefore)
{
    OwnApplication own;
    LogCapture log;
    const auto workbook = own.open(WorkbookParts({{"Data", oneCell, ""}, {"Bad", "<sheetData><row", ""}}));
    EXPECT_EQ(workbook->WorksheetByName(u"Data"_s)->valueText(1, 1), u"1"_s);
    EXPECT_TRUE(Excel_HasSheet(workbook, u"Bad"_s));
    const auto bad = workbook->WorksheetByName(u"Bad"_s);
    const QString failure = failureOf([&] { bad->CopyPicture(area(u"A1"_s)); }).text;
    EXPECT_TRUE(failure.contains(u"Bad"_s) && failure.contains(u"Report.xlsx"_s)) << failure;
    EXPECT_EQ(failureOf([&] { bad->contentArea(); }).text, failure);

    EXPECT_TRUE(log.entries.isEmpty());
    EXPECT_FALSE(Excel_HasShape(bad, u"Chart 1"_s));
    EXPECT_TRUE(log.entries.value(0).endsWith(failure)) << "damaged, not missing";
}

TEST(EmbeddedWorkbook, ChangesEndWithTheOpening)
{
    OwnApplication own;
    const QString path = writeTemporary(u"Report.xlsx"_s, WorkbookParts({{"Data", oneCell, ""}}).package());
    const auto changed = own.application.Open(path)->ActiveSheet();
    changed->Rows(u"1"_s).setRowHeight(0);
    EXPECT_EQ(changed->rowHeight(1), 0);

    const auto fresh = own.application.Open(path)->ActiveSheet();
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
    const auto failure = [&](const CellArea& cells, double scale = 1) {
        return failureOf([&] { sheet->CopyPicture(cells, scale); }).text;
    };
    EXPECT_EQ(failure(area(u"A2:C2"_s)), u"Nothing of the range A2:C2 on sheet \"Data\" of workbook \"Report.xlsx\" is "
                                         "visible: all its rows or columns are hidden."_s);
    EXPECT_TRUE(failure(area(u"A1:CZ9999"_s))
                    .startsWith(u"The range A1:CZ9999 on sheet \"Data\" of workbook \"Report.xlsx\" is too large for a "
                                "picture ("_s));
    EXPECT_TRUE(failure(CellArea::wholeSheet()).contains(u"too large"_s));
    EXPECT_TRUE(failure(area(u"A1:A1000"_s), 2).contains(u"A1:A1000 on sheet"_s)) << "few pixels, but too high";
    EXPECT_EQ(sheet->CopyPicture(area(u"A1:A1000"_s)).size(), QSize(64, 999 * 20));
    for (const double scale : {0.0, -1.0, 9.0, std::nan("")})
        EXPECT_TRUE(failure(area(u"A1"_s), scale).contains(u"scale"_s)) << scale;
    EXPECT_EQ(sheet->CopyPicture(area(u"A1:B3"_s), 2).size(), sheet->CopyPicture(area(u"A1:B3"_s)).size() * 2);
}

WorkbookParts withDrawing(const std::string& sheetData, const std::string& anchor)
{
    return WorkbookParts({{"Data",
                           "<sheetFormatPr defaultColWidth='9.140625' defaultRowHeight='15' customHeight='1'/>"
                           "<sheetData>" +
                               sheetData + "</sheetData><drawing r:id='d'/>",
                           ""}})
        .drawings(anchor);
}

/// From B2 to the corner of D5.
std::string b2ToD5(const std::string& attributes = "")
{
    return drawingAnchor(1, 1, 3, 4, chartObject("Sales", attributes));
}

TEST(EmbeddedSheet, TellsWhatAPictureLacks)
{
    OwnApplication own;
    const auto sheet =
        own.open(withDrawing("<row r='7'><c r='A7'><f>B7</f></c><c r='C7'><f>B7</f></c></row>", b2ToD5()))
            ->ActiveSheet();
    EXPECT_EQ(sheet->ShapeNames(), QStringList(u"Sales"_s));
    const auto missing = [&](const QString& cells) { return undrawnSentence(sheet->undrawn(area(cells))); };
    EXPECT_EQ(missing(u"A1:C7"_s),
              u"Not shown here: the chart \"Sales\", the results of 2 formulas, which the file does "
              "not store."_s);
    EXPECT_EQ(missing(u"B6:C9"_s), u"Not shown here: the result of a formula, which the file does not store."_s);
    EXPECT_EQ(missing(u"E1:F9"_s), QString());
    sheet->Rows(u"2:5"_s).setRowHeight(0);
    EXPECT_EQ(missing(u"A1:D6"_s), QString()) << "squeezed away with its rows";
}

TEST(EmbeddedSheet, NamesConditionalFormatsThatAreLeftOutOnlyWhereTheyLie)
{
    OwnApplication own;
    const auto sheet = own.open(WorkbookParts({{"Data",
                                                oneCell + "<conditionalFormatting sqref='B2:C4'><cfRule "
                                                          "type='expression'><formula>NOSUCH()</formula></cfRule>"
                                                          "</conditionalFormatting>",
                                                ""}}))
                           ->ActiveSheet();
    const Undrawn conditions{Undrawn::Kind::Look, u"conditional formats (the function NOSUCH)"_s};
    EXPECT_EQ(sheet->undrawn(area(u"C4:F9"_s)), std::vector{conditions});
    EXPECT_TRUE(sheet->undrawn(area(u"A1:A9"_s)).empty());
}

TEST(EmbeddedSheet, ADrawingIsMissedWhereverAnyOfItWouldShow)
{
    const auto sized = [](int width, int height) { return sizedAnchor(1, 1, width, height, chartObject("Sales")); };
    // Rows of 20 and columns of 64 pixels.
    const std::tuple<const char*, std::string, QString, bool> rows[] = {
        {"last cell of the anchor", b2ToD5(), u"C4"_s, true},
        {"the anchor only touches this row", b2ToD5(), u"C5"_s, false},
        {"the anchor only touches this column", b2ToD5(), u"D4"_s, false},
        {"one pixel of the next row", sized(64, 21), u"B3"_s, true},
        {"not one pixel of it", sized(64, 20), u"B3"_s, false},
        {"one pixel of the next column", sized(65, 20), u"C2"_s, true},
        {"without size", sized(0, 0), u"A1:Z9"_s, false},
        {"hidden by its owner", b2ToD5(" hidden='1'"), u"A1:Z9"_s, false},
    };
    OwnApplication own;
    for (const auto& [name, anchor, cells, missed] : rows) {
        const auto sheet = own.open(withDrawing("", anchor))->ActiveSheet();
        EXPECT_EQ(!sheet->undrawn(area(cells)).empty(), missed) << name;
    }
}

TEST(EmbeddedSheet, SaysWhyAChartIsNotShown)
{
    OwnApplication own;
    const auto sheet = own.open(withDrawing("", b2ToD5()))->ActiveSheet();
    EXPECT_EQ(failureOf([&] { sheet->CopyShapePicture(u"SALES"_s); }).text,
              u"The chart \"SALES\" on sheet \"Data\" of workbook \"Report.xlsx\" cannot be drawn yet."_s);
    EXPECT_EQ(failureOf([&] { sheet->CopyShapePicture(u"Costs"_s); }).text,
              u"There is no chart or shape \"Costs\" on sheet \"Data\" of workbook \"Report.xlsx\"."_s);
}

} // namespace
