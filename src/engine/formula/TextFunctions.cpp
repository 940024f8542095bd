#include "engine/formula/Function.h"
namespace lumivane::engine {
std::span<const Function> textFunctions()
{
    return {};
}
} // namespace lumivane::engine
