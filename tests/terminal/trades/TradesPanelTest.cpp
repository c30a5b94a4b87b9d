#include "terminal/trades/TradesPanel.h"

#include "tests/terminal/trades/SomeTrades.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QTableView>
#include <QTest>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TradesPanelTest : public ::testing::Test
{
protected:
    TradesPanelTest()
    {
        QObject::connect(&m_panel, &TradesPanel::placeAsked, &m_panel,
                         [this](size_t trade) { m_asked.push_back(trade); });
        m_panel.setTrades(m_security, m_trades);
    }

    QTableView *view() { return m_panel.findChild<QTableView *>(QStringLiteral("tradesView")); }
    QString cell(int row, TradeColumn column)
    {
        return view()->model()->index(row, static_cast<int>(column)).data().toString();
    }
    std::string caption()
    {
        return m_panel.findChild<QLabel *>(QStringLiteral("panelCaption"))->text().toStdString();
    }

    const Security m_security{QStringLiteral("600519"), Market::Shanghai, QStringLiteral("MT")};
    const Trades m_trades{tradeOn(20240102, 931, 10), tradeOn(20240103, 1000, 12),
                          tradeOn(20240104, 1000, 13, Direction::Sell, QStringLiteral("7"))};
    TradesPanel m_panel;
    std::vector<size_t> m_asked;
};

TEST_F(TradesPanelTest, ListsTheNewestFirst)
{
    EXPECT_EQ(cell(0, TradeColumn::Day), QStringLiteral("2024-01-04"));
    EXPECT_EQ(cell(0, TradeColumn::Order), QStringLiteral("7"));
    EXPECT_EQ(cell(2, TradeColumn::Price), QStringLiteral("10.00"));
    EXPECT_EQ(cell(1, TradeColumn::Amount), QStringLiteral("1,200.00"));
}

TEST_F(TradesPanelTest, SumsAllOfThemAndThenWhatIsSelected)
{
    EXPECT_THAT(caption(), HasSubstr("bought 200 at 11.000 on average: 2,200.00"));
    EXPECT_THAT(caption(), HasSubstr("sold 100 at 13.000 on average: 1,300.00"));

    m_panel.select({0});

    EXPECT_THAT(caption(), HasSubstr("Selected: 1"));
    EXPECT_THAT(caption(), HasSubstr("bought 100 at 10.000"));
}

TEST_F(TradesPanelTest, DoesNotSayThatThereAreNoneWhileNobodyAnswers)
{
    m_panel.setTrades(m_security, {});
    m_panel.setTold(false);
    EXPECT_THAT(caption(), HasSubstr("no answer from the trading module"));
    m_panel.setTold(true);
    EXPECT_THAT(caption(), HasSubstr("Trades of MT: 0"));
}

TEST_F(TradesPanelTest, SelectsTheRowsOfTrades)
{
    m_panel.select({0, 2});
    EXPECT_THAT(m_panel.selected(), ::testing::UnorderedElementsAre(0U, 2U));
    EXPECT_EQ(view()->currentIndex().row(), 0) << "the newest is brought into view";
}

TEST_F(TradesPanelTest, KeepsTheSelectionWhileTradesAreAdded)
{
    m_panel.select({1});
    Trades more = m_trades;
    more.push_back(tradeOn(20240105, 1000, 14));
    m_panel.setTrades(m_security, more);
    EXPECT_THAT(m_panel.selected(), ElementsAre(1U));
}

TEST_F(TradesPanelTest, SelectsNothingOfAnotherSecurity)
{
    m_panel.select({1});
    m_panel.setTrades({QStringLiteral("000001"), Market::Shenzhen, {}}, m_trades);
    EXPECT_THAT(m_panel.selected(), IsEmpty());
}

TEST_F(TradesPanelTest, AsksForThePlaceOfARowByAClickAndByEnter)
{
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view()->visualRect(view()->model()->index(1, 0)).center());
    QTest::keyClick(view(), Qt::Key_Down);
    QTest::keyClick(view(), Qt::Key_Return);
    EXPECT_THAT(m_asked, ElementsAre(1U, 0U));
}

TEST_F(TradesPanelTest, HidesAmounts)
{
    m_panel.setAmountsHidden(true);
    EXPECT_EQ(cell(0, TradeColumn::Quantity), QStringLiteral("***"));
    EXPECT_EQ(cell(0, TradeColumn::Price), QStringLiteral("13.00"));
    EXPECT_THAT(caption(), ::testing::Not(HasSubstr("2,200")));
}

TEST_F(TradesPanelTest, SaysWhyTradesAreNotTold)
{
    m_panel.setRefusal(QStringLiteral("the ledger failed"));
    EXPECT_THAT(caption(), HasSubstr("refused: the ledger failed"));
}

} // namespace
} // namespace Terminal
