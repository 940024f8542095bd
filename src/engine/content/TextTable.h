#pragma once

#include "engine/content/Styles.h"

#include <QString>
#include <string_view>
#include <utility>
#include <vector>

namespace lumivane::engine {

/// A stretch of a rich text with one font.
struct TextRun
{
    int start = 0; ///< position in the text, in UTF-16 units
    FontStyle font;
    bool cellFont = false; ///< the stretch has the font of its cell; `font` says nothing
};

/// The most UTF-16 units that a cell can hold; more only stands in files that were made to do harm.
constexpr size_t maxCellText = 32767;

/// Texts of a workbook or sheet in one block of UTF-8, with the runs of the few rich ones beside it.
class TextTable
{
public:
    int size() const { return static_cast<int>(m_ends.size()); }
    std::string_view utf8(quint64 index) const;
    QString text(quint64 index) const;
    /// Runs in ascending order; null for a plain text.
    const std::vector<TextRun>* runs(quint64 index) const;

    /// Appends a text, cut at what a cell can hold; its index.
    int append(std::string_view utf8);
    /// Of a text appended after all others that have runs.
    void setRuns(int index, std::vector<TextRun> runs);
    qint64 bytes() const;

private:
    std::vector<char> m_bytes;
    std::vector<quint32> m_ends;
    std::vector<std::pair<int, std::vector<TextRun>>> m_runs; ///< ascending by index
    qint64 m_runBytes = 0;                                    ///< of all texts, names of fonts included
};

} // namespace lumivane::engine
