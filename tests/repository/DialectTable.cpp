#include "platform/RuntimeError.h"
#include "repository/Dialect.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

TEST(Dialect, IsRewrittenTokenByToken)
{
    const struct
    {
        const char* name;
        const char* statement;
        const char* sql;
    } rows[] = {
        {"nothing to do", "SELECT * FROM t WHERE ID = 5", "SELECT * FROM t WHERE ID = 5"},
        {"blank in front of a number", "SELECT a FROM t WHERE ID =  5", "SELECT a FROM t WHERE ID = 5"},
        {"final semicolon", "SELECT a FROM t;", "SELECT a FROM t"},
        {"line breaks", "SELECT a\r\nFROM t", "SELECT a FROM t"},
        {"date in stored form", "UPDATE t SET d = #2026-11-24 10:30:00#", "UPDATE t SET d = '2026-11-24 10:30:00'"},
        {"date without time", "UPDATE t SET d = #2026-11-24#", "UPDATE t SET d = '2026-11-24 00:00:00'"},
        {"month first", "UPDATE t SET d = #1/2/1900#", "UPDATE t SET d = '1900-01-02 00:00:00'"},
        {"afternoon", "UPDATE t SET d = #11/24/2026 10:30:05 PM#", "UPDATE t SET d = '2026-11-24 22:30:05'"},
        {"midnight", "UPDATE t SET d = #11/24/2026 12:00:00 AM#", "UPDATE t SET d = '2026-11-24 00:00:00'"},
        {"noon", "UPDATE t SET d = #11/24/2026 12:00 pm#", "UPDATE t SET d = '2026-11-24 12:00:00'"},
        {"time alone", "UPDATE t SET d = #10:30:00 AM#", "UPDATE t SET d = '1899-12-30 10:30:00'"},
        {"date inside a text", "UPDATE t SET a = 'is #1/2/1900# so'", "UPDATE t SET a = 'is #1/2/1900# so'"},
        {"top", "SELECT TOP 1 * FROM t", "SELECT * FROM t LIMIT 1"},
        {"top behind distinct", "select distinct top 3 a from t order by a",
         "select distinct a from t order by a LIMIT 3"},
        {"top in a subquery", "SELECT a FROM t WHERE b IN (SELECT TOP 2 b FROM u) AND c = 1",
         "SELECT a FROM t WHERE b IN ( SELECT b FROM u LIMIT 2 ) AND c = 1"},
        {"top as a column", "SELECT Top, Left FROM t", "SELECT Top , Left FROM t"},
        {"top inside a text", "SELECT 'TOP 1' FROM t", "SELECT 'TOP 1' FROM t"},
        {"delete star", "DELETE * FROM t WHERE ID = 1", "DELETE FROM t WHERE ID = 1"},
        {"delete table star", "DELETE t.* FROM t", "DELETE FROM t"},
        {"delete plain", "DELETE FROM t", "DELETE FROM t"},
        {"count star stays", "SELECT COUNT(*) AS n FROM t", "SELECT COUNT ( * ) AS n FROM t"},
        {"names in brackets", "UPDATE t SET [Top] = 1,[my name] = 2", "UPDATE t SET \"Top\" = 1 , \"my name\" = 2"},
        {"back-quoted name", "SELECT `a` FROM t", "SELECT \"a\" FROM t"},
        {"quote in a name", "SELECT [a\"b] FROM t", "SELECT \"a\"\"b\" FROM t"},
        {"text in quotes", "SELECT a FROM t WHERE b = \"it's\"", "SELECT a FROM t WHERE b = 'it''s'"},
        {"doubled apostrophe", "SELECT a FROM t WHERE b = 'it''s'", "SELECT a FROM t WHERE b = 'it''s'"},
        {"doubled quote", "SELECT a FROM t WHERE b = \"a\"\"b\"", "SELECT a FROM t WHERE b = 'a\"b'"},
        {"semicolon in a text", "SELECT ';--/*' FROM t", "SELECT ';--/*' FROM t"},
        {"Left as function", "SELECT a FROM t WHERE Left(a, 2) = 'x'",
         "SELECT a FROM t WHERE \"Left\" ( a , 2 ) = 'x'"},
        {"left as join", "SELECT a FROM t LEFT JOIN u ON t.a = u.a", "SELECT a FROM t LEFT JOIN u ON t . a = u . a"},
        {"true and false", "SELECT a FROM t WHERE b = True OR b = False", "SELECT a FROM t WHERE b = (-1) OR b = (0)"},
        {"numbers", "SELECT -1.5, .5, 1e3, 2E-2 FROM t", "SELECT - 1.5 , .5 , 1e3 , 2E-2 FROM t"},
        {"umlauts", "SELECT a FROM Größe WHERE b = 'Öl'", "SELECT a FROM Größe WHERE b = 'Öl'"},
        {"list", "DELETE FROM t WHERE NOT a IN ('x','y')", "DELETE FROM t WHERE NOT a IN ( 'x' , 'y' )"},
    };
    for (const auto& row : rows) {
        try {
            EXPECT_EQ(translateStatement(QString::fromUtf8(row.statement)).sql.toStdString(), row.sql) << row.name;
        } catch (const RuntimeError& error) {
            ADD_FAILURE() << row.name << ": " << error.what();
        }
    }
}

TEST(Dialect, CopyingIntoAnotherFileIsTakenApart)
{
    const Translation copy = translateStatement(
        u"SELECT 0 AS NewID, * INTO TempSources IN '/a/it''s.lvdu' FROM LvnPanelSource WHERE ID IN ( SELECT 1)"_s);
    EXPECT_EQ(copy.kind, Translation::Kind::CopyInto);
    EXPECT_EQ(copy.table, u"TempSources"_s);
    EXPECT_EQ(copy.fileName, u"/a/it's.lvdu"_s);
    EXPECT_EQ(copy.sql, "SELECT 0 AS NewID , * FROM LvnPanelSource WHERE ID IN ( SELECT 1 )");
}

