#include "fuzz/engine/read/ReadEverything.h"
#include "support/XlsxWriter.h"

#include <string>

// Parts with foreign contents in a package that is in order, so that checksums do not keep the contents from being
// read. The input is cut at bytes 0x01 into: sheet, shared texts, styles, theme, drawing, relationships, workbook.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using lumivane::test::WorkbookParts;
    static constexpr const char* names[] = {
        "xl/worksheets/sheet1.xml", "xl/sharedStrings.xml",     "xl/styles.xml",
        "xl/theme/theme1.xml",      "xl/drawings/drawing1.xml", "xl/worksheets/_rels/sheet1.xml.rels",
        "xl/workbook.xml"};
    WorkbookParts parts({{"Data", "<sheetData/><drawing r:id='d'/>", ""}});
    parts.set("xl/worksheets/_rels/sheet1.xml.rels",
              "<R><Relationship Id='d' Type='x/drawing' Target='../drawings/drawing1.xml'/></R>");
    parts.set("xl/_rels/workbook.xml.rels",
              "<R><Relationship Id='rId1' Type='x/worksheet' Target='worksheets/sheet1.xml'/>"
              "<Relationship Id='a' Type='x/sharedStrings' Target='sharedStrings.xml'/>"
              "<Relationship Id='b' Type='x/styles' Target='styles.xml'/>"
              "<Relationship Id='c' Type='x/theme' Target='theme/theme1.xml'/></R>");
    parts.set("xl/theme/theme1.xml", "<theme/>");
    parts.set("xl/drawings/drawing1.xml", "<wsDr/>");
    std::string rest(reinterpret_cast<const char*>(data), size);
    for (const char* name : names) {
        const size_t end = std::min(rest.find('\x01'), rest.size());
        if (end > 0)
            parts.set(name, rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    const QByteArray package = parts.package();
    lumivane::fuzz::readEverything(lumivane::fuzz::fileOf(package.constData(), size_t(package.size())));
    return 0;
}
