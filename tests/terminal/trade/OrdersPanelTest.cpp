// How the panel of orders and positions shares its room.
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeStyle.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/Drag.h"
#include "tests/terminal/support/WhenOpen.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace Terminal {
namespace {

constexpr int besideTheTicket = 1027; ///< in a window of 1280
constexpr int nameColumn = static_cast<int>(PositionColumn::Name);

const Trading::TradingDate march27 = Trading::TradingDate::of(2026, 3, 27).value();
const Security software{QStringLiteral("600536"), Market::Shanghai, QStringLiteral(u"中国软件")};

OrderRecord order(qint64 quantity)
{
    OrderRecord order;
    order.security = software;
    order.status = QStringLiteral("8");
    order.number = QStringLiteral("3");
    order.day = Trading::TradingDate::of(2023, 7, 11);
    order.time = Trading::ClockTime::of(10, 10);
    order.price = 50.86;
    order.quantity = quantity;
    order.dealt = quantity;
    order.dealtAmount = 50.86 * static_cast<double>(quantity);
    return order;
}

Account holding(qint64 quantity)
{
    return {186968.67, 186968.67, {{software, quantity, 2500, 50.746}}};
}

class OrdersPanelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const ChartTheme theme = makeTheme(ThemeKind::Dark, RiseColour::Red);
        m_panel.setStyleSheet(tradeStyleSheet(theme));
        m_panel.setTheme(theme);
        m_panel.setPrices([this](const Security &security) {
            const auto price = m_prices.constFind(security.id());
            return price == m_prices.constEnd() ? std::nullopt : std::optional(*price);
        });
        m_prices.insert(software.id(), {50.62, PriceOrigin::Close, march27});
    }

    void show(int width)
    {
        m_panel.resize(width, 200);
        m_panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_panel));
    }

    QTableView *table(const char *name) { return m_panel.findChild<QTableView *>(QLatin1String(name)); }
    QTableView *positions() { return table("positionsView"); }

    /// Titles of the columns that are cut or lie beyond the edge.
    static QStringList cutColumns(const QTableView *table)
    {
        const QHeaderView &header = *table->horizontalHeader();
        const QAbstractItemView &cells = *table;
        QStringList cut;
        for (int column = 0; column < header.count(); ++column) {
            if (header.isSectionHidden(column)) {
                continue;
            }
            const int needed = std::max(header.sectionSizeHint(column), cells.sizeHintForColumn(column));
            const int end = header.sectionViewportPosition(column) + header.sectionSize(column);
            if (header.sectionSize(column) < needed || end > table->viewport()->width()) {
                cut.append(table->model()->headerData(column, Qt::Horizontal).toString());
            }
        }
        return cut;
    }

    static void askForTip(QTableView *table, int column)
    {
        const QPoint place = table->visualRect(table->model()->index(0, column)).center();
        QHelpEvent asked(QEvent::ToolTip, place, table->viewport()->mapToGlobal(place));
        QApplication::sendEvent(table->viewport(), &asked);
    }

    QString positionCell(int row, PositionColumn column)
    {
        return positions()->model()->index(row, static_cast<int>(column)).data().toString();
    }

    /// The captions of both tables.
    std::string captions()
    {
        QStringList texts;
        for (const QLabel *const label : m_panel.findChildren<QLabel *>()) {
            texts.append(label->text());
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }

    QHash<Trading::SecurityId, LastPrice> m_prices;
    OrdersPanel m_panel;
};

TEST_F(OrdersPanelTest, CutsNoColumnInAnOrdinaryWindow)
{
    m_panel.setOrders({order(12000)}, std::nullopt);
    m_panel.setAccount(holding(18500));
    show(besideTheTicket);
    EXPECT_EQ(cutColumns(table("ordersView")), QStringList());
    EXPECT_EQ(cutColumns(positions()), QStringList());
}

TEST_F(OrdersPanelTest, NamesTheWayInWhichCostsAreReckoned)
{
    Account account = holding(18500);
    account.costMethod = QStringLiteral("diluted");
    m_panel.setAccount(account);
    EXPECT_THAT(captions(), ::testing::HasSubstr("available 186,968.67 · cost: diluted"));

    account.costMethod = QStringLiteral("a\nnew one");
    m_panel.setAccount(account);
    EXPECT_THAT(captions(), ::testing::Not(::testing::HasSubstr("\n")));
}

