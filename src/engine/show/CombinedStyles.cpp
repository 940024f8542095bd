#include "engine/show/CombinedStyles.h"

namespace lumivane::engine {

namespace {

/// More looks than any sheet shows; what comes beyond keeps its stored look.
constexpr size_t maxCombined = 200000;

/// The entry of an index that counts on behind the stored ones; the first one where it is out of range.
template <class T>
const T& entryOf(const std::vector<T>& stored, const std::deque<T>& added, int index)
{
    const size_t place = index >= 0 ? static_cast<size_t>(index) : 0;
    if (place < stored.size())
        return stored[place];
    return place - stored.size() < added.size() ? added[place - stored.size()] : stored.front();
}

template <class T>
int append(const std::vector<T>& stored, std::deque<T>& added, T entry)
{
    added.push_back(std::move(entry));
    return static_cast<int>(stored.size() + added.size()) - 1;
}

} // namespace

CombinedStyles::CombinedStyles(const StyleTable& stored) : m_stored(stored) {}

const CellStyle& CombinedStyles::cell(int index) const
{
    return entryOf(m_stored.cells, m_cells, index);
}

const FontStyle& CombinedStyles::font(const CellStyle& style) const
{
    return entryOf(m_stored.fonts, m_fonts, style.font);
}

const FillStyle& CombinedStyles::fill(const CellStyle& style) const
{
    return entryOf(m_stored.fills, m_fills, style.fill);
}

const BorderStyle& CombinedStyles::border(const CellStyle& style) const
{
    return entryOf(m_stored.borders, m_borders, style.border);
}

const QString& CombinedStyles::numberFormat(const CellStyle& style) const
{
    return entryOf(m_stored.numberFormats, m_formats, style.numberFormat);
}

int CombinedStyles::combined(int style, const DifferentialStyle* under, const DifferentialStyle* over)
{
    if (!under && !over)
        return style;
    const auto [known, isNew] = m_known.try_emplace({style, under, over}, style);
    if (!isNew || m_cells.size() >= maxCombined)
        return known->second;
    CellStyle made = cell(style);
    DifferentialStyle change = over ? *over : DifferentialStyle();
    if (under)
        change.fillFrom(allowed(made, *under));
    made.font = changedFont(made, change);
    made.fill = changedFill(made, change);
    made.border = changedBorder(made, change);
    made.numberFormat = changedFormat(made, change);
    known->second = append(m_stored.cells, m_cells, made);
    return known->second;
}

DifferentialStyle CombinedStyles::allowed(const CellStyle& style, const DifferentialStyle& under) const
{
    const FontStyle& own = font(style);
    const FontStyle& usual = font(m_stored.cells.front());
    const BorderStyle& lines = border(style);
    DifferentialStyle change = under;
    const auto keep = [](bool said, auto& property) {
        if (said)
            property.reset();
    };
    keep(own.color != usual.color, change.fontColor);
    keep(own.bold != usual.bold, change.bold);
    keep(own.italic != usual.italic, change.italic);
    keep(own.strikeOut != usual.strikeOut, change.strikeOut);
    keep(own.underline != usual.underline, change.underline);
    keep(fill(style).pattern != Pattern::None, change.fill);
    keep(lines.left.style != LineStyle::None, change.left);
    keep(lines.right.style != LineStyle::None, change.right);
    keep(lines.top.style != LineStyle::None, change.top);
    keep(lines.bottom.style != LineStyle::None, change.bottom);
    return change;
}

int CombinedStyles::changedFont(const CellStyle& style, const DifferentialStyle& change)
{
    FontStyle made = font(style);
    made.color = change.fontColor.value_or(made.color);
    made.bold = change.bold.value_or(made.bold);
    made.italic = change.italic.value_or(made.italic);
    made.strikeOut = change.strikeOut.value_or(made.strikeOut);
    made.underline = change.underline.value_or(made.underline);
    return made == font(style) ? style.font : append(m_stored.fonts, m_fonts, made);
}

int CombinedStyles::changedFill(const CellStyle& style, const DifferentialStyle& change)
{
    return change.fill ? append(m_stored.fills, m_fills, *change.fill) : style.fill;
}

int CombinedStyles::changedBorder(const CellStyle& style, const DifferentialStyle& change)
{
    if (!change.left && !change.right && !change.top && !change.bottom)
        return style.border;
    BorderStyle made = border(style);
    made.left = change.left.value_or(made.left);
    made.right = change.right.value_or(made.right);
    made.top = change.top.value_or(made.top);
    made.bottom = change.bottom.value_or(made.bottom);
    return append(m_stored.borders, m_borders, made);
}

int CombinedStyles::changedFormat(const CellStyle& style, const DifferentialStyle& change)
{
    return change.numberFormat.isEmpty() ? style.numberFormat
                                         : append(m_stored.numberFormats, m_formats, change.numberFormat);
}

} // namespace lumivane::engine
