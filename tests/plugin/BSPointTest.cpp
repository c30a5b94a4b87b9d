#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace TradeChart;

namespace {

class BSPointTest : public OverlayTest<BSPoint>
{
protected:
    const std::vector<Korvane::AnalyData> threeDays = {
        makeDayBar(20240102, 9, 11), makeDayBar(20240103, 10, 12), makeDayBar(20240104, 11, 13)};

    /// An object that shows 600536 on three daily bars; its question for them is forgotten.
    void createOnThreeDays()
    {
        create();
        ASSERT_TRUE(calc(shanghai, threeDays, 4));
        bus().sent.clear();
    }

    static void hearRows(const TradesAnswer &kind, const std::vector<SentTrade> &rows)
    {
        QJsonArray data;
        for (const SentTrade &row : rows) {
            data.append(row.in(kind));
        }
        hear(Topic::TRADEQUERY, sentAnswer(kind.name, data));
    }

    static void hearHistory(const std::vector<SentTrade> &rows) { hearRows(pastTrades, rows); }
    static void hearToday(const std::vector<SentTrade> &rows) { hearRows(todaysTrades, rows); }

    /// What is drawn on each bar: B, S, T for both, a blank for nothing, # for two markers.
    std::string drawn()
    {
        paint();
        std::string marks(painter.barCount, ' ');
        for (const FakePainter::Call &call : painter.calls) {
            for (std::size_t bar = 0; bar < painter.barCount; ++bar) {
                EXPECT_TRUE(call.values[bar] == 1.0 || std::isnan(call.values[bar]));
                if (call.values[bar] == 1.0) {
                    marks[bar] = marks[bar] == ' ' ? "B S T"[call.ints[1]] : '#';
                }
            }
        }
        return marks;
    }

    QStringList listOn(int bar)
    {
        axis.popups.clear();
        overlay->handleMousePress(bar * 10.0, 0);
        return axis.popups.empty() ? QStringList() : axis.popups.front();
    }

    double anchorY(double high) const { return axis.yOf(high); }
};

// Set-up and end

TEST_F(BSPointTest, StartsItsTimerAndAsksNothingWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(timer()->isSingleShot());
    EXPECT_EQ(timer()->interval(), 10000);
}

TEST_F(BSPointTest, BelongsToTheParentItIsGiven)
{
    QObject parent;
    auto *child = new BSPoint(axis, {}, &parent);
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "the bus client has no parent";
}

TEST_F(BSPointTest, HearsNothingMoreWhileItIsDestroyed)
{
    createOnThreeDays();
    bus().duringDisconnect = [] { hearHistory({{"B", "20240103", "9301500", "1", "1"}}); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

// Periods

class BSPointPeriod : public BSPointTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(BSPointPeriod, OtherThanTheDailyOneIsLeftAlone)
{
    create();
    EXPECT_FALSE(calc(shanghai, threeDays, GetParam()));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
    EXPECT_EQ(axis.hostCalls, 0);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_FALSE(overlay->isPaintItPeriod(static_cast<Korvane::Period>(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Periods, BSPointPeriod,
                         ::testing::Values(-1, 0, 1, 2, 3, 5, 6, 7, 8, 10, 11, 21, 22, 36));

TEST_F(BSPointTest, StartsNoTimerForAPeriodThatItRefuses)
{
    createOnThreeDays();
    timer()->stop();
    EXPECT_FALSE(calc(shanghai, threeDays, 5));
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(BSPointTest, PaintsOnTheDailyPeriodAlsoWithoutBars)
{
    EXPECT_TRUE(create().isPaintItPeriod(Korvane::DayPeriod));
    calc(shanghai, {}, 4);
    EXPECT_TRUE(paint());
    EXPECT_THAT(painter.calls, SizeIs(3));
}

TEST_F(BSPointTest, KeepsWhatItShowsWhenAnotherPeriodIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_FALSE(overlay->calcIt(shenzhen, nullptr, 0, Korvane::IntradayPeriod, 0, 0));
    EXPECT_EQ(drawn(), " B ");
    EXPECT_TRUE(timer()->isActive());
    EXPECT_THAT(listOn(1), SizeIs(1)) << "a click still finds its bar";
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_THAT(questions(), IsEmpty()) << "the security and the days are still known";
    EXPECT_EQ(drawn(), " B ");
}

// Asking for past trades

TEST_F(BSPointTest, AsksForTheShownDaysWhenBarsCome)
{
    create();
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(
        bus().sent[0].payload,
        R"({"cmd":"HistoryTrade","end":"20240104","market":"SH","screenId":"screen-1","start":"20240102","stkcode":"600536"})");
}

TEST_F(BSPointTest, AsksAgainOnlyWhenTheFirstOrLastDayChanges)
{
    createOnThreeDays();
    calc(shanghai, threeDays, 4);
    calc(shanghai, {threeDays.front(), threeDays.back()}, 4);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shanghai, {makeDayBar(20231229), threeDays.back()}, 4);
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240105)}, 4);
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_TRUE(questions()[0].contains(R"("end":"20240104")") &&
                questions()[0].contains(R"("start":"20231229")"));
    EXPECT_TRUE(questions()[1].contains(R"("end":"20240105")") &&
                questions()[1].contains(R"("start":"20231229")"));
}

TEST_F(BSPointTest, AsksNothingWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, 4));
    EXPECT_TRUE(overlay->calcIt(shanghai, nullptr, 5, Korvane::DayPeriod, 0, 0));
    EXPECT_TRUE(overlay->calcIt(shanghai, threeDays.data(), -5, Korvane::DayPeriod, 0, 0));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(BSPointTest, KeepsTheMarksWithoutBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(shanghai, {}, 4));
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240201), makeDayBar(20240202), makeDayBar(20240205)}, 4));
    EXPECT_EQ(drawn(), " B ") << "no calcIt has computed them anew";
}

TEST_F(BSPointTest, KeepsTheMarksWhenAnAnswerComesWhileThereAreNoBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(shanghai, {}, 4));
    hearToday({{"S", "20240102", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240201), makeDayBar(20240202), makeDayBar(20240205)}, 4));
    EXPECT_EQ(drawn(), " B ");
}

TEST_F(BSPointTest, NeverAsksForTodaysTradesFromCalcIt)
{
    create();
    calc(shanghai, threeDays, 4);
    calc(shanghai, {makeDayBar(20240105)}, 4);
    for (const QByteArray &question : questions()) {
        EXPECT_FALSE(question.contains("TodayTrade"));
    }
}

TEST_F(BSPointTest, ReportsARefusedQuestionAndDoesNotRepeatItForTheSameDays)
{
    const LogCapture log;
    create();
    timer()->stop();
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, threeDays, 4));
    EXPECT_TRUE(timer()->isActive());
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(BSPointTest, LeavesTheMarksWhenTheQuestionIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(
        calc(shanghai,
             {makeDayBar(20240103), makeDayBar(20240104), makeDayBar(20240105), makeDayBar(20240108)}, 4));
    EXPECT_EQ(drawn(), "B   ") << "the mark stays on its bar number; the new bar has none";
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(11, 11, 11, 11));
}

