#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/Statement.h"

namespace TradeModule {

/// The account's cash, which three have a say in: the user, the paper exchange, and statements that tell a
/// balance.
///
/// The newest balance counts from its import on, with what changed since, until the user enters an amount.
/// What the account would have without any balance, its own cash, goes on beside it: so an import that is
/// taken back leaves what would be there, had it never been, whatever else happened in between.
class AccountCash
{
public:
    /// The database stays the caller's and outlives this object.
    explicit AccountCash(Database *database) : m_database(database) {}

    Money amount();
    /// What the paper exchange leaves.
    void change(Money amount);
    /// What the user says counts from now on, and balances of former imports no more.
    void enter(Money amount);
    /// The balance of a statement, by its number.
    void take(qint64 number, const StatedCash &cash);
    /// To be called when statements have gone.
    void reckon();

private:
    Money statedPart();
    Money newestStatedPart();

    Database *const m_database;
};

} // namespace TradeModule
