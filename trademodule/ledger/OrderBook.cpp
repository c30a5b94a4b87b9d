#include "trademodule/ledger/OrderBook.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/Language.h"

namespace TradeModule {

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QString openStatuses()
{
    QStringList quoted;
    for (const TradeChart::OrderStatusRow &status : TradeChart::OrderStatusTable()) {
        if (status.isOpen) {
            quoted.append(QStringLiteral("'%1'").arg(status.code));
        }
    }
    return quoted.join(QLatin1Char(','));
}

Order orderOf(const QSqlQuery &row)
{
    Order order;
    order.number = row.value(0).toLongLong();
    order.security = {row.value(1).toString(),
                      marketOfLetters(row.value(2).toString()).value_or(Market::Shanghai)};
    order.securityName = row.value(3).toString();
    order.side = row.value(4).toString() == text(TradeChart::BSFlag::BUY) ? Side::Buy : Side::Sell;
    order.date = row.value(5).toInt();
    order.time = row.value(6).toInt();
    order.price = Money::ofSteps(row.value(7).toLongLong());
    order.quantity = row.value(8).toLongLong();
    order.status = row.value(9).toString();
    order.matchedQuantity = row.value(10).toLongLong();
    order.matchedAmount = Money::ofSteps(row.value(11).toLongLong());
    order.cancelledQuantity = row.value(12).toLongLong();
    return order;
}

} // namespace

OrderBook::OrderBook(Ledger *ledger) : m_ledger(ledger), m_database(ledger->database()) {}

qint64 OrderBook::securityId(const SecurityId &security)
{
    return m_ledger->registerSecurity(security, QString());
}

qint64 OrderBook::add(const Order &order)
{
    QSqlQuery row = m_database->run(
        QStringLiteral("INSERT INTO trade_order (security_id, side, order_date, order_time, price, quantity, "
                       "status) VALUES (?, ?, ?, ?, ?, ?, ?) RETURNING id"),
        {securityId(order.security),
         text(order.side == Side::Buy ? TradeChart::BSFlag::BUY : TradeChart::BSFlag::SELL), order.date,
         order.time, order.price.steps(), order.quantity, order.status});
    row.next();
    return row.value(0).toLongLong();
}

void OrderBook::update(const Order &order)
{
    m_database->run(QStringLiteral("UPDATE trade_order SET status = ?, matched_quantity = ?, "
                                   "matched_amount = ?, cancelled_quantity = ? WHERE id = ?"),
                    {order.status, order.matchedQuantity, order.matchedAmount.steps(),
                     order.cancelledQuantity, order.number});
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
    QSqlQuery rows = m_database->run(
        QStringLiteral("SELECT o.id, s.code, s.market, s.name, o.side, o.order_date, o.order_time, o.price, "
                       "o.quantity, o.status, o.matched_quantity, o.matched_amount, o.cancelled_quantity "
                       "FROM trade_order o JOIN security s ON s.id = o.security_id WHERE %1 ORDER BY o.id")
            .arg(condition),
        values);
    Orders orders;
    while (rows.next()) {
        orders.append(orderOf(rows));
    }
    return orders;
}

std::optional<Order> OrderBook::find(int date, qint64 number)
{
    const Orders found = ordersWhere(QStringLiteral("o.id = ? AND o.order_date = ?"), {number, date});
    return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

Orders OrderBook::ofDay(int date)
{
    return ordersWhere(QStringLiteral("o.order_date = ?"), {date});
}

Orders OrderBook::ofDay(int date, const SecurityId &security)
{
    return ordersWhere(QStringLiteral("o.order_date = ? AND s.code = ? AND s.market = ?"),
                       {date, security.code, marketLetters(security.market)});
}

Orders OrderBook::open()
{
    return ordersWhere(QStringLiteral("o.status IN (%1)").arg(openStatuses()), {});
}

Money OrderBook::cash()
{
    QSqlQuery row = m_database->run(QStringLiteral("SELECT cash FROM account"));
    row.next();
    return Money::ofSteps(row.value(0).toLongLong());
}

void OrderBook::setCash(Money cash)
{
    m_database->run(QStringLiteral("UPDATE account SET cash = ?"), {cash.steps()});
}

qint64 OrderBook::boughtOn(int date, const SecurityId &security)
{
    qint64 bought = 0;
    const Executions trades = m_ledger->trades(security, {date, date});
    for (const Execution &trade : trades) {
        bought += trade.side == Side::Buy ? trade.quantity : 0;
    }
    return bought;
}

} // namespace TradeModule
