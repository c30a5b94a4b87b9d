// Ticket, panel and chart of a window together, against a module that says what the test wants.
#include "terminal/trade/TradeDocks.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/WhenOpen.h"
#include "tests/terminal/support/WindowFixture.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
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

    /// The window on a chart, its docks open and its account known.
    void openDocks(const OpenedChart &chart, const TerminalOptions &options = {})
    {
        makeWindow(options);
        load(chart);
        m_module.setAnswer(
            QStringLiteral("AccountInfo"),
            withData(QJsonObject{{QStringLiteral("available"), QStringLiteral("1000000.00")}}));
        m_window->trade()->setShown(true);
        desk()->start(m_broker.address());
        ASSERT_TRUE(waitUntil([this] { return desk()->account().has_value(); }));
    }

    OrderTicket *ticket() { return m_window->trade()->ticket(); }
    double ticketPrice() { return ticket()->draft().order().price; }
    void pressSend() { ticket()->findChild<QPushButton *>(QStringLiteral("sendOrder"))->click(); }

    static QAbstractButton *confirming(QMessageBox *box)
    {
        const auto buttons = box->buttons();
        return buttons.front() == box->defaultButton() ? buttons.back() : buttons.front();
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
    TerminalOptions options;
    options.asksBeforeSending = false;
    openDocks({QStringLiteral("600519"), ChartPeriod::Day}, options);
    MainWindow &window = *m_window;
    TradeDocks &trade = *window.trade();
    const double last = window.chart()->data().bars.back().close;
    const auto send = [&](int ticks) {
        trade.ticket()->setPrice(last + ticks * 0.01);
        pressSend();
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

TEST_F(TradeDocksTest, AskBeforeAnOrderIsSentAndSendItWhenToldTo)
{
    TerminalOptions options;
    options.ledger = QStringLiteral("/home/me/account.db");
    openDocks({QStringLiteral("600519"), ChartPeriod::Day}, options);
    speakEnglish();
    QString question;
    whenOpen<QMessageBox>([&question](QMessageBox *box) {
        question = box->informativeText();
        QTest::mouseClick(confirming(box), Qt::LeftButton);
    });
    pressSend();
    for (const char *const part : {"600519", "100 × ", "account.db (paper)"}) {
        EXPECT_THAT(question.toStdString(), ::testing::HasSubstr(part));
    }
    EXPECT_TRUE(m_module.wasAsked("EntrustPlace", 1));
}

TEST_F(TradeDocksTest, SendNothingWhenTheUserThinksBetterOfItAndAskTheNextTime)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    for (int time = 0; time < 2; ++time) {
        bool isAsked = false;
        whenOpen<QMessageBox>([&isAsked](QMessageBox *box) {
            isAsked = true;
            QTest::keyClick(box, Qt::Key_Return); // the careful answer
        });
        pressSend();
        EXPECT_TRUE(isAsked);
    }
    EXPECT_TRUE(m_module.asked(QStringLiteral("EntrustPlace")).empty());
}

TEST_F(TradeDocksTest, AskNoMoreWhenTheUserHasSaidSoUntilTheMenuAsksAgain)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    whenOpen<QMessageBox>([](QMessageBox *box) {
        box->checkBox()->click();
        QTest::mouseClick(confirming(box), Qt::LeftButton);
    });
    pressSend();
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 1));
    EXPECT_FALSE(m_window->shownOptions().asksBeforeSending);
    m_module.answer(m_module.asked(QStringLiteral("EntrustPlace")).back(), refusedWith("no"));
    ASSERT_TRUE(waitUntil([this] { return isTold(*m_window->trade(), "bad"); }));
    pressSend();
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));
    m_module.answer(m_module.asked(QStringLiteral("EntrustPlace")).back(), withData(QJsonObject()));
    ASSERT_TRUE(waitUntil([this] { return isTold(*m_window->trade(), "good"); }));

    m_window->trade()->askAction()->setChecked(true);
    bool isAsked = false;
    whenOpen<QMessageBox>([&isAsked](QMessageBox *box) {
        isAsked = true;
        box->reject();
    });
    pressSend();
    EXPECT_TRUE(isAsked);
}

