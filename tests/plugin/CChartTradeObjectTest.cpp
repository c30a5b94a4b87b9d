#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/CChartTradeObject.h"

#include <QCoreApplication>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#ifdef __SANITIZE_ADDRESS__
#    include <sanitizer/asan_interface.h>
#endif

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

constexpr char costLine[] = R"({"type":0})";
constexpr char tradeMarkers[] = R"({"type":1})";

MATCHER_P(HasText, text, "")
{
    return arg.contains(text);
}

SentTrade trade(const char *side, double price, double quantity)
{
    return {side, "20240103", "", QByteArray::number(price, 'g', 17), QByteArray::number(quantity, 'g', 17)};
}

QJsonObject buy(double price, double quantity = 100)
{
    return trade("B", price, quantity).asNumbers();
}

QJsonObject sell(double price, double quantity = 100)
{
    return trade("S", price, quantity).asNumbers();
}

QString line(const char *side, const char *price, const char *quantity = "100")
{
    return QStringLiteral("%1\t00:00:00\t成交价:%2\t成交量:%3")
        .arg(QString::fromUtf8(side), QLatin1String(price), QLatin1String(quantity));
}

class CChartTradeObjectTest : public OverlayTest<CChartTradeObject>
{
protected:
    /// Each closes at 10.00.
    const std::vector<Korvane::AnalyData> threeDays = {
        makeDayBar(20240102, 9, 11), makeDayBar(20240103, 8, 12), makeDayBar(20240104, 7, 13)};

    CChartTradeObject &create(const char *json)
    {
        overlay = new CChartTradeObject(axis, json);
        owner.reset(overlay);
        return *overlay;
    }

    /// The trade markers of 600536 on three daily bars; the question for them is forgotten.
    void createMarkers()
    {
        create(tradeMarkers);
        ASSERT_TRUE(calc(shanghai, threeDays, 4));
        bus().sent.clear();
    }

    /// The cost line of 600536 on three daily bars, at the cost that the trading module sends.
    void createLine(const QByteArray &answer)
    {
        answerWith(answer);
        create(costLine);
        ASSERT_TRUE(calc(shanghai, threeDays, 4));
    }

    /// What the blocking requests come back with.
    static void answerWith(const QByteArray &answer)
    {
        bus().answerRequest = [answer](const RecordedBus::Message &) { return answer; };
    }

    static QByteArray todaysAnswer(const QJsonArray &rows)
    {
        return QJsonDocument(QJsonObject{{QStringLiteral("data"), rows}}).toJson();
    }

    static QJsonObject historyAnswer(const QJsonArray &rows) { return sentAnswer("HistoryTrade", rows); }

    static void hearHistory(const QJsonArray &rows) { hear(Topic::TRADEQUERY, historyAnswer(rows)); }

    static void hearNotification() { hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); }

    void recalc() { calc(shanghai, threeDays, 4); }

    static std::vector<QByteArray> requests()
    {
        std::vector<QByteArray> texts;
        for (const RecordedBus::Message &message : bus().requests) {
            texts.push_back(message.payload);
        }
        return texts;
    }

    /// The markers on each bar, by the painter's style: 0 buy, 2 sell, 4 both above the close, 1, 3, 5
    /// below. Bars are parted by a blank, a dash stands for a bar without markers.
    std::string drawn()
    {
        paint();
        std::string markers;
        for (std::size_t bar = 0; bar < painter.barCount; ++bar) {
            markers += bar == 0 ? "" : " ";
            const std::size_t before = markers.size();
            for (const FakePainter::Call &call : painter.calls) {
                if (call.kind == FakePainter::Call::MarkerSeries && call.values[bar] == 1.0) {
                    markers += std::to_string(call.ints[1]);
                }
            }
            markers += markers.size() == before ? "-" : "";
        }
        return markers;
    }

    std::optional<double> drawnCost()
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::LineSeries) {
                return call.values.front();
            }
        }
        return std::nullopt;
    }

    /// Puts a mark into the series that is painted in `style`. Trades without a time never leave their
    /// bar, so no bar gets the marks of both sides in one by itself.
    void mark(int style, std::size_t bar)
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::MarkerSeries && call.ints[1] == style) {
                const_cast<double &>(call.flags[bar]) = 1.0;
            }
        }
    }

    /// The list after a click on `bar` at the height of `price`; the host is told its length.
    QStringList listAt(int bar, double price, int expectedLines)
    {
        axis.popupHasTerminator = false;
        axis.expectLines = expectedLines;
        axis.popups.clear();
        overlay->handleMousePress(bar * 10.0, axis.yOf(price));
        return axis.popups.empty() ? QStringList() : axis.popups.front();
    }
};

// Set-up and end

TEST_F(CChartTradeObjectTest, JoinsTheTerminalsBusListensAndSubscribesGlobalOnly)
{
    create(tradeMarkers);
    EXPECT_EQ(bus().operations,
              (QStringList{QStringLiteral("create"),
                           QStringLiteral("connect ") + QCoreApplication::applicationDirPath(),
                           QStringLiteral("listened to"),
                           QStringLiteral("subscribe list Global TradeNotify,TradeQuery")}));
}

TEST_F(CChartTradeObjectTest, AsksNothingWhenConstructed)
{
    create(costLine);
    create(tradeMarkers);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, HasNoTimerAndNoParent)
{
    create(tradeMarkers);
    EXPECT_EQ(timer(), nullptr);
    EXPECT_EQ(overlay->parent(), nullptr);
}

TEST_F(CChartTradeObjectTest, HasNoSignalsSlotsOrPropertiesOfItsOwn)
{
    create(tradeMarkers);
    EXPECT_EQ(overlay->metaObject(), &QObject::staticMetaObject);
}

TEST_F(CChartTradeObjectTest, StartsNoTimerWhateverItHears)
{
    for (const char *json : {costLine, tradeMarkers}) {
        create(json);
        answerWith(todaysAnswer({buy(10)}));
        recalc();
        hearHistory({buy(10)});
        hearNotification();
        EXPECT_EQ(timer(), nullptr) << json;
    }
}

TEST_F(CChartTradeObjectTest, IsAPluginObjectForTheHost)
{
    EXPECT_EQ(create(costLine).type(), 3);
    EXPECT_EQ(create(tradeMarkers).type(), 3);
}

TEST_F(CChartTradeObjectTest, LeavesTheBusWhenDestroyed)
{
    create(tradeMarkers);
    bus().operations.clear();
    destroy();
    EXPECT_EQ(bus().operations, (QStringList{QStringLiteral("disconnect"), QStringLiteral("destroy")}));
}

TEST_F(CChartTradeObjectTest, EndsTheProcessWhenTheBusClientThrowsAtTheEnd)
{
    create(tradeMarkers);
    bus().duringDisconnect = [] { throw 1; };
    EXPECT_DEATH(destroy(), "");
    bus().duringDisconnect = nullptr;
}

