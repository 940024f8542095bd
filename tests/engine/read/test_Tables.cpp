#include "engine/read/ContentText.h"
#include "support/TextTable.h"

#include <QColor>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

/// A sheet that refers to one table or pivot table, in a workbook with a style of its own.
std::shared_ptr<const SheetContent> sheetWith(const QString& kind, const QString& part)
{
    WorkbookParts parts({{"Data", "<sheetData/><tableParts><tablePart r:id='t'/></tableParts>", ""}});
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<R><Relationship Id='t' Type='x/" + kind.toStdString() + "' Target='../t.xml'/></R>");
    parts.set("xl/t.xml", part.toStdString());
    parts.set("xl/_rels/workbook.xml.rels", "<R><Relationship Id='rId1' Type='x/worksheet' "
                                            "Target='worksheets/sheet1.xml'/><Relationship Id='b' Type='x/styles' "
                                            "Target='styles.xml'/></R>");
    parts.set("xl/styles.xml",
              "<styleSheet><dxfs><dxf><fill><patternFill><bgColor rgb='FF112233'/></patternFill></fill></dxf></dxfs>"
              "<tableStyles><tableStyle name='Own'><tableStyleElement type='firstRowStripe' size='3' dxfId='0'/>"
              "<tableStyleElement type='totalRow' dxfId='0'/><tableStyleElement type='headerRow' dxfId='7'/>"
              "<tableStyleElement type='secondColumnStripe' size='99999999' dxfId='0'/>"
              "</tableStyle></tableStyles></styleSheet>");
    return readSheet(parts);
}

QString fillOf(const TableStyle& style, TableElement element)
{
    const DifferentialStyle* look = style.look(element);
    return look && look->fill ? QColor(look->fill->fore).name() : u"none"_s;
}

QString kinds(const std::vector<TableElement>& lines)
{
    const QString letters = u".pqcdrslfhtABCDxyzbuveXYZijkGT"_s;
    QString printed;
    for (const TableElement line : lines)
        printed += letters[static_cast<qsizetype>(line)];
    return printed;
}

} // namespace

TEST(Tables, HaveTheirPlaceAndParts)
{
    for (const auto& [name, attributes, expected] : textTable<3>(R"(
        usual         | ref='B2:D9'                                            | B2:D9 1 0
        with totals   | ref='B2:D9' headerRowCount='0' totalsRowCount='1'      | B2:D9 0 1
        absurd counts | ref='B2:D9' headerRowCount='-5' totalsRowCount='99999' | B2:D9 0 8
        all header    | ref='B2:D9' headerRowCount='99' totalsRowCount='1'     | B2:D9 8 0
        without place | ref='#REF!'                                            | none
        )")) {
        const auto sheet = sheetWith(u"table"_s, u"<table "_s + attributes + u"/>"_s);
        QString printed = u"none"_s;
        for (const TableContent& table : sheet->tables)
            printed = u"%1 %2 %3"_s.arg(table.area.relative()).arg(table.headerRows).arg(table.totalsRows);
        EXPECT_EQ(printed, expected) << name;
    }
}

TEST(Tables, TakeTheirStyleFromTheWorkbookOrTheBuiltInOnes)
{
    for (const auto& [name, style, expected] : textTable<3>(R"(
        own          | Own               | stripe #112233 3, header none, total #112233, grand total #112233, second 1000
        built in     | TableStyleMedium9 | stripe #b9cde5 1, header #4f81bd, total #4f81bd, grand total #4f81bd, second 1
        unknown      | Medium 9          | none
        without name |                   | none
        )")) {
        const auto sheet =
            sheetWith(u"table"_s, u"<table ref='A1:B9'><tableStyleInfo name='%1'/></table>"_s.arg(style));
        ASSERT_EQ(sheet->tables.size(), 1u) << name;
        const auto read = sheet->tables[0].style;
        const QString printed =
            !read ? u"none"_s
                  : u"stripe %1 %2, header %3, total %4, grand total %5, second %6"_s
                        .arg(fillOf(*read, TableElement::FirstRowStripe))
                        .arg(read->firstRowStripe)
                        .arg(fillOf(*read, TableElement::HeaderRow), fillOf(*read, TableElement::TotalRow),
                             fillOf(*read, TableElement::GrandTotalRow))
                        .arg(read->secondColumnStripe);
        EXPECT_EQ(printed, expected) << name;
    }
}

