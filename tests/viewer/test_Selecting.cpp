#include "support/TextTable.h"
#include "viewer/CellPlace.h"
#include "viewer/OpenSheet.h"
#include "viewer/SelectionFigures.h"
#include "viewer/SheetFinder.h"
#include "viewer/SmallSheet.h"

#include <gtest/gtest.h>
#include <map>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

CellArea area(const QString& address)
{
    return CellArea::parse(address).value();
}

CellSpot spot(const QString& address)
{
    return {area(address).firstRow, area(address).firstColumn};
}

QString addressOf(const CellSpot& cell)
{
    return CellArea::cell(cell.row, cell.column).relative();
}

/// Presses of keys in a window of 300 x 200 pixels: arrows as l r u d, with C for Ctrl and S for Shift in front, H E P
/// N for Home, End, PageUp and PageDown.
QString afterKeys(OpenSheet& sheet, const QString& start, const QString& keys)
{
    using Step = OpenSheet::Step;
    struct Key
    {
        Direction direction;
        Step step, withControl;
    };
    const std::map<QChar, Key> meanings = {
        {u'l', {Direction::Left, Step::Cell, Step::DataEdge}},
        {u'r', {Direction::Right, Step::Cell, Step::DataEdge}},
        {u'u', {Direction::Up, Step::Cell, Step::DataEdge}},
        {u'd', {Direction::Down, Step::Cell, Step::DataEdge}},
        {u'H', {Direction::Left, Step::LineStart, Step::SheetStart}},
        {u'E', {Direction::Right, Step::DataEdge, Step::SheetEnd}},
        {u'P', {Direction::Up, Step::Page, Step::Page}},
        {u'N', {Direction::Down, Step::Page, Step::Page}},
    };
    sheet.selection().select({area(start)});
    for (const QString& key : keys.split(u' ')) {
        const Key meant = meanings.at(key.back());
        sheet.move(meant.direction, key.contains(u'C') ? meant.withControl : meant.step, key.contains(u'S'));
    }
    return sheet.selection().address().remove(u'$') + u" at " + addressOf(sheet.selection().activeCell());
}

