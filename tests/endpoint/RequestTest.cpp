#include "tests/endpoint/BusTest.h"
#include "tests/support/LogCapture.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <set>
#include <sys/socket.h>
#include <thread>

using LocalCommunication::EndPoint;
using ::testing::IsEmpty;

using namespace std::chrono_literals;

namespace {

constexpr auto longTimeout = 20s;

/// The longest time that passed between two turns of this thread's event loop.
class TurnOfTheLoop
{
public:
    TurnOfTheLoop()
    {
        QObject::connect(&m_heartbeat, &QTimer::timeout, &m_heartbeat, [this] {
            m_longest = std::max(m_longest, std::chrono::milliseconds(m_clock.restart()));
        });
        m_clock.start();
        m_heartbeat.start(0);
    }

    std::chrono::milliseconds longest() const { return m_longest; }

private:
    QTimer m_heartbeat;
    QElapsedTimer m_clock;
    std::chrono::milliseconds m_longest{};
};

/// The sockets of this process that lead somewhere.
std::set<int> connections()
{
    std::set<int> found;
    for (int descriptor = 3; descriptor < 1024; ++descriptor) {
        sockaddr_storage peer{};
        socklen_t size = sizeof(peer);
        if (::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &size) == 0) {
            found.insert(descriptor);
        }
    }
    return found;
}

class Request : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(asker.join(broker.address()));
        asker.setRequestTimeout(longTimeout);
    }

    static QList<QByteArray> numbers(int count)
    {
        QList<QByteArray> all;
        for (int i = 0; i < count; ++i) {
            all.append(QByteArray::number(i));
        }
        return all;
    }

    TestBroker broker;
    RecordingEndPoint asker;
};

} // namespace

TEST_F(Request, BringsTheAnswer)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");

    EXPECT_EQ(asker.request("TradeQuery", "one"), "answer to one");
    EXPECT_EQ(asker.request("TradeQuery", "two"), "answer to two");
}

TEST_F(Request, IsPossibleRightAfterConnecting)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");
    RecordingEndPoint fresh;
    fresh.setRequestTimeout(longTimeout);
    fresh.connect(broker.address());

    EXPECT_EQ(fresh.request("TradeQuery", "at once"), "answer to at once");

    EXPECT_TRUE(waitUntil([&] { return fresh.readyCount == 1; }));
}

TEST_F(Request, BringsTenMegabytes)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");
    const QByteArray question(10 * 1024 * 1024, 'q');

    EXPECT_TRUE(asker.request("TradeQuery", question) == "answer to " + question);
}

TEST_F(Request, EndsAtItsTimeoutWhenNobodyAnswers)
{
    asker.setRequestTimeout(200ms);
    QElapsedTimer clock;
    clock.start();

    EXPECT_EQ(asker.request("TradeQuery", "anybody?"), QByteArray());

    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_LT(clock.elapsed(), 3000);
}

TEST_F(Request, WaitsForNobodyAgainAndAgain)
{
    const BackgroundResponder listener(broker.address(), "AnotherTopic");
    asker.setRequestTimeout(200ms);
    EXPECT_EQ(asker.request("TradeQuery", "anybody?"), QByteArray());
    asker.setRequestTimeout(longTimeout);
    QElapsedTimer clock;
    clock.start();

    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(asker.request("TradeQuery", "still nobody?"), QByteArray());
    }

    EXPECT_LT(clock.elapsed(), 1000);
}

TEST_F(Request, WaitsAgainForASlowModuleThatDidNotAnswerOnce)
{
    std::atomic_bool hangs{true};
    const BusThread module(broker.address(), "TradeQuery",
                           [&hangs](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                               if (!hangs) {
                                   std::this_thread::sleep_for(100ms);
                                   own.sendMessage(replyChannel, "TradeQuery", "slow");
                               }
                           });
    asker.setRequestTimeout(50ms);
    EXPECT_EQ(asker.request("TradeQuery", "first"), QByteArray());
    hangs = false;
    asker.setRequestTimeout(longTimeout);

    EXPECT_EQ(asker.request("TradeQuery", "second"), QByteArray()) << "nobody has spoken yet";
    EXPECT_TRUE(waitUntil([this] { // its answers are heard meanwhile
        return asker.request("TradeQuery", "next") == "slow";
    }));
}

