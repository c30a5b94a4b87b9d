// The terminal's own questions for trades, over a real broker.
#include "terminal/trades/TradesDesk.h"

#include "tests/support/TestBroker.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/trades/SomeTrades.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class TradesDeskTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        tell("HistoryTrade", {tradeRow("20240102", "09315000", "B", "10", "100")});
        tell("TodayTrade", {});
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
        m_desk.start(m_broker.address());
    }

    void tell(const char *command, const QJsonArray &rows)
    {
        m_module.setAnswer(QLatin1String(command), withData(rows));
    }

    void watch()
    {
        m_desk.show({QStringLiteral("600519"), Market::Shanghai, {}});
        m_desk.watch(true);
        ASSERT_TRUE(waitUntil([this] { return m_desk.isUpToDate(); }));
    }

    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
    TradesDesk m_desk;
};

TEST_F(TradesDeskTest, AsksForNothingBeforeItIsToWatch)
{
    m_desk.show({QStringLiteral("600519"), Market::Shanghai, {}});
    EXPECT_TRUE(m_desk.isUpToDate());
    watch();
    EXPECT_THAT(m_module.asked(QStringLiteral("HistoryTrade")), SizeIs(1));
}

TEST_F(TradesDeskTest, PutsThoseOfPastDaysAndOfTodayTogether)
{
    tell("TodayTrade", {tradeRow("20240103", "10000000", "S", "11", "200")});
    watch();
    ASSERT_THAT(m_desk.trades(), SizeIs(2));
    EXPECT_TRUE(m_desk.trades().front().isBuy());
    EXPECT_EQ(m_desk.trades().back().quantity, 200);
}

TEST_F(TradesDeskTest, DatesThoseOfAPractisedDayAsTheChartThatIsShown)
{
    tell("HistoryTrade", {tradeRow("20240102", "09315000", "B", "10", "100")});
    tell("TodayTrade", {tradeRow("20240103", "10000000", "S", "11", "200")});
    watch();
    m_desk.setPlayedAsToday(true);
    ASSERT_THAT(m_desk.trades(), SizeIs(2));
    EXPECT_EQ(m_desk.trades().back().day, Trading::TradingDate::today()) << "as its chart, which is today's";
    m_desk.setPlayedAsToday(false);
    ASSERT_THAT(m_desk.trades(), SizeIs(2));
    EXPECT_EQ(m_desk.trades().back().day, onDay(20240103));
}

TEST_F(TradesDeskTest, HearsItsAnswersOnAChannelOfItsOwn)
{
    watch();
    const QString channel =
        m_module.asked(QStringLiteral("HistoryTrade")).front().value(QLatin1String("screenId")).toString();
    EXPECT_TRUE(channel.startsWith(QLatin1String("terminal-trades-")));
}

TEST_F(TradesDeskTest, AsksForTodaysAgainAfterANotificationOfItsSecurityAlone)
{
    watch();
    m_module.notify(QStringLiteral("000001"));
    tell("TodayTrade", {tradeRow("20240103", "10000000", "S", "11", "200")});
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(waitUntil([this] { return m_desk.trades().size() == 2; }));
    EXPECT_THAT(m_module.asked(QStringLiteral("TodayTrade")), SizeIs(2));
    EXPECT_THAT(m_module.asked(QStringLiteral("HistoryTrade")), SizeIs(1));
}

TEST_F(TradesDeskTest, AsksForPastOnesAgainWhenTheyChanged)
{
    watch();
    tell("HistoryTrade", {});
    m_module.notify(QStringLiteral("600519"), QStringLiteral("20240102"));
    EXPECT_TRUE(waitUntil([this] { return m_desk.trades().empty(); }));
}

TEST_F(TradesDeskTest, ForgetsThemForAnotherSecurity)
{
    watch();
    ASSERT_THAT(m_desk.trades(), SizeIs(1));
    m_module.setSilent(QStringLiteral("HistoryTrade"));
    m_desk.show({QStringLiteral("000001"), Market::Shenzhen, {}});
    EXPECT_THAT(m_desk.trades(), IsEmpty());
}

TEST_F(TradesDeskTest, TellsOfNoChangeWhenNothingHasChanged)
{
    watch();
    int changes = 0;
    QObject::connect(&m_desk, &TradesDesk::changed, &m_desk, [&changes] { ++changes; });
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(m_module.wasAsked("TodayTrade", 2));
    ASSERT_TRUE(waitUntil([this] { return m_desk.isUpToDate(); }));
    EXPECT_EQ(changes, 0);
}

TEST_F(TradesDeskTest, TellsWhyTheyAreNotTold)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"), refusedWith("the ledger failed"));
    m_module.setAnswer(QStringLiteral("TodayTrade"), refusedWith("the ledger failed"));
    watch();
    EXPECT_EQ(m_desk.refusal(), QStringLiteral("the ledger failed"));
}

TEST_F(TradesDeskTest, AsksAgainForPastOnesThatWereRefused)
{
    m_module.setAnswer(QStringLiteral("HistoryTrade"), refusedWith("the ledger is busy"));
    watch();
    ASSERT_EQ(m_desk.refusal(), QStringLiteral("the ledger is busy")) << "though today's are told";
    tell("HistoryTrade", {tradeRow("20240102", "09315000", "B", "10", "100")});
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(waitUntil([this] { return m_desk.trades().size() == 1; }));
    EXPECT_EQ(m_desk.refusal(), QString());
}

TEST_F(TradesDeskTest, ReadsALongAnswerWhileTheWindowGoesOn)
{
    QJsonArray rows;
    for (int i = 0; i < 2000; ++i) {
        rows.append(tradeRow("20240102", "09315000", "B", "10", "100"));
    }
    tell("HistoryTrade", rows);
    watch();
    EXPECT_THAT(m_desk.trades(), SizeIs(2000));
}

} // namespace
} // namespace Terminal
