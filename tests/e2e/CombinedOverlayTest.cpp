// The combined overlay on a real bus: how long its blocking questions hold the terminal up, and what
// becomes of what arrives meanwhile.
#include "tests/e2e/PluginOnBus.h"
#include "tests/support/BusThread.h"
#include "tests/support/ByName.h"
#include "tradechartobject/objects/CChartTradeObject.h"

#include <QElapsedTimer>

#include <atomic>
#include <chrono>
#include <cmath>

using LocalCommunication::EndPoint;

namespace {

class CombinedOverlay : public PluginOnBus
{
protected:
    static constexpr char notification[] = R"({"stkcode":"600536","market":"1"})";

    bool calc(Korvane::IChartObject &overlay) { return PluginOnBus::calc(overlay, chinaSoft, bars); }

    const std::vector<Korvane::AnalyData> bars = {makeDayBar(20240102), makeDayBar(20240103)};
};

/// A module that answers everything at once and counts the questions for today's trades. Each of them is
/// answered by one purchase, at 11.00, 12.00 and so on.
class CountingModule
{
public:
    /// `meanwhile` is called for each question before its answer.
    using Meanwhile = std::function<void(EndPoint &own, const QByteArray &question)>;

    explicit CountingModule(const QString &address, Meanwhile meanwhile = {})
        : m_thread(address, "TradeQuery",
                   [this, meanwhile = std::move(meanwhile)](EndPoint &own, const QByteArray &question,
                                                            const QByteArray &replyChannel) {
                       if (meanwhile) {
                           meanwhile(own, question);
                       }
                       own.sendMessage(replyChannel, "TradeQuery", answerTo(question));
                   })
    {
    }

    int todaysQuestions() const { return m_todaysQuestions; }

private:
    QByteArray answerTo(const QByteArray &question)
    {
        if (question.contains("HistoryTrade")) {
            return R"({"cmd":"HistoryTrade","stkcode":"600536","data":[{"buy":true,"price":10.5,"vol":100}]})";
        }
        if (question.contains("TodayTrade")) {
            return R"({"data":[{"buy":true,"vol":100,"price":)" +
                   QByteArray::number(11 + m_todaysQuestions++) + "}]}";
        }
        return R"({"costprice":"12.5"})";
    }

