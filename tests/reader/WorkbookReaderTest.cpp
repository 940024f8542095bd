#include "host/embedded/reader/WorkbookReader.h"

#include "reader/ContentText.h"
#include "support/QtPrinting.h"
#include "support/XlsxWriter.h"

#include <QFile>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace embedded;
using namespace Qt::StringLiterals;

namespace {

const std::string oneCell = "<sheetData><row r='1'><c r='A1'><v>1</v></c></row></sheetData>";

std::shared_ptr<WorkbookContent> open(const WorkbookParts& parts)
{
    return readWorkbook(writeTemporary(u"Book.xlsx"_s, parts.package()));
}

QByteArray compoundFile(const char16_t* streamName)
{
    QByteArray bytes("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
    bytes.append(QByteArray(65530, '\0')); // so that the name lies across the blocks in which it is looked for
    const QStringView name(streamName);
    bytes.append(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
    return bytes + QByteArray(500, '\0');
}

} // namespace

TEST(WorkbookReader, ReadsSheetsNamesAndSettings)
{
    WorkbookParts parts(
        {{"First &amp; foremost", oneCell, ""}, {"B", oneCell, "hidden"}, {"C", oneCell, "veryHidden"}});
    parts.inWorkbook(
        "<workbookPr date1904='1'/><bookViews><workbookView activeTab='1'/></bookViews>",
        "<definedNames><definedName name='Area' localSheetId='2'>C!$A$1:$B$2</definedName>"
        "<definedName name='Rate'>0.5</definedName><definedName name='Lost' localSheetId='7'>1</definedName>"
        "</definedNames><calcPr fullCalcOnLoad='1'/>");
    const auto book = open(parts);
    ASSERT_EQ(book->sheets.size(), 3u);
    EXPECT_EQ(book->sheets[0].name, u"First & foremost"_s);
    EXPECT_TRUE(book->sheets[0].visible);
    EXPECT_FALSE(book->sheets[1].visible || book->sheets[2].visible);
    EXPECT_TRUE(book->date1904);
    EXPECT_TRUE(book->calculateOnOpen);
    EXPECT_EQ(book->activeSheet, 1);
    ASSERT_EQ(book->definedNames.size(), 3u);
    EXPECT_EQ(book->definedNames[0].formula, u"C!$A$1:$B$2"_s);
    EXPECT_EQ(book->definedNames[0].sheet, 2);
    EXPECT_EQ(book->definedNames[1].sheet, -1);
    EXPECT_EQ(book->definedNames[2].sheet, -1);
}

TEST(WorkbookReader, CountsDatesFrom1904WhereTheWorkbookDoes)
{
    WorkbookParts parts({{"A", "<sheetData><row r='1'><c t='d'><v>1904-01-02</v></c></row></sheetData>", ""}});
    EXPECT_EQ(readCells(parts.package()), "1: A=1463");
    parts.inWorkbook("<workbookPr date1904='true'/>", "");
    EXPECT_EQ(readCells(parts.package()), "1: A=1");
}

TEST(WorkbookReader, ReadsASheetOnceAndOnlyWhenAsked)
{
    WorkbookParts parts({{"Good", oneCell, ""}, {"Bad", "<sheetData><row>", ""}});
    const auto book = open(parts);
    EXPECT_EQ(book->sheet(0), book->sheet(0));
    EXPECT_THROW(book->sheet(1), RuntimeError);
    EXPECT_THROW(book->sheet(1), RuntimeError) << "a sheet that fails does not become a half one the second time";
    EXPECT_THROW(book->sheet(2), RuntimeError);
    EXPECT_THROW(book->sheet(-1), RuntimeError);
}

TEST(WorkbookReader, NoticesAFileThatChangedUnderneath)
{
    const QString path =
        writeTemporary(u"Book.xlsx"_s, WorkbookParts({{"A", oneCell, ""}, {"B", oneCell, ""}}).package());
    const auto book = readWorkbook(path);
    book->sheet(0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("x");
    file.close();
    EXPECT_NO_THROW(book->sheet(0)) << "read before";
    try {
        book->sheet(1);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.description().contains(u"has changed since it was opened"_s)) << error.what();
    }
}

TEST(WorkbookReader, FindsPartsByAnyPathAndStrictTypes)
{
    WorkbookParts parts({{"A", oneCell, ""}});
    parts.set("_rels/.rels", "<Relationships><Relationship Id='1' Target='/XL/Workbook.xml' "
                             "Type='http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument'/>"
                             "</Relationships>");
    parts.set("xl/_rels/workbook.xml.rels",
              "<r:Relationships xmlns:r='x'><r:Relationship Id='rId1' Target='./odd/../worksheets\\sheet1.xml' "
              "Type='a/worksheet'/></r:Relationships>");
    EXPECT_EQ(readCells(parts.package()), "1: A=1");
}

TEST(WorkbookReader, SaysWhatIsWrongWithAPackage)
{
    const WorkbookParts good({{"A", oneCell, ""}});
    const auto with = [&](const char* name, const std::string& bytes) {
        return WorkbookParts(good).set(name, bytes).package();
    };
    const auto without = [&](const char* name) { return WorkbookParts(good).remove(name).package(); };
    std::string fonts, runs;
    for (int i = 0; i <= 200000; ++i)
        fonts += "<font/>";
    for (int i = 0; i <= 2000000; ++i)
        runs += "<r><rPr/><t>a</t></r>";
    const struct
    {
        const char* name;
        QByteArray bytes;
        const char* expected;
    } cases[] = {
        {"too many styles", with("xl/styles.xml", "<styleSheet><fonts>" + fonts + "</fonts></styleSheet>"),
         "it has more than 200000 styles of one kind."},
        {"too many runs", with("xl/sharedStrings.xml", "<sst><si>" + runs + "</si></sst>"),
         "its texts have more than 2000000 changes of font."},
        {"no relationships", without("_rels/.rels"), "Book.xlsx\" cannot be read: there is no workbook in it."},
        {"no workbook", without("xl/workbook.xml"), "entry \"xl/workbook.xml\" is missing."},
        {"no types", without("[Content_Types].xml"), "entry \"[Content_Types].xml\" is missing."},
        {"styles missing", without("xl/styles.xml"), "entry \"xl/styles.xml\" is missing."},
        {"texts missing", without("xl/sharedStrings.xml"), "entry \"xl/sharedStrings.xml\" is missing."},
        {"sheet missing", without("xl/worksheets/sheet1.xml"), "its part \"xl/worksheets/sheet1.xml\" is missing"},
        {"styles broken", with("xl/styles.xml", "<styleSheet><a></styleSheet>"),
         "the XML of entry \"xl/styles.xml\" is broken (Start-end tags mismatch, near byte "},
        {"texts broken", with("xl/sharedStrings.xml", "<sst><si>"),
         "entry \"xl/sharedStrings.xml\": its XML is broken ("},
        {"another document", with("xl/workbook.xml", "<document/>"), "there is no workbook in it."},
        {"no sheets", with("xl/workbook.xml", "<workbook/>"), "there is no sheet in it."},
        {"empty sheet part", with("xl/worksheets/sheet1.xml", ""), "there is no element in it"},
    };
    for (const auto& one : cases) {
        const std::string failure = readFailure(one.bytes);
        EXPECT_NE(failure.find(one.expected), std::string::npos) << one.name << ": " << failure;
    }
}

TEST(WorkbookReader, TellsByTheFirstBytesWhatAFileIs)
{
    WorkbookParts binary({{"A", oneCell, ""}});
    binary.set("_rels/.rels", "<Relationships><Relationship Id='1' Target='xl/workbook.bin' "
                              "Type='x/officeDocument'/></Relationships>");
    WorkbookParts binaryByType({{"A", oneCell, ""}});
    binaryByType.set("[Content_Types].xml",
                     "<Types><Override PartName='/xl/workbook.xml' "
                     "ContentType='application/vnd.ms-excel.sheet.binary.macroEnabled.main'/></Types>");
    const struct
    {
        const char* name;
        QByteArray bytes;
        const char* expected;
        bool otherFormat;
    } cases[] = {
        {"empty", "", "Book.xlsx\" cannot be read: the file is empty.", false},
        {"encrypted", compoundFile(u"EncryptedPackage"), "it is protected by a password", false},
        {"old binary", compoundFile(u"Workbook"), "it is an old binary workbook (xls)", true},
        {"oldest binary", QByteArray("\x09\0\x04\0\x02\0\x10\0\0\0", 10), "it is an old binary workbook (xls)", true},
        {"OpenDocument", makePackage({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}),
         "it is an OpenDocument file", true},
        {"binary package", binary.package(), "it is a binary workbook (xlsb)", true},
        {"binary package by type", binaryByType.package(), "it is a binary workbook (xlsb)", true},
        {"package of something else", makePackage({{"a.txt", "x"}}), "there is no workbook in it", false},
        {"PDF", "%PDF-1.7\n", "it is a PDF document, not a workbook.", false},
        {"picture", "\x89PNG\r\n\x1a\n", "it is a picture, not a workbook.", false},
        {"web page", "\xef\xbb\xbf\r\n <!DOCTYPE HTML>", "it is a web page, not a workbook.", false},
        {"XML", "<?xml version=\"1.0\"?><Workbook/>", "it is an XML document, not a workbook.", false},
        {"binary", QByteArray("a,b\0c", 5), "it is neither a workbook nor text.", false},
        {"UTF-16 with zeros",
         QByteArray("\xff\xfe"
                    "a\0\0\0",
                    6),
         "it is neither a workbook nor text.", false},
    };
    for (const auto& one : cases) {
        const std::string failure = readFailure(one.bytes);
        EXPECT_NE(failure.find(one.expected), std::string::npos) << one.name << ": " << failure;
        bool otherFormat = false;
        try {
            readWorkbook(writeTemporary(u"Book.xlsx"_s, one.bytes));
        } catch (const FormatNotRead&) {
            otherFormat = true;
        } catch (const RuntimeError&) {
        }
        EXPECT_EQ(otherFormat, one.otherFormat) << one.name;
    }
    EXPECT_EQ(readCells("a,b", "Book.xlsx"), "1: A='a' B='b'") << "the name says nothing";
    EXPECT_EQ(readCells(WorkbookParts({{"A", oneCell, ""}}).package(), "Book.csv"), "1: A=1");
}

TEST(WorkbookReader, SaysThatAFileIsNotThere)
{
    for (const QString& path : {u"/nowhere/Book.xlsx"_s, u"/"_s}) {
        try {
            readWorkbook(path);
            FAIL();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), RuntimeError::FileNotFound);
            EXPECT_EQ(error.description(), u"The workbook \"%1\" was not found."_s.arg(path));
        }
    }
}

} // namespace lumivane::test
