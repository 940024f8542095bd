#pragma once

#include "platform/RuntimeError.h"
#include "support/QtPrinting.h"

namespace lumivane::test {

/// The RuntimeError that an action ends with; 0 and no text where it ends well.
struct ThrownError
{
    int number = 0;
    QString text;
};

template <class Action>
ThrownError failureOf(Action&& action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return {error.number(), error.description()};
    }
    return {};
}

} // namespace lumivane::test
