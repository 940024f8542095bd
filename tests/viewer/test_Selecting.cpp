#include "support/QtPrinting.h"
#include "viewer/CellPlace.h"
#include "viewer/OpenSheet.h"
#include "viewer/SelectionFigures.h"
#include "viewer/SheetFinder.h"
#include "viewer/SmallSheet.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace embedded;
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
    sheet.selection().select({area(start)});
    for (const QString& key : keys.split(u' ', Qt::SkipEmptyParts)) {
        const bool control = key.contains(u'C'), shift = key.contains(u'S');
        using Step = OpenSheet::Step;
        switch (key.back().unicode()) {
        case u'l':
            sheet.move(Direction::Left, control ? Step::DataEdge : Step::Cell, shift);
            break;
        case u'r':
            sheet.move(Direction::Right, control ? Step::DataEdge : Step::Cell, shift);
            break;
        case u'u':
            sheet.move(Direction::Up, control ? Step::DataEdge : Step::Cell, shift);
            break;
        case u'd':
            sheet.move(Direction::Down, control ? Step::DataEdge : Step::Cell, shift);
            break;
        case u'H':
            sheet.move(Direction::Left, control ? Step::SheetStart : Step::LineStart, shift);
            break;
        case u'E':
            sheet.move(Direction::Right, control ? Step::SheetEnd : Step::DataEdge, shift);
            break;
        case u'P':
            sheet.move(Direction::Up, Step::Page, shift);
            break;
        case u'N':
            sheet.move(Direction::Down, Step::Page, shift);
            break;
        default:
            ADD_FAILURE() << "no such key";
        }
    }
    return sheet.selection().address().remove(u'$') + u" at " + addressOf(sheet.selection().activeCell());
}

