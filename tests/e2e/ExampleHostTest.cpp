// The example of a terminal, started in the natural order: before its bus and its trading module.
#include "tests/support/TestBroker.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <vector>

namespace {

QStringList onBus(const TestBroker &broker, const QTemporaryDir &folder)
{
    return {QStringLiteral("--bus"), broker.address(), QStringLiteral("--ledger"),
            folder.filePath(QStringLiteral("account.db"))};
}

int run(const QString &program, QStringList arguments, const std::vector<const char *> &more)
{
    for (const char *const word : more) {
        arguments.append(QLatin1String(word));
    }
    return QProcess::execute(program, arguments);
}

} // namespace

/// Beside the checker of terminals.
TEST(ExampleHost, ShowsEveryOverlayThoughBusAndModuleComeLater)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    const QTemporaryDir folder;
    const QString settings = QFileInfo(QStringLiteral(EXAMPLE_HOST)).path() + QStringLiteral("/endpoint.ini");
    QFile::remove(settings); // of a run that was cut off
    ASSERT_TRUE(QFile::copy(broker.address() + QStringLiteral("/endpoint.ini"), settings));
    const QString module = QStringLiteral(TRADEMODULE);
    const QStringList ledger{QStringLiteral("--ledger"), folder.filePath(QStringLiteral("account.db"))};
    ASSERT_EQ(run(module, ledger, {"import", TRADECHART_EXAMPLES "/statement.csv"}), 0);
    ASSERT_EQ(run(module, ledger, {"place", "600519", "buy", "1400", "100"}), 0);
    QProcess host;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false"));
    host.setProcessEnvironment(environment);
    host.setProcessChannelMode(QProcess::MergedChannels);
    host.start(QStringLiteral(EXAMPLE_HOST),
               {QStringLiteral(CHECKER_FILE), QStringLiteral(TRADECHART_EXAMPLES "/daily/600519.csv"),
                QStringLiteral(TRADECHART_EXAMPLES "/minute/600519_20260326.csv"),
                folder.filePath(QStringLiteral("picture.png"))});
    ASSERT_TRUE(host.waitForStarted());

    broker.start();
    QProcess server;
    server.start(module, onBus(broker, folder) + QStringList{QStringLiteral("serve")});

    EXPECT_TRUE(waitUntil([&host] { return host.state() == QProcess::NotRunning; }));
    EXPECT_EQ(host.exitCode(), 0);
    const QByteArray said = host.readAll();
    EXPECT_GT(said.count("#ff0000"), 10) << "buys";
    EXPECT_GT(said.count("#00ff00"), 0) << "sells";
    EXPECT_TRUE(said.contains("#00aaff")) << "the order";
    EXPECT_TRUE(said.contains("tradechartobject-check: no rule broken; 3 overlays")) << said.constData();
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("picture.png"))));
    host.kill();
    host.waitForFinished();
    server.terminate();
    server.waitForFinished();
    QFile::remove(settings);
}
