// An import that is taken back leaves what would be there, had it never been.
#include "tests/trademodule/support/LedgerBooks.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/AccountCash.h"
#include "trademodule/ledger/LedgerSchema.h"

#include <random>

namespace TradeModule {

namespace {

using ::testing::SizeIs;

Statement ofCash(int date, qint64 cents)
{
    Statement statement = statementOf({});
    statement.cash = StatedCash{day(date), ClockTime(), Money::ofCents(cents)};
    MoneyEntry transfer;
    transfer.date = day(date);
    transfer.kind = QStringLiteral("bank transfers");
    transfer.currency = QStringLiteral("CNY");
    transfer.amount = Money::ofCents(cents);
    statement.money = {transfer};
    return statement;
}

class UndoTest : public LedgerFixture
{
protected:
    qint64 bookStatement(const Statement &statement)
    {
        return ledger().book(statement, Ledger::Mode::Keep).number;
    }

    Money cash() { return AccountCash(ledger().database()).amount(); }
    Money fee() { return ledger().trades(DateRange())[0].fee; }
};

Execution withoutFee(Execution execution)
{
    execution.fee = Money();
    return execution;
}

} // namespace

TEST_F(UndoTest, GivesNoNumberTwice)
{
    const Statement statement = statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)});
    const qint64 first = bookStatement(statement);
    ledger().undoImport(first);

    EXPECT_EQ(bookStatement(statement), first + 1);
}

TEST_F(UndoTest, KeepsWhatALaterImportToldToo)
{
    const Execution both = fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1"));
    const qint64 first =
        bookStatement(statementOf({both, fill(Side::Buy, bank(), 20240102, 11, 100, QStringLiteral("2"))}));
    const qint64 second = bookStatement(statementOf({both}));

    EXPECT_EQ(ledger().undoImport(first).kept, 1);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 100);

    EXPECT_EQ(ledger().undoImport(second).kept, 0);
    EXPECT_EQ(ledger().holding(bank()).quantity(), 0);
}

TEST_F(UndoTest, KeepsMoneyThatALaterImportToldToo)
{
    const Statement transfer = ofCash(20240102, 500000);
    const qint64 first = bookStatement(transfer);
    bookStatement(transfer);

    ledger().undoImport(first);

    EXPECT_THAT(ledger().money(), SizeIs(1));
    EXPECT_EQ(cash(), Money::ofCents(500000));
}

TEST_F(UndoTest, LeavesAFeeThatAnotherImportToldToo)
{
    const Execution told = fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1"));
    bookStatement(statementOf({withoutFee(told)}));
    const qint64 second = bookStatement(statementOf({told}));
    const qint64 third = bookStatement(statementOf({told}));

    ledger().undoImport(second);
    EXPECT_EQ(fee(), told.fee);

    ledger().undoImport(third);
    EXPECT_EQ(fee(), Money());
}

TEST_F(UndoTest, TakesCashBackAlsoWhenItHasChangedSince)
{
    const Money before = cash();
    const qint64 number = bookStatement(ofCash(20240102, 500000));
    AccountCash(ledger().database()).change(cash() - Money::ofCents(100));

    ledger().undoImport(number);

    EXPECT_EQ(cash(), before - Money::ofCents(100));
}

TEST_F(UndoTest, GoesBackToTheBalanceOfTheImportThatRemains)
{
    const Money before = cash();
    const qint64 first = bookStatement(ofCash(20240102, 500000));
    const qint64 second = bookStatement(ofCash(20240109, 700000));

    ledger().undoImport(first);
    EXPECT_EQ(cash(), Money::ofCents(700000));

    ledger().undoImport(second);
    EXPECT_EQ(cash(), before);
}

TEST_F(UndoTest, LeavesCashThatTheUserEnteredAfterwards)
{
    const qint64 number = bookStatement(ofCash(20240102, 500000));
    AccountCash(ledger().database()).enter(Money::ofCents(4200));

    ledger().undoImport(number);

    EXPECT_EQ(cash(), Money::ofCents(4200));
}

TEST_F(UndoTest, LeavesCashThatWasEnteredAfterABalanceInALedgerOfAFormerProgram)
{
    const TestLedger old;
    {
        Database database(old.location());
        migrateSchema(&database, 7);
        database.run(QStringLiteral(
            "INSERT INTO statement (id, file, imported_at, balance, balance_date, balance_time, cash_before) "
            "VALUES (1, 'a.csv', '', 50000000, 20240102, 0, 10000000000)"));
        database.run(QStringLiteral("UPDATE account SET cash = 420000")); // by hand
    }
    Ledger brought(old.location());

    brought.undoImport(1);

    EXPECT_EQ(AccountCash(brought.database()).amount(), Money::ofCents(4200));
}

TEST_F(UndoTest, TakesTheBalanceBackInALedgerOfAFormerProgram)
{
    const TestLedger old;
    {
        Database database(old.location());
        migrateSchema(&database, 7);
        database.run(QStringLiteral(
            "INSERT INTO statement (id, file, imported_at, balance, balance_date, balance_time, cash_before) "
            "VALUES (1, 'a.csv', '', 50000000, 20240102, 0, 10000000000)"));
        database.run(QStringLiteral("UPDATE account SET cash = 50000000"));
    }
    Ledger brought(old.location());

    brought.undoImport(1);

    EXPECT_EQ(AccountCash(brought.database()).amount(), Money::ofCents(100000000));
}

