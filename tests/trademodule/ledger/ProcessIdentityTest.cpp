#include "trademodule/ledger/ProcessIdentity.h"

#include <gtest/gtest.h>

#include <QProcess>

namespace TradeModule {

namespace {

/// Some other program that runs until it is ended.
class Sleeper
{
public:
    Sleeper()
    {
        m_process.start(QStringLiteral("sleep"), {QStringLiteral("1000")});
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~Sleeper()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Sleeper)

    QProcess &process() { return m_process; }

private:
    QProcess m_process;
};

} // namespace

TEST(ProcessIdentity, IsThatOfTheRunningProcess)
{
    EXPECT_FALSE(ProcessIdentity::own().start.isEmpty());
    EXPECT_TRUE(ProcessIdentity::own().isRunningHere());
}

TEST(ProcessIdentity, IsNotThatOfAnotherProcessWithItsNumber)
{
    Sleeper sleeper;
    ProcessIdentity identity = ProcessIdentity::own();
    identity.number = sleeper.process().processId();
    identity.start += QLatin1Char('0'); // of another moment; ours may be the sleeper's, to the clock's tick

    EXPECT_FALSE(identity.isRunningHere());
    EXPECT_FALSE(identity.end());
    EXPECT_FALSE(sleeper.process().waitForFinished(100));
}

TEST(ProcessIdentity, IsNotThatOfAProcessOnAnotherMachine)
{
    ProcessIdentity identity = ProcessIdentity::own();
    identity.host += QStringLiteral("-other");

    EXPECT_FALSE(identity.isRunningHere());
    EXPECT_FALSE(identity.end());
}

TEST(ProcessIdentity, OfNobodyIsNotRunning)
{
    EXPECT_FALSE(ProcessIdentity().isRunningHere());
}

} // namespace TradeModule