TEST_F(BSPointTest, StaysInsideItsMarksWhenTheFirstQuestionIsRefused)
{
    create();
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_EQ(overlay->hitTest(10, anchorY(12)), -1);
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), " B ");
}

// Change of security

TEST_F(BSPointTest, KeepsTheMarksOfTheSecurityBeforeWhileTheQuestionForTheNewOneIsRefused)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shenzhen, threeDays, 4));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
    EXPECT_EQ(drawn(), " B ");
    EXPECT_EQ(overlay->hitTest(10, anchorY(12)), 0);
    EXPECT_THAT(listOn(1), IsEmpty()) << "its trades are forgotten";
    bus().takesMessages = true;
    EXPECT_TRUE(calc(shenzhen, threeDays, 4));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(questions(), IsEmpty()) << "the days count as asked for";
}

TEST_F(BSPointTest, TakesTheSameCodeUnderAnotherIdentityWordForAnotherSecurity)
{
    create();
    calc(shanghai, threeDays, 4);
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    calc(makeSecurity(1, "600536", 7009), threeDays, 4);
    EXPECT_EQ(drawn(), "   ");
    ASSERT_THAT(questions(), SizeIs(2));
    EXPECT_EQ(questions()[1], questions()[0]);
}

TEST_F(BSPointTest, TakesAnIdentityWordOfZeroForNoSecurityYet)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeDays, 4));
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"20240104","market":"","screenId":"screen-1","start":"20240102","stkcode":""})"));
}

TEST_F(BSPointTest, TurnsToASecurityWithoutAMarketNumberToo)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(calc(makeSecurity(-1, "X", 9), threeDays, 4));
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"20240104","market":"","screenId":"screen-1","start":"20240102","stkcode":"X"})"));
}

TEST_F(BSPointTest, ForgetsTheTradesWithTheSecurity)
{
    createOnThreeDays();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    calc(shenzhen, threeDays, 4);
    EXPECT_EQ(drawn(), "   ");
    EXPECT_THAT(questions(), SizeIs(1)) << "the same days are asked for again";
    EXPECT_TRUE(questions()[0].contains(R"("stkcode":"000001")"));
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), "   ") << "a late answer for the security before";
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"S", "20240102", "9301500", "1", "1"}.in(pastTrades)}, "000001"));
    EXPECT_EQ(drawn(), "S  ");
    EXPECT_THAT(listOn(1), SizeIs(0));
}

TEST_F(BSPointTest, KnowsASecurityByItsIdentityWordOnly)
{
    createOnThreeDays();
    calc(makeSecurity(0, "000001", 7001), threeDays, 4);
    EXPECT_THAT(questions(), IsEmpty());
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_EQ(drawn(), " B ") << "the record that came first is kept";
}

TEST_F(BSPointTest, LetsARunningTimerRun)
{
    createOnThreeDays();
    timer()->setInterval(3600000);
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(timer()->interval(), 3600000);
    calc(shenzhen, threeDays, 4);
    EXPECT_EQ(timer()->interval(), 10000) << "stopped and started by the change of security";
}

TEST_F(BSPointTest, StopsItsTimerForANewSecurityWithoutBars)
{
    createOnThreeDays();
    calc(shenzhen, {}, 4);
    EXPECT_FALSE(timer()->isActive());
    calc(shenzhen, threeDays, 4);
    EXPECT_TRUE(timer()->isActive());
}

// Refresh

TEST_F(BSPointTest, AsksForTodaysTradesWhenTheTimerEnds)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, threeDays, 4);
    bus().sent.clear();
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(questions()[0],
              R"({"cmd":"TodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_FALSE(timer()->isActive()) << "a lost answer stops the refresh";
    calc(shanghai, threeDays, 4);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTest, RefreshesAsFastAsAnswersComeWithAnIntervalOfZero)
{
    create({{QStringLiteral("auto_refresh_time"), 0}});
    EXPECT_EQ(timer()->interval(), 0);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    calc(shanghai, threeDays, 4);
    ASSERT_TRUE(waitUntil([] { return questions().size() == 3; })) << "the history question, then today's";
    hearToday({});
    EXPECT_TRUE(waitUntil([] { return questions().size() == 4; }));
}

TEST_F(BSPointTest, RestartsItsTimerAfterTodaysAnswerAlsoAnEmptyOne)
{
    createOnThreeDays();
    for (const auto &rows :
         {std::vector<SentTrade>{}, std::vector<SentTrade>{{"B", "20240104", "9301500", "1", "2"}}}) {
        timer()->start(3600000);
        hearToday(rows);
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 10000);
    }
}

TEST_F(BSPointTest, RestartsItsTimerAfterAnEmptyHistoryAnswerOnly)
{
    createOnThreeDays();
    timer()->stop();
    hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
    EXPECT_FALSE(timer()->isActive());
    axis.updated.clear();
    timer()->start(3600000);
    hearHistory({});
    EXPECT_EQ(timer()->interval(), 10000);
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(BSPointTest, LetsARunningTimerRunAfterANotificationAndAfterPastTrades)
{
    createOnThreeDays();
    const std::function<void()> messages[] = {
        [] { hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); },
        [] {
            hearHistory({{"B", "20240103", "9301500", "10.5", "300"}});
        },
    };
    for (const auto &hearMessage : messages) {
        timer()->start(3600000);
        hearMessage();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 3600000);
    }
}

TEST_F(BSPointTest, RefreshesOnAfterARepaintInsideWhichTheHostStoppedItsTimer)
{
    createOnThreeDays();
    axis.onUpdate = [this] {
        calc(shenzhen, {}, 4);
        EXPECT_FALSE(timer()->isActive());
    };
    hearToday({{"B", "20240104", "9301500", "1", "2"}});
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTest, StartsItsTimerWithTheConfiguredIntervalEveryTime)
{
    create({{QStringLiteral("auto_refresh_time"), 7}});
    const std::function<void()> starts[] = {
        [this] {
            timer()->stop();
            calc(shanghai, threeDays, 4);
        },
        [this] { calc(shenzhen, threeDays, 4); },
        [this] { calc(shanghai, threeDays, 4); },
        [] { hearToday({}); },
        [] {
            hearToday({{"B", "20240104", "9301500", "1", "2"}});
        },
        [] { hearHistory({}); },
    };
    int start = 0;
    for (const auto &act : starts) {
        timer()->start(3600000);
        act();
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 7000) << "start " << start;
        ++start;
    }
}

TEST_F(BSPointTest, AsksForTodaysTradesAfterANotificationInAnyLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, 4);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1"})");
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(questions()[0].contains("TodayTrade"));
}

