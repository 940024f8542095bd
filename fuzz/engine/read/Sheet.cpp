#include "engine/read/package/ReadError.h"
#include "engine/read/xlsx/SheetReader.h"

#include <cstdlib>

// The scanner of sheets alone, with input that arrives in pieces: the first byte says how large they are.

namespace {

class Pieces : public lumivane::engine::ByteStream
{
public:
    Pieces(std::string_view bytes, size_t piece) : m_rest(bytes), m_piece(piece) {}
    size_t read(char* to, size_t most) override
    {
        const size_t count = std::min({most, m_piece, m_rest.size()});
        m_rest.copy(to, count);
        m_rest.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_rest;
    size_t m_piece;
};

struct Outcome
{
    bool read = false;
    lumivane::engine::SheetContent sheet;
};

Outcome readIn(std::string_view bytes, size_t piece)
{
    using namespace lumivane::engine;
    static const Palette palette;
    Pieces stream(bytes, piece);
    Outcome outcome;
    try {
        SheetReader(stream, {palette, {}, 10, 3, false, bytes.size()}, outcome.sheet).read();
        outcome.read = true;
    } catch (const Fault&) {
    }
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const Outcome pieces = readIn(bytes, data[0] + 1u), whole = readIn(bytes, size);
    // However the bytes arrive, they say the same.
    if (pieces.read != whole.read)
        abort();
    if (whole.read &&
        (pieces.sheet.cells.size() != whole.sheet.cells.size() || pieces.sheet.rows.size() != whole.sheet.rows.size()))
        abort();
    return 0;
}
