#include "engine/formula/Function.h"
namespace lumivane::engine {
std::span<const Function> mathFunctions()
{
    return {};
}
} // namespace lumivane::engine
