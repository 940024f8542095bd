#pragma once

#include <QDateTime>
#include <QString>

namespace lumivane {

// How the records write values into their statements. Which texts have their apostrophes doubled, and where a number
// has a blank in front, is part of each statement.

QString doubledApostrophes(QString text);
/// "#2026-11-24 10:30:00#"
QString dateLiteral(const QDateTime& time);
/// With a blank in the place of the sign, where there is none.
QString blankedNumber(qint64 number);

} // namespace lumivane
