// What a security cost last: by a replay, a quote of the market or the data folder.
#include "terminal/session/LastPrices.h"
#include "terminal/live/BarQuote.h"
#include "terminal/live/ChartSource.h"
#include "terminal/live/QuoteListener.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"
#include "tests/support/TestBroker.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QJsonDocument>

namespace Terminal {
namespace {

const Security moutai{QStringLiteral("600519"), Market::Shanghai, {}};
const Security bank{QStringLiteral("000001"), Market::Shenzhen, {}};

class LastPricesTest : public ::testing::Test
{
protected:
    /// As it is told once it is read.
    LastPrice price(const Security &security)
    {
        EXPECT_TRUE(waitUntil([&] { return m_prices.of(security).has_value(); }));
        return m_prices.of(security).value();
    }

    Bar lastDailyBar(const Security &security) const
    {
        return m_folder.load(security.code, ChartPeriod::Day).value().bars.back();
    }

    void openReplay()
    {
        m_replay.open(m_folder.load(bank.code, ChartPeriod::Minute, onDay(20180108)).value(),
                      Trading::TradingDate::today());
    }

    /// A client that tells quotes, and one that hears them.
    void join()
    {
        m_listener.start(m_broker.address());
        m_market.connect(m_broker.address());
        ASSERT_TRUE(waitUntil([this] { return m_listener.isJoined() && m_market.isConnected(); }));
    }

    void quote(const Security &security, Trading::TradingDate day, double close,
               std::optional<Trading::TradingDate> recorded = {})
    {
        const Bar bar{day.number(), 600, close, close, close, close, 100};
        m_market.sendMessage("Market", "Quote", QJsonDocument(quoteOf(security, bar, {}, recorded)).toJson());
    }

    const DataFolder m_folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
    const Trading::TradingDate m_day = quotedDay;
    TestBroker m_broker;
    LocalCommunication::EndPoint m_market{nullptr};
    Replay m_replay{nullptr};
    Today m_today{&m_replay, [] { return quotedDay; }};
    ChartSource m_source{m_folder, &m_today};
    QuoteListener m_listener{&m_today};
    LastPrices m_prices{&m_source, &m_today};
};

TEST_F(LastPricesTest, AreTheLatestClosesThatTheDataFolderKnows)
{
    const Bar day = lastDailyBar(bank);
    EXPECT_EQ(price(bank).price, day.close);
    EXPECT_EQ(price(bank).day, dayOf(day));
    const Bar minute = m_folder.load(moutai.code, ChartPeriod::Minute).value().bars.back();
    ASSERT_GT(dayOf(minute), dayOf(lastDailyBar(moutai))) << "a day that is recorded in minutes alone";
    EXPECT_EQ(price(moutai).price, minute.close);
    EXPECT_EQ(price(moutai).day, dayOf(minute));
    EXPECT_EQ(price(moutai).origin, PriceOrigin::Close);
}

TEST_F(LastPricesTest, AreNoneForASecurityThatNobodyKnows)
{
    const Security unknown{QStringLiteral("999999"), Market::Shanghai, {}};
    m_prices.of(unknown);
    price(moutai); // read after it
    EXPECT_FALSE(m_prices.of(unknown));
}

TEST_F(LastPricesTest, AreReadAtOnceForAPicture)
{
    EXPECT_FALSE(m_prices.of(moutai)) << "not yet read";
    m_prices.readNow();
    EXPECT_TRUE(m_prices.of(moutai));
}

TEST_F(LastPricesTest, AreTheQuotesOfTheMarketWhereThereAreAny)
{
    join();
    quote(moutai, m_day, 1234.5);
    ASSERT_TRUE(waitUntil([this] { return price(moutai).origin == PriceOrigin::Quote; }));
    EXPECT_EQ(price(moutai).price, 1234.5);
    EXPECT_EQ(price(moutai).day, m_day);
    EXPECT_EQ(price(bank).origin, PriceOrigin::Close) << "each has its own";
}

TEST_F(LastPricesTest, AreNoQuotesOfAnotherDayOrOfAReplayInAnotherWindow)
{
    join();
    quote(moutai, m_day.plusDays(-1), 1.0);
    quote(moutai, m_day, 2.0, onDay(20180108));
    quote(bank, m_day, 3.0); // comes after them
    ASSERT_TRUE(waitUntil([this] { return price(bank).origin == PriceOrigin::Quote; }));
    EXPECT_EQ(price(moutai).origin, PriceOrigin::Close);
}

TEST_F(LastPricesTest, AreThoseOfTheReplayForItsSecurityWhileItLasts)
{
    int changes = 0;
    QObject::connect(&m_prices, &LastPrices::changed, &m_prices, [&changes] { ++changes; });
    openReplay();
    m_replay.playTo(atTime(1000));
    EXPECT_GT(changes, 0);
    const LastPrice replayed = price(bank);
    EXPECT_EQ(replayed.origin, PriceOrigin::Replay);
    EXPECT_EQ(replayed.price, m_replay.day()[m_replay.completed() - 1].close);
    EXPECT_EQ(replayed.day, onDay(20180108));
    EXPECT_EQ(price(moutai).origin, PriceOrigin::Close);

    changes = 0;
    m_replay.close();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(price(bank).origin, PriceOrigin::Close);
}

TEST_F(LastPricesTest, AreToldAFewTimesASecondHoweverManyQuotesCome)
{
    price(moutai);
    int changes = 0;
    QObject::connect(&m_prices, &LastPrices::changed, &m_prices, [&changes] { ++changes; });
    for (int cents = 1; cents <= 100; ++cents) {
        m_today.take(quoteAt(1000, 10 + cents / 100.0, cents));
    }
    ASSERT_TRUE(waitUntil([&changes] { return changes > 0; }));
    EXPECT_EQ(price(moutai).price, 11.0);
    EXPECT_EQ(changes, 1);
}

TEST_F(LastPricesTest, AreNotToldOfASecurityThatNobodyAskedFor)
{
    price(bank);
    int changes = 0;
    QObject::connect(&m_prices, &LastPrices::changed, &m_prices, [&changes] { ++changes; });
    m_today.take(quoteAt(1000, 10)); // of the other one
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
}

TEST_F(LastPricesTest, AreNotThoseOfALateQuote)
{
    m_today.take(quoteAt(1001, 11));
    m_today.take(quoteAt(1000, 10));
    EXPECT_EQ(price(moutai).price, 11.0);
}

} // namespace
} // namespace Terminal
