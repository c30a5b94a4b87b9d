// What a serving program says of itself on a real bus.
#include "trademodule/bus/ModulePresence.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/ProcessIdentity.h"
#include "trademodule/ledger/ServingTable.h"
#include "trading/ModuleVocabulary.h"

#include <QElapsedTimer>
#include <QProcess>

#include <csignal>

namespace TradeModule {

namespace {

using Trading::TradePresence;

class ModulePresenceTest : public ProgramOnABus
{
protected:
    bool listen() { return chart().listen("Global", "TradePresence"); }

    /// The word that was heard last, when it is what `isIt` wants.
    std::optional<TradePresence> heard(const std::function<bool(const TradePresence &)> &isIt)
    {
        std::optional<TradePresence> last;
        waitUntil([&] {
            last = chart().messages.isEmpty() ? std::nullopt
                                              : TradePresence::ofJson(chart().messages.constLast().payload);
            return last && isIt(*last);
        });
        return last && isIt(*last) ? last : std::nullopt;
    }
    std::optional<TradePresence> heardOnline()
    {
        return heard([](const TradePresence &presence) { return presence.isOnline; });
    }
    std::optional<TradePresence> heardOffline()
    {
        return heard([](const TradePresence &presence) { return !presence.isOnline; });
    }

    static TradePresence other(bool isOnline, qint64 fence)
    {
        TradePresence presence;
        presence.instance = QStringLiteral("another");
        presence.isOnline = isOnline;
        presence.fence = fence;
        return presence;
    }
};

} // namespace

TEST_F(ModulePresenceTest, IsToldToWhoListensLater)
{
    serve();
    ASSERT_TRUE(listen());

    const auto presence = heardOnline();

    ASSERT_TRUE(presence);
    const LedgerServer server = ServingTable(ledger().database()).server();
    EXPECT_FALSE(presence->version.isEmpty());
    EXPECT_EQ(presence->protocol, QStringLiteral("1"));
    EXPECT_TRUE(presence->knows(Trading::Capability::CLIENTNO));
    EXPECT_EQ(presence->host, server.process.host);
    EXPECT_EQ(presence->process, module().processId());
    EXPECT_EQ(presence->processStart, server.process.start);
    EXPECT_EQ(presence->since.toString(Qt::ISODate), server.since);
    EXPECT_EQ(presence->fence, server.fence);
    EXPECT_FALSE(presence->isReadOnly);
    EXPECT_TRUE(location().endsWith(presence->ledger.right(10)));
}

TEST_F(ModulePresenceTest, EndsWithTheModule)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);

    module().terminate();

    const auto farewell = heardOffline();
    ASSERT_TRUE(farewell);
    EXPECT_EQ(farewell->toJson(), presence->ended().toJson());
    module().waitForFinished();
}

TEST_F(ModulePresenceTest, EndsWithAModuleThatIsKilled)
{
    serve();
    ASSERT_TRUE(listen());
    ASSERT_TRUE(heardOnline());

    module().kill();

    EXPECT_TRUE(heardOffline());
    module().waitForFinished();
    serve(); // for the end of the test
}

TEST_F(ModulePresenceTest, IsSaidAgainWhenALateWordHidesIt)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);
    for (const TradePresence &late : {other(false, presence->fence), other(true, presence->fence - 1)}) {
        chart().messages.clear();

        chart().sendMessage("Global", "TradePresence", late.toJson());

        const auto again = heardOnline();
        ASSERT_TRUE(again);
        EXPECT_EQ(again->instance, presence->instance);
    }
}

TEST_F(ModulePresenceTest, IsNotSaidAgainstASuccessor)
{
    serve();
    ASSERT_TRUE(listen());
    const auto presence = heardOnline();
    ASSERT_TRUE(presence);
    chart().messages.clear();

    chart().sendMessage("Global", "TradePresence", other(true, presence->fence + 1).toJson());
    ask("{\"cmd\":\"?\"}"); // handled after it

    EXPECT_TRUE(chart().messages.isEmpty());
}

