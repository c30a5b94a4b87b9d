// The order ticket by keyboard and by mouse.
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrderResults.h"
#include "tests/terminal/support/SomeSecurities.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QWheelEvent>

#include <regex>

namespace Terminal {
namespace {

class OrderTicketTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_facts.moduleAnswers = true;
        m_facts.closeBefore = 10.0;
        m_facts.available = 10000.0;
        m_facts.held = 350;
        m_facts.sellable = 350;
        m_ticket.setSecurity(moutai, 10.0);
        m_ticket.setFacts(m_facts);
        QObject::connect(&m_ticket, &OrderTicket::sendAsked, &m_ticket,
                         [this](const OrderRequest &order) { m_sent.push_back(order); });
        m_ticket.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_ticket));
        m_ticket.focusPrice();
    }

    template <class Widget>
    Widget *child(const char *name)
    {
        return m_ticket.findChild<Widget *>(QLatin1String(name));
    }
    QDoubleSpinBox *price() { return child<QDoubleSpinBox>("orderPrice"); }
    QSpinBox *quantity() { return child<QSpinBox>("orderQuantity"); }
    QPushButton *sendButton() { return child<QPushButton>("sendOrder"); }

    /// Has every order answered at once, as a trading module on the same machine does.
    void answerAtOnce()
    {
        QObject::connect(&m_ticket, &OrderTicket::sendAsked, &m_ticket, &OrderTicket::endSending);
    }

    /// By a notch away from the user.
    static void turnWheel(QWidget *widget)
    {
        QWheelEvent event({5, 5}, widget->mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &event);
    }

    /// What a key sends again and again while it is held.
    static void repeatKey(QWidget *widget, Qt::Key key)
    {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QStringLiteral("\r"), true);
        QApplication::sendEvent(widget, &repeated);
    }

    DraftFacts m_facts;
    OrderTicket m_ticket;
    std::vector<OrderRequest> m_sent;
};

TEST_F(OrderTicketTest, KeepsToTheTickOfTheDayThatOrdersAreOf)
{
    m_facts.day = Trading::TradingDate::ofNumber(20210104).value();
    m_ticket.setFacts(m_facts);
    m_ticket.setSecurity({QStringLiteral("113050"), Market::Shanghai, {}}, 105.25);
    EXPECT_EQ(price()->text().toStdString(), "105.25");
    m_facts.day = Trading::TradingDate::ofNumber(20230104).value();
    m_ticket.setFacts(m_facts);
    EXPECT_EQ(price()->text().toStdString(), "105.250");
}

TEST_F(OrderTicketTest, SendsWhatWasTyped)
{
    QTest::keyClicks(price(), QStringLiteral("10.25"));
    quantity()->selectAll();
    QTest::keyClicks(quantity(), QStringLiteral("300"));
    QTest::keyClick(price(), Qt::Key_Return);
    ASSERT_EQ(m_sent.size(), 1U);
    EXPECT_DOUBLE_EQ(m_sent.front().price, 10.25);
    EXPECT_EQ(m_sent.front().quantity, 300);
    EXPECT_EQ(m_sent.front().side, Direction::Buy);
    EXPECT_EQ(m_sent.front().security.code, moutai.code);
}

TEST_F(OrderTicketTest, TakesACommaForThePointOfThePrice)
{
    QTest::keyClicks(price(), QStringLiteral("10,25"));
    QTest::keyClick(price(), Qt::Key_Return);
    ASSERT_EQ(m_sent.size(), 1U);
    EXPECT_DOUBLE_EQ(m_sent.front().price, 10.25);
}

