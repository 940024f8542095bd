#include "host/embedded/format/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lumivane::embedded {
namespace {

constexpr int mostDigits = 15;

} // namespace

Decimal::Decimal(double value)
{
    if (value == 0 || !std::isfinite(value))
        return;
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific);
    const QByteArray text(buffer, static_cast<qsizetype>(end.ptr - buffer)); // d.ddde+xx, as short as is unambiguous
    const qsizetype mark = text.indexOf('e');
    m_digits = text.left(mark);
    m_digits.remove(1, 1);
    while (m_digits.endsWith('0'))
        m_digits.chop(1);
    m_point = text.mid(mark + 1).toInt() + 1;
    keep(mostDigits);
}

void Decimal::keep(int kept)
{
    if (isZero() || kept >= significantDigits())
        return;
    const bool up = kept >= 0 && m_digits[kept] >= '5';
    m_digits.truncate(std::max(kept, 0));
    if (up) {
        while (m_digits.endsWith('9'))
            m_digits.chop(1);
        if (m_digits.isEmpty()) {
            m_digits = "1";
            ++m_point;
        } else {
            m_digits.back() = static_cast<char>(m_digits.back() + 1);
        }
    }
    while (m_digits.endsWith('0'))
        m_digits.chop(1);
    if (m_digits.isEmpty())
        m_point = 0;
}

QByteArray Decimal::integerDigits() const
{
    if (m_point <= 0)
        return {};
    return m_digits.left(m_point).leftJustified(m_point, '0');
}

QByteArray Decimal::decimalDigits(int count) const
{
    QByteArray digits(std::clamp(-m_point, 0, count), '0');
    digits.append(m_digits.mid(std::max(m_point, 0)));
    return digits.leftJustified(count, '0', true);
}

} // namespace lumivane::embedded