TEST_F(Request, WaitsOnceForAModuleThatIsBehind)
{
    const BusThread module(broker.address(), "TradeQuery",
                           [](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                               std::this_thread::sleep_for(60ms);
                               own.sendMessage(replyChannel, "TradeQuery", "late");
                           });
    asker.setRequestTimeout(50ms);
    int longWaits = 0;
    for (int i = 0; i < 20; ++i) {
        QElapsedTimer clock;
        clock.start();
        asker.request("TradeQuery", "x");
        longWaits += clock.elapsed() >= 50 ? 1 : 0;
    }

    EXPECT_LE(longWaits, 3) << "one, and what a crowded machine makes long";
}

TEST_F(Request, WaitsOnceForAllEndPointsOfAThread)
{
    asker.setRequestTimeout(200ms);
    ASSERT_EQ(asker.request("TradeQuery", "anybody?"), QByteArray());
    RecordingEndPoint next;
    ASSERT_TRUE(next.join(broker.address()));
    next.setRequestTimeout(longTimeout);
    QElapsedTimer clock;
    clock.start();

    EXPECT_EQ(next.request("TradeQuery", "still nobody?"), QByteArray());

    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), longTimeout / 2);
}

TEST_F(Request, WaitsForAServiceThatAnswersWhileAnotherOneHangs)
{
    const BusThread service(broker.address(), "Market",
                            [](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                                std::this_thread::sleep_for(20ms);
                                own.sendMessage(replyChannel, "Market", "open");
                            });
    asker.setRequestTimeout(200ms);
    ASSERT_EQ(asker.request("TradeQuery", "anybody?"), QByteArray());
    asker.setRequestTimeout(longTimeout);

    EXPECT_EQ(asker.request("Market", "open?"), "open");

    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(asker.request("TradeQuery", "still nobody?"), QByteArray());
    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), longTimeout / 2);
}

TEST_F(Request, WaitsForNobodyAgainWhenAnotherEndPointLostItsConnection)
{
    asker.setRequestTimeout(200ms);
    const auto others = connections();
    RecordingEndPoint dropped;
    ASSERT_TRUE(dropped.join(broker.address()));
    dropped.setRequestTimeout(200ms);
    ASSERT_EQ(dropped.request("TradeQuery", "anybody?"), QByteArray());
    const int before = dropped.readyCount;
    for (const int descriptor : connections()) {
        if (others.count(descriptor) == 0) {
            ::shutdown(descriptor, SHUT_RDWR);
        }
    }
    ASSERT_TRUE(waitUntil([&] { return dropped.readyCount > before; }));
    asker.setRequestTimeout(longTimeout);
    QElapsedTimer clock;
    clock.start();

    EXPECT_EQ(asker.request("TradeQuery", "still nobody?"), QByteArray());

    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), longTimeout / 2);
}

TEST_F(Request, LeavesNoTraceOfAQuestionThatDidNotGoOut)
{
    const LogCapture log;
    const BusThread module(broker.address(), "TradeQuery",
                           [](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                               std::this_thread::sleep_for(150ms);
                               own.sendMessage(replyChannel, "TradeQuery", "slow");
                               own.sendMessage("c", "t", "answered");
                           });
    ASSERT_TRUE(asker.listen("c", "t"));
    asker.setRequestTimeout(50ms);
    ASSERT_EQ(asker.request("TradeQuery", "first"), QByteArray());
    const QByteArray tooLarge(257 << 20, Qt::Uninitialized);
    ASSERT_EQ(asker.request("TradeQuery", tooLarge), QByteArray());
    asker.setRequestTimeout(longTimeout);
    ASSERT_TRUE(asker.waitForMessages(1)); // the first one was answered, and no other is owed

    EXPECT_EQ(asker.request("TradeQuery", "second"), "slow");
}

