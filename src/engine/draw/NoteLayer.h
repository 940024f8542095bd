#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The boxes of comments that stand open, each with an arrow to its cell.
class NoteLayer
{
public:
    explicit NoteLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

private:
    const Scene& m_scene;
};

} // namespace lumivane::engine
