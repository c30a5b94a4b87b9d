#pragma once

#include "trademodule/ledger/Order.h"

#include <QDate>

namespace TradeModule {

/// The rules of the market, as far as they are the same every day.
namespace TradingRules {

constexpr Money tick = Money::ofCents(1);

// No security comes near them; with them, no sum of the module overflows.
constexpr Money highestPrice = Money::ofCents(100000000); ///< a million yuan
constexpr qint64 mostShares = 1000000000;                 ///< of an order

/// True while orders reach the exchange: 09:15–11:30 and 13:00–15:00, both ends included.
bool isOpen(ClockTime time);

/// Monday to Friday. Holidays are not known.
bool isTradingDay(const QDate &day);

/// Why an order of this form is never taken; empty when it is. A sell of less than a lot must sell all
/// that is held.
QString formError(const Order &order, qint64 held);

/// The highest and the lowest price of a day by the close of the day before.
struct PriceLimits
{
    Money lowest;
    Money highest;
    bool contain(Money price) const { return !(price < lowest) && !(price > highest); }
};
PriceLimits priceLimits(const SecurityId &security, Money previousClose);

/// All fees of an order that was dealt for `amount` in all: commission 0.025 %, at least 5 yuan; transfer
/// fee 0.001 %; stamp duty 0.05 % of a sell.
Money fees(Direction direction, Money amount);

} // namespace TradingRules

} // namespace TradeModule
