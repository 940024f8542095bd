#include "engine/read/package/Package.h"

#include "engine/read/package/ReadError.h"

#include <algorithm>
#include <array>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <numeric>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t localHeaderSize = 30;
constexpr size_t centralHeaderSize = 46;
constexpr size_t endRecordSize = 22;
constexpr quint32 sizeIn64 = 0xffffffff;

quint64 littleEndian(const char* from, int bytes)
{
    quint64 value = 0;
    for (int i = bytes - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(from[i]);
    return value;
}

quint16 number16(const char* from)
{
    return static_cast<quint16>(littleEndian(from, 2));
}

quint32 number32(const char* from)
{
    return static_cast<quint32>(littleEndian(from, 4));
}

quint64 number64(const char* from)
{
    return littleEndian(from, 8);
}

QString entryText(const Package::Entry& entry)
{
    return u"entry \""_s + QString::fromUtf8(entry.name.data(), qsizetype(std::min<size_t>(entry.name.size(), 200))) +
           u'"';
}

std::string smallLetters(std::string_view name)
{
    std::string small(name);
    for (char& letter : small) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return small;
}

/// Sizes and offset that did not fit into 32 bits stand in an extra field, in a fixed order, each only if needed.
void readExtra64(std::string_view extra, Package::Entry& entry)
{
    while (extra.size() >= 4) {
        const quint16 kind = number16(extra.data());
        const size_t size = number16(extra.data() + 2);
        if (extra.size() < 4 + size)
            break;
        std::string_view field = extra.substr(4, size);
        extra.remove_prefix(4 + size);
        if (kind != 1)
            continue;
        for (quint64* value : {&entry.size, &entry.packedSize, &entry.offset}) {
            if (*value != sizeIn64)
                continue;
            if (field.size() < 8)
                throw Fault{entryText(entry) + u" has a damaged size"_s};
            *value = number64(field.data());
            field.remove_prefix(8);
        }
        return;
    }
}

} // namespace

/// One entry's bytes, inflated through a buffer of fixed size.
class EntryStream : public ByteStream
{
public:
    EntryStream(const Package& package, const Package::Entry& entry)
        : m_package(package), m_entry(entry), m_offset(package.dataOffset(entry)), m_packedLeft(entry.packedSize)
    {
        if (entry.method == 8) {
            m_packed.resize(std::min<quint64>(packedBuffer, std::max<quint64>(entry.packedSize, 1)));
            m_inflater = std::make_unique<inflate_state>();
            isal_inflate_init(m_inflater.get());
            m_inflater->crc_flag = ISAL_DEFLATE;
        }
    }

    size_t read(char* to, size_t most) override
    {
        most = std::min(most, size_t(1) << 30);
        const size_t count = m_inflater ? inflate(to, most) : copy(to, most);
        m_crc = crc32_gzip_refl(m_crc, reinterpret_cast<const unsigned char*>(to), count);
        m_total += count;
        if (m_total > m_entry.size || (count == 0 && m_total != m_entry.size))
            throw Fault{entryText(m_entry) + u" has another size than the file's directory says"_s};
        if (count == 0 && m_crc != m_entry.crc)
            throw Fault{entryText(m_entry) + u" does not match its checksum"_s};
        return count;
    }

private:
    static constexpr quint64 packedBuffer = 64 << 10;

    size_t copy(char* to, size_t most)
    {
        const size_t count = m_package.readAt(m_offset, to, std::min<quint64>(most, m_packedLeft));
        advance(count);
        return count;
    }

    size_t inflate(char* to, size_t most)
    {
        m_inflater->next_out = reinterpret_cast<uint8_t*>(to);
        m_inflater->avail_out = static_cast<uint32_t>(most);
        while (m_inflater->avail_out == most && m_inflater->block_state != ISAL_BLOCK_FINISH) {
            if (m_inflater->avail_in == 0 && m_packedLeft > 0)
                refill();
            const uint32_t inBefore = m_inflater->avail_in;
            if (isal_inflate(m_inflater.get()) != ISAL_DECOMP_OK)
                throw Fault{entryText(m_entry) + u" cannot be inflated"_s};
            const bool stuck = m_inflater->avail_out == most && m_inflater->avail_in == inBefore;
            const bool starved = m_packedLeft == 0 || m_inflater->avail_in > 0;
            if (stuck && starved && m_inflater->block_state != ISAL_BLOCK_FINISH)
                throw Fault{entryText(m_entry) + u" ends in the middle"_s};
        }
        return most - m_inflater->avail_out;
    }