TEST_F(CChartTradeObjectTest, HearsNothingMoreWhileItLeavesTheBus)
{
    createMarkers();
    bool isLeaving = false;
    bus().duringDisconnect = [&] {
        isLeaving = true;
        hearNotification();
    };
    destroy();
    EXPECT_TRUE(isLeaving);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, WorksOnAfterDeleteObjectUntilItIsDestroyed)
{
    createMarkers();
    bus().operations.clear();
    EXPECT_TRUE(overlay->deleteObject());
    EXPECT_TRUE(overlay->deleteObject());
    EXPECT_THAT(bus().operations, IsEmpty());
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, StaysUsableBeforeTheFirstBars)
{
    create(tradeMarkers);
    EXPECT_TRUE(overlay->calcRatio(0, 0));
    EXPECT_EQ(overlay->hitTest(0, 0), -1);
    overlay->handleMousePress(0, 0);
    overlay->calcTradeData(threeDays.data(), 3);
    overlay->calcTradeData(nullptr, 3);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(7));
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, NeedsNoScreenModeOrVisiblePrices)
{
    axis.hasScreenId = false;
    axis.hasPriceScale = false;
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_FALSE(bus().operations.join(QLatin1Char('\n')).contains(QString::fromUtf8(axis.screen)));
}

TEST_F(CChartTradeObjectTest, WritesNoLog)
{
    const LogCapture log;
    for (const char *json : {costLine, tradeMarkers, "no JSON"}) {
        create(json);
        recalc();
        hearNotification();
        hearHistory({buy(10)});
        recalc();
        listAt(0, 10.5, 1);
        overlay->deleteObject();
    }
    EXPECT_THAT(log.all(), IsEmpty());
}

// Configurations that name no job

class CChartTradeObjectIdles : public CChartTradeObjectTest,
                               public ::testing::WithParamInterface<std::pair<const char *, const char *>>
{
};

TEST_P(CChartTradeObjectIdles, AndDrawsAndAsksNothing)
{
    create(GetParam().second);
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    hearNotification();
    hearHistory({buy(10)});
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());

    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());

    int untouched = 4711;
    EXPECT_TRUE(overlay->calcRatio(1, 2));
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, CChartTradeObjectIdles,
    ::testing::Values(std::pair{"Null", static_cast<const char *>(nullptr)}, std::pair{"Empty", ""},
                      std::pair{"NoJson", "{\"type\":1"}, std::pair{"AnArray", R"([{"type":1}])"},
                      std::pair{"WithoutType", "{}"}, std::pair{"TypeAsText", R"({"type":"1"})"},
                      std::pair{"TypeAsFraction", R"({"type":0.5})"},
                      std::pair{"TypeMinusOne", R"({"type":-1})"}, std::pair{"TypeTwo", R"({"type":2})"}),
    [](const auto &row) { return row.param.first; });

// Questions

TEST_F(CChartTradeObjectTest, AsksForTheShownDaysWhenBarsCome)
{
    create(tradeMarkers);
    EXPECT_TRUE(calc(shanghai, {makeDayBar(20240102), makeDayBar(20240329)}, 4));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload, "{\n"
                                     "    \"cmd\": \"HistoryTrade\",\n"
                                     "    \"end\": \"20240329\",\n"
                                     "    \"market\": \"SH\",\n"
                                     "    \"start\": \"20240102\",\n"
                                     "    \"stkcode\": \"600536\"\n"
                                     "}\n");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, AsksAgainOnlyWhenTheFirstOrLastDayChanges)
{
    createMarkers();
    recalc();
    calc(shanghai, {threeDays.front(), threeDays.back()}, 4);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shanghai, {makeDayBar(20231229), threeDays.back()}, 4);
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240105)}, 4);
    EXPECT_THAT(questions(), SizeIs(2));
}

TEST_F(CChartTradeObjectTest, AsksByTheDaysOfMinuteBars)
{
    create(tradeMarkers);
    calc(shanghai, {makeMinuteBar(20240102, 1459), makeMinuteBar(20240104, 930)}, 21);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240102\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectTest, AsksByTheFirstAndTheLastBarAlsoWhenOthersAreEarlierOrLater)
{
    create(tradeMarkers);
    calc(shanghai, {makeDayBar(20240105), makeDayBar(20240108), makeDayBar(20240103), makeDayBar(20240104)},
         4);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240105\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectTest, AsksForDayZeroOnAPeriodOfNeitherKind)
{
    create(tradeMarkers);
    calc(shanghai, threeDays, 8);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"0\""));
}

TEST_F(CChartTradeObjectTest, AsksAgainAtTheNextCalcItWhenTheBusRefuses)
{
    create(tradeMarkers);
    bus().takesMessages = false;
    EXPECT_TRUE(calc(shanghai, threeDays, 4)) << "the bars are taken all the same";
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(CChartTradeObjectTest, TakesTheBarsAlsoWhenTheBusRefusesTheQuestion)
{
    createMarkers();
    hearHistory({buy(10)});
    bus().takesMessages = false;
    EXPECT_TRUE(calc(shanghai, {makeDayBar(20240105, 3, 20), makeDayBar(20240108)}, 4));
    EXPECT_EQ(drawn(), "0 -");
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(20, 11));
    EXPECT_THAT(painter.calls[3].prices, ElementsAre(3, 9));
}

TEST_F(CChartTradeObjectTest, MarksTheTradesOfAnAnswerThatComesWhileTheQuestionIsSent)
{
    create(tradeMarkers);
    bus().duringSend = [] { hearHistory({buy(10)}); };
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, ReportsWhetherTheHistoryQuestionWentOut)
{
    createMarkers();
    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20240102, 20240104));
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->requestHistoryTradeInfo(20230102, 20230104));
    bus().takesMessages = true;
    bus().sent.clear();
    recalc();
    EXPECT_THAT(questions(), IsEmpty()) << "the range that was asked for is held";
}

TEST_F(CChartTradeObjectTest, HoldsTheDaysThatItIsToldToAskFor)
{
    create(tradeMarkers);
    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20240102, 20240104));
    bus().sent.clear();
    recalc();
    EXPECT_THAT(questions(), IsEmpty());

    EXPECT_TRUE(overlay->requestHistoryTradeInfo(20230102, 20230104));
    bus().sent.clear();
    recalc();
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("\"start\": \"20240102\""));
    EXPECT_TRUE(questions()[0].contains("\"end\": \"20240104\""));
}

TEST_F(CChartTradeObjectTest, DoesNotAskAgainForAnotherSecurityOfTheSameDays)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shenzhen, threeDays, 4);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(drawn(), "0 - -") << "a terminal ends the object with the security";
}

TEST_F(CChartTradeObjectTest, AsksForTheCostAtEveryCalcItAndBlocks)
{
    createLine(R"({"costprice":"12.5"})");
    ASSERT_THAT(bus().requests, SizeIs(1));
    EXPECT_EQ(bus().requests[0].topic, "TradeQuery");
    EXPECT_EQ(bus().requests[0].payload, "{\n"
                                         "    \"cmd\": \"HolderCostPrice\",\n"
                                         "    \"market\": \"SH\",\n"
                                         "    \"stkcode\": \"600536\"\n"
                                         "}\n");
    EXPECT_EQ(drawnCost(), 12.5);
    recalc();
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, AsksNothingWithoutBars)
{
    for (const char *json : {costLine, tradeMarkers}) {
        create(json);
        EXPECT_TRUE(calc(shanghai, {}, 4));
        EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 5, Korvane::DayPeriod, 0, 0));
        EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -5, Korvane::DayPeriod, 0, 0));
    }
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, KeepsItsTradesAndTheirDaysWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, {}, 4);
    recalc();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, AsksNoCostWhileTheMarketNumberIsMinusOne)
{
    answerWith(R"({"costprice":"12.5"})");
    create(costLine);
    EXPECT_FALSE(overlay->requestHolderPrice());
    EXPECT_TRUE(calc(makeSecurity(-1, "600536", 9), threeDays, 4));
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(CChartTradeObjectTest, AsksForTodaysTradesAfterANotificationInAnyLetterCase)
{
    create(tradeMarkers);
    calc(makeSecurity(1, "abC1", 5), threeDays, 4);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1"})");
    EXPECT_THAT(requests(), ElementsAre("{\n"
                                        "    \"cmd\": \"TodayTrade\",\n"
                                        "    \"market\": \"SH\",\n"
                                        "    \"stkcode\": \"abC1\"\n"
                                        "}\n"));
    EXPECT_EQ(bus().requests[0].topic, "TradeQuery");
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, AsksForTodaysTradesAlsoAsACostLine)
{
    createLine(R"({"costprice":"12.5"})");
    hearNotification();
    ASSERT_THAT(requests(), SizeIs(2));
    EXPECT_TRUE(requests()[1].contains("TodayTrade"));
}

