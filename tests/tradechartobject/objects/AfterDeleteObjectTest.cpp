// What deleteObject() leaves alone: everything but the refresh timer. One table for all overlays, which a
// terminal holds and ends in the same way.
#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

#include <functional>
#include <string>
#include <vector>

using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

/// A host object of one of the classes, and the same object as Qt's.
struct Made
{
    Korvane::IChartObject *object;
    QObject *qObject;
};

/// Makes an overlay of the factory.
template <class Overlay>
Made make(Korvane::IChartAxis &axis)
{
    auto *overlay = new Overlay(axis, {}, nullptr);
    return {overlay, overlay};
}

Made makeCombined(Korvane::IChartAxis &axis, const char *json)
{
    auto *overlay = new CChartTradeObject(axis, json);
    return {overlay, overlay};
}

/// One kind of overlay and how the trading module speaks to it. Its answer is of a price.
struct Kind
{
    const char *name;
    std::function<Made(Korvane::IChartAxis &)> make;
    int period;
    Korvane::AnalyData bar;                         ///< the one that is shown
    QJsonObject (*answer)(const QByteArray &price); ///< what comes over the bus
    bool isAskedBlocking;                           ///< the answer is that of a blocking request
    bool listsOnClick;
    double hitPrice; ///< a click at its row meets the overlay
    bool asksForRepaint;
    int questionsPerNotification; ///< published or by request
};

QJsonObject heldAt(const QByteArray &cost)
{
    return sentAnswer("HolderCostPrice", QJsonObject{{QStringLiteral("stkcode"), QStringLiteral("600536")},
                                                     {QStringLiteral("market"), QStringLiteral("1")},
                                                     {QStringLiteral("costprice"), QString::fromUtf8(cost)}});
}

QJsonObject heldAtByRequest(const QByteArray &cost)
{
    return {{QStringLiteral("costprice"), QString::fromUtf8(cost)}};
}

QJsonObject tradedToday(const QByteArray &price)
{
    return sentAnswer("TodayTrade",
                      QJsonArray{SentTrade{"B", "20240103", "9310000", price}.in(todaysTrades)});
}

QJsonObject tradedBefore(const QByteArray &price)
{
    return sentAnswer("HistoryTrade", QJsonArray{SentTrade{"B", "20240103", "", price}.asNumbers()});
}

QJsonObject ordered(const QByteArray &price)
{
    return sentAnswer("EntrustTodayTrade", QJsonArray{QJsonObject(SentOrder{"0B", "2", price})});
}

/// Today is known when the program runs: in the exchange's time zone.
std::vector<Kind> kinds()
{
    return {
        {"PositionCost", make<PositionCost>, Korvane::DayPeriod, makeDayBar(20240103, 9, 11), heldAt, false,
         false, 10.0, true, 0},
        {"BSPoint", make<BSPoint>, Korvane::DayPeriod, makeDayBar(20240103, 9, 11), tradedToday, false, true,
         11.1, true, 1},
        {"EntrustPoint", make<EntrustPoint>, Korvane::IntradayPeriod,
         makeMinuteBar(dayFromToday(0), 931, 9, 11), ordered, false, true, 9.9, true, 1},
        {"CombinedCost", [](auto &axis) { return makeCombined(axis, R"({"type":0})"); }, Korvane::DayPeriod,
         makeDayBar(20240103, 9, 11), heldAtByRequest, true, false, 10.0, false, 1},
        {"CombinedTrades", [](auto &axis) { return makeCombined(axis, R"({"type":1})"); }, Korvane::DayPeriod,
         makeDayBar(20240103, 9, 11, 10), tradedBefore, false, true, 10.5, false, 1},
    };
}

class AfterDeleteObject : public ::testing::TestWithParam<Kind>
{
protected:
    /// An overlay with a mark at 10 or 11 on its one bar that the host has told to stop.
    void SetUp() override
    {
        bus().reset();
        axis.mode = Korvane::TodayChart;
        axis.low = 5.0;
        axis.high = 20.0;
        made = GetParam().make(axis);
        owner.reset(made.object);
        ASSERT_TRUE(calc(shanghai));
        hearPrice("10");
        ASSERT_TRUE(made.object->deleteObject());
        bus().sent.clear();
        bus().requests.clear();
        axis.updated.clear();
    }

    void TearDown() override
    {
        EXPECT_EQ(made.qObject->findChild<QTimer *>(), nullptr) << "nothing made a timer";
    }