TEST_F(OrderTicketTest, StepsByTheTickOfAFund)
{
    m_ticket.setSecurity({QStringLiteral("510300"), Market::Shanghai, QStringLiteral("ETF")}, 3.999);
    EXPECT_EQ(price()->text().toStdString(), "3.999");
    QTest::keyClick(price(), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(price()->value(), 4.0);
    EXPECT_EQ(price()->text().toStdString(), "4.000");
}

TEST_F(OrderTicketTest, BeginsWithTheLeastQuantityOfTheSecurity)
{
    m_ticket.setSecurity({QStringLiteral("688981"), Market::Shanghai, QStringLiteral("S")}, 10.0);
    EXPECT_EQ(quantity()->value(), 200);
    m_ticket.setSecurity({QStringLiteral("113050"), Market::Shanghai, QStringLiteral("B")}, 100.0);
    EXPECT_EQ(quantity()->value(), 10);
    m_ticket.setSecurity(moutai, 10.0);
    EXPECT_EQ(quantity()->value(), 100);
}

TEST_F(OrderTicketTest, TakesNoSeparatorOfThousands)
{
    QTest::keyClicks(price(), QStringLiteral("1,0.2"));
    EXPECT_EQ(price()->cleanText().toStdString(), "1.02") << "what does not fit is not typed";
}

TEST_F(OrderTicketTest, LetsTheWheelTurnOnlyTheFieldThatHasTheKeyboard)
{
    turnWheel(quantity());
    EXPECT_EQ(quantity()->value(), 100);
    turnWheel(price());
    EXPECT_DOUBLE_EQ(price()->value(), 10.01);
    quantity()->setFocus();
    turnWheel(price());
    EXPECT_DOUBLE_EQ(price()->value(), 10.01);
    turnWheel(quantity());
    EXPECT_EQ(quantity()->value(), 200);
}

TEST_F(OrderTicketTest, LetsTheWheelGiveNoFieldTheKeyboard)
{
    EXPECT_NE(price()->focusPolicy(), Qt::WheelFocus);
    EXPECT_NE(quantity()->focusPolicy(), Qt::WheelFocus);
}

TEST_F(OrderTicketTest, MovesByTicksAndLots)
{
    QTest::keyClick(price(), Qt::Key_Up);
    QTest::keyClick(quantity(), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 10.01);
    EXPECT_EQ(m_ticket.draft().order().quantity, 200);
}

TEST_F(OrderTicketTest, SendsNothingThatSomethingSpeaksAgainstAndSaysWhat)
{
    QTest::keyClicks(price(), QStringLiteral("12.00"));
    QTest::keyClick(price(), Qt::Key_Return);
    EXPECT_TRUE(m_sent.empty());
    EXPECT_FALSE(sendButton()->isEnabled());
    EXPECT_THAT(child<QLabel>("ticketProblem")->text().toStdString(), ::testing::HasSubstr("11.00"));
    m_ticket.setPrice(11.00);
    EXPECT_TRUE(sendButton()->isEnabled());
    EXPECT_EQ(child<QLabel>("ticketProblem")->text(), QString());
}

TEST_F(OrderTicketTest, KeepsWhatWasTypedUntilTheSecurityChanges)
{
    m_ticket.setPrice(9.50);
    m_ticket.setSecurity(moutai, 10.3);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 9.5);
    m_ticket.setSecurity({QStringLiteral("000001"), Market::Shenzhen, {}}, 12.3);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 12.3);
}

TEST_F(OrderTicketTest, FollowsTheLastPriceUntilTheUserChoosesOne)
{
    QWidget chart;
    chart.show();
    chart.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&chart)); // the keyboard is elsewhere
    m_ticket.setLastPrice(10.1);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 10.1);
    m_ticket.setPrice(9.9);
    m_ticket.setLastPrice(10.2);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 9.9);
}

TEST_F(OrderTicketTest, BeginsWithoutAPriceWhereThereIsNoneToOffer)
{
    m_ticket.setSecurity({QStringLiteral("000001"), Market::Shenzhen, {}}, std::nullopt);
    EXPECT_EQ(price()->value(), 0);
    EXPECT_FALSE(sendButton()->isEnabled());
    EXPECT_THAT(child<QLabel>("ticketProblem")->text().toStdString(), ::testing::HasSubstr("no price yet"));
}

TEST_F(OrderTicketTest, NamesItsAccountAsItIsWritten)
{
    auto *const account = child<QLabel>("ticketAccount");
    EXPECT_FALSE(account->isVisible());
    m_ticket.setAccount(QStringLiteral("<b>account.db</b> (paper)"));
    EXPECT_TRUE(account->isVisible());
    EXPECT_THAT(account->text().toStdString(), ::testing::HasSubstr("<b>account.db</b> (paper)"));
    EXPECT_EQ(account->textFormat(), Qt::PlainText);
}

TEST_F(OrderTicketTest, ShowsMarkupAndControlCharactersOfANameAsText)
{
    m_ticket.setSecurity({QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("<i>A\nB")}, 10);
    auto *const title = child<QLabel>("ticketTitle");
    EXPECT_EQ(title->textFormat(), Qt::PlainText);
    EXPECT_EQ(title->text(), QStringLiteral(u"<i>A\ufffdB  000001"));
}