TEST_F(CChartTradeObjectTest, OnlyAsksForTodaysTradesAfterANotificationThatCarriesRows)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(Topic::TRADENOTIFY, historyAnswer({sell(9)}));
    recalc();
    EXPECT_THAT(requests(), SizeIs(1));
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, TakesOverTheSecurityWithoutBars)
{
    createMarkers();
    calc(shenzhen, {}, 4);
    hearNotification();
    EXPECT_THAT(requests(), IsEmpty()) << "600536 is no longer shown";
    hear(Topic::TRADENOTIFY, R"({"stkcode":"000001"})");
    EXPECT_THAT(requests(), SizeIs(1));
}

TEST_F(CChartTradeObjectTest, TakesOverTheSecurityWhateverItsIdentityWord)
{
    createMarkers();
    calc(makeSecurity(0, "000001", 7001), threeDays, 4);
    overlay->requestTodayTradeInfo();
    ASSERT_THAT(requests(), SizeIs(1));
    EXPECT_TRUE(requests()[0].contains("\"market\": \"SZ\""));
    EXPECT_TRUE(requests()[0].contains("\"stkcode\": \"000001\""));
}

TEST_F(CChartTradeObjectTest, AsksForTodaysTradesOfNothingBeforeASecurityIsShown)
{
    create(tradeMarkers);
    EXPECT_FALSE(overlay->requestTodayTradeInfo());
    hear(Topic::TRADENOTIFY, R"({"market":"1"})");
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_THAT(requests(), Each(HasText("\"stkcode\": \"\"")));
}

struct MarketCase
{
    const char *name;
    int number;
    const char *code;
    int askedForCost; ///< times
};

class CChartTradeObjectMarket : public CChartTradeObjectTest, public ::testing::WithParamInterface<MarketCase>
{
};

TEST_P(CChartTradeObjectMarket, IsNamedInEveryQuestion)
{
    const auto security = makeSecurity(GetParam().number, "600536", 5);
    create(tradeMarkers);
    calc(security, threeDays, 4);
    hearNotification();
    create(costLine);
    calc(security, threeDays, 4);
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(requests(), SizeIs(1 + static_cast<std::size_t>(GetParam().askedForCost)));
    const QByteArray market = QByteArray("\"market\": \"") + GetParam().code + '"';
    EXPECT_THAT(questions(), Each(HasText(market)));
    EXPECT_THAT(requests(), Each(HasText(market)));
}

INSTANTIATE_TEST_SUITE_P(Numbers, CChartTradeObjectMarket,
                         ::testing::Values(MarketCase{"Shenzhen", 0, "SZ", 1},
                                           MarketCase{"Shanghai", 1, "SH", 1},
                                           MarketCase{"Oil", 24, "OIL", 1},
                                           MarketCase{"WithoutACode", 12, "", 1},
                                           MarketCase{"BelowMinusOne", -2, "", 1},
                                           MarketCase{"NotSetWhichLeavesOnlyTheCostUnasked", -1, "", 0}),
                         ByName());

TEST_F(CChartTradeObjectTest, NeverAsksForTodaysTradesFromCalcIt)
{
    createMarkers();
    recalc();
    EXPECT_THAT(requests(), IsEmpty());
}

// The cost

struct CostAnswer
{
    const char *name;
    const char *answer;
    bool isTaken;
    std::optional<double> drawn;
};

class CChartTradeObjectReads : public CChartTradeObjectTest, public ::testing::WithParamInterface<CostAnswer>
{
};

TEST_P(CChartTradeObjectReads, FromTheAnswer)
{
    createLine(GetParam().answer);
    EXPECT_EQ(drawnCost(), GetParam().drawn);
    EXPECT_EQ(overlay->requestHolderPrice(), GetParam().isTaken);
}

INSTANTIATE_TEST_SUITE_P(
    Costs, CChartTradeObjectReads,
    ::testing::Values(CostAnswer{"ADecimalText", R"({"costprice":"12.345"})", true, 12.345},
                      CostAnswer{"AJsonNumberAsZero", R"({"costprice":12.345})", true, 0.0},
                      CostAnswer{"AMissingKeyAsZero", R"({"success":false})", true, 0.0},
                      CostAnswer{"AnEmptyObjectAsZero", "{}", true, 0.0},
                      CostAnswer{
                          "TheCostOfWhateverElseTheAnswerNames",
                          R"({"cmd":"x","stkcode":"000001","market":"2","success":false,"costprice":"12.5"})",
                          true, 12.5},
                      CostAnswer{"WordsAsZero", R"({"costprice":"none"})", true, 0.0},
                      CostAnswer{"TheCostInsideDataNot", R"({"data":{"costprice":"12"}})", true, 0.0},
                      CostAnswer{"NanAsNoLine", R"({"costprice":"nan"})", true, std::nullopt},
                      CostAnswer{"InfinityAsNoLine", R"({"costprice":"inf"})", true, std::nullopt},
                      CostAnswer{"NothingAsNoLine", "", false, std::nullopt},
                      CostAnswer{"AnArrayAsNoLine", R"([{"costprice":"12"}])", false, std::nullopt},
                      CostAnswer{"BrokenJsonAsNoLine", R"({"costprice":"12")", false, std::nullopt}),
    ByName());

TEST_F(CChartTradeObjectTest, ForgetsTheCostBeforeItAsks)
{
    createLine(R"({"costprice":"12.5"})");
    bus().answerRequest = [this](const RecordedBus::Message &) {
        EXPECT_EQ(drawnCost(), std::nullopt);
        return QByteArray();
    };
    recalc();
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(CChartTradeObjectTest, ForgetsTheCostAlsoWhenThereIsNoSecurityToAskAbout)
{
    createLine(R"({"costprice":"12.5"})");
    calc(makeSecurity(-1, "600536", 9), threeDays, 4);
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(CChartTradeObjectTest, KeepsTheCostWhenAQuestionBetweenTwoCalcItsGetsNoAnswer)
{
    createLine(R"({"costprice":"12.5"})");
    answerWith("");
    EXPECT_FALSE(overlay->requestHolderPrice());
    EXPECT_EQ(drawnCost(), 12.5);
}

TEST_F(CChartTradeObjectTest, KeepsTheCostWithoutBarsButDrawsNothing)
{
    createLine(R"({"costprice":"12.5"})");
    calc(shanghai, {}, 4);
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(12.5)), 0);
}

TEST_F(CChartTradeObjectTest, TakesNoCostThatWasSentToEverybody)
{
    createLine(R"({"costprice":"12.5"})");
    hear(Topic::TRADEQUERY, R"({"cmd":"HolderCostPrice","stkcode":"600536","costprice":"99"})");
    EXPECT_EQ(drawnCost(), 12.5);
}

