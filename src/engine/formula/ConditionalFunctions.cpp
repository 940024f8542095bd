#include "engine/formula/Function.h"
namespace lumivane::engine {
std::span<const Function> conditionalFunctions()
{
    return {};
}
} // namespace lumivane::engine
