#include "endpoint/Inbox_p.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QList>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <memory>

using LocalCommunication::BusMessage;
using LocalCommunication::Inbox;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using namespace std::chrono_literals;

namespace {

class InboxTest : public ::testing::Test
{
protected:
    InboxTest()
    {
        QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(),
                         [this](const BusMessage &message) { delivered += message.payload; });
    }

    void add(const QByteArray &payload) { inbox->add({"c/t", payload, {}, {}}); }

    std::unique_ptr<Inbox> inbox = std::make_unique<Inbox>(nullptr);
    QList<QByteArray> delivered;
};

} // namespace

TEST_F(InboxTest, DeliversInOrder)
{
    add("1");
    add("2");
    add("3");
    inbox->run();
    EXPECT_THAT(delivered, ElementsAre("1", "2", "3"));
}

TEST_F(InboxTest, DeliversNothingByItself)
{
    add("1");
    EXPECT_FALSE(waitUntil([this] { return !delivered.isEmpty(); }, 20ms));
}

TEST_F(InboxTest, DeliversSoonInATurnOfItsOwn)
{
    add("1");
    inbox->runSoon();
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_TRUE(waitUntil([this] { return delivered.size() == 1; }));
}

TEST_F(InboxTest, LeavesWhatTakesLongToALaterTurn)
{
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [] {
        QElapsedTimer clock; // a receiver that takes its time
        for (clock.start(); clock.elapsed() < 10;) {
        }
    });
    add("1");
    add("2");

    inbox->run();

    EXPECT_THAT(delivered, ElementsAre("1"));
    EXPECT_TRUE(waitUntil([this] { return delivered.size() == 2; }));
}

TEST_F(InboxTest, LeavesItsTurnsToOthersHoweverMuchIsRefilled)
{
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [this] { // as a request in a receiver does
        add("more");
        inbox->runSoon();
    });
    bool isOthersTurn = false;
    QTimer::singleShot(0, inbox.get(), [&isOthersTurn] { isOthersTurn = true; });
    add("first");

    inbox->run();

    EXPECT_TRUE(waitUntil([&isOthersTurn] { return isOthersTurn; }));
}

TEST_F(InboxTest, GoesOnInTheEventLoopThatAReceiverRuns)
{
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [this](const BusMessage &message) {
        if (message.payload == "1") {
            EXPECT_TRUE(waitUntil([this] { return delivered.size() == 3; }));
        }
    });
    add("1");
    add("2");
    add("3");
    inbox->run();
    EXPECT_THAT(delivered, ElementsAre("1", "2", "3"));
}

TEST_F(InboxTest, HandsOverTheRestInTheThreadThatItIsMovedTo)
{
    QThread thread;
    std::atomic_bool isDeliveredThere{false};
    add("1");
    inbox->runSoon();
    QObject::connect(
        inbox.get(), &Inbox::delivered, inbox.get(),
        [&] { isDeliveredThere = QThread::currentThread() == &thread; }, Qt::DirectConnection);

    inbox->moveToThread(&thread);
    thread.start();

    EXPECT_TRUE(waitUntil([&isDeliveredThere] { return isDeliveredThere.load(); }));
    QObject::connect(&thread, &QThread::finished, inbox.release(), &QObject::deleteLater);
    thread.quit();
    thread.wait();
}

TEST_F(InboxTest, IsFullByTheBytesThatWaitAndSaysWhenItHasRoomAgain)
{
    int told = 0;
    QObject::connect(inbox.get(), &Inbox::hasRoom, inbox.get(), [&] {
        ++told;
        EXPECT_FALSE(inbox->isFull());
    });
    const QByteArray half(Inbox::fullBytes / 2, 'x');
    add(half);
    EXPECT_FALSE(inbox->isFull());
    add(half);
    EXPECT_TRUE(inbox->isFull());
    EXPECT_FALSE(inbox->isOverfull());

    inbox->run();

    EXPECT_TRUE(waitUntil([this] { return delivered.size() == 2; }));
    EXPECT_EQ(told, 1);
}

TEST_F(InboxTest, SaysThatItHasRoomInTheEventLoopThatAReceiverRuns)
{
    bool isTold = false;
    QObject::connect(inbox.get(), &Inbox::hasRoom, inbox.get(), [&isTold] { isTold = true; });
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [&](const BusMessage &) {
        if (delivered.size() == 1) {
            EXPECT_TRUE(waitUntil([&isTold] { return isTold; }, 200ms));
        }
    });
    const QByteArray half(Inbox::fullBytes / 2, 'x');
    add(half);
    add(half);

    inbox->run();

    EXPECT_TRUE(waitUntil([this] { return delivered.size() == 2; }));
}

TEST_F(InboxTest, IsFullOfManyMessagesWithoutAPayload)
{
    for (int i = 0; i < 1000000 && !inbox->isFull(); ++i) {
        add({});
    }
    EXPECT_TRUE(inbox->isFull());
    inbox->clear();
    EXPECT_FALSE(inbox->isFull());
}

TEST_F(InboxTest, SharesTheTimeOfReadingWithTheOthersOfItsThread)
{
    const auto alone = inbox->readingTime();
    Inbox other(nullptr);
    const auto ofTheOther = other.readingTime();
    EXPECT_LT(alone, 16ms);
    EXPECT_LE(inbox->readingTime() + ofTheOther, alone);
}

TEST_F(InboxTest, StopsWhenAReceiverClearsIt)
{
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [this] { inbox->clear(); });
    add("1");
    add("2");
    inbox->run();
    EXPECT_FALSE(waitUntil([this] { return delivered.size() > 1; }, 20ms));
}

TEST_F(InboxTest, MayBeDestroyedByAReceiver)
{
    QObject::connect(inbox.get(), &Inbox::delivered, inbox.get(), [this] { inbox.reset(); });
    add("1");
    add("2");
    inbox->run();
    EXPECT_THAT(delivered, ElementsAre("1"));
}