/// The class itself, whose listener is the test's.
class ModulePresenceBesideAnother : public ::testing::Test
{
protected:
    static constexpr std::chrono::milliseconds patience{1500};

    void SetUp() override
    {
        QObject::connect(&m_presence, &ModulePresence::begun, &m_presence, [this] { ++begun; });
        QObject::connect(&m_presence, &ModulePresence::occupied, &m_presence,
                         [this](const TradePresence &by) { occupiedBy.append(by.instance); });
        QObject::connect(&m_listener, &LocalCommunication::EndPoint::messageReceived, &m_presence,
                         [this](const QByteArray &topic, const QByteArray &payload) {
                             if (topic == "TradePresence") {
                                 m_presence.hear(payload);
                             }
                         });
        QObject::connect(&m_listener, &LocalCommunication::EndPoint::ready, &m_presence,
                         &ModulePresence::arrive);
        m_listener.subscribe("Global", QByteArray("TradePresence"));
    }

    void arrive() { m_listener.connect(m_broker.address()); }

    /// A word that its owner left behind: no farewell follows it.
    void leaveWord(const TradePresence &word)
    {
        RecordingEndPoint listener;
        listener.subscribe("Global", QByteArray("TradePresence"));
        ASSERT_TRUE(listener.join(m_broker.address()));
        m_left.start(m_broker.address(), {"Global", "TradePresence", word.toJson(), word.toJson()});
        ASSERT_TRUE(listener.waitForMessages(1));
    }

    static TradePresence presenceOf(const char *instance, const char *ledger)
    {
        TradePresence presence;
        presence.instance = QLatin1String(instance);
        presence.isOnline = true;
        presence.ledger = QLatin1String(ledger);
        return presence;
    }

    static TradePresence other()
    {
        TradePresence presence = presenceOf("a", "/other.db");
        presence.host = QStringLiteral("elsewhere");
        presence.process = 1;
        return presence;
    }

    QString address() const { return m_broker.address(); }
    ModulePresence &presence() { return m_presence; }

    int begun = 0;
    QStringList occupiedBy;

private:
    TestBroker m_broker;
    LocalCommunication::Announcement m_left;
    ModulePresence m_presence{presenceOf("b", "/own.db"), m_broker.address(), patience};
    LocalCommunication::EndPoint m_listener{nullptr};
};

TEST_F(ModulePresenceBesideAnother, BeginsWhereNobodyIs)
{
    arrive();

    EXPECT_TRUE(waitUntil([this] { return begun == 1; }));
    EXPECT_TRUE(presence().isServing());
}

TEST_F(ModulePresenceBesideAnother, WaitsForOneThatAnswers)
{
    leaveWord(other());
    const BusThread answering(address(), "TradeQuery",
                              [](LocalCommunication::EndPoint &own, const QByteArray &question,
                                 const QByteArray & /*replyChannel*/) {
                                  const QString screen =
                                      jsonOf(question)[QStringLiteral("screenId")].toString();
                                  own.sendMessage(screen.toUtf8(), "TradeQuery", R"({"success":true})");
                              });

    arrive();

    ASSERT_TRUE(waitUntil([this] { return !occupiedBy.isEmpty(); }));
    EXPECT_FALSE(waitUntil([this] { return begun > 0; }, 2 * patience)) << "it answers still";
    EXPECT_EQ(occupiedBy, QStringList{QStringLiteral("a")});
}

TEST_F(ModulePresenceBesideAnother, DoesNotWaitForEverForOneThatLeftItsWordBehind)
{
    leaveWord(other());
    arrive();
    ASSERT_TRUE(waitUntil([this] { return presence().isWaiting(); }));
    QElapsedTimer clock;
    clock.start();

    EXPECT_TRUE(waitUntil([this] { return begun == 1; }));
    EXPECT_GE(clock.elapsed(), (patience - std::chrono::milliseconds(100)).count());
    EXPECT_TRUE(occupiedBy.isEmpty());
}

