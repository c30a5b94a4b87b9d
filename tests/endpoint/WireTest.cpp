// The other side of these tests is a client that knows nothing of ours: the command-line tools that
// come with the broker.

#include "tests/endpoint/BusTest.h"

#include <QProcess>
#include <QStandardPaths>

#include <chrono>

using namespace std::chrono_literals;

namespace {

class Wire : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *program : {"mosquitto_pub", "mosquitto_sub", "mosquitto_rr"}) {
            if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) {
                GTEST_SKIP() << program << " is not installed (mosquitto-clients)";
            }
        }
        ASSERT_TRUE(endPoint.join(broker.address()));
    }

    QStringList toBroker() const
    {
        return {QStringLiteral("--unix"), broker.socketPath(), QStringLiteral("-V"), QStringLiteral("5")};
    }

    void start(QProcess &process, const QString &program, const QStringList &arguments) const
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, toBroker() + arguments);
        ASSERT_TRUE(process.waitForStarted());
    }

    /// Publishes until the tool, which does not tell when it listens, has printed a line.
    QByteArray lineAfterSending(QProcess &tool, const QByteArray &channel, const QByteArray &topic,
                                const QByteArray &payload)
    {
        const bool printed = waitUntil([&] {
            endPoint.sendMessage(channel, topic, payload);
            return tool.canReadLine();
        });
        return printed ? tool.readLine().trimmed() : QByteArray();
    }

    TestBroker broker;
    RecordingEndPoint endPoint;
};

} // namespace

TEST_F(Wire, CarriesThePayloadAsItIsUnderChannelAndTopic)
{
    QProcess tool;
    start(tool, QStringLiteral("mosquitto_sub"),
          {QStringLiteral("-t"), QStringLiteral("#"), QStringLiteral("-C"), QStringLiteral("1"),
           QStringLiteral("-F"), QStringLiteral("%t %q %r %p")});

    EXPECT_EQ(lineAfterSending(tool, "Global", "TradeNotify", "{\"stkcode\":\"600000\"}"),
              "Global/TradeNotify 0 0 {\"stkcode\":\"600000\"}");
}

TEST_F(Wire, EncodesNames)
{
    QProcess tool;
    start(tool, QStringLiteral("mosquitto_sub"),
          {QStringLiteral("-t"), QStringLiteral("+/+"), QStringLiteral("-C"), QStringLiteral("1"),
           QStringLiteral("-F"), QStringLiteral("%t")});

    EXPECT_EQ(lineAfterSending(tool, "屏 1/#", "+$", "p"), "%E5%B1%8F%201%2F%23/%2B%24");
}

TEST_F(Wire, TakesMessagesOfOtherClients)
{
    ASSERT_TRUE(endPoint.listen("屏 1", "TradeQuery"));
    QProcess tool;

    start(tool, QStringLiteral("mosquitto_pub"),
          {QStringLiteral("-t"), QStringLiteral("%E5%B1%8F%201/TradeQuery"), QStringLiteral("-m"),
           QStringLiteral("{}")});

    ASSERT_TRUE(endPoint.waitForMessages(1));
    EXPECT_EQ(endPoint.messages[0].topic, "TradeQuery");
    EXPECT_EQ(endPoint.messages[0].payload, "{}");
    EXPECT_EQ(endPoint.messages[0].replyChannel, "屏 1");
}

TEST_F(Wire, AnswersTheQuestionsOfOtherClientsWhereTheyWantThem)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");
    QProcess tool;

    start(tool, QStringLiteral("mosquitto_rr"),
          {QStringLiteral("-t"), QStringLiteral("Global/TradeQuery"), QStringLiteral("-e"),
           QStringLiteral("their/own/place"), QStringLiteral("-m"), QStringLiteral("question"),
           QStringLiteral("-W"), QStringLiteral("20")});

    ASSERT_TRUE(waitUntil([&] { return tool.canReadLine(); }));
    EXPECT_EQ(tool.readLine().trimmed(), "answer to question");
}

TEST_F(Wire, ReturnsTheCorrelationOfOtherClients)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");
    QProcess listener;
    start(listener, QStringLiteral("mosquitto_sub"),
          {QStringLiteral("-t"), QStringLiteral("their/place"), QStringLiteral("-C"), QStringLiteral("1"),
           QStringLiteral("-F"), QStringLiteral("%D %p")});

    const bool answered = waitUntil([&] {
        QProcess asker;
        start(asker, QStringLiteral("mosquitto_pub"),
              {QStringLiteral("-t"), QStringLiteral("Global/TradeQuery"), QStringLiteral("-m"),
               QStringLiteral("q"), QStringLiteral("-D"), QStringLiteral("publish"),
               QStringLiteral("response-topic"), QStringLiteral("their/place"), QStringLiteral("-D"),
               QStringLiteral("publish"), QStringLiteral("correlation-data"), QStringLiteral("number7")});
        asker.waitForFinished();
        return listener.canReadLine();
    });

    ASSERT_TRUE(answered);
    EXPECT_EQ(listener.readLine().trimmed(), "number7 answer to q");
}

TEST_F(Wire, TakesTheAnswersOfOtherClients)
{
    QProcess shell;
    const QString script = QStringLiteral(
        "stdbuf -oL mosquitto_sub --unix '%1' -V 5 -t Global/TradeQuery -C 1 -d -F 'Question %R %D %p' | "
        "while read -r word where number question; do "
        "case $word in "
        "Subscribed) echo listening;; "
        "Question) mosquitto_pub --unix '%1' -V 5 -t \"$where\" -D publish correlation-data \"$number\" "
        "-m \"shell: $question\";; "
        "esac; done");
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString(script).arg(broker.socketPath())});
    ASSERT_TRUE(waitUntil([&] { return shell.canReadLine(); }));

    endPoint.setRequestTimeout(20s);

    EXPECT_EQ(endPoint.request("TradeQuery", "question"), "shell: question");
    shell.waitForFinished();
}
