#include "host/embedded/drawing/Fonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QImage>
#include <QRawFont>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::embedded {
namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr double scriptSize = 0.58; // of super- and subscripts, as a share of the line's

/// Letters from here on may join, combine or come in pairs.
constexpr char16_t firstJoining = 0x300;

QString substitute(const QString& family)
{
    static const QHash<QString, QString> sameWidths = {
        {u"calibri"_s, u"Carlito"_s},
        {u"cambria"_s, u"Caladea"_s},
        {u"arial"_s, u"Liberation Sans"_s},
        {u"helvetica"_s, u"Liberation Sans"_s},
        {u"arial narrow"_s, u"Liberation Sans Narrow"_s},
        {u"times new roman"_s, u"Liberation Serif"_s},
        {u"times"_s, u"Liberation Serif"_s},
        {u"courier new"_s, u"Liberation Mono"_s},
        {u"courier"_s, u"Liberation Mono"_s},
    };
    return sameWidths.value(family.toLower());
}

QString findInstalled(const QString& family)
{
    for (const QString& candidate : {family, substitute(family), u"DejaVu Sans"_s, u"Liberation Sans"_s})
        if (!candidate.isEmpty() && QFontDatabase::hasFamily(candidate))
            return candidate;
    return family;
}

} // namespace

QString installedFamily(const QString& family)
{
    static thread_local QHash<QString, QString> known;
    const auto place = known.constFind(family);
    if (place != known.constEnd())
        return *place;
    return *known.insert(family, findInstalled(family));
}

QPaintDevice* Fonts::device()
{
    static QImage image = [] {
        QImage dot(1, 1, QImage::Format_RGB32);
        dot.setDotsPerMeterX(3780);
        dot.setDotsPerMeterY(3780);
        return dot;
    }();
    return &image;
}

const Fonts::Face& Fonts::face(const FontStyle& style, double shrink) const
{
    const double script = style.script == Script::Normal ? 1 : scriptSize;
    const double pixels = std::max(style.points * pixelsPerPoint * m_scale * shrink * script, 1.0);
    const int hundredths = static_cast<int>(std::lround(std::min(pixels, 5000.0) * 100));
    const Key key{style.family, hundredths, style.bold, style.italic};
    const auto place = m_faces.find(key);
    if (place != m_faces.end())
        return place->second;

    QFont font(installedFamily(style.family));
    font.setPointSizeF(hundredths / 100.0 / pixelsPerPoint);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return m_faces.emplace(key, Face(font)).first->second;
}

Fonts::Face::Face(const QFont& font)
    : m_font(font, device()), m_metrics(m_font, device()), m_ascent(m_metrics.ascent()), m_descent(m_metrics.descent()),
      m_letters(firstJoining, -1.0f)
{
}

double Fonts::Face::letterAdvance(char16_t letter) const
{
    float& known = m_letters[letter];
    if (known < 0)
        known = static_cast<float>(m_metrics.horizontalAdvance(QChar(letter)));
    return static_cast<double>(known);
}

double Fonts::Face::advance(QStringView text) const
{
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() >= firstJoining)
            return m_metrics.horizontalAdvance(text.toString());
        sum += letterAdvance(c.unicode());
    }
    return sum;
}

double widestDigit(const FontStyle& style, double pixelSize)
{
    QFont font(installedFamily(style.family));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    // Measured large and scaled down, as whole pixels would round the advance.
    constexpr int large = 1000;
    font.setPixelSize(large);
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest * pixelSize / large;
}

} // namespace lumivane::embedded
