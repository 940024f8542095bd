#pragma once

#include <QString>
#include <optional>

namespace lumivane::engine {

/// Names of months and days in the language of a locale tag; English for tag 0 and unknown ones. Months from 1, days
/// from 1 (Monday) to 7.
QString monthName(int month, bool inFull, int languageId);
QString dayName(int day, bool inFull, int languageId);

/// The code that stands for the system's own long date or time; empty for tags that name a language.
QString systemDateCode(unsigned languageId);

/// "Red", "Color 12" and the like, 0xffRRGGBB.
std::optional<quint32> formatColor(const QString& name);

} // namespace lumivane::engine
