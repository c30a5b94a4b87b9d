#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

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

} // namespace
