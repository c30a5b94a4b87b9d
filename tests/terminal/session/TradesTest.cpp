// The window with the real overlay library, a real broker and the trading module on the sample
// statement, clicked by the user.
#include "tests/terminal/support/TradingWindow.h"

#include <QElapsedTimer>

namespace Terminal {
namespace {

class TradesOnAChart : public TradingWindow
{
protected:
    void SetUp() override
    {
        TradingWindow::SetUp();
        openWindow(QStringLiteral("trades"), {QStringLiteral("600519"), ChartPeriod::Day});
        startOverlays();
    }

    int barOf(std::int32_t date)
    {
        const Bars &bars = chart()->data().bars;
        return static_cast<int>(
            std::find_if(bars.begin(), bars.end(), [date](const Bar &bar) { return bar.date == date; }) -
            bars.begin());
    }

    /// The middle of the mark of a day.
    QPointF markOf(std::int32_t date)
    {
        const int bar = barOf(date);
        const ChartGeometry &geometry = chart()->chartGeometry();
        return {geometry.barToX(bar),
                geometry.priceToY(chart()->data().bars[static_cast<size_t>(bar)].high) - 10};
    }

    /// Shows few bars around a day, so that its mark stands alone, and waits until it is there.
    bool showDay(std::int32_t date)
    {
        chart()->setSpan({barOf(date) - 10.0, barOf(date) + 10.0});
        return waitUntil([this, date] { return m_window->overlays()->isHit(markOf(date)); });
    }

    QStringList rowsAtAClickOn(std::int32_t date) { return rowsAtAClick(markOf(date)); }

    /// The purchases of the shown security that the ledger has.
    int buyCount()
    {
        QProcess list;
        list.start(QStringLiteral(TRADEMODULE),
                   {QStringLiteral("--ledger"), ledger(), QStringLiteral("trades"), QStringLiteral("--code"),
                    chart()->data().security.code});
        list.waitForFinished();
        return list.readAllStandardOutput().count(" buy ");
    }
};

TEST_F(TradesOnAChart, AreListedAtAClickOnTheirDay)
{
    ASSERT_TRUE(showDay(20211203));
    EXPECT_EQ(rowsAtAClickOn(20211203),
              QStringList(QStringLiteral(u"买入\t11:03:16\t成交价:1955.00\t成交量:100")));
    ASSERT_TRUE(showDay(20211201));
    EXPECT_EQ(rowsAtAClickOn(20211201),
              QStringList({QStringLiteral(u"卖出\t09:46:48\t成交价:1953.77\t成交量:200"),
                           QStringLiteral(u"买入\t09:57:17\t成交价:1926.63\t成交量:100")}));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(TradesOnAChart, AreThereAtOnceAfterAnImport)
{
    constexpr std::int32_t day = 20211130;
    ASSERT_TRUE(showDay(20211203));
    ASSERT_FALSE(m_window->overlays()->isHit(markOf(day)));
    QFile statement(m_folder.filePath(QStringLiteral("more.csv")));
    ASSERT_TRUE(statement.open(QIODevice::WriteOnly));
    statement.write(u8"成交日期,成交时间,业务名称,证券代码,证券名称,成交价格,成交数量,成交金额\n"
                    u8"20211130,10:00:00,证券买入,600519,贵州茅台,1935.00,100,193500.00\n");
    statement.close();
    importBesideCharts(statement.fileName());
    EXPECT_TRUE(waitUntil([&] { return m_window->overlays()->isHit(markOf(day)); }));
    EXPECT_EQ(rowsAtAClickOn(20211203).size(), 1) << "and none is listed twice";
}

TEST_F(TradesOnAChart, AreListedWithoutTheirQuantityWhileAmountsAreHidden)
{
    m_window->overlays()->setAmountsHidden(true);
    ASSERT_TRUE(showDay(20211203));
    EXPECT_EQ(rowsAtAClickOn(20211203),
              QStringList(QStringLiteral(u"买入\t11:03:16\t成交价:1955.00\t成交量:***")));
}

TEST_F(TradesOnAChart, AreListedOnceAfterTheChartWasOnAnotherPeriodAndBack)
{
    ASSERT_TRUE(showDay(20211203));
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Week));
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Day));
    ASSERT_TRUE(showDay(20211203));
    EXPECT_EQ(rowsAtAClickOn(20211203).size(), 1);
}

TEST_F(TradesOnAChart, BelongToTheirSecurity)
{
    ASSERT_TRUE(showDay(20211203));
    ASSERT_TRUE(m_window->load(QStringLiteral("000001"), ChartPeriod::Day));
    ASSERT_TRUE(showDay(20250829));
    EXPECT_EQ(rowsAtAClickOn(20250829),
              QStringList(QStringLiteral(u"买入\t13:24:45\t成交价:12.06\t成交量:2700")));
}

/// The combined overlay puts all trades on the first bar.
TEST_F(TradesOnAChart, AreAllListedByTheCombinedOverlayAlsoBesideTheTradePoints)
{
    const OverlayKind &combined = *findOverlayKind(QStringLiteral("combined-trades"));
    const OverlayKind &trades = *findOverlayKind(QStringLiteral("trades"));
    OverlayHost *const host = m_window->overlays();
    ASSERT_TRUE(host->setShown(combined, true));
    chart()->setSpan({-0.5, 20});
    const auto firstMark = [this] { return markOf(chart()->data().bars.front().date); };
    ASSERT_TRUE(waitUntil([&] { return host->isHit(firstMark()); }));
    const QStringList rows = rowsAtAClick(firstMark());
    EXPECT_EQ(rows.size(), buyCount());
    EXPECT_EQ(rows.filter(QRegularExpression(QStringLiteral(u"^买入\t00:00:00\t成交价:"))).size(),
              rows.size());

    // The question of the trade points empties it; it is made anew.
    ASSERT_TRUE(host->setShown(trades, false));
    ASSERT_TRUE(host->setShown(trades, true));
    EXPECT_TRUE(waitUntil([&] { return !host->isHit(firstMark()); }));
    EXPECT_TRUE(waitUntil([&] { return host->isHit(firstMark()); }));
    EXPECT_EQ(rowsAtAClick(firstMark()), rows);
}

/// A combined overlay asks and waits inside its calculation, up to three seconds.
TEST_F(TradesOnAChart, DoNotKeepTheWindowWaitingForAModuleThatIsGone)
{
    OverlayHost *const host = m_window->overlays();
    host->setShown(*findOverlayKind(QStringLiteral("trades")), false);
    ASSERT_TRUE(host->setShown(*findOverlayKind(QStringLiteral("combined-cost")), true));
    // 400 shares for 756,023.08
    const auto onTheLine = [this] {
        return QPointF(300, chart()->chartGeometry().priceToY(756023.08 / 400));
    };
    ASSERT_TRUE(waitUntil([&] { return host->isHit(onTheLine()); }));

    m_module.reset();
    ASSERT_TRUE(waitUntil([this] { return !m_session->module()->isAnswering(); }));
    QElapsedTimer time;
    time.start();
    for (int turn = 0; turn < 20 && time.elapsed() < 2000; ++turn) {
        host->showHeard(QStringLiteral("600519"));
        QApplication::processEvents();
    }
    EXPECT_LT(time.elapsed(), 2000);
    EXPECT_TRUE(host->isHit(onTheLine())) << "what is known stays";
}

} // namespace
} // namespace Terminal
