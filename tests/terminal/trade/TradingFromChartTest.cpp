// Trading from the chart, from the key press to the ledger: the window with its ticket and its panel, the
// real overlay library, a real broker and the trading module on a fresh ledger, on a day of quotes.
#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/ChartTrades.h"
#include "tests/terminal/support/Pixels.h"
#include "tests/terminal/support/TradingWindow.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <cmath>
#include <regex>

namespace Terminal {
namespace {

constexpr int buyWaiting = Korvane::BuyWaiting;
constexpr int buyPartlyDealt = Korvane::BuyPartDeal;
constexpr int buyDealt = Korvane::BuyDealed;

constexpr double closeBefore = 1400.00;
constexpr qint64 plenty = 1000000; ///< shares in a bar

class TradingFromChart : public TradingWindow
{
protected:
    void SetUp() override
    {
        makeData();
        startModule();
        openWindow(QStringLiteral("orders"), {QStringLiteral("600519"), ChartPeriod::Minute},
                   m_folder.path());
        QApplication::setActiveWindow(m_window.get()); // a bare screen has nobody who does
        startOverlays();
        trade()->setShown(true);
        ASSERT_TRUE(waitUntil([this] { return desk()->isAnswering() && desk()->account(); }));
        quote(931, 1405, 1406, 1404, plenty); // the exchange is open
    }

    /// A recorded day as today's.
    void makeData()
    {
        const auto today = QString::number(TradeChart::currentDate());
        QDir(m_folder.path()).mkdir(QStringLiteral("minute"));
        QDir(m_folder.path()).mkdir(QStringLiteral("daily"));
        for (const auto &[from, to] : std::vector<std::pair<QString, QString>>{
                 {QStringLiteral("securities.csv"), QStringLiteral("securities.csv")},
                 {QStringLiteral("daily/600519.csv"), QStringLiteral("daily/600519.csv")},
                 {QStringLiteral("minute/600519_20260327.csv"),
                  QStringLiteral("minute/600519_%1.csv").arg(today)}}) {
            ASSERT_TRUE(QFile::copy(QStringLiteral(TRADECHART_EXAMPLES "/") + from, m_folder.filePath(to)));
        }
    }

    TradeDocks *trade() { return m_window->trade(); }
    QTableView *ordersView()
    {
        return trade()->panel()->findChild<QTableView *>(QStringLiteral("ordersView"));
    }

    /// Tells the exchange of a bar, on the connection that the orders go out on.
    void quote(int time, double open, double high, double low, qint64 volume)
    {
        const auto text = [](double price) { return QString::number(price, 'f', 2); };
        const QJsonObject bar{
            {QStringLiteral("stkcode"), QStringLiteral("600519")},
            {QStringLiteral("market"), QStringLiteral("SH")},
            {QStringLiteral("date"), QString::number(TradeChart::currentDate())},
            {QStringLiteral("time"), QStringLiteral("%1").arg(time, 4, 10, QLatin1Char('0'))},
            {QStringLiteral("open"), text(open)},
            {QStringLiteral("high"), text(high)},
            {QStringLiteral("low"), text(low)},
            {QStringLiteral("close"), text(open)},
            {QStringLiteral("volume"), QString::number(volume)},
            {QStringLiteral("preclose"), text(closeBefore)}};
        desk()->endPoint()->sendMessage("Market", "Quote", QJsonDocument(bar).toJson());
    }

    /// Types into what has the keyboard.
    static void type(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    /// A buy through the ticket, by keyboard alone.
    void buy(const QString &price, const QString &quantity)
    {
        chart()->setFocus();
        press(Qt::Key_F1);
        type(price);
        press(Qt::Key_Tab);
        type(quantity);
        press(Qt::Key_Return);
    }

    /// The panel's text of a column of its newest order; empty without one.
    QString newest(OrderColumn column) { return cell(0, column).data().toString(); }
    QModelIndex cell(int row, OrderColumn column)
    {
        return ordersView()->model()->index(row, static_cast<int>(column));
    }
    bool waitForStatus(const QString &status)
    {
        return waitUntil([&] { return newest(OrderColumn::Status) == status; });
    }

    const DrawnMark *markOfKind(int kind)
    {
        const DrawnMarks *const marks =
            m_window->overlays()->drawnMarks(*findOverlayKind(QStringLiteral("orders")));
        for (const DrawnMark &mark : marks->all()) {
            if (mark.glyph == orderGlyph(kind, EdgeClamp::None)) {
                return &mark;
            }
        }
        return nullptr;
    }
    bool waitForMark(int kind)
    {
        return waitUntil([=] { return markOfKind(kind) != nullptr; });
    }

    void rightClick(const QPoint &place)
    {
        QWidget *const rows = ordersView()->viewport();
        QTest::mouseClick(rows, Qt::RightButton, Qt::NoModifier, place);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, place, rows->mapToGlobal(place));
        QApplication::sendEvent(rows, &asked);
    }

