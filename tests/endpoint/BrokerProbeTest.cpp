#include "endpoint/BrokerProbe_p.h"

#include "tests/support/TestBroker.h"

#include <gmock/gmock.h>

#include <QThread>

using namespace std::chrono_literals;
using LocalCommunication::BrokerProbe;

namespace {

class BrokerProbeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(&probe, &BrokerProbe::unanswered, &probe, [this] { ++toldCount; });
        probe.start(broker.socketPath());
    }

    TestBroker broker;
    BrokerProbe probe{50ms, nullptr};
    int toldCount = 0;
};

} // namespace

TEST_F(BrokerProbeTest, TellsOnceOfABrokerThatHangs)
{
    broker.freeze();

    EXPECT_TRUE(waitUntil([this] { return toldCount > 0; }));
    EXPECT_FALSE(waitUntil([this] { return toldCount > 1; }, 500ms)); // its time is the subject
}

TEST_F(BrokerProbeTest, TellsOfABrokerThatHangsFromTheStart)
{
    probe.stop();
    broker.freeze();

    probe.start(broker.socketPath());

    EXPECT_TRUE(waitUntil([this] { return toldCount > 0; }));
}

TEST_F(BrokerProbeTest, SaysNothingOfABrokerThatAnswers)
{
    EXPECT_FALSE(waitUntil([this] { return toldCount > 0; }, 1s)); // its time is the subject
}

TEST_F(BrokerProbeTest, BlamesNoBrokerWhenTheTerminalStoodStill)
{
    for (int i = 0; i < 5; ++i) {
        QThread::msleep(300); // longer than the probe has patience: the standstill is the subject
        EXPECT_FALSE(waitUntil([this] { return toldCount > 0; }, 20ms));
    }
}
