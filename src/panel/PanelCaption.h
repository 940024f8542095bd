#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace lumivane {

/// What a panel is among those that are arranged together.
enum class PanelMark { None, Marked, Base };

/// A panel's caption with its mark in front and the stamp of its file behind: a time of day for a file of today, a date
/// for an older one, nothing where no stamp is wanted.
QString panelCaptionText(const QString& caption, PanelMark mark, const std::optional<QDateTime>& stamp,
                         const QDateTime& now);

/// How many blanks put the text into the middle of a window caption, which can only be left-aligned. Widths are twips
/// in the caption font. 0 or less: none are needed.
int centringBlanks(float clientWidth, int textWidth, int hundredBlanksWidth);

} // namespace lumivane
