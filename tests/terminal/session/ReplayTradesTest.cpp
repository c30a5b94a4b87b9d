// Orders that a replay deals, on the chart that grows with it.
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/TradingWindow.h"

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class ReplayTrades : public TradingWindow
{
protected:
    /// Opens the replay of a day with the orders of a plan.
    void open(const OrderPlan &plan)
    {
        m_plan.orders = plan;
        openWindow(QStringLiteral("orders"),
                   {QStringLiteral("600536"), ChartPeriod::Minute, onDay(20230711)});
        ASSERT_TRUE(waitUntil([this] { return m_session->stage() == TradingSession::Stage::Trading; }));
        m_window->setReplaying(true);
        startOverlays();
    }

    void open(const PlannedOrder &order)
    {
        open(OrderPlan{order});
        m_order = order;
    }

    void playTo(int hhmm) { replay()->playTo(atTime(hhmm)); }

    /// What the list of the orders at the marker says; nothing where there is no marker.
    std::string listed()
    {
        const int bar = m_order.time.minute() - 9 * 60 - 30;
        const ChartGeometry &geometry = chart()->chartGeometry();
        const QPointF marker(geometry.barToX(bar), geometry.priceToY(m_order.price) + 8);
        return m_window->overlays()->isHit(marker)
                   ? rowsAtAClick(marker).join(QLatin1Char('\n')).toStdString()
                   : std::string();
    }

    bool comesToSay(const char *status)
    {
        return waitUntil([this, status] { return listed().find(status) != std::string::npos; });
    }

    PlannedOrder m_order;
};

TEST_F(ReplayTrades, WaitAndAreDealtWhenABarReachesThem)
{
    open({atTime(945), Direction::Buy, 3000, 50.70});
    playTo(952); // the low of 09:52 is 50.71
    EXPECT_TRUE(comesToSay("未成交")) << listed();
    playTo(953);
    EXPECT_TRUE(comesToSay("已成")) << listed();
}

TEST_F(ReplayTrades, AreDealtInPartsWhereABarHasTooLittle)
{
    open({atTime(1010), Direction::Buy, 12000, 50.86});
    playTo(1011); // a quarter of its volume of 35,600
    EXPECT_TRUE(comesToSay("部成")) << listed();
    EXPECT_THAT(listed(), HasSubstr("8900"));
    playTo(1014);
    EXPECT_TRUE(comesToSay("已成")) << listed();
}

TEST_F(ReplayTrades, AreBehindTheQuotesOfTheirMinuteWhenPlacedByHand)
{
    open(OrderPlan());
    playTo(953); // the low of 09:53 is 50.70
    Q_EMIT m_window->trade()->ticket()->sendAsked({replay()->security(), Direction::Buy, 50.70, 300});
    playTo(954);
    ASSERT_TRUE(waitUntil([this] { return desk()->orders().size() == 1; }));
    EXPECT_EQ(desk()->orders().front().time.value().minute(), 9 * 60 + 53);
}

} // namespace
} // namespace Terminal
