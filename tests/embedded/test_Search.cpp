#include "Workbooks.h"

#include "host/embedded/CellMatcher.h"
#include "host/embedded/CellSearch.h"

#include <gtest/gtest.h>
#include <random>

using namespace lumivane;
using namespace lumivane::embedded;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

const char* const formats[] = {"General",
                               "0",
                               "0.00",
                               "#,##0.00",
                               "#,##0;(#,##0);\"-\"",
                               "_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"??_);_(@_)",
                               "$#,##0",
                               "[$\u20ac-407] #,##0.00",
                               "0%",
                               "0.0%",
                               "#,##0,",
                               "0.0,,\" m\"",
                               "0.00E+00",
                               "# ?/?",
                               "m/d/yyyy",
                               "d-mmm-yy",
                               "dddd, d. mmmm",
                               "h:mm AM/PM",
                               "[h]:mm:ss",
                               "\"No. \"0",
                               "\"1\"0",
                               "0\\5",
                               "[>=1000]0.0,\" k\";0",
                               "@",
                               ";;;",
                               "\"x\"@"};

/// One row of cells, each with the next of the formats, all with one value.
std::string rowInAllFormats(int row, const std::string& inside, const std::string& type)
{
    std::string cells;
    int column = 0;
    for (size_t i = 0; i < std::size(formats); ++i) {
        cells += "<c r=\"" + columnLetters(++column).toStdString() + std::to_string(row) + "\" s=\"" +
                 std::to_string(i) + "\"" + type + ">" + inside + "</c>";
    }
    return "<row r=\"" + std::to_string(row) + "\">" + cells + "</row>";
}

std::string stylesOfAllFormats()
{
    std::string codes, cells;
    for (size_t i = 0; i < std::size(formats); ++i) {
        const std::string id = std::to_string(200 + i);
        codes += "<numFmt numFmtId=\"" + id + "\" formatCode=\"" +
                 QString::fromUtf8(formats[i]).toHtmlEscaped().toStdString() + "\"/>";
        cells += "<xf numFmtId=\"" + id + "\" applyNumberFormat=\"1\"/>";
    }
    return "<numFmts>" + codes + "</numFmts><cellXfs>" + cells + "</cellXfs>";
}

TEST(Search, FindsEveryCellByItsShownAndByItsPlainText)
{
    const char* const values[] = {"0",          "1",     "-1",     "0.5",     "2026", "1234.5", "-1234.567",
                                  "999999.995", "0.1",   "46350",  "46350.4", "1e-7", "1.5e20", "1000",
                                  "1234567",    "0.125", "100000", "0.99999", "4.45", "1e15",   "123456789012345678"};
    OwnApplication own;
    std::string data;
    int row = 0;
    for (const char* value : values)
        data += rowInAllFormats(++row, std::string("<v>") + value + "</v>", "");
    data += rowInAllFormats(++row, "<is><t>Total</t></is>", " t=\"inlineStr\"");
    data += rowInAllFormats(++row, "<v>1</v>", " t=\"b\"");
    data += rowInAllFormats(++row, "<v>#N/A</v>", " t=\"e\"");
    const auto sheet = own.sheet(data, stylesOfAllFormats());

    for (int r = 1; r <= row; ++r) {
        for (int column = 1; column <= static_cast<int>(std::size(formats)); ++column) {
            const CellArea cell = CellArea::cell(r, column);
            for (const QString& text : {sheet->shownText(r, column), sheet->valueText(r, column)}) {
                if (!text.isEmpty()) {
                    EXPECT_EQ(sheet->Find(cell, {text.toUpper()}), cell)
                        << text.toStdString() << " in " << formats[column - 1];
                }
            }
        }
    }
}

struct ReachRow
{
    const char* name;
    QString code, sought;
    FormatReach reach;
};

class ReachOfFormats : public testing::TestWithParam<ReachRow>
{
};

TEST_P(ReachOfFormats, LeavesOutWhatNeverShows)
{
    EXPECT_EQ(formatReach(GetParam().code, SoughtText({GetParam().sought})), GetParam().reach);
}

