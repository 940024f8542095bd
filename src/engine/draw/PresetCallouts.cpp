#include "engine/draw/PresetPen.h"

#include <array>

// Boxes with a line that leads to what they speak of.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

struct Box
{
    bool framed, accented; ///< accented: with an upright line where the line begins
};

/// `parts` of the line; the adjustments are the heights and widths of its corners in turn.
void lineCallout(PresetPen& p, int parts, Box box)
{
    static constexpr std::array<double, 8> defaults[] = {
        {0.1875, -0.08333, 1.125, -0.38333},
        {0.1875, -0.08333, 0.1875, -0.16667, 1.125, -0.46667},
        {0.1875, -0.08333, 0.1875, -0.16667, 1, -0.16667, 1.12963, -0.08333}};
    static constexpr const char* names[] = {"adj1", "adj2", "adj3", "adj4", "adj5", "adj6", "adj7", "adj8"};
    const auto at = [&](size_t corner) {
        const auto value = [&](size_t i) {
            return p.share(names[i], defaults[static_cast<size_t>(parts) - 1][i], -100, 100);
        };
        return QPointF(p.w * value(2 * corner + 1), p.h * value(2 * corner));
    };
    p.rect(0, 0, p.w, p.h).end(box.framed ? Use::Whole : Use::Fill);
    const QPointF start = at(0);
    if (box.accented)
        p.move(start.x(), 0).line(start.x(), p.h).end(Use::Lines);
    p.move(start.x(), start.y());
    for (size_t corner = 1; corner <= static_cast<size_t>(parts); ++corner)
        p.line(at(corner).x(), at(corner).y());
    p.end(Use::Lines);
}

constexpr Box plain{false, false}, accent{false, true}, border{true, false}, both{true, true};

constexpr PresetRow rows[] = {
    {"callout1", [](PresetPen& p) { lineCallout(p, 1, plain); }},
    {"callout2", [](PresetPen& p) { lineCallout(p, 2, plain); }},
    {"callout3", [](PresetPen& p) { lineCallout(p, 3, plain); }},
    {"accentCallout1", [](PresetPen& p) { lineCallout(p, 1, accent); }},
    {"accentCallout2", [](PresetPen& p) { lineCallout(p, 2, accent); }},
    {"accentCallout3", [](PresetPen& p) { lineCallout(p, 3, accent); }},
    {"borderCallout1", [](PresetPen& p) { lineCallout(p, 1, border); }},
    {"borderCallout2", [](PresetPen& p) { lineCallout(p, 2, border); }},
    {"borderCallout3", [](PresetPen& p) { lineCallout(p, 3, border); }},
    {"accentBorderCallout1", [](PresetPen& p) { lineCallout(p, 1, both); }},
    {"accentBorderCallout2", [](PresetPen& p) { lineCallout(p, 2, both); }},
    {"accentBorderCallout3", [](PresetPen& p) { lineCallout(p, 3, both); }},
};

} // namespace

std::span<const PresetRow> calloutPresets()
{
    return rows;
}

} // namespace lumivane::engine