TEST(Tables, ShareOneStyle)
{
    const QString part = u"<table ref='A1:B9'><tableStyleInfo name='TableStyleLight3'/></table>"_s;
    WorkbookParts parts(
        {{"Data", "<sheetData/><tableParts><tablePart r:id='a'/><tablePart r:id='b'/></tableParts>", ""}});
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<R><Relationship Id='a' Type='x/table' Target='../a.xml'/>"
              "<Relationship Id='b' Type='x/table' Target='../b.xml'/>"
              "<Relationship Id='c' Type='x/pivotTable' Target='../c.xml'/></R>");
    // The broken one does not keep the others from being read.
    parts.set("xl/a.xml", part.toStdString()).set("xl/b.xml", part.toStdString()).set("xl/c.xml", "<pivotTable");
    const auto sheet = readSheet(parts);
    ASSERT_EQ(sheet->tables.size(), 2u);
    EXPECT_EQ(sheet->tables[0].style, sheet->tables[1].style);
    EXPECT_TRUE(sheet->problem.startsWith(u"The look of a table is missing: "_s)) << sheet->problem;
}

TEST(PivotTables, KnowTheirRowsAndColumns)
{
    const QString compact = u"<rowFields><field/><field/></rowFields><rowItems><i><x/></i><i r='1'><x v='1'/></i>"
                            "<i t='blank'><x/></i><i t='default'><x/></i><i t='sum' r='1'><x/></i><i t='grand'><x/></i>"
                            "<i><x/></i></rowItems>"_s;
    const QString columns = u"<colFields><field/></colFields><colItems><i><x/></i><i t='avg'><x/></i>"
                            "<i t='grand'/></colItems>"_s;
    const QString pages = u"<pageFields><pageField/><pageField/><pageField/></pageFields>"_s;
    const QString usual = u"ref='A6:D13' firstDataRow='2' firstDataCol='1'"_s;
    for (const auto& [name, location, contents, expected] : std::vector<std::array<QString, 4>>{
             {u"compact"_s, usual, compact + columns, u"2 1 1 rows i.buvT columns .xG pages  "_s},
             {u"nothing"_s, u"ref='A6:D13'"_s, u""_s, u"1 1 0 rows  columns  pages  "_s},
             {u"two columns of pages"_s, usual + u" rowPageCount='2'"_s, pages,
              u"2 1 0 rows  columns  pages A3:A4 D3 B3:B4 E3"_s},
             {u"absurd"_s, u"ref='A2:B3' firstDataRow='-7' firstDataCol='999999' rowPageCount='99'"_s,
              compact + columns + pages, u"0 2 0 rows i. columns  pages  "_s},
         }) {
        const auto sheet =
            sheetWith(u"pivotTable"_s,
                      u"<pivotTableDefinition><location %1/>%2</pivotTableDefinition>"_s.arg(location, contents));
        ASSERT_EQ(sheet->pivots.size(), 1u) << name;
        const PivotContent& pivot = sheet->pivots[0];
        EXPECT_EQ(
            u"%1 %2 %3 rows %4 columns %5 pages %6 %7"_s.arg(pivot.headerRows)
                .arg(pivot.headingColumns)
                .arg(pivot.columnFields)
                .arg(kinds(pivot.rows), kinds(pivot.columns), addresses(pivot.pageLabels), addresses(pivot.pageValues)),
            expected)
            << name;
    }
}

} // namespace lumivane::test
