#include "engine/format/NumberFormat.h"

#include <cstdlib>
#include <cstring>

// Format codes come from files: the first bytes are the value, the rest is the code.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane::engine;
    double value = 0;
    if (size < sizeof value)
        return 0;
    std::memcpy(&value, data, sizeof value);
    const QString code = QString::fromUtf8(reinterpret_cast<const char*>(data) + sizeof value,
                                           static_cast<qsizetype>(size - sizeof value));
    const NumberFormat format(code);
    for (const int chars : {1, 11, NumberFormat::unlimited}) {
        const FormattedText shown = format.number(value, chars == 11, chars);
        if (shown.fillPosition > shown.text.size())
            std::abort();
    }
    format.text(code);
    return 0;
}