    std::atomic<int> m_todaysQuestions = 0;
    BusThread m_thread;
};

// Without an answer

constexpr std::chrono::milliseconds timeOut{3000}; // of the bus client
constexpr std::chrono::milliseconds margin{5000};

struct Silence
{
    const char *name;
    void (*befall)(TestBroker &);
    bool (CChartTradeObject::*ask)();
};

class CombinedOverlayUnanswered : public CombinedOverlay, public ::testing::WithParamInterface<Silence>
{
};

TEST_P(CombinedOverlayUnanswered, HoldsTheTerminalUpNoLongerThanTheTimeOut)
{
    const Overlay overlay = construct(0);
    {
        const CountingModule module(broker.address());
        calc(*overlay);
        ASSERT_EQ(paintedCost(*overlay), 12.5);
    }
    GetParam().befall(broker);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE((static_cast<CChartTradeObject &>(*overlay).*GetParam().ask)());
    EXPECT_LT(clock.elapsed(), (timeOut + margin).count());
}

INSTANTIATE_TEST_SUITE_P(
    Waits, CombinedOverlayUnanswered,
    ::testing::Values(Silence{"ForTheCostWhenNobodyAnswers", [](TestBroker &) {},
                              &CChartTradeObject::requestHolderPrice},
                      Silence{"ForTodaysTradesWhenNobodyAnswers", [](TestBroker &) {},
                              &CChartTradeObject::requestTodayTradeInfo},
                      Silence{"WhenTheBrokerHangs", [](TestBroker &broker) { broker.freeze(); },
                              &CChartTradeObject::requestHolderPrice},
                      Silence{"WhenTheBrokerHasCrashed", [](TestBroker &broker) { broker.kill(); },
                              &CChartTradeObject::requestHolderPrice}),
    ByName());

TEST_F(CombinedOverlay, HoldsTheTerminalUpNoLongerThanTheTimeOutForABrokerThatHangsFromTheStart)
{
    broker.freeze();
    QElapsedTimer clock;
    clock.start();
    const Overlay line = construct(0);
    EXPECT_TRUE(calc(*line));
    EXPECT_LT(clock.elapsed(), (timeOut + margin).count());
    EXPECT_TRUE(std::isnan(paintedCost(*line)));
}

TEST_F(CombinedOverlay, ShowsTheCostAgainWhenTheModuleIsBack)
{
    const Overlay line = construct(0);
    {
        const CountingModule module(broker.address());
        calc(*line);
        EXPECT_EQ(paintedCost(*line), 12.5);
    }
    calc(*line);
    EXPECT_TRUE(std::isnan(paintedCost(*line)));
    const CountingModule module(broker.address());
    calc(*line);
    EXPECT_EQ(paintedCost(*line), 12.5);
}

// What arrives while it waits

TEST_F(CombinedOverlay, HearsTheNotificationsThatCameWhileItWaited)
{
    const CountingModule module(broker.address(), [](EndPoint &own, const QByteArray &question) {
        if (question.contains("HolderCostPrice")) {
            for (int i = 0; i < 3; ++i) {
                own.sendMessage("Global", "TradeNotify", notification);
            }
        }
    });
    const Overlay line = construct(0);
    calc(*line);
    EXPECT_EQ(paintedCost(*line), 12.5);
    EXPECT_EQ(module.todaysQuestions(), 0) << "nothing is handled inside the wait";
    EXPECT_TRUE(waitUntil([&] { return module.todaysQuestions() == 3; }));
}

TEST_F(CombinedOverlay, AsksOnceForEachNotificationAlsoForThoseThatCrossItsQuestions)
{
    std::atomic<int> stillToTell = 4;
    const CountingModule module(broker.address(), [&](EndPoint &own, const QByteArray &question) {
        if (question.contains("TodayTrade") && stillToTell > 0) {
            --stillToTell;
            own.sendMessage("Global", "TradeNotify", notification);
        }
    });
    const Overlay markers = construct(1);
    ASSERT_TRUE(waitUntil([&] {
        calc(*markers);
        return paintedMarks(*markers) == "B ";
    }));
    EndPoint mouth(nullptr);
    mouth.connect(broker.address());
    ASSERT_TRUE(mouth.sendMessage("Global", "TradeNotify", notification));
    ASSERT_TRUE(waitUntil([&] { return module.todaysQuestions() == 5; }));

    calc(*markers);
    combinedAxis.expectLines = 6;
    markers->handleMousePress(0, combinedAxis.yOf(10.25));
    ASSERT_EQ(combinedAxis.popups.size(), 1U);
    EXPECT_TRUE(combinedAxis.popups[0][0].contains(QStringLiteral("10.50"))) << "the past first";
    EXPECT_TRUE(combinedAxis.popups[0][5].contains(QStringLiteral("15.00"))) << "in the order of the answers";
}

TEST_F(CombinedOverlay, IsDestroyedByAnEventBetweenTheAnswerAndTheMessagesThatCameWithIt)
{
    const CountingModule module(broker.address(), [](EndPoint &own, const QByteArray &) {
        for (int i = 0; i < 50; ++i) {
            own.sendMessage("Global", "TradeNotify", notification);
        }
    });
    for (int round = 0; round < 20; ++round) {
        Overlay line = construct(0);
        QObject life;
        QMetaObject::invokeMethod(
            &life, [&line] { line.reset(); }, Qt::QueuedConnection);
        calc(*line);
        ASSERT_EQ(paintedCost(*line), 12.5) << "no event is handled inside the wait";
        ASSERT_TRUE(waitUntil([&line] { return line == nullptr; }));
    }
    EXPECT_EQ(module.todaysQuestions(), 0);
}

TEST_F(CombinedOverlay, IsDestroyedBetweenTwoOfTheMessagesThatCameWithAnAnswer)
{
    const CountingModule module(broker.address(), [](EndPoint &own, const QByteArray &question) {
        if (question.contains("HolderCostPrice")) {
            for (int i = 0; i < 1000; ++i) {
                own.sendMessage("Global", "TradeNotify", notification);
            }
        }
    });
    Overlay line = construct(0);
    calc(*line);
    EndPoint other(nullptr); // hears of the overlay's questions in the same event loop
    other.subscribe("Global", QByteArray("TradeQuery"));
    QObject::connect(&other, &EndPoint::messageReceived, &other, [&line] { line.reset(); });
    other.connect(broker.address());
    ASSERT_TRUE(waitUntil([&line] { return line == nullptr; }));
    EXPECT_GT(module.todaysQuestions(), 0);
}

} // namespace
