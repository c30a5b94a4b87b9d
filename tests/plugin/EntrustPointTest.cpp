#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"
#include "tests/support/TimeZone.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <QCoreApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QUuid>

#include <cfloat>
#include <climits>
#include <cstring>
#include <ctime>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace TradeChart;

namespace {

class EntrustPointTest : public OverlayTest<EntrustPoint>
{
protected:
    EntrustPointTest() { axis.mode = 1; }

    static QJsonObject anOrder() { return SentOrder(); }

    const std::uint32_t today = dayFromToday(0);
    const std::vector<Korvane::AnalyData> threeMinutes = minutes({931, 932, 933});

    std::vector<Korvane::AnalyData> minutes(const std::vector<std::uint32_t> &times) const
    {
        std::vector<Korvane::AnalyData> bars;
        for (const std::uint32_t time : times) {
            bars.push_back(makeMinuteBar(today, time));
        }
        return bars;
    }

    /// An object that shows 600536 on the first three minutes of today; its question is forgotten.
    void createOnThreeMinutes(const QJsonObject &config = {})
    {
        create(config);
        ASSERT_TRUE(calc(shanghai, threeMinutes, 21));
        bus().sent.clear();
    }

    static void hearOrders(const std::vector<QJsonObject> &rows, const char *cmd = "EntrustTodayTrade")
    {
        QJsonArray data;
        for (const QJsonObject &row : rows) {
            data.append(row);
        }
        hear(Topic::TRADEQUERY, sentAnswer(cmd, data));
    }

    static void notify() { hear(Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); }

    /// Text of the order behind the marker at 10 on the first bar.
    std::string listedText()
    {
        listAt(0, yOfTen());
        return axis.popups.empty() ? std::string() : axis.popups.front().front().toStdString();
    }

    /// Every marker drawn: "bar kind price", with a v behind it when it stands at the bottom edge.
    std::vector<std::string> drawn()
    {
        paint();
        std::vector<std::string> markers;
        for (const FakePainter::Call &call : painter.calls) {
            EXPECT_EQ(call.kind, FakePainter::Call::Marker);
            EXPECT_EQ(call.ints[0], 0);
            EXPECT_THAT(call.ints[3], AnyOf(0, 1));
            markers.push_back(QStringLiteral("%1 %2 %3%4")
                                  .arg(call.ints[1])
                                  .arg(call.ints[2])
                                  .arg(call.number)
                                  .arg(QLatin1String(call.ints[3] == 1 ? "v" : ""))
                                  .toStdString());
        }
        return markers;
    }

    /// Numbers of the orders in the list that a click shows.
    std::vector<std::string> listAt(double x, double y)
    {
        axis.popups.clear();
        overlay->handleMousePress(x, y);
        std::vector<std::string> numbers;
        for (const QString &text : axis.popups.empty() ? QStringList() : axis.popups.front()) {
            numbers.push_back(
                text.section(QLatin1Char('\n'), 2, 2).section(QLatin1Char(':'), 1).toStdString());
        }
        return numbers;
    }

    /// Clicks the marker at 10 on the first bar and chooses a row.
    void choose(int row)
    {
        axis.onPopup = [row] { return row; };
        overlay->handleMousePress(0, yOfTen());
    }

    double yOfTen() const { return axis.yOf(10.0); }

    /// Lets the refresh timer run as only a test does, for timerRunsOn().
    void startTimerOddly() { timer()->start(oddMilliseconds); }

    /// True while nobody has stopped the timer nor started it anew.
    bool timerRunsOn() const { return timer()->isActive() && timer()->interval() == oddMilliseconds; }

    static int countOf(const char *command)
    {
        const auto all = questions();
        return static_cast<int>(std::count_if(all.begin(), all.end(), [command](const QByteArray &question) {
            return question.contains(command);
        }));
    }

    static int todayQuestions() { return countOf("EntrustTodayTrade"); }

private:
    static constexpr int oddMilliseconds = 123456;
};

// Set-up and end

TEST_F(EntrustPointTest, NeitherStartsItsTimerNorAsksWhenConstructed)
{
    create();
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_TRUE(timer()->isSingleShot());
}

TEST_F(EntrustPointTest, BelongsToNobodyInQtsSense)
{
    QObject parent;
    owner.reset(overlay = new EntrustPoint(axis, {}, &parent));
    EXPECT_EQ(overlay->parent(), nullptr);
    EXPECT_EQ(bus().operations.front(), QStringLiteral("create")) << "nor does the bus client";
}

TEST_F(EntrustPointTest, HearsNothingMoreWhileItIsDestroyed)
{
    createOnThreeMinutes();
    bus().duringDisconnect = [] { hearOrders({SentOrder()}); };
    destroy();
    EXPECT_THAT(axis.updated, IsEmpty());
}

// Periods

class EntrustPointPeriod : public EntrustPointTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(EntrustPointPeriod, OtherThanTheIntradayOneIsLeftAlone)
{
    create();
    EXPECT_FALSE(calc(shanghai, threeMinutes, GetParam()));
    hearOrders({SentOrder()});
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_FALSE(overlay->isPaintItPeriod(static_cast<Korvane::Period>(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Periods, EntrustPointPeriod,
                         ::testing::Values(-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 20, 22, 36));

TEST_F(EntrustPointTest, PaintsOnTheIntradayPeriod)
{
    EXPECT_TRUE(create().isPaintItPeriod(Korvane::IntradayPeriod));
}

TEST_F(EntrustPointTest, KeepsWhatItShowsWhenAnotherPeriodIsRefused)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_FALSE(overlay->calcIt(shenzhen, nullptr, 0, Korvane::DayPeriod, 0, 0));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointTest, KeepsItsBarsWhenAnotherPeriodIsRefused)
{
    for (const auto &bars : {std::vector<Korvane::AnalyData>{makeDayBar(today)}, {}}) {
        createOnThreeMinutes();
        hearOrders({SentOrder()});
        EXPECT_FALSE(calc(shanghai, bars, 4));
        EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
        hearOrders({SentOrder{"0S"}});
        EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
    }
}

TEST_F(EntrustPointTest, KeepsItsSecurityWhenAnotherPeriodIsRefused)
{
    createOnThreeMinutes();
    startTimerOddly();
    EXPECT_FALSE(calc(shenzhen, threeMinutes, 4));
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
    EXPECT_TRUE(timerRunsOn());
}

// Asking for orders

TEST_F(EntrustPointTest, AsksForTodaysOrdersOnTodaysChart)
{
    create();
    EXPECT_TRUE(calc(shanghai, threeMinutes, 21));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(bus().sent[0].payload,
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointTest, AsksForTheDayOfTheLastBarOnThePastChart)
{
    axis.mode = 2;
    create();
    EXPECT_TRUE(calc(shenzhen, {makeMinuteBar(20240104, 1500), makeMinuteBar(20240105, 1500)}, 21));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    EXPECT_EQ(
        bus().sent[0].payload,
        R"({"cmd":"EntrustHistoryTrade","date":20240105,"market":"SZ","screenId":"screen-1","stkcode":"000001"})");
}

TEST_F(EntrustPointTest, AsksForTheDayOfTheLastBarAlsoWhenItIsNotTheLatest)
{
    axis.mode = 2;
    create();
    calc(shanghai, {makeMinuteBar(20240105, 1500), makeMinuteBar(20240104, 1500)}, 21);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("date":20240104,)"));
}

TEST_F(EntrustPointTest, AsksNothingInOtherChartModes)
{
    for (const int mode : {-1, 0, 3}) {
        axis.mode = mode;
        create();
        EXPECT_TRUE(calc(shanghai, threeMinutes, 21));
        EXPECT_TRUE(timer()->isActive());
    }
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointTest, LooksAtTheChartModeOfTheMoment)
{
    create();
    axis.mode = 2;
    calc(shanghai, threeMinutes, 21);
    EXPECT_EQ(countOf("EntrustHistoryTrade"), 1);
}

TEST_F(EntrustPointTest, AsksAgainOnlyForAnotherSecurity)
{
    createOnThreeMinutes();
    calc(shanghai, minutes({931, 932, 933, 934}), 21);
    EXPECT_THAT(questions(), IsEmpty());
    calc(shenzhen, threeMinutes, 21);
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

TEST_F(EntrustPointTest, AsksNothingWhenThePastChartMovesToAnotherDay)
{
    axis.mode = 2;
    create();
    calc(shanghai, {makeMinuteBar(20240104, 931)}, 21);
    bus().sent.clear();
    calc(shanghai, {makeMinuteBar(20240105, 931)}, 21);
    axis.mode = 1;
    calc(shanghai, threeMinutes, 21);
    EXPECT_THAT(questions(), IsEmpty()) << "nor when it becomes today's";
}

TEST_F(EntrustPointTest, KnowsASecurityByItsIdentityWordOnly)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(makeSecurity(0, "000001", 7001), threeMinutes, 21);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(drawn(), SizeIs(1));
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
}

TEST_F(EntrustPointTest, KnowsASecurityByItsWholeIdentityWord)
{
    createOnThreeMinutes();
    for (const int bit : {0, 31, 32, 63}) {
        const std::uint64_t word = 7001 ^ (std::uint64_t{1} << bit);
        calc(makeSecurity(1, "600536", static_cast<std::int64_t>(word)), threeMinutes, 21);
        calc(shanghai, threeMinutes, 21);
    }
    EXPECT_THAT(questions(), SizeIs(8));
}

TEST_F(EntrustPointTest, TakesASecurityWithoutAnIdentityWordForNone)
{
    create();
    EXPECT_TRUE(calc(makeSecurity(1, "600536", 0), threeMinutes, 21));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointTest, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearOrders({SentOrder()});
    };
    EXPECT_TRUE(calc(shanghai, threeMinutes, 21));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_F(EntrustPointTest, AsksNothingWithoutBars)
{
    create();
    EXPECT_TRUE(calc(shanghai, {}, 21));
    EXPECT_TRUE(overlay->calcIt(shenzhen, nullptr, 5, Korvane::IntradayPeriod, 0, 0));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(EntrustPointTest, HearsOfASecurityThatCameWithoutBarsThroughTheTimerOnly)
{
    create({{QStringLiteral("auto_refresh_time"), 1}});
    calc(shanghai, {}, 21);
    calc(shanghai, threeMinutes, 21);
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(waitUntil([] { return todayQuestions() == 1; }));
}

TEST_F(EntrustPointTest, ThrowsForANegativeNumberOfBarsAndKeepsTheBars)
{
    createOnThreeMinutes();
    EXPECT_THROW(overlay->calcIt(shanghai, threeMinutes.data(), -1, Korvane::IntradayPeriod, 0, 0),
                 std::length_error);
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_F(EntrustPointTest, RefusesAnotherPeriodWhateverTheNumberOfBars)
{
    createOnThreeMinutes();
    EXPECT_FALSE(overlay->calcIt(shanghai, threeMinutes.data(), -1, Korvane::DayPeriod, 0, 0));
}

TEST_F(EntrustPointTest, TakesOverTheSecurityAlsoWithANegativeNumberOfBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_THROW(overlay->calcIt(shenzhen, threeMinutes.data(), -1, Korvane::IntradayPeriod, 0, 0),
                 std::length_error);
    EXPECT_FALSE(paint()) << "the orders were the other security's";
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

TEST_F(EntrustPointTest, SucceedsSilentlyWhenTheBusRefusesTheQuestion)
{
    const LogCapture log;
    for (const int mode : {1, 2}) {
        axis.mode = mode;
        create();
        bus().takesMessages = false;
        EXPECT_TRUE(calc(shanghai, threeMinutes, 21));
        bus().takesMessages = true;
        EXPECT_TRUE(calc(shanghai, threeMinutes, 21));
    }
    EXPECT_THAT(questions(), IsEmpty()) << "it is not repeated";
    EXPECT_THAT(log.all(), IsEmpty());
}

class EntrustPointDate : public EntrustPointTest, public ::testing::WithParamInterface<long long>
{
};

TEST_P(EntrustPointDate, IsAskedForAsAWholeNumber)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->sendQueryHistoryEntrustInfoReq(GetParam()));
    EXPECT_THAT(questions()[0].toStdString(),
                HasSubstr("\"date\":" + std::to_string(GetParam()) + ",\"market\""));
}

INSTANTIATE_TEST_SUITE_P(Dates, EntrustPointDate, ::testing::Values(20240102, 0, -1, 9007199254740991));

TEST_F(EntrustPointTest, TellsWhetherTheBusTookTheQuestionForAPastDay)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->sendQueryHistoryEntrustInfoReq(20240102));
    bus().takesMessages = false;
    EXPECT_FALSE(overlay->sendQueryHistoryEntrustInfoReq(20240102));
}

TEST_F(EntrustPointTest, SendsTodaysQuestionAlsoBeforeASecurityIsShown)
{
    create().sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(questions(),
                ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"","screenId":"screen-1","stkcode":""})"));
}

TEST_F(EntrustPointTest, NamesItsSecurityAndItsScreenInUtf8)
{
    axis.screen = "屏幕";
    create();
    calc(makeSecurity(1, "代码", 5), threeMinutes, 21);
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"屏幕","stkcode":"代码"})"));
}

