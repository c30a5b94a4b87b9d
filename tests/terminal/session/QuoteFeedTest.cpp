// What a replay says on a real bus.
#include "terminal/session/QuoteFeed.h"

#include "terminal/data/DataFolder.h"
#include "terminal/replay/Replay.h"
#include "terminal/trade/OrderDesk.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ScriptedModule.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::ElementsAre;

QString text(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

/// A replay, its feed and a module that hears quotes and questions on one line.
class QuoteFeedTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(
            &m_market, &LocalCommunication::EndPoint::messageReceived, &m_market,
            [this](const QByteArray &topic, const QByteArray &payload) { hear(topic, payload); });
        m_market.subscribe("Market", QByteArray("Quote"));
        m_market.subscribe("Global", QByteArray("TradeQuery"));
        m_market.connect(m_broker.address());
        m_module.setAnswer(QStringLiteral("HolderCostPrice"), {});
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), {});
        m_module.setAnswer(QStringLiteral("AccountInfo"), {});
        ASSERT_TRUE(waitUntil([this] { return m_market.isConnected() && m_module.isReady(); }));
    }

    /// Opens a day of the sample data with orders that are planned for it.
    void open(const OrderPlan &plan)
    {
        m_feed = std::make_unique<QuoteFeed>(&m_replay, &m_desk, plan, nullptr);
        QObject::connect(m_feed.get(), &QuoteFeed::taken, &m_replay, [this] { ++m_taken; });
        m_desk.start(m_broker.address());
        ASSERT_TRUE(waitUntil([this] { return m_feed->isJoined(); }));
        const DataFolder folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
        m_replay.open(folder.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)).value(),
                      onDay(20240105));
    }

    void hear(const QByteArray &topic, const QByteArray &payload)
    {
        const QJsonObject message = QJsonDocument::fromJson(payload).object();
        if (topic == "Quote") {
            m_heard.append(text(message, "time").left(4));
        } else if (text(message, "cmd") == QLatin1String("EntrustPlace")) {
            m_heard.append(text(message, "bsflag2") + QLatin1Char(' ') + text(message, "orderqty") +
                           QLatin1Char(' ') + text(message, "orderprice"));
        }
    }

    bool hears(int count)
    {
        return waitUntil([=] { return m_heard.size() >= count; });
    }

    TestBroker m_broker;
    LocalCommunication::EndPoint m_market{nullptr};
    ScriptedModule m_module{m_broker.address()};
    Replay m_replay{nullptr};
    OrderDesk m_desk;
    std::unique_ptr<QuoteFeed> m_feed;
    QStringList m_heard;
    int m_taken = 0;
};

TEST_F(QuoteFeedTest, PublishesEveryBarInOrder)
{
    open({});
    m_replay.playTo(atTime(933));
    ASSERT_TRUE(hears(4));
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("0930"), QStringLiteral("0931"), QStringLiteral("0932"),
                                     QStringLiteral("0933")));
}

TEST_F(QuoteFeedTest, PlacesAnOrderBetweenTheQuotesOfItsMinuteAndTheNext)
{
    open({{atTime(931), Direction::Sell, 500, 13.05}, {atTime(930), Direction::Buy, 100, 12.9}});
    m_replay.playTo(atTime(932));
    ASSERT_TRUE(hears(5));
    EXPECT_THAT(m_heard,
                ElementsAre(QStringLiteral("0930"), QStringLiteral("0B 100 12.90"), QStringLiteral("0931"),
                            QStringLiteral("0S 500 13.05"), QStringLiteral("0932")));
}

TEST_F(QuoteFeedTest, PlacesAnOrderOnce)
{
    open({{atTime(930), Direction::Buy, 100, 12.9}});
    m_replay.restart();
    ASSERT_TRUE(hears(3));
    EXPECT_THAT(m_heard,
                ElementsAre(QStringLiteral("0930"), QStringLiteral("0B 100 12.90"), QStringLiteral("0930")));
}

TEST_F(QuoteFeedTest, TellsOfAnOrderWhoseMinuteWentByWhileTheBusWasAway)
{
    open({{atTime(932), Direction::Buy, 100, 12.9}, {atTime(934), Direction::Buy, 200, 12.9}});
    QStringList refusals;
    QObject::connect(m_feed.get(), &QuoteFeed::refused, &m_replay,
                     [&refusals](const QString &reason) { refusals.append(reason); });
    ASSERT_TRUE(hears(1));
    m_broker.kill();
    ASSERT_TRUE(waitUntil([this] { return !m_feed->isJoined(); }));
    m_replay.playTo(atTime(932));
    m_broker.start();
    ASSERT_TRUE(waitUntil([this] { return m_feed->isJoined() && m_market.isConnected(); }));
    m_replay.playTo(atTime(934));
    ASSERT_TRUE(waitUntil([this] { return m_heard.contains(QStringLiteral("0B 200 12.90")); }));
    EXPECT_FALSE(m_heard.contains(QStringLiteral("0B 100 12.90")));
    ASSERT_EQ(refusals.size(), 1);
    EXPECT_THAT(refusals.front().toStdString(), ::testing::HasSubstr("09:32"));
}

TEST_F(QuoteFeedTest, ForgetsItsOrdersWithTheirDay)
{
    open({{atTime(931), Direction::Buy, 100, 12.9}});
    m_replay.close();
    open({});
    m_replay.step();
    ASSERT_TRUE(hears(3));
    EXPECT_THAT(m_heard, ElementsAre(QStringLiteral("0930"), QStringLiteral("0930"), QStringLiteral("0931")));
}

TEST_F(QuoteFeedTest, TellsWhichOfItsOrdersIsRefusedAndNoneThatWasPlacedByHand)
{
    m_module.setAnswer(QStringLiteral("EntrustPlace"), {{QStringLiteral("success"), false},
                                                        {QStringLiteral("msg"), QStringLiteral("no cash")}});
    open({{atTime(931), Direction::Buy, 100, 12.9}});
    QStringList refused;
    QObject::connect(m_feed.get(), &QuoteFeed::refused, &m_desk,
                     [&refused](const QString &reason) { refused.append(reason); });
    int answered = 0;
    QObject::connect(&m_desk, &OrderDesk::placed, &m_replay, [&answered] { ++answered; });
    m_desk.place({m_replay.security(), Direction::Buy, 12.8, 200});
    ASSERT_TRUE(waitUntil([&answered] { return answered == 1; }));
    EXPECT_TRUE(refused.isEmpty());
    m_replay.step();
    ASSERT_TRUE(waitUntil([&answered] { return answered == 2; }));
    EXPECT_EQ(refused, QStringList(QStringLiteral("no cash")));
}

TEST_F(QuoteFeedTest, TellsWhenTheModuleIsDone)
{
    open({});
    m_module.setSilent(QStringLiteral("HolderCostPrice"));
    m_feed->askWhetherTaken();
    const auto asked = [this] { return m_module.asked(QStringLiteral("HolderCostPrice")); };
    ASSERT_TRUE(waitUntil([&] { return asked().size() == 1; }));
    EXPECT_EQ(m_taken, 0);
    m_module.answer(asked().front(), {});
    EXPECT_TRUE(waitUntil([this] { return m_taken == 1; }));
}

} // namespace
} // namespace Terminal
