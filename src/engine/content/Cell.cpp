#include "engine/content/Cell.h"

namespace lumivane::engine {

QString errorText(ErrorCode code)
{
    return QString::fromUtf8(errorNames[static_cast<size_t>(code)]);
}

} // namespace lumivane::engine
