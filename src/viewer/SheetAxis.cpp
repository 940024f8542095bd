#include "viewer/SheetAxis.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace lumivane {

SheetAxis::SheetAxis(int count, int usualSize, Measure measure)
    : m_count(count), m_usualSize(usualSize), m_measure(std::move(measure))
{
    setScale(1, m_blockLength);
}

void SheetAxis::setScale(double scale, int blockLength)
{
    m_scale = scale;
    m_blockLength = std::max(1, blockLength);
    m_edges.clear();
    const int blocks = blockOf(m_count) + 1;
    m_sums.assign(static_cast<size_t>(blocks) + 1, 0);
    for (size_t i = 1; i < m_sums.size(); ++i) {
        m_sums[i] += usualLength(static_cast<int>(i) - 1);
        const size_t parent = i + (i & (~i + 1));
        if (parent < m_sums.size())
            m_sums[parent] += m_sums[i];
    }
}

int SheetAxis::usualLength(int block) const
{
    return static_cast<int>(std::lround((lastOf(block) - firstOf(block) + 1) * m_usualSize * m_scale));
}

const std::vector<int>& SheetAxis::edges(int block) const
{
    const auto known = m_edges.find(block);
    if (known != m_edges.end())
        return known->second;
    const auto& edges = m_edges.emplace(block, m_measure(firstOf(block), lastOf(block), m_scale)).first->second;
    const qint64 correction = edges.back() - usualLength(block);
    if (correction != 0) {
        for (size_t i = static_cast<size_t>(block) + 1; i < m_sums.size(); i += i & (~i + 1))
            m_sums[i] += correction;
    }
    return edges;
}

qint64 SheetAxis::sumBefore(int block) const
{
    qint64 sum = 0;
    for (size_t i = static_cast<size_t>(block); i > 0; i -= i & (~i + 1))
        sum += m_sums[i];
    return sum;
}

qint64 SheetAxis::start(int index) const
{
    if (index > m_count)
        return sumBefore(blockOf(m_count) + 1);
    const int block = blockOf(index);
    const int inside = edges(block)[static_cast<size_t>(index - firstOf(block))];
    return sumBefore(block) + inside;
}

int SheetAxis::size(int index) const
{
    const int block = blockOf(index);
    const std::vector<int>& places = edges(block);
    const size_t inside = static_cast<size_t>(index - firstOf(block));
    return places[inside + 1] - places[inside];
}

/// The block whose stretch holds a place, by the lengths known now.
int SheetAxis::blockAt(qint64 place) const
{
    size_t passed = 0;
    for (size_t step = std::bit_floor(m_sums.size() - 1); step > 0; step /= 2) {
        if (passed + step < m_sums.size() && m_sums[passed + step] <= place) {
            passed += step;
            place -= m_sums[passed];
        }
    }
    return std::min(static_cast<int>(passed), blockOf(m_count));
}

int SheetAxis::at(qint64 place) const
{
    const auto nearestVisible = [this](int index, int step) {
        const int found = visibleFrom(index, step);
        return found ? found : std::max(1, visibleFrom(index, -step));
    };
    if (place < 0)
        return nearestVisible(1, 1);
    // Measuring a block can move the place into another one, which then has to be measured as well.
    int block = blockAt(place);
    while (!m_edges.contains(block)) {
        edges(block);
        block = blockAt(place);
    }
    const std::vector<int>& places = edges(block);
    const qint64 inside = place - sumBefore(block);
    if (inside >= places.back())
        return nearestVisible(m_count, -1);
    const auto behind = std::upper_bound(places.begin(), places.end(), inside);
    return firstOf(block) + static_cast<int>(behind - places.begin()) - 1;
}

int SheetAxis::visibleFrom(int index, int step) const
{
    for (; index >= 1 && index <= m_count; index += step) {
        // Whole blocks may be hidden, a filter's for instance.
        const int block = blockOf(index);
        if (edges(block).back() == 0)
            index = step > 0 ? lastOf(block) : firstOf(block);
        else if (size(index) > 0)
            return index;
    }
    return 0;
}

void SheetAxis::measure(int first, int last) const
{
    for (int block = blockOf(std::max(1, first)); block <= blockOf(std::min(last, m_count)); ++block)
        edges(block);
}

} // namespace lumivane
