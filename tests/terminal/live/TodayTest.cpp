// The day that is under way: of the market, or of a replay in its place.
#include "terminal/live/Today.h"
#include "terminal/data/DataFolder.h"
#include "terminal/replay/Replay.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class TodayTest : public ::testing::Test
{
protected:
    TodayTest()
    {
        QObject::connect(&m_today, &Today::changed, &m_today, [this] { ++m_changes; });
    }

    size_t bars() const
    {
        const MinuteBook *const book = m_today.of(quotedSecurity);
        return book == nullptr ? 0 : book->bars().size();
    }

    void replay()
    {
        const DataFolder folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
        m_replay.open(folder.load(quotedSecurity.code, ChartPeriod::Minute, onDay(20260327)).value(),
                      quotedDay);
    }

    Replay m_replay{nullptr};
    Today m_today{&m_replay, [] { return quotedDay; }};
    int m_changes = 0;
};

TEST_F(TodayTest, KnowsWhatTheMarketTold)
{
    EXPECT_EQ(m_today.of(quotedSecurity), nullptr);
    m_today.take(quoteAt(931, 10));
    EXPECT_EQ(bars(), 1U);
    EXPECT_EQ(m_changes, 1);
    m_today.take(quoteAt(931, 10));
    EXPECT_EQ(m_changes, 1) << "nothing is another now";
}

TEST_F(TodayTest, LeavesOtherDaysAlone)
{
    Trading::Quote quote = quoteAt(931, 10);
    quote.date = quote.date.plusDays(-1);
    m_today.take(quote);
    EXPECT_EQ(bars(), 0U);
}

TEST_F(TodayTest, LeavesTheReplaysOfOtherWindowsAlone)
{
    Trading::Quote quote = quoteAt(931, 10);
    quote.recorded = onDay(20240102);
    m_today.take(quote);
    EXPECT_EQ(bars(), 0U);
}

TEST_F(TodayTest, IsTheReplaysInPlaceOfTheMarketsWhileItLasts)
{
    m_today.take(quoteAt(1000, 10));
    m_today.take(quoteAt(1001, 10));
    replay();
    m_changes = 0;
    EXPECT_TRUE(m_today.isReplayed(quotedSecurity));
    EXPECT_EQ(bars(), 1U);
    m_today.take(quoteAt(1002, 10)); // goes on unseen
    EXPECT_EQ(bars(), 1U);
    EXPECT_EQ(m_changes, 0);
    m_replay.step();
    EXPECT_EQ(bars(), 2U);
    EXPECT_EQ(m_changes, 1);
    m_replay.close();
    EXPECT_EQ(bars(), 3U);
}

TEST_F(TodayTest, BeginsAgainWithTheReplay)
{
    replay();
    m_replay.playTo(atTime(1000));
    int begun = 0;
    QObject::connect(&m_today, &Today::begun, &m_today, [&begun] { ++begun; });
    m_replay.restart();
    EXPECT_EQ(begun, 1);
    EXPECT_EQ(bars(), 1U);
}

TEST_F(TodayTest, HasTheReplayedBarsAsTheyWereRecorded)
{
    replay();
    m_replay.playTo(atTime(1500));
    EXPECT_EQ(m_today.of(quotedSecurity)->bars(), m_replay.day());
}

} // namespace
} // namespace Terminal
