#pragma once

#include "engine/show/FormatReach.h"
#include "engine/show/ShownTexts.h"
#include "platform/FindOrder.h"

#include <optional>
#include <vector>

namespace lumivane::engine {

/// Decides for one search whether a cell is a hit: its shown text or its plain text equals or holds the sought text
/// without regard to case. Each text of the workbook is compared once, however many cells have it.
class CellMatcher
{
public:
    CellMatcher(const WorkbookContent& workbook, const SheetContent& sheet, const ShownTexts& texts,
                const FindQuestion& question);

    bool hits(const Cell& cell);

private:
    enum class Known : quint8 { Unknown, Hit, Miss };

    bool textHits(const Cell& cell);
    bool plainTextHits(const TextTable& table, std::vector<Known>& known, quint64 index) const;
    bool numberHits(const Cell& cell);
    FormatReach reach(int numberFormat);
    bool changesTexts(int numberFormat);

    const WorkbookContent& m_workbook;
    const SheetContent& m_sheet;
    const ShownTexts& m_texts;
    SoughtText m_sought;
    std::vector<Known> m_shared;                     ///< by index of WorkbookContent::texts
    std::vector<Known> m_local;                      ///< by index of SheetContent::texts
    std::vector<std::optional<FormatReach>> m_reach; ///< by number format
    std::vector<std::optional<bool>> m_changesTexts; ///< by number format
};

/// Whether a cell holds something, a formula that gives an empty text left out. A formula without a stored result
/// counts: what it would show is not known, but it has something to show.
bool hasContents(const WorkbookContent& workbook, const SheetContent& sheet, const Cell& cell);

} // namespace lumivane::engine
