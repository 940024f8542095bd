#include "engine/formula/Function.h"
namespace lumivane::engine {
std::span<const Function> dateFunctions()
{
    return {};
}
} // namespace lumivane::engine
