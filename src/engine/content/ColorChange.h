#pragma once

#include <QColor>
#include <QtGlobal>
#include <span>

namespace lumivane::engine {

/// One change of a colour. Files store several, and their order counts.
struct ColorChange
{
    enum class Kind : quint8 {
        Shade, ///< darker and
        Tint,  ///< lighter, both in linear light
        Hue,   ///< of hue, saturation and lightness: set, multiplied, moved
        HueFactor,
        HueOffset,
        Saturation,
        SaturationFactor,
        SaturationOffset,
        Lightness,
        LightnessFactor,
        LightnessOffset,
        Alpha,
        AlphaFactor,
        AlphaOffset,
        Gray,
        Complement,
        Inverse,
        Gamma, ///< linear light is taken for a stored value, or
        InverseGamma,
    };
    Kind kind;
    double value = 0; ///< a share, 1 for the whole; of a hue in degrees, but for its factor
};

/// The colour after all changes, opacity included. It is rounded to bytes once, at the end.
QRgb changedColor(QRgb color, std::span<const ColorChange> changes);

/// Lighter for a tint up to 1, darker down to -1, by the lightness of hue, lightness and saturation: how cells change
/// theirs.
QRgb tinted(QRgb color, double tint);

} // namespace lumivane::engine
