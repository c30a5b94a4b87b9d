#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/PositionCost.h"

#include <cfloat>
#include <cmath>
#include <limits>

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class PositionCostTest : public OverlayTest<PositionCost>
{
protected:
    const std::vector<Korvane::AnalyData> threeDays = {makeDayBar(20240102), makeDayBar(20240103),
                                                       makeDayBar(20240104)};

    static QJsonObject answer(const QJsonObject &data, const QString &cmd = QStringLiteral("HolderCostPrice"))
    {
        return {{QStringLiteral("cmd"), cmd}, {QStringLiteral("data"), data}};
    }

    static QJsonObject holding(const char *code, const char *market, const QJsonValue &costPrice)
    {
        return {{QStringLiteral("stkcode"), QLatin1String(code)},
                {QStringLiteral("market"), QLatin1String(market)},
                {QStringLiteral("costprice"), costPrice}};
    }

    static void hearCost(const QString &text)
    {
        hear(Topic::TRADEQUERY, answer(holding("600536", "1", text)));
    }

    static void hearThatNothingIsHeld()
    {
        hear(Topic::TRADEQUERY, answer({{QStringLiteral("stkcode"), QStringLiteral("600536")},
                                        {QStringLiteral("market"), QStringLiteral("1")}}));
    }

    /// The cost that is drawn now; none when no line is.
    std::optional<double> drawnCost()
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::LineSeries && !call.values.empty()) {
                return call.values.front();
            }
        }
        return std::nullopt;
    }

    /// An object that shows 600536 on three daily bars and has asked for its cost.
    void createOnShanghai()
    {
        create();
        calc(shanghai, threeDays, 4);
    }
};

// Set-up and end

TEST_F(PositionCostTest, AsksNothingWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(PositionCostTest, HearsNothingMoreWhileItIsDestroyed)
{
    createOnShanghai();
    bus().duringDisconnect = [] { hearCost(QStringLiteral("50")); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(PositionCostTest, IsRecomputedAndPaintedInsideARepaintRequest)
{
    createOnShanghai();
    std::optional<double> drawn;
    axis.onUpdate = [&] {
        calc(shanghai, threeDays, 4);
        drawn = drawnCost();
    };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawn, 50.0);
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(PositionCostTest, TurnsToAnotherSecurityInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { calc(shenzhen, threeDays, 4); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(PositionCostTest, IsEndedInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(timer(), nullptr);
}

TEST_F(PositionCostTest, IsDestroyedByTheHostInsideARepaintRequest)
{
    createOnShanghai();
    axis.onUpdate = [this] { destroy(); };
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(bus().endPointCount(), 0);
}

// Asking

TEST_F(PositionCostTest, AsksForTheCostAtOnceWhenASecurityComes)
{
    createOnShanghai();
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload,
              R"({"cmd":"HolderCostPrice","market":"SH","screenId":"screen-1","stkcode":"600536"})");
}

TEST_F(PositionCostTest, AsksAgainOnlyForAnotherIdentityWord)
{
    createOnShanghai();
    calc(shanghai, threeDays, 4);
    calc(makeSecurity(0, "000001", 7001), threeDays, 4);
    EXPECT_THAT(questions(), SizeIs(1)) << "code and market alone do not make another security";
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0) << "nor are they taken over";
    calc(shenzhen, threeDays, 4);
    EXPECT_EQ(questions().back(),
              R"({"cmd":"HolderCostPrice","market":"SZ","screenId":"screen-1","stkcode":"000001"})");
}

TEST_F(PositionCostTest, TakesTheSameCodeUnderAnotherIdentityWordForAnotherSecurity)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(makeSecurity(1, "600536", 7009), threeDays, 4);
    EXPECT_EQ(drawnCost(), std::nullopt);
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(questions()[1], questions()[0]);
}

TEST_F(PositionCostTest, AsksNothingWhileTheMarketNumberIsMinusOne)
{
    create();
    calc(makeSecurity(-1, "600536", 9), threeDays, 4);
    overlay->sendQueryPositionCostReq();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(PositionCostTest, ForgetsTheSecurityBeforeWhenTheNextOneHasNoMarketNumber)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(makeSecurity(-1, "", 9), threeDays, 4);
    overlay->sendQueryPositionCostReq();
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(PositionCostTest, TakesAnIdentityWordOfZeroForNoSecurityYet)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeDays, 4));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(PositionCostTest, TakesAMissingScreenIdAsAnEmptyOne)
{
    axis.hasScreenId = false;
    createOnShanghai();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"HolderCostPrice","market":"SH","screenId":"","stkcode":"600536"})"));
}

