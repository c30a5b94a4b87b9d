// More notifications than a user interface could draw: every one is asked about, and the user's input is
// still handled.
#include "tests/e2e/PluginOnBus.h"
#include "tests/support/BusThread.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"
#include "tests/support/TurnWatch.h"
#include "tests/support/WaitUntil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>

#include <atomic>

using namespace std::chrono_literals;

using LocalCommunication::EndPoint;

namespace {

using Flood = PluginOnBus;

constexpr int flood = 10000;

QByteArray tenOrders()
{
    QJsonArray rows;
    for (int i = 0; i < 10; ++i) {
        rows.append(QJsonObject(SentOrder()));
    }
    return QJsonDocument(sentAnswer("EntrustTodayTrade", rows)).toJson(QJsonDocument::Compact);
}

TEST_F(Flood, AsksAboutEveryNotificationOfAFloodAndStillHandlesTheUsersInput)
{
    std::atomic<int> questions{0};
    const QByteArray answer = tenOrders();
    const BusThread tradingModule(broker.address(), "TradeQuery",
                                  [&](EndPoint &own, const QByteArray &, const QByteArray &) {
                                      ++questions;
                                      own.sendMessage("screen-1", "TradeQuery", answer);
                                  });
    const BusThread notifier(broker.address(), "Begin",
                             [&](EndPoint &own, const QByteArray &, const QByteArray &) {
                                 for (int i = 0; i < flood; ++i) {
                                     own.sendMessage("Global", "TradeNotify", R"({"stkcode":"600536"})");
                                 }
                             });
    axis.mode = Korvane::TodayChart;
    int repaints = 0;
    axis.onUpdate = [&] { ++repaints; };
    const auto orders = create(2);
    ASSERT_TRUE(waitUntil([&] {
        calc(*orders, chinaSoft, {makeMinuteBar(dayFromToday(0), 931)}, Korvane::IntradayPeriod);
        return questions > 0;
    }));
    ASSERT_TRUE(waitUntil([&] { return repaints > 0; }));
    EndPoint trigger(nullptr);
    trigger.connect(broker.address());
    ASSERT_TRUE(waitUntil([&] { return trigger.isConnected(); }));
    const int questionsBefore = questions;

    const TurnWatch turns;
    trigger.sendMessage("Global", "Begin", "{}");
    EXPECT_TRUE(waitUntil([&] { return repaints >= flood; }, 60s));
    EXPECT_GE(questions - questionsBefore, flood);
    EXPECT_LE(questions - questionsBefore, flood + 60) << "and the timer's own, once a second";
    EXPECT_LE(turns.longest(), 50.0);
    RecordProperty("longestTurnInMicroseconds", static_cast<int>(1000.0 * turns.longest()));
}

} // namespace
