// The window with the real overlay library, a real broker and the trading module on the sample
// statement, clicked by the user.
#include "endpoint/LocalBroker.h"
#include "terminal/chart/ChartView.h"
#include "terminal/services/BusProbe.h"
#include "terminal/services/TradeLink.h"
#include "terminal/services/TradeModuleProcess.h"
#include "terminal/ui/MainWindow.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/WhenOpen.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

namespace Terminal {
namespace {

class TradesOnAChart : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QProcess import;
        import.start(QStringLiteral(TRADEMODULE),
                     {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"),
                      QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")});
        ASSERT_TRUE(import.waitForFinished());
        ASSERT_EQ(import.exitCode(), 0);

        const QString address = QApplication::applicationDirPath();
        m_broker.start(address);
        m_module =
            std::make_unique<TradeModuleProcess>(QStringLiteral(TRADEMODULE), ledger(), address, nullptr);
        m_module->start();
        m_link.start(address);
        ASSERT_TRUE(waitUntil([this] { return m_link.isAnswering(); }));

        TerminalOptions options;
        options.overlays = QStringList(QStringLiteral("trades"));
        options.size = QSize(1280, 720);
        options.refreshSeconds = 1;
        m_window = std::make_unique<MainWindow>(DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value(),
                                                options);
        ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Day, 0));
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        const auto library = OverlayLibrary::open(QStringLiteral(PLUGIN_FILE));
        ASSERT_TRUE(library) << qPrintable(library.error());
        m_window->startOverlays(library.value(), busGate(address));
    }

    void TearDown() override { m_window.reset(); }

    QString ledger() const { return m_folder.filePath(QStringLiteral("account.db")); }
    ChartView *chart() { return m_window->chart(); }

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

    QStringList rowsAtAClickOn(std::int32_t date)
    {
        QStringList rows;
        whenOpen<QMenu>([&rows](QMenu *menu) {
            for (const QAction *const action : menu->actions()) {
                rows.append(action->text());
            }
            QTest::keyClick(menu, Qt::Key_Escape);
        });
        QTest::mouseClick(chart()->canvas(), Qt::LeftButton, Qt::NoModifier, markOf(date).toPoint());
        return rows;
    }

    QTemporaryDir m_folder;
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
    TradeLink m_link{nullptr};
    std::unique_ptr<MainWindow> m_window;
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

TEST_F(TradesOnAChart, AreListedOnceAfterTheChartWasOnAnotherPeriodAndBack)
{
    ASSERT_TRUE(showDay(20211203));
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Week, 0));
    ASSERT_TRUE(m_window->load(QStringLiteral("600519"), ChartPeriod::Day, 0));
    ASSERT_TRUE(showDay(20211203));
    EXPECT_EQ(rowsAtAClickOn(20211203).size(), 1);
}

TEST_F(TradesOnAChart, BelongToTheirSecurity)
{
    ASSERT_TRUE(showDay(20211203));
    ASSERT_TRUE(m_window->load(QStringLiteral("000001"), ChartPeriod::Day, 0));
    ASSERT_TRUE(showDay(20250829));
    EXPECT_EQ(rowsAtAClickOn(20250829),
              QStringList(QStringLiteral(u"买入\t13:24:45\t成交价:12.06\t成交量:2700")));
}

} // namespace
} // namespace Terminal
