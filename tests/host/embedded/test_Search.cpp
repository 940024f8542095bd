#include "Workbooks.h"

#include "engine/show/CellMatcher.h"
#include "engine/show/CellSearch.h"

#include "support/FindOrder.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>
#include <random>

using namespace lumivane;
using namespace lumivane::engine;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

const QStringList formats = textList(R"(
    General | 0 | 0.00 | #,##0.00 | #,##0;(#,##0);"-" | _(* #,##0.00_);_(* (#,##0.00);_(* "-"??_);_(@_) | $#,##0 | 0%
    [$€-407] #,##0.00 | 0.0% | #,##0, | 0.0,," m" | 0.00E+00 | # ?/? | m/d/yyyy | d-mmm-yy | dddd, d. mmmm | h:mm AM/PM
    [h]:mm:ss | "No. "0 | "1"0 | 0\5 | [>=1000]0.0," k";0 | @ | ;;; | "x"@)");

/// One row of cells, each with the next of the formats, all with one value.
std::string rowInAllFormats(int row, const QString& inside, const QString& type = {})
{
    QString cells;
    for (int i = 0; i < formats.size(); ++i)
        cells += u"<c r='%1' s='%2' %3>%4</c>"_s.arg(CellArea::cell(row, i + 1).relative()).arg(i).arg(type, inside);
    return u"<row r='%1'>%2</row>"_s.arg(row).arg(cells).toStdString();
}

std::string stylesOfAllFormats()
{
    QString codes, cells;
    for (int i = 0; i < formats.size(); ++i) {
        codes += u"<numFmt numFmtId='%1' formatCode=\"%2\"/>"_s.arg(200 + i).arg(formats[i].toHtmlEscaped());
        cells += u"<xf numFmtId='%1' applyNumberFormat='1'/>"_s.arg(200 + i);
    }
    return u"<numFmts>%1</numFmts><cellXfs>%2</cellXfs>"_s.arg(codes, cells).toStdString();
}

