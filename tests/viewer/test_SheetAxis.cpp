#include "viewer/AxisBands.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace lumivane::test {

namespace {

/// Entries of 20 pixels but for those named.
struct Sizes
{
    std::map<int, int> odd;
    int blocksMeasured = 0;

    int of(int index) const { return odd.contains(index) ? odd.at(index) : 20; }

    SheetAxis::Measure measure()
    {
        return [this](int first, int last, double scale) {
            ++blocksMeasured;
            std::vector<int> edges{0};
            int sum = 0;
            for (int i = first; i <= last; ++i) {
                sum += of(i);
                edges.push_back(static_cast<int>(std::lround(sum * scale)));
            }
            return edges;
        };
    }
};

TEST(SheetAxis, FindsTheEntryAtEveryPixelAndBack)
{
    // Hidden ones at a block's beginning, inside and at its end, a whole hidden block, and a very large entry.
    Sizes sizes;
    for (const int hidden : {1, 2, 5, 8, 9, 17, 18, 19, 20, 21, 22, 23, 24, 40})
        sizes.odd[hidden] = 0;
    sizes.odd[12] = 300;
    for (const double scale : {0.25, 1.0, 1.1, 2.0}) {
        SheetAxis axis(40, 20, sizes.measure());
        axis.setScale(scale, 8);
        axis.measure(1, 40);
        ASSERT_EQ(axis.start(1), 0);
        for (int index = 1; index <= 40; ++index) {
            ASSERT_EQ(axis.start(index) + axis.size(index), axis.start(index + 1)) << index;
            EXPECT_EQ(axis.size(index) == 0, sizes.of(index) == 0) << index;
            for (qint64 pixel = axis.start(index); pixel < axis.start(index + 1); ++pixel)
                ASSERT_EQ(axis.at(pixel), index) << "pixel " << pixel << " scale " << scale;
        }
        EXPECT_EQ(axis.at(-5), 3) << "before the first one";
        EXPECT_EQ(axis.at(axis.length()), 39) << "behind the last one";
    }
}

TEST(SheetAxis, MeasuresOnlyWhatIsLookedAt)
{
    Sizes sizes;
    SheetAxis axis(1048576, 20, sizes.measure());
    EXPECT_EQ(axis.length(), 1048576ll * 20);
    EXPECT_EQ(axis.at(500000ll * 20 + 7), 500001);
    EXPECT_EQ(axis.start(1048576), 1048575ll * 20);
    EXPECT_EQ(sizes.blocksMeasured, 2);
}

TEST(SheetAxis, CorrectsItsEstimateWithEachBlockMeasured)
{
    Sizes sizes;
    for (int index = 1; index <= 64; ++index)
        sizes.odd[index] = 5;
    SheetAxis axis(1000, 20, sizes.measure());
    axis.setScale(1, 32);
    EXPECT_EQ(axis.at(200), 41) << "the first block is shorter than expected, so that the place lies in the second";
    EXPECT_EQ(axis.start(65), 64 * 5);
    EXPECT_EQ(axis.length(), 64 * 5 + 936 * 20);
    EXPECT_EQ(axis.visibleFrom(65, -1), 65);
}

TEST(SheetAxis, FindsNothingVisibleWhereAllIsHidden)
{
    Sizes sizes;
    for (int index = 1; index <= 10; ++index)
        sizes.odd[index] = 0;
    SheetAxis axis(10, 20, sizes.measure());
    EXPECT_EQ(axis.visibleFrom(1, 1), 0);
    EXPECT_EQ(axis.at(3), 1);
    EXPECT_EQ(axis.length(), 0);
}

using Stretch = AxisBands::Stretch;

class Bands : public testing::Test
{
protected:
    Sizes sizes;
    SheetAxis axis{1000, 20, sizes.measure()};
    AxisBands bands{axis};

    void SetUp() override { bands.setLength(100); }
};

TEST_F(Bands, ShowEntriesSeenInPart)
{
    EXPECT_EQ(bands.visible(0), (Stretch{1, 5}));
    bands.scrollBy(0, 1);
    EXPECT_EQ(bands.visible(0), (Stretch{1, 6}));
    bands.scrollBy(0, 19);
    EXPECT_EQ(bands.indexAt(0), 2);
    EXPECT_EQ(bands.indexAt(99), 6);
    EXPECT_EQ(bands.placeOf(0, 1), -20);
}

TEST_F(Bands, StopAtBothEnds)
{
    bands.scrollBy(0, -500);
    EXPECT_EQ(bands.position(0), 0);
    bands.scrollBy(0, 10'000'000);
    EXPECT_EQ(bands.visible(0), (Stretch{996, 1000}));
    bands.scrollBy(0, -20);
    EXPECT_EQ(bands.visible(0), (Stretch{995, 999}));
}

TEST_F(Bands, KeepFrozenEntriesAndScrollTheRestBehindThem)
{
    bands.freeze(3, 4);
    EXPECT_EQ(bands.visible(1), (Stretch{5, 7}));
    bands.scrollBy(1, 200);
    bands.scrollBy(0, 200);
    EXPECT_EQ(bands.visible(0), (Stretch{3, 4})) << "frozen";
    EXPECT_EQ(bands.visible(1), (Stretch{15, 17}));
    EXPECT_EQ(bands.indexAt(39), 4);
    EXPECT_EQ(bands.indexAt(40), 15);
    bands.scrollBy(1, -10000);
    EXPECT_EQ(bands.visible(1).first, 5) << "never shows the frozen ones twice";
    bands.unite();
    EXPECT_EQ(bands.visible(0), (Stretch{3, 7}));
}

TEST_F(Bands, LeaveAFreeBandWhereTheFrozenOneFillsTheWindow)
{
    bands.freeze(1, 50);
    EXPECT_EQ(bands.bandLength(0), 100);
    EXPECT_EQ(bands.bandLength(1), 0);
    EXPECT_EQ(bands.visible(1), (Stretch{51, 51}));
}

TEST_F(Bands, RevealByTheLeastScrolling)
{
    // What is shown: seen already, before it, one behind it, the last one.
    for (const auto& [shown, topAfter] : {std::pair(12, 10), {4, 4}, {15, 11}, {1000, 996}}) {
        bands.scrollTo(0, 10);
        bands.reveal(0, shown);
        EXPECT_EQ(bands.topOf(0), topAfter);
        EXPECT_EQ(bands.offsetOf(0), 0) << shown;
    }
    sizes.odd[600] = 250;
    bands.reveal(0, 600);
    EXPECT_EQ(bands.topOf(0), 600) << "an entry larger than the window begins at its start";
}

TEST_F(Bands, KeepTheirEntriesWhenTheScaleChanges)
{
    bands.freeze(1, 1);
    bands.scrollTo(1, 200);
    axis.setScale(2, 16);
    bands.axisChanged();
    EXPECT_EQ(bands.bandStart(1), 40);
    EXPECT_EQ(bands.visible(1), (Stretch{200, 201}));
}

TEST_F(Bands, TurnPagesByWhatIsSeen)
{
    EXPECT_EQ(bands.page(0, 5, -1), 1);
    EXPECT_EQ(bands.page(0, 999, 1), 1000);
    bands.setLength(5);
    EXPECT_EQ(bands.page(0, 7, 1), 8) << "at least one entry further";
}

} // namespace

} // namespace lumivane::test
