// Programs that serve two ledgers and are sent to one bus: one of them serves, the other says why it does
// not.
#include "endpoint/Announcement.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/OrderBook.h"

#include <QFileInfo>

#include <csignal>

namespace TradeModule {

using namespace std::chrono_literals;

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class TwoLedgers : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        if (!IsSkipped()) {
            m_otherHome.emplace();
            ASSERT_TRUE(chart().join(broker().address()));
        }
    }

    void TearDown() override
    {
        end(m_other.get());
        ProgramOnABus::TearDown();
    }

    QStringList otherOptions() const
    {
        return busOptions() + QStringList{QStringLiteral("--ledger"), m_otherHome->location()};
    }

    Ended serveOther() { return run(otherOptions() + QStringList{QStringLiteral("serve")}); }

    /// Does not end by itself.
    void standBy()
    {
        m_other = start(otherOptions() + QStringList{QStringLiteral("serve"), QStringLiteral("--standby")});
    }

    bool otherSays(const QByteArray &words)
    {
        return waitUntil([&] { return (m_said += m_other->readAllStandardError()).contains(words); });
    }
    std::string said() const { return m_said.toStdString(); }
    QProcess &other() { return *m_other; }

    /// A ledger's one name.
    static std::string place(const QString &ledger)
    {
        const QString canonical = QFileInfo(ledger).canonicalFilePath();
        return (canonical.isEmpty() ? Database::shownLocation(ledger) : canonical).toStdString();
    }

    /// So many orders are in both ledgers.
    int orders()
    {
        Ledger otherLedger(m_otherHome->location());
        return OrderBook(&ledger()).ofDay(TradingDate::today()).size() +
               OrderBook(&otherLedger).ofDay(TradingDate::today()).size();
    }

    bool place()
    {
        return ask(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B",
                       "orderprice":"10.00","orderqty":"100"})")[QStringLiteral("success")]
            .toBool();
    }

    static void end(QProcess *process)
    {
        if (process != nullptr && process->state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(process->processId()), SIGCONT);
            process->terminate();
            EXPECT_TRUE(process->waitForFinished());
        }
    }

private:
    std::optional<TestLedger> m_otherHome;
    std::unique_ptr<QProcess> m_other;
    QByteArray m_said;
};

} // namespace

TEST_F(TwoLedgers, AreNotServedOnOneBusAndTheSecondModuleNamesTheFirst)
{
    serve();

    const Ended second = serveOther();

    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.errors, HasSubstr("another trading module serves the ledger " + place(location())));
    EXPECT_THAT(second.errors, HasSubstr("process " + std::to_string(module().processId()) + " on " +
                                         QSysInfo::machineHostName().toStdString() + ", since 20"));
    EXPECT_THAT(second.errors, Not(HasSubstr("serving the ledger")));
}

TEST_F(TwoLedgers, GetAnOrderOnce)
{
    serve();
    standBy();
    ASSERT_TRUE(otherSays("standing by, another trading module"));

    EXPECT_TRUE(place());

    EXPECT_EQ(orders(), 1);
}

TEST_F(TwoLedgers, AreServedOneAfterTheOtherByOneThatStandsBy)
{
    serve();
    standBy();
    ASSERT_TRUE(otherSays("standing by, another trading module"));

    module().kill();
    ASSERT_TRUE(module().waitForFinished());

    EXPECT_TRUE(otherSays("serving the ledger")) << said();
    EXPECT_TRUE(place());
    EXPECT_EQ(OrderBook(&ledger()).ofDay(TradingDate::today()).size(), 0);
    end(&other());
    serve(); // for the end of the test
}

TEST_F(TwoLedgers, AreToldApartWhileTheFirstModuleStandsStill)
{
    serve();
    ::kill(static_cast<pid_t>(module().processId()), SIGSTOP);

    const Ended second = serveOther();

    ::kill(static_cast<pid_t>(module().processId()), SIGCONT);
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.errors, HasSubstr("another trading module serves the ledger"));
}

TEST_F(TwoLedgers, BegunAtTheSameMomentAreServedByOneOfTheirModules)
{
    for (int round = 0; round < 3; ++round) {
        startModule();
        standBy();
        awaitModule();
        const int before = orders();
        EXPECT_TRUE(place());
        EXPECT_EQ(orders(), before + 1);
        end(&other());
        end(&module());
    }
    serve(); // for the end of the test
}

TEST_F(TwoLedgers, ComeBackToABusThatWasAwayWithTheSameModuleServing)
{
    serve();
    standBy();
    ASSERT_TRUE(otherSays("standing by, another trading module"));
    for (int round = 0; round < 3; ++round) {
        broker().kill();
        broker().start();
        awaitModule();
        EXPECT_TRUE(place());
    }
    EXPECT_EQ(orders(), OrderBook(&ledger()).ofDay(TradingDate::today()).size());
}

} // namespace TradeModule
