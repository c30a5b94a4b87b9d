#include "endpoint/OpenRequest_p.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using LocalCommunication::BusMessage;
using LocalCommunication::OpenRequest;

namespace {

BusMessage answerTo(const QByteArray &correlation, const QByteArray &payload)
{
    return {"reply.me/answer", payload, {}, correlation};
}

} // namespace

TEST(OpenRequest, IsOverWithTheAnswer)
{
    OpenRequest request("7", 1h);
    EXPECT_FALSE(request.isOver());

    request.take(answerTo("7", "yes"));

    EXPECT_TRUE(request.isOver());
    EXPECT_EQ(request.answer(), "yes");
}

TEST(OpenRequest, IsOverWithAnEmptyAnswerToo)
{
    OpenRequest request("7", 1h);
    request.take(answerTo("7", ""));
    EXPECT_TRUE(request.isOver());
}

TEST(OpenRequest, TakesNoAnswerToAnotherQuestion)
{
    OpenRequest request("7", 1h);
    request.take(answerTo("6", "late"));
    request.take(answerTo("", "of a stranger"));
    EXPECT_FALSE(request.isOver());
    EXPECT_EQ(request.answer(), "");
}

TEST(OpenRequest, TakesTheFirstAnswer)
{
    OpenRequest request("7", 1h);
    request.take(answerTo("7", "first"));
    request.take(answerTo("7", "second"));
    EXPECT_EQ(request.answer(), "first");
}

TEST(OpenRequest, IsOverWhenItsTimeIsUp)
{
    const OpenRequest request("7", 0ms);
    EXPECT_TRUE(request.isOver());
    EXPECT_EQ(request.remainingTime(), 0ms);
    EXPECT_EQ(request.answer(), "");
}

TEST(OpenRequest, TellsHowLongToWaitAtMost)
{
    const OpenRequest request("7", 1h);
    EXPECT_GT(request.remainingTime(), 59min);
    EXPECT_LE(request.remainingTime(), 1h);
}
