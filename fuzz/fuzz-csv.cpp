#include "engine/read/csv/CsvWorkbook.h"
#include "engine/read/Fault.h"

// Text files: decoding, separators, quotes, and what their fields stand for.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane::engine;
    try {
        CsvWorkbook book(QStringLiteral("Table.csv"), std::string(reinterpret_cast<const char*>(data), size), 2026);
        book.sheet(0);
    } catch (const Fault&) {
    }
    return 0;
}
