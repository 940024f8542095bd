#include "engine/read/ContentText.h"
#include "engine/read/MergedAreas.h"
#include "engine/read/RowBuilder.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

WorkbookParts bookOf(const QString& sheetXml)
{
    return WorkbookParts({{"Data", sheetXml.toStdString(), ""}})
        .sharedTexts({"zero", "one &amp; two", "_x0041__x005F_x"})
        .styles("<cellXfs><xf/><xf/><xf/><xf/><xf/></cellXfs>");
}

QString cellsOf(const QString& rowsXml)
{
    return readCells(bookOf(u"<sheetData>"_s + rowsXml + u"</sheetData>"_s).package());
}

std::shared_ptr<const SheetContent> sheetOf(const char* sheetXml)
{
    return readSheet(bookOf(QString::fromUtf8(sheetXml)));
}

} // namespace

TEST(SheetReader, ReadsEveryKindOfCell)
{
    for (const auto& [name, cells, expected] : textTable<3>(R"(
        number                          | <c r='A1'><v>12.5</v></c>                          | 1: A=12.5
        number with type                | <c r='A1' t='n'><v>-1E-3</v></c>                   | 1: A=-0.001
        number with blanks and sign     | <c r='A1'><v> +7⏎</v></c>                          | 1: A=7
        not a number                    | <c r='A1'><v>NaN</v></c>                           | 1: A=#NUM!
        style                           | <c r='A1' s='3'><v>1</v></c>                       | 1: A=1/3
        blank with style                | <c s='3' r='A1'/>                                  | 1: A=_/3
        style that there is not         | <c r='A1' s='5'/><c s='-1'/><c s='4294967297'/>    | 1: A=_ B=_ C=_
        shared text                     | <c r='A1' t='s'><v>1</v></c>                       | 1: A="one & two"
        shared text with escapes        | <c r='A1' t='s'><v>2</v></c>                       | 1: A="A_x"
        inline text                     | <c r='A1' t='inlineStr'><is><t> a </t></is></c>    | 1: A=' a '
        inline text of runs | <c t='inlineStr'><is><r><t>a</t></r><r><rPr><b/></rPr><t>b</t></r></is></c>  | 1: A='ab'
        phonetic text | <c t='inlineStr'><is><t>a</t><rPh sb='0' eb='1'><t>x</t></rPh></is></c>            | 1: A='a'
        empty inline text               | <c r='A1' t='inlineStr'><is/></c>                  | 1: A=''
        literal text                    | <c r='A1' t='str'><v><![CDATA[<&amp;>]]></v></c>   | 1: A='<&amp;>'
        text of a formula               | <c t='str'><f>A2</f><v>a&lt;b_x000a_c</v></c>      | 1: A=='a<b⏎c'
        empty text of a formula         | <c r='A1' t='str'><f>A2</f><v></v></c>             | 1: A==''
        number of a formula             | <c r='A1'><f t='shared' si='0'/><v>3</v></c>       | 1: A==3
        formula without result          | <c r='A1'><f>1+2</f></c>                           | 1: A==?
        formula with empty result       | <c r='A1'><f>1+2</f><v/></c>                       | 1: A==?
        boolean                         | <c t='b'><v>1</v></c><c t='b'><v>0</v></c>         | 1: A=TRUE B=FALSE
        error                           | <c t='e'><v>#DIV/0!</v></c><c t='e'><v>#N/A</v></c> | 1: A=#DIV/0! B=#N/A
        date                            | <c r='A1' t='d'><v>2026-11-24T12:00:00Z</v></c>    | 1: A=46350.5
        time                            | <c r='A1' t='d'><v>06:00:00</v></c>                | 1: A=0.25
        day before the one that never was | <c r='A1' t='d'><v>1900-02-28</v></c>            | 1: A=59
        day after the one that never was | <c r='A1' t='d'><v>1900-03-01</v></c>             | 1: A=61
        empty value                     | <c r='A1'><v></v></c>                              | 1: A=_
        elements of later versions | <c r='A1'><v>1</v><extLst><ext><v>2</v></ext></extLst></c> | 1: A=1
        address in small letters with dollars | <c r='$b$1'><v>1</v></c>                     | 1: B=1
        last cell of a sheet            | <c r='XFD1048576'><v>1</v></c>                     | 1048576: XFD=1)"))
        EXPECT_EQ(cellsOf(u"<row r='1'>"_s + cells + u"</row>"), expected) << name;
}

TEST(SheetReader, PutsCellsWhereTheyBelong)
{
    for (const auto& [name, rows, expected] : textTable<3>(R"(
        no addresses | <row><c><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>     | 1: A=1 B=2⏎2: A=3
        addresses now and then | <row r='4'><c r='C4'/><c><v>2</v></c></row><row><c/></row>    | 4: C=_ D=2⏎5: A=_
        cells out of order | <row r='1'><c r='C1'><v>3</v></c><c r='A1'><v>1</v></c></row>     | 1: A=1 C=3
        rows out of order  | <row r='3'><c><v>3</v></c></row><row r='1'><c><v>1</v></c></row>  | 1: A=1⏎3: A=3
        the last of equal cells | <row r='1'><c r='A1'><v>1</v></c><c r='A1'><v>2</v></c></row> | 1: A=2
        row in two pieces | <row r='1'><c r='B1'><v>1</v></c></row><row r='1'><c><v>2</v></c></row> | 1: A=2 B=1
        cell of another row | <row r='2'><c r='A2'/><c r='B1'><v>2</v></c><c r='C2'/></row>    | 1: B=2⏎2: A=_ C=_
        rows that say nothing | <row r='1'/><row r='2' spans='1:3'/><row r='3'><c><v>1</v></c></row> | 3: A=1
        nothing)"))
        EXPECT_EQ(cellsOf(rows), expected) << name;
}

TEST(SheetReader, FailsWithFileSheetAndFaultInsteadOfHalfASheet)
{
    for (const auto& [name, rows, expected] : textTable<3>(R"(
        text not there | <row><c r='B1' t='s'><v>3</v></c></row> | cell B1 holds the number of a text that the workbook
        negative text         | <row r='1'><c r='A1' t='s'><v>-1</v></c></row> | does not have: "-1".
        no number             | <row r='1'><c r='A1'><v>12x</v></c></row>      | holds a number that is none: "12x".
        no date | <row><c t='d'><v>2026-02-29</v></c></row> | holds a date that is none: "2026-02-29".
        no time               | <row><c t='d'><v>06:60:00</v></c></row>        | holds a date that is none: "06:60:00".
        unknown type          | <row r='1'><c r='A1' t='q'><v>1</v></c></row>  | holds an unknown type: "q".
        row 0                 | <row r='0'/>                                   | it has a row with the number "0".
        row behind the last   | <row r='1048577'/>                             | it has a row with the number "1048577".
        row that is no number | <row r='x'/>                                   | it has a row with the number "x".
        column behind the last | <row r='1'><c r='XFE1'/></row>                | it has a cell with the address "XFE1".
        no column             | <row r='1'><c r='1'/></row>                    | it has a cell with the address "1".
        cell behind the last  | <row r='1'><c r='XFD1'/><c/></row>      | row 1 has more cells than a sheet has columns.
        breaks off | <row r='1'><c r='A1'> | its XML is broken (an element is closed that is
        no area               | </sheetData><mergeCells><mergeCell ref='A1:'/></mergeCells><sheetData> | "A1:")")) {
        const QString failure = cellsOf(rows);
        EXPECT_TRUE(failure.startsWith(u"Sheet \"Data\" of the workbook \""_s) &&
                    failure.contains(u"Book.xlsx\" cannot be read: "_s) && failure.contains(expected))
            << name << ": " << failure;
    }
}

TEST(SheetReader, ReadsRows)
{
    const auto sheet = sheetOf("<sheetFormatPr defaultRowHeight='14.4' customHeight='1' zeroHeight='1'/><sheetData>"
                               "<row r='1' ht='30' customHeight='1' s='2' customFormat='1'/>"
                               "<row r='2' ht='12.75' s='2'/>"
                               "<row r='3' hidden='true' outlineLevel='2'/>"
                               "<row r='4' collapsed='1'/>"
                               "<row r='5' ht='0' customHeight='1'/>"
                               "<row r='6' ht='9999' outlineLevel='300'/></sheetData>");
    EXPECT_DOUBLE_EQ(sheet->defaultRowHeight, 14.4);
    EXPECT_TRUE(sheet->customDefaultHeight && sheet->defaultRowsHidden);
    QString printed;
    for (const RowContent& row : sheet->rows)
        printed += u"%1: %2 style %3 level %4%5%6%7\n"_s.arg(row.row)
                       .arg(row.height)
                       .arg(row.style)
                       .arg(row.outlineLevel)
                       .arg(row.customHeight ? u" custom"_s : u""_s, row.hidden ? u" hidden"_s : u""_s,
                            row.collapsed ? u" collapsed"_s : u""_s);
    // A style counts only where the row says so; no row is higher than 409.5 points nor deeper than level 7.
    EXPECT_EQ(printed, u"1: 30 style 2 level 0 custom\n"
                       "2: 12.75 style -1 level 0\n"
                       "3: -1 style -1 level 2 hidden\n"
                       "4: -1 style -1 level 0 collapsed\n"
                       "5: 0 style -1 level 0 custom hidden\n"
                       "6: 409.5 style -1 level 7\n"_s);
    EXPECT_FALSE(sheet->used.has_value());
}

TEST(SheetReader, ReadsColumnsWithoutOverlaps)
{
    const auto sheet = sheetOf("<sheetFormatPr baseColWidth='10' defaultColWidth='9.5'/><cols>"
                               "<col min='5' max='16385' width='3' hidden='1'/>"
                               "<col min='1' max='2' width='20.7109375' customWidth='1' style='4'/>"
                               "<col min='2' max='3' outlineLevel='1' collapsed='1'/>"
                               "<col min='4' max='4' width='0' customWidth='1'/>"
                               "<col min='9' max='7' width='3'/></cols><sheetData/>");
    EXPECT_EQ(sheet->baseColumnWidth, 10);
    EXPECT_DOUBLE_EQ(sheet->defaultColumnWidth, 9.5);
    QString printed;
    for (const ColumnContent& column : sheet->columns)
        printed += u"%1-%2 %3 style %4%5%6%7\n"_s.arg(column.first)
                       .arg(column.last)
                       .arg(column.width)
                       .arg(column.style)
                       .arg(column.customWidth ? u" custom"_s : u""_s, column.hidden ? u" hidden"_s : u""_s,
                            column.collapsed ? u" collapsed"_s : u""_s);
    EXPECT_EQ(printed, u"1-2 20.7109 style 4 custom\n"
                       "3-3 -1 style -1 collapsed\n"
                       "4-4 0 style -1 custom hidden\n"
                       "5-16384 3 style -1 hidden\n"_s);
}

TEST(SheetReader, ReadsTheView)
{
    const auto sheet =
        sheetOf("<sheetViews><sheetView showGridLines='0' showRowColHeaders='0' rightToLeft='1' showZeros='0' "
                "showFormulas='1' zoomScale='85' defaultGridColor='0' colorId='10' topLeftCell='B3'>"
                "<pane xSplit='2' ySplit='1' topLeftCell='F20' activePane='bottomRight' state='frozen'/>"
                "<selection pane='topRight' activeCell='A1' sqref='A1'/>"
                "<selection pane='bottomRight' activeCell='G21' sqref='G21:H30 J5'/></sheetView>"
                "<sheetView showGridLines='1'/></sheetViews><sheetData/>");
    const SheetView& view = sheet->view;
    EXPECT_FALSE(view.gridLines || view.headings || view.showZeros);
    EXPECT_TRUE(view.rightToLeft && view.showFormulas);
    EXPECT_EQ(view.zoom, 85);
    EXPECT_EQ(view.gridColor, 0xffff0000);
    EXPECT_EQ(view.panes, PaneKind::Frozen);
    EXPECT_EQ(std::pair(view.xSplit, view.ySplit), std::pair(2.0, 1.0));
    EXPECT_EQ(std::pair(view.topRow, view.leftColumn), std::pair(3, 2));
    EXPECT_EQ(std::pair(view.paneTopRow, view.paneLeftColumn), std::pair(20, 6));
    EXPECT_EQ(view.activeCell, u"G21"_s);
    EXPECT_EQ(view.selection, u"G21:H30 J5"_s);
}

TEST(SheetReader, TellsThePanes)
{
    const char* const kinds[] = {"none", "frozen", "split"};
    for (const auto& [name, pane, expected] : textTable<3>(R"(
        none                        |                                                              | none R1C1
        frozen rows without corner  | <pane ySplit='3' state='frozen'/>                            | frozen R4C1
        frozen out of a split       | <pane xSplit='1' topLeftCell='C1' state='frozenSplit'/>      | frozen R1C3
        split                       | <pane xSplit='2400' ySplit='1200' topLeftCell='D9' state='split'/> | split R9C4
        split without a state       | <pane ySplit='1200' topLeftCell='A9'/>                       | split R9C1
        nothing split               | <pane state='frozen'/>                                       | none R1C1
        more than there is          | <pane ySplit='1e12' state='frozen'/>                   | frozen R1048576C1)")) {
        const auto view =
            readSheet(bookOf(u"<sheetViews><sheetView>"_s + pane + u"</sheetView></sheetViews><sheetData/>"_s))->view;
        EXPECT_EQ(
            u"%1 R%2C%3"_s.arg(QLatin1StringView(kinds[int(view.panes)])).arg(view.paneTopRow).arg(view.paneLeftColumn),
            expected)
            << name;
    }
}

TEST(SheetReader, ReadsFiltersMergesAndTheUsedArea)
{
    const auto sheet =
        sheetOf("<dimension ref='A1:XFD1048576'/><sheetData><row r='3'><c r='D3'><v>1</v></c></row>"
                "<row r='7'><c r='B7' s='1'/></row></sheetData><autoFilter ref='B2:D9'><filterColumn colId='1'>"
                "<filters/></filterColumn><filterColumn colId='2' hiddenButton='1'/>"
                "<filterColumn colId='3'/></autoFilter>"
                "<mergeCells count='9999999'><mergeCell ref='B2:C3'/><mergeCell ref='D4'/>"
                "<mergeCell ref='F9:E8'/></mergeCells>");
    EXPECT_EQ(sheet->used, CellArea::parse(u"B3:D7"));
    EXPECT_EQ(addresses(sheet->filtered), u"B2:D9"_s);
    ASSERT_EQ(sheet->filterColumns.size(), 2u) << "one lies outside";
    EXPECT_TRUE(sheet->filterColumns[0].inUse && sheet->filterColumns[0].hasButton);
    EXPECT_FALSE(sheet->filterColumns[1].inUse || sheet->filterColumns[1].hasButton);
    EXPECT_EQ(sheet->filterColumns[1].column, 4);
    EXPECT_EQ(addresses(sheet->merged.areas()), u"B2:C3 E8:F9"_s);
    EXPECT_LT(sheet->bytes(), 100000) << "a claimed extent must cost nothing";
}

TEST(SheetReader, KeepsTheFirstOfOverlappingMerges)
{
    for (const auto& [name, stored, kept] : textTable<3>(R"(
        side by side                | A1:B2 C1:D2 A3:B4 | A1:B2 C1:D2 A3:B4
        the later one goes          | A1:B2 B2:C3 C3:D4 | A1:B2 C3:D4
        the later one begins higher | B5:C6 A1:C5 D1:E9 | B5:C6 D1:E9
        one across many             | B1:B9 D1:D9 A5:E5 | B1:B9 D1:D9
        only its last column        | B1:B2 A2:B3       | B1:B2
        one corner                  | A1:C3 C3:E5 D4:F6 | A1:C3 D4:F6
        long before, ended          | A1:A2 A3:A4 A2:B9 | A1:A2 A3:A4)")) {
        std::vector<CellArea> areas;
        for (const QString& text : stored.split(u' '))
            areas.push_back(*CellArea::parse(text));
        EXPECT_EQ(addresses(withoutOverlaps(areas)), kept) << name;
    }
}

TEST(SheetReader, FindsTheMergedRangeOfACell)
{
    const auto sheet =
        sheetOf("<sheetData/><mergeCells><mergeCell ref='D1:D9'/><mergeCell ref='A8:B9'/>"
                "<mergeCell ref='A2:B3'/><mergeCell ref='F5:G5'/><mergeCell ref='J1:J5000'/></mergeCells>");
    for (const auto& [cell, expected] : textPairs("D1 → D1:D9 | D9 → D1:D9 | D10 → | A2 → A2:B3 | B3 → A2:B3 | A4 → |"
                                                  "C2 → | G5 → F5:G5 | B9 → A8:B9 | A7 → | A10 → | J4999 → J1:J5000")) {
        const CellArea place = *CellArea::parse(cell);
        const CellArea* area = sheet->merged.at(place.firstRow, place.firstColumn);
        EXPECT_EQ(area ? area->relative() : QString(), expected) << cell;
    }
}

TEST(SheetReader, ReadsTheFontsOfRuns)
{
    const auto book = openBook(
        WorkbookParts({{"Data", "<sheetData/>", ""}})
            .set("xl/sharedStrings.xml",
                 "<sst><si><r><t>€😀</t></r><r><rPr><b/><i val='0'/><sz val='14'/><color rgb='FF00B050'/>"
                 "<rFont val='Arial'/><u val='double'/><vertAlign val='superscript'/></rPr><t>big_x000D_</t></r>"
                 "<r><rPr><strike/></rPr><t></t></r><r><t>end</t></r></si><si><r><t>plain</t></r></si></sst>"));
    EXPECT_EQ(book->content()->texts.text(0), u"€😀big\nend"_s);
    const std::vector<TextRun>* runs = book->content()->texts.runs(0);
    ASSERT_TRUE(runs);
    ASSERT_EQ(runs->size(), 3u);
    const auto& [first, second, third] = std::tie((*runs)[0], (*runs)[1], (*runs)[2]);
    EXPECT_TRUE(first.cellFont && !second.cellFont && third.cellFont);
    EXPECT_EQ(second.start, 3) << "in UTF-16 units";
    EXPECT_EQ(third.start, 7);
    const FontStyle expected{u"Arial"_s, 14, true, false, false, Underline::Double, Script::Superscript, 0xff00b050};
    EXPECT_TRUE(second.font == expected);
    EXPECT_FALSE(book->content()->texts.runs(1)) << "runs that say nothing make no rich text";
}

TEST(SheetReader, CutsTextsAtWhatACellHolds)
{
    const QString letters = u"x"_s.repeated(32766), runs = u"<r><rPr><b/></rPr><t>ab</t></r>"_s.repeated(20000);
    const auto texts = [](const QString& xml) {
        const std::string part = "<sst><si>" + xml.toStdString() + "</si></sst>";
        return openBook(WorkbookParts({{"Data", "<sheetData/>", ""}}).set("xl/sharedStrings.xml", part))
            ->content()
            ->texts;
    };
    EXPECT_EQ(texts(u"<t>"_s + letters + u"😀</t>").text(0), letters) << "no half of a character";
    EXPECT_EQ(texts(u"<t>"_s + letters + u"é and more</t>").text(0), letters + u'é');
    const TextTable rich = texts(runs);
    EXPECT_EQ(rich.text(0).size(), 32767);
    EXPECT_EQ(rich.runs(0)->size(), 1000u) << "and as many fonts as a text may have";
}

TEST(RowBuilder, EndsAtItsBytes)
{
    const auto cellsIn = [](qint64 bytes, bool backwards) {
        SheetContent sheet;
        RowBuilder rows(sheet, bytes);
        Cell cell;
        try {
            rows.startRow(RowContent{.row = 1});
            for (cell.column = 200; cell.column > 0; --cell.column) {
                Cell one = cell;
                one.column = backwards ? cell.column : quint16(201 - cell.column);
                rows.append(one);
            }
            rows.finish();
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.cause, ReadCause::TooLarge);
            return -1;
        }
        return int(sheet.cells.size());
    };
    EXPECT_EQ(cellsIn(200 * 16 + 100, false), 200);
    EXPECT_EQ(cellsIn(199 * 16, false), -1);
    EXPECT_EQ(cellsIn(200 * 16 + 100, true), -1) << "to be sorted, cells are held twice";
    EXPECT_EQ(cellsIn(400 * 16 + 200, true), 200);

    SheetContent sheet;
    RowBuilder rows(sheet, 100000);
    rows.startRow(RowContent{.row = 1});
    EXPECT_THROW(for (int i = 0; i < 10; ++i) rows.appendText(std::string(20000, 'x')), Fault);
}

} // namespace lumivane::test
