#include "trademodule/report/LedgerState.h"

#include "trademodule/ledger/ColumnValue.h"

namespace TradeModule {

LedgerState LedgerState::of(Database *database)
{
    Rows row = database->run(QStringLiteral(
        "SELECT (SELECT cost_method FROM account), (SELECT COALESCE(MAX(id), 0) FROM execution), "
        "COUNT(*), COALESCE(MAX(id), 0), COALESCE(MAX(imported_at), ''), COALESCE(SUM(added), 0), "
        "COALESCE(SUM(money), 0) FROM statement"));
    row.next();
    LedgerState state;
    state.m_method = ColumnValue::costMethod(row.value(0));
    state.m_lastExecution = row.value(1).toLongLong();
    constexpr int firstOfStatements = 2;
    constexpr int columns = 7;
    for (int column = firstOfStatements; column < columns; ++column) {
        state.m_statements += row.value(column).toString() + QLatin1Char(' ');
    }
    return state;
}

bool LedgerState::isOfSameStatements(const LedgerState &other) const
{
    return m_method == other.m_method && m_statements == other.m_statements;
}

bool LedgerState::hasOnlyMoreTradesThan(const LedgerState &earlier) const
{
    return isOfSameStatements(earlier) && m_lastExecution > earlier.m_lastExecution;
}

std::vector<qint64> LedgerState::securitiesSince(const LedgerState &earlier, Database *database) const
{
    Rows rows =
        database->run(QStringLiteral("SELECT DISTINCT security_id FROM execution WHERE id > ? AND id <= ?"),
                      {earlier.m_lastExecution, m_lastExecution});
    std::vector<qint64> ids;
    while (rows.next()) {
        ids.push_back(rows.value(0).toLongLong());
    }
    return ids;
}

} // namespace TradeModule
