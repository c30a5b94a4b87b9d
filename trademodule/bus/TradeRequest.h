#pragma once

#include "trademodule/ledger/Ledger.h"

#include <QJsonObject>

namespace TradeModule {

/// A question from the bus, field by field. Each function throws an Error that names the field when it
/// does not hold what it must.
class TradeRequest
{
public:
    explicit TradeRequest(QJsonObject object) : m_object(std::move(object)) {}

    QString command() const;
    SecurityId security() const;
    /// "start" and "end".
    DateRange days() const;

    /// "date", a number.
    int day() const;
    /// "orderdate" and "ordersno" as text.
    int orderDate() const;
    qint64 orderNumber() const;
    /// "bsflag2": a direction code of orders, or "B" or "S".
    Side side() const;
    /// "orderprice" and "orderqty" as text.
    Money orderPrice() const;
    qint64 orderQuantity() const;

    /// A field as it came, for the echo in the answer.
    QJsonValue field(const char *key) const { return m_object.value(QLatin1String(key)); }

private:
    QString text(const char *key) const;
    int date(const char *key) const;
    qint64 positive(const char *key) const;

    const QJsonObject m_object;
};

} // namespace TradeModule
