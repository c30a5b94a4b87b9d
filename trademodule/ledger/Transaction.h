#pragma once

#include "trademodule/ledger/Database.h"

namespace TradeModule {

/// One change of the ledger: all of it or, unless commit() was reached, nothing. While it lives no
/// other process changes the ledger; others may read.
class Transaction
{
public:
    explicit Transaction(Database *database);
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)

    void commit();

private:
    Database *const m_database;
    bool m_isOpen = true;
};

} // namespace TradeModule