TEST_F(EntrustPointTest, ReadsACodeAndANameWithoutAnEndNoFurtherThanTheyReach)
{
    Korvane::tagCodeWithName endless = shanghai;
    endless.identity = 7003;
    std::memset(endless.code, 'c', sizeof endless.code);
    std::memset(endless.name, 'n', sizeof endless.name);
    create();
    calc(endless, threeMinutes, 21);
    const std::string code(39, 'c');
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr("\"stkcode\":\"" + code + "\""));
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{anOrder()}, code.c_str()));
    listAt(0, yOfTen());
    ASSERT_THAT(axis.popups, SizeIs(1));
    EXPECT_THAT(axis.popups[0][0].toStdString(), StartsWith("买入[" + std::string(32, 'n') + "]\n"));
}

// Change of security

TEST_F(EntrustPointTest, ForgetsTheOrdersWithTheSecurity)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shenzhen, threeMinutes, 21);
    EXPECT_FALSE(paint());
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
    hearOrders({SentOrder()});
    EXPECT_FALSE(paint()) << "a late answer for the security before";
    calc(shanghai, threeMinutes, 21);
    EXPECT_FALSE(paint());
}

TEST_F(EntrustPointTest, ForgetsTheOrdersAndStopsItsTimerForASecurityWithoutBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shenzhen, {}, 21);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_FALSE(paint());
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointTest, StartsItsTimerAnewForAnotherSecurity)
{
    createOnThreeMinutes();
    startTimerOddly();
    calc(shenzhen, threeMinutes, 21);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 10000);
}

TEST_F(EntrustPointTest, NamesTheNewSecurityInItsTexts)
{
    createOnThreeMinutes();
    calc(shenzhen, threeMinutes, 21);
    hear(Topic::TRADEQUERY,
         sentAnswer("EntrustTodayTrade", QJsonArray{with(SentOrder(), "market", QStringLiteral("2"))},
                    "000001"));
    EXPECT_THAT(listedText(), StartsWith("买入[平湖机械]\n"));
}

// Refresh

TEST_F(EntrustPointTest, AsksForTodaysOrdersWhenTheTimerEndsAlsoOnThePastChart)
{
    axis.mode = 2;
    createOnThreeMinutes({{QStringLiteral("auto_refresh_time"), 1}});
    ASSERT_TRUE(waitUntil([] { return questions().size() == 1; }));
    EXPECT_EQ(questions()[0],
              R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})");
    EXPECT_FALSE(timer()->isActive()) << "a lost answer stops the refresh";
    calc(shanghai, threeMinutes, 21);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointTest, LeavesARunningTimerAloneInCalcIt)
{
    createOnThreeMinutes();
    startTimerOddly();
    calc(shanghai, threeMinutes, 21);
    EXPECT_TRUE(timerRunsOn());
    calc(shanghai, {}, 21);
    EXPECT_TRUE(timerRunsOn()) << "nor without bars";
}

class EntrustPointCommand : public EntrustPointTest, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(EntrustPointCommand, RestartsItsTimerAfterEveryAnswer)
{
    createOnThreeMinutes({{QStringLiteral("auto_refresh_time"), 7}});
    const QJsonValue answers[] = {QJsonArray{},
                                  QJsonArray{anOrder()},
                                  QJsonArray{with(SentOrder(), "bsflag2", QStringLiteral("0F"))},
                                  QJsonArray{with(SentOrder(), "market", QStringLiteral("2"))},
                                  QJsonArray{5},
                                  QStringLiteral("no array"),
                                  QJsonObject{},
                                  QJsonValue::Undefined};
    for (const QJsonValue &data : answers) {
        startTimerOddly();
        hear(Topic::TRADEQUERY, sentAnswer(GetParam(), data));
        EXPECT_TRUE(timer()->isActive());
        EXPECT_EQ(timer()->interval(), 7000);
    }
}

TEST_P(EntrustPointCommand, StartsAnIdleTimer)
{
    createOnThreeMinutes();
    timer()->stop();
    hearOrders({}, GetParam());
    EXPECT_TRUE(timer()->isActive());
}

TEST_P(EntrustPointCommand, HasGroupedTheOrdersWhenItAsksForARepaint)
{
    createOnThreeMinutes();
    std::vector<std::string> drawnInside;
    axis.onUpdate = [&] { drawnInside = drawn(); };
    hearOrders({SentOrder()}, GetParam());
    EXPECT_THAT(drawnInside, ElementsAre("0 20 10"));
}

TEST_P(EntrustPointCommand, AsksForOneRepaintHoweverManyOrders)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder(), SentOrder{"0F"}}, GetParam());
    EXPECT_THAT(axis.updated, SizeIs(1));
}

TEST_P(EntrustPointCommand, StoresTheOrdersAndAsksForARepaint)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()}, GetParam());
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_P(EntrustPointCommand, ChangesNothingByAnEmptyAnswer)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    hearOrders({}, GetParam());
    hear(Topic::TRADEQUERY, sentAnswer(GetParam(), QStringLiteral("no array")));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
    EXPECT_THAT(axis.updated, IsEmpty());
}

TEST_P(EntrustPointCommand, KeepsItsOrdersForLaterBarsWhenAnAnswerIsEmpty)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9340000"}});
    hearOrders({}, GetParam());
    hear(Topic::TRADEQUERY, sentAnswer(GetParam(), QStringLiteral("no array")));
    calc(shanghai, minutes({931, 932, 933, 934}), 21);
    EXPECT_THAT(drawn(), ElementsAre("3 20 10"));
}

TEST_P(EntrustPointCommand, ReplacesAllOrdersByTheLastAnswer)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "11"}});
    hearOrders({SentOrder{"0S", "8", "12", "9320000"}}, GetParam());
    EXPECT_THAT(drawn(), ElementsAre("1 25 12"));
}

TEST_P(EntrustPointCommand, TakesTheOrdersOfAnAnswerThatCallsItselfAFailure)
{
    createOnThreeMinutes();
    hear(Topic::TRADEQUERY,
         with(with(sentAnswer(GetParam(), QJsonArray{anOrder()}), "success", false), "errcode", 5));
    EXPECT_THAT(drawn(), SizeIs(1));
}

TEST_P(EntrustPointCommand, IsAboutTheSecurityInAnyLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeMinutes, 21);
    hear(Topic::TRADEQUERY, sentAnswer(GetParam(), QJsonArray{anOrder()}, "ABc1"));
    EXPECT_THAT(drawn(), SizeIs(1));
}

TEST_P(EntrustPointCommand, IsHeardInEveryChartMode)
{
    for (const int mode : {0, 1, 2, 3}) {
        axis.mode = mode;
        createOnThreeMinutes();
        hearOrders({SentOrder()}, GetParam());
        EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << mode;
    }
}

TEST_P(EntrustPointCommand, IsHeardWhoeverHasAsked)
{
    createOnThreeMinutes();
    QJsonObject message = sentAnswer(GetParam(), QJsonArray{anOrder()});
    for (const char *key : {"screenId", "objectId", "market", "date"}) {
        message = with(message, key, QStringLiteral("another's"));
    }
    hear(Topic::TRADEQUERY, message);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_P(EntrustPointCommand, IsNotHeardAsANotification)
{
    axis.mode = 2;
    createOnThreeMinutes();
    timer()->stop();
    hear(Topic::TRADENOTIFY, sentAnswer(GetParam(), QJsonArray{anOrder()}));
    EXPECT_FALSE(paint());
    EXPECT_FALSE(timer()->isActive());
}

INSTANTIATE_TEST_SUITE_P(Commands, EntrustPointCommand,
                         ::testing::Values("EntrustTodayTrade", "EntrustHistoryTrade"));

TEST_P(EntrustPointCommand, IsHeardWithoutACodeWhileItShowsNoSecurity)
{
    create();
    const QJsonObject empty{{QStringLiteral("cmd"), QLatin1String(GetParam())},
                            {QStringLiteral("data"), QJsonArray()}};
    hear(Topic::TRADEQUERY, empty);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 10000);
    hear(Topic::TRADEQUERY, with(empty, "data", QJsonArray{anOrder()}));
    EXPECT_THAT(axis.updated, SizeIs(1));
}

