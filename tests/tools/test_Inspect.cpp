#include "ToolsFixture.h"
#include "support/XlsxWriter.h"

using namespace Qt::StringLiterals;

namespace lumivane::test {

namespace {

QByteArray describedWorkbook()
{
    using demo::Look;
    demo::Book book;
    demo::Sheet& sheet = book.add(u"Figures"_s);
    const Look plain, money = plain.formatted("#,##0.00"), day = plain.formatted("yyyy-mm-dd");
    sheet.set(2, 2, u"Quarter"_s, plain.asBold());
    sheet.merge(u"B2:D2"_s);
    sheet.set(3, 2, QDate(2026, 11, 24), day);
    sheet.set(3, 3, 1234.5, money);
    sheet.setFormula(4, 3, u"C3*2"_s, 2469, money);
    sheet.set(5, 3, -0.25, money);
    sheet.set(9, 5, {}, plain.filled("FFEE00")); // in use by its colour alone
    sheet.setHeight(3, 30);
    sheet.setHeight(4, 30);
    sheet.hideRow(4);
    sheet.setWidth(3, 4, 12.71);
    sheet.freeze(2, 1);
    book.add(u"Empty"_s);
    return book.bytes();
}

QByteArray json(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

class Inspection : public ToolsFixture
{
protected:
    QJsonObject sheet(const QByteArray& workbook, int index = 0)
    {
        return call({u"inspect"_s, write(u"figures.xlsx"_s, workbook)}).object()[u"sheets"][index].toObject();
    }
};

} // namespace

TEST_F(Inspection, TellsWhatASheetShows)
{
    const QJsonObject figures = sheet(describedWorkbook());
    const std::pair<QString, QByteArray> expected[] = {
        {u"name"_s, R"(["Figures"])"},
        {u"visible"_s, "[true]"},
        {u"used_area"_s, R"(["B2:E9"])"},
        {u"covered"_s, R"(["B2:E9"])"},
        {u"last_row"_s, "[5]"},
        {u"last_column"_s, R"(["C"])"},
        {u"cells"_s, R"([{"B2":"Quarter","B3":"2026-11-24","C3":"1,234.50","C4":"2,469.00","C5":"-0.25"}])"},
        {u"merged"_s, R"([["B2:D2"]])"},
        {u"panes"_s, R"([{"columns":1,"kind":"frozen","rows":2}])"},
        {u"row_heights"_s, "[[[1,2,15],[3,4,30],[5,9,15]]]"},
        {u"column_widths"_s, R"([[["A","B",64],["C","D",89],["E","E",64]]])"},
        {u"hidden_rows"_s, "[[[4,4]]]"},
        {u"filtered_rows"_s, "[[]]"},
        {u"hidden_columns"_s, "[[]]"},
        {u"grid_lines"_s, "[false]"},
        {u"objects"_s, "[[]]"},
        {u"sample_range"_s, R"(["B2:E9"])"},
    };
    for (const auto& [key, value] : expected)
        EXPECT_EQ(json(figures.value(key)).toStdString(), value.toStdString()) << key.toStdString();
}

TEST_F(Inspection, ListsDrawingsWithTheirAnchors)
{
    WorkbookParts parts({{"Data", "<sheetData/><drawing r:id='d'/>", ""}});
    parts.drawings(drawingAnchor(1, 2, 3, 4, chartObject("Sales")) + sizedAnchor(1, 2, 96, 48, chartObject("Costs")) +
                   "<xdr:absoluteAnchor><xdr:pos x='12700' y='25400'/><xdr:ext cx='63500' cy='127000'/>" +
                   chartObject("Free", " hidden='1'") + "</xdr:absoluteAnchor>");
    EXPECT_EQ(json(sheet(parts.package()).value(u"objects")).toStdString(),
              R"([[{"anchor":"B3:D5","cell":"B3","kind":"chart","name":"Sales"},)"
              R"({"anchor":"B3","cell":"B3","height":36,"kind":"chart","name":"Costs","width":72},)"
              R"({"cell":"A1","height":10,"hidden":true,"kind":"chart","name":"Free","width":5,"x":1,"y":2}]])");
}

TEST_F(Inspection, OfAnEmptySheetStaysAtItsCorner)
{
    const QJsonObject empty = sheet(describedWorkbook(), 1);
    EXPECT_EQ(empty.value(u"used_area").toString(), u"A1"_s);
    EXPECT_TRUE(empty.value(u"last_row").isNull());
    EXPECT_TRUE(empty.value(u"last_column").isNull());
    EXPECT_TRUE(empty.value(u"cells").toObject().isEmpty());
}

TEST_F(Inspection, StopsAtThreeHundredRowsAndSixtyColumns)
{
    demo::Book book;
    demo::Sheet& sheet = book.add(u"Large"_s);
    for (const auto& [row, column] : {std::pair(3, 2), std::pair(302, 61), std::pair(303, 2), std::pair(3, 62)})
        sheet.set(row, column, u"x"_s, demo::Look());
    const QJsonObject large = this->sheet(book.bytes());
    EXPECT_EQ(large.value(u"covered").toString(), u"B3:BI302"_s);
    EXPECT_EQ(large.value(u"last_row").toInt(), 303);
    EXPECT_EQ(large.value(u"last_column").toString(), u"BJ"_s);
    EXPECT_EQ(large.value(u"cells").toObject().keys(), (QStringList{u"B3"_s, u"BI302"_s}));
}

} // namespace lumivane::test
