#include "engine/formula/Function.h"
namespace lumivane::engine {
std::span<const Function> statisticFunctions()
{
    return {};
}
} // namespace lumivane::engine
