// A recorded day played as today.
#include "terminal/replay/Replay.h"
#include "terminal/data/TradingHours.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

namespace Terminal {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using State = Replay::State;

constexpr Trading::TradingDate today = onDay(20240105);

class ReplayOfADay : public ::testing::Test
{
protected:
    ReplayOfADay()
    {
        m_folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
        m_day = m_folder.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)).value();
        QObject::connect(&m_replay, &Replay::barCompleted, &m_replay, [this](const Bar &bar) {
            m_minutes.push_back(bar.minute);
            m_dates.push_back(bar.date);
        });
        QObject::connect(&m_replay, &Replay::advanced, &m_replay, [this] { ++m_advances; });
    }

    void open() { m_replay.open(m_day, today); }
    static int at(int hhmm) { return hhmm / 100 * 60 + hhmm % 100; }

    DataFolder m_folder;
    ChartData m_day;
    Replay m_replay{nullptr};
    std::vector<int> m_minutes;
    std::vector<std::int32_t> m_dates;
    int m_advances = 0;
};

TEST_F(ReplayOfADay, BeginsPausedWithTheOpeningAuction)
{
    open();
    EXPECT_EQ(m_replay.state(), State::Paused);
    EXPECT_THAT(m_minutes, ElementsAre(at(930)));
    EXPECT_EQ(m_replay.recordedDate(), onDay(20180108));
    EXPECT_EQ(m_replay.previousClose(), 13.30);
}

TEST_F(ReplayOfADay, CompletesABarWithEveryStepAndPassesOverTheLunchBreak)
{
    open();
    m_replay.playTo(atTime(1129));
    m_minutes.clear();
    m_replay.step();
    m_replay.step();
    EXPECT_THAT(m_minutes, ElementsAre(at(1130), at(1301)));
}

TEST_F(ReplayOfADay, HasEveryBarOfTheDayDatedToday)
{
    open();
    m_replay.playTo(atTime(1500));
    EXPECT_EQ(m_minutes.size(), static_cast<size_t>(minutesOfTradingDay));
    EXPECT_THAT(m_dates, Each(today.number()));
    EXPECT_THAT(m_replay.day(), Each(Field(&Bar::date, today.number())));
}

TEST_F(ReplayOfADay, TellsOfEachBarButOnceOfAJump)
{
    open();
    m_replay.playTo(atTime(1000));
    EXPECT_EQ(m_minutes.size(), 31U);
    EXPECT_EQ(m_advances, 2);
}

TEST_F(ReplayOfADay, DoesNotGoBack)
{
    open();
    m_replay.playTo(atTime(1000));
    m_replay.playTo(atTime(940));
    EXPECT_EQ(m_replay.completed(), 31U);
}

TEST_F(ReplayOfADay, EndsWithItsLastBar)
{
    open();
    m_replay.playTo(atTime(1459));
    m_replay.play();
    m_replay.step();
    EXPECT_EQ(m_replay.state(), State::Ended);
    m_replay.step();
    m_replay.play();
    EXPECT_EQ(m_replay.state(), State::Ended);
    EXPECT_EQ(m_minutes.size(), static_cast<size_t>(minutesOfTradingDay));
}

TEST_F(ReplayOfADay, IsBegunAgainAfterItsEnd)
{
    open();
    m_replay.playTo(atTime(1500));
    m_minutes.clear();
    m_replay.restart();
    EXPECT_EQ(m_replay.state(), State::Paused);
    EXPECT_THAT(m_minutes, ElementsAre(at(930)));
    m_replay.step();
    EXPECT_EQ(m_replay.completed(), 2U);
}

TEST_F(ReplayOfADay, GoesOnPlayingWhenItIsBegunAgain)
{
    open();
    m_replay.setSpeed(600);
    m_replay.playTo(atTime(1400));
    m_replay.play();
    m_replay.restart();
    EXPECT_EQ(m_replay.state(), State::Playing);
    EXPECT_TRUE(waitUntil([this] { return m_replay.completed() >= 3; }));
}

TEST_F(ReplayOfADay, TakesAMinuteByItsSpeed)
{
    open();
    m_replay.setSpeed(600);
    QElapsedTimer clock;
    clock.start();
    m_replay.play();
    ASSERT_TRUE(waitUntil([this] { return m_replay.completed() == 6; }));
    EXPECT_GE(clock.elapsed(), 5 * 100 - 10); // a busy machine may take longer, not less
}

TEST_F(ReplayOfADay, StandsStillWhilePaused)
{
    open();
    m_replay.setSpeed(600);
    m_replay.play();
    ASSERT_TRUE(waitUntil([this] { return m_replay.completed() >= 2; }));
    m_replay.pause();
    const size_t completed = m_replay.completed();
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(waitUntil([&clock] { return clock.elapsed() > 350; })); // more than three bars
    EXPECT_EQ(m_replay.completed(), completed);
}

TEST_F(ReplayOfADay, HoldsItsSpeedInsideTheRange)
{
    m_replay.setSpeed(0);
    EXPECT_EQ(m_replay.speed(), Replay::slowest);
    m_replay.setSpeed(10000);
    EXPECT_EQ(m_replay.speed(), Replay::fastest);
}

TEST_F(ReplayOfADay, StopsWhenAListenerClosesIt)
{
    open();
    QObject::connect(&m_replay, &Replay::barCompleted, &m_replay, [this](const Bar &bar) {
        if (bar.minute == at(935)) {
            m_replay.close();
        }
    });
    m_replay.playTo(atTime(1000));
    EXPECT_EQ(m_replay.state(), State::Closed);
    EXPECT_EQ(m_minutes.back(), at(935));
    EXPECT_EQ(m_advances, 1); // of the first bar
}

TEST(ReplayThatIsClosed, DoesNothing)
{
    Replay replay(nullptr);
    replay.play();
    replay.step();
    replay.playTo(atTime(1500));
    replay.restart();
    EXPECT_EQ(replay.state(), State::Closed);
    EXPECT_EQ(replay.completed(), 0U);
}

TEST_F(ReplayOfADay, IsMadeOfMinutesAndOfNothingElse)
{
    for (const ChartPeriod period : {ChartPeriod::Day, ChartPeriod::Week, ChartPeriod::Month}) {
        EXPECT_FALSE(m_replay.open(m_folder.load(QStringLiteral("000001"), period).value(), today));
    }
    m_day.bars.clear();
    EXPECT_FALSE(m_replay.open(m_day, today));
    EXPECT_EQ(m_replay.state(), State::Closed);
    EXPECT_THAT(m_minutes, ::testing::IsEmpty());
}

} // namespace
} // namespace Terminal