TEST_F(PositionCostTest, AsksWithAnEmptyMarketForANumberWithoutACode)
{
    create();
    for (const int market : {12, -2}) {
        bus().sent.clear();
        calc(makeSecurity(market, "X", market), threeDays, 4);
        EXPECT_THAT(
            questions(),
            ElementsAre(R"({"cmd":"HolderCostPrice","market":"","screenId":"screen-1","stkcode":"X"})"))
            << market;
    }
}

TEST_F(PositionCostTest, SendsTheScreenIdAsUtf8)
{
    axis.screen = "屏幕 1";
    createOnShanghai();
    EXPECT_EQ(
        QJsonDocument::fromJson(questions().at(0)).object().value(QStringLiteral("screenId")).toString(),
        QStringLiteral("屏幕 1"));
    EXPECT_TRUE(bus().operations.contains(QStringLiteral("subscribe list 屏幕 1 TradeNotify,TradeQuery")));
}

TEST_F(PositionCostTest, ReadsACodeWithoutItsEndNoFurtherThanTheRecord)
{
    Korvane::tagCodeWithName security = shanghai;
    std::fill(std::begin(security.code), std::end(security.code), '6');
    create();
    calc(security, threeDays, 4);
    EXPECT_EQ(QJsonDocument::fromJson(questions().at(0))
                  .object()
                  .value(QStringLiteral("stkcode"))
                  .toString()
                  .size(),
              static_cast<int>(sizeof security.code));
}

TEST_F(PositionCostTest, LogsWhatItSent)
{
    const LogCapture log;
    axis.screen = "屏幕 1";
    createOnShanghai();
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(QStringLiteral(
            R"(send sendQueryPositionCostReq: "{\"cmd\":\"HolderCostPrice\",\"market\":\"SH\",\"screenId\":\"屏幕 1\",\"stkcode\":\"600536\"}")")));
}

TEST_F(PositionCostTest, KeepsSilentWhenTheBusRefusesTheQuestion)
{
    const LogCapture log;
    bus().takesMessages = false;
    create();
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_THAT(log.all(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(PositionCostTest, AsksAgainAfterARefusalOnlyWhenTheTimerEnds)
{
    bus().takesMessages = false;
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, 4);
    bus().takesMessages = true;
    calc(shanghai, threeDays, 4);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(waitUntil([] { return questions().size() == 1; }));
}

TEST_F(PositionCostTest, AsksOncePerCalcItWhenTheTimerEnds)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, 4);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 2; }));
    EXPECT_FALSE(timer()->isActive()) << "nobody has redrawn since";
    calc(shanghai, threeDays, 4);
    EXPECT_THAT(questions(), SizeIs(2));
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(waitUntil([] { return questions().size() == 3; }));
}

TEST_F(PositionCostTest, LetsARunningTimerRun)
{
    createOnShanghai();
    const int left = timer()->remainingTime();
    ASSERT_TRUE(waitUntil([&] { return timer()->remainingTime() < left - 20; }));
    const int leftNow = timer()->remainingTime();
    calc(shanghai, threeDays, 4);
    calc(shenzhen, threeDays, 4);
    EXPECT_LE(timer()->remainingTime(), leftNow);
}

TEST_F(PositionCostTest, LeavesItsTimerToTheRedrawsOfTheHostWhenAnAnswerComes)
{
    createOnShanghai();
    for (const auto &hearAnswer : {+[] { hearCost(QStringLiteral("50")); }, &hearThatNothingIsHeld}) {
        timer()->stop();
        hearAnswer();
        EXPECT_FALSE(timer()->isActive());
        timer()->start(3600000);
        hearAnswer();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 3600000);
    }
}

// Answers

