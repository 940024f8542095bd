#include "engine/content/Cell.h"

namespace lumivane::engine {

QString errorText(ErrorCode code)
{
    static const char* const texts[] = {"#NULL!", "#DIV/0!", "#VALUE!",       "#REF!",   "#NAME?",
                                        "#NUM!",  "#N/A",    "#GETTING_DATA", "#SPILL!", "#CALC!"};
    return QString::fromLatin1(texts[static_cast<size_t>(code)]);
}

} // namespace lumivane::engine