TEST_F(BSPointTest, AsksForTodaysTradesAfterANotificationWhateverMarketAndScreenItNames)
{
    createOnThreeDays();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"600536","market":"2","screenId":"another"})");
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"TodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})"));
}

TEST_F(BSPointTest, OnlyAsksForTodaysTradesAfterANotificationThatCarriesRows)
{
    createOnThreeDays();
    hear(Topic::TRADENOTIFY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"B", "20240102", "9301500", "1", "1"}.in(pastTrades)}));
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_EQ(drawn(), "   ");
}

TEST_F(BSPointTest, WaitsForTheAnswerBeforeItsTimerRunsAgain)
{
    createOnThreeDays();
    timer()->stop();
    hear(Topic::TRADENOTIFY, QByteArray(R"({"stkcode":"600536"})"));
    EXPECT_FALSE(timer()->isActive());
    hearToday({});
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(BSPointTest, TakesAnswersInAnyLetterCaseOfTheCode)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeDays, 4);
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{SentTrade{"B", "20240102", "9301500", "1", "1"}.in(pastTrades)}, "ABc1"));
    hear(Topic::TRADEQUERY,
         sentAnswer("TodayTrade",
                    QJsonArray{SentTrade{"S", "20240104", "9301500", "1", "1"}.in(todaysTrades)}, "aBC1"));
    EXPECT_EQ(drawn(), "B S");
}

TEST_F(BSPointTest, IgnoresAnEmptyNotificationBeforeASecurityIsShown)
{
    create();
    hear(Topic::TRADENOTIFY, QByteArray("{}"));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(BSPointTest, SendsTheHistoryQuestionAlsoBeforeASecurityIsShown)
{
    create();
    EXPECT_TRUE(overlay->sendQueryHistoryTradeInfoReq());
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->sendQueryHistoryTradeInfoReq());
    EXPECT_THAT(
        questions(),
        ElementsAre(
            R"({"cmd":"HistoryTrade","end":"-1","market":"","screenId":"screen-1","start":"-1","stkcode":""})"));
}

TEST_F(BSPointTest, ReportsEveryAnswerAsHandled)
{
    create();
    EXPECT_TRUE(overlay->handleQueryHistoryTradeInfoRes({}));
    EXPECT_TRUE(overlay->handleQueryTodayTradeInfoRes({}));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
    const SentTrade row{"B", "20240102", "9301500", "1", "1"};
    EXPECT_TRUE(overlay->handleQueryHistoryTradeInfoRes({row.in(pastTrades)}));
    EXPECT_TRUE(overlay->handleQueryTodayTradeInfoRes({row.in(todaysTrades)}));
    EXPECT_TRUE(overlay->calcBSPointPriceInfo());
}

TEST_F(BSPointTest, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearHistory({{"B", "20240103", "9301500", "1", "1"}});
    };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(drawn(), " B ");
}

TEST_F(BSPointTest, SendsTodaysQuestionAlsoBeforeASecurityIsShown)
{
    create().sendQueryTodayTradeInfoReq();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"TodayTrade","market":"","screenId":"screen-1","stkcode":""})"));
}

TEST_F(BSPointTest, HearsWhatNamesNoSecurityWhileItShowsNone)
{
    create();
    hear(Topic::TRADENOTIFY, QByteArray(R"({"x":"1"})"));
    EXPECT_THAT(questions(), SizeIs(1));
    timer()->stop();
    hear(Topic::TRADEQUERY, QByteArray(R"({"cmd":"TodayTrade","data":[]})"));
    EXPECT_TRUE(timer()->isActive());
    hear(Topic::TRADEQUERY, QByteArray(R"({"cmd":"HistoryTrade","data":[{"bsflag2":"B"}]})"));
    EXPECT_THAT(axis.updated, SizeIs(1));
}

class BSPointIgnores : public BSPointTest, public ::testing::WithParamInterface<Ignored>
{
};

TEST_P(BSPointIgnores, AndChangesNothing)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.updated.clear();
    timer()->stop();
    const LogCapture log;
    hear(GetParam().topic, QByteArray(GetParam().payload));
    EXPECT_EQ(drawn(), "B  ");
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_THAT(log.all(), SizeIs(1)) << "the message as received";
}

#define ROWS R"("data":[{"bsflag2":"S","bizdate":"20240103","orderdate":"20240103"}]})"

INSTANTIATE_TEST_SUITE_P(
    Messages, BSPointIgnores,
    ::testing::Values(
        Ignored{"OfAnotherTopic", "EntrustQuery", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"OfTheTopicInOtherCase", "TRADEQUERY", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"WithAnotherCommand", "TradeQuery", R"({"cmd":"HolderCostPrice","stkcode":"600536",)" ROWS},
        Ignored{"WithTheHistoryCommandInOtherCase", "TradeQuery",
                R"({"cmd":"historytrade","stkcode":"600536",)" ROWS},
        Ignored{"WithTheTodayCommandInOtherCase", "TradeQuery",
                R"({"cmd":"TODAYTRADE","stkcode":"600536",)" ROWS},
        Ignored{"OfHistoryOfAnotherSecurity", "TradeQuery",
                R"({"cmd":"HistoryTrade","stkcode":"000001",)" ROWS},
        Ignored{"OfTodayOfAnotherSecurity", "TradeQuery", R"({"cmd":"TodayTrade","stkcode":"000001",)" ROWS},
        Ignored{"WithTheCodeAsANumber", "TradeQuery", R"({"cmd":"TodayTrade","stkcode":600536,)" ROWS},
        Ignored{"WithTheCommandAsANumber", "TradeQuery", R"({"cmd":1,"stkcode":"600536",)" ROWS},
        Ignored{"ThatAreAnArray", "TradeQuery", "[]"}, Ignored{"ThatAreAnEmptyObject", "TradeQuery", "{}"},
        Ignored{"ThatAreNoJson", "TradeQuery", "{"}, Ignored{"ThatNotifyInNoJson", "TradeNotify", "600536"},
        Ignored{"ThatNotifyInAnArray", "TradeNotify", R"(["600536"])"},
        Ignored{"ThatNotifyOfAnotherSecurity", "TradeNotify", R"({"stkcode":"600519"})"},
        Ignored{"OfALongerTopic", "TradeQuery2", R"({"cmd":"HistoryTrade","stkcode":"600536",)" ROWS},
        Ignored{"OfTheNotifyTopicInOtherCase", "tradenotify", R"({"stkcode":"600536"})"},
        Ignored{"OfALongerNotifyTopic", "TradeNotify2", R"({"stkcode":"600536"})"},
        Ignored{"ThatNotifyWithoutACode", "TradeNotify", R"({"x":"1"})"},
        Ignored{"ThatNotifyWithTheCodeAsANumber", "TradeNotify", R"({"stkcode":600536})"}),
    ByName());

