#pragma once

#include "trademodule/SharedTypes.h"

#include <QVector>

namespace TradeModule {

/// Money that came into the account or left it otherwise than by a trade.
struct MoneyEntry
{
    TradingDate date = TradingDate::first();
    ClockTime time;   ///< midnight when the statement does not tell
    QString kind;     ///< English, such as "dividends"
    Money amount;     ///< negative when the account paid
    QString currency; ///< "CNY", "HKD" or "USD"
    QString code;     ///< of the security that it is for; may be empty
    QString note;     ///< what the statement calls it
    QString number;   ///< of the deal or the order; may be empty
};

using MoneyEntries = QVector<MoneyEntry>;

} // namespace TradeModule
