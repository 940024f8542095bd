#include "engine/format/NumberFormat.h"

#include "engine/format/Decimal.h"
#include "engine/format/FormatCode.h"
#include "engine/format/FormatDate.h"
#include "engine/format/FormatDigits.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

FormatSection generalSection()
{
    FormatSection section;
    section.parts.push_back({PartKind::General, {}, {}, 0});
    section.hasGeneral = true;
    return section;
}

QString scientific(Decimal value, int decimals)
{
    int exponent = value.exponent();
    value.shift(-exponent);
    value.round(decimals);
    if (value.exponent() > 0) {
        value.shift(-1);
        ++exponent;
    }
    decimals = std::max(value.significantDigits() - 1, 0);
    QString text = QString::fromLatin1(value.integerDigits());
    if (decimals > 0)
        text += u'.' + QString::fromLatin1(value.decimalDigits(decimals));
    return text + (exponent < 0 ? u"E-"_s : u"E+"_s) + QString::number(std::abs(exponent)).rightJustified(2, u'0');
}

QString fixedPoint(Decimal value, int decimals)
{
    value.round(decimals);
    const int shown = std::max(value.significantDigits() - value.exponent() - 1, 0);
    const QByteArray digits = value.integerDigits();
    QString text = digits.isEmpty() ? u"0"_s : QString::fromLatin1(digits);
    if (shown > 0)
        text += u'.' + QString::fromLatin1(value.decimalDigits(shown));
    return text;
}

/// Where no width limits it, a number shows all of its 15 digits, in powers of ten from 1E+15 and below 0.0001.
QString unlimitedGeneral(const Decimal& value)
{
    const int exponent = value.exponent();
    return exponent >= 15 || exponent < -4 ? scientific(value, 14) : fixedPoint(value, 14 - exponent);
}

QString generalMagnitude(double magnitude, int maxChars)
{
    // Most numbers are small whole ones.
    if (maxChars >= 9 && magnitude < 1e9 && magnitude == std::floor(magnitude))
        return QString::number(static_cast<qint64>(magnitude));
    const Decimal value(magnitude);
    if (maxChars >= NumberFormat::unlimited)
        return unlimitedGeneral(value);
    const int exponent = value.exponent();
    const int powerChars = exponent > 99 || exponent < -99 ? 5 : 4; // "E+10"
    const QString power = scientific(value, std::max(maxChars - powerChars - 2, 0));
    if (exponent >= maxChars)
        return power;
    if (exponent < -4) {
        // Very small numbers are written out only where nothing is lost by it.
        const QString whole = fixedPoint(value, 14 - exponent);
        return whole.size() <= maxChars ? whole : power;
    }
    const QString text = fixedPoint(value, std::max(maxChars - std::max(exponent, 0) - 2, 0));
    return text.size() > maxChars ? power : text;
}

} // namespace

struct NumberFormat::Sections
{
    std::vector<FormatSection> numeric; // at least one
    std::optional<FormatSection> text;

    explicit Sections(const QString& code);
    const FormatSection* choose(double value) const;
    bool keepsSign(const FormatSection& section) const;
};

NumberFormat::Sections::Sections(const QString& code)
{
    auto parsed = code.isEmpty() ? std::nullopt : parseFormatCode(code);
    if (!parsed)
        parsed = std::vector{generalSection()};
    // A fourth section, or a last one with "@", is that of texts.
    if (parsed->size() == 4 || (parsed->size() > 1 && parsed->back().hasText && !parsed->back().condition)) {
        text = parsed->back();
        parsed->pop_back();
    } else if (parsed->front().hasText && parsed->size() == 1) {
        text = parsed->front();
    }
    numeric = std::move(*parsed);
    using Condition = FormatCondition;
    if (numeric.size() == 2 && !numeric[0].condition)
        numeric[0].condition =
            numeric[1].condition ? Condition{Condition::Greater, 0} : Condition{Condition::GreaterEqual, 0};
    if (numeric.size() == 3) {
        if (!numeric[0].condition)
            numeric[0].condition = Condition{Condition::Greater, 0};
        if (!numeric[1].condition)
            numeric[1].condition = Condition{Condition::Less, 0};
    }
}

/// The first section whose condition the value fulfils; null if there is none.
const FormatSection* NumberFormat::Sections::choose(double value) const
{
    for (size_t i = 0; i < numeric.size(); ++i) {
        const bool last = i + 1 == numeric.size() && i > 0;
        if (last || !numeric[i].condition || numeric[i].condition->holds(value))
            return &numeric[i];
    }
    return nullptr;
}

/// A section that only negative numbers reach says itself what is negative.
bool NumberFormat::Sections::keepsSign(const FormatSection& section) const
{
    if (section.condition && section.condition->onlyNegative())
        return false;
    const FormatCondition* before = numeric[0].condition ? &*numeric[0].condition : nullptr;
    const bool isElse = numeric.size() == 2 && &section == &numeric[1];
    const bool takesPositive =
        before && before->limit <= 0 &&
        (before->comparison == FormatCondition::GreaterEqual || before->comparison == FormatCondition::Greater);
    return !(isElse && takesPositive);
}

NumberFormat::NumberFormat(const QString& code) : m_sections(std::make_unique<Sections>(code)) {}

NumberFormat::~NumberFormat() = default;
NumberFormat::NumberFormat(NumberFormat&&) noexcept = default;

FormattedText NumberFormat::number(double value, bool date1904, int generalChars) const
{
    const FormatSection* section = m_sections->choose(value);
    FormattedText result;
    if (!section) {
        result.isError = true;
    } else if (section->isDate) {
        const auto shown = dateText(*section, value, date1904);
        result.isError = !shown;
        result.text = shown.value_or(QString());
    } else {
        bool allZero = false;
        result = digitsText(*section, std::fabs(value), generalChars, allZero);
        result.isGeneral = section->hasGeneral;
        if (value < 0 && !allZero && m_sections->keepsSign(*section)) {
            result.text.prepend(u'-');
            if (result.fillPosition >= 0)
                ++result.fillPosition;
        }
    }
    if (result.isError)
        result.text = u"########"_s;
    if (section)
        result.color = section->color;
    return result;
}

FormattedText NumberFormat::text(const QString& value) const
{
    FormattedText result;
    if (!m_sections->text) {
        result.text = value;
        return result;
    }
    for (const FormatPart& part : m_sections->text->parts) {
        if (part.kind == PartKind::TextPlace || part.kind == PartKind::General) {
            result.text += value;
        } else if (part.kind == PartKind::Fill) {
            result.fillPosition = static_cast<int>(result.text.size());
            result.fill = part.letter;
        } else {
            result.text += part.text;
        }
    }
    result.color = m_sections->text->color;
    return result;
}

bool NumberFormat::isGeneral() const
{
    const auto& sections = m_sections->numeric;
    return sections.size() == 1 && !m_sections->text && sections[0].parts.size() == 1 && sections[0].hasGeneral;
}

bool NumberFormat::isDate() const
{
    return m_sections->numeric[0].isDate;
}

bool NumberFormat::isText() const
{
    const auto& parts = m_sections->numeric[0].parts;
    return m_sections->text && parts.size() == 1 && parts[0].kind == PartKind::TextPlace;
}

QString generalNumber(double value, int maxChars)
{
    const QString text = generalMagnitude(std::fabs(value), maxChars);
    return value < 0 && text != "0"_L1 ? u'-' + text : text;
}

QString plainValueText(double value)
{
    return generalNumber(value, NumberFormat::unlimited);
}

} // namespace lumivane::engine
