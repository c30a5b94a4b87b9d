// The example of a module in another language, held against the guides as any other maker's.
#include "tests/endpoint/BusTest.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

const QString program = QStringLiteral(TRADECHART_TREE "/examples/module/trading_module.py");

TEST(ExampleModule, HasAHundredLinesAtMost)
{
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_LE(file.readAll().count('\n'), 100);
}

#ifdef MODULE_PYTHON
TEST(ExampleModule, PassesWhatOnlyReads)
{
    const TestBroker broker;
    QProcess module;
    module.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    module.start(
        QStringLiteral(MODULE_PYTHON),
        {program, QStringLiteral(TRADECHART_TREE "/examples/module/trades.csv"), broker.socketPath()});
    ASSERT_TRUE(module.waitForStarted());
    RecordingEndPoint listener;
    listener.subscribe("Global", QByteArray("TradePresence"));
    ASSERT_TRUE(listener.join(broker.address()));
    ASSERT_TRUE(listener.waitForMessages(1)) << "it does not announce itself";
    QProcess check;
    check.start(QStringLiteral(TRADEMODULE_CHECK),
                {QStringLiteral("--bus"), broker.address(), QStringLiteral("--lang"), QStringLiteral("en"),
                 QStringLiteral("--from"), QStringLiteral("20240101"), QStringLiteral("--to"),
                 QStringLiteral("20240131")});
    ASSERT_TRUE(check.waitForFinished(60000));
    EXPECT_EQ(check.exitCode(), 0) << check.readAllStandardOutput().toStdString();
    module.kill();
    module.waitForFinished();
}
#else
TEST(ExampleModule, PassesWhatOnlyReads)
{
    GTEST_SKIP() << "no python3 with paho-mqtt was found";
}
#endif

} // namespace

} // namespace TradeModule