// Messages

class CChartTradeObjectIgnores : public CChartTradeObjectTest, public ::testing::WithParamInterface<Ignored>
{
};

TEST_P(CChartTradeObjectIgnores, AndChangesNothing)
{
    createMarkers();
    hearHistory({buy(10)});
    const LogCapture log;
    hear(GetParam().topic, QByteArray(GetParam().payload));
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
}

#define ROWS R"("data":[{"buy":false,"price":10,"vol":5}]})"

INSTANTIATE_TEST_SUITE_P(
    Messages, CChartTradeObjectIgnores,
    ::testing::Values(
        Ignored{"OfAnotherTopic", "EntrustQuery", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"OfTheTopicInOtherCase", "TRADEQUERY", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"OfALongerTopic", "TradeQuery2", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"ThatNotifyOnATopicInOtherCase", "tradenotify", R"({"stkcode":"600536"})"},
        Ignored{"ThatNotifyOnALongerTopic", "TradeNotify2", R"({"stkcode":"600536"})"},
        Ignored{"WithTodaysCommand", "TradeQuery", R"({"cmd":"TodayTrade","stkcode":"600536",)" ROWS},
        Ignored{"WithTheCommandInOtherCase", "TradeQuery",
                R"({"cmd":"historytrade","stkcode":"600536",)" ROWS},
        Ignored{"WithTheCommandAsANumber", "TradeQuery", R"({"cmd":1,"stkcode":"600536",)" ROWS},
        Ignored{"WithoutACommand", "TradeQuery", R"({"stkcode":"600536",)" ROWS},
        Ignored{"OfAnotherSecurity", "TradeQuery", R"({"cmd":"HistoryTrade","stkcode":"000001",)" ROWS},
        Ignored{"WithTheCodeAsANumber", "TradeQuery", R"({"cmd":"HistoryTrade","stkcode":600536,)" ROWS},
        Ignored{"ThatAreAnArray", "TradeQuery", "[]"}, Ignored{"ThatAreAnEmptyObject", "TradeQuery", "{}"},
        Ignored{"ThatAreNoJson", "TradeQuery", "{"}, Ignored{"ThatNotifyInNoJson", "TradeNotify", "600536"},
        Ignored{"ThatNotifyInAnArray", "TradeNotify", R"(["600536"])"},
        Ignored{"ThatNotifyOfAnotherSecurity", "TradeNotify", R"({"stkcode":"600519"})"},
        Ignored{"ThatNotifyWithTheCodeAsANumber", "TradeNotify", R"({"stkcode":600536})"}),
    ByName());

TEST_F(CChartTradeObjectTest, TakesAnEmptyNotificationForNoneBeforeASecurityIsShown)
{
    create(tradeMarkers);
    hear(Topic::TRADENOTIFY, "{}");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsWhatItHearsAtTheNextCalcItAndAsksForNoRepaint)
{
    createMarkers();
    const LogCapture log;
    hearHistory({buy(10)});
    answerWith(todaysAnswer({sell(9)}));
    hearNotification();
    EXPECT_EQ(drawn(), "- - -");
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
    recalc();
    EXPECT_EQ(drawn(), "03 - -");
}

TEST_F(CChartTradeObjectTest, TakesTheRowsOfAnAnswerThatCallsItselfAFailure)
{
    createMarkers();
    hear(Topic::TRADEQUERY, with(historyAnswer({buy(10)}), "success", false));
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, TakesTodaysRowsOfAnAnswerWhateverElseItNames)
{
    createMarkers();
    QJsonObject answer{{QStringLiteral("cmd"), QStringLiteral("x")},
                       {QStringLiteral("stkcode"), QStringLiteral("000001")},
                       {QStringLiteral("market"), QStringLiteral("2")},
                       {QStringLiteral("success"), false},
                       {QStringLiteral("data"), QJsonArray{buy(10)}}};
    answerWith(QJsonDocument(answer).toJson());
    EXPECT_TRUE(overlay->requestTodayTradeInfo());
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, TakesAnAnswerWhateverMarketAndScreenItNames)
{
    createMarkers();
    QJsonObject answer = historyAnswer({buy(10)});
    answer.insert(QStringLiteral("market"), QStringLiteral("2"));
    answer.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    hear(Topic::TRADEQUERY, answer);
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, ReplacesAllTradesByAHistoryAnswerTodaysIncluded)
{
    createMarkers();
    answerWith(todaysAnswer({sell(9)}));
    hearNotification();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(drawn(), "0 - -") << "no trade has a time, so all count as past ones";
}

TEST_F(CChartTradeObjectTest, AddsTodaysTradesAgainAtEveryNotification)
{
    createMarkers();
    hearHistory({buy(10)});
    answerWith(todaysAnswer({buy(11)}));
    hearNotification();
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 3),
              (QStringList{line("买入", "10.00"), line("买入", "11.00"), line("买入", "11.00")}));
}

TEST_F(CChartTradeObjectTest, TakesAnotherOverlaysHistoryQuestionAsAnAnswerWithoutTrades)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(
        Topic::TRADEQUERY,
        R"({"cmd":"HistoryTrade","end":"20240104","market":"SH","screenId":"s","start":"20240102","stkcode":"600536"})");
    recalc();
    EXPECT_EQ(drawn(), "- - -") << "until the trading module answers the next question of its own";
}

TEST_F(CChartTradeObjectTest, IsNotTouchedByAnotherOverlaysOtherQuestions)
{
    createMarkers();
    hearHistory({buy(10)});
    for (const char *cmd : {"TodayTrade", "HolderCostPrice", "EntrustTodayTrade", "EntrustHistoryTrade"}) {
        hear(Topic::TRADEQUERY, {{QStringLiteral("cmd"), QLatin1String(cmd)},
                                 {QStringLiteral("stkcode"), QStringLiteral("600536")}});
    }
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(CChartTradeObjectTest, TakesPastTradesOfTheSecurityInAnyLetterCase)
{
    create(tradeMarkers);
    calc(makeSecurity(1, "abC1", 5), threeDays, 4);
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{buy(10)}, "ABc1"));
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

struct EmptyHistory
{
    const char *name;
    QJsonValue data;
};

class CChartTradeObjectForgets : public CChartTradeObjectTest,
                                 public ::testing::WithParamInterface<EmptyHistory>
{
};

