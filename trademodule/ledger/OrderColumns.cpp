#include "trademodule/ledger/OrderColumns.h"

#include "trademodule/ledger/ColumnValue.h"

#include <QStringList>

#include <iterator>

namespace TradeModule::OrderColumns {

namespace {

/// When a column is written.
enum class Written {
    Elsewhere,  ///< by the database, or with the security
    WhenPlaced, ///< with the order
    WhenChanged ///< with the order and with all that happens to it
};

struct Column
{
    const char *name;
    Written written;
    void (*read)(Order *order, const QVariant &value);
    QVariant (*write)(const Order &order); ///< null for what is written elsewhere
};

/// Many orders may have no number, but no two the same.
QVariant textOrNothing(const QString &text)
{
    return text.isEmpty() ? QVariant(QVariant::String) : QVariant(text);
}

/// Each column's place, name and meaning.
const Column columns[] = {
    {"o.id", Written::Elsewhere,
     [](Order *order, const QVariant &value) { order->number = value.toLongLong(); }, nullptr},
    {"s.code", Written::Elsewhere,
     [](Order *order, const QVariant &value) { order->security.code = value.toString(); }, nullptr},
    {"s.market", Written::Elsewhere,
     [](Order *order, const QVariant &value) { order->security.market = ColumnValue::market(value); },
     nullptr},
    {"s.name", Written::Elsewhere,
     [](Order *order, const QVariant &value) { order->securityName = value.toString(); }, nullptr},
    {"o.side", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->direction = ColumnValue::direction(value); },
     [](const Order &order) -> QVariant { return QString::fromLatin1(directionLetter(order.direction)); }},
    {"o.order_date", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->date = ColumnValue::date(value); },
     [](const Order &order) -> QVariant { return order.date.number(); }},
    {"o.order_time", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->time = ColumnValue::time(value); },
     [](const Order &order) -> QVariant { return order.time.number(); }},
    {"o.price", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->price = ColumnValue::money(value); },
     [](const Order &order) -> QVariant { return order.price.steps(); }},
    {"o.quantity", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->quantity = value.toLongLong(); },
     [](const Order &order) -> QVariant { return order.quantity; }},
    {"o.client_no", Written::WhenPlaced,
     [](Order *order, const QVariant &value) { order->clientNumber = value.toString(); },
     [](const Order &order) { return textOrNothing(order.clientNumber); }},
    {"o.status", Written::WhenChanged,
     [](Order *order, const QVariant &value) { order->status = value.toString(); },
     [](const Order &order) -> QVariant { return order.status; }},
    {"o.matched_quantity", Written::WhenChanged,
     [](Order *order, const QVariant &value) { order->matchedQuantity = value.toLongLong(); },
     [](const Order &order) -> QVariant { return order.matchedQuantity; }},
    {"o.matched_amount", Written::WhenChanged,
     [](Order *order, const QVariant &value) { order->matchedAmount = ColumnValue::money(value); },
     [](const Order &order) -> QVariant { return order.matchedAmount.steps(); }},
    {"o.cancelled_quantity", Written::WhenChanged,
     [](Order *order, const QVariant &value) { order->cancelledQuantity = value.toLongLong(); },
     [](const Order &order) -> QVariant { return order.cancelledQuantity; }},
};

/// "o.status" is `status` where it is written.
QString plainName(const Column &column)
{
    return QString::fromLatin1(column.name).section(QLatin1Char('.'), 1);
}

} // namespace

QString selected()
{
    QStringList names;
    for (const Column &column : columns) {
        names.append(QLatin1String(column.name));
    }
    return names.join(QLatin1Char(','));
}

Order read(const Rows &row)
{
    Order order{{}, Direction::Buy, TradingDate::first(), ClockTime()};
    for (int i = 0; i < static_cast<int>(std::size(columns)); ++i) {
        columns[i].read(&order, row.value(i));
    }
    return order;
}

QString insertion()
{
    QString names;
    QString places;
    for (const Column &column : columns) {
        if (column.written != Written::Elsewhere) {
            names += QLatin1Char(',') + plainName(column);
            places += QStringLiteral(",?");
        }
    }
    return QStringLiteral("INSERT INTO trade_order (security_id%1) VALUES (?%2) RETURNING id")
        .arg(names, places);
}

QVariantList insertedValues(const Order &order, qint64 securityId)
{
    QVariantList values{securityId};
    for (const Column &column : columns) {
        if (column.written != Written::Elsewhere) {
            values.append(column.write(order));
        }
    }
    return values;
}

QString update()
{
    QStringList changes;
    for (const Column &column : columns) {
        if (column.written == Written::WhenChanged) {
            changes.append(plainName(column) + QStringLiteral(" = ?"));
        }
    }
    return QStringLiteral("UPDATE trade_order SET %1 WHERE id = ?").arg(changes.join(QLatin1Char(',')));
}

QVariantList updatedValues(const Order &order)
{
    QVariantList values;
    for (const Column &column : columns) {
        if (column.written == Written::WhenChanged) {
            values.append(column.write(order));
        }
    }
    values.append(order.number);
    return values;
}

} // namespace TradeModule::OrderColumns
