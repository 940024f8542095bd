#include "TextBoxes.h"

#include "platform/RuntimeError.h"

#include <QFile>
#include <memory>
#include <zip.h>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

constexpr int pixel = 9525; ///< in the units of drawings

QString corner(const QString& name, int row, int column, int offset)
{
    return u"<xdr:%1><xdr:col>%2</xdr:col><xdr:colOff>%3</xdr:colOff><xdr:row>%4</xdr:row><xdr:rowOff>%3</xdr:rowOff>"
           "</xdr:%1>"_s.arg(name)
               .arg(column - 1)
               .arg(offset)
               .arg(row - 1);
}

QString boxXml(const TextBox& box, int id)
{
    const CellArea& cells = box.cells;
    return u"<xdr:twoCellAnchor>"_s + corner(u"from"_s, cells.firstRow, cells.firstColumn, 6 * pixel) +
           corner(u"to"_s, cells.lastRow + 1, cells.lastColumn + 1, 0) +
           u"<xdr:sp macro=\"\" textlink=\"\"><xdr:nvSpPr><xdr:cNvPr id=\"%1\" name=\"%2\"/><xdr:cNvSpPr txBox=\"1\"/>"
           "</xdr:nvSpPr><xdr:spPr><a:prstGeom prst=\"roundRect\"><a:avLst/></a:prstGeom>"
           "<a:solidFill><a:srgbClr val=\"FFF6DD\"/></a:solidFill>"
           "<a:ln w=\"9525\"><a:solidFill><a:srgbClr val=\"D9A521\"/></a:solidFill></a:ln></xdr:spPr>"
           "<xdr:txBody><a:bodyPr wrap=\"square\" lIns=\"36000\" tIns=\"18000\" rIns=\"36000\" bIns=\"18000\" "
           "anchor=\"ctr\"/><a:p><a:pPr algn=\"ctr\"/><a:r><a:rPr lang=\"en-US\" sz=\"1000\"><a:solidFill>"
           "<a:srgbClr val=\"8A5A00\"/></a:solidFill></a:rPr><a:t>%3</a:t></a:r></a:p></xdr:txBody></xdr:sp>"
           "<xdr:clientData/></xdr:twoCellAnchor>"_s.arg(id)
               .arg(box.name.toHtmlEscaped(), box.text.toHtmlEscaped());
}

struct CloseZip
{
    void operator()(zip_t* zip) const { zip_discard(zip); }
};

[[noreturn]] void fail(const QString& workbook)
{
    throw RuntimeError(RuntimeError::ApplicationDefined, u"No text boxes can be added to %1."_s.arg(workbook));
}

QByteArray entryBytes(zip_t* zip, zip_uint64_t index)
{
    zip_stat_t about;
    if (zip_stat_index(zip, index, 0, &about) != 0)
        return {};
    QByteArray bytes(qsizetype(about.size), '\0');
    zip_file_t* file = zip_fopen_index(zip, index, 0);
    const zip_int64_t read = file ? zip_fread(file, bytes.data(), about.size) : -1;
    if (file)
        zip_fclose(file);
    return read == bytes.size() ? bytes : QByteArray();
}

} // namespace

void addTextBoxes(const QString& workbook, int drawing, const QList<TextBox>& boxes)
{
    std::unique_ptr<zip_t, CloseZip> owner(zip_open(QFile::encodeName(workbook).constData(), 0, nullptr));
    zip_t* zip = owner.get();
    const QByteArray part = "xl/drawings/drawing" + QByteArray::number(drawing) + ".xml";
    const zip_int64_t index = zip ? zip_name_locate(zip, part.constData(), 0) : -1;
    if (index < 0)
        fail(workbook);
    QByteArray xml = entryBytes(zip, zip_uint64_t(index));
    const qsizetype end = xml.lastIndexOf("</xdr:wsDr>");
    if (end < 0)
        fail(workbook);
    QString added;
    int id = 1000; // pictures of the part have small ones
    for (const TextBox& box : boxes)
        added += boxXml(box, ++id);
    xml.insert(end, added.toUtf8());
    zip_source_t* source = zip_source_buffer(zip, xml.constData(), zip_uint64_t(xml.size()), 0);
    if (!source || zip_file_replace(zip, zip_uint64_t(index), source, 0) != 0)
        fail(workbook);
    zip_file_set_dostime(zip, zip_uint64_t(index), 0, (1 << 5) | 1, 0); // equal contents give equal bytes
    if (zip_close(zip) != 0)
        fail(workbook);
    static_cast<void>(owner.release()); // closed is freed
}

} // namespace lumivane::demo
