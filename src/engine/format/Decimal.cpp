#include "engine/format/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr int mostDigits = 15;

} // namespace

Decimal::Decimal(double value)
{
    if (value == 0 || !std::isfinite(value))
        return;
    char buffer[40]; // d.ddde+xx, as short as is unambiguous
    const char* const end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific).ptr;
    const char* at = buffer;
    for (; *at != 'e'; ++at)
        if (*at != '.')
            m_digits[static_cast<size_t>(m_count++)] = *at;
    at += at[1] == '+' ? 2 : 1;
    std::from_chars(at, end, m_point);
    ++m_point;
    dropZeros();
    keep(mostDigits);
}

void Decimal::dropZeros()
{
    while (m_count > 0 && m_digits[static_cast<size_t>(m_count - 1)] == '0')
        --m_count;
    if (m_count == 0)
        m_point = 0;
}

void Decimal::keep(int kept)
{
    if (isZero() || kept >= m_count)
        return;
    const bool up = kept >= 0 && m_digits[static_cast<size_t>(kept)] >= '5';
    m_count = std::max(kept, 0);
    if (up) {
        while (m_count > 0 && m_digits[static_cast<size_t>(m_count - 1)] == '9')
            --m_count;
        if (m_count == 0) {
            m_digits[0] = '1';
            m_count = 1;
            ++m_point;
        } else {
            ++m_digits[static_cast<size_t>(m_count - 1)];
        }
    }
    dropZeros();
}

QByteArray Decimal::integerDigits() const
{
    if (m_point <= 0)
        return {};
    return QByteArray(m_digits.data(), std::min(m_count, m_point)).leftJustified(m_point, '0');
}

QByteArray Decimal::decimalDigits(int count) const
{
    QByteArray digits(std::clamp(-m_point, 0, count), '0');
    const int first = std::clamp(m_point, 0, m_count);
    digits.append(m_digits.data() + first, m_count - first);
    return digits.leftJustified(count, '0', true);
}

} // namespace lumivane::engine
