#include "trademodule/ledger/PracticeAccount.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/OrderBook.h"

#include <algorithm>

namespace TradeModule {

namespace {

Money moneyOf(double yuan)
{
    return Money::ofYuan(yuan).value_or(Money());
}

/// The shares came in on the day before, at what they cost: on the day itself they could not be sold. What is
/// no whole price stands as a fee.
Execution entryOf(const PracticeAccount::Held &held, TradingDate day)
{
    Execution entry{held.security, Side::In, day.plusDays(-1), ClockTime()};
    entry.quantity = held.quantity;
    entry.price = Money::ofSteps(std::max<qint64>(0, held.cost.steps() / held.quantity));
    entry.amount = Money::ofSteps(entry.price.steps() * held.quantity);
    entry.fee = held.cost - entry.amount;
    return entry;
}

Statement statementOf(const PracticeAccount &account, TradingDate day)
{
    Statement statement{QStringLiteral("practice"), {}, {}};
    for (const PracticeAccount::Held &held : account.holdings) {
        statement.executions.append(entryOf(held, day));
        statement.names.insert(held.security, held.name);
    }
    return statement;
}

} // namespace

PracticeAccount PracticeAccount::of(const QString &location)
{
    if (!Ledger::isThere(location)) {
        throw Error(translated("there is no ledger %1 whose account could be copied")
                        .arg(Database::shownLocation(location)));
    }
    Ledger ledger(location, Ledger::Mode::DryRun);
    PracticeAccount account{OrderBook(&ledger).cash(), {}, ledger.costMethod()};
    for (const Position &position : ledger.positions()) {
        account.holdings.append({position.security, position.name, position.holding.quantity(),
                                 moneyOf(position.holding.cost())});
    }
    return account;
}

void beginPractice(const QString &location, TradingDate day, const PracticeAccount &account)
{
    if (Ledger::isThere(location)) {
        throw Error(translated("there is a ledger %1 already: a practice begins in a new one")
                        .arg(Database::shownLocation(location)));
    }
    Ledger ledger(location);
    ledger.setCostMethod(account.method);
    ledger.book(statementOf(account, day), Ledger::Mode::Keep);
    OrderBook book(&ledger);
    Transaction transaction = book.begin();
    book.enterCash(account.cash);
    ledger.practise(day); // at last: what ends before is no practice
    transaction.commit();
}

} // namespace TradeModule
