#include "engine/read/xlsx/Palette.h"

#include "engine/content/ColorChange.h"
#include "engine/format/IndexedColors.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>
#include <charconv>

namespace lumivane::engine {

namespace {

constexpr QRgb opaque = 0xff000000;

constexpr std::string_view themeNames[] = {"dk1",     "lt1",     "dk2",     "lt2",     "accent1", "accent2",
                                           "accent3", "accent4", "accent5", "accent6", "hlink",   "folHlink"};

constexpr int windowText = 64, windowBackground = 65;

std::optional<QRgb> hexColor(std::string_view text)
{
    QRgb value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size() || (text.size() != 6 && text.size() != 8))
        return std::nullopt;
    return value | opaque;
}

} // namespace

Palette::Palette()
    : m_theme{0xff000000, 0xffffffff, 0xff1f497d, 0xffeeece1, 0xff4f81bd, 0xffc0504d,
              0xff9bbb59, 0xff8064a2, 0xff4bacc6, 0xfff79646, 0xff0000ff, 0xff800080}
{
    // The numbers 0 to 7 and again 8 to 15 are the first eight colours.
    m_indexed.assign(indexedColors.begin(), indexedColors.begin() + 8);
    m_indexed.insert(m_indexed.end(), indexedColors.begin(), indexedColors.end());
    for (QRgb& color : m_indexed)
        color |= opaque;
}

void Palette::readTheme(pugi::xml_node theme)
{
    const pugi::xml_node scheme = childNamed(childNamed(theme, "themeElements"), "clrScheme");
    for (size_t i = 0; i < m_theme.size(); ++i) {
        const pugi::xml_node color = childNamed(scheme, themeNames[i]).first_child();
        // A system colour carries the value that it had where the file was written.
        const std::string_view value = attributeOf(color, localName(color) == "sysClr" ? "lastClr" : "val");
        m_theme[i] = hexColor(value).value_or(m_theme[i]);
    }
}

void Palette::readIndexed(pugi::xml_node colors)
{
    size_t index = 0;
    for (const pugi::xml_node color : childrenNamed(childNamed(colors, "indexedColors"), "rgbColor")) {
        if (index >= m_indexed.size())
            break;
        m_indexed[index] = hexColor(attributeOf(color, "rgb")).value_or(m_indexed[index]);
        ++index;
    }
}

std::optional<QRgb> Palette::indexedColor(int index) const
{
    if (index == windowText)
        return 0xff000000;
    if (index == windowBackground)
        return 0xffffffff;
    if (index < 0 || index >= static_cast<int>(m_indexed.size()))
        return std::nullopt;
    return m_indexed[static_cast<size_t>(index)];
}

std::optional<QRgb> Palette::themeColor(std::string_view name) const
{
    // Sheets show dark texts on a light ground; no file says otherwise for its drawings.
    static constexpr std::pair<std::string_view, std::string_view> roles[] = {
        {"tx1", "dk1"}, {"bg1", "lt1"}, {"tx2", "dk2"}, {"bg2", "lt2"}};
    for (const auto& [role, color] : roles) {
        if (name == role)
            name = color;
    }
    const auto place = std::find(std::begin(themeNames), std::end(themeNames), name);
    return place != std::end(themeNames) ? std::optional(m_theme[static_cast<size_t>(place - std::begin(themeNames))])
                                         : std::nullopt;
}

std::optional<QRgb> Palette::color(std::string_view rgb, std::string_view theme, std::string_view indexed,
                                   std::string_view tint) const
{
    std::optional<QRgb> base;
    if (rgb.data()) {
        base = hexColor(rgb);
    } else if (theme.data()) {
        // Numbers of the theme's colours begin with the light ones, the theme itself with the dark ones.
        static constexpr int order[] = {1, 0, 3, 2};
        const int index = integerFrom(theme).value_or(-1);
        if (index >= 0 && index < static_cast<int>(m_theme.size()))
            base = m_theme[static_cast<size_t>(index < 4 ? order[index] : index)];
    } else if (indexed.data()) {
        base = indexedColor(integerFrom(indexed).value_or(-1));
    }
    return base ? std::optional(tinted(*base, numberFrom(tint).value_or(0))) : std::nullopt;
}

std::optional<QRgb> Palette::color(pugi::xml_node node) const
{
    return color(attributeOf(node, "rgb"), attributeOf(node, "theme"), attributeOf(node, "indexed"),
                 attributeOf(node, "tint"));
}

} // namespace lumivane::engine
