#include "engine/show/CellMatcher.h"

#include "platform/FindOrder.h"

#include <cmath>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

CellMatcher::CellMatcher(const WorkbookContent& workbook, const SheetContent& sheet, const ShownTexts& texts,
                         const FindQuestion& question)
    : m_workbook(workbook), m_sheet(sheet), m_texts(texts), m_sought(question),
      m_shared(static_cast<size_t>(workbook.texts.size())), m_local(static_cast<size_t>(sheet.texts.size())),
      m_reach(workbook.styles.numberFormats.size()), m_changesTexts(workbook.styles.numberFormats.size())
{
}

bool CellMatcher::hits(const Cell& cell)
{
    if (m_sought.anything)
        return hasContents(m_workbook, m_sheet, cell);
    switch (cell.kind) {
    case CellKind::Number:
        return numberHits(cell);
    case CellKind::Text:
    case CellKind::SheetText:
        return textHits(cell);
    case CellKind::Boolean:
    case CellKind::Error:
        return m_sought.hits(m_texts.plain(cell)) || m_sought.hits(m_texts.shown(cell));
    case CellKind::Blank:
    case CellKind::Uncomputed:
        break;
    }
    return false;
}

bool CellMatcher::textHits(const Cell& cell)
{
    const bool shared = cell.kind == CellKind::Text;
    if (plainTextHits(shared ? m_workbook.texts : m_sheet.texts, shared ? m_shared : m_local, cell.text))
        return true;
    const int format = m_workbook.styles.cell(static_cast<int>(cell.style)).numberFormat;
    return changesTexts(format) && m_sought.hits(m_texts.shown(cell));
}

bool CellMatcher::plainTextHits(const TextTable& table, std::vector<Known>& known, quint64 index) const
{
    if (index >= known.size())
        return false;
    Known& answer = known[index];
    if (answer == Known::Unknown) {
        const std::string_view bytes = table.utf8(index);
        const QUtf8StringView text(bytes.data(), static_cast<qsizetype>(bytes.size()));
        const bool hit = bytes.empty()    ? false
                         : m_sought.whole ? QAnyStringView::compare(text, m_sought.text, Qt::CaseInsensitive) == 0
                                          : m_sought.hits(text.toString());
        answer = hit ? Known::Hit : Known::Miss;
    }
    return answer == Known::Hit;
}

bool CellMatcher::numberHits(const Cell& cell)
{
    const double value = cell.number;
    if (!m_sought.whole)
        return m_sought.hits(m_texts.plain(cell)) || m_sought.hits(m_texts.shown(cell));

    // Plain texts have 15 digits, so only a number this near can have the sought one.
    const bool plainPossible =
        m_sought.number && std::abs(value - *m_sought.number) <= std::abs(*m_sought.number) * 1e-14;
    if (plainPossible && m_sought.hits(m_texts.plain(cell)))
        return true;
    switch (reach(m_workbook.styles.cell(static_cast<int>(cell.style)).numberFormat)) {
    case FormatReach::Never:
        return false;
    case FormatReach::NearNumber:
        if (std::abs(std::abs(value) - *m_sought.digits) > 1 + std::abs(value) * 1e-14)
            return false;
        break;
    case FormatReach::Perhaps:
        break;
    }
    return m_sought.hits(m_texts.shown(cell));
}

FormatReach CellMatcher::reach(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_reach.size())
        return FormatReach::Perhaps;
    if (!m_reach[index])
        m_reach[index] = formatReach(m_workbook.styles.numberFormats[index], m_sought);
    return *m_reach[index];
}

bool CellMatcher::changesTexts(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_changesTexts.size())
        return true;
    if (!m_changesTexts[index]) {
        // A section for texts names them by "@" or stands fourth.
        const QString& code = m_workbook.styles.numberFormats[index];
        m_changesTexts[index] = code != u"@" && (code.contains(u'@') || code.count(u';') >= 3);
    }
    return *m_changesTexts[index];
}

bool hasContents(const WorkbookContent& workbook, const SheetContent& sheet, const Cell& cell)
{
    switch (cell.kind) {
    case CellKind::Blank:
        return false;
    case CellKind::Text:
        return !workbook.texts.utf8(cell.text).empty();
    case CellKind::SheetText:
        return !sheet.texts.utf8(cell.text).empty();
    default:
        return true;
    }
}

} // namespace lumivane::engine
