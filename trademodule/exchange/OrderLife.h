#pragma once

#include "trademodule/ledger/Order.h"

namespace TradeModule {

/// The steps that an order goes through, from one status to the next: see PaperExchange.
namespace OrderLife {

/// What the market is like for an order that is on its way.
struct Conditions
{
    bool isOpen = false; ///< orders reach the exchange
    /// Of the day, for its security.
    enum class Limits { Unknown, Kept, Broken } limits = Limits::Unknown;
    TradingDate today = TradingDate::today(); ///< orders of days before it are over
};

/// The status of an order that is placed.
QString statusWhenPlaced(bool isExchangeOpen);

/// True for an order that was left in the ledger and that no exchange has taken yet.
bool isLeft(const Order &order);

/// Of orders that the exchange has not seen yet.
const QStringList &newStatuses();

/// Takes an order's next step that needs no quote; true when there was one. An order of a past day ends. One
/// whose limits nobody knows is not reported.
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
