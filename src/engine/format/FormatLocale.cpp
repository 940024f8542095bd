#include "engine/format/FormatLocale.h"

#include "engine/format/IndexedColors.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// The low ten bits of an identifier name the language, the rest its country, which names of days do not depend on
/// but for Portuguese.
QLocale localeOf(int languageId)
{
    static const std::pair<int, QLocale::Language> languages[] = {
        {0x01, QLocale::Arabic},     {0x02, QLocale::Bulgarian},  {0x03, QLocale::Catalan},
        {0x04, QLocale::Chinese},    {0x05, QLocale::Czech},      {0x06, QLocale::Danish},
        {0x07, QLocale::German},     {0x08, QLocale::Greek},      {0x0a, QLocale::Spanish},
        {0x0b, QLocale::Finnish},    {0x0c, QLocale::French},     {0x0d, QLocale::Hebrew},
        {0x0e, QLocale::Hungarian},  {0x10, QLocale::Italian},    {0x11, QLocale::Japanese},
        {0x12, QLocale::Korean},     {0x13, QLocale::Dutch},      {0x14, QLocale::NorwegianBokmal},
        {0x15, QLocale::Polish},     {0x16, QLocale::Portuguese}, {0x18, QLocale::Romanian},
        {0x19, QLocale::Russian},    {0x1a, QLocale::Croatian},   {0x1b, QLocale::Slovak},
        {0x1d, QLocale::Swedish},    {0x1f, QLocale::Turkish},    {0x22, QLocale::Ukrainian},
        {0x24, QLocale::Slovenian},  {0x25, QLocale::Estonian},   {0x26, QLocale::Latvian},
        {0x27, QLocale::Lithuanian},
    };
    const auto place = std::find_if(std::begin(languages), std::end(languages),
                                    [&](const auto& entry) { return entry.first == (languageId & 0x3ff); });
    if (place == std::end(languages))
        return QLocale(QLocale::English, QLocale::UnitedStates);
    return languageId == 0x816 ? QLocale(QLocale::Portuguese, QLocale::Portugal) : QLocale(place->second);
}

/// Short names are written without the point that some languages put behind them.
QString withoutPoint(QString name)
{
    if (name.endsWith(u'.'))
        name.chop(1);
    return name;
}

} // namespace

QString monthName(int month, bool inFull, int languageId)
{
    const QLocale locale = localeOf(languageId);
    return withoutPoint(locale.standaloneMonthName(month, inFull ? QLocale::LongFormat : QLocale::ShortFormat));
}

QString dayName(int day, bool inFull, int languageId)
{
    const QLocale locale = localeOf(languageId);
    return withoutPoint(locale.standaloneDayName(day, inFull ? QLocale::LongFormat : QLocale::ShortFormat));
}

QString systemDateCode(unsigned languageId)
{
    switch (languageId) {
    case 0xf800:
        return u"dddd, mmmm d, yyyy"_s;
    case 0xf400:
        return u"h:mm:ss AM/PM"_s;
    default:
        return {};
    }
}

std::optional<quint32> formatColor(const QString& name)
{
    static const std::pair<const char16_t*, quint32> names[] = {
        {u"black", 0xff000000},   {u"blue", 0xff0000ff}, {u"cyan", 0xff00ffff},  {u"green", 0xff00ff00},
        {u"magenta", 0xffff00ff}, {u"red", 0xffff0000},  {u"white", 0xffffffff}, {u"yellow", 0xffffff00},
    };
    const QString lower = name.toLower();
    for (const auto& [known, color] : names)
        if (lower == QStringView(known))
            return color;
    if (!lower.startsWith("color"_L1))
        return {};
    bool isNumber = false;
    const int number = QStringView(lower).sliced(5).trimmed().toInt(&isNumber);
    if (!isNumber || number < 1 || number > static_cast<int>(indexedColors.size()))
        return {};
    return 0xff000000u | indexedColors[static_cast<size_t>(number - 1)];
}

} // namespace lumivane::engine
