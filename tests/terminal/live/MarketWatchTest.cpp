// Whether the market goes on.
#include "terminal/live/MarketWatch.h"
#include "terminal/replay/Replay.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using State = MarketWatch::State;

class MarketWatchTest : public ::testing::Test
{
protected:
    State after(int hhmm)
    {
        m_today.take(quoteAt(hhmm, 10));
        return m_watch.state();
    }

    Trading::TradingDate m_day = quotedDay;
    Replay m_replay{nullptr};
    Today m_today{&m_replay, [this] { return m_day; }};
    MarketWatch m_watch{&m_today};
};

TEST_F(MarketWatchTest, SaysNothingBeforeTodaysFirstQuote)
{
    EXPECT_EQ(m_watch.state(), State::Unheard);
}

TEST_F(MarketWatchTest, KnowsThePartsOfADayByTheTimeOfQuotes)
{
    EXPECT_EQ(after(910), State::NotOpen);
    EXPECT_EQ(after(920), State::Quoted);
    EXPECT_EQ(after(1130), State::Quoted);
    EXPECT_EQ(after(1140), State::Break);
    EXPECT_EQ(after(1300), State::Quoted);
    EXPECT_EQ(after(1500), State::Quoted);
    EXPECT_EQ(after(1501), State::Closed);
}

TEST_F(MarketWatchTest, TellsOfASilenceWhileTheMarketIsOpenAndOfItsEnd)
{
    MarketWatch watch(&m_today, std::chrono::milliseconds(20));
    m_today.take(quoteAt(1000, 10));
    ASSERT_EQ(watch.state(), State::Quoted);
    ASSERT_TRUE(waitUntil([&watch] { return watch.state() == State::Silent; }));
    EXPECT_EQ(watch.lastTime(), atTime(1000));
    m_today.take(quoteAt(1001, 10));
    EXPECT_EQ(watch.state(), State::Quoted);
}

TEST_F(MarketWatchTest, IsNotUneasyAtLunch)
{
    MarketWatch watch(&m_today, std::chrono::milliseconds(5));
    m_today.take(quoteAt(1140, 10));
    EXPECT_FALSE(
        waitUntil([&watch] { return watch.state() == State::Silent; }, std::chrono::milliseconds(30)));
}

TEST_F(MarketWatchTest, TellsEachMinuteOnce)
{
    int changes = 0;
    QObject::connect(&m_watch, &MarketWatch::changed, &m_watch, [&changes] { ++changes; });
    after(1000);
    m_today.take(quoteAt(Trading::ClockTime::of(10, 0, 20).value(), 11));
    after(959); // late
    EXPECT_EQ(changes, 1);
    after(1001);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(m_watch.lastTime(), atTime(1001));
}

TEST_F(MarketWatchTest, DoesNotHearAReplay)
{
    Trading::Quote quote = quoteAt(1000, 10);
    quote.recorded = onDay(20180108);
    m_today.take(quote);
    EXPECT_EQ(m_watch.state(), State::Unheard);
}

} // namespace
} // namespace Terminal
