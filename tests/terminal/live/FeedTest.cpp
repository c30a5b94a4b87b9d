// A live day: another program's feed on the bus, the window that grows with it, and the exchange that deals
// by it.
#include "terminal/live/ChartSource.h"
#include "terminal/session/TradingSession.h"
#include "terminal/trades/ChartTrades.h"
#include "tests/terminal/support/ChartPixels.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/TradingWindow.h"

#include <QDir>
#include <QProcess>

namespace Terminal {
namespace {

#ifdef FEED_PYTHON
class FeedOfAnotherProgram : public TradingWindow
{
protected:
    void SetUp() override
    {
        TradingWindow::SetUp();
        openWindow(QStringLiteral("orders"), {QStringLiteral("600519"), ChartPeriod::Minute});
        startOverlays();
    }

    /// Plays a recorded day as the market's, without a pause.
    void feed()
    {
        QProcess feed;
        feed.start(QStringLiteral(FEED_PYTHON),
                   {QStringLiteral(TRADECHART_EXAMPLES "/feeds/minute_feed.py"),
                    QStringLiteral(TRADECHART_EXAMPLES "/minute/600519_20260327.csv"),
                    QStringLiteral("--bus"), address(), QStringLiteral("--speed"), QStringLiteral("0")});
        ASSERT_TRUE(feed.waitForStarted());
        ASSERT_TRUE(waitUntil([&feed] { return feed.state() == QProcess::NotRunning; }));
        ASSERT_EQ(feed.exitCode(), 0) << feed.readAllStandardError().toStdString();
    }

    /// The minutes that are fed.
    static Bars recordedAsToday()
    {
        Bars recorded = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES))
                            .value()
                            .load(QStringLiteral("600519"), ChartPeriod::Minute, onDay(20260327))
                            .value()
                            .bars;
        for (Bar &bar : recorded) {
            bar.date = Trading::TradingDate::today().number();
        }
        return recorded;
    }

    QByteArray listed(const char *command)
    {
        QProcess list;
        list.start(QStringLiteral(TRADEMODULE),
                   {QStringLiteral("--ledger"), ledger(), QLatin1String(command)});
        list.waitForFinished();
        return list.readAllStandardOutput();
    }
};

TEST_F(FeedOfAnotherProgram, MakesTheDayGrowAndDealsAnOrder)
{
    bool isPlaced = false;
    QObject::connect(desk(), &OrderDesk::placed, m_window.get(), [&isPlaced] { isPlaced = true; });
    desk()->place({chart()->data().security, Direction::Buy, 1400, 100});
    ASSERT_TRUE(waitUntil([&isPlaced] { return isPlaced; }));
    const Bars recorded = recordedAsToday();

    feed();

    EXPECT_TRUE(waitUntil([&] { return chart()->data().bars == recorded; }))
        << chart()->data().bars.size() << " bars, " << recorded.size() << " were recorded";
    EXPECT_TRUE(waitUntil([this] { return listed("orders").contains("100"); }))
        << listed("orders").toStdString();
    const QByteArray today = Trading::TradingDate::today().dashedText().toLatin1();
    EXPECT_TRUE(waitUntil([&] { return listed("trades").contains(today); }))
        << listed("trades").toStdString();
    const auto last = m_session->prices()->of(chart()->data().security);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->origin, PriceOrigin::Quote);
    EXPECT_EQ(last->price, recorded.back().close);
}

TEST_F(FeedOfAnotherProgram, DrawsADealAtItsMinuteAndPriceAndTheLineOfTheLastPrice)
{
    m_window->trades()->start(address());
    const double price = std::round(recordedAsToday()[10].low * 100) / 100;
    bool isPlaced = false;
    QObject::connect(desk(), &OrderDesk::placed, m_window.get(), [&isPlaced] { isPlaced = true; });
    desk()->place({chart()->data().security, Direction::Buy, price, 100});
    ASSERT_TRUE(waitUntil([&isPlaced] { return isPlaced; }));

    feed();

    ASSERT_TRUE(waitUntil([this] { return chart()->data().bars == recordedAsToday(); }));
    const auto *const layer = m_window->trades()->layer();
    const auto ofToday = [layer] {
        const Trades &all = layer->trades();
        return std::find_if(all.begin(), all.end(), [](const AccountTrade &trade) {
            return trade.day == Trading::TradingDate::today();
        });
    };
    ASSERT_TRUE(waitUntil([&] { return ofToday() != layer->trades().end(); }));
    const Bars &bars = chart()->data().bars;
    const auto bar = std::find_if(bars.begin(), bars.end(), [&](const Bar &candidate) {
        return candidate.minute == ofToday()->time.endMinute();
    });
    ASSERT_NE(bar, bars.end()) << ofToday()->time.minute();
    EXPECT_LE(bar->low, ofToday()->price);
    EXPECT_GE(bar->high, ofToday()->price);
    const ChartTheme &theme = chart()->theme();
    EXPECT_GT(pixelsOfMark(chart(), static_cast<int>(bar - bars.begin()), ofToday()->price, theme.rise), 25);
    const QColor colour = bars.back().rises() ? theme.rise : theme.fall;
    EXPECT_GT(pixelsOfRow(chart(), bars.back().close, colour), chart()->canvas()->width() / 4);
}

TEST_F(FeedOfAnotherProgram, LeavesThePictureThatTheSameDayHasWhenItIsLoaded)
{
    const auto picture = [this] { return chart()->grab().toImage(); };
    feed();
    const Bars recorded = recordedAsToday();
    ASSERT_TRUE(waitUntil([&] { return chart()->data().bars == recorded; }));
    QApplication::processEvents();
    const QImage grown = picture();
    QDir().mkpath(QStringLiteral(STATE_PICTURES));
    EXPECT_TRUE(m_window->grab().save(QStringLiteral(STATE_PICTURES "/live-day.png")));

    chart()->setData(ChartData(chart()->data()));

    EXPECT_TRUE(waitUntil([&] { return picture() == grown; })) << "bar by bar, and at once";
}
#else
TEST(FeedOfAnotherProgram, MakesTheDayGrowAndDealsAnOrder)
{
    GTEST_SKIP() << "no python3 with paho-mqtt was found";
}

TEST(FeedOfAnotherProgram, DrawsADealAtItsMinuteAndPriceAndTheLineOfTheLastPrice)
{
    GTEST_SKIP() << "no python3 with paho-mqtt was found";
}

TEST(FeedOfAnotherProgram, LeavesThePictureThatTheSameDayHasWhenItIsLoaded)
{
    GTEST_SKIP() << "no python3 with paho-mqtt was found";
}
#endif

} // namespace
} // namespace Terminal
