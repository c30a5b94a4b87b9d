#pragma once

#include "trading/ClockTime.h"
#include "trading/Money.h"
#include "trading/SecurityId.h"
#include "trading/TradingDate.h"

#include <QJsonObject>

#include <optional>

namespace Trading {

/// What a publisher tells of the market: the bar of a minute, complete or as far as it is made. Channel
/// "Market", topic "Quote"; docs/messages.md has its keys, docs/bus-protocol.md how readers put quotes
/// together.
struct Quote
{
    SecurityId security;
    TradingDate date;
    ClockTime time; ///< up to when the bar is told: its end, or a time within its minute
    Money open{};
    Money high{};
    Money low{};
    Money close{};
    qint64 volume = 0;     ///< shares, since the minute began
    Money previousClose{}; ///< zero when the quote does not tell ("preclose")
    /// The day that a replay plays as "date"; nothing in quotes of the market.
    std::optional<TradingDate> recorded = {};
};

/// Why a message is no quote.
struct QuoteFault
{
    const char *key = nullptr; ///< the one that does not hold what it must; null: the prices do not agree
    QString value;             ///< what it holds
};

/// What was read of a message: a quote unless there is a fault.
struct QuoteReading
{
    Quote quote;
    std::optional<QuoteFault> fault;
};

/// Reads a quote as every reader must. A price is above zero, no bar opens or closes beyond its high and low,
/// and a code has six digits.
QuoteReading readQuote(const QJsonObject &message);

} // namespace Trading