TEST_F(Request, StandsOnceInAFloodForAModuleThatIsBehind)
{
    const BusThread module(broker.address(), "TradeQuery",
                           [](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                               std::this_thread::sleep_for(250ms);
                               own.sendMessage(replyChannel, "TradeQuery", "in time");
                           });
    ASSERT_TRUE(asker.listen("Global", "TradeNotify"));
    asker.setRequestTimeout(3s);
    int answered = 0;
    QObject::connect(&asker, &EndPoint::messageReceived, &asker, [this, &answered] {
        answered += asker.request("TradeQuery", "after a notification").isEmpty() ? 0 : 1;
    });
    RecordingEndPoint market;
    ASSERT_TRUE(market.join(broker.address()));
    for (int i = 0; i < 100; ++i) {
        market.sendMessage("Global", "TradeNotify", "{}");
    }

    ASSERT_TRUE(asker.waitForMessages(100));
    EXPECT_GE(answered, 1);
    EXPECT_LE(answered, 2) << "the second one where the first one comes before the others";
}

TEST_F(Request, WaitsAgainOnTheBusThatComesNext)
{
    asker.setRequestTimeout(100ms);
    EXPECT_EQ(asker.request("TradeQuery", "anybody?"), QByteArray());
    const int before = asker.readyCount;
    broker.kill();
    broker.start();
    ASSERT_TRUE(waitUntil([&] { return asker.readyCount > before; }));
    QElapsedTimer clock;
    clock.start();

    asker.request("TradeQuery", "anybody now?");

    EXPECT_GE(clock.elapsed(), 100);
}

TEST_F(Request, KeepsAWindowMovingWhileTheModuleHangs)
{
    std::atomic_bool hangs{true};
    const BusThread module(broker.address(), "TradeQuery",
                           [&hangs](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
                               if (!hangs) {
                                   own.sendMessage(replyChannel, "TradeQuery", "answer");
                               }
                           });
    ASSERT_TRUE(asker.listen("Global", "TradeNotify"));
    asker.setRequestTimeout(200ms);
    ASSERT_EQ(asker.request("TradeQuery", "first"), QByteArray());
    asker.setRequestTimeout(3s);
    QObject::connect(&asker, &EndPoint::messageReceived, &asker,
                     [this] { asker.request("TradeQuery", "after a notification"); });
    RecordingEndPoint market;
    ASSERT_TRUE(market.join(broker.address()));
    const TurnOfTheLoop turns;
    for (int i = 0; i < 50; ++i) {
        market.sendMessage("Global", "TradeNotify", "{}");
    }

    ASSERT_TRUE(asker.waitForMessages(50));
    EXPECT_LT(turns.longest(),
              500ms); // wide, for a busy machine: each question would have taken three seconds

    hangs = false;
    EXPECT_TRUE(waitUntil([this] { return asker.request("TradeQuery", "again?") == "answer"; }));
}

TEST_F(Request, DropsAnAnswerThatComesTooLate)
{
    broker.freeze();
    asker.setRequestTimeout(100ms);
    EXPECT_EQ(asker.request("TradeQuery", "first"), QByteArray());
    broker.thaw();
    const BackgroundResponder module(broker.address(), "TradeQuery");
    asker.setRequestTimeout(longTimeout);

    QByteArray answer;
    EXPECT_TRUE(waitUntil([&] { return !(answer = asker.request("TradeQuery", "second")).isEmpty(); }));
    EXPECT_EQ(answer, "answer to second");
    EXPECT_THAT(asker.messages, IsEmpty());
}

TEST_F(Request, DeliversWhatComesMeanwhileAfterwardsAndInOrder)
{
    const BackgroundResponder module(broker.address(), "TradeQuery", 500, 100);
    ASSERT_TRUE(asker.listen("c", "t"));

    for (int round = 0; round < 5; ++round) {
        const int before = asker.messages.size();
        EXPECT_EQ(asker.request("TradeQuery", "x"), "answer to x");
        EXPECT_EQ(asker.messages.size(), before);
    }

    ASSERT_TRUE(asker.waitForMessages(3000));
    EXPECT_EQ(asker.payloads(), numbers(3000));
}

