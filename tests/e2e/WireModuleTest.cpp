// The plug-in asks over a real broker, and the broker's own command-line clients play the trading
// module: what travels is tested by programs that know nothing of ours.
#include "tests/e2e/PluginOnBus.h"
#include "tests/e2e/WireClients.h"

#include <QDate>

#include <cmath>

namespace {

class WireModule : public PluginOnBus, protected WireClients
{
protected:
    WireModule() : WireClients(broker) {}

    void SetUp() override
    {
        if (!areInstalled()) {
            GTEST_SKIP() << "mosquitto-clients is not installed";
        }
        listen();
    }

    /// True when the question has been heard on the wire.
    bool heard(const QByteArray &question)
    {
        m_lines += takeHeard();
        return m_lines.contains("Global/TradeQuery " + question);
    }

private:
    QByteArrayList m_lines;
};

TEST_F(WireModule, AnswersTheCostLine)
{
    const Overlay costLine = create(0);
    ASSERT_TRUE(waitUntil([&] {
        calc(*costLine, chinaSoft, {makeDayBar(20240102), makeDayBar(20240103)});
        return heard(R"({"cmd":"HolderCostPrice","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    }));
    say(QStringLiteral("screen-1/TradeQuery"),
        R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"31.415"}})");
    ASSERT_TRUE(waitUntil([&] { return !axis.updated.empty(); }));
    EXPECT_EQ(paintedCost(*costLine), 31.415);
}

TEST_F(WireModule, AnswersAScreenWithAnyName)
{
    axis.screen = "屏 1/#";
    const Overlay costLine = create(0);
    ASSERT_TRUE(waitUntil([&] {
        calc(*costLine, chinaSoft, {makeDayBar(20240102)});
        return heard(R"({"cmd":"HolderCostPrice","market":"SH","screenId":"屏 1/#","stkcode":"600536"})");
    }));
    say(QStringLiteral("%E5%B1%8F%201%2F%23/TradeQuery"),
        R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"31.415"}})");
    EXPECT_TRUE(waitUntil([&] { return !axis.updated.empty(); }));
}

TEST_F(WireModule, AnswersAndNotifiesTheBuySellPoints)
{
    const Overlay points = create(1);
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102), makeDayBar(20240103)};
    ASSERT_TRUE(waitUntil([&] {
        // Refused until the bus is there; another range of days asks again.
        calc(*points, chinaSoft, {makeDayBar(20240103)});
        calc(*points, chinaSoft, bars);
        return heard(
            R"({"cmd":"HistoryTrade","end":"20240103","market":"SH","screenId":"screen-1","start":"20240102","stkcode":"600536"})");
    }));
    say(QStringLiteral("screen-1/TradeQuery"),
        R"({"cmd":"HistoryTrade","stkcode":"600536","data":[{"bsflag2":"B","bizdate":"20240102","matchtime":"9301500","matchprice":"30.1","matchqty":"300"}]})");
    ASSERT_TRUE(waitUntil([&] { return !axis.updated.empty(); }));
    EXPECT_EQ(paintedMarks(*points), "B ");

    say(QStringLiteral("Global/TradeNotify"), R"({"stkcode":"600536"})");
    ASSERT_TRUE(waitUntil([&] {
        return heard(R"({"cmd":"TodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    }));
    say(QStringLiteral("screen-1/TradeQuery"),
        R"({"cmd":"TodayTrade","stkcode":"600536","data":[{"bsflag2":"S","orderdate":"20240103","opertime":"9301500","matchprice":"30.1","matchqty":"300"}]})");
    ASSERT_TRUE(waitUntil([&] { return axis.updated.size() >= 2; }));
    EXPECT_EQ(paintedMarks(*points), "BS");
}

TEST_F(WireModule, AnswersTheOrderPointsBehindAFloodOfNotifications)
{
    const QDate date = QDate::currentDate();
    const auto today = static_cast<std::uint32_t>(date.year() * 10000 + date.month() * 100 + date.day());
    axis.mode = Korvane::TodayChart;
    const Overlay points = create(2);
    Korvane::tagCodeWithName security = chinaSoft;
    ASSERT_TRUE(waitUntil([&] {
        ++security.identity; // refused until the bus is there; another security asks again
        calc(*points, security, {makeMinuteBar(today, 931)}, Korvane::IntradayPeriod);
        return heard(R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    }));

    sayLines(QStringLiteral("Global/TradeNotify"), QByteArray("{\"stkcode\":\"600536\"}\n").repeated(10000));
    say(QStringLiteral("screen-1/TradeQuery"),
        R"({"cmd":"EntrustTodayTrade","stkcode":"600536","data":[{"market":"1","bsflag2":"0B","orderstatus":"2"}]})");
    EXPECT_TRUE(waitUntil([&] { return !axis.updated.empty(); }));
}

TEST_F(WireModule, FindsTheOverlayAgainWhenTheBrokerHasCrashed)
{
    const Overlay costLine = create(0);
    const QByteArray question =
        R"({"cmd":"HolderCostPrice","market":"SH","screenId":"screen-1","stkcode":"600536"})";
    ASSERT_TRUE(waitUntil([&] {
        calc(*costLine, chinaSoft, {makeDayBar(20240102)});
        return heard(question);
    }));
    broker.kill();
    broker.start();
    ASSERT_TRUE(waitUntil([&] {
        calc(*costLine, chinaSoft, {makeDayBar(20240102)});
        say(QStringLiteral("screen-1/TradeQuery"),
            R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":"1","costprice":"31.415"}})");
        return !axis.updated.empty();
    }));
    EXPECT_EQ(paintedCost(*costLine), 31.415);
}

} // namespace
