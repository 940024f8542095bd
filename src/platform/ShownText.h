#pragma once

#include <QString>

namespace lumivane {

// Texts that came from files, as they may be shown. Control characters would act on a terminal or break a line, and
// characters that turn the direction of writing would let a name look like another one; each is shown as "?".

/// A name: one line.
QString shownName(QString name);
/// A text of several lines, as a box shows it: line ends and tabs stay.
QString shownText(QString text);
/// Whether a character acts where it should only be seen.
bool isActing(QChar character);

} // namespace lumivane