TEST(Keyboard, MovesAndSelects)
{
    OpenSheet sheet(viewedSheet(smallWorkbook()));
    sheet.setSize({300, 200});
    struct Case
    {
        const char* name;
        QString start, keys, selected;
    };
    const Case cases[] = {
        {"over a hidden row", u"C5"_s, u"d"_s, u"C7 at C7"_s},
        {"over a hidden column", u"D4"_s, u"r"_s, u"F4 at F4"_s},
        {"stays at the edge", u"A1"_s, u"u l"_s, u"A1 at A1"_s},
        {"into a merged cell", u"C8"_s, u"d"_s, u"B9:D9 at B9"_s},
        {"out of a merged cell", u"B9"_s, u"r"_s, u"F9 at F9"_s},
        {"to the end of filled cells", u"B2"_s, u"Cr"_s, u"D2 at D2"_s},
        {"to the next filled cell", u"A4"_s, u"Cr"_s, u"B4 at B4"_s},
        {"a hidden filled cell does not stop", u"C4"_s, u"Cr"_s, u"F4 at F4"_s},
        {"filled cells go on behind a hidden row", u"C2"_s, u"Cd"_s, u"C7 at C7"_s},
        {"to the sheet's edge", u"F4"_s, u"Cd"_s, u"F1048576 at F1048576"_s},
        {"back from the sheet's edge", u"F1048576"_s, u"Cu"_s, u"F4 at F4"_s},
        {"to the last column", u"D2"_s, u"Cr"_s, u"XFD2 at XFD2"_s},
        {"extends by one", u"C3"_s, u"Sr Sd"_s, u"C3:D4 at C3"_s},
        {"extends and comes back", u"C3"_s, u"Sr Sr Sl Sl Sl"_s, u"B3:C3 at C3"_s},
        {"extends to the data's edges", u"B2"_s, u"CSr CSd"_s, u"B2:D3 at B2"_s},
        {"extension takes merged cells whole", u"C8"_s, u"Sd"_s, u"B8:D9 at C8"_s},
        {"Home", u"D4"_s, u"H"_s, u"A4 at A4"_s},
        {"Ctrl+Home", u"D4"_s, u"CH"_s, u"A1 at A1"_s},
        {"Ctrl+End is the crossing, which may be blank", u"A1"_s, u"CE"_s, u"F9 at F9"_s},
        {"Ctrl+Shift+End", u"B2"_s, u"CSE"_s, u"B2:F9 at B2"_s},
        {"one page down and up", u"B10"_s, u"N P"_s, u"B10 at B10"_s},
    };
    for (const Case& c : cases)
        EXPECT_EQ(afterKeys(sheet, c.start, c.keys), c.selected) << c.name;
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

TEST(Selection, JoinsAreasInTheirOrderAndWalksThroughThem)
{
    const auto viewed = viewedSheet(smallWorkbook());
    SheetSelection selection(*viewed);
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
    EXPECT_TRUE(selection.rowTouched(7));
    EXPECT_FALSE(selection.rowTouched(5));
}

TEST(Selection, KeepsWholeLinesWholeWhenExtended)
{
    const auto viewed = viewedSheet(smallWorkbook());
    SheetSelection selection(*viewed);
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
    struct Case
    {
        const char* name;
        std::string pane, attributes;
        QStringList visible; ///< by pane, in a window of 300 x 200 pixels
    };
    const Case cases[] = {
        {"none", "", "topLeftCell='C4'", {u"$C$4:$H$14"_s}},
        {"rows", "<pane ySplit='2' topLeftCell='A5' state='frozen'/>", "", {u"$A$1:$F$2"_s, u"$A$5:$F$13"_s}},
        {"columns", "<pane xSplit='1' topLeftCell='C1' state='frozen'/>", "", {u"$A$1:$A$11"_s, u"$C$1:$G$11"_s}},
        {"both, scrolled before they were frozen",
         "<pane xSplit='1' ySplit='1' topLeftCell='D7' state='frozen'/>",
         "topLeftCell='B2'",
         {u"$B$2"_s, u"$D$2:$H$2"_s, u"$B$7:$B$15"_s, u"$D$7:$H$15"_s}},
        {"split", "<pane ySplit='1500' topLeftCell='A9'/>", "topLeftCell='A2'", {u"$A$2:$F$5"_s, u"$A$9:$F$14"_s}},
    };
    for (const Case& c : cases) {
        OpenSheet sheet(viewedSheet(smallWorkbook(paneView(c.pane, c.attributes))));
        sheet.setSize({300, 200});
        QStringList visible;
        for (int pane = 0; pane < sheet.panes().count(); ++pane)
            visible << sheet.panes().visible(pane).absolute();
        EXPECT_EQ(visible, c.visible) << c.name;
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
    struct Case
    {
        QString text;
        int currentSheet;
        QString result;
    };
    const Case cases[] = {
        {u"B3:D8"_s, 0, u"0 B3:D8"_s},
        {u"  $b$3 "_s, 1, u"1 B3"_s},
        {u"5:7"_s, 0, u"0 5:7"_s},
        {u"B3,D5:E9"_s, 0, u"0 B3 D5:E9"_s},
        {u"data!A1"_s, 1, u"0 A1"_s},
        {u"'My notes'!B2"_s, 0, u"1 B2"_s},
        {u"table"_s, 1, u"0 B2:D5"_s},
        {u"Note"_s, 0, u"1 A1"_s},
        {u"Note"_s, 1, u"1 C3 E5"_s},
        {u"Nowhere!A1"_s, 0, u"There is no sheet \"Nowhere\" in this workbook."_s},
        {u"Secret!A1"_s, 0, u"The sheet \"Secret\" is hidden, so that its cells cannot be selected."_s},
        {u"Away"_s, 0, u"The sheet \"Secret\" is hidden, so that its cells cannot be selected."_s},
        {u"Moving"_s, 0,
         u"The name \"Moving\" does not stand for cells that can be selected: it is defined as "
         "OFFSET(Data!$A$1,1,1)."_s},
        {u"B0"_s, 0, u"\"B0\" is neither an address nor a name of this workbook. Type an address such as B3:D8."_s},
        {u"Data!A1,'My notes'!A1"_s, 0,
         u"\"Data!A1,'My notes'!A1\" is neither an address nor a name of this workbook. Type an address such as "
         "B3:D8."_s},
    };
    for (const Case& c : cases) {
        const auto place = readCellPlace(c.text, viewed->workbook(), c.currentSheet);
        QString result = place ? QString::number(place.value().sheet) : place.reason();
        if (place) {
            for (const CellArea& one : place.value().areas)
                result += u' ' + one.relative();
        }
        EXPECT_EQ(result, c.result);
    }
    EXPECT_EQ(reachableNames(viewed->workbook(), 0), QStringList({u"Note"_s, u"Table"_s}));
    EXPECT_EQ(nameOf({0, {area(u"B2:D5"_s)}}, viewed->workbook()), u"Table"_s);
    EXPECT_EQ(nameOf({1, {area(u"B2:D5"_s)}}, viewed->workbook()), QString());
}

TEST(Finder, GoesByRowsAndRoundTheSheet)
{
    const auto viewed = viewedSheet(smallWorkbook());
    const auto found = [&](const QString& text, const QString& from, bool forward) {
        const auto hit = findText(*viewed, text, spot(from), forward);
        return hit ? addressOf(*hit) : u"-"_s;
    };
    EXPECT_EQ(found(u"q"_s, u"A1"_s, true), u"C2"_s);
    EXPECT_EQ(found(u"Q"_s, u"C2"_s, true), u"D2"_s);
    EXPECT_EQ(found(u"q"_s, u"D2"_s, true), u"C2"_s) << "round";
    EXPECT_EQ(found(u"q"_s, u"C2"_s, false), u"D2"_s) << "round";
    EXPECT_EQ(found(u"q"_s, u"A8"_s, false), u"D2"_s) << "from a row without cells";
    EXPECT_EQ(found(u"ann"_s, u"B3"_s, true), u"B3"_s) << "the cell itself comes last";
    EXPECT_EQ(found(u"3.00"_s, u"A1"_s, true), u"C4"_s) << "the text that is shown";
    EXPECT_EQ(found(u"10"_s, u"A1"_s, true), u"F4"_s) << "not in a hidden column";
    EXPECT_EQ(found(u"100"_s, u"A1"_s, true), u"-"_s) << "not in a hidden row";
    EXPECT_EQ(found(QString(), u"A1"_s, true), u"-"_s);
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
