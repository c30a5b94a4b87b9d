#include "tests/endpoint/BrokerElsewhere.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QTemporaryDir>

using namespace std::chrono_literals;

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

TEST(Tcp, LosesNothingOfASenderThatGoesAndHasNotReadItsOwnMessages)
{
    constexpr int rounds = 40;
    constexpr int count = 50;
    QTemporaryDir terminal;
    const int port = freePort();
    TestBroker broker(TestBroker::Begin::NotStarted);
    broker.setConfiguration(
        {QStringLiteral("listener %1 127.0.0.1").arg(port), QStringLiteral("allow_anonymous true")});
    broker.start();
    writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
              QStringLiteral("[bus]\nurl=mqtt://127.0.0.1:%1\n").arg(port).toUtf8());
    RecordingEndPoint receiver;
    ASSERT_TRUE(receiver.join(terminal.path()));
    ASSERT_TRUE(receiver.listen("d", "t"));
    receiver.setRequestTimeout(20s);                                    // it has no window that must move
    const BackgroundResponder other(terminal.path(), "question", 1, 1); // publishes to c as well
    for (int round = 0; round < rounds; ++round) {
        RecordingEndPoint brief;
        ASSERT_TRUE(brief.join(terminal.path()));
        ASSERT_TRUE(brief.listen("c", "t"));
        ASSERT_EQ(receiver.request("question", "?"), "answer to ?"); // no event loop: it does not read
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(brief.sendMessage("d", "t", QByteArray(2000, 'x')));
        }
    }

    EXPECT_TRUE(receiver.waitForMessages(rounds * count, 5s)) << receiver.messages.size();
}

TEST(Tcp, TellsWhenNobodyTakesConnections)
{
    const LogCapture log;
    QTemporaryDir terminal;
    writeFile(terminal.filePath(QStringLiteral("endpoint.ini")),
              QStringLiteral("[bus]\nurl=mqtt://127.0.0.1:%1\n").arg(freePort()).toUtf8());
    RecordingEndPoint endPoint;
    endPoint.connect(terminal.path());

    EXPECT_TRUE(waitUntil([&] { return log.has(QStringLiteral("trying again")); }, 5s));
    EXPECT_FALSE(endPoint.isConnected());
}
