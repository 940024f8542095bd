#include "Zip.h"

#include <QtEndian>
#include <array>

namespace lumivane::demo {

namespace {

quint32 zipChecksum(const QByteArray& bytes)
{
    static const auto table = [] {
        std::array<quint32, 256> values;
        for (quint32 n = 0; n < values.size(); ++n) {
            quint32 value = n;
            for (int bit = 0; bit < 8; ++bit)
                value = (value >> 1) ^ (value & 1 ? 0xedb88320u : 0);
            values[n] = value;
        }
        return values;
    }();
    quint32 sum = ~0u;
    for (const char byte : bytes)
        sum = (sum >> 8) ^ table[(sum ^ quint8(byte)) & 0xff];
    return ~sum;
}

/// Raw deflate data: what qCompress gives between its own length, the two bytes of header and the closing checksum.
QByteArray deflated(const QByteArray& bytes)
{
    return qCompress(bytes, 6).mid(6).chopped(4);
}

template <class... Numbers>
QByteArray littleEndian(Numbers... numbers)
{
    QByteArray result;
    const auto append = [&](auto number) {
        char bytes[sizeof number];
        qToLittleEndian(number, bytes);
        result.append(bytes, sizeof number);
    };
    (append(numbers), ...);
    return result;
}

} // namespace

QByteArray zipArchive(const QList<std::pair<QByteArray, QByteArray>>& entries)
{
    constexpr quint16 version = 20, deflate = 8, dosTime = 0, dosDate = (46 << 9) | (1 << 5) | 1;
    QByteArray archive, directory;
    for (const auto& [name, bytes] : entries) {
        const QByteArray packed = deflated(bytes);
        const QByteArray described =
            littleEndian(version, quint16(0), deflate, dosTime, dosDate, zipChecksum(bytes), quint32(packed.size()),
                         quint32(bytes.size()), quint16(name.size()), quint16(0));
        directory += "PK\1\2" + littleEndian(version) + described +
                     littleEndian(quint16(0), quint16(0), quint16(0), quint32(0), quint32(archive.size())) + name;
        archive += "PK\3\4" + described + name + packed;
    }
    const auto count = quint16(entries.size());
    return archive + directory + "PK\5\6" +
           littleEndian(quint16(0), quint16(0), count, count, quint32(directory.size()), quint32(archive.size()),
                        quint16(0));
}

} // namespace lumivane::demo
