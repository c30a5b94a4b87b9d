// A recorded day that is replayed, among the other charts of the window.
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ReplayWindow.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class ReplayInAWindow : public ReplayWindow
{
};

TEST_F(ReplayInAWindow, ShowsTheDayAsToday)
{
    EXPECT_EQ(chartMode(), 2);
    m_window->setReplaying(true);
    EXPECT_EQ(chartMode(), 1);
    EXPECT_EQ(shownBars(), 1U);
}

TEST_F(ReplayInAWindow, ComesBackToTheReplayFromAnotherPeriod)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Day);
    replay()->playTo(atTime(1000));
    EXPECT_GT(shownBars(), 1000U);
    EXPECT_TRUE(bar()->isVisible());
    show(ChartPeriod::Minute);
    EXPECT_EQ(shownBars(), 31U);
    EXPECT_EQ(chartMode(), 1);
}

TEST_F(ReplayInAWindow, ShowsTheRecordedDayWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    m_window->setReplaying(false);
    EXPECT_EQ(shownBars(), 241U);
    EXPECT_EQ(chart()->data().bars.front().date, 20180108);
}

TEST_F(ReplayInAWindow, StaysOnAnotherPeriodWhenTheReplayIsEnded)
{
    m_window->setReplaying(true);
    show(ChartPeriod::Week);
    m_window->setReplaying(false);
    EXPECT_EQ(chart()->data().period, ChartPeriod::Week);
    EXPECT_FALSE(bar()->isVisible());
}

} // namespace
} // namespace Terminal
