#pragma once

#include "engine/draw/GuideValues.h"
#include "engine/draw/ShapeOutline.h"

#include <span>
#include <string_view>

namespace lumivane::engine {

/// Draws the outline of a preset of one size: some steps, then `end` for each path. Adjustments are shares of 1 and
/// are kept within bounds. Angles are in degrees, clockwise, those of a circle that is stretched to the ellipse.
class PresetPen
{
public:
    PresetPen(const QSizeF& size, const GuideValues& values);

    const double w, h, ss; ///< ss: the shorter side
    QPointF center() const { return {w / 2, h / 2}; }
    double share(const char* name, double otherwise, double least = 0, double most = 1) const;
    double angle(const char* name, double otherwise) const;

    PresetPen& move(double x, double y);
    PresetPen& line(double x, double y);
    PresetPen& arc(double across, double down, double from, double sweep); ///< goes on from where the path is
    PresetPen& curve(double x1, double y1, double x2, double y2, double x, double y);
    PresetPen& bow(double controlX, double controlY, double x, double y);
    PresetPen& close();
    PresetPen& polygon(const QList<QPointF>& points); ///< closed
    PresetPen& rect(double left, double top, double right, double bottom);
    PresetPen& ellipse(const QPointF& center, double across, double down);
    PresetPen& add(const QPainterPath& path);

    enum class Use { Whole, Fill, Lines };
    /// Ends a path; `light` as in OutlinePath.
    void end(Use use = Use::Whole, double light = 0);
    void text(double left, double top, double right, double bottom);
    /// Takes over what another pen has drawn, moved by a transform.
    void take(PresetPen& other, const QTransform& transform);

    ShapeOutline& outline() { return m_made; }
    const GuideValues& values() const { return m_values; }

private:
    const GuideValues& m_values;
    QPainterPath m_path;
    ShapeOutline m_made;
};

struct PresetRow
{
    std::string_view name;
    void (*draw)(PresetPen& pen);
};

// The presets by their subject.
std::span<const PresetRow> basicPresets();
std::span<const PresetRow> symbolPresets();
std::span<const PresetRow> arrowPresets();
std::span<const PresetRow> calloutPresets();
std::span<const PresetRow> bannerPresets();
std::span<const PresetRow> flowChartPresets();

} // namespace lumivane::engine