TEST_P(EntrustPointCommand, AsksForARepaintBeforeItRestartsItsTimer)
{
    createOnThreeMinutes();
    timer()->stop();
    bool wasActive = true;
    axis.onUpdate = [&] { wasActive = timer()->isActive(); };
    hearOrders({SentOrder()}, GetParam());
    EXPECT_FALSE(wasActive);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointTest, ReportsSuccessWhateverTheAnswerHolds)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->handleQueryTodayEntrustInfoRes({}));
    EXPECT_TRUE(overlay->handleQueryTodayEntrustInfoRes(QJsonArray{5}));
    EXPECT_TRUE(overlay->handleQueryHistoryEntrustInfoRes(QJsonArray{anOrder()}));
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
}

class EntrustPointIgnores : public EntrustPointTest, public ::testing::WithParamInterface<Ignored>
{
};

TEST_P(EntrustPointIgnores, AndChangesNothing)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    timer()->stop();
    const LogCapture log;
    hear(GetParam().topic, QByteArray(GetParam().payload));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(questions(), IsEmpty());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(axis.messages, IsEmpty());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_THAT(log.all(), IsEmpty());
}

#define ROWS R"("data":[{"market":"1","bsflag2":"0S","orderstatus":"8"}]})"

INSTANTIATE_TEST_SUITE_P(
    Messages, EntrustPointIgnores,
    ::testing::Values(
        Ignored{"OfAnotherTopic", "EntrustQuery", R"({"cmd":"EntrustTodayTrade","stkcode":"600536",)" ROWS},
        Ignored{"OfTheTopicInOtherCase", "tradequery",
                R"({"cmd":"EntrustTodayTrade","stkcode":"600536",)" ROWS},
        Ignored{"WithAnotherCommand", "TradeQuery", R"({"cmd":"TodayTrade","stkcode":"600536",)" ROWS},
        Ignored{"WithTheTodayCommandInOtherCase", "TradeQuery",
                R"({"cmd":"entrusttodaytrade","stkcode":"600536",)" ROWS},
        Ignored{"WithTheHistoryCommandInOtherCase", "TradeQuery",
                R"({"cmd":"ENTRUSTHISTORYTRADE","stkcode":"600536",)" ROWS},
        Ignored{"OfTodayOfAnotherSecurity", "TradeQuery",
                R"({"cmd":"EntrustTodayTrade","stkcode":"000001",)" ROWS},
        Ignored{"OfHistoryOfAnotherSecurity", "TradeQuery",
                R"({"cmd":"EntrustHistoryTrade","stkcode":"000001",)" ROWS},
        Ignored{"WithTheCodeAsANumber", "TradeQuery", R"({"cmd":"EntrustTodayTrade","stkcode":600536,)" ROWS},
        Ignored{"WithTheCommandAsANumber", "TradeQuery", R"({"cmd":1,"stkcode":"600536",)" ROWS},
        Ignored{"ThatAreAnArray", "TradeQuery", "[]"}, Ignored{"ThatAreAnEmptyObject", "TradeQuery", "{}"},
        Ignored{"ThatAreNoJson", "TradeQuery", "{"},
        Ignored{"ThatAnswerACancellationOfAnotherObject", "TradeQuery",
                R"({"cmd":"EntrustCancel","success":false,"msg":"no","objectId":"{other}"})"},
        Ignored{"ThatAnswerACancellationOfNobody", "TradeQuery",
                R"({"cmd":"EntrustCancel","success":false,"msg":"no"})"},
        Ignored{"ThatNotifyOnATopicInOtherCase", "tradenotify", R"({"stkcode":"600536"})"},
        Ignored{"ThatNotifyOnALongerTopic", "TradeNotify ", R"({"stkcode":"600536"})"},
        Ignored{"ThatAnswerOnALongerTopic", "TradeQuery ",
                R"({"cmd":"EntrustTodayTrade","stkcode":"600536",)" ROWS},
        Ignored{"ThatNotifyOfNothing", "TradeNotify", "{}"},
        Ignored{"WithTheCancelCommandInOtherCase", "TradeQuery",
                R"({"cmd":"entrustcancel","success":false,"msg":"no"})"},
        Ignored{"ThatNotifyInNoJson", "TradeNotify", "600536"},
        Ignored{"ThatNotifyInAnArray", "TradeNotify", R"(["600536"])"},
        Ignored{"ThatNotifyOfAnotherSecurity", "TradeNotify", R"({"stkcode":"600519"})"},
        Ignored{"ThatNotifyWithTheCodeAsANumber", "TradeNotify", R"({"stkcode":600536})"}),
    ByName());

// Which rows of an answer are kept

struct Market
{
    const char *name;
    int shown; ///< market number of the security on the chart
    QJsonValue sent;
    bool isKept;
};

class EntrustPointMarket : public EntrustPointTest, public ::testing::WithParamInterface<Market>
{
};

TEST_P(EntrustPointMarket, OfARowIsTheSecuritysOwn)
{
    create();
    calc(makeSecurity(GetParam().shown, "600536", 1), threeMinutes, 21);
    const LogCapture log;
    hearOrders({with(SentOrder(), "market", GetParam().sent)});
    EXPECT_EQ(paint(), GetParam().isKept);
    EXPECT_THAT(log.all(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Markets, EntrustPointMarket,
    ::testing::Values(Market{"OneIsShanghai", 1, QStringLiteral("1"), true},
                      Market{"TwoIsShenzhen", 0, QStringLiteral("2"), true},
                      Market{"ZeroIsNotShenzhen", 0, QStringLiteral("0"), false},
                      Market{"OneIsNotShenzhen", 0, QStringLiteral("1"), false},
                      Market{"TwoIsNotShanghai", 1, QStringLiteral("2"), false},
                      Market{"TwoIsNotHongKong", 2, QStringLiteral("2"), false},
                      Market{"LettersAreNone", 1, QStringLiteral("SH"), false},
                      Market{"NumberIsNone", 1, 1, false},
                      Market{"MissingIsNone", 1, QJsonValue::Undefined, false},
                      Market{"WrapsAtSixteenBits", 1, QStringLiteral("65537"), true},
                      Market{"ZeroBelongsToAMarketWithoutCode", 12, QStringLiteral("0"), true},
                      Market{"NumberBelongsToAMarketWithoutCode", 12, 1, true},
                      Market{"OneIsNotAMarketWithoutCode", 12, QStringLiteral("1"), false},
                      Market{"MissingBelongsToANegativeMarket", -5, QJsonValue::Undefined, true}),
    ByName());

class EntrustPointSide : public EntrustPointTest,
                         public ::testing::WithParamInterface<std::pair<const char *, const char *>>
{
};

TEST_P(EntrustPointSide, FollowsTheDirectionCodes)
{
    createOnThreeMinutes();
    const auto &[codes, marker] = GetParam();
    for (const QString &code : QString::fromLatin1(codes).split(QLatin1Char(' '))) {
        hearOrders({with(SentOrder(), "bsflag2", code)});
        EXPECT_THAT(drawn(), ElementsAre(marker)) << code.toStdString();
        hearOrders({SentOrder{"0B", "9"}});
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, EntrustPointSide,
                         ::testing::Values(std::pair("0B 0b 0c 0d 0e 0a 0q 0w 0y 0. 0l", "0 20 10"),
                                           std::pair("0S 0g 0h 0i 0j 0r 0v 0x 0z 0` 0m 0o 0f", "0 23 10")));

struct Unreadable
{
    const char *name;
    const char *key;
    QJsonValue value;
};

class EntrustPointSkips : public EntrustPointTest, public ::testing::WithParamInterface<Unreadable>
{
};

TEST_P(EntrustPointSkips, AndLogs)
{
    createOnThreeMinutes();
    const QJsonObject row = with(SentOrder(), GetParam().key, GetParam().value);
    const LogCapture log;
    hearOrders({row, SentOrder{"0S"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10")) << "the other row is read";
    QString json = QString::fromUtf8(QJsonDocument(row).toJson(QJsonDocument::Indented));
    json.replace(QLatin1Char('"'), QLatin1String("\\\"")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral("\"%1\"").arg(json)));
}

INSTANTIATE_TEST_SUITE_P(Rows, EntrustPointSkips,
                         ::testing::Values(Unreadable{"OfTheSideB", "bsflag2", QStringLiteral("B")},
                                           Unreadable{"OfTheSideS", "bsflag2", QStringLiteral("S")},
                                           Unreadable{"OfACodeInOtherCase", "bsflag2", QStringLiteral("0F")},
                                           Unreadable{"OfACodeWithABlank", "bsflag2", QStringLiteral("0B ")},
                                           Unreadable{"OfAnEmptySide", "bsflag2", QString()},
                                           Unreadable{"WithoutASide", "bsflag2", QJsonValue::Undefined},
                                           Unreadable{"WithASideAsANumber", "bsflag2", 0},
                                           Unreadable{"OfAnEmptyStatus", "orderstatus", QString()},
                                           Unreadable{"WithoutAStatus", "orderstatus", QJsonValue::Undefined},
                                           Unreadable{"WithAStatusAsANumber", "orderstatus", 2}),
                         ByName());

TEST_F(EntrustPointTest, LogsAnUnreadableRowByteForByte)
{
    createOnThreeMinutes();
    const LogCapture log;
    hearOrders({{{QStringLiteral("market"), QStringLiteral("1")},
                 {QStringLiteral("bsflag2"), QStringLiteral("0F")}}});
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral(R"("{\n    \"bsflag2\": \"0F\",\n    \"market\": \"1\"\n}\n")")));
}

TEST_F(EntrustPointTest, SkipsAnUnreadableRowOfAnotherMarketWithoutALine)
{
    createOnThreeMinutes();
    const LogCapture log;
    hearOrders({with(SentOrder{"0F", ""}, "market", QStringLiteral("2"))});
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointTest, SkipsWhatIsNoObjectLikeARowOfNoMarket)
{
    createOnThreeMinutes();
    const LogCapture log;
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{5, QStringLiteral("x"), anOrder()}));
    EXPECT_THAT(drawn(), SizeIs(1));
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointTest, TakesWhatIsNoObjectForAnEmptyRowOfAMarketWithoutCode)
{
    create();
    calc(makeSecurity(12, "600536", 1), threeMinutes, 21);
    const LogCapture log;
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{5}));
    EXPECT_FALSE(paint());
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral(R"("{\n}\n")")));
}