TEST_P(CChartTradeObjectForgets, ItsTradesAtAHistoryAnswer)
{
    createMarkers();
    hearHistory({buy(10)});
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", GetParam().data));
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

INSTANTIATE_TEST_SUITE_P(Data, CChartTradeObjectForgets,
                         ::testing::Values(EmptyHistory{"WithoutRows", QJsonArray()},
                                           EmptyHistory{"WithNull", QJsonValue()},
                                           EmptyHistory{"WithoutData", QJsonValue(QJsonValue::Undefined)},
                                           EmptyHistory{"WithAnObject", buy(10)},
                                           EmptyHistory{"WithAText", QStringLiteral("[]")}),
                         ByName());

struct TodaysAnswer
{
    const char *name;
    const char *answer;
    bool isTaken;
};

class CChartTradeObjectToday : public CChartTradeObjectTest,
                               public ::testing::WithParamInterface<TodaysAnswer>
{
};

TEST_P(CChartTradeObjectToday, LeavesTheTradesWithoutRows)
{
    createMarkers();
    hearHistory({buy(10)});
    answerWith(GetParam().answer);
    EXPECT_EQ(overlay->requestTodayTradeInfo(), GetParam().isTaken);
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
}

INSTANTIATE_TEST_SUITE_P(
    Answers, CChartTradeObjectToday,
    ::testing::Values(TodaysAnswer{"None", "", false}, TodaysAnswer{"NoJson", "{", false},
                      TodaysAnswer{"AnArray", "[]", false}, TodaysAnswer{"AnEmptyObject", "{}", true},
                      TodaysAnswer{"NoRows", R"({"data":[]})", true},
                      TodaysAnswer{"RowsThatAreNoArray", R"({"data":{"buy":true}})", true}),
    ByName());

// Rows

TEST_F(CChartTradeObjectTest, PutsTodaysRowsBehindAndPastRowsInFrontInTheirOrder)
{
    createMarkers();
    EXPECT_TRUE(overlay->parseTradeInfo({buy(11), buy(12)}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({buy(13), buy(14)}, false));
    EXPECT_TRUE(overlay->parseTradeInfo({buy(15)}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({}, true));
    EXPECT_TRUE(overlay->parseTradeInfo({}, false));
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 5),
              (QStringList{line("买入", "13.00"), line("买入", "14.00"), line("买入", "11.00"),
                           line("买入", "12.00"), line("买入", "15.00")}));
}

TEST_F(CChartTradeObjectTest, StandsEveryTradeOnTheFirstBarWhateverItsDate)
{
    createMarkers();
    hearHistory({buy(10), with(buy(10), "date", QStringLiteral("20240104"))});
    recalc();
    EXPECT_EQ(drawn(), "0 - -");
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "10.00"), line("买入", "10.00")}));
}

struct RowCase
{
    const char *name;
    QJsonValue row;
    QString listed;
};

class CChartTradeObjectRow : public CChartTradeObjectTest, public ::testing::WithParamInterface<RowCase>
{
};

TEST_P(CChartTradeObjectRow, IsReadFromJsonNumbersAndBooleans)
{
    createMarkers();
    hearHistory({GetParam().row});
    std::vector<Korvane::AnalyData> bars = threeDays;
    bars[0].close = -1.0;
    calc(shanghai, bars, 4);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{GetParam().listed});
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CChartTradeObjectRow,
    ::testing::Values(RowCase{"ABuy", buy(10.5, 300), line("买入", "10.50", "300")},
                      RowCase{"ASell", sell(10.5, 300), line("卖出", "10.50", "300")},
                      RowCase{"WithTextsAsASellOfNothing",
                              QJsonObject{{QStringLiteral("buy"), QStringLiteral("true")},
                                          {QStringLiteral("price"), QStringLiteral("10.5")},
                                          {QStringLiteral("vol"), QStringLiteral("300")}},
                              line("卖出", "0.00", "0")},
                      RowCase{"WithoutFieldsAsASellOfNothing", QJsonObject(), line("卖出", "0.00", "0")},
                      RowCase{"ThatIsNoObjectAsASellOfNothing", 5, line("卖出", "0.00", "0")},
                      RowCase{"WithTheBusesOwnSideAsASell",
                              QJsonObject{{QStringLiteral("bsflag2"), QStringLiteral("B")},
                                          {QStringLiteral("price"), 1.0}},
                              line("卖出", "1.00", "0")}),
    ByName());

// Markers

struct Standing
{
    const char *name;
    QJsonArray rows;
    const char *drawn;
};

class CChartTradeObjectMarks : public CChartTradeObjectTest, public ::testing::WithParamInterface<Standing>
{
};

TEST_P(CChartTradeObjectMarks, TheBarThatClosesAtTen)
{
    createMarkers();
    hearHistory(GetParam().rows);
    recalc();
    EXPECT_EQ(drawn(), GetParam().drawn);
}

INSTANTIATE_TEST_SUITE_P(
    Trades, CChartTradeObjectMarks,
    ::testing::Values(Standing{"WithABuyAtTheCloseAbove", {buy(10.00)}, "0 - -"},
                      Standing{"WithABuyJustUnderTheCloseBelow", {buy(9.99)}, "1 - -"},
                      Standing{"WithASellAtTheCloseAbove", {sell(10.00)}, "2 - -"},
                      Standing{"WithASellUnderTheCloseBelow", {sell(9.99)}, "3 - -"},
                      Standing{"WithBuysOnBothParts", {buy(9), buy(11)}, "01 - -"},
                      Standing{"WithBothSidesApartOnTheLastTradedBar", {buy(11), sell(12)}, "02 - -"},
                      Standing{"WithBothSidesApartBelow", {buy(8), sell(9)}, "13 - -"},
                      Standing{"WithEverything", {buy(11), sell(12), sell(8), buy(9)}, "0213 - -"},
                      Standing{"WithNothing", {}, "- - -"}),
    ByName());

TEST_F(CChartTradeObjectTest, StartsAtTheFirstBarWithATimeFromTheTradesOn)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0]}, 4);
    EXPECT_EQ(drawn(), "- 0");
}

TEST_F(CChartTradeObjectTest, MarksNothingWhenAllBarsAreBeforeTheTrades)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), makeDayBar(beforeAllTime)}, 4);
    EXPECT_EQ(drawn(), "- -");
}

TEST_F(CChartTradeObjectTest, MarksTheFirstBarOfAnyPeriod)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, {makeMinuteBar(20240102, 931), makeMinuteBar(20240102, 932)}, 21);
    EXPECT_EQ(drawn(), "0 -");
    calc(shanghai, threeDays, 8);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, ClearsTheMarksAtEveryCalcIt)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    hearHistory({sell(9)});
    recalc();
    EXPECT_EQ(drawn(), "3 - -");
    hearHistory({});
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

class CChartTradeObjectStyle : public CChartTradeObjectTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(CChartTradeObjectStyle, IsClearedAtEveryCalcIt)
{
    createMarkers();
    mark(GetParam(), 1);
    EXPECT_EQ(drawn(), "- " + std::to_string(GetParam()) + " -");
    recalc();
    EXPECT_EQ(drawn(), "- - -");
}

INSTANTIATE_TEST_SUITE_P(Styles, CChartTradeObjectStyle, ::testing::Range(0, 6));

TEST_F(CChartTradeObjectTest, OnlyAddsMarksWhenItIsToldToMarkBetweenTwoCalcIts)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    hearHistory({sell(9)});
    overlay->calcTradeData(threeDays.data(), 3);
    EXPECT_EQ(drawn(), "03 - -");
}

TEST_F(CChartTradeObjectTest, StaysInsideTheBarsOfTheLastCalcItWhenToldToMarkMore)
{
    createMarkers();
    hearHistory({buy(10)});
    const std::vector<Korvane::AnalyData> more(50, makeDayBar(20240102));
    overlay->calcTradeData(more.data(), 50);
    overlay->calcTradeData(more.data(), -1);
    overlay->calcTradeData(nullptr, 3);
    EXPECT_EQ(drawn(), "0 - -");
}

TEST_F(CChartTradeObjectTest, StaysInsideTheBarsThatItIsToldToMark)
{
    createMarkers();
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    const std::vector<Korvane::AnalyData> bars = {makeDayBar(beforeAllTime), threeDays[0]};
    calc(shanghai, bars, 4);
    hearHistory({buy(10)});
    for (const int count : {0, 1}) {
        overlay->calcTradeData(bars.data(), count);
        EXPECT_EQ(drawn(), "- -") << count;
    }
    overlay->calcTradeData(bars.data(), 2);
    EXPECT_EQ(drawn(), "- 0");
}

