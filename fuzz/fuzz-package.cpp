#include "fuzz/ReadEverything.h"

// Whole files as they may come from anywhere: mostly the ZIP directory, and what a file is at all.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    lumivane::fuzz::readEverything(reinterpret_cast<const char*>(data), qint64(size));
    return 0;
}
