// The example of a terminal, started in the natural order: before its bus and its trading module.
#include "tests/support/TestBroker.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QStringList onBus(const TestBroker &broker, const QTemporaryDir &folder)
{
    return {QStringLiteral("--bus"), broker.address(), QStringLiteral("--ledger"),
            folder.filePath(QStringLiteral("account.db"))};
}

} // namespace

TEST(ExampleHost, ShowsPastTradesThoughBusAndModuleComeLater)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    const QTemporaryDir folder;
    const QString settings = QFileInfo(QStringLiteral(EXAMPLE_HOST)).path() + QStringLiteral("/endpoint.ini");
    QFile::remove(settings); // of a run that was cut off
    ASSERT_TRUE(QFile::copy(broker.address() + QStringLiteral("/endpoint.ini"), settings));
    ASSERT_EQ(QProcess::execute(QStringLiteral(TRADEMODULE),
                                onBus(broker, folder) +
                                    QStringList{QStringLiteral("import"),
                                                QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")}),
              0);
    QProcess host;
    host.start(QStringLiteral(EXAMPLE_HOST),
               {QStringLiteral(PLUGIN_FILE), QStringLiteral(TRADECHART_EXAMPLES "/daily/600519.csv")});
    ASSERT_TRUE(waitUntil([&host] { return host.canReadLine(); }));
    ASSERT_EQ(host.readLine(), "no trading module yet\n");

    broker.start();
    QProcess module;
    module.start(QStringLiteral(TRADEMODULE), onBus(broker, folder) + QStringList{QStringLiteral("serve")});

    EXPECT_TRUE(waitUntil([&host] { return host.state() == QProcess::NotRunning; }));
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_GT(host.readAll().count('\n'), 10);
    host.kill();
    host.waitForFinished();
    module.terminate();
    module.waitForFinished();
    QFile::remove(settings);
}