    static RecordedBus &bus() { return RecordedBus::instance(); }

    bool calc(const Korvane::tagCodeWithName &security)
    {
        axis.bars = {GetParam().bar};
        painter.barCount = 1;
        return made.object->calcIt(security, axis.bars.data(), 1,
                                   static_cast<Korvane::Period>(GetParam().period), 0, 0);
    }

    /// The trading module tells a price; hosts of the combined overlay recompute by themselves.
    void hearPrice(const char *price)
    {
        const QByteArray answer = QJsonDocument(GetParam().answer(price)).toJson();
        bus().answerRequest = [answer](const RecordedBus::Message &) { return answer; };
        if (!GetParam().isAskedBlocking) {
            bus().deliver("TradeQuery", answer);
        }
        if (!GetParam().asksForRepaint) {
            calc(shanghai);
        }
    }

    /// Everything that is drawn, as text.
    std::string drawn()
    {
        painter.calls.clear();
        made.object->paintIt(painter);
        std::string text;
        for (const FakePainter::Call &call : painter.calls) {
            text +=
                std::to_string(call.kind) + ' ' + call.text.toStdString() + ' ' + std::to_string(call.number);
            for (const double value : call.values) {
                text += ' ' + std::to_string(value);
            }
            text += '\n';
        }
        return text;
    }

    void click()
    {
        axis.popupHasTerminator = GetParam().asksForRepaint; // the combined overlay's list has none
        axis.expectLines = 1;
        made.object->handleMousePress(axis.barToX(0), axis.yOf(GetParam().hitPrice));
    }

    std::size_t questions() const { return bus().sent.size() + bus().requests.size(); }

    const Korvane::tagCodeWithName shanghai = makeSecurity(1, "600536", 7001, "江山科技");
    const Korvane::tagCodeWithName shenzhen = makeSecurity(0, "000001", 7002, "平湖机械");

    FakeAxis axis;
    FakePainter painter;
    std::unique_ptr<Korvane::IChartObject> owner;
    Made made{};
};

TEST_P(AfterDeleteObject, PaintsWhatItHeard)
{
    const std::string drawnAfter = drawn();
    made = GetParam().make(axis);
    owner.reset(made.object);
    calc(shanghai);
    hearPrice("10");
    EXPECT_EQ(drawnAfter, drawn()) << "as an overlay that goes on";
    EXPECT_THAT(drawnAfter, Not(IsEmpty()));
    made.object->deleteObject();
}

TEST_P(AfterDeleteObject, IsStillHit)
{
    EXPECT_EQ(made.object->hitTest(axis.barToX(0), axis.yOf(GetParam().hitPrice)), 0);
}

TEST_P(AfterDeleteObject, StillListsOnAClick)
{
    click();
    EXPECT_THAT(axis.popups, SizeIs(GetParam().listsOnClick ? 1 : 0));
}

TEST_P(AfterDeleteObject, TakesAnAnswerAndAsksForItsRepaint)
{
    const std::string before = drawn();
    hearPrice("9.5");
    EXPECT_THAT(axis.updated, SizeIs(GetParam().asksForRepaint ? 1 : 0));
    click();
    const bool isListed =
        !axis.popups.empty() && axis.popups.back().join(QString()).contains(QStringLiteral("9.50"));
    EXPECT_TRUE(isListed || drawn() != before);
}

TEST_P(AfterDeleteObject, AsksAgainAfterANotification)
{
    bus().deliver("TradeNotify", R"({"stkcode":"600536"})");
    EXPECT_EQ(questions(), static_cast<std::size_t>(GetParam().questionsPerNotification));
}

TEST_P(AfterDeleteObject, TurnsToAnotherSecurityAndAsksAboutIt)
{
    bus().answerRequest = nullptr;
    EXPECT_TRUE(calc(shenzhen));
    bus().deliver("TradeNotify", R"({"stkcode":"000001"})");
    EXPECT_GE(questions(), 1U);
    for (const auto *messages : {&bus().sent, &bus().requests}) {
        for (const RecordedBus::Message &message : *messages) {
            EXPECT_TRUE(message.payload.contains("000001")) << message.payload.toStdString();
        }
    }
}

TEST_P(AfterDeleteObject, AnswersASecondCallTheSame)
{
    EXPECT_TRUE(made.object->deleteObject());
}

INSTANTIATE_TEST_SUITE_P(Overlays, AfterDeleteObject, ::testing::ValuesIn(kinds()), ByName());

} // namespace
