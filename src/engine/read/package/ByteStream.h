#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace lumivane::engine {

/// Bytes that come one after the other and are never all in memory.
class ByteStream
{
public:
    virtual ~ByteStream() = default;
    /// Writes between 1 and `most` bytes and returns how many; 0 at the end. Throws Fault where the bytes are damaged.
    virtual size_t read(char* to, size_t most) = 0;
};

/// Bytes that are in memory already.
class MemoryStream : public ByteStream
{
public:
    explicit MemoryStream(std::string bytes) : m_bytes(std::move(bytes)) {}
    size_t read(char* to, size_t most) override
    {
        const size_t count = std::min(most, m_bytes.size() - m_at);
        std::memcpy(to, m_bytes.data() + m_at, count);
        m_at += count;
        return count;
    }

private:
    std::string m_bytes;
    size_t m_at = 0;
};

} // namespace lumivane::engine