TEST_F(BSPointTest, TakesMissingRowsAsAnEmptyAnswer)
{
    createOnThreeDays();
    for (const char *cmd : {"TodayTrade", "HistoryTrade"}) {
        for (const QJsonValue &data : {QJsonValue(QJsonValue::Undefined), QJsonValue(QStringLiteral("x")),
                                       QJsonValue(QJsonObject{{QStringLiteral("bsflag2"), 1}})}) {
            timer()->stop();
            hear(Topic::TRADEQUERY, sentAnswer(cmd, data));
            EXPECT_TRUE(timer()->isActive()) << cmd;
        }
    }
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(drawn(), "   ");
}

class BSPointAnswer : public BSPointTest, public ::testing::WithParamInterface<TradesAnswer>
{
protected:
    /// An answer with one buy on the first of the three days; its row says `more`, too.
    static QJsonObject oneBuy(const QJsonObject &more = {})
    {
        QJsonObject row = SentTrade{"B", "20240102", "9301500", "1", "1"}.in(GetParam());
        for (auto field = more.begin(); field != more.end(); ++field) {
            row.insert(field.key(), field.value());
        }
        return sentAnswer(GetParam().name, QJsonArray{row});
    }
};

TEST_P(BSPointAnswer, IsTakenWhateverMarketAndScreenItNames)
{
    createOnThreeDays();
    QJsonObject other = oneBuy();
    other.insert(QStringLiteral("market"), QStringLiteral("2"));
    other.insert(QStringLiteral("screenId"), QStringLiteral("another"));
    hear(Topic::TRADEQUERY, other);
    EXPECT_EQ(drawn(), "B  ");
}

TEST_P(BSPointAnswer, IsTakenAlsoWhenItCallsItselfAFailure)
{
    createOnThreeDays();
    QJsonObject failure = oneBuy();
    failure.insert(QStringLiteral("success"), false);
    failure.insert(QStringLiteral("errcode"), 5);
    failure.insert(QStringLiteral("msg"), QStringLiteral("timed out"));
    hear(Topic::TRADEQUERY, failure);
    EXPECT_EQ(drawn(), "B  ");
}

TEST_P(BSPointAnswer, IsTakenWithRowsThatNameAnotherSecurity)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, oneBuy({{QStringLiteral("stkcode"), QStringLiteral("000001")},
                                    {QStringLiteral("market"), QStringLiteral("2")}}));
    EXPECT_EQ(drawn(), "B  ");
    EXPECT_THAT(listOn(0), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Kinds, BSPointAnswer, ::testing::Values(pastTrades, todaysTrades), ByName());

// Past trades

TEST_F(BSPointTest, MarksTheDaysOfPastTradesAndAsksForARepaint)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"},
                 {"S", "20240103", "9301500", "10.5", "300"},
                 {"B", "20240104", "9301500", "10.5", "300"},
                 {"S", "20240104", "9311500", "10.5", "300"}});
    EXPECT_EQ(drawn(), "BST");
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_F(BSPointTest, ListsARepeatedAnswerTwice)
{
    createOnThreeDays();
    for (int time = 0; time < 2; ++time) {
        hearHistory(
            {{"B", "20240103", "9301500", "10.5", "300"}, {"B", "20240103", "9301600", "10.6", "100"}});
    }
    EXPECT_EQ(listOn(1), (QStringList{QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("买入\t09:30:16\t成交价:10.60\t成交量:100"),
                                      QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("买入\t09:30:16\t成交价:10.60\t成交量:100")}));
}

TEST_F(BSPointTest, GroupsRowsOfMixedDays)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"},
                 {"S", "20240102", "9301500", "2", "100"},
                 {"B", "20240104", "9301600", "3", "100"}});
    EXPECT_EQ(drawn(), "S B");
    EXPECT_THAT(listOn(2), SizeIs(2));
}

TEST_F(BSPointTest, KeepsTradesOfDaysWithoutABarForLaterBars)
{
    createOnThreeDays();
    hearHistory({{"B", "20231229", "9301500", "1", "100"}, {"S", "20240106", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), "   ");
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240102), makeDayBar(20240105), makeDayBar(20240108)},
         4);
    EXPECT_EQ(drawn(), "B   ");
}

TEST_F(BSPointTest, FindsTheTradesOfBarsInAnyOrder)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240104", "9301500", "1", "100"}});
    calc(shanghai,
         {makeDayBar(20240104), makeDayBar(20240102), makeDayBar(20240102), makeDayBar(20240109),
          makeDayBar(20240104)},
         4);
    EXPECT_EQ(drawn(), "SBB S");
}

TEST_F(BSPointTest, FindsTheTradesBehindManyDaysThatHaveNoBar)
{
    createOnThreeDays();
    std::vector<SentTrade> rows;
    for (const char *date : {"20231225", "20231226", "20231227", "20231228", "20231229", "20240103"}) {
        rows.push_back({"B", date, "9301500", "1", "100"});
    }
    hearHistory(rows);
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawn(), " B ");
    calc(shanghai, {makeDayBar(20231229), makeDayBar(20240103)}, 4);
    EXPECT_EQ(drawn(), "BB");
    calc(shanghai, {makeDayBar(20240103), makeDayBar(20231229)}, 4);
    EXPECT_EQ(drawn(), "BB") << "also when the bars step back";
}

TEST_F(BSPointTest, ReadsPastTradesFromBizdateAndMatchtimeOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"B", "20240102", "9301500", "1", "100"}.in(pastTrades);
    row.insert(QStringLiteral("orderdate"), QStringLiteral("20240104"));
    row.insert(QStringLiteral("opertime"), QStringLiteral("14000000"));
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), "B  ");
    EXPECT_THAT(listOn(0).value(0).toStdString(), StartsWith("买入\t09:30:15"));
}

TEST_F(BSPointTest, MarksABarBeforeAllTimeByTheDayUnderWhichItListsTrades)
{
    createOnThreeDays();
    hearHistory({{"B", "", "9301500", "1", "100"}, {"S", "-4", "9301500", "2", "100"}});
    const auto before = [](int days) { return makeDayBar(static_cast<std::uint32_t>(-days)); };
    calc(shanghai, {before(6), before(5), before(4), before(1), makeDayBar(0), makeDayBar(1)}, 4);
    EXPECT_EQ(drawn(), " S BB ");
    EXPECT_THAT(listOn(1), SizeIs(1));
    EXPECT_THAT(listOn(3), SizeIs(1));
}

// Today's trades

