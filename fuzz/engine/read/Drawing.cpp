#include "engine/draw/DrawingLayer.h"
#include "engine/draw/SheetPainter.h"
#include "fuzz/engine/read/ReadEverything.h"
#include "support/XlsxWriter.h"

#include <QGuiApplication>
#include <string>

// What is drawn of a sheet beside its plain cells: read, evaluated, and drawn into a small picture. The input is cut at
// bytes 0x01 into: drawing, controls, comments, what stands behind the cells (conditional formats, small charts), and
// the looks that those name.

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz-drawing";
    static char* arguments[] = {name, nullptr};
    static QGuiApplication application(count, arguments);
    return 0;
}

namespace {

const std::string cells =
    "<sheetData><row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>-2.5</v></c><c r='C1' t='str'><v>apple</v></c></row>"
    "<row r='2'><c r='A2'><v>46351</v></c><c r='B2' t='b'><v>1</v></c><c r='C2' t='e'><v>#N/A</v></c></row>"
    "<row r='3' hidden='1'><c r='A3'><v>3</v></c></row><row r='4'><c r='A4'><v>3</v></c><c r='B4' t='str'><v>Apple</v>"
    "</c></row></sheetData>";

const std::string relationships = "<R><Relationship Id='d' Type='x/drawing' Target='../drawings/drawing1.xml'/>"
                                  "<Relationship Id='v' Type='x/vmlDrawing' Target='../drawings/v.vml'/>"
                                  "<Relationship Id='c' Type='x/comments' Target='../comments1.xml'/></R>";

/// The beginning of a text up to the byte 0x01, which is taken off it, too.
std::string cut(std::string& from)
{
    const size_t end = std::min(from.find('\x01'), from.size());
    std::string part = from.substr(0, end);
    from.erase(0, end + 1);
    return part;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane;
    std::string rest(reinterpret_cast<const char*>(data), size);
    const std::string drawing = cut(rest), controls = cut(rest), comments = cut(rest), behind = cut(rest);
    test::WorkbookParts parts({{"Data", cells + behind + "<drawing r:id='d'/><legacyDrawing r:id='v'/>", ""}});
    parts.drawings("");
    parts.styles("<dxfs>" + rest + "</dxfs>");
    parts.set("xl/drawings/drawing1.xml", drawing.empty() ? "<wsDr/>" : drawing);
    parts.set("xl/drawings/v.vml", controls.empty() ? "<xml/>" : controls);
    parts.set("xl/comments1.xml", comments.empty() ? "<comments/>" : comments);
    parts.set("xl/worksheets/_rels/sheet1.xml.rels", relationships);
    parts.set("xl/media/image1.png",
              "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><path d='M0 0h9'/></svg>");
    const QByteArray package = parts.package();
    try {
        const auto file = engine::WorkbookFile::open(fuzz::fileOf(package.constData(), size_t(package.size())));
        const auto shown = std::make_shared<engine::ShownSheet>(file->content(), file->sheet(0));
        constexpr CellArea area{1, 1, 12, 6};
        engine::SheetPainter(shown).image(area);
        shown->conditionsLeftOut(area);
        for (const engine::DrawingContent& one : file->sheet(0)->drawings)
            engine::drawingGap(one);
    } catch (const RuntimeError&) {
    }
    return 0;
}
