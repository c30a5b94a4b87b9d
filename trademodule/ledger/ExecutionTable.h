#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/DateRange.h"
#include "trademodule/ledger/Execution.h"
#include "trademodule/ledger/FillMatching.h"

#include <functional>

namespace TradeModule {

/// The executions of a ledger. Trades are what was dealt on an exchange; entries are all.
class ExecutionTable
{
public:
    using Visitor = std::function<void(const Execution &)>;

    /// The database stays the caller's and outlives this object.
    explicit ExecutionTable(Database *database) : m_database(database) {}

    /// The trades of a security, oldest first.
    Executions trades(const SecurityId &security, DateRange days);
    /// The trades of all securities, oldest first.
    Executions trades(DateRange days);
    /// Has each trade of a code on every market, or of all when it is empty, visited, oldest first.
    void visitTrades(const QString &code, DateRange days, const Visitor &visit);

    /// Has every entry of a security visited, oldest first. `id` is the security's key in the ledger.
    void visitEntries(qint64 id, const SecurityId &security, DateRange days, const Visitor &visit);
    bool hasEntries(qint64 id);
    /// Of all entries.
    qint64 count();
    /// The entries of a security on some days, in order of time, each with its key.
    KnownEntries knownEntries(qint64 id, const SecurityId &security, DateRange days);
    /// The same of all its allotments.
    KnownEntries knownAllotments(qint64 id, const SecurityId &security);
    /// True when the ledger has an entry of the security that is later than an execution.
    bool hasLater(qint64 id, const Execution &execution);

    /// Writes an execution that no statement told.
    void add(qint64 id, const Execution &execution);

private:
    Database *const m_database;
};

} // namespace TradeModule
