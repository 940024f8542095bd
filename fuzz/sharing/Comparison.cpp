#include "thresholds/ThresholdFormula.h"

using namespace lumivane;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)evaluateComparison(text);
    (void)comparisonFault(text);
    return 0;
}
