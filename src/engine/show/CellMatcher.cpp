#include "engine/show/CellMatcher.h"

#include "platform/FindQuestion.h"

#include <cmath>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

CellMatcher::CellMatcher(const ShownSheet& sheet, const FindQuestion& question)
    : m_sheet(sheet), m_styles(sheet.workbook().styles), m_sought(question),
      m_shared(static_cast<size_t>(sheet.workbook().texts.size())),
      m_local(static_cast<size_t>(sheet.sheet().texts.size())), m_reach(m_styles.numberFormats.size()),
      m_changesTexts(m_styles.numberFormats.size())
{
}

bool CellMatcher::hits(int row, const Cell& cell)
{
    if (m_sought.anything)
        return m_sheet.hasContents(cell);
    switch (cell.kind) {
    case CellKind::Number:
        return numberHits(row, cell);
    case CellKind::Text:
    case CellKind::SheetText:
        return textHits(row, cell);
    case CellKind::Boolean:
    case CellKind::Error:
        return m_sought.hits(m_sheet.plain(cell)) || m_sought.hits(m_sheet.shown(row, cell));
    case CellKind::Blank:
    case CellKind::Uncomputed:
        break;
    }
    return false;
}

bool CellMatcher::textHits(int row, const Cell& cell)
{
    const bool shared = cell.kind == CellKind::Text;
    if (plainTextHits(shared ? m_sheet.workbook().texts : m_sheet.sheet().texts, shared ? m_shared : m_local,
                      cell.text))
        return true;
    const int format = m_styles.cell(static_cast<int>(cell.style)).numberFormat;
    return (changesTexts(format) || m_sheet.mayChangeFormat(row, cell.column)) &&
           m_sought.hits(m_sheet.shown(row, cell));
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

bool CellMatcher::numberHits(int row, const Cell& cell)
{
    const double value = cell.number;
    if (!m_sought.whole || m_sheet.mayChangeFormat(row, cell.column))
        return m_sought.hits(m_sheet.plain(cell)) || m_sought.hits(m_sheet.shown(row, cell));

    // Plain texts have 15 digits, so only a number this near can have the sought one.
    const bool plainPossible =
        m_sought.number && std::abs(value - *m_sought.number) <= std::abs(*m_sought.number) * 1e-14;
    if (plainPossible && m_sought.hits(m_sheet.plain(cell)))
        return true;
    switch (reach(m_styles.cell(static_cast<int>(cell.style)).numberFormat)) {
    case FormatReach::Never:
        return false;
    case FormatReach::NearNumber:
        if (std::abs(std::abs(value) - *m_sought.digits) > 1 + std::abs(value) * 1e-14)
            return false;
        break;
    case FormatReach::Perhaps:
        break;
    }
    return m_sought.hits(m_sheet.shown(row, cell));
}

FormatReach CellMatcher::reach(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_reach.size())
        return FormatReach::Perhaps;
    if (!m_reach[index])
        m_reach[index] = formatReach(m_styles.numberFormats[index], m_sought);
    return *m_reach[index];
}

bool CellMatcher::changesTexts(int numberFormat)
{
    const size_t index = static_cast<size_t>(numberFormat);
    if (index >= m_changesTexts.size())
        return true;
    if (!m_changesTexts[index]) {
        // A section for texts names them by "@" or stands fourth.
        const QString& code = m_styles.numberFormats[index];
        m_changesTexts[index] = code != u"@" && (code.contains(u'@') || code.count(u';') >= 3);
    }
    return *m_changesTexts[index];
}

} // namespace lumivane::engine
