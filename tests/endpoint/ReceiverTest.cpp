// What a receiver of messages may do while it handles one.

#include "tests/endpoint/TwoMembers.h"

#include <QPointer>
#include <QThread>

#include <atomic>

using LocalCommunication::EndPoint;

namespace {

using Receiver = TwoMembers;

} // namespace

TEST_F(Receiver, StopsAtOnceWhenAReceiverDestroysItself)
{
    auto *overlay = new RecordingEndPoint;
    ASSERT_TRUE(overlay->join(broker.address()));
    ASSERT_TRUE(overlay->listen("c", "t"));
    int delivered = 0;
    QObject::connect(overlay, &EndPoint::messageReceived, overlay, [&] {
        ++delivered;
        delete overlay;
    });
    const QPointer<RecordingEndPoint> alive(overlay);

    for (int i = 0; i < 100; ++i) {
        sender.sendMessage("c", "t", "delete yourself");
    }

    ASSERT_TRUE(waitUntil([&] { return alive.isNull(); }));
    EXPECT_EQ(delivered, 1);
    ASSERT_TRUE(receiver.listen("c", "t")); // the event loop goes on
}

TEST_F(Receiver, StopsAtOnceWhenAReceiverLeavesTheBus)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [this] { receiver.disconnect(); });
    RecordingEndPoint witness;
    ASSERT_TRUE(witness.join(broker.address()));
    ASSERT_TRUE(witness.listen("c", "t"));

    for (int i = 0; i < 100; ++i) {
        sender.sendMessage("c", "t", "leave");
    }

    ASSERT_TRUE(witness.waitForMessages(100));
    ASSERT_TRUE(receiver.waitForMessages(1));
    EXPECT_EQ(receiver.messages.size(), 1);
    EXPECT_FALSE(receiver.isConnected());
}

TEST_F(Receiver, KeepsTheOrderWhenAReceiverRunsAnEventLoop)
{
    ASSERT_TRUE(receiver.listen("c", "t"));
    int depth = 0;
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [&] {
        if (depth++ == 0) { // an overlay that waits after a notification
            EXPECT_TRUE(receiver.waitForMessages(50));
        }
    });

    QList<QByteArray> sent;
    for (int i = 0; i < 100; ++i) {
        sent.append(QByteArray::number(i));
        sender.sendMessage("c", "t", sent.last());
    }

    ASSERT_TRUE(receiver.waitForMessages(100));
    EXPECT_EQ(receiver.payloads(), sent);
}

/// The messages lie in the receiver's socket, all of them, before its event loop runs: it reads them at once.
TEST_F(Receiver, GoesOnInsideTheEventLoopThatAReceiverRuns)
{
    constexpr int count = 5;
    ASSERT_TRUE(receiver.listen("c", "t"));
    QObject::connect(&receiver, &EndPoint::messageReceived, &receiver, [&] {
        if (receiver.messages.size() == 1) { // an overlay that waits after a notification
            EXPECT_TRUE(receiver.waitForMessages(count));
        }
    });

    const BackgroundResponder responder(broker.address(), "question", count);
    ASSERT_EQ(sender.request("question", "?"), "answer to ?");

    ASSERT_TRUE(receiver.waitForMessages(count));
}

TEST_F(Receiver, GoesOnInTheThreadThatItIsMovedTo)
{
    auto *mover = new RecordingEndPoint;
    ASSERT_TRUE(mover->join(broker.address()));
    ASSERT_TRUE(mover->listen("c", "t"));
    QThread thread;
    std::atomic_bool isReceivedThere{false};
    QObject::connect(
        mover, &EndPoint::messageReceived, mover,
        [&] { isReceivedThere = QThread::currentThread() == &thread; }, Qt::DirectConnection);
    QObject::connect(&thread, &QThread::finished, mover, &QObject::deleteLater);
    mover->moveToThread(&thread);
    thread.start();

    EXPECT_TRUE(waitUntil([&] {
        sender.sendMessage("c", "t", "p");
        return isReceivedThere.load();
    }));

    thread.quit();
    thread.wait();
}