    /// The list that a click opens.
    std::string listAt(const QPointF &place)
    {
        QStringList rows;
        whenOpen<QMenu>([&rows](QMenu *menu) {
            for (const QAction *const action : menu->actions()) {
                rows.append(action->text());
            }
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, place.toPoint());
        return rows.join(QLatin1Char('\n')).toStdString();
    }

    /// Of a ring around the mark in this box.
    int ringPixels(const QRectF &box)
    {
        const QRect around = box.toRect().adjusted(-12, -12, 12, 12);
        return pixelsOf(chart()->canvas()->grab(around).toImage(), chart()->theme().accent);
    }

    /// The ledger's own words, read by another process.
    QString ordersInLedger()
    {
        QProcess orders;
        orders.start(QStringLiteral(TRADEMODULE), {QStringLiteral("--ledger"), ledger(),
                                                   QStringLiteral("orders"), QStringLiteral("--json")});
        orders.waitForFinished();
        return QString::fromUtf8(orders.readAllStandardOutput());
    }

    /// A value of the first row that a command lists.
    QString saidOf(const QString &command, const char *key)
    {
        QProcess process;
        process.start(QStringLiteral(TRADEMODULE),
                      {QStringLiteral("--ledger"), ledger(), command, QStringLiteral("--json")});
        process.waitForFinished();
        const QJsonArray rows = QJsonDocument::fromJson(process.readAllStandardOutput()).array();
        return rows.isEmpty() ? QString() : rows[0].toObject()[QLatin1String(key)].toString();
    }

    /// What stands above the tables of the panel.
    QString panelTexts()
    {
        QStringList texts;
        for (const QLabel *const label : trade()->panel()->findChildren<QLabel *>()) {
            texts.append(label->text());
        }
        return texts.join(QLatin1Char('\n'));
    }

    /// A cell of the first position.
    QString positionsText(PositionColumn column)
    {
        const auto *const view = trade()->panel()->findChild<QTableView *>(QStringLiteral("positionsView"));
        return view->model()->index(0, static_cast<int>(column)).data().toString();
    }

    /// Answers the question that comes with "Cancel the order".
    static void confirmWhenAsked(QString *question = nullptr)
    {
        whenOpen<QMessageBox>([question](QMessageBox *box) {
            if (question != nullptr) {
                *question = box->text() + QLatin1Char('\n') + box->informativeText();
            }
            for (QAbstractButton *const button : box->buttons()) {
                if (button != box->defaultButton()) {
                    QTest::mouseClick(button, Qt::LeftButton);
                    return;
                }
            }
        });
    }
};

TEST_F(TradingFromChart, AnOrderOfTheTicketWaitsIsPartlyDealtAndDealt)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("500"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报"))) << qPrintable(newest(OrderColumn::Status));
    EXPECT_EQ(newest(OrderColumn::Side), QStringLiteral(u"买入"));
    EXPECT_EQ(newest(OrderColumn::Price), QStringLiteral("1402.00"));
    EXPECT_EQ(newest(OrderColumn::Quantity), QStringLiteral("500"));
    EXPECT_TRUE(waitForMark(buyWaiting));

    quote(932, 1403, 1404, 1401, 800); // a quarter of it is ours
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"部成"))) << qPrintable(newest(OrderColumn::Status));
    EXPECT_EQ(newest(OrderColumn::Dealt), QStringLiteral("200"));
    EXPECT_EQ(newest(OrderColumn::Average), QStringLiteral("1402.000"));
    EXPECT_TRUE(waitForMark(buyPartlyDealt));

    quote(933, 1403, 1404, 1401, plenty);
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已成"))) << qPrintable(newest(OrderColumn::Status));
    EXPECT_TRUE(waitForMark(buyDealt));
    ASSERT_TRUE(waitUntil([this] {
        const Position *const held = desk()->account()->find(chart()->data().security);
        return held != nullptr && held->quantity == 500;
    }));
    EXPECT_LT(desk()->account()->cash, 1000000 - 500 * 1402.0);
}

