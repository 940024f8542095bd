#pragma once

#include <QtGlobal>
#include <functional>
#include <unordered_map>
#include <vector>

namespace lumivane {

/// Where the rows of a sheet, or its columns, lie in pixels of one scale, counted from 1 as cells are. They are
/// measured in blocks, and only those blocks that somebody looks at: until then a block counts as long as one of usual
/// entries. So a place far down is an estimate while the blocks before it are unmeasured; differences of places are
/// exact where all blocks between them are measured.
class SheetAxis
{
public:
    /// Where the entries `first` to `last` begin, from 0, and at the end where the last one ends.
    using Measure = std::function<std::vector<int>(int first, int last, double scale)>;

    SheetAxis(int count, int usualSize, Measure measure);
    /// Forgets what was measured. `blockLength` entries are measured, and drawn, together.
    void setScale(double scale, int blockLength);

    int count() const { return m_count; }
    double scale() const { return m_scale; }
    int blockOf(int index) const { return (index - 1) / m_blockLength; }
    int firstOf(int block) const { return block * m_blockLength + 1; }
    int lastOf(int block) const { return qMin(m_count, (block + 1) * m_blockLength); }

    /// Where an entry begins; of count() + 1 where the last one ends.
    qint64 start(int index) const;
    int size(int index) const; ///< 0 if hidden
    qint64 length() const { return start(m_count + 1); }
    /// The entry at a place; before the first one and behind the last one the nearest that is visible.
    int at(qint64 place) const;
    /// The nearest visible entry from `index` on, itself included, in a direction (1 or -1); 0 if there is none.
    int visibleFrom(int index, int step) const;
    /// Measures the blocks of these entries.
    void measure(int first, int last) const;

private:
    const std::vector<int>& edges(int block) const;
    qint64 sumBefore(int block) const;
    int blockAt(qint64 place) const;
    int usualLength(int block) const;

    int m_count;
    int m_usualSize;
    Measure m_measure;
    double m_scale = 1;
    int m_blockLength = 32;
    mutable std::unordered_map<int, std::vector<int>> m_edges; ///< of the measured blocks
    mutable std::vector<qint64> m_sums; ///< lengths of blocks, as a binary indexed tree: sums and changes in O(log n)
};

} // namespace lumivane