TEST_F(BSPointTest, ReadsTodaysTradesFromOrderdateAndOpertimeOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"B", "20240104", "14000000", "1", "100"}.in(todaysTrades);
    row.insert(QStringLiteral("bizdate"), QStringLiteral("20240102"));
    row.insert(QStringLiteral("matchtime"), QStringLiteral("9301500"));
    hear(Topic::TRADEQUERY, sentAnswer("TodayTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), "  B");
    EXPECT_THAT(listOn(2).value(0).toStdString(), StartsWith("买入\t14:00:00"));
}

TEST_F(BSPointTest, ListsTodaysTradesInTheOrderOfTheAnswerAndPastOnesBehindThem)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "10000000", "2", "100"},
               {"B", "20240104", "9300000", "3", "100"},
               {"B", "20240104", "14000000", "1", "100"}});
    hearHistory({{"B", "20240104", "9000000", "4", "100"}});
    EXPECT_EQ(listOn(2), (QStringList{QStringLiteral("买入\t10:00:00\t成交价:2.00\t成交量:100"),
                                      QStringLiteral("买入\t09:30:00\t成交价:3.00\t成交量:100"),
                                      QStringLiteral("买入\t14:00:00\t成交价:1.00\t成交量:100"),
                                      QStringLiteral("买入\t09:00:00\t成交价:4.00\t成交量:100")}));
}

TEST_F(BSPointTest, AsksForARepaintAfterEveryAnswerAlsoOneThatSaysTheSame)
{
    createOnThreeDays();
    for (int time = 0; time < 2; ++time) {
        hearHistory({{"B", "20240103", "9301500", "1", "100"}});
        hearToday({{"B", "20240104", "9301500", "1", "100"}});
    }
    EXPECT_THAT(axis.updated, SizeIs(4));
}

TEST_F(BSPointTest, ReplacesTheDayByTodaysAnswer)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}, {"B", "20240104", "9301600", "2", "200"}});
    EXPECT_THAT(listOn(2), SizeIs(2));
    EXPECT_THAT(axis.updated, SizeIs(2));
}

TEST_F(BSPointTest, ReplacesWhateverTheDayHeldByTodaysAnswerAndAddsHistoryToIt)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}, {"B", "20240104", "9301600", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_THAT(listOn(2), SizeIs(1));
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_THAT(listOn(2), SizeIs(2));
}

TEST_F(BSPointTest, MarksBeforeItAsksForTheRepaint)
{
    createOnThreeDays();
    std::vector<std::string> seen;
    axis.onUpdate = [&] {
        seen.push_back(drawn());
        calc(shanghai, threeDays, 4);
    };
    hearHistory({{"B", "20240102", "9301500", "1", "1"}});
    hearToday({{"S", "20240104", "9301500", "1", "1"}});
    EXPECT_THAT(seen, ElementsAre("B  ", "B S"));
    EXPECT_EQ(drawn(), "B S");
}

TEST_F(BSPointTest, TurnsToAnotherSecurityInsideARepaintRequest)
{
    createOnThreeDays();
    axis.onUpdate = [this] { calc(shenzhen, threeDays, 4); };
    hearToday({{"S", "20240104", "9301500", "1", "1"}});
    EXPECT_EQ(drawn(), "   ");
}

TEST_F(BSPointTest, StoresAllOfTodaysRowsUnderTheDayOfTheLastOne)
{
    createOnThreeDays();
    hearToday({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301600", "2", "200"}});
    EXPECT_EQ(drawn(), " T ");
    EXPECT_THAT(listOn(1), SizeIs(2));
}

struct UndatedRow
{
    const char *name;
    QJsonValue row;
};

class BSPointUndatedRow : public BSPointTest, public ::testing::WithParamInterface<UndatedRow>
{
};

TEST_P(BSPointUndatedRow, PutsTodaysTradesOnDayZeroWhenItIsTheLast)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY,
         sentAnswer(
             "TodayTrade",
             QJsonArray{SentTrade{"B", "20240103", "9301500", "1", "100"}.in(todaysTrades), GetParam().row}));
    calc(shanghai,
         {makeDayBar(0), makeDayBar(20240103), makeDayBar(static_cast<std::uint32_t>(currentDate()))}, 4);
    EXPECT_THAT(listOn(0), SizeIs(2));
    EXPECT_THAT(listOn(1), IsEmpty());
    EXPECT_THAT(listOn(2), IsEmpty());
}

QJsonObject todaysRow(const QJsonValue &date)
{
    return with(SentTrade{"B", "", "9301600", "1", "100"}.in(todaysTrades), "orderdate", date);
}

INSTANTIATE_TEST_SUITE_P(Rows, BSPointUndatedRow,
                         ::testing::Values(UndatedRow{"WithoutADate", todaysRow(QJsonValue::Undefined)},
                                           UndatedRow{"WithADateInWords", todaysRow(QStringLiteral("x"))},
                                           UndatedRow{"WithADateAsANumber", todaysRow(20240103)},
                                           UndatedRow{"ThatIsANumber", 5}),
                         ByName());

TEST_F(BSPointTest, LeavesTheTradesOnAnEmptyAnswerOfToday)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    axis.updated.clear();
    hearToday({});
    EXPECT_EQ(drawn(), "  B");
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_F(BSPointTest, OnlyAddsMarksBetweenTwoCalcIts)
{
    createOnThreeDays();
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240103", "9301500", "1", "100"}});
    hearToday({{"S", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), " BT") << "the buy that was there is still marked";
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawn(), " BS");
}

TEST_F(BSPointTest, KeepsTheMarkOfBothSidesBesideALaterOneUntilCalcIt)
{
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}, {"S", "20240104", "9301500", "2", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(drawn(), "  #");
    EXPECT_THAT(listOn(2), SizeIs(1));
    calc(shanghai, threeDays, 4);
    EXPECT_EQ(drawn(), "  B");
}

struct OtherSide
{
    const char *name;
    const char *listed;
    const char *later;
    const char *text;
};

/// Two markers stand on the last bar, that of both sides and a later one of a single side.
class BSPointUnderTwoMarks : public BSPointTest, public ::testing::WithParamInterface<OtherSide>
{
};

TEST_P(BSPointUnderTwoMarks, ListsTheSideOfEachTrade)
{
    createOnThreeDays();
    hearHistory({{GetParam().listed, "20240103", "9301500", "1", "100"},
                 {"B", "20240104", "9301500", "1", "100"},
                 {"S", "20240104", "9301500", "1", "100"}});
    hearToday({{GetParam().later, "20240104", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20231229), threeDays[0], threeDays[1]}, 4));
    EXPECT_EQ(drawn().back(), '#');
    EXPECT_EQ(listOn(2), QStringList{QString::fromUtf8(GetParam().text) +
                                     QStringLiteral("\t09:30:15\t成交价:1.00\t成交量:100")});
}

INSTANTIATE_TEST_SUITE_P(Sides, BSPointUnderTwoMarks,
                         ::testing::Values(OtherSide{"ASellUnderBuys", "S", "B", "卖出"},
                                           OtherSide{"ABuyUnderSells", "B", "S", "买入"}),
                         ByName());