TEST_F(EntrustPointTest, KeepsTheMarkersWhenNoRowOfAnAnswerIsReadable)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    hearOrders({SentOrder{"0F"}});
    EXPECT_THAT(axis.updated, SizeIs(1));
    calc(shanghai, minutes({935, 936}), 21);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << "there are no orders to group anew";
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointTest, DrawsNoMarkerForABarOfCancelledOrders)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "6"}});
    EXPECT_FALSE(paint());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
}

TEST_F(EntrustPointTest, ReadsAllFieldsOfARow)
{
    createOnThreeMinutes();
    const QString date = QString::number(today);
    const auto textOf = [&](const char *status) {
        hearOrders({with(SentOrder{"0S", status, "10.0004", "9315999"}, "ordersno", QStringLiteral("42"))});
        listAt(0, yOfTen());
        return axis.popups.front().front();
    };
    const QString head =
        QStringLiteral("卖出[江山科技]\n状态:%1\n编号:42\n委托时间:09:31:59\n委托价格:10.000\n"
                       "委托数量:500\n");
    EXPECT_EQ(textOf("8"), head.arg(QStringLiteral("已成交")) + QStringLiteral("委托日期:") + date);
    EXPECT_EQ(textOf("7"), head.arg(QStringLiteral("部成(未成可撤)")) +
                               QStringLiteral("成交均价:10.050\n成交数量:200\n可撤数量:300\n委托日期:") +
                               date);
    EXPECT_EQ(textOf("5"), head.arg(QStringLiteral("部成(未成已撤)")) +
                               QStringLiteral("成交均价:10.050\n成交数量:200\n已撤数量:100\n委托日期:") +
                               date);
}

TEST_F(EntrustPointTest, ReadsJsonNumbersAndMissingFieldsAsZero)
{
    createOnThreeMinutes();
    QJsonObject numbers{{QStringLiteral("market"), QStringLiteral("1")},
                        {QStringLiteral("bsflag2"), QStringLiteral("0B")},
                        {QStringLiteral("orderstatus"), QStringLiteral("7")}};
    const QJsonObject missing = numbers;
    for (const char *key : {"ordersno", "operdate", "opertime", "orderprice", "orderqty", "matchqty",
                            "matchamt", "cancelqty", "fundid"}) {
        numbers.insert(QLatin1String(key), 7);
    }
    for (const QJsonObject &row : {numbers, missing}) {
        hearOrders({row});
        EXPECT_THAT(drawn(), ElementsAre("0 21 0v"));
        listAt(0, axis.yOf(0.0));
        const std::string text = axis.popups.front().front().toStdString();
        EXPECT_THAT(text, StartsWith("买入[江山科技]\n状态:部成(未成可撤)\n编号:0\n委托时间:00:00:00\n"
                                     "委托价格:0.000\n委托数量:0\n成交均价:"));
        EXPECT_THAT(text, HasSubstr("nan\n")) << "nothing divided by nothing";
        EXPECT_THAT(text, EndsWith("成交数量:0\n可撤数量:0\n委托日期:000000"));
    }
}

TEST_F(EntrustPointTest, ShowsAnInfiniteAverageForAnAmountWithoutAQuantity)
{
    createOnThreeMinutes();
    hearOrders({with(SentOrder{"0B", "7"}, "matchqty", QStringLiteral("0"))});
    listAt(0, yOfTen());
    EXPECT_TRUE(axis.popups.front().front().contains(QStringLiteral("成交均价:inf\n成交数量:0\n")));
}

TEST_F(EntrustPointTest, ReadsNoOtherFieldOfARow)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "7"}});
    const std::string text = listedText();
    QJsonObject row = SentOrder{"0B", "7"};
    for (const char *key : {"orderdate", "bizdate", "matchtime", "matchprice", "cancelflag", "stkname",
                            "stkcode", "bsflag", "buy", "date", "price", "vol"}) {
        row.insert(QLatin1String(key), QStringLiteral("19990101"));
    }
    hearOrders({row});
    EXPECT_EQ(listedText(), text);
}

TEST_F(EntrustPointTest, ReadsRowsOfDifferentShapesInOneAnswer)
{
    createOnThreeMinutes();
    const QJsonObject whole = SentOrder{"0B", "7"};
    QJsonObject shorter = whole;
    for (const char *key : {"fundid", "matchamt", "matchqty"}) {
        shorter.remove(QLatin1String(key));
    }
    QJsonObject longer = with(whole, "orderqty", QStringLiteral("900"));
    for (const char *key : {"aaa", "ccc", "matchp", "zzz"}) {
        longer.insert(QLatin1String(key), QStringLiteral("77"));
    }
    hearOrders({whole, shorter, longer, shorter, whole});
    listAt(0, yOfTen());
    ASSERT_THAT(axis.popups.front(), SizeIs(5));
    const QStringList &texts = axis.popups.front();
    EXPECT_TRUE(texts[0].contains(QStringLiteral("委托数量:500\n成交均价:10.050\n成交数量:200\n")));
    EXPECT_TRUE(texts[1].contains(QStringLiteral("成交数量:0\n可撤数量:500\n")));
    EXPECT_TRUE(texts[2].contains(QStringLiteral("委托数量:900\n成交均价:10.050\n成交数量:200\n")));
    EXPECT_EQ(texts[3], texts[1]);
    EXPECT_EQ(texts[4], texts[0]);
}

struct NoNumber
{
    const char *name;
    const char *text;
};

class EntrustPointNoNumber : public EntrustPointTest, public ::testing::WithParamInterface<NoNumber>
{
};

