#include "trademodule/ledger/ServingLease.h"

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/OrderBook.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ServingLeaseTest : public LedgerFixture
{
protected:
    void SetUp() override
    {
        LedgerFixture::SetUp();
        if (!IsSkipped()) {
            m_lease.emplace(ledger().database());
            m_lease->take();
        }
    }

    void TearDown() override { m_lease.reset(); }

    ServingLease &lease() { return *m_lease; }
    void letGo() { m_lease.reset(); }

    /// What another one that opened the ledger is told when it wants to serve it.
    std::string refusal()
    {
        Ledger other(location());
        try {
            ServingLease(other.database()).take();
        } catch (const LedgerError &error) {
            return error.what();
        }
        return "no refusal";
    }

    /// Another process thought this one dead and serves now.
    void outrun()
    {
        Database(location()).run(QStringLiteral("UPDATE serving SET fence = fence + 1, process = 4711"));
    }

    void placeOrder()
    {
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(Money());
        transaction.commit();
    }

private:
    std::optional<ServingLease> m_lease;
};

} // namespace

TEST_F(ServingLeaseTest, IsGivenToOneAtATimeAndNamesItsOwner)
{
    const std::string process = std::to_string(QCoreApplication::applicationPid());
    EXPECT_THAT(refusal(), HasSubstr("process " + process + " on " +
                                     QSysInfo::machineHostName().toStdString() + ", since 20"));
}

TEST_F(ServingLeaseTest, IsFreeWhenItsOwnerIsGone)
{
    letGo();

    EXPECT_EQ(refusal(), "no refusal");
}

TEST_F(ServingLeaseTest, IsNotNeededToChangeTheLedger)
{
    Ledger other(location());

    EXPECT_EQ(other.book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep).added,
              1);
}

TEST_F(ServingLeaseTest, HasAHigherFenceEachTime)
{
    const qint64 first = lease().server().fence;
    letGo();
    Ledger other(location());
    ServingLease next(other.database());
    next.take();

    EXPECT_EQ(next.server().fence, first + 1);
    EXPECT_EQ(ServingTable(other.database()).server().fence, first + 1);
}

TEST_F(ServingLeaseTest, IsFollowedOnlyWhenItIsFree)
{
    Ledger other(location());
    ServingLease next(other.database());
    EXPECT_FALSE(next.tryFollow());

    letGo();

    EXPECT_TRUE(next.tryFollow());
}

TEST_F(ServingLeaseTest, LetsWhoWasOutrunChangeNothing)
{
    const Money before = OrderBook(&ledger()).cash();
    ASSERT_NO_THROW(placeOrder());
    OrderBook(&ledger()).setCash(before);
    outrun();

    EXPECT_THROW(placeOrder(), LeaseLost);
    EXPECT_EQ(OrderBook(&ledger()).cash(), before);
}

TEST_F(ServingLeaseTest, TellsWhoWasOutrunAtTheNextBeat)
{
    ASSERT_NO_THROW(lease().beat());
    outrun();

    try {
        lease().beat();
        FAIL() << "it goes on";
    } catch (const LeaseLost &lost) {
        EXPECT_THAT(lost.what(), HasSubstr("process 4711"));
    }
}

} // namespace TradeModule
