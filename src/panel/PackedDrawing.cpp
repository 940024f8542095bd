#include "panel/PackedDrawing.h"

#include <isa-l/igzip_lib.h>
#include <memory>

namespace lumivane {

namespace {

constexpr qint64 stepSize = 64 << 10;

} // namespace

bool isPackedDrawing(QIODevice& device)
{
    return device.peek(2) == QByteArray("\x1f\x8b", 2);
}

std::optional<QByteArray> unpackDrawing(QIODevice& device)
{
    const auto inflater = std::make_unique<inflate_state>();
    isal_inflate_init(inflater.get());
    inflater->crc_flag = ISAL_GZIP;
    QByteArray packed, text, step(stepSize, Qt::Uninitialized);
    while (inflater->block_state != ISAL_BLOCK_FINISH) {
        if (inflater->avail_in == 0) {
            packed = device.read(stepSize);
            inflater->next_in = reinterpret_cast<uint8_t*>(packed.data());
            inflater->avail_in = uint32_t(packed.size());
        }
        inflater->next_out = reinterpret_cast<uint8_t*>(step.data());
        inflater->avail_out = uint32_t(step.size());
        if (isal_inflate(inflater.get()) != ISAL_DECOMP_OK)
            return std::nullopt;
        const qsizetype count = step.size() - inflater->avail_out;
        const bool isCutShort = count == 0 && packed.isEmpty();
        if (isCutShort || text.size() + count > longestDrawing)
            return std::nullopt;
        text.append(step.constData(), count);
    }
    return text;
}

} // namespace lumivane
