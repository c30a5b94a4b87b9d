#pragma once

#include "trademodule/SharedTypes.h"

#include <QJsonObject>

namespace TradeModule {

/// A bar of the market as it is published while it is made: channel "Market", topic "Quote".
struct Quote
{
    SecurityId security;
    TradingDate date;
    ClockTime time; ///< the end of the bar
    Money open{};
    Money high{};
    Money low{};
    Money close{};
    qint64 volume = 0;     ///< shares
    Money previousClose{}; ///< zero when the quote does not tell ("preclose")
};

/// Reads a quote; an Error names the field that does not hold what it must.
Quote readQuote(const QJsonObject &object);

} // namespace TradeModule
