#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

class TextLayer;

/// The gridlines of the view. Each lies in the last pixel before an edge; fills of either cell, merged areas and texts
/// that run over it leave it out, so texts have to be placed before.
class GridLineLayer
{
public:
    GridLineLayer(const Scene& scene, const TextLayer& texts) : m_scene(scene), m_texts(texts) {}
    void paint(QPainter& painter) const;

private:
    bool hasFill(int row, int column) const;

    const Scene& m_scene;
    const TextLayer& m_texts;
};

} // namespace lumivane::engine