TEST_F(Request, KeepsTheOrderWhenAskedInsideAReceiver)
{
    const BackgroundResponder module(broker.address(), "TradeQuery", 3, 3);
    ASSERT_TRUE(asker.listen("c", "t"));
    int asked = 0;
    QObject::connect(&asker, &EndPoint::messageReceived, &asker, [&] {
        if (asked < 10) {
            ++asked;
            EXPECT_EQ(asker.request("TradeQuery", "nested"), "answer to nested");
        }
    });

    EXPECT_EQ(asker.request("TradeQuery", "outer"), "answer to outer");

    ASSERT_TRUE(asker.waitForMessages(66));
    EXPECT_EQ(asker.payloads(), numbers(66));
}

TEST_F(Request, RunsNoEventLoop)
{
    const BackgroundResponder module(broker.address(), "TradeQuery");
    bool handled = false;
    QMetaObject::invokeMethod(
        &asker, [&] { handled = true; }, Qt::QueuedConnection);
    QTimer::singleShot(0, &asker, [&] { handled = true; });
    auto *victim = new RecordingEndPoint;
    victim->deleteLater();
    const QPointer<RecordingEndPoint> alive(victim);

    EXPECT_EQ(asker.request("TradeQuery", "x"), "answer to x");

    EXPECT_FALSE(handled);
    EXPECT_FALSE(alive.isNull());
    EXPECT_TRUE(waitUntil([&] { return handled && alive.isNull(); }));
}

TEST_F(Request, LetsItsEndPointBeDestroyedBeforeTheDeliveryThatFollows)
{
    const BackgroundResponder module(broker.address(), "TradeQuery", 10, 0);
    auto overlay = std::make_unique<RecordingEndPoint>();
    ASSERT_TRUE(overlay->join(broker.address()));
    ASSERT_TRUE(overlay->listen("c", "t"));
    ASSERT_EQ(overlay->request("TradeQuery", "x"), "answer to x");

    overlay.reset(); // ten messages were waiting

    EXPECT_EQ(asker.request("TradeQuery", "y"), "answer to y");
}

TEST_F(Request, LetsAReceiverDestroyTheEndPointInTheDeliveryThatFollows)
{
    const BackgroundResponder module(broker.address(), "TradeQuery", 10, 0);
    auto *overlay = new RecordingEndPoint;
    ASSERT_TRUE(overlay->join(broker.address()));
    ASSERT_TRUE(overlay->listen("c", "t"));
    int delivered = 0;
    QObject::connect(overlay, &EndPoint::messageReceived, overlay, [&] {
        ++delivered;
        delete overlay;
    });
    const QPointer<RecordingEndPoint> alive(overlay);

    ASSERT_EQ(overlay->request("TradeQuery", "x"), "answer to x");

    EXPECT_TRUE(waitUntil([&] { return alive.isNull(); }));
    EXPECT_EQ(delivered, 1);
}

TEST_F(Request, LetsAReceiverAskAndThenDestroyTheEndPoint)
{
    const BackgroundResponder module(broker.address(), "TradeQuery", 5, 5);
    auto *overlay = new RecordingEndPoint;
    ASSERT_TRUE(overlay->join(broker.address()));
    ASSERT_TRUE(overlay->listen("c", "t"));
    QByteArray answer;
    QObject::connect(overlay, &EndPoint::messageReceived, overlay, [&] {
        answer = overlay->request("TradeQuery", "last");
        delete overlay;
    });
    const QPointer<RecordingEndPoint> alive(overlay);

    ASSERT_EQ(overlay->request("TradeQuery", "first"), "answer to first");

    EXPECT_TRUE(waitUntil([&] { return alive.isNull(); }));
    EXPECT_EQ(answer, "answer to last");
}

