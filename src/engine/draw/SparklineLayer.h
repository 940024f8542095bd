#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The small charts in cells, over the fills and under the texts.
class SparklineLayer
{
public:
    explicit SparklineLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

} // namespace lumivane::engine