TEST_F(OrdersPanelTest, CutsNoColumnForTheNameOfTheWay)
{
    Account account = holding(18500);
    account.costMethod = QStringLiteral("fifo");
    m_panel.setOrders({order(12000)}, std::nullopt);
    m_panel.setAccount(account);
    show(besideTheTicket);
    EXPECT_EQ(cutColumns(table("ordersView")), QStringList());
    EXPECT_EQ(cutColumns(positions()), QStringList());
}

TEST_F(OrdersPanelTest, MakesRoomForFiguresThatGrow)
{
    show(besideTheTicket);
    m_panel.setOrders({order(100)}, std::nullopt);
    m_panel.setAccount(holding(1234500));
    QApplication::processEvents();
    EXPECT_EQ(cutColumns(table("ordersView")), QStringList());
    EXPECT_EQ(cutColumns(positions()), QStringList());
}

TEST_F(OrdersPanelTest, LeavesTheTablesAsTheUserSharedThem)
{
    m_panel.setOrders({order(100)}, std::nullopt);
    show(besideTheTicket);
    auto *const halves = m_panel.findChild<QSplitter *>();
    const QList<int> before = halves->sizes();
    drag(halves->handle(1), 200);
    const QList<int> chosen = halves->sizes();
    EXPECT_EQ(chosen.first(), before.first() + 200);
    m_panel.setAccount(holding(1234500));
    QApplication::processEvents();
    EXPECT_EQ(halves->sizes(), chosen);
    EXPECT_NE(cutColumns(positions()), QStringList());
}

OrderRecord waitingOrder(const char *number)
{
    OrderRecord waiting = order(100);
    waiting.status = QStringLiteral("2");
    waiting.number = QLatin1String(number);
    return waiting;
}