TEST_F(Request, IsAnsweredOnce)
{
    const LogCapture log;
    RecordingEndPoint module;
    module.subscribe("Global", "TradeQuery");
    ASSERT_TRUE(module.join(broker.address()));
    asker.setRequestTimeout(50ms); // an endpoint of the same thread cannot answer in time
    asker.request("TradeQuery", "x");
    ASSERT_TRUE(module.waitForMessages(1));
    const QByteArray replyChannel = module.messages[0].replyChannel;

    EXPECT_TRUE(module.sendMessage(replyChannel, "TradeQuery", "answer"));
    EXPECT_FALSE(module.sendMessage(replyChannel, "TradeQuery", "answer"));

    EXPECT_TRUE(log.has(QStringLiteral("answered already"))) << qPrintable(log.text());
}

TEST_F(Request, IsAnsweredMoreBrieflyWhenTheBusHadNoRoomForTheAnswer)
{
    const LogCapture log;
    RecordingEndPoint module;
    module.subscribe("Global", "TradeQuery");
    ASSERT_TRUE(module.join(broker.address()));
    asker.setRequestTimeout(50ms); // an endpoint of the same thread cannot answer in time
    asker.request("TradeQuery", "x");
    ASSERT_TRUE(module.waitForMessages(1));
    const QByteArray replyChannel = module.messages[0].replyChannel;
    broker.freeze();
    while (module.sendMessage("c", "t", QByteArray(1 << 20, 'x'))) { // until the bus takes no more
    }

    EXPECT_FALSE(module.sendMessage(replyChannel, "TradeQuery", "long"));
    broker.thaw();

    EXPECT_TRUE(waitUntil([&] { return module.sendMessage(replyChannel, "TradeQuery", "short"); }));
    EXPECT_FALSE(module.sendMessage(replyChannel, "TradeQuery", "once more"));
}

TEST_F(Request, GivesEveryQuestionAReplyChannelOfItsOwn)
{
    RecordingEndPoint module;
    module.subscribe("Global", "TradeQuery");
    ASSERT_TRUE(module.join(broker.address()));
    asker.setRequestTimeout(50ms);
    asker.request("TradeQuery", "x");
    asker.request("TradeQuery", "y");

    ASSERT_TRUE(module.waitForMessages(2));
    EXPECT_NE(module.messages[0].replyChannel, module.messages[1].replyChannel);
}

TEST_F(Request, IsEmptyAtOnceWithoutABus)
{
    const LogCapture log;
    broker.kill();
    ASSERT_TRUE(waitUntil([&] { return !asker.isConnected(); }));
    QElapsedTimer clock;
    clock.start();

    EXPECT_EQ(asker.request("TradeQuery", "x"), QByteArray());

    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), longTimeout / 2);
    EXPECT_TRUE(log.has(QStringLiteral("there is no bus")));
}

TEST_F(Request, IsAnsweredBehindMoreThanIsReadAtOnceAndAllOfThatIsDeliveredAfterIt)
{
    constexpr int count = 100; // of a megabyte: more than waits for a receiver before nothing more is read
    asker.setRequestTimeout(longTimeout);
    ASSERT_TRUE(asker.listen("c", "t"));
    const BusThread module(
        broker.address(), "TradeQuery",
        [](EndPoint &own, const QByteArray &, const QByteArray &replyChannel) {
            const auto sendWhenThereIsRoom = [&own](const char *channel, const QByteArray &payload) {
                waitUntil([&] { return own.sendMessage(channel, "t", payload); });
            };
            for (int i = 0; i < count; ++i) {
                sendWhenThereIsRoom("c", QByteArray::number(i) + ' ' + QByteArray(1 << 20, 'x'));
            }
            sendWhenThereIsRoom("nobody", "room for an answer, which is given once");
            own.sendMessage(replyChannel, "TradeQuery", "end");
        });

    EXPECT_EQ(asker.request("TradeQuery", "flood"), "end");

    ASSERT_TRUE(asker.waitForMessages(count));
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(asker.messages[i].payload.startsWith(QByteArray::number(i) + ' ')) << i;
    }
}
