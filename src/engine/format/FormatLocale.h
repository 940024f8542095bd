#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace lumivane::engine {

/// Names of months and days in the language of a locale tag; English for tag 0 and unknown ones. Months from 1, days
/// from 1 (Monday) to 7.
QString monthName(int month, bool inFull, int languageId);
QString dayName(int day, bool inFull, int languageId);

/// What stands behind the dollar sign of a bracket, as in "[$€-407]" or "[$-th-TH,D07]".
struct LocaleTag
{
    QString symbol;     ///< of a currency
    int language = 0;   ///< identifier; 0: none or an unknown one
    int calendar = 0;   ///< 0: the customary one
    int numerals = 0;   ///< 0: the customary ones
    QString systemCode; ///< of the system's own long date or time, if the tag asks for it
};
LocaleTag readLocaleTag(const QString& text);

/// A year of an era, such as the reign of an emperor.
struct EraYear
{
    QStringList names; ///< as the code asks for them with one, two and three letters
    int year;
};
bool countsEras(int languageId);
/// Of a day counted from 1900 that lies in a calendar year. Languages without eras have those of Japan.
EraYear eraYear(qint64 day, int calendarYear, int languageId);

/// "Red", "Color 12" and the like, 0xffRRGGBB.
std::optional<quint32> formatColor(const QString& name);

} // namespace lumivane::engine
