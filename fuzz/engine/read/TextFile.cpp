#include "engine/read/csv/CsvReader.h"
#include "engine/read/package/ReadError.h"
#include "fuzz/engine/read/ReadEverything.h"

// Text files: decoding, separators, quotes, and what their fields stand for.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane::engine;
    try {
        SheetList sheets;
        CsvReader(lumivane::fuzz::fileOf(data, size)).readWorkbook(sheets, maxWorkbookBytes);
    } catch (const Fault&) {
    }
    return 0;
}