TEST_F(UndoTest, PutsNothingInThePlaceOfAnImportThatIsDoubtful)
{
    bookStatement(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100, QStringLiteral("1")),
                               fill(Side::Buy, bank(), 20240102, 10, 200, QStringLiteral("2"))}));
    const qint64 other = bookStatement(statementOf({fill(Side::Buy, liquor(), 20240102, 10, 100)}));

    const Booked booked =
        ledger().bookInPlaceOf({other}, statementOf({fill(Side::Buy, bank(), 20240102, 10, 300)}));

    EXPECT_THAT(booked.doubtful, SizeIs(1));
    EXPECT_THAT(ledger().imports(), SizeIs(2));
    EXPECT_EQ(ledger().holding(liquor()).quantity(), 100);
}

TEST_F(UndoTest, PutsOneHoldingInThePlaceOfAnother)
{
    const qint64 wrong = bookStatement(statementOf({fill(Side::In, bank(), 20240102, 10, 100)}));

    ledger().bookInPlaceOf({wrong}, statementOf({fill(Side::In, bank(), 20240102, 9, 200)}));

    EXPECT_EQ(ledger().holding(bank()).quantity(), 200);
    EXPECT_THAT(ledger().imports(), SizeIs(1));
}

namespace {

/// Something that happens to a ledger.
struct Step
{
    enum class Kind { Import, Undo, EnterCash, ChangeCash };

    Kind kind;
    Statement statement{};
    Money amount{};
    qint64 number = 0; ///< of the import, once it is made
};

/// Draws steps of one account whose statements overlap and differ in what they tell.
class Dice
{
public:
    explicit Dice(unsigned seed) : m_random(seed) {}

    int number(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    Step step()
    {
        switch (number(8)) {
        case 0:
            return {Step::Kind::EnterCash, {}, Money::ofCents(number(1000000))};
        case 1:
            return {Step::Kind::ChangeCash, {}, Money::ofCents(number(1000) - 500)};
        case 2:
        case 3:
        case 4:
            return {Step::Kind::Undo};
        default:
            return {Step::Kind::Import, statement()};
        }
    }

private:
    /// One of few fills, so that statements have many in common; a third lacks its number, a third its fee.
    Execution execution()
    {
        const int which = number(6);
        Execution told =
            fill(which < 4 ? Side::Buy : Side::Sell, which % 2 == 0 ? bank() : liquor(), 20240102 + which % 3,
                 10 + which, 100 + 100 * (which % 2), QString::number(which));
        if (number(3) == 0) {
            told.dealNo.clear();
        }
        return number(3) == 0 ? withoutFee(told) : told;
    }

    Statement statement()
    {
        Statement statement =
            number(2) == 0 ? statementOf({}) : ofCash(20240102 + number(5), 100 * number(9));
        for (int i = number(6); i > 0; --i) {
            statement.executions.append(execution());
        }
        std::stable_sort(statement.executions.begin(), statement.executions.end(),
                         [](const Execution &a, const Execution &b) { return a.date < b.date; });
        statement.doubt = number(4) == 0 ? Doubt::New : Doubt::Ask;
        return statement;
    }

    std::mt19937 m_random;
};

/// False when nothing was done: the import was in doubt.
bool doIt(Ledger *ledger, Step *step)
{
    AccountCash cash(ledger->database());
    switch (step->kind) {
    case Step::Kind::Import: {
        const Booked booked = ledger->book(step->statement, Ledger::Mode::Keep);
        step->number = booked.number;
        return booked.doubtful.isEmpty() && booked.number > 0;
    }
    case Step::Kind::EnterCash:
        cash.enter(step->amount);
        return true;
    case Step::Kind::ChangeCash:
        cash.change(cash.amount() + step->amount);
        return true;
    case Step::Kind::Undo:
        return false;
    }
    Q_UNREACHABLE();
}

/// Takes back one of the imports among the steps, which then never were.
void undoOne(Ledger *ledger, Dice *dice, std::vector<Step> *steps)
{
    std::vector<std::vector<Step>::iterator> imports;
    for (auto step = steps->begin(); step != steps->end(); ++step) {
        if (step->kind == Step::Kind::Import) {
            imports.push_back(step);
        }
    }
    if (imports.empty()) {
        return;
    }
    const auto chosen = imports[static_cast<size_t>(dice->number(static_cast<int>(imports.size())))];
    try {
        ledger->undoImport(chosen->number);
        steps->erase(chosen);
    } catch (const Error &) { // without it a later one would be in doubt: nothing was done
    }
}

} // namespace

TEST_F(UndoTest, LeavesTheBooksOfTheImportsThatRemain)
{
    const int rounds =
        qEnvironmentVariableIsSet("UNDO_TEST_ROUNDS") ? qEnvironmentVariableIntValue("UNDO_TEST_ROUNDS") : 6;
    for (int round = 0; round < rounds; ++round) {
        Dice dice(static_cast<unsigned>(round));
        Ledger changed(QStringLiteral(":memory:"));
        std::vector<Step> steps;
        for (int i = 0; i < 25; ++i) {
            Step step = dice.step();
            if (step.kind == Step::Kind::Undo) {
                undoOne(&changed, &dice, &steps);
            } else if (doIt(&changed, &step)) {
                steps.push_back(step);
            }
        }
        Ledger fresh(QStringLiteral(":memory:"));
        for (Step &step : steps) {
            ASSERT_TRUE(doIt(&fresh, &step)) << "round " << round;
        }
        ASSERT_EQ(booksOf(&changed), booksOf(&fresh)) << "round " << round;
    }
}

} // namespace TradeModule
