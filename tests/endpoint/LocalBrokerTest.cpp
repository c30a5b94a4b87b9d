#include "tests/endpoint/LocalBrokerTest.h"

#include "tests/support/LogCapture.h"

#include <QStandardPaths>

TEST_F(LocalBrokerTest, ServesTheEndpointsOfItsDirectory)
{
    LocalBroker broker;
    RecordingEndPoint receiver;
    RecordingEndPoint sender;
    receiver.subscribe("screen", "TradeNotify");

    broker.start(address());
    ASSERT_TRUE(receiver.join(address()));
    ASSERT_TRUE(sender.join(address()));
    sender.sendMessage("screen", "TradeNotify", "dealt");

    EXPECT_TRUE(receiver.waitForMessages(1));
    EXPECT_TRUE(waitFor(broker, State::Running));
    EXPECT_EQ(broker.problem(), QString());
}

TEST_F(LocalBrokerTest, ServesFromAPathWithBlanks)
{
    QTemporaryDir parent;
    const QString runtime = parent.filePath(QStringLiteral("Application Support"));
    ASSERT_TRUE(QDir().mkpath(runtime));
    ASSERT_EQ(::chmod(QFile::encodeName(runtime).constData(), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
    LocalBroker broker;

    broker.start(address());

    EXPECT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint client;
    EXPECT_TRUE(client.join(address()));
}

TEST_F(LocalBrokerTest, StartsTheBrokerAgainWhenItDies)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    RecordingEndPoint receiver;
    receiver.subscribe("screen", "TradeNotify");
    ASSERT_TRUE(receiver.join(address()));
    const auto first = static_cast<pid_t>(broker.processId());

    const int readyBefore = receiver.readyCount;
    ::kill(first, SIGKILL);

    ASSERT_TRUE(waitUntil([&] { return receiver.readyCount > readyBefore; }));
    ASSERT_TRUE(waitFor(broker, State::Running));
    EXPECT_NE(broker.processId(), first);
    RecordingEndPoint sender;
    ASSERT_TRUE(sender.join(address()));
    sender.sendMessage("screen", "TradeNotify", "dealt");
    EXPECT_TRUE(receiver.waitForMessages(1));
}

TEST_F(LocalBrokerTest, EndsTheBrokerWhenItStops)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const auto process = static_cast<pid_t>(broker.processId());

    broker.stop();

    EXPECT_FALSE(isAlive(process));
    EXPECT_EQ(broker.state(), State::Stopped);
    EXPECT_FALSE(QFileInfo::exists(socketPath()));
}

TEST_F(LocalBrokerTest, EndsABrokerThatHangs)
{
    LocalBroker broker;
    broker.start(address());
    ASSERT_TRUE(waitFor(broker, State::Running));
    const auto process = static_cast<pid_t>(broker.processId());
    ::kill(process, SIGSTOP);

    broker.stop();

    EXPECT_FALSE(isAlive(process));
}

TEST_F(LocalBrokerTest, StartsNothingWhenTheBusIsElsewhere)
{
    writeEndPointIni("[bus]\nurl=mqtts://bus.example:8883\n");
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Elsewhere);
    EXPECT_EQ(broker.processId(), 0);
}

TEST_F(LocalBrokerTest, TellsWhatIsWrongWithTheAddress)
{
    const LogCapture log;
    writeEndPointIni("[bus]\nurl=http://bus.example\n");
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("bus/url"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, TellsWhenThePathIsTooLong)
{
    const LogCapture log;
    QTemporaryDir parent;
    const QString deep = parent.filePath(QString(90, QLatin1Char('d')));
    ASSERT_TRUE(QDir().mkpath(deep));
    ASSERT_EQ(::chmod(QFile::encodeName(deep).constData(), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(deep));
    LocalBroker broker;

    broker.start(address());

    EXPECT_EQ(broker.state(), State::Failed);
    EXPECT_TRUE(broker.problem().contains(QLatin1String("XDG_RUNTIME_DIR"))) << qPrintable(broker.problem());
}

TEST_F(LocalBrokerTest, TellsWhenTheProgramIsMissing)
{
    const LogCapture log;
    LocalBroker broker;
    broker.setProgram(QStringLiteral("/nowhere/mosquitto"));

    broker.start(address());

    ASSERT_TRUE(waitFor(broker, State::Failed));
    EXPECT_TRUE(broker.problem().contains(QLatin1String("/nowhere/mosquitto")))
        << qPrintable(broker.problem());
    EXPECT_TRUE(log.has(broker.problem()));
}

TEST_F(LocalBrokerTest, TellsWhenTheProgramEndsAtOnce)
{
    const LogCapture log;
    LocalBroker broker;
    broker.setProgram(QStandardPaths::findExecutable(QStringLiteral("false")));

    broker.start(address());

    ASSERT_TRUE(waitFor(broker, State::Failed));
    EXPECT_TRUE(broker.problem().contains(QLatin1String("does not start"))) << qPrintable(broker.problem());
}
