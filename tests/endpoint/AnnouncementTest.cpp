// A word that the broker keeps for who comes later.
#include "endpoint/Announcement.h"

#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QProcess>
#include <QTemporaryDir>

using LocalCommunication::Announcement;
using ::testing::ElementsAre;

namespace {

const Announcement::Notice notice{"Global", "Presence", "here", "gone"};

/// The program's announcement, and what it tells.
class AnnouncementTest : public ::testing::Test
{
protected:
    AnnouncementTest()
    {
        QObject::connect(&announcement, &Announcement::kept, &announcement, [this] { ++keptCount; });
        QObject::connect(&announcement, &Announcement::notKept, &announcement,
                         [this](const QString &why) { notKept += why; });
    }

    bool announce(const TestBroker &broker)
    {
        const int before = keptCount;
        announcement.start(broker.address(), notice);
        return waitUntil([&] { return keptCount > before; });
    }

    /// What somebody hears who joins only now; empty when that is nothing.
    static QByteArray wordForALatecomer(const TestBroker &broker)
    {
        RecordingEndPoint latecomer;
        latecomer.subscribe("Global", "Presence");
        EXPECT_TRUE(latecomer.join(broker.address()));
        EXPECT_TRUE(latecomer.listen("End", "End")); // what is kept for the first subscription has come now
        return latecomer.messages.isEmpty() ? QByteArray() : latecomer.messages[0].payload;
    }

    Announcement announcement;
    int keptCount = 0;
    QStringList notKept;
    const LogCapture log;
};

QStringList configurationWith(const QString &line)
{
    return {QStringLiteral("allow_anonymous true"), QStringLiteral("persistence false"), line};
}

} // namespace

TEST_F(AnnouncementTest, IsHeardByWhoJoinsLater)
{
    const TestBroker broker;
    ASSERT_TRUE(announce(broker));
    EXPECT_EQ(wordForALatecomer(broker), "here");
}

TEST_F(AnnouncementTest, IsHeardByWhoListensAlready)
{
    const TestBroker broker;
    RecordingEndPoint listener;
    listener.subscribe("Global", "Presence");
    ASSERT_TRUE(listener.join(broker.address()));
    ASSERT_TRUE(announce(broker));
    ASSERT_TRUE(listener.waitForMessages(1));
    EXPECT_EQ(listener.messages[0].topic, "Presence");
    EXPECT_EQ(listener.messages[0].payload, "here");
    EXPECT_EQ(listener.messages[0].replyChannel, "Global");
}

TEST_F(AnnouncementTest, IsReplacedByANewWord)
{
    const TestBroker broker;
    ASSERT_TRUE(announce(broker));
    announcement.say("here and well");
    ASSERT_TRUE(waitUntil([this] { return keptCount == 2; }));
    EXPECT_EQ(wordForALatecomer(broker), "here and well");
}

TEST_F(AnnouncementTest, EndsWithTheFarewell)
{
    const TestBroker broker;
    ASSERT_TRUE(announce(broker));
    announcement.stop();
    EXPECT_EQ(wordForALatecomer(broker), "gone");
}

TEST_F(AnnouncementTest, TellsOfNoLossWhenItsFarewellWasTaken)
{
    const TestBroker broker;
    ASSERT_TRUE(announce(broker));
    announcement.stop();
    EXPECT_FALSE(log.has(QStringLiteral("lost"))) << qPrintable(log.text());
}

TEST_F(AnnouncementTest, TellsOfTheLossWhenNobodyTakesItsFarewell)
{
    TestBroker broker;
    ASSERT_TRUE(announce(broker));
    broker.freeze();
    announcement.stop();
    EXPECT_TRUE(log.has(QStringLiteral("1 messages were lost with the connection")))
        << qPrintable(log.text());
}

TEST_F(AnnouncementTest, IsFollowedByTheFarewellWhenItsProgramIsKilled)
{
    const TestBroker broker;
    QProcess program;
    program.start(QStringLiteral(ANNOUNCEMENT_HOST), {broker.address()});
    ASSERT_TRUE(waitUntil([&program] { return program.canReadLine(); }));
    RecordingEndPoint listener;
    listener.subscribe("Global", "Presence");
    ASSERT_TRUE(listener.join(broker.address()));
    ASSERT_TRUE(listener.waitForMessages(1));

    program.kill();

    ASSERT_TRUE(listener.waitForMessages(2));
    EXPECT_THAT(listener.payloads(), ElementsAre("here", "gone"));
    EXPECT_EQ(wordForALatecomer(broker), "gone");
    program.waitForFinished();
}

TEST_F(AnnouncementTest, IsSaidAgainToTheNextBroker)
{
    TestBroker broker;
    ASSERT_TRUE(announce(broker));
    broker.kill();
    broker.start();
    ASSERT_TRUE(waitUntil([this] { return keptCount == 2; }));
    EXPECT_EQ(wordForALatecomer(broker), "here");
}

TEST_F(AnnouncementTest, SaysTheNewestWordToTheNextBroker)
{
    TestBroker broker;
    ASSERT_TRUE(announce(broker));
    broker.kill();
    announcement.say("newer");
    broker.start();
    ASSERT_TRUE(waitUntil([this] { return keptCount == 2; }));
    EXPECT_EQ(wordForALatecomer(broker), "newer");
}

TEST_F(AnnouncementTest, IsToldOnceToABrokerThatKeepsNothingAndHeardByThoseWhoAreThere)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    broker.setConfiguration(configurationWith(QStringLiteral("retain_available false")));
    broker.start();
    RecordingEndPoint listener;
    listener.subscribe("Global", "Presence");
    ASSERT_TRUE(listener.join(broker.address()));

    announcement.start(broker.address(), notice);
    ASSERT_TRUE(listener.waitForMessages(1));
    announcement.say("again");
    ASSERT_TRUE(listener.waitForMessages(2));
    announcement.stop();

    ASSERT_TRUE(listener.waitForMessages(3));
    EXPECT_THAT(listener.payloads(), ElementsAre("here", "again", "gone"));
    EXPECT_EQ(notKept.size(), 1);
    EXPECT_TRUE(log.has(QStringLiteral("does not hear 'Presence'"))) << qPrintable(log.text());
    EXPECT_EQ(keptCount, 0);
}

TEST_F(AnnouncementTest, IsToldWhenTheBrokerDoesNotAllowIt)
{
    QTemporaryDir folder;
    const QString rules = folder.filePath(QStringLiteral("acl"));
    QFile file(rules);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("topic read Global/Presence\npattern readwrite reply.%c/#\n");
    file.close();
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    TestBroker broker(TestBroker::Begin::NotStarted);
    broker.setConfiguration(configurationWith(QStringLiteral("acl_file ") + rules));
    broker.start();

    announcement.start(broker.address(), notice);

    ASSERT_TRUE(waitUntil([this] { return !notKept.isEmpty(); }));
    EXPECT_TRUE(notKept.front().contains(QStringLiteral("authorized"), Qt::CaseInsensitive))
        << qPrintable(notKept.front());
}

TEST_F(AnnouncementTest, SaysNothingOnABusWhoseAddressIsWrong)
{
    announcement.start(QStringLiteral("/nowhere/at/all"), notice);
    announcement.say("here");
    announcement.stop();
    EXPECT_TRUE(log.has(QStringLiteral("nothing is announced"))) << qPrintable(log.text());
}
