#include "engine/draw/SheetPainter.h"
#include "fuzz/engine/read/ReadEverything.h"
#include "support/XlsxWriter.h"

#include <QGuiApplication>
#include <string>

// What stands in a drawing part: read, and drawn into a small picture.

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz-drawing";
    static char* arguments[] = {name, nullptr};
    static QGuiApplication application(count, arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane;
    test::WorkbookParts parts({{"Data", "<sheetData/><drawing r:id='d'/>", ""}});
    parts.drawings("");
    parts.set("xl/drawings/drawing1.xml", std::string(reinterpret_cast<const char*>(data), size));
    parts.set("xl/media/image1.png",
              "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><path d='M0 0h9'/></svg>");
    const QByteArray package = parts.package();
    try {
        const auto file = engine::WorkbookFile::open(fuzz::fileOf(package.constData(), size_t(package.size())));
        const auto shown = std::make_shared<engine::ShownSheet>(file->content(), file->sheet(0));
        engine::SheetPainter(shown).image({1, 1, 12, 6});
    } catch (const RuntimeError&) {
    }
    return 0;
}
