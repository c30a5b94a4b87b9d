#pragma once

#include "trademodule/ledger/Execution.h"

namespace TradeModule {

/// A limit order of the account.
struct Order
{
    qint64 number = 0; ///< given by the ledger, unique in it
    SecurityId security;
    QString securityName;
    Side side = Side::Buy; ///< a buy or a sell
    int date = 0;          ///< yyyymmdd
    int time = 0;          ///< hhmmsscc
    Money price;           ///< the limit
    qint64 quantity = 0;
    QString status; ///< a code of TradeChart::OrderStatus
    qint64 matchedQuantity = 0;
    Money matchedAmount;
    qint64 cancelledQuantity = 0;

    /// What may still be dealt.
    qint64 openQuantity() const { return quantity - matchedQuantity - cancelledQuantity; }
};

using Orders = QVector<Order>;

} // namespace TradeModule