TEST_F(BSPointTest, ListsABuyUnderAMarkOfSells)
{
    createOnThreeDays();
    hearHistory({{"S", "20240102", "9301500", "1", "100"}, {"B", "20240103", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[1]}, 4)) << "the sell mark of the bar before stays";
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("卖出\t09:30:15\t成交价:1.00\t成交量:100")});
}

TEST_F(BSPointTest, ListsUnderTheMarkerAsItStandsNotUnderTheTradesOwnSide)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301500", "1", "100"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[1]}, 4)) << "the buy mark of the bar before stays";
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("买入\t09:30:15\t成交价:1.00\t成交量:100")});
}

// Sides and values

struct SideText
{
    const char *name;
    QJsonValue sent;
    char drawn;
};

class BSPointSide : public BSPointTest, public ::testing::WithParamInterface<SideText>
{
};

TEST_P(BSPointSide, IsABuyForTheSingleLetterOnly)
{
    createOnThreeDays();
    QJsonObject row = SentTrade{"", "20240103", "9301500", "1", "100"}.in(pastTrades);
    row.insert(QStringLiteral("bsflag2"), GetParam().sent);
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), std::string(" ") + GetParam().drawn + " ");
    row.insert(QStringLiteral("orderdate"), QStringLiteral("20240104"));
    hear(Topic::TRADEQUERY, sentAnswer("TodayTrade", QJsonArray{row}));
    EXPECT_EQ(drawn(), std::string(" ") + GetParam().drawn + GetParam().drawn);
}

INSTANTIATE_TEST_SUITE_P(Texts, BSPointSide,
                         ::testing::Values(SideText{"CapitalB", QStringLiteral("B"), 'B'},
                                           SideText{"SmallB", QStringLiteral("b"), 'S'},
                                           SideText{"OrderBuyCode", QStringLiteral("0B"), 'S'},
                                           SideText{"CapitalS", QStringLiteral("S"), 'S'},
                                           SideText{"BWithABlank", QStringLiteral("B "), 'S'},
                                           SideText{"Empty", QString(), 'S'},
                                           SideText{"Missing", QJsonValue(QJsonValue::Undefined), 'S'},
                                           SideText{"Number", 1, 'S'}),
                         ByName());

struct TimeText
{
    const char *name;
    const char *time;
    const char *shown;
};

class BSPointTime : public BSPointTest, public ::testing::WithParamInterface<TimeText>
{
};

TEST_P(BSPointTime, CarriesHundredthsThatAreDropped)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", GetParam().time, "10.5", "300"}});
    hearToday({{"B", "20240103", GetParam().time, "10.5", "300"}});
    const QString line =
        QStringLiteral("买入\t%1\t成交价:10.50\t成交量:300").arg(QLatin1String(GetParam().shown));
    EXPECT_EQ(listOn(0), QStringList{line});
    EXPECT_EQ(listOn(1), QStringList{line});
}

INSTANTIATE_TEST_SUITE_P(Times, BSPointTime,
                         ::testing::Values(TimeText{"WithoutLeadingZero", "9301500", "09:30:15"},
                                           TimeText{"WithLeadingZero", "09301599", "09:30:15"},
                                           TimeText{"Afternoon", "14595999", "14:59:59"},
                                           TimeText{"WithoutHundredthsMovesTwoPlaces", "93015", "00:09:30"},
                                           TimeText{"Words", "noon", "00:00:00"},
                                           TimeText{"Empty", "", "00:00:00"}),
                         ByName());

TEST_F(BSPointTest, StoresARowWithoutFieldsAsASellOfNothingOnDayZero)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{QJsonObject(), 5, QStringLiteral("x")}));
    calc(shanghai, {makeDayBar(0), makeDayBar(20240102)}, 4);
    EXPECT_EQ(drawn(), "S ");
    EXPECT_EQ(listOn(0), (QStringList{QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0"),
                                      QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0"),
                                      QStringLiteral("卖出\t00:00:00\t成交价:0.00\t成交量:0")}));
}

TEST_F(BSPointTest, ReadsJsonNumbersAsZero)
{
    createOnThreeDays();
    const QJsonObject row{{QStringLiteral("bsflag2"), QStringLiteral("B")},
                          {QStringLiteral("bizdate"), QStringLiteral("20240103")},
                          {QStringLiteral("matchtime"), 9301500},
                          {QStringLiteral("matchprice"), 10.5},
                          {QStringLiteral("matchqty"), 300}};
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{row}));
    EXPECT_EQ(listOn(1), QStringList{QStringLiteral("买入\t00:00:00\t成交价:0.00\t成交量:0")});
}

struct OddRow
{
    const char *name;
    QJsonObject row;
    const char *line;
};

class BSPointOddRow : public BSPointTest, public ::testing::WithParamInterface<OddRow>
{
};

TEST_P(BSPointOddRow, StandsOnTheDayItsDateReadsAs)
{
    createOnThreeDays();
    hear(Topic::TRADEQUERY, sentAnswer("HistoryTrade", QJsonArray{GetParam().row}));
    calc(shanghai, {makeDayBar(0), makeDayBar(20240102)}, 4);
    EXPECT_EQ(listOn(GetParam().row.value(QStringLiteral("bizdate")).toString() == QStringLiteral("20240102")
                         ? 1
                         : 0),
              QStringList{QString::fromUtf8(GetParam().line)});
}

QJsonObject oddRow(const QJsonValue &date, const char *time, const char *price, const char *quantity)
{
    return with(SentTrade{"B", "", time, price, quantity}.in(pastTrades), "bizdate", date);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BSPointOddRow,
    ::testing::Values(
        OddRow{"ADateAsANumber", oddRow(20240102, "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"ADateBeyondAllRange", oddRow(QStringLiteral("99999999999"), "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"ADateWithALetter", oddRow(QStringLiteral("20240102x"), "9301500", "1", "1"),
               "买入\t09:30:15\t成交价:1.00\t成交量:1"},
        OddRow{"APriceInWords", oddRow(QStringLiteral("20240102"), "9301500", "abc", "1"),
               "买入\t09:30:15\t成交价:0.00\t成交量:1"},
        OddRow{"APriceThatIsNoNumber", oddRow(QStringLiteral("20240102"), "9301500", "nan", "inf"),
               "买入\t09:30:15\t成交价:nan\t成交量:inf"},
        OddRow{"ATimeBelowZeroCutTowardsZero", oddRow(QStringLiteral("20240102"), "-150", "1", "1"),
               "买入\t99:99:99\t成交价:1.00\t成交量:1"}),
    ByName());

// Painting

TEST_F(BSPointTest, PaintsThreeSeriesOverTheHighsAndDoesNotEndThePaint)
{
    createOnThreeDays();
    hearHistory({{"S", "20240103", "9301500", "10.5", "300"}});
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    for (std::size_t series = 0; series < 3; ++series) {
        EXPECT_EQ(painter.calls[series].kind, FakePainter::Call::MarkerSeries);
        EXPECT_THAT(painter.calls[series].prices, ElementsAre(11, 12, 13));
        EXPECT_THAT(painter.calls[series].ints, ElementsAre(0, static_cast<int>(2 * series), 1));
    }
    EXPECT_TRUE(std::isnan(painter.calls[1].values[0]));
    EXPECT_EQ(painter.calls[1].values[1], 1.0);
}

TEST_F(BSPointTest, PaintsTheBarsThatAHostBringsInsideThePaint)
{
    createOnThreeDays();
    painter.onMarkerSeries = [this] {
        if (painter.calls.size() == 1) {
            calc(shanghai, std::vector<Korvane::AnalyData>(100, makeDayBar(20240103, 9, 15)), 4);
        }
    };
    EXPECT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(3));
    EXPECT_THAT(painter.calls[0].prices, ElementsAre(11, 12, 13));
    for (std::size_t later = 1; later < 3; ++later) {
        EXPECT_THAT(painter.calls[later].prices, AllOf(SizeIs(100), Each(15)));
    }
}

