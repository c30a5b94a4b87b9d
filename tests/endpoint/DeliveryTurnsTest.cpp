#include "endpoint/Inbox_p.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>

#include <memory>
#include <vector>

namespace LocalCommunication {
namespace {

using ::testing::ElementsAre;
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
