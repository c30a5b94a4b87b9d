#include "trademodule/ledger/HoldingTable.h"

#include "trademodule/ledger/ColumnValue.h"

namespace TradeModule {

namespace {

/// The columns of a holding `h`, and the account's method.
QString columns()
{
    return QStringLiteral("h.quantity, h.cost, h.unexplained, (SELECT cost_method FROM account)");
}

Holding holdingAt(const Rows &row, int column)
{
    return {ColumnValue::costMethod(row.value(column + 3)), row.value(column).toLongLong(),
            row.value(column + 1).toDouble(), row.value(column + 2).toLongLong()};
}

} // namespace

CostMethod HoldingTable::method()
{
    Rows row = m_database->run(QStringLiteral("SELECT cost_method FROM account"));
    row.next();
    return ColumnValue::costMethod(row.value(0));
}

void HoldingTable::setMethod(CostMethod method)
{
    m_database->run(QStringLiteral("UPDATE account SET cost_method = ?"), {wordOf(method)});
    addUpAll();
}

Holding HoldingTable::find(const SecurityId &security)
{
    Rows row = m_database->run(QStringLiteral("SELECT %1 FROM holding h JOIN security s ON s.id = "
                                              "h.security_id WHERE s.code = ? AND s.market = ?")
                                   .arg(columns()),
                               {security.code, marketLetters(security.market)});
    return row.next() ? holdingAt(row, 0) : Holding(method());
}

QVector<Position> HoldingTable::positions()
{
    Rows rows = m_database->run(
        QStringLiteral("SELECT s.code, s.market, s.name, %1 FROM holding h "
                       "JOIN security s ON s.id = h.security_id WHERE h.quantity > 0 ORDER BY s.code")
            .arg(columns()));
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

Holding HoldingTable::addUp(const KnownSecurity &security)
{
    Holding holding(method());
    AccountHistory(m_database).visit(security, [&holding](const AccountEvent &event) { holding.add(event); });
    set(security.id, holding);
    return holding;
}

void HoldingTable::addUpAll(const QString &code)
{
    for (const KnownSecurity &security : AccountHistory(m_database).securities(code)) {
        addUp(security);
    }
}

} // namespace TradeModule
