#include "engine/draw/PresetPen.h"

#include <algorithm>

// Waves, ribbons and scrolls.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

/// A flag whose edges wave once or twice; the second adjustment moves the upper edge against the lower one.
void wave(PresetPen& p, int waves)
{
    const double lift = p.h * p.share("adj1", waves == 1 ? 0.125 : 0.0625, 0, waves == 1 ? 0.2 : 0.125);
    const double swing = lift * 10 / 3, lean = p.w * 2 * p.share("adj2", 0, -0.1, 0.1);
    const double topStart = std::max(-lean, 0.0), bottomStart = std::max(lean, 0.0);
    const double length = p.w - std::abs(lean), part = length / waves;
    const auto edge = [&](double from, double y, double step) {
        for (int i = 0; i < waves; ++i) {
            const double x = from + i * step, up = step > 0 ? -swing : swing;
            p.curve(x + step / 3, y + up, x + step * 2 / 3, y - up, x + step, y);
        }
    };
    p.move(topStart, lift);
    edge(topStart, lift, part);
    p.line(bottomStart + length, p.h - lift);
    edge(bottomStart + length, p.h - lift, -part);
    p.close().end();
    p.text(std::max(topStart, bottomStart), 2 * lift, std::min(topStart, bottomStart) + length, p.h - 2 * lift);
}

/// A band whose ends are folded behind its middle and hang higher than it.
void ribbon(PresetPen& p)
{
    const double w = p.w, h = p.h, fold = h * p.share("adj1", 0.16667, 0, 0.33333), notch = w / 8;
    const double left = w / 2 * (1 - p.share("adj2", 0.5, 0.25, 0.75)), right = w - left, end = h - fold;
    p.polygon({{0, 0}, {left + notch, 0}, {left + notch, end}, {0, end}, {notch, end / 2}}).end();
    p.polygon({{w, 0}, {right - notch, 0}, {right - notch, end}, {w, end}, {w - notch, end / 2}}).end();
    p.rect(left, fold, right, h).end();
    p.rect(left, fold / 2, left + notch, fold).rect(right - notch, fold / 2, right, fold).end(Use::Whole, -0.2);
    p.text(left, fold, right, h);
}

/// A sheet whose left end is rolled up and whose right end is rolled down.
void scroll(PresetPen& p)
{
    const double w = p.w, h = p.h, roll = p.ss * p.share("adj", 0.125, 0, 0.25), r = roll / 2;
    p.move(0, roll + r).arc(r, r, 180, 90).line(w - roll, roll).line(w - roll, r).arc(r, r, 180, 180);
    p.line(w, h - roll - r).arc(r, r, 0, 90).line(roll, h - roll).line(roll, h - r).arc(r, r, 0, 180).close().end();
    for (const bool isLeft : {true, false}) {
        const double x = isLeft ? 0 : w - roll, y = isLeft ? roll + r : r;
        if (isLeft)
            p.move(0, y).arc(r, r, 180, -180).line(roll, h - roll);
        else
            p.move(w, y).arc(r, r, 0, 90).line(w - roll, roll);
        p.move(x + roll, y);
        if (isLeft)
            p.arc(r / 2, r / 2, 0, -180).line(r, y + r);
        else
            p.move(x, y).arc(r / 2, r / 2, 180, -180).line(w - r, roll);
    }
    p.end(Use::Lines);
    p.text(roll, roll, w - roll, h - roll);
}

constexpr PresetRow rows[] = {
    {"wave", [](PresetPen& p) { wave(p, 1); }},
    {"doubleWave", [](PresetPen& p) { wave(p, 2); }},
    {"ribbon", ribbon},
    {"ribbon2",
     [](PresetPen& p) {
         PresetPen other({p.w, p.h}, p.values());
         ribbon(other);
         p.take(other, QTransform(1, 0, 0, -1, 0, p.h));
     }},
    {"horizontalScroll", scroll},
    {"verticalScroll",
     [](PresetPen& p) {
         PresetPen other({p.h, p.w}, p.values());
         scroll(other);
         p.take(other, QTransform(0, 1, 1, 0, 0, 0));
     }},
};

} // namespace

std::span<const PresetRow> bannerPresets()
{
    return rows;
}

} // namespace lumivane::engine
