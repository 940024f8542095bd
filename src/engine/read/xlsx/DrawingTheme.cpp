#include "engine/read/xlsx/DrawingTheme.h"

#include "engine/content/ColorChange.h"
#include "engine/read/package/AttributeValues.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t maxChanges = 32; ///< of one colour

std::optional<double> shareFrom(std::string_view text)
{
    const bool percent = text.ends_with('%');
    const std::optional<double> value = numberFrom(percent ? text.substr(0, text.size() - 1) : text);
    return value ? std::optional(std::clamp(*value / (percent ? 100 : 100000), -1e6, 1e6)) : std::nullopt;
}

std::optional<ColorChange> changeFrom(pugi::xml_node node)
{
    using enum ColorChange::Kind;
    static constexpr std::pair<std::string_view, ColorChange::Kind> names[] = {
        {"shade", Shade},
        {"tint", Tint},
        {"hue", Hue},
        {"hueMod", HueFactor},
        {"hueOff", HueOffset},
        {"sat", Saturation},
        {"satMod", SaturationFactor},
        {"satOff", SaturationOffset},
        {"lum", Lightness},
        {"lumMod", LightnessFactor},
        {"lumOff", LightnessOffset},
        {"alpha", Alpha},
        {"alphaMod", AlphaFactor},
        {"alphaOff", AlphaOffset},
        {"gray", Gray},
        {"comp", Complement},
        {"inv", Inverse},
        {"gamma", Gamma},
        {"invGamma", InverseGamma},
    };
    for (const auto& [name, kind] : names) {
        if (localName(node) == name)
            return ColorChange{kind, kind == Hue || kind == HueOffset ? drawingAngle(node, "val")
                                                                      : drawingShare(node, "val")};
    }
    return std::nullopt;
}

QRgb fromLinearShares(pugi::xml_node node)
{
    const auto byte = [node](std::string_view name) {
        return static_cast<int>(std::lround(std::clamp(drawingShare(node, name), 0.0, 1.0) * 255));
    };
    const ColorChange toStored{ColorChange::Kind::Gamma};
    return changedColor(qRgb(byte("r"), byte("g"), byte("b")), {&toStored, 1});
}

QRgb fromHue(pugi::xml_node node)
{
    const auto share = [node](std::string_view name) { return std::clamp(drawingShare(node, name), 0.0, 1.0); };
    const double hue = drawingAngle(node, "hue") / 360;
    return QColor::fromHslF(static_cast<float>(hue - std::floor(hue)), static_cast<float>(share("sat")),
                            static_cast<float>(share("lum")))
        .rgb();
}

/// Names as in style sheets, some of them shortened.
std::optional<QRgb> namedColor(std::string_view name)
{
    QString text = textFrom(name.substr(0, 64)).toLower();
    static const std::pair<QLatin1StringView, QLatin1StringView> beginnings[] = {
        {"dk"_L1, "dark"_L1}, {"lt"_L1, "light"_L1}, {"med"_L1, "medium"_L1}};
    for (const auto& [brief, whole] : beginnings) {
        if (text.startsWith(brief) && !text.startsWith(whole))
            text = whole + text.mid(brief.size());
    }
    const QColor color(text);
    return color.isValid() ? std::optional(color.rgb()) : std::nullopt;
}

pugi::xml_node childAt(pugi::xml_node list, int number)
{
    for (const pugi::xml_node child : list.children()) {
        if (child.type() == pugi::node_element && --number == 0)
            return child;
    }
    return {};
}

} // namespace

double drawingNumber(pugi::xml_node node, std::string_view name, double otherwise)
{
    return std::clamp(numberFrom(attributeOf(node, name)).value_or(otherwise), -1e12, 1e12);
}

double drawingShare(pugi::xml_node node, std::string_view name, double otherwise)
{
    return shareFrom(attributeOf(node, name)).value_or(otherwise);
}

double drawingAngle(pugi::xml_node node, std::string_view name, double otherwise)
{
    const std::optional<double> value = numberFrom(attributeOf(node, name));
    return value ? std::fmod(*value / 60000, 360) : otherwise;
}

DrawingTheme::DrawingTheme(const Palette& palette, const Package& package, const Package::Entry* theme)
    : m_palette(palette)
{
    if (!theme)
        return;
    readSmallPart(package, *theme, m_document);
    const pugi::xml_node elements = childNamed(m_document.document_element(), "themeElements");
    m_formats = childNamed(elements, "fmtScheme");
    m_fonts = childNamed(elements, "fontScheme");
}

pugi::xml_node DrawingTheme::fill(int number) const
{
    constexpr int firstOfBackgrounds = 1001;
    return number < firstOfBackgrounds
               ? childAt(childNamed(m_formats, "fillStyleLst"), number)
               : childAt(childNamed(m_formats, "bgFillStyleLst"), number - firstOfBackgrounds + 1);
}

pugi::xml_node DrawingTheme::line(int number) const
{
    return childAt(childNamed(m_formats, "lnStyleLst"), number);
}

pugi::xml_node DrawingTheme::effect(int number) const
{
    return childAt(childNamed(m_formats, "effectStyleLst"), number);
}

QString DrawingTheme::family(std::string_view typeface) const
{
    const bool major = typeface.starts_with("+mj"), minor = typeface.starts_with("+mn");
    if (major || minor)
        typeface = attributeOf(childNamed(childNamed(m_fonts, major ? "majorFont" : "minorFont"), "latin"), "typeface");
    return typeface.empty() || typeface.starts_with('+') ? u"Calibri"_s : textFrom(typeface.substr(0, 256));
}

std::optional<QRgb> DrawingTheme::color(pugi::xml_node parent, std::optional<QRgb> placeholder) const
{
    for (const pugi::xml_node node : parent.children()) {
        const std::optional<QRgb> base = baseColor(node, placeholder);
        if (!base)
            continue;
        std::vector<ColorChange> changes;
        for (const pugi::xml_node child : node.children()) {
            if (const auto change = changeFrom(child); change && changes.size() < maxChanges)
                changes.push_back(*change);
        }
        return changedColor(*base, changes);
    }
    return std::nullopt;
}

std::optional<QRgb> DrawingTheme::baseColor(pugi::xml_node node, std::optional<QRgb> placeholder) const
{
    const std::string_view kind = localName(node), value = attributeOf(node, "val");
    if (kind == "srgbClr")
        return m_palette.color(value, {}, {}, {});
    if (kind == "schemeClr")
        return value == "phClr" ? placeholder : m_palette.themeColor(value);
    if (kind == "sysClr") {
        // A system colour carries the value that it had where the file was written.
        const std::string_view last = attributeOf(node, "lastClr");
        return last.empty() ? std::optional(value == "window" ? 0xffffffff : 0xff000000)
                            : m_palette.color(last, {}, {}, {});
    }
    if (kind == "prstClr")
        return namedColor(value);
    if (kind == "hslClr")
        return fromHue(node);
    return kind == "scrgbClr" ? std::optional(fromLinearShares(node)) : std::nullopt;
}

} // namespace lumivane::engine
