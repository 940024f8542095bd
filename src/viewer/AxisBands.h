#pragma once

#include "viewer/SheetAxis.h"

namespace lumivane {

/// How a window shows the rows of a sheet, or its columns: as one band that scrolls, or as two bands one after the
/// other, of which the last one scrolls freely and the first one stands still (frozen) or scrolls by itself (split).
/// All places are pixels from the window's start; the axis gives the pixels of entries.
class AxisBands
{
public:
    enum class Division { None, Frozen, Split };
    struct Stretch
    {
        int first = 1;
        int last = 1;
        bool operator==(const Stretch&) const = default;
    };

    explicit AxisBands(const SheetAxis& axis) : m_axis(&axis) {}

    void setLength(int pixels);
    /// Call after the axis has got another scale: the same entries stay at the start of the bands.
    void axisChanged();
    /// `first` to `last` stay at the start; what lies before `first` cannot be reached.
    void freeze(int first, int last);
    void split(int pixels);
    void unite();

    Division division() const { return m_division; }
    Stretch frozen() const { return m_frozen; }
    int bandCount() const { return m_division == Division::None ? 1 : 2; }
    int freeBand() const { return bandCount() - 1; }
    int bandStart(int band) const { return band == 0 ? 0 : m_firstLength; }
    int bandLength(int band) const;
    int bandAt(int place) const { return bandCount() == 2 && place >= m_firstLength ? 1 : 0; }

    /// The entries that a band shows, those seen in part included. At least one, however short the band is.
    Stretch visible(int band) const;
    /// Where an entry begins as seen in a band; outside of the band too.
    int placeOf(int band, int index) const;
    /// The entry under a place of the window.
    int indexAt(int place) const;

    /// The entry at the start of a band, of which `offsetOf` pixels are scrolled out.
    int topOf(int band) const { return m_scrolls[band].top; }
    int offsetOf(int band) const { return m_scrolls[band].offset; }
    void scrollTo(int band, int index);
    void scrollBy(int band, qint64 pixels);
    /// Pixels from the first entry that a band can show; for scroll bars.
    qint64 position(int band) const;
    void setPosition(int band, qint64 position);
    /// Scrolls a band as little as needed to show the entry, with an entry's beginning at the band's start.
    void reveal(int band, int index);
    /// The entry that stands one page further (1) or back (-1) from an entry.
    int page(int band, int index, int direction) const;
    /// The first entry that a band can show.
    int firstOf(int band) const
    {
        return m_division == Division::Frozen ? (band == 0 ? m_frozen.first : m_frozen.last + 1) : 1;
    }

private:
    struct Scroll
    {
        int top = 1;
        int offset = 0;
    };
    void setOrigin(int band, qint64 origin);
    void layOut();
    qint64 origin(int band) const { return m_axis->start(m_scrolls[band].top) + m_scrolls[band].offset; }

    const SheetAxis* m_axis;
    int m_length = 0;
    Division m_division = Division::None;
    Stretch m_frozen{1, 0};
    double m_splitAt = 0; ///< pixels of scale 1
    int m_firstLength = 0;
    Scroll m_scrolls[2];
};

} // namespace lumivane
