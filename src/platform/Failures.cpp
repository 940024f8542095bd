#include "platform/Failures.h"

#include <new>
#include <stdexcept>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
constexpr int outOfMemory = 7;
constexpr int internalError = 51;
} // namespace

RuntimeError describedFailure(const std::exception& failure)
{
    if (const auto* known = dynamic_cast<const RuntimeError*>(&failure))
        return *known;
    // A length that no container can have is asked for by the same content as memory that nobody has.
    if (dynamic_cast<const std::bad_alloc*>(&failure) || dynamic_cast<const std::length_error*>(&failure))
        return {outOfMemory, u"There is not enough memory for this. Close other programs, or take a smaller range or "
                             "workbook, and try again."_s};
    return {internalError, u"The program failed in a way that it was not made for: "_s +
                               QString::fromUtf8(failure.what()) + u". Save your work and start it anew."_s};
}

} // namespace lumivane