    void refill()
    {
        const size_t count =
            m_package.readAt(m_offset, m_packed.data(), std::min<quint64>(m_packed.size(), m_packedLeft));
        advance(count);
        m_inflater->next_in = reinterpret_cast<uint8_t*>(m_packed.data());
        m_inflater->avail_in = static_cast<uint32_t>(count);
    }

    void advance(size_t count)
    {
        m_offset += count;
        m_packedLeft -= count;
    }

    const Package& m_package;
    const Package::Entry& m_entry;
    quint64 m_offset;
    quint64 m_packedLeft;
    quint64 m_total = 0;
    quint32 m_crc = 0;
    std::vector<char> m_packed;
    std::unique_ptr<inflate_state> m_inflater; ///< null for an entry that is stored as it is
};

Package::Package(const QString& path) : m_file(path)
{
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw Fault{u"it cannot be opened ("_s + m_file.errorString() + u')', ReadCause::NotOpened};
    m_fileSize = static_cast<quint64>(m_file.size());
    const Directory directory = findDirectory();
    readEntries(directory);
    checkOverlaps(directory.offset);
}

size_t Package::readAt(quint64 offset, char* to, size_t count) const
{
    if (!m_file.seek(static_cast<qint64>(offset)) || m_file.read(to, static_cast<qint64>(count)) != qint64(count))
        throw Fault{u"it cannot be read to its end"_s};
    return count;
}

std::string Package::bytesAt(quint64 offset, quint64 count) const
{
    if (offset > m_fileSize || count > m_fileSize - offset)
        throw Fault{u"it is cut off or damaged (its directory points behind its end)"_s};
    std::string bytes(count, '\0');
    readAt(offset, bytes.data(), count);
    return bytes;
}

Package::Directory Package::findDirectory() const
{
    const quint64 tailSize = std::min<quint64>(m_fileSize, endRecordSize + 0xffff);
    const quint64 tailOffset = m_fileSize - tailSize;
    const std::string tail = bytesAt(tailOffset, tailSize);
    for (size_t at = tail.rfind("PK\5\6"); at != std::string::npos; at = at ? tail.rfind("PK\5\6", at - 1) : at - 1) {
        if (tail.size() - at < endRecordSize)
            continue;
        const char* record = tail.data() + at;
        if (at + endRecordSize + number16(record + 20) > tail.size())
            continue;
        const Directory directory{number32(record + 16), number32(record + 12), number16(record + 10)};
        return readDirectory64(tailOffset + at, directory);
    }
    throw Fault{u"it is cut off or damaged (the directory of its entries is missing)"_s};
}

Package::Directory Package::readDirectory64(quint64 endOffset, Directory found) const
{
    constexpr quint64 locatorSize = 20, recordSize = 56;
    const bool needed = found.offset == sizeIn64 || found.size == sizeIn64 || found.count == 0xffff;
    if (needed && endOffset >= locatorSize) {
        const std::string locator = bytesAt(endOffset - locatorSize, locatorSize);
        if (locator.starts_with("PK\6\7")) {
            const std::string record = bytesAt(number64(locator.data() + 8), recordSize);
            if (!record.starts_with("PK\6\6"))
                throw Fault{u"it is damaged (the directory of its entries is not where it should be)"_s};
            found = {number64(record.data() + 48), number64(record.data() + 40), number64(record.data() + 32)};
        }
    }
    if (found.offset > endOffset || found.size > endOffset - found.offset)
        throw Fault{u"it is cut off or damaged (its directory points behind its end)"_s};
    if (found.size > maxDirectorySize)
        throw Fault{u"the directory of its entries takes more than %1 MB"_s.arg(maxDirectorySize >> 20),
                    ReadCause::TooLarge};
    if (found.count > maxEntries)
        throw Fault{u"it has %1 entries; at most %2 are read"_s.arg(found.count).arg(maxEntries), ReadCause::TooLarge};
    return found;
}