TEST_F(TradeDocksTest, OfferNoPriceOfAPastDay)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Minute, onDay(20260327)});
    m_window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    EXPECT_EQ(ticketPrice(), 0);
    QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(chart()->canvas()->width() / 2, 40));
    EXPECT_EQ(ticketPrice(), 0) << "nor by a click on the chart";

    load({QStringLiteral("600519"), ChartPeriod::Day});
    EXPECT_EQ(ticketPrice(), 1416.02) << "its latest close, which the folder has in minutes";
}

TEST_F(TradeDocksTest, CheckNoCashAndSharesThatAreNotKnownAnyMore)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    m_module.setAnswer(QStringLiteral("AccountInfo"),
                       withData(QJsonObject{{QStringLiteral("available"), QStringLiteral("5.00")}}));
    desk()->refresh();
    ASSERT_TRUE(waitUntil([this] { return !ticket()->draft().problem().isEmpty(); }));
    m_module.setAnswer(QStringLiteral("AccountInfo"), refusedWith("the ledger is locked"));
    desk()->refresh();
    ASSERT_TRUE(waitUntil([this] { return !desk()->account(); }));
    EXPECT_EQ(ticket()->draft().problem(), QString());
    EXPECT_THAT(ticket()->findChild<QLabel *>(QStringLiteral("ticketNotice"))->text().toStdString(),
                ::testing::HasSubstr("the ledger is locked"));
}

TEST_F(TradeDocksTest, SendNothingToAnAccountThatCanOnlyBeRead)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    speakEnglish();
    m_window->trade()->setReadOnly(true);
    EXPECT_THAT(ticket()->draft().problem().toStdString(), ::testing::HasSubstr("only be read"));
    m_window->trade()->setReadOnly(false);
    EXPECT_EQ(ticket()->draft().problem(), QString());
}

TEST_F(TradeDocksTest, TellTwoCancellationsBesideEachOther)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    for (const char *const number : {"17", "18"}) {
        OrderRecord order;
        order.security = chart()->data().security;
        order.number = QLatin1String(number);
        order.day = onDay(20240102);
        desk()->cancel(order);
    }
    ASSERT_TRUE(m_module.wasAsked("EntrustCancel", 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustCancel"));
    m_module.answer(asked[0], refusedWith("dealt already"));
    m_module.answer(asked[1],
                    withData(QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("ok")}}}));
    ASSERT_TRUE(waitUntil([this] { return isTold(*m_window->trade(), "good"); }));
    QStringList lines;
    for (const QLabel *const line : ticket()->findChildren<QLabel *>(QStringLiteral("ticketResult"))) {
        lines.append(line->text());
    }
    EXPECT_THAT(lines[0].toStdString(), ::testing::HasSubstr("18"));
    EXPECT_THAT(lines[1].toStdString(), ::testing::HasSubstr("dealt already"));
}

/// With two orders that wait, of other securities than the chart's.
class TradeDocksWithWorkingOrders : public TradeDocksTest
{
protected:
    static QJsonObject orderOf600536(const char *status)
    {
        QJsonObject order = orderRow("4", status);
        order.insert(QStringLiteral("stkcode"), QStringLiteral("600536"));
        return order;
    }

    void openDocksWithOrders()
    {
        m_module.setAnswer(QStringLiteral("OpenOrders"),
                           withData(QJsonArray{orderRow("3", "2"), orderOf600536("2")}));
        openDocks({QStringLiteral("000001"), ChartPeriod::Day});
        desk()->setModule([] {
            DeskModule module;
            module.tellsOpenOrders = true;
            return module;
        });
        desk()->refresh();
        ASSERT_TRUE(waitUntil([this] { return desk()->workingOrders().has_value(); }));
    }
};

TEST_F(TradeDocksWithWorkingOrders, AskBeforeTheWindowIsLeft)
{
    openDocksWithOrders();
    m_window->show();
    whenOpen<QMessageBox>([](QMessageBox *box) { box->defaultButton()->click(); });
    EXPECT_FALSE(m_window->close());
    EXPECT_TRUE(m_window->isVisible());
    QString text;
    whenOpen<QMessageBox>([&text](QMessageBox *box) {
        text = box->informativeText();
        confirming(box)->click();
    });
    EXPECT_TRUE(m_window->close());
    EXPECT_THAT(text.toStdString(), ::testing::HasSubstr("600536"));
}

