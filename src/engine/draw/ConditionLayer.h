#pragma once

#include "engine/draw/Scene.h"

class QPainter;

namespace lumivane::engine {

/// The data bars and icons that conditions give cells, over the fills and under the texts.
class ConditionLayer
{
public:
    explicit ConditionLayer(const Scene& scene) : m_scene(scene) {}
    void paint(QPainter& painter) const;

    /// Side of an icon in pixels at scale 1, beside a text of this size.
    static double iconSide(const FontStyle& font) { return 16 * font.points / 11; }
    static constexpr double iconMargin = 2; ///< pixels at scale 1 before it

private:
    void paintBar(QPainter& painter, const QRect& cell, const BarShown& shown) const;
    void paintIconOf(QPainter& painter, const QRect& cell, const CellStyle& style, const ConditionResult& result) const;

    const Scene& m_scene;
};

} // namespace lumivane::engine
