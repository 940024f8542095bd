#include "panel/PanelGeometry.h"

#include "platform/Checked.h"

#include <algorithm>

namespace lumivane {

namespace {

/// One scroll bar along a direction. The range leaves a tenth of room at the end.
ScrollBarPlace scrollBarFor(float pictureLength, float frameLength, float barThickness)
{
    ScrollBarPlace bar;
    bar.visible = true;
    bar.largeChange = toStoredTwips(frameLength * 0.8);
    bar.smallChange = toStoredTwips(bar.largeChange / 10.0);
    bar.max = toStoredTwips((pictureLength + barThickness - frameLength) * 1.1);
    return bar;
}

void placeScrollBars(PanelLayout& layout, const PanelMeasures& measures)
{
    TwipsRect& frame = layout.frame;
    const TwipsRect& picture = layout.picture;
    const float bar = measures.barThickness;
    if (picture.height <= frame.height && picture.width <= frame.width)
        return;

    if (frame.height - bar < picture.height) {
        layout.vertical = scrollBarFor(picture.height, frame.height, bar);
        layout.vertical.place = {frame.width - bar, 0, bar, frame.height - bar};
        frame.width = measures.window.width - bar;
    }
    if (frame.width - bar < picture.width) {
        layout.horizontal = scrollBarFor(picture.width, frame.width, bar);
        layout.horizontal.place = {0, frame.height - bar, frame.width - bar, bar};
        frame.height = measures.window.height - bar;
    }
}

float centred(float inner, float outer)
{
    return inner < outer ? (outer - inner) / 2 : 0;
}

} // namespace

TwipsSize autosizeWindow(const PanelMeasures& measures, const TwipsSize& picture)
{
    return {picture.width + (measures.window.width - measures.client.width),
            picture.height + (measures.window.height - measures.client.height)};
}

TwipsSize windowInProportion(const PanelMeasures& measures, const TwipsSize& picture, const TwipsSize& most)
{
    const float borderWidth = measures.window.width - measures.client.width;
    const float borderHeight = measures.window.height - measures.client.height;
    const float scale =
        std::min((most.width - borderWidth) / picture.width, (most.height - borderHeight) / picture.height);
    return {picture.width * scale + borderWidth, picture.height * scale + borderHeight};
}

bool canBeKept(const TwipsSize& window)
{
    const double longest = twipsLimit();
    return window.width <= longest && window.height <= longest;
}

PanelLayout autosizeLayout(const PanelMeasures& measures, const TwipsSize& picture)
{
    PanelLayout layout;
    layout.frame = {0, 0, measures.client.width, measures.client.height};
    layout.picture = {0, 0, picture.width, picture.height};
    return layout;
}

PanelLayout cropLayout(const PanelMeasures& measures, const TwipsSize& picture)
{
    PanelLayout layout;
    layout.frame = {0, 0, measures.client.width, measures.client.height};
    layout.picture = {centred(picture.width, layout.frame.width), centred(picture.height, layout.frame.height),
                      picture.width, picture.height};
    placeScrollBars(layout, measures);
    return layout;
}

PanelLayout zoomLayout(const PanelMeasures& measures)
{
    PanelLayout layout;
    layout.frame = {0, 0, measures.client.width, measures.client.height};
    layout.picture = layout.frame;
    return layout;
}

} // namespace lumivane
