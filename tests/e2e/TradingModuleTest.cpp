// The whole road: a ledger, the trading module on it, a real broker, the plug-in, and a host.
#include "tests/e2e/PluginOnBus.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>

namespace {

constexpr char header[] =
    "成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号,委托编号\n";

class TradingModule : public PluginOnBus
{
protected:
    ~TradingModule() override
    {
        m_module.terminate();
        if (!m_module.waitForFinished()) {
            m_module.kill();
            m_module.waitForFinished();
        }
    }

    QStringList onLedger() const
    {
        return {QStringLiteral("--bus"), broker.address(), QStringLiteral("--ledger"),
                m_folder.filePath(QStringLiteral("ledger.db"))};
    }

    void import(const QByteArray &rows)
    {
        QFile statement(m_folder.filePath(QStringLiteral("statement.csv")));
        ASSERT_TRUE(statement.open(QIODevice::WriteOnly | QIODevice::Truncate));
        statement.write(header + rows);
        statement.close();
        QProcess import;
        import.setProcessChannelMode(QProcess::MergedChannels);
        import.start(QStringLiteral(TRADEMODULE),
                     onLedger() + QStringList{QStringLiteral("import"), statement.fileName()});
        ASSERT_TRUE(import.waitForFinished());
        ASSERT_EQ(import.exitCode(), 0) << import.readAll().toStdString();
    }

    void serve()
    {
        m_module.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_module.start(QStringLiteral(TRADEMODULE), onLedger() + QStringList{QStringLiteral("serve")});
        ASSERT_TRUE(m_module.waitForStarted());
    }

    /// Lets the host redraw until the condition holds; the overlay asks again every second.
    bool redrawUntil(Korvane::IChartObject &overlay, const std::function<bool()> &condition)
    {
        return waitUntil([&] {
            calc(overlay, chinaSoft, bars);
            return condition();
        });
    }

    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102), makeDayBar(20240103),
                                                  makeDayBar(20240104)};

private:
    QTemporaryDir m_folder;
    QProcess m_module;
};

TEST_F(TradingModule, PutsTheCostOfTheLedgerOnTheChart)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
           "20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return std::isfinite(paintedCost(*costLine)); }));
    EXPECT_DOUBLE_EQ(paintedCost(*costLine), 31.0);
}

TEST_F(TradingModule, FollowsAnImportIntoTheRunningModule)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return paintedCost(*costLine) == 30.0; }));
    import("20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n");
    EXPECT_TRUE(redrawUntil(*costLine, [&] { return paintedCost(*costLine) == 31.0; }));
}

TEST_F(TradingModule, DrawsNoLineForWhatIsNotHeld)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return std::isfinite(paintedCost(*costLine)); }));
    import("20240104,09:30:15,600536,中国软件,卖出,31.00,200,6200.00,3,13\n");
    EXPECT_TRUE(redrawUntil(*costLine, [&] { return std::isnan(paintedCost(*costLine)); }));
}

TEST_F(TradingModule, MarksTheTradesOfTheLedgerAndListsADay)
{
    import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
           "20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n"
           "20240103,10:30:00,600536,中国软件,卖出,34.50,100,3450.00,3,13\n"
           "20240104,14:56:59,600536,中国软件,卖出,31.00,100,3100.00,4,14\n");
    serve();
    const Overlay costLine = create(0);
    ASSERT_TRUE(redrawUntil(*costLine, [&] { return !axis.updated.empty(); })) << "the module answers";
    // The days are asked for once, so an overlay that was refused before it had joined is made anew.
    Overlay points;
    ASSERT_TRUE(waitUntil([&] {
        points = create(1);
        waitUntil([] { return false; }, 100);
        return calc(*points, chinaSoft, bars);
    }));
    ASSERT_TRUE(waitUntil([&] { return paintedMarks(*points) != "   "; }));
    EXPECT_EQ(paintedMarks(*points), "BTS");
    points->handleMousePress(10.0, 0.0);
    ASSERT_FALSE(axis.popups.empty());
    EXPECT_EQ(axis.popups.back().value(0), QStringLiteral("买入\t10:00:00\t成交价:33.00\t成交量:100"));
    EXPECT_EQ(axis.popups.back().value(1), QStringLiteral("卖出\t10:30:00\t成交价:34.50\t成交量:100"));
}

} // namespace
