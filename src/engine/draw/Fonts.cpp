#include "engine/draw/Fonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QImage>
#include <QRawFont>
#include <QtEndian>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr double scriptSize = 0.58; // of super- and subscripts, as a share of the line's

/// Letters from here on may join, combine or come in pairs.
constexpr char16_t firstJoining = 0x300;

/// Free families for those that only other systems have: first those of equal widths, then those whose digits are
/// nearest, as digits decide the widths of columns.
QString substitute(const QString& family)
{
    static const QHash<QString, QString> substitutes = {
        {u"calibri"_s, u"Carlito"_s},
        {u"cambria"_s, u"Caladea"_s},
        {u"cambria math"_s, u"Caladea"_s},
        {u"arial"_s, u"Liberation Sans"_s},
        {u"helvetica"_s, u"Liberation Sans"_s},
        {u"arial narrow"_s, u"Liberation Sans Narrow"_s},
        {u"times new roman"_s, u"Liberation Serif"_s},
        {u"times"_s, u"Liberation Serif"_s},
        {u"courier new"_s, u"Liberation Mono"_s},
        {u"courier"_s, u"Liberation Mono"_s},
        {u"aptos"_s, u"Liberation Sans"_s},
        {u"aptos narrow"_s, u"Liberation Sans Narrow"_s},
        {u"calibri light"_s, u"Carlito"_s},
        {u"candara"_s, u"Carlito"_s},
        {u"consolas"_s, u"Liberation Mono"_s},
        {u"constantia"_s, u"Caladea"_s},
        {u"garamond"_s, u"Liberation Serif"_s},
        {u"georgia"_s, u"DejaVu Serif"_s},
        {u"lucida console"_s, u"DejaVu Sans Mono"_s},
        {u"microsoft sans serif"_s, u"Liberation Sans"_s},
        {u"ms sans serif"_s, u"Liberation Sans"_s},
        {u"segoe ui"_s, u"Liberation Sans"_s},
        {u"tahoma"_s, u"Liberation Sans"_s},
        {u"trebuchet ms"_s, u"Liberation Sans"_s},
    };
    QString name = family.toLower();
    // Old workbooks name a font's letters for one region as a family of its own.
    for (const QLatin1StringView region : {" cyr"_L1, " ce"_L1, " greek"_L1, " tur"_L1, " baltic"_L1})
        if (name.endsWith(region))
            name.chop(region.size());
    return substitutes.value(name);
}

/// Ascent and descent that the font states for its lines, without the gap that other measures include.
std::pair<double, double> lineExtent(const QFont& font)
{
    const QRawFont raw = QRawFont::fromFont(font);
    const QByteArray table = raw.fontTable("hhea");
    if (table.size() >= 8 && raw.unitsPerEm() > 0) {
        const double unit = raw.pixelSize() / raw.unitsPerEm();
        const double ascent = qFromBigEndian<qint16>(table.constData() + 4) * unit;
        const double descent = -qFromBigEndian<qint16>(table.constData() + 6) * unit;
        if (ascent > 0)
            return {ascent, descent};
    }
    return {raw.ascent(), raw.descent()};
}

/// Measured large and scaled down, as whole pixels would round the advance.
double measuredDigit(const std::tuple<QString, bool, bool>& face)
{
    constexpr int large = 1000;
    QFont font(std::get<0>(face));
    font.setBold(std::get<1>(face));
    font.setItalic(std::get<2>(face));
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(large);
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest / large;
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

    return m_faces.emplace(key, makeFace(style, hundredths / 100.0)).first->second;
}

Fonts::Face Fonts::makeFace(const FontStyle& style, double pixels) const
{
    QFont font(installedFamily(style.family));
    font.setPointSizeF(pixels / pixelsPerPoint);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setKerning(false);
    if (m_measures.hintedLetters) {
        font.setHintingPreference(QFont::PreferFullHinting);
        const QFont sized(font, device());
        const auto [ascent, descent] = lineExtent(sized);
        return {sized, ascent, descent};
    }
    // On screen letters are a whole number of pixels high and digits as many wide, mostly less than their outlines ask
    // for; so texts are drawn a little narrower. At other scales the width follows that of scale 1.
    font.setHintingPreference(QFont::PreferNoHinting);
    const double screenPixels = pixels / m_scale;
    const double screenDigit = std::min(widestDigit(style, std::max(std::round(screenPixels), 1.0)),
                                        std::max(std::round(widestDigit(style, screenPixels)), 1.0));
    const double digit = widestDigit(style, std::max(std::round(pixels), 1.0));
    font.setStretch(std::clamp(static_cast<int>(std::lround(100 * screenDigit * m_scale / digit)), 50, 200));
    const QFont sized(font, device());
    const QFontMetricsF metrics(sized, device());
    return {sized, metrics.ascent(), metrics.descent()};
}

Fonts::Face::Face(const QFont& font, double ascent, double descent)
    : m_font(font), m_metrics(m_font, device()), m_ascent(ascent), m_descent(descent), m_letters(firstJoining, -1.0f)
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

const Fonts& Fonts::shared(double scale, const Measures& measures)
{
    static thread_local std::map<std::pair<double, const Measures*>, Fonts> known;
    // Scales come from screens; a stream of odd ones must not fill the memory. Those of scale 1 measure rows, also in
    // the middle of a picture, and stay.
    constexpr size_t enough = 16;
    if (known.size() > enough && scale != 1 && !known.contains({scale, &measures}))
        std::erase_if(known, [](const auto& entry) { return entry.first.first != 1; });
    return known.try_emplace({scale, &measures}, scale, measures).first->second;
}

double widestDigit(const FontStyle& style, double pixelSize)
{
    using Key = std::tuple<QString, bool, bool>;
    static thread_local std::map<Key, double> known; // for a font of one pixel
    const Key key{installedFamily(style.family), style.bold, style.italic};
    auto place = known.find(key);
    if (place == known.end())
        place = known.emplace(key, measuredDigit(key)).first;
    return place->second * pixelSize;
}

} // namespace lumivane::engine