/// An order in parts: what is dealt has cost 280,400 with fees of 72.90, the rest may cost 420,600 with
/// 109.36 more.
TEST_F(TradingFromChart, TheCashAndItsReserveAreTheSameInPanelAndCommands)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("500"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报")));
    quote(932, 1403, 1404, 1401, 800); // a quarter of it is ours
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"部成")));
    ASSERT_TRUE(waitUntil([this] { return panelTexts().contains(QStringLiteral("719,527.10")); }));

    EXPECT_TRUE(panelTexts().contains(QStringLiteral("298,817.74"))) << qPrintable(panelTexts());
    EXPECT_EQ(saidOf(QStringLiteral("account"), "cash"), QStringLiteral("719527.10"));
    EXPECT_EQ(saidOf(QStringLiteral("account"), "available"), QStringLiteral("298817.74"));
    EXPECT_EQ(saidOf(QStringLiteral("positions"), "cost"), QStringLiteral("280472.90"));
    const QString cost = saidOf(QStringLiteral("positions"), "costprice");
    EXPECT_EQ(QString::number(desk()->account()->positions[0].cost, 'f', 3), cost);
    EXPECT_EQ(positionsText(PositionColumn::Cost), cost);

    quote(933, 1403, 1404, 1401, plenty);
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已成")));
    EXPECT_TRUE(waitUntil([this] { return panelTexts().count(QStringLiteral("298,817.74")) == 2; }));
    EXPECT_EQ(saidOf(QStringLiteral("account"), "cash"), QStringLiteral("298817.74"));
}

TEST_F(TradingFromChart, AnOrderIsCancelledAtItsMark)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    whenOpen<QMenu>([](QMenu *menu) {
        confirmWhenAsked();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier,
                      markOfKind(buyWaiting)->box.center().toPoint());
    EXPECT_TRUE(waitForStatus(QStringLiteral(u"已撤"))) << qPrintable(newest(OrderColumn::Status));
    EXPECT_THAT(ordersInLedger().toStdString(), ::testing::HasSubstr("已撤"));
}