TEST_F(PositionCostTest, TakesTheCostAndAsksTheHostToRepaintIt)
{
    createOnShanghai();
    hearCost(QStringLiteral("50.125"));
    EXPECT_EQ(drawnCost(), 50.125);
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_F(PositionCostTest, AsksForARepaintAfterEveryAnswerAlsoOneThatSaysTheSame)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    hearCost(QStringLiteral("50"));
    EXPECT_THAT(axis.updated, SizeIs(2));
}

class PositionCostIgnores : public PositionCostTest, public ::testing::WithParamInterface<Ignored>
{
};

TEST_P(PositionCostIgnores, AndKeepsItsCost)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.updated.clear();
    const LogCapture log;
    hear(GetParam().topic, QByteArray(GetParam().payload));
    EXPECT_EQ(drawnCost(), 50.0);
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(questions(), SizeIs(1)) << "that of calcIt";
    EXPECT_THAT(log.all(), IsEmpty());
}

#define COST_DATA(market, code)                                                                              \
    "\"data\":{\"stkcode\":\"" code "\",\"market\":\"" market "\",\"costprice\":\"60\"}}"

INSTANTIATE_TEST_SUITE_P(
    Messages, PositionCostIgnores,
    ::testing::Values(
        Ignored{"OfAnotherTopic", "TradeNotify", R"({"cmd":"HolderCostPrice",)" COST_DATA("1", "600536")},
        Ignored{"ThatNotifyOfATrade", "TradeNotify", R"({"stkcode":"600536","market":"1"})"},
        Ignored{"OfALongerTopic", "TradeQuery2", R"({"cmd":"HolderCostPrice",)" COST_DATA("1", "600536")},
        Ignored{"OfATopicInOtherCase", "tradequery", R"({"cmd":"HolderCostPrice",)" COST_DATA("1", "600536")},
        Ignored{"WithAnotherCommand", "TradeQuery", R"({"cmd":"TodayTrade",)" COST_DATA("1", "600536")},
        Ignored{"WithTheCommandInOtherCase", "TradeQuery",
                R"({"cmd":"holdercostprice",)" COST_DATA("1", "600536")},
        Ignored{"WithoutACommand", "TradeQuery", "{" COST_DATA("1", "600536")},
        Ignored{"WithTheCommandAsANumber", "TradeQuery", R"({"cmd":1,)" COST_DATA("1", "600536")},
        Ignored{"WhoseDataIsAText", "TradeQuery", R"({"cmd":"HolderCostPrice","data":"600536"})"},
        Ignored{"ThatAreAnEmptyObject", "TradeQuery", "{}"}, Ignored{"ThatAreAnArray", "TradeQuery", "[]"},
        Ignored{"ThatAreNoJson", "TradeQuery", "{\"cmd\":\"HolderCostPrice\","},
        Ignored{"ThatAreEmpty", "TradeQuery", ""},
        Ignored{"OfAnotherSecurity", "TradeQuery", R"({"cmd":"HolderCostPrice",)" COST_DATA("1", "600519")},
        Ignored{"OfAnotherMarket", "TradeQuery", R"({"cmd":"HolderCostPrice",)" COST_DATA("2", "600536")},
        Ignored{"WithTheHostsMarketNumber", "TradeQuery",
                R"({"cmd":"HolderCostPrice",)" COST_DATA("0", "600536")},
        Ignored{"WithAMarketCode", "TradeQuery", R"({"cmd":"HolderCostPrice",)" COST_DATA("SH", "600536")},
        Ignored{"WithTheMarketAsANumber", "TradeQuery",
                R"({"cmd":"HolderCostPrice","data":{"stkcode":"600536","market":1,"costprice":"60"}})"},
        Ignored{"WithTheCodeAsANumber", "TradeQuery",
                R"({"cmd":"HolderCostPrice","data":{"stkcode":600536,"market":"1","costprice":"60"}})"},
        Ignored{"WhoseDataIsAnArray", "TradeQuery",
                R"({"cmd":"HolderCostPrice","data":[{"stkcode":"600536","market":"1","costprice":"60"}]})"},
        Ignored{"WithoutData", "TradeQuery",
                R"({"cmd":"HolderCostPrice","stkcode":"600536","market":"1","costprice":"60"})"}),
    ByName());

