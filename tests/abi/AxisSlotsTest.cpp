// Each operation of IChartAxis stands in the slot where terminals in the field have it: called through its
// number, it reaches the operation of that name.
#include "tests/abi/Slot.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace {

class AxisSlots : public ::testing::Test
{
protected:
    template <class Result, class... Arguments>
    Result call(int number, Arguments... arguments)
    {
        return slot<Result (*)(Korvane::IChartAxis *, Arguments...)>(interface, number)(&interface,
                                                                                        arguments...);
    }

    FakeAxis axis;
    Korvane::IChartAxis &interface = axis;
};

TEST_F(AxisSlots, TwoIsTheChartMode)
{
    axis.mode = 2;
    EXPECT_EQ(call<int>(2), 2);
}

TEST_F(AxisSlots, ThreeIsTheVisiblePriceRange)
{
    axis.low = 3.5;
    axis.high = 4.5;
    double low = 0;
    double high = 0;
    const bool hasScale = call<bool, double &, double &>(3, low, high);
    EXPECT_TRUE(hasScale);
    EXPECT_EQ(low, 3.5);
    EXPECT_EQ(high, 4.5);
}

TEST_F(AxisSlots, FourIsTheScreenId)
{
    EXPECT_STREQ(call<const char *>(4), "screen-1");
}

TEST_F(AxisSlots, TwelveIsTheMarkerSize)
{
    EXPECT_EQ(call<double>(12), 16.0);
}

TEST_F(AxisSlots, ThirteenAsksForAnUpdate)
{
    auto *object = reinterpret_cast<Korvane::IChartObject *>(this);
    call<void>(13, object);
    EXPECT_THAT(axis.updated, ElementsAre(object));
}

TEST_F(AxisSlots, EighteenIsThePopup)
{
    const char *lines[] = {"one", nullptr};
    axis.onPopup = [] { return 7; };
    EXPECT_EQ((call<int, const char **, void *>(18, lines, nullptr)), 7);
    EXPECT_THAT(axis.popups, SizeIs(1));
}

TEST_F(AxisSlots, TwentyShowsAMessage)
{
    call<void>(20, "text");
    EXPECT_THAT(axis.messages, ElementsAre("text"));
}

TEST_F(AxisSlots, TwentyOneAsksAQuestion)
{
    axis.onConfirm = [] { return true; };
    EXPECT_TRUE(call<bool>(21, "sure?"));
    EXPECT_THAT(axis.questions, ElementsAre("sure?"));
}

TEST_F(AxisSlots, TwentyThreeIsTheXOfABar)
{
    EXPECT_EQ(call<double>(23, 4), 40.0);
}

TEST_F(AxisSlots, TwentyFourIsTheYOfAPrice)
{
    EXPECT_EQ(call<double>(24, 99.0, -1, -1), 10.0);
}

TEST_F(AxisSlots, TwentyFiveIsTheBarUnderAnX)
{
    EXPECT_EQ(call<int>(25, 40.0), 4);
}

TEST_F(AxisSlots, TwentySixCopiesABar)
{
    axis.bars = {makeDayBar(20240102), makeDayBar(20240103)};
    Korvane::AnalyData bar{};
    call<void, int, Korvane::AnalyData &>(26, 1, bar);
    EXPECT_EQ(bar.time, 20240103U);
}

} // namespace
