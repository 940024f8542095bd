#include "panel/PanelGeometry.h"

#include "support/LargeSheets.h"
#include "support/ThrownError.h"

#include <gtest/gtest.h>

using namespace lumivane;

namespace {

/// A window with 120 twips of border across, 390 twips of border and title down, and bars of 180.
PanelMeasures usualWindow()
{
    return {{6000, 4500}, {5880, 4110}, 180};
}

const ScrollBarPlace hidden;

TEST(CropView, PlacesFramePictureAndBars)
{
    const struct
    {
        const char* name;
        TwipsSize picture;
        PanelLayout layout;
    } rows[] = {
        {"small_is_centred", {3000, 2000}, {{0, 0, 5880, 4110}, {1440, 1055, 3000, 2000}, hidden, hidden}},
        {"exactly_the_client", {5880, 4110}, {{0, 0, 5880, 4110}, {0, 0, 5880, 4110}, hidden, hidden}},
        {"too_wide_only",
         {9000, 2000},
         {{0, 0, 5880, 4320}, {0, 1055, 9000, 2000}, hidden, {true, {0, 3930, 5700, 180}, 3630, 4704, 470}}},
        // The vertical bar reckons with the horizontal one although that is not shown, and so comes too.
        {"too_wide_and_height_fits_without_bar",
         {9000, 4000},
         {{0, 0, 5820, 4320},
          {0, 55, 9000, 4000},
          {true, {5700, 0, 180, 3930}, 77, 3288, 329},
          {true, {0, 3930, 5640, 180}, 3696, 4656, 466}}},
        // The frame now reaches below the right border, so the picture fits beside the bar.
        {"too_high_only",
         {3000, 9000},
         {{0, 0, 5820, 4110}, {1440, 0, 3000, 9000}, {true, {5700, 0, 180, 3930}, 5577, 3288, 329}, hidden}},
        {"half_of_a_twip_goes_to_the_even_number",
         {3000, 4185},
         {{0, 0, 5820, 4110}, {1440, 0, 3000, 4185}, {true, {5700, 0, 180, 3930}, 280, 3288, 329}, hidden}},
    };
    for (const auto& row : rows) {
        const PanelLayout layout = cropLayout(usualWindow(), row.picture);
        EXPECT_TRUE(layout.frame == row.layout.frame && layout.picture == row.layout.picture) << row.name;
        EXPECT_EQ(layout.vertical, row.layout.vertical) << row.name;
        EXPECT_EQ(layout.horizontal, row.layout.horizontal) << row.name;
    }
}

TEST(CropView, RefusesAScrollRangeBeyondTheLimit)
{
    EXPECT_EQ(cropLayout(usualWindow(), {3000, 33705}).vertical.max, 32753);
    EXPECT_EQ(test::failureOf([] { cropLayout(usualWindow(), {3000, 33720}); }).number, RuntimeError::Overflow);
    const test::LargeSheets unlimited;
    EXPECT_EQ(cropLayout(usualWindow(), {3000, 33720}).vertical.max, 32769);
    EXPECT_TRUE(canBeKept({60000, 60000}));
}

TEST(AutosizeView, AddsTitleAndBordersToThePicture)
{
    EXPECT_EQ(autosizeWindow(usualWindow(), {3000, 2000}), (TwipsSize{3120, 2390}));
    EXPECT_EQ(autosizeLayout(usualWindow(), {3000, 2000}),
              (PanelLayout{{0, 0, 5880, 4110}, {0, 0, 3000, 2000}, hidden, hidden}));
}

TEST(AutosizeView, ALargePictureKeepsItsProportionsInTheRoomThereIs)
{
    // The borders take 120 across and 390 down.
    EXPECT_EQ(windowInProportion(usualWindow(), {60000, 15000}, {15120, 9000}), (TwipsSize{15120, 4140}));
    EXPECT_EQ(windowInProportion(usualWindow(), {10000, 50000}, {15120, 5390}), (TwipsSize{1120, 5390}));
    EXPECT_TRUE(canBeKept({32767, 32767}));
    EXPECT_FALSE(canBeKept({100, 32768}));
    EXPECT_FALSE(canBeKept({32768, 100}));
}

} // namespace
