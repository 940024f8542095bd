#include "engine/read/ContentCache.h"

#include "engine/read/WorkbookFile.h"
#include "support/XlsxWriter.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

QByteArray bookWith(const std::string& value)
{
    return WorkbookParts({{"A", "<sheetData><row><c><v>" + value + "</v></c></row></sheetData>", ""}}).package();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

double valueOf(WorkbookFile& book)
{
    return book.sheet(0)->cells.at(0).number;
}

} // namespace

TEST(ContentCache, ReadsAFileOnce)
{
    ContentCache cache;
    const QString path = writeTemporary(u"Book.xlsx"_s, bookWith("1"));
    const auto first = cache.open(path);
    EXPECT_EQ(cache.open(path), first);
    cache.clear();
    EXPECT_NE(cache.open(path), first);
}

TEST(ContentCache, ReadsAChangedFileAgainWhateverChanged)
{
    ContentCache cache;
    const QString path = writeTemporary(u"Book.xlsx"_s, bookWith("1"));
    const auto first = cache.open(path);
    first->sheet(0);

    write(path, bookWith("22"));
    const auto larger = cache.open(path);
    EXPECT_EQ(valueOf(*larger), 22);

    // Another file of the same size and time in its place, as when a program saves by renaming.
    const QString other = writeTemporary(u"Other.xlsx"_s, bookWith("33"));
    const QDateTime time = QFileInfo(path).lastModified();
    for (const QString& one : {path, other}) {
        QFile file(one);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    EXPECT_EQ(valueOf(*cache.open(path)), 22);
    ASSERT_TRUE(QFile::remove(path) && QFile::rename(other, path));
    EXPECT_EQ(valueOf(*cache.open(path)), 33);
    EXPECT_EQ(valueOf(*first), 1) << "openings keep what they opened";

    write(path, "PK\3\4 broken");
    EXPECT_THROW(cache.open(path), RuntimeError);
    EXPECT_THROW(cache.open(path), RuntimeError) << "what fails is not kept";
    QFile::remove(path);
    EXPECT_THROW(cache.open(path), RuntimeError);
}

TEST(ContentCache, DropsTheLeastUsedBeyondItsBytes)
{
    const QString paths[] = {writeTemporary(u"0.xlsx"_s, bookWith("0")), writeTemporary(u"1.xlsx"_s, bookWith("1")),
                             writeTemporary(u"2.xlsx"_s, bookWith("2"))};
    const qint64 one = WorkbookFile::open(paths[0])->bytes();
    ContentCache cache(one * 5 / 2);
    const std::weak_ptr<WorkbookFile> first = cache.open(paths[0]);
    const std::weak_ptr<WorkbookFile> second = cache.open(paths[1]);
    cache.open(paths[0]);
    cache.open(paths[2]);
    EXPECT_FALSE(first.expired());
    EXPECT_TRUE(second.expired());

    ContentCache tiny(1);
    const std::weak_ptr<WorkbookFile> only = tiny.open(paths[0]);
    EXPECT_FALSE(only.expired()) << "the file just opened stays, whatever its size";
}

TEST(ContentCache, CountsSheetsAndTextsThatWereReadAfterTheOpening)
{
    const QString small = writeTemporary(u"S.xlsx"_s, bookWith("1"));
    const std::string letters(100, 'x');
    for (const std::string& cell : {std::string("<c><v>1</v></c>"), "<c t='str'><v>" + letters + "</v></c>"}) {
        std::string rows;
        for (int i = 0; i < 3000; ++i)
            rows += "<row>" + cell + "</row>";
        const QString large =
            writeTemporary(u"L.xlsx"_s, WorkbookParts({{"A", "<sheetData>" + rows + "</sheetData>", ""}}).package());
        ContentCache cache(letters.size() < cell.size() ? 350000 : 100000);
        std::weak_ptr<WorkbookFile> opened = cache.open(large);
        opened.lock()->sheet(0);
        EXPECT_FALSE(opened.expired());
        cache.open(small);
        EXPECT_TRUE(opened.expired()) << cell;
    }
}

} // namespace lumivane::test
