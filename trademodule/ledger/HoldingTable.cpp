#include "trademodule/ledger/HoldingTable.h"

#include "trademodule/ledger/ColumnValue.h"
#include "trademodule/ledger/ExecutionTable.h"

namespace TradeModule {

namespace {

/// From three columns of a row: quantity, cost and what is unexplained.
Holding holdingAt(const QSqlQuery &row, int column)
{
    return {row.value(column).toLongLong(), row.value(column + 1).toDouble(),
            row.value(column + 2).toLongLong()};
}

} // namespace

Holding HoldingTable::find(const SecurityId &security)
{
    QSqlQuery row = m_database->run(QStringLiteral("SELECT h.quantity, h.cost, h.unexplained FROM holding h "
                                                   "JOIN security s ON s.id = h.security_id "
                                                   "WHERE s.code = ? AND s.market = ?"),
                                    {security.code, marketLetters(security.market)});
    return row.next() ? holdingAt(row, 0) : Holding();
}

QVector<Position> HoldingTable::positions()
{
    QSqlQuery rows = m_database->run(
        QStringLiteral("SELECT s.code, s.market, s.name, h.quantity, h.cost, h.unexplained FROM holding h "
                       "JOIN security s ON s.id = h.security_id WHERE h.quantity > 0 ORDER BY s.code"));
    QVector<Position> positions;
    while (rows.next()) {
        const SecurityId security{rows.value(0).toString(), ColumnValue::market(rows.value(1))};
        positions.append({security, rows.value(2).toString(), holdingAt(rows, 3)});
    }
    return positions;
}

void HoldingTable::set(qint64 id, const Holding &holding)
{
    m_database->run(QStringLiteral("INSERT INTO holding (security_id, quantity, cost, unexplained) "
                                   "VALUES (?, ?, ?, ?) ON CONFLICT (security_id) DO UPDATE SET "
                                   "quantity = excluded.quantity, cost = excluded.cost, "
                                   "unexplained = excluded.unexplained"),
                    {id, holding.quantity(), holding.cost(), holding.unexplained()});
}

Holding HoldingTable::addUp(qint64 id, const SecurityId &security)
{
    Holding holding;
    ExecutionTable(m_database).visitEntries(id, security, DateRange(), [&holding](const Execution &entry) {
        holding.add(entry);
    });
    set(id, holding);
    return holding;
}

void HoldingTable::addUp(qint64 id)
{
    QSqlQuery row = m_database->run(QStringLiteral("SELECT code, market FROM security WHERE id = ?"), {id});
    row.next();
    const SecurityId security{row.value(0).toString(), ColumnValue::market(row.value(1))};
    row.finish();
    addUp(id, security);
}

} // namespace TradeModule
