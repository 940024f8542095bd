#include "repository/Dialect.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

TEST(Dialect, IsRewrittenTokenByToken)
{
    // What is written, and what the store is told; one text where nothing changes.
    for (const auto& [written, sql] : textTable<2>(R"(
        SELECT a FROM t WHERE ID =  5                | SELECT a FROM t WHERE ID = 5
        SELECT a⏎FROM t;                             | SELECT a FROM t
        UPDATE t SET d = #2026-11-24 10:30:00#       | UPDATE t SET d = '2026-11-24 10:30:00'
        UPDATE t SET d = #2026-11-24#                | UPDATE t SET d = '2026-11-24 00:00:00'
        UPDATE t SET d = #1/2/1900#                  | UPDATE t SET d = '1900-01-02 00:00:00'
        UPDATE t SET d = #11/24/2026 10:30:05 PM#    | UPDATE t SET d = '2026-11-24 22:30:05'
        UPDATE t SET d = #11/24/2026 12:00:00 AM#    | UPDATE t SET d = '2026-11-24 00:00:00'
        UPDATE t SET d = #11/24/2026 12:00 pm#       | UPDATE t SET d = '2026-11-24 12:00:00'
        UPDATE t SET d = #10:30:00 AM#               | UPDATE t SET d = '1899-12-30 10:30:00'
        UPDATE t SET a = 'is #1/2/1900# so'
        SELECT TOP 1 * FROM t                        | SELECT * FROM t LIMIT 1
        select distinct top 3 a from t order by a    | select distinct a from t order by a LIMIT 3
        DELETE FROM t WHERE b IN (SELECT TOP 2 b FROM u) | DELETE FROM t WHERE b IN ( SELECT b FROM u LIMIT 2 )
        SELECT Top, Left FROM t                      | SELECT Top , Left FROM t
        DELETE * FROM t WHERE ID = 1                 | DELETE FROM t WHERE ID = 1
        DELETE t.* FROM t                            | DELETE FROM t
        SELECT COUNT(*) AS n FROM t                  | SELECT COUNT ( * ) AS n FROM t
        UPDATE t SET [Top] = 1,[my name] = 2         | UPDATE t SET "Top" = 1 , "my name" = 2
        SELECT `a` FROM t                            | SELECT "a" FROM t
        SELECT [a"b] FROM t                          | SELECT "a""b" FROM t
        SELECT a FROM t WHERE b = "it's"             | SELECT a FROM t WHERE b = 'it''s'
        SELECT a FROM t WHERE b = 'it''s'
        SELECT a FROM t WHERE b = "a""b"             | SELECT a FROM t WHERE b = 'a"b'
        SELECT ';--/*' FROM t
        SELECT a FROM t WHERE Left(a, 2) = 'x'       | SELECT a FROM t WHERE "Left" ( a , 2 ) = 'x'
        SELECT a FROM t LEFT JOIN u ON t.a = u.a     | SELECT a FROM t LEFT JOIN u ON t . a = u . a
        SELECT a FROM t WHERE b = True OR b = False  | SELECT a FROM t WHERE b = (-1) OR b = (0)
        SELECT -1.5, .5, 1e3, 2E-2 FROM t            | SELECT - 1.5 , .5 , 1e3 , 2E-2 FROM t
        SELECT a FROM Größe WHERE b = 'Öl'
        DELETE FROM t WHERE NOT a IN ('x','y')       | DELETE FROM t WHERE NOT a IN ( 'x' , 'y' ))")) {
        QString told;
        const ThrownError failure = failureOf([&] { told = QString::fromUtf8(translateStatement(written).sql); });
        EXPECT_EQ(told, sql.isEmpty() ? written : sql) << failure.text;
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
    for (const auto& [statement, sentence] : textTable<2>(R"(
        ··                            | at character 3 (its end): the statement is empty
        PRAGMA user_version           | at character 1, [PRAGMA user_version]: a statement begins
        SELECT 1; DELETE FROM t       | at character 9, [; DELETE FROM t]: only one statement
        SELECT 'abc                   | at character 8, ['abc]: the text that begins there has no end
        UPDATE t SET a = 'it's'       | at character 23, [']: the text that begins there has no end
        SELECT #1/1/1900              | at character 8, [#1/1/1900]: the date
        SELECT [abc                   | at character 8, [[abc]: the name
        SELECT [ ] FROM t             | the name is empty
        UPDATE t SET d = ##           | at character 18, [##]: ## is no date
        UPDATE t SET d = #24/11/2026# | #24/11/2026# is no date
        UPDATE t SET d = #2/30/2026#  | is no date
        UPDATE t SET d = #13:00 PM#   | is no date
        UPDATE t SET d = #1/1/26#     | is no date
        SELECT 1 -- x                 | at character 10, [-- x]: there are no comments
        SELECT /* x */ 1              | there are no comments
        DELETE FROM t WHERE ID NOT IN ( ) | at character 31, [( )]: the list behind IN is empty
        SELECT ? FROM t               | at character 8, [? FROM t]: this sign is not understood
        SELECT ߇ FROM t               | at character 8, [߇ FROM t]: this sign is not understood
        SELECT TOP 1.5 * FROM t       | TOP takes a number of rows
        SELECT TOP 5 PERCENT * FROM t | TOP takes a number of rows
        SELECT TOP 1 a FROM t UNION SELECT b FROM u | TOP and UNION do not go together
        SELECT * INTO t FROM u        | INTO is written as
        SELECT (SELECT a INTO t IN 'f' FROM u) | INTO is written as
        SELECT (1                     | at character 10 (its end): a parenthesis is not closed
        SELECT 1)                     | at character 9, [)]: a parenthesis is closed
        DROP TABLE a, b               | DROP is written as
        DROP VIEW a                   | DROP is written as
        SELECT 1a FROM t              | at character 9, [a FROM t]: a number runs into a word)")) {
        const ThrownError failure = failureOf([&] { translateStatement(statement); });
        EXPECT_EQ(failure.number, SyntaxError) << statement;
        EXPECT_TRUE(failure.text.contains(sentence)) << statement << ": " << failure.text;
    }
    EXPECT_THROW(translateStatement(u"SELECT 'a"_s + QChar() + u"b'"_s), RuntimeError);
}

TEST(Dialect, LikeHasItsOwnWildCards)
{
    const auto matches = [](const char* pairs, bool expected) {
        for (const auto& [pattern, text] : textPairs(pairs))
            EXPECT_EQ(matchesLikePattern(text, pattern), expected) << text << " LIKE " << pattern;
    };
    matches(R"(c:\DATA\* → C:\data\a.xls | a?c → abc | a%c_ → a%c_ | x# → x7 | [a-c] → b | [a-c] → B | [!a-c] → d
               [a-] → - | [*] → * | a] → a] | äb → ÄB | * → | *abd → abcabd | a*X*c* → aXbXc)",
            true);
    matches("a?c → ac | a% → abc | x# → xy | [a-c] → d | [*] → x | ? →", false);
    EXPECT_THROW(matchesLikePattern(u"a", u"[a"), RuntimeError);
}

TEST(Dialect, LikeEndsOnHostilePatterns)
{
    const QString text(20'000, u'a');
    EXPECT_FALSE(matchesLikePattern(text, QString(u"*a"_s.repeated(200) + u"b"_s)));
}

} // namespace lumivane::test