TEST_F(TradingFromChart, AnOrderIsCancelledAtItsMarkByKeyboard)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    press(Qt::Key_Escape); // from the ticket to the chart
    press(Qt::Key_N);
    whenOpen<QMenu>([](QMenu *menu) {
        whenOpen<QMessageBox>([](QMessageBox *box) {
            QTest::keyClick(box, Qt::Key_Tab);
            QTest::keyClick(box->focusWidget(), Qt::Key_Space);
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForStatus(QStringLiteral(u"已撤"))) << qPrintable(newest(OrderColumn::Status));
}

TEST_F(TradingFromChart, AnOrderIsCancelledByTheMenuOfItsRow)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报")));
    whenOpen<QMenu>([](QMenu *menu) {
        confirmWhenAsked();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    rightClick(ordersView()->visualRect(cell(0, OrderColumn::Price)).center());
    EXPECT_TRUE(waitForStatus(QStringLiteral(u"已撤"))) << qPrintable(newest(OrderColumn::Status));
}

TEST_F(TradingFromChart, TheMenuOfARowOffersNothingForAnOrderThatIsDone)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报")));
    quote(932, 1403, 1404, 1401, plenty);
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已成")));
    bool offers = true;
    whenOpen<QMenu>([&offers](QMenu *menu) {
        offers = menu->actions().constFirst()->isEnabled();
        menu->close();
    });
    rightClick(ordersView()->visualRect(cell(0, OrderColumn::Price)).center());
    EXPECT_FALSE(offers);
}

TEST_F(TradingFromChart, AHiddenAmountIsToldNeitherByTheListAtTheMarkNorByTheTicket)
{
    m_window->overlays()->setAmountsHidden(true);
    trade()->setAmountsHidden(true);
    buy(QStringLiteral("1402.00"), QStringLiteral("700"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    quote(932, 1403, 1404, 1401, 1200); // 300 of them are ours
    ASSERT_TRUE(waitForMark(buyPartlyDealt));
    const std::string list = listAt(markOfKind(buyPartlyDealt)->box.center());
    EXPECT_THAT(list, ::testing::HasSubstr("1402.0")) << "its price may be read";
    EXPECT_FALSE(std::regex_search(list, std::regex("量:[^*]|额:[^*]|[347]00|420600"))) << list;
    const auto *const result = trade()->ticket()->findChild<QLabel *>(QStringLiteral("ticketResult"));
    EXPECT_THAT(result->text().toStdString(), ::testing::HasSubstr("*** × 1402.00"));
}

TEST_F(TradingFromChart, AnOrderIsCancelledInThePanelByDelete)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报")));
    QString question;
    confirmWhenAsked(&question);
    chart()->setFocus();
    press(Qt::Key_F3);
    press(Qt::Key_Delete);
    EXPECT_THAT(question.toStdString(), ::testing::HasSubstr("600519"));
    EXPECT_THAT(question.toStdString(), ::testing::HasSubstr("100 × 1402.00"));
    EXPECT_TRUE(waitForStatus(QStringLiteral(u"已撤"))) << qPrintable(newest(OrderColumn::Status));
}

TEST_F(TradingFromChart, AnOrderIsPlacedToldAndCancelledByKeyboardAlone)
{
    /// As a screen reader says it.
    const auto told = [this] {
        return m_window->findChild<QLabel *>(QStringLiteral("messageBar"))->accessibleName();
    };
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForStatus(QStringLiteral(u"已报")));
    EXPECT_TRUE(waitUntil([&] { return told().contains(QStringLiteral("100 × 1402.00")); }))
        << qPrintable(told());

    const QString before = told();
    whenOpen<QMessageBox>([](QMessageBox *box) {
        QTest::keyClick(box, Qt::Key_Tab);
        QTest::keyClick(box->focusWidget() != nullptr ? box->focusWidget() : box, Qt::Key_Return);
    });
    press(Qt::Key_F3);
    press(Qt::Key_Delete);
    EXPECT_TRUE(waitForStatus(QStringLiteral(u"已撤"))) << qPrintable(newest(OrderColumn::Status));
    EXPECT_TRUE(waitUntil([&] { return told() != before; }));
}

TEST_F(TradingFromChart, ARefusalIsToldWithoutBlocking)
{
    desk()->place({chart()->data().security, Direction::Sell, 1402, 100});
    const auto *const result = trade()->ticket()->findChild<QLabel *>(QStringLiteral("ticketResult"));
    ASSERT_TRUE(waitUntil([result] { return result->text().contains(QStringLiteral(u"拒绝")); }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(TradingFromChart, ARowRingsItsMarkAndAMarkSelectsItsRow)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    buy(QStringLiteral("1420.00"), QStringLiteral("200"));
    ASSERT_TRUE(waitUntil([this] { return desk()->orders().size() == 2; }));
    const QRectF box = markOfKind(buyWaiting)->box;
    EXPECT_EQ(ringPixels(box), 0);
    QTest::mouseMove(chart()->canvas(), QPoint(400, 30));
    QApplication::processEvents();
    QTest::mouseMove(chart()->canvas(), box.center().toPoint());
    ASSERT_TRUE(waitUntil([this] { return trade()->panel()->selected().size() == 1; }));
    EXPECT_DOUBLE_EQ(trade()->panel()->selected().front().price, 1402);
    EXPECT_TRUE(waitUntil([&] { return ringPixels(box) > 20; }));
}

TEST_F(TradingFromChart, OrdersOfAMergedMarkShareItsRingAndItsSelection)
{
    // Not in one place, but closer than a mark is high.
    const ChartGeometry &geometry = chart()->chartGeometry();
    const double apart = std::floor((geometry.yToPrice(0) - geometry.yToPrice(12)) * 100) / 100;
    for (const double ticket : {1402.0, 1402 + apart}) {
        const size_t before = desk()->orders().size();
        buy(QString::number(ticket, 'f', 2), QStringLiteral("100"));
        ASSERT_TRUE(waitUntil([&] { return desk()->orders().size() > before; }));
    }
    ASSERT_TRUE(waitUntil([this] {
        const DrawnMark *const mark = markOfKind(buyWaiting);
        return mark != nullptr && mark->count == 2;
    }));
    const QRectF box = markOfKind(buyWaiting)->box;
    for (const OrderRecord &order : OrderRecords(desk()->orders())) {
        trade()->panel()->select({});
        EXPECT_TRUE(waitUntil([&] { return ringPixels(box) == 0; }));
        trade()->panel()->select({order});
        EXPECT_TRUE(waitUntil([&] { return ringPixels(box) > 20; })) << qPrintable(order.number);
    }
    // A quote or an answer may move the mark while the pointer is on its way.
    EXPECT_TRUE(waitUntil([this] {
        QTest::mouseMove(chart()->canvas(), QPoint(400, 30));
        QApplication::processEvents();
        QTest::mouseMove(chart()->canvas(), markOfKind(buyWaiting)->box.center().toPoint());
        QApplication::processEvents();
        return trade()->panel()->selected().size() == 2;
    }));
}

TEST_F(TradingFromChart, OverlappingMarksOfNeighbouringMinutesListTheirOwnOrders)
{
    buy(QStringLiteral("1402.00"), QStringLiteral("100"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    quote(932, 1403, 1404, 1401, plenty);
    ASSERT_TRUE(waitForMark(buyDealt));
    buy(QStringLiteral("1402.00"), QStringLiteral("200"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    ASSERT_TRUE(markOfKind(buyWaiting)->box.intersects(markOfKind(buyDealt)->box));
    EXPECT_EQ(markOfKind(buyWaiting)->count, 1);
    EXPECT_THAT(listAt(markOfKind(buyWaiting)->box.center() + QPointF(4, 0)),
                ::testing::AllOf(::testing::HasSubstr("委托数量:200"),
                                 ::testing::Not(::testing::HasSubstr("委托数量:100"))));
    EXPECT_THAT(listAt(markOfKind(buyDealt)->box.center() - QPointF(4, 0)),
                ::testing::HasSubstr("委托数量:100"));
}

TEST_F(TradingFromChart, AClickOnTheEmptyChartFillsInItsPrice)
{
    const double price = 1415.37;
    const QPoint place(900, static_cast<int>(chart()->chartGeometry().priceToY(price)));
    const double pixel =
        std::abs(chart()->chartGeometry().yToPrice(1) - chart()->chartGeometry().yToPrice(0));
    QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_NEAR(trade()->ticket()->draft().order().price, price, pixel);

    const double before = trade()->ticket()->draft().order().price;
    QTest::mousePress(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, place + QPoint(0, 90));
    QTest::mouseRelease(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, place + QPoint(60, 90));
    EXPECT_DOUBLE_EQ(trade()->ticket()->draft().order().price, before) << "a drag is no click";
}

TEST_F(TradingFromChart, ReplacesTheOrderWhoseLineIsDraggedAndMarksItsTrade)
{
    ChartTrades *const trades = m_window->trades();
    trades->start(address());
    buy(QStringLiteral("1403.00"), QStringLiteral("200"));
    ASSERT_TRUE(waitForMark(buyWaiting));
    ASSERT_TRUE(waitUntil([&] { return trades->lines()->orders().size() == 1 && desk()->canReplace(); }));

    const QPoint line(static_cast<int>(geometry().right) - 20, static_cast<int>(geometry().priceToY(1403)));
    const QPoint below = line + QPoint(0, 3 * QApplication::startDragDistance());
    whenOpen<QMessageBox>([](QMessageBox *box) {
        const auto buttons = box->buttons();
        (buttons.front() == box->defaultButton() ? buttons.back() : buttons.front())->click();
    });
    const auto send = [this](QEvent::Type type, const QPoint &place) {
        QMouseEvent event(type, place, chart()->canvas()->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(chart()->canvas(), &event);
    };
    send(QEvent::MouseButtonPress, line);
    send(QEvent::MouseMove, below);
    send(QEvent::MouseButtonRelease, below);

    ASSERT_TRUE(waitUntil([&] { return ordersView()->model()->rowCount() == 2; }));
    ASSERT_TRUE(waitUntil([&] { return trades->lines()->orders().size() == 1; }));
    const OrderRecord replaced = trades->lines()->orders().front();
    EXPECT_LT(replaced.price, 1403);
    EXPECT_EQ(replaced.quantity, 200);
    EXPECT_EQ(cell(1, OrderColumn::Status).data().toString(), QStringLiteral(u"已撤"));

    const double dealt = replaced.price - 5; // the open of its minute is better than the limit
    quote(932, dealt, dealt, dealt, plenty);
    ASSERT_TRUE(waitUntil([&] { return trades->layer()->marks().size() == 1; }));
    EXPECT_NEAR(trades->layer()->marks().front().place.y(),
                geometry().priceToY(std::max(dealt, geometry().lowPrice)), 1);
    EXPECT_TRUE(waitUntil([&] { return trades->lines()->orders().empty(); }));
}

} // namespace
} // namespace Terminal
