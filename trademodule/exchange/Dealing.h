#pragma once

#include "trademodule/exchange/QuoteMessage.h"
#include "trademodule/ledger/Order.h"

namespace TradeModule {

/// What a bar of the market deals of an order: at which price, how much, for which fees.
namespace Dealing {

/// Shares that all orders together may get of a bar.
qint64 mostShares(const Quote &quote);

/// True when the bar trades at the order's price. To touch it is enough: the bar was traded at it.
bool reaches(const Quote &quote, const Order &order);

/// Shares of an order that a bar deals when so many may be had: in the market's steps, or all of the order's
/// odd rest.
qint64 quantity(const Order &order, qint64 atMost);

/// The order's execution of so many shares, at the better of the bar's open and the order's own price. An
/// Error when it would come to more than an amount of money can be.
Execution execution(const Order &order, const Quote &quote, qint64 quantity);

} // namespace Dealing

} // namespace TradeModule