TEST_F(PositionCostTest, TakesAnAnswerWhateverStandsBesideItsData)
{
    createOnShanghai();
    QJsonObject odd = answer(holding("600536", "1", QStringLiteral("50")));
    odd.insert(QStringLiteral("stkcode"), QStringLiteral("000001"));
    odd.insert(QStringLiteral("market"), QStringLiteral("2"));
    odd.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    odd.insert(QStringLiteral("success"), false);
    odd.insert(QStringLiteral("errcode"), 5);
    hear(Topic::TRADEQUERY, odd);
    EXPECT_EQ(drawnCost(), 50.0);
}

struct MarketMatch
{
    const char *name;
    int hostMarket;
    const char *answerMarket;
    bool matches;
};

class PositionCostMarket : public PositionCostTest, public ::testing::WithParamInterface<MarketMatch>
{
};

TEST_P(PositionCostMarket, IsNumberedDifferentlyByHostAndTradingModule)
{
    create();
    calc(makeSecurity(GetParam().hostMarket, "X1", 5), threeDays, 4);
    hear(Topic::TRADEQUERY, answer(holding("X1", GetParam().answerMarket, QStringLiteral("50"))));
    EXPECT_EQ(drawnCost().has_value(), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(Numbers, PositionCostMarket,
                         ::testing::Values(MarketMatch{"ShenzhenIsTwo", 0, "2", true},
                                           MarketMatch{"ShenzhenIsNotZero", 0, "0", false},
                                           MarketMatch{"ShenzhenIsNotOne", 0, "1", false},
                                           MarketMatch{"ShanghaiIsOne", 1, "1", true},
                                           MarketMatch{"ShanghaiIsNotTwo", 1, "2", false},
                                           MarketMatch{"ShanghaiIsOneAfterSixteenBits", 1, "65537", true},
                                           MarketMatch{"ShanghaiIsOneBelowZeroToo", 1, "-65535", true},
                                           MarketMatch{"HexadecimalIsNone", 1, "0x1", false},
                                           MarketMatch{"ANumberBeyondAllRangeIsNone", 1, "99999999999",
                                                       false},
                                           MarketMatch{"HongKongHasNone", 2, "2", false},
                                           MarketMatch{"AMarketWithoutCodeNeverMatches", 12, "0", false}),
                         ByName());

TEST_F(PositionCostTest, IgnoresAnswersBeforeASecurityCame)
{
    create();
    hear(Topic::TRADEQUERY, answer(holding("", "0", QStringLiteral("50"))));
    hearCost(QStringLiteral("50"));
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), -1);
}

TEST_F(PositionCostTest, ComparesCodesWithoutRegardToLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, 4);
    hear(Topic::TRADEQUERY, answer(holding("ABc1", "1", QStringLiteral("50"))));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, ForgetsTheCostWithoutARepaintWhenNothingIsHeld)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.updated.clear();
    hearThatNothingIsHeld();
    EXPECT_EQ(drawnCost(), std::nullopt);
    EXPECT_THAT(axis.updated, IsEmpty());
}

struct CostText
{
    const char *name;
    QJsonValue sent;
    std::optional<double> drawn;
};

class PositionCostReads : public PositionCostTest, public ::testing::WithParamInterface<CostText>
{
};

TEST_P(PositionCostReads, FromTheAnswer)
{
    createOnShanghai();
    hear(Topic::TRADEQUERY, answer(holding("600536", "1", GetParam().sent)));
    EXPECT_EQ(drawnCost(), GetParam().drawn);
    EXPECT_THAT(axis.updated, SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    Costs, PositionCostReads,
    ::testing::Values(CostText{"ADecimalText", QStringLiteral("12.345"), 12.345},
                      CostText{"AJsonNumberAsZero", 12.345, 0.0}, CostText{"NullAsZero", QJsonValue(), 0.0},
                      CostText{"WordsAsZero", QStringLiteral("none"), 0.0},
                      CostText{"NanAsNoLine", QStringLiteral("nan"), std::nullopt},
                      CostText{"InfinityAsNoLine", QStringLiteral("inf"), std::nullopt},
                      CostText{"AnAbsurdNumberAsNoLine", QStringLiteral("1e999"), std::nullopt}),
    ByName());

TEST_F(PositionCostTest, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearCost(QStringLiteral("50"));
    };
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, ShowsTheSecurityThatTheHostTurnsToWhileTheQuestionGoesOut)
{
    create();
    bus().duringSend = [this] {
        if (questions().size() == 1) {
            calc(shenzhen, std::vector<Korvane::AnalyData>(100, makeDayBar(20240102)), 4);
        }
    };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    hear(Topic::TRADEQUERY, answer(holding("000001", "2", QStringLiteral("50"))));
    EXPECT_EQ(drawnCost(), 50.0);
    EXPECT_THAT(painter.calls[0].values, Each(50.0)) << "over all of its bars";
}

