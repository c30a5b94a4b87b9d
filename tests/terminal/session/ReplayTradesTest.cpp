// Orders that a replay deals, on the chart that grows with it.
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/ChartTrades.h"
#include "terminal/ui/MessageBar.h"
#include "tests/terminal/support/ChartPixels.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/TradingWindow.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QStatusBar>

#include <algorithm>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class ReplayTrades : public TradingWindow
{
protected:
    /// On an account that practises the day, with what the sample's has.
    void SetUp() override
    {
        importStatement();
        const QString copied = ledger();
        m_ledgerName = QStringLiteral("practice.db");
        QProcess begin;
        begin.start(QStringLiteral(TRADEMODULE),
                    {QStringLiteral("--ledger"), ledger(), QStringLiteral("practice"),
                     QStringLiteral("--day"), QStringLiteral("20230711"), QStringLiteral("--copy"), copied});
        ASSERT_TRUE(begin.waitForFinished());
        ASSERT_EQ(begin.exitCode(), 0) << begin.readAllStandardError().toStdString();
        m_plan.practised = PractisedDay{QStringLiteral("600536"), onDay(20230711), {}};
        startModule();
    }

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

/// Who switches the replay off sees no minute that was not played, and orders at no price of one.
TEST_F(ReplayTrades, HaveThePriceAndTheLimitsOfTheMinutePlayedToWhenTheReplayIsSwitchedOff)
{
    open(OrderPlan());
    speakEnglish();
    playTo(940);
    EXPECT_THAT(m_window->setReplaying(false).toStdString(), HasSubstr("stands still"));
    EXPECT_EQ(chart()->data().bars.size(), 11U);
    const auto *const ticket = m_window->trade()->ticket();
    const auto *const price = ticket->findChild<QDoubleSpinBox *>(QStringLiteral("orderPrice"));
    ASSERT_NE(price, nullptr);
    EXPECT_TRUE(waitUntil([=] { return price->value() == replay()->day()[10].close; })) << price->value();
    const auto labels = ticket->findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return !label->isHidden() && label->text().startsWith(QStringLiteral("Limits"));
    }));
    EXPECT_THAT(m_session->source().minuteDays(QStringLiteral("600536")),
                ::testing::Not(::testing::Contains(onDay(20230711))));
}

TEST_F(ReplayTrades, AreSaidToWaitWhileTheDayStandsStill)
{
    open(OrderPlan());
    speakEnglish();
    playTo(940);
    Q_EMIT m_window->trade()->ticket()->sendAsked({replay()->security(), Direction::Buy, 50.70, 300});
    const auto *const message = m_window->findChild<MessageBar *>();
    EXPECT_TRUE(waitUntil([=] { return message->text().contains(QStringLiteral("stands still")); }))
        << message->text().toStdString();
    EXPECT_TRUE(message->text().contains(QStringLiteral("50.70"))) << "beside what became of it";
}

TEST_F(ReplayTrades, HaveTheHoursOfTheMinutePlayedToInTheLineBelow)
{
    open(OrderPlan());
    speakEnglish();
    const auto says = [this](const char *state) {
        const auto labels = m_window->statusBar()->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(), [state](const QLabel *label) {
            return label->text() == QStringLiteral("Practised day: ") + QLatin1String(state);
        });
    };
    playTo(1031);
    EXPECT_TRUE(says("Morning session"));
    playTo(1400);
    EXPECT_TRUE(says("Afternoon session"));
}

/// What a practised day looks like while it is played: the pictures are read where things must
/// be.
class ReplayTradesInPictures : public ReplayTrades
{
protected:
    /// A buy of 09:33 at 50.96, the price of an order that the bar's low reaches; the day is played to it.
    void buy()
    {
        open(OrderPlan());
        m_window->trades()->start(address());
        m_window->resize(1600, 900);
        playTo(932);
        Q_EMIT m_window->trade()->ticket()->sendAsked({replay()->security(), Direction::Buy, price(), 200});
        ASSERT_TRUE(waitUntil([this] { return desk()->orders().size() == 1; }));
        playTo(933);
        ASSERT_TRUE(waitUntil([this] { return layer()->trades().size() == 1; }));
        m_filledAt = layer()->trades().front();
    }

    double price() { return std::round(replay()->day()[3].low * 100) / 100 + 0.02; }
    const TradesLayer *layer() { return m_window->trades()->layer(); }
    QColor rise() { return chart()->theme().rise; }

    AccountTrade m_filledAt{onDay(20230711), atTime(930)};
};

TEST_F(ReplayTradesInPictures, StandAtTheirMinuteAndPriceWhileTheDayIsPlayed)
{
    buy();
    EXPECT_EQ(m_filledAt.day, Trading::TradingDate::today());
    EXPECT_EQ(m_filledAt.time.minute(), 9 * 60 + 33);
    EXPECT_GT(pixelsOfMark(chart(), 3, m_filledAt.price, rise()), 25);
    EXPECT_LT(pixelsOfMark(chart(), 60, m_filledAt.price, rise()), 10) << "nothing was bought there";
}

TEST_F(ReplayTradesInPictures, HaveTheLineOfTheLastPriceAndTheBarThatGrewBesideThem)
{
    buy();
    const auto candle = [this](int bar) {
        const QImage picture = pictureOf(chart());
        const auto x = static_cast<int>(chart()->chartGeometry().barToX(bar));
        const auto top = static_cast<int>(chart()->chartGeometry().priceToY(replay()->day()[bar].high));
        const auto bottom = static_cast<int>(chart()->chartGeometry().priceToY(replay()->day()[bar].low));
        const QImage column = picture.copy(x, top, 1, std::max(1, bottom - top));
        return pixelsOf(column, rise()) + pixelsOf(column, chart()->theme().fall);
    };
    const auto lastLine = [this] {
        const Bar &last = chart()->data().bars.back();
        return pixelsOfRow(chart(), last.close, last.rises() ? rise() : chart()->theme().fall);
    };
    EXPECT_LT(candle(4), 3) << "it has not come";
    EXPECT_GT(lastLine(), chart()->canvas()->width() / 4);
    playTo(934);
    ASSERT_TRUE(waitUntil([this] { return chart()->data().bars.size() == 5; }));
    EXPECT_GT(candle(4), 2);
    EXPECT_GT(lastLine(), chart()->canvas()->width() / 4) << "it goes along";
}

TEST_F(ReplayTradesInPictures, StandAtTheRecordedDayOnAChartOfDaysThatEndsWithIt)
{
    buy();
    load({QStringLiteral("600536"), ChartPeriod::Day});
    const Bars &days = chart()->data().bars;
    ASSERT_EQ(days.back().date, 20230711) << "what came after it is not known";
    EXPECT_EQ(days.back().close, replay()->day()[3].close);
    ASSERT_TRUE(waitUntil([this] { return layer()->marks().size() == 1; })) << "the day is in view";
    EXPECT_EQ(layer()->trades().front().day, onDay(20230711));
    EXPECT_EQ(layer()->trades().front().time, m_filledAt.time);
    EXPECT_GT(pixelsOfMark(chart(), static_cast<int>(days.size()) - 1, m_filledAt.price, rise()), 25);

    playTo(1000);
    EXPECT_TRUE(waitUntil([&days, this] { return days.back().close == replay()->day()[30].close; }))
        << "it grows with the minutes";
}

} // namespace
} // namespace Terminal
