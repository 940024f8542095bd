#include "support/XlsxWriter.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>

namespace lumivane::test {

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

namespace {

/// A claim, where there is one, instead of the truth.
quint32 claimed(long long claim, size_t truth)
{
    return static_cast<quint32>(claim < 0 ? static_cast<long long>(truth) : claim);
}

/// What a local and a central header have in common, from the flags to the length of the name.
void putCommon(QDataStream& to, const PackageEntry& entry)
{
    to << quint16(entry.flags) << quint16(entry.method) << quint32(0) << claimed(entry.crc, checksum(entry.bytes))
       << claimed(entry.packedSize, entry.bytes.size()) << claimed(entry.size, entry.bytes.size())
       << quint16(entry.name.size());
}

void putBytes(QDataStream& to, const std::string& bytes)
{
    to.writeRawData(bytes.data(), int(bytes.size()));
}

std::string relationship(const std::string& id, const std::string& type, const std::string& target)
{
    return "<Relationship Id='" + id + "' Type='x/" + type + "' Target='" + target + "'/>";
}

std::string relationships(const std::string& inside)
{
    return "<Relationships>" + inside + "</Relationships>";
}

std::string drawingCorner(const std::string& tag, int column, int row)
{
    return "<xdr:" + tag + "><xdr:col>" + std::to_string(column) + "</xdr:col><xdr:row>" + std::to_string(row) +
           "</xdr:row></xdr:" + tag + ">";
}

std::string sheetPart(size_t index)
{
    return "worksheets/sheet" + std::to_string(index + 1) + ".xml";
}

} // namespace

QByteArray makePackage(const std::vector<PackageEntry>& entries)
{
    QByteArray bytes, directory;
    QDataStream file(&bytes, QIODevice::WriteOnly), list(&directory, QIODevice::WriteOnly);
    file.setByteOrder(QDataStream::LittleEndian);
    list.setByteOrder(QDataStream::LittleEndian);
    for (const PackageEntry& entry : entries) {
        const quint32 offset = claimed(entry.offset, size_t(bytes.size()));
        putBytes(file, "PK\3\4");
        file << quint16(20);
        putCommon(file, entry);
        file << quint16(0);
        putBytes(file, entry.name + entry.bytes);
        putBytes(list, "PK\1\2");
        list << quint16(20) << quint16(20);
        putCommon(list, entry);
        list << quint16(entry.extra.size()) << quint16(0) << quint32(0) << quint32(0) << offset;
        putBytes(list, entry.name + entry.extra);
    }
    const auto count = quint16(entries.size());
    const auto directoryOffset = quint32(bytes.size());
    putBytes(file, directory.toStdString() + "PK\5\6");
    file << quint32(0) << count << count << quint32(directory.size()) << directoryOffset << quint16(0);
    return bytes;
}

WorkbookParts::WorkbookParts(const std::vector<SheetXml>& sheets) : m_sheets(sheets)
{
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
        set("xl/" + sheetPart(i), "<worksheet>" + sheets[i].xml + "</worksheet>");
}

void WorkbookParts::writeWorkbook()
{
    std::string list;
    for (size_t i = 0; i < m_sheets.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        list += "<sheet name=\"" + m_sheets[i].name + "\" sheetId='" + number + "' r:id='rId" + number + "'" +
                (m_sheets[i].state.empty() ? "" : " state='" + m_sheets[i].state + "'") + "/>";
    }
    set("xl/workbook.xml",
        "<workbook>" + m_beforeSheets + "<sheets>" + list + "</sheets>" + m_behindSheets + "</workbook>");
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
    return set("xl/sharedStrings.xml", "<sst>" + inside + "</sst>");
}

WorkbookParts& WorkbookParts::styles(const std::string& xml)
{
    return set("xl/styles.xml", "<styleSheet>" + xml + "</styleSheet>");
}

WorkbookParts& WorkbookParts::drawings(const std::string& anchors)
{
    set("xl/worksheets/_rels/sheet1.xml.rels", relationships(relationship("d", "drawing", "../drawings/drawing1.xml")));
    set("xl/drawings/_rels/drawing1.xml.rels", relationships(relationship("c", "chart", "../charts/chart1.xml") +
                                                             relationship("p", "image", "../media/image1.png")));
    return set("xl/drawings/drawing1.xml", "<xdr:wsDr>" + anchors + "</xdr:wsDr>");
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

std::string drawingAnchor(int column, int row, int endColumn, int endRow, const std::string& object)
{
    return "<xdr:twoCellAnchor>" + drawingCorner("from", column, row) + drawingCorner("to", endColumn, endRow) +
           object + "<xdr:clientData/></xdr:twoCellAnchor>";
}

std::string sizedAnchor(int column, int row, int width, int height, const std::string& object)
{
    constexpr int emuPerPixel = 9525;
    return "<xdr:oneCellAnchor>" + drawingCorner("from", column, row) + "<xdr:ext cx='" +
           std::to_string(width * emuPerPixel) + "' cy='" + std::to_string(height * emuPerPixel) + "'/>" + object +
           "<xdr:clientData/></xdr:oneCellAnchor>";
}

std::string chartObject(const std::string& name, const std::string& attributes)
{
    return "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id='2' name='" + name + "'" + attributes +
           "/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><a:graphic><a:graphicData><c:chart r:id='c'/>"
           "</a:graphicData></a:graphic></xdr:graphicFrame>";
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
