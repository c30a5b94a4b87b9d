#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/positioncost/PositionCostTest.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

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

} // namespace
