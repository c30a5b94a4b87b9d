#include "trademodule/ledger/PracticeTable.h"

#include "trademodule/ledger/ColumnValue.h"

namespace TradeModule {

std::optional<TradingDate> PracticeTable::day()
{
    if (!m_database->hasTable(QStringLiteral("practice"))) {
        return std::nullopt;
    }
    Rows row = m_database->run(QStringLiteral("SELECT recorded_day FROM practice"));
    return row.next() ? std::optional(ColumnValue::date(row.value(0))) : std::nullopt;
}

void PracticeTable::begin(TradingDate day)
{
    m_database->run(QStringLiteral(
        "CREATE TABLE practice (id INTEGER PRIMARY KEY CHECK (id = 1), recorded_day INTEGER NOT NULL)"));
    m_database->run(QStringLiteral("INSERT INTO practice (id, recorded_day) VALUES (1, ?)"), {day.number()});
}

} // namespace TradeModule