TEST_P(EntrustPointNoNumber, IsReadAsZero)
{
    struct Field
    {
        const char *key;
        const char *status;
        const char *shown;
    };
    createOnThreeMinutes();
    for (const Field &field :
         {Field{"ordersno", "8", "编号:0\n"}, Field{"orderqty", "8", "委托数量:0\n"},
          Field{"matchqty", "7", "成交数量:0\n"}, Field{"cancelqty", "5", "已撤数量:0\n"},
          Field{"operdate", "8", "委托日期:000000"}, Field{"opertime", "8", "委托时间:00:00:00\n"}}) {
        hearOrders({with(SentOrder{"0B", field.status}, field.key, QString::fromUtf8(GetParam().text))});
        EXPECT_THAT(listedText(), HasSubstr(field.shown)) << field.key;
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, EntrustPointNoNumber,
                         ::testing::Values(NoNumber{"Words", "abc"}, NoNumber{"Empty", ""},
                                           NoNumber{"TooLargeByOne", "2147483648"},
                                           NoNumber{"TooSmallByOne", "-2147483649"},
                                           NoNumber{"TwentyDigits", "99999999999999999999"},
                                           NoNumber{"Decimals", "1.5"}, NoNumber{"Exponent", "1e3"},
                                           NoNumber{"Hexadecimal", "0x10"}, NoNumber{"FullWidth", "１"},
                                           NoNumber{"Infinite", "inf"}, NoNumber{"NotANumber", "nan"}),
                         ByName());

TEST_F(EntrustPointTest, ReadsTheLargestWholeNumbers)
{
    createOnThreeMinutes();
    hearOrders({with(with(SentOrder{"0B", "8"}, "ordersno", QStringLiteral("2147483647")), "orderqty",
                     QStringLiteral("-2147483648"))});
    EXPECT_THAT(listedText(), HasSubstr("编号:2147483647\n"));
    EXPECT_THAT(listedText(), HasSubstr("委托数量:-2147483648\n"));
}

class EntrustPointAbsurd : public EntrustPointTest, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(EntrustPointAbsurd, NumbersArePaintedHitListedAndOfferedForCancellation)
{
    create();
    calc(shanghai, minutes({931, 1500}), 21); // the minutes of orders without a sensible time
    QJsonObject row = SentOrder{"0B", "7"};
    for (const char *key : {"ordersno", "operdate", "opertime", "orderprice", "orderqty", "matchqty",
                            "matchamt", "cancelqty", "fundid"}) {
        row.insert(QLatin1String(key), QLatin1String(GetParam()));
    }
    axis.onPopup = [] { return 0; };
    axis.onConfirm = [] { return true; };
    for (const QJsonObject &order : {row, with(row, "opertime", QStringLiteral("9310000"))}) {
        hearOrders({order});
        EXPECT_TRUE(paint());
        for (const double y : {axis.yOf(axis.low), axis.yOf(axis.high), axis.yOf(0)}) {
            for (const double x : {0.0, 10.0}) {
                overlay->hitTest(x, y);
                overlay->handleMousePress(x, y);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, EntrustPointAbsurd,
                         ::testing::Values("", "-", "-1", "-2147483648", "2147483647", "99999999999999999999",
                                           "-99999999999999999999", "1e308", "-1e308", "1e400", "1e-400",
                                           "inf", "-inf", "nan", "9223372036854775.807",
                                           "-9223372036854776"));

// The minute that an order is shown at

struct Minute
{
    const char *name;
    const char *time; ///< as sent
    int days;         ///< from today
    std::uint32_t shown;
};

class EntrustPointMinute : public EntrustPointTest, public ::testing::WithParamInterface<Minute>
{
};

TEST_P(EntrustPointMinute, IsOneOfTheChart)
{
    const std::vector<std::uint32_t> all = {925,  930,  931,  1000, 1130, 1131, 1200,
                                            1300, 1301, 1302, 1459, 1500, 1501};
    create();
    calc(shanghai, minutes(all), 21);
    const QByteArray date = QByteArray::number(dayFromToday(GetParam().days));
    hearOrders({SentOrder{"0B", "2", "10", GetParam().time, date}});
    ASSERT_TRUE(paint());
    ASSERT_THAT(painter.calls, SizeIs(1));
    EXPECT_EQ(all[static_cast<std::size_t>(painter.calls[0].ints[1])], GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Times, EntrustPointMinute,
    ::testing::Values(
        Minute{"BeforeTheFirstSecond", "9300099", 0, 931}, Minute{"FirstSecond", "9300100", 0, 930},
        Minute{"LastOfTheFirstMinute", "9305999", 0, 930}, Minute{"WithLeadingZero", "09300100", 0, 930},
        Minute{"SecondMinute", "9310000", 0, 931}, Minute{"Auction", "9150000", 0, 931},
        Minute{"Midmorning", "10005999", 0, 1000}, Minute{"EndOfTheMorning", "11300000", 0, 1130},
        Minute{"MinuteAfterTheMorning", "11310000", 0, 1131},
        Minute{"LastBeforeNoonsBreak", "11310099", 0, 1131}, Minute{"Break", "11310100", 0, 1301},
        Minute{"Noon", "12000000", 0, 1301}, Minute{"LastOfTheBreak", "13005999", 0, 1301},
        Minute{"EndOfTheBreak", "13009999", 0, 1301}, Minute{"Afternoon", "13010000", 0, 1301},
        Minute{"SecondOfTheAfternoon", "13020000", 0, 1302}, Minute{"LastMinute", "14595999", 0, 1459},
        Minute{"Close", "15000000", 0, 1500}, Minute{"BeforeTheEnd", "15000099", 0, 1500},
        Minute{"TheEnd", "15000100", 0, 1500}, Minute{"Evening", "20000000", 0, 1500},
        Minute{"Largest", "2147483647", 0, 1500}, Minute{"Smallest", "-2147483648", 0, 931},
        Minute{"TooLargeToRead", "2147483648", 0, 931}, Minute{"Empty", "", 0, 931},
        Minute{"Words", "noon", 0, 931}, Minute{"Yesterday", "10000000", -1, 931},
        Minute{"YesterdayEvening", "20000000", -1, 931}, Minute{"LongAgo", "10000000", -4000, 931},
        Minute{"Tomorrow", "10000000", 1, 1000}),
    ByName());

TEST_F(EntrustPointTest, ShowsAnOrderWithoutADateAtTheFirstMinute)
{
    createOnThreeMinutes();
    hearOrders({with(SentOrder{"0B", "2", "10", "9330000"}, "operdate", QJsonValue::Undefined)});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_F(EntrustPointTest, KeepsTheOwnTimeOfAnOrderInItsText)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9150759"}});
    listAt(0, yOfTen());
    EXPECT_TRUE(axis.popups.front().front().contains(QStringLiteral("委托时间:09:15:07\n")));
}

TEST_F(EntrustPointTest, ShowsOrdersOfAPastDayOnTodaysMinutesOnly)
{
    axis.mode = 2;
    create();
    calc(shanghai, {makeMinuteBar(20240105, 931), makeMinuteBar(today, 931)}, 21);
    hearOrders({SentOrder{"0B", "2", "10", "10000000", "20240105"}}, "EntrustHistoryTrade");
    EXPECT_THAT(drawn(), ElementsAre("1 20 10"));
}

TEST_F(EntrustPointTest, ShowsOrdersOnTheDayOfTheirAnswerWhenADayHasPassed)
{
    TimeZone zone(westernmostZone);
    const Korvane::AnalyData earlier = makeMinuteBar(dayFromToday(0), 931);
    zone.set(easternmostZone);
    const Korvane::AnalyData later = makeMinuteBar(dayFromToday(0), 931);
    const SentOrder order{"0B", "2", "10", "9310000", "29991231"};

    zone.set(westernmostZone);
    create();
    calc(shanghai, {earlier, later}, 21);
    hearOrders({order});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    zone.set(easternmostZone);
    hearOrders({order});
    EXPECT_THAT(drawn(), ElementsAre("1 20 10"));
}

// Orders on bars

TEST_F(EntrustPointTest, DrawsBarByBarAndPriceByPrice)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "12", "9330000"}, SentOrder{"0S", "8", "11", "9310000"},
                SentOrder{"0B", "7", "10.5", "9330000"}, SentOrder{"0S", "2", "10", "9310000"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10", "0 25 11", "2 21 10.5", "2 20 12"));
}

TEST_F(EntrustPointTest, SettlesOneMarkerForAllOrdersAtAPrice)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0S", "2"}, SentOrder{"0S", "8"}, SentOrder{"0B", "8", "10.1234"},
                SentOrder{"0B", "2", "10.1226"}});
    EXPECT_THAT(drawn(), ElementsAre("0 21 10", "0 21 10.123"));
}

TEST_F(EntrustPointTest, DrawsAPriceCutOffAtTheThousandth)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1.001"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 1"));
}

TEST_F(EntrustPointTest, PreservesTheOrderOfTheAnswer)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2"}, SentOrder{"0S", "2"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    hearOrders({SentOrder{"0S", "2"}, SentOrder{"0B", "2"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
}

TEST_F(EntrustPointTest, KeepsOrdersWithoutABarForLaterBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9340000"}});
    EXPECT_FALSE(paint());
    calc(shanghai, minutes({931, 932, 933, 934}), 21);
    EXPECT_THAT(drawn(), ElementsAre("3 20 10"));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointTest, MovesTheMarkersWithTheBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9320000"}});
    calc(shanghai, minutes({932, 933}), 21);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
    EXPECT_THAT(listAt(10, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointTest, ShowsNothingOnceNoBarHasAnOrder)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, minutes({1001, 1002}), 21);
    EXPECT_FALSE(paint());
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), IsEmpty());
}

TEST_F(EntrustPointTest, ShowsOrdersOnEveryBarOfTheirMinuteInAnyOrderOfBars)
{
    create();
    calc(shanghai, minutes({933, 931, 932, 931}), 21);
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("1 20 10", "3 20 10"));
}

TEST_F(EntrustPointTest, KeepsTheMarkersWithoutBars)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, {}, 21);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), -1);
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001"));
    hearOrders({SentOrder{"0S"}});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << "grouped anew when bars come";
    calc(shanghai, threeMinutes, 21);
    EXPECT_THAT(drawn(), ElementsAre("0 23 10"));
}

// Painting

TEST_F(EntrustPointTest, NeverWidensThePriceScale)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1e6"}});
    int untouched = 4711;
    EXPECT_EQ(overlay->maximizeValue(untouched), DBL_MIN);
    EXPECT_EQ(overlay->minimizeValue(untouched), DBL_MAX);
    EXPECT_EQ(untouched, 4711);
    EXPECT_TRUE(overlay->calcRatio(1, 2));
}

TEST_F(EntrustPointTest, PaintsNothingWithoutMarkersOrWithoutAScale)
{
    createOnThreeMinutes();
    EXPECT_FALSE(paint());
    hearOrders({SentOrder()});
    axis.hasPriceScale = false;
    EXPECT_FALSE(paint());
    EXPECT_THAT(painter.calls, IsEmpty());
}

struct Clamped
{
    const char *name;
    const char *price;
    const char *drawn;
    double top;    ///< of the pixels that are caught
    double bottom; ///< included
};

class EntrustPointClamped : public EntrustPointTest, public ::testing::WithParamInterface<Clamped>
{
protected:
    void SetUp() override
    {
        axis.low = 9.0;
        axis.high = 11.0;
        axis.pixelsPerUnit = 100.0;
        createOnThreeMinutes();
        hearOrders({SentOrder{"0B", "2", GetParam().price}});
    }
};

TEST_P(EntrustPointClamped, IsDrawnInsideTheVisibleRange)
{
    EXPECT_THAT(drawn(), ElementsAre(GetParam().drawn));
}

TEST_P(EntrustPointClamped, IsHitFromTopToBottom)
{
    EXPECT_EQ(overlay->hitTest(0, GetParam().top), 0);
    EXPECT_EQ(overlay->hitTest(0, GetParam().bottom), 0);
    EXPECT_EQ(overlay->hitTest(0, GetParam().top - 0.01), -1);
    EXPECT_EQ(overlay->hitTest(0, GetParam().bottom + 0.01), -1);
}

TEST_P(EntrustPointClamped, IsClickedFromTopToBottom)
{
    EXPECT_THAT(listAt(0, GetParam().top), SizeIs(1));
    EXPECT_THAT(listAt(0, GetParam().bottom), SizeIs(1));
    EXPECT_THAT(listAt(0, GetParam().top - 0.01), IsEmpty());
    EXPECT_THAT(listAt(0, GetParam().bottom + 0.01), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Prices, EntrustPointClamped,
                         ::testing::Values(Clamped{"Inside", "10", "0 20 10", 100.0, 116.0},
                                           Clamped{"AtTheLow", "9", "0 20 9v", 184.0, 200.0},
                                           Clamped{"BelowTheLow", "5", "0 20 9v", 184.0, 200.0},
                                           Clamped{"AtTheHigh", "11", "0 20 11", 0.0, 16.0},
                                           Clamped{"AboveTheHigh", "500", "0 20 11", 0.0, 16.0}),
                         ByName());

TEST_F(EntrustPointTest, HoldsAMarkerAtTheBottomOfARangeWithoutHeight)
{
    axis.low = axis.high = 10.0;
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    EXPECT_THAT(drawn(), ElementsAre("0 20 10v"));
    EXPECT_EQ(overlay->hitTest(0, yOfTen() - 16), 0);
    EXPECT_EQ(overlay->hitTest(0, yOfTen() + 1), -1);
    EXPECT_THAT(listAt(0, yOfTen() - 16), SizeIs(1));
    EXPECT_THAT(listAt(0, yOfTen() + 1), IsEmpty());
}

// Hits and clicks

TEST_F(EntrustPointTest, CatchesLessThanEightPixelsFromTheCentreOfABar)
{
    create();
    calc(shanghai, minutes({931}), 21);
    hearOrders({SentOrder()});
    for (const double x : {-7.99, 0.0, 7.99}) {
        EXPECT_EQ(overlay->hitTest(x, yOfTen()), 0) << x;
        EXPECT_THAT(listAt(x, yOfTen()), SizeIs(1)) << x;
    }
    for (const double x : {-8.0, 8.0, 1e9, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(overlay->hitTest(x, yOfTen()), -1) << x;
        EXPECT_THAT(listAt(x, yOfTen()), IsEmpty()) << x;
    }
}

TEST_F(EntrustPointTest, HitsAnyMarkerOfAnyBar)
{
    createOnThreeMinutes();
    hearOrders(
        {SentOrder{"0B", "2", "10"}, SentOrder{"0B", "2", "20"}, SentOrder{"0B", "2", "30", "9330000"}});
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(20)), 0);
    EXPECT_EQ(overlay->hitTest(20, axis.yOf(30)), 0);
    EXPECT_EQ(overlay->hitTest(14, axis.yOf(30)), 0) << "beside a bar of other prices";
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(30)), -1);
}

