#pragma once

#include "tests/endpoint/BusTest.h"

#include <gmock/gmock.h>

/// A broker, and two members of its bus.
class TwoMembers : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(sender.join(broker.address()));
        ASSERT_TRUE(receiver.join(broker.address()));
    }

    TestBroker broker;
    RecordingEndPoint sender;
    RecordingEndPoint receiver;
};
