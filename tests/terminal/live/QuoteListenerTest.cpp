// Quotes of another program, on a real bus.
#include "terminal/live/QuoteListener.h"
#include "terminal/live/BarQuote.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"
#include "tests/support/TestBroker.h"
#include "tests/support/TurnWatch.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace Terminal {
namespace {

class QuoteListenerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_listener.start(m_broker.address());
        m_market.connect(m_broker.address());
        ASSERT_TRUE(waitUntil([this] { return m_listener.isJoined() && m_market.isConnected(); }));
    }

    void send(const QByteArray &payload) { m_market.sendMessage("Market", "Quote", payload); }
    void send(const QString &code, int minute, double price,
              std::optional<Trading::TradingDate> recorded = {})
    {
        const Bar bar{quotedDay.number(), minute, price, price, price, price, 100};
        send(QJsonDocument(quoteOf({code, Market::Shanghai, {}}, bar, {}, recorded))
                 .toJson(QJsonDocument::Compact));
    }
    size_t bars(const QString &code) const
    {
        const MinuteBook *const book = m_today.of({code, Market::Shanghai});
        return book == nullptr ? 0 : book->bars().size();
    }

    TestBroker m_broker;
    LocalCommunication::EndPoint m_market{nullptr};
    Replay m_replay{nullptr};
    Today m_today{&m_replay, [] { return quotedDay; }};
    QuoteListener m_listener{&m_today};
};

TEST_F(QuoteListenerTest, TellsTodayOfTheMarketsQuotesAndOfNothingElse)
{
    const QString code = QStringLiteral("600519");
    send("{");
    send(R"({"stkcode":"600519"})");
    send(code, 571, 10, onDay(20180108)); // another window's replay
    send(code, 572, 10);
    ASSERT_TRUE(waitUntil([&] { return bars(code) > 0; }));
    EXPECT_EQ(bars(code), 1U);
}

/// The whole market within a second, in bursts as a broker hands them on.
TEST_F(QuoteListenerTest, TakesAThousandQuotesWithoutALongTurn)
{
    constexpr int securities = 500;
    const auto codeOf = [](int number) { return QString::number(600000 + number % securities); };
    TurnWatch watch;
    for (int number = 0; number < 2 * securities; ++number) {
        send(codeOf(number), 571 + number / securities, 10);
    }
    ASSERT_TRUE(waitUntil([&] { return bars(codeOf(securities - 1)) == 2; }));
    EXPECT_LT(watch.longest(), 250) << "that of sending them all, too; 50 ms as released";
}

} // namespace
} // namespace Terminal