TEST_F(EntrustPointTest, AsksForTheRangeOnceForABarNearThePointer)
{
    createOnThreeMinutes();
    hearOrders(
        {SentOrder{"0B", "2", "10"}, SentOrder{"0B", "2", "20"}, SentOrder{"0B", "2", "30", "9330000"}});
    axis.rangesAsked = 0;
    overlay->hitTest(0, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 1);
    listAt(0, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 2);
}

TEST_F(EntrustPointTest, AsksForTheRangeAnewForEveryBarNearThePointerAndForNoOther)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "10", "9320000"}});
    axis.rangesAsked = 0;
    overlay->hitTest(1000, yOfTen());
    EXPECT_EQ(axis.rangesAsked, 0);
    overlay->hitTest(5, axis.yOf(50));
    EXPECT_EQ(axis.rangesAsked, 2);
}

TEST_F(EntrustPointTest, HitsTheMarkerAndClicksTheOrdersOwnPrice)
{
    axis.low = 0.5;
    axis.high = 2.0;
    axis.pixelsPerUnit = 100000.0; // a thousandth of the price is taller than a marker
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "1.001"}}); // drawn at 1.000
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(1.0) + 1), 0);
    EXPECT_EQ(overlay->hitTest(0, axis.yOf(1.001) + 1), -1);
    EXPECT_THAT(listAt(0, axis.yOf(1.0) + 1), IsEmpty());
    EXPECT_THAT(listAt(0, axis.yOf(1.001) + 1), SizeIs(1));
}

TEST_F(EntrustPointTest, UsesWhateverRangeAHostWithoutAScaleLeavesForHits)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.hasPriceScale = false;
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
    EXPECT_THAT(listAt(0, yOfTen()), SizeIs(1));
}

TEST_F(EntrustPointTest, ListsTheFirstBarThatHasAnOrderThere)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9320000", QByteArray::number(today), "2"},
                SentOrder{"0B", "2", "10", "9310000", QByteArray::number(today), "1"},
                SentOrder{"0B", "2", "20", "9320000", QByteArray::number(today), "3"}});
    EXPECT_THAT(listAt(5, yOfTen()), ElementsAre("1"));
    EXPECT_THAT(listAt(5, axis.yOf(20)), ElementsAre("3")) << "the first bar has none at that height";
    EXPECT_THAT(listAt(9, yOfTen()), ElementsAre("2"));
}

TEST_F(EntrustPointTest, ListsAllOrdersUnderThePixelInTheOrderOfTheAnswer)
{
    createOnThreeMinutes();
    const QByteArray date = QByteArray::number(today);
    hearOrders({SentOrder{"0B", "2", "10", "9310000", date, "3"},
                SentOrder{"0S", "6", "10", "9310000", date, "1"},
                SentOrder{"0B", "8", "20", "9310000", date, "4"},
                SentOrder{"0B", "8", "10.5", "9310000", date, "2"}});
    EXPECT_THAT(listAt(0, yOfTen() + 1), ElementsAre("3", "1", "2"));
}

TEST_F(EntrustPointTest, ListsTheOrdersThatStoodOnTheBarWhenAnAnswerComesInsideALookUp)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0S"}, SentOrder{"0B", "2", "10", "9330000"}});
    axis.onLookUp = [this] {
        hearOrders({SentOrder{"0B", "2", "10", "9330000", QByteArray::number(today), "99"}});
    };
    EXPECT_THAT(listAt(0, yOfTen()), ElementsAre("700001", "700001"));
}

TEST_F(EntrustPointTest, GoesOnToTheNextBarWhenAnAnswerComesInsideALookUp)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "10", "9330000"}});
    axis.onLookUp = [this] {
        hearOrders({SentOrder{"0B", "2", "10", "9330000", QByteArray::number(today), "99"}});
    };
    EXPECT_THAT(listAt(20, yOfTen()), ElementsAre("99"));
}

TEST_F(EntrustPointTest, AnswersAClickWhateverThePeriodThatWasRefusedLast)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    calc(shanghai, threeMinutes, 4);
    EXPECT_THAT(listAt(0, yOfTen()), SizeIs(1));
}

TEST_F(EntrustPointTest, ShowsNoListBesideTheMarkers)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    const LogCapture log;
    listAt(0, yOfTen() - 1);
    listAt(20, yOfTen());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointTest, IgnoresTheOtherMouseOperations)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()});
    axis.updated.clear();
    axis.hostCalls = 0;
    overlay->handleMousePressR(0, yOfTen());
    overlay->handleMouseRelease(0, yOfTen());
    overlay->handleMouseReleaseR(0, yOfTen());
    overlay->handleMouseMove(0, yOfTen());
    EXPECT_THAT(axis.popups, IsEmpty());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_EQ(axis.hostCalls, 0);
    EXPECT_THAT(questions(), IsEmpty());
}

// Cancelling

class EntrustPointCancel : public EntrustPointTest
{
protected:
    void SetUp() override
    {
        createOnThreeMinutes();
        axis.onConfirm = [] { return true; };
        hearOrders({SentOrder{"0S", "8", "10", "9310000", QByteArray::number(today), "1"},
                    SentOrder{"0B", "2", "10", "9310000", QByteArray::number(today), "2"}});
    }

    /// What the object calls itself in its questions.
    QString objectId()
    {
        EntrustInfo order{};
        overlay->sendCancelOrderReq(order);
        const QJsonObject sent = QJsonDocument::fromJson(questions().back()).object();
        bus().sent.clear();
        return sent.value(QLatin1String("objectId")).toString();
    }

    void hearCancelled(const QJsonObject &rest) { hear(Topic::TRADEQUERY, cancelAnswer(rest)); }

    QJsonObject cancelAnswer(QJsonObject rest)
    {
        return with(with(rest, "cmd", QStringLiteral("EntrustCancel")), "objectId", objectId());
    }
};

TEST_F(EntrustPointCancel, AsksTheUserAndThenTheTradingModule)
{
    choose(1);
    EXPECT_THAT(axis.questions, ElementsAre("撤单?\n" + axis.popups[0][1].toUtf8()));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    const QByteArray sent = bus().sent[0].payload;
    EXPECT_EQ(sent, R"({"cmd":"EntrustCancel","market":"SH","objectId":")" + objectId().toUtf8() +
                        R"(","orderdate":")" + QByteArray::number(today) +
                        R"(","ordersno":"2","screenId":"screen-1","stkcode":"600536"})");
}

TEST_F(EntrustPointCancel, SendsNothingUnlessTheUserConfirms)
{
    axis.onConfirm = [] { return false; };
    choose(1);
    EXPECT_THAT(axis.questions, SizeIs(1));
    EXPECT_THAT(questions(), IsEmpty());
}

struct StatusOffer
{
    const char *name;
    const char *status;
    bool isOffered;
};

class EntrustPointOffer : public EntrustPointCancel, public ::testing::WithParamInterface<StatusOffer>
{
};

TEST_P(EntrustPointOffer, OfACancellationDependsOnTheStatus)
{
    hearOrders({SentOrder{"0B", GetParam().status}});
    choose(0);
    EXPECT_EQ(axis.questions.size(), GetParam().isOffered ? 1U : 0U);
    EXPECT_EQ(countOf("EntrustCancel"), GetParam().isOffered ? 1 : 0);
    EXPECT_THAT(axis.popups, SizeIs(1)) << "it is listed in any case";
}

INSTANTIATE_TEST_SUITE_P(
    Statuses, EntrustPointOffer,
    ::testing::Values(StatusOffer{"NotReported", "0", false}, StatusOffer{"Quoting", "1", true},
                      StatusOffer{"Quoted", "2", true}, StatusOffer{"QuotedWaitingForCancel", "3", false},
                      StatusOffer{"PartDealtWaitingForCancel", "4", false},
                      StatusOffer{"PartCancelled", "5", false}, StatusOffer{"Cancelled", "6", false},
                      StatusOffer{"PartDealt", "7", true}, StatusOffer{"Dealt", "8", false},
                      StatusOffer{"Abolished", "9", false}, StatusOffer{"WaitingToQuote", "A", true},
                      StatusOffer{"QuotingB", "B", false}, StatusOffer{"Confirmed", "G", false},
                      StatusOffer{"SmallLetter", "a", false}, StatusOffer{"WithABlank", "2 ", false},
                      StatusOffer{"Unknown", "Z", false}),
    ByName());

TEST_F(EntrustPointCancel, LogsAChoiceThatIsNotInTheList)
{
    const LogCapture log;
    for (const int row : {-1, -7, 2, 1000, INT_MAX, INT_MIN}) {
        choose(row);
    }
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Unknown select: -1 , select size: 2"),
                            QStringLiteral("Unknown select: -7 , select size: 2"),
                            QStringLiteral("Unknown select: 2 , select size: 2"),
                            QStringLiteral("Unknown select: 1000 , select size: 2"),
                            QStringLiteral("Unknown select: 2147483647 , select size: 2"),
                            QStringLiteral("Unknown select: -2147483648 , select size: 2")));
    EXPECT_THAT(axis.questions, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointCancel, LeavesTheOrdersAsTheyAre)
{
    const auto markers = drawn();
    axis.updated.clear();
    choose(1);
    EXPECT_EQ(drawn(), markers);
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(questions(), SizeIs(1)) << "no question for the orders";
}

TEST_F(EntrustPointCancel, NeitherWaitsNorAsksForTheOrdersLater)
{
    QElapsedTimer clock;
    clock.start();
    choose(1);
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_LT(clock.elapsed(), 900);
    EXPECT_FALSE(waitUntil([] { return todayQuestions() > 0; }, 1500));
}

TEST_F(EntrustPointCancel, OffersTheLastOfAVeryLongList)
{
    std::vector<QJsonObject> rows;
    std::vector<std::string> numbers;
    for (int number = 1; number <= 250; ++number) {
        numbers.push_back(std::to_string(number));
        rows.push_back(with(SentOrder(), "ordersno", QString::number(number)));
    }
    hearOrders(rows);
    EXPECT_EQ(listAt(0, yOfTen()), numbers);
    choose(249);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"250")"));
}

