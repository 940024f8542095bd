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

/// What stands in for a family that only other systems have.
struct Substitute
{
    QString family;
    double digit = 0;       ///< width of the missing one's digits, as a share of its size; 0: as in `family`
    bool eastAsian = false; ///< letters are as wide as the size in whole pixels, digits half of that, rounded up
};

/// Old workbooks name a font's letters for one region as a family of its own.
QString withoutRegion(QString name)
{
    for (const QLatin1StringView region : {" cyr"_L1, " ce"_L1, " greek"_L1, " tur"_L1, " baltic"_L1})
        if (name.endsWith(region))
            name.chop(region.size());
    return name;
}

bool hasEastAsianName(const QString& family)
{
    static const QStringList known = {u"batang"_s,    u"batangche"_s,  u"dengxian"_s,   u"dfkai-sb"_s,
                                      u"dotum"_s,     u"dotumche"_s,   u"fangsong"_s,   u"gulim"_s,
                                      u"gulimche"_s,  u"kaiti"_s,      u"mingliu"_s,    u"ms gothic"_s,
                                      u"ms mincho"_s, u"ms pgothic"_s, u"ms pmincho"_s, u"ms ui gothic"_s,
                                      u"nsimsun"_s,   u"pmingliu"_s,   u"simhei"_s,     u"simsun"_s};
    return known.contains(family) || std::any_of(family.begin(), family.end(), [](QChar letter) {
               return letter.unicode() >= 0x2e80; // ideographs, kana, hangul, wide letters
           });
}

/// A family that only other systems have, in small letters, and a free one of equal widths, or the one whose digits are
/// nearest, as digits decide the widths of columns.
struct KnownFont
{
    QStringView name, substitute;
    double digit = 0;       ///< as Substitute::digit
    bool customary = false; ///< Calc knows it too
};

constexpr KnownFont knownFonts[] = {
    {u"calibri", u"Carlito", 0, true},
    {u"cambria", u"Caladea", 0, true},
    {u"cambria math", u"Caladea", 0, true},
    {u"arial", u"Liberation Sans", 0, true},
    {u"helvetica", u"Liberation Sans", 0, true},
    {u"arial narrow", u"Liberation Sans Narrow", 0, true},
    {u"times new roman", u"Liberation Serif", 0, true},
    {u"times", u"Liberation Serif", 0, true},
    {u"courier new", u"Liberation Mono", 0, true},
    {u"courier", u"Liberation Mono", 0, true},
    {u"aptos", u"Liberation Sans", 0, true},
    {u"aptos narrow", u"Liberation Sans Narrow", 0.489, true},
    {u"calibri light", u"Carlito", 0, true},
    {u"candara", u"Carlito", 0, true},
    {u"consolas", u"Liberation Mono", 0.55, true},
    {u"constantia", u"Caladea", 0, true},
    {u"garamond", u"Liberation Serif", 0.469, true},
    {u"georgia", u"DejaVu Serif", 0.614, true},
    {u"lucida console", u"DejaVu Sans Mono", 0, true},
    {u"microsoft sans serif", u"Liberation Sans", 0, true},
    {u"ms sans serif", u"Liberation Sans", 0, true},
    {u"segoe ui", u"Liberation Sans", 0.539, true},
    {u"tahoma", u"Liberation Sans", 0.546, true},
    {u"trebuchet ms", u"Liberation Sans", 0.524, true},
    {u"aptos display", u"Liberation Sans", 0},
    {u"arial unicode ms", u"Liberation Sans", 0},
    {u"book antiqua", u"Liberation Serif", 0},
    {u"bookman old style", u"DejaVu Serif", 0.62},
    {u"century gothic", u"Liberation Sans", 0.554},
    {u"century schoolbook", u"Liberation Serif", 0.556},
    {u"comic sans ms", u"DejaVu Sans", 0.61},
    {u"franklin gothic book", u"Liberation Sans", 0},
    {u"gill sans mt", u"Carlito", 0.5},
    {u"helvetica neue", u"Liberation Sans", 0},
    {u"lucida sans unicode", u"DejaVu Sans", 0},
    {u"malgun gothic", u"Liberation Sans", 0},
    {u"meiryo", u"DejaVu Sans", 0},
    {u"microsoft jhenghei", u"Liberation Sans", 0},
    {u"microsoft yahei", u"Liberation Sans", 0.539},
    {u"open sans", u"Liberation Sans", 0.572},
    {u"palatino linotype", u"Liberation Serif", 0},
    {u"roboto", u"Liberation Sans", 0.562},
    {u"segoe ui light", u"Liberation Sans", 0.539},
    {u"segoe ui semibold", u"Liberation Sans", 0.539},
    {u"verdana", u"DejaVu Sans", 0},
    {u"yu gothic", u"Liberation Sans", 0},
};