TEST(Search, FindsEveryCellByItsShownAndByItsPlainText)
{
    OwnApplication own;
    std::string data;
    int row = 0;
    for (const QString& value :
         textList(R"(0 | 1 | -1 | 0.5 | 2026 | 1234.5 | -1234.567 | 999999.995 | 0.1 | 46350 | 1e-7
        46350.4 | 1.5e20 | 1000 | 1234567 | 0.125 | 100000 | 0.99999 | 4.45 | 1e15 | 123456789012345678)"))
        data += rowInAllFormats(++row, u"<v>%1</v>"_s.arg(value));
    data += rowInAllFormats(++row, u"<is><t>Total</t></is>"_s, u"t='inlineStr'"_s);
    data += rowInAllFormats(++row, u"<v>1</v>"_s, u"t='b'"_s);
    data += rowInAllFormats(++row, u"<v>#N/A</v>"_s, u"t='e'"_s);
    const auto sheet = own.sheet(data, stylesOfAllFormats());
    for (int r = 1; r <= row; ++r) {
        for (int column = 1; column <= formats.size(); ++column) {
            const CellArea cell = CellArea::cell(r, column);
            for (const QString& text : {sheet->shownText(r, column), sheet->valueText(r, column)})
                EXPECT_TRUE(text.isEmpty() || sheet->Find(cell, {text.toUpper()}) == cell)
                    << text << " in " << formats[column - 1];
        }
    }
}

TEST(FormatReach, LeavesOutWhatNeverShows)
{
    const char* const reaches[] = {"never", "near number", "perhaps"};
    for (const auto& [name, code, sought, expected] : textTable<4>(R"(
        word in number           | #,##0.00  | Total    | never
        word in date of digits   | m/d/yyyy  | Total    | never
        word in accounts         | _(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_) | Total   | never
        number in number         | #,##0.00  | 1,234.50 | near number
        number in accounts       | _(* #,##0_);_(* \(#,##0\);_(* "-"_);_(@_) | (1,234) | near number
        number in percents       | 0%        | 50%      | perhaps
        number in thousands      | #,##0,    | 12       | perhaps
        number in literal digits | "1"0      | 12       | perhaps
        number in date           | m/d/yyyy  | 2026     | never
        date in date             | m/d/yyyy  | 11/24/2026 | perhaps
        number in elapsed hours  | [h]       | 2026     | perhaps
        word in weekdays         | dddd      | Total    | perhaps
        letters of the literal   | 0" km"    | 12 KM    | near number
        general                  | General   | 12       | never)"))
        EXPECT_EQ(QLatin1StringView(reaches[int(formatReach(code, SoughtText({sought})))]), expected) << name;
}

/// The hit by the definition: every cell of the area is looked at and ranked.
std::optional<CellArea> slowFind(Worksheet& sheet, const CellArea& area, const FindQuestion& question)
{
    const FindOrder order(area, question.direction, question.order);
    const bool anything = question.what == u"*" && question.lookAt == LookAt::Part;
    std::optional<CellArea> best;
    for (int row = area.firstRow; row <= area.lastRow; ++row) {
        for (int column = area.firstColumn; column <= area.lastColumn; ++column) {
            const QStringList texts{sheet.shownText(row, column), sheet.valueText(row, column)};
            const bool hit = std::any_of(texts.begin(), texts.end(), [&](const QString& text) {
                return anything                           ? !text.isEmpty()
                       : question.lookAt == LookAt::Whole ? text.compare(question.what, Qt::CaseInsensitive) == 0
                                                          : text.contains(question.what, Qt::CaseInsensitive);
            });
            if (hit && (!best || order.rank(row, column) < order.rank(best->firstRow, best->firstColumn)))
                best = CellArea::cell(row, column);
        }
    }
    return best;
}

TEST(Search, KeepsItsOrder)
{
    std::mt19937 random(2026);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)) + 1; };
    const QStringList inside = textList(R"(
        t="inlineStr"><is><t>Total</t></is> | t="inlineStr"><is><t>sub total</t></is> | t="str"><f>A1</f><v></v>
        ><v>7</v> | s="1"><v>7.004</v> | s="1">)");
    const QString words[] = {u"TOTAL"_s, u"7"_s, u"7.00"_s, u"*"_s, u"absent"_s};
    int hits = 0;
    for (int round = 0; round < 300; ++round) {
        OwnApplication own;
        std::string data;
        for (int row = 1; row <= 9; ++row) {
            QString cells;
            for (int column = 1; column <= 6; ++column) {
                if (upTo(5) == 1)
                    cells += u"<c r='%1' %2</c>"_s.arg(CellArea::cell(row, column).relative(), inside[upTo(6) - 1]);
            }
            if (!cells.isEmpty())
                data += u"<row r='%1'>%2</row>"_s.arg(row).arg(cells).toStdString();
        }
        const auto sheet = own.sheet(data, "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"2\"/></cellXfs>");

        const QString corners = u"%1%2:%3%4"_s;
        const CellArea sought =
            area(corners.arg(columnLetters(upTo(6))).arg(upTo(9)).arg(columnLetters(upTo(6))).arg(upTo(9)));
        for (const QString& what : words) {
            const FindQuestion question{what, upTo(2) == 1 || what == u"*" ? LookAt::Part : LookAt::Whole,
                                        upTo(2) == 1 ? SearchDirection::Next : SearchDirection::Previous,
                                        upTo(2) == 1 ? SearchOrder::ByRows : SearchOrder::ByColumns};
            const auto expected = slowFind(*sheet, sought, question);
            hits += expected.has_value();
            EXPECT_EQ(sheet->Find(sought, question), expected)
                << "round " << round << ": " << what << " in " << sought.relative();
        }

        // The quick answer about the contents is that of the two searches it stands for.
        const CellArea all = area(u"A1:F9"_s);
        const FindQuestion anything{u"*"_s, LookAt::Part, SearchDirection::Previous, SearchOrder::ByRows};
        FindQuestion byColumns = anything;
        byColumns.order = SearchOrder::ByColumns;
        const auto lastRow = slowFind(*sheet, all, anything), lastColumn = slowFind(*sheet, all, byColumns);
        const auto contents = sheet->contentArea();
        ASSERT_EQ(contents.has_value(), lastRow.has_value());
        if (contents) {
            EXPECT_EQ(*contents, (CellArea{1, 1, lastRow->firstRow, lastColumn->firstColumn})) << "round " << round;
        }
    }
    EXPECT_GT(hits, 300) << "the sheets are too empty to tell anything";
}

TEST(Search, SeesTheWholeGrid)
{
    OwnApplication own;
    const auto sheet = own.sheet("<row r=\"3\"><c r=\"XFD3\" t=\"inlineStr\"><is><t>edge</t></is></c></row>"
                                 "<row r=\"1048576\"><c r=\"B1048576\"><v>5</v></c></row>");
    EXPECT_EQ(sheet->Find(CellArea::wholeSheet(), {u"Edge"_s}), CellArea::cell(3, maxColumn));
    EXPECT_EQ(sheet->Find(CellArea::wholeSheet(), {u"5"_s}), CellArea::cell(maxRow, 2));
    EXPECT_EQ(sheet->contentArea(), CellArea::wholeSheet());
    EXPECT_EQ(sheet->usedArea(), (CellArea{3, 2, maxRow, maxColumn}));
}

TEST(Search, AFormulaWithoutAResultIsContentsWithoutAText)
{
    OwnApplication own;
    const auto sheet = own.sheet("<row r=\"2\"><c r=\"B2\"><f>SUM(A1:A9)</f></c><c r=\"C2\" s=\"0\"/></row>");
    EXPECT_EQ(sheet->contentArea(), (CellArea{1, 1, 2, 2}));
    EXPECT_EQ(sheet->contentArea(Uncomputed::LeaveOut), std::nullopt);
    EXPECT_FALSE(sheet->Find(CellArea::wholeSheet(), {u"0"_s}));
    EXPECT_FALSE(sheet->Find(CellArea::wholeSheet(), {u""_s}));
}

} // namespace
