#include "trademodule/ledger/ReplacementTable.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ColumnValue.h"
#include "trademodule/ledger/Rows.h"

namespace TradeModule {

namespace {

Replacement read(const Rows &row)
{
    return {row.value(0).toString(),          row.value(1).toLongLong(),
            ColumnValue::money(row.value(2)), ColumnValue::replacementState(row.value(3)),
            row.value(4).toLongLong(),        row.value(5).toString()};
}

} // namespace

void ReplacementTable::add(const Replacement &replacement)
{
    m_database->run(
        QStringLiteral("INSERT INTO order_replacement (client_no, order_id, price, state) VALUES (?,?,?,?)"),
        {replacement.clientNumber, replacement.orderNumber, replacement.price.steps(),
         Trading::wordOf(replacement.state)});
}

void ReplacementTable::update(const Replacement &replacement)
{
    const QVariant newOrder =
        replacement.newOrderNumber > 0 ? QVariant(replacement.newOrderNumber) : QVariant(QVariant::LongLong);
    m_database->run(
        QStringLiteral(
            "UPDATE order_replacement SET state = ?, new_order_id = ?, reason = ? WHERE client_no = ?"),
        {Trading::wordOf(replacement.state), newOrder, QLatin1String("") + replacement.reason,
         replacement.clientNumber});
}

std::optional<Replacement> ReplacementTable::find(const QString &clientNumber)
{
    return first(QStringLiteral("client_no = ?"), {clientNumber});
}

std::optional<Replacement> ReplacementTable::findWaiting(qint64 orderNumber)
{
    return first(QStringLiteral("order_id = ? AND state = ?"),
                 {orderNumber, Trading::wordOf(ReplacementState::Waiting)});
}

std::optional<Replacement> ReplacementTable::first(const QString &condition, const QVariantList &values)
{
    Rows rows = m_database->run(
        QStringLiteral(
            "SELECT client_no, order_id, price, state, new_order_id, reason FROM order_replacement WHERE %1")
            .arg(condition),
        values);
    return rows.next() ? std::optional(read(rows)) : std::nullopt;
}

} // namespace TradeModule
