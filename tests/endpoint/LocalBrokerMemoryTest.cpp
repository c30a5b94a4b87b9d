// What waits for readers that stand still does not take all the memory of the machine.

#include "tests/endpoint/LocalBrokerTest.h"
#include "tests/support/LeaksOfALibrary.h"

namespace {

/// A reader that takes one message and then stands still.
class StandingReader
{
public:
    StandingReader(const QString &socketPath, RecordingEndPoint &sender)
    {
        m_process.start(QStringLiteral("mosquitto_sub"),
                        {QStringLiteral("--unix"), socketPath, QStringLiteral("-V"), QStringLiteral("5"),
                         QStringLiteral("-t"), QStringLiteral("c/t"), QStringLiteral("-F"),
                         QStringLiteral("%l")});
        EXPECT_TRUE(waitUntil([&] {
            sender.sendMessage("c", "t", "first");
            return m_process.canReadLine();
        }));
        ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
    }
    ~StandingReader()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(StandingReader)

    void goOn() { ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT); }

    int linesSoFar()
    {
        m_lines += m_process.readAll().count('\n');
        return m_lines;
    }

private:
    QProcess m_process;
    int m_lines = 0;
};

/// The most memory that a process has had, in megabytes; 0 where the system does not tell.
int peakMegabytes(qint64 process)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    const int at = text.indexOf("VmHWM:");
    return at < 0 ? 0 : text.mid(at + 6, text.indexOf("kB", at) - at - 6).trimmed().toInt() / 1024;
}

class LocalBrokerMemory : public LocalBrokerTest
{
protected:
    void SetUp() override
    {
        LocalBrokerTest::SetUp();
        broker.start(address());
        ASSERT_TRUE(sender.join(address()));
    }

    void send(int count, const QByteArray &payload)
    {
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(waitUntil([&] { return sender.sendMessage("c", "t", payload); }));
        }
    }

    LocalBroker broker;
    RecordingEndPoint sender;
};

} // namespace

TEST_F(LocalBrokerMemory, KeepsAHundredThousandMessagesForAReaderThatStandsStill)
{
    constexpr int kept = 100000;
    StandingReader reader(socketPath(), sender);
    const int before = reader.linesSoFar();
    send(kept + 50000, QByteArray(200, 'x'));
    RecordingEndPoint witness; // what it sends is handled when all before it is
    ASSERT_TRUE(witness.join(address()));
    ASSERT_TRUE(witness.listen("End", "End"));
    ASSERT_TRUE(sender.sendMessage("End", "End", "End"));
    ASSERT_TRUE(witness.waitForMessages(1));

    reader.goOn();

    EXPECT_TRUE(waitUntil([&] { return reader.linesSoFar() - before >= kept; }));
    EXPECT_LT(reader.linesSoFar() - before, kept + 10000);
    if (const int peak = peakMegabytes(broker.processId())) {
        EXPECT_LT(peak, 150);
    }
}

TEST_F(LocalBrokerMemory, HasALimitForLargeMessagesAndGoesOnBeyondIt)
{
    const StandingReader reader(socketPath(), sender);
    const int readyBefore = sender.readyCount;
    const QByteArray large(32 << 20, 'x');
    ASSERT_TRUE(waitUntil(
        [&] {
            const LeaksOfALibrary leaks; // a message that it has half sent when the connection ends
            sender.sendMessage("c", "t", large);
            return sender.readyCount > readyBefore; // thrown out, and joined again
        },
        std::chrono::minutes(1)));

    if (const int peak = peakMegabytes(broker.processId())) {
        EXPECT_LT(peak, 1200);
    }
    RecordingEndPoint receiver;
    ASSERT_TRUE(receiver.join(address()));
    ASSERT_TRUE(receiver.listen("d", "t"));
    EXPECT_TRUE(waitUntil([&] {
        sender.sendMessage("d", "t", "p"); // the last large one may have ended the connection once more
        return !receiver.messages.isEmpty();
    }));
}