void Package::readEntries(const Directory& directory)
{
    const std::string bytes = bytesAt(directory.offset, directory.size);
    quint64 total = 0;
    size_t at = 0;
    for (quint64 i = 0; i < directory.count; ++i) {
        const char* header = bytes.data() + at;
        if (bytes.size() - at < centralHeaderSize || std::string_view(header, 4) != "PK\1\2")
            throw Fault{u"it is damaged (the directory of its entries breaks off)"_s};
        const size_t nameSize = number16(header + 28), extraSize = number16(header + 30);
        const size_t whole = centralHeaderSize + nameSize + extraSize + number16(header + 32);
        if (bytes.size() - at < whole)
            throw Fault{u"it is damaged (the directory of its entries breaks off)"_s};
        Entry entry{std::string(header + centralHeaderSize, nameSize),
                    number32(header + 42),
                    number32(header + 20),
                    number32(header + 24),
                    number32(header + 16),
                    number16(header + 10)};
        std::replace(entry.name.begin(), entry.name.end(), '\\', '/');
        readExtra64({header + centralHeaderSize + nameSize, extraSize}, entry);
        if (number16(header + 8) & 1)
            throw Fault{entryText(entry) + u" is protected by a password"_s, ReadCause::Protected};
        checkEntry(entry);
        total += entry.size;
        if (total > maxTotalSize)
            throw Fault{u"it would take more than %1 MB, reached at %2"_s.arg(maxTotalSize >> 20).arg(entryText(entry)),
                        ReadCause::TooLarge};
        if (!m_byName.emplace(smallLetters(entry.name), m_entries.size()).second)
            throw Fault{u"it holds %1 twice"_s.arg(entryText(entry))};
        m_entries.push_back(std::move(entry));
        at += whole;
    }
}

void Package::checkEntry(const Entry& entry) const
{
    if (entry.offset > m_fileSize || entry.packedSize > m_fileSize - entry.offset)
        throw Fault{entryText(entry) + u" lies behind the end of the file"_s};
    if (entry.size > maxTotalSize)
        throw Fault{entryText(entry) + u" would take more than %1 MB"_s.arg(maxTotalSize >> 20), ReadCause::TooLarge};
    if (entry.size > ratioFrom && entry.size / std::max<quint64>(entry.packedSize, 1) > maxRatio)
        throw Fault{entryText(entry) + u" is packed more than %1 times"_s.arg(maxRatio), ReadCause::TooLarge};
}

/// Entries that share bytes let a small file claim any size.
void Package::checkOverlaps(quint64 directoryOffset) const
{
    std::vector<size_t> order(m_entries.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::sort(order.begin(), order.end(),
              [&](size_t a, size_t b) { return m_entries[a].offset < m_entries[b].offset; });
    for (size_t i = 0; i < order.size(); ++i) {
        const Entry& entry = m_entries[order[i]];
        const quint64 limit = i + 1 < order.size() ? m_entries[order[i + 1]].offset : directoryOffset;
        if (entry.offset + localHeaderSize + entry.name.size() + entry.packedSize > limit)
            throw Fault{entryText(entry) + u" overlaps what follows it"_s};
    }
}

const Package::Entry* Package::find(std::string_view name) const
{
    const auto place = m_byName.find(smallLetters(name));
    return place != m_byName.end() ? &m_entries[place->second] : nullptr;
}

quint64 Package::dataOffset(const Entry& entry) const
{
    const std::string header = bytesAt(entry.offset, localHeaderSize);
    if (!header.starts_with("PK\3\4"))
        throw Fault{entryText(entry) + u" is not where the file's directory says"_s};
    const quint64 offset = entry.offset + localHeaderSize + number16(header.data() + 26) + number16(header.data() + 28);
    if (offset > m_fileSize || entry.packedSize > m_fileSize - offset)
        throw Fault{entryText(entry) + u" lies behind the end of the file"_s};
    return offset;
}

std::unique_ptr<ByteStream> Package::open(const Entry& entry) const
{
    if (entry.method != 0 && entry.method != 8)
        throw Fault{entryText(entry) + u" is packed in a way that is not read here (%1)"_s.arg(entry.method)};
    if (entry.method == 0 && entry.packedSize != entry.size)
        throw Fault{entryText(entry) + u" has another size than the file's directory says"_s};
    return std::make_unique<EntryStream>(*this, entry);
}

std::string Package::read(const Entry& entry) const
{
    if (entry.size > maxPartSize)
        throw Fault{entryText(entry) + u" is larger than %1 MB"_s.arg(maxPartSize >> 20), ReadCause::TooLarge};
    const auto stream = open(entry);
    std::string bytes;
    std::array<char, 32 << 10> block;
    while (const size_t count = stream->read(block.data(), block.size()))
        bytes.append(block.data(), count);
    return bytes;
}

} // namespace lumivane::engine
