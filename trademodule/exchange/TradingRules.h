#pragma once

#include "trademodule/ledger/Order.h"

namespace TradeModule {

/// The rules of the market, as far as they are the same every day.
namespace TradingRules {

/// True while orders reach the exchange: 09:15–11:30 and 13:00–15:00, both ends included.
bool isOpen(ClockTime time);

/// Monday to Friday. Holidays are not known.
bool isTradingDay(TradingDate day);

/// Why an order of this form is never taken; empty when it is. A sell of less than a lot must sell all
/// that is held.
QString formError(const Order &order, qint64 held);

/// All fees of an order that was dealt for `amount` in all: commission 0.025 %, at least 5 yuan; transfer
/// fee 0.001 %; stamp duty 0.05 % of a sell.
Money fees(Direction direction, Money amount);
/// Of these fees, the stamp duty.
Money stampDuty(Direction direction, Money amount);

} // namespace TradingRules

} // namespace TradeModule
