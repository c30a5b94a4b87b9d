// What is read while the disk fails.
#include "trademodule/ledger/Rows.h"

#include "tests/trademodule/support/FailingDisk.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"

namespace TradeModule {

namespace {

using ::testing::AnyOf;

constexpr int everyTrade = 3000;
constexpr int failed = -1;

class RowsTest : public LedgerFixture
{
protected:
    void SetUp() override
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        LedgerFixture::SetUp();
        Executions executions;
        for (int i = 0; i < everyTrade; ++i) {
            executions.append(
                fill(Side::Buy, bank(), day(20200101).plusDays(i), 10, 100, QString::number(i)));
        }
        book(executions);
    }

    /// How many trades a program that has nothing in memory yet finds, when a read fails.
    int countTrades(int failingRead, FailingDisk *disk) const
    {
        Ledger fresh(location());
        disk->failAt(failingRead, FailingDisk::Fault::Unread, FailingDisk::Lasting::UntilMended);
        try {
            return fresh.trades(bank(), DateRange()).size();
        } catch (const LedgerUnavailable &) {
            return failed;
        }
    }
};

} // namespace

TEST_F(RowsTest, NeverEndBeforeTheLastOne)
{
    FailingDisk disk;
    int failures = 0;
    do {
        const int count = countTrades(failures + 1, &disk);
        disk.mend();
        ASSERT_THAT(count, AnyOf(everyTrade, failed));
        failures += count == failed ? 1 : 0;
    } while (disk.hasFailed());

    EXPECT_GT(failures, 10) << "the list was read at once";
}

} // namespace TradeModule
