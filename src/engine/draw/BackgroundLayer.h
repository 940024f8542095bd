#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The picture under the cells of a sheet, repeated in its own size. It is seen wherever a cell has no fill.
class BackgroundLayer
{
public:
    explicit BackgroundLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

} // namespace lumivane::engine
