#include "tests/support/LogCapture.h"

#include "tradechartobject/common/RefreshTimer.h"

#include <gtest/gtest.h>

#include <climits>

namespace RefreshTimer = TradeChart::RefreshTimer;

namespace {

struct Asker : QObject
{
    void ask() { ++questions; }
    int questions = 0;
};

TEST(RefreshTimer, IsOneShotAndTheOverlaysChild)
{
    Asker asker;
    const QTimer *timer = RefreshTimer::create(&asker, &Asker::ask);
    EXPECT_EQ(timer->parent(), &asker);
    EXPECT_TRUE(timer->isSingleShot());
    EXPECT_FALSE(timer->isActive());
}

TEST(RefreshTimer, StartsAnewOrOnlyWhenIdle)
{
    QTimer timer;
    RefreshTimer::startIfIdle(&timer, 3);
    EXPECT_EQ(timer.interval(), 3000);
    RefreshTimer::startIfIdle(&timer, 5);
    EXPECT_EQ(timer.interval(), 3000) << "it runs";
    RefreshTimer::restart(&timer, 5);
    EXPECT_EQ(timer.interval(), 5000);
    RefreshTimer::stop(&timer);
    EXPECT_FALSE(timer.isActive());
}

TEST(RefreshTimer, CountsAsFarAsATimerCan)
{
    const LogCapture log; // Qt says that it refuses a negative interval
    QTimer timer;
    RefreshTimer::restart(&timer, INT_MAX);
    EXPECT_EQ(timer.interval(), INT_MAX);
    RefreshTimer::restart(&timer, INT_MIN);
    EXPECT_EQ(timer.interval(), INT_MIN);
}

TEST(RefreshTimer, IsRemovedAndThenLeftAlone)
{
    Asker asker;
    QTimer *timer = RefreshTimer::create(&asker, &Asker::ask);
    RefreshTimer::remove(timer);
    EXPECT_EQ(timer, nullptr);
    EXPECT_TRUE(asker.children().isEmpty());
    RefreshTimer::restart(timer, 0);
    RefreshTimer::startIfIdle(timer, 0);
    RefreshTimer::stop(timer);
    RefreshTimer::remove(timer);
    EXPECT_TRUE(asker.children().isEmpty());
}

} // namespace
