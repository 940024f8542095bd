#include "engine/read/ContentText.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <QFile>
#include <QtEndian>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

const std::string oneCell = "<sheetData><row r='1'><c r='A1'><v>1</v></c></row></sheetData>";

WorkbookParts oneSheet()
{
    return WorkbookParts({{"A", oneCell, ""}});
}

QByteArray compoundFile(const char16_t* streamName)
{
    QByteArray bytes("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
    bytes.append(QByteArray(65530, '\0')); // so that the name lies across the blocks in which it is looked for
    const QStringView name(streamName);
    bytes.append(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
    return bytes + QByteArray(500, '\0');
}

std::pair<QString, std::optional<ReadCause>> refusalOf(const QString& path)
{
    try {
        WorkbookFile::open(path);
    } catch (const ReadError& error) {
        return {error.description(), error.cause()};
    }
    return {};
}

} // namespace

TEST(WorkbookFile, ReadsSheetsNamesAndSettings)
{
    WorkbookParts parts({{"First &amp;\r\nfore\tmost", oneCell, ""},
                         {"d&#10;e", oneCell, "hidden"},
                         {"_x0046__", oneCell, "veryHidden"}});
    parts.inWorkbook(
        "<workbookPr date1904='1'/><bookViews><workbookView activeTab='1'/></bookViews>",
        "<definedNames><definedName name='Area' localSheetId='2'>C!$A$1:$B$2</definedName>"
        "<definedName name='Rate'>0.5</definedName><definedName name='Lost' localSheetId='7'>1</definedName>"
        "</definedNames><calcPr fullCalcOnLoad='1'/>");
    const auto book = openBook(parts);
    QStringList sheets, names;
    for (const SheetEntry& sheet : book->content()->sheets)
        sheets << sheet.name + (sheet.visible ? u""_s : u" hidden"_s);
    for (const DefinedName& name : book->content()->definedNames)
        names << u"%1 = %2 in %3"_s.arg(name.name, name.formula).arg(name.sheet);
    EXPECT_EQ(sheets, QStringList({u"First & fore most"_s, u"d\ne hidden"_s, u"F_ hidden"_s}));
    EXPECT_EQ(names, QStringList({u"Area = C!$A$1:$B$2 in 2"_s, u"Rate = 0.5 in -1"_s, u"Lost = 1 in -1"_s}));
    EXPECT_TRUE(book->content()->date1904 && book->content()->calculateOnOpen);
    EXPECT_EQ(book->content()->activeSheet, 1);
}

TEST(WorkbookFile, CountsDatesFrom1904WhereTheWorkbookDoes)
{
    WorkbookParts parts({{"A", "<sheetData><row r='1'><c t='d'><v>1904-01-02</v></c></row></sheetData>", ""}});
    EXPECT_EQ(readCells(parts.package()), u"1: A=1463"_s);
    parts.inWorkbook("<workbookPr date1904='true'/>", "");
    EXPECT_EQ(readCells(parts.package()), u"1: A=1"_s);
}

TEST(WorkbookFile, ReadsASheetOnceAndOnlyWhenAsked)
{
    const auto book = openBook(WorkbookParts({{"Good", oneCell, ""}, {"Bad", "<sheetData><row>", ""}}));
    EXPECT_EQ(book->sheet(0), book->sheet(0));
    EXPECT_THROW(book->sheet(1), RuntimeError);
    EXPECT_THROW(book->sheet(1), RuntimeError) << "a sheet that fails does not become a half one the second time";
    EXPECT_THROW(book->sheet(2), RuntimeError);
    EXPECT_THROW(book->sheet(-1), RuntimeError);
}

TEST(WorkbookFile, NoticesAFileThatChangedUnderneath)
{
    const QString path =
        writeTemporary(u"Book.xlsx"_s, WorkbookParts({{"A", oneCell, ""}, {"B", oneCell, ""}}).package());
    const auto book = WorkbookFile::open(path);
    book->sheet(0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("x");
    file.close();
    EXPECT_NO_THROW(book->sheet(0)) << "read before";
    EXPECT_TRUE(failureOf([&] { book->sheet(1); }).text.contains(u"has changed since it was opened"_s));
}

TEST(WorkbookFile, FindsPartsByAnyPathAndStrictTypes)
{
    WorkbookParts parts = oneSheet();
    parts.set("_rels/.rels", "<Relationships><Relationship Id='1' Target='/XL/Workbook.xml' "
                             "Type='http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument'/>"
                             "</Relationships>");
    parts.set("xl/_rels/workbook.xml.rels",
              "<r:Relationships xmlns:r='x'><r:Relationship Id='rId1' Target='./odd/../worksheets\\sheet1.xml' "
              "Type='a/worksheet'/></r:Relationships>");
    EXPECT_EQ(readCells(parts.package()), u"1: A=1"_s);
}

TEST(WorkbookFile, SaysWhatIsWrongWithAPackage)
{
    for (const auto& [part, content, expected] : textTable<3>(R"(
        _rels/.rels              | (gone)         | Book.xlsx" cannot be read: there is no workbook in it.
        xl/workbook.xml          | (gone)         | entry "xl/workbook.xml" is missing.
        xl/_rels/workbook.xml.rels | <R><Relationship Id='rId1' Type='x/worksheet' Target='worksheets/sheet1.xml'/><Relationship Id='t' Type='x/theme' Target='theme/theme1.xml'/></R> | 1: A=1
        xl/sharedStrings.xml     | (gone)         | 1: A=1
        xl/styles.xml            | <worksheet/>   | the part with its styles holds none.
        xl/sharedStrings.xml     | <worksheet/>   | entry "xl/sharedStrings.xml": there are no texts in it.
        xl/worksheets/sheet1.xml | <styleSheet/>  | its part holds no sheet.
        xl/_rels/workbook.xml.rels | <Relationships/> | the file does not say which of its parts holds it.
        xl/worksheets/sheet1.xml | (gone)         | its part "xl/worksheets/sheet1.xml" is missing
        xl/styles.xml | <styleSheet><a></styleSheet> | the XML of entry "xl/styles.xml" is broken (Start-end tags
        xl/sharedStrings.xml     | <sst><si>      | entry "xl/sharedStrings.xml": its XML is broken (
        xl/workbook.xml          | <document/>    | there is no workbook in it.
        xl/workbook.xml          | <workbook/>    | there is no sheet in it.
        xl/worksheets/sheet1.xml |                | there is no element in it)")) {
        WorkbookParts parts = oneSheet();
        if (content == u"(gone)"_s)
            parts.remove(part.toStdString());
        else
            parts.set(part.toStdString(), content.toStdString());
        const QString failure = readCells(parts.package());
        EXPECT_TRUE(failure.contains(expected)) << part << content << ": " << failure;
    }
}

TEST(WorkbookFile, SaysThatFormatsAreMissing)
{
    EXPECT_EQ(readSheet(oneSheet().remove("xl/styles.xml"))->problem,
              u"Formats and colors of cells are missing: entry \"xl/styles.xml\" is not in the file."_s);
    EXPECT_EQ(readSheet(oneSheet())->problem, u""_s);
}

TEST(WorkbookFile, BoundsAllSheetsTogether)
{
    std::string rows;
    for (int i = 0; i < 1000; ++i)
        rows += "<row><c><v>1</v></c></row>";
    const std::string xml = "<sheetData>" + rows + "</sheetData>";
    const QString path = writeTemporary(u"Book.xlsx"_s, WorkbookParts({{"A", xml, ""}, {"B", xml, ""}}).package());
    const auto book = WorkbookFile::open(path, 60000);
    auto held = book->sheet(0);
    EXPECT_TRUE(failureOf([&] { book->sheet(1); }).text.contains(u"take more than 512 MB"_s));
    held.reset();
    EXPECT_NO_THROW(book->sheet(1)) << "nobody needs the other one any more";
    EXPECT_THROW(WorkbookFile::open(writeTemporary(u"T.csv"_s, QByteArray("1,").repeated(5000)), 50000), ReadError);
}

TEST(WorkbookFile, DoesNotBelieveADirectoryOfAnySize)
{
    // A file with a hole as large as its directory claims to be.
    const QString path = writeTemporary(u"Book.xlsx"_s, "PK\3\4");
    QFile file(path);
    constexpr quint32 size = 3'900'000'000;
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(size) && file.seek(size));
    QByteArray end = "PK\5\6" + QByteArray(18, '\0');
    end[10] = 1;
    qToLittleEndian(size, end.data() + 12);
    file.write(end);
    file.close();
    EXPECT_TRUE(refusalOf(path).first.endsWith(u"the directory of its entries takes more than 16 MB."_s));
    file.resize(100); // gives the room back
}

TEST(WorkbookFile, LooksForAPasswordAtTheEndsOfAFileOnly)
{
    const QString path = writeTemporary(u"Book.xls"_s, compoundFile(u"Workbook"));
    const QByteArray name = compoundFile(u"EncryptedPackage").right(600);
    const auto causeWith = [&](qint64 place) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(place) && file.write(name) > 0 &&
                    file.resize(20ll << 30));
        file.close();
        return refusalOf(path).second;
    };
    EXPECT_EQ(causeWith(10ll << 30), ReadCause::FormatNotRead);
    EXPECT_EQ(causeWith((20ll << 30) - 1000), ReadCause::Protected);
    QFile::resize(path, 100);
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(WorkbookFile, SaysThatThereIsNotEnoughMemory)
{
    const QString path = writeTemporary(u"Book.csv"_s, "x");
    QFile::resize(path, 250 << 20);
    const auto openWithLittle = [&] {
        const rlimit little{200 << 20, 200 << 20};
        setrlimit(RLIMIT_AS, &little);
        _exit(refusalOf(path).first.endsWith(u"cannot be read: there is not enough memory for it."_s) ? 0 : 1);
    };
    EXPECT_EXIT(openWithLittle(), testing::ExitedWithCode(0), "");
    QFile::resize(path, 100);
}
#endif

TEST(WorkbookFile, BoundsWhatStylesMayHold)
{
    const QString fonts = u"<font/>"_s.repeated(200001);
    EXPECT_TRUE(
        readCells(oneSheet()
                      .set("xl/styles.xml", "<styleSheet><fonts>" + fonts.toStdString() + "</fonts></styleSheet>")
                      .package())
            .contains(u"it has more than 200000 styles of one kind."_s));
}

TEST(WorkbookFile, TellsByTheFirstBytesWhatAFileIs)
{
    const WorkbookParts binary =
        oneSheet().set("_rels/.rels", "<Relationships><Relationship Id='1' Target='xl/workbook.bin' "
                                      "Type='x/officeDocument'/></Relationships>");
    const WorkbookParts binaryByType = oneSheet().set(
        "[Content_Types].xml", "<Types><Override PartName='/xl/workbook.xml' "
                               "ContentType='application/vnd.ms-excel.sheet.binary.macroEnabled.main'/></Types>");
    using enum ReadCause;
    const std::tuple<const char*, QByteArray, QString, ReadCause> cases[] = {
        {"empty", "", u"Book.xlsx\" cannot be read: the file is empty."_s, NotAWorkbook},
        {"encrypted", compoundFile(u"EncryptedPackage"), u"it is protected by a password"_s, Protected},
        {"old binary", compoundFile(u"Workbook"), u"it is an old binary workbook (xls)"_s, FormatNotRead},
        {"oldest binary", QByteArray("\x09\0\x04\0\x02\0\x10\0\0\0", 10), u"(xls)"_s, FormatNotRead},
        {"OpenDocument", makePackage({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}),
         u"it is an OpenDocument file"_s, FormatNotRead},
        {"binary package", binary.package(), u"it is a binary workbook (xlsb)"_s, FormatNotRead},
        {"binary package by type", binaryByType.package(), u"it is a binary workbook (xlsb)"_s, FormatNotRead},
        {"package of something else", makePackage({{"a.txt", "x"}}), u"there is no workbook in it"_s, NotAWorkbook},
        {"PDF", "%PDF-1.7\n", u"it is a PDF document, not a workbook."_s, NotAWorkbook},
        {"picture", "\x89PNG\r\n\x1a\n", u"it is a picture, not a workbook."_s, NotAWorkbook},
        {"web page", "\xef\xbb\xbf\r\n <!DOCTYPE HTML>", u"it is a web page, not a workbook."_s, NotAWorkbook},
        {"XML", "<?xml version=\"1.0\"?><Workbook/>", u"it is an XML document, not a workbook."_s, NotAWorkbook},
        {"binary", QByteArray("a,b\0c", 5), u"it is neither a workbook nor text."_s, NotAWorkbook},
        {"UTF-16 with zeros", QByteArray::fromHex("fffe61000000"), u"it is neither"_s, NotAWorkbook},
    };
    for (const auto& [name, bytes, expected, cause] : cases) {
        const auto [sentence, found] = refusalOf(writeTemporary(u"Book.xlsx"_s, bytes));
        EXPECT_TRUE(sentence.contains(expected)) << name << ": " << sentence;
        EXPECT_EQ(found, cause) << name;
    }
    EXPECT_EQ(readCells("a,b", u"Book.xlsx"_s), u"1: A='a' B='b'"_s) << "the name says nothing";
    EXPECT_EQ(readCells(oneSheet().package(), u"Book.csv"_s), u"1: A=1"_s);
}

TEST(WorkbookFile, SaysThatAFileIsNotThere)
{
    for (const QString& path : {u"/nowhere/Book.xlsx"_s, u"/"_s}) {
        const ThrownError failure = failureOf([&] { WorkbookFile::open(path); });
        EXPECT_EQ(failure.number, RuntimeError::FileNotFound);
        EXPECT_EQ(failure.text, u"The workbook \"%1\" was not found."_s.arg(path));
    }
}

} // namespace lumivane::test
