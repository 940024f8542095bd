#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The colours, patterns and gradients of cells, and what jobs have laid over them. A merged area looks like its first
/// cell.
class FillLayer
{
public:
    explicit FillLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

} // namespace lumivane::engine
