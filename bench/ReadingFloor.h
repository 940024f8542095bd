#pragma once

#include <QString>
#include <ctime>

namespace lumivane::bench {

/// What reading a workbook cannot do without: reading the bytes of its first sheet once, inflating them through one
/// small reused buffer and walking over them once.
class ReadingFloor
{
public:
    explicit ReadingFloor(const QString& path);
    /// Answers the number of tags, so that the walk is not left out.
    size_t walk() const;

private:
    QString m_path;
    quint64 m_offset = 0, m_packedSize = 0; ///< of the sheet in the package
};

/// Of the processor, not of the clock on the wall, which others share.
double seconds(const auto& work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

} // namespace lumivane::bench