TEST_F(OrderTicketTest, ChangesNothingWhileTheKeyboardIsInIt)
{
    m_ticket.setLastPrice(10.1);
    EXPECT_DOUBLE_EQ(m_ticket.draft().order().price, 10.0);
}

TEST_F(OrderTicketTest, SellsTheWholeHoldingWithItsOddRest)
{
    m_ticket.setSide(Direction::Sell);
    const auto parts = m_ticket.findChildren<QPushButton *>(QStringLiteral("quantityPart"));
    ASSERT_EQ(parts.size(), 3);
    QTest::mouseClick(parts.at(2), Qt::LeftButton);
    EXPECT_EQ(m_ticket.draft().order().quantity, 350);
    QTest::mouseClick(parts.at(1), Qt::LeftButton);
    EXPECT_EQ(m_ticket.draft().order().quantity, 100);
}

TEST_F(OrderTicketTest, SendsOneOrderWhileEnterIsHeld)
{
    answerAtOnce();
    for (QWidget *const widget : std::initializer_list<QWidget *>{price(), quantity(), sendButton()}) {
        m_sent.clear();
        widget->setFocus();
        QTest::keyPress(widget, Qt::Key_Return);
        repeatKey(widget, Qt::Key_Return);
        repeatKey(widget, Qt::Key_Enter);
        QTest::keyRelease(widget, Qt::Key_Return);
        EXPECT_EQ(m_sent.size(), 1U) << qPrintable(widget->objectName());
    }
}

TEST_F(OrderTicketTest, SendsOneOrderForADoubleClick)
{
    answerAtOnce();
    QTest::mouseClick(sendButton(), Qt::LeftButton);
    QTest::mouseDClick(sendButton(), Qt::LeftButton);
    QTest::mouseRelease(sendButton(), Qt::LeftButton);
    EXPECT_EQ(m_sent.size(), 1U);
}

TEST_F(OrderTicketTest, SendsNothingMoreUntilTheOrderBeforeHasEnded)
{
    QTest::keyClick(price(), Qt::Key_Return);
    QTest::keyClick(price(), Qt::Key_Return);
    m_ticket.setFacts(m_facts);
    QTest::mouseClick(sendButton(), Qt::LeftButton);
    EXPECT_EQ(m_sent.size(), 1U);
    m_ticket.endSending();
    QTest::keyClick(price(), Qt::Key_Return);
    EXPECT_EQ(m_sent.size(), 2U);
}

TEST_F(OrderTicketTest, SendsByMouse)
{
    answerAtOnce();
    QTest::mouseClick(child<QPushButton>("sellSide"), Qt::LeftButton);
    QTest::mouseClick(sendButton(), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>("buySide"), Qt::LeftButton);
    QTest::mouseClick(sendButton(), Qt::LeftButton);
    ASSERT_EQ(m_sent.size(), 2U);
    EXPECT_EQ(m_sent.front().side, Direction::Sell);
    EXPECT_EQ(m_sent.back().side, Direction::Buy);
}

TEST_F(OrderTicketTest, IsLeftByEscape)
{
    QSignalSpy left(&m_ticket, &OrderTicket::left);
    QTest::keyClick(price(), Qt::Key_Escape);
    EXPECT_EQ(left.count(), 1);
}

TEST_F(OrderTicketTest, TellsNoAmountButTheQuantityInItsFieldWhileAmountsAreHidden)
{
    m_ticket.setSide(Direction::Sell);
    quantity()->setValue(5800); // amount 58000.00, 58 lots
    m_ticket.results()->tell(QStringLiteral("1"), QStringLiteral("Sold 5800"), OrderResults::Tone::Good);
    m_ticket.setAmountsHidden(true);
    const std::regex amount("58|350");
    for (const QLabel *const label : m_ticket.findChildren<QLabel *>()) {
        EXPECT_FALSE(std::regex_search(label->text().toStdString(), amount)) << qPrintable(label->text());
    }
    EXPECT_THAT(child<QLabel>("ticketProblem")->text().toStdString(), ::testing::HasSubstr("***"));
    EXPECT_FALSE(std::regex_search(sendButton()->text().toStdString(), amount));
    EXPECT_FALSE(std::regex_search(sendButton()->accessibleDescription().toStdString(), amount));
    EXPECT_EQ(quantity()->value(), 5800);
}

} // namespace
} // namespace Terminal
