#pragma once

#include "trademodule/ledger/Order.h"

namespace TradeModule {

/// The steps that an order goes through, from one status to the next: see PaperExchange.
namespace OrderLife {

/// What the market is like for an order that is on its way.
struct Conditions
{
    bool isOpen = false;                      ///< orders reach the exchange
    bool isBeyondLimits = false;              ///< the order's price is beyond the limits of the day
    TradingDate today = TradingDate::today(); ///< orders of days before it are over
};

/// The status of an order that is placed.
QString statusWhenPlaced(bool isExchangeOpen);

/// Takes an order's next step that needs no quote; true when there was one. An order of a past day ends.
bool advance(Order *order, Conditions conditions);

/// True for orders that quotes deal.
bool isDealable(const Order &order);
/// Enters what was dealt of an order.
void deal(Order *order, const Execution &execution);

/// True for orders of which something can still be cancelled.
bool canBeCancelled(const Order &order);
/// Asks for what is left of such an order to be cancelled.
void cancel(Order *order);

} // namespace OrderLife

} // namespace TradeModule
