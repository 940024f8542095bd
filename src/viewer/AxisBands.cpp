#include "viewer/AxisBands.h"

#include <algorithm>
#include <cmath>

namespace lumivane {

void AxisBands::setLength(int pixels)
{
    m_length = std::max(0, pixels);
    layOut();
}

void AxisBands::axisChanged()
{
    for (Scroll& scroll : m_scrolls)
        scroll.offset = 0;
    layOut();
}

void AxisBands::freeze(int first, int last)
{
    const int lastPossible = m_axis->count() - 1;
    m_division = Division::Frozen;
    m_frozen = {std::clamp(first, 1, lastPossible), std::clamp(last, 1, lastPossible)};
    m_scrolls[0] = {m_frozen.first, 0};
    m_scrolls[1] = {std::max(m_scrolls[1].top, m_frozen.last + 1), 0};
    layOut();
}

void AxisBands::split(int pixels)
{
    m_division = Division::Split;
    m_splitAt = pixels / m_axis->scale();
    layOut();
}

void AxisBands::unite()
{
    m_division = Division::None;
    layOut();
}

void AxisBands::layOut()
{
    m_firstLength = 0;
    if (m_division == Division::Frozen)
        m_firstLength = static_cast<int>(m_axis->start(m_frozen.last + 1) - m_axis->start(m_frozen.first));
    else if (m_division == Division::Split)
        m_firstLength = static_cast<int>(std::lround(m_splitAt * m_axis->scale()));
    m_firstLength = std::clamp(m_firstLength, 0, m_length);
    for (int band = 0; band < bandCount(); ++band)
        setOrigin(band, origin(band));
}

int AxisBands::bandLength(int band) const
{
    if (bandCount() == 1)
        return m_length;
    return band == 0 ? m_firstLength : m_length - m_firstLength;
}

/// Takes a place of the axis for the start of a band and measures what the band shows from there, so that from now on
/// all places within the band are exact.
void AxisBands::setOrigin(int band, qint64 wanted)
{
    const int first = firstOf(band);
    wanted = std::clamp(wanted, m_axis->start(first), std::max<qint64>(m_axis->start(first), m_axis->length() - 1));
    int top = std::max(first, m_axis->at(wanted));
    m_scrolls[band] = {top, static_cast<int>(std::max<qint64>(0, wanted - m_axis->start(top)))};
    for (int seen = -m_scrolls[band].offset; seen < bandLength(band) && top <= m_axis->count(); ++top)
        seen += m_axis->size(top);
}

AxisBands::Stretch AxisBands::visible(int band) const
{
    const int first = m_scrolls[band].top;
    const qint64 end = origin(band) + std::max(1, bandLength(band)) - 1;
    const int last = std::max(first, m_axis->at(end));
    return {first, m_division == Division::Frozen && band == 0 ? std::min(last, m_frozen.last) : last};
}

int AxisBands::placeOf(int band, int index) const
{
    const qint64 place = m_axis->start(index) - origin(band) + bandStart(band);
    // Far away is far away: the place is only compared with the window's.
    return static_cast<int>(std::clamp<qint64>(place, -(1 << 29), 1 << 29));
}

int AxisBands::indexAt(int place) const
{
    const int band = bandAt(place);
    const int index = m_axis->at(origin(band) + place - bandStart(band));
    return std::max(index, firstOf(band));
}

void AxisBands::scrollTo(int band, int index)
{
    if (m_division == Division::Frozen && band == 0)
        return;
    m_scrolls[band] = {std::clamp(index, firstOf(band), m_axis->count()), 0};
    setOrigin(band, origin(band));
}

void AxisBands::scrollBy(int band, qint64 pixels)
{
    if (m_division == Division::Frozen && band == 0)
        return;
    const qint64 last = std::max<qint64>(m_axis->start(firstOf(band)), m_axis->length() - bandLength(band));
    setOrigin(band, std::min(origin(band) + pixels, std::max(last, origin(band))));
}

qint64 AxisBands::position(int band) const
{
    return origin(band) - m_axis->start(firstOf(band));
}

void AxisBands::setPosition(int band, qint64 position)
{
    scrollBy(band, position - this->position(band));
}

void AxisBands::reveal(int band, int index)
{
    if (m_division == Division::Frozen && (band == 0 || index <= m_frozen.last))
        return;
    const int before = placeOf(band, index) - bandStart(band);
    const int over = before + m_axis->size(index) - bandLength(band);
    if (before < 0 || (over > 0 && m_axis->size(index) >= bandLength(band))) {
        scrollTo(band, index);
    } else if (over > 0) {
        setOrigin(band, origin(band) + over);
        if (offsetOf(band) > 0)
            scrollTo(band, std::max(1, m_axis->visibleFrom(topOf(band) + 1, 1)));
    }
}

int AxisBands::page(int band, int index, int direction) const
{
    const qint64 distance = std::max(1, bandLength(band) - m_axis->size(index));
    const int target = m_axis->at(std::max<qint64>(0, m_axis->start(index) + direction * distance));
    if (target != index)
        return target;
    const int next = m_axis->visibleFrom(index + direction, direction);
    return next ? next : index;
}

} // namespace lumivane
