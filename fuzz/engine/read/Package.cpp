#include "fuzz/engine/read/ReadEverything.h"

// Whole files as they may come from anywhere: mostly the ZIP directory, and what a file is at all.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    lumivane::fuzz::readEverything(lumivane::fuzz::fileOf(data, size));
    return 0;
}
