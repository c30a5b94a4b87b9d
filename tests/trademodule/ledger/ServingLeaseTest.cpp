#include "trademodule/ledger/ServingLease.h"

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ServingLeaseTest : public LedgerFixture
{
protected:
    /// What another one that opened the ledger is told when it wants to serve it.
    std::string refusal()
    {
        Ledger other(location());
        try {
            const ServingLease lease(other.database());
        } catch (const LedgerError &error) {
            return error.what();
        }
        return "no refusal";
    }
};

} // namespace

TEST_F(ServingLeaseTest, IsGivenToOneAtATimeAndNamesItsOwner)
{
    const ServingLease lease(ledger().database());

    const std::string process = std::to_string(QCoreApplication::applicationPid());
    EXPECT_THAT(refusal(), HasSubstr("by process " + process + " on " +
                                     QSysInfo::machineHostName().toStdString() + ", since 20"));
}

TEST_F(ServingLeaseTest, IsFreeWhenItsOwnerIsGone)
{
    {
        const ServingLease lease(ledger().database());
    }
    EXPECT_EQ(refusal(), "no refusal");
}

TEST_F(ServingLeaseTest, IsNotNeededToChangeTheLedger)
{
    const ServingLease lease(ledger().database());
    Ledger other(location());

    EXPECT_EQ(other.book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep).added,
              1);
}

} // namespace TradeModule
