#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/Statement.h"

namespace TradeModule {

/// What statements told whose days the ledger knew already, in part or as a whole. When an earlier import is
/// taken back these are booked anew, so that what both told stays.
class ToldStatement
{
public:
    /// The database stays the caller's and outlives this object.
    explicit ToldStatement(Database *database) : m_database(database) {}

    /// Keeps a statement's entries under its number; what was kept before goes.
    void keep(qint64 number, const Statement &statement);
    /// The entries again; neither names nor cash.
    Statement read(qint64 number);
    /// The numbers of those after another, in order.
    QVector<qint64> after(qint64 number);
    void remove(qint64 number);

private:
    int pieces(qint64 number);

    Database *const m_database;
};

} // namespace TradeModule
