#include "tests/endpoint/BrokerElsewhere.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QTemporaryDir>

TEST(Tcp, IsJoinedByNumberAndByEveryAddressOfAName)
{
    const LogCapture log;
    QTemporaryDir terminal;
    const int port = freePort();
    TestBroker broker(TestBroker::Begin::NotStarted);
    broker.setConfiguration(
        {QStringLiteral("listener %1 127.0.0.1").arg(port), QStringLiteral("allow_anonymous true")});
    broker.start();

    for (const char *host : {"127.0.0.1", "localhost"}) { // which may be ::1 first
        writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
                  QStringLiteral("[bus]\nurl=mqtt://%1:%2\n").arg(QLatin1String(host)).arg(port).toUtf8());
        RecordingEndPoint endPoint;
        EXPECT_TRUE(endPoint.join(terminal.path())) << host;
    }
}

TEST(Tcp, TellsWhenNobodyTakesConnections)
{
    const LogCapture log;
    QTemporaryDir terminal;
    writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
              QStringLiteral("[bus]\nurl=mqtt://127.0.0.1:%1\n").arg(freePort()).toUtf8());
    RecordingEndPoint endPoint;
    endPoint.connect(terminal.path());

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }, 5000));
    EXPECT_FALSE(endPoint.isConnected());
}
