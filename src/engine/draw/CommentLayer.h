#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The marks of cells that have a comment: a small triangle in the upper corner at the end of the line.
class CommentLayer
{
public:
    explicit CommentLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

} // namespace lumivane::engine