TEST_F(BSPointTest, NeverWidensThePriceScale)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "1", "100"}, {"S", "20240103", "9301500", "50", "100"}});
    EXPECT_EQ(drawn(), "BS ");
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_TRUE(overlay->calcRatio(1, 2));
}

// Hits

class BSPointHit : public BSPointTest
{
protected:
    void SetUp() override
    {
        createOnThreeDays();
        hearHistory({{"B", "20240102", "9301500", "1", "100"},
                     {"S", "20240103", "9301500", "1", "100"},
                     {"B", "20240104", "9301500", "1", "100"},
                     {"S", "20240104", "9301500", "1", "100"}});
    }
};

TEST_F(BSPointHit, ReachesFromTheAnchorUpToTwoPixelsBelowTheMarkersTop)
{
    const double anchor = anchorY(12);
    EXPECT_EQ(overlay->hitTest(10, anchor), 0);
    EXPECT_EQ(overlay->hitTest(10, anchor - 14.0), 0);
    EXPECT_EQ(overlay->hitTest(10, anchor - 14.01), -1);
    EXPECT_EQ(overlay->hitTest(10, anchor + 0.01), -1);
}

TEST_F(BSPointHit, FollowsTheHostsMarkerSize)
{
    axis.markerPixels = 30.0;
    EXPECT_EQ(overlay->hitTest(10, anchorY(12) - 28.0), 0);
    EXPECT_EQ(overlay->hitTest(10, anchorY(12) - 28.01), -1);
}

TEST_F(BSPointHit, CountsOnEveryKindOfMarkerAndAnyXOfItsBar)
{
    EXPECT_EQ(overlay->hitTest(4.9, anchorY(11)), 0) << "buy";
    EXPECT_EQ(overlay->hitTest(14.9, anchorY(12)), 0) << "sell";
    EXPECT_EQ(overlay->hitTest(24.9, anchorY(13)), 0) << "both";
}

TEST_F(BSPointHit, MissesABarWithoutMarker)
{
    calc(shanghai, {makeDayBar(20240105), threeDays[0], threeDays[1]}, 4);
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
}

TEST_F(BSPointHit, MissesABarWhoseHighIsNoNumber)
{
    calc(shanghai, {makeDayBar(20240102, 9, std::nan(""))}, 4);
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
}

class BSPointIndex : public BSPointHit, public ::testing::WithParamInterface<int>
{
};

TEST_P(BSPointIndex, OutsideTheBarsHitsAndListsNothing)
{
    axis.barUnder = [](double) { return GetParam(); };
    EXPECT_EQ(overlay->hitTest(0, anchorY(11)), -1);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Indices, BSPointIndex, ::testing::Values(-1, 3, INT_MAX, INT_MIN));

TEST_F(BSPointHit, StaysInsideTheBarsWhenTheMarksReachFurther)
{
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {threeDays[0]}, 4));
    axis.barUnder = [](double) { return 2; };
    EXPECT_EQ(overlay->hitTest(0, anchorY(13)), -1);
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(axis.popups, IsEmpty());
}

// The list of a day

TEST_F(BSPointTest, ListsEachTradeOfADayOfBothSidesUnderItsOwnSide)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"},
                 {"S", "20240102", "10000000", "10.625", "200"},
                 {"B", "20240102", "9300000", "10.4", "100"}});
    EXPECT_EQ(drawn(), "T  ");
    EXPECT_EQ(listOn(0), (QStringList{QStringLiteral("买入\t09:30:15\t成交价:10.50\t成交量:300"),
                                      QStringLiteral("卖出\t10:00:00\t成交价:10.62\t成交量:200"),
                                      QStringLiteral("买入\t09:30:00\t成交价:10.40\t成交量:100")}));
}

TEST_F(BSPointTest, ListsADayOfSells)
{
    createOnThreeDays();
    hearHistory({{"S", "20240102", "9301500", "10.5", "300"}});
    EXPECT_EQ(listOn(0), QStringList{QStringLiteral("卖出\t09:30:15\t成交价:10.50\t成交量:300")});
}

TEST_F(BSPointTest, ListsMoreTradesThanItMakesRoomFor)
{
    createOnThreeDays();
    hearHistory(std::vector<SentTrade>(250, {"B", "20240102", "9301500", "10.5", "300"}));
    EXPECT_THAT(listOn(0), SizeIs(250));
}

TEST_F(BSPointTest, ListsAbsurdNumbersWhole)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "2147483647", "1e308", "-1e308"}});
    const QString line = listOn(0).value(0);
    EXPECT_TRUE(line.startsWith(QStringLiteral("买入\t")));
    EXPECT_GT(line.size(), 600);
    EXPECT_TRUE(line.contains(QStringLiteral("\t47:48:36\t")));
    EXPECT_TRUE(line.contains(QStringLiteral(".00\t成交量:-1")));
}

TEST_F(BSPointTest, ShowsNoListOnADayWithoutTrades)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    listOn(1);
    EXPECT_THAT(axis.popups, IsEmpty());
}

TEST_F(BSPointTest, ShowsNoListForTradesWithoutAMarker)
{
    createOnThreeDays();
    hearHistory({{"B", "20240108", "9301500", "10.5", "300"}});
    bus().takesMessages = false;
    EXPECT_FALSE(calc(shanghai, {makeDayBar(20240108)}, 4));
    listOn(0);
    EXPECT_THAT(axis.popups, IsEmpty()) << "the bar has trades but its marks are not computed yet";
}

