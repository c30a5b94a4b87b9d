// A chart that grows with a day that is replayed, or under way.
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ReplayWindow.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class LiveChartOfAReplay : public ReplayWindow
{
};

TEST_F(LiveChartOfAReplay, GrowsWithoutMakingOverlaysAnew)
{
    m_window->setReplaying(true);
    QApplication::processEvents();
    overlayLog();
    replay()->step();
    replay()->playTo(atTime(1000));
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("calc 000001 2 21"));
    EXPECT_THAT(log, HasSubstr("calc 000001 31 21"));
    EXPECT_EQ(countOf(log, "calc"), 2) << log;
    EXPECT_THAT(log, Not(HasSubstr("ended")));
}

TEST_F(LiveChartOfAReplay, HasRoomForTheWholeDayFromTheFirstBarOn)
{
    m_window->setReplaying(true);
    const BarSpan atOpening = chart()->span();
    EXPECT_GE(atOpening.last, 240.5);
    replay()->playTo(atTime(1500));
    EXPECT_DOUBLE_EQ(chart()->span().last, atOpening.last);
    EXPECT_TRUE(chart()->data().ahead.empty());
}

TEST_F(LiveChartOfAReplay, LeavesTheViewOfOlderBarsAlone)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({0, 20});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 0);
    EXPECT_DOUBLE_EQ(chart()->span().last, 20);
}

TEST_F(LiveChartOfAReplay, MovesTheViewAlongWithTheLastBar)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({10.5, 30.5});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 11.5);
    EXPECT_DOUBLE_EQ(chart()->span().last, 31.5);
}

TEST_F(LiveChartOfAReplay, NeverShowsTheAfternoonAloneBeforeItCame)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({200, 230});
    EXPECT_LE(chart()->span().first, 25.5);
    replay()->playTo(atTime(1430));
    const double last = static_cast<double>(shownBars()) - 1;
    EXPECT_LT(chart()->span().first, last);
    EXPECT_GT(chart()->span().last, last) << "the view has followed";
}

TEST_F(LiveChartOfAReplay, EndsAtTheLastMinuteThatCame)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({0, 20});
    focusChart();
    QTest::keyClick(chart(), Qt::Key_End);
    EXPECT_NEAR(chart()->span().last, static_cast<double>(shownBars()) - 0.5, 2);
}

TEST_F(LiveChartOfAReplay, HasTheTimesOfTheMinutesToCome)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    EXPECT_TRUE(chart()->timeAt(geometry().barToX(60)).endsWith(QLatin1String("10:30")))
        << qPrintable(chart()->timeAt(geometry().barToX(60)));
    EXPECT_EQ(chart()->barUnder(geometry().barToX(60)), std::nullopt);
}

TEST_F(LiveChartOfAReplay, BeginsTheDayAgain)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    replay()->restart();
    EXPECT_EQ(shownBars(), 1U);
    EXPECT_EQ(chart()->data().ahead.size(), 240U);
}

} // namespace
} // namespace Terminal
