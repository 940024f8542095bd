#include "bench/LargeWorkbook.h"

#include "support/XlsxWriter.h"

#include <cstdint>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <random>
#include <stdexcept>

namespace lumivane::bench {

using test::PackageEntry;

namespace {

std::string columnName(int column)
{
    std::string name;
    for (; column > 0; column = (column - 1) / 26)
        name.insert(name.begin(), static_cast<char>('A' + (column - 1) % 26));
    return name;
}

/// What one cell holds goes by its column, as in real tables.
void appendCell(std::string& xml, int row, int column, std::minstd_rand& random, int texts)
{
    const std::string place = columnName(column) + std::to_string(row);
    const auto number = [&](int below) { return std::to_string(random() % static_cast<unsigned>(below)); };
    switch (column % 10) {
    case 1:
    case 2:
    case 7:
        xml += "<c r=\"" + place + "\" s=\"1\" t=\"s\"><v>" + number(texts) + "</v></c>";
        break;
    case 3:
        xml += "<c r=\"" + place + "\" s=\"2\"><v>" + std::to_string(40000 + random() % 6000) + "</v></c>";
        break;
    case 4:
        xml += "<c r=\"" + place + "\"><v>" + number(1000) + "</v></c>";
        break;
    case 8:
        xml += "<c r=\"" + place + "\" s=\"5\" t=\"b\"><v>" + number(2) + "</v></c>";
        break;
    case 9:
        xml += "<c r=\"" + place + "\" s=\"3\"><f>SUM(D" + std::to_string(row) + ":F" + std::to_string(row) +
               ")</f><v>" + number(100000) + "." + number(10000) + "</v></c>";
        break;
    default:
        xml += "<c r=\"" + place + "\" s=\"4\"><v>" + number(1000000) + "." + number(1000000) + "</v></c>";
    }
}

std::string sheetXml(int rows, int columns, int texts, const std::string& conditions)
{
    std::minstd_rand random(7);
    const std::string last = columnName(columns) + std::to_string(rows);
    std::string xml = "<dimension ref=\"A1:" + last +
                      "\"/><sheetViews><sheetView workbookViewId=\"0\"/></sheetViews>"
                      "<sheetFormatPr defaultRowHeight=\"15\"/><sheetData>";
    for (int row = 1; row <= rows; ++row) {
        xml += "<row r=\"" + std::to_string(row) + "\" spans=\"1:" + std::to_string(columns) + "\">";
        for (int column = 1; column <= columns; ++column)
            appendCell(xml, row, column, random, texts);
        xml += "</row>";
    }
    return xml + "</sheetData>" + conditions +
           "<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" "
           "footer=\"0.3\"/>";
}

void deflate(PackageEntry& entry)
{
    std::string packed(entry.bytes.size() + 4096, '\0');
    std::string level(ISAL_DEF_LVL3_DEFAULT, '\0');
    isal_zstream stream;
    isal_deflate_init(&stream);
    stream.level = 3;
    stream.level_buf = reinterpret_cast<uint8_t*>(level.data());
    stream.level_buf_size = static_cast<uint32_t>(level.size());
    stream.end_of_stream = 1;
    stream.next_in = reinterpret_cast<uint8_t*>(entry.bytes.data());
    stream.avail_in = static_cast<uint32_t>(entry.bytes.size());
    stream.next_out = reinterpret_cast<uint8_t*>(packed.data());
    stream.avail_out = static_cast<uint32_t>(packed.size());
    if (isal_deflate(&stream) != COMP_OK || stream.internal_state.state != ZSTATE_END)
        throw std::runtime_error("cannot deflate");
    packed.resize(stream.total_out);
    entry.size = static_cast<long long>(entry.bytes.size());
    entry.crc = crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(entry.bytes.data()), entry.bytes.size());
    entry.method = 8;
    entry.bytes = std::move(packed);
}

} // namespace

std::string everyCondition(const std::string& cells)
{
    std::string xml = "<conditionalFormatting sqref=\"" + cells + "\">";
    int priority = 0;
    const auto add = [&](const std::string& attributes, const std::string& contents) {
        xml += "<cfRule dxfId=\"0\" priority=\"" + std::to_string(++priority) + "\" " + attributes + ">" + contents +
               "</cfRule>";
    };
    add("type=\"cellIs\" operator=\"between\"", "<formula>100</formula><formula>120</formula>");
    add("type=\"expression\"", "<formula>AND(MOD(ROW(),7)=0,$D1>AVERAGE($D$1:$D$30))</formula>");
    add("type=\"containsText\" operator=\"containsText\" text=\"11\"",
        "<formula>NOT(ISERROR(SEARCH(\"11\",A1)))</formula>");
    add("type=\"beginsWith\" operator=\"beginsWith\" text=\"9\"", "<formula>LEFT(A1,1)=\"9\"</formula>");
    add("type=\"containsBlanks\"", "<formula>LEN(TRIM(A1))=0</formula>");
    add("type=\"containsErrors\"", "<formula>ISERROR(A1)</formula>");
    add("type=\"timePeriod\" timePeriod=\"lastMonth\"", "");
    add("type=\"top10\" rank=\"3\"", "");
    add("type=\"top10\" rank=\"5\" percent=\"1\" bottom=\"1\"", "");
    add("type=\"aboveAverage\" stdDev=\"2\"", "");
    add("type=\"duplicateValues\"", "");
    add("type=\"uniqueValues\"", "");
    const std::string ends = "<cfvo type=\"min\"/><cfvo type=\"max\"/>";
    add("type=\"colorScale\"",
        "<colorScale>" + ends + "<color rgb=\"FFFFFFFF\"/><color rgb=\"FF63BE7B\"/></colorScale>");
    add("type=\"dataBar\"", "<dataBar>" + ends + "<color rgb=\"FF638EC6\"/></dataBar>");
    add("type=\"iconSet\"",
        "<iconSet iconSet=\"3Arrows\"><cfvo type=\"percent\" val=\"0\"/><cfvo type=\"percent\" val=\"33\"/>"
        "<cfvo type=\"percentile\" val=\"67\"/></iconSet>");
    return xml + "</conditionalFormatting>";
}

QByteArray largeWorkbook(int rows, int columns, const std::string& conditions)
{
    const int texts = rows / 4 + 10;
    test::WorkbookParts parts({{"Data", sheetXml(rows, columns, texts, conditions), ""}});
    std::vector<std::string> words;
    for (int i = 0; i < texts; ++i)
        words.push_back("Customer " + std::to_string(i * 37) + " of region " + std::to_string(i % 12));
    parts.sharedTexts(words);
    parts.styles("<fonts><font><sz val=\"11\"/><name val=\"Calibri\"/></font><font><b/></font></fonts><fills><fill/>"
                 "</fills><borders><border/></borders><cellXfs><xf/><xf fontId=\"1\"/><xf numFmtId=\"14\"/>"
                 "<xf numFmtId=\"4\"/><xf numFmtId=\"2\"/><xf><alignment horizontal=\"center\"/></xf></cellXfs>"
                 "<dxfs><dxf><font><b/><color rgb=\"FF9C0006\"/></font></dxf></dxfs>");
    for (PackageEntry& entry : parts.entries)
        deflate(entry);
    return parts.package();
}

} // namespace lumivane::bench
