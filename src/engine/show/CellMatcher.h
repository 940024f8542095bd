#pragma once

#include "engine/show/FormatReach.h"
#include "engine/show/ShownSheet.h"
#include "platform/FindQuestion.h"

#include <optional>
#include <vector>

namespace lumivane::engine {

/// Decides for one search whether a cell is a hit: its shown text or its plain text equals or holds the sought text
/// without regard to case. Each text of the workbook is compared once, however many cells have it.
class CellMatcher
{
public:
    CellMatcher(const ShownSheet& sheet, const FindQuestion& question);

    bool hits(int row, const Cell& cell);

private:
    enum class Known : quint8 { Unknown, Hit, Miss };

    bool textHits(int row, const Cell& cell);
    bool plainTextHits(const TextTable& table, std::vector<Known>& known, quint64 index) const;
    bool numberHits(int row, const Cell& cell);
    FormatReach reach(int numberFormat);
    bool changesTexts(int numberFormat);

    const ShownSheet& m_sheet;
    const StyleTable& m_styles;
    SoughtText m_sought;
    std::vector<Known> m_shared;                     ///< by index of WorkbookContent::texts
    std::vector<Known> m_local;                      ///< by index of SheetContent::texts
    std::vector<std::optional<FormatReach>> m_reach; ///< by number format
    std::vector<std::optional<bool>> m_changesTexts; ///< by number format
};

} // namespace lumivane::engine