/// A process of this machine that has nothing to do with any bus, under the number that is said.
class ModulePresenceBesideAReusedNumber : public ModulePresenceBesideAnother
{
protected:
    ModulePresenceBesideAReusedNumber()
    {
        m_stranger.start(QStringLiteral("sleep"), {QStringLiteral("60")});
        m_stranger.waitForStarted();
    }
    ~ModulePresenceBesideAReusedNumber() override
    {
        m_stranger.kill();
        m_stranger.waitForFinished();
    }

    TradePresence wordOf(const QString &start) const
    {
        TradePresence word = other();
        word.host = ProcessIdentity::own().host;
        word.process = m_stranger.processId();
        word.processStart = start;
        return word;
    }
    QString startOfStranger() const { return ProcessIdentity::of(m_stranger.processId()).start; }

private:
    QProcess m_stranger;
};

TEST_F(ModulePresenceBesideAReusedNumber, DoesNotTakeItForTheOneThatLeftItsWordBehind)
{
    leaveWord(wordOf(QStringLiteral("another boot/1")));

    arrive();

    EXPECT_TRUE(waitUntil([this] { return begun == 1; }));
    EXPECT_TRUE(occupiedBy.isEmpty());
}

TEST_F(ModulePresenceBesideAReusedNumber, WaitsForTheVeryProcessThoughItIsSilent)
{
    leaveWord(wordOf(startOfStranger()));

    arrive();

    ASSERT_TRUE(waitUntil([this] { return !occupiedBy.isEmpty(); }));
    EXPECT_FALSE(waitUntil([this] { return begun > 0; }, 2 * patience));
}

TEST_F(ModulePresenceBesideAnother, BeginsWhenTheOtherOneSaysFarewell)
{
    leaveWord(other());
    arrive();
    ASSERT_TRUE(waitUntil([this] { return presence().isWaiting(); }));

    presence().hear(other().ended().toJson());

    EXPECT_TRUE(waitUntil([this] { return begun == 1; }, patience / 2));
}

TEST_F(ModulePresenceBesideAnother, StaysWhenAnotherOneComesLater)
{
    arrive();
    ASSERT_TRUE(waitUntil([this] { return begun == 1; }));

    presence().hear(other().toJson());

    EXPECT_TRUE(presence().isServing());
}

TEST_F(ModulePresenceBesideAnother, LeavesWhenAnotherOneServesTooAndHasTheSmallerInstance)
{
    arrive();
    ASSERT_TRUE(waitUntil([this] { return begun == 1; }));

    presence().hear(other().toJson());
    presence().hear(other().toJson()); // against our word, which it has heard

    EXPECT_FALSE(presence().isServing());
}

TEST_F(ModulePresenceBesideAnother, StaysWhenTheOtherOneThatServesHasTheGreaterInstance)
{
    arrive();
    ASSERT_TRUE(waitUntil([this] { return begun == 1; }));
    TradePresence greater = other();
    greater.instance = QStringLiteral("c");

    for (int times = 0; times < 10; ++times) {
        presence().hear(greater.toJson());
    }

    EXPECT_TRUE(presence().isServing());
}

TEST_F(ModulePresenceBesideAnother, SaysItsWordAgainAfterTheFarewellOfAnotherLedgersModule)
{
    TradePresence leaving = other();
    leaving.fence = 40; // counted in a ledger of its own
    arrive();
    ASSERT_TRUE(waitUntil([this] { return begun == 1; }));
    RecordingEndPoint terminal;
    terminal.subscribe("Global", QByteArray("TradePresence"));
    ASSERT_TRUE(terminal.join(address()));
    ASSERT_TRUE(terminal.waitForMessages(1)); // the word that is kept
    presence().hear(leaving.toJson());
    ASSERT_TRUE(terminal.waitForMessages(2));
    terminal.messages.clear();

    presence().hear(leaving.ended().toJson());

    ASSERT_TRUE(terminal.waitForMessages(1));
    EXPECT_TRUE(jsonOf(terminal.messages[0].payload)[QStringLiteral("online")].toBool());
}

} // namespace TradeModule
