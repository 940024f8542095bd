#include "engine/draw/PresetPen.h"

#include <numbers>

// Signs of flow charts and buttons of presentations.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

void textInEllipse(PresetPen& p)
{
    const double inset = (1 - std::numbers::sqrt2 / 2) / 2;
    p.text(p.w * inset, p.h * inset, p.w * (1 - inset), p.h * (1 - inset));
}

void documents(PresetPen& p)
{
    constexpr double across = 0.07, down = 0.085; // from one sheet to the next
    for (const int sheet : {2, 1, 0}) {
        const double left = p.w * across * sheet, right = left + p.w * (1 - 2 * across);
        const double top = p.h * down * (2 - sheet), bottom = top + p.h * (0.8 - 2 * down), middle = (left + right) / 2;
        p.move(left, top).line(right, top).line(right, bottom);
        p.curve(middle, bottom, middle, bottom + p.h * 0.27, left, bottom + p.h * 0.11).close().end();
    }
    p.text(0, p.h * 2 * down, p.w * (1 - 2 * across), p.h * 0.8);
}

void punchedTape(PresetPen& p)
{
    const double w = p.w, h = p.h, r = w / 4, lift = h / 10;
    p.move(0, lift).arc(r, lift, 180, -180).arc(r, lift, 180, 180).line(w, h - lift);
    p.arc(r, lift, 0, -180).arc(r, lift, 0, 180).close().end();
    p.text(0, h / 5, w, h * 4 / 5);
}

/// A circle with a cross in it, upright or lying on its diagonals.
void crossedCircle(PresetPen& p, bool diagonal)
{
    const double w = p.w, h = p.h, inset = (1 - std::numbers::sqrt2 / 2) / 2;
    p.ellipse(p.center(), w / 2, h / 2).end();
    if (diagonal)
        p.move(w * inset, h * inset)
            .line(w * (1 - inset), h * (1 - inset))
            .move(w * (1 - inset), h * inset)
            .line(w * inset, h * (1 - inset));
    else
        p.move(w / 2, 0).line(w / 2, h).move(0, h / 2).line(w, h / 2);
    p.end(Use::Lines);
    textInEllipse(p);
}

void collate(PresetPen& p)
{
    p.polygon({{0, 0}, {p.w, 0}, {p.w / 2, p.h / 2}, {p.w, p.h}, {0, p.h}, {p.w / 2, p.h / 2}}).end();
    p.text(p.w / 4, p.h / 4, p.w * 3 / 4, p.h * 3 / 4);
}

void sort(PresetPen& p)
{
    p.polygon({{0, p.h / 2}, {p.w / 2, 0}, {p.w, p.h / 2}, {p.w / 2, p.h}}).end();
    p.move(0, p.h / 2).line(p.w, p.h / 2).end(Use::Lines);
    p.text(p.w / 4, p.h / 4, p.w * 3 / 4, p.h * 3 / 4);
}

void internalStorage(PresetPen& p)
{
    p.rect(0, 0, p.w, p.h).end();
    p.move(p.w / 8, 0).line(p.w / 8, p.h).move(0, p.h / 8).line(p.w, p.h / 8).end(Use::Lines);
    p.text(p.w / 8, p.h / 8, p.w, p.h);
}

void storedData(PresetPen& p)
{
    const double r = p.w / 6;
    p.move(r, 0).line(p.w, 0).arc(r, p.h / 2, 270, -180).line(r, p.h).arc(r, p.h / 2, 90, 180).close().end();
    p.text(r, 0, p.w - r, p.h);
}

void offlineStorage(PresetPen& p)
{
    p.polygon({{0, 0}, {p.w, 0}, {p.w / 2, p.h}}).end();
    p.move(p.w * 0.4, p.h * 0.8).line(p.w * 0.6, p.h * 0.8).end(Use::Lines);
    p.text(p.w / 4, 0, p.w * 3 / 4, p.h / 2);
}

void magneticDrum(PresetPen& p)
{
    const double r = p.w / 6;
    p.move(r, 0).line(p.w - r, 0).arc(r, p.h / 2, 270, 180).line(r, p.h).arc(r, p.h / 2, 90, 180).close().end();
    p.move(p.w - r, p.h).arc(r, p.h / 2, 90, 180).end(Use::Lines);
    p.text(r, 0, p.w - 2 * r, p.h);
}

void magneticTape(PresetPen& p)
{
    const double low = p.h * (0.5 + std::numbers::sqrt2 / 4);
    p.move(p.w / 2, p.h).arc(p.w / 2, p.h / 2, 90, 315).line(p.w, low).line(p.w, p.h).close().end();
    textInEllipse(p);
}

void display(PresetPen& p)
{
    const double r = p.w / 6;
    p.move(0, p.h / 2).line(r, 0).line(p.w - r, 0).arc(r, p.h / 2, 270, 180).line(r, p.h).close().end();
    p.text(r, 0, p.w - r, p.h);
}

void punchedCard(PresetPen& p)
{
    p.polygon({{p.w / 5, 0}, {p.w, 0}, {p.w, p.h}, {0, p.h}, {0, p.h / 5}}).end();
    p.text(0, p.h / 5, p.w, p.h);
}

/// A button with a triangle that points forward, and a bar where it leads to an end.
void actionButton(PresetPen& p, bool forward, bool toEnd)
{
    const double half = p.ss * 3 / 8, bar = toEnd ? half / 4 : 0, sign = forward ? 1 : -1;
    const QPointF c = p.center();
    p.rect(0, 0, p.w, p.h).end();
    const double tip = c.x() + sign * (half - 2 * bar), back = c.x() - sign * half;
    p.polygon({{tip, c.y()}, {back, c.y() - half}, {back, c.y() + half}});
    if (toEnd)
        p.rect(c.x() + sign * (half - bar), c.y() - half, c.x() + sign * half, c.y() + half);
    p.end(Use::Whole, -0.4);
}

constexpr PresetRow rows[] = {
    {"flowChartMultidocument", documents},
    {"flowChartPunchedCard", punchedCard},
    {"flowChartPunchedTape", punchedTape},
    {"flowChartSummingJunction", [](PresetPen& p) { crossedCircle(p, true); }},
    {"flowChartOr", [](PresetPen& p) { crossedCircle(p, false); }},
    {"flowChartCollate", collate},
    {"flowChartSort", sort},
    {"flowChartInternalStorage", internalStorage},
    {"flowChartOnlineStorage", storedData},
    {"flowChartOfflineStorage", offlineStorage},
    {"flowChartMagneticDrum", magneticDrum},
    {"flowChartMagneticTape", magneticTape},
    {"flowChartDisplay", display},
    {"actionButtonForwardNext", [](PresetPen& p) { actionButton(p, true, false); }},
    {"actionButtonBackPrevious", [](PresetPen& p) { actionButton(p, false, false); }},
    {"actionButtonEnd", [](PresetPen& p) { actionButton(p, true, true); }},
    {"actionButtonBeginning", [](PresetPen& p) { actionButton(p, false, true); }},
};

} // namespace

std::span<const PresetRow> flowChartPresets()
{
    return rows;
}

} // namespace lumivane::engine
