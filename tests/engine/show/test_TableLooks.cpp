#include "engine/draw/SheetBuilder.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

using Element = TableElement;

/// Letters of the elements, in their order.
const QString letters = u"wpqcdrslfhtABCDxyzbuveXYZijkGT"_s;

/// A style whose elements, given by letters, fill their cells each with a colour of its own.
std::shared_ptr<TableStyle> fillingStyle(const QString& elements)
{
    auto style = std::make_shared<TableStyle>();
    for (const QChar letter : elements) {
        DifferentialStyle look;
        look.fill = FillStyle{Pattern::Solid, static_cast<QRgb>(letters.indexOf(letter))};
        look.numberFormat = u"0.000"_s;
        style->looks[static_cast<size_t>(letters.indexOf(letter))] = std::make_shared<DifferentialStyle>(look);
    }
    return style;
}

/// What fills the cells of an area: the letter of the element, "." for nothing; "/" between rows.
QString fills(const ShownSheet& shown, const CellArea& area)
{
    QStringList rows;
    for (int row = area.firstRow; row <= area.lastRow; ++row) {
        QString printed;
        for (int column = area.firstColumn; column <= area.lastColumn; ++column) {
            const FillStyle fill = shown.fill(row, column);
            printed += fill.pattern == Pattern::None ? u'.' : letters[static_cast<qsizetype>(fill.fore)];
        }
        rows << printed;
    }
    return rows.join(u'/');
}

TEST(TableLooks, TakeTheStrongestElement)
{
    for (const auto& [name, options, elements, hidden, expected] : test::textTable<5>(R"(
        all         | first last rows columns | wcrslfhtAD |   | Ahhh./frrl./fssl./frrl./tttD.
        parts only  |                         | wcrslfhtAD |   | hhhh./wwww./wwww./wwww./tttt.
        columns     | columns                 | wchtAD     |   | hhhh./cwcw./cwcw./cwcw./tttt.
        rows first  | rows columns            | cr         |   | ...../rrrr./c.c../rrrr./.....
        filtered    | rows                    | rsht       | 4 | hhhh./rrrr./ssss./ssss./tttt.
        )")) {
        SheetBuilder made;
        TableContent table{u"T"_s, {2, 2, 6, 5}, 1, 1};
        table.showFirstColumn = options.contains(u"first"_s);
        table.showLastColumn = options.contains(u"last"_s);
        table.showRowStripes = options.contains(u"rows"_s);
        table.showColumnStripes = options.contains(u"columns"_s);
        table.style = fillingStyle(elements);
        made.sheet().tables.push_back(table);
        if (!hidden.isEmpty())
            made.row(hidden.toInt()).hidden = true;
        EXPECT_EQ(fills(*made.shown(), {2, 2, 6, 6}), expected) << name;
    }
}

TEST(TableLooks, DivideStripesBySize)
{
    SheetBuilder made;
    TableContent table{u"T"_s, {1, 1, 6, 7}, 0, 0};
    table.showRowStripes = table.showColumnStripes = true;
    auto style = fillingStyle(u"cs"_s);
    style->firstColumnStripe = 2;
    style->secondColumnStripe = 3;
    style->firstRowStripe = 2;
    table.style = style;
    made.sheet().tables.push_back(table);
    EXPECT_EQ(fills(*made.shown(), {1, 1, 4, 7}), u"cc...cc/cc...cc/sssssss/cc...cc"_s);
}

