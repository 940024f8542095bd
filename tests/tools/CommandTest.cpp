#include "ToolsFixture.h"

#include <QImage>

using namespace Qt::StringLiterals;

namespace lumivane::test {

namespace {

struct Refusal
{
    const char* name;
    const char* words; ///< separated by "|"; "@" stands for the test's folder
    int status;
    const char* sentence; ///< what the standard error output must hold
};

void PrintTo(const Refusal& refusal, std::ostream* out)
{
    *out << refusal.name;
}

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

class RefusedCalls : public ToolsFixture, public testing::WithParamInterface<Refusal>
{
};

} // namespace

TEST_P(RefusedCalls, TellWhatIsWrong)
{
    write(u"small.xlsx"_s, smallWorkbook());
    write(u"junk.bin"_s, QByteArray(64, '\0'));
    write(u"foreign.lvdu"_s, QByteArray(4096, 'x'));
    const QString words = QString::fromLatin1(GetParam().words).replace(u'@', path({}));
    const Outcome outcome = call(words.split(u'|', Qt::SkipEmptyParts));
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.output, QString());
    EXPECT_TRUE(outcome.errors.contains(QString::fromLatin1(GetParam().sentence))) << outcome.errors.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Tools, RefusedCalls,
    testing::Values(
        Refusal{"nothing", "", 2, "usage: lumivanectl locate WORKBOOK SHEET --pic-range"},
        Refusal{"unknown_command", "reload", 2, "There is no command reload."},
        Refusal{"missing_argument", "new-project", 2, "usage: lumivanectl new-project FILE"},
        Refusal{"too_many_arguments", "inspect|a.xlsx|b.xlsx", 2, "b.xlsx is one too many."},
        Refusal{"unknown_option", "inspect|--all|a.xlsx", 2, "There is no option --all."},
        Refusal{"option_without_value", "inspect|a.xlsx|--host", 2, "The option --host needs a value."},
        Refusal{"unknown_choice", "inspect|--metrics|exact|a.xlsx", 2, "takes file or calc, not exact."},
        Refusal{"missing_option", "locate|a.xlsx|Data|--pic-range|A1", 2, "The option --relative-to is missing."},
        Refusal{"scale_zero", "render|--scale|0|@/small.xlsx|Data|A1|@/x.png", 2, "a number from 0.25 to 8, not 0."},
        Refusal{"scale_no_number", "render|--scale|nan|@/small.xlsx|Data|A1|@/x.png", 2, "not nan."},
        Refusal{"no_range", "render|@/small.xlsx|Data|A0|@/x.png", 2, "A0 is no range such as A1:C9."},
        Refusal{"no_workbook", "inspect|@/absent.xlsx", 1, "absent.xlsx"},
        Refusal{"no_workbook_inside", "inspect|@/junk.bin", 1, "junk.bin"},
        Refusal{"no_sheet", "render|@/small.xlsx|Sheet1|A1|@/x.png", 1, "no sheet \"Sheet1\"; its sheets are: Data."},
        Refusal{"nothing_to_see", "render|@/small.xlsx|Data|A3:B3|@/x.png", 1, "small.xlsx"},
        Refusal{"no_folder_for_picture", "render|@/small.xlsx|Data|A1|@/none/x.png", 1,
                "/none/x.png cannot be written"},
        Refusal{"no_chart", "render-chart|@/small.xlsx|Data|Chart 1|@/x.png", 1, "Chart 1"},
        Refusal{"other_engine", "inspect|--host|calc|@/small.xlsx", 1, "The engine \"calc\" is not built into"},
        Refusal{"overwriting", "new-project|@/foreign.lvdu", 1, "foreign.lvdu"},
        Refusal{"foreign_project", "sql|@/foreign.lvdu|SELECT * FROM LvnSystem", 1, "foreign.lvdu"},
        Refusal{"absent_project", "refresh|@/absent.lvdu", 1, "absent.lvdu"}),
    [](const auto& row) { return std::string(row.param.name); });

using Commands = ToolsFixture;

TEST_F(Commands, RefusalsLeaveNoPicture)
{
    write(u"small.xlsx"_s, smallWorkbook());
    ASSERT_EQ(call({u"render"_s, path(u"small.xlsx"_s), u"Data"_s, u"A3:B3"_s, path(u"x.png"_s)}).status, 1);
    EXPECT_FALSE(QFile::exists(path(u"x.png"_s)));
}

TEST_F(Commands, PicturesAreAsLargeAsTheVisibleCells)
{
    const QString book = write(u"small.xlsx"_s, smallWorkbook()), target = path(u"x.png"_s);
    ASSERT_EQ(call({u"render"_s, book, u"data"_s, u"$A$1:$B$6"_s, target}).status, 0);
    EXPECT_EQ(QImage(target).size(), QSize(75 + 64, 20 + 40 + 3 * 20));
    ASSERT_EQ(call({u"render"_s, u"--scale"_s, u"2"_s, book, u"Data"_s, u"A1:B6"_s, target}).status, 0);
    EXPECT_EQ(QImage(target).size(), QSize(2 * 139, 2 * 120));
}

TEST_F(Commands, AProjectIsMadeOnceAndAnswersStatements)
{
    const QString project = path(u"new.lvdu"_s);
    ASSERT_EQ(call({u"new-project"_s, project}).status, 0);
    EXPECT_EQ(call({u"new-project"_s, project}).status, 1);
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

struct Location
{
    const char *name, *picRange, *rule, *match;
    const char *range, *anchor;
    int rowOffset;
    const char* picRangeAdjusted;
};

class Locations : public ToolsFixture, public testing::WithParamInterface<Location>
{
};

} // namespace

TEST_P(Locations, AreToldAndRewritten)
{
    const Location& row = GetParam();
    const auto text = [](const char* latin) { return QString::fromLatin1(latin); };
    QStringList words{u"locate"_s,        write(u"small.xlsx"_s, smallWorkbook()),
                      u"Data"_s,          u"--pic-range"_s,
                      text(row.picRange), u"--relative-to"_s,
                      text(row.rule),     u"--content-match"_s,
                      text(row.match)};
    const QJsonObject found = call(words).object();
    EXPECT_EQ(found.value(u"range").toString(), text(row.range));
    EXPECT_EQ(found.value(u"anchor").toString(), text(row.anchor));
    EXPECT_EQ(found.value(u"row_offset").toInt(-99), row.rowOffset);
    EXPECT_FALSE(found.contains(u"pic_range"));
    words.append(u"--adjust"_s);
    EXPECT_EQ(call(words).object().value(u"pic_range").toString(), text(row.picRangeAdjusted));
}

INSTANTIATE_TEST_SUITE_P(
    Tools, Locations,
    testing::Values(Location{"same_address", "$A$2:$B$3", "top", "bottom=$B$4", "$A$2:$B$3", "", 0, "$A$2:$B$3``"},
                    Location{"from_the_end", "$A$3:$B$4`1:1`", "bottom", "bottom=$B$4", "A5:B6", "", 2, "A5:B6`1:1`"},
                    Location{"by_content", "$A$4:$B$4", "contents", "bottom=$B$4`anchor=$A4`content=total", "A6:B6",
                             "$A6", 2, "A6:B6``"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace lumivane::test
