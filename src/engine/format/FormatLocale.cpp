#include "engine/format/FormatLocale.h"

#include "engine/format/IndexedColors.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

constexpr int taiwan = 0x404, portugal = 0x816;
constexpr uint systemDate = 0xf800, systemTime = 0xf400;

/// The low ten bits of an identifier name the language, the rest its country.
constexpr std::pair<int, QLocale::Language> languages[] = {
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
    {0x27, QLocale::Lithuanian}, {0x1e, QLocale::Thai},       {0x39, QLocale::Hindi},
};

/// Names of days do not depend on the country but for Portuguese.
QLocale localeOf(int languageId)
{
    const auto place = std::find_if(std::begin(languages), std::end(languages),
                                    [&](const auto& entry) { return entry.first == (languageId & 0x3ff); });
    if (place == std::end(languages))
        return QLocale(QLocale::English, QLocale::UnitedStates);
    return languageId == portugal ? QLocale(QLocale::Portuguese, QLocale::Portugal) : QLocale(place->second);
}

/// The identifier of a language with a name like "pt-BR"; 0 for unknown ones.
uint languageNamed(const QString& name)
{
    if (name.startsWith("x-sysdate"_L1))
        return systemDate;
    if (name.startsWith("x-systime"_L1))
        return systemTime;
    static constexpr std::pair<QLocale::Territory, int> countries[] = {
        {QLocale::Taiwan, taiwan}, {QLocale::HongKong, 0xc04}, {QLocale::Macao, 0x1404}, {QLocale::Portugal, portugal}};
    const QLocale locale(name);
    for (const auto& [country, id] : countries)
        if (locale.territory() == country)
            return static_cast<uint>(id);
    for (const auto& [id, language] : languages)
        if (locale.language() == language)
            return static_cast<uint>(0x400 + id);
    return 0;
}

/// Short names are written without the point that some languages put behind them.
QString withoutPoint(QString name)
{
    if (name.indexOf(u'.') == name.size() - 1)
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

namespace {

/// The code of the system's own long date or time; empty for tags that name a language.
QString systemDateCode(uint tag)
{
    return tag == systemDate ? u"dddd, mmmm d, yyyy"_s : tag == systemTime ? u"h:mm:ss AM/PM"_s : QString();
}

} // namespace

LocaleTag readLocaleTag(const QString& text)
{
    LocaleTag tag;
    // "en-US" begins with small letters, a number does not. A symbol may hold a hyphen before a number only.
    const qsizetype first = text.indexOf(u'-');
    qsizetype nameEnd = first + 1;
    while (nameEnd < text.size() && text[nameEnd] >= u'a' && text[nameEnd] <= u'z')
        ++nameEnd;
    const bool named = first >= 0 && nameEnd > first + 1 && nameEnd < text.size() && text[nameEnd] == u'-';
    const qsizetype hyphen = named ? first : text.lastIndexOf(u'-');
    tag.symbol = text.left(hyphen);
    if (hyphen < 0)
        return tag;
    const QString name = text.mid(hyphen + 1).section(u',', 0, 0);
    const uint extension = text.mid(hyphen + 1).section(u',', 1, 1).toUInt(nullptr, 16);
    const uint id = named ? languageNamed(name) : name.toUInt(nullptr, 16);
    tag.systemCode = systemDateCode(id);
    tag.language = static_cast<int>(id & 0xffff);
    // Behind a comma calendar and numerals may stand alone or with a language.
    const uint others = extension == 0 ? id >> 16 : extension > 0xffff ? extension >> 16 : extension;
    tag.calendar = static_cast<int>(others & 0xff);
    tag.numerals = static_cast<int>(others >> 8);
    return tag;
}

bool countsEras(int languageId)
{
    return (languageId & 0x3ff) == 0x11 || languageId == taiwan;
}

EraYear eraYear(qint64 day, int calendarYear, int languageId)
{
    if (languageId == taiwan)
        return {{u"民國"_s, u"民國"_s, u"中華民國"_s}, calendarYear - 1911};
    struct Era
    {
        qint64 firstDay;
        int firstYear;
        QStringList names;
    };
    static const Era eras[] = {{43586, 2019, {u"R"_s, u"令"_s, u"令和"_s}},
                               {32516, 1989, {u"H"_s, u"平"_s, u"平成"_s}},
                               {9856, 1926, {u"S"_s, u"昭"_s, u"昭和"_s}},
                               {4595, 1912, {u"T"_s, u"大"_s, u"大正"_s}},
                               {0, 1868, {u"M"_s, u"明"_s, u"明治"_s}}};
    const auto era =
        std::find_if(std::begin(eras), std::end(eras) - 1, [&](const Era& e) { return day >= e.firstDay; });
    return {era->names, calendarYear - era->firstYear + 1};
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
