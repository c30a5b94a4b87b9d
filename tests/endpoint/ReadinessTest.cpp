// When a terminal may create its overlays.
#include "endpoint/Readiness.h"

#include "endpoint/Announcement.h"
#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <chrono>

using LocalCommunication::Announcement;
using LocalCommunication::Readiness;
using namespace std::chrono_literals;

namespace {

const Announcement::Notice presence{"Global", "TradePresence", R"({"online":true})", R"({"online":false})"};

class ReadinessTest : public ::testing::Test
{
protected:
    ReadinessTest()
    {
        QObject::connect(&readiness, &Readiness::ready, &readiness, [this] { ++readyCount; });
        QObject::connect(&readiness, &Readiness::timeIsUp, &readiness, [this] { ++timeIsUpCount; });
        QObject::connect(&readiness, &Readiness::answered, &readiness, [this](const QByteArray &answer) {
            ++answerCount;
            lastAnswer = answer;
        });
    }

    bool waitForReady()
    {
        return waitUntil([this] { return readyCount > 0; });
    }

    Readiness readiness;
    int readyCount = 0;
    int timeIsUpCount = 0;
    int answerCount = 0;
    QByteArray lastAnswer;
};

/// A trading module that announces nothing and answers on the channel that it is asked to answer on.
class SilentlyComingModule
{
public:
    explicit SilentlyComingModule(const QString &address)
        : m_thread(address, "TradeQuery",
                   [](LocalCommunication::EndPoint &own, const QByteArray &payload, const QByteArray &) {
                       const QByteArray start = "\"screenId\":\"";
                       const int from = payload.indexOf(start) + start.size();
                       own.sendMessage(payload.mid(from, payload.indexOf('"', from) - from), "TradeQuery",
                                       R"({"success":true})");
                   })
    {
    }

private:
    BusThread m_thread;
};

} // namespace

TEST_F(ReadinessTest, ComesWithAModuleThatAnswers)
{
    const TestBroker broker;
    const SilentlyComingModule module(broker.address());
    readiness.start(broker.address());
    ASSERT_TRUE(waitForReady());
    EXPECT_EQ(lastAnswer, R"({"success":true})");
}

TEST_F(ReadinessTest, ComesWithAModuleThatHasAnnouncedItself)
{
    const TestBroker broker;
    Announcement announcement;
    announcement.start(broker.address(), presence);
    readiness.start(broker.address());
    ASSERT_TRUE(waitForReady());
    EXPECT_EQ(answerCount, 0);
}

TEST_F(ReadinessTest, DoesNotComeWithTheFarewellOfAModule)
{
    const TestBroker broker;
    Announcement announcement;
    bool isKept = false;
    QObject::connect(&announcement, &Announcement::kept, &announcement, [&isKept] { isKept = true; });
    announcement.start(broker.address(), presence);
    ASSERT_TRUE(waitUntil([&isKept] { return isKept; }));
    announcement.stop();
    bool isAnnounced = false;
    QObject::connect(&readiness, &Readiness::announced, &readiness, [&isAnnounced] { isAnnounced = true; });

    readiness.start(broker.address(), 100ms);

    ASSERT_TRUE(waitUntil([&] { return isAnnounced && timeIsUpCount == 1; }));
    EXPECT_EQ(readyCount, 0);
}

TEST_F(ReadinessTest, ComesWhenBusAndModuleComeLater)
{
    TestBroker broker(TestBroker::Begin::NotStarted);
    readiness.start(broker.address());
    broker.start();
    const SilentlyComingModule module(broker.address());
    EXPECT_TRUE(waitForReady());
}

TEST_F(ReadinessTest, KeepsNoChartWaitingForEver)
{
    const TestBroker broker;
    readiness.start(broker.address(), 50ms);
    ASSERT_TRUE(waitUntil([this] { return timeIsUpCount == 1; }));
    EXPECT_EQ(readyCount, 0);
}

TEST_F(ReadinessTest, ComesStillAfterTheLimit)
{
    const TestBroker broker;
    readiness.start(broker.address(), 50ms);
    ASSERT_TRUE(waitUntil([this] { return timeIsUpCount == 1; }));
    const SilentlyComingModule module(broker.address());
    EXPECT_TRUE(waitForReady());
}

TEST_F(ReadinessTest, ComesOnce)
{
    const TestBroker broker;
    const SilentlyComingModule module(broker.address());
    readiness.start(broker.address(), 20s);
    ASSERT_TRUE(waitForReady());
    const int before = answerCount;
    readiness.ask();
    ASSERT_TRUE(waitUntil([&] { return answerCount > before; }));
    EXPECT_EQ(readyCount, 1);
    EXPECT_EQ(timeIsUpCount, 0);
}

TEST_F(ReadinessTest, MayBeEndedByWhoeverHearsOfIt)
{
    const TestBroker broker;
    const SilentlyComingModule module(broker.address());
    auto own = std::make_unique<Readiness>();
    QObject::connect(own.get(), &Readiness::answered, own.get(), [&own] { own.reset(); });
    own->start(broker.address());
    EXPECT_TRUE(waitUntil([&own] { return own == nullptr; }));
}

TEST_F(ReadinessTest, TellsWhenTheBusIsJoined)
{
    const TestBroker broker;
    bool isJoined = false;
    QObject::connect(&readiness, &Readiness::joined, &readiness, [&isJoined] { isJoined = true; });
    readiness.start(broker.address());
    EXPECT_TRUE(waitUntil([&isJoined] { return isJoined; }));
    EXPECT_TRUE(readiness.isJoined());
}

TEST_F(ReadinessTest, AsksNobodyWithoutABus)
{
    const TestBroker broker(TestBroker::Begin::NotStarted);
    const LogCapture log;
    readiness.start(broker.address(), 400ms);
    ASSERT_TRUE(waitUntil([this] { return timeIsUpCount == 1; }));
    EXPECT_FALSE(log.has(QStringLiteral("was not sent"))) << qPrintable(log.text());
}
