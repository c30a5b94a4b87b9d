#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/ccharttradeobject/CChartTradeObjectTest.h"

using ::testing::IsEmpty;

namespace {

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

} // namespace
