#include "trademodule/ledger/OrderBook.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/AccountCash.h"
#include "trademodule/ledger/OrderColumns.h"

namespace TradeModule {

namespace {

QStringList openStatuses()
{
    QStringList open;
    for (const TradeChart::OrderStatusRow &status : TradeChart::OrderStatusTable()) {
        if (status.isOpen) {
            open.append(status.code);
        }
    }
    return open;
}

QString isOneOf(const QStringList &statuses)
{
    return QStringLiteral("o.status IN ('%1')").arg(statuses.join(QLatin1String("','")));
}

} // namespace

OrderBook::OrderBook(Ledger *ledger) : m_ledger(ledger), m_database(ledger->database()) {}

qint64 OrderBook::securityId(const SecurityId &security)
{
    return m_ledger->registerSecurity(security, QString());
}

qint64 OrderBook::add(const Order &order)
{
    Rows row = m_database->run(OrderColumns::insertion(),
                               OrderColumns::insertedValues(order, securityId(order.security)));
    row.next();
    return row.value(0).toLongLong();
}

void OrderBook::update(const Order &order)
{
    m_database->run(OrderColumns::update(), OrderColumns::updatedValues(order));
}

void OrderBook::execute(const Execution &execution)
{
    m_ledger->add(execution);
    const Money paid =
        execution.side == Side::Buy ? execution.amount + execution.fee : execution.fee - execution.amount;
    const Money left = cash() - paid;
    if (!left.isWithinLimit()) {
        throw Error(translated("the account's cash would be more than %1 yuan").arg(Money::limit().text()));
    }
    setCash(left);
}

Orders OrderBook::ordersWhere(const QString &condition, const QVariantList &values)
{
    Rows rows = m_database->run(
        QStringLiteral(
            "SELECT %1 FROM trade_order o JOIN security s ON s.id = o.security_id WHERE %2 ORDER BY o.id")
            .arg(OrderColumns::selected(), condition),
        values);
    Orders orders;
    while (rows.next()) {
        orders.append(OrderColumns::read(rows));
    }
    return orders;
}

std::optional<Order> OrderBook::find(TradingDate date, qint64 number)
{
    const Orders found =
        ordersWhere(QStringLiteral("o.id = ? AND o.order_date = ?"), {number, date.number()});
    return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

std::optional<Order> OrderBook::find(const QString &clientNumber)
{
    const Orders found = ordersWhere(QStringLiteral("o.client_no = ?"), {clientNumber});
    return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

Orders OrderBook::ofDay(TradingDate date)
{
    return ordersWhere(QStringLiteral("o.order_date = ?"), {date.number()});
}

Orders OrderBook::ofDay(TradingDate date, const SecurityId &security)
{
    return ordersWhere(QStringLiteral("o.order_date = ? AND s.code = ? AND s.market = ?"),
                       {date.number(), security.code, marketLetters(security.market)});
}

Orders OrderBook::open()
{
    return ofStatuses(openStatuses());
}

Orders OrderBook::open(const SecurityId &security)
{
    return ordersWhere(isOneOf(openStatuses()) + QStringLiteral(" AND s.code = ? AND s.market = ?"),
                       {security.code, marketLetters(security.market)});
}

Orders OrderBook::ofStatuses(const QStringList &statuses)
{
    return ordersWhere(isOneOf(statuses), {});
}

Money OrderBook::cash()
{
    return AccountCash(m_database).amount();
}

void OrderBook::setCash(Money cash)
{
    AccountCash(m_database).change(cash);
}

void OrderBook::enterCash(Money cash)
{
    AccountCash(m_database).enter(cash);
}

QHash<SecurityId, qint64> OrderBook::boughtOn(TradingDate date)
{
    QHash<SecurityId, qint64> bought;
    const Executions trades = m_ledger->trades({date, date});
    for (const Execution &trade : trades) {
        if (trade.side == Side::Buy) {
            bought[trade.security] += trade.quantity;
        }
    }
    return bought;
}

qint64 OrderBook::boughtOn(TradingDate date, const SecurityId &security)
{
    qint64 bought = 0;
    const Executions trades = m_ledger->trades(security, {date, date});
    for (const Execution &trade : trades) {
        bought += trade.side == Side::Buy ? trade.quantity : 0;
    }
    return bought;
}

bool OrderBook::isStated(const SecurityId &security, TradingDate date) const
{
    return m_database
        ->run(QStringLiteral("SELECT 1 FROM execution e JOIN security s ON s.id = e.security_id "
                             "WHERE s.code = ? AND s.market = ? AND e.trade_date = ? "
                             "AND e.statement_id IS NOT NULL LIMIT 1"),
              {security.code, marketLetters(security.market), date.number()})
        .next();
}

} // namespace TradeModule