TEST_F(OrdersPanelTest, CancelsTheOrderThatItsMenuWasOpenedForWhateverComesMeanwhile)
{
    m_panel.setOrders({waitingOrder("2")}, std::nullopt);
    show(besideTheTicket);
    QStringList asked;
    QObject::connect(&m_panel, &OrdersPanel::cancelAsked, &m_panel,
                     [&asked](const OrderRecords &orders) { asked.append(orders.front().number); });
    QTableView *const orders = table("ordersView");
    whenOpen<QMenu>([this](QMenu *menu) {
        m_panel.setOrders({waitingOrder("1"), waitingOrder("2"), waitingOrder("3")}, std::nullopt);
        m_panel.select({waitingOrder("3")});
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    const QPoint row = orders->visualRect(orders->model()->index(0, 0)).center();
    QTest::mouseClick(orders->viewport(), Qt::LeftButton, Qt::NoModifier, row);
    Q_EMIT orders->customContextMenuRequested(row);
    EXPECT_EQ(asked, QStringList(QStringLiteral("2")));
}

TEST_F(OrdersPanelTest, CancelsNoOrderThatIsDoneWhenItsMenuIsAnswered)
{
    m_panel.setOrders({waitingOrder("2")}, std::nullopt);
    show(besideTheTicket);
    QSignalSpy asked(&m_panel, &OrdersPanel::cancelAsked);
    QTableView *const orders = table("ordersView");
    whenOpen<QMenu>([this](QMenu *menu) {
        OrderRecord dealt = waitingOrder("2");
        dealt.status = QStringLiteral("8");
        m_panel.setOrders({dealt}, std::nullopt);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    Q_EMIT orders->customContextMenuRequested(orders->visualRect(orders->model()->index(0, 0)).center());
    EXPECT_EQ(asked.count(), 0);
}

TEST_F(OrdersPanelTest, PricesEveryPositionByItsOwnLastPriceWhicheverChartIsShown)
{
    const Security bank{QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("PA")};
    m_prices.insert(bank.id(), {12.5, PriceOrigin::Quote, march27});
    m_panel.setAccount(Account{0, 0, {{software, 100, 100, 50.0}, {bank, 1000, 1000, 12.0}}});
    for (const Security &shown : {software, bank}) {
        m_panel.setShownSecurity(shown);
        EXPECT_EQ(positionCell(0, PositionColumn::Profit), QStringLiteral("+62.00"));
        EXPECT_EQ(positionCell(1, PositionColumn::Profit), QStringLiteral("+500.00"));
    }
}

TEST_F(OrdersPanelTest, TellsByATipWhereAPriceComesFrom)
{
    m_panel.setAccount(holding(100));
    show(besideTheTicket);
    for (const PositionColumn column : {PositionColumn::Last, PositionColumn::Profit}) {
        askForTip(positions(), static_cast<int>(column));
        EXPECT_EQ(QToolTip::text(), QStringLiteral("Close of 2026-03-27"));
    }
    m_prices.insert(software.id(), {50.62, PriceOrigin::Quote, march27});
    m_panel.showPrices();
    askForTip(positions(), static_cast<int>(PositionColumn::Last));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Quote of 2026-03-27"));
}

TEST_F(OrdersPanelTest, SaysThatAHoldingIsPricedByTheReplay)
{
    m_panel.setAccount(holding(100));
    EXPECT_THAT(captions(), ::testing::Not(::testing::HasSubstr("replayed")));
    m_prices.insert(software.id(), {51, PriceOrigin::Replay, march27});
    m_panel.showPrices();
    EXPECT_THAT(captions(), ::testing::HasSubstr("at the replayed quote"));
}

TEST_F(OrdersPanelTest, SaysWhyTheModuleTellsNeitherOrdersNorTheAccount)
{
    m_panel.setAnswering(true);
    m_panel.setRefusals(QStringLiteral("the ledger is locked"), QStringLiteral("only 5000.00 <b>left</b>"));
    EXPECT_THAT(captions(), ::testing::HasSubstr("the ledger is locked"));
    EXPECT_THAT(captions(), ::testing::HasSubstr("5000.00 <b>left</b>"));
    for (const QLabel *const label : m_panel.findChildren<QLabel *>()) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
    m_panel.setAmountsHidden(true);
    EXPECT_THAT(captions(), ::testing::Not(::testing::HasSubstr("5000")));
    m_panel.setRefusals({}, {});
    EXPECT_THAT(captions(), ::testing::Not(::testing::HasSubstr("refused")));
}

TEST_F(OrdersPanelTest, ShowsAPlaceholderForWhatWouldBreakALine)
{
    Account account = holding(100);
    account.positions.front().security.name = QStringLiteral("A\nB\u202eC");
    m_panel.setAccount(account);
    EXPECT_EQ(positionCell(0, PositionColumn::Name), QStringLiteral(u"A\ufffdB\ufffdC"));
}

TEST_F(OrdersPanelTest, HidesQuantitiesAndMoneyInBothTables)
{
    m_panel.setOrders({order(1300)}, std::nullopt);
    m_panel.setAccount(holding(18500));
    show(besideTheTicket);
    m_panel.setAmountsHidden(true);
    QStringList texts;
    for (const QTableView *const view : {table("ordersView"), positions()}) {
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            texts.append(view->model()->index(0, column).data().toString());
        }
    }
    for (const QLabel *const label : m_panel.findChildren<QLabel *>()) {
        texts.append(label->text());
    }
    const std::string all = texts.join(QLatin1Char('|')).toStdString();
    for (const char *const amount : {"1300", "18500", "2500", "50.746", "186,968.67"}) {
        EXPECT_THAT(all, ::testing::Not(::testing::HasSubstr(amount)));
    }
}

TEST_F(OrdersPanelTest, TellsByATipWhatIsCutAndNothingElse)
{
    Account account = holding(18500);
    account.positions.front().security.name = QStringLiteral(u"沪深三百交易型开放式指数基金").repeated(3);
    m_panel.setAccount(account);
    show(besideTheTicket);
    ASSERT_THAT(cutColumns(positions()), ::testing::Contains(QStringLiteral("Name")));
    askForTip(positions(), nameColumn);
    EXPECT_EQ(QToolTip::text(), account.positions.front().security.name);
    askForTip(positions(), 0);
    EXPECT_TRUE(waitUntil([] { return !QToolTip::isVisible(); }));
}

TEST_F(OrdersPanelTest, ShowsMarkupOfANameInItsTipAsItIsWritten)
{
    Account account = holding(18500);
    const QString name = QStringLiteral("<b>100 shares at 1.00</b><!-- ").repeated(3) + QLatin1Char('x');
    account.positions.front().security.name = name;
    m_panel.setAccount(account);
    show(besideTheTicket);
    askForTip(positions(), nameColumn);
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    EXPECT_EQ(shown.toPlainText(), name);
}

OrderRecord waitingOrderOf(const char *code, const char *number)
{
    OrderRecord waiting = waitingOrder(number);
    waiting.security = {QLatin1String(code), Market::Shanghai, {}};
    return waiting;
}

TEST_F(OrdersPanelTest, ListsTheWorkingOrdersOfAllSecuritiesWhenTheyAreChosen)
{
    m_panel.setOrders({order(100)}, std::nullopt);
    show(besideTheTicket);
    auto *const scope = m_panel.findChild<QComboBox *>(QStringLiteral("orderScope"));
    EXPECT_FALSE(scope->isEnabled()) << "they are not known";
    m_panel.setWorkingOrders(OrderRecords{waitingOrderOf("600519", "1"), waitingOrderOf("600536", "2")});
    EXPECT_TRUE(scope->isEnabled());
    const QTableView *const orders = table("ordersView");
    EXPECT_EQ(orders->model()->rowCount(), 1);

    scope->setCurrentIndex(1);
    EXPECT_EQ(orders->model()->rowCount(), 2);
    EXPECT_FALSE(orders->isColumnHidden(static_cast<int>(OrderColumn::Security)));
    EXPECT_EQ(orders->model()->index(1, static_cast<int>(OrderColumn::Security)).data(),
              QStringLiteral("600519"));

    m_panel.setWorkingOrders(std::nullopt);
    EXPECT_EQ(orders->model()->rowCount(), 1) << "those of the shown security, which are known";
    EXPECT_TRUE(orders->isColumnHidden(static_cast<int>(OrderColumn::Security)));
}

TEST_F(OrdersPanelTest, AsksForTheCancellationOfOneOfTheSelectedAndOfAll)
{
    m_panel.setOrders({waitingOrder("1"), waitingOrder("2"), order(100), waitingOrder("4")}, std::nullopt);
    show(besideTheTicket);
    std::vector<size_t> asked;
    QObject::connect(&m_panel, &OrdersPanel::cancelAsked, &m_panel,
                     [&asked](const OrderRecords &orders) { asked.push_back(orders.size()); });
    auto *const ofSelected = m_panel.findChild<QPushButton *>(QStringLiteral("cancelSelected"));
    auto *const ofAll = m_panel.findChild<QPushButton *>(QStringLiteral("cancelAll"));
    EXPECT_FALSE(ofSelected->isEnabled());
    m_panel.select({order(100)});
    EXPECT_FALSE(ofSelected->isEnabled()) << "it is dealt";
    m_panel.select({waitingOrder("1"), waitingOrder("2"), order(100)});
    ofSelected->click();
    ofAll->click();
    m_panel.select({waitingOrder("4")});
    QTest::keyClick(table("ordersView"), Qt::Key_Delete);
    EXPECT_EQ(asked, (std::vector<size_t>{2, 3, 1}));
}

TEST_F(OrdersPanelTest, LeadsFromAPositionToItsChartItsTradesAndItsClosing)
{
    m_panel.setAccount(holding(18500));
    show(besideTheTicket);
    QSignalSpy charts(&m_panel, &OrdersPanel::chartAsked);
    qint64 closing = 0;
    QObject::connect(&m_panel, &OrdersPanel::closeAsked, &m_panel,
                     [&closing](const Position &position) { closing = position.sellable; });
    positions()->setFocus();
    positions()->setCurrentIndex(positions()->model()->index(0, 0));
    QTest::keyClick(positions(), Qt::Key_Return);
    EXPECT_EQ(charts.count(), 1);
    QSignalSpy trades(&m_panel, &OrdersPanel::tradesAsked);
    QTest::keyClick(positions(), Qt::Key_F5);
    EXPECT_EQ(trades.count(), 1);
    QTest::keyClick(positions(), Qt::Key_Delete);
    EXPECT_EQ(closing, 2500);
}

TEST_F(OrdersPanelTest, ShowsOneTableAtATimeWhereBothAreTooWideAndCutsNothingThere)
{
    constexpr int besideTheTicketOfASmallWindow = 547;
    m_panel.setOrders({order(12000)}, std::nullopt);
    m_panel.setAccount(holding(18500));
    show(besideTheTicketOfASmallWindow);
    auto *const tabs = m_panel.findChild<QTabBar *>();
    EXPECT_TRUE(tabs->isVisible());
    EXPECT_TRUE(table("ordersView")->isVisible());
    EXPECT_FALSE(positions()->isVisible());
    tabs->setCurrentIndex(1);
    QApplication::processEvents();
    EXPECT_FALSE(table("ordersView")->isVisible());
    EXPECT_TRUE(positions()->isVisible());
    EXPECT_EQ(cutColumns(positions()), QStringList());
    m_panel.focusOrders();
    EXPECT_TRUE(table("ordersView")->isVisible());
}

} // namespace
} // namespace Terminal
