#include "engine/content/TextTable.h"

#include <algorithm>

namespace lumivane::engine {

std::string_view TextTable::utf8(quint64 index) const
{
    if (index >= m_ends.size())
        return {};
    const quint32 start = index == 0 ? 0 : m_ends[index - 1];
    return {m_bytes.data() + start, m_ends[index] - start};
}

QString TextTable::text(quint64 index) const
{
    const std::string_view bytes = utf8(index);
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

const std::vector<TextRun>* TextTable::runs(quint64 index) const
{
    const auto place = std::lower_bound(m_runs.begin(), m_runs.end(), index,
                                        [](const auto& entry, quint64 i) { return quint64(entry.first) < i; });
    return place != m_runs.end() && quint64(place->first) == index ? &place->second : nullptr;
}

namespace {

std::string_view cutForCell(std::string_view utf8)
{
    if (utf8.size() <= maxCellText)
        return utf8;
    size_t units = 0, at = 0;
    while (at < utf8.size()) {
        const auto first = static_cast<unsigned char>(utf8[at]);
        units += first >= 0xf0 ? 2 : 1;
        if (units > maxCellText)
            break;
        for (++at; at < utf8.size() && (utf8[at] & 0xc0) == 0x80; ++at)
            ;
    }
    return utf8.substr(0, at);
}

} // namespace

int TextTable::append(std::string_view utf8)
{
    utf8 = cutForCell(utf8);
    m_bytes.insert(m_bytes.end(), utf8.begin(), utf8.end());
    m_ends.push_back(static_cast<quint32>(m_bytes.size()));
    return size() - 1;
}

void TextTable::setRuns(int index, std::vector<TextRun> runs)
{
    m_runBytes += qint64(runs.capacity() * sizeof(TextRun));
    for (const TextRun& run : runs)
        m_runBytes += run.cellFont ? 0 : run.font.family.capacity() * qint64(sizeof(QChar));
    m_runs.emplace_back(index, std::move(runs));
}

qint64 TextTable::bytes() const
{
    return qint64(m_bytes.capacity() + m_ends.capacity() * sizeof(quint32) + m_runs.capacity() * sizeof(m_runs[0])) +
           m_runBytes;
}

} // namespace lumivane::engine