TEST_F(CChartTradeObjectTest, MarksNothingAsACostLineWhenToldToMark)
{
    createLine(R"({"costprice":"12.5"})");
    hearHistory({buy(10)});
    overlay->calcTradeData(threeDays.data(), 3);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(3)) << "the line, its label and the end";
}

// Painting

TEST_F(CChartTradeObjectTest, PaintsSixSeriesOverHighsAndLowsThenEnds)
{
    createMarkers();
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(7));
    constexpr int stylesAndVariants[6][2] = {{0, 1}, {2, 1}, {4, 1}, {1, 0}, {3, 0}, {5, 0}};
    for (std::size_t series = 0; series < 6; ++series) {
        const FakePainter::Call &call = painter.calls[series];
        const int style = stylesAndVariants[series][0];
        const int variant = stylesAndVariants[series][1];
        EXPECT_EQ(call.kind, FakePainter::Call::MarkerSeries);
        EXPECT_THAT(call.ints, ElementsAre(0, style, variant));
        EXPECT_EQ(call.prices,
                  (variant == 1 ? std::vector<double>{11, 12, 13} : std::vector<double>{9, 8, 7}));
        EXPECT_THAT(call.values, Each(::testing::IsNan()));
    }
    EXPECT_EQ(painter.calls[6].kind, FakePainter::Call::EndPaint);
}

TEST_F(CChartTradeObjectTest, DrawsALineOverAllBarsThenItsLabelThenEnds)
{
    axis.hasPriceScale = false; // it is drawn wherever it is
    createLine(R"({"costprice":"12.5"})");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(painter.calls[0].values, ElementsAre(12.5, 12.5, 12.5));
    EXPECT_THAT(painter.calls[0].ints, ElementsAre(0));
    EXPECT_EQ(painter.calls[0].number, 1.0);
    EXPECT_EQ(painter.calls[1].kind, FakePainter::Call::SeriesLabel);
    EXPECT_THAT(painter.calls[1].values, ElementsAre(12.5, 12.5, 12.5));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:12.50");
    EXPECT_THAT(painter.calls[1].ints, ElementsAre(-1));
    EXPECT_EQ(painter.calls[2].kind, FakePainter::Call::EndPaint);
}

TEST_F(CChartTradeObjectTest, CutsTheLabelOfAnAbsurdCostAtItsRoom)
{
    createLine(R"({"costprice":"1e300"})");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    const QByteArray number = QString::asprintf("%.2f", 1e300).toLatin1();
    EXPECT_EQ(painter.calls[1].text, ("持仓成本:" + number).left(127));
}

TEST_F(CChartTradeObjectTest, OnlyEndsThePaintWithoutACost)
{
    createLine("");
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
}

// Price scale

class CChartTradeObjectScale : public CChartTradeObjectTest
{
protected:
    void expectScale(double highest, double lowest)
    {
        EXPECT_TRUE(overlay->calcRatio(1, 2));
        int untouched = 4711;
        EXPECT_EQ(overlay->maximizeValue(untouched), highest);
        EXPECT_EQ(overlay->minimizeValue(untouched), lowest);
        EXPECT_EQ(untouched, 4711);
    }
};

TEST_F(CChartTradeObjectScale, IsNeutralWithoutData)
{
    create(tradeMarkers);
    expectScale(DBL_MIN, DBL_MAX);
    create(costLine);
    expectScale(DBL_MIN, DBL_MAX);
    createLine("");
    expectScale(DBL_MIN, DBL_MAX);
}

TEST_F(CChartTradeObjectScale, IsNeutralBeforeTheFirstCalcRatio)
{
    for (const char *json : {costLine, tradeMarkers, "{}"}) {
        create(json);
        int untouched = 4711;
        EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
        EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    }
}

TEST_F(CChartTradeObjectScale, SpansTheBars)
{
    createMarkers();
    expectScale(13, 7);
}

TEST_F(CChartTradeObjectScale, SpansTheFinitePricesOfTheBars)
{
    create(tradeMarkers);
    calc(shanghai,
         {makeDayBar(20240102, nan, infinity), makeDayBar(20240103, 6, nan),
          makeDayBar(20240104, -infinity, 5)},
         4);
    expectScale(6, 5);
}

TEST_F(CChartTradeObjectScale, StaysNeutralAtTheTopWhenAllPricesAreNegative)
{
    create(tradeMarkers);
    calc(shanghai, {makeDayBar(20240102, -3, -2)}, 4);
    expectScale(DBL_MIN, -3);
}

TEST_F(CChartTradeObjectScale, IsTheCost)
{
    createLine(R"({"costprice":"12.5"})");
    expectScale(12.5, 12.5);
    answerWith("");
    recalc();
    expectScale(DBL_MIN, DBL_MAX);
}

TEST_F(CChartTradeObjectScale, IsNeutralForACostWithoutEnd)
{
    for (const char *answer : {R"({"costprice":"inf"})", R"({"costprice":"-inf"})"}) {
        createLine(answer);
        expectScale(DBL_MIN, DBL_MAX);
    }
}

TEST_F(CChartTradeObjectScale, StaysThatOfTheLastBarsWithoutBars)
{
    createMarkers();
    calc(shanghai, {}, 4);
    expectScale(13, 7);
}

TEST_F(CChartTradeObjectScale, ChangesWithCalcRatioOnly)
{
    createMarkers();
    int untouched = 0;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    overlay->calcRatio(0, 0);
    calc(shanghai, {makeDayBar(20240105, 1, 2)}, 4);
    EXPECT_EQ(overlay->maximizeValue(untouched), 13);
    EXPECT_EQ(overlay->minimizeValue(untouched), 7);
}

// Hits

TEST_F(CChartTradeObjectTest, IsHitWithinFivePixelsOfTheCostLine)
{
    createLine(R"({"costprice":"12.5"})");
    const double y = axis.yOf(12.5);
    EXPECT_EQ(overlay->hitTest(-1000, y), 0) << "x does not matter";
    EXPECT_EQ(overlay->hitTest(0, y - 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, y + 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, y - 5.01), -1);
    EXPECT_EQ(overlay->hitTest(0, y + 5.01), -1);
}

TEST_F(CChartTradeObjectTest, IsNotHitWithoutACost)
{
    createLine("");
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(12.5)), -1);
    EXPECT_EQ(overlay->hitTest(0, nan), -1);
}

TEST_F(CChartTradeObjectTest, IsNotHitWithoutACostWhateverPixelTheHostGivesIt)
{
    createLine("");
    axis.pixelOf = [](double) { return 0.0; };
    axis.pricesAsked.clear();
    EXPECT_EQ(overlay->hitTest(0, 0.0), -1);
    EXPECT_THAT(axis.pricesAsked, SizeIs(1));
}

TEST_F(CChartTradeObjectTest, IsHitAnywhereBetweenTheEndsOfAMarkedBar)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    EXPECT_EQ(overlay->hitTest(4.9, axis.yOf(10.99)), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(9.01)), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(11)), -1) << "the ends do not belong to it";
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(9)), -1);
    EXPECT_EQ(overlay->hitTest(10, axis.yOf(10)), -1) << "a bar without markers";
}

class CChartTradeObjectHit : public CChartTradeObjectMarks
{
};

