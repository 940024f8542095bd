#include "engine/read/xlsx/Palette.h"

#include "engine/format/IndexedColors.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lumivane::engine {

namespace {

constexpr QRgb opaque = 0xff000000;

constexpr int windowText = 64, windowBackground = 65;

std::optional<QRgb> hexColor(std::string_view text)
{
    QRgb value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size() || (text.size() != 6 && text.size() != 8))
        return std::nullopt;
    return value | opaque;
}

double channel(double low, double high, double hue)
{
    hue -= std::floor(hue);
    if (hue < 1.0 / 6)
        return low + (high - low) * 6 * hue;
    if (hue < 0.5)
        return high;
    if (hue < 2.0 / 3)
        return low + (high - low) * (2.0 / 3 - hue) * 6;
    return low;
}

} // namespace

QRgb tinted(QRgb color, double tint)
{
    if (tint == 0 || !(std::abs(tint) <= 1))
        return color;
    const double red = qRed(color) / 255.0, green = qGreen(color) / 255.0, blue = qBlue(color) / 255.0;
    const double most = std::max({red, green, blue}), least = std::min({red, green, blue});
    const double spread = most - least;
    double lightness = (most + least) / 2, hue = 0, saturation = 0;
    if (spread > 0) {
        saturation = lightness <= 0.5 ? spread / (most + least) : spread / (2 - most - least);
        if (most == red)
            hue = (green - blue) / spread / 6;
        else if (most == green)
            hue = 1.0 / 3 + (blue - red) / spread / 6;
        else
            hue = 2.0 / 3 + (red - green) / spread / 6;
    }
    lightness = tint < 0 ? lightness * (1 + tint) : lightness * (1 - tint) + tint;
    const double high =
        lightness <= 0.5 ? lightness * (1 + saturation) : lightness + saturation - lightness * saturation;
    const double low = 2 * lightness - high;
    const auto byte = [&](double shift) {
        return static_cast<int>(std::lround(channel(low, high, hue + shift) * 255));
    };
    return qRgb(byte(1.0 / 3), byte(0), byte(-1.0 / 3));
}

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
    static constexpr std::string_view names[] = {"dk1",     "lt1",     "dk2",     "lt2",     "accent1", "accent2",
                                                 "accent3", "accent4", "accent5", "accent6", "hlink",   "folHlink"};
    const pugi::xml_node scheme = childNamed(childNamed(theme, "themeElements"), "clrScheme");
    for (size_t i = 0; i < m_theme.size(); ++i) {
        const pugi::xml_node color = childNamed(scheme, names[i]).first_child();
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