TEST(Dialect, WhatIsNotUnderstoodIsRefusedByItsPlace)
{
    const struct
    {
        const char* name;
        const char* statement;
        const char* place; ///< with the reason
    } rows[] = {
        {"empty", "  ", "at character 3 (its end): the statement is empty"},
        {"other beginning", "PRAGMA user_version", "at character 1, [PRAGMA user_version]: a statement begins"},
        {"with", "WITH x AS (SELECT 1) SELECT 1", "at character 1, "},
        {"attach", "ATTACH '/x' AS y", "at character 1, "},
        {"second statement", "SELECT 1; DELETE FROM t", "at character 9, [; DELETE FROM t]: only one statement"},
        {"two semicolons", "SELECT 1;;", "at character 9, [;;]: only one statement"},
        {"open text", "SELECT 'abc", "at character 8, ['abc]: the text that begins there has no end"},
        {"apostrophe in a text", "UPDATE t SET a = 'it's'",
         "at character 23, [']: the text that begins there has no end"},
        {"open date", "SELECT #1/1/1900", "at character 8, [#1/1/1900]: the date"},
        {"open name", "SELECT [abc", "at character 8, [[abc]: the name"},
        {"empty name", "SELECT [ ] FROM t", "the name is empty"},
        {"empty date", "UPDATE t SET d = ##", "at character 18, [##]: ## is no date"},
        {"day first", "UPDATE t SET d = #24/11/2026#", "#24/11/2026# is no date"},
        {"no such day", "UPDATE t SET d = #2/30/2026#", "is no date"},
        {"hour 13 pm", "UPDATE t SET d = #13:00 PM#", "is no date"},
        {"two figures for a year", "UPDATE t SET d = #1/1/26#", "is no date"},
        {"comment", "SELECT 1 -- x", "at character 10, [-- x]: there are no comments"},
        {"block comment", "SELECT /* x */ 1", "there are no comments"},
        {"empty list", "DELETE FROM t WHERE ID NOT IN ( )", "at character 31, [( )]: the list behind IN is empty"},
        {"parameter", "SELECT ? FROM t", "at character 8, [? FROM t]: this sign is not understood"},
        {"named parameter", "SELECT :a FROM t", "this sign is not understood"},
        {"digit of another script", "SELECT ߇ FROM t", "at character 8, [߇ FROM t]: this sign is not understood"},
        {"joining sign", "SELECT a & b FROM t", "this sign is not understood"},
        {"top of nothing", "SELECT TOP 1.5 * FROM t", "TOP takes a number of rows"},
        {"top per cent", "SELECT TOP 5 PERCENT * FROM t", "TOP takes a number of rows"},
        {"top in a union", "SELECT TOP 1 a FROM t UNION SELECT b FROM u", "TOP and UNION do not go together"},
        {"into without file", "SELECT * INTO t FROM u", "INTO is written as"},
        {"into in a subquery", "SELECT (SELECT a INTO t IN 'f' FROM u)", "INTO is written as"},
        {"open parenthesis", "SELECT (1", "at character 10 (its end): a parenthesis is not closed"},
        {"closed parenthesis", "SELECT 1)", "at character 9, [)]: a parenthesis is closed"},
        {"drop of more", "DROP TABLE a, b", "DROP is written as"},
        {"drop view", "DROP VIEW a", "DROP is written as"},
        {"number and word", "SELECT 1a FROM t", "at character 9, [a FROM t]: a number runs into a word"},
    };
    for (const auto& row : rows) {
        try {
            const Translation taken = translateStatement(QString::fromUtf8(row.statement));
            ADD_FAILURE() << row.name << " was taken as " << taken.sql.constData();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), SyntaxError) << row.name;
            EXPECT_TRUE(error.description().contains(QString::fromUtf8(row.place))) << row.name << ": " << error.what();
        }
    }
    EXPECT_THROW(translateStatement(u"SELECT 'a"_s + QChar() + u"b'"_s), RuntimeError);
}

TEST(Dialect, LikeHasItsOwnWildCards)
{
    const struct
    {
        const char *text, *pattern;
        bool matches;
    } rows[] = {
        {"C:\\data\\a.xls", "c:\\DATA\\*", true},
        {"abc", "a?c", true},
        {"ac", "a?c", false},
        {"a%c_", "a%c_", true},
        {"abc", "a%", false},
        {"x7", "x#", true},
        {"xy", "x#", false},
        {"b", "[a-c]", true},
        {"B", "[a-c]", true},
        {"d", "[a-c]", false},
        {"d", "[!a-c]", true},
        {"-", "[a-]", true},
        {"*", "[*]", true},
        {"x", "[*]", false},
        {"a]", "a]", true},
        {"ÄB", "äb", true},
        {"", "*", true},
        {"", "?", false},
        {"abcabd", "*abd", true},
        {"aXbXc", "a*X*c*", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(matchesLikePattern(QString::fromUtf8(row.text), QString::fromUtf8(row.pattern)), row.matches)
            << row.text << " LIKE " << row.pattern;
    EXPECT_THROW(matchesLikePattern(u"a", u"[a"), RuntimeError);
}

TEST(Dialect, LikeEndsOnHostilePatterns)
{
    const QString text(20'000, u'a');
    EXPECT_FALSE(matchesLikePattern(text, QString(u"*a"_s.repeated(200) + u"b"_s)));
}

} // namespace lumivane::test