TEST_F(PositionCostTest, IsDestroyedByTheHostWhileTheQuestionGoesOut)
{
    create();
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(PositionCostTest, BelongsToTheParentItIsGiven)
{
    QObject parent;
    auto *child = new PositionCost(axis, {}, &parent);
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "the bus client has no parent";
}

TEST_F(PositionCostTest, ForgetsTheCostWithTheSecurity)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shenzhen, threeDays, 4);
    EXPECT_EQ(drawnCost(), std::nullopt);
    hearCost(QStringLiteral("51"));
    EXPECT_EQ(drawnCost(), std::nullopt) << "a late answer for the security before";
}

TEST_F(PositionCostTest, KeepsTheCostWhenOnlyTheBarsChange)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shanghai, {makeDayBar(20240105)}, 5);
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, KeepsTheCostWhileItAsksAgain)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    overlay->sendQueryPositionCostReq();
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(drawnCost(), 50.0);
}

// Painting

TEST_F(PositionCostTest, DrawsOverAsManyBarsAsTheChartHasNow)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    calc(shanghai, std::vector<Korvane::AnalyData>(100, makeDayBar(20240102)), 4);
    paint();
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_THAT(painter.calls[0].values, AllOf(SizeIs(100), Each(50.0)));
    EXPECT_THAT(painter.calls[1].values, AllOf(SizeIs(100), Each(50.0)));
    calc(shanghai, {}, 4);
    paint();
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, DrawsALineOverAllBarsThenItsLabelThenEnds)
{
    createOnShanghai();
    hearCost(QStringLiteral("50.1236"));
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::LineSeries);
    EXPECT_THAT(painter.calls[0].values, ElementsAre(50.1236, 50.1236, 50.1236));
    EXPECT_THAT(painter.calls[0].ints, ElementsAre(0));
    EXPECT_EQ(painter.calls[0].number, 1.0);
    EXPECT_EQ(painter.calls[1].kind, FakePainter::Call::SeriesLabel);
    EXPECT_THAT(painter.calls[1].values, ElementsAre(50.1236, 50.1236, 50.1236));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:50.124");
    EXPECT_THAT(painter.calls[1].ints, ElementsAre(-1));
    EXPECT_EQ(painter.calls[2].kind, FakePainter::Call::EndPaint);
}

TEST_F(PositionCostTest, CutsTheLabelOfAnAbsurdCostTo127Bytes)
{
    axis.high = DBL_MAX;
    createOnShanghai();
    hearCost(QStringLiteral("1e300"));
    paint();
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[1].text.size(), 127);
    EXPECT_TRUE(painter.calls[1].text.startsWith("持仓成本:1000000000000000052504760255204420248704468581"));
}

struct ScaleCase
{
    const char *name;
    double low;
    double high;
    bool drawn;
};

class PositionCostScale : public PositionCostTest, public ::testing::WithParamInterface<ScaleCase>
{
};

TEST_P(PositionCostScale, DecidesWhetherACostOfFiftyIsDrawn)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.low = GetParam().low;
    axis.high = GetParam().high;
    EXPECT_EQ(drawnCost().has_value(), GetParam().drawn);
    EXPECT_EQ(painter.calls.back().kind, FakePainter::Call::EndPaint);
}

INSTANTIATE_TEST_SUITE_P(Ranges, PositionCostScale,
                         ::testing::Values(ScaleCase{"Inside", 49, 51, true},
                                           ScaleCase{"ExactlyLow", 50, 51, true},
                                           ScaleCase{"ExactlyHigh", 49, 50, true},
                                           ScaleCase{"JustBelow", 50.0000001, 51, false},
                                           ScaleCase{"JustAbove", 49, 49.9999999, false}),
                         ByName());

