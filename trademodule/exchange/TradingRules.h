#pragma once

#include "trademodule/ledger/Order.h"
#include "trading/TradingCalendar.h"

namespace TradeModule {

/// The rules of the paper exchange; those of the market are in trading/MarketRules.
namespace TradingRules {

/// True while orders of the security reach the exchange. A day of which quotes came is one of trading,
/// whatever the calendar says: a recorded day may be played on a Sunday.
bool isOpen(const SecurityId &security, TradingDate day, ClockTime time, bool isQuoted,
            const Trading::TradingCalendar &calendar);

/// Why an order of this form is never taken; empty when it is. A sale may take along what is odd of the
/// shares that are held.
QString formError(const Order &order, qint64 held);

/// All fees of an order that was dealt for `amount` in all: commission 0.025 %, at least 5 yuan; transfer
/// fee 0.001 %; stamp duty 0.05 % of a sell.
Money fees(Direction direction, Money amount);
/// Of these fees, the stamp duty.
Money stampDuty(Direction direction, Money amount);

} // namespace TradingRules

} // namespace TradeModule
