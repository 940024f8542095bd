#include "support/XlsxWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdint>

namespace lumivane::test {

namespace {

constexpr const char* declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr const char* mainNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* relationshipNamespace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr const char* packageNamespace = "http://schemas.openxmlformats.org/package/2006/";

uint32_t checksum(const std::string& bytes)
{
    uint32_t sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? sum >> 1 ^ 0xedb88320 : sum >> 1;
    }
    return ~sum;
}

void put(QByteArray& to, uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        to.append(static_cast<char>(value >> (8 * i) & 0xff));
}

uint64_t claimed(long long claim, uint64_t truth)
{
    return claim < 0 ? truth : static_cast<uint64_t>(claim);
}

/// What a local and a central header have in common, from the flags to the length of the extra field.
void putCommon(QByteArray& to, const PackageEntry& entry)
{
    put(to, static_cast<uint64_t>(entry.flags), 2);
    put(to, static_cast<uint64_t>(entry.method), 2);
    put(to, 0, 4);
    put(to, claimed(entry.crc, checksum(entry.bytes)), 4);
    put(to, claimed(entry.packedSize, entry.bytes.size()), 4);
    put(to, claimed(entry.size, entry.bytes.size()), 4);
    put(to, entry.name.size(), 2);
    put(to, 0, 2);
}

std::string relationship(const std::string& id, const std::string& type, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + relationshipNamespace + "/" + type + "\" Target=\"" + target +
           "\"/>";
}

std::string relationships(const std::string& inside)
{
    return declaration + std::string("<Relationships xmlns=\"") + packageNamespace + "relationships\">" + inside +
           "</Relationships>";
}

std::string sheetPart(size_t index)
{
    return "worksheets/sheet" + std::to_string(index + 1) + ".xml";
}

} // namespace

QByteArray makePackage(const std::vector<PackageEntry>& entries)
{
    QByteArray bytes, directory;
    for (const PackageEntry& entry : entries) {
        const uint64_t offset = claimed(entry.offset, static_cast<uint64_t>(bytes.size()));
        bytes.append("PK\3\4");
        put(bytes, 20, 2);
        putCommon(bytes, entry);
        bytes.append(entry.name.data(), qsizetype(entry.name.size()));
        bytes.append(entry.bytes.data(), qsizetype(entry.bytes.size()));

        directory.append("PK\1\2");
        put(directory, 20, 2);
        put(directory, 20, 2);
        putCommon(directory, entry);
        put(directory, 0, 2);
        put(directory, 0, 4);
        put(directory, 0, 4);
        put(directory, offset, 4);
        directory.append(entry.name.data(), qsizetype(entry.name.size()));
    }
    const auto directoryOffset = static_cast<uint64_t>(bytes.size());
    bytes.append(directory);
    bytes.append("PK\5\6");
    put(bytes, 0, 4);
    put(bytes, entries.size(), 2);
    put(bytes, entries.size(), 2);
    put(bytes, static_cast<uint64_t>(directory.size()), 4);
    put(bytes, directoryOffset, 4);
    put(bytes, 0, 2);
    return bytes;
}

WorkbookParts::WorkbookParts(const std::vector<SheetXml>& sheets) : m_sheets(sheets)
{
    const std::string main = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
    set("[Content_Types].xml", declaration + std::string("<Types xmlns=\"") + packageNamespace +
                                   "content-types\"><Default Extension=\"rels\" ContentType=\"application/"
                                   "vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
                                   "ContentType=\"application/xml\"/><Override PartName=\"/xl/workbook.xml\" "
                                   "ContentType=\"" +
                                   main + "sheet.main+xml\"/></Types>");
    set("_rels/.rels", relationships(relationship("rId1", "officeDocument", "xl/workbook.xml")));
    std::string targets =
        relationship("styles", "styles", "styles.xml") + relationship("texts", "sharedStrings", "sharedStrings.xml");
    for (size_t i = 0; i < sheets.size(); ++i)
        targets += relationship("rId" + std::to_string(i + 1), "worksheet", sheetPart(i));
    set("xl/_rels/workbook.xml.rels", relationships(targets));
    writeWorkbook();
    styles("");
    sharedTexts({});
    for (size_t i = 0; i < sheets.size(); ++i)
        set("xl/" + sheetPart(i), declaration + std::string("<worksheet xmlns=\"") + mainNamespace + "\" xmlns:r=\"" +
                                      relationshipNamespace + "\">" + sheets[i].xml + "</worksheet>");
}

void WorkbookParts::writeWorkbook()
{
    std::string list;
    for (size_t i = 0; i < m_sheets.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        list += "<sheet name=\"" + m_sheets[i].name + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"" +
                (m_sheets[i].state.empty() ? "" : " state=\"" + m_sheets[i].state + "\"") + "/>";
    }
    set("xl/workbook.xml", declaration + std::string("<workbook xmlns=\"") + mainNamespace + "\" xmlns:r=\"" +
                               relationshipNamespace + "\">" + m_beforeSheets + "<sheets>" + list + "</sheets>" +
                               m_behindSheets + "</workbook>");
}

WorkbookParts& WorkbookParts::set(const std::string& name, const std::string& bytes)
{
    const auto place =
        std::find_if(entries.begin(), entries.end(), [&](const PackageEntry& entry) { return entry.name == name; });
    if (place != entries.end())
        place->bytes = bytes;
    else
        entries.push_back({name, bytes});
    return *this;
}

WorkbookParts& WorkbookParts::remove(const std::string& name)
{
    std::erase_if(entries, [&](const PackageEntry& entry) { return entry.name == name; });
    return *this;
}

WorkbookParts& WorkbookParts::sharedTexts(const std::vector<std::string>& texts)
{
    std::string inside;
    for (const std::string& text : texts)
        inside += "<si><t xml:space=\"preserve\">" + text + "</t></si>";
    return set("xl/sharedStrings.xml",
               declaration + std::string("<sst xmlns=\"") + mainNamespace + "\">" + inside + "</sst>");
}

WorkbookParts& WorkbookParts::styles(const std::string& xml)
{
    return set("xl/styles.xml",
               declaration + std::string("<styleSheet xmlns=\"") + mainNamespace + "\">" + xml + "</styleSheet>");
}

WorkbookParts& WorkbookParts::inWorkbook(const std::string& beforeSheets, const std::string& behindSheets)
{
    m_beforeSheets = beforeSheets;
    m_behindSheets = behindSheets;
    writeWorkbook();
    return *this;
}

QByteArray WorkbookParts::package() const
{
    return makePackage(entries);
}

QString writeTemporary(const QString& fileName, const QByteArray& bytes)
{
    static const QTemporaryDir folder;
    static int count = 0;
    const QString own = folder.filePath(QString::number(++count));
    QDir().mkpath(own);
    QFile file(QDir(own).filePath(fileName));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write a temporary file");
    return file.fileName();
}

} // namespace lumivane::test
