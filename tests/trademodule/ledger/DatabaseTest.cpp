#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/Transaction.h"

#include <QElapsedTimer>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using DatabaseTest = LedgerFixture;

} // namespace

TEST_F(DatabaseTest, IsReadWhileAnotherProcessWritesIt)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    Database writer(location());
    Transaction transaction(&writer);
    writer.run(QStringLiteral("DELETE FROM execution"));

    EXPECT_THAT(ledger().trades(always), SizeIs(1));
}

TEST_F(DatabaseTest, RefusesWhatRefersToNothing)
{
    Database database(location());

    EXPECT_THROW(database.run(QStringLiteral("INSERT INTO holding (security_id, quantity, cost, unexplained) "
                                             "VALUES (4711, 1, 1, 0)")),
                 LedgerError);
}

TEST_F(DatabaseTest, GivesAChangeUpThatAnotherProgramKeepsWaiting)
{
    Database other(location());
    ledger().setPatience(std::chrono::milliseconds(50));
    std::optional<Transaction> change(std::in_place, &other);

    try {
        book({fill(Side::Buy, bank(), 20240102, 10, 100)});
        FAIL() << "nobody waited";
    } catch (const LedgerUnavailable &error) {
        EXPECT_THAT(error.what(), HasSubstr("the ledger is busy"));
    }
    EXPECT_THAT(ledger().trades(always), IsEmpty());

    change.reset();
    EXPECT_EQ(book({fill(Side::Buy, bank(), 20240102, 10, 100)}).added, 1);
}

TEST_F(DatabaseTest, WaitsInVainOnlyOnce)
{
    constexpr std::chrono::milliseconds patience(2000);
    Database other(location());
    ledger().setPatience(patience);
    const Transaction change(&other);
    EXPECT_THROW(Transaction{ledger().database()}, LedgerUnavailable);

    QElapsedTimer clock;
    clock.start();
    EXPECT_THROW(Transaction{ledger().database()}, LedgerUnavailable);
    EXPECT_LT(clock.elapsed(), patience.count() / 2);
}

TEST_F(DatabaseTest, KeepsOneMarkOfAProgramThatMakesOneChangeAfterTheOther)
{
    Ledger other(location());
    for (const double price : {10.0, 10.1, 10.2}) {
        ledger().book(statementOf({fill(Side::Buy, bank(), 20240102, price, 100)}), Ledger::Mode::Keep);
        other.book(statementOf({fill(Side::Sell, bank(), 20240103, price, 100)}), Ledger::Mode::Keep);
    }

    Rows marks = ledger().database()->run(QStringLiteral("SELECT COUNT(*) FROM change_mark"));
    ASSERT_TRUE(marks.next());
    EXPECT_EQ(marks.value(0).toInt(), 2);
}

TEST_F(DatabaseTest, ForgetsTheMarksOfChangesThatAreLongAgo)
{
    Database *const database = ledger().database();
    for (const int daysAgo : {31, 29}) {
        database->run(QStringLiteral("INSERT INTO change_mark (mark, made_on) VALUES (%1, %2)")
                          .arg(daysAgo)
                          .arg(TradingDate::today().plusDays(-daysAgo).number()));
    }

    Ledger(location()).book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);

    EXPECT_TRUE(database->isCommitted(29));
    EXPECT_FALSE(database->isCommitted(31));
}

} // namespace TradeModule
