#include "sharing/AltPaths.h"
#include "sharing/TwoProjects.h"

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class AlternatePaths : public TwoProjects
{
protected:
    static QStringList listed()
    {
        QStringList texts;
        for (const AlternatePath& pair : alternatePaths())
            texts.append(pair.BasePath + u" -> "_s + pair.AltPath);
        return texts;
    }
};

TEST_F(AlternatePaths, AreListedByBaseAndDeletedByTheirPair)
{
    EXPECT_EQ(listed(), QStringList{});
    for (const AlternatePath& pair :
         {AlternatePath{u"/z/"_s, u"/1/"_s}, {u"/O'Brien/"_s, u"/it's/"_s}, {u"/z/"_s, u"/2/"_s}})
        EXPECT_TRUE(SaveAltPaths(pair));
    EXPECT_EQ(listed(), (QStringList{u"/O'Brien/ -> /it's/"_s, u"/z/ -> /1/"_s, u"/z/ -> /2/"_s}));
    EXPECT_TRUE(deleteAlternatePath({u"/O'Brien/"_s, u"/it's/"_s}));
    EXPECT_TRUE(deleteAlternatePath({u"/z/"_s, u"/1/"_s}));
    EXPECT_EQ(listed(), QStringList{u"/z/ -> /2/"_s});
    EXPECT_TRUE(deleteAlternatePath({u"/z/"_s, u"/2/"_s}));
    EXPECT_EQ(listed(), QStringList{});
    EXPECT_EQ(user.shown, QStringList{});
}

TEST_F(AlternatePaths, CanBeGivenToFoldersThatSourcesUse)
{
    addSource(*mine, {u"/full/path.xlsx"_s, u"m"_s, u"/b/"_s, u"/a/"_s});
    addSource(*mine, {u"/full/path.xlsx"_s, u"m"_s, u"/a/"_s, u"/"_s});
    addSource(*mine, {u"/full/path.xlsx"_s, u"m"_s, u"C:\\data\\"_s, QString()});
    EXPECT_EQ(alternateBases(), (QStringList{u"/a/"_s, u"/b/"_s, u"C:\\data\\"_s}));
}

TEST(AlternatePathTexts, EndLikeTheirBase)
{
    const QString table[][3] = {
        {u"C:\\data\\"_s, u"D:\\data"_s, u"D:\\data\\"_s},   // base with backslash
        {u"C:\\data"_s, u"D:\\data\\"_s, u"D:\\data\\"_s},   // base without
        {u"C:\\data\\"_s, u"D:\\data\\"_s, u"D:\\data\\"_s}, // both with
        {u"C:\\data\\"_s, u"/data"_s, u"/data/"_s},          // alternate of the other world
        {u"/data/"_s, u"data"_s, u"data/"_s},                // a bare name
        {u"/data/ "_s, u"/x"_s, u"/x/"_s},                   // blanks behind the base
    };
    for (const auto& [base, alternate, stored] : table)
        EXPECT_EQ(alternateLike(base, alternate), stored) << base.toStdString();
}

TEST(AlternatePathTexts, RewritePaths)
{
    const QString table[][4] = {
        {u"C:\\a\\x\\f.xls"_s, u"C:\\a\\"_s, u"D:\\b\\"_s, u"D:\\b\\x\\f.xls"_s},            // below the base
        {u"/a/b/a/b/"_s, u"a/b"_s, u"c"_s, u"/c/c/"_s},                                      // every occurrence
        {u"c:\\A\\f.xls"_s, u"C:\\a\\"_s, u"D:\\b\\"_s, u"c:\\A\\f.xls"_s},                  // letters compared exactly
        {u"/mnt/data/x/f.xls"_s, u"/mnt/data/"_s, u"D:\\data\\"_s, u"D:\\data\\x\\f.xls"_s}, // from here to there
        {u"C:\\other\\f.xls"_s, u"C:\\data\\"_s, u"/mnt/"_s, u"C:\\other\\f.xls"_s},         // not below the base
        {u"/a/f.xls"_s, QString(), u"/b/"_s, u"/a/f.xls"_s},                                 // an empty base
    };
    for (const auto& [path, base, alternate, expected] : table)
        EXPECT_EQ(rewrittenPath(path, base, alternate), expected);
}

} // namespace
} // namespace lumivane::test
