#pragma once

#include <cstddef>

namespace lumivane::engine {

/// Bytes that come one after the other and are never all in memory.
class ByteStream
{
public:
    virtual ~ByteStream() = default;
    /// Writes between 1 and `most` bytes and returns how many; 0 at the end. Throws Fault where the bytes are damaged.
    virtual size_t read(char* to, size_t most) = 0;
};

} // namespace lumivane::engine
