#include "tests/support/ByName.h"
#include "tests/support/FakeHost.h"

#include "tradechartobject/common/TradeMessage.h"

#include <gmock/gmock.h>

using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

TradeMessage message(const char *json)
{
    return TradeMessage::parse(json).value();
}

struct NoMessage
{
    const char *name;
    const char *payload;
};

class TradeMessageThatSaysNothing : public ::testing::TestWithParam<NoMessage>
{
};

TEST_P(TradeMessageThatSaysNothing, IsNone)
{
    EXPECT_FALSE(TradeMessage::parse(GetParam().payload));
}

INSTANTIATE_TEST_SUITE_P(Payloads, TradeMessageThatSaysNothing,
                         ::testing::Values(NoMessage{"Nothing", ""}, NoMessage{"NoJson", "cmd"},
                                           NoMessage{"CutOff", R"({"cmd":)"}, NoMessage{"AList", "[]"},
                                           NoMessage{"ANumber", "1"}, NoMessage{"AnEmptyObject", "{}"}),
                         ByName());

TEST(TradeMessage, IsAReplyEvenWhenItIsEmpty)
{
    EXPECT_TRUE(TradeMessage::parseReply("{}"));
    EXPECT_FALSE(TradeMessage::parseReply(""));
    EXPECT_FALSE(TradeMessage::parseReply("[]"));
}

TEST(TradeMessage, IsOfACommandLetterCaseIncluded)
{
    EXPECT_TRUE(message(R"({"cmd":"TodayTrade"})").isCommand("TodayTrade"));
    EXPECT_FALSE(message(R"({"cmd":"todaytrade"})").isCommand("TodayTrade"));
    EXPECT_FALSE(message(R"({"cmd":7})").isCommand("TodayTrade"));
}

TEST(TradeMessage, IsAboutASecurityInEitherLetterCase)
{
    const auto security = makeSecurity(1, "60053A", 1);
    EXPECT_TRUE(message(R"({"stkcode":"60053a"})").isAbout(security));
    EXPECT_FALSE(message(R"({"stkcode":"600536"})").isAbout(security));
    EXPECT_FALSE(message(R"({"stkcode":600536})").isAbout(makeSecurity(1, "600536", 1)));
}

TEST(TradeMessage, ReadsWhatIsMissingOrOfAnotherTypeAsNothing)
{
    const TradeMessage odd = message(R"({"msg":1,"success":"true","data":{}})");
    EXPECT_EQ(odd.text("msg"), QString());
    EXPECT_FALSE(odd.isTrue("success"));
    EXPECT_THAT(odd.rows(), IsEmpty());
    EXPECT_EQ(odd.text("objectId"), QString());
}

TEST(TradeMessage, ReadsTextsTruthsRowsAndARecord)
{
    const TradeMessage answer = message(R"({"msg":"m","success":true,"data":[{},{}]})");
    EXPECT_EQ(answer.text("msg"), QStringLiteral("m"));
    EXPECT_TRUE(answer.isTrue("success"));
    EXPECT_THAT(answer.rows(), SizeIs(2));
    const TradeMessage holding = message(R"({"data":{"costprice":null}})").record();
    EXPECT_TRUE(holding.has("costprice")) << "of whatever type";
    EXPECT_FALSE(holding.has("stkcode"));
}

} // namespace
