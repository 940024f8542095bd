#pragma once

#include "engine/draw/Measures.h"

#include <QFont>
#include <QFontMetricsF>
#include <map>
#include <tuple>
#include <vector>

class QPaintDevice;

namespace lumivane::engine {

/// The family that is drawn for one that a workbook names: itself where it is installed, otherwise one of the same
/// widths, otherwise one that is stretched to them. The one place that decides.
QString installedFamily(const QString& family);

/// Fonts of cells and their measures at one scale, made once and kept: asking the font system is dear.
class Fonts
{
public:
    class Face
    {
    public:
        Face(const QFont& font, double ascent, double descent);

        const QFont& font() const { return m_font; }
        double ascent() const { return m_ascent; } ///< of a line, pixels
        double descent() const { return m_descent; }
        double lineHeight() const { return m_ascent + m_descent; }
        double underline() const { return m_metrics.underlinePos(); } ///< below the base line
        double strikeOut() const { return m_metrics.strikeOutPos(); } ///< above it
        /// Width of a text. Plain letters are summed up from widths known before; scripts whose letters join are
        /// measured as a whole.
        double advance(QStringView text) const;

    private:
        double letterAdvance(char16_t letter) const;

        QFont m_font;
        QFontMetricsF m_metrics;
        double m_ascent, m_descent;
        mutable std::vector<float> m_letters; ///< of those below `firstJoining`; below 0: not yet measured
    };

    Fonts(double scale, const Measures& measures) : m_scale(scale), m_measures(measures) {}

    /// Kept for the thread's life, so that a new picture does not start by asking the font system again.
    static const Fonts& shared(double scale, const Measures& measures);

    /// The face of a style; `shrink` reduces its size. Super- and subscripts are smaller by themselves.
    const Face& face(const FontStyle& style, double shrink = 1) const;
    double scale() const { return m_scale; }

    /// The device that all measures are for: 96 dots per inch.
    static QPaintDevice* device();

private:
    using Key = std::tuple<QString, int, bool, bool>; ///< family, hundredths of a pixel, bold, italic
    Face makeFace(const FontStyle& style, double pixels) const;

    double m_scale;
    const Measures& m_measures;
    mutable std::map<Key, Face> m_faces;
};

/// Advance of the widest digit of a font of so many pixels, not rounded. Columns are sized for it, and texts are
/// narrowed to it where another family stands in for the font.
double widestDigit(const FontStyle& style, double pixelSize, const Measures& measures);

} // namespace lumivane::engine
