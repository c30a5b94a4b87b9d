#include "endpoint/Inbox_p.h"

#include "endpoint/BusPatience_p.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace LocalCommunication {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pointee;
using ::testing::Property;
using ::testing::SizeIs;

constexpr qint64 longerThanATurnsTime = 10; // in milliseconds

void beBusy()
{
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < longerThanATurnsTime;) {
    }
}

/// As many overlays have.
class DeliveryTurnsTest : public ::testing::Test
{
protected:
    DeliveryTurnsTest()
    {
        for (int i = 0; i < 3; ++i) {
            inboxes.push_back(std::make_unique<Inbox>(nullptr));
            QObject::connect(inboxes.back().get(), &Inbox::delivered, inboxes.back().get(),
                             [this](const BusMessage &message) {
                                 delivered.push_back(message.payload.toStdString());
                                 beBusy();
                             });
        }
    }

    void add(int inbox, const QByteArray &payload) { inboxes[inbox]->add({"c/t", payload, {}, {}}); }

    void runAll()
    {
        for (const auto &inbox : inboxes) {
            inbox->run();
        }
    }

    bool isDelivered(std::size_t count) const
    {
        return waitUntil([this, count] { return delivered.size() >= count; });
    }

    std::vector<std::unique_ptr<Inbox>> inboxes;
    std::vector<std::string> delivered;
};

} // namespace

TEST_F(DeliveryTurnsTest, GiveAllInboxesTogetherTheTimeOfOne)
{
    add(0, "a");
    add(1, "b");
    add(2, "c");

    runAll(); // as in one turn of the event loop

    EXPECT_THAT(delivered, ElementsAre("a"));
    ASSERT_TRUE(isDelivered(3));
    EXPECT_THAT(delivered, ElementsAre("a", "b", "c"));
}

TEST_F(DeliveryTurnsTest, CostTheEventLoopNothingWhileNobodyWaits)
{
    add(0, "a");
    QAbstractEventDispatcher *const loop = QAbstractEventDispatcher::instance();

    inboxes[0]->run();

    ASSERT_THAT(delivered, ElementsAre("a"));
    const auto timers = loop->findChildren<QTimer *>();
    EXPECT_THAT(timers, Each(Pointee(Property(&QTimer::isActive, false))));
    EXPECT_THAT(timers, Not(IsEmpty()));
}

TEST_F(DeliveryTurnsTest, GiveTheNextTurnItsOwnTime)
{
    add(0, "a");
    inboxes[0]->run();
    QCoreApplication::processEvents();
    add(1, "b");

    inboxes[1]->run();

    EXPECT_THAT(delivered, ElementsAre("a", "b"));
}

TEST_F(DeliveryTurnsTest, GiveNoTurnItsTimeTwice)
{
    QTimer::singleShot(0, inboxes[0].get(), [this] { // before what goes on
        add(0, "a");
        add(1, "b");
        runAll();
    });
    std::size_t deliveredInATurn = 0;
    std::size_t before = 0;
    const auto note = [&] {
        deliveredInATurn =
            std::max(deliveredInATurn, delivered.size() - std::exchange(before, delivered.size()));
    };
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, inboxes[0].get(),
                     note);

    ASSERT_TRUE(isDelivered(2));
    note();

    EXPECT_EQ(deliveredInATurn, 1U);
}

TEST_F(DeliveryTurnsTest, GoOnWhereTheEventLoopTellsOfNoTurns)
{
    const QSignalBlocker silence(QAbstractEventDispatcher::instance());
    add(0, "a");
    add(1, "b");
    add(2, "c");

    runAll();

    EXPECT_TRUE(isDelivered(3));
}

TEST_F(DeliveryTurnsTest, GoRoundWhateverOneInboxHas)
{
    add(0, "a");
    add(0, "a");
    add(0, "a");
    add(1, "b");
    add(2, "c");

    runAll();

    ASSERT_TRUE(isDelivered(5));
    EXPECT_THAT(delivered, ElementsAre("a", "a", "b", "c", "a"));
}

TEST_F(DeliveryTurnsTest, KeepOnePatienceForAllThatAskOnABus)
{
    const auto one = inboxes[0]->turns()->patience(QStringLiteral("a"));

    EXPECT_EQ(inboxes[1]->turns()->patience(QStringLiteral("a")), one);
    EXPECT_NE(inboxes[1]->turns()->patience(QStringLiteral("b")), one);
}

TEST_F(DeliveryTurnsTest, KeepAPatienceAsLongAsOneInboxLives)
{
    const std::weak_ptr<BusPatience> one = inboxes[0]->turns()->patience(QStringLiteral("a"));
    inboxes[1]->turns();
    inboxes[0].reset();
    EXPECT_FALSE(one.expired());

    inboxes.clear();

    EXPECT_TRUE(one.expired());
}

TEST_F(DeliveryTurnsTest, TellAPatienceThatTheTurnIsOver)
{
    using namespace std::chrono_literals;
    const auto patience = inboxes[0]->turns()->patience(QStringLiteral("a"));
    const auto now = Patience::Time() + 1h;
    patience->ask("t", 1, now, 3s, true);
    patience->hear(1, now + 100ms);
    patience->stopWaiting(now + 100ms, true);
    EXPECT_EQ(patience->ask("t", 2, now + 100ms, 3s, true), 2900ms);

    QCoreApplication::processEvents();

    EXPECT_EQ(patience->ask("t", 3, now + 100ms, 3s, true), 5ms);
}

TEST_F(DeliveryTurnsTest, PassOverAnInboxThatHasGone)
{
    add(0, "a");
    add(1, "b");
    add(2, "c");
    runAll();

    inboxes[1].reset();

    ASSERT_TRUE(isDelivered(2));
    EXPECT_THAT(delivered, ElementsAre("a", "c"));
}

TEST_F(DeliveryTurnsTest, LeaveNothingWithTheEventLoopWhenTheLastInboxHasGone)
{
    const QObject *const loop = QAbstractEventDispatcher::instance();
    const int before = loop->children().size();
    add(0, "a");
    runAll();
    ASSERT_THAT(loop->children(), SizeIs(before + 1));

    inboxes.clear();

    EXPECT_THAT(loop->children(), SizeIs(before));
}

} // namespace LocalCommunication
