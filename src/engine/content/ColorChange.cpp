#include "engine/content/ColorChange.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

struct Channels
{
    double red, green, blue, alpha;

    template <class Change>
    void each(Change change)
    {
        for (double* channel : {&red, &green, &blue})
            *channel = std::clamp(change(*channel), 0.0, 1.0);
    }
};

struct Shades
{
    double hue, saturation, lightness; ///< each 0 to 1
};

double toLinear(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double fromLinear(double value)
{
    return value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

Shades shadesOf(const Channels& color)
{
    const double most = std::max({color.red, color.green, color.blue});
    const double least = std::min({color.red, color.green, color.blue});
    const double spread = most - least;
    Shades shades{0, 0, (most + least) / 2};
    if (spread <= 0)
        return shades;
    shades.saturation = shades.lightness <= 0.5 ? spread / (most + least) : spread / (2 - most - least);
    if (most == color.red)
        shades.hue = (color.green - color.blue) / spread / 6;
    else if (most == color.green)
        shades.hue = 1.0 / 3 + (color.blue - color.red) / spread / 6;
    else
        shades.hue = 2.0 / 3 + (color.red - color.green) / spread / 6;
    return shades;
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

void setShades(Channels& color, Shades shades)
{
    shades.saturation = std::clamp(shades.saturation, 0.0, 1.0);
    shades.lightness = std::clamp(shades.lightness, 0.0, 1.0);
    const double high = shades.lightness <= 0.5
                            ? shades.lightness * (1 + shades.saturation)
                            : shades.lightness + shades.saturation - shades.lightness * shades.saturation;
    const double low = 2 * shades.lightness - high;
    color.red = channel(low, high, shades.hue + 1.0 / 3);
    color.green = channel(low, high, shades.hue);
    color.blue = channel(low, high, shades.hue - 1.0 / 3);
}

Channels channelsOf(QRgb color)
{
    return {qRed(color) / 255.0, qGreen(color) / 255.0, qBlue(color) / 255.0, qAlpha(color) / 255.0};
}

QRgb rounded(const Channels& color)
{
    const auto byte = [](double value) { return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255)); };
    return qRgba(byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha));
}

/// Set, multiplied or moved, as the place of the change behind `first` says.
double adjusted(double old, ColorChange::Kind kind, ColorChange::Kind first, double value)
{
    switch (static_cast<int>(kind) - static_cast<int>(first)) {
    case 0:
        return value;
    case 1:
        return old * value;
    default:
        return old + value;
    }
}

void changeShades(Channels& color, const ColorChange& change)
{
    using enum ColorChange::Kind;
    Shades shades = shadesOf(color);
    if (change.kind <= HueOffset)
        shades.hue =
            adjusted(shades.hue, change.kind, Hue, change.kind == HueFactor ? change.value : change.value / 360);
    else if (change.kind <= SaturationOffset)
        shades.saturation = adjusted(shades.saturation, change.kind, Saturation, change.value);
    else
        shades.lightness = adjusted(shades.lightness, change.kind, Lightness, change.value);
    setShades(color, shades);
}

void apply(Channels& color, const ColorChange& change)
{
    using enum ColorChange::Kind;
    const double value = change.value;
    switch (change.kind) {
    case Shade:
        return color.each([&](double c) { return fromLinear(std::clamp(toLinear(c) * value, 0.0, 1.0)); });
    case Tint:
        return color.each([&](double c) { return fromLinear(std::clamp(1 - (1 - toLinear(c)) * value, 0.0, 1.0)); });
    case Alpha:
    case AlphaFactor:
    case AlphaOffset:
        color.alpha = std::clamp(adjusted(color.alpha, change.kind, Alpha, value), 0.0, 1.0);
        return;
    case Gray: {
        const double luma = 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
        return color.each([&](double) { return luma; });
    }
    case Complement:
        return changeShades(color, {HueOffset, 180});
    case Inverse:
        return color.each([](double c) { return fromLinear(1 - toLinear(c)); });
    case Gamma:
        return color.each(fromLinear);
    case InverseGamma:
        return color.each(toLinear);
    default:
        return changeShades(color, change);
    }
}

} // namespace

QRgb changedColor(QRgb color, std::span<const ColorChange> changes)
{
    Channels channels = channelsOf(color);
    for (const ColorChange& change : changes)
        apply(channels, change);
    return rounded(channels);
}

QRgb tinted(QRgb color, double tint)
{
    if (tint == 0 || !(std::abs(tint) <= 1))
        return color;
    Channels channels = channelsOf(color);
    Shades shades = shadesOf(channels);
    shades.lightness = tint < 0 ? shades.lightness * (1 + tint) : shades.lightness * (1 - tint) + tint;
    setShades(channels, shades);
    return rounded(channels);
}

} // namespace lumivane::engine
