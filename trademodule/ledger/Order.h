#pragma once

#include "trademodule/ledger/Execution.h"

namespace TradeModule {

/// A limit order of the account.
struct Order
{
    SecurityId security;
    Direction direction;
    TradingDate date;
    ClockTime time;
    Money price{}; ///< the limit
    qint64 quantity = 0;
    QString status{}; ///< a code of TradeChart::OrderStatus
    qint64 matchedQuantity = 0;
    Money matchedAmount{};
    qint64 cancelledQuantity = 0;
    qint64 number = 0;      ///< given by the ledger, unique in it
    QString securityName{}; ///< as the ledger has it
    QString clientNumber{}; ///< what the asker calls it, unique in the ledger; may be empty

    /// What may still be dealt.
    qint64 openQuantity() const { return quantity - matchedQuantity - cancelledQuantity; }
};

using Orders = QVector<Order>;

} // namespace TradeModule
