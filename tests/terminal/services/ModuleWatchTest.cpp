// How things stand with the trading module, as the terminal sees it.
#include "terminal/services/ModuleWatch.h"

#include "endpoint/Announcement.h"
#include "endpoint/EndPoint.h"
#include "tests/support/TestBroker.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

using LocalCommunication::Announcement;
using LocalCommunication::EndPoint;
using Trading::TradePresence;

namespace Terminal {

using namespace std::chrono_literals;
namespace {

/// A trading module as far as the watch is concerned.
class FakeModule
{
public:
    explicit FakeModule(const QString &address) : m_address(address)
    {
        QObject::connect(&m_endPoint, &EndPoint::messageReceived, &m_endPoint,
                         [this](const QByteArray &topic, const QByteArray &question) {
                             const auto screen = QJsonDocument::fromJson(question)[QLatin1String("screenId")];
                             if (!m_answer.isEmpty()) {
                                 m_endPoint.sendMessage(screen.toString().toUtf8(), topic, m_answer);
                             }
                         });
        m_endPoint.subscribe("Global", QByteArray("TradeQuery"));
        m_endPoint.connect(address);
    }

    void answer(const QByteArray &answer) { m_answer = answer; }
    void hang() { m_answer.clear(); }
    void announce(const TradePresence &presence)
    {
        m_announcement.start(m_address,
                             {"Global", "TradePresence", presence.toJson(), presence.ended().toJson()});
    }
    void leave()
    {
        hang();
        m_announcement.stop();
    }

private:
    const QString m_address;
    QByteArray m_answer = R"({"success":true})";
    EndPoint m_endPoint{nullptr};
    Announcement m_announcement;
};

TradePresence online(qint64 fence = 1)
{
    TradePresence presence;
    presence.instance = QStringLiteral("i%1").arg(fence);
    presence.isOnline = true;
    presence.fence = fence;
    presence.can = QStringList{QStringLiteral("clientno")};
    return presence;
}

class ModuleWatchTest : public ::testing::Test
{
protected:
    ModuleWatchTest() { watch.start(broker.address()); }

    bool waitFor(ModuleWatch::State state)
    {
        return waitUntil([this, state] { return watch.state() == state; });
    }

