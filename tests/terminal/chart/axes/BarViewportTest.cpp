#include "terminal/chart/axes/BarViewport.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

BarViewport daily(size_t bars)
{
    BarViewport viewport;
    viewport.setRoom({bars});
    viewport.showRecent();
    return viewport;
}

TEST(BarViewport, ShowsTheMostRecentBarsWithSomeAirAfterThem)
{
    const BarViewport viewport = daily(1000);
    EXPECT_NEAR(viewport.span().width(), 150, 1e-9);
    EXPECT_GT(viewport.span().last, 1000);
}

TEST(BarViewport, ShowsAWholeDayWithRoomForTheFirstLabel)
{
    BarViewport viewport;
    viewport.setRoom({241, 0, true});
    viewport.showRecent();
    EXPECT_LT(viewport.span().first, -0.5);
    EXPECT_GT(viewport.span().last, 240.5);
}

TEST(BarViewport, StaysInsideItsRoom)
{
    BarViewport viewport = daily(1000);
    viewport.showAll();
    const BarSpan whole = viewport.span();
    viewport.showRecent();
    viewport.pan(1e9);
    EXPECT_DOUBLE_EQ(viewport.span().last, whole.last);
    viewport.pan(-1e9);
    EXPECT_DOUBLE_EQ(viewport.span().first, whole.first);
    viewport.zoom(1e9, 10);
    EXPECT_DOUBLE_EQ(viewport.span().width(), whole.width());
}

TEST(BarViewport, ShowsAFewBarsAtLeast)
{
    BarViewport viewport = daily(1000);
    viewport.zoom(1e-9, 900);
    EXPECT_NEAR(viewport.span().width(), 10, 1e-9);
}

TEST(BarViewport, KeepsTheBarInItsPlaceThatItZoomsAt)
{
    BarViewport viewport = daily(1000);
    const BarSpan before = viewport.span();
    const double bar = before.first + before.width() / 4;
    viewport.zoom(0.5, bar);
    EXPECT_NEAR(viewport.span().width(), before.width() / 2, 1e-9);
    EXPECT_NEAR(viewport.span().first, bar - viewport.span().width() / 4, 1e-9);
}

TEST(BarViewport, FollowsTheLastBarWhenItLeavesTheView)
{
    BarViewport viewport = daily(1000);
    viewport.setSpan({900, 1000.5});
    viewport.setRoom({1004});
    viewport.followLast(999, 1003);
    EXPECT_NEAR(viewport.span().first, 904, 1e-9);
    EXPECT_NEAR(viewport.span().width(), 100.5, 1e-9);
}

TEST(BarViewport, StaysWhenTheLastBarWasOrStillIsElsewhere)
{
    BarViewport viewport = daily(1000);
    viewport.setSpan({100, 200});
    viewport.setRoom({1004});
    viewport.followLast(999, 1003);
    EXPECT_DOUBLE_EQ(viewport.span().first, 100);
    viewport.setSpan({900, 1010});
    const double first = viewport.span().first;
    viewport.followLast(1003, 1004);
    EXPECT_DOUBLE_EQ(viewport.span().first, first);
}

TEST(BarViewport, NeverLeavesAllBarsWhenItZoomsInBesideThem)
{
    BarViewport viewport = daily(1000);
    for (int press = 0; press < 16; ++press) {
        viewport.zoom(0.8, viewport.span().last);
    }
    EXPECT_LT(viewport.span().first, 995);
}

TEST(BarViewport, NeverLeavesAllBarsOfADayThatHasJustBegun)
{
    BarViewport viewport;
    viewport.setRoom({3, 238, true});
    viewport.showRecent();
    viewport.zoom(0.1, 120);
    EXPECT_LE(viewport.span().first, -0.5);
}

TEST(BarViewport, GoesToTheLastBarThatIsThere)
{
    BarViewport viewport;
    viewport.setRoom({60, 181, true});
    viewport.setSpan({10, 30});
    viewport.showLast();
    EXPECT_NEAR(viewport.span().width(), 20, 1e-9);
    EXPECT_GT(viewport.span().last, 59.5);
    EXPECT_LT(viewport.span().last, 62.5);
}

} // namespace
} // namespace Terminal
