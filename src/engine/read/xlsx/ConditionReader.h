#pragma once

#include "engine/content/ConditionalFormats.h"
#include "engine/read/xlsx/Palette.h"

#include <map>
#include <string>

namespace lumivane::engine {

/// Puts the conditional formats of a sheet together from both of their forms. The later form brings rules of its own
/// and what the bars of the earlier one lack.
class ConditionReader
{
public:
    using Looks = std::vector<std::shared_ptr<const DifferentialStyle>>;

    /// `looks` are those of the style sheet, which rules name by number.
    ConditionReader(const Palette& palette, const Looks& looks) : m_palette(palette), m_looks(looks) {}

    /// A <conditionalFormatting> of either form.
    void read(pugi::xml_node format);
    /// All rules, the strongest first.
    std::vector<ConditionalRule> finish();
    /// Whether none was left out because there are more, or larger ones, than any program writes.
    bool isComplete() const { return m_isComplete; }

private:
    using Areas = std::shared_ptr<const std::vector<CellArea>>;
    Areas readAreas(std::string_view text);
    void readRule(pugi::xml_node node, const Areas& areas);
    bool hasRoomFor(const ConditionalRule& rule); ///< for its texts, and counts them
    void readLook(pugi::xml_node node, ConditionalRule& rule) const;
    void readScale(pugi::xml_node node, ConditionalRule& rule) const;
    void readBar(pugi::xml_node node, bool later, ConditionalRule& rule) const;
    void readIcons(pugi::xml_node node, ConditionalRule& rule) const;

    const Palette& m_palette;
    const Looks& m_looks;
    std::vector<ConditionalRule> m_rules;
    std::map<std::string, size_t, std::less<>> m_byId; ///< rules that one of the later form may complete
    size_t m_areasRead = 0;
    qint64 m_lettersRead = 0;
    bool m_isComplete = true;
};

} // namespace lumivane::engine
