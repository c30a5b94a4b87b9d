#include "tests/support/WaitUntil.h"

#include "tradechartobject/common/SettlingWaits.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <memory>

using namespace std::chrono_literals;

using TradeChart::SettlingWaits;

namespace {

/// Somebody who is notified, and counts what he asks.
class Notified : public QObject
{
public:
    SettlingWaits waits{*this, [this] { ++questions; }};
    int questions = 0;
};

TEST(SettlingWaits, AskASecondAfterTheNotification)
{
    Notified notified;
    QElapsedTimer clock;
    clock.start();
    notified.waits.waitAndAsk();
    EXPECT_EQ(notified.questions, 1);
    EXPECT_GE(clock.elapsed(), 990);
}

TEST(SettlingWaits, AskOnceForEveryNotificationHoweverManyWaitAtOnce)
{
    Notified notified;
    for (int i = 0; i < 50; ++i) {
        QTimer::singleShot(0, &notified, [&] { notified.waits.waitAndAsk(); });
    }
    EXPECT_TRUE(waitUntil([&] { return notified.questions == 50; }));
    // longer than the second after which one more would come
    EXPECT_FALSE(waitUntil([&] { return notified.questions > 50; }, 1500ms));
}

TEST(SettlingWaits, EndWithTheirOwnerAlsoThoseOnATimer)
{
    int questions = 0;
    auto owner = std::make_unique<QObject>();
    SettlingWaits waits(*owner, [&] { ++questions; });
    for (int i = 0; i < 50; ++i) {
        QTimer::singleShot(0, owner.get(), [&] { waits.waitAndAsk(); });
    }
    QTimer::singleShot(300, qApp, [&] { owner.reset(); });
    // longer than all waits would last
    EXPECT_FALSE(waitUntil([&] { return questions > 0; }, 2s));
}

} // namespace
