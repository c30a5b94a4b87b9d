#pragma once

#include "trademodule/ledger/Database.h"

#include <functional>

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

    /// Makes a part of the change that may fail by itself: then it alone is undone, and what `part` has
    /// thrown comes out. What is no fault of the part, as LedgerUnavailable, is of the whole change.
    void attempt(const std::function<void()> &part);

private:
    void control(const char *statement);

    Database *const m_database;
    bool m_isOpen = true;
};

} // namespace TradeModule
