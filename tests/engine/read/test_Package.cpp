#include "engine/read/package/Package.h"

#include "engine/read/package/ReadError.h"
#include "support/XlsxWriter.h"

#include <QtEndian>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;

namespace {

std::string contentOf(const QByteArray& bytes, const char* name)
{
    try {
        const Package package(writeTemporary(QStringLiteral("a.zip"), bytes));
        const Package::Entry* entry = package.find(name);
        return entry ? package.read(*entry) : "(no such entry)";
    } catch (const Fault& fault) {
        return "fault: " + fault.what.toStdString();
    }
}

/// Packed, with the raw stream that lies between the frame of a zlib one.
PackageEntry deflated(const std::string& name, const std::string& bytes)
{
    const QByteArray framed = qCompress(reinterpret_cast<const uchar*>(bytes.data()), qsizetype(bytes.size()));
    const std::string empty("\3\0", 2);
    PackageEntry entry{name, bytes.empty() ? empty : framed.sliced(6).chopped(4).toStdString()};
    entry.method = 8;
    entry.size = static_cast<long long>(bytes.size());
    entry.crc = checksum(bytes);
    return entry;
}

} // namespace

TEST(Package, FindsEntriesWithoutRegardToCaseAndKindOfSlash)
{
    const QByteArray bytes = makePackage({{"Xl\\Workbook.xml", "one"}, {"b", ""}});
    EXPECT_EQ(contentOf(bytes, "xl/workbook.XML"), "one");
    EXPECT_EQ(contentOf(bytes, "b"), "");
    EXPECT_EQ(contentOf(bytes, "c"), "(no such entry)");
}

TEST(Package, InflatesAcrossItsBuffers)
{
    std::string long1;
    for (int i = 0; i < 120000; ++i)
        long1 += std::to_string(i * 7919) + ",";
    EXPECT_EQ(contentOf(makePackage({deflated("a", long1), deflated("b", "short")}), "a"), long1);
    EXPECT_EQ(contentOf(makePackage({deflated("a", long1), deflated("b", "short")}), "b"), "short");
    EXPECT_EQ(contentOf(makePackage({deflated("a", "")}), "a"), "");
}

TEST(Package, ReadsACommentBehindTheDirectory)
{
    QByteArray bytes = makePackage({{"a", "one"}});
    bytes[bytes.size() - 2] = 5;
    EXPECT_EQ(contentOf(bytes + "PK\5\6!", "a"), "one");
}

TEST(Package, ReadsA64BitDirectory)
{
    const QByteArray bytes = makePackage({{"a", "one"}});
    const qsizetype end = bytes.size() - 22;
    const QByteArray offset = bytes.mid(end + 16, 4), size = bytes.mid(end + 12, 4), none(4, '\0');
    const QByteArray one("\1\0\0\0\0\0\0\0", 8);
    const QByteArray record = "PK\6\6" + QByteArray(20, '\0') + one + one + size + none + offset + none;
    const qint64 place = qToLittleEndian(qint64(end));
    const QByteArray locator = "PK\6\7" + none + QByteArray(reinterpret_cast<const char*>(&place), 8) + one.left(4);
    QByteArray last = bytes.mid(end);
    last.replace(16, 4, QByteArray(4, '\xff'));
    EXPECT_EQ(contentOf(bytes.left(end) + record + locator + last, "a"), "one");
}

TEST(Package, ReadsA64BitSize)
{
    const std::string other("\2\0\0\0", 4), size("\1\0\10\0\3\0\0\0\0\0\0\0", 12);
    const PackageEntry entry{.name = "a", .bytes = "one", .size = 0xffffffff, .extra = other + size};
    EXPECT_EQ(contentOf(makePackage({entry}), "a"), "one");
}