TEST(TableLooks, KeepLinesBetweenCellsFromThoseAround)
{
    SheetBuilder made;
    TableContent table{u"T"_s, {1, 1, 4, 3}, 1, 0};
    auto style = std::make_shared<TableStyle>();
    DifferentialStyle whole, header;
    whole.left = whole.right = whole.top = whole.bottom = BorderLine{LineStyle::Medium};
    whole.horizontal = BorderLine{LineStyle::Thin};
    header.bottom = BorderLine{LineStyle::Double};
    style->looks[static_cast<size_t>(Element::WholeTable)] = std::make_shared<DifferentialStyle>(whole);
    style->looks[static_cast<size_t>(Element::HeaderRow)] = std::make_shared<DifferentialStyle>(header);
    table.style = style;
    made.sheet().tables.push_back(table);
    BorderStyle own;
    own.left.style = LineStyle::Hair;
    made.blank(3, 2, made.borderStyle(own));
    const auto shown = made.shown();
    for (const auto& [name, row, column, expected] : test::textTable<4>(R"(
        corner         | 1 | 1 | left Medium right None top Medium bottom Double
        inside         | 2 | 2 | left None right None top Thin bottom Thin
        own line       | 3 | 2 | left Hair right None top Thin bottom Thin
        last           | 4 | 3 | left None right Medium top Thin bottom Medium
        beside         | 2 | 4 | left None right None top None bottom None
        )")) {
        const BorderStyle& border = shown->border(shown->style(row.toInt(), column.toInt()));
        const auto text = [](const BorderLine& line) {
            switch (line.style) {
            case LineStyle::None:
                return u"None"_s;
            case LineStyle::Thin:
                return u"Thin"_s;
            case LineStyle::Medium:
                return u"Medium"_s;
            case LineStyle::Hair:
                return u"Hair"_s;
            default:
                return u"Double"_s;
            }
        };
        EXPECT_EQ(u"left %1 right %2 top %3 bottom %4"_s.arg(text(border.left), text(border.right), text(border.top),
                                                             text(border.bottom)),
                  expected)
            << name;
    }
}

TEST(TableLooks, LeaveTheOwnLookOfCellsAndShareTheirs)
{
    SheetBuilder made;
    TableContent table{u"T"_s, {1, 1, 9, 9}, 0, 0};
    table.style = fillingStyle(u"w"_s);
    made.sheet().tables.push_back(table);
    made.blank(2, 2, made.solidStyle(static_cast<QRgb>(letters.indexOf(u'D'))));
    const auto shown = made.shown();
    EXPECT_EQ(fills(*shown, {2, 1, 2, 3}), u"wDw"_s);
    EXPECT_EQ(shown->shownNumber(5, shown->styleIndex(3, 3)), u"5"_s);
    EXPECT_EQ(shown->styleIndex(3, 3), shown->styleIndex(7, 5));
}

TEST(TableLooks, KnowTheRowsAndColumnsOfPivotTables)
{
    PivotContent pivot;
    pivot.area = {4, 1, 10, 4};
    pivot.headerRows = 2;
    pivot.columnFields = 2;
    pivot.rows = {Element::FirstRowSubheading, Element::WholeTable, Element::SecondSubtotalRow, Element::BlankRow,
                  Element::GrandTotalRow};
    pivot.columns = {Element::WholeTable, Element::FirstSubtotalColumn, Element::GrandTotalColumn};
    pivot.pageLabels = {{2, 1, 2, 1}};
    pivot.pageValues = {{2, 2, 2, 2}};
    for (const auto& [name, options, elements, expected] : test::textTable<4>(R"(
        all          | headings columnHeadings last | wpqfhAxbvXiGT | pq../..../AXXG/hhxG/iiiG/fwxG/vvvG/bbbG/TTTT
        no headings  | last                         | wfhAxXiGT     | ..../..../wwxG/wwxG/wwxG/wwxG/wwxG/wwxG/TTTT
        no last      | headings                     | wfiG          | ..../..../wwww/wwww/iiii/fwww/fwww/fwww/fwww
        stripes      | rows                         | rsfT          | ..../..../..../..../rrrr/ssss/rrrr/ssss/TTTT
        )")) {
        SheetBuilder made;
        pivot.showRowHeadings = options.startsWith(u"headings"_s);
        pivot.showColumnHeadings = options.contains(u"columnHeadings"_s);
        pivot.showLastColumn = options.contains(u"last"_s);
        pivot.showRowStripes = options.contains(u"rows"_s);
        pivot.style = fillingStyle(elements);
        made.sheet().pivots = {pivot};
        EXPECT_EQ(fills(*made.shown(), {2, 1, 10, 4}), expected) << name;
    }
}

} // namespace
} // namespace lumivane::engine