class EntrustPointCancelByMode : public EntrustPointCancel, public ::testing::WithParamInterface<int>
{
};

TEST_P(EntrustPointCancelByMode, OffersAnOrderOfAnyDayOnAnyChart)
{
    axis.mode = GetParam();
    hearOrders({SentOrder{"0B", "2", "10", "9310000", "20240102", "3"}});
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
    choose(0);
    EXPECT_THAT(axis.questions, SizeIs(1));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("orderdate":"20240102","ordersno":"3")"));
    hearCancelled({{QStringLiteral("msg"), QStringLiteral("不可撤")}});
    EXPECT_THAT(axis.messages, ElementsAre("不可撤"));
}

INSTANTIATE_TEST_SUITE_P(ChartModes, EntrustPointCancelByMode, ::testing::Values(0, 1, 2, 3));

TEST_F(EntrustPointCancel, IsSilentWhenTheBusRefusesIt)
{
    const LogCapture log;
    bus().takesMessages = false;
    choose(1);
    EXPECT_THAT(log.all(), IsEmpty());
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancel, RefersToWhatWasListedWhenAnAnswerComesMeanwhile)
{
    axis.onPopup = [] {
        hearOrders({SentOrder{"0S", "2", "10", "9310000", "20240102", "99"}});
        return 1;
    };
    axis.onConfirm = [] {
        hearOrders({SentOrder{"0S", "8", "10", "9310000", "20240102", "98"}});
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_TRUE(axis.questions[0].contains("编号:2\n"));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"2")"));
}

TEST_F(EntrustPointCancel, ListsAnewForAClickWhileAListIsOpen)
{
    axis.onPopup = [this] {
        if (axis.popups.size() == 2) {
            return 0; // the order that is dealt
        }
        overlay->handleMousePress(0, yOfTen());
        return 1;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_THAT(axis.popups, SizeIs(2));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"2")"));
}

TEST_F(EntrustPointCancel, NamesTheOrderByItsWholeNumberAndDate)
{
    EntrustInfo order{};
    order.orderNo = 9223372036854775807;
    order.orderDate = -9223372036854775807;
    overlay->sendCancelOrderReq(order);
    EXPECT_THAT(questions()[0].toStdString(),
                HasSubstr(R"("orderdate":"-9223372036854775807","ordersno":"9223372036854775807",)"));
}

TEST_F(EntrustPointCancel, RefersToTheSecurityThatWasListedWhenTheHostShowsAnotherMeanwhile)
{
    axis.onPopup = [this] {
        calc(shenzhen, threeMinutes, 21);
        bus().sent.clear();
        return 1;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_TRUE(axis.questions[0].contains("[江山科技]"));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("market":"SH")"));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
}

TEST_F(EntrustPointCancel, TellsItsObjectsApartByAUuidInBraces)
{
    const QString first = objectId();
    EXPECT_EQ(first.size(), 38);
    EXPECT_EQ(QUuid(first).toString(), first);
    EXPECT_EQ(objectId(), first);
    create();
    EXPECT_NE(objectId(), first);
}

TEST_F(EntrustPointCancel, ShowsTheMessagesOfASuccessOneBehindTheOther)
{
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("msg"), QStringLiteral("not this")},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("撤")}},
                               QJsonObject{{QStringLiteral("msgok"), QStringLiteral("nor this")}}, 5,
                               QJsonObject{{QStringLiteral("msgok "), 7}},
                               QJsonObject{{QStringLiteral("msgok "), QStringLiteral("单")}}}}});
    EXPECT_THAT(axis.messages, ElementsAre("撤单"));
}

TEST_F(EntrustPointCancel, ShowsTheMessageOfAFailure)
{
    hearCancelled({{QStringLiteral("success"), false}, {QStringLiteral("msg"), QStringLiteral("不可撤")}});
    hearCancelled({{QStringLiteral("errcode"), 0}, {QStringLiteral("msg"), QStringLiteral("no success")}});
    hearCancelled({{QStringLiteral("success"), QStringLiteral("true")},
                   {QStringLiteral("msg"), QStringLiteral("text")}});
    EXPECT_THAT(axis.messages, ElementsAre("不可撤", "no success", "text"));
}

TEST_F(EntrustPointCancel, ShowsAnEmptyMessageToo)
{
    hearCancelled({{QStringLiteral("success"), true}});
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok"), QStringLiteral("no blank")}}}}});
    hearCancelled({{QStringLiteral("msg"), 5}});
    EXPECT_THAT(axis.messages, ElementsAre("", "", ""));
}

TEST_F(EntrustPointCancel, ShowsNoMessageOfAFailureForASuccessNorTheOtherWayRound)
{
    const QString text = QStringLiteral("text");
    const QJsonArray parts{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("ok")}}};
    hearCancelled({{QStringLiteral("success"), true}, {QStringLiteral("msg"), text}});
    hearCancelled({{QStringLiteral("success"), false}, {QStringLiteral("data"), parts}});
    hearCancelled(
        {{QStringLiteral("success"), false}, {QStringLiteral("data"), parts}, {QStringLiteral("msg"), text}});
    EXPECT_THAT(axis.messages, ElementsAre("", "", "text"));
}

TEST_F(EntrustPointCancel, HearsTheAnswerWhateverItsErrorCodeAndSecurity)
{
    hearCancelled({{QStringLiteral("success"), true},
                   {QStringLiteral("errcode"), 99},
                   {QStringLiteral("stkcode"), QStringLiteral("000001")},
                   {QStringLiteral("data"),
                    QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("ok")}}}}});
    EXPECT_THAT(axis.messages, ElementsAre("ok"));
}

TEST_F(EntrustPointCancel, KnowsItsAnswersByTheExactId)
{
    const QString id = objectId();
    for (const QString &other : {id.toUpper(), id.mid(1, 36), id + QLatin1Char(' ')}) {
        hear(Topic::TRADEQUERY, QJsonObject{{QStringLiteral("cmd"), QStringLiteral("EntrustCancel")},
                                            {QStringLiteral("objectId"), other}});
    }
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancel, AnswerIsNotHeardAsANotification)
{
    for (const int mode : {1, 2}) {
        axis.mode = mode;
        hear(Topic::TRADENOTIFY, cancelAnswer({{QStringLiteral("msg"), QStringLiteral("text")}}));
    }
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancel, IsOfferedAndSentAfterDeleteObject)
{
    overlay->deleteObject();
    axis.onConfirm = [] { return true; };
    choose(1);
    EXPECT_THAT(axis.questions, SizeIs(1));
    EXPECT_EQ(countOf("EntrustCancel"), 1);
}

TEST_F(EntrustPointCancel, AnswerIsShownAfterDeleteObject)
{
    const QJsonObject answer = cancelAnswer({{QStringLiteral("msg"), QStringLiteral("text")}});
    overlay->deleteObject();
    hear(Topic::TRADEQUERY, answer);
    EXPECT_THAT(axis.messages, ElementsAre("text"));
}

TEST_F(EntrustPointCancel, AnswerStartsNoTimerAndAsksForNoRepaint)
{
    timer()->stop();
    axis.updated.clear();
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_FALSE(timer()->isActive());
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointCancel, LeavesARunningTimerAlone)
{
    startTimerOddly();
    choose(1);
    EXPECT_EQ(countOf("EntrustCancel"), 1);
    EXPECT_TRUE(timerRunsOn());
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_TRUE(timerRunsOn());
}

TEST_F(EntrustPointCancel, StartsNoTimer)
{
    timer()->stop();
    choose(1);
    EXPECT_EQ(countOf("EntrustCancel"), 1);
    EXPECT_FALSE(timer()->isActive());
}

// The second after a notification

TEST_F(EntrustPointTest, AsksForTodaysOrdersASecondAfterANotification)
{
    createOnThreeMinutes();
    std::size_t askedMeanwhile = 0;
    bool eventsWereHandled = false;
    QTimer::singleShot(300, overlay, [&] {
        eventsWereHandled = true;
        askedMeanwhile = questions().size();
    });
    QElapsedTimer clock;
    clock.start();
    notify();
    EXPECT_GE(clock.elapsed(), 950);
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_TRUE(eventsWereHandled);
    EXPECT_EQ(askedMeanwhile, 0U);
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})"));
}

TEST_F(EntrustPointTest, KeepsItsOrdersWhateverANotificationOrAQuestionSays)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "11", "9340000"}});
    axis.updated.clear();
    const QJsonObject notification{
        {QStringLiteral("stkcode"), QStringLiteral("600536")},
        {QStringLiteral("data"), QJsonArray{with(SentOrder(), "bsflag2", QStringLiteral("0S"))}}};
    std::vector<std::string> meanwhile;
    QTimer::singleShot(300, overlay, [&] { meanwhile = drawn(); });
    hear(Topic::TRADENOTIFY, notification);
    overlay->sendQueryHistoryEntrustInfoReq(20240102);

    EXPECT_THAT(meanwhile, ElementsAre("0 20 10"));
    EXPECT_THAT(axis.updated, IsEmpty());
    calc(shanghai, minutes({931, 932, 933, 934}), 21);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10", "3 20 11"));
}

TEST_F(EntrustPointTest, AsksOnceForANotification)
{
    createOnThreeMinutes();
    notify();
    EXPECT_FALSE(waitUntil([] { return questions().size() > 1; }, 1500));
}

TEST_F(EntrustPointTest, LeavesARunningTimerAloneAtANotification)
{
    createOnThreeMinutes();
    startTimerOddly();
    notify();
    EXPECT_TRUE(timerRunsOn());
}