TEST_P(CChartTradeObjectHit, CountsOnEveryKindOfMarker)
{
    createMarkers();
    hearHistory(GetParam().rows);
    recalc();
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CChartTradeObjectHit,
                         ::testing::Values(Standing{"BuyAbove", {buy(11)}, ""},
                                           Standing{"BuyBelow", {buy(9)}, ""},
                                           Standing{"SellAbove", {sell(11)}, ""},
                                           Standing{"SellBelow", {sell(9)}, ""}),
                         ByName());

TEST_F(CChartTradeObjectTest, IsHitOnAMarkerOfBothSides)
{
    for (const int style : {4, 5}) {
        createMarkers();
        mark(style, 1);
        EXPECT_EQ(overlay->hitTest(10, axis.yOf(10)), 0) << style;
        EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1) << style;
    }
}

TEST_F(CChartTradeObjectTest, IsHitOnTheMarksThatStayWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    calc(shanghai, {}, 4);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), 0);
}

TEST_F(CChartTradeObjectTest, IsNotHitOnABarWithAnEndThatIsNoNumber)
{
    createMarkers();
    hearHistory({buy(10)});
    for (const Korvane::AnalyData &bar : {makeDayBar(20240102, nan, 11), makeDayBar(20240102, 9, nan)}) {
        calc(shanghai, {bar}, 4);
        EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    }
}

TEST_F(CChartTradeObjectTest, AsksTheHostForTheEndsOfTheBarUnderThePointer)
{
    createMarkers();
    axis.hostCalls = 0;
    overlay->hitTest(20, 0);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(13, 7));
    EXPECT_EQ(axis.hostCalls, 3) << "and xToBar";
}

TEST_F(CChartTradeObjectTest, AsksTheHostForTheHeightOfTheLine)
{
    createLine(R"({"costprice":"12.5"})");
    axis.hostCalls = 0;
    overlay->hitTest(20, 0);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(12.5));
    EXPECT_EQ(axis.hostCalls, 2) << "and xToBar";
}

class CChartTradeObjectIndex : public CChartTradeObjectTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(CChartTradeObjectIndex, OutsideTheBarsHitsAndListsNothing)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.barUnder = [](double) { return GetParam(); };
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(10)), -1);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.barsAsked, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Indices, CChartTradeObjectIndex, ::testing::Values(-1, 3, INT_MAX, INT_MIN));

TEST_F(CChartTradeObjectTest, ListsNothingOnTheMarksThatStayWithoutBars)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    calc(shanghai, {}, 4);
    overlay->handleMousePress(0, axis.yOf(10.5));
    EXPECT_THAT(axis.popups, IsEmpty());
}

// The list

TEST_F(CChartTradeObjectTest, ListsTheTradesOnTheClickedPartOfTheBar)
{
    createMarkers();
    hearHistory({buy(10), buy(9.994, 200), buy(11), buy(9)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "10.00"), line("买入", "11.00")}));
    EXPECT_EQ(listAt(0, 9.5, 2), (QStringList{line("买入", "9.99", "200"), line("买入", "9.00")}));
    EXPECT_EQ(listAt(0, 10, 2), (QStringList{line("买入", "9.99", "200"), line("买入", "9.00")}))
        << "the close itself counts as below";
}

TEST_F(CChartTradeObjectTest, ListsOneSideOfABarWhoseSidesStandApart)
{
    createMarkers();
    hearHistory({sell(11), buy(12), sell(8), buy(9), sell(7)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "12.00")}) << "the buy marker comes first";
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("买入", "9.00")});
}

TEST_F(CChartTradeObjectTest, ListsBothSidesOnThePartOfTheBarWhereTheirMarkerStands)
{
    createMarkers();
    hearHistory({sell(11), buy(12), sell(8), buy(9)});
    recalc();
    mark(4, 0);
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("卖出", "11.00"), line("买入", "12.00")}));
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("买入", "9.00")}) << "still apart";
    recalc();
    mark(5, 0);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "12.00")}) << "calcIt has parted them";
    EXPECT_EQ(listAt(0, 9.5, 2), (QStringList{line("卖出", "8.00"), line("买入", "9.00")}));
}

TEST_F(CChartTradeObjectTest, ListsNothingForTradesOutsideTheTimeOfTheBar)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0], threeDays[1]}, 4);
    for (const int bar : {0, 2}) {
        mark(4, static_cast<std::size_t>(bar));
        EXPECT_THAT(listAt(bar, 10.5, 1), IsEmpty()) << bar;
    }
    EXPECT_THAT(axis.barsAsked, ElementsAre(0, 2));
}

TEST_F(CChartTradeObjectTest, ListsNothingAsACostLine)
{
    createLine(R"({"costprice":"12.5"})");
    hearHistory({buy(10)});
    recalc();
    listAt(1, 10.5, 1);
    EXPECT_THAT(axis.barsAsked, ElementsAre(1)) << "the host is asked all the same";
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ListsSells)
{
    createMarkers();
    hearHistory({sell(11), sell(9)});
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("卖出", "11.00")});
    EXPECT_EQ(listAt(0, 9.5, 1), QStringList{line("卖出", "9.00")});
}

