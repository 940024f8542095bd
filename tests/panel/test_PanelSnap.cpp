#include "panel/PanelSnap.h"

#include <gtest/gtest.h>

using namespace lumivane;

namespace {

// A dashboard of 1000 x 700 with one neighbour whose edges lie at 300, 500 across and 200, 320 down.
const SnapLines lines = snapLines(QRect(0, 0, 1000, 700), {QRect(300, 200, 200, 120)});
const QRect start(600, 400, 150, 100);
constexpr int distance = 6;

TEST(PanelSnapping, DrawsTheEdgesThatMovedToTheNearestLine)
{
    const std::tuple<const char*, QRect, QRect> rows[] = {
        {"moved left edge to a right edge", {506, 430, 150, 100}, {500, 430, 150, 100}},
        {"moved one pixel too far away", {507, 430, 150, 100}, {507, 430, 150, 100}},
        {"moved right edge to a left edge", {147, 430, 150, 100}, {150, 430, 150, 100}},
        {"moved top edge to a bottom edge", {610, 315, 150, 100}, {610, 320, 150, 100}},
        {"moved into the corner of the area", {845, 603, 150, 100}, {850, 600, 150, 100}},
        {"moved over the edge of the area", {-4, -5, 150, 100}, {0, 0, 150, 100}},
        {"right edge sized to the area", {600, 400, 396, 100}, {600, 400, 400, 100}},
        {"bottom edge sized to the area", {600, 400, 150, 305}, {600, 400, 150, 300}},
        {"left edge sized keeps the right one", {503, 400, 247, 100}, {500, 400, 250, 100}},
        {"corner sized in both directions", {497, 323, 253, 177}, {500, 320, 250, 180}},
    };
    for (const auto& [name, wanted, expected] : rows)
        EXPECT_EQ(snapped(wanted, start, QSize(80, 60), lines, distance), expected) << name;
}

TEST(PanelSnapping, OfTwoEdgesNearALineTheNearerOneIsDrawn)
{
    const QRect wide(600, 400, 198, 100);
    EXPECT_EQ(snapped(QRect(304, 430, 198, 100), wide, QSize(80, 60), lines, distance), QRect(302, 430, 198, 100))
        << "the left edge was 4 pixels off, the right one 2";
    EXPECT_EQ(snapped(QRect(299, 430, 198, 100), wide, QSize(80, 60), lines, distance), QRect(300, 430, 198, 100));
    const QRect near(304, 500, 198, 100);
    EXPECT_EQ(snapped(near, near.translated(0, -70), QSize(80, 60), lines, distance), near) << "moved down only";
}

TEST(PanelSnapping, NeverMakesAPanelSmallerThanItCanBe)
{
    const QRect small(412, 400, 85, 100);
    const QRect wanted(412, 400, 92, 100); // its right edge is at 504, the line at 500
    EXPECT_EQ(snapped(wanted, small, QSize(89, 60), lines, distance), wanted);
    EXPECT_EQ(snapped(wanted, small, QSize(88, 60), lines, distance), QRect(412, 400, 88, 100));
}

} // namespace
