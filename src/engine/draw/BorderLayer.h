#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// Draws the borders of an area: each edge once, with the stronger of the two lines that its cells ask for, and in
/// stretches as long as the line stays the same, so that dashes run on.
class BorderLayer
{
public:
    explicit BorderLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    struct CellPlace
    {
        int row, column;
    };
    void paintEdges(QPainter& painter, Qt::Orientation orientation) const;
    void paintDiagonalLines(QPainter& painter) const;
    BorderLine line(Qt::Orientation orientation, const CellPlace& before, const CellPlace& after) const;
    const BorderStyle& borderOf(const CellPlace& place) const;

    const Scene& m_scene;
};

} // namespace lumivane::engine
