#include "endpoint/Retry_p.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using LocalCommunication::Retry;

TEST(Retry, WaitsLongerEachTimeUpToTheLimit)
{
    Retry retry({50ms, 300ms, 2});

    EXPECT_EQ(retry.nextDelay(), 50ms);
    EXPECT_EQ(retry.nextDelay(), 100ms);
    EXPECT_EQ(retry.nextDelay(), 200ms);
    EXPECT_EQ(retry.nextDelay(), 300ms);
    EXPECT_EQ(retry.nextDelay(), 300ms);
}

TEST(Retry, BeginsAnewAfterASuccess)
{
    Retry retry({10ms, 5s, 4});
    retry.nextDelay();
    retry.nextDelay();

    retry.reset();

    EXPECT_EQ(retry.nextDelay(), 10ms);
}
