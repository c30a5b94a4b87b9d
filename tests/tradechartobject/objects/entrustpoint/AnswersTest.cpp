#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class EntrustPointAnswersEach : public EntrustPointTest, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(EntrustPointAnswersEach, HasGroupedTheOrdersWhenItAsksForARepaint)
{
    createOnThreeMinutes();
    std::vector<std::string> drawnInside;
    axis.onUpdate = [&] { drawnInside = drawn(); };
    hearOrders({SentOrder()}, GetParam());
    EXPECT_THAT(drawnInside, ElementsAre("0 20 10"));
}

TEST_P(EntrustPointAnswersEach, AsksForOneRepaintHoweverManyOrders)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder(), SentOrder{"0F"}}, GetParam());
    EXPECT_THAT(axis.updated, SizeIs(1));
}

TEST_P(EntrustPointAnswersEach, StoresTheOrdersAndAsksForARepaint)
{
    createOnThreeMinutes();
    hearOrders({SentOrder()}, GetParam());
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
    EXPECT_THAT(axis.updated, ElementsAre(static_cast<Korvane::IChartObject *>(overlay)));
}

TEST_P(EntrustPointAnswersEach, ChangesNothingByAnEmptyAnswer)
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

TEST_P(EntrustPointAnswersEach, KeepsItsOrdersForLaterBarsWhenAnAnswerIsEmpty)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "2", "10", "9340000"}});
    hearOrders({}, GetParam());
    hear(Topic::TRADEQUERY, sentAnswer(GetParam(), QStringLiteral("no array")));
    calc(shanghai, minutes({931, 932, 933, 934}), Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("3 20 10"));
}

TEST_P(EntrustPointAnswersEach, ReplacesAllOrdersByTheLastAnswer)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "11"}});
    hearOrders({SentOrder{"0S", "8", "12", "9320000"}}, GetParam());
    EXPECT_THAT(drawn(), ElementsAre("1 25 12"));
}

TEST_P(EntrustPointAnswersEach, TakesTheOrdersOfAnAnswerThatCallsItselfAFailure)
{
    createOnThreeMinutes();
    hear(Topic::TRADEQUERY,
         with(with(sentAnswer(GetParam(), QJsonArray{anOrder()}), "success", false), "errcode", 5));
    EXPECT_THAT(drawn(), SizeIs(1));
}

TEST_P(EntrustPointAnswersEach, IsAboutTheSecurityInAnyLetterCase)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeMinutes, Korvane::IntradayPeriod);
    hear(Topic::TRADEQUERY, sentAnswer(GetParam(), QJsonArray{anOrder()}, "ABc1"));
    EXPECT_THAT(drawn(), SizeIs(1));
}

TEST_P(EntrustPointAnswersEach, IsHeardInEveryChartMode)
{
    for (const int mode : {0, 1, 2, 3}) {
        axis.mode = mode;
        createOnThreeMinutes();
        hearOrders({SentOrder()}, GetParam());
        EXPECT_THAT(drawn(), ElementsAre("0 20 10")) << mode;
    }
}

TEST_P(EntrustPointAnswersEach, IsHeardWhoeverHasAsked)
{
    createOnThreeMinutes();
    QJsonObject message = sentAnswer(GetParam(), QJsonArray{anOrder()});
    for (const char *key : {"screenId", "objectId", "market", "date"}) {
        message = with(message, key, QStringLiteral("another's"));
    }
    hear(Topic::TRADEQUERY, message);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

TEST_P(EntrustPointAnswersEach, IsNotHeardAsANotification)
{
    axis.mode = Korvane::PastDayChart;
    createOnThreeMinutes();
    timer()->stop();
    hear(Topic::TRADENOTIFY, sentAnswer(GetParam(), QJsonArray{anOrder()}));
    EXPECT_FALSE(paint());
    EXPECT_FALSE(timer()->isActive());
}

TEST_P(EntrustPointAnswersEach, IsHeardWithoutACodeWhileItShowsNoSecurity)
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

INSTANTIATE_TEST_SUITE_P(Commands, EntrustPointAnswersEach,
                         ::testing::Values("EntrustTodayTrade", "EntrustHistoryTrade"));

class EntrustPointAnswers : public EntrustPointTest
{
};

TEST_F(EntrustPointAnswers, ReportsSuccessWhateverTheAnswerHolds)
{
    createOnThreeMinutes();
    EXPECT_TRUE(overlay->handleQueryTodayEntrustInfoRes({}));
    EXPECT_TRUE(overlay->handleQueryTodayEntrustInfoRes(QJsonArray{5}));
    EXPECT_TRUE(overlay->handleQueryHistoryEntrustInfoRes(QJsonArray{anOrder()}));
    EXPECT_TRUE(overlay->calcEntrustPointPriceInfo());
}

TEST_F(EntrustPointAnswers, TakesAnAnswerThatComesWhileTheQuestionIsSent)
{
    create();
    bus().duringSend = [] {
        bus().duringSend = nullptr;
        hearOrders({SentOrder()});
    };
    EXPECT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
    EXPECT_THAT(drawn(), ElementsAre("0 20 10"));
}

} // namespace