TEST_F(BSPointTest, TellsTheHostWhichBarWasClicked)
{
    createOnThreeDays();
    axis.hostCalls = 0;
    listOn(2);
    EXPECT_THAT(axis.barsAsked, ElementsAre(2));
    EXPECT_EQ(axis.hostCalls, 2) << "xToBar and priceToY";
    EXPECT_THAT(axis.pricesAsked, ElementsAre(10.0)) << "the close";

    axis.bars.clear();
    axis.pricesAsked.clear();
    listOn(2);
    double filler = 0.0;
    std::memset(&filler, 0x7A, sizeof filler);
    EXPECT_THAT(axis.pricesAsked, ElementsAre(filler)) << "a host that fills nothing in";
}

TEST_F(BSPointTest, ListsNothingWhenTheHostChangesTheSecurityDuringAClick)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onBarAt = [this] { overlay->calcIt(shenzhen, nullptr, 0, Korvane::DayPeriod, 0, 0); };
    EXPECT_THAT(listOn(0), SizeIs(0));
}

TEST_F(BSPointTest, HandlesAClickWhateverItsHeight)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    for (const double y : {-1e9, 0.0, 1e9}) {
        axis.popups.clear();
        overlay->handleMousePress(0, y);
        EXPECT_THAT(axis.popups, SizeIs(1));
    }
}

TEST_F(BSPointTest, IgnoresTheOtherMouseOperations)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    const double y = anchorY(11);
    axis.hostCalls = 0;
    overlay->handleMousePressR(0, y);
    overlay->handleMouseRelease(0, y);
    overlay->handleMouseReleaseR(0, y);
    overlay->handleMouseMove(0, y);
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
}

TEST_F(BSPointTest, IgnoresWhatIsChosenFromTheList)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    for (const int chosen : {-1, 0, 99}) {
        axis.onPopup = [chosen] { return chosen; };
        listOn(0);
    }
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(axis.questions, IsEmpty());
}

// A host that ends the object inside its own calls

TEST_F(BSPointTest, IsDestroyedByTheHostInsideThePopup)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onPopup = [this] {
        destroy();
        return 0;
    };
    overlay->handleMousePress(0, 0);
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointTest, IsDestroyedByTheHostWhileTheHistoryQuestionGoesOut)
{
    create();
    bus().duringSend = [this] { destroy(); };
    EXPECT_TRUE(calc(shanghai, threeDays, 4));
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointTest, TakesAnAnswerWhileItsListIsOpen)
{
    createOnThreeDays();
    hearHistory({{"B", "20240102", "9301500", "10.5", "300"}});
    axis.onPopup = [] {
        hearToday({{"S", "20240102", "9301500", "1", "100"}});
        return 0;
    };
    EXPECT_THAT(listOn(0), SizeIs(1));
    EXPECT_EQ(drawn(), "T  ");
}

TEST_F(BSPointTest, IsDestroyedByTheHostInsideARepaintAfterTodaysAnswer)
{
    createOnThreeDays();
    axis.onUpdate = [this] { destroy(); };
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointTest, IsDestroyedByTheHostInsideARepaintAfterAHistoryAnswer)
{
    createOnThreeDays();
    axis.onUpdate = [this] { destroy(); };
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(BSPointTest, IsEndedByTheHostInsideARepaint)
{
    createOnThreeDays();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    EXPECT_EQ(timer(), nullptr);
}

// The log

TEST_F(BSPointTest, LogsItsQuestions)
{
    const LogCapture log;
    create();
    calc(shanghai, {makeDayBar(20240102)}, 4);
    bus().takesMessages = false;
    overlay->sendQueryTodayTradeInfoReq();
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(
            QStringLiteral(
                R"(send sendQueryHistoryTradeInfoReq: "{\"cmd\":\"HistoryTrade\",\"end\":\"20240102\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"start\":\"20240102\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendQueryTodayTradeInfoReq: "{\"cmd\":\"TodayTrade\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")")))
        << "today's question is logged even when the bus refuses it";
}

TEST_F(BSPointTest, LogsEveryMessageAndTheRowsItReads)
{
    createOnThreeDays();
    const LogCapture log;
    hear("Other", QByteArray("x"));
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{QJsonObject{{QStringLiteral("bizdate"), QStringLiteral("1")}}}));
    hear(Topic::TRADEQUERY,
         sentAnswer("TodayTrade",
                    QJsonArray{QJsonObject{{QStringLiteral("orderdate"), QStringLiteral("1")}}}));
    const auto lines = log.lines(QtDebugMsg);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_THAT(log.all(), SizeIs(5));
    EXPECT_EQ(lines[0], QStringLiteral(R"(handleTradeNotify receive topic: "Other" , msg: "x")"));
    EXPECT_EQ(
        lines[1],
        QStringLiteral(
            R"(handleTradeNotify receive topic: "TradeQuery" , msg: "{\"cmd\":\"HistoryTrade\",\"data\":[{\"bizdate\":\"1\"}],\"stkcode\":\"600536\"}")"));
    EXPECT_EQ(lines[2], QStringLiteral(R"(handleQueryHistoryTradeInfoRes obo: "{\"bizdate\":\"1\"}")"));
    EXPECT_EQ(lines[4], QStringLiteral(R"(handleQueryTradeInfoRes obo: "{\n    \"orderdate\": \"1\"\n}\n")"));
}

TEST_F(BSPointTest, LogsEveryRowWithItsChineseNamesLegible)
{
    createOnThreeDays();
    const QJsonObject row{{QStringLiteral("stkname"), QStringLiteral("江山科技")}};
    const LogCapture log;
    for (const TradesAnswer &kind : {pastTrades, todaysTrades}) {
        hear(Topic::TRADEQUERY, sentAnswer(kind.name, QJsonArray{row, row}));
    }
    std::vector<QString> rowLines;
    for (const QString &line : log.lines(QtDebugMsg)) {
        if (line.contains(QStringLiteral(" obo: "))) {
            rowLines.push_back(line);
        }
    }
    const QString past =
        QStringLiteral(R"(handleQueryHistoryTradeInfoRes obo: "{\"stkname\":\"江山科技\"}")");
    const QString todays =
        QStringLiteral(R"(handleQueryTradeInfoRes obo: "{\n    \"stkname\": \"江山科技\"\n}\n")");
    EXPECT_THAT(rowLines, ElementsAre(past, past, todays, todays));
}

TEST_F(BSPointTest, LogsAClick)
{
    createOnThreeDays();
    const LogCapture log;
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(log.lines(QtDebugMsg), ElementsAre(QStringLiteral("BSPoint::handleMousePress is called.")));
    axis.barUnder = [](double) { return -1; };
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(log.lines(QtDebugMsg), SizeIs(2)) << "also beside the bars";
}

TEST_F(BSPointTest, WritesNoDebugLineWhenTheDebugLogIsOff)
{
    const LogCapture log(LogCapture::Debug::Off);
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    overlay->handleMousePress(0, 0);
    overlay->sendQueryTodayTradeInfoReq();
    EXPECT_THAT(log.all(), IsEmpty());
}

} // namespace
