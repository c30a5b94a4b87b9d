// Ticket, panel and chart of a window together, against a module that says what the test wants.
#include "terminal/trade/TradeDocks.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/WindowFixture.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace Terminal {
namespace {

using namespace std::chrono_literals;

class TradeDocksTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray()));
        m_module.setAnswer(QStringLiteral("AccountInfo"), withData(QJsonObject()));
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
    }

    static bool isTold(const TradeDocks &trade, const char *tone)
    {
        const auto *const result = trade.ticket()->findChild<QLabel *>(QStringLiteral("ticketResult"));
        return result->property("tone").toString() == QLatin1String(tone);
    }

    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
};

TEST_F(TradeDocksTest, GetsTheNextOrderOfTheTicketWhenTheOneBeforeHasEnded)
{
    makeWindow(TerminalOptions());
    MainWindow &window = *m_window;
    load({QStringLiteral("600519"), ChartPeriod::Day});
    TradeDocks &trade = *window.trade();
    m_module.setAnswer(QStringLiteral("AccountInfo"),
                       withData(QJsonObject{{QStringLiteral("available"), QStringLiteral("1000000.00")}}));
    trade.setShown(true);
    desk()->start(m_broker.address());
    ASSERT_TRUE(waitUntil([&trade] { return trade.desk()->account().has_value(); }));
    const double last = window.chart()->data().bars.back().close;
    const auto send = [&](int ticks) {
        trade.ticket()->setPrice(last + ticks * 0.01);
        trade.ticket()->findChild<QPushButton *>(QStringLiteral("sendOrder"))->click();
    };
    trade.desk()->setTimeout(100ms);
    send(1); // no answer comes
    send(2);
    ASSERT_TRUE(waitUntil([&] { return isTold(trade, "bad"); }));
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 1));
    trade.desk()->setTimeout(1min);
    send(3);
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));

    m_module.answer(m_module.asked(QStringLiteral("EntrustPlace")).front(), withData(QJsonObject()));
    ASSERT_TRUE(waitUntil([&] { return isTold(trade, "good"); }));
    send(4); // what was answered late is not the order before
    m_module.answer(m_module.asked(QStringLiteral("EntrustPlace")).back(), refusedWith("no"));
    ASSERT_TRUE(waitUntil([&] { return isTold(trade, "bad"); }));
    send(5);
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 3));
    EXPECT_EQ(m_module.asked(QStringLiteral("EntrustPlace")).back().value(QLatin1String("orderprice")),
              QString::number(last + 0.05, 'f', 2));
}

TEST_F(TradeDocksTest, ListsTheOrdersOfAPastDayInTheWindow)
{
    makeWindow(TerminalOptions());
    MainWindow &window = *m_window;
    load({QStringLiteral("600519"), ChartPeriod::Minute, onDay(20260327)});
    m_module.setAnswer(QStringLiteral("EntrustHistoryTrade"), withData(QJsonArray{orderRow("3", "8")}));
    window.trade()->setShown(true);
    desk()->start(m_broker.address());
    const auto *const rows =
        window.trade()->panel()->findChild<QTableView *>(QStringLiteral("ordersView"))->model();
    ASSERT_TRUE(waitUntil([rows] { return rows->rowCount() == 1; }));
    EXPECT_EQ(rows->index(0, static_cast<int>(OrderColumn::Number)).data().toString(), QStringLiteral("3"));
    EXPECT_EQ(
        m_module.asked(QStringLiteral("EntrustHistoryTrade")).back().value(QLatin1String("date")).toInt(),
        20260327);

    m_module.setAnswer(QStringLiteral("EntrustHistoryTrade"), withData(QJsonArray()));
    ASSERT_TRUE(window.load(QStringLiteral("600519"), ChartPeriod::Day));
    EXPECT_EQ(rows->rowCount(), 0) << "a chart of days goes with today's orders";
}

} // namespace
} // namespace Terminal
