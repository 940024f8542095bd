#include "bench/ReadingFloor.h"

#include "engine/read/package/Package.h"

#include <QFile>
#include <algorithm>
#include <isa-l/igzip_lib.h>
#include <vector>

namespace lumivane::bench {

ReadingFloor::ReadingFloor(const QString& path) : m_path(path)
{
    const engine::Package package(path);
    const engine::Package::Entry* entry = package.find("xl/worksheets/sheet1.xml");
    m_offset = entry->offset + 30 + entry->name.size();
    m_packedSize = entry->packedSize;
}

size_t ReadingFloor::walk() const
{
    static std::vector<char> packed(64 << 10), plain(256 << 10);
    static inflate_state inflater;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(qint64(m_offset)))
        return 0;
    isal_inflate_init(&inflater);
    inflater.crc_flag = ISAL_DEFLATE;
    quint64 left = m_packedSize;
    size_t tags = 0;
    while (inflater.block_state != ISAL_BLOCK_FINISH) {
        if (inflater.avail_in == 0) {
            const qint64 count = file.read(packed.data(), qint64(std::min<quint64>(packed.size(), left)));
            left -= quint64(count);
            inflater.next_in = reinterpret_cast<uint8_t*>(packed.data());
            inflater.avail_in = uint32_t(count);
        }
        inflater.next_out = reinterpret_cast<uint8_t*>(plain.data());
        inflater.avail_out = uint32_t(plain.size());
        isal_inflate(&inflater);
        tags += size_t(std::count(plain.data(), plain.data() + plain.size() - inflater.avail_out, '<'));
    }
    return tags;
}

} // namespace lumivane::bench
