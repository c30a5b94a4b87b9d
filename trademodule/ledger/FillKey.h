#pragma once

#include "trademodule/ledger/Execution.h"

#include <QHash>

namespace TradeModule {

/// What makes two rows of statements the same fill. With the exchange's deal number that is enough,
/// whatever else a form of export tells; without it, the time and the order number count too. Fills that
/// are equal even so can be real: they are told apart by how many there are. Numbers count without the zeros
/// that they start with.
class FillKey
{
public:
    explicit FillKey(const Execution &execution);

    friend bool operator==(const FillKey &a, const FillKey &b);
    friend uint qHash(const FillKey &key, uint seed);

private:
    SecurityId m_security;
    Side m_side;
    TradingDate m_date;
    ClockTime m_time;
    qint64 m_price;
    qint64 m_quantity;
    QString m_orderNo;
    QString m_dealNo;
};

uint qHash(const FillKey &key, uint seed = 0);

} // namespace TradeModule