TEST_F(EntrustPointTest, StartsNoTimerAtANotification)
{
    createOnThreeMinutes();
    timer()->stop();
    notify();
    EXPECT_EQ(todayQuestions(), 1);
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(EntrustPointTest, WaitsOneSecondAlsoWhenThereIsAlwaysSomethingToDo)
{
    createOnThreeMinutes();
    QTimer busy;
    busy.start(0);
    QElapsedTimer clock;
    clock.start();
    notify();
    EXPECT_GE(clock.elapsed(), 950);
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointTest, HearsANotificationInAnyLetterCaseWhateverElseItSays)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeMinutes, 21);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1","market":"2","success":false,"cmd":"x"})");
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointTest, IgnoresNotificationsInOtherChartModes)
{
    createOnThreeMinutes();
    for (const int mode : {0, 2, 3}) {
        axis.mode = mode;
        notify();
    }
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointTest, AsksThoughTheChartModeChangesInsideTheWait)
{
    createOnThreeMinutes();
    QTimer::singleShot(0, overlay, [this] { axis.mode = 2; });
    notify();
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointTest, HearsANotificationOfNoSecurityWhileItShowsNone)
{
    create();
    hear(Topic::TRADENOTIFY, R"({"ordersno":"7"})");
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointTest, IgnoresAnEmptyNotificationAlsoWhileItShowsNoSecurity)
{
    create();
    hear(Topic::TRADENOTIFY, "{}");
    EXPECT_EQ(todayQuestions(), 0);
}

TEST_F(EntrustPointTest, HandlesInsideTheWaitWhatWasDueTogetherWithTheNotification)
{
    createOnThreeMinutes();
    bool isHandled = false;
    bool wasHandledMeanwhile = false;
    const auto queue = [this](const std::function<void()> &event) {
        QMetaObject::invokeMethod(overlay, event, Qt::QueuedConnection);
    };
    bus().duringSend = [&] { wasHandledMeanwhile = isHandled; };
    queue([] { notify(); });
    queue([&] { isHandled = true; });
    ASSERT_TRUE(waitUntil([] { return todayQuestions() == 1; }));
    EXPECT_TRUE(wasHandledMeanwhile);
    bus().duringSend = nullptr;
}

TEST_F(EntrustPointTest, NestsTheWaitsOfNotificationsThatCloselyFollow)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [] { notify(); });
    QTimer::singleShot(200, overlay, [] { notify(); });
    notify();
    EXPECT_EQ(todayQuestions(), 3);
}

TEST_F(EntrustPointTest, HandlesAnAnswerInsideTheWait)
{
    createOnThreeMinutes();
    std::size_t drawnMeanwhile = 0;
    QTimer::singleShot(100, overlay, [&] {
        hearOrders({SentOrder()});
        drawnMeanwhile = drawn().size();
    });
    notify();
    EXPECT_EQ(drawnMeanwhile, 1U);
}

TEST_F(EntrustPointTest, AsksForTheSecurityThatIsShownWhenTheWaitEnds)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [this] {
        calc(shenzhen, threeMinutes, 21);
        bus().sent.clear();
    });
    notify();
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

TEST_F(EntrustPointTest, BoundsItsStackAndStaysResponsiveUnderAFloodOfNotifications)
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

TEST_F(EntrustPointTest, LeavesTheEventLoopItsTurnsUnderAFloodOfNotificationsAndAnswers)
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
    EXPECT_TRUE(waitUntil([&] { return answered == flood; }, 60000));
    heartbeat.stop();
    EXPECT_EQ(todayQuestions(), flood);
    EXPECT_LE(longestTurn, 50.0);
    bus().duringSend = nullptr;
}

TEST_F(EntrustPointTest, AsksOnceForEachNotificationOfAFlood)
{
    createOnThreeMinutes();
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    notify();
    ASSERT_TRUE(waitUntil([] { return todayQuestions() == 101; }));
    EXPECT_FALSE(waitUntil([] { return todayQuestions() > 101; }, 1500));
}

TEST_F(EntrustPointTest, GroupsNothingWithoutAnswerOrBars)
{
    create();
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
    EXPECT_FALSE(paint());
    calc(shanghai, minutes({931}), 21);
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
    EXPECT_FALSE(paint());
}

TEST_F(EntrustPointTest, AsksASecondAfterTheLastNotificationOfAFlood)
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
    EXPECT_TRUE(waitUntil([&] { return askedAfter >= 990; }, 5000));
    bus().duringSend = nullptr;
}

// A host that ends the object inside its own calls

TEST_F(EntrustPointTest, MayBeDestroyedInsideAFloodOfNotifications)
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

TEST_F(EntrustPointTest, MayBeEndedInsideAFloodOfNotifications)
{
    createOnThreeMinutes();
    for (int i = 0; i < 100; ++i) {
        QTimer::singleShot(0, overlay, [] { notify(); });
    }
    QTimer::singleShot(200, overlay, [this] { overlay->deleteObject(); });
    notify();
    EXPECT_TRUE(waitUntil([] { return todayQuestions() == 101; })) << "its end stops the timer alone";
}

struct Asking
{
    const char *name;
    std::function<void(EntrustPoint &, const Korvane::tagCodeWithName &, const Korvane::AnalyData &)> ask;
};

class EntrustPointAsking : public EntrustPointTest, public ::testing::WithParamInterface<Asking>
{
};

TEST_P(EntrustPointAsking, MayBeDestroyedWhileTheBusTakesTheQuestion)
{
    createOnThreeMinutes();
    bus().duringSend = [this] { destroy(); };
    GetParam().ask(*overlay, shenzhen, threeMinutes.front());
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    Questions, EntrustPointAsking,
    ::testing::Values(
        Asking{"Security",
               [](auto &overlay, const auto &code, const auto &bar) {
                   EXPECT_TRUE(overlay.calcIt(code, &bar, 1, Korvane::IntradayPeriod, 0, 0));
               }},
        Asking{"Today", [](auto &overlay, auto &, auto &) { overlay.sendQueryTodayEntrustInfoReq(); }},
        Asking{"PastDay", [](auto &overlay, auto &,
                             auto &) { EXPECT_TRUE(overlay.sendQueryHistoryEntrustInfoReq(20240102)); }},
        Asking{"Cancellation",
               [](auto &overlay, auto &, auto &) {
                   EntrustInfo order{};
                   overlay.sendCancelOrderReq(order);
               }},
        Asking{"Notification",
               [](auto &, auto &, auto &) {
                   RecordedBus::instance().deliver(Topic::TRADENOTIFY, R"({"stkcode":"600536"})");
               }}),
    ByName());

TEST_F(EntrustPointTest, MayBeDestroyedInsideTheQuestionOfItsTimer)
{
    createOnThreeMinutes();
    bus().duringSend = [this] { destroy(); };
    timer()->start(0);
    EXPECT_TRUE(waitUntil([] { return bus().endPointCount() == 0; }));
    EXPECT_THAT(questions(), SizeIs(1));
}

TEST_F(EntrustPointTest, MayShowAnotherSecurityInsideARepaint)
{
    createOnThreeMinutes();
    axis.onUpdate = [this] { calc(shenzhen, threeMinutes, 21); };
    hearOrders({SentOrder()});
    EXPECT_FALSE(paint()) << "the orders were the other security's";
    EXPECT_THAT(questions(), SizeIs(1));
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(EntrustPointCancel, MayBeDestroyedInsideThePopup)
{
    for (const int row : {-1, 1}) {
        SetUp();
        axis.onPopup = [this, row] {
            destroy();
            return row;
        };
        overlay->handleMousePress(0, yOfTen());
        EXPECT_EQ(bus().endPointCount(), 0);
    }
    EXPECT_THAT(axis.questions, IsEmpty());
}

TEST_F(EntrustPointCancel, MayBeDestroyedInsideTheQuestion)
{
    axis.onPopup = [] { return 1; };
    axis.onConfirm = [this] {
        destroy();
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointCancel, MayBeDestroyedInsideTheMessage)
{
    axis.onMessage = [this] { destroy(); };
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_EQ(bus().endPointCount(), 0);
}

TEST_F(EntrustPointTest, MayBeDestroyedInsideARepaint)
{
    for (const char *command : {"EntrustTodayTrade", "EntrustHistoryTrade"}) {
        createOnThreeMinutes();
        axis.onUpdate = [this] { destroy(); };
        hearOrders({SentOrder()}, command);
        EXPECT_EQ(bus().endPointCount(), 0);
    }
}

TEST_F(EntrustPointTest, MayBeDestroyedInsideTheWaitAlsoANestedOne)
{
    createOnThreeMinutes();
    QTimer::singleShot(50, overlay, [] { notify(); });
    QTimer::singleShot(100, qApp, [this] { destroy(); });
    notify();
    EXPECT_EQ(bus().endPointCount(), 0);
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointTest, MayBeEndedInsideARepaint)
{
    createOnThreeMinutes();
    axis.onUpdate = [this] { overlay->deleteObject(); };
    hearOrders({SentOrder()});
    EXPECT_EQ(timer(), nullptr);
}

TEST_F(EntrustPointTest, MayBeEndedInsideTheWait)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [this] { overlay->deleteObject(); });
    notify();
    EXPECT_EQ(timer(), nullptr);
    EXPECT_EQ(todayQuestions(), 1) << "its end stops the timer alone";
}

TEST_F(EntrustPointCancel, MayBeEndedInsideThePopupTheQuestionAndTheMessage)
{
    const auto end = [this] { overlay->deleteObject(); };
    axis.onPopup = [end] {
        end();
        return 1;
    };
    axis.onConfirm = [end] {
        end();
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_EQ(countOf("EntrustCancel"), 1) << "the user has confirmed it";

    SetUp();
    axis.onMessage = end;
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_EQ(timer(), nullptr);
}

// The log

TEST_F(EntrustPointCancel, LogsItsQuestions)
{
    const QString id = objectId();
    const LogCapture log;
    overlay->sendQueryTodayEntrustInfoReq();
    overlay->sendQueryHistoryEntrustInfoReq(20240102);
    EntrustInfo order{};
    order.orderDate = 20240102;
    order.orderNo = 5;
    overlay->sendCancelOrderReq(order);
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(
            QStringLiteral(
                R"(send sendQueryTodayEntrustInfoReq: "{\"cmd\":\"EntrustTodayTrade\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendQueryHistoryEntrustInfoReq: "{\"cmd\":\"EntrustHistoryTrade\",\"date\":20240102,\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendCancelOrderReq: "{\"cmd\":\"EntrustCancel\",\"market\":\"SH\",\"objectId\":\"%1\",\"orderdate\":\"20240102\",\"ordersno\":\"5\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")")
                .arg(id)));
}

TEST_F(EntrustPointTest, WritesNoDebugLineWhenTheDebugLogIsOff)
{
    const LogCapture log(LogCapture::Debug::Off);
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0F"}});
    choose(-1);
    overlay->sendQueryTodayEntrustInfoReq();
    EXPECT_THAT(log.all(), IsEmpty());
}

} // namespace