TEST(Keyboard, MovesAndSelects)
{
    OpenSheet sheet(viewedSheet(smallWorkbook()));
    sheet.setSize({300, 200});
    for (const auto& [name, start, keys, selected] : textTable<4>(R"(
        over a hidden row                        | C5 | d       | C7 at C7
        over a hidden column                     | D4 | r       | F4 at F4
        stays at the edge                        | A1 | u l     | A1 at A1
        into a merged cell                       | C8 | d       | B9:D9 at B9
        out of a merged cell                     | B9 | r       | F9 at F9
        to the end of filled cells               | B2 | Cr      | D2 at D2
        to the next filled cell                  | A4 | Cr      | B4 at B4
        a hidden filled cell does not stop       | C4 | Cr      | F4 at F4
        filled cells go on behind a hidden row   | C2 | Cd      | C7 at C7
        to the sheet's edge                      | F4 | Cd      | F1048576 at F1048576
        back from the sheet's edge               | F1048576 | Cu | F4 at F4
        to the last column                       | D2 | Cr      | XFD2 at XFD2
        extends and comes back                   | C3 | Sr Sr Sl Sl Sl | B3:C3 at C3
        extends to the data's edges              | B2 | CSr CSd | B2:D3 at B2
        extension takes merged cells whole       | C8 | Sd      | B8:D9 at C8
        Home                                     | D4 | H       | A4 at A4
        Ctrl+Home                                | D4 | CH      | A1 at A1
        Ctrl+End: the crossing, perhaps blank    | A1 | CE      | F9 at F9
        Ctrl+Shift+End                           | B2 | CSE     | B2:F9 at B2
        one page down and up                     | B10 | N P    | B10 at B10)"))
        EXPECT_EQ(afterKeys(sheet, start, keys), selected) << name;
}

TEST(Keyboard, KeepsWhatItReachesInSight)
{
    OpenSheet sheet(viewedSheet(smallWorkbook(paneView("<pane ySplit='2' topLeftCell='A3' state='frozen'/>"))));
    sheet.setSize({300, 200});
    afterKeys(sheet, u"F4"_s, u"Cd"_s);
    EXPECT_EQ(sheet.panes().visible(1).lastRow, maxRow);
    EXPECT_EQ(afterKeys(sheet, u"F4"_s, u"CH"_s), u"A3 at A3"_s) << "the first cell below the frozen rows";
    EXPECT_EQ(sheet.panes().visible(1).firstRow, 3);
}

TEST(SelectAll, TakesTheDataFirstAndThenTheSheet)
{
    OpenSheet sheet(viewedSheet(smallWorkbook()));
    sheet.selection().select(spot(u"C4"_s));
    sheet.selectRegionOrAll();
    EXPECT_EQ(sheet.selection().address(), u"$B$2:$F$7"_s);
    sheet.selectRegionOrAll();
    EXPECT_EQ(sheet.selection().lastArea(), CellArea::wholeSheet());
    EXPECT_EQ(addressOf(sheet.selection().activeCell()), u"C4"_s);
}

struct Selection : testing::Test
{
    const std::shared_ptr<const ViewedSheet> viewed = viewedSheet(smallWorkbook());
    SheetSelection selection{*viewed};
};

TEST_F(Selection, JoinsAreasInTheirOrderAndWalksThroughThem)
{
    selection.selectArea(area(u"C3:D4"_s), spot(u"C3"_s));
    selection.addArea(area(u"A7"_s), spot(u"A7"_s));
    EXPECT_EQ(selection.address(), u"$C$3:$D$4,$A$7"_s);
    QStringList walked;
    for (int i = 0; i < 5; ++i) {
        selection.step(Direction::Right);
        walked << addressOf(selection.activeCell());
    }
    EXPECT_EQ(walked.join(u' '), u"C3 D3 C4 D4 A7"_s);
    EXPECT_EQ(selection.address(), u"$C$3:$D$4,$A$7"_s) << "walking leaves the selection";
    EXPECT_TRUE(selection.rowTouched(7) && !selection.rowTouched(5));
}

TEST_F(Selection, KeepsWholeLinesWholeWhenExtended)
{
    selection.selectArea(area(u"3:3"_s), spot(u"C3"_s));
    selection.extendTo(spot(u"D5"_s));
    EXPECT_EQ(selection.address(), u"$3:$5"_s);
    EXPECT_TRUE(selection.rowWhole(4));
    selection.selectArea(area(u"C:C"_s), spot(u"C3"_s));
    selection.extendTo(spot(u"A9"_s));
    EXPECT_EQ(selection.address(), u"$A:$C"_s) << "whatever is merged beside them";
}

TEST(StoredView, ComesBackAsPanesSelectionAndZoom)
{
    // By pane, in a window of 300 x 200 pixels; the third case was scrolled before it was frozen.
    for (const auto& [pane, attributes, panes] : textTable<3>(R"(
        | topLeftCell='C4'                                                  | C4:H14
        <pane ySplit='2' topLeftCell='A5' state='frozen'/>            |     | A1:F2 A5:F13
        <pane xSplit='1' topLeftCell='C1' state='frozen'/>            |     | A1:A11 C1:G11
        <pane xSplit='1' ySplit='1' topLeftCell='D7' state='frozen'/> | topLeftCell='B2' | B2 D2:H2 B7:B15 D7:H15
        <pane ySplit='1500' topLeftCell='A9'/>                        | topLeftCell='A2' | A2:F5 A9:F14)")) {
        OpenSheet sheet(viewedSheet(smallWorkbook(paneView(pane.toStdString(), attributes.toStdString()))));
        sheet.setSize({300, 200});
        QStringList visible;
        for (int i = 0; i < sheet.panes().count(); ++i)
            visible << sheet.panes().visible(i).relative();
        EXPECT_EQ(visible.join(u' '), panes) << pane;
    }
    OpenSheet sheet(viewedSheet(
        smallWorkbook(paneView("<selection activeCell='C4' sqref='B3:D5'/>", "zoomScale='150' tabSelected='1'"))));
    EXPECT_EQ(sheet.selection().address(), u"$B$3:$D$5"_s);
    EXPECT_EQ(addressOf(sheet.selection().activeCell()), u"C4"_s);
    EXPECT_EQ(sheet.zoom(), 150);
}

TEST(Freezing, KeepsWhatIsSeenAboveAndBeforeTheCell)
{
    OpenSheet sheet(viewedSheet(smallWorkbook()));
    sheet.setSize({300, 200});
    sheet.panes().rows.scrollTo(0, 2);
    sheet.freezeAt(spot(u"B4"_s));
    EXPECT_EQ(sheet.panes().count(), 4);
    EXPECT_EQ(sheet.panes().visible(0).absolute(), u"$A$2:$A$3"_s);
    EXPECT_EQ(sheet.panes().visible(3).firstRow, 4);
    sheet.unfreeze();
    sheet.freezeAt(spot(u"A2"_s));
    EXPECT_FALSE(sheet.isFrozen()) << "nothing lies above or before the first cell that is seen";
    sheet.freezeAt(spot(u"A500"_s));
    EXPECT_FALSE(sheet.isFrozen()) << "out of sight";
}

TEST(Drawings, AreHitWhereTheyLieAtAnyScale)
{
    OpenSheet sheet(viewedSheet(smallWorkbook()));
    EXPECT_TRUE(sheet.sheet().used().contains(13, 9)) << "drawings are in use";
    for (const int zoom : {50, 100, 200}) {
        sheet.setZoom(zoom);
        sheet.setSize({2000, 2000});
        const QRect cells = sheet.rectIn(0, area(u"H11:I13"_s));
        EXPECT_EQ(sheet.drawingRect(0, 0), cells) << zoom;
        EXPECT_EQ(sheet.drawingAt(cells.bottomRight()), 0) << zoom;
        EXPECT_EQ(sheet.drawingAt(cells.bottomRight() + QPoint(1, 0)), -1) << zoom;
        EXPECT_EQ(sheet.cellAt(cells.topLeft()), spot(u"H11"_s)) << zoom;
    }
}

TEST(CellPlace, ReadsAddressesAndNames)
{
    const auto viewed = viewedSheet(smallWorkbook());
    const QString hidden = u"The sheet \"Secret\" is hidden, so that its cells cannot be selected."_s;
    const QString neither =
        u"\"%1\" is neither an address nor a name of this workbook. Type an address such as B3:D8."_s;
    for (const auto& [text, currentSheet, expected] : textTable<3>(R"(
        B3:D8                 | 0 | 0 B3:D8
        ··$b$3·               | 1 | 1 B3
        5:7                   | 0 | 0 5:7
        B3,D5:E9              | 0 | 0 B3 D5:E9
        data!A1               | 1 | 0 A1
        'My notes'!B2         | 0 | 1 B2
        table                 | 1 | 0 B2:D5
        Note                  | 0 | 1 A1
        Note                  | 1 | 1 C3 E5
        Nowhere!A1            | 0 | There is no sheet "Nowhere" in this workbook.
        Secret!A1             | 0 | hidden
        Away                  | 0 | hidden
        Moving                | 0 | The name "Moving" does not stand for cells that can be selected: it is defined as OFFSET(Data!$A$1,1,1).
        B0                    | 0 | neither
        Data!A1,'My notes'!A1 | 0 | neither)")) {
        const auto place = readCellPlace(text, viewed->workbook(), currentSheet.toInt());
        QString result = place ? QString::number(place.value().sheet) : place.reason();
        result.replace(hidden, u"hidden"_s).replace(neither.arg(text), u"neither"_s);
        if (place) {
            for (const CellArea& one : place.value().areas)
                result += u' ' + one.relative();
        }
        EXPECT_EQ(result, expected);
    }
    EXPECT_EQ(reachableNames(viewed->workbook(), 0), QStringList({u"Note"_s, u"Table"_s}));
    EXPECT_EQ(nameOf({0, {area(u"B2:D5"_s)}}, viewed->workbook()), u"Table"_s);
    EXPECT_EQ(nameOf({1, {area(u"B2:D5"_s)}}, viewed->workbook()), QString());
}

TEST(Finder, GoesByRowsAndRoundTheSheet)
{
    const auto viewed = viewedSheet(smallWorkbook());
    for (const auto& [name, text, from, expected] : textTable<4>(R"(
        in small letters                | q    | A1 | C2
        in capitals                     | Q    | C2 | D2
        round                           | q    | D2 | C2
        round, backwards                | q    | C2 back | D2
        back from a row without cells   | q    | A8 back | D2
        the cell itself comes last      | ann  | B3 | B3
        the text that is shown          | 3.00 | A1 | C4
        not in a hidden column          | 10   | A1 | F4
        not in a hidden row             | 100  | A1 | -
        nothing                         |      | A1 | -)")) {
        const auto hit = findText(*viewed, text, spot(from.section(u' ', 0, 0)), !from.endsWith(u"back"));
        EXPECT_EQ(hit ? addressOf(*hit) : u"-"_s, expected) << name;
    }
}

TEST(Figures, CountWhatIsSeen)
{
    const auto viewed = viewedSheet(smallWorkbook());
    const auto text = [&](const QString& address) { return figuresText(*viewed, figuresOf(*viewed, {area(address)})); };
    EXPECT_EQ(text(u"C3:D5"_s), u"Average: 3.40     Count: 5     Sum: 17.00"_s);
    EXPECT_EQ(text(u"B2:B5"_s), u"Count: 4"_s);
    EXPECT_EQ(text(u"C3:C7"_s), u"Average: 4.00     Count: 4     Sum: 16.00"_s) << "without the hidden row";
    EXPECT_EQ(text(u"C3"_s), QString()) << "one cell says it itself";
    EXPECT_EQ(text(u"A:XFD"_s).left(7), u"Average"_s);
}

TEST(CopiedText, HasWhatIsSeenAndQuotesWhatWouldBreakIt)
{
    EXPECT_EQ(selectionText(*viewedSheet(smallWorkbook()), {area(u"B4:F7"_s)}),
              u"Bob\t3.00\t\t10\nCid\t5.00\t6.00\t\n\t7.00\t\t\n"_s);
    WorkbookParts odd({{"S",
                        "<sheetData><row r='1'><c r='A1' t='inlineStr'><is><t>say \"a\tb\"</t></is></c><c r='B1' "
                        "t='inlineStr'><is><t>two&#10;lines</t></is></c></row></sheetData>",
                        ""}});
    EXPECT_EQ(selectionText(*viewedSheet(odd), {CellArea::wholeSheet()}), u"\"say \"\"a\tb\"\"\"\t\"two\nlines\"\n"_s);
}

} // namespace

} // namespace lumivane::test
