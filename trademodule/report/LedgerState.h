#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/results/CostMethod.h"

#include <vector>

namespace TradeModule {

/// What tells whether the results of a ledger are still those that were reckoned. Costs no more to read than
/// a holding, however many trades there are.
class LedgerState
{
public:
    /// Of no ledger.
    LedgerState() = default;
    static LedgerState of(Database *database);

    CostMethod method() const { return m_method; }

    /// True when nothing but new trades of the paper exchange has come since `earlier`: entries are never
    /// changed or taken back but by statements.
    bool hasOnlyMoreTradesThan(const LedgerState &earlier) const;
    /// The keys of the securities that have them.
    std::vector<qint64> securitiesSince(const LedgerState &earlier, Database *database) const;

    friend bool operator==(const LedgerState &a, const LedgerState &b)
    {
        return a.isOfSameStatements(b) && a.m_lastExecution == b.m_lastExecution;
    }
    friend bool operator!=(const LedgerState &a, const LedgerState &b) { return !(a == b); }

private:
    bool isOfSameStatements(const LedgerState &other) const;

    CostMethod m_method = CostMethod::Average;
    qint64 m_lastExecution = -1;
    QString m_statements; ///< how many, which is the last, when it came, what all of them added
};

} // namespace TradeModule
