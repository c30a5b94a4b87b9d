#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

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

} // namespace
