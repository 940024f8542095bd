#include "ToolsFixture.h"
#include "support/TextTable.h"
#include "support/XlsxWriter.h"

#include <QImage>

using namespace Qt::StringLiterals;

namespace lumivane::test {

namespace {

QByteArray smallWorkbook()
{
    demo::Book book;
    demo::Sheet& sheet = book.add(u"Data"_s);
    const demo::Look look;
    sheet.set(1, 1, u"Item"_s, look);
    sheet.set(1, 2, u"Amount"_s, look);
    for (int row = 2; row <= 6; ++row)
        sheet.set(row, 2, 10.0 * row, look);
    sheet.set(6, 1, u"Total"_s, look);
    sheet.setWidth(1, 1, 10.71); // 75 pixels
    sheet.setHeight(2, 30);      // 40 pixels
    sheet.hideRow(3);
    return book.bytes();
}

/// A row: name, words of the call ("@" stands for the test's folder), exit status, what the errors hold.
class RefusedCalls : public ToolsFixture, public testing::WithParamInterface<std::array<QString, 4>>
{
};

} // namespace

TEST_P(RefusedCalls, TellWhatIsWrong)
{
    const auto& [name, words, status, sentence] = GetParam();
    write(u"small.xlsx"_s, smallWorkbook());
    write(u"junk.bin"_s, QByteArray(64, '\0'));
    write(u"foreign.lvdu"_s, QByteArray(4096, 'x'));
    const Outcome outcome = call(QString(words).replace(u'@', path({})).split(u',', Qt::SkipEmptyParts));
    EXPECT_EQ(outcome.status, status.toInt());
    EXPECT_EQ(outcome.output, QString());
    EXPECT_TRUE(outcome.errors.contains(sentence)) << outcome.errors;
    EXPECT_FALSE(QFile::exists(path(u"x.png"_s)));
}

INSTANTIATE_TEST_SUITE_P(Tools, RefusedCalls, testing::ValuesIn(textTable<4>(R"(
    nothing                |                                                | 2 | usage: lumivanectl locate [--home DIR] WORKBOOK SHEET
    unknown command        | reload                                         | 2 | There is no command reload.
    missing argument       | new-project                                    | 2 | This command needs more arguments: 1 at least, not 0.
    too many arguments     | inspect,a.xlsx,b.xlsx                          | 2 | There are too many arguments: b.xlsx is not expected.
    unknown option         | inspect,--all,a.xlsx                           | 2 | There is no option --all.
    option without value   | inspect,a.xlsx,--host                          | 2 | The option --host needs a value.
    unknown choice         | inspect,--metrics,exact,a.xlsx                 | 2 | takes file or calc, not exact.
    missing option         | locate,a.xlsx,Data,--pic-range,A1              | 2 | The option --relative-to is missing.
    scale zero             | render,--scale,0,@/small.xlsx,Data,A1,@/x.png  | 2 | a number from 0.25 to 8, not 0.
    scale no number        | render,--scale,nan,@/small.xlsx,Data,A1,@/x.png | 2 | not nan.
    no range               | render,@/small.xlsx,Data,A0,@/x.png            | 2 | A0 is no range such as A1:C9.
    no workbook            | inspect,@/absent.xlsx                          | 1 | absent.xlsx
    no workbook inside     | inspect,@/junk.bin                             | 1 | junk.bin
    no sheet               | render,@/small.xlsx,Sheet1,A1,@/x.png          | 1 | no sheet "Sheet1"; its sheets are: Data.
    nothing to see         | render,@/small.xlsx,Data,A3:B3,@/x.png         | 1 | small.xlsx
    no folder for picture  | render,@/small.xlsx,Data,A1,@/none/x.png       | 1 | /none/x.png cannot be written
    beyond 16 bits         | locate,@/small.xlsx,Data,--pic-range,A1`1:40000`,--relative-to,top,--content-match,x | 1 | Row 40,000 is beyond row 32,767
    no chart               | render-chart,@/small.xlsx,Data,Chart 1,@/x.png | 1 | Chart 1
    other engine           | inspect,--host,calc,@/small.xlsx               | 1 | The engine "calc" is not built into
    overwriting            | new-project,@/foreign.lvdu                     | 1 | foreign.lvdu
    foreign project        | sql,@/foreign.lvdu,SELECT * FROM LvnSystem     | 1 | foreign.lvdu
    absent project         | refresh,@/absent.lvdu                          | 1 | absent.lvdu)")),
                         rowName);

using Commands = ToolsFixture;

TEST_F(Commands, PicturesAreAsLargeAsTheVisibleCells)
{
    const QString book = write(u"small.xlsx"_s, smallWorkbook()), target = path(u"x.png"_s);
    ASSERT_EQ(call({u"render"_s, book, u"data"_s, u"$A$1:$B$6"_s, target}).status, 0);
    EXPECT_EQ(QImage(target).size(), QSize(75 + 64, 20 + 40 + 3 * 20));
    ASSERT_EQ(call({u"render"_s, u"--scale"_s, u"2"_s, book, u"Data"_s, u"A1:B6"_s, target}).status, 0);
    EXPECT_EQ(QImage(target).size(), QSize(2 * 139, 2 * 120));
}

TEST_F(Commands, SayWhatAPictureLacks)
{
    WorkbookParts parts({{"Data",
                          "<sheetData><row r='1'><c r='A1'><f>1+1</f></c><c r='B1'><f>1+1</f></c></row></sheetData>"
                          "<drawing r:id='d'/>",
                          ""}});
    parts.drawings(drawingAnchor(1, 2, 3, 4, chartObject("Sales")) + drawingAnchor(1, 2, 3, 4, chartObject("Costs")));
    const Outcome outcome =
        call({u"render"_s, write(u"gaps.xlsx"_s, parts.package()), u"Data"_s, u"A1:D9"_s, path(u"x.png"_s)});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, u"Not drawn: the chart \"Sales\", the chart \"Costs\".\n"
                              "Left blank: the results of 2 formulas, which the file does not store.\n"_s);
}

TEST_F(Commands, AProjectIsMadeOnceAndAnswersStatements)
{
    const QString project = path(u"new.lvdu"_s);
    ASSERT_EQ(call({u"new-project"_s, project}).status, 0);
    const QString log = path(u"errors.lvdu"_s);
    ASSERT_EQ(call({u"new-log"_s, log}).status, 0);
    EXPECT_EQ(call({u"sql"_s, log, u"SELECT LogNumber FROM TlyS_ErrorLogs"_s}).output, u"[]\n"_s);
    const auto sql = [&](const QString& statement) { return call({u"sql"_s, project, statement}); };

    EXPECT_EQ(sql(u"INSERT INTO LvnSystem (PropertyKey, PropertyValue) VALUES ('into','a')"_s).object(),
              (QJsonObject{{u"changed"_s, 1}}));
    EXPECT_EQ(sql(u"INSERT INTO LvnSystem (PropertyKey) VALUES ('b')"_s).status, 0);
    EXPECT_EQ(sql(u"SELECT TOP 2 * FROM LvnSystem WHERE PropertyKey LIKE '?*' ORDER BY PropertyKey"_s).array(),
              (QJsonArray{QJsonObject{{u"PropertyKey"_s, u"b"_s}, {u"PropertyValue"_s, QJsonValue::Null}},
                          QJsonObject{{u"PropertyKey"_s, u"into"_s}, {u"PropertyValue"_s, u"a"_s}}}));
    EXPECT_EQ(sql(u"select PropertyValue from LvnSystem where PropertyKey = 'into'"_s).array().size(), 1);
    EXPECT_EQ(sql(u"DELETE * FROM LvnSystem"_s).object(), (QJsonObject{{u"changed"_s, 2}}));
    EXPECT_EQ(sql(u"SELECT * FROM NoSuchTable"_s).status, 1);
}

namespace {

/// A row: name, range, rule, match, where the range lies now, its anchor, by how many rows it has moved, the adjusted
/// text.
class Locations : public ToolsFixture, public testing::WithParamInterface<std::array<QString, 8>>
{
};

} // namespace

TEST_P(Locations, AreToldAndRewritten)
{
    const auto& [name, picRange, rule, match, range, anchor, rowOffset, adjusted] = GetParam();
    QStringList words{u"locate"_s, write(u"small.xlsx"_s, smallWorkbook()),
                      u"Data"_s,   u"--pic-range"_s,
                      picRange,    u"--relative-to"_s,
                      rule,        u"--content-match"_s,
                      match};
    const QJsonObject found = call(words).object();
    EXPECT_EQ(found.value(u"range").toString(), range);
    EXPECT_EQ(found.value(u"anchor").toString(), anchor);
    EXPECT_EQ(found.value(u"row_offset").toInt(-99), rowOffset.toInt());
    EXPECT_FALSE(found.contains(u"pic_range"));
    words.append(u"--adjust"_s);
    EXPECT_EQ(call(words).object().value(u"pic_range").toString(), adjusted);
}

INSTANTIATE_TEST_SUITE_P(Tools, Locations, testing::ValuesIn(textTable<8>(R"(
    same address | $A$2:$B$3      | top      | bottom=$B$4                           | $A$2:$B$3 |     | 0 | $A$2:$B$3``
    from the end | $A$3:$B$4`1:1` | bottom   | bottom=$B$4                           | A5:B6     |     | 2 | A5:B6`1:1`
    by content   | $A$4:$B$4      | contents | bottom=$B$4`anchor=$A4`content=total  | A6:B6     | $A6 | 2 | A6:B6``)")),
                         rowName);

} // namespace lumivane::test
