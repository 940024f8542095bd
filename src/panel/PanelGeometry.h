#pragma once

#include <QtGlobal>

namespace lumivane {

// Where the parts of a panel window lie in each of its views. All lengths are twips; numbers that are kept throw
// RuntimeError 6 beyond twipsLimit().

struct TwipsSize
{
    float width = 0, height = 0;
    bool isEmpty() const { return width <= 0 || height <= 0; }
    bool operator==(const TwipsSize&) const = default;
};

struct TwipsRect
{
    float left = 0, top = 0, width = 0, height = 0;
    bool operator==(const TwipsRect&) const = default;
};

/// What the window system says of a panel window at the moment.
struct PanelMeasures
{
    TwipsSize window;       ///< title and borders included
    TwipsSize client;       ///< what they leave
    float barThickness = 0; ///< of both scroll bars
};

struct ScrollBarPlace
{
    bool visible = false;
    TwipsRect place;
    int max = 0;
    int largeChange = 0;
    int smallChange = 0;
    bool operator==(const ScrollBarPlace&) const = default;
};

struct PanelLayout
{
    TwipsRect frame;   ///< picFrame: clips the picture
    TwipsRect picture; ///< picPanel, counted from the frame's corner
    ScrollBarPlace vertical;
    ScrollBarPlace horizontal;
    bool operator==(const PanelLayout&) const = default;
};

/// The window's size with which its client area is as large as the picture.
TwipsSize autosizeWindow(const PanelMeasures& measures, const TwipsSize& picture);
/// The largest window of at most this size whose client area has the picture's proportions.
TwipsSize windowInProportion(const PanelMeasures& measures, const TwipsSize& picture, const TwipsSize& most);
/// Whether a window's size can be kept.
bool canBeKept(const TwipsSize& window);
/// The picture in its own size at the top left, in a window that has been given its size by `autosizeWindow`.
PanelLayout autosizeLayout(const PanelMeasures& measures, const TwipsSize& picture);
/// The picture in its own size: centred where there is room, otherwise cut off and scrolled. The frame reaches below
/// the bars' opposite border by as much as title and borders take, so bars must lie above it.
PanelLayout cropLayout(const PanelMeasures& measures, const TwipsSize& picture);
/// The picture stretched over the client area in both directions.
PanelLayout zoomLayout(const PanelMeasures& measures);

} // namespace lumivane