    TestBroker broker;
    ModuleWatch watch{nullptr, std::chrono::milliseconds(50)};
};

using State = ModuleWatch::State;

TEST_F(ModuleWatchTest, FindsNobodyAtFirst)
{
    EXPECT_EQ(watch.bus(), ModuleWatch::Bus::Joining);
    ASSERT_TRUE(waitUntil([this] { return watch.bus() == ModuleWatch::Bus::Joined; }));
    EXPECT_EQ(watch.state(), State::Absent);
    EXPECT_FALSE(watch.isAnswering());
    EXPECT_FALSE(watch.presence());
}

TEST_F(ModuleWatchTest, FindsAModuleThatAnswersWithoutAnnouncingItself)
{
    const FakeModule module(broker.address());
    ASSERT_TRUE(waitFor(State::Answering));
    EXPECT_FALSE(watch.presence());
}

TEST_F(ModuleWatchTest, FindsAModuleThatAnnouncesItself)
{
    FakeModule module(broker.address());
    module.hang();
    module.announce(online());
    ASSERT_TRUE(waitFor(State::Answering));
    ASSERT_TRUE(watch.presence());
    EXPECT_TRUE(watch.presence()->knows("clientno"));
}

TEST_F(ModuleWatchTest, TellsOnceThatAModuleAnswersNow)
{
    int count = 0;
    QObject::connect(&watch, &ModuleWatch::answering, &watch, [&count] { ++count; });
    FakeModule module(broker.address());
    module.announce(online());
    ASSERT_TRUE(waitUntil([this] { return watch.presence().has_value(); }));
    EXPECT_EQ(count, 1);
}

TEST_F(ModuleWatchTest, KnowsAModuleThatOnlyReads)
{
    FakeModule module(broker.address());
    TradePresence presence = online();
    presence.isReadOnly = true;
    module.announce(presence);
    ASSERT_TRUE(waitFor(State::ReadOnly));
    EXPECT_TRUE(watch.isAnswering());
}

TEST_F(ModuleWatchTest, TellsWhyAModuleRefuses)
{
    FakeModule module(broker.address());
    module.answer(R"({"success":false,"msg":"the ledger is damaged"})");
    ASSERT_TRUE(waitFor(State::Refusing));
    EXPECT_EQ(watch.reason(), QStringLiteral("the ledger is damaged"));
    module.answer(R"({"success":true})");
    ASSERT_TRUE(waitFor(State::Answering));
    EXPECT_EQ(watch.reason(), QString());
}

TEST_F(ModuleWatchTest, SeesAModuleGo)
{
    FakeModule module(broker.address());
    module.announce(online());
    ASSERT_TRUE(waitFor(State::Answering));
    module.leave();
    ASSERT_TRUE(waitFor(State::Absent));
    EXPECT_FALSE(watch.presence());
}

TEST_F(ModuleWatchTest, SeesTheSuccessorOfAModule)
{
    FakeModule module(broker.address());
    module.announce(online(1));
    ASSERT_TRUE(waitFor(State::Answering));
    FakeModule successor(broker.address());
    bool isTold = false;
    QObject::connect(&watch, &ModuleWatch::changed, &watch, [&isTold] { isTold = true; });
    successor.announce(online(2));
    ASSERT_TRUE(waitUntil([this] { return watch.presence() && watch.presence()->fence == 2; }));
    EXPECT_TRUE(isTold);

    module.leave(); // its farewell is a late word

    EXPECT_FALSE(waitUntil([this] { return watch.state() == State::Absent; }, 200ms));
}

TEST_F(ModuleWatchTest, FindsWithinTenSecondsThatAModuleHangs)
{
    ModuleWatch usual(nullptr);
    usual.start(broker.address());
    FakeModule module(broker.address());
    module.announce(online());
    ASSERT_TRUE(waitUntil([&usual] { return usual.state() == State::Answering; }));
    module.hang();
    EXPECT_TRUE(waitUntil([&usual] { return usual.state() == State::Silent; }, 10s));
}

TEST_F(ModuleWatchTest, HearsOfAModuleThatHungWhenItAnswersAgain)
{
    FakeModule module(broker.address());
    module.announce(online());
    module.hang();
    ASSERT_TRUE(waitFor(State::Silent));
    EXPECT_FALSE(watch.isAnswering());
    EXPECT_TRUE(watch.presence());

    module.answer(R"({"success":true})");
    EXPECT_TRUE(waitFor(State::Answering));
}

TEST_F(ModuleWatchTest, SaysSinceWhenAModuleIsLateBeforeItGivesItUp)
{
    FakeModule module(broker.address());
    module.announce(online());
    ASSERT_TRUE(waitFor(State::Answering));
    EXPECT_FALSE(watch.unansweredSince());
    std::vector<std::pair<State, bool>> seen; // state, and whether it is late
    QObject::connect(&watch, &ModuleWatch::changed, &watch, [this, &seen] {
        seen.emplace_back(watch.state(), watch.unansweredSince().has_value());
    });
    const QTime before = QTime::currentTime();
    module.hang();
    ASSERT_TRUE(waitFor(State::Silent));
    // an answer that was still under way may be told first
    ASSERT_GE(seen.size(), 2);
    EXPECT_EQ(seen[seen.size() - 2], std::pair(State::Answering, true));
    EXPECT_EQ(seen.back(), std::pair(State::Silent, true));
    EXPECT_LE(std::abs(before.msecsTo(watch.unansweredSince().value())), 5000);

    module.answer(R"({"success":true})");
    ASSERT_TRUE(waitFor(State::Answering));
    EXPECT_FALSE(watch.unansweredSince());
}

TEST_F(ModuleWatchTest, IsNotWaitingWhereNobodyIs)
{
    ASSERT_TRUE(waitUntil([this] { return watch.bus() == ModuleWatch::Bus::Joined; }));
    EXPECT_FALSE(waitUntil([this] { return watch.unansweredSince().has_value(); }, 300ms));
}

TEST_F(ModuleWatchTest, SeesTheBusGoAndComeAgain)
{
    const FakeModule module(broker.address());
    ASSERT_TRUE(waitFor(State::Answering));
    broker.kill();
    EXPECT_TRUE(waitFor(State::Absent));
    EXPECT_EQ(watch.bus(), ModuleWatch::Bus::Lost);
    broker.start();
    EXPECT_TRUE(waitFor(State::Answering));
    EXPECT_EQ(watch.bus(), ModuleWatch::Bus::Joined);
}

TEST_F(ModuleWatchTest, TellsThatTheBusWasAwayThoughNoPulseMissedIt)
{
    ModuleWatch slow(nullptr, 10s);
    int timesBack = 0;
    bool isAnswered = false;
    QObject::connect(&slow, &ModuleWatch::cameBack, &slow, [&timesBack] { ++timesBack; });
    QObject::connect(&slow, &ModuleWatch::answered, &slow, [&isAnswered] { isAnswered = true; });
    slow.start(broker.address());
    const FakeModule module(broker.address());
    ASSERT_TRUE(waitUntil([&isAnswered] { return isAnswered; }));
    EXPECT_EQ(timesBack, 0) << "it was not away yet";
    broker.kill();
    broker.start();
    EXPECT_TRUE(waitUntil([&timesBack] { return timesBack == 1; }, 5s));
}

TEST_F(ModuleWatchTest, TellsThatTheModuleWasAwayThoughNothingMissedIt)
{
    bool isAnswered = false;
    QObject::connect(&watch, &ModuleWatch::answered, &watch, [&isAnswered] { isAnswered = true; });
    FakeModule module(broker.address());
    module.announce(online());
    ASSERT_TRUE(waitUntil([this, &isAnswered] { return isAnswered && watch.presence(); }));
    int timesBack = 0;
    QObject::connect(&watch, &ModuleWatch::cameBack, &watch, [&timesBack] { ++timesBack; });
    isAnswered = false;

    FakeModule again(broker.address());
    again.announce(online()); // what it says whenever it joins

    EXPECT_TRUE(waitUntil([&timesBack] { return timesBack == 1; }));
    EXPECT_TRUE(waitUntil([&isAnswered] { return isAnswered; }));
}

TEST_F(ModuleWatchTest, TellsThatTheBusIsGoneWhereNoModuleWas)
{
    ASSERT_TRUE(waitUntil([this] { return watch.bus() == ModuleWatch::Bus::Joined; }));
    bool isTold = false;
    QObject::connect(&watch, &ModuleWatch::changed, &watch,
                     [this, &isTold] { isTold = isTold || watch.bus() == ModuleWatch::Bus::Lost; });
    broker.kill();
    EXPECT_TRUE(waitUntil([&isTold] { return isTold; }));
}

TEST_F(ModuleWatchTest, OpensAGateWhenAQuestionAskedThenIsAnswered)
{
    FakeModule module(broker.address());
    ASSERT_TRUE(waitFor(State::Answering));
    module.hang();
    bool isOpen = false;
    watch.answerGate()(&watch, [&isOpen] { isOpen = true; });
    EXPECT_FALSE(waitUntil([&isOpen] { return isOpen; }, 300ms));
    module.answer(R"({"success":true})");
    EXPECT_TRUE(waitUntil([&isOpen] { return isOpen; }));
}

} // namespace
} // namespace Terminal
