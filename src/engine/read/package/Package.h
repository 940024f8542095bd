#pragma once

#include "engine/read/package/ByteStream.h"

#include <QFile>
#include <QString>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace lumivane::engine {

/// A ZIP archive whose entries are read by name. Everything that its directory claims is checked against the size of
/// the file and against fixed bounds before anything is believed; what fails throws a Fault that names the entry.
class Package
{
public:
    struct Entry
    {
        std::string name; ///< as stored, with "/" between folders
        quint64 offset = 0;
        quint64 packedSize = 0;
        quint64 size = 0;
        quint32 crc = 0;
        quint16 method = 0;
    };

    static constexpr quint64 maxTotalSize = 2ull << 30; ///< of all entries together, inflated
    static constexpr quint64 maxEntries = 20000;
    static constexpr quint64 maxDirectorySize = 16ull << 20;
    static constexpr quint64 maxRatio = 500; ///< inflated to packed, for entries above ratioFrom
    static constexpr quint64 ratioFrom = 64ull << 20;
    static constexpr quint64 maxPartSize = 256ull << 20; ///< of an entry that is read as a whole

    explicit Package(const QString& path);

    /// By name without regard to case; null if there is none.
    const Entry* find(std::string_view name) const;

    /// The entry's bytes, as a stream that checks size and checksum at its end. It must not outlive the package, and
    /// streams of one package may be read in turns.
    std::unique_ptr<ByteStream> open(const Entry& entry) const;
    /// The entry as a whole; for the small ones.
    std::string read(const Entry& entry) const;

private:
    friend class EntryStream;
    struct Directory
    {
        quint64 offset = 0, size = 0, count = 0;
    };

    std::string bytesAt(quint64 offset, quint64 count) const;
    size_t readAt(quint64 offset, char* to, size_t count) const;
    Directory findDirectory() const;
    Directory readDirectory64(quint64 endOffset, Directory found) const;
    void readEntries(const Directory& directory);
    void checkEntry(const Entry& entry) const;
    void checkOverlaps(quint64 directoryOffset) const;
    quint64 dataOffset(const Entry& entry) const;

    mutable QFile m_file;
    quint64 m_fileSize = 0;
    std::vector<Entry> m_entries;
    std::unordered_map<std::string, size_t> m_byName; ///< by name in small letters
};

} // namespace lumivane::engine
