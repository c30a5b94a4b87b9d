#include "trademodule/ledger/Transaction.h"

#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"

namespace TradeModule {

namespace {

class TransactionTest : public LedgerFixture
{
protected:
    Database *database() { return ledger().database(); }

    /// Writes something that can be asked for.
    void mark(int number)
    {
        database()->run(QStringLiteral("INSERT INTO change_mark (mark, made_on) VALUES (%1, %2)")
                            .arg(number)
                            .arg(TradingDate::today().number()));
    }

    /// Fails as one that breaks a rule of the ledger.
    void markTwice(int number)
    {
        mark(number);
        mark(number);
    }
};

} // namespace

TEST_F(TransactionTest, UndoesAPartThatFailsByItselfAlone)
{
    Transaction transaction(database());
    transaction.attempt([this] { mark(1); });
    EXPECT_THROW(transaction.attempt([this] { markTwice(2); }), LedgerError);
    transaction.commit();

    EXPECT_TRUE(database()->isCommitted(1));
    EXPECT_FALSE(database()->isCommitted(2));
}

TEST_F(TransactionTest, IsUndoneAsAWholeWhenThePartCannotBeEnded)
{
    {
        Transaction transaction(database());
        mark(1);
        const auto endItTooEarly = [this] {
            mark(2);
            database()->run(QStringLiteral("RELEASE SAVEPOINT part"));
        };
        EXPECT_THROW(transaction.attempt(endItTooEarly), LedgerUnavailable);
    }

    EXPECT_FALSE(database()->isCommitted(1));
    EXPECT_FALSE(database()->isCommitted(2));
}

} // namespace TradeModule
