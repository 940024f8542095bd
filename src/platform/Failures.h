#pragma once

#include "platform/RuntimeError.h"

namespace lumivane {

/// A failure as the log and the user get it: a RuntimeError as it is, one of the C++ library in a sentence.
RuntimeError describedFailure(const std::exception& failure);

} // namespace lumivane
