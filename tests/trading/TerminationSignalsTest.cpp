#include "trading/TerminationSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <csignal>

namespace Trading {
namespace {

class TerminationSignalsTest : public ::testing::TestWithParam<int>
{
};

TEST_P(TerminationSignalsTest, EndTheEventLoopInsteadOfTheProgram)
{
    const TerminationSignals signalsQuit;
    QTimer::singleShot(0, qApp, [] { std::raise(GetParam()); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST_P(TerminationSignalsTest, EndAProgramThatHangsWhenPatienceIsOver)
{
    EXPECT_EXIT(
        {
            const TerminationSignals signalsQuit(std::chrono::milliseconds(50));
            std::raise(GetParam());
            while (true) {
            }
        },
        ::testing::ExitedWithCode(1), "did not answer");
}

INSTANTIATE_TEST_SUITE_P(Both, TerminationSignalsTest, ::testing::Values(SIGTERM, SIGINT));

} // namespace
} // namespace Trading
