#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <ctime>
#include <functional>
#include <utility>

using namespace std::chrono_literals;

using ::testing::IsEmpty;

namespace {

class EntrustPointFloods : public EntrustPointTest
{
};

TEST_F(EntrustPointFloods, BoundsItsStackAndStaysResponsiveUnderAFloodOfNotifications)
{
    createOnThreeMinutes();
    constexpr int flood = 10000;
    int heard = 0;
    int depth = 0;
    int deepest = 0;
    std::function<void()> hearNext = [&] {
        deepest = std::max(deepest, ++depth);
        if (++heard < flood) {
            QMetaObject::invokeMethod(overlay, hearNext, Qt::QueuedConnection);
        }
        notify();
        --depth;
    };
    QMetaObject::invokeMethod(overlay, hearNext, Qt::QueuedConnection);
    int ticks = 0;
    QTimer heartbeat;
    QObject::connect(&heartbeat, &QTimer::timeout, [&] { ++ticks; });
    heartbeat.start(50);
    ASSERT_TRUE(waitUntil([&] { return heard == flood && depth == 0; }));
    EXPECT_LE(deepest, 17) << "sixteen that wait and one that joins them";
    EXPECT_GE(ticks, 3);
    EXPECT_TRUE(waitUntil([&] { return todayQuestions() == flood; }));
    heartbeat.stop();
}

/// Milliseconds of processor time that this program has used: on a crowded machine a turn may have to wait
/// for others.
double processorTime()
{
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

TEST_F(EntrustPointFloods, LeavesTheEventLoopItsTurnsUnderAFloodOfNotificationsAndAnswers)
{
    const LogCapture log(LogCapture::Debug::Off);
    createOnThreeMinutes();
    constexpr int flood = 10000;
    constexpr double portion = 5.0; // ms that the bus client hands messages over for at once
    const std::vector<QJsonObject> tenRows(10, anOrder());
    int answersDue = 0;
    int answered = 0;
    bus().duringSend = [&] { ++answersDue; };
    QTimer tradingModule;
    QObject::connect(&tradingModule, &QTimer::timeout, [&] {
        const double start = processorTime();
        for (; answersDue > 0 && processorTime() - start < portion; --answersDue, ++answered) {
            hearOrders(tenRows);
        }
    });
    for (int i = 0; i < flood; ++i) {
        QTimer::singleShot(i / 10, overlay, [] { notify(); }); // all of them in a second
    }
    double longestTurn = 0.0;
    double lastTurn = processorTime();
    QTimer heartbeat;
    QObject::connect(&heartbeat, &QTimer::timeout, [&] {
        longestTurn = std::max(longestTurn, processorTime() - std::exchange(lastTurn, processorTime()));
    });
    tradingModule.start(0);
    heartbeat.start(0);
    EXPECT_TRUE(waitUntil([&] { return answered == flood; }, 60s));
    heartbeat.stop();
    EXPECT_EQ(todayQuestions(), flood);
    EXPECT_LE(longestTurn, 50.0);
    bus().duringSend = nullptr;
}

TEST_F(EntrustPointFloods, AsksOnceForEachNotificationOfAFlood)
{
    createOnThreeMinutes();
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    notify();
    ASSERT_TRUE(waitUntil([] { return todayQuestions() == 101; }));
    // longer than the second after which one more would come
    EXPECT_FALSE(waitUntil([] { return todayQuestions() > 101; }, 1500ms));
}

TEST_F(EntrustPointFloods, AsksASecondAfterTheLastNotificationOfAFlood)
{
    createOnThreeMinutes();
    QElapsedTimer sinceTheLast;
    qint64 askedAfter = 0;
    bus().duringSend = [&] { askedAfter = todayQuestions() == 102 ? sinceTheLast.elapsed() : 0; };
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    QTimer::singleShot(300, overlay, [&] {
        sinceTheLast.start();
        notify();
    });
    notify();
    EXPECT_TRUE(waitUntil([&] { return askedAfter >= 990; }, 5s));
    bus().duringSend = nullptr;
}

TEST_F(EntrustPointFloods, MayBeDestroyedInsideAFloodOfNotifications)
{
    createOnThreeMinutes();
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    QTimer::singleShot(200, qApp, [this] { destroy(); });
    notify();
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointFloods, MayBeEndedInsideAFloodOfNotifications)
{
    createOnThreeMinutes();
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    QTimer::singleShot(200, overlay, [this] { overlay->deleteObject(); });
    notify();
    EXPECT_TRUE(waitUntil([] { return todayQuestions() == 101; })) << "its end stops the timer alone";
}

} // namespace