TEST(Package, RefusesWhatIsDamagedOrOverABoundAndNamesTheEntry)
{
    const auto unsized = [](const std::string& extra) {
        return PackageEntry{.name = "a.xml", .bytes = "one", .size = 0xffffffff, .extra = extra};
    };
    PackageEntry dense{.name = "a.xml", .bytes = std::string(140000, 'x'), .size = 501 * 140000};
    PackageEntry cut = deflated("a.xml", "some words and some words and words"), broken = cut, tooLong = cut;
    cut.bytes.resize(cut.bytes.size() / 2);
    broken.bytes[0] = '\x07';
    tooLong.size = 5;
    std::vector<PackageEntry> many(20001, PackageEntry{"", ""});
    for (size_t i = 0; i < many.size(); ++i)
        many[i].name = std::to_string(i);
    const QByteArray whole = makePackage({{"a.xml", "one"}});
    QByteArray badStart = whole, badDirectory = whole;
    badStart[0] = 'Q';
    badDirectory[whole.indexOf("PK\1\2")] = 'Q';

    const std::tuple<const char*, QByteArray, const char*> cases[] = {
        {"checksum", makePackage({{.name = "a.xml", .bytes = "one", .crc = 1}}),
         "entry \"a.xml\" does not match its checksum"},
        {"encrypted", makePackage({{.name = "a.xml", .bytes = "one", .flags = 1}}),
         "entry \"a.xml\" is protected by a password"},
        {"offset behind the end", makePackage({{.name = "a.xml", .bytes = "one", .offset = 0x7fffffff}}),
         "entry \"a.xml\" lies behind the end of the file"},
        {"longer than there is room", makePackage({{.name = "a.xml", .bytes = "one", .size = 20, .packedSize = 20}}),
         "entry \"a.xml\" overlaps what follows it"},
        {"two entries in one place", makePackage({{"a.xml", "one"}, {.name = "b.xml", .bytes = "two", .offset = 0}}),
         "overlaps what follows it"},
        {"twice the same name", makePackage({{"a.xml", "1"}, {"A.XML", "2"}}), "it holds entry \"A.XML\" twice"},
        {"unknown packing", makePackage({{.name = "a.xml", .bytes = "one", .method = 12}}),
         "entry \"a.xml\" is packed in a way that is not read here (12)"},
        {"too large", makePackage({{.name = "a.xml", .bytes = "one", .size = 0xfffffffe}}),
         "entry \"a.xml\" would take more than 2048 MB"},
        {"64-bit size cut off", makePackage({unsized(std::string("\1\0\6\0\0\0", 6))}), "would take more than 2048 MB"},
        {"64-bit size too short", makePackage({unsized(std::string("\1\0\2\0\0\0", 6))}), "has a damaged size"},
        {"packed too densely", makePackage({dense}), "entry \"a.xml\" is packed more than 500 times"},
        {"packed data cut", makePackage({cut}), "entry \"a.xml\""},
        {"packed data broken", makePackage({broken}), "entry \"a.xml\" cannot be inflated"},
        {"longer than said", makePackage({tooLong}), "another size than the file's directory says"},
        {"too many", makePackage(many), "it has 20001 entries; at most 20000 are read"},
        {"directory cut off", whole.chopped(30), "the directory of its entries is missing"},
        {"start of an entry", badStart, "entry \"a.xml\" is not where the file's directory says"},
        {"directory broken", badDirectory, "the directory of its entries breaks off"},
        {"directory behind the end", whole.right(60), "its directory points behind its end"},
    };
    for (const auto& [name, bytes, expected] : cases) {
        const std::string content = contentOf(bytes, "a.xml") + contentOf(bytes, "b.xml");
        EXPECT_NE(content.find(expected), std::string::npos) << name << ": " << content.substr(0, 300);
    }
    dense.size = 500 * 140000;
    EXPECT_EQ(contentOf(makePackage({dense}), "a.xml").find("packed more than"), std::string::npos);
}

TEST(Package, AddsUpTheSizesOfAllEntries)
{
    std::vector<PackageEntry> entries;
    for (int i = 0; i < 40; ++i) {
        entries.push_back({"part" + std::to_string(i), "x"});
        entries.back().size = 60 << 20;
    }
    EXPECT_EQ(contentOf(makePackage(entries), "part0"),
              "fault: it would take more than 2048 MB, reached at entry \"part34\"");
}

} // namespace lumivane::test
