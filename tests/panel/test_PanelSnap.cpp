#include "panel/PanelSnap.h"

#include <gtest/gtest.h>

using namespace lumivane;

namespace {

// A dashboard of 1000 x 700 with one neighbour whose edges lie at 300, 500 across and 200, 320 down.
const SnapLines snapTestLines = snapLines(QRect(0, 0, 1000, 700), {QRect(300, 200, 200, 120)});
const QRect snapTestStart(600, 400, 150, 100);
constexpr int snapTestDistance = 6;

struct SnapRow
{
    const char* name;
    QRect wanted;
    QRect expected;
};

class PanelSnap : public testing::TestWithParam<SnapRow>
{
};

TEST_P(PanelSnap, DrawsTheEdgesThatMovedToTheNearestLine)
{
    EXPECT_EQ(snapped(GetParam().wanted, snapTestStart, QSize(80, 60), snapTestLines, snapTestDistance),
              GetParam().expected);
}

const SnapRow snapRows[] = {
    {"moved_left_edge_to_a_right_edge", {506, 430, 150, 100}, {500, 430, 150, 100}},
    {"moved_one_pixel_too_far_away", {507, 430, 150, 100}, {507, 430, 150, 100}},
    {"moved_right_edge_to_a_left_edge", {147, 430, 150, 100}, {150, 430, 150, 100}},
    {"moved_top_edge_to_a_bottom_edge", {610, 315, 150, 100}, {610, 320, 150, 100}},
    {"moved_into_the_corner_of_the_area", {845, 603, 150, 100}, {850, 600, 150, 100}},
    {"moved_over_the_edge_of_the_area", {-4, -5, 150, 100}, {0, 0, 150, 100}},
    {"moved_down_only_stays_in_its_column", {600, 418, 150, 100}, {600, 418, 150, 100}},
    {"not_moved", {600, 400, 150, 100}, {600, 400, 150, 100}},
    {"right_edge_sized_to_the_area", {600, 400, 396, 100}, {600, 400, 400, 100}},
    {"bottom_edge_sized_to_the_area", {600, 400, 150, 305}, {600, 400, 150, 300}},
    {"left_edge_sized_keeps_the_right_one", {503, 400, 247, 100}, {500, 400, 250, 100}},
    {"corner_sized_in_both_directions", {497, 323, 253, 177}, {500, 320, 250, 180}},
};
INSTANTIATE_TEST_SUITE_P(Edges, PanelSnap, testing::ValuesIn(snapRows), [](const auto& row) { return row.param.name; });

TEST(PanelSnapping, OfTwoEdgesNearALineTheNearerOneIsDrawn)
{
    const QRect wide(600, 400, 198, 100);
    EXPECT_EQ(snapped(QRect(304, 430, 198, 100), wide, QSize(80, 60), snapTestLines, snapTestDistance),
              QRect(302, 430, 198, 100))
        << "the left edge was 4 pixels off, the right one 2";
    EXPECT_EQ(snapped(QRect(299, 430, 198, 100), wide, QSize(80, 60), snapTestLines, snapTestDistance),
              QRect(300, 430, 198, 100));
}

TEST(PanelSnapping, NeverMakesAPanelSmallerThanItCanBe)
{
    const QRect small(412, 400, 85, 100);
    const QRect wanted(412, 400, 92, 100); // its right edge is at 504, the line at 500
    EXPECT_EQ(snapped(wanted, small, QSize(89, 60), snapTestLines, snapTestDistance), wanted);
    EXPECT_EQ(snapped(wanted, small, QSize(88, 60), snapTestLines, snapTestDistance), QRect(412, 400, 88, 100));
}

} // namespace
