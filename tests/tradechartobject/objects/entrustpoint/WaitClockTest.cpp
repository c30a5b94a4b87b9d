// The second after a notification, on clocks that a person has set: the program runs with a time of day
// that is not the machine's, and almost stands still.
#include "tests/support/OverlayTest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <QDate>
#include <QElapsedTimer>
#include <QTime>

using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class EntrustPointWaitClock : public OverlayTest<EntrustPoint>
{
protected:
    void SetUp() override
    {
        if (QDate::currentDate() != QDate(2024, 1, 2)) {
            GTEST_SKIP() << "the clock is not a false one: libfaketime is missing";
        }
        axis.mode = Korvane::TodayChart;
        create();
        calc(shanghai, {makeMinuteBar(20240102, 931)}, Korvane::IntradayPeriod);
        bus().sent.clear();
    }

    static void notify() { hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); }
};

TEST_F(EntrustPointWaitClock, IsLeftOutInTheLastSecondOfADay)
{
    ASSERT_GT(QTime::currentTime(), QTime(23, 59, 59));
    bool eventsWereHandled = false;
    QTimer::singleShot(0, overlay, [&] { eventsWereHandled = true; });
    notify();
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_FALSE(eventsWereHandled);
}

TEST_F(EntrustPointWaitClock, EndsThoughTheClockStandsStill)
{
    ASSERT_LT(QTime::currentTime(), QTime(23, 0));
    QElapsedTimer clock;
    clock.start();
    notify();
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_GE(clock.elapsed(), 950);
    EXPECT_LT(clock.elapsed(), 50000) << "a second by the clock on the wall takes a hundred";
}

} // namespace