const ReachRow reachRows[] = {
    {"word_in_number", u"#,##0.00"_s, u"Total"_s, FormatReach::Never},
    {"word_in_date_of_digits", u"m/d/yyyy"_s, u"Total"_s, FormatReach::Never},
    {"word_in_accounts", u"_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)"_s, u"Total"_s, FormatReach::Never},
    {"number_in_number", u"#,##0.00"_s, u"1,234.50"_s, FormatReach::NearNumber},
    {"number_in_accounts", u"_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)"_s, u"(1,234)"_s, FormatReach::NearNumber},
    {"number_in_percents", u"0%"_s, u"50%"_s, FormatReach::Perhaps},
    {"number_in_thousands", u"#,##0,"_s, u"12"_s, FormatReach::Perhaps},
    {"number_in_literal_digits", u"\"1\"0"_s, u"12"_s, FormatReach::Perhaps},
    {"number_in_date", u"m/d/yyyy"_s, u"2026"_s, FormatReach::Never},
    {"date_in_date", u"m/d/yyyy"_s, u"11/24/2026"_s, FormatReach::Perhaps},
    {"number_in_elapsed_hours", u"[h]"_s, u"2026"_s, FormatReach::Perhaps},
    {"word_in_weekdays", u"dddd"_s, u"Total"_s, FormatReach::Perhaps},
    {"letters_of_the_literal", u"0\" km\""_s, u"12 KM"_s, FormatReach::NearNumber},
    {"general", u"General"_s, u"12"_s, FormatReach::Never},
};

INSTANTIATE_TEST_SUITE_P(Codes, ReachOfFormats, testing::ValuesIn(reachRows),
                         [](const auto& row) { return row.param.name; });

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

TEST(Search, KeepsTheOrderWhateverIsLaidOver)
{
    std::mt19937 random(2026);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)) + 1; };
    const char* const inside[] = {"t=\"inlineStr\"><is><t>Total</t></is>",
                                  "t=\"inlineStr\"><is><t>sub total</t></is>",
                                  "t=\"str\"><f>A1</f><v></v>",
                                  "><v>7</v>",
                                  "s=\"1\"><v>7.004</v>",
                                  "s=\"1\">"};
    const QString sought[] = {u"TOTAL"_s, u"7"_s, u"7.00"_s, u"*"_s, u"absent"_s};
    int hits = 0;
    for (int round = 0; round < 300; ++round) {
        OwnApplication own;
        std::string data;
        for (int row = 1; row <= 9; ++row) {
            std::string cells;
            for (int column = 1; column <= 6; ++column) {
                if (upTo(5) == 1)
                    cells += "<c r=\"" + CellArea::cell(row, column).relative().toStdString() + "\" " +
                             inside[upTo(6) - 1] + "</c>";
            }
            if (!cells.empty())
                data += "<row r=\"" + std::to_string(row) + "\">" + cells + "</row>";
        }
        const auto sheet = own.sheet(data, "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"2\"/></cellXfs>");
        for (int change = upTo(4); change > 1; --change)
            sheet->setValue(upTo(9), upTo(6), upTo(2) == 1 ? QVariant() : QVariant(u"total"_s));

        const CellArea area = *CellArea::parse(
            u"%1%2:%3%4"_s.arg(columnLetters(upTo(6))).arg(upTo(9)).arg(columnLetters(upTo(6))).arg(upTo(9)));
        for (const QString& what : sought) {
            const FindQuestion question{what, upTo(2) == 1 || what == u"*" ? LookAt::Part : LookAt::Whole,
                                        upTo(2) == 1 ? SearchDirection::Next : SearchDirection::Previous,
                                        upTo(2) == 1 ? SearchOrder::ByRows : SearchOrder::ByColumns};
            const auto expected = slowFind(*sheet, area, question);
            hits += expected.has_value();
            EXPECT_EQ(sheet->Find(area, question), expected)
                << "round " << round << ": " << what.toStdString() << " in " << area.relative().toStdString();
        }

        // The quick answer about the contents is that of the two searches it stands for.
        const CellArea all = *CellArea::parse(u"A1:F9");
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
    EXPECT_FALSE(sheet->Find(CellArea::wholeSheet(), {u"0"_s}));
    EXPECT_FALSE(sheet->Find(CellArea::wholeSheet(), {u""_s}));
}

} // namespace
