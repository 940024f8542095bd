#pragma once

#include "platform/FindQuestion.h"

#include <QString>
#include <optional>

namespace lumivane::engine {

/// What is looked for, in the forms in which it is compared.
struct SoughtText
{
    explicit SoughtText(const FindQuestion& question);

    QString text;
    bool whole = true;
    bool anything = false; ///< any contents will do
    /// The text as a plain number; none when it cannot be the plain text of one.
    std::optional<double> number;
    /// The digits and the decimal point of the text alone, as a number; none without digits.
    std::optional<double> digits;

    bool hits(const QString& candidate) const;
};

/// Whether cells of a number format can show a text. Formatting is what makes a search slow, and nearly every cell can
/// be left out without it.
enum class FormatReach : quint8 {
    Never,
    NearNumber, ///< only for numbers that differ from the sought digits by less than one
    Perhaps,    ///< only formatting tells
};
FormatReach formatReach(const QString& code, const SoughtText& sought);

} // namespace lumivane::engine