TEST_F(TradeDocksWithWorkingOrders, AskNothingWithoutAny)
{
    m_module.setAnswer(QStringLiteral("OpenOrders"), withData(QJsonArray()));
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    EXPECT_TRUE(m_window->mayLeave());
}

TEST_F(TradeDocksWithWorkingOrders, CancelAllOfThemAfterOneQuestion)
{
    openDocksWithOrders();
    OrdersPanel *const panel = m_window->trade()->panel();
    panel->findChild<QComboBox *>(QStringLiteral("orderScope"))->setCurrentIndex(1);
    whenOpen<QMessageBox>([](QMessageBox *box) { box->defaultButton()->click(); });
    panel->findChild<QPushButton *>(QStringLiteral("cancelAll"))->click();
    whenOpen<QMessageBox>([](QMessageBox *box) { confirming(box)->click(); });
    panel->findChild<QPushButton *>(QStringLiteral("cancelAll"))->click();
    EXPECT_TRUE(m_module.wasAsked("EntrustCancel", 2)) << "once, for the first question was answered with no";
}

TEST_F(TradeDocksWithWorkingOrders, SayThatOneIsDealtWhicheverChartIsShown)
{
    openDocksWithOrders();
    m_window->show();
    m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray{orderOf600536("8")}));
    Q_EMIT desk()->statusTold(QStringLiteral("4"), QStringLiteral("8"));
    const auto *const message = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    ASSERT_TRUE(waitUntil([message] { return message->isVisible(); }));
    EXPECT_THAT(message->text().toStdString(), ::testing::HasSubstr("600536"));
    EXPECT_THAT(message->text().toStdString(), ::testing::HasSubstr("1700.510")) << "what was dealt has cost";
    EXPECT_THAT(message->text().toStdString(), ::testing::Not(::testing::HasSubstr("1700.50")));
}

TEST_F(TradeDocksWithWorkingOrders, SayThatOneIsDealtWithoutAPriceWhenItIsNotTold)
{
    openDocksWithOrders();
    m_window->show();
    desk()->setTimeout(50ms);
    m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray()));
    Q_EMIT desk()->statusTold(QStringLiteral("4"), QStringLiteral("8"));
    const auto *const message = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    ASSERT_TRUE(waitUntil([message] { return message->isVisible(); }));
    EXPECT_THAT(message->text().toStdString(), ::testing::HasSubstr("600536"));
    EXPECT_THAT(message->text().toStdString(), ::testing::Not(::testing::HasSubstr("1700")));
}

TEST_F(TradeDocksWithWorkingOrders, ListThemAtTheKeyWhenTheyWereTold)
{
    openDocksWithOrders();
    const auto *const orders =
        m_window->trade()->panel()->findChild<QTableView *>(QStringLiteral("ordersView"));
    ASSERT_EQ(orders->model()->rowCount(), 0) << "of the chart's security";
    m_window->trade()->setShown(false);
    m_window->trade()->listWorkingOrders();
    m_window->show();
    activateWindow();
    QTest::keyClick(chart(), Qt::Key_F3);
    EXPECT_TRUE(orders->isVisible());
    EXPECT_EQ(orders->model()->rowCount(), 2);
}

TEST_F(TradeDocksTest, FillTheTicketInToCloseAPosition)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Day});
    const Security another{QStringLiteral("600536"), Market::Shanghai, {}};
    Q_EMIT m_window->trade()->panel()->closeAsked({another, 500, 300, 50});
    EXPECT_EQ(chart()->data().security.code, another.code);
    const OrderRequest order = ticket()->draft().order();
    EXPECT_EQ(order.side, Direction::Sell);
    EXPECT_EQ(order.quantity, 300);
    EXPECT_TRUE(m_module.asked(QStringLiteral("EntrustPlace")).empty()) << "the user sends it";
}

TEST_F(TradeDocksTest, ShowTheChartOfAPosition)
{
    openDocks({QStringLiteral("600519"), ChartPeriod::Week});
    Q_EMIT m_window->trade()->panel()->chartAsked({QStringLiteral("600536"), Market::Shanghai, {}});
    EXPECT_EQ(chart()->data().security.code, QStringLiteral("600536"));
    EXPECT_EQ(chart()->data().period, ChartPeriod::Week);
}

} // namespace
} // namespace Terminal