/// A family that only other systems have, in small letters; without a family where nothing is known of it.
Substitute substituteFor(const QString& name, bool customaryOnly)
{
    static const QHash<QString, QString> otherNames = {{u"맑은 고딕"_s, u"malgun gothic"_s},
                                                       {u"微軟正黑體"_s, u"microsoft jhenghei"_s},
                                                       {u"微软雅黑"_s, u"microsoft yahei"_s},
                                                       {u"游ゴシック"_s, u"yu gothic"_s},
                                                       {u"メイリオ"_s, u"meiryo"_s}};
    const QString usual = otherNames.value(name, name);
    for (const KnownFont& known : knownFonts) {
        if (known.name == usual && (known.customary || !customaryOnly))
            return {known.substitute.toString(), known.digit};
    }
    return !customaryOnly && hasEastAsianName(name) ? Substitute{u"Carlito"_s, 0, true} : Substitute{};
}

Substitute findDrawn(const QString& family, bool customaryOnly)
{
    if (QFontDatabase::hasFamily(family))
        return {family};
    const QString name = withoutRegion(family.toLower());
    Substitute wanted = substituteFor(name, customaryOnly);
    // Most fonts have digits about as wide as those of Liberation Sans.
    const QString last = customaryOnly ? u"DejaVu Sans"_s : u"Liberation Sans"_s;
    for (const QString& candidate : {wanted.family, last, u"DejaVu Sans"_s}) {
        if (!candidate.isEmpty() && QFontDatabase::hasFamily(candidate)) {
            wanted.family = candidate;
            return wanted;
        }
    }
    return {family};
}

/// What is drawn for a family, and the widths that it should have. Calc knows fewer substitutes.
Substitute drawnFor(const QString& family, const Measures& measures)
{
    static thread_local QHash<std::pair<QString, bool>, Substitute> known;
    const std::pair key(family, measures.customaryFonts);
    const auto place = known.constFind(key);
    return place != known.constEnd() ? *place : *known.insert(key, findDrawn(family, measures.customaryFonts));
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

/// Whether a font is measured as it is, or stretched to the width that is usual: a narrow one is wider then.
enum class Stretched { No, Yes };

/// Measured large and scaled down, as whole pixels would round the advance.
double measureDigit(const QString& family, const FontStyle& style, Stretched stretched)
{
    constexpr int large = 1000;
    QFont font(family);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(large);
    if (stretched == Stretched::Yes)
        font.setStretch(QFont::Unstretched);
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest / large;
}

/// Advance of the widest digit of an installed family, as a share of the font's size.
double digitShare(const QString& family, const FontStyle& style, Stretched stretched)
{
    using Key = std::tuple<QString, bool, bool, Stretched>;
    static thread_local std::map<Key, double> known;
    const Key key{family, style.bold, style.italic, stretched};
    auto place = known.find(key);
    if (place == known.end())
        place = known.emplace(key, measureDigit(family, style, stretched)).first;
    return place->second;
}

} // namespace

QString installedFamily(const QString& family)
{
    return drawnFor(family, Measures::of(Metrics::File)).family;
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
    const Substitute drawn = drawnFor(style.family, m_measures);
    QFont font(drawn.family);
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
    const double whole = std::max(std::round(screenPixels), 1.0);
    const double screenDigit = std::min(widestDigit(style, whole, m_measures),
                                        std::max(std::round(widestDigit(style, screenPixels, m_measures)), 1.0));
    const double drawnPixels = std::max(std::round(pixels), 1.0);
    double share = screenDigit * m_scale / (digitShare(drawn.family, style, Stretched::Yes) * drawnPixels);
    if (drawn.eastAsian) // the letters of the script are as many pixels wide as high
        share = std::min(share, whole * m_scale / drawnPixels);
    font.setStretch(std::clamp(static_cast<int>(std::lround(100 * share)), 50, 200));
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

double widestDigit(const FontStyle& style, double pixelSize, const Measures& measures)
{
    const Substitute drawn = drawnFor(style.family, measures);
    if (measures.customaryFonts || (drawn.digit <= 0 && !drawn.eastAsian))
        return digitShare(drawn.family, style, Stretched::No) * pixelSize;
    return drawn.eastAsian ? std::ceil(std::round(pixelSize) / 2) : drawn.digit * pixelSize;
}

} // namespace lumivane::engine