TEST_F(CChartTradeObjectTest, ShowsNoListOnTheOtherPartOfTheBar)
{
    createMarkers();
    hearHistory({buy(9)});
    recalc();
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsNoListOnABarWithoutMarkers)
{
    createMarkers();
    hearHistory({buy(9)});
    recalc();
    listAt(1, 9.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsNoListWhenTheHostsCloseLeavesNoTradeOnThePart)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.bars[0].close = 50.0; // the bar has moved since it was handed over
    listAt(0, 51, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsNoListForACloseThatIsNoNumber)
{
    createMarkers();
    hearHistory({buy(10), buy(9)});
    recalc();
    axis.bars[0].close = nan;
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsNoListForABarThatTheHostDoesNotHave)
{
    createMarkers();
    hearHistory({buy(10), buy(9)});
    recalc();
    axis.bars.clear();
    listAt(0, 10.5, 1);
    listAt(0, 9.5, 1);
    EXPECT_THAT(axis.barsAsked, ElementsAre(0, 0));
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ShowsNoListWhenTheHostTakesTheBarsAwayMeanwhile)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onBarAt = [this] { overlay->calcIt(shanghai, nullptr, 0, Korvane::DayPeriod, 0, 0); };
    listAt(0, 10.5, 1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(CChartTradeObjectTest, ListsTheTradesBetweenTheEndsOfTheBarBeforeAndItsOwn)
{
    createMarkers();
    hearHistory({buy(10)});
    const auto beforeAllTime = static_cast<std::uint32_t>(-5);
    calc(shanghai, {makeDayBar(beforeAllTime), threeDays[0]}, 4);
    EXPECT_EQ(listAt(1, 10.5, 1), QStringList{line("买入", "10.00")});
}

TEST_F(CChartTradeObjectTest, ListsTheTradesOnAPeriodOfNeitherKind)
{
    createMarkers();
    hearHistory({buy(10)});
    calc(shanghai, threeDays, 8);
    EXPECT_EQ(listAt(0, 10.5, 1), QStringList{line("买入", "10.00")});
}

TEST_F(CChartTradeObjectTest, AsksTheHostForTheClickedBar)
{
    createMarkers();
    axis.hostCalls = 0;
    overlay->handleMousePress(20, 0);
    EXPECT_THAT(axis.barsAsked, ElementsAre(2));
    EXPECT_EQ(axis.hostCalls, 2) << "xToBar and priceToY";
}

TEST_F(CChartTradeObjectTest, ListsMoreTradesThanItMakesRoomFor)
{
    createMarkers();
    QJsonArray rows;
    for (int row = 0; row < 250; ++row) {
        rows.append(buy(10));
    }
    hearHistory(rows);
    recalc();
    EXPECT_THAT(listAt(0, 10.5, 250), SizeIs(250));
}

TEST_F(CChartTradeObjectTest, ListsAbsurdNumbersWhole)
{
    createMarkers();
    hearHistory({buy(1e308, 1e308)});
    recalc();
    const QString number = QString::asprintf("%.0f", 1e308);
    EXPECT_EQ(listAt(0, 10.5, 1),
              QStringList{QStringLiteral("买入\t00:00:00\t成交价:%1.00\t成交量:%1").arg(number)});
}

TEST_F(CChartTradeObjectTest, EndsTheListWithItsLastLine)
{
#ifdef __SANITIZE_ADDRESS__
    createMarkers();
    hearHistory({buy(10), buy(11)});
    recalc();
    axis.onPopup = [this] {
        EXPECT_FALSE(__asan_address_is_poisoned(axis.popupArray + 1));
        EXPECT_TRUE(__asan_address_is_poisoned(axis.popupArray + 2)) << "nothing follows, no null either";
        return -1;
    };
    EXPECT_THAT(listAt(0, 10.5, 2), SizeIs(2));
#else
    GTEST_SKIP() << "only AddressSanitizer sees the end of an array";
#endif
}

TEST_F(CChartTradeObjectTest, TellsTheLengthOfTheListThatIsShown)
{
    createMarkers();
    hearHistory({buy(10), buy(11), buy(9)});
    recalc();
    std::vector<int> lengths;
    axis.onPopup = [&] {
        lengths.push_back(overlay->property("popupLineCount").toInt());
        return -1;
    };
    listAt(0, 10.5, 2);
    listAt(0, 9.5, 1);
    EXPECT_THAT(lengths, ElementsAre(2, 1));
}

TEST_F(CChartTradeObjectTest, TellsTheLengthOfAListThatIsShownInsideAnother)
{
    createMarkers();
    hearHistory({buy(10), buy(11), buy(9)});
    recalc();
    std::vector<int> lengths;
    axis.onPopup = [&] {
        lengths.push_back(overlay->property("popupLineCount").toInt());
        if (lengths.size() == 1) {
            axis.expectLines = 1;
            overlay->handleMousePress(0, axis.yOf(9.5));
        }
        return -1;
    };
    listAt(0, 10.5, 2);
    EXPECT_THAT(lengths, ElementsAre(2, 1)) << "each as its list opens";
}

TEST_F(CChartTradeObjectTest, IgnoresTheOtherMouseOperationsAndWhatIsChosen)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onPopup = [] { return 0; };
    EXPECT_THAT(listAt(0, 10.5, 1), SizeIs(1));
    axis.popups.clear();
    axis.hostCalls = 0;
    const double y = axis.yOf(10.5);
    overlay->handleMousePressR(0, y);
    overlay->handleMouseRelease(0, y);
    overlay->handleMouseReleaseR(0, y);
    overlay->handleMouseMove(0, y);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
    EXPECT_THAT(questions(), IsEmpty());
}

// A host that ends the object inside a call

TEST_F(CChartTradeObjectTest, IsDestroyedByTheHostInsideThePopup)
{
    createMarkers();
    hearHistory({buy(10)});
    recalc();
    axis.onPopup = [this] {
        destroy();
        return 0;
    };
    listAt(0, 10.5, 1);
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectTest, IsDestroyedByTheHostWhileTheHistoryQuestionGoesOut)
{
    create(tradeMarkers);
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectTest, IsDestroyedByAnEventWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &) {
        destroy();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectTest, IsDestroyedByAnEventWhileItWaitsForTodaysTrades)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        destroy();
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectTest, IsDestroyedInsideANotificationThatComesWhileItWaits)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        requests().size() < 5 ? hearNotification() : destroy();
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    EXPECT_THAT(requests(), SizeIs(5));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(CChartTradeObjectTest, IsDestroyedInsideANotificationThatComesWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &request) {
        request.payload.contains("TodayTrade") ? destroy() : hearNotification();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(bus().endPointCount(), 0);
}

// A bus client that lets messages and the host in while it waits

TEST_F(CChartTradeObjectTest, HearsANotificationWhileItWaitsForTheCost)
{
    create(costLine);
    bus().answerRequest = [](const RecordedBus::Message &request) {
        if (request.payload.contains("TodayTrade")) {
            return todaysAnswer({buy(10)});
        }
        hearNotification();
        return QByteArray(R"({"costprice":"12.5"})");
    };
    recalc();
    EXPECT_THAT(requests(), SizeIs(2));
    EXPECT_EQ(drawnCost(), 12.5);
}

TEST_F(CChartTradeObjectTest, AddsTheInnerAnswerFirstWhenNotificationsCrossWithItsWaits)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        const double price = 10.0 + static_cast<double>(requests().size());
        if (requests().size() < 3) {
            hearNotification();
        }
        return todaysAnswer({buy(price)});
    };
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 3),
              (QStringList{line("买入", "13.00"), line("买入", "12.00"), line("买入", "11.00")}));
}

TEST_F(CChartTradeObjectTest, ReplacesItsTradesByPastOnesWhileItWaitsForTodays)
{
    createMarkers();
    hearHistory({buy(11)});
    bus().answerRequest = [](const RecordedBus::Message &) {
        hearHistory({buy(12)});
        return todaysAnswer({buy(13)});
    };
    hearNotification();
    recalc();
    EXPECT_EQ(listAt(0, 10.5, 2), (QStringList{line("买入", "12.00"), line("买入", "13.00")}));
}

TEST_F(CChartTradeObjectTest, DropsTheCostOfASecurityThatWasLeftWhileItWaited)
{
    create(costLine);
    bus().answerRequest = [this](const RecordedBus::Message &request) {
        if (request.payload.contains("000001")) {
            return QByteArray(R"({"costprice":"2.5"})");
        }
        calc(shenzhen, threeDays, 4);
        return QByteArray(R"({"costprice":"12.5"})");
    };
    recalc();
    EXPECT_EQ(drawnCost(), 2.5);
}

TEST_F(CChartTradeObjectTest, DropsTodaysTradesOfASecurityThatWasLeftWhileItWaited)
{
    createMarkers();
    bus().answerRequest = [this](const RecordedBus::Message &) {
        calc(shenzhen, threeDays, 4);
        return todaysAnswer({buy(10)});
    };
    hearNotification();
    calc(shenzhen, threeDays, 4);
    EXPECT_EQ(drawn(), "- - -");
}

TEST_F(CChartTradeObjectTest, TakesOtherBarsWhileTheHistoryQuestionGoesOut)
{
    createMarkers();
    hearHistory({buy(10)});
    bool isNested = false;
    bus().duringSend = [&] {
        if (!isNested) {
            isNested = true;
            overlay->calcIt(shanghai, threeDays.data(), 1, Korvane::DayPeriod, 0, 0);
        }
    };
    calc(shanghai, {makeDayBar(20240105), makeDayBar(20240108), makeDayBar(20240109)}, 4);
    EXPECT_TRUE(isNested);
    EXPECT_EQ(drawn(), "0 - -");
}

} // namespace