TEST_F(PositionCostTest, OnlyEndsThePaintWithoutAPriceScale)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.hasPriceScale = false;
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(painter.calls[0].kind, FakePainter::Call::EndPaint);
}

TEST_F(PositionCostTest, OnlyEndsThePaintWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, 4));
    EXPECT_TRUE(timer()->isActive());
    hearCost(QStringLiteral("50"));
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(1));
}

TEST_F(PositionCostTest, OnlyEndsThePaintBeforeAnAnswer)
{
    createOnShanghai();
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(1));
}

TEST_F(PositionCostTest, IsDrawnOnMinutes)
{
    create();
    calc(shanghai, {makeMinuteBar(20240102, 930), makeMinuteBar(20240102, 931)}, 21);
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, DrawsACostOfWordsOnlyWhereZeroIsVisible)
{
    createOnShanghai();
    hearCost(QStringLiteral("none"));
    EXPECT_EQ(drawnCost(), 0.0);
    axis.low = 1.0;
    EXPECT_EQ(drawnCost(), std::nullopt);
}

TEST_F(PositionCostTest, DrawsTheCostBelowZeroOfAHoldingThatHasMoreThanPaidForItself)
{
    axis.low = -10.0;
    createOnShanghai();
    hearCost(QStringLiteral("-3.5"));
    EXPECT_EQ(drawnCost(), -3.5);
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_EQ(painter.calls[1].text, "持仓成本:-3.500");
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(-3.5)), 0);
}

TEST_F(PositionCostTest, IsDrawnOnAPeriodOfNeitherKind)
{
    create();
    calc(shanghai, threeDays, 8);
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), 50.0);
}

TEST_F(PositionCostTest, TakesImpossibleBarsAsNone)
{
    create();
    EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -1, Korvane::DayPeriod, 0, 0));
    EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 3, Korvane::DayPeriod, 0, 0));
    hearCost(QStringLiteral("50"));
    EXPECT_EQ(drawnCost(), std::nullopt);
}

// Scale and mouse

TEST_F(PositionCostTest, NeverWidensThePriceScale)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_FALSE(overlay->calcRatio(1, 2));
}

TEST_F(PositionCostTest, IsHitWithinFivePixelsOfTheLine)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    const double line = axis.yOf(50);
    EXPECT_EQ(overlay->hitTest(-1000, line), 0) << "x does not matter";
    EXPECT_EQ(overlay->hitTest(0, line - 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, line + 5.0), 0);
    EXPECT_EQ(overlay->hitTest(0, line - 5.01), -1);
    EXPECT_EQ(overlay->hitTest(0, line + 5.01), -1);
}

TEST_F(PositionCostTest, IsHitWhereTheLineIsNotDrawnJustNow)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.hasPriceScale = false;
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), 0);
}

TEST_F(PositionCostTest, IsNotHitWithoutACost)
{
    createOnShanghai();
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(50)), -1);
    EXPECT_EQ(overlay->hitTest(0, nan), -1);
    hearCost(QStringLiteral("50"));
    axis.pixelsPerUnit = nan;
    EXPECT_EQ(overlay->hitTest(0, 0), -1) << "a host without a scale";
}

TEST_F(PositionCostTest, AsksTheHostForThePixelOfAnUnknownCostToo)
{
    createOnShanghai();
    axis.pricesAsked.clear();
    EXPECT_EQ(overlay->hitTest(0, 0.0), -1);
    ASSERT_THAT(axis.pricesAsked, SizeIs(1));
    EXPECT_TRUE(std::isnan(axis.pricesAsked[0]));
    axis.pixelOf = [](double) { return 0.0; };
    EXPECT_EQ(overlay->hitTest(0, 0.0), 0) << "the host's answer decides";
}

TEST_F(PositionCostTest, IgnoresTheMouse)
{
    createOnShanghai();
    hearCost(QStringLiteral("50"));
    axis.updated.clear();
    axis.hostCalls = 0;
    overlay->handleMousePress(0, axis.yOf(50));
    overlay->handleMousePressR(0, axis.yOf(50));
    overlay->handleMouseRelease(0, axis.yOf(50));
    overlay->handleMouseReleaseR(0, axis.yOf(50));
    overlay->handleMouseMove(0, axis.yOf(50));
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.questions, IsEmpty());
    EXPECT_THAT(axis.messages, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
}

} // namespace
